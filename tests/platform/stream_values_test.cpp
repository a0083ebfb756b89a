// The byte form of the typed values, on streams over memory as a host may write them.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include <k5ax/platform/stream.h>

namespace {

using Bytes = std::vector<unsigned char>;

class MemoryStream : public IIO::Stream {
 public:
  explicit MemoryStream(IIO::FILE_MODE mode, Bytes content = {}) : bytes(std::move(content)), m_mode(mode) {}

  IIO::FILE_MODE Mode() const override { return m_mode; }
  void Write(const void* data, std::size_t size) override {
    const auto* first = static_cast<const unsigned char*>(data);
    bytes.insert(bytes.end(), first, first + size);
    ++calls;
  }
  void Read(void* data, std::size_t size) override {
    ++calls;
    if (size > bytes.size() - m_next) throw IIO::FileError("memory: the end");
    std::memcpy(data, bytes.data() + m_next, size);
    m_next += size;
  }

  Bytes bytes;
  int calls = 0;

 private:
  IIO::FILE_MODE m_mode;
  std::size_t m_next = 0;
};

template <class Value>
Bytes written(Value value) {
  MemoryStream stream(IIO::FILE_WRITE);
  stream << value;
  return stream.bytes;
}

template <class Value>
Value read_from(const Bytes& bytes) {
  MemoryStream stream(IIO::FILE_READ, bytes);
  Value value{};
  stream >> value;
  return value;
}

TEST(StreamValues, IntIsFourBytesLowestFirst) { EXPECT_EQ(written(0x01020304), (Bytes{4, 3, 2, 1})); }

// -2 in two's complement is all ones but the last.
TEST(StreamValues, NegativeIntIsItsTwosComplement) {
  EXPECT_EQ(written(-2), (Bytes{0xfe, 0xff, 0xff, 0xff}));
}

TEST(StreamValues, UnsignedIntIsFourBytesLowestFirst) {
  EXPECT_EQ(written(0xdeadbeefu), (Bytes{0xef, 0xbe, 0xad, 0xde}));
}

// 1 has the exponent 1023 = 0x3ff and no fraction.
TEST(StreamValues, DoubleIsEightBytesLowestFirst) {
  EXPECT_EQ(written(1.0), (Bytes{0, 0, 0, 0, 0, 0, 0xf0, 0x3f}));
}

// The double nearest to pi is 0x400921fb54442d18, and its negative has the top bit on.
TEST(StreamValues, EveryByteOfADoubleHasItsPlace) {
  EXPECT_EQ(written(-3.141592653589793), (Bytes{0x18, 0x2d, 0x44, 0x54, 0xfb, 0x21, 0x09, 0xc0}));
}

TEST(StreamValues, IntIsReadFromFourBytesLowestFirst) {
  EXPECT_EQ(read_from<int>({4, 3, 2, 1}), 0x01020304);
  EXPECT_EQ(read_from<int>({0xfe, 0xff, 0xff, 0xff}), -2);
}

TEST(StreamValues, UnsignedIntIsReadFromFourBytesLowestFirst) {
  EXPECT_EQ(read_from<unsigned int>({0xef, 0xbe, 0xad, 0xde}), 0xdeadbeefu);
}

TEST(StreamValues, DoubleIsReadFromEightBytesLowestFirst) {
  EXPECT_EQ(read_from<double>({0x18, 0x2d, 0x44, 0x54, 0xfb, 0x21, 0x09, 0xc0}), -3.141592653589793);
}

TEST(StreamValues, LimitsComeBack) {
  for (const int value : {0, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    EXPECT_EQ(read_from<int>(written(value)), value);
  }
  EXPECT_EQ(read_from<unsigned int>(written(0xffffffffu)), 0xffffffffu);
  for (const double value : {std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::max(),
                             -std::numeric_limits<double>::infinity()}) {
    EXPECT_EQ(read_from<double>(written(value)), value);
  }
}

// Values that compare as nothing or as equal keep their bits all the same: a file is saved as it was loaded.
TEST(StreamValues, MinusZeroAndNotANumberKeepTheirBits) {
  const Bytes minus_zero = {0, 0, 0, 0, 0, 0, 0, 0x80};
  EXPECT_EQ(written(read_from<double>(minus_zero)), minus_zero);
  const Bytes not_a_number = {0x34, 0x12, 0, 0, 0, 0, 0xf8, 0x7f};
  EXPECT_EQ(written(read_from<double>(not_a_number)), not_a_number);
}

TEST(StreamValues, CallsChainInOrder) {
  MemoryStream out(IIO::FILE_WRITE);
  IIO::Stream& returned = out << 1 << 2u << 0.5;
  EXPECT_EQ(&returned, &out);
  // 0.5 has the exponent 1022 = 0x3fe.
  EXPECT_EQ(out.bytes, (Bytes{1, 0, 0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xe0, 0x3f}));

  MemoryStream in(IIO::FILE_READ, out.bytes);
  int first = 0;
  unsigned int second = 0;
  double third = 0;
  IIO::Stream& returned_too = in >> first >> second >> third;
  EXPECT_EQ(&returned_too, &in);
  EXPECT_EQ(first, 1);
  EXPECT_EQ(second, 2u);
  EXPECT_EQ(third, 0.5);
}

TEST(StreamValues, EveryValueIsOneCall) {
  MemoryStream out(IIO::FILE_WRITE);
  out << 1 << 2u << 0.5;
  EXPECT_EQ(out.calls, 3);
  MemoryStream in(IIO::FILE_READ, out.bytes);
  int first = 0;
  unsigned int second = 0;
  double third = 0;
  in >> first >> second >> third;
  EXPECT_EQ(in.calls, 3);
}

// Delivers what it has and says nothing, as a host's own stream may.
class ShortStream : public IIO::Stream {
 public:
  explicit ShortStream(std::size_t delivered) : m_delivered(delivered) {}
  IIO::FILE_MODE Mode() const override { return IIO::FILE_READ; }
  void Write(const void*, std::size_t) override {}
  void Read(void* data, std::size_t size) override { std::memset(data, 0, std::min(size, m_delivered)); }

 private:
  std::size_t m_delivered;
};

TEST(StreamValues, WhatAStreamDoesNotDeliverKeepsItsDefault) {
  ShortStream empty(0);
  int i = -1;
  unsigned int u = 7;
  double d = 2.5;
  empty >> i >> u >> d;
  EXPECT_EQ(i, -1);
  EXPECT_EQ(u, 7u);
  EXPECT_EQ(d, 2.5);
}

// -1 is four bytes of ones, and the two lowest are delivered as zeros.
TEST(StreamValues, HalfDeliveredValueKeepsTheOtherHalf) {
  ShortStream two_bytes(2);
  int i = -1;
  two_bytes >> i;
  EXPECT_EQ(i, static_cast<int>(0xffff0000u));
}

TEST(StreamValues, ThrowingReadLeavesTheValueAlone) {
  MemoryStream in(IIO::FILE_READ, {1, 2, 3});
  int i = -5;
  EXPECT_THROW(in >> i, IIO::FileError);
  EXPECT_EQ(i, -5);
}

TEST(Stream, ModesHaveTheNumbersThatHostsUse) {
  EXPECT_EQ(static_cast<int>(IIO::FILE_READ), 0);
  EXPECT_EQ(static_cast<int>(IIO::FILE_WRITE), 1);
}

TEST(Stream, DestructorMayThrow) {
  EXPECT_FALSE(std::is_nothrow_destructible<IIO::Stream>::value);
  EXPECT_FALSE(std::is_nothrow_destructible<IIO::FileStream>::value);
}

TEST(FileError, IsARuntimeErrorWithItsText) {
  try {
    throw IIO::FileError("this and that");
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "this and that");
    return;
  }
  FAIL() << "not caught as a runtime error";
}

}  // namespace
