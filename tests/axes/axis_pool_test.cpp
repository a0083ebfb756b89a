// Where axes come from and where they go: fresh ones, parked ones, and the order between them.
#include <limits>
#include <vector>

#include <boost/weak_ptr.hpp>

#include <gtest/gtest.h>

#include <k5ax/axes.h>

#include "axes/axis_support.h"

namespace {

using Geometry::TPoint;
using k5ax_test::AxisPool;
using k5ax_test::expect_record;
using k5ax_test::linear_x_on_table;
using k5ax_test::owner_address;
using k5ax_test::rotary_b_on_head;
using md::CAxis2;

class AxisPoolRules : public testing::Test {
 protected:
  AxisPoolRules() { AxisPool::drain(); }
  ~AxisPoolRules() override { AxisPool::drain(); }
};

class FreshAxis : public AxisPoolRules {};

TEST_F(FreshAxis, HasNoLetterNoLocationAndNoMode) {
  const auto axis = CAxis2::create();
  EXPECT_EQ(axis->GetAxis(), AXIS_TYPE_INVALID_LOWEST);
  EXPECT_EQ(axis->GetAxisLocation(), AXIS_LOCATION_INVALID_LOWEST);
  EXPECT_EQ(axis->mode(), AXIS_MODE_INVALID_LOWEST);
}

TEST_F(FreshAxis, StandsAtTheOrigin) {
  EXPECT_NEAR_POINT(CAxis2::create()->GetBaseVector(), (TPoint<double>(0, 0, 0)), 0.0);
}

TEST_F(FreshAxis, HasZeroDirectionZeroLimitsAndNoOwner) {
  // Chosen, so that two fresh axes never differ.
  const auto axis = CAxis2::create();
  EXPECT_NEAR_POINT(axis->GetAxisVector(), (TPoint<double>(0, 0, 0)), 0.0);
  EXPECT_EQ(axis->GetMin(), 0.0);
  EXPECT_EQ(axis->GetMax(), 0.0);
  EXPECT_EQ(axis->machdef(), nullptr);
}

TEST_F(FreshAxis, IsAnotherOneEachTime) {
  const auto first = CAxis2::create();
  const auto second = CAxis2::create();
  EXPECT_NE(first, second);
}

TEST_F(FreshAxis, BelongsToItsHolderAlone) { EXPECT_EQ(CAxis2::create().use_count(), 1); }

class CreateWithArguments : public AxisPoolRules {};

TEST_F(CreateWithArguments, SetsEveryField) {
  const auto axis = CAxis2::create(AXIS_Z, HEAD, {1, -2, 3}, {0, 0, -1}, -40, 50, LINEAR);
  expect_record(*axis, AXIS_Z, HEAD, {1, -2, 3}, {0, 0, -1}, -40, 50, LINEAR);
}

TEST_F(CreateWithArguments, NormalisesTheDirection) {
  const auto axis = CAxis2::create(AXIS_Z, HEAD, {0, 0, 0}, {0, 3, 4}, 0, 0, LINEAR);
  EXPECT_NEAR_POINT(axis->GetAxisVector(), (TPoint<double>(0, 0.6, 0.8)), 0.0);
}

TEST_F(CreateWithArguments, TurnsAZeroDirectionIntoZ) {
  const auto axis = CAxis2::create(AXIS_X, TABLE, CUtility::pt_o, {0, 0, 0}, -100, 100, LINEAR);
  EXPECT_NEAR_POINT(axis->GetAxisVector(), (TPoint<double>(0, 0, 1)), 0.0);
}

TEST_F(CreateWithArguments, LeavesTheCallersDirectionAlone) {
  const TPoint<double> vector(0, 3, 4);
  CAxis2::create(AXIS_X, TABLE, CUtility::pt_o, vector, -100, 100, LINEAR);
  EXPECT_NEAR_POINT(vector, (TPoint<double>(0, 3, 4)), 0.0);
}

TEST_F(CreateWithArguments, ChecksNothing) {
  const auto axis = CAxis2::create(static_cast<AXIS_TYPE>(99), static_cast<AXIS_LOCATION>(-7), CUtility::pt_o,
                                   {1, 0, 0}, 5, -5, static_cast<AXIS_MODE>(31));
  expect_record(*axis, static_cast<AXIS_TYPE>(99), static_cast<AXIS_LOCATION>(-7), {0, 0, 0}, {1, 0, 0}, 5,
                -5, static_cast<AXIS_MODE>(31));
}

TEST_F(CreateWithArguments, OverwritesTheRecordOfAParkedAxis) {
  auto parked = rotary_b_on_head();
  const CAxis2* const address = parked.get();
  CAxis2::free(parked);

  const auto axis = CAxis2::create(AXIS_Z, HEAD, {1, -2, 3}, {0, 0, -1}, -40, 50, LINEAR);

  ASSERT_EQ(axis.get(), address);
  expect_record(*axis, AXIS_Z, HEAD, {1, -2, 3}, {0, 0, -1}, -40, 50, LINEAR);
}

// Deliberate: the owner is no field of the record. Who places an axis into a machine sets the owner there.
TEST_F(CreateWithArguments, LeavesAParkedAxisItsFormerOwner) {
  auto parked = rotary_b_on_head();
  parked->machdef(owner_address(1));
  CAxis2::free(parked);

  const auto axis = CAxis2::create(AXIS_Z, HEAD, {1, -2, 3}, {0, 0, -1}, -40, 50, LINEAR);

  EXPECT_EQ(axis->machdef(), owner_address(1));
}

class FreedAxis : public AxisPoolRules {};

TEST_F(FreedAxis, EmptiesTheCallersPointer) {
  auto axis = rotary_b_on_head();
  CAxis2::free(axis);
  EXPECT_FALSE(axis);
}

TEST_F(FreedAxis, IsParkedAndNotDestroyed) {
  auto axis = rotary_b_on_head();
  const boost::weak_ptr<CAxis2> alive = axis;
  CAxis2::free(axis);
  EXPECT_FALSE(alive.expired());
  EXPECT_EQ(AxisPool::size(), 1u);
}

TEST_F(FreedAxis, IsTheNextOneCreated) {
  auto axis = rotary_b_on_head();
  const CAxis2* const address = axis.get();
  CAxis2::free(axis);
  EXPECT_EQ(CAxis2::create().get(), address);
}

// Deliberate: giving an axis back costs nothing, and who takes one fills it anyway.
TEST_F(FreedAxis, ComesBackWithNothingReset) {
  auto axis = rotary_b_on_head();
  axis->machdef(owner_address(2));
  CAxis2::free(axis);

  const auto again = CAxis2::create();

  expect_record(*again, AXIS_B, HEAD, {1.5, -2.5, 3.5}, {0, -1, 0}, -1.25, 2.75, ROTARY);
  EXPECT_EQ(again->machdef(), owner_address(2));
}

// Deliberate: last in, first out; the axis used last is the one most likely still at hand.
TEST_F(FreedAxis, ComesBackBeforeTheOneFreedEarlier) {
  auto a = rotary_b_on_head();
  auto b = linear_x_on_table();
  const CAxis2* const address_a = a.get();
  const CAxis2* const address_b = b.get();
  CAxis2::free(a);
  CAxis2::free(b);

  const auto first = CAxis2::create();
  const auto second = CAxis2::create();

  EXPECT_EQ(first.get(), address_b);
  EXPECT_EQ(second.get(), address_a);
}

TEST_F(FreedAxis, LeavesThePoolWhenItIsTaken) {
  auto axis = rotary_b_on_head();
  CAxis2::free(axis);

  const auto again = CAxis2::create();

  EXPECT_EQ(AxisPool::size(), 0u);
  EXPECT_EQ(again.use_count(), 1);
}

TEST_F(FreedAxis, StaysWithItsOtherHolders) {
  auto axis = rotary_b_on_head();
  const auto other_holder = axis;
  CAxis2::free(axis);

  EXPECT_EQ(other_holder->GetAxis(), AXIS_B);
  EXPECT_EQ(CAxis2::create(), other_holder);
}

// Deliberate: nothing is checked. An axis is freed once, through its last holder; who frees it twice gets it
// twice.
TEST_F(FreedAxis, IsHandedOutTwiceWhenItWasFreedTwice) {
  auto axis = rotary_b_on_head();
  auto other_holder = axis;
  CAxis2::free(axis);
  CAxis2::free(other_holder);
  ASSERT_EQ(AxisPool::size(), 2u);

  const auto first = CAxis2::create();
  const auto second = CAxis2::create();

  EXPECT_EQ(first, second);
}

TEST_F(FreedAxis, AsAnEmptyPointerLeavesThePoolAlone) {
  boost::shared_ptr<CAxis2> empty;
  CAxis2::free(empty);
  EXPECT_EQ(AxisPool::size(), 0u);
  EXPECT_FALSE(empty);
}

TEST_F(FreedAxis, OfManyIsParkedInTheOrderOfFreeing) {
  constexpr std::size_t count = 1000;
  std::vector<boost::shared_ptr<CAxis2>> axes;
  std::vector<const CAxis2*> addresses;
  for (std::size_t i = 0; i < count; ++i) {
    axes.push_back(CAxis2::create());
    addresses.push_back(axes.back().get());
  }
  for (auto& axis : axes) CAxis2::free(axis);
  ASSERT_EQ(AxisPool::size(), count);

  for (std::size_t i = 0; i < count; ++i) {
    axes[i] = CAxis2::create();
    ASSERT_EQ(axes[i].get(), addresses[count - 1 - i]) << "axis " << i << " out of the pool";
  }
}

// Deliberate: only an explicit `free` parks. An axis that is simply dropped is gone.
TEST_F(AxisPoolRules, DroppingTheLastHolderDestroysAndDoesNotPark) {
  auto axis = rotary_b_on_head();
  const boost::weak_ptr<CAxis2> alive = axis;

  axis.reset();

  EXPECT_TRUE(alive.expired());
  EXPECT_EQ(AxisPool::size(), 0u);
}

TEST_F(AxisPoolRules, DroppingAnAxisThatCameFromThePoolDestroysItToo) {
  auto axis = rotary_b_on_head();
  const boost::weak_ptr<CAxis2> alive = axis;
  CAxis2::free(axis);

  CAxis2::create().reset();

  EXPECT_TRUE(alive.expired());
  EXPECT_EQ(AxisPool::size(), 0u);
}

}  // namespace
