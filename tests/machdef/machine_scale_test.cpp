// `CMachDef::scale`: what a change between inches and millimetres converts, and what it leaves.
#include <memory>

#include <gtest/gtest.h>

#include <k5ax/machdef.h>

#include "axes/axis_support.h"
#include "machdef/machine_support.h"
#include "scenegraph/scene_tree.h"

namespace {

using Geometry::TPoint;
using k5ax_test::axis_node;
using k5ax_test::Bytes;
using k5ax_test::expect_head;
using k5ax_test::expect_record;
using k5ax_test::find_axis_node;
using k5ax_test::find_node;
using k5ax_test::full_machine;
using k5ax_test::numbered_head;
using k5ax_test::numbered_transform;
using k5ax_test::plain_node;
using md::CMachDef;

// The two factors. Each expectation below is one product with one of them, as the library forms it, so all
// are exact.
constexpr double kToMillimetres = 25.4;
constexpr double kToInches = 0.03937007874015748;  // the double nearest to 1 / 25.4

TPoint<double> times(const TPoint<double>& p, double factor) {
  return TPoint<double>(p.x * factor, p.y * factor, p.z * factor);
}

std::unique_ptr<CMachDef> inch_machine() {
  std::unique_ptr<CMachDef> machdef(new CMachDef);
  k5ax_test::give_axes(*machdef);
  machdef->setMetric(false);
  return machdef;
}

std::unique_ptr<CMachDef> metric_machine() {
  std::unique_ptr<CMachDef> machdef(new CMachDef);
  k5ax_test::give_axes(*machdef);
  return machdef;
}

TEST(MachineScale, ToTheUnitItHasChangesNothing) {
  const auto metric = full_machine();
  metric->setMetric(true);
  const Bytes before = k5ax_test::saved(*metric);
  metric->scale(true);
  EXPECT_SAME_BYTES(k5ax_test::saved(*metric), before);

  const auto inch = full_machine();
  const Bytes inch_before = k5ax_test::saved(*inch);
  inch->scale(false);
  EXPECT_SAME_BYTES(k5ax_test::saved(*inch), inch_before);
}

TEST(MachineScale, ChangesTheUnit) {
  CMachDef machdef;
  machdef.scale(false);
  EXPECT_FALSE(machdef.isMetric());
  machdef.scale(true);
  EXPECT_TRUE(machdef.isMetric());
}

TEST(MachineScale, ToMillimetresMultipliesLinearAxesBy25Point4) {
  const auto machdef = inch_machine();
  machdef->scale(true);
  expect_record(*machdef->xyz_axes()[0], AXIS_X, TABLE, times({7, 8, 9}, kToMillimetres), {1, 0, 0},
                -100 * kToMillimetres, 150 * kToMillimetres, LINEAR);
  expect_record(*machdef->xyz_axes()[1], AXIS_Y, TABLE, times({10, 11, 12}, kToMillimetres), {0, 1, 0},
                -200 * kToMillimetres, 250 * kToMillimetres, LINEAR);
  expect_record(*machdef->xyz_axes()[2], AXIS_Z, HEAD, times({13, 14, 15}, kToMillimetres), {0, 0, 1},
                -300 * kToMillimetres, 350 * kToMillimetres, LINEAR);
}

TEST(MachineScale, ToInchesDividesLinearAxesBy25Point4) {
  const auto machdef = metric_machine();
  machdef->scale(false);
  expect_record(*machdef->xyz_axes()[0], AXIS_X, TABLE, times({7, 8, 9}, kToInches), {1, 0, 0},
                -100 * kToInches, 150 * kToInches, LINEAR);
  expect_record(*machdef->xyz_axes()[2], AXIS_Z, HEAD, times({13, 14, 15}, kToInches), {0, 0, 1},
                -300 * kToInches, 350 * kToInches, LINEAR);
}

TEST(MachineScale, MovesRotaryAxesAndLeavesTheirLimits) {
  const auto machdef = inch_machine();
  machdef->scale(true);
  expect_record(*machdef->getPrimary(), AXIS_C, TABLE, times({1, 2, 3}, kToMillimetres), {0, 0, 1}, -3, 3.5,
                ROTARY);
  expect_record(*machdef->getSecondary(), AXIS_A, TABLE, times({4, 5, 6}, kToMillimetres), {1, 0, 0}, -2, 2.5,
                ROTARY);
}

TEST(MachineScale, ToInchesMovesRotaryAxesToo) {
  const auto machdef = metric_machine();
  machdef->scale(false);
  expect_record(*machdef->getPrimary(), AXIS_C, TABLE, times({1, 2, 3}, kToInches), {0, 0, 1}, -3, 3.5,
                ROTARY);
}

// Deliberate: the mode says what a limit is, whatever place the axis stands in.
TEST(MachineScale, GoesByTheModeOfAnAxisAndNotByItsPlace) {
  const auto machdef = inch_machine();
  machdef->getPrimary()->mode(LINEAR);
  machdef->xyz_axes()[0]->mode(ROTARY);
  machdef->scale(true);
  EXPECT_EQ(machdef->getPrimary()->GetMax(), 3.5 * kToMillimetres);
  EXPECT_EQ(machdef->xyz_axes()[0]->GetMax(), 150);
}

TEST(MachineScale, PassesOverMissingAxes) {
  CMachDef machdef;
  machdef.setMetric(false);
  machdef.xyz_axes()[1] = md::CAxis2::create(AXIS_Y, TABLE, {1, 1, 1}, {0, 1, 0}, -1, 1, LINEAR);
  machdef.scale(true);
  EXPECT_EQ(machdef.xyz_axes()[1]->GetMax(), kToMillimetres);
}

TEST(MachineScale, ConvertsTheLengthsOfTheHeadAlone) {
  CMachDef machdef;
  machdef.setMetric(false);
  machdef.head() = numbered_head();
  angled_head expected = numbered_head();
  expected.length1 = 11 * kToMillimetres;
  expected.length2 = 12 * kToMillimetres;
  expected.tip = times({13, 14, 15}, kToMillimetres);
  expected.offset = times({16, 17, 18}, kToMillimetres);

  machdef.scale(true);

  expect_head(machdef.head(), expected);
}

TEST(MachineScale, ToInchesConvertsTheHeadToo) {
  CMachDef machdef;
  machdef.head() = numbered_head();
  machdef.scale(false);
  EXPECT_EQ(machdef.head().length2, 12 * kToInches);
  EXPECT_NEAR_POINT(machdef.head().tip, times({13, 14, 15}, kToInches), 0.0);
}

// Deliberate: the host keeps these two in its own unit.
TEST(MachineScale, LeavesWorkZeroAndLoadingVector) {
  CMachDef machdef;
  machdef.mwZeroPos({1, 2, 3});
  machdef.loading_vector({4, 5, 6});
  machdef.scale(false);
  EXPECT_NEAR_POINT(machdef.mwZeroPos(), (TPoint<double>(1, 2, 3)), 0.0);
  EXPECT_NEAR_POINT(machdef.loading_vector(), (TPoint<double>(4, 5, 6)), 0.0);
}

TEST(MachineScale, LeavesTypeModeAndDiscipline) {
  const auto machdef = full_machine();
  machdef->scale(true);
  EXPECT_EQ(machdef->getMachType(), MC_TT);
  EXPECT_EQ(static_cast<int>(machdef->get_mode()), 5);
  EXPECT_EQ(static_cast<int>(machdef->discipline()), 2);
}

TEST(MachineScale, ThereAndBackIsTheStartWithinRounding) {
  const auto machdef = inch_machine();
  machdef->scale(true);
  machdef->scale(false);
  // Two products of at most 350 * 25.4, and the factors' product is 1 within an eps: 4 eps of 350.
  EXPECT_NEAR(machdef->xyz_axes()[2]->GetMax(), 350, 4 * 2.3e-16 * 350);
  EXPECT_NEAR_POINT(machdef->getPrimary()->GetBaseVector(), (TPoint<double>(1, 2, 3)), 4e-15);
}

// Trees.
TEST(MachineScaleOfTrees, MovesTheAxisOfALinearNodeAndItsLimits) {
  const auto machdef = full_machine();
  machdef->scale(true);
  expect_record(*find_axis_node(*machdef, k5ax_test::kLinearX), AXIS_X, HEAD,
                times({7, 8, 9}, kToMillimetres), {1, 0, 0}, -50 * kToMillimetres, 60 * kToMillimetres,
                LINEAR);
}

TEST(MachineScaleOfTrees, MovesTheAxisOfARotaryNodeAndLeavesItsLimits) {
  const auto machdef = full_machine();
  machdef->scale(true);
  expect_record(*find_axis_node(*machdef, k5ax_test::kRotaryC), AXIS_C, HEAD,
                times({1, 2, 3}, kToMillimetres), {0, 0, 1}, -2, 3, ROTARY);
}

TEST(MachineScaleOfTrees, ReachesTheSecondTree) {
  const auto machdef = full_machine();
  machdef->scale(true);
  EXPECT_NEAR_POINT(find_axis_node(*machdef, k5ax_test::kRotaryA)->GetBaseVector(),
                    times({4, 5, 6}, kToMillimetres), 0.0);
}

TEST(MachineScaleOfTrees, ToInchesReachesBothTrees) {
  const auto machdef = full_machine();
  machdef->setMetric(true);
  machdef->scale(false);
  EXPECT_NEAR_POINT(find_axis_node(*machdef, k5ax_test::kLinearX)->GetBaseVector(),
                    times({7, 8, 9}, kToInches), 0.0);
  EXPECT_NEAR_POINT(find_axis_node(*machdef, k5ax_test::kRotaryA)->GetBaseVector(),
                    times({4, 5, 6}, kToInches), 0.0);
}

TEST(MachineScaleOfTrees, MultipliesTheValueOfALinearNodeAndPosesItThere) {
  const auto machdef = full_machine();
  const auto node = find_axis_node(*machdef, k5ax_test::kLinearX);
  node->value(2);

  machdef->scale(true);

  EXPECT_EQ(node->value(), 2 * kToMillimetres);
  EXPECT_NEAR_MATRIX(node->transform(), Geometry::Translate({2 * kToMillimetres, 0, 0}), 0.0);
}

// Deliberate: every axis node's value is multiplied, angles too. Hosts pose the scene anew after a change of
// unit, and saved scenes carry values made this way.
TEST(MachineScaleOfTrees, MultipliesTheValueOfARotaryNodeToo) {
  const auto machdef = full_machine();
  const auto node = find_axis_node(*machdef, k5ax_test::kRotaryC);
  node->value(0.125);
  machdef->scale(true);
  EXPECT_EQ(node->value(), 0.125 * kToMillimetres);
}

TEST(MachineScaleOfTrees, PosesARotaryNodeAtItsMovedLineAndMultipliedValue) {
  const auto machdef = full_machine();
  const auto node = find_axis_node(*machdef, k5ax_test::kRotaryC);
  node->value(math::m_pi / 2 / kToMillimetres);

  machdef->scale(true);

  // A quarter turn about Z takes X to Y and Y to -X; minus the base point (1, 2, 3) * 25.4, turned, stays in
  // it: (-25.4, -50.8) -> (50.8, -25.4). Rounding: products of at most 76.2, 4 * 76.2 * 1.1e-16 = 4e-14.
  Geometry::Matrix expected;
  expected.SetMatrix(0, 1, 0, -1, 0, 0, 0, 0, 1, 50.8, -25.4, -3 * kToMillimetres);
  EXPECT_NEAR_MATRIX(node->transform(), expected, 1e-13);
}

// Deliberate: what stands in plain nodes is the host's, and the library does not know what of it is a length.
TEST(MachineScaleOfTrees, LeavesPlainNodes) {
  const auto machdef = full_machine();
  const auto node = find_node(*machdef, k5ax_test::kToolMount);
  node->transform(numbered_transform(7));
  node->value(5);
  machdef->scale(true);
  EXPECT_NEAR_MATRIX(node->transform(), numbered_transform(7), 0.0);
  EXPECT_EQ(node->value(), 5);
}

// Deliberate: the tool node keeps its head; only its transform is made anew, at the tool point it had.
TEST(MachineScaleOfTrees, LeavesTheHeadOfTheToolNode) {
  const auto machdef = full_machine();
  machdef->tool_node()->payload() = numbered_head();
  machdef->scale(true);
  expect_head(machdef->tool_node()->payload(), numbered_head());
}

TEST(MachineScaleOfTrees, AppliesTheToolNodeRuleAgainAtTheStoredPoint) {
  const auto machdef = full_machine();
  angled_head& head = machdef->tool_node()->payload();
  head = k5ax_test::straight_head();
  head.length1 = 100;
  head.length2 = 50;
  head.offset = {1, 2, 3};
  ASSERT_NE(machdef->tool_node()->transform().TransformDirection({1, 0, 0}), (TPoint<double>(1, 0, 0)));

  machdef->scale(true);

  // A straight head: -150 along Z for both lengths, then minus the tool point, all in the unit it was set in.
  EXPECT_NEAR_MATRIX(machdef->tool_node()->transform(), Geometry::Translate({-1, -2, -153}), 0.0);
}

TEST(MachineScaleOfTrees, KeepsIdsFlagsAndToolNodeValue) {
  const auto machdef = full_machine();
  std::vector<int> ids;
  std::vector<unsigned int> flags;
  for (const auto& n : k5ax_test::nodes_of(*machdef)) {
    ids.push_back(n->id());
    flags.push_back(n->flags());
  }
  machdef->tool_node()->value(17);
  ASSERT_EQ(ids.size(), k5ax_test::kSceneNodes);

  machdef->scale(true);

  std::size_t i = 0;
  for (const auto& n : k5ax_test::nodes_of(*machdef)) {
    EXPECT_EQ(n->id(), ids[i]);
    EXPECT_EQ(n->flags(), flags[i]);
    ++i;
  }
  EXPECT_EQ(machdef->tool_node()->value(), 17);
}

TEST(MachineScaleOfTrees, TakesRootsOfEveryKind) {
  CMachDef inches;
  inches.setMetric(false);
  inches.SG()[0] = k5ax_test::make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  inches.SG()[0]->value(2);
  const k5ax_test::ToolNodePtr tool = k5ax_test::make_tool_node(2);
  tool->transform(numbered_transform(7));
  inches.SG()[1] = tool;
  inches.scale(true);
  EXPECT_EQ(inches.SG()[0]->value(), 2 * 25.4);
  // The rule of the tool node again, at the stored point, which is the origin.
  EXPECT_NEAR_MATRIX(tool->transform(), Geometry::Matrix(), 0.0);
}

// What is below it, it may scale in its own way.
TEST(MachineScaleOfTrees, LeavesTheTreeBelowARootOfAHostsClassToIt) {
  std::vector<k5ax_test::Call> log;
  CMachDef inches;
  inches.setMetric(false);
  inches.SG()[0] = k5ax_test::make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  inches.SG()[0]->value(2);
  const auto host_node = k5ax_test::HostNode::create(3, &log);
  inches.SG()[1] = host_node;
  inches.scale(true);
  EXPECT_EQ(inches.SG()[0]->value(), 2 * 25.4);
  EXPECT_EQ(log, (std::vector<k5ax_test::Call>{{"scale_node", 3, true}}));
  EXPECT_EQ(host_node->last_factor, kToMillimetres);
  inches.SG()[1].reset();  // a pool would keep it longer than there is a log
}

// An axis node may outlive the machine that owned it; what its owner pointer names is gone then. The
// sanitizer build sees any look there.
TEST(MachineScaleOfTrees, AsksNoOwnerThatIsGone) {
  auto former_owner = k5ax_test::listed_machine();
  const CMachDef* const former_address = former_owner.get();
  former_owner.reset();
  const auto node = md::NodeAxis_Create();  // one that the machine gave back, with all that its axis held
  ASSERT_EQ(node->machdef(), former_address);
  CMachDef machdef;
  machdef.setMetric(false);
  machdef.SG()[0] = node;
  node->value(2);

  machdef.scale(true);

  EXPECT_EQ(node->value(), 2 * kToMillimetres);
}

}  // namespace
