// `CMachDef::clone`: independent copies of a machine, its scene graph, or both.
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
using k5ax_test::AxisNodePtr;
using k5ax_test::AxisPool;
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
using k5ax_test::owner_address;
using k5ax_test::plain_node;
using k5ax_test::straight_head;
using k5ax_test::tool_node;
using md::CMachDef;

constexpr unsigned int kMachine = 1;
constexpr unsigned int kScene = 2;

void expect_no_axes(const CMachDef& machdef) {
  for (const AxisPtr& axis : axes_of(machdef)) EXPECT_FALSE(axis);
}

void expect_no_scene(const CMachDef& machdef) {
  for (std::size_t i = 0; i < 2; ++i) {
    EXPECT_FALSE(machdef.SG()[i]);
    EXPECT_FALSE(machdef.SG_RotAxs()[i]);
  }
  EXPECT_FALSE(machdef.tool_node());
}

void expect_equal_axes(const CMachDef& machdef, const CMachDef& expected) {
  for (std::size_t i = 0; i < 5; ++i) {
    SCOPED_TRACE(i);
    const AxisPtr axis = axes_of(machdef)[i];
    const AxisPtr source = axes_of(expected)[i];
    ASSERT_TRUE(axis);
    ASSERT_NE(axis, source);
    k5ax_test::expect_equal_records(*axis, *source);
  }
}

void expect_equal_scenes(const CMachDef& machdef, const CMachDef& expected) {
  const std::vector<NodePtr> nodes = nodes_of(machdef);
  const std::vector<NodePtr> sources = nodes_of(expected);
  ASSERT_EQ(nodes.size(), sources.size());
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_NE(nodes[i], sources[i]);
    EXPECT_EQ(nodes[i]->id(), sources[i]->id());
    EXPECT_EQ(nodes[i]->flags(), sources[i]->flags());
    EXPECT_EQ(nodes[i]->value(), sources[i]->value());
    EXPECT_NEAR_MATRIX(nodes[i]->transform(), sources[i]->transform(), 0.0);
    EXPECT_EQ(nodes[i]->child_list().size(), sources[i]->child_list().size());
    EXPECT_EQ(nodes[i]->parent() ? nodes[i]->parent()->id() : 0,
              sources[i]->parent() ? sources[i]->parent()->id() : 0);
  }
}

TEST(MachineClone, OfEverythingHasEqualAxes) {
  const auto source = full_machine();
  expect_equal_axes(*clone_of(*source), *source);
}

TEST(MachineClone, OfEverythingHasTheFieldsOfTheMachine) {
  const auto clone = clone_of(*full_machine());
  EXPECT_EQ(clone->getMachType(), MC_TT);
  EXPECT_EQ(static_cast<int>(clone->get_mode()), 5);
  EXPECT_EQ(static_cast<int>(clone->discipline()), 2);
  EXPECT_FALSE(clone->isMetric());
  EXPECT_NEAR_POINT(clone->loading_vector(), (TPoint<double>(21, 22, 23)), 0.0);
  EXPECT_NEAR_POINT(clone->mwZeroPos(), (TPoint<double>(31, 32, 33)), 0.0);
  expect_head(clone->head(), numbered_head());
}

TEST(MachineClone, OfEverythingHasAnEqualScene) {
  const auto source = full_machine();
  const auto clone = clone_of(*source);
  ASSERT_EQ(nodes_of(*clone).size(), k5ax_test::kSceneNodes);
  expect_equal_scenes(*clone, *source);
}

TEST(MachineClone, OfTheMachineLeavesTheSceneEmpty) {
  const auto source = full_machine();
  const auto clone = clone_of(*source, kMachine);
  expect_equal_axes(*clone, *source);
  expect_head(clone->head(), numbered_head());
  EXPECT_EQ(clone->getMachType(), MC_TT);
  expect_no_scene(*clone);
}

TEST(MachineClone, OfTheSceneLeavesTheMachineEmpty) {
  const auto source = full_machine();
  const auto clone = clone_of(*source, kScene);
  expect_equal_scenes(*clone, *source);
  expect_no_axes(*clone);
  EXPECT_EQ(clone->getMachType(), MC_UNDEFINED);
  expect_head(clone->head(), straight_head());
  EXPECT_NEAR_POINT(clone->loading_vector(), (TPoint<double>(0, 0, 0)), 0.0);
}

TEST(MachineClone, OfTheSceneKeepsWhatAResetKeeps) {
  const auto source = full_machine();
  CMachDef target(static_cast<MACHINE_MODE>(77));
  target.discipline(static_cast<K5AX_DISCIPLINE>(78));
  target.mwZeroPos({-1, -2, -3});

  target.clone(*source, kScene);

  EXPECT_EQ(static_cast<int>(target.get_mode()), 77);
  EXPECT_EQ(static_cast<int>(target.discipline()), 78);
  EXPECT_TRUE(target.isMetric());
  EXPECT_NEAR_POINT(target.mwZeroPos(), (TPoint<double>(-1, -2, -3)), 0.0);
}

TEST(MachineClone, OfNothingOnlyResets) {
  const auto source = full_machine();
  const auto target = listed_machine();

  target->clone(*source, 0);

  expect_no_axes(*target);
  expect_no_scene(*target);
  EXPECT_EQ(target->getMachType(), MC_UNDEFINED);
  expect_head(target->head(), straight_head());
  EXPECT_NEAR_POINT(target->mwZeroPos(), (TPoint<double>(31, 32, 33)), 0.0);
}

TEST(MachineClone, IgnoresOtherBits) {
  const auto source = full_machine();

  const auto nothing = clone_of(*source, 0xFFFFFFFCu);
  expect_no_axes(*nothing);
  expect_no_scene(*nothing);

  const auto machine_alone = clone_of(*source, 0xFFFFFFFDu);
  expect_equal_axes(*machine_alone, *source);
  expect_no_scene(*machine_alone);

  const auto everything = clone_of(*source, 0xFFFFFFFFu);
  expect_equal_axes(*everything, *source);
  expect_equal_scenes(*everything, *source);
}

TEST(MachineClone, ChangesNothingInItsSource) {
  const auto source = full_machine();
  const std::vector<AxisPtr> axes = axes_of(*source);
  const std::vector<NodePtr> nodes = nodes_of(*source);
  const Bytes before = k5ax_test::saved(*source);

  const auto clone = clone_of(*source);

  EXPECT_EQ(axes_of(*source), axes);
  EXPECT_EQ(nodes_of(*source), nodes);
  EXPECT_SAME_BYTES(k5ax_test::saved(*source), before);
  for (const AxisPtr& axis : axes) EXPECT_EQ(axis->machdef(), nullptr);
}

TEST(MachineClone, IsIndependentOfItsSource) {
  const auto source = full_machine();
  const Bytes before = k5ax_test::saved(*source);
  const auto clone = clone_of(*source);

  for (const AxisPtr& axis : axes_of(*clone)) axis->SetMax(9999);
  for (const NodePtr& n : nodes_of(*clone)) n->value(9999);
  find_axis_node(*clone, k5ax_test::kRotaryC)->SetMax(9999);
  clone->tool_node()->length1 = 9999;
  clone->head().length1 = 9999;
  clone->mwZeroPos({9999, 0, 0});
  clone->SG()[0]->add_child(plain_node(50));
  clone->reset();

  EXPECT_SAME_BYTES(k5ax_test::saved(*source), before);
}

TEST(MachineClone, OutlivesItsSource) {
  auto source = full_machine();
  const auto clone = clone_of(*source);
  const Bytes before = k5ax_test::saved(*clone);
  source.reset();
  EXPECT_SAME_BYTES(k5ax_test::saved(*clone), before);
}

TEST(MachineClone, OwnsItsFiveAxes) {
  const auto clone = clone_of(*full_machine());
  for (const AxisPtr& axis : axes_of(*clone)) EXPECT_EQ(axis->machdef(), clone.get());
}

TEST(MachineClone, OwnsTheAxesOfItsAxisNodes) {
  const auto source = full_machine();
  find_axis_node(*source, k5ax_test::kLinearX)->machdef(owner_address(1));
  const auto clone = clone_of(*source);
  int axis_nodes = 0;
  for (const int id : {k5ax_test::kLinearX, k5ax_test::kRotaryC, k5ax_test::kRotaryA}) {
    EXPECT_EQ(find_axis_node(*clone, id)->machdef(), clone.get()) << "node " << id;
    ++axis_nodes;
  }
  EXPECT_EQ(axis_nodes, 3);
}

TEST(MachineClone, HasTheAxesOfItsAxisNodes) {
  const auto source = full_machine();
  const auto clone = clone_of(*source);
  k5ax_test::expect_record(*find_axis_node(*clone, k5ax_test::kRotaryC), AXIS_C, HEAD, {1, 2, 3}, {0, 0, 1},
                           -2, 3, ROTARY);
}

TEST(MachineClone, HasTheHeadOfItsToolNode) {
  const auto source = full_machine();
  source->tool_node()->payload() = numbered_head();
  expect_head(clone_of(*source)->tool_node()->payload(), numbered_head());
}

TEST(MachineClone, LacksTheAxesThatItsSourceLacks) {
  const auto source = full_machine();
  source->setSecondary(AxisPtr());
  source->xyz_axes()[1].reset();
  const auto target = listed_machine();

  target->clone(*source, kMachine);

  EXPECT_TRUE(target->getPrimary());
  EXPECT_FALSE(target->getSecondary());
  EXPECT_TRUE(target->xyz_axes()[0]);
  EXPECT_FALSE(target->xyz_axes()[1]);
  EXPECT_TRUE(target->xyz_axes()[2]);
}

TEST(MachineClone, NormalisesTheDirectionsOfItsAxes) {
  // They are cloned axes, and those are made like new ones.
  const auto source = full_machine();
  source->getPrimary()->SetAxisVector({0, 6, 8});
  EXPECT_NEAR_POINT(clone_of(*source)->getPrimary()->GetAxisVector(), (TPoint<double>(0, 0.6, 0.8)), 0.0);
}

TEST(MachineClone, GivesBackWhatItsTargetHeld) {
  const auto source = full_machine();
  const auto target = listed_machine();
  AxisPool::drain();
  const std::vector<NodePtr> former_nodes = nodes_of(*target);
  const std::vector<AxisPtr> former_axes = axes_of(*target);

  target->clone(*source, 0);

  EXPECT_EQ(AxisPool::size(), former_axes.size());
  const k5ax_test::HandedOut handed_out;
  for (const NodePtr& n : former_nodes)
    EXPECT_EQ(k5ax_test::times_in(handed_out.plain, n) + k5ax_test::times_in(handed_out.axis, n) +
                  k5ax_test::times_in(handed_out.tool, n),
              1);
  EXPECT_EQ(former_nodes.size(), k5ax_test::kSceneNodes);
}

TEST(MachineClone, TakesItsAxesFromThePoolAndOwnsThem) {
  AxisPool::drain();
  CMachDef source;
  source.setPrimary(k5ax_test::linear_x_on_table());
  const AxisPtr held = k5ax_test::rotary_b_on_head();
  held->machdef(owner_address(1));
  AxisPtr parked = held;
  md::CAxis2::free(parked);

  CMachDef target;
  target.clone(source, kMachine);

  EXPECT_EQ(target.getPrimary(), held);
  EXPECT_EQ(held->machdef(), &target);  // not its owner of before
}

// Nodes from the pool hold all they held when they were parked, their links included. A clone must not show
// them.
TEST(MachineClone, MadeOfParkedNodesHasNoLinksOfTheirs) {
  const auto source = full_machine();
  {
    CMachDef linked;
    k5ax_test::give_scene(linked);
    const std::vector<NodePtr> nodes = nodes_of(linked);
    for (NodePtr n : nodes) {
      if (md::sg::axis_node(n.get()) != nullptr) {
        auto typed = boost::dynamic_pointer_cast<md::sg::tnode<md::CAxis2>>(n);
        md::NodeAxis_Free(typed);
      } else if (md::sg::tool_node(n.get()) != nullptr) {
        auto typed = boost::dynamic_pointer_cast<md::sg::tnode<angled_head>>(n);
        md::TOOL_NODE_Free(typed);
      } else {
        md::sg::node::free(n);
      }
    }
    // `linked` made no list of its nodes, so it does not give them back once more.
  }

  const auto clone = clone_of(*source);

  ASSERT_EQ(nodes_of(*clone).size(), k5ax_test::kSceneNodes);
  expect_equal_scenes(*clone, *source);
}

// Deliberate: a machine may be handed to itself through two names; the reset would destroy what is to be
// copied.
TEST(MachineClone, IntoItselfChangesNothing) {
  const auto machdef = listed_machine();
  const std::vector<AxisPtr> axes = axes_of(*machdef);
  const std::vector<NodePtr> nodes = nodes_of(*machdef);
  const Bytes before = k5ax_test::saved(*machdef);
  ASSERT_EQ(nodes.size(), k5ax_test::kSceneNodes);

  for (unsigned int flags = 0; flags < 4; ++flags) {
    machdef->clone(*machdef, flags);
    EXPECT_EQ(axes_of(*machdef), axes) << "flags " << flags;
    EXPECT_EQ(nodes_of(*machdef), nodes) << "flags " << flags;
    EXPECT_SAME_BYTES(k5ax_test::saved(*machdef), before) << "flags " << flags;
  }
}

TEST(MachineClone, ListsItsNodes) {
  // What is listed is given back, each node once to the pool of its kind.
  const auto clone = clone_of(*full_machine());
  const NodePtr leaf = find_node(*clone, k5ax_test::kPartLeaf);
  clone->reset();
  EXPECT_EQ(md::sg::node::create(),
            leaf);  // the last of the second tree's list, so the first out of the pool
}

TEST(MachineCloneRotaryNodes, HaveTheIdsOfTheirSources) {
  const auto clone = clone_of(*full_machine());
  EXPECT_EQ(clone->SG_RotAxs()[0], find_node(*clone, k5ax_test::kRotaryC));
  EXPECT_EQ(clone->SG_RotAxs()[1], find_node(*clone, k5ax_test::kRotaryA));
}

TEST(MachineCloneRotaryNodes, AreEmptyWhereTheSourcesAre) {
  const auto source = full_machine();
  source->SG_RotAxs()[0].reset();
  const auto clone = clone_of(*source);
  EXPECT_FALSE(clone->SG_RotAxs()[0]);
  EXPECT_EQ(clone->SG_RotAxs()[1], find_node(*clone, k5ax_test::kRotaryA));
}

TEST(MachineCloneRotaryNodes, AreEmptyWhereNoNodeHasTheId) {
  const auto source = full_machine();
  source->SG_RotAxs()[0] = axis_node(77, AXIS_C, HEAD, {0, 0, 0}, {0, 0, 1}, -1, 1, ROTARY);
  EXPECT_FALSE(clone_of(*source)->SG_RotAxs()[0]);
}

// Deliberate: nodes are paired by id, and where ids are not unique the first one met counts.
TEST(MachineCloneRotaryNodes, AreTheFirstAxisNodesOfTheirId) {
  const auto source = full_machine();
  find_node(*source, k5ax_test::kLinearX)->id(k5ax_test::kRotaryA);
  const auto clone = clone_of(*source);
  EXPECT_EQ(clone->SG_RotAxs()[1], clone->SG()[0]->child_list()[0]);
}

TEST(MachineCloneRotaryNodes, AreNeverNodesOfAnotherKind) {
  // The machine root stands first and has the same id, but carries no axis.
  const auto source = full_machine();
  find_node(*source, k5ax_test::kMachineRoot)->id(k5ax_test::kRotaryC);
  const auto clone = clone_of(*source);
  ASSERT_TRUE(clone->SG_RotAxs()[0]);
  EXPECT_NE(clone->SG_RotAxs()[0], clone->SG()[0]);
  EXPECT_NE(md::sg::axis_node(clone->SG_RotAxs()[0].get()), nullptr);
}

TEST(MachineCloneRotaryNodes, GoByTheIdOfANodeOfAnyKind) {
  // The source names a plain node; its id is what counts.
  const auto source = full_machine();
  source->SG_RotAxs()[0] = plain_node(k5ax_test::kLinearX);
  const auto clone = clone_of(*source);
  EXPECT_EQ(clone->SG_RotAxs()[0], find_node(*clone, k5ax_test::kLinearX));
}

TEST(MachineCloneRotaryNodes, MayBeTheSameNodeTwice) {
  const auto source = full_machine();
  source->SG_RotAxs()[1] = source->SG_RotAxs()[0];
  const auto clone = clone_of(*source);
  EXPECT_EQ(clone->SG_RotAxs()[0], find_node(*clone, k5ax_test::kRotaryC));
  EXPECT_EQ(clone->SG_RotAxs()[1], clone->SG_RotAxs()[0]);
}

TEST(MachineCloneToolNode, IsTheToolNodeOfTheClonedTrees) {
  const auto clone = clone_of(*full_machine());
  EXPECT_EQ(clone->tool_node(), find_node(*clone, k5ax_test::kToolNode));
}

TEST(MachineCloneToolNode, IsEmptyWhereTheSourceNamesNone) {
  const auto source = full_machine();
  source->tool_node(k5ax_test::ToolNodePtr());
  EXPECT_FALSE(clone_of(*source)->tool_node());
}

TEST(MachineCloneToolNode, IsEmptyWhereTheTreesHaveNone) {
  const auto source = full_machine();
  find_node(*source, k5ax_test::kToolMount)->remove_child(source->tool_node());
  ASSERT_TRUE(source->tool_node());
  EXPECT_FALSE(clone_of(*source)->tool_node());
}

// Deliberate: a machine has one tool; the first tool node of the trees is it, whichever the source named.
TEST(MachineCloneToolNode, IsTheFirstOneWhicheverTheSourceNames) {
  const auto source = full_machine();
  const auto second = tool_node(31);
  find_node(*source, k5ax_test::kPartLeaf)->add_child(second);
  source->tool_node(second);
  const auto clone = clone_of(*source);
  EXPECT_EQ(clone->tool_node(), find_node(*clone, k5ax_test::kToolNode));
}

TEST(MachineClone, OfOneTreeHasThatTreeAlone) {
  const auto source = full_machine();
  source->SG()[0].reset();
  const auto clone = clone_of(*source);
  EXPECT_FALSE(clone->SG()[0]);
  ASSERT_TRUE(clone->SG()[1]);
  EXPECT_EQ(clone->SG()[1]->id(), k5ax_test::kPartRoot);
}

// Deliberate: a copy of a subtree hangs where its source hangs, so a root that is no root is cloned as a
// sibling.
TEST(MachineClone, OfARootBelowAnotherNodeMakesASiblingThere) {
  CMachDef source;
  const NodePtr above = plain_node(1);
  const NodePtr root = plain_node(2);
  above->add_child(root);
  source.SG()[0] = root;

  const auto clone = clone_of(source);

  ASSERT_TRUE(clone->SG()[0]);
  EXPECT_NE(clone->SG()[0], root);
  EXPECT_EQ(clone->SG()[0]->parent(), above);
  ASSERT_EQ(above->child_list().size(), 2u);
  EXPECT_EQ(above->child_list()[1], clone->SG()[0]);
}

// Otherwise the node would hang in that tree and wait in its pool at once, and the next clone would take it
// and hang it up a second time: trees that double with every clone.
TEST(MachineClone, OfARootBelowAnotherNodeGoesFromThereWithItsMachine) {
  CMachDef source;
  const NodePtr above = plain_node(1);
  const NodePtr root = plain_node(2);
  above->add_child(root);
  source.SG()[0] = root;

  for (int times = 0; times < 3; ++times) clone_of(source);

  ASSERT_EQ(above->child_list().size(), 1u);
  EXPECT_EQ(above->child_list()[0], root);
  EXPECT_EQ(root->parent(), above);
}

// As a file may have it that names a node further down as the root of the second tree.
TEST(MachineClone, OfATreeWithinTheOtherGrowsNeither) {
  const NodePtr root = plain_node(1);
  const NodePtr below = plain_node(2);
  root->add_child(below);
  below->add_child(plain_node(3));
  CMachDef machine;
  machine.SG()[0] = root;
  machine.SG()[1] = below;

  for (int times = 0; times < 20; ++times) clone_of(machine);

  EXPECT_EQ(md::sg::node::all_nodes(root).size(), 3u);
  EXPECT_EQ(md::sg::node::all_nodes(below).size(), 2u);
}

// A chain is built from its leaf up, so that each new root looks at one node.
constexpr int kDepth = 200000;

std::unique_ptr<CMachDef> deep_machine() {
  NodePtr root = axis_node(1, AXIS_X, HEAD, {1, 0, 0}, {1, 0, 0}, -1, 1, LINEAR);
  for (int i = 1; i < kDepth; ++i) {
    const NodePtr above = axis_node(i + 1, AXIS_X, HEAD, {1, 0, 0}, {1, 0, 0}, -1, 1, LINEAR);
    above->add_child(root);
    root = above;
  }
  std::unique_ptr<CMachDef> machdef(new CMachDef);
  machdef->SG()[0] = root;
  machdef->setMetric(false);
  return machdef;
}

TEST(DeepMachine, IsClonedCopiedScaledAndReleased) {
  const auto clone = clone_of(*deep_machine());
  const auto other = clone_of(*clone);
  std::vector<NodePtr> nodes = nodes_of(*clone);
  ASSERT_EQ(nodes.size(), static_cast<std::size_t>(kDepth));

  nodes_of(*other).back()->value(3);
  clone->copy(*other);
  EXPECT_EQ(nodes.back()->value(), 3);
  clone->scale(true);
  EXPECT_EQ(nodes.back()->value(), 3 * 25.4);

  const NodePtr deepest = nodes.back();
  nodes.clear();
  clone->reset();
  EXPECT_EQ(md::NodeAxis_Create(), deepest);  // listed last, so first out of the pool
}

}  // namespace
