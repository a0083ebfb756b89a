// A machine's record in memory.
#include "record_streams.h"

#include <cstring>
#include <stdexcept>

namespace k5ax_python {

void RecordWriter::Write(const void* data, std::size_t size) {
  if (size > 0) m_bytes.append(static_cast<const char*>(data), size);
}

void RecordWriter::Read(void*, std::size_t) { throw std::logic_error("the stream is for writing"); }

void RecordReader::Write(const void*, std::size_t) { throw std::logic_error("the stream is for reading"); }

void RecordReader::Read(void* data, std::size_t size) {
  if (size > m_rest.size()) throw std::runtime_error("unexpected end of the record");
  if (size > 0) std::memcpy(data, m_rest.data(), size);
  m_rest.remove_prefix(size);
}

}  // namespace k5ax_python
