// A JSON text as values that know where they stand, so that every complaint can name the place.
//
// Comments, // and /* */, are passed over. Keys that stand twice in one object are refused. Nothing here
// recurses, so that a text may nest as deep as it likes.
#ifndef K5AX_TOOL_MACHINE_JSON_DOCUMENT_H
#define K5AX_TOOL_MACHINE_JSON_DOCUMENT_H

#include "tool/errors.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

enum class JsonKind : std::uint8_t { null, boolean, number, text, list, object };

/// One value. Its neighbours are positions in the document, `JsonDocument::kNone` for none.
struct JsonValue {
  JsonKind kind = JsonKind::null;
  bool is_whole = false;  ///< a number without fraction and exponent that fits `whole`
  std::uint32_t parent = 0;
  std::uint32_t first_child = 0;
  std::uint32_t next = 0;
  std::uint32_t count = 0;  ///< of a list and an object: how many children
  std::size_t offset = 0;   ///< where it begins in the text
  std::string_view key;     ///< in an object
  std::string_view text;    ///< of a text
  double number = 0;        ///< of a number; false and true are 0 and 1
  std::int64_t whole = 0;
};

class JsonDocument {
 public:
  static constexpr std::uint32_t kNone = 0xffffffffu;

  /// Throws InputError, with line and column, for what is not JSON.
  /// @param file  the name for messages
  JsonDocument(std::string text, std::string file);
  // Its values lead into it.
  JsonDocument(const JsonDocument&) = delete;
  JsonDocument& operator=(const JsonDocument&) = delete;

  const std::string& file() const { return m_file; }
  const JsonValue& value(std::uint32_t at) const { return m_values[at]; }
  static std::uint32_t root() { return 0; }

  /// "/axes/x/limits/0", a JSON pointer; empty for the root. One that is very long is cut in its middle.
  std::string pointer(std::uint32_t at) const;
  /// "name:7:12", the file with line and column, as editors and compilers write it.
  std::string file_at(std::size_t offset) const;
  /// What stands there, short enough for a message.
  std::string shown(std::uint32_t at) const;

 private:
  friend class JsonBuilder;

  std::string m_text;
  std::string m_file;
  std::vector<JsonValue> m_values;
  std::deque<std::string> m_strings;  // what the views look at
};

}  // namespace tool

#endif
