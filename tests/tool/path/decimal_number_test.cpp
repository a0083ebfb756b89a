// Numbers without exponents: which are read, and that they are what the C library, another reader, makes of
// them.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include "tool/toolpath/decimal_number.h"

namespace {

using tool::kReadBehind;
using tool::read_decimal_number;

std::uint64_t bits_of(double value) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

// How many characters were read; -1 where there was no number that is read here.
std::ptrdiff_t length_of(const std::string& text, double& value) {
  const std::string in_place = text + std::string(kReadBehind, '\n');
  const char* const after = read_decimal_number(in_place.c_str(), value);
  return after == nullptr ? -1 : after - in_place.c_str();
}

void expect_whole(const std::string& text) {
  double value = 0;
  ASSERT_EQ(length_of(text, value), static_cast<std::ptrdiff_t>(text.size())) << text;
  ASSERT_EQ(bits_of(value), bits_of(std::strtod(text.c_str(), nullptr))) << text;
}

TEST(DecimalNumber, IsReadInEveryPlainForm) {
  for (const char* text : {"0", "-0", "-0.0", "7", "-12.5", "5.", ".5", "-.25", "007.50", "0.0000001",
                           "99999999.9999999", "-99999999.9999999", "12345678"})
    expect_whole(text);
}

// Every number of digits before and behind the point, with any digits. Where the processor has no numbers of
// 64 bits, or the decimals lie halfway between two doubles, they may be left to another reader.
TEST(DecimalNumber, IsTheDoubleNextToItsDecimals) {
  std::mt19937_64 random(17);
  int read = 0;
  int left = 0;
  for (int round = 0; round < 400; ++round) {
    for (int whole = 0; whole <= 19; ++whole) {
      for (int decimals = whole == 0 ? 1 : 0; decimals <= 19 - whole; ++decimals) {
        std::string text = random() % 2 == 0 ? "-" : "";
        for (int i = 0; i < whole; ++i) text += static_cast<char>('0' + random() % 10);
        if (decimals > 0) text += '.';
        for (int i = 0; i < decimals; ++i) text += static_cast<char>('0' + random() % 10);
        double value = 0;
        if (whole + decimals > 15 && length_of(text, value) < 0) {
          ++left;
          continue;
        }
        expect_whole(text);
        if (HasFatalFailure()) return;
        ++read;
      }
    }
  }
  // 2 to 20 digits' places for the point, less the one without any digit: 209. One in 2^11 lies halfway.
  EXPECT_EQ(read + left, 400 * 209);
  if (std::numeric_limits<long double>::digits == 64) {
    EXPECT_LT(left, 400 * 209 / 500);
  }
}

// 2^53 + 1 and 2^54 + 2, and what is as far from a double: both neighbours are as near, and the even one
// counts.
TEST(DecimalNumber, HalfwayBetweenTwoDoublesIsLeftToAnotherReader) {
  double value = 0;
  for (const char* text : {"9007199254740993", "-9007199254740995", "18014398509481986", "900719925474099.25",
                           "4503599627370497.5", "1125899906842624.125"}) {
    const std::ptrdiff_t length = length_of(text, value);
    if (length < 0) continue;
    expect_whole(text);  // exact, or told apart by more bits
  }
  EXPECT_EQ(length_of("9007199254740993", value), -1);
  EXPECT_EQ(length_of("18014398509481986", value), -1);
}

// One more in the last of 19 digits makes another double, or not; either way it is the one next to it.
TEST(DecimalNumber, BesideAHalfwayPointIsOnItsSide) {
  for (const char* text : {"9007199254740993.001", "9007199254740992.999", "1801439850948198601",
                           "1801439850948198599", "450359962737049.7501", "450359962737049.7499"}) {
    double value = 0;
    if (length_of(text, value) >= 0) expect_whole(text);
  }
}

TEST(DecimalNumber, HasNineteenDigitsAtMost) {
  double value = 0;
  EXPECT_EQ(length_of("12345678901234567890", value), -1);
  EXPECT_EQ(length_of("0.1234567890123456789", value), -1);
  EXPECT_EQ(length_of("1" + std::string(400, '0'), value), -1);
  EXPECT_EQ(length_of("0." + std::string(400, '0') + "1", value), -1);
}

TEST(DecimalNumber, HasADigit) {
  double value = 0;
  for (const char* text : {"", "-", ".", "-.", "+1", "x", " 1", "--1", "\"1\""})
    EXPECT_EQ(length_of(text, value), -1) << text;
}

// The caller sees by what stands there that this is not the number.
TEST(DecimalNumber, EndsBeforeWhatIsNoDigit) {
  double value = 0;
  EXPECT_EQ(length_of("12.5e3", value), 4);
  EXPECT_EQ(length_of("12.5.7", value), 4);
  EXPECT_EQ(length_of("12/", value), 2);
  EXPECT_EQ(length_of("12:", value), 2);
  EXPECT_EQ(length_of("1.2/45678901", value), 3);
  EXPECT_EQ(length_of("1.23:5678901", value), 4);
}

// Whichever byte it is in which eight characters are no digits, and whatever stands there.
TEST(DecimalNumber, TellsEightDigitsFromAnythingElse) {
  EXPECT_TRUE(tool::are_eight_digits(tool::eight_bytes("01234567")));
  EXPECT_TRUE(tool::are_eight_digits(tool::eight_bytes("98765432")));
  int told = 0;
  for (const char* digits : {"00000000", "99999999", "90909090"}) {
    for (std::size_t place = 0; place < 8; ++place) {
      for (int c = 0; c < 256; ++c) {
        std::string text = digits;
        text[place] = static_cast<char>(c);
        ASSERT_EQ(tool::are_eight_digits(tool::eight_bytes(text.c_str())), c >= '0' && c <= '9')
            << place << ' ' << c;
        ++told;
      }
    }
  }
  EXPECT_EQ(told, 3 * 8 * 256);
}

TEST(DecimalNumber, MakesOneNumberOfEightDigits) {
  for (const char* text : {"00000000", "00000001", "10000000", "12345678", "98765432", "99999999"})
    EXPECT_EQ(tool::value_of_eight_digits(tool::eight_bytes(text)), std::strtoull(text, nullptr, 10)) << text;
}

}  // namespace
