// `clone` and `copy`: the record goes across, the owner does not.
#include <gtest/gtest.h>

#include <k5ax/axes.h>

#include "axes/axis_support.h"

namespace {

using Geometry::TPoint;
using k5ax_test::AxisPool;
using k5ax_test::expect_equal_records;
using k5ax_test::linear_x_on_table;
using k5ax_test::owner_address;
using k5ax_test::rotary_b_on_head;
using md::CAxis2;

TEST(AxisClone, HasAnEqualRecord) {
  const auto axis = rotary_b_on_head();
  expect_equal_records(*CAxis2::clone(axis), *axis);
}

TEST(AxisClone, IsAnAxisOfItsOwn) {
  const auto axis = rotary_b_on_head();
  const auto clone = CAxis2::clone(axis);
  ASSERT_NE(clone, axis);

  clone->SetMin(99);

  EXPECT_EQ(axis->GetMin(), -1.25);
}

TEST(AxisClone, OfAnEmptyPointerIsEmpty) { EXPECT_FALSE(CAxis2::clone(boost::shared_ptr<CAxis2>())); }

TEST(AxisClone, KeepsTheMode) {
  // Worth its own look: an axis made from letter to limits alone is rotary.
  EXPECT_EQ(CAxis2::clone(linear_x_on_table())->mode(), LINEAR);
}

TEST(AxisClone, PassesTheDirectionThroughNormalisation) {
  const auto axis = rotary_b_on_head();
  axis->SetAxisVector({0, 6, 8});
  const auto clone = CAxis2::clone(axis);
  EXPECT_NEAR_POINT(clone->GetAxisVector(), (TPoint<double>(0, 0.6, 0.8)), 0.0);
  EXPECT_NEAR_POINT(axis->GetAxisVector(), (TPoint<double>(0, 6, 8)), 0.0);
}

TEST(AxisClone, OfAnAxisWithoutDirectionPointsAlongZ) {
  const auto axis = rotary_b_on_head();
  axis->SetAxisVector({0, 0, 0});
  EXPECT_NEAR_POINT(CAxis2::clone(axis)->GetAxisVector(), (TPoint<double>(0, 0, 1)), 0.0);
}

// Deliberate: the machine that takes the clone sets itself as its owner.
TEST(AxisClone, DoesNotCarryTheOwner) {
  AxisPool::drain();
  const auto axis = rotary_b_on_head();
  axis->machdef(owner_address(1));
  EXPECT_EQ(CAxis2::clone(axis)->machdef(), nullptr);
}

TEST(AxisClone, ThatComesFromThePoolKeepsItsFormerOwner) {
  AxisPool::drain();
  const auto axis = rotary_b_on_head();
  auto parked = linear_x_on_table();
  parked->machdef(owner_address(2));
  CAxis2* const address = parked.get();
  CAxis2::free(parked);

  const auto clone = CAxis2::clone(axis);

  ASSERT_EQ(clone.get(), address);
  EXPECT_EQ(clone->machdef(), owner_address(2));
  expect_equal_records(*clone, *axis);
}

TEST(AxisCopy, CopiesTheRecord) {
  const auto from = rotary_b_on_head();
  const auto to = linear_x_on_table();
  CAxis2::copy(to, from);
  expect_equal_records(*to, *from);
}

TEST(AxisCopy, CopiesADirectionAsItStands) {
  const auto from = rotary_b_on_head();
  const auto to = linear_x_on_table();
  from->SetAxisVector({0, 6, 8});
  CAxis2::copy(to, from);
  EXPECT_NEAR_POINT(to->GetAxisVector(), (TPoint<double>(0, 6, 8)), 0.0);
}

// Deliberate: the target stays in the machine that holds it.
TEST(AxisCopy, LeavesTheTargetItsOwner) {
  const auto from = rotary_b_on_head();
  const auto to = linear_x_on_table();
  from->machdef(owner_address(1));
  to->machdef(owner_address(2));
  CAxis2::copy(to, from);
  EXPECT_EQ(to->machdef(), owner_address(2));
}

TEST(AxisCopy, FromAnEmptyPointerChangesNothing) {
  const auto to = linear_x_on_table();
  CAxis2::copy(to, boost::shared_ptr<const CAxis2>());
  expect_equal_records(*to, *linear_x_on_table());
}

TEST(AxisCopy, ToAnEmptyPointerChangesNothing) {
  const auto from = rotary_b_on_head();
  EXPECT_NO_THROW(CAxis2::copy(boost::shared_ptr<CAxis2>(), from));
  expect_equal_records(*from, *rotary_b_on_head());
}

TEST(AxisMemberCopy, CopiesTheRecord) {
  const auto from = rotary_b_on_head();
  const auto to = linear_x_on_table();
  to->copy(from);
  expect_equal_records(*to, *from);
}

TEST(AxisMemberCopy, LeavesTheTargetItsOwner) {
  const auto from = rotary_b_on_head();
  const auto to = linear_x_on_table();
  from->machdef(owner_address(1));
  to->machdef(owner_address(2));
  to->copy(from);
  EXPECT_EQ(to->machdef(), owner_address(2));
}

TEST(AxisMemberCopy, FromAnEmptyPointerChangesNothing) {
  const auto to = linear_x_on_table();
  to->copy(boost::shared_ptr<const CAxis2>());
  expect_equal_records(*to, *linear_x_on_table());
}

}  // namespace
