// The flat functions of the scene graph: null first, then the same nodes as through the class.

#include <boost/smart_ptr/bad_weak_ptr.hpp>

#include "scenegraph/scene_tree.h"

using namespace k5ax_test;
using md::sg::node;

namespace {

node_state marked_state() {
  node_state s;
  s.id = 901;
  s.flags = 902;
  s.value = 903;
  return s;
}

bool is_marked(const node_state& s) { return s.id == 901 && s.flags == 902 && s.value == 903; }

}  // namespace

TEST(FlatChildCount, IsTheNumberOfChildren) {
  SmallTree t;
  EXPECT_EQ(k5axSgNode_child_count(t.r.get()), 2);
  EXPECT_EQ(k5axSgNode_child_count(t.b.get()), 0);
}

TEST(FlatChildCount, FollowsTheTree) {
  SmallTree t;
  t.r->remove_child(t.b);
  EXPECT_EQ(k5axSgNode_child_count(t.r.get()), 1);
}

TEST(FlatChildCount, OfNullIsZero) { EXPECT_EQ(k5axSgNode_child_count(nullptr), 0); }

TEST(FlatChild, GivesTheChildrenInTheOrderInWhichTheyCame) {
  SmallTree t;
  EXPECT_EQ(k5axSgNode_child(t.r.get(), 0), t.a.get());
  EXPECT_EQ(k5axSgNode_child(t.r.get(), 1), t.b.get());
}

TEST(FlatChild, OfNullIsNull) { EXPECT_EQ(k5axSgNode_child(nullptr, 0), nullptr); }

TEST(FlatChild, TakesNoOwnership) {
  SmallTree t;
  k5axSgNode_child(t.r.get(), 1);
  // One holder is the test, one the root's list.
  EXPECT_EQ(t.b.use_count(), 2);
}

TEST(FlatParent, IsTheParent) {
  SmallTree t;
  EXPECT_EQ(k5axSgNode_parent(t.a1.get()), t.a.get());
}

TEST(FlatParent, OfARootIsNull) {
  SmallTree t;
  EXPECT_EQ(k5axSgNode_parent(t.r.get()), nullptr);
}

TEST(FlatParent, IsNullOnceTheParentIsGone) {
  NodePtr p = make_node(1);
  const NodePtr k = make_node(2);
  p->add_child(k);
  p.reset();
  EXPECT_EQ(k5axSgNode_parent(k.get()), nullptr);
}

TEST(FlatParent, OfNullIsNull) { EXPECT_EQ(k5axSgNode_parent(nullptr), nullptr); }

TEST(FlatAllNodes, WritesANodeBeforeItsChildrenAndAnEarlierBranchBeforeTheNext) {
  SmallTree t;
  node* buffer[4] = {};
  EXPECT_EQ(k5axSgNode_all_nodes(t.r.get(), buffer), 4);
  EXPECT_EQ(buffer[0], t.r.get());
  EXPECT_EQ(buffer[1], t.a.get());
  EXPECT_EQ(buffer[2], t.a1.get());
  EXPECT_EQ(buffer[3], t.b.get());
}

TEST(FlatAllNodes, OfALeafWritesOnePointer) {
  SmallTree t;
  node* buffer[2] = {nullptr, t.r.get()};
  EXPECT_EQ(k5axSgNode_all_nodes(t.b.get(), buffer), 1);
  EXPECT_EQ(buffer[0], t.b.get());
  EXPECT_EQ(buffer[1], t.r.get());
}

TEST(FlatAllNodes, WritesNothingBeyondTheSubtree) {
  SmallTree t;
  node* buffer[3] = {nullptr, nullptr, t.r.get()};
  EXPECT_EQ(k5axSgNode_all_nodes(t.a.get(), buffer), 2);
  EXPECT_EQ(buffer[2], t.r.get());
}

TEST(FlatAllNodes, OfNullIsZeroAndWritesNothing) {
  SmallTree t;
  node* buffer[1] = {t.r.get()};
  EXPECT_EQ(k5axSgNode_all_nodes(nullptr, buffer), 0);
  EXPECT_EQ(buffer[0], t.r.get());
}

TEST(FlatAllNodes, OfNullTakesANullBufferToo) { EXPECT_EQ(k5axSgNode_all_nodes(nullptr, nullptr), 0); }

TEST(FlatAllNodes, KeepsNoNodeAlive) {
  SmallTree t;
  node* buffer[4] = {};
  k5axSgNode_all_nodes(t.r.get(), buffer);
  EXPECT_EQ(t.b.use_count(), 2);
}

TEST(FlatAllNodes, OfANodeThatNothingOwnsThrowsBadWeakPtr) {
  HostNode unowned(1, nullptr);
  node* buffer[1] = {};
  EXPECT_THROW(k5axSgNode_all_nodes(&unowned, buffer), boost::bad_weak_ptr);
}

TEST(FlatId, IsTheNodesId) { EXPECT_EQ(k5axSgNode_id(make_node(-999).get()), -999); }

TEST(FlatId, OfNullIsZero) { EXPECT_EQ(k5axSgNode_id(nullptr), 0); }

TEST(FlatValue, IsReadFromTheNode) {
  const NodePtr n = make_node(1);
  n->value(-2.5);
  EXPECT_EQ(k5axSgNode_value_get(n.get()), -2.5);
}

TEST(FlatValue, OfNullIsZero) { EXPECT_EQ(k5axSgNode_value_get(nullptr), 0.0); }

TEST(FlatValue, IsSetInTheNode) {
  const NodePtr n = make_node(1);
  k5axSgNode_value_set(n.get(), 7.25);
  EXPECT_EQ(n->value(), 7.25);
}

// Deliberate: storing the value is all that this does; a host that sets many values draws once afterwards,
// and the form that also rebuilds the transform has a name of its own.
TEST(FlatValue, SettingItLeavesTheTransformOfAnAxisNode) {
  const AxisNodePtr n = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  md::NodeAxis_transform_set(0, n, 3);
  k5axSgNode_value_set(n.get(), 7);
  EXPECT_EQ(n->value(), 7);
  EXPECT_EQ(components(n->transform()), components(Geometry::Translate({3, 0, 0})));
}

TEST(FlatValue, SettingItOnNullDoesNothing) {
  k5axSgNode_value_set(nullptr, 1);
  SUCCEED();
}

TEST(FlatFlags, AreReadWhole) {
  const NodePtr n = make_node(1);
  n->flags(0xdeadbeefu);
  EXPECT_EQ(k5axSgNode_flags_get(n.get()), 0xdeadbeefu);
}

TEST(FlatFlags, OfNullAreZero) { EXPECT_EQ(k5axSgNode_flags_get(nullptr), 0u); }

TEST(FlatFlags, AreReplacedWhole) {
  const NodePtr n = make_node(1);
  n->flags(0xffffffffu);
  k5axSgNode_flags_set(n.get(), 0x10u);
  EXPECT_EQ(n->flags(), 0x10u);
}

TEST(FlatFlags, SettingThemOnNullDoesNothing) {
  k5axSgNode_flags_set(nullptr, 1);
  SUCCEED();
}

TEST(FlatInitialise, WithZeroStaysAtTheNode) {
  HostTree t;
  k5axSgNode_initialise(t.r.get(), 0);
  EXPECT_EQ(t.log, (std::vector<Call>{{"initialise", 1, false}}));
}

TEST(FlatInitialise, WithOneReachesEveryNodeBelow) {
  SmallTree t;
  t.a1->value(4);
  k5axSgNode_initialise(t.r.get(), 1);
  EXPECT_EQ(t.a1->value(), 0);
}

// 256 and the like are true as well: a byte cut out of the integer would be 0.
TEST(FlatInitialise, WithAnyOtherNumberReachesEveryNodeBelow) {
  for (const int recursive : {256, -1, 65536, -2147483647 - 1}) {
    SmallTree t;
    t.a1->value(4);
    k5axSgNode_initialise(t.r.get(), recursive);
    EXPECT_EQ(t.a1->value(), 0) << "recursive = " << recursive;
  }
}

TEST(FlatInitialise, CallsTheNodesOwnVirtual) {
  HostTree t;
  k5axSgNode_initialise(t.b.get(), 1);
  EXPECT_EQ(t.log, (std::vector<Call>{{"initialise", 4, true}}));
}

TEST(FlatInitialise, OfNullDoesNothing) {
  k5axSgNode_initialise(nullptr, 1);
  SUCCEED();
}

TEST(FlatCalcFlags, OfTwoZerosIsZero) { EXPECT_EQ(k5axSgNode_calc_flags(0, 0), 0u); }

TEST(FlatCalcFlags, FirstGivesOne) { EXPECT_EQ(k5axSgNode_calc_flags(5, 0), 1u); }

TEST(FlatCalcFlags, SecondGivesTwo) { EXPECT_EQ(k5axSgNode_calc_flags(0, -1), 2u); }

TEST(FlatCalcFlags, BothGiveThree) { EXPECT_EQ(k5axSgNode_calc_flags(1, 1), 3u); }

TEST(FlatCalcFlags, AnyNumberButZeroCounts) {
  EXPECT_EQ(k5axSgNode_calc_flags(256, 65536), 3u);
  EXPECT_EQ(k5axSgNode_calc_flags(-2147483647 - 1, 2), 3u);
}

TEST(FlatStateGet, FillsTheRecord) {
  const AxisNodePtr n = make_axis_node(17, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  n->flags(0x80000003u);
  n->value(2.5);
  node_state s = marked_state();
  k5axSgNode_state_get_(n.get(), &s);
  EXPECT_EQ(s.id, 17);
  EXPECT_EQ(s.flags, 0x80000003u);
  EXPECT_EQ(s.value, 2.5);
}

// Deliberate: any node has an id, flags and a value to show. Whether it is an axis node, md::node_state_get
// says.
TEST(FlatStateGet, AcceptsAPlainNode) {
  const NodePtr n = make_node(17);
  n->value(2.5);
  node_state s = marked_state();
  k5axSgNode_state_get_(n.get(), &s);
  EXPECT_EQ(s.id, 17);
  EXPECT_EQ(s.flags, 0u);
  EXPECT_EQ(s.value, 2.5);
}

TEST(FlatStateGet, AcceptsAToolNode) {
  const ToolNodePtr n = make_tool_node(17);
  node_state s = marked_state();
  k5axSgNode_state_get_(n.get(), &s);
  EXPECT_EQ(s.id, 17);
}

// A tool node's head has flags too; the record shows the node's.
TEST(FlatStateGet, OfAToolNodeShowsTheNodesFlagsAndNotTheHeads) {
  const ToolNodePtr n = make_tool_node(17);
  n->flags(2);
  n->payload().flags = 5;
  node_state s = marked_state();
  k5axSgNode_state_get_(n.get(), &s);
  EXPECT_EQ(s.flags, 2u);
}

TEST(FlatStateGet, OfANullNodeLeavesTheRecord) {
  node_state s = marked_state();
  k5axSgNode_state_get_(nullptr, &s);
  EXPECT_TRUE(is_marked(s));
}

TEST(FlatStateGet, IntoANullRecordChangesNothing) {
  const NodePtr n = make_node(17);
  n->value(2.5);
  k5axSgNode_state_get_(n.get(), nullptr);
  EXPECT_EQ(n->id(), 17);
  EXPECT_EQ(n->value(), 2.5);
  EXPECT_EQ(n.use_count(), 1);
}

TEST(FlatStateGet, OfTwoNullsDoesNothing) {
  k5axSgNode_state_get_(nullptr, nullptr);
  SUCCEED();
}

TEST(FlatStateGet, ReadsANodeThatNothingOwns) {
  HostNode unowned(17, nullptr);
  node_state s = marked_state();
  k5axSgNode_state_get_(&unowned, &s);
  EXPECT_EQ(s.id, 17);
}

TEST(SharedStateGet, FillsTheRecord) {
  const NodePtr n = make_node(17);
  n->flags(6);
  n->value(2.5);
  node_state s = marked_state();
  k5axSgNode_state_get(n, &s);
  EXPECT_EQ(s.id, 17);
  EXPECT_EQ(s.flags, 6u);
  EXPECT_EQ(s.value, 2.5);
}

TEST(SharedStateGet, OfAnEmptyPointerLeavesTheRecord) {
  node_state s = marked_state();
  k5axSgNode_state_get(boost::shared_ptr<const node>(), &s);
  EXPECT_TRUE(is_marked(s));
}

TEST(SharedStateGet, IntoANullRecordDoesNothing) {
  const NodePtr n = make_node(17);
  k5axSgNode_state_get(n, nullptr);
  EXPECT_EQ(n->id(), 17);
}

TEST(FlatAxisCast, GivesTheAxisNode) {
  const AxisNodePtr n = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  EXPECT_EQ(k5axSgNode_NodeAxis_cast(n.get()), n.get());
}

TEST(FlatAxisCast, OfAToolNodeIsNull) {
  EXPECT_EQ(k5axSgNode_NodeAxis_cast(make_tool_node(1).get()), nullptr);
}

TEST(FlatAxisCast, OfAPlainNodeIsNull) { EXPECT_EQ(k5axSgNode_NodeAxis_cast(make_node(1).get()), nullptr); }

TEST(FlatAxisCast, OfAHostsNodeIsNull) {
  EXPECT_EQ(k5axSgNode_NodeAxis_cast(HostNode::create(1, nullptr).get()), nullptr);
}

TEST(FlatAxisCast, OfNullIsNull) { EXPECT_EQ(k5axSgNode_NodeAxis_cast(nullptr), nullptr); }

TEST(NodeCast, ToAnAxisNodeLooksAtTheKind) {
  const AxisNodePtr axis = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  EXPECT_EQ(md::sg::axis_node(axis.get()), axis.get());
  EXPECT_EQ(md::sg::axis_node(make_tool_node(1).get()), nullptr);
  EXPECT_EQ(md::sg::axis_node(make_node(1).get()), nullptr);
  EXPECT_EQ(md::sg::axis_node(nullptr), nullptr);
}

TEST(NodeCast, ToAToolNodeLooksAtTheKind) {
  const ToolNodePtr tool = make_tool_node(1);
  EXPECT_EQ(md::sg::tool_node(tool.get()), tool.get());
  EXPECT_EQ(md::sg::tool_node(make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0}).get()), nullptr);
  EXPECT_EQ(md::sg::tool_node(make_node(1).get()), nullptr);
  EXPECT_EQ(md::sg::tool_node(nullptr), nullptr);
}

// Hosts with run-time types get the same answer from the language.
TEST(NodeCast, AgreesWithTheDynamicCast) {
  const NodePtr nodes[] = {make_node(1), make_axis_node(2, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0}),
                           make_tool_node(3), HostNode::create(4, nullptr)};
  for (const NodePtr& n : nodes) {
    EXPECT_EQ(md::sg::axis_node(n.get()), dynamic_cast<md::sg::tnode<md::CAxis2>*>(n.get()));
    EXPECT_EQ(md::sg::tool_node(n.get()), dynamic_cast<md::sg::tnode<angled_head>*>(n.get()));
  }
}
