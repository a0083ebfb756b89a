// What happens to trees and pools when memory runs out. Each operation is run once for every allocation that
// it makes, and that allocation fails.

#include <memory>

#include "scenegraph/scene_tree.h"
#include "support/memory_shortage.h"

using namespace k5ax_test;
using md::sg::node;

namespace {

// Both ways of running out: one request that is too much, and nothing left at all.
class WithoutMemory : public testing::TestWithParam<MemoryShortage::Kind> {};

bool is_whole(const SmallTree& t) {
  return !t.r->parent() && t.r->child_list() == std::vector<NodePtr>{t.a, t.b} && t.a->parent() == t.r &&
         t.a->child_list() == std::vector<NodePtr>{t.a1} && t.a1->parent() == t.a &&
         t.a1->child_list().empty() && t.b->parent() == t.r && t.b->child_list().empty();
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Kinds, WithoutMemory,
                         testing::Values(MemoryShortage::kOnce, MemoryShortage::kLasting),
                         [](const testing::TestParamInfo<MemoryShortage::Kind>& kind) {
                           return kind.param == MemoryShortage::kOnce ? "Once" : "Lasting";
                         });

TEST_P(WithoutMemory, NodesOfEveryKindCannotBeCreated) {
  empty_pools();
  const auto ignore = [] {};
  const auto must_fail = [](bool failed) { EXPECT_TRUE(failed); };
  // The node and the count of its holders.
  EXPECT_GE(fail_each_allocation(
                GetParam(), ignore, [] { node::create(); }, must_fail),
            1);
  EXPECT_GE(fail_each_allocation(
                GetParam(), ignore, [] { md::NodeAxis_Create(); }, must_fail),
            1);
  EXPECT_GE(fail_each_allocation(
                GetParam(), ignore, [] { md::TOOL_NODE_Create(); }, must_fail),
            1);
}

TEST_P(WithoutMemory, NothingIsLostWhenANodeCannotBeCreated) {
  empty_pools();
  std::size_t before = 0;
  fail_each_allocation(
      GetParam(), [&] { before = bytes_in_use(); }, [] { node::create(); },
      [&](bool) { EXPECT_EQ(bytes_in_use(), before); });
  fail_each_allocation(
      GetParam(), [&] { before = bytes_in_use(); }, [] { md::NodeAxis_Create(); },
      [&](bool) { EXPECT_EQ(bytes_in_use(), before); });
  EXPECT_GT(before, 0u);
}

TEST_P(WithoutMemory, NodeThatCannotBeParkedStaysWithItsHolder) {
  empty_pools();  // no place is left over from a node that was taken
  NodePtr n = make_node(1);
  AxisNodePtr axis = make_axis_node(2, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  ToolNodePtr tool = make_tool_node(3);
  const auto ignore = [] {};
  const auto held = [&](bool failed) {
    EXPECT_TRUE(failed);
    EXPECT_TRUE(n && axis && tool);
  };
  EXPECT_EQ(fail_each_allocation(
                GetParam(), ignore, [&] { node::free(n); }, held),
            1);
  n = node::create();
  EXPECT_EQ(fail_each_allocation(
                GetParam(), ignore, [&] { md::NodeAxis_Free(axis); }, held),
            1);
  axis = md::NodeAxis_Create();
  EXPECT_EQ(fail_each_allocation(
                GetParam(), ignore, [&] { md::TOOL_NODE_Free(tool); }, held),
            1);
  md::TOOL_NODE_Create();
}

// A clone that is made and given back again and again asks for memory once.
TEST_P(WithoutMemory, NodeThatCameFromItsPoolCanBeParkedAgain) {
  empty_pools();
  NodePtr n = node::create();
  AxisNodePtr axis = md::NodeAxis_Create();
  ToolNodePtr tool = md::TOOL_NODE_Create();
  const auto park_all = [&] {
    node::free(n);
    md::NodeAxis_Free(axis);
    md::TOOL_NODE_Free(tool);
  };
  park_all();
  n = node::create();
  axis = md::NodeAxis_Create();
  tool = md::TOOL_NODE_Create();
  const MemoryShortage shortage(0, GetParam());
  park_all();
  EXPECT_FALSE(MemoryShortage::struck());
}

TEST(PoolMemory, PlacesOfTakenNodesAreGivenBackWhenThePoolRunsDry) {
  empty_pools();
  std::vector<NodePtr> nodes(100);
  for (NodePtr& n : nodes) n = node::create();
  const std::size_t before = bytes_in_use();
  for (NodePtr& n : nodes) node::free(n);
  for (NodePtr& n : nodes) n = node::create();
  EXPECT_GT(bytes_in_use(), before);
  node::create();
  EXPECT_EQ(bytes_in_use(), before);
}

TEST(PoolMemory, PlacesOfTakenNodesNeverOutnumberTheNodes) {
  empty_pools();
  std::vector<NodePtr> nodes(100);
  for (NodePtr& n : nodes) n = node::create();
  std::size_t first = 0;
  for (int turn = 0; turn < 5; ++turn) {
    for (NodePtr& n : nodes) node::free(n);
    for (NodePtr& n : nodes) n = node::create();
    if (turn == 0) first = bytes_in_use();
  }
  EXPECT_EQ(bytes_in_use(), first);
}

TEST_P(WithoutMemory, AddChildLeavesTheChildWhereItWas) {
  std::unique_ptr<SmallTree> t;
  NodePtr target;
  EXPECT_GE(fail_each_allocation(
                GetParam(),
                [&] {
                  t = std::make_unique<SmallTree>();
                  target = make_node(9);
                },
                [&] { target->add_child(t->a); },
                [&](bool failed) {
                  EXPECT_TRUE(failed);
                  EXPECT_TRUE(is_whole(*t));
                  EXPECT_TRUE(target->child_list().empty());
                }),
            1);
  EXPECT_EQ(t->a->parent(), target);
}

TEST_P(WithoutMemory, SettingTheParentLeavesTheNodeWhereItWas) {
  std::unique_ptr<SmallTree> t;
  NodePtr target;
  EXPECT_GE(fail_each_allocation(
                GetParam(),
                [&] {
                  t = std::make_unique<SmallTree>();
                  target = make_node(9);
                },
                [&] { t->a->parent(target); },
                [&](bool failed) {
                  EXPECT_TRUE(failed);
                  EXPECT_TRUE(is_whole(*t));
                  EXPECT_TRUE(target->child_list().empty());
                }),
            1);
  EXPECT_EQ(t->a->parent(), target);
}

TEST_P(WithoutMemory, DetachingANodeAlwaysWorks) {
  SmallTree t;
  MemoryShortage shortage(0, GetParam());
  t.a->parent(NodePtr());
  t.r->remove_child(t.b);
  MemoryShortage::end();
  EXPECT_FALSE(t.a->parent());
  EXPECT_TRUE(t.r->children().empty());
}

TEST_P(WithoutMemory, CloneOfABranchLeavesTheTreeAsItWas) {
  empty_pools();
  std::unique_ptr<SmallTree> t;
  EXPECT_GE(fail_each_allocation(
                GetParam(), [&] { t = std::make_unique<SmallTree>(); }, [&] { node::node_clone(t->a); },
                [&](bool failed) {
                  EXPECT_TRUE(failed);
                  EXPECT_TRUE(is_whole(*t));
                }),
            4);  // two nodes, two counts, and at least one list
  EXPECT_EQ(t->r->children().size(), 3u);
}

TEST_P(WithoutMemory, CloneLosesNothing) {
  empty_pools();
  SmallTree t;
  std::size_t before = 0;
  fail_each_allocation(
      GetParam(), [&] { before = bytes_in_use(); }, [&] { node::node_clone(t.r); },
      [&](bool) { EXPECT_EQ(bytes_in_use(), before); });
  EXPECT_GT(before, 0u);
}

TEST_P(WithoutMemory, InitialiseOfATreeChangesAllOrNothing) {
  SmallTree t;
  EXPECT_GE(fail_each_allocation(
                GetParam(),
                [&] {
                  for (const NodePtr& n : {t.r, t.a, t.a1, t.b}) n->value(5);
                },
                [&] { t.r->initialise(true); },
                [&](bool failed) {
                  EXPECT_TRUE(failed);
                  for (const NodePtr& n : {t.r, t.a, t.a1, t.b}) EXPECT_EQ(n->value(), 5);
                }),
            1);
  for (const NodePtr& n : {t.r, t.a, t.a1, t.b}) EXPECT_EQ(n->value(), 0);
}

TEST_P(WithoutMemory, ScalingATreeChangesAllOrNothing) {
  const AxisNodePtr top = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  const AxisNodePtr low = make_axis_node(2, AXIS_Y, LINEAR, {0, 0, 0}, {0, 1, 0});
  top->add_child(low);
  EXPECT_GE(fail_each_allocation(
                GetParam(),
                [&] {
                  top->value(5);
                  low->value(5);
                },
                [&] { top->scale_node(2, true); },
                [&](bool failed) {
                  EXPECT_TRUE(failed);
                  EXPECT_EQ(top->value(), 5);
                  EXPECT_EQ(low->value(), 5);
                }),
            1);
  EXPECT_EQ(top->value(), 10);
  EXPECT_EQ(low->value(), 10);
}

TEST_P(WithoutMemory, PosingASingleNodeAlwaysWorks) {
  const AxisNodePtr axis = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  const ToolNodePtr tool = make_tool_node(2);
  node_state s = {1, 3, 7};
  MemoryShortage shortage(0, GetParam());
  md::NodeAxis_transform_set(0, axis, 5);
  const bool set = md::node_state_set(axis, s);
  const bool got = md::node_state_get(axis, s);
  k5axSgToolNodeMatrixSet(tool, {1, 2, 3});
  axis->scale_node(2, false);
  tool->scale_node(2, false);
  axis->initialise(false);
  const bool struck = MemoryShortage::struck();
  MemoryShortage::end();
  EXPECT_TRUE(set && got);
  EXPECT_FALSE(struck);
}

TEST_P(WithoutMemory, WalksThrow) {
  SmallTree t;
  EXPECT_GE(fail_each_allocation(
                GetParam(), [] {}, [&] { node::all_nodes(t.r); }, [](bool failed) { EXPECT_TRUE(failed); }),
            1);
  EXPECT_GE(fail_each_allocation(
                GetParam(), [] {},
                [&] {
                  std::vector<Matrix> stack;
                  node::transform_stack(t.a1, stack);
                },
                [](bool failed) { EXPECT_TRUE(failed); }),
            1);
}

// A destructor has nowhere to report to, so the release of a tree asks for no memory.
TEST_P(WithoutMemory, TreeOfAnyDepthAndWidthIsReleased) {
  NodePtr deep_leaf;
  NodePtr deep = make_chain(kDepth, &deep_leaf);
  NodePtr wide = make_fan(kDepth);
  const boost::weak_ptr<node> deep_watch = deep_leaf;
  const boost::weak_ptr<node> wide_watch = wide->child_list().back();
  deep_leaf.reset();
  MemoryShortage shortage(0, GetParam());
  deep.reset();
  wide.reset();
  const bool struck = MemoryShortage::struck();
  MemoryShortage::end();
  EXPECT_FALSE(struck);
  EXPECT_TRUE(deep_watch.expired());
  EXPECT_TRUE(wide_watch.expired());
}

TEST(MemoryMeter, SeesTheLibrarysAllocations) {
  empty_pools();
  const std::size_t before = bytes_in_use();
  const NodePtr n = node::create();
  EXPECT_GE(bytes_in_use(), before + sizeof(node));
}
