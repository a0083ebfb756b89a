// What goes wrong where a rule of docs/scene-graph.md is left out: each rule has a reason that can be
// measured.
#include <cstdio>
#include <string>

#include <gtest/gtest.h>

#include "support/near.h"
#include "system/tree_support.h"

namespace {

using namespace k5ax_test;
using vector_form::Vec;

// A table that turns about C through (10, 0, 0), with X, Y, Z on the head and the tool point at (5, 0, 0) at
// rest.
TreePlan turntable() {
  TreePlan plan;
  plan.rotary.type = MC_TT;
  plan.rotary.primary = {true, AXIS_C, TABLE, {10, 0, 0}, {0, 0, 1}};
  plan.nose = {5, 0, 0};
  return plan;
}

const Point kQuarterOfC(0, 0, math::m_pi2);

// About (10, 0): (1, 2) is (-9, 2) away, a quarter turn makes that (-2, -9).
const Point kOnTurntable(8, -9, 3);

// Lengths within 100, a few products with quarter turns: 6 * 4 * eps * 100 = 5.4e-13.
constexpr double kRulesTolerance = 5.4e-13;

// ---- zero the table first ----

TEST(ZeroingTheTable, MakesThePoseStandForItself) {
  const auto m = build(turntable());
  m->update(Point(7, 7, 7), kQuarterOfC);
  zero_table(m->machdef());
  ASSERT_TRUE(m->update(Point(1, 2, 3), kQuarterOfC));
  EXPECT_NEAR_POINT(tool_on_part(m->machdef()), kOnTurntable, kRulesTolerance);
}

// Deliberate: the update measures the tool point with the table as it finds it. With C still at 90 the tool
// point (5, 0) is seen at (10, -5), the slides are set to (1, 2) - (10, -5) = (-9, 7), and the tool, at (-4,
// 7), ends on the part at (10, 0) + a quarter turn of (-14, 7), which is (3, -14).
TEST(ZeroingTheTable, LeftOutLetsTheLastPoseIntoThisOne) {
  const auto m = build(turntable());
  zero_table(m->machdef());
  m->update(Point(7, 7, 7), kQuarterOfC);
  ASSERT_TRUE(m->update(Point(1, 2, 3), kQuarterOfC));
  EXPECT_NEAR_POINT(tool_on_part(m->machdef()), Point(3, -14, 3), kRulesTolerance);
}

// Deliberate: with C at 90, Y on the table points along X on the part. The two are taken for parallel and X,
// which no flag makes the winner, is dropped: it stays where the pose before has put it, at 7 - 5.
TEST(ZeroingTheTable, LeftOutDropsASlideThatATurnedTableSlideIsParallelTo) {
  TreePlan plan = turntable();
  plan.slide_on_table[1] = true;
  const auto m = build(plan);
  zero_table(m->machdef());
  m->update(Point(7, 7, 7), kQuarterOfC);
  m->update(Point(1, 2, 3), kQuarterOfC);
  EXPECT_EQ(node_with_id(m->machdef(), kXId)->value(), 2);
}

TEST(ZeroingTheTable, KeepsASlideThatATurnedTableSlideWouldBeParallelTo) {
  TreePlan plan = turntable();
  plan.slide_on_table[1] = true;
  const auto m = build(plan);
  m->update(Point(7, 7, 7), kQuarterOfC);
  zero_table(m->machdef());
  m->update(Point(1, 2, 3), kQuarterOfC);
  EXPECT_EQ(node_with_id(m->machdef(), kXId)->value(), -4);
}

// ---- the way back ----

// Without the fixed node the table turns about the axis but stays off by the base point: the update places
// the tool on (1, 2) as measured through Translate(-10, 0, 0), so the tool is at (11, 2), 1 and 2 from the
// axis, and ends at (-2, 1).
TEST(WayBack, LeftOutPutsThePartOffByTheBasePoint) {
  const NodePtr c = rotary_node(kPrimaryId, AXIS_C, TABLE, Point(0, 0, 1), Point(10, 0, 0));
  SceneMachine m(
      chain({slide_node(0, false), slide_node(1, false), slide_node(2, false), tool_node(kToolId)}),
      chain({plain_node(kPartFrameId), c, plain_node(kLeafId)}), c);
  zero_table(m.machdef());
  m.update(Point(1, 2, 3), kQuarterOfC);
  EXPECT_NEAR_POINT(tool_on_part(m.machdef()), Point(-2, 1, 3), kRulesTolerance);
}

// On the leaf side the two offsets meet before the rotation: the part turns about the origin and not about
// the axis.
TEST(WayBack, OnTheLeafSideTurnsAboutTheOrigin) {
  const NodePtr c = rotary_node(kPrimaryId, AXIS_C, TABLE, Point(0, 0, 1), Point(10, 0, 0));
  SceneMachine m(
      chain({slide_node(0, false), slide_node(1, false), slide_node(2, false), tool_node(kToolId)}),
      chain({plain_node(kPartFrameId), c, shift_node(kFixedId, Point(10, 0, 0)), plain_node(kLeafId)}), c);
  zero_table(m.machdef());
  m.update(Point(1, 2, 3), kQuarterOfC);
  EXPECT_NEAR_POINT(tool_on_part(m.machdef()), Point(-2, 1, 3), kRulesTolerance);
}

SceneMachine* turntable_with_way_back(int id, NodePtr& c) {
  c = rotary_node(kPrimaryId, AXIS_C, TABLE, Point(0, 0, 1), Point(10, 0, 0));
  return new SceneMachine(
      chain({slide_node(0, false), slide_node(1, false), slide_node(2, false), tool_node(kToolId)}),
      chain({plain_node(kPartFrameId), shift_node(id, Point(10, 0, 0)), c, plain_node(kLeafId)}), c);
}

Point read_back(md::CMachDef& machdef) {
  Point xyz;
  Point abc;
  md::CMachDef_SG2MachCoords(machdef, xyz, abc);
  return xyz;
}

TEST(WayBack, WithTheReservedIdIsLeftOutOfTheReadBack) {
  NodePtr c;
  const std::unique_ptr<SceneMachine> m(turntable_with_way_back(kFixedId, c));
  zero_table(m->machdef());
  m->update(Point(1, 2, 3), kQuarterOfC);
  EXPECT_NEAR_POINT(read_back(m->machdef()), Point(1, 2, 3), kRulesTolerance);
}

// The read-back takes the rotation out, and with a positive id the way back stays in: off by (10, 0, 0).
TEST(WayBack, WithAPositiveIdPutsTheReadBackOffByTheBasePoint) {
  NodePtr c;
  const std::unique_ptr<SceneMachine> m(turntable_with_way_back(7, c));
  zero_table(m->machdef());
  m->update(Point(1, 2, 3), kQuarterOfC);
  EXPECT_NEAR_POINT(read_back(m->machdef()), Point(11, 2, 3), kRulesTolerance);
}

// ---- the flat lists ----

TEST(NodeLists, AreNotMadeBySettingRoots) {
  md::CMachDef machdef;
  const NodePtr x = slide_node(0, false);
  machdef.SG()[0] = chain({x, slide_node(1, false), slide_node(2, false), tool_node(kToolId)});
  EXPECT_TRUE(md::UpdateNodeAxes_(&machdef, Point(1, 2, 3), Point()));
  EXPECT_EQ(x->value(), 0);
}

TEST(NodeLists, AreMadeByCloning) {
  md::CMachDef machdef;
  machdef.SG()[0] =
      chain({slide_node(0, false), slide_node(1, false), slide_node(2, false), tool_node(kToolId)});
  machdef.tool_node(boost::dynamic_pointer_cast<md::sg::tnode<angled_head>>(node_with_id(machdef, kToolId)));
  md::CMachDef clone;
  clone.clone(machdef, 3);
  EXPECT_TRUE(md::UpdateNodeAxes_(&clone, Point(1, 2, 3), Point()));
  EXPECT_EQ(node_with_id(clone, kXId)->value(), 1);
}

TEST(NodeLists, AreMadeByLoading) {
  md::CMachDef machdef;
  machdef.SG()[0] =
      chain({slide_node(0, false), slide_node(1, false), slide_node(2, false), tool_node(kToolId)});
  machdef.tool_node(boost::dynamic_pointer_cast<md::sg::tnode<angled_head>>(node_with_id(machdef, kToolId)));
  const std::string path = testing::TempDir() + "lists.k5m";
  ASSERT_EQ(MachdefSave(&machdef, path.c_str()), 1);
  md::CMachDef loaded;
  ASSERT_EQ(MachdefLoad(&loaded, path.c_str()), 1);
  std::remove(path.c_str());
  EXPECT_TRUE(md::UpdateNodeAxes_(&loaded, Point(1, 2, 3), Point()));
  EXPECT_EQ(node_with_id(loaded, kXId)->value(), 1);
}

// ---- the first leaf, flags, ids ----

// A turntable whose leaf hangs behind or before a node that a host draws a vice with.
std::unique_ptr<SceneMachine> turntable_with_vice(bool vice_first) {
  const NodePtr c = rotary_node(kPrimaryId, AXIS_C, TABLE, Point(0, 0, 1), Point(10, 0, 0));
  const NodePtr part = plain_node(kPartFrameId);
  const NodePtr back = shift_node(kFixedId, Point(10, 0, 0));
  const NodePtr vice = shift_node(kFixedId, Point(0, 0, 60));
  part->add_child(vice_first ? vice : back);
  part->add_child(vice_first ? back : vice);
  chain({back, c, plain_node(kLeafId)});
  return std::unique_ptr<SceneMachine>(new SceneMachine(
      chain({slide_node(0, false), slide_node(1, false), slide_node(2, false), tool_node(kToolId)}), part,
      c));
}

TEST(FirstLeaf, IsThatOfTheChainWhenDrawingNodesComeAfterIt) {
  const auto m = turntable_with_vice(false);
  zero_table(m->machdef());
  m->update(Point(1, 2, 3), kQuarterOfC);
  EXPECT_NEAR_POINT(tool_on_part(m->machdef()), kOnTurntable, kRulesTolerance);
}

// The vice is taken for the way to the machine frame: the tool is measured 60 up, and Z set to 3 - 60.
TEST(FirstLeaf, IsADrawingNodeThatComesFirst) {
  const auto m = turntable_with_vice(true);
  zero_table(m->machdef());
  m->update(Point(1, 2, 3), kQuarterOfC);
  EXPECT_EQ(node_with_id(m->machdef(), kZId)->value(), -57);
}

// A quill under Z that the host has put 25 down: the update leaves it there and makes up for it.
TEST(UndrivenAxis, KeepsItsValueAndCountsAsAnOffset) {
  const NodePtr quill = axis_node(20, AXIS_Z, HEAD, LINEAR, Point(), Point(0, 0, 1), 0, -25);
  const NodePtr z = slide_node(2, false);
  SceneMachine m(chain({slide_node(0, false), slide_node(1, false), z, quill, tool_node(kToolId)}));
  ASSERT_TRUE(m.update(Point(1, 2, 3)));
  EXPECT_EQ(m.value(quill), -25);
  EXPECT_EQ(m.value(z), 28);
}

// Deliberate: a clone finds its rotary nodes by id, and the first axis node with the id is taken.
TEST(AxisIds, SharedWithASlideTurnThatIntoTheRotaryNode) {
  md::CMachDef machdef;
  const NodePtr c = rotary_node(kXId, AXIS_C, TABLE, Point(0, 0, 1));
  machdef.SG()[0] = slide_node(0, false);
  machdef.SG()[1] = chain({plain_node(kPartFrameId), c, plain_node(kLeafId)});
  machdef.SG_RotAxs()[0] = c;
  md::CMachDef clone;
  clone.clone(machdef, 3);
  EXPECT_EQ(clone.SG_RotAxs()[0], clone.SG()[0]);
}

}  // namespace
