// The axis record: its layout, its accessors, and what carries it across from one axis to another.
#include <cstddef>
#include <cstring>
#include <limits>
#include <type_traits>

#include <gtest/gtest.h>

#include <k5ax/axes.h>

#include "axes/axis_support.h"

namespace {

using Geometry::TPoint;
using k5ax_test::expect_equal_records;
using k5ax_test::expect_record;
using k5ax_test::linear_x_on_table;
using k5ax_test::owner_address;
using k5ax_test::rotary_b_on_head;
using md::CAxis2;

TEST(AxisRecordLayout, StandsInMemoryInItsOrder) {
  // Points are three doubles, enums four bytes: 24 + 24 + 4 + 4 + 8 + 8 + 4, and 4 bytes of padding.
  EXPECT_EQ(offsetof(TAxis, base), 0u);
  EXPECT_EQ(offsetof(TAxis, vector), 24u);
  EXPECT_EQ(offsetof(TAxis, type), 48u);
  EXPECT_EQ(offsetof(TAxis, location), 52u);
  EXPECT_EQ(offsetof(TAxis, min), 56u);
  EXPECT_EQ(offsetof(TAxis, max), 64u);
  EXPECT_EQ(offsetof(TAxis, mode), 72u);
  EXPECT_EQ(sizeof(TAxis), 80u);
}

TEST(AxisRecordLayout, MayBeCopiedBytewise) {
  EXPECT_TRUE(std::is_trivially_copyable<TAxis>::value);
  EXPECT_TRUE(std::is_standard_layout<TAxis>::value);
}

TEST(AxisRecordLayout, IsTheLeadingPartOfAnAxis) {
  const auto axis = rotary_b_on_head();

  TAxis record;
  std::memcpy(static_cast<void*>(&record), static_cast<const void*>(axis.get()), sizeof record);

  EXPECT_NEAR_POINT(record.base, (TPoint<double>(1.5, -2.5, 3.5)), 0.0);
  EXPECT_NEAR_POINT(record.vector, (TPoint<double>(0, -1, 0)), 0.0);
  EXPECT_EQ(record.type, AXIS_B);
  EXPECT_EQ(record.location, HEAD);
  EXPECT_EQ(record.min, -1.25);
  EXPECT_EQ(record.max, 2.75);
  EXPECT_EQ(record.mode, ROTARY);
}

// Private, so a host cannot ask for it: an explicit instance, which may name what is private, hands it out.
using ToRecord = TAxis (CAxis2::*)() const;
ToRecord axis_to_record();
template <ToRecord conversion>
struct HandsOut {
  friend ToRecord axis_to_record() { return conversion; }
};
template struct HandsOut < &CAxis2::operator TAxis>;

TEST(AxisRecord, IsWhatAnAxisConvertsTo) {
  const auto axis = rotary_b_on_head();

  const TAxis record = (axis.get()->*axis_to_record())();

  EXPECT_NEAR_POINT(record.base, (TPoint<double>(1.5, -2.5, 3.5)), 0.0);
  EXPECT_NEAR_POINT(record.vector, (TPoint<double>(0, -1, 0)), 0.0);
  EXPECT_EQ(record.type, AXIS_B);
  EXPECT_EQ(record.location, HEAD);
  EXPECT_EQ(record.min, -1.25);
  EXPECT_EQ(record.max, 2.75);
  EXPECT_EQ(record.mode, ROTARY);
}

TEST(AxisRecordLayout, IsFollowedByTheOwnerAlone) {
  const auto axis = rotary_b_on_head();
  axis->machdef(owner_address(1));
  ASSERT_EQ(sizeof(CAxis2), sizeof(TAxis) + sizeof(md::CMachDef*));

  md::CMachDef* owner = nullptr;
  const unsigned char* const bytes = reinterpret_cast<const unsigned char*>(axis.get());
  std::memcpy(&owner, bytes + sizeof(TAxis), sizeof owner);

  EXPECT_EQ(owner, owner_address(1));
}

TEST(AxisRecordLayout, HasNoVirtualTable) { EXPECT_FALSE(std::is_polymorphic<CAxis2>::value); }

TEST(AxisAccessors, ReturnWhatWasSet) {
  const auto axis = linear_x_on_table();
  axis->SetAxis(AXIS_C);
  axis->SetAxisLocation(HEAD);
  axis->SetBaseVector({7, 8, 9});
  axis->SetAxisVector({0, 0, -1});
  axis->SetMin(-0.5);
  axis->SetMax(0.75);
  axis->mode(ROTARY);

  expect_record(*axis, AXIS_C, HEAD, {7, 8, 9}, {0, 0, -1}, -0.5, 0.75, ROTARY);
}

TEST(AxisAccessors, StoreADirectionWithoutNormalisingIt) {
  const auto axis = linear_x_on_table();

  axis->SetAxisVector({3, 0, 4});
  EXPECT_NEAR_POINT(axis->GetAxisVector(), (TPoint<double>(3, 0, 4)), 0.0);

  axis->SetAxisVector({0, 0, 0});
  EXPECT_NEAR_POINT(axis->GetAxisVector(), (TPoint<double>(0, 0, 0)), 0.0);
}

TEST(AxisAccessors, StoreAnyIntegerAsAnEnum) {
  const auto axis = linear_x_on_table();
  constexpr int largest = std::numeric_limits<int>::max();
  constexpr int smallest = std::numeric_limits<int>::min();

  axis->SetAxis(static_cast<AXIS_TYPE>(largest));
  axis->SetAxisLocation(static_cast<AXIS_LOCATION>(smallest));
  axis->mode(static_cast<AXIS_MODE>(4711));

  EXPECT_EQ(static_cast<int>(axis->GetAxis()), largest);
  EXPECT_EQ(static_cast<int>(axis->GetAxisLocation()), smallest);
  EXPECT_EQ(static_cast<int>(axis->mode()), 4711);
}

TEST(AxisAccessors, TakeLimitsThatAreTheWrongWayRound) {
  const auto axis = linear_x_on_table();
  axis->SetMin(5);
  axis->SetMax(-5);
  EXPECT_EQ(axis->GetMin(), 5);
  EXPECT_EQ(axis->GetMax(), -5);
}

TEST(AxisAccessors, HandOutCopiesOfThePoints) {
  const auto axis = linear_x_on_table();
  const auto& base = axis->GetBaseVector();
  const auto& vector = axis->GetAxisVector();

  axis->SetBaseVector({7, 8, 9});
  axis->SetAxisVector({0, 1, 0});

  EXPECT_NEAR_POINT(base, (TPoint<double>(10, 20, -30)), 0.0);
  EXPECT_NEAR_POINT(vector, (TPoint<double>(1, 0, 0)), 0.0);
}

TEST(AxisAccessors, GetAndSetTheOwner) {
  const auto axis = linear_x_on_table();
  axis->machdef(owner_address(2));
  EXPECT_EQ(axis->machdef(), owner_address(2));
  axis->machdef(nullptr);
  EXPECT_EQ(axis->machdef(), nullptr);
}

TEST(AxisCopyConstruction, CopiesTheRecord) {
  const auto axis = rotary_b_on_head();
  const CAxis2 copy(*axis);
  expect_record(copy, AXIS_B, HEAD, {1.5, -2.5, 3.5}, {0, -1, 0}, -1.25, 2.75, ROTARY);
}

TEST(AxisCopyConstruction, CopiesADirectionAsItStands) {
  const auto axis = rotary_b_on_head();
  axis->SetAxisVector({3, 0, 4});
  const CAxis2 copy(*axis);
  EXPECT_NEAR_POINT(copy.GetAxisVector(), (TPoint<double>(3, 0, 4)), 0.0);
}

// Deliberate: an axis belongs to the machine that holds it, and a copy is held by nobody yet.
TEST(AxisCopyConstruction, LeavesTheOwnerBehind) {
  const auto axis = rotary_b_on_head();
  axis->machdef(owner_address(1));

  const CAxis2 copy(*axis);

  EXPECT_EQ(copy.machdef(), nullptr);
}

TEST(AxisAssignment, CopiesTheRecord) {
  const auto axis = rotary_b_on_head();
  CAxis2 target(*linear_x_on_table());
  target = *axis;
  expect_record(target, AXIS_B, HEAD, {1.5, -2.5, 3.5}, {0, -1, 0}, -1.25, 2.75, ROTARY);
}

// Deliberate, and unlike copy construction, `copy` and `clone`: assignment makes the whole object equal, the
// owner included. It is the one way to hand an axis over together with its machine.
TEST(AxisAssignment, CarriesTheOwnerAcross) {
  const auto axis = rotary_b_on_head();
  axis->machdef(owner_address(1));
  CAxis2 target(*linear_x_on_table());
  target.machdef(owner_address(2));

  target = *axis;

  EXPECT_EQ(target.machdef(), owner_address(1));
}

TEST(AxisAssignment, OfItselfChangesNothing) {
  const auto axis = rotary_b_on_head();
  axis->machdef(owner_address(1));
  const CAxis2& itself = *axis;

  *axis = itself;

  expect_equal_records(*axis, *rotary_b_on_head());
  EXPECT_EQ(axis->machdef(), owner_address(1));
}

TEST(AxisLetter, IsTheTypeOfTheAxis) { EXPECT_EQ(md::GetAxis(rotary_b_on_head()), AXIS_B); }

TEST(AxisLetter, OfAnEmptyPointerIsDummy) { EXPECT_EQ(md::GetAxis(boost::shared_ptr<CAxis2>()), AXIS_DUMMY); }

TEST(AxisLetter, IsPassedOnEvenWhenItIsNone) {
  const auto axis = rotary_b_on_head();
  axis->SetAxis(static_cast<AXIS_TYPE>(42));
  EXPECT_EQ(static_cast<int>(md::GetAxis(axis)), 42);
}

}  // namespace
