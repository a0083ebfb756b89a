// `CMachDef::copy`: values go into the axes and nodes that are already there.
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include <k5ax/machdef.h>

#include "axes/axis_support.h"
#include "machdef/machine_support.h"

namespace {

using Geometry::TPoint;
using k5ax_test::axes_of;
using k5ax_test::axis_node;
using k5ax_test::AxisPtr;
using k5ax_test::Bytes;
using k5ax_test::clone_of;
using k5ax_test::expect_head;
using k5ax_test::find_axis_node;
using k5ax_test::find_node;
using k5ax_test::full_machine;
using k5ax_test::listed_machine;
using k5ax_test::NodePtr;
using k5ax_test::nodes_of;
using k5ax_test::numbered_head;
using k5ax_test::numbered_transform;
using k5ax_test::owner_address;
using k5ax_test::plain_node;
using md::CMachDef;

// A machine with axes in all five places, all of them alike and unlike any of `give_axes`.
std::unique_ptr<CMachDef> machine_with_blank_axes() {
  std::unique_ptr<CMachDef> machdef(new CMachDef);
  machdef->setPrimary(k5ax_test::rotary_b_on_head());
  machdef->setSecondary(k5ax_test::rotary_b_on_head());
  for (AxisPtr& axis : machdef->xyz_axes()) axis = k5ax_test::rotary_b_on_head();
  return machdef;
}

TEST(MachineCopy, FillsTheAxesThatAreThere) {
  const auto source = full_machine();
  const auto target = machine_with_blank_axes();
  const std::vector<AxisPtr> before = axes_of(*target);

  target->copy(*source);

  // The same objects, so that pointers held elsewhere stay good; and the source is as it was.
  EXPECT_EQ(axes_of(*target), before);
  const auto unchanged = full_machine();
  for (std::size_t i = 0; i < 5; ++i) {
    SCOPED_TRACE(i);
    k5ax_test::expect_equal_records(*before[i], *axes_of(*unchanged)[i]);
    k5ax_test::expect_equal_records(*axes_of(*source)[i], *axes_of(*unchanged)[i]);
  }
}

TEST(MachineCopy, MakesItselfTheOwnerOfTheRotaryAxes) {
  const auto source = full_machine();
  const auto target = machine_with_blank_axes();
  target->copy(*source);
  EXPECT_EQ(target->getPrimary()->machdef(), target.get());
  EXPECT_EQ(target->getSecondary()->machdef(), target.get());
}

// Deliberate: only the rotary axes' owners are set here; cloning sets all five.
TEST(MachineCopy, LeavesTheOwnersOfTheLinearAxes) {
  const auto source = full_machine();
  const auto target = machine_with_blank_axes();
  for (const AxisPtr& axis : target->xyz_axes()) axis->machdef(owner_address(1));
  target->copy(*source);
  for (const AxisPtr& axis : target->xyz_axes()) EXPECT_EQ(axis->machdef(), owner_address(1));
}

TEST(MachineCopy, LeavesTheOwnersInItsSource) {
  const auto source = full_machine();
  const auto target = machine_with_blank_axes();
  target->copy(*source);
  for (const AxisPtr& axis : axes_of(*source)) EXPECT_EQ(axis->machdef(), nullptr);
}

TEST(MachineCopy, MakesNoAxisThatIsMissing) {
  const auto source = full_machine();
  CMachDef target;
  target.copy(*source);
  for (const AxisPtr& axis : axes_of(target)) EXPECT_FALSE(axis);
}

TEST(MachineCopy, LeavesAnAxisThatItsSourceLacks) {
  const CMachDef source;
  const auto target = machine_with_blank_axes();
  target->copy(source);
  for (const AxisPtr& axis : axes_of(*target))
    k5ax_test::expect_record(*axis, AXIS_B, HEAD, {1.5, -2.5, 3.5}, {0, -1, 0}, -1.25, 2.75, ROTARY);
}

TEST(MachineCopy, OwnsARotaryAxisEvenWhereItsSourceLacksOne) {
  const CMachDef source;
  const auto target = machine_with_blank_axes();
  target->copy(source);
  EXPECT_EQ(target->getPrimary()->machdef(), target.get());
  EXPECT_EQ(target->getSecondary()->machdef(), target.get());
}

TEST(MachineCopy, TakesTheFieldsOfTheMachine) {
  const auto source = full_machine();
  CMachDef target;

  target.copy(*source);

  EXPECT_EQ(target.getMachType(), MC_TT);
  EXPECT_EQ(static_cast<int>(target.get_mode()), 5);
  EXPECT_EQ(static_cast<int>(target.discipline()), 2);
  EXPECT_FALSE(target.isMetric());
  EXPECT_NEAR_POINT(target.loading_vector(), (TPoint<double>(21, 22, 23)), 0.0);
  EXPECT_NEAR_POINT(target.mwZeroPos(), (TPoint<double>(31, 32, 33)), 0.0);
}

TEST(MachineCopy, TakesTheWholeHeadWithItsFlags) {
  const auto source = full_machine();
  CMachDef target;
  target.copy(*source);
  expect_head(target.head(), numbered_head());
}

TEST(MachineCopy, MakesNoScene) {
  const auto source = listed_machine();
  CMachDef target;
  target.copy(*source);
  for (std::size_t i = 0; i < 2; ++i) {
    EXPECT_FALSE(target.SG()[i]);
    EXPECT_FALSE(target.SG_RotAxs()[i]);
  }
  EXPECT_FALSE(target.tool_node());
}

// The target's nodes, blanked so that what arrives can be told from what was there.
std::vector<NodePtr> blanked_nodes(const CMachDef& machdef) {
  const std::vector<NodePtr> nodes = nodes_of(machdef);
  for (const NodePtr& n : nodes) {
    n->id(-7);
    n->flags(0);
    n->value(-1);
    n->transform(Geometry::Matrix());
  }
  return nodes;
}

void expect_node_part(const NodePtr& n, const NodePtr& expected) {
  EXPECT_EQ(n->id(), expected->id());
  EXPECT_EQ(n->flags(), expected->flags());
  EXPECT_EQ(n->value(), expected->value());
  EXPECT_NEAR_MATRIX(n->transform(), expected->transform(), 0.0);
}

TEST(MachineCopyOfScenes, FillsTheNodesThatAreThere) {
  const auto source = listed_machine();
  const auto target = listed_machine();
  const std::vector<NodePtr> before = blanked_nodes(*target);

  target->copy(*source);

  const std::vector<NodePtr> after = nodes_of(*target);
  const std::vector<NodePtr> expected = nodes_of(*source);
  ASSERT_EQ(after, before);
  ASSERT_EQ(after.size(), k5ax_test::kSceneNodes);
  ASSERT_EQ(expected.size(), after.size());
  for (std::size_t i = 0; i < after.size(); ++i) {
    SCOPED_TRACE(i);
    expect_node_part(after[i], expected[i]);
  }
}

// Deliberate: what an axis node or a tool node carries is its own; a shallow copy is about the node part.
TEST(MachineCopyOfScenes, LeavesWhatTypedNodesCarry) {
  const auto source = listed_machine();
  const auto target = listed_machine();
  const auto axis = find_axis_node(*target, k5ax_test::kRotaryC);
  axis->SetMin(-99);
  axis->SetBaseVector({-1, -2, -3});
  target->tool_node()->payload() = numbered_head();

  target->copy(*source);

  EXPECT_EQ(axis->GetMin(), -99);
  EXPECT_NEAR_POINT(axis->GetBaseVector(), (TPoint<double>(-1, -2, -3)), 0.0);
  expect_head(target->tool_node()->payload(), numbered_head());
}

TEST(MachineCopyOfScenes, LeavesRotaryNodesAndToolNodeOfTheMachine) {
  const auto source = listed_machine();
  const auto target = listed_machine();
  const NodePtr primary_node = target->SG_RotAxs()[0];
  const NodePtr secondary_node = target->SG_RotAxs()[1];
  const NodePtr tool_node = target->tool_node();

  target->copy(*source);

  EXPECT_EQ(target->SG_RotAxs()[0], primary_node);
  EXPECT_EQ(target->SG_RotAxs()[1], secondary_node);
  EXPECT_EQ(target->tool_node(), tool_node);
}

TEST(MachineCopyOfScenes, LeavesTheOwnersOfAxisNodes) {
  const auto source = listed_machine();
  const auto target = listed_machine();
  const auto axis = find_axis_node(*target, k5ax_test::kRotaryC);
  axis->machdef(owner_address(3));
  target->copy(*source);
  EXPECT_EQ(axis->machdef(), owner_address(3));
}

// Trees of plain nodes with the given ids, each a root with the others below it; listed, since it is a clone.
std::unique_ptr<CMachDef> machine_of_trees(const std::vector<int>& tree0, const std::vector<int>& tree1) {
  CMachDef made;
  const std::vector<int>* const trees[] = {&tree0, &tree1};
  for (std::size_t t = 0; t < 2; ++t)
    for (const int id : *trees[t]) {
      const NodePtr n = plain_node(id);
      if (made.SG()[t])
        made.SG()[t]->add_child(n);
      else
        made.SG()[t] = n;
    }
  return clone_of(made);
}

std::vector<int> ids_of(const CMachDef& machdef) {
  std::vector<int> ids;
  for (const NodePtr& n : nodes_of(machdef)) ids.push_back(n->id());
  return ids;
}

// The two lists count as one: a node's partner is the one at the same place in both lists together.
TEST(MachineCopyOfScenes, PairsNodesAcrossTheTwoTrees) {
  const auto source = machine_of_trees({1, 2, 3}, {4});
  const auto target = machine_of_trees({-1}, {-2, -3, -4});
  target->copy(*source);
  EXPECT_EQ(ids_of(*target), (std::vector<int>{1, 2, 3, 4}));
}

TEST(MachineCopyOfScenes, ReachesASecondTreeThatIsAlone) {
  const auto source = machine_of_trees({}, {1, 2});
  const auto target = machine_of_trees({}, {-1, -2});
  target->copy(*source);
  EXPECT_EQ(ids_of(*target), (std::vector<int>{1, 2}));
}

TEST(MachineCopyOfScenes, ReachesAFirstTreeThatIsAlone) {
  const auto source = machine_of_trees({1, 2}, {});
  const auto target = machine_of_trees({-1, -2}, {});
  target->copy(*source);
  EXPECT_EQ(ids_of(*target), (std::vector<int>{1, 2}));
}

TEST(MachineCopyOfScenes, LeavesOutWhatItsSourceHasMore) {
  const auto source = machine_of_trees({1, 2, 3}, {4, 5});
  const auto target = machine_of_trees({-1}, {-2});
  target->copy(*source);
  EXPECT_EQ(ids_of(*target), (std::vector<int>{1, 2}));
}

TEST(MachineCopyOfScenes, LeavesNodesWithoutAPartner) {
  const auto source = machine_of_trees({1}, {2});
  const auto target = machine_of_trees({-1, -2}, {-3});
  target->copy(*source);
  EXPECT_EQ(ids_of(*target), (std::vector<int>{1, 2, -3}));
}

TEST(MachineCopyOfScenes, LeavesAllNodesWhereItsSourceHasNone) {
  const CMachDef source;
  const auto target = machine_of_trees({-1, -2}, {-3});
  target->copy(source);
  EXPECT_EQ(ids_of(*target), (std::vector<int>{-1, -2, -3}));
}

TEST(MachineCopyOfScenes, TouchesNoNodeOnceBothRootsAreGone) {
  // The lists still name nodes then, but the machine shows none.
  const auto source = machine_of_trees({1}, {2});
  const auto target = machine_of_trees({-1}, {-2});
  const std::vector<NodePtr> nodes = nodes_of(*target);
  ASSERT_EQ(nodes.size(), 2u);
  target->SG()[0].reset();
  target->SG()[1].reset();

  target->copy(*source);

  EXPECT_EQ(nodes[0]->id(), -1);
  EXPECT_EQ(nodes[1]->id(), -2);
}

TEST(MachineCopy, OfItselfChangesNothing) {
  const auto machdef = listed_machine();
  const Bytes before = k5ax_test::saved(*machdef);
  machdef->copy(*machdef);
  EXPECT_SAME_BYTES(k5ax_test::saved(*machdef), before);
}

}  // namespace
