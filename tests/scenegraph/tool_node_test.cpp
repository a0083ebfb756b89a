// The tool node's transform for a tool point.

#include <cmath>
#include <cstring>

#include "scenegraph/scene_tree.h"

using namespace k5ax_test;
using md::sg::node;

namespace {

// The rule a second time, without a matrix: from the tool down at the end of the tilted spindle, up by
// length2, tilt about Y, up by length1, turn about Z, then away from the tool point. About +Y, +Z goes to +X;
// about +Z, +X goes to +Y.
TPoint<double> placed_by_hand(TPoint<double> p, const angled_head& head, const TPoint<double>& tool_point) {
  p.z -= head.length2;
  const double tilt_cos = std::cos(head.b_angle), tilt_sin = std::sin(head.b_angle);
  p = TPoint<double>(p.x * tilt_cos + p.z * tilt_sin, p.y, -p.x * tilt_sin + p.z * tilt_cos);
  p.z -= head.length1;
  const double turn_cos = std::cos(head.c_angle), turn_sin = std::sin(head.c_angle);
  p = TPoint<double>(p.x * turn_cos - p.y * turn_sin, p.x * turn_sin + p.y * turn_cos, p.z);
  return p - tool_point;
}

ToolNodePtr angled(double b_deg, double c_deg, double length1, double length2) {
  const ToolNodePtr n = make_tool_node(17);
  n->payload().b_angle = deg(b_deg);
  n->payload().c_angle = deg(c_deg);
  n->payload().length1 = length1;
  n->payload().length2 = length2;
  return n;
}

}  // namespace

TEST(ToolRule, WithAHeadOfZerosIsTheTranslationByMinusTheToolPoint) {
  const ToolNodePtr n = make_tool_node(1);
  k5axSgToolNodeMatrixSet(n, {1, 2, 3});
  EXPECT_EQ(components(n->transform()), components(Geometry::Translate({-1, -2, -3})));
}

TEST(ToolRule, StoresTheToolPointInTheHead) {
  const ToolNodePtr n = angled(30, 40, 50, 60);
  k5axSgToolNodeMatrixSet(n, {1, 2, 3});
  EXPECT_EQ(n->payload().offset, (TPoint<double>(1, 2, 3)));
}

TEST(ToolRule, LeavesTheRestOfTheHead) {
  const ToolNodePtr n = angled(30, 40, 50, 60);
  n->payload().tip = {7, 8, 9};
  n->payload().tool_dir = {0, 0, 1};
  n->payload().ref_dir = {1, 0, 0};
  n->payload().flags = 5;
  unsigned char before[sizeof(angled_head)];
  std::memcpy(before, &n->payload(), sizeof before);
  k5axSgToolNodeMatrixSet(n, {1, 2, 3});
  n->payload().offset = {0, 0, 0};
  EXPECT_EQ(std::memcmp(before, &n->payload(), sizeof before), 0);
}

TEST(ToolRule, LeavesIdValueAndFlags) {
  const ToolNodePtr n = make_tool_node(17);
  n->value(2.5);
  n->flags(3);
  k5axSgToolNodeMatrixSet(n, {1, 2, 3});
  EXPECT_EQ(n->id(), 17);
  EXPECT_EQ(n->value(), 2.5);
  EXPECT_EQ(n->flags(), 3u);
}

// By hand: both lengths lie along Z when nothing is tilted.
TEST(ToolRule, OfAStraightHeadGoesDownByBothLengths) {
  const ToolNodePtr n = angled(0, 0, 100, 50);
  k5axSgToolNodeMatrixSet(n, {0, 0, 0});
  EXPECT_EQ(components(n->transform()), components(Geometry::Translate({0, 0, -150})));
}

// By hand: the origin goes to (0, 0, -50); a quarter turn about Y takes -Z to -X, so (-50, 0, 0); then (-50,
// 0, -100).
TEST(ToolRule, TiltTurnsTheSecondLengthAndNotTheFirst) {
  const ToolNodePtr n = angled(90, 0, 100, 50);
  k5axSgToolNodeMatrixSet(n, {0, 0, 0});
  EXPECT_NEAR_POINT((TPoint<double>(0, 0, 0) * n->transform()), (TPoint<double>(-50, 0, -100)), 1e-14);
}

// By hand: as above, and a quarter turn about Z takes -X to -Y.
TEST(ToolRule, TurnComesAfterTheTilt) {
  const ToolNodePtr n = angled(90, 90, 100, 50);
  k5axSgToolNodeMatrixSet(n, {0, 0, 0});
  EXPECT_NEAR_POINT((TPoint<double>(0, 0, 0) * n->transform()), (TPoint<double>(0, -50, -100)), 1e-14);
}

// By hand: the tool point is taken off last, in the turned frame.
TEST(ToolRule, ToolPointIsTakenOffLast) {
  const ToolNodePtr n = angled(90, 90, 100, 50);
  k5axSgToolNodeMatrixSet(n, {1, 2, 3});
  EXPECT_NEAR_POINT((TPoint<double>(0, 0, 0) * n->transform()), (TPoint<double>(-1, -52, -103)), 1e-14);
}

TEST(ToolRule, AgreesWithTheStepsTakenOneByOne) {
  int checked = 0;
  for (const double b_deg : {-120.0, -7.0, 0.0, 33.0, 90.0}) {
    for (const double c_deg : {-45.0, 0.0, 12.0, 180.0}) {
      const ToolNodePtr n = angled(b_deg, c_deg, 70, 40);
      const TPoint<double> tool_point(3, -5, 8);
      k5axSgToolNodeMatrixSet(n, tool_point);
      for (const TPoint<double>& p : {TPoint<double>(0, 0, 0), TPoint<double>(1, 0, 0),
                                      TPoint<double>(0, 1, 0), TPoint<double>(2, -3, 4)}) {
        // Lengths of about 120; a dozen products of that size: 12 eps 120 = 3.2e-13.
        EXPECT_NEAR_POINT(p * n->transform(), placed_by_hand(p, n->payload(), tool_point), 3.2e-13)
            << "b " << b_deg << ", c " << c_deg;
        ++checked;
      }
    }
  }
  EXPECT_EQ(checked, 80);
}

TEST(ToolRule, DoesNotLookAtTheTipOrTheDirections) {
  const ToolNodePtr n = angled(30, 40, 50, 60);
  k5axSgToolNodeMatrixSet(n, {1, 2, 3});
  const std::array<double, 12> before = components(n->transform());
  n->payload().tip = {7, 8, 9};
  n->payload().tool_dir = {1, 1, 1};
  n->payload().ref_dir = {1, 1, 1};
  n->payload().flags = 7;
  k5axSgToolNodeMatrixSet(n, {1, 2, 3});
  EXPECT_EQ(components(n->transform()), before);
}

TEST(ToolRule, DoesNotAddUpWhenAppliedAgain) {
  const ToolNodePtr n = angled(30, 40, 50, 60);
  k5axSgToolNodeMatrixSet(n, {1, 2, 3});
  const std::array<double, 12> once = components(n->transform());
  k5axSgToolNodeMatrixSet(n, {1, 2, 3});
  EXPECT_EQ(components(n->transform()), once);
}

TEST(ToolRule, TakesTheOffsetItselfAsThePoint) {
  const ToolNodePtr n = angled(0, 0, 0, 0);
  n->payload().offset = {1, 2, 3};
  k5axSgToolNodeMatrixSet(n, n->payload().offset);
  EXPECT_EQ(n->payload().offset, (TPoint<double>(1, 2, 3)));
  EXPECT_EQ(components(n->transform()), components(Geometry::Translate({-1, -2, -3})));
}

TEST(ToolRule, OnAnAxisNodeDoesNothing) {
  const AxisNodePtr n = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  n->transform(numbered_matrix(1));
  k5axSgToolNodeMatrixSet(n, {1, 2, 3});
  EXPECT_EQ(components(n->transform()), components(numbered_matrix(1)));
}

TEST(ToolRule, OnAPlainNodeDoesNothing) {
  const NodePtr n = make_node(1);
  n->transform(numbered_matrix(1));
  k5axSgToolNodeMatrixSet(n, {1, 2, 3});
  EXPECT_EQ(components(n->transform()), components(numbered_matrix(1)));
}

TEST(ToolRule, OnAnEmptyPointerDoesNothing) {
  k5axSgToolNodeMatrixSet(NodePtr(), {1, 2, 3});
  SUCCEED();
}

TEST(ToolNodeScale, AppliesTheRuleAgainAtTheStoredOffset) {
  const ToolNodePtr n = angled(90, 90, 100, 50);
  n->payload().offset = {1, 2, 3};
  n->transform(numbered_matrix(1));
  n->scale_node(25.4, false);
  EXPECT_NEAR_POINT((TPoint<double>(0, 0, 0) * n->transform()), (TPoint<double>(-1, -52, -103)), 1e-14);
}

// Deliberate: the factor touches neither the lengths nor the tool point; the head that a tool node carries
// belongs to the host, which scales it itself.
TEST(ToolNodeScale, LeavesTheWholeHead) {
  const ToolNodePtr n = angled(30, 40, 50, 60);
  n->payload().tip = {7, 8, 9};
  n->payload().offset = {1, 2, 3};
  n->payload().flags = 5;
  unsigned char before[sizeof(angled_head)];
  std::memcpy(before, &n->payload(), sizeof before);
  n->scale_node(25.4, true);
  EXPECT_EQ(std::memcmp(before, &n->payload(), sizeof before), 0);
}

TEST(ToolNodeScale, LeavesIdValueAndFlags) {
  const ToolNodePtr n = make_tool_node(17);
  n->value(2.5);
  n->flags(3);
  n->scale_node(25.4, false);
  EXPECT_EQ(n->id(), 17);
  EXPECT_EQ(n->value(), 2.5);
  EXPECT_EQ(n->flags(), 3u);
}

TEST(ToolNodeScale, ScalesAxisNodesBelow) {
  const ToolNodePtr tool = make_tool_node(1);
  const AxisNodePtr axis = make_axis_node(2, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  tool->add_child(axis);
  axis->value(3);
  tool->scale_node(2, true);
  EXPECT_EQ(axis->value(), 6);
}
