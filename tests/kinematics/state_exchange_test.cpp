// The states of all axis nodes taken and restored by id, single axis positions, and single values set.
#include <k5ax/kinematics.h>

#include <vector>

#include <gtest/gtest.h>

#include "support/near.h"
#include "support/scene_machine.h"

namespace {

using k5ax_test::chain;
using k5ax_test::kDriven;
using k5ax_test::kX;
using k5ax_test::kY;
using k5ax_test::kZ;
using k5ax_test::linear_node;
using k5ax_test::NodePtr;
using k5ax_test::plain_node;
using k5ax_test::Point;
using k5ax_test::rotary_node;
using k5ax_test::SceneMachine;
using k5ax_test::tool_node;

using States = std::map<int, node_state>;

node_state state(int id, unsigned int flags, double value) {
  node_state s;
  s.id = id;
  s.flags = flags;
  s.value = value;
  return s;
}

// X and B in tree 0 beside a plain node and the tool, C in tree 1.
class StateExchange : public testing::Test {
 protected:
  StateExchange() : m(chain({plain_node(7), x, b, tool}), c) {}

  const NodePtr x = linear_node(1, AXIS_X, kX, kDriven, 10);
  const NodePtr b = rotary_node(2, AXIS_B, HEAD, kY, Point(1, 2, 3), 0.2);
  const NodePtr c = rotary_node(3, AXIS_C, TABLE, kZ, Point(4, 5, 6), 0.3);
  const NodePtr tool = tool_node(8, Point(1, 2, 3));
  SceneMachine m;

  std::vector<double> everything() {
    std::vector<double> numbers;
    for (const NodePtr& n : {x, b, c, tool}) {
      numbers.push_back(m.value(n));
      numbers.push_back(m.twin(n)->flags());
      for (const double number : k5ax_test::components(m.transform(n))) numbers.push_back(number);
    }
    return numbers;
  }
};

TEST_F(StateExchange, GetsEveryAxisNodeOfBothTreesAndNoOther) {
  const States states = md::CMachDef_IdAxisState_get(m.machdef());
  ASSERT_EQ(states.size(), 3u);
  EXPECT_EQ(states.at(1).value, 10);
  EXPECT_EQ(states.at(2).value, 0.2);
  EXPECT_EQ(states.at(3).value, 0.3);
}

TEST_F(StateExchange, GetsIdFlagsAndValue) {
  m.twin(b)->flags(0xabcdu);
  const node_state s = md::CMachDef_IdAxisState_get(m.machdef()).at(2);
  EXPECT_EQ(s.id, 2);
  EXPECT_EQ(s.flags, 0xabcdu);
  EXPECT_EQ(s.value, 0.2);
}

TEST_F(StateExchange, SetsFlagsValueAndTransform) {
  md::CMachDef_IdAxisState_set(m.machdef(), {{1, state(1, 3, 25)}});
  EXPECT_EQ(m.twin(x)->flags(), 3u);
  EXPECT_EQ(m.value(x), 25);
  EXPECT_NEAR_MATRIX(m.transform(x), Geometry::Translate(Point(25, 0, 0)), 0);
}

TEST_F(StateExchange, SetsARotaryToItsPose) {
  md::CMachDef_IdAxisState_set(m.machdef(), {{3, state(3, 0, math::m_pi2)}});
  // Minus the base point, then the turn: (4, 5, 6) to the origin, (5, 5, 6) to (1, 0, 0) to (0, 1, 0).
  EXPECT_NEAR_POINT(Point(5, 5, 6) * m.transform(c), Point(0, 1, 0), k5ax_test::kHandTolerance);
}

TEST_F(StateExchange, LeavesAxisNodesWithoutAnEntry) {
  const std::vector<double> before = everything();
  md::CMachDef_IdAxisState_set(m.machdef(), {{99, state(99, 3, 25)}});
  EXPECT_EQ(everything(), before);
}

TEST_F(StateExchange, SetsNeitherPlainNodesNorTheToolNode) {
  const std::vector<double> before = everything();
  md::CMachDef_IdAxisState_set(m.machdef(), {{7, state(7, 3, 25)}, {8, state(8, 3, 25)}});
  EXPECT_EQ(everything(), before);
}

// A state never moves to another node: an entry under a key that is not its own id is passed over.
TEST_F(StateExchange, LeavesAnEntryUnderAnotherKey) {
  const std::vector<double> before = everything();
  md::CMachDef_IdAxisState_set(m.machdef(), {{1, state(2, 3, 25)}});
  EXPECT_EQ(everything(), before);
}

TEST_F(StateExchange, WhatWasTakenAndSetBackChangesNothing) {
  const std::vector<double> before = everything();
  md::CMachDef_IdAxisState_set(m.machdef(), md::CMachDef_IdAxisState_get(m.machdef()));
  EXPECT_EQ(everything(), before);
}

TEST_F(StateExchange, WhatWasTakenRestoresAfterAnUpdate) {
  m.machdef().SG_RotAxs()[0] = m.twin(b);
  m.machdef().SG_RotAxs()[1] = m.twin(c);
  const std::vector<double> before = everything();
  const States taken = md::CMachDef_IdAxisState_get(m.machdef());
  m.update(Point(55, 0, 0), Point(0, 1, 2));
  ASSERT_NE(everything(), before);
  md::CMachDef_IdAxisState_set(m.machdef(), taken);
  EXPECT_EQ(everything(), before);
}

TEST_F(StateExchange, TheFlagsWordOfTheMachineHasNoEffect) {
  m.machdef().flags(4);
  md::CMachDef_IdAxisState_set(m.machdef(), {{2, state(2, 0, 0.6)}, {3, state(3, 0, 0.7)}});
  EXPECT_NEAR_MATRIX(m.transform(b),
                     Geometry::Translate(Point(-1, -2, -3)) * Geometry::RotateAboutAxis(kY, 0.6), 0);
  EXPECT_NEAR_MATRIX(m.transform(c),
                     Geometry::Translate(Point(-4, -5, -6)) * Geometry::RotateAboutAxis(kZ, 0.7), 0);
}

TEST(StateExchangeOfSharedIds, TheFirstNodeIsTheOneThatIsRead) {
  const NodePtr first = linear_node(5, AXIS_X, kX, 0, 10);
  const NodePtr next = linear_node(5, AXIS_Y, kY, 0, 20);
  const NodePtr in_second_tree = linear_node(5, AXIS_Z, kZ, 0, 30);
  SceneMachine m(chain({first, next}), in_second_tree);
  const States states = md::CMachDef_IdAxisState_get(m.machdef());
  EXPECT_EQ(states.size(), 1u);
  EXPECT_EQ(states.at(5).value, 10);
  EXPECT_EQ(CMachDef_Axis_Position_Get(&m.machdef(), 5), 10);
}

TEST(StateExchangeOfSharedIds, EveryNodeIsSet) {
  const NodePtr first = linear_node(5, AXIS_X, kX, 0, 10);
  const NodePtr next = linear_node(5, AXIS_Y, kY, 0, 20);
  const NodePtr in_second_tree = linear_node(5, AXIS_Z, kZ, 0, 30);
  SceneMachine m(chain({first, next}), in_second_tree);
  md::CMachDef_IdAxisState_set(m.machdef(), {{5, state(5, 0, 44)}});
  EXPECT_NEAR_POINT(Point(m.value(first), m.value(next), m.value(in_second_tree)), Point(44, 44, 44), 0);
}

TEST(StateExchangeOfEmptyMachines, IsEmpty) {
  md::CMachDef machdef;
  EXPECT_TRUE(md::CMachDef_IdAxisState_get(machdef).empty());
  md::CMachDef_IdAxisState_set(machdef, {{1, state(1, 0, 1)}});
}

TEST(StateExchangeByRoots, WorksOnAMachineThatWasNotCloned) {
  md::CMachDef machdef;
  machdef.SG()[1] = linear_node(1, AXIS_X, kX, 0, 10);
  EXPECT_EQ(md::CMachDef_IdAxisState_get(machdef).at(1).value, 10);
  md::CMachDef_IdAxisState_set(machdef, {{1, state(1, 0, 25)}});
  EXPECT_EQ(machdef.SG()[1]->value(), 25);
}

TEST(StateExchangeByRoots, TakesATreeThatStandsInBothPlaces) {
  md::CMachDef machdef;
  machdef.SG()[0] = machdef.SG()[1] = linear_node(1, AXIS_X, kX, 0, 10);
  EXPECT_EQ(md::CMachDef_IdAxisState_get(machdef).size(), 1u);
  md::CMachDef_IdAxisState_set(machdef, {{1, state(1, 0, 25)}});
  EXPECT_EQ(machdef.SG()[0]->value(), 25);
}

TEST(StateExchangeOfBranches, TakesTheNodesInTheOrderOfTheWalk) {
  // Depth first: the grandchild on the first branch comes before the second branch.
  const NodePtr root = plain_node(0);
  const NodePtr branch = plain_node(0);
  root->add_child(branch);
  root->add_child(linear_node(5, AXIS_X, kX, 0, 20));
  branch->add_child(linear_node(5, AXIS_X, kX, 0, 10));
  SceneMachine m(root);
  EXPECT_EQ(md::CMachDef_IdAxisState_get(m.machdef()).at(5).value, 10);
  EXPECT_EQ(CMachDef_Axis_Position_Get(&m.machdef(), 5), 10);
}

class FlatStates : public StateExchange {
 protected:
  int set(const std::vector<node_state>& records) {
    return CMachDef_IdAxisState_set2(&m.machdef(), records.data(), static_cast<int>(records.size()));
  }
};

TEST_F(FlatStates, AreSetInAnyOrder) {
  EXPECT_EQ(set({state(3, 0, 0.7), state(1, 3, 25)}), 1);
  EXPECT_EQ(m.value(x), 25);
  EXPECT_EQ(m.twin(x)->flags(), 3u);
  EXPECT_EQ(m.value(c), 0.7);
  EXPECT_EQ(m.value(b), 0.2);
}

TEST_F(FlatStates, OfTwoRecordsOfAnIdTheLaterWins) {
  EXPECT_EQ(set({state(1, 3, 25), state(2, 0, 0.5), state(1, 0, 26)}), 1);
  EXPECT_EQ(m.value(x), 26);
  EXPECT_EQ(m.twin(x)->flags(), 0u);
}

TEST_F(FlatStates, OfAnUnknownIdAreOneAndChangeNothing) {
  const std::vector<double> before = everything();
  EXPECT_EQ(set({state(99, 3, 25)}), 1);
  EXPECT_EQ(everything(), before);
}

TEST_F(FlatStates, ACountOfZeroIsZeroAndChangesNothing) {
  const std::vector<double> before = everything();
  const node_state s = state(1, 3, 25);
  EXPECT_EQ(CMachDef_IdAxisState_set2(&m.machdef(), &s, 0), 0);
  EXPECT_EQ(CMachDef_IdAxisState_set2(&m.machdef(), nullptr, 0), 0);
  EXPECT_EQ(everything(), before);
}

TEST_F(FlatStates, ANegativeCountIsOneAndChangesNothing) {
  const std::vector<double> before = everything();
  const node_state s = state(1, 3, 25);
  EXPECT_EQ(CMachDef_IdAxisState_set2(&m.machdef(), &s, -1), 1);
  EXPECT_EQ(CMachDef_IdAxisState_set2(&m.machdef(), nullptr, -1), 1);
  EXPECT_EQ(everything(), before);
}

TEST_F(FlatStates, NoRecordsWithACountAreZeroAndChangeNothing) {
  const std::vector<double> before = everything();
  EXPECT_EQ(CMachDef_IdAxisState_set2(&m.machdef(), nullptr, 3), 0);
  EXPECT_EQ(CMachDef_IdAxisState_set2(&m.machdef(), nullptr, 1), 0);
  EXPECT_EQ(everything(), before);
}

TEST_F(FlatStates, OfNoMachineAreZero) {
  const node_state s = state(1, 3, 25);
  EXPECT_EQ(CMachDef_IdAxisState_set2(nullptr, &s, 1), 0);
  EXPECT_EQ(CMachDef_IdAxisState_set2(nullptr, &s, -1), 0);
}

// So many that they are put in order before nodes are looked up: as the few above, with forty of ids that no
// node has between them, smaller ones and larger.
class ManyFlatStates : public FlatStates {
 protected:
  std::vector<node_state> records = {state(1, 0, 11), state(1, 3, 24)};

  ManyFlatStates() {
    for (int i = 0; i < 20; ++i) {
      records.push_back(state(100 - i, 3, 1000 + i));
      records.push_back(state(-100 + i, 3, 2000 + i));
    }
  }
};

TEST_F(ManyFlatStates, AreSetInAnyOrder) {
  records.push_back(state(3, 5, 0.7));
  EXPECT_EQ(set(records), 1);
  EXPECT_EQ(m.value(c), 0.7);
  EXPECT_EQ(m.twin(c)->flags(), 5u);
}

TEST_F(ManyFlatStates, OfTheRecordsOfAnIdTheLastWins) {
  records.push_back(state(1, 7, 26));
  EXPECT_EQ(set(records), 1);
  EXPECT_EQ(m.value(x), 26);
  EXPECT_EQ(m.twin(x)->flags(), 7u);
}

TEST_F(ManyFlatStates, LeaveAxisNodesWithoutARecord) {
  EXPECT_EQ(set(records), 1);
  EXPECT_EQ(m.value(b), 0.2);
  EXPECT_EQ(m.value(c), 0.3);
}

TEST_F(ManyFlatStates, LeaveNodesWhoseIdsAreSmallerOrLargerThanAll) {
  m.twin(b)->id(-1000);
  m.twin(c)->id(1000);
  EXPECT_EQ(set(records), 1);
  EXPECT_EQ(m.value(x), 24);
  EXPECT_EQ(m.value(b), 0.2);
  EXPECT_EQ(m.value(c), 0.3);
}

TEST_F(ManyFlatStates, OfId0ArePassedOver) {
  m.twin(c)->id(0);
  records.push_back(state(0, 3, 25));
  EXPECT_EQ(set(records), 1);
  EXPECT_EQ(m.value(c), 0.3);
}

// Deliberate: unused records of a host's array carry the id 0, so the flat form passes them over; the map of
// the class form has no unused entries, and there 0 is an id like any other.
TEST(FlatStatesOfId0, ArePassedOver) {
  const NodePtr x = linear_node(0, AXIS_X, kX, 0, 10);
  SceneMachine m(x);
  const node_state s = state(0, 3, 25);
  EXPECT_EQ(CMachDef_IdAxisState_set2(&m.machdef(), &s, 1), 1);
  EXPECT_EQ(m.value(x), 10);
}

TEST(StatesOfId0, AreTakenAndSetByTheClassForm) {
  const NodePtr x = linear_node(0, AXIS_X, kX, 0, 10);
  SceneMachine m(x);
  EXPECT_EQ(md::CMachDef_IdAxisState_get(m.machdef()).at(0).value, 10);
  md::CMachDef_IdAxisState_set(m.machdef(), {{0, state(0, 3, 25)}});
  EXPECT_EQ(m.value(x), 25);
}

TEST(FlatStatesOfNegativeIds, AreSet) {
  const NodePtr x = linear_node(-999, AXIS_X, kX, 0, 10);
  SceneMachine m(x);
  const node_state s = state(-999, 3, 25);
  EXPECT_EQ(CMachDef_IdAxisState_set2(&m.machdef(), &s, 1), 1);
  EXPECT_EQ(m.value(x), 25);
}

TEST_F(StateExchange, AnAxisPositionIsTheValueOfItsNode) {
  EXPECT_EQ(CMachDef_Axis_Position_Get(&m.machdef(), 1), 10);
  EXPECT_EQ(CMachDef_Axis_Position_Get(&m.machdef(), 3), 0.3);
}

TEST_F(StateExchange, AnAxisPositionOfAnUnknownIdIsZero) {
  EXPECT_EQ(CMachDef_Axis_Position_Get(&m.machdef(), 99), 0);
}

TEST_F(StateExchange, AnAxisPositionOfAPlainNodeOrTheToolIsZero) {
  m.twin(tool)->value(5);
  m.twin(tool)->parent()->value(6);
  m.machdef().SG()[0]->value(7);
  EXPECT_EQ(CMachDef_Axis_Position_Get(&m.machdef(), 8), 0);
  EXPECT_EQ(CMachDef_Axis_Position_Get(&m.machdef(), 7), 0);
}

TEST(AxisPosition, OfNoMachineIsZero) { EXPECT_EQ(CMachDef_Axis_Position_Get(nullptr, 1), 0); }

TEST_F(StateExchange, SettingAValueRebuildsTheTransform) {
  k5axSgNode_value_set2(0, m.twin(x).get(), 25);
  EXPECT_EQ(m.value(x), 25);
  EXPECT_NEAR_MATRIX(m.transform(x), Geometry::Translate(Point(25, 0, 0)), 0);
}

// The older form stores the value alone: hosts that build transforms of their own rely on it.
TEST_F(StateExchange, SettingAValueInTheOlderFormLeavesTheTransform) {
  k5axSgNode_value_set(m.twin(x).get(), 25);
  EXPECT_EQ(m.value(x), 25);
  EXPECT_NEAR_MATRIX(m.transform(x), Geometry::Translate(Point(10, 0, 0)), 0);
}

TEST_F(StateExchange, SettingAValueLeavesTheFlags) {
  k5axSgNode_value_set2(0, m.twin(x).get(), 25);
  EXPECT_EQ(m.twin(x)->flags(), kDriven);
}

TEST_F(StateExchange, SettingAValueDoesNothingToOtherNodes) {
  const std::vector<double> before = everything();
  k5axSgNode_value_set2(0, m.twin(tool).get(), 25);
  k5axSgNode_value_set2(0, m.machdef().SG()[0].get(), 25);
  k5axSgNode_value_set2(0, nullptr, 25);
  EXPECT_EQ(everything(), before);
  EXPECT_EQ(m.machdef().SG()[0]->value(), 0);
}

TEST_F(StateExchange, SettingAValueDoesNotFeelTheSelector) {
  for (const unsigned int selector : {0u, 4u, 0xffffffffu}) {
    k5axSgNode_value_set2(selector, m.twin(c).get(), 0.7);
    EXPECT_NEAR_MATRIX(m.transform(c),
                       Geometry::Translate(Point(-4, -5, -6)) * Geometry::RotateAboutAxis(kZ, 0.7), 0)
        << selector;
  }
}

TEST_F(StateExchange, SettingAValueLeavesTheOwnershipOfTheNode) {
  const NodePtr node = m.twin(x);
  const long holders = node.use_count();
  k5axSgNode_value_set2(0, node.get(), 25);
  EXPECT_EQ(node.use_count(), holders);
  EXPECT_EQ(node->shared_from_this(), node);
}

TEST(SettingAValue, OfANodeThatOneHolderOwnsLeavesItAlive) {
  NodePtr node = linear_node(1, AXIS_X, kX);
  const boost::weak_ptr<md::sg::node> watch(node);
  k5axSgNode_value_set2(0, node.get(), 25);
  ASSERT_FALSE(watch.expired());
  EXPECT_EQ(node->value(), 25);
}

}  // namespace
