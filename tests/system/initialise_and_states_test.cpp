// What `initialise` leaves of a machine's trees, and how a host brings them back.
#include <gtest/gtest.h>

#include "support/near.h"
#include "system/tree_support.h"

namespace {

using namespace k5ax_test;

TreePlan level_trunnion() {
  TreePlan plan;
  plan.rotary.type = MC_TT;
  plan.rotary.primary = {true, AXIS_A, TABLE, {-300, 20, 50}, {1, 0, 0}};
  plan.rotary.secondary = {true, AXIS_C, TABLE, {0, 0, -80}, {0, 0, 1}};
  plan.nose = {0, 0, 500};
  plan.tool_point = {0, 0, 100};
  return plan;
}

const Point kXyz(1, 2, 3);
const Point kAbc(math::m_pi2, 0, math::m_pi2);
const Point kOnPart(-67, 1, 32);  // as worked out for the trunnion in trees_and_transforms_test.cpp

constexpr double kStateTolerance = 9e-12;  // as there

void initialise(md::CMachDef& machdef) {
  for (const NodePtr& root : machdef.SG()) k5axSgNode_initialise(root.get(), 1);
}

TEST(Initialise, LeavesFixedOffsetsAlone) {
  const auto m = build(level_trunnion());
  initialise(m->machdef());
  const NodePtr nose = m->machdef().tool_node()->parent();
  ASSERT_EQ(nose->id(), kFixedId);
  EXPECT_NEAR_POINT(Point() * nose->transform(), Point(0, 0, 500), 0);
}

TEST(Initialise, TakesTheToolNodeToTheIdentity) {
  const auto m = build(level_trunnion());
  initialise(m->machdef());
  EXPECT_NEAR_MATRIX(m->machdef().tool_node()->transform(), Geometry::Matrix(), 0);
}

// Deliberate: the identity, while the pose at value 0 is the translation by minus the base point. What the
// ways back add stays: (-300, 20, 50) + (0, 0, -80).
TEST(Initialise, IsNotTheZeroPoseOfTheTable) {
  const auto m = build(level_trunnion());
  initialise(m->machdef());
  EXPECT_NEAR_POINT(Point() * node_to_root(first_leaf(m->machdef())), Point(-300, 20, -30), 0);
}

TEST(Initialise, FollowedByTheZeroPoseBringsPartAndMachineTogether) {
  const auto m = build(level_trunnion());
  initialise(m->machdef());
  zero_table(m->machdef());
  EXPECT_NEAR_MATRIX(node_to_root(first_leaf(m->machdef())), Geometry::Matrix(), 0);
}

// The update then solves for a tool that is seen off by those base points.
TEST(Initialise, WithoutTheZeroPosePutsTheToolOff) {
  const auto m = build(level_trunnion());
  initialise(m->machdef());
  CMachDef_ToolNode_matrix_SetXYZ(&m->machdef(), 0, 0, 100);
  ASSERT_TRUE(m->update(kXyz, kAbc));
  EXPECT_EQ(node_with_id(m->machdef(), kXId)->value(), 1 + 300);
}

TEST(Initialise, FollowedByZeroPoseAndToolPointIsReadyForAnUpdate) {
  const auto m = build(level_trunnion());
  initialise(m->machdef());
  zero_table(m->machdef());
  CMachDef_ToolNode_matrix_SetXYZ(&m->machdef(), 0, 0, 100);
  ASSERT_TRUE(m->update(kXyz, kAbc));
  EXPECT_NEAR_POINT(tool_on_part(m->machdef()), kOnPart, kStateTolerance);
}

TEST(AxisStates, BringAnInitialisedTableBack) {
  const auto m = build(level_trunnion());
  zero_table(m->machdef());
  ASSERT_TRUE(m->update(kXyz, kAbc));
  const std::map<int, node_state> states = md::CMachDef_IdAxisState_get(m->machdef());
  initialise(m->machdef());
  md::CMachDef_IdAxisState_set(m->machdef(), states);
  CMachDef_ToolNode_matrix_SetXYZ(&m->machdef(), 0, 0, 100);
  EXPECT_NEAR_POINT(tool_on_part(m->machdef()), kOnPart, kStateTolerance);
}

TEST(AxisStates, AreThoseOfTheFiveAxes) {
  const auto m = build(level_trunnion());
  const std::map<int, node_state> states = md::CMachDef_IdAxisState_get(m->machdef());
  ASSERT_EQ(states.size(), 5u);
  for (int id = kXId; id <= kSecondaryId; ++id) EXPECT_EQ(states.count(id), 1u) << id;
}

}  // namespace
