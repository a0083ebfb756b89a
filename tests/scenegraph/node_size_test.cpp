// Trees of any depth and width: 200,000 nodes one below the other, or side by side. Everything here would end
// a program whose walks used the call stack, and on a stack of 256 KiB at once.

#include <cstdlib>
#include <stdexcept>

#include "scenegraph/scene_tree.h"

using namespace k5ax_test;
using md::sg::node;

namespace {

// Numbers 0, 1, 2, ... in this order, all of them.
::testing::AssertionResult counts_up(const std::vector<NodePtr>& nodes, int count) {
  if (nodes.size() != static_cast<std::size_t>(count)) {
    return ::testing::AssertionFailure() << nodes.size() << " nodes instead of " << count;
  }
  for (int i = 0; i < count; ++i) {
    if (nodes[static_cast<std::size_t>(i)]->id() != i) {
      return ::testing::AssertionFailure()
             << "node " << i << " has the id " << nodes[static_cast<std::size_t>(i)]->id();
    }
  }
  return ::testing::AssertionSuccess();
}

// The kinds repeat every three nodes, as make_chain and make_fan set them.
int count_axis_nodes(const std::vector<NodePtr>& nodes) {
  int count = 0;
  for (const NodePtr& n : nodes) count += md::sg::axis_node(n.get()) != nullptr;
  return count;
}

// The life of a tree, from its making to its release.
void live(NodePtr root, int count, int axis_nodes) {
  ASSERT_TRUE(counts_up(node::all_nodes(root), count));

  std::vector<node*> flat(static_cast<std::size_t>(count));
  ASSERT_EQ(k5axSgNode_all_nodes(root.get(), flat.data()), count);
  EXPECT_EQ(flat.front(), root.get());
  EXPECT_EQ(flat.back()->id(), count - 1);

  NodePtr copy = node::node_clone(root);
  const std::vector<NodePtr> copies = node::all_nodes(copy);
  ASSERT_TRUE(counts_up(copies, count));
  EXPECT_EQ(count_axis_nodes(copies), axis_nodes);

  for (const NodePtr& n : copies) n->value(3);
  copy->scale_node(2, true);
  int scaled = 0;
  for (const NodePtr& n : copies) scaled += n->value() == 6;
  EXPECT_EQ(scaled, axis_nodes);

  copy->initialise(true);
  int initial = 0;
  for (const NodePtr& n : copies) initial += n->value() == 0;
  EXPECT_EQ(initial, count);

  const boost::weak_ptr<node> last = copies.back();
  const boost::weak_ptr<node> last_of_source = node::all_nodes(root).back();
  // The list above still holds every node, so that this frees it node by node; the source goes as a tree.
  copy.reset();
  EXPECT_FALSE(last.expired());
  root.reset();
  EXPECT_TRUE(last_of_source.expired());
}

}  // namespace

TEST(DeepTree, LivesOnTheOrdinaryStack) { live(make_chain(kDepth), kDepth, (kDepth + 1) / 3); }

TEST(DeepTree, LivesOnAStackOf256KiB) {
  int runs = 0;
  on_small_stack([&] {
    live(make_chain(kDepth), kDepth, (kDepth + 1) / 3);
    ++runs;
  });
  EXPECT_EQ(runs, 1);
}

TEST(DeepTree, CanBeBuiltFromTheRootDown) {
  NodePtr root = make_node(0);
  NodePtr low = root;
  for (int id = 1; id < kDepth; ++id) {
    const NodePtr n = make_node(id);
    low->add_child(n);
    low = n;
  }
  EXPECT_TRUE(counts_up(node::all_nodes(root), kDepth));
}

TEST(DeepTree, CanBeBuiltByTheSetter) {
  NodePtr root = make_node(0);
  NodePtr low = root;
  for (int id = 1; id < kDepth; ++id) {
    const NodePtr n = make_node(id);
    n->parent(low);
    low = n;
  }
  EXPECT_TRUE(counts_up(node::all_nodes(root), kDepth));
}

TEST(DeepTree, TransformStackReachesFromTheLeafToTheRoot) {
  on_small_stack([] {
    NodePtr leaf;
    const NodePtr root = make_chain(kDepth, &leaf);
    root->transform(numbered_matrix(1));
    leaf->transform(numbered_matrix(2));
    std::vector<Matrix> stack;
    node::transform_stack(leaf, stack);
    ASSERT_EQ(stack.size(), static_cast<std::size_t>(kDepth));
    EXPECT_EQ(components(stack.front()), components(numbered_matrix(2)));
    EXPECT_EQ(components(stack.back()), components(numbered_matrix(1)));
  });
}

TEST(DeepTree, RootUnderItsLeafIsRefused) {
  NodePtr leaf;
  const NodePtr root = make_chain(kDepth, &leaf);
  EXPECT_THROW(leaf->add_child(root), std::invalid_argument);
  EXPECT_THROW(root->parent(leaf), std::invalid_argument);
  EXPECT_FALSE(root->parent());
  EXPECT_TRUE(leaf->children().empty());
}

TEST(DeepTree, ResetOfTheRootReleasesIt) {
  on_small_stack([] {
    NodePtr leaf;
    const NodePtr root = make_chain(kDepth, &leaf);
    const boost::weak_ptr<node> watch = leaf;
    leaf.reset();
    root->reset();
    EXPECT_TRUE(watch.expired());
  });
}

TEST(DeepTree, RemovingItFromItsParentReleasesIt) {
  on_small_stack([] {
    NodePtr leaf;
    const NodePtr parent = make_node(-5);
    parent->add_child(make_chain(kDepth, &leaf));
    const boost::weak_ptr<node> watch = leaf;
    leaf.reset();
    parent->remove_child(parent->children()[0]);
    EXPECT_TRUE(watch.expired());
  });
}

TEST(DeepTree, LosingItsMiddleKeepsTheLowerPart) {
  on_small_stack([] {
    NodePtr root = make_chain(kDepth);
    NodePtr middle = node::all_nodes(root)[kDepth / 2];
    root.reset();
    EXPECT_FALSE(middle->parent());
    EXPECT_EQ(node::all_nodes(middle).size(), static_cast<std::size_t>(kDepth - kDepth / 2));
  });
}

TEST(DeepTree, OfAHostsOwnNodesIsInitialisedScaledAndClonedOnceEach) {
  on_small_stack([] {
    std::vector<Call> log;
    NodePtr root;
    for (int id = kDepth - 1; id >= 0; --id) {
      const NodePtr n = HostNode::create(id, &log);
      if (root) n->add_child(root);
      root = n;
    }
    const auto calls_in_order = [&log](const char* what) {
      int next = 0;
      for (const Call& call : log)
        next += call.what == what && call.id == next && call.recursive == (next == 0);
      return next;
    };
    root->initialise(true);
    EXPECT_EQ(log.size(), static_cast<std::size_t>(kDepth));
    EXPECT_EQ(calls_in_order("initialise"), kDepth);

    log.clear();
    root->scale_node(2, true);
    EXPECT_EQ(log.size(), static_cast<std::size_t>(kDepth));
    EXPECT_EQ(calls_in_order("scale_node"), kDepth);

    log.clear();
    NodePtr copy = node::node_clone(root);
    EXPECT_EQ(log.size(), static_cast<std::size_t>(kDepth));

    log.clear();
    root.reset();
    EXPECT_EQ(log.size(), static_cast<std::size_t>(kDepth));
  });
}

// A parked tree goes when its pool's entry goes, and not by the call stack either.
TEST(DeepTree, IsParkedAndHandedOutWhole) {
  on_small_stack([] {
    NodePtr root = make_chain(kDepth);
    node* const address = root.get();
    node::free(root);
    NodePtr again = node::create();
    ASSERT_EQ(again.get(), address);
    EXPECT_EQ(node::all_nodes(again).size(), static_cast<std::size_t>(kDepth));
  });
}

// The pools go when the program ends, with whatever is parked in them.
TEST(DeepTreeDeathTest, ParkedUntilTheProgramEndsIsReleasedThen) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        NodePtr root = make_chain(kDepth);
        node::free(root);
        AxisNodePtr axis = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
        axis->add_child(make_chain(kDepth));
        md::NodeAxis_Free(axis);
        std::exit(0);
      },
      testing::ExitedWithCode(0), "");
}

TEST(WideTree, LivesOnTheOrdinaryStack) { live(make_fan(kDepth - 1), kDepth, (kDepth + 1) / 3); }

TEST(WideTree, LivesOnAStackOf256KiB) {
  on_small_stack([] { live(make_fan(kDepth - 1), kDepth, (kDepth + 1) / 3); });
}

TEST(WideTree, GivesItsLeavesInOrder) {
  const NodePtr root = make_fan(kDepth - 1);
  std::vector<NodePtr> leaves;
  node::no_children(node::all_nodes(root), leaves);
  ASSERT_EQ(leaves.size(), static_cast<std::size_t>(kDepth - 1));
  EXPECT_EQ(leaves.front()->id(), 1);
  EXPECT_EQ(leaves.back()->id(), kDepth - 1);
}

TEST(WideTree, GrowsByCloningItsChildren) {
  const NodePtr root = make_node(0);
  const NodePtr child = make_node(1);
  root->add_child(child);
  for (int id = 2; id < kDepth; ++id) node::node_clone(child)->id(id);
  EXPECT_TRUE(counts_up(node::all_nodes(root), kDepth));
}

// A comb: a deep chain in which every node also has a short branch. 100,000 + 100,000 nodes.
TEST(Comb, IsWalkedBranchByBranch) {
  on_small_stack([] {
    NodePtr below;
    for (int i = kDepth / 2 - 1; i >= 0; --i) {
      const NodePtr spine = make_node(2 * i);
      spine->add_child(make_node(2 * i + 1));
      if (below) spine->add_child(below);
      below = spine;
    }
    EXPECT_TRUE(counts_up(node::all_nodes(below), kDepth));
    const NodePtr copy = node::node_clone(below);
    EXPECT_TRUE(counts_up(node::all_nodes(copy), kDepth));
  });
}
