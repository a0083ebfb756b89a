// Which component of a triple belongs to an axis: by its letter, and by nothing else.
#include <k5ax/kinematics.h>

#include <gtest/gtest.h>

#include "support/hand_machine.h"

namespace {

using k5ax_test::no_axis;
using k5ax_test::Point;
using k5ax_test::rotary_axis;

// Two below and two above the real letters, and AXIS_DUMMY.
const AXIS_TYPE kNoLetters[] = {static_cast<AXIS_TYPE>(-2), AXIS_TYPE_INVALID_LOWEST, AXIS_DUMMY,
                                AXIS_TYPE_INVALID_HIGHEST, static_cast<AXIS_TYPE>(8)};

double angle_of_letter(AXIS_TYPE letter) {
  return md::CMachDef().getAngle(rotary_axis(letter, TABLE, Point(0, 0, 1)), 10, 20, 30);
}

TEST(GetAngle, LetterAReadsTheFirstComponent) { EXPECT_EQ(angle_of_letter(AXIS_A), 10); }
TEST(GetAngle, LetterBReadsTheSecondComponent) { EXPECT_EQ(angle_of_letter(AXIS_B), 20); }
TEST(GetAngle, LetterCReadsTheThirdComponent) { EXPECT_EQ(angle_of_letter(AXIS_C), 30); }
TEST(GetAngle, LetterXReadsTheFirstComponentToo) { EXPECT_EQ(angle_of_letter(AXIS_X), 10); }
TEST(GetAngle, LetterYReadsTheSecondComponentToo) { EXPECT_EQ(angle_of_letter(AXIS_Y), 20); }
TEST(GetAngle, LetterZReadsTheThirdComponentToo) { EXPECT_EQ(angle_of_letter(AXIS_Z), 30); }

TEST(GetAngle, AnyOtherLetterReadsZero) {
  for (const AXIS_TYPE letter : kNoLetters) EXPECT_EQ(angle_of_letter(letter), 0) << letter;
}

TEST(GetAngle, NoAxisReadsZero) { EXPECT_EQ(md::CMachDef().getAngle(no_axis(), 10, 20, 30), 0); }

TEST(GetAngle, NeitherDirectionNorLimitsChangeTheValue) {
  const boost::shared_ptr<md::CAxis2> axis = rotary_axis(AXIS_B, HEAD, Point(1, 2, -2), Point(4, 5, 6));
  axis->SetMin(-0.5);
  axis->SetMax(0.5);
  EXPECT_EQ(md::CMachDef().getAngle(axis, 1, 777.25, 2), 777.25);
}

struct Angles {
  double a = 1;
  double b = 2;
  double c = 3;
};

Angles written_by_letter(AXIS_TYPE letter) {
  Angles angles;
  md::CMachDef().getABCAngles(rotary_axis(letter, TABLE, Point(0, 0, 1)), 9, angles.a, angles.b, angles.c);
  return angles;
}

bool equal(const Angles& angles, double a, double b, double c) {
  return angles.a == a && angles.b == b && angles.c == c;
}

TEST(GetAbcAngles, LetterAWritesA) { EXPECT_TRUE(equal(written_by_letter(AXIS_A), 9, 2, 3)); }
TEST(GetAbcAngles, LetterBWritesB) { EXPECT_TRUE(equal(written_by_letter(AXIS_B), 1, 9, 3)); }
TEST(GetAbcAngles, LetterCWritesC) { EXPECT_TRUE(equal(written_by_letter(AXIS_C), 1, 2, 9)); }

// Deliberate: this routes a rotary value, and a linear letter is no rotary axis. The wrapping about the
// rotary axis takes linear letters all the same, see wrapping_test.cpp.
TEST(GetAbcAngles, LinearLettersWriteNothing) {
  for (const AXIS_TYPE letter : {AXIS_X, AXIS_Y, AXIS_Z})
    EXPECT_TRUE(equal(written_by_letter(letter), 1, 2, 3)) << letter;
}

TEST(GetAbcAngles, AnyOtherLetterWritesNothing) {
  for (const AXIS_TYPE letter : kNoLetters) EXPECT_TRUE(equal(written_by_letter(letter), 1, 2, 3)) << letter;
}

TEST(GetAbcAngles, NoAxisWritesNothing) {
  Angles angles;
  md::CMachDef().getABCAngles(no_axis(), 9, angles.a, angles.b, angles.c);
  EXPECT_TRUE(equal(angles, 1, 2, 3));
}

struct SixDoubles {
  double x, y, z, a, b, c;
  double* of(AXIS_TYPE letter) { return AXIS_TYPE_val_get(letter, &x, &y, &z, &a, &b, &c); }
};

TEST(AxisTypeValGet, EachLetterGetsItsOwnPointer) {
  SixDoubles v{};
  EXPECT_EQ(v.of(AXIS_A), &v.a);
  EXPECT_EQ(v.of(AXIS_B), &v.b);
  EXPECT_EQ(v.of(AXIS_C), &v.c);
  EXPECT_EQ(v.of(AXIS_X), &v.x);
  EXPECT_EQ(v.of(AXIS_Y), &v.y);
  EXPECT_EQ(v.of(AXIS_Z), &v.z);
}

TEST(AxisTypeValGet, AnyOtherLetterGetsNull) {
  SixDoubles v{};
  for (const AXIS_TYPE letter : kNoLetters) EXPECT_EQ(v.of(letter), nullptr) << letter;
}

TEST(AxisTypeValGet, RotaryLettersGetTheAngles) {
  Point xyz;
  Point abc;
  EXPECT_EQ(AXIS_TYPE_val_get(AXIS_A, xyz, abc), &abc.x);
  EXPECT_EQ(AXIS_TYPE_val_get(AXIS_B, xyz, abc), &abc.y);
  EXPECT_EQ(AXIS_TYPE_val_get(AXIS_C, xyz, abc), &abc.z);
}

TEST(AxisTypeValGet, LinearLettersGetTheLengths) {
  Point xyz;
  Point abc;
  EXPECT_EQ(AXIS_TYPE_val_get(AXIS_X, xyz, abc), &xyz.x);
  EXPECT_EQ(AXIS_TYPE_val_get(AXIS_Y, xyz, abc), &xyz.y);
  EXPECT_EQ(AXIS_TYPE_val_get(AXIS_Z, xyz, abc), &xyz.z);
}

TEST(AxisTypeValGet, AnyOtherLetterGetsNullFromPointsToo) {
  Point xyz;
  Point abc;
  for (const AXIS_TYPE letter : kNoLetters) EXPECT_EQ(AXIS_TYPE_val_get(letter, xyz, abc), nullptr) << letter;
}

}  // namespace
