// Where the rows of a tool path go: a file, whole or not at all, or standard output, as they come.
#ifndef K5AX_TOOL_TOOLPATH_OUTPUT_H
#define K5AX_TOOL_TOOLPATH_OUTPUT_H

#include <cassert>
#include <cstddef>
#include <cstring>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// Collects bytes in a buffer of fixed size and passes them on in large pieces.
class Output {
 public:
  using Sink = std::function<void(const char* data, std::size_t size)>;

  /// What reserve() may be asked for at most.
  static constexpr std::size_t kMostAtOnce = std::size_t(1) << 19;

  /// A number takes no more room than this: a sign, "0.", 323 zeros and 17 digits.
  static constexpr std::size_t kNumberRoom = 352;

  explicit Output(Sink sink);

  /// Makes room for `size` bytes. What put() and put_number() add until the next call has to fit in it.
  void reserve(std::size_t size) {
    if (m_buffer.size() - m_end < size) pass_on();
  }

  void put(const char* begin, const char* end) {
    const std::size_t size = static_cast<std::size_t>(end - begin);
    assert(size <= m_buffer.size() - m_end);
    char* const to = m_buffer.data() + m_end;
    m_end += size;
    if (size == 1) {  // a comma between two numbers, most of all
      *to = *begin;
    } else {
      std::memcpy(to, begin, size);
    }
  }
  void put(std::string_view text) { put(text.data(), text.data() + text.size()); }

  /// The shortest decimals that give the same double again, and never an exponent, which not everything that
  /// reads tool paths understands. Negative zero comes out as 0.
  void put_number(double value);

  /// Hands over what has been collected.
  void pass_on();

 private:
  Sink m_sink;
  std::vector<char> m_buffer;
  std::size_t m_end = 0;
};

/// True when the path names a file, and not standard output, which is "-" or nothing.
bool names_file(const std::string& path);

/// Does the work with an output to the file or to `standard`.
///
/// The file takes its place only when the work has returned and everything is on the disk; when the work
/// throws, what stood there stays. To `standard` the rows go as they come. Throws InputError where writing
/// fails, and whatever the work throws.
void with_output(const std::string& path, std::ostream& standard, const std::function<void(Output&)>& work);

}  // namespace tool

#endif
