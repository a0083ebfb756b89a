// The machine turned into the pose for two rotary angles, worked out by hand with quarter turns:
//   +90 degrees about X takes (x, y, z) to (x, -z, y), about Y to (z, y, -x), about Z to (-y, x, z).
#include <k5ax/machdef.h>

#include <gtest/gtest.h>

#include "support/hand_machine.h"
#include "support/near.h"
#include "support/random_machine.h"

namespace {

using k5ax_test::kHandTolerance;
using k5ax_test::kUnknownType;
using k5ax_test::kVerticalTool;
using k5ax_test::make_machine;
using k5ax_test::no_axis;
using k5ax_test::Point;
using k5ax_test::rotary_axis;

// Every field that a turn may touch, with every component different, so that nothing moves unseen.
std::unique_ptr<md::CMachDef> with_full_head(std::unique_ptr<md::CMachDef> machdef) {
  machdef->setToolDir(Point(0, 0.6, 0.8));
  machdef->head().ref_dir = Point(1, 0, 0);
  machdef->head().tip = Point(4, 5, 6);
  machdef->loading_vector(Point(7, 8, 9));
  return machdef;
}

std::unique_ptr<md::CMachDef> table_table() {
  return with_full_head(make_machine(MC_TT, rotary_axis(AXIS_C, TABLE, Point(0, 0, 1), Point(1, 2, 3)),
                                     rotary_axis(AXIS_A, TABLE, Point(1, 0, 0), Point(10, 20, 30))));
}

std::unique_ptr<md::CMachDef> head_table() {
  return with_full_head(make_machine(MC_HT, rotary_axis(AXIS_C, TABLE, Point(0, 0, 1), Point(1, 2, 3)),
                                     rotary_axis(AXIS_B, HEAD, Point(0, 1, 0), Point(10, 20, 30))));
}

std::unique_ptr<md::CMachDef> head_head() {
  return with_full_head(make_machine(MC_HH, rotary_axis(AXIS_C, HEAD, Point(0, 0, 1), Point(1, 2, 3)),
                                     rotary_axis(AXIS_B, HEAD, Point(0, 1, 0), Point(10, 20, 30))));
}

std::array<double, 24> numbers(const md::CMachDef& machdef) {
  return vector_form::numbers(k5ax_test::machine_form(machdef));
}

// The numbers of the secondary direction within all numbers.
constexpr std::size_t kSecondaryDirection = 9;

TEST(OrientateTableTable, TurnsTheSecondaryDirectionByMinusTheFirstAngleAboutThePrimary) {
  const auto machdef = table_table();
  EXPECT_TRUE(machdef->orientate(math::m_pi2, 0));
  EXPECT_NEAR_POINT(machdef->getSecondary()->GetAxisVector(), Point(0, -1, 0), kHandTolerance);
}

TEST(OrientateTableTable, LeavesEverythingElse) {
  const auto machdef = table_table();
  std::array<double, 24> expected = numbers(*machdef);
  machdef->orientate(math::m_pi2, 0.3);
  const std::array<double, 24> now = numbers(*machdef);
  for (std::size_t i = 0; i < 3; ++i) expected[kSecondaryDirection + i] = now[kSecondaryDirection + i];
  EXPECT_EQ(now, expected);
}

TEST(OrientateTableTable, DoesNotUseTheSecondAngle) {
  const auto machdef = table_table();
  const std::array<double, 24> before = numbers(*machdef);
  EXPECT_TRUE(machdef->orientate(0, math::m_pi2));
  EXPECT_EQ(numbers(*machdef), before);
}

TEST(OrientateTableTable, WithoutAPrimaryTurnsNothing) {
  const auto machdef = table_table();
  machdef->setPrimary(no_axis());
  const std::array<double, 24> before = numbers(*machdef);
  EXPECT_TRUE(machdef->orientate(0.5, 0.7));
  EXPECT_EQ(numbers(*machdef), before);
}

TEST(OrientateTableTable, WithoutASecondaryTurnsNothing) {
  const auto machdef = table_table();
  machdef->setSecondary(no_axis());
  const std::array<double, 24> before = numbers(*machdef);
  EXPECT_TRUE(machdef->orientate(0.5, 0.7));
  EXPECT_EQ(numbers(*machdef), before);
}

TEST(OrientateTableTable, DoesNotLookAtWhereTheAxesSit) {
  const auto machdef = table_table();
  machdef->getPrimary()->SetAxisLocation(HEAD);
  machdef->getSecondary()->SetAxisLocation(HEAD);
  machdef->orientate(math::m_pi2, 0);
  EXPECT_NEAR_POINT(machdef->getSecondary()->GetAxisVector(), Point(0, -1, 0), kHandTolerance);
}

TEST(OrientateHeadTable, TurnsTheToolByTheSecondAngleAboutTheSecondary) {
  const auto machdef = head_table();
  EXPECT_TRUE(machdef->orientate(0, math::m_pi2));
  EXPECT_NEAR_POINT(machdef->getToolDirEx(), Point(0.8, 0.6, 0), kHandTolerance);
}

TEST(OrientateHeadTable, TurnsTheReferenceDirection) {
  const auto machdef = head_table();
  machdef->orientate(0, math::m_pi2);
  EXPECT_NEAR_POINT(machdef->head().ref_dir, Point(0, 0, -1), kHandTolerance);
}

// Deliberate: points are turned about the origin, not about the axis's own line, which passes through (10,
// 20, 30) and would leave its own base point where it is.
TEST(OrientateHeadTable, TurnsTheSecondaryBasePointAboutTheOrigin) {
  const auto machdef = head_table();
  machdef->orientate(0, math::m_pi2);
  EXPECT_NEAR_POINT(machdef->getSecondary()->GetBaseVector(), Point(30, 20, -10), kHandTolerance);
}

TEST(OrientateHeadTable, TurnsTheTipAboutTheOrigin) {
  const auto machdef = head_table();
  machdef->orientate(0, math::m_pi2);
  EXPECT_NEAR_POINT(machdef->head().tip, Point(6, 5, -4), kHandTolerance);
}

TEST(OrientateHeadTable, TurnsTheLoadingVectorAboutTheOrigin) {
  const auto machdef = head_table();
  machdef->orientate(0, math::m_pi2);
  EXPECT_NEAR_POINT(machdef->loading_vector(), Point(9, 8, -7), kHandTolerance);
}

TEST(OrientateHeadTable, LeavesTheSecondaryDirection) {
  const auto machdef = head_table();
  machdef->orientate(0, math::m_pi2);
  EXPECT_NEAR_POINT(machdef->getSecondary()->GetAxisVector(), Point(0, 1, 0), 0);
}

TEST(OrientateHeadTable, LeavesThePrimary) {
  const auto machdef = head_table();
  machdef->orientate(0.4, math::m_pi2);
  EXPECT_NEAR_POINT(machdef->getPrimary()->GetBaseVector(), Point(1, 2, 3), 0);
  EXPECT_NEAR_POINT(machdef->getPrimary()->GetAxisVector(), Point(0, 0, 1), 0);
}

TEST(OrientateHeadTable, DoesNotUseTheFirstAngle) {
  const auto machdef = head_table();
  const std::array<double, 24> before = numbers(*machdef);
  EXPECT_TRUE(machdef->orientate(math::m_pi2, 0));
  EXPECT_EQ(numbers(*machdef), before);
}

TEST(OrientateHeadTable, WithoutASecondaryTurnsNothing) {
  const auto machdef = head_table();
  machdef->setSecondary(no_axis());
  const std::array<double, 24> before = numbers(*machdef);
  EXPECT_TRUE(machdef->orientate(0.5, 0.7));
  EXPECT_EQ(numbers(*machdef), before);
}

TEST(OrientateHeadTable, WithoutAPrimaryTurnsTheHead) {
  const auto machdef = head_table();
  machdef->setPrimary(no_axis());
  EXPECT_TRUE(machdef->orientate(0, math::m_pi2));
  EXPECT_NEAR_POINT(machdef->getToolDirEx(), Point(0.8, 0.6, 0), kHandTolerance);
}

TEST(OrientateHeadTable, WithAVerticalToolTurnsZAndTheReferenceDirection) {
  const auto machdef = head_table();
  machdef->flags(kVerticalTool);
  EXPECT_TRUE(machdef->orientate(0, math::m_pi2));
  EXPECT_NEAR_POINT(machdef->getToolDirEx(), Point(1, 0, 0), kHandTolerance);
  EXPECT_NEAR_POINT(machdef->head().ref_dir, Point(0, 0, -1), kHandTolerance);
}

TEST(OrientateHeadTable, WithAVerticalToolLeavesThePlacesOnTheHead) {
  const auto machdef = head_table();
  machdef->flags(kVerticalTool);
  machdef->orientate(0, math::m_pi2);
  EXPECT_NEAR_POINT(machdef->getSecondary()->GetBaseVector(), Point(10, 20, 30), 0);
  EXPECT_NEAR_POINT(machdef->head().tip, Point(4, 5, 6), 0);
  EXPECT_NEAR_POINT(machdef->loading_vector(), Point(7, 8, 9), 0);
}

TEST(OrientateHeadTable, WithFlags3TheToolIsNotVerticalAndThePlacesTurn) {
  const auto machdef = head_table();
  machdef->flags(3);
  machdef->orientate(0, math::m_pi2);
  EXPECT_NEAR_POINT(machdef->getToolDirEx(), Point(0.8, 0.6, 0), kHandTolerance);
  EXPECT_NEAR_POINT(machdef->head().tip, Point(6, 5, -4), kHandTolerance);
}

// Both quarter turns, the first about Z and the second about (-1, 0, 0), which is where the first has brought
// the secondary: (x, y, z) to (-y, x, z), then to (x, z, -y) of that.
TEST(OrientateHeadHead, TurnsTheToolByBothAnglesTheSecondAboutTheTurnedSecondary) {
  const auto machdef = head_head();
  EXPECT_TRUE(machdef->orientate(math::m_pi2, math::m_pi2));
  // (0, 0.6, 0.8) -> (-0.6, 0, 0.8) -> (-0.6, 0.8, 0)
  EXPECT_NEAR_POINT(machdef->getToolDirEx(), Point(-0.6, 0.8, 0), kHandTolerance);
}

TEST(OrientateHeadHead, TurnsTheReferenceDirectionByBoth) {
  const auto machdef = head_head();
  machdef->orientate(math::m_pi2, math::m_pi2);
  // (1, 0, 0) -> (0, 1, 0) -> (0, 0, -1)
  EXPECT_NEAR_POINT(machdef->head().ref_dir, Point(0, 0, -1), kHandTolerance);
}

TEST(OrientateHeadHead, TurnsTheTipByBoth) {
  const auto machdef = head_head();
  machdef->orientate(math::m_pi2, math::m_pi2);
  // (4, 5, 6) -> (-5, 4, 6) -> (-5, 6, -4)
  EXPECT_NEAR_POINT(machdef->head().tip, Point(-5, 6, -4), kHandTolerance);
}

TEST(OrientateHeadHead, TurnsTheLoadingVectorByBoth) {
  const auto machdef = head_head();
  machdef->orientate(math::m_pi2, math::m_pi2);
  // (7, 8, 9) -> (-8, 7, 9) -> (-8, 9, -7)
  EXPECT_NEAR_POINT(machdef->loading_vector(), Point(-8, 9, -7), kHandTolerance);
}

TEST(OrientateHeadHead, TurnsTheSecondaryBasePointByBothAboutTheOrigin) {
  const auto machdef = head_head();
  machdef->orientate(math::m_pi2, math::m_pi2);
  // (10, 20, 30) -> (-20, 10, 30) -> (-20, 30, -10)
  EXPECT_NEAR_POINT(machdef->getSecondary()->GetBaseVector(), Point(-20, 30, -10), kHandTolerance);
}

TEST(OrientateHeadHead, TurnsThePrimaryBasePointByTheFirstAboutTheOrigin) {
  const auto machdef = head_head();
  machdef->orientate(math::m_pi2, math::m_pi2);
  EXPECT_NEAR_POINT(machdef->getPrimary()->GetBaseVector(), Point(-2, 1, 3), kHandTolerance);
}

TEST(OrientateHeadHead, TurnsTheSecondaryDirectionByTheFirstAlone) {
  const auto machdef = head_head();
  machdef->orientate(math::m_pi2, math::m_pi2);
  EXPECT_NEAR_POINT(machdef->getSecondary()->GetAxisVector(), Point(-1, 0, 0), kHandTolerance);
}

TEST(OrientateHeadHead, LeavesThePrimaryDirection) {
  const auto machdef = head_head();
  machdef->orientate(math::m_pi2, math::m_pi2);
  EXPECT_NEAR_POINT(machdef->getPrimary()->GetAxisVector(), Point(0, 0, 1), 0);
}

TEST(OrientateHeadHead, WithoutAPrimaryTurnsByTheSecondAboutTheSecondaryAsItStands) {
  const auto machdef = head_head();
  machdef->setPrimary(no_axis());
  EXPECT_TRUE(machdef->orientate(math::m_pi2, math::m_pi2));
  EXPECT_NEAR_POINT(machdef->getToolDirEx(), Point(0.8, 0.6, 0), kHandTolerance);
  EXPECT_NEAR_POINT(machdef->head().tip, Point(6, 5, -4), kHandTolerance);
}

TEST(OrientateHeadHead, WithoutASecondaryTurnsByTheFirst) {
  const auto machdef = head_head();
  machdef->setSecondary(no_axis());
  EXPECT_TRUE(machdef->orientate(math::m_pi2, math::m_pi2));
  EXPECT_NEAR_POINT(machdef->getToolDirEx(), Point(-0.6, 0, 0.8), kHandTolerance);
  EXPECT_NEAR_POINT(machdef->head().tip, Point(-5, 4, 6), kHandTolerance);
}

// Only the head-table machine spares the places on the head when the tool is vertical.
TEST(OrientateHeadHead, WithAVerticalToolStillTurnsThePlacesOnTheHead) {
  const auto machdef = head_head();
  machdef->flags(kVerticalTool);
  machdef->orientate(math::m_pi2, math::m_pi2);
  EXPECT_NEAR_POINT(machdef->head().tip, Point(-5, 6, -4), kHandTolerance);
  EXPECT_NEAR_POINT(machdef->loading_vector(), Point(-8, 9, -7), kHandTolerance);
  EXPECT_NEAR_POINT(machdef->getSecondary()->GetBaseVector(), Point(-20, 30, -10), kHandTolerance);
}

TEST(Orientate, OfAnUnknownTypeIsFalse) {
  for (const int type : {-1, 3, 99, -7}) {
    const auto machdef = head_head();
    machdef->setMachType(static_cast<MACHINE_TYPE>(type));
    EXPECT_FALSE(machdef->orientate(0.5, 0.7)) << type;
  }
}

TEST(Orientate, OfAnUnknownTypeTurnsNothing) {
  const auto machdef = head_head();
  machdef->setMachType(kUnknownType);
  const std::array<double, 24> before = numbers(*machdef);
  machdef->orientate(0.5, 0.7);
  EXPECT_EQ(numbers(*machdef), before);
}

// Deliberate: what was taken as the tool direction is written back whatever the type, and hosts read it
// afterwards. A vertical tool by the flags therefore costs the head its own direction, even where the answer
// is false.
TEST(Orientate, OfAnUnknownTypeWritesTheVerticalToolIntoTheHead) {
  const auto machdef = head_head();
  machdef->setMachType(kUnknownType);
  machdef->flags(kVerticalTool);
  EXPECT_FALSE(machdef->orientate(0.5, 0.7));
  EXPECT_NEAR_POINT(machdef->getToolDirEx(), Point(0, 0, 1), 0);
}

TEST(Orientate, OfATableTableMachineWritesTheVerticalToolIntoTheHead) {
  const auto machdef = table_table();
  machdef->flags(kVerticalTool);
  EXPECT_TRUE(machdef->orientate(0.5, 0.7));
  EXPECT_NEAR_POINT(machdef->getToolDirEx(), Point(0, 0, 1), 0);
}

TEST(Orientate, DoesNotNormaliseTheToolDirection) {
  const auto machdef = head_table();
  machdef->setToolDir(Point(0, 0, 2));
  machdef->orientate(0, math::m_pi2);
  EXPECT_NEAR_POINT(machdef->getToolDirEx(), Point(2, 0, 0), kHandTolerance);
}

TEST(Orientate, DoesNotNormaliseAnAxisDirection) {
  const auto machdef = table_table();
  machdef->getSecondary()->SetAxisVector(Point(3, 0, 0));
  machdef->orientate(math::m_pi2, 0);
  EXPECT_NEAR_POINT(machdef->getSecondary()->GetAxisVector(), Point(0, -3, 0), kHandTolerance);
}

TEST(Orientate, TurnsPastTheAxisLimits) {
  const auto machdef = head_table();
  machdef->getSecondary()->SetMin(-0.1);
  machdef->getSecondary()->SetMax(0.1);
  EXPECT_TRUE(machdef->orientate(0, math::m_pi2));
  EXPECT_NEAR_POINT(machdef->getToolDirEx(), Point(0.8, 0.6, 0), kHandTolerance);
}

TEST(Orientate, CallsCompose) {
  const auto machdef = head_table();
  machdef->orientate(0, math::m_pi2 / 2);
  machdef->orientate(0, math::m_pi2 / 2);
  EXPECT_NEAR_POINT(machdef->getToolDirEx(), Point(0.8, 0.6, 0), kHandTolerance);
  EXPECT_NEAR_POINT(machdef->getSecondary()->GetBaseVector(), Point(30, 20, -10), kHandTolerance);
}

TEST(Orientate, TurnsTheAxisObjectThatOthersHoldToo) {
  const auto machdef = table_table();
  const boost::shared_ptr<md::CAxis2> held_elsewhere = machdef->getSecondary();
  machdef->orientate(math::m_pi2, 0);
  EXPECT_EQ(machdef->getSecondary(), held_elsewhere);
  EXPECT_NEAR_POINT(held_elsewhere->GetAxisVector(), Point(0, -1, 0), kHandTolerance);
}

// Everything is turned on copies and written back, the secondary last.
TEST(Orientate, LeavesAnAxisInBothRolesAsTheSecondaryWasTurned) {
  const boost::shared_ptr<md::CAxis2> axis = rotary_axis(AXIS_C, HEAD, Point(0, 0, 1), Point(1, 2, 3));
  const auto machdef = make_machine(MC_HH, axis, axis);
  machdef->orientate(math::m_pi2, math::m_pi2);
  // The primary's base point is turned once, the secondary's twice.
  EXPECT_NEAR_POINT(axis->GetBaseVector(), Point(-1, -2, 3), kHandTolerance);
  // A machine gives both its axes back, and one axis must not be given back twice.
  machdef->setSecondary(no_axis());
}

TEST(Orientate, LeavesTheRestOfTheHead) {
  const auto machdef = head_head();
  const double lengths[] = {100, 50};
  k5ax_angled_head_set(30, 40, lengths, 5, &machdef->head());
  machdef->head().offset = Point(1, 2, 3);
  machdef->flags(6);
  const angled_head before = machdef->head();
  machdef->orientate(0.5, 0.7);
  const angled_head& now = machdef->head();
  EXPECT_EQ(now.b_angle, before.b_angle);
  EXPECT_EQ(now.c_angle, before.c_angle);
  EXPECT_EQ(now.length1, before.length1);
  EXPECT_EQ(now.length2, before.length2);
  EXPECT_EQ(now.offset, before.offset);
  EXPECT_EQ(now.flags, before.flags);
}

TEST(Orientate, LeavesWorkZeroAndLinearAxes) {
  const auto machdef = head_head();
  machdef->mwZeroPos(Point(1, 2, 3));
  machdef->xyz_axes()[1] =
      md::CAxis2::create(AXIS_Y, TABLE, Point(4, 5, 6), Point(0, 1, 0), -100, 100, LINEAR);
  machdef->orientate(math::m_pi2, math::m_pi2);
  EXPECT_NEAR_POINT(machdef->mwZeroPos(), Point(1, 2, 3), 0);
  EXPECT_NEAR_POINT(machdef->xyz_axes()[1]->GetBaseVector(), Point(4, 5, 6), 0);
  EXPECT_NEAR_POINT(machdef->xyz_axes()[1]->GetAxisVector(), Point(0, 1, 0), 0);
}

TEST(Orientate, ThroughTheFlatFaceTakesPrimaryThenSecondary) {
  const auto machdef = table_table();
  EXPECT_TRUE(k5axCMachDef_orientate(machdef.get(), math::m_pi2, 0));
  EXPECT_NEAR_POINT(machdef->getSecondary()->GetAxisVector(), Point(0, -1, 0), kHandTolerance);
}

TEST(Orientate, ThroughTheFlatFaceIsFalseForAnUnknownType) {
  const auto machdef = table_table();
  machdef->setMachType(kUnknownType);
  EXPECT_FALSE(k5axCMachDef_orientate(machdef.get(), 0, 0));
}

TEST(Orientate, ThroughTheFlatFaceIsFalseForNull) { EXPECT_FALSE(k5axCMachDef_orientate(nullptr, 0.5, 0.7)); }

}  // namespace
