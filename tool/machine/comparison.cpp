// Collects what differs, in words, with values and units.
#include "tool/machine/comparison.h"

#include "tool/machine/angle_text.h"
#include "tool/machine/machine_words.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tool {
namespace {

// A conversion rounds once, and the file may have been converted before: a few units in the last place.
constexpr double kRounding = 4 * std::numeric_limits<double>::epsilon();

std::string text_of(double number) {
  if (std::isnan(number)) return "nan";
  if (std::isinf(number)) return number > 0 ? "inf" : "-inf";
  return number_text(number);
}

std::string text_of(const Point& p) {
  return "(" + text_of(p.x) + ", " + text_of(p.y) + ", " + text_of(p.z) + ")";
}

std::string degrees_of(double angle) {
  if (!std::isfinite(angle)) return text_of(angle);
  const std::optional<std::string> exact = degrees_text(angle);
  return (exact ? *exact : text_of(angle * math::R2D)) + " deg";
}

std::string text_of(const std::vector<Word>& words, int number) {
  const std::string_view word = word_for(words, number);
  return word.empty() ? "number " + std::to_string(number) : std::string(word);
}

std::string rotation_text(const Transform& m) {
  std::string text;
  for (std::size_t i = 0; i < 9; i += 3)
    text += (i > 0 ? " " : "") + text_of(Point(m[i], m[i + 1], m[i + 2]));
  return text;
}

Point translation_of(const Transform& m) { return Point(m[9], m[10], m[11]); }

}  // namespace

void Comparison::add(const std::string& what, const std::string& first, const std::string& second) {
  m_found.push_back({what, first, second});
}

void Comparison::compare_word(const std::string& what, const std::vector<Word>& words, int a, int b) {
  if (a != b) add(what, text_of(words, a), text_of(words, b));
}

void Comparison::compare_whole(const std::string& what, int a, int b) {
  if (a != b) add(what, std::to_string(a), std::to_string(b));
}

void Comparison::compare_flags(const std::string& what, unsigned int a, unsigned int b) {
  if (a != b) add(what, std::to_string(a), std::to_string(b));
}

void Comparison::compare_number(const std::string& what, double a, double b) {
  if (!same_bits(a, b)) add(what, text_of(a), text_of(b));
}

void Comparison::compare_length(const std::string& what, double a, double b) {
  if (!same_length(a, b)) add(what, with_unit(text_of(a)), with_unit(text_of(b)));
}

void Comparison::compare_length(const std::string& what, const Point& a, const Point& b) {
  if (!same_length(a.x, b.x) || !same_length(a.y, b.y) || !same_length(a.z, b.z))
    add(what, with_unit(text_of(a)), with_unit(text_of(b)));
}

void Comparison::compare_angle(const std::string& what, double a, double b) {
  if (same_bits(a, b)) return;
  const std::string first = degrees_of(a);
  const std::string second = degrees_of(b);
  // The last bit of an angle may not show in degrees.
  if (first != second)
    add(what, first, second);
  else
    add(what, text_of(a) + " rad", text_of(b) + " rad");
}

void Comparison::compare_direction(const std::string& what, const Point& a, const Point& b) {
  if (!same_bits(a, b)) add(what, text_of(a), text_of(b));
}

void Comparison::compare_axis(const std::string& what, const AxisRecord& a, const AxisRecord& b) {
  compare_word(what + ", letter", kLetters, a.letter, b.letter);
  compare_word(what + ", location", kLocations, a.location, b.location);
  compare_word(what + ", motion", kMotions, a.motion, b.motion);
  compare_length(what + ", point", a.base, b.base);
  compare_direction(what + ", direction", a.direction, b.direction);
  const auto compare_limit = [&](const char* which, double first, double second) {
    if (is_rotary(a) && is_rotary(b))
      compare_angle(what + which, first, second);
    else if (is_linear(a) && is_linear(b))
      compare_length(what + which, first, second);
    else
      compare_number(what + which, first, second);
  };
  compare_limit(", lower limit", a.min, b.min);
  compare_limit(", upper limit", a.max, b.max);
}

void Comparison::compare_head(const std::string& what, const HeadRecord& a, const HeadRecord& b) {
  compare_angle(what + ", tilt", a.tilt, b.tilt);
  compare_angle(what + ", turn", a.turn, b.turn);
  compare_length(what + ", first length", a.lengths[0], b.lengths[0]);
  compare_length(what + ", second length", a.lengths[1], b.lengths[1]);
  compare_length(what + ", tip", a.tip, b.tip);
  compare_direction(what + ", direction", a.direction, b.direction);
  compare_direction(what + ", reference direction", a.reference, b.reference);
  compare_flags(what + ", flags", a.flags, b.flags);
  compare_flags(what + ", padding", a.padding, b.padding);
}

void Comparison::compare_transform(const std::string& what, const Transform& a, const Transform& b) {
  compare_length(what + ", translation", translation_of(a), translation_of(b));
  if (!std::equal(a.begin(), a.begin() + 9, b.begin(), [](double x, double y) { return same_bits(x, y); }))
    add(what + ", rotation", rotation_text(a), rotation_text(b));
}

bool Comparison::same_length(double a, double b) const {
  if (same_bits(a, b)) return true;
  return m_is_converted && std::abs(a - b) <= kRounding * std::max(std::abs(a), std::abs(b));
}

std::string Comparison::with_unit(const std::string& number) const {
  return number + (m_is_metric ? " mm" : " inch");
}

}  // namespace tool
