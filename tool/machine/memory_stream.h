// Streams between the library and a text of bytes.
#ifndef K5AX_TOOL_MACHINE_MEMORY_STREAM_H
#define K5AX_TOOL_MACHINE_MEMORY_STREAM_H

#include <k5ax/platform/stream.h>

#include <cstddef>
#include <string>

namespace tool {

/// Collects what is written.
class ByteWriter : public IIO::Stream {
 public:
  IIO::FILE_MODE Mode() const override { return IIO::FILE_WRITE; }
  void Write(const void* data, std::size_t size) override;
  void Read(void* data, std::size_t size) override;  ///< throws std::logic_error

  const std::string& bytes() const { return m_bytes; }

 private:
  std::string m_bytes;
};

/// Reads bytes that somebody else keeps. Past their end it throws IIO::FileError.
class ByteReader : public IIO::Stream {
 public:
  explicit ByteReader(const std::string& bytes) : m_bytes(bytes) {}

  IIO::FILE_MODE Mode() const override { return IIO::FILE_READ; }
  void Write(const void* data, std::size_t size) override;  ///< throws std::logic_error
  void Read(void* data, std::size_t size) override;

 private:
  const std::string& m_bytes;
  std::size_t m_at = 0;
};

/// Hands on what another stream reads, and keeps it.
class ListeningReader : public IIO::Stream {
 public:
  explicit ListeningReader(IIO::Stream& source) : m_source(source) {}

  IIO::FILE_MODE Mode() const override { return IIO::FILE_READ; }
  void Write(const void* data, std::size_t size) override;  ///< throws std::logic_error
  void Read(void* data, std::size_t size) override;

  const std::string& bytes() const { return m_bytes; }

 private:
  IIO::Stream& m_source;
  std::string m_bytes;
};

}  // namespace tool

#endif
