// The byte form of the typed values, and what the stream classes share.

#include <k5ax/platform/stream.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <limits>

namespace IIO {
namespace {

static_assert(sizeof(int) == 4 && sizeof(unsigned int) == 4, "files hold 32-bit integers");
static_assert(sizeof(double) == 8 && std::numeric_limits<double>::is_iec559, "files hold IEEE doubles");

// The bits of a value go through an unsigned integer, whose shifts mean the same on every host.
template <class Bits>
using Bytes = std::array<unsigned char, sizeof(Bits)>;

template <class Bits, class Value>
Bytes<Bits> to_little_endian(Value value) {
  static_assert(sizeof(Bits) == sizeof(Value), "the bits are the value's own");
  Bits bits;
  std::memcpy(&bits, &value, sizeof bits);
  Bytes<Bits> bytes;
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<unsigned char>(bits >> (8 * i));
  return bytes;
}

template <class Bits, class Value>
Value from_little_endian(const Bytes<Bits>& bytes) {
  Bits bits = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) bits |= static_cast<Bits>(bytes[i]) << (8 * i);
  Value value;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

template <class Bits, class Value>
void write_value(Stream& stream, Value value) {
  const Bytes<Bits> bytes = to_little_endian<Bits>(value);
  stream.Write(bytes.data(), bytes.size());
}

template <class Bits, class Value>
void read_value(Stream& stream, Value& value) {
  // Starts from the value's own bytes: a stream that comes short without throwing leaves the rest as it was.
  Bytes<Bits> bytes = to_little_endian<Bits>(value);
  stream.Read(bytes.data(), bytes.size());
  value = from_little_endian<Bits, Value>(bytes);
}

}  // namespace

// Out of line, so that the classes' type information stands once, in this library.
FileError::FileError(const std::string& message) : std::runtime_error(message) {}
FileError::~FileError() noexcept = default;
Stream::~Stream() noexcept(false) = default;

Stream& Stream::operator<<(int value) {
  write_value<std::uint32_t>(*this, value);
  return *this;
}

Stream& Stream::operator<<(unsigned int value) {
  write_value<std::uint32_t>(*this, value);
  return *this;
}

Stream& Stream::operator<<(double value) {
  write_value<std::uint64_t>(*this, value);
  return *this;
}

Stream& Stream::operator>>(int& value) {
  read_value<std::uint32_t>(*this, value);
  return *this;
}

Stream& Stream::operator>>(unsigned int& value) {
  read_value<std::uint32_t>(*this, value);
  return *this;
}

Stream& Stream::operator>>(double& value) {
  read_value<std::uint64_t>(*this, value);
  return *this;
}

}  // namespace IIO
