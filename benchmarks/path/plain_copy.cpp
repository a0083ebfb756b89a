// The least that converting a tool path costs: reading its numbers and writing them.
//
// It is meant to be fast: one pass over the text, no search for line ends, numbers parsed where they stand
// and printed where they go, a quarter of a megabyte a system call.
#include "benchmarks/path/plain_copy.h"

#include <charconv>
#include <cstddef>
#include <cstring>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace bench {
namespace {

constexpr std::size_t kPiece = std::size_t(1) << 18;
constexpr std::size_t kLongestRow = 4096;  // read or written

class Writer {
 public:
  Writer() : m_buffer(kPiece + kLongestRow), m_at(m_buffer.data()) {}

  void number(double value) {
    m_at = std::to_chars(m_at, m_buffer.data() + m_buffer.size(), value, std::chars_format::fixed).ptr;
  }

  void text(const char* begin, const char* end) {
    const auto size = static_cast<std::size_t>(end - begin);
    std::memcpy(m_at, begin, size);
    m_at += size;
  }

  bool end_row() { return m_at < m_buffer.data() + kPiece || flush(); }

  bool flush() {
    const char* begin = m_buffer.data();
    while (begin < m_at) {
      const ssize_t count = ::write(STDOUT_FILENO, begin, static_cast<std::size_t>(m_at - begin));
      if (count < 0) return false;
      begin += count;
    }
    m_at = m_buffer.data();
    return true;
  }

 private:
  std::vector<char> m_buffer;
  char* m_at;
};

// One row, whose end is there; gives the place behind it, or null.
const char* copy_row(const char* at, const char* end, Writer& writer) {
  double values[6];
  for (int i = 0; i < 3; ++i) {
    const std::from_chars_result result = std::from_chars(at, end, values[i]);
    if (result.ec != std::errc()) return nullptr;
    at = result.ptr + 1;
    writer.number(values[i]);
    writer.text(",", "," + 1);
  }
  const char* const angles = at;
  for (int i = 3; i < 6; ++i) {
    const std::from_chars_result result = std::from_chars(at, end, values[i]);
    if (result.ec != std::errc()) return nullptr;
    at = result.ptr + 1;
  }
  writer.text(angles, at);
  return at;
}

}  // namespace

int plain_copy(const char* path) {
  const int file = ::open(path, O_RDONLY | O_CLOEXEC);
  if (file < 0) return 1;
  std::vector<char> buffer(kPiece + kLongestRow);
  std::size_t kept = 0;  // the beginning of a row
  bool in_header = true;
  Writer writer;
  for (;;) {
    const ssize_t count = ::read(file, buffer.data() + kept, kPiece);
    if (count < 0) return 1;
    if (count == 0) break;
    const char* const end = buffer.data() + kept + static_cast<std::size_t>(count);
    const char* at = buffer.data();
    const auto* last_end = static_cast<const char*>(memrchr(at, '\n', static_cast<std::size_t>(end - at)));
    if (last_end == nullptr) return 1;
    if (in_header) {
      const auto* header_end =
          static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
      writer.text(at, header_end + 1);
      at = header_end + 1;
      in_header = false;
    }
    while (at <= last_end) {
      at = copy_row(at, last_end + 1, writer);
      if (at == nullptr || !writer.end_row()) return 1;
    }
    kept = static_cast<std::size_t>(end - at);
    if (kept > kLongestRow) return 1;
    std::memmove(buffer.data(), at, kept);
  }
  ::close(file);
  return kept == 0 && writer.flush() ? 0 : 1;
}

}  // namespace bench
