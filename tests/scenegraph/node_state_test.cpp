// The live state of an axis node: read out as a record, and written back to the same node only.

#include "scenegraph/scene_tree.h"

using namespace k5ax_test;
using md::sg::node;

namespace {

node_state state(int id, unsigned int flags, double value) {
  node_state s;
  s.id = id;
  s.flags = flags;
  s.value = value;
  return s;
}

AxisNodePtr slide_along_x(int id) {
  const AxisNodePtr n = make_axis_node(id, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  n->flags(3);
  md::NodeAxis_transform_set(0, n, 5);
  return n;
}

}  // namespace

TEST(NodeState, IsARecordOfSixteenBytes) {
  EXPECT_EQ(sizeof(node_state), 16u);
  EXPECT_EQ(offsetof(node_state, id), 0u);
  EXPECT_EQ(offsetof(node_state, flags), 4u);
  EXPECT_EQ(offsetof(node_state, value), 8u);
}

TEST(NodeStateGet, ReadsIdFlagsAndValueOfAnAxisNode) {
  node_state s = state(901, 902, 903);
  EXPECT_TRUE(md::node_state_get(slide_along_x(17), s));
  EXPECT_EQ(s.id, 17);
  EXPECT_EQ(s.flags, 3u);
  EXPECT_EQ(s.value, 5);
}

TEST(NodeStateGet, RefusesAToolNodeAndLeavesTheRecord) {
  node_state s = state(901, 902, 903);
  EXPECT_FALSE(md::node_state_get(make_tool_node(17), s));
  EXPECT_EQ(s.id, 901);
  EXPECT_EQ(s.flags, 902u);
  EXPECT_EQ(s.value, 903);
}

TEST(NodeStateGet, RefusesAPlainNodeAndLeavesTheRecord) {
  node_state s = state(901, 902, 903);
  EXPECT_FALSE(md::node_state_get(make_node(17), s));
  EXPECT_EQ(s.id, 901);
}

TEST(NodeStateGet, RefusesAnEmptyPointerAndLeavesTheRecord) {
  node_state s = state(901, 902, 903);
  EXPECT_FALSE(md::node_state_get(NodePtr(), s));
  EXPECT_EQ(s.id, 901);
  EXPECT_EQ(s.flags, 902u);
  EXPECT_EQ(s.value, 903);
}

TEST(NodeStateSet, GivesTheNodeTheFlagsWhole) {
  const AxisNodePtr n = slide_along_x(17);
  EXPECT_TRUE(md::node_state_set(n, state(17, 0x80000004u, 8)));
  EXPECT_EQ(n->flags(), 0x80000004u);
}

TEST(NodeStateSet, GivesTheNodeTheValue) {
  const AxisNodePtr n = slide_along_x(17);
  EXPECT_TRUE(md::node_state_set(n, state(17, 3, 8)));
  EXPECT_EQ(n->value(), 8);
}

TEST(NodeStateSet, RebuildsTheTransform) {
  const AxisNodePtr n = slide_along_x(17);
  EXPECT_TRUE(md::node_state_set(n, state(17, 3, 8)));
  EXPECT_EQ(components(n->transform()), components(Geometry::Translate({8, 0, 0})));
}

// Deliberate: the id is a check and no key; a state never moves to another node.
TEST(NodeStateSet, RefusesTheStateOfAnotherNode) {
  const AxisNodePtr n = slide_along_x(17);
  EXPECT_FALSE(md::node_state_set(n, state(18, 1, 8)));
  EXPECT_EQ(n->id(), 17);
  EXPECT_EQ(n->flags(), 3u);
  EXPECT_EQ(n->value(), 5);
  EXPECT_EQ(components(n->transform()), components(Geometry::Translate({5, 0, 0})));
}

TEST(NodeStateSet, RefusesAToolNodeAndLeavesIt) {
  const ToolNodePtr n = make_tool_node(17);
  n->value(5);
  n->transform(numbered_matrix(1));
  EXPECT_FALSE(md::node_state_set(n, state(17, 1, 8)));
  EXPECT_EQ(n->flags(), 0u);
  EXPECT_EQ(n->value(), 5);
  EXPECT_EQ(components(n->transform()), components(numbered_matrix(1)));
}

TEST(NodeStateSet, RefusesAPlainNodeAndLeavesIt) {
  const NodePtr n = make_node(17);
  EXPECT_FALSE(md::node_state_set(n, state(17, 1, 8)));
  EXPECT_EQ(n->flags(), 0u);
  EXPECT_EQ(n->value(), 0);
}

TEST(NodeStateSet, RefusesAnEmptyPointer) { EXPECT_FALSE(md::node_state_set(NodePtr(), state(0, 1, 8))); }

TEST(NodeStateSet, OfTheIdZeroIsTakenLikeAnyOther) {
  const AxisNodePtr n = slide_along_x(0);
  EXPECT_TRUE(md::node_state_set(n, state(0, 1, 8)));
  EXPECT_EQ(n->value(), 8);
}

TEST(NodeStateSet, OfWhatWasReadChangesNothing) {
  const AxisNodePtr n = make_axis_node(17, AXIS_B, ROTARY, {1, 2, 3}, {0, 1, 0});
  n->flags(3);
  md::NodeAxis_transform_set(0, n, 0.7);
  const std::array<double, 12> before = components(n->transform());
  node_state s;
  ASSERT_TRUE(md::node_state_get(n, s));
  EXPECT_TRUE(md::node_state_set(n, s));
  EXPECT_EQ(n->flags(), 3u);
  EXPECT_EQ(n->value(), 0.7);
  EXPECT_EQ(components(n->transform()), before);
}
