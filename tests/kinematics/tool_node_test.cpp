// The tool node placed from a tool point and an angled head.
#include <k5ax/kinematics.h>

#include <gtest/gtest.h>

#include "support/near.h"
#include "support/scene_machine.h"

namespace {

using k5ax_test::chain;
using k5ax_test::kHandTolerance;
using k5ax_test::linear_node;
using k5ax_test::NodePtr;
using k5ax_test::plain_node;
using k5ax_test::Point;
using k5ax_test::SceneMachine;
using k5ax_test::tool_node;

// Tilted by 90 degrees about Y and turned by 90 degrees about Z, 100 to the joint and 50 beyond it.
angled_head quarter_head() {
  angled_head head{};
  head.b_angle = math::m_pi2;
  head.c_angle = math::m_pi2;
  head.length1 = 100;
  head.length2 = 50;
  return head;
}

class ToolNode : public testing::Test {
 protected:
  ToolNode() : m(chain({linear_node(1, AXIS_X, Point(1, 0, 0)), tool})) {}

  const NodePtr tool = tool_node(4, Point(), quarter_head());
  SceneMachine m;
};

// The origin goes 50 down: (0, 0, -50); tilted by 90 degrees about Y, which takes (x, y, z) to (z, y, -x):
// (-50, 0, 0); 100 down: (-50, 0, -100); turned by 90 degrees about Z, which takes (x, y, z) to (-y, x, z):
// (0, -50, -100); and by minus the tool point (1, 2, 3): (-1, -52, -103).
TEST_F(ToolNode, CarriesItsOriginBackAlongTheHead) {
  CMachDef_ToolNode_matrix_Set(&m.machdef(), Point(1, 2, 3));
  EXPECT_NEAR_POINT(m.shift(tool), Point(-1, -52, -103), kHandTolerance);
}

TEST_F(ToolNode, TurnsByTiltThenTurn) {
  CMachDef_ToolNode_matrix_Set(&m.machdef(), Point(1, 2, 3));
  // X by the tilt to -Z, which the turn leaves; Y by the turn to -X; Z by the tilt to X and by the turn to Y.
  const Geometry::Matrix& tool_to_parent = m.transform(tool);
  EXPECT_NEAR_POINT(tool_to_parent.TransformDirection(Point(1, 0, 0)), Point(0, 0, -1), kHandTolerance);
  EXPECT_NEAR_POINT(tool_to_parent.TransformDirection(Point(0, 1, 0)), Point(-1, 0, 0), kHandTolerance);
  EXPECT_NEAR_POINT(tool_to_parent.TransformDirection(Point(0, 0, 1)), Point(0, 1, 0), kHandTolerance);
}

TEST_F(ToolNode, StoresTheToolPointInItsHead) {
  CMachDef_ToolNode_matrix_Set(&m.machdef(), Point(1, 2, 3));
  EXPECT_NEAR_POINT(m.machdef().tool_node()->offset, Point(1, 2, 3), 0);
}

TEST_F(ToolNode, KeepsValueFlagsAndTheRestOfItsHead) {
  m.twin(tool)->value(5);
  m.twin(tool)->flags(6);
  CMachDef_ToolNode_matrix_Set(&m.machdef(), Point(1, 2, 3));
  EXPECT_EQ(m.value(tool), 5);
  EXPECT_EQ(m.twin(tool)->flags(), 6u);
  EXPECT_EQ(m.machdef().tool_node()->b_angle, math::m_pi2);
  EXPECT_EQ(m.machdef().tool_node()->length1, 100);
  EXPECT_EQ(m.machdef().tool_node()->length2, 50);
}

TEST_F(ToolNode, UsesItsOwnHeadAndNotTheMachines) {
  m.machdef().head().length1 = 7000;
  m.machdef().head().offset = Point(400, 500, 600);
  CMachDef_ToolNode_matrix_Set(&m.machdef(), Point(1, 2, 3));
  EXPECT_NEAR_POINT(m.shift(tool), Point(-1, -52, -103), kHandTolerance);
  EXPECT_NEAR_POINT(m.machdef().head().offset, Point(400, 500, 600), 0);
}

TEST_F(ToolNode, IsPlacedAnewAndNotMovedOn) {
  CMachDef_ToolNode_matrix_Set(&m.machdef(), Point(10, 20, 30));
  CMachDef_ToolNode_matrix_Set(&m.machdef(), Point(1, 2, 3));
  EXPECT_NEAR_POINT(m.shift(tool), Point(-1, -52, -103), kHandTolerance);
}

TEST_F(ToolNode, IsPlacedFromThreeNumbersInTheSameWay) {
  CMachDef_ToolNode_matrix_SetXYZ(&m.machdef(), 1, 2, 3);
  EXPECT_NEAR_POINT(m.shift(tool), Point(-1, -52, -103), kHandTolerance);
  EXPECT_NEAR_POINT(m.machdef().tool_node()->offset, Point(1, 2, 3), 0);
}

TEST_F(ToolNode, IsPlacedThroughANodePointerInTheSameWay) {
  k5axSgToolNodeMatrixSet(m.twin(tool), Point(1, 2, 3));
  EXPECT_NEAR_POINT(m.shift(tool), Point(-1, -52, -103), kHandTolerance);
  EXPECT_NEAR_POINT(m.machdef().tool_node()->offset, Point(1, 2, 3), 0);
}

TEST(ToolNodeWithoutAHead, IsTheTranslationByMinusTheToolPoint) {
  const NodePtr tool = tool_node(4);
  SceneMachine m(tool);
  CMachDef_ToolNode_matrix_SetXYZ(&m.machdef(), 1, 2, 3);
  EXPECT_NEAR_MATRIX(m.transform(tool), Geometry::Translate(Point(-1, -2, -3)), 0);
}

TEST(ToolNodeWithoutAHead, IsTheIdentityAtTheOrigin) {
  const NodePtr tool = tool_node(4, Point(1, 2, 3));
  SceneMachine m(tool);
  CMachDef_ToolNode_matrix_SetXYZ(&m.machdef(), 0, 0, 0);
  EXPECT_NEAR_MATRIX(m.transform(tool), Geometry::Matrix(), 0);
}

TEST(ToolNodeRule, LeavesOtherNodesAlone) {
  const NodePtr axis = linear_node(1, AXIS_X, Point(1, 0, 0), 0, 10);
  const NodePtr plain = plain_node(2, Geometry::Translate(Point(4, 5, 6)));
  k5axSgToolNodeMatrixSet(axis, Point(1, 2, 3));
  k5axSgToolNodeMatrixSet(plain, Point(1, 2, 3));
  k5axSgToolNodeMatrixSet(NodePtr(), Point(1, 2, 3));
  EXPECT_NEAR_MATRIX(axis->transform(), Geometry::Translate(Point(10, 0, 0)), 0);
  EXPECT_NEAR_MATRIX(plain->transform(), Geometry::Translate(Point(4, 5, 6)), 0);
}

TEST(ToolNodeRule, DoesNothingWithoutAMachineOrAToolNode) {
  CMachDef_ToolNode_matrix_Set(nullptr, Point(1, 2, 3));
  CMachDef_ToolNode_matrix_SetXYZ(nullptr, 1, 2, 3);

  const NodePtr x = linear_node(1, AXIS_X, Point(1, 0, 0), 0, 10);
  SceneMachine m(x);
  CMachDef_ToolNode_matrix_Set(&m.machdef(), Point(1, 2, 3));
  CMachDef_ToolNode_matrix_SetXYZ(&m.machdef(), 1, 2, 3);
  EXPECT_NEAR_MATRIX(m.transform(x), Geometry::Translate(Point(10, 0, 0)), 0);
}

}  // namespace
