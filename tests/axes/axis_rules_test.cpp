// What makes an axis valid and orthogonal, how its direction is normalised, and what a change of unit scales.
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include <k5ax/axes.h>

#include "axes/axis_support.h"

namespace {

using Geometry::TPoint;
using k5ax_test::AxisPool;
using k5ax_test::linear_x_on_table;
using k5ax_test::rotary_b_on_head;
using md::CAxis2;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TPoint<double> direction_of_an_axis_made_with(const TPoint<double>& vector) {
  return CAxis2::create(AXIS_X, TABLE, CUtility::pt_o, vector, -1, 1, LINEAR)->GetAxisVector();
}

TEST(AxisDirection, IsDividedByItsLength) {
  // 3, 4, 5: the length is exact, and so are the nearest doubles of the quotients.
  EXPECT_NEAR_POINT(direction_of_an_axis_made_with({0, 3, 4}), (TPoint<double>(0, 0.6, 0.8)), 0.0);
}

TEST(AxisDirection, KeepsItsSenseAndEveryComponent) {
  // |(-2, 3, 6)| = 7.
  EXPECT_NEAR_POINT(direction_of_an_axis_made_with({-2, 3, 6}), (TPoint<double>(-2. / 7, 3. / 7, 6. / 7)),
                    0.0);
}

TEST(AxisDirection, OfZeroLengthBecomesZ) {
  EXPECT_NEAR_POINT(direction_of_an_axis_made_with({0, 0, 0}), (TPoint<double>(0, 0, 1)), 0.0);
}

TEST(AxisDirection, ShorterThanTheLimitBecomesZ) {
  EXPECT_NEAR_POINT(direction_of_an_axis_made_with({-4.999e-9, 0, 0}), (TPoint<double>(0, 0, 1)), 0.0);
}

TEST(AxisDirection, AtTheLimitIsStillADirection) {
  // The limit is "shorter than 5e-9"; the square root of a rounded square is exact here.
  EXPECT_NEAR_POINT(direction_of_an_axis_made_with({-5e-9, 0, 0}), (TPoint<double>(-1, 0, 0)), 0.0);
}

TEST(AxisDirection, IsMeasuredByItsLengthAndNotByAComponent) {
  // Each component is below 5e-9, the length 6.9e-9 is not.
  const TPoint<double> u = direction_of_an_axis_made_with({4e-9, 4e-9, -4e-9});
  const double third = 1 / std::sqrt(3.0);
  EXPECT_NEAR_POINT(u, (TPoint<double>(third, third, -third)), 1e-15);  // a few roundings of values below 1
}

// Validity. Each test spoils one thing of an axis that is valid.
TEST(AxisValidity, HoldsForAnAxisOnTheHeadAndForOneOnTheTable) {
  EXPECT_TRUE(rotary_b_on_head()->is_valid());
  EXPECT_TRUE(linear_x_on_table()->is_valid());
}

TEST(AxisValidity, FailsForAFreshAxis) {
  AxisPool::drain();
  EXPECT_FALSE(CAxis2::create()->is_valid());
}

TEST(AxisValidity, NeedsALocationOnHeadOrTable) {
  const auto axis = rotary_b_on_head();
  axis->SetAxisLocation(AXIS_LOCATION_INVALID_LOWEST);
  EXPECT_FALSE(axis->is_valid());
  axis->SetAxisLocation(AXIS_LOCATION_INVALID_HIGHEST);
  EXPECT_FALSE(axis->is_valid());
  axis->SetAxisLocation(TABLE);
  EXPECT_TRUE(axis->is_valid());
}

TEST(AxisValidity, NeedsADirection) {
  const auto axis = rotary_b_on_head();
  axis->SetAxisVector({0, 0, 0});
  EXPECT_FALSE(axis->is_valid());
}

// Deliberate: validity has no tolerance, while the normalisation in `create` has one. A direction that a host
// stored itself counts, however short.
TEST(AxisValidity, AcceptsADirectionOfAnyLengthAboveZero) {
  const auto axis = rotary_b_on_head();
  axis->SetAxisVector({0, 1e-100, 0});
  EXPECT_TRUE(axis->is_valid());
  axis->SetAxisVector({0, 0, 1e10});
  EXPECT_TRUE(axis->is_valid());
}

TEST(AxisValidity, FailsForADirectionThatIsNoNumber) {
  const auto axis = rotary_b_on_head();
  axis->SetAxisVector({kNan, 0, 1});
  EXPECT_FALSE(axis->is_valid());
}

TEST(AxisValidity, HoldsForEveryLetter) {
  const auto axis = rotary_b_on_head();
  int letters = 0;
  for (const AXIS_TYPE letter : {AXIS_A, AXIS_B, AXIS_C, AXIS_X, AXIS_Y, AXIS_Z}) {
    axis->SetAxis(letter);
    EXPECT_TRUE(axis->is_valid()) << "letter " << letter;
    ++letters;
  }
  EXPECT_EQ(letters, 6);
}

TEST(AxisValidity, FailsForATypeThatIsNoLetter) {
  const auto axis = rotary_b_on_head();
  int types = 0;
  for (const int type : {-2, -1, 6, 7, 8}) {
    axis->SetAxis(static_cast<AXIS_TYPE>(type));
    EXPECT_FALSE(axis->is_valid()) << "type " << type;
    ++types;
  }
  EXPECT_EQ(types, 5);
}

TEST(AxisValidity, AcceptsEqualLimits) {
  const auto axis = rotary_b_on_head();
  axis->SetMin(0.5);
  axis->SetMax(0.5);
  EXPECT_TRUE(axis->is_valid());
}

TEST(AxisValidity, FailsForLimitsThatAreTheWrongWayRound) {
  const auto axis = rotary_b_on_head();
  axis->SetMin(0.5);
  axis->SetMax(std::nextafter(0.5, 0.0));
  EXPECT_FALSE(axis->is_valid());
}

TEST(AxisValidity, FailsForLimitsThatAreNoNumbers) {
  const auto axis = rotary_b_on_head();
  axis->SetMax(kNan);
  EXPECT_FALSE(axis->is_valid());
}

// Deliberate: the mode is not looked at, neither for itself nor against the letter.
TEST(AxisValidity, DoesNotLookAtTheMode) {
  const auto axis = rotary_b_on_head();
  axis->mode(LINEAR);
  EXPECT_TRUE(axis->is_valid());
  axis->mode(AXIS_MODE_INVALID_LOWEST);
  EXPECT_TRUE(axis->is_valid());
  axis->mode(static_cast<AXIS_MODE>(77));
  EXPECT_TRUE(axis->is_valid());
}

// Orthogonality.
bool is_orthogonal(AXIS_TYPE letter, const TPoint<double>& vector) {
  const auto axis = linear_x_on_table();
  axis->SetAxis(letter);
  axis->SetAxisVector(vector);
  return axis->is_orthogonal();
}

TEST(AxisOrthogonality, OfAAndXIsAlongX) {
  EXPECT_TRUE(is_orthogonal(AXIS_A, {1, 0, 0}));
  EXPECT_TRUE(is_orthogonal(AXIS_X, {1, 0, 0}));
}

TEST(AxisOrthogonality, OfBAndYIsAlongY) {
  EXPECT_TRUE(is_orthogonal(AXIS_B, {0, 1, 0}));
  EXPECT_TRUE(is_orthogonal(AXIS_Y, {0, 1, 0}));
}

TEST(AxisOrthogonality, OfCAndZIsAlongZ) {
  EXPECT_TRUE(is_orthogonal(AXIS_C, {0, 0, 1}));
  EXPECT_TRUE(is_orthogonal(AXIS_Z, {0, 0, 1}));
}

TEST(AxisOrthogonality, FailsAlongAnotherLettersDirection) {
  EXPECT_FALSE(is_orthogonal(AXIS_X, {0, 1, 0}));
  EXPECT_FALSE(is_orthogonal(AXIS_B, {0, 0, 1}));
  EXPECT_FALSE(is_orthogonal(AXIS_C, {1, 0, 0}));
}

// Deliberate: an axis that runs against its letter is not orthogonal, since its positive travel is the other
// way.
TEST(AxisOrthogonality, FailsAgainstTheLettersDirection) {
  EXPECT_FALSE(is_orthogonal(AXIS_X, {-1, 0, 0}));
  EXPECT_FALSE(is_orthogonal(AXIS_B, {0, -1, 0}));
  EXPECT_FALSE(is_orthogonal(AXIS_C, {0, 0, -1}));
}

TEST(AxisOrthogonality, AllowsEachComponentLessThanTheTolerance) {
  EXPECT_TRUE(is_orthogonal(AXIS_X, {1, 4e-9, 0}));
  EXPECT_TRUE(is_orthogonal(AXIS_X, {1 - 4e-9, -4e-9, 4e-9}));
  EXPECT_TRUE(is_orthogonal(AXIS_C, {-4e-9, 4e-9, 1 + 4e-9}));
}

TEST(AxisOrthogonality, FailsForAnyComponentBeyondTheTolerance) {
  EXPECT_FALSE(is_orthogonal(AXIS_X, {1 + 6e-9, 0, 0}));
  EXPECT_FALSE(is_orthogonal(AXIS_X, {1 - 6e-9, 0, 0}));
  EXPECT_FALSE(is_orthogonal(AXIS_X, {1, 6e-9, 0}));
  EXPECT_FALSE(is_orthogonal(AXIS_X, {1, 0, -6e-9}));
  EXPECT_FALSE(is_orthogonal(AXIS_C, {6e-9, 0, 1}));
}

TEST(AxisOrthogonality, FailsExactlyAtTheTolerance) {
  EXPECT_FALSE(is_orthogonal(AXIS_X, {1, 5e-9, 0}));
  EXPECT_FALSE(is_orthogonal(AXIS_X, {1, 0, -5e-9}));
  EXPECT_FALSE(is_orthogonal(AXIS_Y, {5e-9, 1, 0}));
}

TEST(AxisOrthogonality, LooksAtTheVectorAsStored) { EXPECT_FALSE(is_orthogonal(AXIS_X, {2, 0, 0})); }

TEST(AxisOrthogonality, FailsForATypeThatIsNoLetter) {
  EXPECT_FALSE(is_orthogonal(AXIS_DUMMY, {1, 0, 0}));
  EXPECT_FALSE(is_orthogonal(AXIS_DUMMY, {0, 0, 1}));
  EXPECT_FALSE(is_orthogonal(AXIS_TYPE_INVALID_LOWEST, {0, 0, 1}));
  EXPECT_FALSE(is_orthogonal(static_cast<AXIS_TYPE>(9), {1, 0, 0}));
}

TEST(AxisOrthogonality, FailsForADirectionThatIsNoNumber) {
  EXPECT_FALSE(is_orthogonal(AXIS_X, {kNan, 0, 0}));
  EXPECT_FALSE(is_orthogonal(AXIS_X, {1, 0, kNan}));
}

// Change of unit. The products are single multiplications, so each expectation is exact.
TEST(AxisScaling, MultipliesBaseAndLimitsOfALinearAxis) {
  const auto axis = CAxis2::create(AXIS_X, TABLE, {1, 2, 3}, {1, 0, 0}, -10, 10, LINEAR);
  CAxis2::scale(axis, 25.4);
  EXPECT_NEAR_POINT(axis->GetBaseVector(), (TPoint<double>(25.4, 50.8, 3 * 25.4)), 0.0);
  EXPECT_EQ(axis->GetMin(), -254);
  EXPECT_EQ(axis->GetMax(), 254);
}

TEST(AxisScaling, LeavesTheLimitsOfARotaryAxis) {
  const auto axis = CAxis2::create(AXIS_A, TABLE, {1, 2, 3}, {1, 0, 0}, -2, 2.5, ROTARY);
  CAxis2::scale(axis, 25.4);
  EXPECT_NEAR_POINT(axis->GetBaseVector(), (TPoint<double>(25.4, 50.8, 3 * 25.4)), 0.0);
  EXPECT_EQ(axis->GetMin(), -2);
  EXPECT_EQ(axis->GetMax(), 2.5);
}

TEST(AxisScaling, GoesByTheModeAndNotByTheLetter) {
  const auto axis = CAxis2::create(AXIS_A, TABLE, {0, 0, 0}, {1, 0, 0}, -2, 3, LINEAR);
  CAxis2::scale(axis, 10);
  EXPECT_EQ(axis->GetMin(), -20);
  EXPECT_EQ(axis->GetMax(), 30);
}

TEST(AxisScaling, LeavesLimitsOfAModeThatIsNeither) {
  const auto axis = CAxis2::create(AXIS_X, TABLE, {1, 0, 0}, {1, 0, 0}, -2, 3, static_cast<AXIS_MODE>(2));
  CAxis2::scale(axis, 10);
  EXPECT_NEAR_POINT(axis->GetBaseVector(), (TPoint<double>(10, 0, 0)), 0.0);
  EXPECT_EQ(axis->GetMin(), -2);
  EXPECT_EQ(axis->GetMax(), 3);
}

TEST(AxisScaling, NeverTouchesTheDirection) {
  const auto axis = linear_x_on_table();
  axis->SetAxisVector({3, -4, 5});
  CAxis2::scale(axis, 25.4);
  EXPECT_NEAR_POINT(axis->GetAxisVector(), (TPoint<double>(3, -4, 5)), 0.0);
}

TEST(AxisScaling, KeepsLetterLocationModeAndOwner) {
  const auto axis = linear_x_on_table();
  axis->machdef(k5ax_test::owner_address(1));
  CAxis2::scale(axis, 2);
  EXPECT_EQ(axis->GetAxis(), AXIS_X);
  EXPECT_EQ(axis->GetAxisLocation(), TABLE);
  EXPECT_EQ(axis->mode(), LINEAR);
  EXPECT_EQ(axis->machdef(), k5ax_test::owner_address(1));
}

TEST(AxisScaling, OfAnEmptyPointerDoesNothing) {
  EXPECT_NO_THROW(CAxis2::scale(boost::shared_ptr<CAxis2>(), 25.4));
}

}  // namespace
