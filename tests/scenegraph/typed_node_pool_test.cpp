// How axis nodes and tool nodes are made, parked, handed out again and cloned.

#include <cstring>

#include "scenegraph/scene_tree.h"

using namespace k5ax_test;
using md::sg::node;

namespace {

// An address to tell owners apart by. Nothing may read through it.
md::CMachDef* owner(std::size_t number) {
  static char places[4];
  return reinterpret_cast<md::CMachDef*>(&places[number]);
}

// What holds for both kinds of typed node.
struct AxisNodes {
  using Ptr = AxisNodePtr;
  static Ptr create() { return md::NodeAxis_Create(); }
  static void free(Ptr& n) { md::NodeAxis_Free(n); }
  static Ptr make(int id) { return make_axis_node(id, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0}); }
};

struct ToolNodes {
  using Ptr = ToolNodePtr;
  static Ptr create() { return md::TOOL_NODE_Create(); }
  static void free(Ptr& n) { md::TOOL_NODE_Free(n); }
  static Ptr make(int id) { return make_tool_node(id); }
};

using BothKinds = testing::Types<AxisNodes, ToolNodes>;

template <class Kind>
class FreshTypedNode : public testing::Test {};
template <class Kind>
class TypedNodePool : public testing::Test {};
template <class Kind>
class TypedNodeClone : public testing::Test {};
TYPED_TEST_SUITE(FreshTypedNode, BothKinds, );
TYPED_TEST_SUITE(TypedNodePool, BothKinds, );
TYPED_TEST_SUITE(TypedNodeClone, BothKinds, );

}  // namespace

TYPED_TEST(FreshTypedNode, HasTheNodePartOfAFreshNode) {
  empty_pools();
  const auto n = TypeParam::create();
  EXPECT_EQ(n->id(), 0);
  EXPECT_EQ(n->value(), 0);
  EXPECT_EQ(n->flags(), 0u);
  EXPECT_EQ(components(n->transform()), components(Matrix()));
  EXPECT_TRUE(n->children().empty());
  EXPECT_FALSE(n->parent());
}

TYPED_TEST(FreshTypedNode, KnowsTheSharedPointerThatOwnsIt) {
  empty_pools();
  const auto n = TypeParam::create();
  EXPECT_EQ(n->shared_from_this(), n);
}

TEST(FreshAxisNode, HasTypeLocationAndModeMinusOne) {
  empty_pools();
  const AxisNodePtr n = md::NodeAxis_Create();
  EXPECT_EQ(n->GetAxis(), AXIS_TYPE_INVALID_LOWEST);
  EXPECT_EQ(n->GetAxisLocation(), AXIS_LOCATION_INVALID_LOWEST);
  EXPECT_EQ(n->mode(), AXIS_MODE_INVALID_LOWEST);
}

TEST(FreshAxisNode, HasItsBasePointAtTheOrigin) {
  empty_pools();
  EXPECT_EQ(md::NodeAxis_Create()->GetBaseVector(), (TPoint<double>(0, 0, 0)));
}

TEST(FreshAxisNode, HasZeroDirectionLimitsAndOwner) {
  empty_pools();
  const AxisNodePtr n = md::NodeAxis_Create();
  EXPECT_EQ(n->GetAxisVector(), (TPoint<double>(0, 0, 0)));
  EXPECT_EQ(n->GetMin(), 0);
  EXPECT_EQ(n->GetMax(), 0);
  EXPECT_EQ(n->machdef(), nullptr);
}

// Deliberate: not the straight head of k5ax_angled_head_initialise, whose two directions are unit vectors.
TEST(FreshToolNode, HasAHeadOfZeroBytes) {
  empty_pools();
  const ToolNodePtr n = md::TOOL_NODE_Create();
  const unsigned char zeros[136] = {};
  static_assert(sizeof(angled_head) == sizeof zeros, "the record as files hold it");
  EXPECT_EQ(std::memcmp(&n->payload(), zeros, sizeof zeros), 0);
}

TYPED_TEST(TypedNodePool, HandsOutTheNodeThatWasFreed) {
  auto n = TypeParam::make(1);
  node* const address = n.get();
  TypeParam::free(n);
  EXPECT_FALSE(n);
  EXPECT_EQ(TypeParam::create().get(), address);
}

TYPED_TEST(TypedNodePool, FreedNodeKeepsItsLinks) {
  const NodePtr parent = make_node(1);
  const NodePtr child = make_node(3);
  auto n = TypeParam::make(2);
  parent->add_child(n);
  n->add_child(child);
  TypeParam::free(n);
  n = TypeParam::create();
  EXPECT_EQ(n->parent(), parent);
  EXPECT_EQ(n->children(), (std::vector<NodePtr>{child}));
}

TYPED_TEST(TypedNodePool, HandsOutTheLastFreedFirst) {
  auto first = TypeParam::make(1);
  auto second = TypeParam::make(2);
  node* const first_address = first.get();
  node* const second_address = second.get();
  TypeParam::free(first);
  TypeParam::free(second);
  const auto one = TypeParam::create();
  const auto two = TypeParam::create();
  EXPECT_EQ(one.get(), second_address);
  EXPECT_EQ(two.get(), first_address);
}

TYPED_TEST(TypedNodePool, FreeOfAnEmptyPointerParksNothing) {
  auto n = TypeParam::make(1);
  node* const address = n.get();
  TypeParam::free(n);
  typename TypeParam::Ptr empty;
  TypeParam::free(empty);
  EXPECT_FALSE(empty);
  EXPECT_EQ(TypeParam::create().get(), address);
}

// Deliberate: as with plain nodes, nothing checks whether the node is parked already.
TYPED_TEST(TypedNodePool, NodeFreedTwiceIsHandedOutTwice) {
  auto n = TypeParam::make(1);
  auto again = n;
  node* const address = n.get();
  TypeParam::free(n);
  TypeParam::free(again);
  const auto one = TypeParam::create();
  const auto two = TypeParam::create();
  EXPECT_EQ(one.get(), address);
  EXPECT_EQ(two.get(), address);
}

TYPED_TEST(TypedNodePool, NodeThatIsOnlyDroppedIsDestroyed) {
  auto n = TypeParam::make(1);
  const boost::weak_ptr<node> watch = n;
  n.reset();
  EXPECT_TRUE(watch.expired());
}

TEST(AxisNodePool, FreedNodeKeepsNodeAndAxis) {
  AxisNodePtr n = make_axis_node(17, AXIS_B, ROTARY, {1, 2, 3}, {0, 1, 0});
  n->SetMin(-7);
  n->SetMax(8);
  n->SetAxisLocation(TABLE);
  n->machdef(owner(1));
  n->flags(3);
  md::NodeAxis_transform_set(0, n, 0.5);
  const std::array<double, 12> transform = components(n->transform());
  md::NodeAxis_Free(n);
  n = md::NodeAxis_Create();
  EXPECT_EQ(n->id(), 17);
  EXPECT_EQ(n->value(), 0.5);
  EXPECT_EQ(n->flags(), 3u);
  EXPECT_EQ(components(n->transform()), transform);
  EXPECT_EQ(n->GetAxis(), AXIS_B);
  EXPECT_EQ(n->GetAxisLocation(), TABLE);
  EXPECT_EQ(n->mode(), ROTARY);
  EXPECT_EQ(n->GetBaseVector(), (TPoint<double>(1, 2, 3)));
  EXPECT_EQ(n->GetAxisVector(), (TPoint<double>(0, 1, 0)));
  EXPECT_EQ(n->GetMin(), -7);
  EXPECT_EQ(n->GetMax(), 8);
  EXPECT_EQ(n->machdef(), owner(1));
}

TEST(ToolNodePool, HandsOutTheNodeThatWasFreedAsItWas) {
  ToolNodePtr n = make_tool_node(17);
  n->payload().length2 = 44;
  n->flags(3);
  node* const address = n.get();
  md::TOOL_NODE_Free(n);
  EXPECT_FALSE(n);
  n = md::TOOL_NODE_Create();
  EXPECT_EQ(n.get(), address);
  EXPECT_EQ(n->id(), 17);
  EXPECT_EQ(n->flags(), 3u);
  EXPECT_EQ(n->payload().length2, 44);
}

TEST(TypedPools, AreSeparateFromEachOtherAndFromThePlainOne) {
  NodePtr plain = make_node(1);
  AxisNodePtr axis = make_axis_node(2, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  ToolNodePtr tool = make_tool_node(3);
  node* const plain_address = plain.get();
  node* const axis_address = axis.get();
  node* const tool_address = tool.get();
  node::free(plain);
  md::NodeAxis_Free(axis);
  md::TOOL_NODE_Free(tool);
  // Not in the order of parking: each pool has its own last one.
  EXPECT_EQ(node::create().get(), plain_address);
  EXPECT_EQ(md::NodeAxis_Create().get(), axis_address);
  EXPECT_EQ(md::TOOL_NODE_Create().get(), tool_address);
}

TYPED_TEST(TypedNodeClone, HasTheNodePart) {
  const auto n = TypeParam::make(17);
  n->value(2.5);
  n->flags(0x80000003u);
  n->transform(numbered_matrix(20));
  const NodePtr copy = n->shallow_clone();
  ASSERT_NE(copy, n);
  EXPECT_EQ(copy->id(), 17);
  EXPECT_EQ(copy->value(), 2.5);
  EXPECT_EQ(copy->flags(), 0x80000003u);
  EXPECT_EQ(components(copy->transform()), components(numbered_matrix(20)));
}

TYPED_TEST(TypedNodeClone, FromAParkedNodeStartsWithoutLinks) {
  const auto n = TypeParam::make(1);
  const NodePtr old_parent = make_node(8);
  const NodePtr old_child = make_node(9);
  auto parked = TypeParam::make(2);
  old_parent->add_child(parked);
  parked->add_child(old_child);
  node* const address = parked.get();
  TypeParam::free(parked);
  const NodePtr copy = n->shallow_clone();
  ASSERT_EQ(copy.get(), address);
  EXPECT_TRUE(copy->children().empty());
  EXPECT_FALSE(copy->parent());
}

TYPED_TEST(TypedNodeClone, OfANodeWithThreeChildrenHasNone) {
  const auto n = TypeParam::make(1);
  for (int id = 2; id <= 4; ++id) n->add_child(make_node(id));
  const NodePtr copy = n->shallow_clone();
  EXPECT_TRUE(copy->children().empty());
  EXPECT_EQ(n->children().size(), 3u);
}

TYPED_TEST(TypedNodeClone, OfAChildHasNoParent) {
  const NodePtr parent = make_node(1);
  const auto n = TypeParam::make(2);
  parent->add_child(n);
  EXPECT_FALSE(n->shallow_clone()->parent());
}

TEST(AxisNodeClone, HasTheSevenFieldsOfTheAxis) {
  const AxisNodePtr n = make_axis_node(17, AXIS_B, ROTARY, {1, 2, 3}, {0.25, 0.5, 0.75});
  n->SetMin(-7);
  n->SetMax(8);
  n->SetAxisLocation(TABLE);
  const NodePtr copy = n->shallow_clone();
  const md::sg::tnode<md::CAxis2>* axis = md::sg::axis_node(copy.get());
  ASSERT_NE(axis, nullptr);
  EXPECT_EQ(axis->GetBaseVector(), (TPoint<double>(1, 2, 3)));
  EXPECT_EQ(axis->GetAxisVector(), (TPoint<double>(0.25, 0.5, 0.75)));
  EXPECT_EQ(axis->GetAxis(), AXIS_B);
  EXPECT_EQ(axis->GetAxisLocation(), TABLE);
  EXPECT_EQ(axis->GetMin(), -7);
  EXPECT_EQ(axis->GetMax(), 8);
  EXPECT_EQ(axis->mode(), ROTARY);
}

TEST(AxisNodeClone, FromAFreshNodeHasNoOwner) {
  empty_pools();
  const AxisNodePtr n = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  n->machdef(owner(1));
  const NodePtr copy = n->shallow_clone();
  EXPECT_EQ(md::sg::axis_node(copy.get())->machdef(), nullptr);
}

// Deliberate: the owner says in which machine a node stands, and a clone stands in none until somebody puts
// it there. A node from the pool keeps the one it had.
TEST(AxisNodeClone, FromAParkedNodeKeepsThatNodesOwner) {
  const AxisNodePtr n = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  n->machdef(owner(1));
  AxisNodePtr parked = make_axis_node(2, AXIS_Y, LINEAR, {0, 0, 0}, {0, 1, 0});
  parked->machdef(owner(2));
  node* const address = parked.get();
  md::NodeAxis_Free(parked);
  const NodePtr copy = n->shallow_clone();
  ASSERT_EQ(copy.get(), address);
  EXPECT_EQ(md::sg::axis_node(copy.get())->machdef(), owner(2));
}

TEST(AxisNodeClone, DoesNotNormaliseTheDirection) {
  const AxisNodePtr n = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {3, 4, 0});
  const NodePtr copy = n->shallow_clone();
  EXPECT_EQ(md::sg::axis_node(copy.get())->GetAxisVector(), (TPoint<double>(3, 4, 0)));
}

TEST(ToolNodeClone, HasTheWholeHeadPaddingIncluded) {
  const ToolNodePtr n = make_tool_node(17);
  unsigned char bytes[136];
  for (unsigned char& b : bytes) b = static_cast<unsigned char>(&b - bytes + 1);
  std::memcpy(static_cast<void*>(&n->payload()), bytes, sizeof bytes);
  const NodePtr copy = n->shallow_clone();
  ASSERT_NE(md::sg::tool_node(copy.get()), nullptr);
  EXPECT_EQ(std::memcmp(&md::sg::tool_node(copy.get())->payload(), bytes, sizeof bytes), 0);
}

// Names that node and payload share mean the node's.
TEST(TypedNode, FlagsAreTheNodesAndNotTheHeads) {
  const ToolNodePtr n = make_tool_node(1);
  n->payload().flags = 5;
  n->flags(2);
  EXPECT_EQ(n->flags(), 2u);
  EXPECT_EQ(n->payload().flags, 5u);
}

TEST(TypedNode, PayloadIsHeldInTheNodeItself) {
  const AxisNodePtr n = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  const char* const begin = reinterpret_cast<const char*>(n.get());
  const char* const payload = reinterpret_cast<const char*>(&n->payload());
  EXPECT_GE(payload, begin);
  EXPECT_LE(payload + sizeof(md::CAxis2), begin + sizeof(*n));
}

TEST(TypedNode, AxisIsSharedWithTheNodesOwnCount) {
  AxisNodePtr n = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  const boost::weak_ptr<node> watch = n;
  boost::shared_ptr<md::CAxis2> axis(n);
  n.reset();
  EXPECT_FALSE(watch.expired());
  EXPECT_EQ(axis->GetAxis(), AXIS_X);
}
