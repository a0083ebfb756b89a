// Reads a tool path from a CSV file.
#include "host/toolpath_csv.h"

#include <array>
#include <charconv>
#include <cmath>
#include <fstream>
#include <string_view>
#include <system_error>

#include "host/input_error.h"

namespace host {
namespace {

constexpr std::string_view kHeader = "x,y,z,a,b,c";
constexpr std::array<std::string_view, 6> kColumns = {"x", "y", "z", "a", "b", "c"};

[[noreturn]] void refuse(const std::string& path, int line, const std::string& what) {
  throw InputError(path + ":" + std::to_string(line) + ": " + what);
}

// A field as it is shown in a message: what a file holds may be long.
std::string quoted(std::string_view field) {
  constexpr std::size_t kLongest = 30;
  const std::string shown(field.substr(0, kLongest));
  return "'" + shown + (field.size() > kLongest ? "...'" : "'");
}

std::vector<std::string_view> split(std::string_view row) {
  std::vector<std::string_view> fields;
  for (;;) {
    const std::size_t comma = row.find(',');
    fields.push_back(row.substr(0, comma));
    if (comma == std::string_view::npos) return fields;
    row.remove_prefix(comma + 1);
  }
}

double read_number(std::string_view field, std::string_view column, const std::string& path, int line) {
  const std::string where = "column " + std::string(column) + ": ";
  if (field.empty()) refuse(path, line, where + "empty; write a number, 0 where the axis stays");

  double value = 0;
  const char* const end = field.data() + field.size();
  const std::from_chars_result result = std::from_chars(field.data(), end, value);
  if (result.ec == std::errc::result_out_of_range)
    refuse(path, line, where + quoted(field) + " is beyond what a double holds; write a smaller number");
  if (result.ec != std::errc() || result.ptr != end || !std::isfinite(value))
    refuse(path, line, where + quoted(field) + " is not a number; write one such as -12.5");
  return value;
}

Position read_row(std::string_view row, const std::string& path, int line) {
  const std::vector<std::string_view> fields = split(row);
  if (fields.size() != kColumns.size())
    refuse(path, line,
           std::to_string(fields.size()) +
               " instead of 6 values; separate six by commas: " + std::string(kHeader));

  std::array<double, kColumns.size()> values = {};
  for (std::size_t i = 0; i < values.size(); ++i) values[i] = read_number(fields[i], kColumns[i], path, line);
  return {Point(values[0], values[1], values[2]), Point(values[3], values[4], values[5]) * math::D2R, line};
}

// Lines may end as on Windows.
bool next_line(std::istream& file, std::string& text) {
  if (!std::getline(file, text)) return false;
  if (!text.empty() && text.back() == '\r') text.pop_back();
  return true;
}

}  // namespace

std::vector<Position> read_toolpath(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw InputError(path + ": cannot be opened; give a tool path that is there and may be read");

  std::string text;
  if (!next_line(file, text) || text != kHeader)
    refuse(path, 1, quoted(text) + " is not the header; begin with the line " + std::string(kHeader));

  std::vector<Position> positions;
  for (int line = 2; next_line(file, text); ++line) positions.push_back(read_row(text, path, line));
  if (file.bad()) throw InputError(path + ": cannot be read to its end; is it a file?");
  if (positions.empty()) refuse(path, 2, "no positions; write at least one row below the header");
  return positions;
}

}  // namespace host
