// Machines when memory runs out: nothing is lost, nothing is given back twice, and the machine can go on.
#include <memory>
#include <new>
#include <vector>

#include <gtest/gtest.h>

#include <k5ax/kinematics.h>

#include "axes/axis_support.h"
#include "machdef/machine_support.h"
#include "support/memory_shortage.h"
#include "support/pools.h"

namespace {

using k5ax_test::axes_of;
using k5ax_test::AxisPool;
using k5ax_test::AxisPtr;
using k5ax_test::Bytes;
using k5ax_test::bytes_in_use;
using k5ax_test::empty_pools;
using k5ax_test::fail_each_allocation;
using k5ax_test::full_machine;
using k5ax_test::HandedOut;
using k5ax_test::listed_machine;
using k5ax_test::MemoryShortage;
using k5ax_test::NodePtr;
using k5ax_test::nodes_of;
using k5ax_test::times_in;
using md::CMachDef;

TEST(DyingMachineWithoutMemory, DestroysWhatCannotBeParked) {
  empty_pools();
  const std::size_t before = bytes_in_use();
  auto machdef = listed_machine();
  empty_pools();  // what the machine was cloned from
  ASSERT_GT(bytes_in_use(), before);

  {
    const MemoryShortage shortage(0, MemoryShortage::kLasting);
    machdef.reset();
    EXPECT_TRUE(MemoryShortage::struck());
  }

  EXPECT_EQ(bytes_in_use(), before);
}

TEST(DyingMachineWithoutMemory, ParksOrDestroysEachPartWhereverItStrikes) {
  std::unique_ptr<CMachDef> machdef;
  empty_pools();
  const std::size_t before = bytes_in_use();
  int failures = 0;
  fail_each_allocation(
      MemoryShortage::kLasting,
      [&machdef] {
        machdef = listed_machine();
        empty_pools();
      },
      [&machdef] { machdef.reset(); },
      [&](bool thrown) {
        EXPECT_FALSE(thrown);  // a destructor that throws ends the program
        empty_pools();
        EXPECT_EQ(bytes_in_use(), before);
        ++failures;
      });
  EXPECT_EQ(failures, 5 + 8);  // a place in a pool for each axis and each node
}

TEST(ResetWithoutMemory, IsFinishedByTheNextOne) {
  std::unique_ptr<CMachDef> machdef;
  std::vector<NodePtr> nodes;
  std::vector<AxisPtr> axes;
  int failures = 0;
  fail_each_allocation(
      MemoryShortage::kOnce,
      [&] {
        nodes.clear();
        axes.clear();
        empty_pools();
        machdef = listed_machine();
        nodes = nodes_of(*machdef);
        axes = axes_of(*machdef);
        empty_pools();
      },
      [&machdef] { machdef->reset(); },
      [&](bool thrown) {
        EXPECT_TRUE(thrown);
        machdef->reset();

        for (const AxisPtr& axis : axes_of(*machdef)) EXPECT_FALSE(axis);
        EXPECT_FALSE(machdef->SG()[0]);
        EXPECT_EQ(AxisPool::size(), axes.size());
        // The node that no place was left for may be destroyed instead; here the test still holds it.
        const HandedOut handed_out;
        std::size_t given_back = 0;
        for (const NodePtr& n : nodes) {
          const std::ptrdiff_t times =
              times_in(handed_out.plain, n) + times_in(handed_out.axis, n) + times_in(handed_out.tool, n);
          EXPECT_LE(times, 1);
          given_back += times == 1;
        }
        EXPECT_GE(given_back, nodes.size() - 1);
        EXPECT_EQ(nodes.size(), k5ax_test::kSceneNodes);
        ++failures;
      });
  EXPECT_EQ(failures, 5 + 8);
}

TEST(ResetWithoutMemory, LeavesAMachineThatCanBePosed) {
  std::unique_ptr<CMachDef> machdef;
  int failures = 0;
  fail_each_allocation(
      MemoryShortage::kOnce,
      [&] {
        empty_pools();
        machdef = listed_machine();
        empty_pools();
      },
      [&machdef] { machdef->reset(); },
      [&](bool thrown) {
        EXPECT_TRUE(thrown);
        UpdateNodeAxes_2(machdef.get(), 1, 2, 3, 0, 0, 0);
        ++failures;
      });
  EXPECT_EQ(failures, 5 + 8);
}

TEST(ResetWithoutMemory, ParksANodeOfBothListsOnce) {
  const NodePtr shared = k5ax_test::plain_node(1);
  for (int id = 2; id < 8; ++id) shared->add_child(k5ax_test::plain_node(id));
  CMachDef source;
  source.SG()[0] = shared;
  const Bytes one_tree = k5ax_test::saved(source);
  // Both roots are node 0 of the record: the second index from the end of the five before the discipline.
  Bytes two_trees = one_tree;
  two_trees.replace(two_trees.size() - 5 * 4, 4, Bytes(4, 0));
  std::unique_ptr<CMachDef> machdef;
  int failures = 0;
  fail_each_allocation(
      MemoryShortage::kOnce,
      [&] {
        empty_pools();
        machdef = std::make_unique<CMachDef>();
        k5ax_test::load(*machdef, two_trees);
        ASSERT_EQ(machdef->SG()[0], machdef->SG()[1]);
      },
      [&machdef] { machdef->reset(); },
      [&](bool thrown) {
        EXPECT_TRUE(thrown);
        machdef->reset();
        const HandedOut handed_out;
        for (const NodePtr& n : handed_out.plain) EXPECT_EQ(times_in(handed_out.plain, n), 1);
        ++failures;
      });
  EXPECT_EQ(failures, 7);
}

// More nodes than the update has room for without memory.
TEST(CloneWithoutMemory, LeavesAMachineThatCanBePosed) {
  CMachDef source;
  k5ax_test::give_scene(source);
  for (int i = 0; i < 40; ++i)
    source.SG()[1]->add_child(
        k5ax_test::axis_node(100 + i, AXIS_X, HEAD, {0, 0, 0}, {1, 0, 0}, -1, 1, LINEAR));
  std::unique_ptr<CMachDef> target;
  int failures = 0;
  fail_each_allocation(
      MemoryShortage::kOnce,
      [&target] {
        target = std::make_unique<CMachDef>();
        empty_pools();
      },
      [&] { target->clone(source, 3); },
      [&](bool thrown) {
        EXPECT_TRUE(thrown);
        for (int tree = 0; tree < 2; ++tree)
          for (const NodePtr& n : md::sg::node::all_nodes(target->SG()[static_cast<std::size_t>(tree)]))
            n->flags(n->id() >= 100 ? 1 : 0);
        UpdateNodeAxes_2(target.get(), 1, 2, 3, 0, 0, 0);
        ++failures;
      });
  EXPECT_GT(failures, 2 * 48);
}

TEST(CloneWithoutMemory, IsGoodWhenItIsMadeAgain) {
  const auto source = full_machine();
  const Bytes expected = k5ax_test::saved(*source);
  std::unique_ptr<CMachDef> target;
  int failures = 0;
  fail_each_allocation(
      MemoryShortage::kOnce,
      [&target] {
        target.reset(new CMachDef);
        empty_pools();
      },
      [&] { target->clone(*source, 3); },
      [&](bool thrown) {
        EXPECT_TRUE(thrown);
        EXPECT_SAME_BYTES(k5ax_test::saved(*source), expected);
        target->clone(*source, 3);
        EXPECT_SAME_BYTES(k5ax_test::saved(*target), expected);
        ++failures;
      });
  EXPECT_SAME_BYTES(k5ax_test::saved(*target), expected);
  EXPECT_GE(failures, 2 * (5 + 8));  // each axis and each node, and the count of its holders
}

TEST(CloneWithoutMemory, LosesNothing) {
  const auto source = full_machine();
  std::unique_ptr<CMachDef> target(new CMachDef);
  empty_pools();
  const std::size_t before = bytes_in_use();
  int failures = 0;
  fail_each_allocation(
      MemoryShortage::kLasting,
      [&] {
        target.reset(new CMachDef);
        empty_pools();
        EXPECT_EQ(bytes_in_use(), before);
      },
      [&] { target->clone(*source, 3); },
      [&](bool thrown) {
        EXPECT_TRUE(thrown);
        ++failures;
      });
  EXPECT_GE(failures, 2 * (5 + 8));
}

TEST(ScaleWithoutMemory, LeavesTheMachineInItsUnit) {
  std::unique_ptr<CMachDef> machdef;
  Bytes before;
  int failures = 0;
  fail_each_allocation(
      MemoryShortage::kOnce,
      [&] {
        machdef = full_machine();
        before = k5ax_test::saved(*machdef);
      },
      [&machdef] { machdef->scale(!machdef->isMetric()); },
      [&](bool thrown) {
        EXPECT_TRUE(thrown);
        EXPECT_SAME_BYTES(k5ax_test::saved(*machdef), before);
        ++failures;
      });
  EXPECT_GT(failures, 0);
  EXPECT_NE(k5ax_test::saved(*machdef), before);
}

}  // namespace
