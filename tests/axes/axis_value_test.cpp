// An axis reads and writes its own component of a triple, by its letter alone.
#include <limits>

#include <gtest/gtest.h>

#include <k5ax/axes.h>

#include "axes/axis_support.h"

namespace {

using k5ax_test::rotary_b_on_head;
using md::CAxis2;

boost::shared_ptr<CAxis2> axis_of(AXIS_TYPE type) {
  const auto axis = rotary_b_on_head();
  axis->SetAxis(type);
  return axis;
}

constexpr int kNoLetters[] = {-2, -1, 6, 7, 100};

TEST(AxisValue, OfAAndXIsTheFirstComponent) {
  EXPECT_EQ(axis_of(AXIS_A)->GetValue(10, 20, 30), 10);
  EXPECT_EQ(axis_of(AXIS_X)->GetValue(10, 20, 30), 10);
}

TEST(AxisValue, OfBAndYIsTheSecondComponent) {
  EXPECT_EQ(axis_of(AXIS_B)->GetValue(10, 20, 30), 20);
  EXPECT_EQ(axis_of(AXIS_Y)->GetValue(10, 20, 30), 20);
}

TEST(AxisValue, OfCAndZIsTheThirdComponent) {
  EXPECT_EQ(axis_of(AXIS_C)->GetValue(10, 20, 30), 30);
  EXPECT_EQ(axis_of(AXIS_Z)->GetValue(10, 20, 30), 30);
}

TEST(AxisValue, OfATypeThatIsNoLetterIsZero) {
  int types = 0;
  for (const int type : kNoLetters) {
    EXPECT_EQ(axis_of(static_cast<AXIS_TYPE>(type))->GetValue(10, 20, 30), 0.0) << "type " << type;
    ++types;
  }
  EXPECT_EQ(types, 5);
}

TEST(AxisAngle, IsTheComponentOfTheLetter) {
  EXPECT_EQ(axis_of(AXIS_A)->GetAngle(10, 20, 30), 10);
  EXPECT_EQ(axis_of(AXIS_B)->GetAngle(10, 20, 30), 20);
  EXPECT_EQ(axis_of(AXIS_C)->GetAngle(10, 20, 30), 30);
}

TEST(AxisAngle, OfALinearLetterIsThatOfTheRotaryOneBesideIt) {
  EXPECT_EQ(axis_of(AXIS_X)->GetAngle(10, 20, 30), 10);
  EXPECT_EQ(axis_of(AXIS_Y)->GetAngle(10, 20, 30), 20);
  EXPECT_EQ(axis_of(AXIS_Z)->GetAngle(10, 20, 30), 30);
}

TEST(AxisAngle, OfATypeThatIsNoLetterIsZero) {
  int types = 0;
  for (const int type : kNoLetters) {
    EXPECT_EQ(axis_of(static_cast<AXIS_TYPE>(type))->GetAngle(10, 20, 30), 0.0) << "type " << type;
    ++types;
  }
  EXPECT_EQ(types, 5);
}

// Deliberate: a lookup and nothing else. No unit, no wrap, no limits; who wants those asks for them.
TEST(AxisAngle, GoesThroughUnchanged) {
  const auto axis = axis_of(AXIS_B);
  axis->SetMin(-0.1);
  axis->SetMax(0.1);
  EXPECT_EQ(axis->GetAngle(0, 1234.5, 0), 1234.5);
  EXPECT_EQ(axis->GetAngle(0, -1234.5, 0), -1234.5);
}

TEST(AxisAngle, DoesNotDependOnTheAxisLine) {
  const auto axis = axis_of(AXIS_B);
  axis->SetAxisVector({0.6, 0, -0.8});
  axis->SetBaseVector({100, 200, 300});
  axis->SetAxisLocation(TABLE);
  axis->mode(LINEAR);
  EXPECT_EQ(axis->GetAngle(10, 20, 30), 20);
}

TEST(AxisAngle, OfAPointerIsThatOfItsAxis) {
  EXPECT_EQ(CAxis2::GetAngle(axis_of(AXIS_C), 10, 20, 30), 30);
  EXPECT_EQ(CAxis2::GetAngle(axis_of(AXIS_DUMMY), 10, 20, 30), 0.0);
}

TEST(AxisAngle, OfAnEmptyPointerIsZero) {
  EXPECT_EQ(CAxis2::GetAngle(boost::shared_ptr<CAxis2>(), 10, 20, 30), 0.0);
}

TEST(AxisValue, OfAPointerIsThatOfItsAxis) {
  EXPECT_EQ(CAxis2::GetValue(axis_of(AXIS_X), 10, 20, 30), 10);
  EXPECT_EQ(CAxis2::GetValue(axis_of(AXIS_DUMMY), 10, 20, 30), 0.0);
}

TEST(AxisValue, OfAnEmptyPointerIsZero) {
  EXPECT_EQ(CAxis2::GetValue(boost::shared_ptr<CAxis2>(), 10, 20, 30), 0.0);
}

void expect_written(AXIS_TYPE type, double x_expected, double y_expected, double z_expected) {
  double x = 1;
  double y = 2;
  double z = 3;
  axis_of(type)->SetValue(7, x, y, z);
  EXPECT_EQ(x, x_expected);
  EXPECT_EQ(y, y_expected);
  EXPECT_EQ(z, z_expected);
}

TEST(SetAxisValue, OfAAndXWritesTheFirstComponentAlone) {
  expect_written(AXIS_A, 7, 2, 3);
  expect_written(AXIS_X, 7, 2, 3);
}

TEST(SetAxisValue, OfBAndYWritesTheSecondComponentAlone) {
  expect_written(AXIS_B, 1, 7, 3);
  expect_written(AXIS_Y, 1, 7, 3);
}

TEST(SetAxisValue, OfCAndZWritesTheThirdComponentAlone) {
  expect_written(AXIS_C, 1, 2, 7);
  expect_written(AXIS_Z, 1, 2, 7);
}

TEST(SetAxisValue, OfATypeThatIsNoLetterWritesNothing) {
  int types = 0;
  for (const int type : kNoLetters) {
    expect_written(static_cast<AXIS_TYPE>(type), 1, 2, 3);
    ++types;
  }
  EXPECT_EQ(types, 5);
}

TEST(SetAxisValue, IsNotHeldToTheLimits) {
  const auto axis = axis_of(AXIS_B);
  axis->SetMin(-1);
  axis->SetMax(1);
  double x = 0;
  double y = 0;
  double z = 0;
  axis->SetValue(1e6, x, y, z);
  EXPECT_EQ(y, 1e6);
}

}  // namespace
