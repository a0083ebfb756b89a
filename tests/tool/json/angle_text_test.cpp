// Numbers and angles as text.
#include "tool/machine/angle_text.h"

#include <cmath>
#include <cstdlib>
#include <limits>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "support/random_machine.h"

namespace {

using k5ax_test::Random;
using tool::degrees_text;
using tool::number_text;

TEST(NumberText, IsTheShortestThatReadsAsTheSame) {
  EXPECT_EQ(number_text(0.1), "0.1");
  EXPECT_EQ(number_text(-85), "-85");
  EXPECT_EQ(number_text(1.0 / 3), "0.3333333333333333");
  EXPECT_EQ(number_text(5e-324), "5e-324");
}

TEST(NumberText, KeepsTheSignOfZero) {
  EXPECT_EQ(number_text(0.0), "0");
  EXPECT_EQ(number_text(-0.0), "-0.0");
}

// The product with pi / 180 of 17 digits, one rounding, is what the library makes of degrees.
TEST(Radians, AreWhatTheLibraryMakesOfDegrees) {
  for (const double degrees : {1.0, 30.0, -110.0, 3600.0, 0.024})
    EXPECT_EQ(tool::radians(degrees), degrees * k5ax_D2R());
}

TEST(DegreesText, IsWhatSomebodyTyped) {
  for (const char* typed : {"30", "-120", "3600", "0.5", "-0.001", "89.99", "110", "1e-05", "0.1", "33.3"})
    EXPECT_EQ(degrees_text(std::strtod(typed, nullptr) * math::D2R), typed);
}

TEST(DegreesText, KeepsTheSignOfZero) {
  EXPECT_EQ(degrees_text(0.0), "0");
  EXPECT_EQ(degrees_text(-0.0), "-0.0");
}

// Where it gives an answer the answer is right, and where it gives none, no double nearby is one. Radians in
// [0.5, 1) have steps of 2^-53, degrees in [28.6, 57.3] of 2^-48 below 32 and 2^-47 above; times pi / 180
// that is 0.56 and 1.12 steps of radians, so that above 32 degrees one in nine of the radians has no degrees.
TEST(DegreesText, MeansTheSameRadiansOrGivesNone) {
  Random random(3);
  int found = 0;
  int missing = 0;
  for (int i = 0; i < 20000; ++i) {
    const double angle = random.between(0.5, 1);
    const std::optional<std::string> text = degrees_text(angle);
    if (text) {
      ++found;
      EXPECT_EQ(std::strtod(text->c_str(), nullptr) * math::D2R, angle) << *text;
      continue;
    }
    ++missing;
    double degrees = angle * math::R2D;
    for (int step = 0; step < 8; ++step) degrees = std::nextafter(degrees, 0);
    for (int step = 0; step < 16; ++step) {
      EXPECT_NE(degrees * math::D2R, angle) << degrees;
      degrees = std::nextafter(degrees, 90);
    }
  }
  EXPECT_GT(found, 1000);
  EXPECT_GT(missing, 100);
}

TEST(DegreesText, GivesNoneWhereDegreesOverflow) {
  EXPECT_FALSE(degrees_text(std::numeric_limits<double>::max()).has_value());
}

}  // namespace
