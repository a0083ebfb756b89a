// A machine saved and loaded without a file.
#ifndef K5AX_TESTS_KINEMATICS_MEMORY_STREAM_H
#define K5AX_TESTS_KINEMATICS_MEMORY_STREAM_H

#include <algorithm>
#include <cstddef>
#include <vector>

#include <k5ax/machdef.h>

namespace k5ax_test {

// What is written can be read once.
class MemoryStream : public IIO::Stream {
 public:
  IIO::FILE_MODE Mode() const override { return m_mode; }
  void Write(const void* data, std::size_t size) override {
    const char* const bytes = static_cast<const char*>(data);
    m_bytes.insert(m_bytes.end(), bytes, bytes + size);
  }
  void Read(void* data, std::size_t size) override {
    if (m_bytes.size() - m_read < size) throw IIO::FileError("unexpected end");
    std::copy_n(m_bytes.begin() + static_cast<std::ptrdiff_t>(m_read), size, static_cast<char*>(data));
    m_read += size;
  }
  void read_from_here_on() { m_mode = IIO::FILE_READ; }

 private:
  IIO::FILE_MODE m_mode = IIO::FILE_WRITE;
  std::vector<char> m_bytes;
  std::size_t m_read = 0;
};

inline void save_and_load(md::CMachDef& from, md::CMachDef& to) {
  MemoryStream stream;
  from.serialize(stream);
  stream.read_from_here_on();
  to.serialize(stream);
}

}  // namespace k5ax_test

#endif
