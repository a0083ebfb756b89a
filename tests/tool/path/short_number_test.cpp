// Numbers of few digits: which are read, and that they are what the C library, another reader, makes of them.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>

#include "tool/toolpath/short_number.h"

namespace {

using tool::kReadBehind;
using tool::read_short_number;

std::uint64_t bits_of(double value) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

// How many characters were read; -1 where there was no short number.
std::ptrdiff_t length_of(const std::string& text, double& value) {
  const std::string in_place = text + std::string(kReadBehind, '\n');
  const char* const after = read_short_number(in_place.c_str(), value);
  return after == nullptr ? -1 : after - in_place.c_str();
}

void expect_whole(const std::string& text) {
  double value = 0;
  ASSERT_EQ(length_of(text, value), static_cast<std::ptrdiff_t>(text.size())) << text;
  ASSERT_EQ(bits_of(value), bits_of(std::strtod(text.c_str(), nullptr))) << text;
}

TEST(ShortNumber, IsReadInEveryPlainForm) {
  for (const char* text : {"0", "-0", "-0.0", "7", "-12.5", "5.", ".5", "-.25", "007.50", "0.0000001",
                           "99999999.9999999", "-99999999.9999999", "12345678"})
    expect_whole(text);
}

// Every number of digits before and behind the point, with any digits.
TEST(ShortNumber, IsTheDoubleNextToItsDecimals) {
  std::mt19937_64 random(17);
  int read = 0;
  for (int round = 0; round < 4000; ++round) {
    for (int whole = 0; whole <= 8; ++whole) {
      for (int decimals = whole == 0 ? 1 : 0; decimals <= 7; ++decimals) {
        std::string text = random() % 2 == 0 ? "-" : "";
        for (int i = 0; i < whole; ++i) text += static_cast<char>('0' + random() % 10);
        if (decimals > 0) text += '.';
        for (int i = 0; i < decimals; ++i) text += static_cast<char>('0' + random() % 10);
        expect_whole(text);
        if (HasFatalFailure()) return;
        ++read;
      }
    }
  }
  EXPECT_EQ(read, 4000 * 71);  // 8 decimals or 7 without a digit before them, and 8 times 8
}

TEST(ShortNumber, HasNoMoreDigitsThanADoubleHolds) {
  double value = 0;
  EXPECT_EQ(length_of("123456789", value), -1);
  EXPECT_EQ(length_of("0.12345678", value), -1);
  EXPECT_EQ(length_of("1" + std::string(400, '0'), value), -1);
}

TEST(ShortNumber, HasADigit) {
  double value = 0;
  for (const char* text : {"", "-", ".", "-.", "+1", "x", " 1", "--1", "\"1\""})
    EXPECT_EQ(length_of(text, value), -1) << text;
}

// The caller sees by what stands there that this is not the number.
TEST(ShortNumber, EndsBeforeWhatIsNoDigit) {
  double value = 0;
  EXPECT_EQ(length_of("12.5e3", value), 4);
  EXPECT_EQ(length_of("12.5.7", value), 4);
  EXPECT_EQ(length_of("12/", value), 2);
  EXPECT_EQ(length_of("12:", value), 2);
  EXPECT_EQ(length_of("1.2/45678901", value), 3);
  EXPECT_EQ(length_of("1.23:5678901", value), 4);
}

// Whichever byte it is in which eight characters are no digits, and whatever stands there.
TEST(ShortNumber, TellsEightDigitsFromAnythingElse) {
  EXPECT_TRUE(tool::begins_with_eight_digits("01234567"));
  EXPECT_TRUE(tool::begins_with_eight_digits("98765432"));
  int told = 0;
  for (const char* digits : {"00000000", "99999999", "90909090"}) {
    for (std::size_t place = 0; place < 8; ++place) {
      for (int c = 0; c < 256; ++c) {
        std::string text = digits;
        text[place] = static_cast<char>(c);
        ASSERT_EQ(tool::begins_with_eight_digits(text.c_str()), c >= '0' && c <= '9') << place << ' ' << c;
        ++told;
      }
    }
  }
  EXPECT_EQ(told, 3 * 8 * 256);
}

}  // namespace
