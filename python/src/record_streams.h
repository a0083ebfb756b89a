// A machine's record in memory: the streams that the library writes it to and reads it from.
#ifndef K5AX_PYTHON_RECORD_STREAMS_H
#define K5AX_PYTHON_RECORD_STREAMS_H

#include <k5ax/platform/stream.h>

#include <string>
#include <string_view>

namespace k5ax_python {

class RecordWriter : public IIO::Stream {
 public:
  IIO::FILE_MODE Mode() const override { return IIO::FILE_WRITE; }
  void Write(const void* data, std::size_t size) override;
  void Read(void* data, std::size_t size) override;

  const std::string& bytes() const { return m_bytes; }

 private:
  std::string m_bytes;
};

// The bytes are borrowed. Where they end too early, Read throws std::runtime_error.
class RecordReader : public IIO::Stream {
 public:
  explicit RecordReader(std::string_view bytes) : m_rest(bytes) {}

  IIO::FILE_MODE Mode() const override { return IIO::FILE_READ; }
  void Write(const void* data, std::size_t size) override;
  void Read(void* data, std::size_t size) override;

 private:
  std::string_view m_rest;
};

}  // namespace k5ax_python

#endif
