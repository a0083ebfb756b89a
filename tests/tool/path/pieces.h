// A stream that gives its text in pieces of a chosen size, as pipes do.
#ifndef K5AX_TESTS_TOOL_PATH_PIECES_H
#define K5AX_TESTS_TOOL_PATH_PIECES_H

#include <algorithm>
#include <cstddef>
#include <istream>
#include <streambuf>
#include <string>
#include <utility>

namespace tool_test {

class Pieces : public std::streambuf {
 public:
  Pieces(std::string text, std::size_t size) : m_text(std::move(text)), m_size(size) {}

 protected:
  int_type underflow() override {
    if (m_given == m_text.size()) return traits_type::eof();
    const std::size_t count = std::min(m_size, m_text.size() - m_given);
    char* const begin = &m_text[m_given];
    setg(begin, begin, begin + count);
    m_given += count;
    return traits_type::to_int_type(*begin);
  }

 private:
  std::string m_text;
  std::size_t m_size;
  std::size_t m_given = 0;
};

}  // namespace tool_test

#endif
