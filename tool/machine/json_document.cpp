// A JSON text as values that know where they stand. The grammar is nlohmann/json's; this keeps places.
#include "tool/machine/json_document.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace tool {
namespace {

constexpr std::size_t kLongest = std::numeric_limits<std::uint32_t>::max() / 2;  // bytes; places are 32 bits
constexpr std::size_t kShownLength = 40;     // characters of a value in a message
constexpr std::size_t kMessageLength = 160;  // characters of the parser's own words
constexpr std::size_t kPointerLength = 160;  // characters of a JSON pointer in a message

// The parser's message without what it says of itself and of the place:
//   [json.exception.parse_error.101] parse error at line 3, column 5: syntax error while ... - unexpected ...
std::string what_is_wrong(const std::string& message) {
  std::size_t from = message.find("] ");
  from = from == std::string::npos ? 0 : from + 2;
  for (const char* prefix : {"parse error", "syntax error"}) {
    if (message.compare(from, std::string(prefix).size(), prefix) != 0) continue;
    const std::size_t end = message.find(prefix[0] == 'p' ? ": " : " - ", from);
    if (end != std::string::npos) from = end + (prefix[0] == 'p' ? 2 : 3);
  }
  return message.substr(from);
}

std::string shortened(const std::string& text, std::size_t length) {
  if (text.size() <= length) return text;
  // Not in the middle of a character.
  const auto inside = [&text](std::size_t at) {
    return (static_cast<unsigned char>(text[at]) & 0xc0) == 0x80;
  };
  std::size_t head = length / 2;
  std::size_t tail = text.size() - length / 2;
  while (head > 0 && inside(head)) --head;
  while (tail < text.size() && inside(tail)) ++tail;
  return text.substr(0, head) + "..." + text.substr(tail);
}

}  // namespace

// Receives the parser's events and builds the values. The parser says nothing of places, so a place is found
// by going through the text beside it: every event is the next token.
class JsonBuilder {
 public:
  explicit JsonBuilder(JsonDocument& document) : m_document(document), m_text(document.m_text) {}

  // The names are the parser's.
  bool null() {
    add(JsonKind::null);
    return true;
  }
  bool boolean(bool value) {
    add(JsonKind::boolean).number = value ? 1 : 0;
    return true;
  }
  bool number_integer(std::int64_t whole) {
    JsonValue& value = add(JsonKind::number);
    value.number = static_cast<double>(whole);
    // A whole number has no -0, the text has.
    if (whole == 0 && m_text[value.offset] == '-') value.number = -0.0;
    value.whole = whole;
    value.is_whole = true;
    return true;
  }
  bool number_unsigned(std::uint64_t whole) {
    JsonValue& value = add(JsonKind::number);
    value.number = static_cast<double>(whole);
    if (whole > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) return true;
    value.whole = static_cast<std::int64_t>(whole);
    value.is_whole = true;
    return true;
  }
  bool number_float(double number, const std::string&) {
    add(JsonKind::number).number = number;
    return true;
  }
  bool string(std::string& text) {
    JsonValue& value = add(JsonKind::text);
    value.text = keep(text);
    return true;
  }
  bool binary(nlohmann::json::binary_t&) { return false; }  // not in a text
  bool start_object(std::size_t) {
    open(JsonKind::object);
    return true;
  }
  bool start_array(std::size_t) {
    open(JsonKind::list);
    return true;
  }
  bool end_object() {
    refuse_duplicate_keys();
    close();
    return true;
  }
  bool end_array() {
    close();
    return true;
  }
  bool key(std::string& text) {
    m_key_offset = next_token();
    m_at = token_end(m_key_offset);
    m_key = keep(text);
    return true;
  }
  template <class Exception>
  bool parse_error(std::size_t position, const std::string&, const Exception& error) {
    std::string wrong = what_is_wrong(error.what());
    // The position is that of the character read last, counted from 1; what is wrong may have begun before.
    std::size_t offset = std::min(position > 0 ? position - 1 : 0, m_text.size());
    const auto says = [&wrong](const char* beginning) { return wrong.rfind(beginning, 0) == 0; };
    if (!says("unexpected ','") && !says("unexpected ':'") && !says("unexpected end") &&
        !says("invalid comment"))
      offset = std::min(offset, next_token());

    std::string expected;
    const std::size_t expected_at = wrong.find("; expected ");
    if (expected_at != std::string::npos) {
      expected = wrong.substr(expected_at + 11);
      wrong.resize(expected_at);
    }
    wrong.resize(std::min(wrong.size(), wrong.find("; last read: ")));  // the place says that
    throw InputError(m_document.file_at(offset), "", shortened(wrong, kMessageLength),
                     remedy_for(wrong, expected, offset));
  }

 private:
  struct Open {
    std::uint32_t at;
    std::uint32_t last_child;
  };

  std::string remedy_for(const std::string& wrong, const std::string& expected, std::size_t offset) const {
    const auto says = [&wrong](const char* words) { return wrong.find(words) != std::string::npos; };
    const std::string_view between =
        offset > m_at ? std::string_view(m_text).substr(m_at, offset - m_at) : std::string_view();
    if ((says("unexpected '}'") || says("unexpected ']'")) && between.find(',') != std::string_view::npos)
      return "remove the comma before it";
    if (says("number overflow")) return "give a number that a double can hold, up to 1.7e308";
    if (says("invalid literal"))
      return "write a number, a text in quotes, true, false or null; there is no NaN and no infinity";
    if ((expected == "'}'" || expected == "']'") && says(" literal")) return "put a comma before it";
    if (expected == "string literal") return "write a key in quotes";
    return expected.empty() ? "put the text right" : "expected " + expected;
  }

  std::string_view keep(std::string& text) {
    m_document.m_strings.push_back(std::move(text));
    return m_document.m_strings.back();
  }

  JsonValue& add(JsonKind kind) {
    const auto at = static_cast<std::uint32_t>(m_document.m_values.size());
    JsonValue value;
    value.kind = kind;
    value.parent = value.first_child = value.next = JsonDocument::kNone;
    value.offset = next_token();
    m_at = token_end(value.offset);
    if (!m_open.empty()) {
      Open& parent = m_open.back();
      value.parent = parent.at;
      if (m_document.m_values[parent.at].kind == JsonKind::object) value.key = m_key;
      if (parent.last_child == JsonDocument::kNone)
        m_document.m_values[parent.at].first_child = at;
      else
        m_document.m_values[parent.last_child].next = at;
      parent.last_child = at;
      ++m_document.m_values[parent.at].count;
    }
    m_document.m_values.push_back(value);
    return m_document.m_values.back();
  }

  void open(JsonKind kind) {
    add(kind);
    m_open.push_back({static_cast<std::uint32_t>(m_document.m_values.size() - 1), JsonDocument::kNone});
  }

  void close() {
    m_open.pop_back();
    m_at = next_token() + 1;
  }

  // The parser has found the text right so far, so there is a token, and between here and there are only
  // spaces, comments, commas and colons.
  std::size_t next_token() const {
    std::size_t at = m_at;
    if (at == 0 && m_text.compare(0, 3, "\xef\xbb\xbf") == 0) at = 3;  // a byte order mark
    while (at < m_text.size()) {
      const char c = m_text[at];
      if (c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == ',' || c == ':') {
        ++at;
        continue;
      }
      if (c != '/') break;
      at = comment_end(at);
    }
    return at;
  }

  // Where the comment that begins here ends, as the parser has it: // also at a carriage return or a null.
  std::size_t comment_end(std::size_t at) const {
    const bool is_line = at + 1 < m_text.size() && m_text[at + 1] == '/';
    const std::size_t end =
        is_line ? m_text.find_first_of(std::string_view("\n\r\0", 3), at) : m_text.find("*/", at + 2);
    if (end == std::string::npos) return m_text.size();
    return end + (is_line ? 1 : 2);
  }

  std::size_t token_end(std::size_t at) const {
    const auto is_of_word = [](char c) {
      return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || c == 'E' || c == '+' || c == '-' || c == '.';
    };
    if (at >= m_text.size()) return m_text.size();
    if (m_text[at] == '"') {
      for (++at; at < m_text.size() && m_text[at] != '"'; ++at)
        if (m_text[at] == '\\') ++at;
      return at + 1;
    }
    if (!is_of_word(m_text[at])) return at + 1;
    while (at < m_text.size() && is_of_word(m_text[at])) ++at;
    return at;
  }

  void refuse_duplicate_keys() {
    m_children.clear();
    for (std::uint32_t at = m_document.m_values[m_open.back().at].first_child; at != JsonDocument::kNone;
         at = m_document.m_values[at].next)
      m_children.push_back(at);
    std::sort(m_children.begin(), m_children.end(), [this](std::uint32_t a, std::uint32_t b) {
      const int order = m_document.m_values[a].key.compare(m_document.m_values[b].key);
      return order != 0 ? order < 0 : a < b;
    });
    for (std::size_t i = 1; i < m_children.size(); ++i) {
      const JsonValue& value = m_document.m_values[m_children[i]];
      if (value.key != m_document.m_values[m_children[i - 1]].key) continue;
      throw InputError(m_document.file_at(value.offset), m_document.pointer(m_children[i]),
                       "the key stands twice in this object", "keep one of the two");
    }
  }

  JsonDocument& m_document;
  const std::string& m_text;
  std::size_t m_at = 0;  // behind the last token
  std::string_view m_key;
  std::size_t m_key_offset = 0;
  std::vector<Open> m_open;
  std::vector<std::uint32_t> m_children;
};

JsonDocument::JsonDocument(std::string text, std::string file)
    : m_text(std::move(text)), m_file(std::move(file)) {
  if (m_text.size() > kLongest) {
    throw InputError(m_file, "", "larger than 2 GiB; no machine definition is", "give another file");
  }
  JsonBuilder builder(*this);
  nlohmann::json::sax_parse(m_text.begin(), m_text.end(), &builder, nlohmann::json::input_format_t::json,
                            true, true);
}

std::string JsonDocument::pointer(std::uint32_t at) const {
  // From the value up; a deep one has its upper steps left out rather than built.
  std::vector<std::string> steps;
  std::size_t length = 0;
  bool is_cut = false;
  for (; m_values[at].parent != kNone; at = m_values[at].parent) {
    if (length > kPointerLength) {
      is_cut = true;
      break;
    }
    const JsonValue& parent = m_values[m_values[at].parent];
    std::string step;
    if (parent.kind == JsonKind::object) {
      for (const char c : shortened(std::string(m_values[at].key), kShownLength))
        step += c == '~' ? std::string("~0") : c == '/' ? std::string("~1") : std::string(1, c);
    } else {
      std::size_t index = 0;
      for (std::uint32_t sibling = parent.first_child; sibling != at; sibling = m_values[sibling].next)
        ++index;
      step = std::to_string(index);
    }
    length += step.size() + 1;
    steps.push_back(std::move(step));
  }

  std::string pointer = is_cut ? "..." : "";
  for (auto step = steps.rbegin(); step != steps.rend(); ++step) pointer += "/" + *step;
  return pointer;
}

std::string JsonDocument::file_at(std::size_t offset) const {
  const std::string_view before = std::string_view(m_text).substr(0, offset);
  const auto line = 1 + std::count(before.begin(), before.end(), '\n');
  const std::size_t line_start = before.rfind('\n') + 1;  // 0 where there is none before
  // Columns are characters, not bytes.
  const auto column =
      1 + std::count_if(before.begin() + static_cast<std::ptrdiff_t>(line_start), before.end(),
                        [](char c) { return (static_cast<unsigned char>(c) & 0xc0) != 0x80; });
  return m_file + ":" + std::to_string(line) + ":" + std::to_string(column);
}

std::string JsonDocument::shown(std::uint32_t at) const {
  const JsonValue& value = m_values[at];
  switch (value.kind) {
    case JsonKind::null:
      return "null";
    case JsonKind::boolean:
      return value.number != 0 ? "true" : "false";
    case JsonKind::text:
      return '"' + shortened(std::string(value.text), kShownLength) + '"';
    case JsonKind::list:
      return value.count == 0 ? "an empty list" : "a list of " + std::to_string(value.count);
    case JsonKind::object:
      return value.count == 0 ? "an empty object" : "an object";
    default:
      break;
  }
  std::size_t end = value.offset;
  while (end < m_text.size() &&
         std::string_view("0123456789+-.eE").find(m_text[end]) != std::string_view::npos)
    ++end;
  return shortened(m_text.substr(value.offset, end - value.offset), kShownLength);
}

}  // namespace tool
