// Streams between the library and a text of bytes.
#include "tool/machine/memory_stream.h"

#include <cstring>
#include <stdexcept>

namespace tool {
namespace {

[[noreturn]] void refuse_direction() { throw std::logic_error("a stream goes one way"); }

}  // namespace

void ByteWriter::Write(const void* data, std::size_t size) {
  if (size > 0) m_bytes.append(static_cast<const char*>(data), size);
}

void ByteWriter::Read(void*, std::size_t) { refuse_direction(); }

void ByteReader::Write(const void*, std::size_t) { refuse_direction(); }

void ByteReader::Read(void* data, std::size_t size) {
  if (m_bytes.size() - m_at < size) throw IIO::FileError("cannot read: unexpected end of the record");
  if (size > 0) std::memcpy(data, m_bytes.data() + m_at, size);
  m_at += size;
}

void ListeningReader::Write(const void*, std::size_t) { refuse_direction(); }

void ListeningReader::Read(void* data, std::size_t size) {
  m_source.Read(data, size);
  if (size > 0) m_bytes.append(static_cast<const char*>(data), size);
}

}  // namespace tool
