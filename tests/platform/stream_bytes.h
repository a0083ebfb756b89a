// What the tests of the file stream read and write.
#ifndef K5AX_TESTS_PLATFORM_STREAM_BYTES_H
#define K5AX_TESTS_PLATFORM_STREAM_BYTES_H

#include <cstddef>
#include <string>

#include <k5ax/platform/stream.h>

#include "plain_vectors.h"

namespace k5ax_test {

constexpr std::size_t kSmallBuffer = 16384;  // what a stream takes up before it asks for a large buffer
constexpr std::size_t kBuffer = 65536;       // and what that takes up before it turns to the system

inline std::string read_bytes(const std::string& path, std::size_t size) {
  IIO::FileStream stream(path.c_str(), IIO::FILE_READ);
  std::string bytes(size, '?');
  stream.Read(bytes.data(), size);
  return bytes;
}

// Bytes in which no stretch repeats soon, so that one in the wrong place shows.
inline std::string long_text(std::size_t size) {
  Numbers random(20265);
  std::string text(size, ' ');
  for (char& c : text) c = static_cast<char>(random.below(256));
  return text;
}

}  // namespace k5ax_test

#endif
