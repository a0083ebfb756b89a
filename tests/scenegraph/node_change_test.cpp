// What resets, initialises and scales nodes, and how such a call goes down a tree.

#include "scenegraph/scene_tree.h"

using namespace k5ax_test;
using md::sg::node;

namespace {

const std::array<double, 12> kIdentity = {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};

// Gives every node of the tree a value, flags and a transform of its own.
void fill_all(const NodePtr& root) {
  for (const NodePtr& n : node::all_nodes(root)) {
    n->value(n->id() * 1.5);
    n->flags(static_cast<unsigned>(n->id()) + 100);
    n->transform(numbered_matrix(n->id() * 100.0));
  }
}

bool is_initial(const NodePtr& n) { return n->value() == 0 && components(n->transform()) == kIdentity; }

bool is_filled(const NodePtr& n, int id) {
  return n->value() == id * 1.5 && components(n->transform()) == components(numbered_matrix(id * 100.0));
}

}  // namespace

TEST(NodeFields, IdIsWhatWasSet) {
  const NodePtr n = make_node(0);
  n->id(-2147483647 - 1);
  EXPECT_EQ(n->id(), -2147483647 - 1);
}

TEST(NodeFields, FlagsTakeTheWholeWord) {
  const NodePtr n = make_node(0);
  n->flags(0xffffffffu);
  n->flags(0x80000001u);
  EXPECT_EQ(n->flags(), 0x80000001u);
}

TEST(NodeFields, ValueIsWhatWasSet) {
  const NodePtr n = make_node(0);
  n->value(-0.1);
  EXPECT_EQ(n->value(), -0.1);
}

TEST(NodeFields, TransformIsKeptNumberForNumber) {
  const NodePtr n = make_node(0);
  n->transform(numbered_matrix(-3.25));
  EXPECT_EQ(components(n->transform()), components(numbered_matrix(-3.25)));
}

// Deliberate: not the 0 of a fresh node. Hosts tell a node that was given up from a new one by its id.
TEST(Reset, SetsTheIdToMinusOne) {
  const NodePtr n = make_node(5);
  n->reset();
  EXPECT_EQ(n->id(), -1);
}

TEST(Reset, SetsValueFlagsAndTransformBack) {
  SmallTree t;
  fill_all(t.r);
  t.a->reset();
  EXPECT_EQ(t.a->value(), 0);
  EXPECT_EQ(t.a->flags(), 0u);
  EXPECT_EQ(components(t.a->transform()), kIdentity);
}

TEST(Reset, WorksOnTheReservedIdToo) {
  const NodePtr n = make_node(-999);
  n->value(4);
  n->transform(numbered_matrix(1));
  n->reset();
  EXPECT_EQ(n->id(), -1);
  EXPECT_EQ(n->value(), 0);
  EXPECT_EQ(components(n->transform()), kIdentity);
}

TEST(Reset, DropsTheChildren) {
  SmallTree t;
  t.r->reset();
  EXPECT_TRUE(t.r->children().empty());
}

TEST(Reset, ReleasesChildrenThatNobodyElseHolds) {
  const NodePtr r = make_node(1);
  r->add_child(make_node(2));
  const boost::weak_ptr<node> watch = r->children()[0];
  r->reset();
  EXPECT_TRUE(watch.expired());
}

// Deliberate: a reset node forgets its links, but does not visit the others to cut theirs. Both ends of a
// link are reset when a machine gives up all its nodes, and hosts who reset one node see what they left.
TEST(Reset, LeavesTheChildrensParentLinks) {
  SmallTree t;
  t.r->reset();
  EXPECT_EQ(t.a->parent(), t.r);
  EXPECT_EQ(t.b->parent(), t.r);
}

TEST(Reset, EmptiesTheParentLink) {
  SmallTree t;
  t.a->reset();
  EXPECT_FALSE(t.a->parent());
}

TEST(Reset, LeavesTheNodeInItsFormerParentsList) {
  SmallTree t;
  t.a->reset();
  EXPECT_EQ(t.r->children(), (std::vector<NodePtr>{t.a, t.b}));
}

TEST(Reset, OfAnAxisNodeLeavesTheAxis) {
  const AxisNodePtr n = make_axis_node(1, AXIS_B, ROTARY, {1, 2, 3}, {0, 1, 0});
  n->reset();
  EXPECT_EQ(n->GetAxis(), AXIS_B);
  EXPECT_EQ(n->GetBaseVector(), (TPoint<double>(1, 2, 3)));
}

TEST(Initialise, GivesIdentityAndValueZero) {
  SmallTree t;
  fill_all(t.r);
  t.a->initialise(false);
  EXPECT_TRUE(is_initial(t.a));
}

TEST(Initialise, KeepsIdAndFlags) {
  SmallTree t;
  fill_all(t.r);
  t.a->initialise(false);
  EXPECT_EQ(t.a->id(), 2);
  EXPECT_EQ(t.a->flags(), 102u);
}

TEST(Initialise, KeepsTheLinks) {
  SmallTree t;
  t.a->initialise(true);
  EXPECT_EQ(t.a->parent(), t.r);
  EXPECT_EQ(t.a->children(), (std::vector<NodePtr>{t.a1}));
}

TEST(Initialise, AloneLeavesTheChildren) {
  SmallTree t;
  fill_all(t.r);
  t.r->initialise(false);
  EXPECT_TRUE(is_filled(t.a, 2));
  EXPECT_TRUE(is_filled(t.a1, 3));
  EXPECT_TRUE(is_filled(t.b, 4));
}

TEST(Initialise, RecursiveReachesEveryNodeBelow) {
  SmallTree t;
  fill_all(t.r);
  t.r->initialise(true);
  EXPECT_TRUE(is_initial(t.r));
  EXPECT_TRUE(is_initial(t.a));
  EXPECT_TRUE(is_initial(t.a1));
  EXPECT_TRUE(is_initial(t.b));
}

TEST(Initialise, RecursiveStaysBelowTheNode) {
  SmallTree t;
  fill_all(t.r);
  t.a->initialise(true);
  EXPECT_TRUE(is_filled(t.r, 1));
  EXPECT_TRUE(is_filled(t.b, 4));
}

// Deliberate: -999 marks nodes that carry a machine's fixed offsets, which a host that sets everything back
// must not lose.
TEST(Initialise, LeavesANodeOfTheReservedIdAlone) {
  const NodePtr n = make_node(-999);
  n->value(4);
  n->flags(5);
  n->transform(numbered_matrix(1));
  n->initialise(false);
  EXPECT_EQ(n->value(), 4);
  EXPECT_EQ(n->flags(), 5u);
  EXPECT_EQ(components(n->transform()), components(numbered_matrix(1)));
}

TEST(Initialise, VisitsTheChildrenOfANodeOfTheReservedId) {
  SmallTree t;
  fill_all(t.r);
  t.r->id(-999);
  t.r->initialise(true);
  EXPECT_TRUE(is_filled(t.r, 1));
  EXPECT_TRUE(is_initial(t.a));
  EXPECT_TRUE(is_initial(t.a1));
  EXPECT_TRUE(is_initial(t.b));
}

TEST(Initialise, PassesOverANodeOfTheReservedIdFurtherDown) {
  SmallTree t;
  fill_all(t.r);
  t.a->id(-999);
  t.r->initialise(true);
  EXPECT_TRUE(is_filled(t.a, 2));
  EXPECT_TRUE(is_initial(t.a1));
}

TEST(Initialise, SparesTheReservedIdOnly) {
  for (const int id : {-1000, -998, 999, -1, 0}) {
    const NodePtr n = make_node(id);
    n->value(4);
    n->transform(numbered_matrix(1));
    n->initialise(false);
    EXPECT_TRUE(is_initial(n)) << "id " << id;
  }
}

TEST(Initialise, LeavesAnAxisNodeOfTheReservedIdAlone) {
  const AxisNodePtr n = make_axis_node(-999, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  md::NodeAxis_transform_set(0, n, 4);
  n->initialise(true);
  EXPECT_EQ(n->value(), 4);
  EXPECT_EQ(components(n->transform()), components(Geometry::Translate({4, 0, 0})));
}

// Deliberate: the identity is not where a rotary axis off the origin stands at value 0, but it is what
// everything set back means here; hosts that want the zero pose ask for value 0 by k5axSgNode_value_set2.
TEST(Initialise, OfARotaryAxisNodeIsTheIdentityAndNotItsZeroPose) {
  const AxisNodePtr n = make_axis_node(1, AXIS_C, ROTARY, {10, 0, 0}, {0, 0, 1});
  md::NodeAxis_transform_set(0, n, 0);
  ASSERT_FALSE(is_initial(n));
  n->initialise(false);
  EXPECT_TRUE(is_initial(n));
}

TEST(Initialise, CallsEachNodesOwnVirtualOnceInOrderWithRecursionOff) {
  HostTree t;
  t.r->initialise(true);
  // The first line is the call that the test itself makes.
  EXPECT_EQ(t.log, (std::vector<Call>{{"initialise", 1, true},
                                      {"initialise", 2, false},
                                      {"initialise", 3, false},
                                      {"initialise", 4, false}}));
}

TEST(Initialise, AloneCallsNobodyElse) {
  HostTree t;
  t.r->initialise(false);
  EXPECT_EQ(t.log, (std::vector<Call>{{"initialise", 1, false}}));
}

TEST(Initialise, ReachesAHostsNodeBelowATypedNode) {
  std::vector<Call> log;
  const AxisNodePtr axis = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  axis->add_child(HostNode::create(2, &log));
  axis->initialise(true);
  EXPECT_EQ(log, (std::vector<Call>{{"initialise", 2, false}}));
}

TEST(ScaleNode, LeavesAPlainNodeAsItIs) {
  SmallTree t;
  fill_all(t.r);
  t.r->scale_node(25.4, true);
  EXPECT_TRUE(is_filled(t.r, 1));
  EXPECT_TRUE(is_filled(t.a, 2));
  EXPECT_TRUE(is_filled(t.a1, 3));
  EXPECT_TRUE(is_filled(t.b, 4));
}

TEST(ScaleNode, CallsEachNodesOwnVirtualOnceInOrderWithRecursionOff) {
  HostTree t;
  t.r->scale_node(25.4, true);
  EXPECT_EQ(t.log, (std::vector<Call>{{"scale_node", 1, true},
                                      {"scale_node", 2, false},
                                      {"scale_node", 3, false},
                                      {"scale_node", 4, false}}));
}

TEST(ScaleNode, AloneCallsNobodyElse) {
  HostTree t;
  t.r->scale_node(25.4, false);
  EXPECT_EQ(t.log, (std::vector<Call>{{"scale_node", 1, false}}));
}

TEST(ScaleNode, HandsTheFactorDown) {
  const NodePtr r = make_node(1);
  const boost::shared_ptr<HostNode> k = HostNode::create(2, nullptr);
  r->add_child(k);
  r->scale_node(0.125, true);
  EXPECT_EQ(k->last_factor, 0.125);
}

TEST(ScaleNode, OfAnAxisNodeGoesDownToAHostsNode) {
  std::vector<Call> log;
  const AxisNodePtr axis = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  const NodePtr plain = make_node(2);
  axis->add_child(plain);
  plain->add_child(HostNode::create(3, &log));
  axis->add_child(HostNode::create(4, &log));
  axis->scale_node(2, true);
  EXPECT_EQ(log, (std::vector<Call>{{"scale_node", 3, false}, {"scale_node", 4, false}}));
}

TEST(ScaleNode, OfAnAxisNodeAloneLeavesItsChildren) {
  std::vector<Call> log;
  const AxisNodePtr axis = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  axis->add_child(HostNode::create(2, &log));
  axis->scale_node(2, false);
  EXPECT_TRUE(log.empty());
}

TEST(ScaleNode, OfAToolNodeGoesDownToAHostsNode) {
  std::vector<Call> log;
  const ToolNodePtr tool = make_tool_node(1);
  tool->add_child(HostNode::create(2, &log));
  tool->scale_node(2, true);
  EXPECT_EQ(log, (std::vector<Call>{{"scale_node", 2, false}}));
}

TEST(ScaleNode, OfAToolNodeAloneLeavesItsChildren) {
  std::vector<Call> log;
  const ToolNodePtr tool = make_tool_node(1);
  tool->add_child(HostNode::create(2, &log));
  tool->scale_node(2, false);
  EXPECT_TRUE(log.empty());
}
