// Which selector the nodes are posed with. It has an effect only while the second angle convention is on,
// which turns a B axis the other way and a C axis half a turn further where the selector has bit value 4.
#include <k5ax/kinematics.h>

#include <gtest/gtest.h>

#include "scenegraph/angle_convention.h"
#include "support/near.h"
#include "support/scene_machine.h"

namespace {

using k5ax_test::chain;
using k5ax_test::kHandTolerance;
using k5ax_test::NodePtr;
using k5ax_test::Point;
using k5ax_test::rotary_node;
using k5ax_test::SceneMachine;
using k5ax_test::tool_node;

class Selector : public testing::Test {
 protected:
  Selector() : m(chain({b, tool_node(4)}), c, b, c) { md::sg::_angle_convention = true; }
  ~Selector() override { md::sg::_angle_convention = false; }

  const NodePtr b = rotary_node(5, AXIS_B, HEAD, Point(0, 1, 0));
  const NodePtr c = rotary_node(6, AXIS_C, TABLE, Point(0, 0, 1));
  SceneMachine m;
};

TEST_F(Selector, OfTheUpdateIsTheFlagsWordOfTheMachine) {
  m.machdef().flags(4);
  m.update(Point(), Point(0, 0.2, 0.3));
  EXPECT_NEAR_MATRIX(m.transform(b), Geometry::RotateAboutAxis(0, 1, 0, -0.2), kHandTolerance);
  EXPECT_NEAR_MATRIX(m.transform(c), Geometry::RotateAboutAxis(0, 0, 1, 0.3 + math::m_pi), kHandTolerance);
}

TEST_F(Selector, OfTheUpdateIsTheWholeFlagsWord) {
  m.machdef().flags(3);
  m.update(Point(), Point(0, 0.2, 0.3));
  EXPECT_NEAR_MATRIX(m.transform(b), Geometry::RotateAboutAxis(0, 1, 0, 0.2), kHandTolerance);
  EXPECT_NEAR_MATRIX(m.transform(c), Geometry::RotateAboutAxis(0, 0, 1, 0.3), kHandTolerance);
}

// Deliberate: states are set with the selector 0, whatever the flags word, so a restored pose is in the first
// convention.
TEST_F(Selector, OfStatesThatAreSetIsZero) {
  m.machdef().flags(4);
  md::CMachDef_IdAxisState_set(m.machdef(), {{5, {5, 0, 0.2}}, {6, {6, 0, 0.3}}});
  EXPECT_NEAR_MATRIX(m.transform(b), Geometry::RotateAboutAxis(0, 1, 0, 0.2), kHandTolerance);
  EXPECT_NEAR_MATRIX(m.transform(c), Geometry::RotateAboutAxis(0, 0, 1, 0.3), kHandTolerance);
}

TEST_F(Selector, OfASingleValueIsTheCallers) {
  k5axSgNode_value_set2(4, m.twin(b).get(), 0.2);
  EXPECT_NEAR_MATRIX(m.transform(b), Geometry::RotateAboutAxis(0, 1, 0, -0.2), kHandTolerance);
  m.machdef().flags(4);
  k5axSgNode_value_set2(0, m.twin(b).get(), 0.2);
  EXPECT_NEAR_MATRIX(m.transform(b), Geometry::RotateAboutAxis(0, 1, 0, 0.2), kHandTolerance);
}

}  // namespace
