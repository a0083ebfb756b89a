// A whole tool path through a conversion, row by row, in constant memory.
#ifndef K5AX_TOOL_TOOLPATH_ROW_STREAM_H
#define K5AX_TOOL_TOOLPATH_ROW_STREAM_H

#include "tool/errors.h"
#include "tool/toolpath/input.h"
#include "tool/toolpath/line_reader.h"
#include "tool/toolpath/output.h"
#include "tool/toolpath/path_table.h"
#include "tool/toolpath/progress.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tool {

/// Reads every row, calls `convert(PathRow&)`, and writes it again. Blank lines are passed on; a byte order
/// mark is not. After every piece that was read its rows are handed over, so that the rows of a slow source
/// come out as they come in.
///
/// @return the number of rows. Throws InputError for what cannot be read, with the rows before it written
template <class Convert>
std::uint64_t stream_rows(Input& input, const TablePlan& plan, Output& output, Progress& progress,
                          Convert convert, std::size_t capacity = LineReader::kCapacity) {
  constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";
  LineReader reader(input, capacity);
  Line line;

  // The header, with the blank lines before it.
  bool found = false;
  while (!found && reader.read_more()) {
    while (!found && reader.next(line)) {
      if (line.number == 1 && line.text.substr(0, kByteOrderMark.size()) == kByteOrderMark)
        line.text.remove_prefix(kByteOrderMark.size());
      found = !PathTable::is_blank(line);
      if (found) break;
      output.reserve(line.text.size() + line.end.size());
      output.put(line.text);
      output.put(line.end);
    }
  }
  if (!found) throw InputError(input.name(), "", "no header and no rows", "give a tool path");
  PathTable table(input.name(), line, plan);
  table.write_header(line, output);

  std::uint64_t rows = 0;
  PathRow row;
  do {
    while (reader.next(line)) {
      if (PathTable::is_blank(line)) {
        output.reserve(line.text.size() + line.end.size());
        output.put(line.text);
        output.put(line.end);
        continue;
      }
      table.read(line, row);
      convert(row);
      table.write(line, row, output);
      ++rows;
    }
    output.pass_on();
    progress.update(reader.bytes_read());
  } while (reader.read_more());
  return rows;
}

}  // namespace tool

#endif
