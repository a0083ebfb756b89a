// A block of typed values that is read from a stream in one call, for the library's own records.
#ifndef K5AX_PLATFORM_BLOCK_H
#define K5AX_PLATFORM_BLOCK_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

#include <k5ax/platform/geometry.h>
#include <k5ax/platform/stream.h>

namespace IIO {

// `Size` bytes of values as Stream's operators read them one by one. The values put in with << are what a
// stream that comes short without an exception leaves; after `read`, >> takes the values out in the same
// order.
template <std::size_t Size>
class Block {
 public:
  Block& operator<<(int value) { return put<std::uint32_t>(value); }
  Block& operator<<(unsigned int value) { return put<std::uint32_t>(value); }
  Block& operator<<(double value) { return put<std::uint64_t>(value); }
  Block& operator<<(const Geometry::TPoint<double>& p) { return *this << p.x << p.y << p.z; }

  void read(Stream& stream) {
    stream.Read(m_bytes, Size);
    m_at = 0;
  }

  Block& operator>>(int& value) { return take<std::uint32_t>(value); }
  Block& operator>>(unsigned int& value) { return take<std::uint32_t>(value); }
  Block& operator>>(double& value) { return take<std::uint64_t>(value); }
  Block& operator>>(Geometry::TPoint<double>& p) { return *this >> p.x >> p.y >> p.z; }

 private:
  // The bits of a value go through an unsigned integer, whose shifts mean the same on every host.
  template <class Bits, class Value>
  Block& put(Value value) {
    Bits bits;
    std::memcpy(&bits, &value, sizeof bits);
    for (std::size_t i = 0; i < sizeof bits; ++i)
      m_bytes[m_at++] = static_cast<unsigned char>(bits >> (8 * i));
    return *this;
  }

  template <class Bits, class Value>
  Block& take(Value& value) {
    const Bits bits = gather<Bits>(std::make_index_sequence<sizeof(Bits)>());
    std::memcpy(&value, &bits, sizeof bits);
    return *this;
  }

  // One expression, not a loop: compilers make a single load of it.
  template <class Bits, std::size_t... I>
  Bits gather(std::index_sequence<I...>) {
    const unsigned char* const bytes = m_bytes + m_at;
    m_at += sizeof(Bits);
    return ((static_cast<Bits>(bytes[I]) << (8 * I)) | ...);
  }

  unsigned char m_bytes[Size];
  std::size_t m_at = 0;
};

}  // namespace IIO

#endif
