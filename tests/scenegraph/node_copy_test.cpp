// Copies of one node and of whole subtrees.

#include <algorithm>

#include <boost/smart_ptr/bad_weak_ptr.hpp>

#include "scenegraph/scene_tree.h"

using namespace k5ax_test;
using md::sg::node;

namespace {

void fill(const NodePtr& n, int id, double value, unsigned int flags, double first_of_transform) {
  n->id(id);
  n->value(value);
  n->flags(flags);
  n->transform(numbered_matrix(first_of_transform));
}

// A parked node full of remains: what a copy made from it must not show.
struct ParkedNodeWithRemains {
  NodePtr old_parent = make_node(501);
  NodePtr old_child = make_node(502);
  node* address = nullptr;

  ParkedNodeWithRemains() {
    NodePtr n = make_node(500);
    fill(n, 500, 50, 55, 5000);
    old_parent->add_child(n);
    n->add_child(old_child);
    address = n.get();
    node::free(n);
  }
};

}  // namespace

TEST(ShallowCopy, TakesTransformValueIdAndFlags) {
  const NodePtr from = make_node(0);
  fill(from, 17, 2.5, 0x80000003u, 20);
  const NodePtr to = make_node(1);
  to->shallow_copy(from);
  EXPECT_EQ(to->id(), 17);
  EXPECT_EQ(to->value(), 2.5);
  EXPECT_EQ(to->flags(), 0x80000003u);
  EXPECT_EQ(components(to->transform()), components(numbered_matrix(20)));
}

TEST(ShallowCopy, LeavesTheSourceAlone) {
  const NodePtr from = make_node(0);
  fill(from, 17, 2.5, 3, 20);
  const NodePtr to = make_node(1);
  to->shallow_copy(from);
  EXPECT_EQ(from->id(), 17);
  EXPECT_EQ(from->value(), 2.5);
  EXPECT_EQ(from->flags(), 3u);
  EXPECT_EQ(components(from->transform()), components(numbered_matrix(20)));
}

TEST(ShallowCopy, LeavesChildrenAndParentAlone) {
  SmallTree t;
  const NodePtr parent = make_node(9);
  const NodePtr from = make_node(10);
  parent->add_child(from);
  t.a->shallow_copy(from);
  EXPECT_EQ(t.a->parent(), t.r);
  EXPECT_EQ(t.a->children(), (std::vector<NodePtr>{t.a1}));
}

TEST(ShallowCopy, CopiesTheReservedIdToo) {
  const NodePtr from = make_node(-999);
  const NodePtr to = make_node(1);
  to->shallow_copy(from);
  EXPECT_EQ(to->id(), -999);
}

TEST(ShallowCopy, StaticFormCallsTheVirtualOfTheTarget) {
  std::vector<Call> log;
  const NodePtr to = HostNode::create(1, &log);
  const NodePtr from = make_node(17);
  node::shallow_copy(to, from);
  EXPECT_EQ(log, (std::vector<Call>{{"shallow_copy", 1, false}}));
  EXPECT_EQ(to->id(), 17);
}

TEST(ShallowCopy, StaticFormIgnoresAnEmptyTarget) {
  std::vector<Call> log;
  const NodePtr from = HostNode::create(17, &log);
  node::shallow_copy(NodePtr(), from);
  EXPECT_TRUE(log.empty());
}

TEST(ShallowCopy, StaticFormIgnoresAnEmptySource) {
  const NodePtr to = make_node(1);
  fill(to, 17, 2.5, 3, 20);
  node::shallow_copy(to, NodePtr());
  EXPECT_EQ(to->id(), 17);
  EXPECT_EQ(to->value(), 2.5);
}

// Deliberate: the payload of a typed node stays; a machine that copies another's pose this way keeps its own
// axes.
TEST(ShallowCopy, BetweenAxisNodesCopiesTheNodePartOnly) {
  const AxisNodePtr from = make_axis_node(0, AXIS_A, ROTARY, {1, 2, 3}, {1, 0, 0});
  fill(from, 17, 2.5, 3, 20);
  const AxisNodePtr to = make_axis_node(1, AXIS_Z, LINEAR, {7, 8, 9}, {0, 0, 1});
  node::shallow_copy(to, from);
  EXPECT_EQ(to->id(), 17);
  EXPECT_EQ(to->value(), 2.5);
  EXPECT_EQ(to->flags(), 3u);
  EXPECT_EQ(components(to->transform()), components(numbered_matrix(20)));
  EXPECT_EQ(to->GetAxis(), AXIS_Z);
  EXPECT_EQ(to->mode(), LINEAR);
  EXPECT_EQ(to->GetBaseVector(), (TPoint<double>(7, 8, 9)));
  EXPECT_EQ(to->GetAxisVector(), (TPoint<double>(0, 0, 1)));
}

TEST(ShallowCopy, BetweenToolNodesCopiesTheNodePartOnly) {
  const ToolNodePtr from = make_tool_node(17);
  from->payload().length1 = 100;
  const ToolNodePtr to = make_tool_node(1);
  to->payload().length1 = 5;
  node::shallow_copy(to, from);
  EXPECT_EQ(to->id(), 17);
  EXPECT_EQ(to->payload().length1, 5);
}

TEST(ShallowCopy, BetweenNodesOfDifferentKindsCopiesTheNodePart) {
  const ToolNodePtr from = make_tool_node(17);
  const AxisNodePtr to = make_axis_node(1, AXIS_Z, LINEAR, {7, 8, 9}, {0, 0, 1});
  node::shallow_copy(to, from);
  EXPECT_EQ(to->id(), 17);
  EXPECT_EQ(to->GetAxis(), AXIS_Z);
}

TEST(ShallowClone, IsAnotherNodeWithTheSameData) {
  const NodePtr n = make_node(0);
  fill(n, 17, 2.5, 0x80000003u, 20);
  const NodePtr copy = n->shallow_clone();
  ASSERT_NE(copy, n);
  EXPECT_EQ(copy->id(), 17);
  EXPECT_EQ(copy->value(), 2.5);
  EXPECT_EQ(copy->flags(), 0x80000003u);
  EXPECT_EQ(components(copy->transform()), components(numbered_matrix(20)));
}

TEST(ShallowClone, OfANodeWithThreeChildrenHasNone) {
  const NodePtr n = make_node(1);
  for (int id = 2; id <= 4; ++id) n->add_child(make_node(id));
  EXPECT_TRUE(n->shallow_clone()->children().empty());
  EXPECT_EQ(n->children().size(), 3u);
}

TEST(ShallowClone, OfAChildHasNoParent) {
  SmallTree t;
  EXPECT_FALSE(t.a->shallow_clone()->parent());
  EXPECT_EQ(t.r->children().size(), 2u);
}

TEST(ShallowClone, TakesTheNodeParkedLast) {
  const NodePtr n = make_node(1);
  NodePtr parked = make_node(2);
  node* const address = parked.get();
  node::free(parked);
  const NodePtr copy = n->shallow_clone();
  EXPECT_EQ(copy.get(), address);
  EXPECT_EQ(copy->id(), 1);
}

// A host may park nodes of its own class among the plain ones. They copy in their own way.
TEST(ShallowClone, MadeFromAParkedNodeOfAHostsClassIsCopiedByThatClass) {
  std::vector<Call> log;
  const NodePtr from = make_node(17);
  NodePtr parked = HostNode::create(1, &log);
  node::free(parked);
  const NodePtr copy = from->shallow_clone();
  EXPECT_EQ(log, (std::vector<Call>{{"shallow_copy", 1, false}}));
  EXPECT_EQ(copy->id(), 17);
}

TEST(ShallowClone, FromAParkedNodeStartsWithoutChildren) {
  const NodePtr n = make_node(1);
  ParkedNodeWithRemains parked;
  const NodePtr copy = n->shallow_clone();
  ASSERT_EQ(copy.get(), parked.address);
  EXPECT_TRUE(copy->children().empty());
}

TEST(ShallowClone, FromAParkedNodeStartsWithoutAParent) {
  const NodePtr n = make_node(1);
  ParkedNodeWithRemains parked;
  const NodePtr copy = n->shallow_clone();
  ASSERT_EQ(copy.get(), parked.address);
  EXPECT_FALSE(copy->parent());
  EXPECT_EQ(copy->parent_ptr(), nullptr);
}

TEST(ShallowClone, OfANodeThatNothingOwnsThrowsBadWeakPtr) {
  HostNode unowned(1, nullptr);
  EXPECT_THROW(unowned.shallow_clone(), boost::bad_weak_ptr);
}

TEST(ShallowClone, KnowsTheSharedPointerThatOwnsIt) {
  const NodePtr copy = make_node(1)->shallow_clone();
  EXPECT_EQ(copy->shared_from_this(), copy);
}

TEST(NodeClone, OfAnEmptyPointerIsEmpty) { EXPECT_FALSE(node::node_clone(NodePtr())); }

TEST(NodeClone, OfARootIsADetachedCopyOfTheWholeTree) {
  SmallTree t;
  const NodePtr copy = node::node_clone(t.r);
  EXPECT_FALSE(copy->parent());
  EXPECT_EQ(ids(node::all_nodes(copy)), (std::vector<int>{1, 2, 3, 4}));
  EXPECT_EQ(ids(copy->children()), (std::vector<int>{2, 4}));
  EXPECT_EQ(ids(copy->children()[0]->children()), (std::vector<int>{3}));
}

TEST(NodeClone, SharesNoNodeWithItsSource) {
  SmallTree t;
  const NodePtr copy = node::node_clone(t.r);
  const std::vector<NodePtr> copies = node::all_nodes(copy);
  const std::vector<NodePtr> sources = node::all_nodes(t.r);
  ASSERT_EQ(copies.size(), sources.size());
  for (const NodePtr& n : copies) EXPECT_EQ(std::count(sources.begin(), sources.end(), n), 0);
}

TEST(NodeClone, LinksEachCopyToTheCopyOfItsParent) {
  SmallTree t;
  const NodePtr copy = node::node_clone(t.r);
  const std::vector<NodePtr> copies = node::all_nodes(copy);
  ASSERT_EQ(copies.size(), 4u);
  EXPECT_EQ(copies[1]->parent(), copies[0]);
  EXPECT_EQ(copies[2]->parent(), copies[1]);
  EXPECT_EQ(copies[3]->parent(), copies[0]);
}

TEST(NodeClone, CarriesEachNodesData) {
  SmallTree t;
  const std::vector<NodePtr> sources = node::all_nodes(t.r);
  for (std::size_t i = 0; i < sources.size(); ++i) {
    const int number = static_cast<int>(i);
    fill(sources[i], 10 + number, 1.5 + number, 7u + static_cast<unsigned>(i), 100.0 * number);
  }
  const std::vector<NodePtr> copies = node::all_nodes(node::node_clone(t.r));
  ASSERT_EQ(copies.size(), 4u);
  for (std::size_t i = 0; i < copies.size(); ++i) {
    const int number = static_cast<int>(i);
    EXPECT_EQ(copies[i]->id(), 10 + number);
    EXPECT_EQ(copies[i]->value(), 1.5 + number);
    EXPECT_EQ(copies[i]->flags(), 7u + static_cast<unsigned>(i));
    EXPECT_EQ(components(copies[i]->transform()), components(numbered_matrix(100.0 * number)));
  }
}

// Deliberate: a copy hangs where its source hangs, so that a branch of a machine can be doubled in one call;
// a host that wants it elsewhere sets its parent.
TEST(NodeClone, OfAChildBecomesItsLastSibling) {
  SmallTree t;
  const NodePtr copy = node::node_clone(t.a);
  ASSERT_EQ(t.r->children().size(), 3u);
  EXPECT_EQ(t.r->children()[2], copy);
  EXPECT_EQ(copy->parent(), t.r);
  EXPECT_EQ(ids(node::all_nodes(t.r)), (std::vector<int>{1, 2, 3, 4, 2, 3}));
}

TEST(NodeClone, OfAChildHasItsOwnCopyOfTheGrandchild) {
  SmallTree t;
  const NodePtr copy = node::node_clone(t.a);
  ASSERT_EQ(copy->children().size(), 1u);
  EXPECT_NE(copy->children()[0], t.a1);
  EXPECT_EQ(copy->children()[0]->parent(), copy);
  EXPECT_EQ(copy->children()[0]->id(), 3);
}

TEST(NodeClone, OfAChildLeavesTheSourceAsItWas) {
  SmallTree t;
  node::node_clone(t.a);
  EXPECT_EQ(t.a->children(), (std::vector<NodePtr>{t.a1}));
  EXPECT_EQ(t.a1->parent(), t.a);
  EXPECT_EQ(t.a->parent(), t.r);
}

TEST(NodeClone, LivesOnWhenItsSourceIsGone) {
  NodePtr copy;
  {
    SmallTree t;
    copy = node::node_clone(t.r);
  }
  EXPECT_EQ(ids(node::all_nodes(copy)), (std::vector<int>{1, 2, 3, 4}));
}

TEST(NodeClone, KeepsTheKindOfEveryNode) {
  const NodePtr r = make_node(1);
  const AxisNodePtr axis = make_axis_node(2, AXIS_B, ROTARY, {1, 2, 3}, {0, 1, 0});
  const ToolNodePtr tool = make_tool_node(3);
  tool->payload().length2 = 44;
  r->add_child(axis);
  axis->add_child(tool);
  const std::vector<NodePtr> copies = node::all_nodes(node::node_clone(r));
  ASSERT_EQ(copies.size(), 3u);
  EXPECT_EQ(md::sg::axis_node(copies[0].get()), nullptr);
  EXPECT_EQ(md::sg::tool_node(copies[0].get()), nullptr);
  ASSERT_NE(md::sg::axis_node(copies[1].get()), nullptr);
  EXPECT_EQ(md::sg::axis_node(copies[1].get())->GetBaseVector(), (TPoint<double>(1, 2, 3)));
  ASSERT_NE(md::sg::tool_node(copies[2].get()), nullptr);
  EXPECT_EQ(md::sg::tool_node(copies[2].get())->payload().length2, 44);
}

TEST(NodeClone, CallsEachNodesOwnShallowCloneOnceInOrder) {
  HostTree t;
  node::node_clone(t.r);
  EXPECT_EQ(t.log, (std::vector<Call>{{"shallow_clone", 1, false},
                                      {"shallow_clone", 2, false},
                                      {"shallow_clone", 3, false},
                                      {"shallow_clone", 4, false}}));
}

TEST(NodeClone, TakesParkedNodesWithoutTheirRemains) {
  SmallTree t;
  // Four links of one chain, parked one by one.
  std::vector<NodePtr> chain;
  std::vector<node*> parked;
  for (int id = 500; id < 504; ++id) chain.push_back(make_node(id));
  for (std::size_t i = 1; i < chain.size(); ++i) chain[i - 1]->add_child(chain[i]);
  for (NodePtr& n : chain) {
    parked.push_back(n.get());
    node::free(n);
  }

  const NodePtr copy = node::node_clone(t.r);

  const std::vector<NodePtr> copies = node::all_nodes(copy);
  EXPECT_EQ(ids(copies), (std::vector<int>{1, 2, 3, 4}));
  for (const NodePtr& n : copies) EXPECT_EQ(std::count(parked.begin(), parked.end(), n.get()), 1);
  EXPECT_FALSE(copy->parent());
}

// A node that was let go of by its parent still knows it. Where that one has been parked, the copy may be
// made of it, and must not be hung under itself.
TEST(NodeClone, OfAFormerChildOfAParkedNodeIsDetached) {
  NodePtr parent = make_node(1);
  const NodePtr child = make_node(2);
  const NodePtr grandchild = make_node(3);
  parent->add_child(child);
  child->add_child(grandchild);
  parent->reset();
  ASSERT_EQ(child->parent(), parent);
  node* const parked = parent.get();
  node::free(parent);

  const NodePtr copy = node::node_clone(child);
  EXPECT_EQ(copy.get(), parked);
  EXPECT_FALSE(copy->parent());
  EXPECT_FALSE(child->parent());
  EXPECT_EQ(ids(node::all_nodes(copy)), (std::vector<int>{2, 3}));
}

TEST(NodeClone, OfAFormerChildOfAParkedTypedNodeIsDetached) {
  boost::shared_ptr<md::sg::tnode<md::CAxis2>> parent = md::NodeAxis_Create();
  parent->node::reset();
  const boost::shared_ptr<md::sg::tnode<md::CAxis2>> child = md::NodeAxis_Create();
  child->node::reset();
  parent->add_child(child);
  parent->node::reset();
  md::NodeAxis_Free(parent);

  const NodePtr copy = node::node_clone(child);
  EXPECT_FALSE(copy->parent());
  EXPECT_EQ(node::all_nodes(copy).size(), 1u);
}

TEST(NodeClone, OfAChildOfATypedParentHangsThere) {
  const AxisNodePtr axis = make_axis_node(1, AXIS_B, ROTARY, {1, 2, 3}, {0, 1, 0});
  const NodePtr child = make_node(2);
  axis->add_child(child);
  const NodePtr copy = node::node_clone(child);
  EXPECT_EQ(axis->children(), (std::vector<NodePtr>{child, copy}));
}
