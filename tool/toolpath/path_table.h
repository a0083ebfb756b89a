// A tool path as a table: which columns it has, reading one row's numbers and writing the row again.
//
// Everything that does not change keeps its text: numbers that stay what they are, further columns, blanks,
// blank lines, the ends of lines, and a last line without one. So line n of what comes out is line n of what
// went in.
#ifndef K5AX_TOOL_TOOLPATH_PATH_TABLE_H
#define K5AX_TOOL_TOOLPATH_PATH_TABLE_H

#include "tool/toolpath/line_reader.h"
#include "tool/toolpath/output.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// The columns that mean something, in this order wherever an array has six elements.
constexpr std::array<std::string_view, 6> kPathColumns = {"x", "y", "z", "a", "b", "c"};

/// What a verb wants of one of these columns.
enum class ColumnUse {
  kRequired,  ///< it has to be there
  kOptional,  ///< 0 where it is not there
  kZero,      ///< the machine has no such axis: where the column is there, it has to hold zeros
};

/// What a verb wants of a table.
struct TablePlan {
  std::array<ColumnUse, 6> use{};
  std::array<bool, 6> rewritten{};  ///< the columns, where they are there, that come out with new numbers
  std::array<bool, 6> appended_if_missing{};  ///< the columns that are added behind the last one otherwise
  std::vector<std::string> appended;  ///< further columns behind those, at most kMostAppended, by their names
};

constexpr std::size_t kMostAppended = 3;

/// The numbers of one row: lengths as they are, angles in degrees.
struct PathRow {
  std::uint64_t line = 0;
  std::array<double, 6> values{};
  std::array<double, kMostAppended> appended{};
};

class PathTable {
 public:
  /// Understands the header: names in any order and in either case, each of the six at most once. Throws
  /// InputError. `name` is what messages call the file.
  PathTable(const std::string& name, const Line& header, const TablePlan& plan);

  /// The header with the appended names.
  void write_header(const Line& header, Output& output) const;

  /// Reads the row's numbers, and keeps where in the line they stand. Throws InputError, with the line, the
  /// place in it and the column.
  void read(const Line& line, PathRow& row);

  /// Writes the row that was read last, with the values that it has now. Throws InputError for one that is
  /// not finite.
  void write(const Line& line, const PathRow& row, Output& output);

  /// True for a line that is no row: nothing but blanks.
  static bool is_blank(const Line& line) {
    for (const char c : line.text)
      if (c != ' ' && c != '\t') return false;
    return true;
  }

 private:
  // In m_columns: one of the six, or a column that passes through.
  static constexpr int kThrough = -1;

  void require_columns(const Line& header, const TablePlan& plan) const;
  const char* read_number(const Line& line, const char* field, std::size_t place);
  const char* read_long_number(const Line& line, const char* field, std::size_t place);
  const char* read_odd_number(const Line& line, const char* field, std::size_t place);
  const char* skip_text(const Line& line, const char* field) const;
  [[noreturn]] void refuse(const Line& line, const char* place, const std::string& column,
                           const std::string& value, const std::string& remedy) const;
  [[noreturn]] void refuse_angle(const Line& line, std::size_t place) const;
  [[noreturn]] void refuse_count(const Line& line) const;
  [[noreturn]] void refuse_result(const PathRow& row) const;

  struct Span {
    const char* begin = nullptr;
    const char* end = nullptr;
  };

  std::string m_name;
  std::vector<int> m_columns;        // of the file, from left to right
  std::array<bool, 6> m_zero{};      // has to hold zeros
  std::vector<int> m_rewritten;      // those of the six that are rewritten, from left to right
  std::array<Span, 6> m_spans{};     // in the line read last: the text of each number
  std::array<double, 6> m_values{};  // and what it is
  std::vector<std::size_t> m_added;  // those of the six that are appended
  std::vector<std::string> m_appended;
};

}  // namespace tool

#endif
