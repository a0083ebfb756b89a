// What a machine gives back when it is reset or dies, and what it keeps.
#include <memory>
#include <vector>

#include <boost/weak_ptr.hpp>

#include <gtest/gtest.h>

#include <k5ax/machdef.h>

#include "axes/axis_support.h"
#include "machdef/machine_support.h"

namespace {

using Geometry::TPoint;
using k5ax_test::AxisPool;
using k5ax_test::AxisPtr;
using k5ax_test::expect_head;
using k5ax_test::HandedOut;
using k5ax_test::NodePtr;
using k5ax_test::nodes_of;
using k5ax_test::straight_head;
using k5ax_test::times_in;
using md::CMachDef;

TEST(MachineReset, TakesTheTypeAway) {
  CMachDef machdef;
  machdef.setMachType(MC_HH);
  machdef.reset();
  EXPECT_EQ(machdef.getMachType(), MC_UNDEFINED);
}

TEST(MachineReset, MakesTheHeadStraightWithoutFlags) {
  CMachDef machdef;
  machdef.head() = k5ax_test::numbered_head();
  machdef.reset();
  expect_head(machdef.head(), straight_head());
}

TEST(MachineReset, ClearsTheLoadingVector) {
  CMachDef machdef;
  machdef.loading_vector({1, 2, 3});
  machdef.reset();
  EXPECT_NEAR_POINT(machdef.loading_vector(), (TPoint<double>(0, 0, 0)), 0.0);
}

// Deliberate: these four are the host's setting and not one machine's.
TEST(MachineReset, KeepsWorkZeroModeDisciplineAndUnit) {
  CMachDef machdef;
  machdef.mwZeroPos({1, 2, 3});
  machdef.set_mode(static_cast<MACHINE_MODE>(5));
  machdef.discipline(static_cast<K5AX_DISCIPLINE>(2));
  machdef.setMetric(false);

  machdef.reset();

  EXPECT_NEAR_POINT(machdef.mwZeroPos(), (TPoint<double>(1, 2, 3)), 0.0);
  EXPECT_EQ(static_cast<int>(machdef.get_mode()), 5);
  EXPECT_EQ(static_cast<int>(machdef.discipline()), 2);
  EXPECT_FALSE(machdef.isMetric());
}

TEST(MachineReset, EmptiesAxesAndScene) {
  const auto machdef = k5ax_test::listed_machine();
  machdef->reset();
  for (const AxisPtr& axis : k5ax_test::axes_of(*machdef)) EXPECT_FALSE(axis);
  for (std::size_t i = 0; i < 2; ++i) {
    EXPECT_FALSE(machdef->SG()[i]);
    EXPECT_FALSE(machdef->SG_RotAxs()[i]);
  }
  EXPECT_FALSE(machdef->tool_node());
}

// The pool is last in, first out: what comes out of it first went in last.
TEST(MachineReset, ParksItsAxesPrimaryFirstAndZLast) {
  AxisPool::drain();
  CMachDef machdef;
  k5ax_test::give_axes(machdef);
  const std::vector<AxisPtr> axes = k5ax_test::axes_of(machdef);

  machdef.reset();

  ASSERT_EQ(AxisPool::size(), 5u);
  for (std::size_t i = 5; i-- > 0;) EXPECT_EQ(md::CAxis2::create(), axes[i]) << "axis " << i;
}

TEST(MachineReset, ParksOnlyTheAxesThatAreThere) {
  AxisPool::drain();
  CMachDef machdef;
  machdef.setSecondary(k5ax_test::rotary_b_on_head());
  const AxisPtr secondary = machdef.getSecondary();

  machdef.reset();

  EXPECT_EQ(AxisPool::size(), 1u);
  EXPECT_EQ(md::CAxis2::create(), secondary);
}

// Which pools handed each of `nodes` out after the machine let them go.
void expect_each_once_in_its_pool(const std::vector<NodePtr>& nodes) {
  const HandedOut handed_out;
  std::size_t axis_nodes = 0;
  std::size_t tool_nodes = 0;
  for (const NodePtr& n : nodes) {
    const bool is_axis = md::sg::axis_node(n.get()) != nullptr;
    const bool is_tool = md::sg::tool_node(n.get()) != nullptr;
    axis_nodes += is_axis;
    tool_nodes += is_tool;
    EXPECT_EQ(times_in(handed_out.axis, n), is_axis ? 1 : 0);
    EXPECT_EQ(times_in(handed_out.tool, n), is_tool ? 1 : 0);
    EXPECT_EQ(times_in(handed_out.plain, n), !is_axis && !is_tool ? 1 : 0);
  }
  EXPECT_EQ(axis_nodes, 3u);
  EXPECT_EQ(tool_nodes, 1u);
  EXPECT_EQ(nodes.size(), k5ax_test::kSceneNodes);
}

TEST(MachineReset, GivesEveryNodeBackOnceToThePoolOfItsKind) {
  const auto machdef = k5ax_test::listed_machine();
  const std::vector<NodePtr> nodes = nodes_of(*machdef);
  machdef->reset();
  expect_each_once_in_its_pool(nodes);
}

TEST(MachineReset, GivesNodesBackInTheOrderOfItsLists) {
  const auto machdef = k5ax_test::listed_machine();
  std::vector<NodePtr> plain;
  std::vector<NodePtr> axis;
  for (const NodePtr& n : nodes_of(*machdef)) {
    if (md::sg::axis_node(n.get()) != nullptr)
      axis.push_back(n);
    else if (md::sg::tool_node(n.get()) == nullptr)
      plain.push_back(n);
  }
  ASSERT_EQ(plain.size(), 4u);
  ASSERT_EQ(axis.size(), 3u);

  machdef->reset();

  const HandedOut handed_out;  // last in, first out
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(handed_out.plain[i], plain[3 - i]) << "plain node " << i;
  for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(handed_out.axis[i], axis[2 - i]) << "axis node " << i;
}

// Nodes are cut loose before they are parked: two of them in use again must not be linked behind their users'
// backs.
TEST(MachineReset, ResetsEveryNodeBeforeItIsParked) {
  const auto machdef = k5ax_test::listed_machine();
  const std::vector<NodePtr> nodes = nodes_of(*machdef);
  ASSERT_EQ(nodes.size(), k5ax_test::kSceneNodes);

  machdef->reset();

  for (const NodePtr& n : nodes) {
    EXPECT_EQ(n->id(), -1);
    EXPECT_EQ(n->flags(), 0u);
    EXPECT_EQ(n->value(), 0.0);
    EXPECT_NEAR_MATRIX(n->transform(), Geometry::Matrix(), 0.0);
    EXPECT_TRUE(n->child_list().empty());
    EXPECT_FALSE(n->parent());
  }
}

TEST(MachineReset, LeavesThePayloadOfATypedNode) {
  // A node's reset is about the node part; who takes an axis node fills its axis.
  const auto machdef = k5ax_test::listed_machine();
  const auto axis = k5ax_test::find_axis_node(*machdef, k5ax_test::kRotaryA);
  machdef->reset();
  EXPECT_EQ(axis->GetAxis(), AXIS_A);
  EXPECT_NEAR_POINT(axis->GetBaseVector(), (TPoint<double>(4, 5, 6)), 0.0);
}

TEST(MachineReset, TwiceGivesNothingBackTwice) {
  const auto machdef = k5ax_test::listed_machine();
  const std::vector<NodePtr> nodes = nodes_of(*machdef);
  const std::vector<AxisPtr> axes = k5ax_test::axes_of(*machdef);
  AxisPool::drain();

  machdef->reset();
  machdef->reset();

  EXPECT_EQ(AxisPool::size(), axes.size());
  expect_each_once_in_its_pool(nodes);
}

TEST(MachineReset, DropsAHandMadeSceneWithoutParkingIt) {
  // Roots that a host has set make no lists, and what is given back is what is listed.
  const auto machdef = k5ax_test::full_machine();
  const boost::weak_ptr<md::sg::node> root = machdef->SG()[0];
  const boost::weak_ptr<md::sg::node> leaf = k5ax_test::find_node(*machdef, k5ax_test::kPartLeaf);

  machdef->reset();

  EXPECT_TRUE(root.expired());
  EXPECT_TRUE(leaf.expired());
}

// A record may name one node as the root of both trees; it is then in both lists.
std::unique_ptr<CMachDef> machine_with_one_tree_as_both() {
  CMachDef source;
  const NodePtr root = k5ax_test::plain_node(1);
  root->add_child(k5ax_test::axis_node(2, AXIS_A, TABLE, {0, 0, 0}, {1, 0, 0}, -1, 1, ROTARY));
  root->add_child(k5ax_test::tool_node(3));
  source.SG()[0] = root;
  source.SG()[1] = root;
  std::unique_ptr<CMachDef> machdef(new CMachDef);
  k5ax_test::load(*machdef, k5ax_test::saved(source));
  return machdef;
}

TEST(NodeInBothTrees, IsGivenBackOnce) {
  const auto machdef = machine_with_one_tree_as_both();
  ASSERT_TRUE(machdef->SG()[0]);
  ASSERT_EQ(machdef->SG()[0], machdef->SG()[1]);
  const std::vector<NodePtr> nodes = md::sg::node::all_nodes(machdef->SG()[0]);
  ASSERT_GE(nodes.size(), 3u);

  machdef->reset();

  const HandedOut handed_out;
  for (const NodePtr& n : nodes)
    EXPECT_EQ(times_in(handed_out.plain, n) + times_in(handed_out.axis, n) + times_in(handed_out.tool, n), 1)
        << "node " << n.get();
}

TEST(NodeInBothTrees, IsCutLooseLikeAnyOther) {
  const auto machdef = machine_with_one_tree_as_both();
  const NodePtr root = machdef->SG()[0];
  ASSERT_TRUE(root);
  machdef->reset();
  EXPECT_TRUE(root->child_list().empty());
  EXPECT_EQ(root->id(), -1);
}

TEST(NodeInBothTrees, MayBeGivenBackByTheNextMachineToo) {
  // What is given back once must be given back again after its next use: no mark of the first time may stay.
  auto machdef = machine_with_one_tree_as_both();
  const std::vector<NodePtr> first_use = md::sg::node::all_nodes(machdef->SG()[0]);
  machdef->reset();
  machdef = machine_with_one_tree_as_both();
  const std::vector<NodePtr> nodes = md::sg::node::all_nodes(machdef->SG()[0]);
  std::ptrdiff_t used_again = 0;
  for (const NodePtr& n : nodes) used_again += times_in(first_use, n);
  ASSERT_GT(used_again, 0);

  machdef->reset();

  const HandedOut handed_out;
  for (const NodePtr& n : nodes)
    EXPECT_EQ(times_in(handed_out.plain, n) + times_in(handed_out.axis, n) + times_in(handed_out.tool, n), 1);
}

TEST(InitialiseHead, MakesItStraightAndClearsTheLoadingVector) {
  CMachDef machdef;
  machdef.head() = k5ax_test::numbered_head();
  machdef.loading_vector({1, 2, 3});

  machdef.initialise_head();

  expect_head(machdef.head(), straight_head());
  EXPECT_NEAR_POINT(machdef.loading_vector(), (TPoint<double>(0, 0, 0)), 0.0);
}

TEST(InitialiseHead, LeavesTheRestOfTheMachine) {
  const auto machdef = k5ax_test::full_machine();
  machdef->initialise_head();
  EXPECT_EQ(machdef->getMachType(), MC_TT);
  EXPECT_NEAR_POINT(machdef->mwZeroPos(), (TPoint<double>(31, 32, 33)), 0.0);
  EXPECT_TRUE(machdef->getPrimary());
  EXPECT_TRUE(machdef->SG()[0]);
  EXPECT_TRUE(machdef->tool_node());
}

TEST(DyingMachine, GivesItsAxesBack) {
  AxisPool::drain();
  std::vector<AxisPtr> axes;
  {
    CMachDef machdef;
    k5ax_test::give_axes(machdef);
    axes = k5ax_test::axes_of(machdef);
  }
  ASSERT_EQ(AxisPool::size(), 5u);
  for (std::size_t i = 5; i-- > 0;) EXPECT_EQ(md::CAxis2::create(), axes[i]) << "axis " << i;
}

TEST(DyingMachine, GivesItsNodesBackOnceEach) {
  auto machdef = k5ax_test::listed_machine();
  const std::vector<NodePtr> nodes = nodes_of(*machdef);
  machdef.reset();
  expect_each_once_in_its_pool(nodes);
}

TEST(DyingMachine, LeavesAnAxisThatTheHostHolds) {
  AxisPtr axis;
  {
    CMachDef machdef;
    machdef.setPrimary(k5ax_test::rotary_b_on_head());
    axis = machdef.getPrimary();
  }
  k5ax_test::expect_record(*axis, AXIS_B, HEAD, {1.5, -2.5, 3.5}, {0, -1, 0}, -1.25, 2.75, ROTARY);
}

}  // namespace
