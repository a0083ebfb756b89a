// A decimal number without an exponent, which is what a tool path is made of.
#ifndef K5AX_TOOL_TOOLPATH_DECIMAL_NUMBER_H
#define K5AX_TOOL_TOOLPATH_DECIMAL_NUMBER_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

namespace tool {

/// So many bytes behind the end of a text must be there to be read, whatever they hold.
constexpr std::size_t kReadBehind = 8;

/// Eight bytes, the first of them the lowest. Compilers make a single load of it.
inline std::uint64_t eight_bytes(const char* at) {
  const auto byte = [at](int i) { return std::uint64_t{static_cast<unsigned char>(at[i])} << (8 * i); };
  return byte(0) | byte(1) | byte(2) | byte(3) | byte(4) | byte(5) | byte(6) | byte(7);
}

/// True when they are eight digits.
inline bool are_eight_digits(std::uint64_t bytes) {
  // For what is less than '0' the difference reaches a byte's highest bit, for what is more than '9' the sum.
  // What they carry over comes from a byte that has been found out by then.
  return (((bytes - 0x3030303030303030) | (bytes + 0x4646464646464646)) & 0x8080808080808080) == 0;
}

/// The number that eight digits make: of each pair of digits one number, of each two of those, of both.
inline std::uint64_t value_of_eight_digits(std::uint64_t bytes) {
  bytes -= 0x3030303030303030;
  bytes = (bytes * 10 + (bytes >> 8)) & 0x00FF00FF00FF00FF;
  bytes = (bytes * 100 + (bytes >> 16)) & 0x0000FFFF0000FFFF;
  return (bytes * 10000 + (bytes >> 32)) & 0xFFFFFFFF;
}

/// digits / 10^decimals, rounded once; false where that cannot be told. Up to 2^53 both are exact as doubles,
/// and so is their quotient's rounding (W. D. Clinger, How to read floating point numbers accurately, 1990).
/// Beyond, both are exact with the 64 bits that some processors divide with. That quotient is on the same
/// side of every point halfway between two doubles as the true one, unless it is such a point.
inline bool divide_by_power_of_ten(std::uint64_t digits, std::size_t decimals, double& value) {
  static constexpr std::array<double, 20> kPowersOfTen = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,
                                                          1e7,  1e8,  1e9,  1e10, 1e11, 1e12, 1e13,
                                                          1e14, 1e15, 1e16, 1e17, 1e18, 1e19};
  constexpr std::uint64_t kExact = std::uint64_t{1} << 53;
  if (digits <= kExact) {
    value = static_cast<double>(static_cast<std::int64_t>(digits)) / kPowersOfTen[decimals];
    return true;
  }
  using Wide = std::numeric_limits<long double>;
  if constexpr (Wide::radix == 2 && Wide::digits == 64) {
    constexpr std::uint64_t kBehindADouble = 0x7FF;
    constexpr std::uint64_t kHalfway = 0x400;
    const long double quotient =
        static_cast<long double>(digits) / static_cast<long double>(kPowersOfTen[decimals]);
    std::uint64_t mantissa = 0;
    std::memcpy(&mantissa, &quotient, sizeof mantissa);
    value = static_cast<double>(quotient);
    return (mantissa & kBehindADouble) != kHalfway;
  }
  return false;
}

/// Reads a number such as -12.500, of 19 digits at most and without an exponent, in a fraction of the time
/// that std::from_chars takes and to the same bits.
///
/// @param at  in a text with kReadBehind bytes behind it, the first of which is no digit and no point
/// @return the place behind the number; null where none stands, or one that is not read here. More of it may
///         stand there, such as an exponent, and then the value means nothing
inline const char* read_decimal_number(const char* at, double& value) {
  constexpr std::ptrdiff_t kMostDigits = 19;                // they are less than 2^64
  static constexpr std::array<double, 2> kSigns = {1, -1};  // no branch: nobody can guess which comes next
  const auto digit_at = [](const char* place) { return static_cast<unsigned char>(*place - '0'); };

  const std::size_t negative = *at == '-' ? 1 : 0;
  at += negative;
  const char* const first = at;
  std::uint64_t digits = 0;
  for (; digit_at(at) <= 9; ++at) digits = digits * 10 + digit_at(at);
  std::ptrdiff_t count = at - first;
  std::ptrdiff_t decimals = 0;
  if (*at == '.') {
    const char* const first_decimal = ++at;
    for (std::uint64_t bytes = eight_bytes(at); are_eight_digits(bytes); bytes = eight_bytes(at)) {
      digits = digits * 100000000 + value_of_eight_digits(bytes);
      at += 8;
    }
    for (; digit_at(at) <= 9; ++at) digits = digits * 10 + digit_at(at);
    decimals = at - first_decimal;
    count += decimals;
  }
  if (count == 0 || count > kMostDigits) return nullptr;
  if (!divide_by_power_of_ten(digits, static_cast<std::size_t>(decimals), value)) return nullptr;
  value *= kSigns[negative];
  return at;
}

}  // namespace tool

#endif
