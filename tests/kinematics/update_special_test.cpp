// Two Z axes at right angles: a machine that cannot change Z by the ordinary solve. The update then only
// places what a parallel pair lets it place, and reaches the height where the tool point already is.
#include <k5ax/kinematics.h>

#include <cmath>

#include <gtest/gtest.h>

#include "support/near.h"
#include "support/scene_machine.h"

namespace {

using k5ax_test::chain;
using k5ax_test::kDriven;
using k5ax_test::kDrivenAndMarked;
using k5ax_test::kFixedId;
using k5ax_test::kHandTolerance;
using k5ax_test::kMarked;
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

// A fixed turn about X: by a quarter it takes Z to -Y.
NodePtr turn_about_x(double angle) { return plain_node(kFixedId, Geometry::RotateAboutAxis(1, 0, 0, angle)); }

// The root of tree 0, with two branches: x, y, z and the tool, and a second Z axis under a fixed turn.
class TwoZ : public testing::Test {
 protected:
  NodePtr root(double angle_of_second) {
    const NodePtr n = plain_node(0);
    n->add_child(chain({x, y, z, tool}));
    n->add_child(chain({turn_about_x(angle_of_second), z2}));
    return n;
  }
  NodePtr perpendicular() { return root(math::m_pi2); }

  Point xyz_values(const SceneMachine& m) const { return Point(m.value(x), m.value(y), m.value(z)); }

  NodePtr x = linear_node(1, AXIS_X, kX, kDriven, 7);
  NodePtr y = linear_node(2, AXIS_Y, kY, kDriven, 8);
  NodePtr z = linear_node(3, AXIS_Z, kZ, kDrivenAndMarked, 9);
  NodePtr z2 = linear_node(5, AXIS_Z, kZ, 0, 11);
  NodePtr tool = tool_node(4);
};

TEST_F(TwoZ, AtRightAnglesReachTheirOwnHeightAndLeaveAllAtZero) {
  SceneMachine m(perpendicular());
  EXPECT_TRUE(m.update(Point(20, 30, 0)));
  EXPECT_NEAR_POINT(xyz_values(m), Point(0, 0, 0), 0);
}

TEST_F(TwoZ, AtRightAnglesReachNoOtherHeight) {
  SceneMachine m(perpendicular());
  EXPECT_FALSE(m.update(Point(20, 30, 40)));
}

TEST_F(TwoZ, AtRightAnglesAllowForAThousandthOfHeight) {
  SceneMachine m(perpendicular());
  EXPECT_TRUE(m.update(Point(20, 30, 0.00099)));
  EXPECT_TRUE(m.update(Point(20, 30, -0.00099)));
  EXPECT_FALSE(m.update(Point(20, 30, 0.00101)));
  EXPECT_FALSE(m.update(Point(20, 30, -0.00101)));
}

TEST_F(TwoZ, AtRightAnglesReachAHeightOffByExactlyAThousandth) {
  SceneMachine m(perpendicular());
  EXPECT_TRUE(m.update(Point(20, 30, 0.001)));
}

TEST_F(TwoZ, AtRightAnglesFailWithTheLinearAxesAtZero) {
  SceneMachine m(perpendicular());
  EXPECT_FALSE(m.update(Point(20, 30, 40)));
  EXPECT_NEAR_POINT(xyz_values(m), Point(0, 0, 0), 0);
  EXPECT_EQ(m.value(z2), 11);
}

TEST_F(TwoZ, AtRightAnglesFailWithTheRotariesWritten) {
  const NodePtr b = rotary_node(6, AXIS_B, HEAD, kY);
  const NodePtr c = rotary_node(8, AXIS_C, TABLE, kZ);
  const NodePtr n = perpendicular();
  n->add_child(b);
  SceneMachine m(n, c, b, c);
  EXPECT_FALSE(m.update(Point(20, 30, 40), Point(0.1, 0.2, 0.3)));
  EXPECT_EQ(m.value(b), 0.2);
  EXPECT_EQ(m.value(c), 0.3);
}

TEST_F(TwoZ, AlongTheSameLineAreTheOrdinaryCase) {
  SceneMachine m(root(0));
  EXPECT_TRUE(m.update(Point(20, 30, 40)));
  EXPECT_NEAR_POINT(xyz_values(m), Point(20, 30, 40), 0);
}

// At right angles within a thousandth: sin 0.0009 = 0.0009 and sin 0.0011 = 0.0011.
TEST_F(TwoZ, AreAtRightAnglesWithinAThousandth) {
  SceneMachine within(root(math::m_pi2 - 0.0009));
  EXPECT_FALSE(within.update(Point(20, 30, 40)));
  SceneMachine within_on_the_other_side(root(math::m_pi2 + 0.0009));
  EXPECT_FALSE(within_on_the_other_side.update(Point(20, 30, 40)));
}

// A transform that is no rotation, so that nothing rounds: Z becomes (1, 0, 0.001).
TEST_F(TwoZ, AreAtRightAnglesAtExactlyAThousandth) {
  Geometry::Matrix leaning;
  leaning.SetMatrix(1, 0, 0, 0, 1, 0, 1, 0, 0.001, 0, 0, 0);
  const NodePtr n = plain_node(0);
  n->add_child(chain({x, y, z, tool}));
  n->add_child(chain({plain_node(kFixedId, leaning), z2}));
  SceneMachine m(n);
  EXPECT_FALSE(m.update(Point(20, 30, 40)));
}

TEST_F(TwoZ, AreNotAtRightAnglesBeyondAThousandth) {
  SceneMachine beyond(root(math::m_pi2 - 0.0011));
  EXPECT_TRUE(beyond.update(Point(20, 30, 40)));
  SceneMachine beyond_on_the_other_side(root(math::m_pi2 + 0.0011));
  EXPECT_TRUE(beyond_on_the_other_side.update(Point(20, 30, 40)));
}

TEST_F(TwoZ, WithoutAMarkedAxisAreTheOrdinaryCase) {
  z->flags(kDriven);
  SceneMachine m(perpendicular());
  EXPECT_TRUE(m.update(Point(20, 30, 40)));
  EXPECT_NEAR_POINT(xyz_values(m), Point(20, 30, 40), 0);
}

TEST_F(TwoZ, WithAMarkOnAnAxisThatIsNotDrivenAreTheOrdinaryCase) {
  z->flags(kDriven);
  z2->flags(kMarked);
  SceneMachine m(perpendicular());
  EXPECT_TRUE(m.update(Point(20, 30, 40)));
}

TEST_F(TwoZ, AnyMarkedDrivenAxisMakesThemCount) {
  z->flags(kDriven);
  y->flags(kDrivenAndMarked);
  SceneMachine m(perpendicular());
  EXPECT_FALSE(m.update(Point(20, 30, 40)));
}

TEST_F(TwoZ, CountWhateverTheirModeIs) {
  md::sg::axis_node(z2.get())->mode(ROTARY);
  SceneMachine m(perpendicular());
  EXPECT_FALSE(m.update(Point(20, 30, 40)));
}

TEST_F(TwoZ, CountInTheSecondTreeToo) {
  SceneMachine m(chain({x, y, z, tool}), chain({turn_about_x(math::m_pi2), z2}));
  EXPECT_FALSE(m.update(Point(20, 30, 40)));
}

TEST_F(TwoZ, OneZAloneIsTheOrdinaryCase) {
  SceneMachine m(chain({x, y, z, tool}));
  EXPECT_TRUE(m.update(Point(20, 30, 40)));
}

// Without a driven Z the last driven linear axis is Y, marked. Its direction is taken through both Z nodes:
// the turn about X brings Y to Z, so they count as perpendicular.
TEST_F(TwoZ, AreComparedByTheLastDrivenAxisTakenThroughBoth) {
  y->flags(kDrivenAndMarked);
  z->flags(kMarked);
  SceneMachine m(perpendicular());
  // At its own height of 9 the special solve writes zeros where the ordinary one would write 20 and 30.
  EXPECT_TRUE(m.update(Point(20, 30, 9)));
  EXPECT_EQ(m.value(x), 0);
  EXPECT_EQ(m.value(y), 0);
}

// Deliberate: it is not the Z directions themselves that are compared. The turn about Y leaves Y alone, so
// the two do not count as perpendicular although their own directions are.
TEST_F(TwoZ, AreNotComparedByTheirOwnDirections) {
  y->flags(kDrivenAndMarked);
  z->flags(kMarked);
  const NodePtr n = plain_node(0);
  n->add_child(chain({x, y, z, tool}));
  n->add_child(chain({plain_node(kFixedId, Geometry::RotateAboutAxis(0, 1, 0, math::m_pi2)), z2}));
  SceneMachine m(n);
  EXPECT_TRUE(m.update(Point(20, 30, 9)));
  EXPECT_EQ(m.value(x), 20);
  EXPECT_EQ(m.value(y), 30);
}

// X and Y form a pair along X. X is marked and stays: from (8, 0, 0), where Y's 8 has brought the tool point,
// 12 to go. Z is still active and makes up for the half thousandth.
TEST_F(TwoZ, AtRightAnglesPlaceWhatAParallelPairLetsThem) {
  x->flags(kDrivenAndMarked);
  md::sg::axis_node(y.get())->SetAxisVector(kX);
  md::NodeAxis_transform_set(0, *md::sg::axis_node(y.get()), 8);
  SceneMachine m(perpendicular());
  EXPECT_TRUE(m.update(Point(20, 30, 0.0005)));
  EXPECT_NEAR_POINT(xyz_values(m), Point(12, 8, 0.0005), kHandTolerance);
}

// The distance is signed by the direction.
TEST_F(TwoZ, AtRightAnglesPlaceBackwardsToo) {
  x->flags(kDrivenAndMarked);
  md::sg::axis_node(y.get())->SetAxisVector(kX);
  md::NodeAxis_transform_set(0, *md::sg::axis_node(y.get()), 8);
  SceneMachine m(perpendicular());
  EXPECT_TRUE(m.update(Point(-20, 30, -0.0005)));
  EXPECT_NEAR_POINT(xyz_values(m), Point(-28, 8, -0.0005), kHandTolerance);
}

// At the place already: 0, and not the -0 that a saved machine would show.
TEST_F(TwoZ, AtRightAnglesLeaveAnAxisThatHasNoWayToGoAtZeroWithoutASign) {
  x->flags(kDrivenAndMarked);
  md::sg::axis_node(y.get())->SetAxisVector(kX);
  md::NodeAxis_transform_set(0, *md::sg::axis_node(y.get()), 8);
  SceneMachine m(perpendicular());
  EXPECT_TRUE(m.update(Point(8, 0, 0)));
  EXPECT_EQ(m.value(x), 0);
  EXPECT_FALSE(std::signbit(m.value(x)));
}

TEST_F(TwoZ, AtRightAnglesPlaceAnAxisThatPointsBackwards) {
  x = linear_node(1, AXIS_X, -kX, kDrivenAndMarked, 7);
  y = linear_node(2, AXIS_Y, kX, kDriven, 8);
  SceneMachine m(perpendicular());
  EXPECT_TRUE(m.update(Point(20, 30, 0)));
  EXPECT_NEAR_POINT(xyz_values(m), Point(-12, 8, 0), kHandTolerance);
}

// The plane is the one through X, Y, Z at right angles to the axis itself: along (0.6, 0.8, 0) the way from
// the origin to (20, 30, 0) is 0.6 * 20 + 0.8 * 30 = 36.
TEST_F(TwoZ, AtRightAnglesPlaceASkewAxisByItsOwnPlane) {
  x = linear_node(1, AXIS_X, Point(0.6, 0.8, 0), kDrivenAndMarked, 7);
  y = linear_node(2, AXIS_Y, Point(0.6, 0.8, 0), kDriven, 0);
  SceneMachine m(perpendicular());
  EXPECT_TRUE(m.update(Point(20, 30, 0)));
  EXPECT_NEAR_POINT(xyz_values(m), Point(36, 0, 0), kHandTolerance);
}

// With none of the pair marked both are inactive. X is dropped and keeps its value; Y is still written, with
// 0.
TEST_F(TwoZ, AtRightAnglesLeaveAnInactiveAxisOfThePairAtZero) {
  md::sg::axis_node(y.get())->SetAxisVector(kX);
  md::NodeAxis_transform_set(0, *md::sg::axis_node(y.get()), 8);
  SceneMachine m(perpendicular());
  EXPECT_TRUE(m.update(Point(20, 30, 0.0005)));
  EXPECT_NEAR_POINT(xyz_values(m), Point(7, 0, 0.0005), kHandTolerance);
}

TEST_F(TwoZ, AtRightAnglesPlaceAnAxisThatIsInNoPairToo) {
  // X and Z form the pair, along Z; Z is marked and X dropped, with its 7 below the tool point. Y, in no
  // pair, is active and goes to 30.
  md::sg::axis_node(x.get())->SetAxisVector(kZ);
  md::NodeAxis_transform_set(0, *md::sg::axis_node(x.get()), 7);
  SceneMachine m(perpendicular());
  EXPECT_TRUE(m.update(Point(20, 30, 7.0005)));
  EXPECT_NEAR_POINT(xyz_values(m), Point(7, 30, 0.0005), kHandTolerance);
}

TEST_F(TwoZ, AtRightAnglesWithAPairStillReachNoOtherHeight) {
  x->flags(kDrivenAndMarked);
  md::sg::axis_node(y.get())->SetAxisVector(kX);
  SceneMachine m(perpendicular());
  EXPECT_FALSE(m.update(Point(20, 30, 40)));
  EXPECT_EQ(m.value(x), 0);
}

// Which two of several Z nodes are compared: walking in order, a marked one goes to the very front of the
// list, any other to the back. The turns are about X, and `update` is false where the first two of the list
// are perpendicular.
class SeveralZ : public testing::Test {
 protected:
  struct Entry {
    double angle;
    unsigned int flags;
  };

  // The driven, marked axis that makes the Z nodes count is Y here, so that the list holds the entries alone.
  bool first_two_are_perpendicular(std::initializer_list<Entry> entries) {
    const NodePtr root = plain_node(0);
    const NodePtr y = linear_node(2, AXIS_Y, kY, kDrivenAndMarked);
    root->add_child(y);
    y->add_child(tool_node(4));
    int id = 10;
    for (const Entry& entry : entries)
      root->add_child(chain({turn_about_x(entry.angle), linear_node(++id, AXIS_Z, kZ, entry.flags)}));
    SceneMachine m(root);
    // At the height of the tool point: the ordinary solve writes 30, the special one 0.
    EXPECT_TRUE(m.update(Point(20, 30, 0)));
    return m.value(y) == 0;
  }
};

const double kQuarter = 1.5707963267948966;

TEST_F(SeveralZ, UnmarkedStandInTheOrderOfTheWalk) {
  EXPECT_TRUE(first_two_are_perpendicular({{0, 0}, {kQuarter, 0}, {0, 0}}));
  EXPECT_FALSE(first_two_are_perpendicular({{0, 0}, {0, 0}, {kQuarter, 0}}));
}

TEST_F(SeveralZ, AMarkedOneComesToTheFront) {
  // The list is third, first, second.
  EXPECT_FALSE(first_two_are_perpendicular({{0, 0}, {kQuarter, 0}, {0, kMarked}}));
  EXPECT_TRUE(first_two_are_perpendicular({{0, 0}, {0, 0}, {kQuarter, kMarked}}));
}

// Deliberate: the order of the list decides which two are compared, so the marked ones stand in reverse.
TEST_F(SeveralZ, TheLastMarkedOneIsTheVeryFirst) {
  // Third, second, first.
  EXPECT_FALSE(first_two_are_perpendicular({{kQuarter, kMarked}, {0, kMarked}, {0, kMarked}}));
  EXPECT_TRUE(first_two_are_perpendicular({{0, kMarked}, {0, kMarked}, {kQuarter, kMarked}}));
}

TEST_F(SeveralZ, UnmarkedOnesFollowTheMarkedOnesInTheOrderOfTheWalk) {
  // Second, first, third.
  EXPECT_TRUE(first_two_are_perpendicular({{kQuarter, 0}, {0, kMarked}, {0, 0}}));
  EXPECT_FALSE(first_two_are_perpendicular({{0, 0}, {0, kMarked}, {kQuarter, 0}}));
}

TEST_F(SeveralZ, OneEntryIsNoSpecialCase) { EXPECT_FALSE(first_two_are_perpendicular({{kQuarter, 0}})); }

TEST_F(SeveralZ, NoEntryIsNoSpecialCase) { EXPECT_FALSE(first_two_are_perpendicular({})); }

}  // namespace
