// Numbers and angles in text, so that what is read again is the same to the last bit.
#include "tool/machine/angle_text.h"

#include <k5ax/foundation.h>

#include <charconv>
#include <cmath>
#include <limits>

namespace tool {
namespace {

// The digits of the shortest text that is not that of another double.
constexpr int kMostDigits = std::numeric_limits<double>::max_digits10;

double number_in(const char* begin, const char* end) {
  double number = std::numeric_limits<double>::quiet_NaN();
  std::from_chars(begin, end, number);
  return number;
}

}  // namespace

double radians(double angle_deg) { return angle_deg * math::D2R; }

std::string number_text(double number) {
  if (number == 0) return std::signbit(number) ? "-0.0" : "0";
  char text[32];
  return std::string(text, std::to_chars(text, text + sizeof text, number).ptr);
}

// The product of degrees and pi / 180 steps over some doubles, and reaches others from two sides. So the
// candidates are the quotient and its neighbours, and before them the quotient rounded to fewer digits.
std::optional<std::string> degrees_text(double angle) {
  if (angle == 0) return number_text(angle);
  const double quotient = angle / math::D2R;
  if (!std::isfinite(quotient)) return std::nullopt;

  for (int digits = 1; digits <= kMostDigits; ++digits) {
    char text[40];
    const char* const end =
        std::to_chars(text, text + sizeof text, quotient, std::chars_format::scientific, digits - 1).ptr;
    const double candidate = number_in(text, end);
    if (radians(candidate) == angle) return number_text(candidate);
  }
  double below = quotient;
  double above = quotient;
  for (int step = 0; step < 2; ++step) {
    below = std::nextafter(below, -std::numeric_limits<double>::infinity());
    above = std::nextafter(above, std::numeric_limits<double>::infinity());
    for (const double candidate : {below, above})
      if (radians(candidate) == angle) return number_text(candidate);
  }
  return std::nullopt;
}

}  // namespace tool
