// What can go wrong with what a person gave the tool, as one line that says where, what and what to do.
#include "tool/errors.h"

#include <cstdio>

namespace tool {
namespace {

std::string one_line(const std::string& file, const std::string& place, const std::string& value,
                     const std::string& remedy) {
  std::string line;
  for (const std::string* part : {&file, &place, &value}) {
    if (part->empty()) continue;
    if (!line.empty()) line += ": ";
    line += *part;
  }
  if (!remedy.empty()) line += (line.empty() ? "" : "; ") + remedy;
  return printable(line);
}

}  // namespace

InputError::InputError(const std::string& file, const std::string& place, const std::string& value,
                       const std::string& remedy)
    : std::runtime_error(one_line(file, place, value, remedy)) {}

UsageError::UsageError(const std::string& value, const std::string& remedy)
    : std::runtime_error(one_line("", "", value, remedy)) {}

std::string printable(const std::string& text) {
  std::string out;
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (c == '\n') {
      out += "\\n";
    } else if (c == '\t') {
      out += "\\t";
    } else if (c == '\r') {
      out += "\\r";
    } else if (code < 0x20 || code == 0x7f) {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\x%02x", static_cast<unsigned int>(code));
      out += escape;
    } else {
      out += c;
    }
  }
  return out;
}

std::string reason_of(const std::exception& error, const std::string& path) {
  const std::string what = error.what();
  const std::string name = '"' + path + "\": ";
  return what.rfind(name, 0) == 0 ? what.substr(name.size()) : what;
}

}  // namespace tool
