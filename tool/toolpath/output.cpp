// Where the rows of a tool path go: a file, whole or not at all, or standard output, as they come.
#include "tool/toolpath/output.h"

#include "tool/errors.h"

#include <k5ax/platform/stream.h>

#include <cassert>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <ostream>
#include <utility>

namespace tool {
namespace {

void write_to(std::ostream& stream, const char* data, std::size_t size) {
  errno = 0;
  stream.write(data, static_cast<std::streamsize>(size));
  stream.flush();
  if (stream) return;
  throw InputError("standard output", "", errno != 0 ? std::strerror(errno) : "write error",
                   "make room or write elsewhere");
}

}  // namespace

Output::Output(Sink sink) : m_sink(std::move(sink)), m_buffer(kMostAtOnce) {}

void Output::put_number(double value) {
  char* const begin = m_buffer.data() + m_end;
  // Adding zero makes a zero of minus zero and leaves every other value as it is.
  const std::to_chars_result result =
      std::to_chars(begin, m_buffer.data() + m_buffer.size(), value + 0.0, std::chars_format::fixed);
  assert(result.ec == std::errc());
  m_end += static_cast<std::size_t>(result.ptr - begin);
}

void Output::pass_on() {
  if (m_end == 0) return;
  m_sink(m_buffer.data(), m_end);
  m_end = 0;
}

bool names_file(const std::string& path) { return !path.empty() && path != "-"; }

void with_output(const std::string& path, std::ostream& standard, const std::function<void(Output&)>& work) {
  if (!names_file(path)) {
    Output output([&standard](const char* data, std::size_t size) { write_to(standard, data, size); });
    work(output);
    output.pass_on();
    return;
  }
  try {
    IIO::FileStream file(path.c_str(), IIO::FILE_WRITE);
    Output output([&file](const char* data, std::size_t size) { file.Write(data, size); });
    work(output);
    output.pass_on();
  } catch (const IIO::FileError& error) {
    throw InputError(path, "", reason_of(error, path), "make room there, or give another place");
  }
}

}  // namespace tool
