// Where the bytes of a tool path come from: a file, or standard input.
#include "tool/toolpath/input.h"

#include "tool/errors.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

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
  m_file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (m_file < 0) refuse(path, errno);
  struct stat status {};
  if (::fstat(m_file, &status) == 0 && S_ISREG(status.st_mode))
    m_size = static_cast<std::uint64_t>(status.st_size);
}

Input::~Input() {
  if (m_file >= 0) ::close(m_file);
}

std::size_t Input::read(char* data, std::size_t size) {
  if (m_stream != nullptr) return read_stream(data, size);
  for (;;) {
    const ssize_t count = ::read(m_file, data, size);
    if (count >= 0) return static_cast<std::size_t>(count);
    if (errno != EINTR) refuse(m_name, errno);
  }
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
