// A tool path line by line, in constant memory.
#ifndef K5AX_TOOL_TOOLPATH_LINE_READER_H
#define K5AX_TOOL_TOOLPATH_LINE_READER_H

#include "tool/toolpath/decimal_number.h"
#include "tool/toolpath/input.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tool {

/// One line of a text. Both views are borrowed from the reader until its next read_more(). Right behind the
/// text stands a control character, and kReadBehind bytes may be read there.
struct Line {
  std::string_view text;     ///< without its end
  std::string_view end;      ///< "\n", "\r\n", or what the last line has, which may be nothing
  std::uint64_t number = 0;  ///< from 1
};

/// Reads piece by piece: each read_more() reads once, and next() then gives the lines that are complete.
///
///     while (reader.read_more())
///       while (reader.next(line)) ...
class LineReader {
 public:
  /// Also the longest line, with its end.
  static constexpr std::size_t kCapacity = std::size_t(1) << 18;

  /// The input must outlive the reader.
  explicit LineReader(Input& input, std::size_t capacity = kCapacity);

  /// False when everything has been read and given. Throws InputError for a line that is too long, and what
  /// the input throws. To be called when next() has given false.
  bool read_more();

  bool next(Line& line);

  std::uint64_t bytes_read() const { return m_bytes_read; }

 private:
  Input& m_input;
  std::size_t m_capacity;
  std::vector<char> m_buffer;  // with kReadBehind bytes behind the capacity
  std::size_t m_begin = 0;     // of what has not been given yet
  std::size_t m_scanned = 0;   // up to here there is no line end after m_begin
  std::size_t m_end = 0;
  bool m_at_end = false;
  std::uint64_t m_lines = 0;
  std::uint64_t m_bytes_read = 0;
};

}  // namespace tool

#endif
