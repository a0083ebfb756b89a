// A value of a JSON document, asked for what a reader needs. Where it is not that, the complaint names the
// file, line, column, place, value and remedy.
#ifndef K5AX_TOOL_MACHINE_JSON_VIEW_H
#define K5AX_TOOL_MACHINE_JSON_VIEW_H

#include "tool/machine/json_document.h"
#include "tool/machine/machine_record.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// A word for a number of the file format.
struct Word {
  std::string_view text;
  int number;
};

class JsonView {
 public:
  explicit JsonView(const JsonDocument& document, std::uint32_t at = JsonDocument::root())
      : m_document(&document), m_at(at) {}

  JsonKind kind() const { return value().kind; }
  bool is_object() const { return kind() == JsonKind::object; }
  bool is_list() const { return kind() == JsonKind::list; }
  bool is_text() const { return kind() == JsonKind::text; }
  std::uint32_t at() const { return m_at; }

  [[noreturn]] void fail(const std::string& wrong, const std::string& remedy) const;
  /// The value itself is what is wrong: it is shown, followed by `wrong`.
  [[noreturn]] void fail_value(const std::string& wrong, const std::string& remedy) const;

  /// Refuses what is no object and any key that is not known, and names the known one that is meant.
  /// @param what  "an axis"
  void require_keys(const std::string& what, const std::vector<std::string_view>& known) const;
  std::optional<JsonView> find(std::string_view key) const;
  /// @param remedy  what to write when the key is missing
  JsonView require(std::string_view key, const std::string& remedy) const;
  /// The entries of a list.
  std::vector<JsonView> entries() const;

  double number() const;
  int whole() const;          ///< fits 32 bits
  unsigned int bits() const;  ///< fits 32 bits without a sign
  std::string_view text() const;
  /// The number of one of the words.
  int word(const std::vector<Word>& words) const;
  /// One of the words, or any number in their place.
  int word_or_number(const std::vector<Word>& words) const;
  Point point() const;
  /// Radians: a number is degrees, {"rad": x} radians.
  double angle() const;

 private:
  const JsonValue& value() const { return m_document->value(m_at); }

  const JsonDocument* m_document;
  std::uint32_t m_at;
};

/// The words as a choice in a message: "head" or "table".
std::string choice(const std::vector<Word>& words);

}  // namespace tool

#endif
