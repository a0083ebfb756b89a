// How plain nodes are made, parked and handed out again.

#include <stdexcept>

#include "scenegraph/scene_tree.h"

using namespace k5ax_test;
using md::sg::node;

TEST(FreshNode, HasIdZero) {
  empty_pools();
  EXPECT_EQ(node::create()->id(), 0);
}

TEST(FreshNode, HasValueZero) {
  empty_pools();
  EXPECT_EQ(node::create()->value(), 0.0);
}

TEST(FreshNode, HasFlagsZero) {
  empty_pools();
  EXPECT_EQ(node::create()->flags(), 0u);
}

TEST(FreshNode, HasTheIdentity) {
  empty_pools();
  const std::array<double, 12> identity = {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};
  EXPECT_EQ(components(node::create()->transform()), identity);
}

TEST(FreshNode, HasNoChildren) {
  empty_pools();
  EXPECT_TRUE(node::create()->children().empty());
}

TEST(FreshNode, HasNoParent) {
  empty_pools();
  EXPECT_FALSE(node::create()->parent());
}

TEST(FreshNode, KnowsTheSharedPointerThatOwnsIt) {
  empty_pools();
  const NodePtr n = node::create();
  EXPECT_EQ(n->shared_from_this(), n);
}

TEST(NodePool, HandsOutTheNodeThatWasFreed) {
  NodePtr n = make_node(5);
  node* const address = n.get();
  node::free(n);
  EXPECT_EQ(node::create().get(), address);
}

TEST(NodePool, FreeEmptiesThePointer) {
  NodePtr n = make_node(5);
  node::free(n);
  EXPECT_FALSE(n);
  node::create();
}

TEST(NodePool, FreeOfAnEmptyPointerParksNothing) {
  NodePtr n = make_node(5);
  node* const address = n.get();
  node::free(n);
  NodePtr empty;
  node::free(empty);
  EXPECT_FALSE(empty);
  EXPECT_EQ(node::create().get(), address);
}

TEST(NodePool, HandsOutTheLastFreedFirst) {
  NodePtr first = make_node(1);
  NodePtr second = make_node(2);
  node* const first_address = first.get();
  node* const second_address = second.get();
  node::free(first);
  node::free(second);
  const NodePtr one = node::create();
  const NodePtr two = node::create();
  EXPECT_EQ(one.get(), second_address);
  EXPECT_EQ(two.get(), first_address);
}

// Deliberate: parking resets nothing, so that a host finds a node again as it left it. Whoever wants a clean
// one sets the fields.
TEST(NodePool, FreedNodeKeepsIdValueFlagsAndTransform) {
  NodePtr n = make_node(17);
  n->value(2.5);
  n->flags(0x80000003u);
  n->transform(numbered_matrix(20));
  node::free(n);
  n = node::create();
  EXPECT_EQ(n->id(), 17);
  EXPECT_EQ(n->value(), 2.5);
  EXPECT_EQ(n->flags(), 0x80000003u);
  EXPECT_EQ(components(n->transform()), components(numbered_matrix(20)));
}

TEST(NodePool, FreedNodeKeepsItsChildren) {
  NodePtr n = make_node(1);
  const NodePtr child = make_node(2);
  n->add_child(child);
  node::free(n);
  n = node::create();
  ASSERT_EQ(n->children().size(), 1u);
  EXPECT_EQ(n->children()[0], child);
  EXPECT_EQ(child->parent(), n);
}

TEST(NodePool, FreedNodeKeepsItsParent) {
  const NodePtr parent = make_node(1);
  NodePtr n = make_node(2);
  parent->add_child(n);
  node::free(n);
  n = node::create();
  EXPECT_EQ(n->parent(), parent);
  EXPECT_EQ(parent->children().size(), 1u);
}

// Deliberate: nothing checks whether a node is parked already. Hosts free a node once, through its last
// holder.
TEST(NodePool, NodeFreedTwiceIsHandedOutTwice) {
  NodePtr n = make_node(1);
  NodePtr again = n;
  node* const address = n.get();
  node::free(n);
  node::free(again);
  const NodePtr one = node::create();
  const NodePtr two = node::create();
  EXPECT_EQ(one.get(), address);
  EXPECT_EQ(two.get(), address);
}

// Deliberate: other holders are not looked for; they share the node with its next user.
TEST(NodePool, NodeThatOthersHoldIsParkedAllTheSame) {
  NodePtr n = make_node(1);
  const NodePtr other_holder = n;
  node::free(n);
  EXPECT_EQ(node::create(), other_holder);
}

TEST(NodePool, ParkedNodeStaysAlive) {
  NodePtr n = make_node(1);
  const boost::weak_ptr<node> watch = n;
  node::free(n);
  EXPECT_FALSE(watch.expired());
  node::create();
}

TEST(NodePool, NodeThatIsOnlyDroppedIsDestroyedAndNotParked) {
  empty_pools();
  NodePtr n = node::create();
  n->id(77);
  const boost::weak_ptr<node> watch = n;
  n.reset();
  EXPECT_TRUE(watch.expired());
  EXPECT_EQ(node::create()->id(), 0);
}

TEST(NodePool, HostsOwnNodeCanBeParkedToo) {
  NodePtr n = HostNode::create(9, nullptr);
  node* const address = n.get();
  node::free(n);
  EXPECT_EQ(node::create().get(), address);
}

// Deliberate: a node made as a copy is a fresh one. What a node is and where it hangs are two things, and
// shallow_copy is the one way to carry the first across.
TEST(NodeCopyConstruction, IgnoresItsArgument) {
  const boost::shared_ptr<HostNode> source = HostNode::create(17, nullptr);
  source->value(2.5);
  source->flags(3);
  source->transform(numbered_matrix(20));
  source->add_child(make_node(18));
  const NodePtr parent = make_node(16);
  parent->add_child(source);

  const boost::shared_ptr<HostNode> copy(new HostNode(*source));

  EXPECT_EQ(copy->id(), 0);
  EXPECT_EQ(copy->value(), 0.0);
  EXPECT_EQ(copy->flags(), 0u);
  EXPECT_EQ(components(copy->transform()), components(Matrix()));
  EXPECT_TRUE(copy->children().empty());
  EXPECT_FALSE(copy->parent());
}

TEST(NodeCopyConstruction, GivesTheCopyAnOwnerOfItsOwn) {
  const boost::shared_ptr<HostNode> source = HostNode::create(17, nullptr);
  const boost::shared_ptr<HostNode> copy(new HostNode(*source));
  EXPECT_EQ(copy->shared_from_this(), copy);
}
