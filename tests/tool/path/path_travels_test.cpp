// Travels: what is in and out, what is kept and what is counted.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>

#include <k5ax/axes.h>

#include "tool/toolpath/travels.h"

namespace {

using tool::OutOfTravel;
using tool::Travels;

boost::shared_ptr<md::CAxis2> axis(AXIS_TYPE letter, double min, double max) {
  return md::CAxis2::create(letter, TABLE, {}, {0, 0, 1}, min, max, letter < AXIS_X ? ROTARY : LINEAR);
}

// X from -10 to 20, C from -110 to 110 degrees.
Travels two_axes() {
  Travels travels;
  travels.add(*axis(AXIS_X, -10, 20), false);
  travels.add(*axis(AXIS_C, -110 * math::D2R, 110 * math::D2R), true);
  return travels;
}

void take(Travels& travels, std::uint64_t line, double x, double c_deg) {
  const std::array<double, 2> values = {x, c_deg};
  travels.take(line, values.data());
}

TEST(PathTravels, KnowTheLimitsOfARotaryAxisInDegrees) {
  const Travels travels = two_axes();
  EXPECT_EQ(travels.all()[1].axis, "C");
  EXPECT_NEAR(travels.all()[1].limit_max, 110, 1e-12);  // two roundings of 110: 3e-14
}

TEST(PathTravels, AtALimitAreIn) {
  Travels travels = two_axes();
  take(travels, 2, -10, -110);
  take(travels, 3, 20, 110);
  EXPECT_EQ(travels.rows(), 2U);
  EXPECT_EQ(travels.rows_out(), 0U);
}

// What a sum of coordinates comes to at a limit of 20.
TEST(PathTravels, SomeRoundingsBeyondALimitAreIn) {
  Travels travels = two_axes();
  take(travels, 2, 20 + 1e-11, 110 + 1e-12);
  EXPECT_EQ(travels.rows_out(), 0U);
}

TEST(PathTravels, BeyondALimitAreOut) {
  for (const double beyond : {-10.00001, 20.00001}) {
    Travels travels = two_axes();
    take(travels, 7, beyond, 0);
    EXPECT_EQ(travels.rows_out(), 1U) << beyond;
    EXPECT_EQ(travels.all()[0].rows_out, 1U);
    EXPECT_EQ(travels.all()[0].first_line_out, 7U);
    EXPECT_EQ(travels.all()[1].rows_out, 0U);
  }
}

TEST(PathTravels, GoFromTheLeastToTheMost) {
  Travels travels = two_axes();
  take(travels, 2, 3, -7);
  take(travels, 3, -4, 5);
  take(travels, 4, 1, 0);
  EXPECT_EQ(travels.all()[0].used_min, -4);
  EXPECT_EQ(travels.all()[0].used_max, 3);
  EXPECT_EQ(travels.all()[1].used_min, -7);
  EXPECT_EQ(travels.all()[1].used_max, 5);
}

// Rows between values that were in before are passed over: those just beyond them must not be.
TEST(PathTravels, AreWatchedBeyondWhatWasInBefore) {
  Travels travels = two_axes();
  take(travels, 2, 5, 0);
  take(travels, 3, 25, 0);
  take(travels, 4, 18, 0);
  take(travels, 5, 22, 0);
  take(travels, 6, -8, 0);
  take(travels, 7, -11, 0);
  take(travels, 8, -9, 0);
  EXPECT_EQ(travels.rows(), 7U);
  EXPECT_EQ(travels.rows_out(), 3U);
  EXPECT_EQ(travels.all()[0].rows_out, 3U);
  EXPECT_EQ(travels.all()[0].used_min, -11);
  EXPECT_EQ(travels.all()[0].used_max, 25);
}

TEST(PathTravels, CountARowOnceWhereTwoAxesAreOut) {
  Travels travels = two_axes();
  take(travels, 2, 30, 120);
  EXPECT_EQ(travels.rows_out(), 1U);
  ASSERT_EQ(travels.kept().size(), 2U);
  EXPECT_EQ(travels.kept()[0].axis, 0U);
  EXPECT_EQ(travels.kept()[0].value, 30);
  EXPECT_EQ(travels.kept()[1].axis, 1U);
  EXPECT_EQ(travels.kept()[1].value, 120);
}

TEST(PathTravels, KeepTheFirstRowsAndCountTheOthers) {
  Travels travels = two_axes();
  for (std::uint64_t line = 2; line < 1002; ++line) take(travels, line, 30, 0);
  EXPECT_EQ(travels.rows_out(), 1000U);
  ASSERT_EQ(travels.kept().size(), Travels::kRowsKept);
  EXPECT_EQ(travels.kept().back().line, 11U);
  EXPECT_EQ(travels.all()[0].rows_out, 1000U);
  EXPECT_EQ(travels.all()[0].first_line_out, 2U);
}

TEST(PathTravels, CountRowsThatAreNotReachedAmongThoseOut) {
  Travels travels = two_axes();
  take(travels, 2, 0, 0);
  travels.take_unreached(3);
  EXPECT_EQ(travels.rows(), 2U);
  EXPECT_EQ(travels.rows_out(), 1U);
  EXPECT_EQ(travels.rows_unreached(), 1U);
  ASSERT_EQ(travels.kept().size(), 1U);
  EXPECT_EQ(travels.kept()[0].axis, OutOfTravel::kNoAxis);
  EXPECT_EQ(travels.kept()[0].line, 3U);
  EXPECT_EQ(travels.all()[0].used_max, 0);
}

}  // namespace
