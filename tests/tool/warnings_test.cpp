// What looks wrong about a machine: each warning where it belongs, and none where it does not.
#include "tool/check/warnings.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <string>

#include <k5ax/kinematics.h>

#include "support/numbers.h"
#include "tool/shipped.h"

namespace {

using k5ax_test::kInfinity;
using tool::axis_warnings;
using tool::head_warnings;
using tool::motion_warnings;
using tool::tree_warnings;
using tool_test::axis_of;
using tool_test::kFork;
using tool_test::kInch;
using tool_test::kShipped;
using tool_test::kSwivel;
using tool_test::kTrunnion;
using tool_test::node_of;
using tool_test::shipped;
using Point = Geometry::TPoint<double>;
using Rules = std::multiset<std::string>;

constexpr int kFixed = -999;

// The nodes of the shipped machines.
constexpr int kX = 1;
constexpr int kY = 2;
constexpr int kZ = 3;
constexpr int kPrimary = 4;
constexpr int kSecondary = 5;
constexpr int kTool = 6;
constexpr int kMachineFrame = 10;
constexpr int kPartFrame = 11;
constexpr int kLeaf = 12;

Rules rules(const std::vector<tool::Finding>& findings) {
  Rules all;
  for (const tool::Finding& finding : findings) all.insert(finding.rule);
  return all;
}

Rules all_rules(md::CMachDef& machine) { return rules(tool::all_warnings(machine)); }

// Both copies of an axis, the machine's and its node's.
template <class Change>
void change_axis(md::CMachDef& machine, int id, Change change) {
  if (id == kPrimary) change(*machine.getPrimary());
  if (id == kSecondary) change(*machine.getSecondary());
  if (id <= kZ) change(*machine.xyz_axes()[static_cast<std::size_t>(id - 1)]);
  change(axis_of(machine, id));
  md::NodeAxis_transform_set(0, *md::sg::axis_node(node_of(machine, id).get()),
                             node_of(machine, id)->value());
}

TEST(Warnings, NoneForTheShippedMachines) {
  for (const char* name : kShipped) {
    const auto machine = shipped(name);
    for (const tool::Finding& finding : tool::all_warnings(*machine))
      ADD_FAILURE() << name << ": " << finding.line();
  }
}

// ---- axes ----

TEST(AxisWarnings, SayThatALinearAxisIsMissing) {
  const auto machine = shipped(kTrunnion);
  machine->xyz_axes()[1].reset();
  EXPECT_EQ(all_rules(*machine), Rules({"linear-missing"}));
}

TEST(AxisWarnings, SayThatAMachineHasNoRotaryAxes) {
  const auto machine = shipped(kFork);
  machine->setPrimary({});
  machine->setSecondary({});
  EXPECT_EQ(rules(axis_warnings(*machine)), Rules({"rotary-missing"}));
}

TEST(AxisWarnings, NameZeroTravel) {
  const auto machine = shipped(kTrunnion);
  change_axis(*machine, kPrimary, [](md::CAxis2& axis) {
    axis.SetMin(0);
    axis.SetMax(0);
  });
  const auto warnings = tool::all_warnings(*machine);
  ASSERT_EQ(warnings.size(), 1U);
  EXPECT_EQ(warnings[0].line(), "primary axis A: travel is zero, from 0 deg to 0 deg; widen its limits");
}

TEST(AxisWarnings, SayThatNothingCanBeWrappedAboutAnAxisWithoutTravel) {
  const auto machine = shipped(kTrunnion);
  change_axis(*machine, kSecondary, [](md::CAxis2& axis) { axis.SetMin(axis.GetMax()); });
  // At 0, the node is out of the travel that is left.
  EXPECT_EQ(all_rules(*machine), Rules({"wrapping-travel", "zero-travel", "value-range"}));
}

// Validity looks at the rotary axes alone.
TEST(AxisWarnings, NameLinearLimitsThatRunBackwards) {
  const auto machine = shipped(kTrunnion);
  machine->xyz_axes()[2]->SetMin(0);
  machine->xyz_axes()[2]->SetMax(-400);
  const auto warnings = axis_warnings(*machine);
  ASSERT_EQ(warnings.size(), 1U);
  EXPECT_EQ(warnings[0].line(), "Z axis: travel from 0 mm to -400 mm runs backwards; swap min and max");
}

TEST(AxisWarnings, NameLimitsThatAreNotFinite) {
  const auto machine = shipped(kTrunnion);
  machine->getSecondary()->SetMax(kInfinity);
  EXPECT_EQ(rules(axis_warnings(*machine)), Rules({"not-finite"}));
}

// 120 and 30 radians are what degrees look like that nobody has converted.
TEST(AxisWarnings, NameLimitsThatLookLikeDegrees) {
  const auto machine = shipped(kTrunnion);
  machine->getPrimary()->SetMin(-120);
  machine->getPrimary()->SetMax(30);
  EXPECT_EQ(rules(axis_warnings(*machine)), Rules({"limits-in-degrees"}));
}

// From -2.1 to 0.5 are -120 to 30 degrees in radians, written where degrees belong.
TEST(AxisWarnings, NameTravelThatLooksLikeRadians) {
  const auto machine = shipped(kTrunnion);
  const auto warnings_of = [&machine](double min_deg, double max_deg) {
    machine->getPrimary()->SetMin(min_deg * math::D2R);
    machine->getPrimary()->SetMax(max_deg * math::D2R);
    return axis_warnings(*machine);
  };
  ASSERT_EQ(rules(warnings_of(-2.1, 0.5)), Rules({"limits-in-radians"}));
  EXPECT_EQ(warnings_of(-2.1, 0.5)[0].line(),
            "primary axis A: travel is only from -2.1 deg to 0.5 deg; if the limits were meant as radians, "
            "multiply them by 57.29577951308232");
  // A turn has 6.283 radians.
  EXPECT_EQ(rules(warnings_of(0, 6.283)), Rules({"limits-in-radians"}));
  EXPECT_EQ(rules(warnings_of(0, 6.284)), Rules());
  EXPECT_EQ(rules(warnings_of(-5, 5)), Rules());
}

// 0.6, 0.8 and 0.1: the length is sqrt(1.01).
TEST(AxisWarnings, NameADirectionThatIsNoUnitVector) {
  const auto machine = shipped(kFork);
  machine->getSecondary()->SetAxisVector(Point(0.8, 0.6, 0.1));
  const auto warnings = axis_warnings(*machine);
  ASSERT_EQ(warnings.size(), 1U);
  EXPECT_EQ(
      warnings[0].line(),
      "secondary axis A: direction 0.8 0.6 0.1 has the length 1.004987562, not 1; divide it by its length");
}

TEST(AxisWarnings, NameALinearDirectionWithoutLength) {
  const auto machine = shipped(kTrunnion);
  machine->xyz_axes()[0]->SetAxisVector(Point());
  EXPECT_EQ(rules(axis_warnings(*machine)), Rules({"linear-direction"}));
}

// 0.03 off in a direction of length 1 makes a dot product of 1 / sqrt(1.0009) = 0.99955.
TEST(AxisWarnings, NameRotaryAxesThatAreNearlyParallel) {
  const auto machine = shipped(kFork);
  machine->getSecondary()->SetAxisVector(math::safe_normal(Point(0.03, 0, -1)));
  const auto warnings = axis_warnings(*machine);
  ASSERT_EQ(warnings.size(), 1U);
  EXPECT_EQ(warnings[0].rule, "parallel");
  EXPECT_NE(warnings[0].value.find("nearly parallel"), std::string::npos) << warnings[0].value;
}

TEST(AxisWarnings, LeaveARotaryAxisParallelToALinearOneAlone) {
  const auto machine = shipped(kFork);  // its C and Z are
  EXPECT_EQ(rules(axis_warnings(*machine)), Rules());
}

// That is a reason, and need not be said twice.
TEST(AxisWarnings, LeaveEqualDirectionsOfRotaryAxesToValidity) {
  const auto machine = shipped(kFork);
  machine->getSecondary()->SetAxisVector(machine->getPrimary()->GetAxisVector());
  EXPECT_EQ(rules(axis_warnings(*machine)), Rules({"letter-direction"}));
}

TEST(AxisWarnings, NameParallelLinearAxes) {
  const auto machine = shipped(kFork);
  machine->xyz_axes()[0]->SetAxisVector(Point(0, -1, 0));
  EXPECT_EQ(rules(axis_warnings(*machine)), Rules({"letter-direction", "parallel"}));
}

TEST(AxisWarnings, NameALinearAxisInTheWrongPlace) {
  const auto machine = shipped(kFork);
  machine->xyz_axes()[0]->SetAxis(AXIS_Y);
  EXPECT_EQ(rules(axis_warnings(*machine)), Rules({"letter-direction", "slot-letter"}));
}

TEST(AxisWarnings, NameARotaryAxisWithALinearLetter) {
  const auto machine = shipped(kFork);
  machine->getSecondary()->SetAxis(AXIS_X);
  EXPECT_EQ(rules(axis_warnings(*machine)), Rules({"slot-letter"}));
}

TEST(AxisWarnings, NameARotaryAxisThatSlides) {
  const auto machine = shipped(kFork);
  machine->getSecondary()->mode(LINEAR);
  EXPECT_EQ(rules(axis_warnings(*machine)), Rules({"slot-mode"}));
}

TEST(AxisWarnings, NameALinearAxisThatIsNeitherOnHeadNorTable) {
  const auto machine = shipped(kFork);
  machine->xyz_axes()[0]->SetAxisLocation(AXIS_LOCATION_INVALID_LOWEST);
  EXPECT_EQ(rules(axis_warnings(*machine)), Rules({"linear-location"}));
}

TEST(AxisWarnings, NameALetterThatDoesNotFitTheDirection) {
  const auto machine = shipped(kFork);
  machine->getSecondary()->SetAxis(AXIS_B);
  EXPECT_EQ(rules(axis_warnings(*machine)), Rules({"letter-direction"}));
}

// A swivel at 45 degrees is along no direction of the machine, and may have either letter.
TEST(AxisWarnings, LeaveALeaningAxisItsLetter) {
  const auto machine = shipped(kFork);
  machine->getSecondary()->SetAxisVector(math::safe_normal(Point(0, 1, 1)));
  EXPECT_EQ(rules(axis_warnings(*machine)), Rules());
}

TEST(AxisWarnings, NameAHeadAxisOfATableTableMachine) {
  const auto machine = shipped(kTrunnion);
  machine->getPrimary()->SetAxisLocation(HEAD);
  EXPECT_EQ(rules(axis_warnings(*machine)), Rules({"type-location"}));
}

TEST(AxisWarnings, NameATableAxisThatIsAloneOnAHeadHeadMachine) {
  const auto machine = shipped(kFork);
  machine->setSecondary({});
  machine->getPrimary()->SetAxisLocation(TABLE);
  EXPECT_EQ(rules(axis_warnings(*machine)), Rules({"type-location"}));
}

// ---- head ----

TEST(HeadWarnings, NameAToolDirectionThatItsAnglesDoNotGive) {
  const auto machine = shipped(kInch);
  machine->setToolDir(Point(0, 0, 1));
  EXPECT_EQ(rules(head_warnings(*machine)), Rules({"head-angles"}));
}

TEST(HeadWarnings, NameAToolDirectionThatIsNoUnitVector) {
  const auto machine = shipped(kTrunnion);
  machine->setToolDir(Point(0, 0, 2));
  EXPECT_EQ(rules(head_warnings(*machine)), Rules({"head-angles", "not-unit"}));
}

TEST(HeadWarnings, NameATipThatItsLengthsDoNotGive) {
  const auto machine = shipped(kInch);
  machine->head().tip.z += 0.01;
  EXPECT_EQ(rules(head_warnings(*machine)), Rules({"head-tip"}));
}

// The side offset is not kept, and shows in the tip alone.
TEST(HeadWarnings, LeaveASideOffsetAlone) {
  const auto machine = shipped(kInch);
  const double lengths[2] = {4.25, 2.875};
  k5ax_angled_head_set(30, 50, lengths, 0.75, &machine->head());
  EXPECT_EQ(rules(head_warnings(*machine)), Rules());
}

TEST(HeadWarnings, SayThatTheFlagsOverruleALeaningHead) {
  const auto machine = shipped(kInch);
  machine->flags(1);
  EXPECT_EQ(rules(head_warnings(*machine)), Rules({"vertical-tool"}));
}

TEST(HeadWarnings, NameNumbersThatAreNotFinite) {
  const auto machine = shipped(kTrunnion);
  machine->head().length1 = kInfinity;
  machine->mwZeroPos(Point(kInfinity, 0, 0));
  machine->loading_vector(Point(0, kInfinity, 0));
  EXPECT_EQ(rules(head_warnings(*machine)), Rules({"not-finite", "not-finite", "not-finite"}));
}

// ---- trees ----

TEST(TreeWarnings, SayThatBothTreesAreMissing) {
  const auto machine = shipped(kTrunnion);
  md::CMachDef without;
  without.clone(*machine, 1);
  EXPECT_EQ(all_rules(without), Rules({"tree-missing", "tree-missing"}));
}

TEST(TreeWarnings, SayThatTheToolNodeIsMissing) {
  const auto machine = shipped(kTrunnion);
  machine->tool_node({});
  EXPECT_EQ(all_rules(*machine), Rules({"tool-node-missing"}));
}

TEST(TreeWarnings, SayThatNoNodeStandsForARotaryAxis) {
  const auto machine = shipped(kTrunnion);
  machine->SG_RotAxs()[1].reset();
  const Rules found = rules(tree_warnings(*machine));
  EXPECT_EQ(found, Rules({"not-driven", "rotary-node-missing"}));
}

TEST(TreeWarnings, SayThatARotaryNodeHasNoAxis) {
  const auto machine = shipped(kFork);
  machine->setSecondary({});
  EXPECT_EQ(rules(tree_warnings(*machine)), Rules({"rotary-node-without-axis"}));
}

TEST(TreeWarnings, SayThatOneNodeStandsForBothRotaryAxes) {
  const auto machine = shipped(kFork);
  machine->SG_RotAxs()[1] = machine->SG_RotAxs()[0];
  EXPECT_EQ(rules(tree_warnings(*machine)), Rules({"not-driven", "rotary-node-twice"}));
}

TEST(TreeWarnings, NameAnIdUsedTwice) {
  const auto machine = shipped(kTrunnion);
  node_of(*machine, kX)->id(kY);
  const auto warnings = tool::all_warnings(*machine);
  ASSERT_EQ(warnings.size(), 1U);
  EXPECT_EQ(
      warnings[0].line(),
      "node id 2: stands for 2 nodes, of which only the first would be found; give each node an id of its "
      "own");
}

TEST(TreeWarnings, LeaveFixedNodesTheirCommonId) {
  const auto machine = shipped(kTrunnion);  // has three of them
  EXPECT_EQ(rules(tree_warnings(*machine)), Rules());
}

TEST(TreeWarnings, NameAnAxisNodeWithAnIdThatIsPassedOver) {
  for (const int id : {0, -1, kFixed}) {
    const auto machine = shipped(kTrunnion);
    node_of(*machine, kX)->id(id);
    EXPECT_EQ(all_rules(*machine), Rules({"axis-id"})) << id;
  }
}

TEST(TreeWarnings, NameASlideThatTheUpdateDoesNotDrive) {
  const auto machine = shipped(kTrunnion);
  node_of(*machine, kY)->flags(0);
  const auto warnings = tree_warnings(*machine);
  ASSERT_EQ(warnings.size(), 1U);
  EXPECT_EQ(
      warnings[0].line(),
      "tree 0, node 2 (axis Y): no pose moves it: flag 1 is not set; leave it only if it is to stay where it "
      "stands");
}

// The last of two wins, and the other one is set to 0.
TEST(TreeWarnings, NameTheFirstOfTwoDrivenSlidesOfOneLetter) {
  const auto machine = shipped(kTrunnion);
  change_axis(*machine, kY, [](md::CAxis2& axis) { axis.SetAxis(AXIS_Z); });
  const auto warnings = tree_warnings(*machine);
  ASSERT_FALSE(warnings.empty());
  EXPECT_EQ(warnings[0].rule, "not-driven");
  EXPECT_EQ(warnings[0].place, "tree 0, node 2 (axis Z)");
}

TEST(TreeWarnings, NameWhatANodesAxisHasDifferentFromTheMachines) {
  const auto machine = shipped(kTrunnion);
  machine->getSecondary()->SetMax(90 * math::D2R);
  const auto warnings = tool::all_warnings(*machine);
  ASSERT_EQ(warnings.size(), 1U);
  EXPECT_EQ(warnings[0].line(),
            "tree 1, node 5 (axis C): max 3600 deg where the machine's axis has 90 deg; make the two agree");
}

TEST(TreeWarnings, NameAHeadOfTheToolNodeThatIsNotTheMachines) {
  const auto machine = shipped(kInch);
  machine->tool_node()->payload().length1 = 5;
  k5axSgToolNodeMatrixSet(machine->tool_node(), machine->tool_node()->offset);
  EXPECT_EQ(all_rules(*machine), Rules({"node-head"}));
}

TEST(TreeWarnings, NameATableAxisInTheTreeOfTheHead) {
  const auto machine = shipped(kTrunnion);
  change_axis(*machine, kZ, [](md::CAxis2& axis) { axis.SetAxisLocation(TABLE); });
  EXPECT_EQ(all_rules(*machine), Rules({"tree-side"}));
}

TEST(TreeWarnings, NameAValueOutsideItsTravel) {
  const auto machine = shipped(kTrunnion);
  md::NodeAxis_transform_set(0, *md::sg::axis_node(node_of(*machine, kPrimary).get()), 31 * math::D2R);
  EXPECT_EQ(all_rules(*machine), Rules({"value-range"}));
}

TEST(TreeWarnings, DoNotNameAValueOutsideOfLimitsThatRunBackwards) {
  const auto machine = shipped(kTrunnion);
  change_axis(*machine, kX, [](md::CAxis2& axis) {
    axis.SetMin(250);
    axis.SetMax(-250);
  });
  EXPECT_EQ(all_rules(*machine), Rules({"linear-limits"}));
}

TEST(TreeWarnings, NameATransformThatIsNotTheOneOfItsValue) {
  const auto machine = shipped(kTrunnion);
  node_of(*machine, kY)->value(12);
  EXPECT_EQ(all_rules(*machine), Rules({"stale-transform"}));
}

TEST(TreeWarnings, NameAToolNodeWhoseTransformIsNotTheOneOfItsPoint) {
  const auto machine = shipped(kTrunnion);
  machine->tool_node()->offset.z = 170;
  EXPECT_EQ(rules(tree_warnings(*machine)), Rules({"stale-transform"}));
}

TEST(TreeWarnings, NameAnAxisBesideTheChainOfThePart) {
  const auto machine = shipped(kTrunnion);
  const auto other = md::sg::node::create();
  other->reset();
  other->id(20);
  const auto part = node_of(*machine, kPartFrame);
  const auto chain = part->children().at(0);
  part->add_child(other);
  part->add_child(chain);  // there already
  chain->parent(part);     // moves it to the end, behind the other one
  EXPECT_EQ(rules(tree_warnings(*machine)),
            Rules({"beside-the-chain", "beside-the-chain", "beside-the-chain"}));
}

TEST(TreeWarnings, NameAnAxisBesideTheChainOfTheTool) {
  const auto machine = shipped(kTrunnion);
  node_of(*machine, kMachineFrame)->add_child(machine->tool_node());
  EXPECT_EQ(rules(tree_warnings(*machine)), Rules({"beside-the-chain", "beside-the-chain"}));
}

// The tool arrives all the same, by slides that stand elsewhere than the machine's would.
TEST(TreeWarnings, NameAHeadAxisWhoseWayBackIsWrong) {
  const auto machine = shipped(kSwivel);
  node_of(*machine, kSecondary)->parent()->transform(Geometry::Translate(Point(0, 0, 180.015)));
  const auto warnings = tool::all_warnings(*machine);
  ASSERT_EQ(warnings.size(), 1U);
  EXPECT_EQ(
      warnings[0].line(),
      "tree 0, node 5 (axis B): its base point is -0.038 0 180.015, and its parent does not lead back by it; "
      "hang it below a fixed node with just that shift");
}

TEST(TreeWarnings, NameAMarkWithoutARival) {
  const auto machine = shipped(kTrunnion);
  node_of(*machine, kX)->flags(3);
  EXPECT_EQ(rules(tree_warnings(*machine)), Rules({"flag-2"}));
}

// X turned to run along Y: two driven slides of different letters, of which one has to win.
TEST(TreeWarnings, LeaveAMarkWithARivalAlone) {
  const auto machine = shipped(kTrunnion);
  change_axis(*machine, kX, [](md::CAxis2& axis) { axis.SetAxisVector(Point(0, 1, 0)); });
  node_of(*machine, kX)->flags(3);
  EXPECT_EQ(rules(tree_warnings(*machine)), Rules());
}

// ---- motion ----

TEST(MotionWarnings, SayThatAWayBackIsMissing) {
  const auto machine = shipped(kTrunnion);
  node_of(*machine, kPrimary)->parent()->transform(Geometry::Matrix());
  const auto warnings = motion_warnings(*machine);
  ASSERT_EQ(warnings.size(), 1U);
  // A's node leads by minus its base point.
  EXPECT_EQ(
      warnings[0].line(),
      "tree 1: with all axes at 0 the machine frame stands at 310 -0.024 -62.481 of the part frame; check "
      "that the parent of each rotary node leads back by its base point");
}

// With C nearer to the machine than A the part turns another way, and at 0 nothing shows.
TEST(MotionWarnings, SayThatTheTableTurnsInTheWrongOrder) {
  const auto machine = shipped(kTrunnion);
  const auto part = node_of(*machine, kPartFrame);
  const auto c = node_of(*machine, kSecondary);
  const auto a = node_of(*machine, kPrimary);
  const auto back_to_c = c->parent();
  const auto back_to_a = a->parent();
  const auto x = node_of(*machine, kX);
  part->remove_child(back_to_c);
  part->add_child(back_to_a);
  a->add_child(back_to_c);
  c->add_child(x);
  EXPECT_EQ(rules(motion_warnings(*machine)), Rules({"part-turns"}));
}

TEST(MotionWarnings, SayThatTheTableTurnsTheWrongWay) {
  const auto machine = shipped(kSwivel);
  axis_of(*machine, kPrimary).SetAxisVector(Point(0, 0, -1));
  EXPECT_EQ(rules(motion_warnings(*machine)), Rules({"part-turns"}));
}

// Each node takes the angle of its letter. At one angle for both this would not show.
TEST(MotionWarnings, SayThatTheNodesHaveEachOthersLetters) {
  const auto machine = shipped(kTrunnion);
  axis_of(*machine, kPrimary).SetAxis(AXIS_C);
  axis_of(*machine, kSecondary).SetAxis(AXIS_A);
  EXPECT_EQ(rules(motion_warnings(*machine)), Rules({"part-turns"}));
}

TEST(MotionWarnings, SayThatNoPoseReachesAnything) {
  const auto machine = shipped(kTrunnion);
  node_of(*machine, kZ)->flags(0);
  EXPECT_EQ(rules(motion_warnings(*machine)), Rules({"not-reached"}));
}

// The update takes X and Y as plain differences, so X has to run along 1 0 0.
TEST(MotionWarnings, SayThatTheToolDoesNotArrive) {
  const auto machine = shipped(kTrunnion);
  change_axis(*machine, kX, [](md::CAxis2& axis) { axis.SetAxisVector(Point(-1, 0, 0)); });
  const auto warnings = motion_warnings(*machine);
  ASSERT_EQ(warnings.size(), 1U);
  EXPECT_EQ(warnings[0].value, "told to go to X 10 Y 20 Z 30 at A 0 C 0, the tool comes to -10 20 30");
}

TEST(MotionWarnings, SayThatTheToolPointsElsewhereThanTheAxesSay) {
  const auto machine = shipped(kSwivel);
  axis_of(*machine, kSecondary).SetAxisVector(Point(0, -1, 0));
  EXPECT_EQ(rules(motion_warnings(*machine)), Rules({"tool-points"}));
}

TEST(MotionWarnings, SayThatTheToolNodeLeansAndTheHeadDoesNot) {
  const auto machine = shipped(kInch);
  k5ax_angled_head_initialise(&machine->head());
  EXPECT_EQ(rules(motion_warnings(*machine)), Rules({"tool-points"}));
}

TEST(MotionWarnings, LeaveThePoseAsItWas) {
  const auto machine = shipped(kTrunnion);
  UpdateNodeAxes_2(machine.get(), 1, 2, 3, -0.4, 0, 0.5);
  std::vector<double> before;
  const auto read = [&](std::vector<double>& values) {
    for (const int id : {kX, kY, kZ, kPrimary, kSecondary, kTool, kLeaf}) {
      double m[12];
      node_of(*machine, id)
          ->transform()
          .GetMatrix(m[0], m[1], m[2], m[3], m[4], m[5], m[6], m[7], m[8], m[9], m[10], m[11]);
      values.insert(values.end(), m, m + 12);
      values.push_back(node_of(*machine, id)->value());
    }
  };
  read(before);
  EXPECT_EQ(motion_warnings(*machine).size(), 0U);
  std::vector<double> after;
  read(after);
  EXPECT_EQ(before, after);
}

}  // namespace
