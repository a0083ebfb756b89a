// Numbers, angles and transforms as the tool prints them.
#include "tool/text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "support/random_machine.h"
#include "tool/node_text.h"
#include "tool/style.h"

#include <iostream>

namespace {

using Geometry::Matrix;
using Point = Geometry::TPoint<double>;

TEST(Number, KeepsTheDigitsAskedForAndNoZerosAtTheEnd) {
  EXPECT_EQ(tool::number(62.481), "62.481");
  EXPECT_EQ(tool::number(-310), "-310");
  EXPECT_EQ(tool::number(2.0 / 3, 5), "0.66667");
  EXPECT_EQ(tool::number(1e-9), "1e-09");
}

TEST(Number, OfNegativeZeroIsZero) { EXPECT_EQ(tool::number(-0.0), "0"); }

TEST(Number, OfWhatIsNoneSaysSo) {
  EXPECT_EQ(tool::number(std::numeric_limits<double>::quiet_NaN()), "nan");
  EXPECT_EQ(tool::number(-std::numeric_limits<double>::infinity()), "-inf");
}

TEST(Exact, TellsNeighboursApart) {
  EXPECT_EQ(tool::exact(0.1), "0.1");
  EXPECT_NE(tool::exact(std::nextafter(0.1, 1)), "0.1");
}

// 30 degrees in radians are 29.999999999999996 degrees when multiplied back.
TEST(Degrees, AreTheOnesThatWereTyped) {
  int checked = 0;
  for (int tenths = -36000; tenths <= 36000; ++tenths) {
    const double typed = tenths / 10.0;
    ASSERT_EQ(tool::degrees(typed * math::D2R), tool::exact(typed == 0 ? 0.0 : typed)) << typed;
    ++checked;
  }
  EXPECT_EQ(checked, 72001);
}

TEST(Degrees, OfAnyAngleAreNearIt) {
  k5ax_test::Random random(1);
  for (int i = 0; i < 1000; ++i) {
    const double angle = random.between(-7, 7);
    // 15 digits of a number below 1000: half a unit of the last is 5e-13; reading it back rounds by 6e-14.
    ASSERT_NEAR(std::stod(tool::degrees(angle)), angle * math::R2D, 6e-13);
  }
}

TEST(Triple, LeavesOutWhatIsRoundingBesideTheRest) {
  EXPECT_EQ(tool::triple(Point(8.8e-17, 1.4375, 6.5)), "0 1.4375 6.5");
  EXPECT_EQ(tool::triple(Point(8.8e-17, 0, 0)), "8.8e-17 0 0");
}

TEST(Names, OfUnknownEnumValuesHaveTheirNumber) {
  EXPECT_EQ(tool::letter_name(static_cast<AXIS_TYPE>(9)), "letter 9");
  EXPECT_EQ(tool::letter_name(AXIS_Z), "Z");
  EXPECT_EQ(tool::location_name(static_cast<AXIS_LOCATION>(-1)), "location -1");
  EXPECT_EQ(tool::mode_name(static_cast<AXIS_MODE>(5)), "mode 5");
  EXPECT_EQ(tool::type_name(static_cast<MACHINE_TYPE>(3)), "type 3");
  EXPECT_EQ(tool::type_name(MC_HT), "head-table");
}

TEST(Counted, HasAPluralButForOne) {
  EXPECT_EQ(tool::counted(0, "reason"), "0 reasons");
  EXPECT_EQ(tool::counted(1, "reason"), "1 reason");
  EXPECT_EQ(tool::counted(2, "reason"), "2 reasons");
}

TEST(TransformWords, SayNothingOfTheIdentity) { EXPECT_EQ(tool::transform_words(Matrix(), 10), ""); }

TEST(TransformWords, SayWhereAShiftGoes) {
  EXPECT_EQ(tool::transform_words(Geometry::Translate(Point(1, 0, -2.5)), 10), "shift 1 0 -2.5");
}

TEST(TransformWords, SayHowFarATurnGoesAndAboutWhat) {
  EXPECT_EQ(tool::transform_words(Geometry::RotateAboutAxis(0, 0, 1, math::m_pi2), 6),
            "turn 90 deg about 0 0 1");
  EXPECT_EQ(tool::transform_words(Geometry::RotateAboutAxis(0, 0, 1, -math::m_pi2), 6),
            "turn 90 deg about 0 0 -1");
}

// Half a turn is skew about nothing, and its axis is found another way.
TEST(TransformWords, SayAboutWhatHalfATurnGoes) {
  EXPECT_EQ(tool::transform_words(Geometry::RotateAboutAxis(0, 0.6, 0.8, math::m_pi), 6),
            "turn 180 deg about 0 0.6 0.8");
}

// The sense still counts a ten-millionth short of half a turn.
TEST(TransformWords, SayInWhichSenseNearlyHalfATurnGoes) {
  EXPECT_EQ(tool::transform_words(Geometry::RotateAboutAxis(0, -0.6, -0.8, math::m_pi - 1e-7), 6),
            "turn 180 deg about 0 -0.6 -0.8");
}

TEST(TransformWords, GiveTheNumbersOfWhatIsNoTurnAndShift) {
  Matrix mirror;
  mirror.SetMatrix(-1, 0, 0, 0, 1, 0, 0, 0, 1, 4, 5, 6);
  EXPECT_EQ(tool::transform_words(mirror, 6), "-1 0 0 | 0 1 0 | 0 0 1 | 4 5 6");
}

// Read back from the words, any turn and shift is the same transform. 9 digits are printed: 1e-8 of lengths
// up to 300, and as much of angles up to 180 degrees.
TEST(TransformWords, ReadBackAreTheTransform) {
  k5ax_test::Random random(2);
  int turned = 0;
  for (int i = 0; i < 1000; ++i) {
    const Point direction = vector_form::point(random.direction());
    const Point shift = vector_form::point(random.vector(300));
    const Matrix matrix = Geometry::RotateAboutAxis(direction, random.angle()) * Geometry::Translate(shift);
    const std::string words = tool::transform_words(matrix, 9);
    double angle_deg = 0;
    Point about;
    Point by;
    Matrix again;
    if (std::sscanf(words.c_str(), "turn %lf deg about %lf %lf %lf, shift %lf %lf %lf", &angle_deg, &about.x,
                    &about.y, &about.z, &by.x, &by.y, &by.z) == 7) {
      again = Geometry::RotateAboutAxis(about, angle_deg * math::D2R) * Geometry::Translate(by);
      ++turned;
    } else {
      ASSERT_EQ(std::sscanf(words.c_str(), "shift %lf %lf %lf", &by.x, &by.y, &by.z), 3) << words;
      again = Geometry::Translate(by);
    }
    ASSERT_LE(tool::difference(again, matrix), 3e-6) << words;
  }
  EXPECT_GT(turned, 700);
}

TEST(Styled, AddsNothingWithoutColour) {
  const tool::Context plain{std::cin, std::cout, std::cerr};
  EXPECT_EQ(tool::styled(plain, tool::Style::good, "valid"), "valid");
}

TEST(Styled, ColoursAndEndsTheColour) {
  tool::Context context{std::cin, std::cout, std::cerr};
  context.colour = true;
  EXPECT_EQ(tool::styled(context, tool::Style::good, "valid"), "\x1b[32mvalid\x1b[0m");
}

}  // namespace
