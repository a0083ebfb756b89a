// A tool path line by line, in constant memory.
#include "tool/toolpath/line_reader.h"

#include "tool/errors.h"

#include <cstring>
#include <string>

namespace tool {

LineReader::LineReader(Input& input, std::size_t capacity)
    : m_input(input), m_capacity(capacity), m_buffer(capacity + kReadBehind) {}

bool LineReader::read_more() {
  if (m_at_end) return false;

  // What is left is the beginning of a line.
  std::memmove(m_buffer.data(), m_buffer.data() + m_begin, m_end - m_begin);
  m_scanned -= m_begin;
  m_end -= m_begin;
  m_begin = 0;
  if (m_end == m_capacity) {
    throw InputError(m_input.name() + ":" + std::to_string(m_lines + 1), "",
                     "a line of more than " + std::to_string(m_capacity) + " bytes",
                     "give a text of short lines, one position in each");
  }

  const std::size_t count = m_input.read(m_buffer.data() + m_end, m_capacity - m_end);
  m_end += count;
  m_buffer[m_end] = '\0';  // behind a last line without an end
  m_bytes_read += count;
  m_at_end = count == 0;
  return true;
}

bool LineReader::next(Line& line) {
  if (m_begin == m_end) return false;
  const char* const begin = m_buffer.data() + m_begin;
  const void* const found = std::memchr(m_buffer.data() + m_scanned, '\n', m_end - m_scanned);
  if (found == nullptr && !m_at_end) {
    m_scanned = m_end;
    return false;
  }

  const char* const after = found != nullptr ? static_cast<const char*>(found) + 1 : m_buffer.data() + m_end;
  const char* text_end = found != nullptr ? after - 1 : after;
  if (text_end > begin && text_end[-1] == '\r') --text_end;
  line.text = std::string_view(begin, static_cast<std::size_t>(text_end - begin));
  line.end = std::string_view(text_end, static_cast<std::size_t>(after - text_end));
  line.number = ++m_lines;
  m_begin = m_scanned = static_cast<std::size_t>(after - m_buffer.data());
  return true;
}

}  // namespace tool
