// The stream over a file: buffering, and when a save counts as done.

#include <k5ax/platform/stream.h>

#include <algorithm>
#include <cstring>
#include <exception>
#include <memory>
#include <new>
#include <string>

#include "system_file.h"

namespace IIO {

// A file with a buffer in front of it, one way. Small files are one system call; blocks larger than the
// buffer pass it by, and so nothing here grows with what a caller asks for.
//
// The buffer of a small file stands in this object. A machine takes some kilobytes, and the memory for a
// large buffer would cost as much as reading it.
class FileStream::Buffered {
 public:
  Buffered(const char* path, FILE_MODE mode) : m_file(given(path)), m_mode(mode) {
    if (mode == FILE_READ) {
      m_file.open_for_reading();
      m_end = m_file.read_start(m_buffer, m_size);
    } else if (mode == FILE_WRITE) {
      m_file.open_for_writing();
    } else {
      m_file.fail("cannot open: unknown mode " + std::to_string(mode));
    }
  }

  FILE_MODE mode() const { return m_mode; }
  int exceptions_at_start() const { return m_exceptions_at_start; }

  void write(const unsigned char* data, std::size_t size) {
    if (m_mode != FILE_WRITE) m_file.fail("cannot write: the file was opened for reading");
    if (m_failed) m_file.fail("cannot write: an earlier write failed");

    m_failed = true;  // until this write is through: what has a gap in it must not replace the old file
    if (size > m_size - m_end && size < kLargeSize) enlarge();
    if (size > m_size - m_end) {
      flush();
      if (size >= m_size) {
        m_file.write_all(data, size);
        size = 0;
      }
    }
    if (size > 0) std::memcpy(m_buffer + m_end, data, size);
    m_end += size;
    m_failed = false;
  }

  void read(unsigned char* data, std::size_t size) {
    if (m_mode != FILE_READ) m_file.fail("cannot read: the file was opened for writing");

    if (size <= m_end - m_begin) {
      if (size > 0) std::memcpy(data, m_buffer + m_begin, size);
      m_begin += size;
      return;
    }
    while (size > 0) {
      if (m_begin == m_end && size >= m_size) {
        const std::size_t count = some(m_file.read_some(data, size));
        data += count;
        size -= count;
        continue;
      }
      if (m_begin == m_end) {
        if (m_end == m_size) enlarge();
        m_begin = m_end = 0;
        m_end = some(m_file.read_some(m_buffer, m_size));
      }
      const std::size_t count = std::min(size, m_end - m_begin);
      std::memcpy(data, m_buffer + m_begin, count);
      m_begin += count;
      data += count;
      size -= count;
    }
  }

  // Puts a save in place. Not called, a save leaves no trace.
  void close() {
    if (m_mode != FILE_WRITE || m_failed) return;

    flush();
    m_file.commit();
  }

 private:
  static const char* given(const char* path) {
    if (path == nullptr) throw FileError("(no path): the path is null");
    return path;
  }

  // For a file that the small buffer is too small for. Without memory for a large one, the small one goes on.
  void enlarge() {
    if (m_large) return;
    try {
      m_large.reset(new unsigned char[kLargeSize]);
    } catch (const std::bad_alloc&) {
      return;
    }
    std::memcpy(m_large.get(), m_buffer, m_end);
    m_buffer = m_large.get();
    m_size = kLargeSize;
  }

  void flush() {
    m_file.write_all(m_buffer, m_end);
    m_end = 0;
  }

  std::size_t some(std::size_t count) const {
    if (count == 0) m_file.fail("cannot read: unexpected end of file");
    return count;
  }

  static constexpr std::size_t kSmallSize = 16384;
  static constexpr std::size_t kLargeSize = 65536;

  SystemFile m_file;
  FILE_MODE m_mode;
  int m_exceptions_at_start = std::uncaught_exceptions();
  bool m_failed = false;    // a write did not get through
  std::size_t m_begin = 0;  // bytes of the buffer that have been handed out already, when reading
  std::size_t m_end = 0;    // bytes in the buffer
  unsigned char m_small[kSmallSize];
  std::unique_ptr<unsigned char[]> m_large;
  unsigned char* m_buffer = m_small;  // the one in use, and its size
  std::size_t m_size = kSmallSize;
};

FileStream::FileStream(const char* path, FILE_MODE mode) : m_file(std::make_unique<Buffered>(path, mode)) {}

FileStream::~FileStream() noexcept(false) {
  // Compared with the number at the start, not with zero: a save made while another exception is being
  // dealt with is a save like any other.
  if (std::uncaught_exceptions() > m_file->exceptions_at_start()) return;

  m_file->close();
}

FILE_MODE FileStream::Mode() const { return m_file->mode(); }

void FileStream::Write(const void* data, std::size_t size) {
  m_file->write(static_cast<const unsigned char*>(data), size);
}

void FileStream::Read(void* data, std::size_t size) { m_file->read(static_cast<unsigned char*>(data), size); }

}  // namespace IIO
