// Whether the tool points along the part's rotary axis, or at right angles to it.
#include <k5ax/machdef.h>

#include <cmath>

#include <gtest/gtest.h>

#include "support/hand_machine.h"
#include "support/near.h"

namespace {

using k5ax_test::kUnknownType;
using k5ax_test::kVerticalTool;
using k5ax_test::make_machine;
using k5ax_test::no_axis;
using k5ax_test::Point;
using k5ax_test::rotary_axis;

// C turns A, and A turns the part: with everything at zero the part's axis is X.
std::unique_ptr<md::CMachDef> table_table(const Point& d_tool) {
  auto machdef = make_machine(MC_TT, rotary_axis(AXIS_C, TABLE, Point(0, 0, 1)),
                              rotary_axis(AXIS_A, TABLE, Point(1, 0, 0)));
  machdef->setToolDir(d_tool);
  return machdef;
}

// C turns the part, B turns the tool.
std::unique_ptr<md::CMachDef> head_table(const Point& d_tool) {
  auto machdef = make_machine(MC_HT, rotary_axis(AXIS_C, TABLE, Point(0, 0, 1)),
                              rotary_axis(AXIS_B, HEAD, Point(0, 1, 0)));
  machdef->setToolDir(d_tool);
  return machdef;
}

// A unit direction whose product with Z is `cosine`.
Point at_cosine_to_z(double cosine) { return Point(std::sqrt(1 - cosine * cosine), 0, cosine); }

TEST(IsToolAxial, WhenTheToolPointsAlongThePartsAxis) {
  EXPECT_TRUE(head_table(Point(0, 0, 1))->IsToolAxial(0, 0, 0));
}

TEST(IsToolAxial, NotWhenTheToolIsAtRightAngles) {
  EXPECT_FALSE(head_table(Point(1, 0, 0))->IsToolAxial(0, 0, 0));
}

// Deliberate: a tool against the axis would have to come from inside the part, so only the same sense is
// axial.
TEST(IsToolAxial, NotWhenTheToolPointsAgainstTheAxis) {
  EXPECT_FALSE(head_table(Point(0, 0, -1))->IsToolAxial(0, 0, 0));
}

TEST(IsToolRadial, NotWhenTheToolPointsAgainstTheAxis) {
  EXPECT_FALSE(head_table(Point(0, 0, -1))->IsToolRadial(0, 0, 0));
}

TEST(IsToolRadial, WhenTheToolIsAtRightAngles) {
  EXPECT_TRUE(head_table(Point(1, 0, 0))->IsToolRadial(0, 0, 0));
  EXPECT_TRUE(head_table(Point(0, -1, 0))->IsToolRadial(0, 0, 0));
}

TEST(IsToolRadial, NotWhenTheToolPointsAlongThePartsAxis) {
  EXPECT_FALSE(head_table(Point(0, 0, 1))->IsToolRadial(0, 0, 0));
}

// The cosines below are exact to 2e-16 and kept away from the threshold by 1e-8, so rounding decides nothing.
TEST(IsToolAxial, JustInsideTheThreshold) {
  EXPECT_TRUE(head_table(at_cosine_to_z(1 - 0.999e-5))->IsToolAxial(0, 0, 0));
}

TEST(IsToolAxial, NotJustOutsideTheThreshold) {
  EXPECT_FALSE(head_table(at_cosine_to_z(1 - 1.001e-5))->IsToolAxial(0, 0, 0));
}

TEST(IsToolRadial, JustInsideTheThresholdOnBothSides) {
  EXPECT_TRUE(head_table(at_cosine_to_z(0.999e-5))->IsToolRadial(0, 0, 0));
  EXPECT_TRUE(head_table(at_cosine_to_z(-0.999e-5))->IsToolRadial(0, 0, 0));
}

TEST(IsToolRadial, NotJustOutsideTheThresholdOnEitherSide) {
  EXPECT_FALSE(head_table(at_cosine_to_z(1.001e-5))->IsToolRadial(0, 0, 0));
  EXPECT_FALSE(head_table(at_cosine_to_z(-1.001e-5))->IsToolRadial(0, 0, 0));
}

TEST(IsToolRadial, NotExactlyAtTheThreshold) {
  // The length of this direction rounds to exactly 1, so its product with Z is exactly the threshold.
  const Point d_tool(std::sqrt(1 - 1e-10), 0, 1e-5);
  ASSERT_EQ(std::sqrt(d_tool.x * d_tool.x + d_tool.z * d_tool.z), 1.0);
  EXPECT_FALSE(head_table(d_tool)->IsToolRadial(0, 0, 0));
}

TEST(IsToolAxial, DoesNotDependOnTheLengthOfTheToolDirection) {
  EXPECT_TRUE(head_table(Point(0, 0, 250))->IsToolAxial(0, 0, 0));
  EXPECT_TRUE(head_table(Point(0, 0, 6e-9))->IsToolAxial(0, 0, 0));
}

TEST(IsToolRadial, DoesNotDependOnTheLengthOfTheToolDirection) {
  // 250 times a cosine of 1e-7: far above the threshold unless the direction is normalised.
  EXPECT_TRUE(head_table(Point(250, 0, 2.5e-5))->IsToolRadial(0, 0, 0));
}

TEST(IsToolAxial, DoesNotDependOnTheLengthOfTheAxisDirection) {
  const auto machdef = head_table(Point(0, 0, 1));
  machdef->getPrimary()->SetAxisVector(Point(0, 0, 40));
  EXPECT_TRUE(machdef->IsToolAxial(0, 0, 0));
}

TEST(IsToolAxial, TakesAToolDirectionShorterThan5e9AsZ) {
  EXPECT_TRUE(head_table(Point(4e-9, 0, 0))->IsToolAxial(0, 0, 0));
  EXPECT_TRUE(head_table(Point(0, 0, 0))->IsToolAxial(0, 0, 0));
}

TEST(IsToolAxial, TakesAToolDirectionLongerThan5e9AsItIs) {
  EXPECT_FALSE(head_table(Point(6e-9, 0, 0))->IsToolAxial(0, 0, 0));
}

TEST(IsToolAxial, TakesAnAxisDirectionShorterThan5e9AsZ) {
  const auto machdef = head_table(Point(0, 0, 1));
  machdef->getPrimary()->SetAxisVector(Point(4e-9, 0, 0));
  EXPECT_TRUE(machdef->IsToolAxial(0, 0, 0));
}

// The primary carries the secondary by minus its angle: at c = +90 degrees the part's axis is (0, -1, 0).
TEST(IsToolAxial, OnTableTableFollowsTheSecondaryAsThePrimaryCarriesIt) {
  const auto machdef = table_table(Point(0, -1, 0));
  EXPECT_TRUE(machdef->IsToolAxial(0, 0, math::m_pi2));
  EXPECT_FALSE(machdef->IsToolAxial(0, 0, -math::m_pi2));
  EXPECT_FALSE(machdef->IsToolAxial(0, 0, 0));
}

TEST(IsToolRadial, OnTableTableFollowsTheSecondaryAsThePrimaryCarriesIt) {
  const auto machdef = table_table(Point(1, 0, 0));
  EXPECT_FALSE(machdef->IsToolRadial(0, 0, 0));
  EXPECT_TRUE(machdef->IsToolRadial(0, 0, math::m_pi2));
}

TEST(IsToolAxial, OnTableTableTheSecondaryAngleHasNoSay) {
  EXPECT_TRUE(table_table(Point(1, 0, 0))->IsToolAxial(1.2345, 0, 0));
}

TEST(IsToolAxial, OnTableTableThePrimaryTakesItsAngleByLetter) {
  const auto machdef = table_table(Point(0, -1, 0));
  machdef->getPrimary()->SetAxis(AXIS_B);
  EXPECT_TRUE(machdef->IsToolAxial(0, math::m_pi2, 0));
  EXPECT_FALSE(machdef->IsToolAxial(0, 0, math::m_pi2));
}

TEST(IsToolAxial, OnTableTableWithoutASecondaryThePrimaryIsThePartsAxis) {
  const auto machdef = table_table(Point(0, 0, 1));
  machdef->setSecondary(no_axis());
  EXPECT_TRUE(machdef->IsToolAxial(0, 0, 0.7));
  machdef->setToolDir(Point(1, 0, 0));
  EXPECT_TRUE(machdef->IsToolRadial(0, 0, 0.7));
}

// The head axis turns the tool by plus its angle: at b = +90 degrees a tool along (-1, 0, 0) points along Z.
TEST(IsToolAxial, OnHeadTableTheHeadAxisTurnsTheTool) {
  const auto machdef = head_table(Point(-1, 0, 0));
  EXPECT_TRUE(machdef->IsToolAxial(0, math::m_pi2, 0));
  EXPECT_FALSE(machdef->IsToolAxial(0, -math::m_pi2, 0));
}

TEST(IsToolAxial, OnHeadTableThePrimaryAngleHasNoSay) {
  EXPECT_TRUE(head_table(Point(0, 0, 1))->IsToolAxial(0, 0, 1.2345));
}

TEST(IsToolAxial, UsesTheVerticalToolOfTheFlags) {
  const auto machdef = head_table(Point(1, 0, 0));
  machdef->flags(kVerticalTool);
  EXPECT_TRUE(machdef->IsToolAxial(0, 0, 0));
  EXPECT_FALSE(machdef->IsToolRadial(0, 0, 0));
}

TEST(IsToolAxial, ChangesNothing) {
  const auto machdef = table_table(Point(0, -3, 0));
  machdef->IsToolAxial(0.1, 0.2, 0.3);
  machdef->IsToolRadial(0.1, 0.2, 0.3);
  EXPECT_NEAR_POINT(machdef->getToolDirEx(), Point(0, -3, 0), 0);
  EXPECT_NEAR_POINT(machdef->getSecondary()->GetAxisVector(), Point(1, 0, 0), 0);
  EXPECT_NEAR_POINT(machdef->getPrimary()->GetAxisVector(), Point(0, 0, 1), 0);
}

// Two tools, one along the axis and one at right angles, for every machine below: each would be answered true
// by a machine that has a part's axis.
void expect_neither(const md::CMachDef& machdef_along, const md::CMachDef& machdef_across) {
  EXPECT_FALSE(machdef_along.IsToolAxial(0, 0, 0));
  EXPECT_FALSE(machdef_across.IsToolRadial(0, 0, 0));
}

TEST(IsToolAxialOrRadial, IsFalseForHeadHead) {
  const auto along = head_table(Point(0, 0, 1));
  const auto across = head_table(Point(1, 0, 0));
  along->setMachType(MC_HH);
  across->setMachType(MC_HH);
  expect_neither(*along, *across);
}

TEST(IsToolAxialOrRadial, IsFalseForAnUnknownType) {
  for (const int type : {-1, 3, 99}) {
    const auto along = head_table(Point(0, 0, 1));
    const auto across = head_table(Point(1, 0, 0));
    along->setMachType(static_cast<MACHINE_TYPE>(type));
    across->setMachType(static_cast<MACHINE_TYPE>(type));
    expect_neither(*along, *across);
  }
}

TEST(IsToolAxialOrRadial, IsFalseForHeadTableWithoutASecondary) {
  const auto along = head_table(Point(0, 0, 1));
  const auto across = head_table(Point(1, 0, 0));
  along->setSecondary(no_axis());
  across->setSecondary(no_axis());
  expect_neither(*along, *across);
}

// No part's axis, so the answer is the neutral one; not a read through a missing pointer.
TEST(IsToolAxialOrRadial, IsFalseForHeadTableWithoutAPrimary) {
  const auto along = head_table(Point(0, 0, 1));
  const auto across = head_table(Point(1, 0, 0));
  along->setPrimary(no_axis());
  across->setPrimary(no_axis());
  expect_neither(*along, *across);
}

TEST(IsToolAxialOrRadial, IsFalseForTableTableWithoutAPrimary) {
  const auto along = table_table(Point(1, 0, 0));
  const auto across = table_table(Point(0, 0, 1));
  along->setPrimary(no_axis());
  across->setPrimary(no_axis());
  expect_neither(*along, *across);
}

TEST(IsToolAxialOrRadial, IsFalseForTableTableWithoutAxes) {
  const auto along = make_machine(MC_TT, no_axis(), no_axis());
  const auto across = make_machine(MC_TT, no_axis(), no_axis());
  across->setToolDir(Point(1, 0, 0));
  expect_neither(*along, *across);
}

}  // namespace
