// A value of a JSON document, asked for what a reader needs.
#include "tool/machine/json_view.h"

#include "tool/machine/angle_text.h"
#include "tool/machine/nearest_word.h"

#include <algorithm>
#include <limits>

namespace tool {
namespace {

const char* kind_name(JsonKind kind) {
  switch (kind) {
    case JsonKind::list:
      return "a list";
    case JsonKind::object:
      return "an object";
    default:
      return "a value";
  }
}

std::string quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

}  // namespace

void JsonView::fail(const std::string& wrong, const std::string& remedy) const {
  const std::string pointer = m_document->pointer(m_at);
  throw InputError(m_document->file_at(value().offset), pointer.empty() ? "" : pointer, wrong, remedy);
}

void JsonView::fail_value(const std::string& wrong, const std::string& remedy) const {
  fail(m_document->shown(m_at) + " " + wrong, remedy);
}

void JsonView::require_keys(const std::string& what, const std::vector<std::string_view>& known) const {
  if (!is_object()) fail_value("is not " + what, "write an object, {...}");
  for (std::uint32_t at = value().first_child; at != JsonDocument::kNone; at = m_document->value(at).next) {
    const std::string_view key = m_document->value(at).key;
    if (std::find(known.begin(), known.end(), key) != known.end()) continue;
    const std::string_view nearest = nearest_word(key, known);
    std::string remedy;
    if (!nearest.empty()) {
      remedy = "did you mean " + quoted(nearest) + "?";
    } else {
      remedy = "known here:";
      for (const std::string_view word : known)
        remedy += (word == known.front() ? " " : ", ") + std::string(word);
    }
    JsonView(*m_document, at).fail("unknown key in " + what, remedy);
  }
}

std::optional<JsonView> JsonView::find(std::string_view key) const {
  for (std::uint32_t at = value().first_child; at != JsonDocument::kNone; at = m_document->value(at).next)
    if (m_document->value(at).key == key) return JsonView(*m_document, at);
  return std::nullopt;
}

JsonView JsonView::require(std::string_view key, const std::string& remedy) const {
  const std::optional<JsonView> found = find(key);
  if (!found) fail(quoted(key) + " is missing", remedy);
  return *found;
}

std::vector<JsonView> JsonView::entries() const {
  std::vector<JsonView> entries;
  entries.reserve(value().count);
  for (std::uint32_t at = value().first_child; at != JsonDocument::kNone; at = m_document->value(at).next)
    entries.emplace_back(*m_document, at);
  return entries;
}

double JsonView::number() const {
  if (kind() != JsonKind::number) fail_value("is not a number", "write a number, without quotes");
  return value().number;
}

int JsonView::whole() const {
  const JsonValue& v = value();
  if (v.kind != JsonKind::number || !v.is_whole || v.whole < std::numeric_limits<int>::min() ||
      v.whole > std::numeric_limits<int>::max())
    fail_value("is not a whole number that fits", "write one from -2147483648 to 2147483647");
  return static_cast<int>(v.whole);
}

unsigned int JsonView::bits() const {
  const JsonValue& v = value();
  if (v.kind != JsonKind::number || !v.is_whole || v.whole < 0 ||
      v.whole > std::numeric_limits<unsigned int>::max())
    fail_value("is not a flags word", "write a whole number from 0 to 4294967295");
  return static_cast<unsigned int>(v.whole);
}

std::string_view JsonView::text() const {
  if (!is_text()) fail_value("is not a text", "write a text in quotes");
  return value().text;
}

int JsonView::word_or_number(const std::vector<Word>& words) const {
  return kind() == JsonKind::number ? whole() : word(words);
}

int JsonView::word(const std::vector<Word>& words) const {
  const std::string remedy = "write " + choice(words);
  if (!is_text()) fail_value("is not a word", remedy);
  std::vector<std::string_view> known;
  for (const Word& word : words) {
    if (word.text == value().text) return word.number;
    known.push_back(word.text);
  }
  const std::string_view nearest = nearest_word(value().text, known);
  if (!nearest.empty()) fail_value("is not known", "did you mean " + quoted(nearest) + "?");
  fail_value("is not known", remedy);
}

Point JsonView::point() const {
  if (!is_list() || value().count != 3) fail_value("is not a point", "write three numbers, [x, y, z]");
  const std::vector<JsonView> xyz = entries();
  const double x = xyz[0].number();
  const double y = xyz[1].number();
  return Point(x, y, xyz[2].number());
}

double JsonView::angle() const {
  if (kind() == JsonKind::number) return radians(value().number);
  const std::string remedy = "write degrees as a number, or {\"rad\": number}";
  if (!is_object())
    fail_value(kind() == JsonKind::text ? "is not an angle"
                                        : std::string("is not an angle but ") + kind_name(kind()),
               remedy);
  require_keys("an angle", {"rad"});
  return require("rad", remedy).number();
}

std::string choice(const std::vector<Word>& words) {
  std::string text;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (i > 0) text += i + 1 == words.size() ? " or " : ", ";
    text += quoted(words[i].text);
  }
  return text;
}

}  // namespace tool
