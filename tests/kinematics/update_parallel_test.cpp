// Two linear axes that move the same way: the update drops one of them, and the marks (flag bit value 2) say
// which.
#include <k5ax/kinematics.h>

#include <cmath>
#include <ostream>

#include <gtest/gtest.h>

#include "support/near.h"
#include "support/scene_machine.h"

namespace {

using k5ax_test::chain;
using k5ax_test::kDriven;
using k5ax_test::kDrivenAndMarked;
using k5ax_test::kFixedId;
using k5ax_test::kHandTolerance;
using k5ax_test::kX;
using k5ax_test::kY;
using k5ax_test::kZ;
using k5ax_test::linear_node;
using k5ax_test::NodePtr;
using k5ax_test::plain_node;
using k5ax_test::Point;
using k5ax_test::SceneMachine;
using k5ax_test::tool_node;

// Every axis stands at 7 before the call. A dropped axis keeps that and the tool point is measured with it;
// one that is still driven is zeroed for the measurement.
constexpr double kBefore = 7;

struct Case {
  const char* name;
  Point d_x, d_y, d_z;          // directions of the axes X, Y and Z
  bool mark_x, mark_y, mark_z;  // flag bit value 2
  bool reached;
  Point values;  // of X, Y and Z afterwards
};

std::ostream& operator<<(std::ostream& out, const Case& c) { return out << c.name; }

class ParallelAxes : public testing::TestWithParam<Case> {
 protected:
  static unsigned int flags(bool marked) { return marked ? kDrivenAndMarked : kDriven; }
};

TEST_P(ParallelAxes, TheMarksSayWhichOneIsDropped) {
  const Case& c = GetParam();
  const NodePtr x = linear_node(1, AXIS_X, c.d_x, flags(c.mark_x), kBefore);
  const NodePtr y = linear_node(2, AXIS_Y, c.d_y, flags(c.mark_y), kBefore);
  const NodePtr z = linear_node(3, AXIS_Z, c.d_z, flags(c.mark_z), kBefore);
  SceneMachine m(chain({x, y, z, tool_node(4)}));
  EXPECT_EQ(m.update(Point(20, 30, 40)), c.reached);
  EXPECT_NEAR_POINT(Point(m.value(x), m.value(y), m.value(z)), c.values, kHandTolerance);
}

// X and Y both along X, Z along Z. The dropped one leaves the tool point at (7, 0, 0): X gets 20 - 7, Y gets
// 30 - 0.
const Case kXAndY[] = {
    {"XMarked", kX, kX, kZ, true, false, false, true, {13, 7, 40}},
    {"YMarked", kX, kX, kZ, false, true, false, true, {7, 30, 40}},
    {"BothMarkedDropsTheSecond", kX, kX, kZ, true, true, false, true, {13, 7, 40}},
    {"NoneMarkedDropsTheFirst", kX, kX, kZ, false, false, false, true, {7, 30, 40}},
};
INSTANTIATE_TEST_SUITE_P(XAndY, ParallelAxes, testing::ValuesIn(kXAndY), testing::PrintToStringParamName());

// X and Z both along Z, Y along Y. The solve takes the direction of Z whether Z is dropped or not. With Z
// dropped the tool point is measured at (0, 0, 7), X gets the difference in x, 20, and nothing makes up for
// the height. With X dropped it is measured at (0, 0, 7) too, and Z gets 40 - 7.
const Case kXAndZ[] = {
    {"XMarked", kZ, kY, kZ, true, false, false, true, {20, 30, 7}},
    {"ZMarked", kZ, kY, kZ, false, false, true, true, {7, 30, 33}},
    {"BothMarkedDropsTheSecond", kZ, kY, kZ, true, false, true, true, {20, 30, 7}},
    {"NoneMarkedDropsTheFirst", kZ, kY, kZ, false, false, false, true, {7, 30, 33}},
};
INSTANTIATE_TEST_SUITE_P(XAndZ, ParallelAxes, testing::ValuesIn(kXAndZ), testing::PrintToStringParamName());

const Case kYAndZ[] = {
    {"YMarked", kX, kZ, kZ, false, true, false, true, {20, 30, 7}},
    {"ZMarked", kX, kZ, kZ, false, false, true, true, {20, 7, 33}},
    {"BothMarkedDropsTheSecond", kX, kZ, kZ, false, true, true, true, {20, 30, 7}},
    {"NoneMarkedDropsTheFirst", kX, kZ, kZ, false, false, false, true, {20, 7, 33}},
};
INSTANTIATE_TEST_SUITE_P(YAndZ, ParallelAxes, testing::ValuesIn(kYAndZ), testing::PrintToStringParamName());

// All three along Z. The pairs are met in the order X-Y, X-Z, Y-Z, and a pair with an axis that is no longer
// active ends the row. None marked: X-Y drops X and makes both inactive, which ends both rows, so Y and Z
// stay driven; the tool point is at (0, 0, 7). Y marked: X-Y drops X, X is inactive, Y-Z drops Z: two axes at
// 7, and only Y is driven. X marked: X-Y drops Y, X-Z drops Z. Z marked: X-Y drops X and makes Y inactive: Y
// and Z stay driven. X and Y marked: X-Y drops Y and leaves it active, X-Z drops Z and makes it inactive. All
// marked: the same two go. Y and Z marked: X-Y drops X, Y-Z drops Z.
const Case kAllThree[] = {
    {"NoneMarked", kZ, kZ, kZ, false, false, false, true, {7, 30, 33}},
    {"XMarked", kZ, kZ, kZ, true, false, false, true, {20, 7, 7}},
    {"YMarked", kZ, kZ, kZ, false, true, false, true, {7, 30, 7}},
    {"ZMarked", kZ, kZ, kZ, false, false, true, true, {7, 30, 33}},
    {"XAndYMarked", kZ, kZ, kZ, true, true, false, true, {20, 7, 7}},
    {"XAndZMarked", kZ, kZ, kZ, true, false, true, true, {20, 7, 7}},
    {"YAndZMarked", kZ, kZ, kZ, false, true, true, true, {7, 30, 7}},
    {"AllMarked", kZ, kZ, kZ, true, true, true, true, {20, 7, 7}},
};
INSTANTIATE_TEST_SUITE_P(AllThree, ParallelAxes, testing::ValuesIn(kAllThree),
                         testing::PrintToStringParamName());

// No two are parallel: marks change nothing.
const Case kNone[] = {
    {"NoneMarked", kX, kY, kZ, false, false, false, true, {20, 30, 40}},
    {"AllMarked", kX, kY, kZ, true, true, true, true, {20, 30, 40}},
};
INSTANTIATE_TEST_SUITE_P(NoPair, ParallelAxes, testing::ValuesIn(kNone), testing::PrintToStringParamName());

// Which way along the common line an axis points has no say; what counts is the size of the product. Products
// within 0.001 of 1: an angle of 0.0447 has a cosine of 1 - 0.000999, one of 0.0448 of 1 - 0.001003.
const Case kNearlyParallel[] = {
    {"Opposite", kX, -kX, kZ, true, false, false, true, {13 + 14, 7, 40}},
    {"JustWithin",
     kX,
     {std::cos(0.0447), std::sin(0.0447), 0},
     kZ,
     true,
     false,
     false,
     true,
     {20 - 7 * std::cos(0.0447), 7, 40}},
    {"JustBeyond", kX, {std::cos(0.0448), std::sin(0.0448), 0}, kZ, true, false, false, true, {20, 30, 40}},
    // Each but 0.04 from the next, and X and Y too far apart: X and Z form a pair that leaves Z inactive, so
    // Y and Z are not compared any more, and Y stays driven. From (0, 0, 7) Z takes 33 / cos 0.04 to the
    // height.
    {"AChainThatAnInactiveAxisEnds",
     kZ,
     {std::sin(0.08), 0, std::cos(0.08)},
     {std::sin(0.04), 0, std::cos(0.04)},
     false,
     false,
     false,
     true,
     {7, 30, 33 / std::cos(0.04)}},
    // Directions are taken at their lengths: a product of 2 is not that of parallel unit vectors.
    {"OfLengthTwo", kX * 2, kX, kZ, true, false, false, true, {20, 30, 40}},
};
INSTANTIATE_TEST_SUITE_P(Nearly, ParallelAxes, testing::ValuesIn(kNearlyParallel),
                         testing::PrintToStringParamName());

// By its own direction X is along X; the fixed turn above it brings that to -Z, and Z is its pair.
TEST(ParallelAxesInTheWorld, AreFoundByTheirWorldDirections) {
  const NodePtr quarter_turn = plain_node(kFixedId, Geometry::RotateAboutAxis(0, 1, 0, math::m_pi2));
  const NodePtr x = linear_node(1, AXIS_X, kX, kDriven, kBefore);
  const NodePtr y = linear_node(2, AXIS_Y, kY, kDriven, kBefore);
  const NodePtr z = linear_node(3, AXIS_Z, kZ, kDrivenAndMarked, kBefore);
  quarter_turn->add_child(x);
  y->add_child(quarter_turn);
  SceneMachine m(chain({z, y}), NodePtr());
  EXPECT_TRUE(m.update(Point(20, 30, 40)));
  EXPECT_EQ(m.value(x), kBefore);
  EXPECT_NEAR_POINT(Point(0, m.value(y), m.value(z)), Point(0, 30, 40), kHandTolerance);
}

TEST(ParallelAxesInTheWorld, AreNotFoundByTheirOwnDirections) {
  // Both along Z by their own directions, at right angles in the world.
  const NodePtr quarter_turn = plain_node(kFixedId, Geometry::RotateAboutAxis(0, 1, 0, math::m_pi2));
  const NodePtr x = linear_node(1, AXIS_X, kZ, kDriven, kBefore);
  const NodePtr z = linear_node(3, AXIS_Z, kZ, kDriven, kBefore);
  SceneMachine m(chain({z, quarter_turn, x, tool_node(4)}));
  EXPECT_TRUE(m.update(Point(20, 0, 40)));
  EXPECT_NEAR_POINT(Point(m.value(x), 0, m.value(z)), Point(20, 0, 40), kHandTolerance);
}

TEST(ParallelAxesWithAnId, ThatIsSharedTakeTheOtherNodeOutOfTheZeroing) {
  // Y is dropped, and with it the id 7 that Z has too: Z is measured where it stood, at 7, and then written.
  const NodePtr x = linear_node(1, AXIS_X, kX, kDrivenAndMarked, kBefore);
  const NodePtr y = linear_node(7, AXIS_Y, kX, kDriven, kBefore);
  const NodePtr z = linear_node(7, AXIS_Z, kZ, kDriven, kBefore);
  SceneMachine m(chain({x, y, z, tool_node(4)}));
  EXPECT_TRUE(m.update(Point(20, 30, 40)));
  EXPECT_NEAR_POINT(Point(m.value(x), m.value(y), m.value(z)), Point(13, 7, 33), kHandTolerance);
}

TEST(ParallelAxesWithAnId, ThatAnUndrivenAxisSharesTakeItOutOfTheZeroingToo) {
  const NodePtr x = linear_node(1, AXIS_X, kX, kDrivenAndMarked, kBefore);
  const NodePtr y = linear_node(7, AXIS_Y, kX, kDriven, kBefore);
  const NodePtr z = linear_node(3, AXIS_Z, kZ, kDriven, kBefore);
  const NodePtr follower = linear_node(7, AXIS_Y, kY, 0, kBefore);
  SceneMachine m(chain({x, y, z, follower, tool_node(4)}));
  EXPECT_TRUE(m.update(Point(20, 30, 40)));
  EXPECT_EQ(m.value(follower), kBefore);
}

TEST(ParallelAxesDropped, KeepTheirTransformsToo) {
  const NodePtr x = linear_node(1, AXIS_X, kX, kDrivenAndMarked, kBefore);
  const NodePtr y = linear_node(2, AXIS_Y, kX, kDriven, kBefore);
  SceneMachine m(chain({x, y, linear_node(3, AXIS_Z, kZ), tool_node(4)}));
  m.update(Point(20, 30, 40));
  EXPECT_NEAR_MATRIX(m.transform(y), Geometry::Translate(Point(7, 0, 0)), 0);
}

TEST(ParallelAxesOfWhichOneIsUnflagged, AreNoPair) {
  // An axis that the update does not drive is not compared at all; the mark on it means nothing here.
  const NodePtr x = linear_node(1, AXIS_X, kX, kDriven, kBefore);
  const NodePtr y = linear_node(2, AXIS_Y, kX, k5ax_test::kMarked, kBefore);
  const NodePtr z = linear_node(3, AXIS_Z, kZ, kDriven, kBefore);
  SceneMachine m(chain({x, y, z, tool_node(4)}));
  EXPECT_TRUE(m.update(Point(20, 30, 40)));
  EXPECT_NEAR_POINT(Point(m.value(x), m.value(y), m.value(z)), Point(13, 7, 40), kHandTolerance);
}

}  // namespace
