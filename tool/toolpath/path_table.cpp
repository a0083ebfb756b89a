// A tool path as a table: which columns it has, reading one row's numbers and writing the row again.
#include "tool/toolpath/path_table.h"

#include "tool/errors.h"
#include "tool/toolpath/decimal_number.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <cmath>
#include <cstring>
#include <system_error>

namespace tool {
namespace {

bool is_space(char c) { return c == ' ' || c == '\t'; }

const char* skip_spaces(const char* at, const char* end) {
  while (at != end && is_space(*at)) ++at;
  return at;
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && is_space(text.front())) text.remove_prefix(1);
  while (!text.empty() && is_space(text.back())) text.remove_suffix(1);
  return text;
}

// A field as it is shown in a message: what a file holds may be long.
std::string quoted(std::string_view field) {
  constexpr std::size_t kLongest = 30;
  const std::string shown(field.substr(0, kLongest));
  return "'" + shown + (field.size() > kLongest ? "...'" : "'");
}

// The place behind a field in quotes, in which "" stands for one quote; null when nothing closes it.
const char* after_quotes(const char* field, const char* end) {
  for (const char* at = field + 1; at != end; ++at) {
    if (*at != '"') continue;
    if (at + 1 == end || at[1] != '"') return at + 1;
    ++at;
  }
  return nullptr;
}

std::string_view without_quotes(std::string_view name) {
  if (name.size() >= 2 && name.front() == '"' && name.back() == '"') name = name.substr(1, name.size() - 2);
  return trimmed(name);
}

bool same_name(std::string_view one, std::string_view other) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [&lower](char c, char d) { return lower(c) == lower(d); });
}

// The one of the six, or -1.
int place_of(std::string_view name) {
  for (std::size_t i = 0; i < kPathColumns.size(); ++i)
    if (same_name(name, kPathColumns[i])) return static_cast<int>(i);
  return -1;
}

bool is_number(std::string_view text) {
  double value = 0;
  const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), value);
  return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

std::string header_to_write(const TablePlan& plan) {
  std::string names;
  for (std::size_t i = 0; i < plan.use.size(); ++i)
    if (plan.use[i] == ColumnUse::kRequired)
      names += (names.empty() ? "" : ",") + std::string(kPathColumns[i]);
  return "begin with a line such as " + names;
}

}  // namespace

PathTable::PathTable(const std::string& name, const Line& header, const TablePlan& plan)
    : m_name(name), m_appended(plan.appended) {
  assert(plan.appended.size() <= kMostAppended);
  std::array<bool, 6> found{};
  const char* const end = header.text.data() + header.text.size();
  for (const char* field = header.text.data();; ++field) {
    const char* const field_end = skip_text(header, field);
    const std::string_view column =
        without_quotes(trimmed({field, static_cast<std::size_t>(field_end - field)}));
    if (m_columns.empty() && is_number(column)) {
      refuse(header, field, "", quoted(column) + " is a number and no name of a column",
             header_to_write(plan));
    }
    for (const std::string& appended : plan.appended) {
      if (!same_name(column, appended)) continue;
      refuse(header, field, "", "there is a column " + appended + " already",
             "rename it, so that a new one can be added");
    }
    const int place = place_of(column);
    m_columns.push_back(place < 0 ? kThrough : place);
    if (place >= 0) {
      const auto i = static_cast<std::size_t>(place);
      if (found[i]) refuse(header, field, "", quoted(column) + " is there twice", "name every column once");
      found[i] = true;
      m_zero[i] = plan.use[i] == ColumnUse::kZero;
      if (plan.rewritten[i]) m_rewritten.push_back(place);
    }
    field = field_end;
    if (field == end) break;
  }
  require_columns(header, plan);
  for (std::size_t i = 0; i < found.size(); ++i)
    if (plan.appended_if_missing[i] && !found[i]) m_added.push_back(i);
}

void PathTable::require_columns(const Line& header, const TablePlan& plan) const {
  std::string missing;
  int count = 0;
  for (std::size_t i = 0; i < plan.use.size(); ++i) {
    if (plan.use[i] != ColumnUse::kRequired) continue;
    if (std::find(m_columns.begin(), m_columns.end(), static_cast<int>(i)) != m_columns.end()) continue;
    missing += (missing.empty() ? "" : ", ") + std::string(kPathColumns[i]);
    ++count;
  }
  if (count == 0) return;

  const std::string what = (count == 1 ? "no column " : "no columns ") + missing;
  for (const char separator : {';', '\t'}) {
    if (m_columns.size() > 1 || header.text.find(separator) == std::string_view::npos) continue;
    refuse(header, header.text.data(), "", what + ", and " + (separator == ';' ? "semicolons" : "tabs"),
           "separate columns by commas, and write numbers with a point");
  }
  refuse(header, header.text.data(), "", what, header_to_write(plan));
}

void PathTable::write_header(const Line& header, Output& output) const {
  std::string names;
  for (const std::size_t place : m_added) names += "," + std::string(kPathColumns[place]);
  for (const std::string& name : m_appended) names += "," + name;
  output.reserve(header.text.size() + names.size() + header.end.size());
  output.put(header.text);
  output.put(names);
  output.put(header.end);
}

void PathTable::read(const Line& line, PathRow& row) {
  row.line = line.number;
  const char* const end = line.text.data() + line.text.size();
  const char* at = line.text.data();
  std::size_t left = m_columns.size();
  for (const int column : m_columns) {
    if (column == kThrough) {
      at = skip_text(line, at);
    } else {
      const auto place = static_cast<std::size_t>(column);
      at = read_number(line, at, place);
      row.values[place] = m_values[place];
    }
    if ((--left == 0) != (at == end)) refuse_count(line);
    if (left > 0) ++at;
  }
}

// The end of the field, which has a number that goes to the place.
inline const char* PathTable::read_number(const Line& line, const char* field, std::size_t place) {
  const char* const end = line.text.data() + line.text.size();
  const char* const begin = skip_spaces(field, end);
  const char* field_end = read_decimal_number(begin, m_values[place]);
  m_spans[place] = {begin, field_end};
  if (field_end == nullptr || (field_end != end && *field_end != ','))
    field_end = read_long_number(line, field, place);
  if (m_zero[place] && m_values[place] != 0) refuse_angle(line, place);
  return field_end;
}

// A number with more digits or an exponent, or with blanks behind it.
const char* PathTable::read_long_number(const Line& line, const char* field, std::size_t place) {
  const char* const end = line.text.data() + line.text.size();
  const char* const begin = skip_spaces(field, end);
  double& value = m_values[place];
  const std::from_chars_result result = std::from_chars(begin, end, value);
  m_spans[place] = {begin, result.ptr};
  const char* const field_end = skip_spaces(result.ptr, end);
  const bool ends = field_end == end || *field_end == ',';
  if (!ends || result.ec != std::errc() || !std::isfinite(value)) return read_odd_number(line, field, place);
  return field_end;
}

// A number in quotes or with a plus, or what is no number.
const char* PathTable::read_odd_number(const Line& line, const char* field, std::size_t place) {
  const char* const field_end = skip_text(line, field);
  const std::string name(kPathColumns[place]);
  const std::string_view whole = trimmed({field, static_cast<std::size_t>(field_end - field)});
  const char* const shown = whole.empty() ? field : whole.data();
  std::string_view digits = without_quotes(whole);
  if (digits.size() > 1 && digits.front() == '+' && digits[1] != '-') digits.remove_prefix(1);
  if (digits.empty()) refuse(line, shown, name, "empty", "write a number, 0 where the axis stays");

  const char* const end = digits.data() + digits.size();
  const std::from_chars_result result = std::from_chars(digits.data(), end, m_values[place]);
  if (result.ec == std::errc::result_out_of_range && result.ptr == end) {
    refuse(line, shown, name, quoted(whole) + " is beyond what a double holds",
           "write a number of usual size, 0 where it is next to nothing");
  }
  if (result.ec != std::errc() || result.ptr != end || !std::isfinite(m_values[place]))
    refuse(line, shown, name, quoted(whole) + " is not a number", "write one such as -12.5");

  m_spans[place] = {whole.data(), whole.data() + whole.size()};
  return field_end;
}

// The end of the field: a comma, or the end of the line. Commas in quotes belong to the field.
const char* PathTable::skip_text(const Line& line, const char* field) const {
  const char* const end = line.text.data() + line.text.size();
  const char* const begin = skip_spaces(field, end);
  if (begin != end && *begin == '"') {
    const char* const after = after_quotes(begin, end);
    if (after == nullptr)
      refuse(line, begin, "", "a quote that nothing closes on its line", "close it, or leave it out");
    const char* const next = skip_spaces(after, end);
    if (next != end && *next != ',') {
      refuse(line, next, "", "text behind a closing quote", "write a quote inside quotes twice");
    }
    return next;
  }
  if (begin == end) return end;
  const void* const comma = std::memchr(begin, ',', static_cast<std::size_t>(end - begin));
  return comma != nullptr ? static_cast<const char*>(comma) : end;
}

void PathTable::write(const Line& line, const PathRow& row, Output& output) {
  output.reserve(line.text.size() + line.end.size() + (6 + kMostAppended) * (Output::kNumberRoom + 1));
  const char* at = line.text.data();
  for (const int column : m_rewritten) {
    const auto place = static_cast<std::size_t>(column);
    if (row.values[place] == m_values[place]) continue;
    if (!std::isfinite(row.values[place])) refuse_result(row);
    output.put(at, m_spans[place].begin);
    output.put_number(row.values[place]);
    at = m_spans[place].end;
  }
  output.put(at, line.text.data() + line.text.size());
  const auto append = [&](double value) {
    if (!std::isfinite(value)) refuse_result(row);
    output.put(",");
    output.put_number(value);
  };
  for (const std::size_t place : m_added) append(row.values[place]);
  for (std::size_t i = 0; i < m_appended.size(); ++i) append(row.appended[i]);
  output.put(line.end);
}

void PathTable::refuse(const Line& line, const char* place, const std::string& column,
                       const std::string& value, const std::string& remedy) const {
  const auto offset = static_cast<std::size_t>(place - line.text.data());
  throw InputError(m_name + ":" + std::to_string(line.number) + ":" + std::to_string(offset + 1),
                   column.empty() ? "" : "column " + column, value, remedy);
}

void PathTable::refuse_angle(const Line& line, std::size_t place) const {
  const Span& span = m_spans[place];
  const std::string letter(1, static_cast<char>('A' + (place - 3)));
  refuse(line, span.begin, std::string(kPathColumns[place]),
         quoted({span.begin, static_cast<std::size_t>(span.end - span.begin)}) +
             " where the machine has no " + letter + " axis",
         "take the path that was made for this machine");
}

void PathTable::refuse_count(const Line& line) const {
  std::size_t count = 1;
  const char* const end = line.text.data() + line.text.size();
  const char* field_end = skip_text(line, line.text.data());
  for (; field_end != end; ++count) field_end = skip_text(line, field_end + 1);
  const std::string wanted = std::to_string(m_columns.size());
  refuse(line, end, "",
         std::to_string(count) + (count == 1 ? " value" : " values") + " where the header has " + wanted +
             (m_columns.size() == 1 ? " column" : " columns"),
         "write one value for every column");
}

void PathTable::refuse_result(const PathRow& row) const {
  throw InputError(m_name + ":" + std::to_string(row.line), "",
                   "the numbers are so large that the result is beyond what a double holds",
                   "write numbers of usual size");
}

}  // namespace tool
