// A decimal number of few digits, which is what nearly all of a tool path is.
#ifndef K5AX_TOOL_TOOLPATH_SHORT_NUMBER_H
#define K5AX_TOOL_TOOLPATH_SHORT_NUMBER_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace tool {

/// So many bytes behind the end of a text must be there to be read, whatever they hold.
constexpr std::size_t kReadBehind = 8;

/// True when eight digits stand there.
inline bool begins_with_eight_digits(const char* at) {
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, at, sizeof bytes);
  // For what is less than '0' the difference reaches a byte's highest bit, for what is more than '9' the sum.
  // What they carry over comes from a byte that has been found out by then, whichever end is the lower one.
  return (((bytes - 0x3030303030303030) | (bytes + 0x4646464646464646)) & 0x8080808080808080) == 0;
}

/// Reads a number such as -12.500, of 8 digits and 7 decimals at most and without an exponent, in a fraction
/// of the time that std::from_chars takes and to the same bits: all its digits make an integer below 2^53,
/// the power of ten is exact too, and a quotient of two exact doubles is rounded once (W. D. Clinger, How to
/// read floating point numbers accurately, 1990).
///
/// @param at  in a text with kReadBehind bytes behind it, the first of which is no digit and no point
/// @return the place behind the number; null where none stands. More of it may stand there, such as an
///         exponent, and then the value means nothing
inline const char* read_short_number(const char* at, double& value) {
  constexpr std::ptrdiff_t kMostDigits = 8;
  static constexpr std::array<double, 8> kPowersOfTen = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7};
  static constexpr std::array<double, 2> kSigns = {1, -1};  // no branch: nobody can guess which comes next
  const auto digit_at = [](const char* place) { return static_cast<unsigned char>(*place - '0'); };

  const std::size_t negative = *at == '-' ? 1 : 0;
  at += negative;
  const char* const first = at;
  std::uint64_t digits = 0;
  for (; digit_at(at) <= 9; ++at) digits = digits * 10 + digit_at(at);
  const std::ptrdiff_t whole = at - first;
  std::ptrdiff_t decimals = 0;
  if (*at == '.') {
    const char* const first_decimal = ++at;
    if (begins_with_eight_digits(at)) return nullptr;
    for (; digit_at(at) <= 9; ++at) digits = digits * 10 + digit_at(at);
    decimals = at - first_decimal;
  }
  if (whole + decimals == 0 || whole > kMostDigits) return nullptr;
  value = kSigns[negative] * (static_cast<double>(static_cast<std::int64_t>(digits)) /
                              kPowersOfTen[static_cast<std::size_t>(decimals)]);
  return at;
}

}  // namespace tool

#endif
