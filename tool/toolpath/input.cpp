// Where the bytes of a tool path come from: a file, or standard input.
#include "tool/toolpath/input.h"

#include "tool/errors.h"
#include "tool/system.h"

#include <cerrno>
#include <cstring>
#include <istream>

namespace tool {
namespace {

[[noreturn]] void refuse(const std::string& name, int reason) {
  throw InputError(name, "", std::string("cannot be read: ") + std::strerror(reason),
                   "give a tool path that is there and may be read");
}

}  // namespace

Input::Input(const std::string& path, std::istream& standard) : m_name(path) {
  if (path == "-") {
    m_stream = &standard;
    return;
  }
  m_file = open_file(path);
  if (m_file < 0) refuse(path, errno);
  m_size = size_of_file(m_file);
}

Input::~Input() {
  if (m_file >= 0) close_file(m_file);
}

std::size_t Input::read(char* data, std::size_t size) {
  if (m_stream != nullptr) return read_stream(data, size);
  const std::ptrdiff_t count = read_file(m_file, data, size);
  if (count < 0) refuse(m_name, errno);
  return static_cast<std::size_t>(count);
}

// Not istream::read, which would wait until `size` bytes have come: what one program has written into a pipe
// is to come out at the other end at once.
std::size_t Input::read_stream(char* data, std::size_t size) {
  errno = 0;
  if (m_stream->peek() == std::istream::traits_type::eof()) {
    if (m_stream->bad()) refuse(m_name, errno != 0 ? errno : EIO);
    return 0;
  }
  return static_cast<std::size_t>(m_stream->readsome(data, static_cast<std::streamsize>(size)));
}

}  // namespace tool
