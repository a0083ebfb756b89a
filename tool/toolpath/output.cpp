// Where the rows of a tool path go: a file, whole or not at all, or standard output, as they come.
#include "tool/toolpath/output.h"

#include "tool/errors.h"

#include <k5ax/platform/stream.h>

#include <cassert>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
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

// "-12.5" for -12500000.
char* write_millionths(char* at, char* end, std::int64_t millionths) {
  constexpr std::int64_t kMillion = 1000000;
  if (millionths < 0) *at++ = '-';
  const std::int64_t size = std::abs(millionths);
  at = std::to_chars(at, end, size / kMillion).ptr;
  std::int64_t decimals = size % kMillion;
  if (decimals == 0) return at;

  *at++ = '.';
  for (int place = 5; place >= 0; --place, decimals /= 10) at[place] = static_cast<char>('0' + decimals % 10);
  at += 6;
  while (at[-1] == '0') --at;
  return at;
}

// The shortest decimals of a path that is converted back are few where its numbers had few at first, and
// finding that out is what takes std::to_chars longest. Two numbers of 15 digits at most are never the same
// double, so where one of six decimals is the value, there is no shorter one.
char* write_number(char* at, char* end, double value) {
  constexpr double kMillion = 1e6;
  constexpr double kBelow = 1e15;
  const double scaled = value * kMillion;
  if (std::abs(scaled) < kBelow) {
    const auto millionths = static_cast<std::int64_t>(scaled + std::copysign(0.5, scaled));
    if (static_cast<double>(millionths) / kMillion == value) return write_millionths(at, end, millionths);
  }
  const std::to_chars_result result = std::to_chars(at, end, value, std::chars_format::fixed);
  assert(result.ec == std::errc());
  return result.ptr;
}

}  // namespace

Output::Output(Sink sink) : m_sink(std::move(sink)), m_buffer(kMostAtOnce) {}

void Output::put_number(double value) {
  char* const begin = m_buffer.data() + m_end;
  m_end += static_cast<std::size_t>(write_number(begin, m_buffer.data() + m_buffer.size(), value) - begin);
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
