// The scene graph posed for machine coordinates: what is driven, in which order, and where the linear axes
// go.
#include <k5ax/kinematics.h>

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "support/near.h"
#include "support/scene_machine.h"

namespace {

using k5ax_test::chain;
using k5ax_test::kDriven;
using k5ax_test::kFixedId;
using k5ax_test::kHandTolerance;
using k5ax_test::kX;
using k5ax_test::kY;
using k5ax_test::kZ;
using k5ax_test::linear_node;
using k5ax_test::NodePtr;
using k5ax_test::plain_node;
using k5ax_test::Point;
using k5ax_test::rotary_node;
using k5ax_test::SceneMachine;
using k5ax_test::shift_node;
using k5ax_test::tool_node;

const Point kLevel(0.6, 0.8, 0);  // parallel to no axis

// Three linear axes at 7, 8 and 9, so that it shows which of them the update has touched. The tool and what
// carries it hang under z.
class Update : public testing::Test {
 protected:
  const NodePtr x = linear_node(1, AXIS_X, kX, kDriven, 7);
  const NodePtr y = linear_node(2, AXIS_Y, kY, kDriven, 8);
  const NodePtr z = linear_node(3, AXIS_Z, kZ, kDriven, 9);
  const NodePtr tool = tool_node(4);

  Point xyz_values(const SceneMachine& m) const { return Point(m.value(x), m.value(y), m.value(z)); }
};

TEST_F(Update, BringsTheToolPointToXyz) {
  SceneMachine m(chain({x, y, z, tool}));
  EXPECT_TRUE(m.update(Point(10, 20, 30)));
  EXPECT_NEAR_POINT(xyz_values(m), Point(10, 20, 30), 0);
}

TEST_F(Update, WritesTheTransformsWithTheValues) {
  SceneMachine m(chain({x, y, z, tool}));
  m.update(Point(10, 20, 30));
  EXPECT_NEAR_MATRIX(m.transform(x), Geometry::Translate(Point(10, 0, 0)), 0);
  EXPECT_NEAR_MATRIX(m.transform(y), Geometry::Translate(Point(0, 20, 0)), 0);
  EXPECT_NEAR_MATRIX(m.transform(z), Geometry::Translate(Point(0, 0, 30)), 0);
}

// The tool node carries its origin by minus the tool point: the linear axes make up for it.
TEST_F(Update, MakesUpForTheToolPoint) {
  const NodePtr long_tool = tool_node(4, Point(1, 2, 3));
  SceneMachine m(chain({x, y, z, long_tool}));
  m.update(Point(10, 20, 30));
  EXPECT_NEAR_POINT(xyz_values(m), Point(11, 22, 33), 0);
}

TEST_F(Update, MakesUpForFixedOffsetsInBothTrees) {
  const NodePtr offset0 = shift_node(kFixedId, Point(1, 2, 3));
  const NodePtr offset1 = shift_node(kFixedId, Point(4, 4, 4));
  SceneMachine m(chain({x, y, z, offset0, tool}), offset1);
  m.update(Point(10, 20, 30));
  EXPECT_NEAR_POINT(xyz_values(m), Point(5, 14, 23), 0);
}

TEST_F(Update, CarriesTheToolPointThroughTheSecondTreeFromLeafToRoot) {
  // (5, 0, 0) from the leaf first, then turned by a quarter about Z at the root: (0, 5, 0).
  const NodePtr quarter_turn = plain_node(kFixedId, Geometry::RotateAboutAxis(0, 0, 1, math::m_pi2));
  const NodePtr leaf = shift_node(kFixedId, Point(5, 0, 0));
  SceneMachine m(chain({x, y, z, tool}), chain({quarter_turn, leaf}));
  m.update(Point(10, 20, 30));
  EXPECT_NEAR_POINT(xyz_values(m), Point(10, 15, 30), kHandTolerance);
}

TEST_F(Update, TakesTheFirstLeafOfTheSecondTree) {
  const NodePtr root = plain_node(0);
  root->add_child(shift_node(kFixedId, Point(5, 0, 0)));
  root->add_child(shift_node(kFixedId, Point(0, 6, 0)));
  SceneMachine m(chain({x, y, z, tool}), root);
  m.update(Point(10, 20, 30));
  EXPECT_NEAR_POINT(xyz_values(m), Point(5, 20, 30), 0);
}

TEST_F(Update, DrivesLinearAxesInTheSecondTree) {
  SceneMachine m(chain({z, tool}), chain({plain_node(0), x, y}));
  EXPECT_TRUE(m.update(Point(10, 20, 30)));
  EXPECT_NEAR_POINT(xyz_values(m), Point(10, 20, 30), 0);
}

TEST_F(Update, WithoutASecondTreeTakesItAsTheIdentity) {
  SceneMachine m(chain({x, y, z, tool}));
  ASSERT_FALSE(m.machdef().SG()[1]);
  EXPECT_TRUE(m.update(Point(10, 20, 30)));
  EXPECT_NEAR_POINT(xyz_values(m), Point(10, 20, 30), 0);
}

TEST_F(Update, WithoutAToolNodeTakesItAsTheIdentity) {
  SceneMachine m(chain({x, y, z}), shift_node(kFixedId, Point(5, 0, 0)));
  ASSERT_FALSE(m.machdef().tool_node());
  EXPECT_TRUE(m.update(Point(10, 20, 30)));
  EXPECT_NEAR_POINT(xyz_values(m), Point(5, 20, 30), 0);
}

// The tool point hangs 100 below the swivel axis B. At +90 degrees, which takes (x, y, z) to (z, y, -x), it
// stands at (-100, 0, 0): measured so, in this very call.
TEST_F(Update, SetsAHeadRotaryBeforeTheToolPointIsMeasured) {
  const NodePtr b = rotary_node(5, AXIS_B, HEAD, kY);
  const NodePtr long_tool = tool_node(4, Point(0, 0, 100));
  SceneMachine m(chain({x, y, z, b, long_tool}), NodePtr(), b);
  EXPECT_TRUE(m.update(Point(10, 20, 30), Point(0, math::m_pi2, 0)));
  EXPECT_NEAR_POINT(xyz_values(m), Point(110, 20, 30), kHandTolerance);
  EXPECT_EQ(m.value(b), math::m_pi2);
}

// The tool point stands at (5, 0, 0) and the table at 0 when it is measured, whatever the table's new angle.
TEST_F(Update, SetsATableRotaryAfterTheToolPointIsMeasured) {
  const NodePtr c = rotary_node(5, AXIS_C, TABLE, kZ);
  SceneMachine m(chain({x, y, z, shift_node(kFixedId, Point(5, 0, 0)), tool}), c, c);
  EXPECT_TRUE(m.update(Point(10, 20, 30), Point(0, 0, math::m_pi2)));
  EXPECT_NEAR_POINT(xyz_values(m), Point(5, 20, 30), 0);
  EXPECT_EQ(m.value(c), math::m_pi2);
}

// Deliberate: the second call finds the table where the first has left it, so the tool point is measured at
// (0, 5, 0).
TEST_F(Update, MeasuresTheToolPointWithTheTableWhereTheLastCallLeftIt) {
  const NodePtr c = rotary_node(5, AXIS_C, TABLE, kZ);
  SceneMachine m(chain({x, y, z, shift_node(kFixedId, Point(5, 0, 0)), tool}), c, c);
  m.update(Point(10, 20, 30), Point(0, 0, math::m_pi2));
  m.update(Point(10, 20, 30), Point(0, 0, 0.3));
  EXPECT_NEAR_POINT(xyz_values(m), Point(10, 15, 30), kHandTolerance);
  EXPECT_EQ(m.value(c), 0.3);
}

TEST_F(Update, PosesForItselfAfterTheHostHasZeroedTheTable) {
  const NodePtr c = rotary_node(5, AXIS_C, TABLE, kZ);
  SceneMachine m(chain({x, y, z, shift_node(kFixedId, Point(5, 0, 0)), tool}), c, c);
  m.update(Point(-3, 50, 4), Point(0, 0, math::m_pi2));
  k5axSgNode_value_set2(0, m.twin(c).get(), 0);
  m.update(Point(10, 20, 30), Point(0, 0, math::m_pi2));
  EXPECT_NEAR_POINT(xyz_values(m), Point(5, 20, 30), 0);
}

// Deliberate: initialise sets the identity, while an axis off the origin holds minus its base point at its
// zero pose, which the fixed node on the root side makes up for. So initialise leaves the tool point off by
// the base point.
TEST_F(Update, InitialiseIsNoZeroPoseForATableOffTheOrigin) {
  const Point base(20, 0, 0);
  const NodePtr c = rotary_node(5, AXIS_C, TABLE, kZ, base);
  SceneMachine m(chain({x, y, z, tool}), chain({shift_node(kFixedId, base), c}), c);
  m.update(Point(10, 20, 30));
  EXPECT_NEAR_POINT(xyz_values(m), Point(10, 20, 30), 0);
  m.twin(c)->initialise(false);
  m.update(Point(10, 20, 30));
  EXPECT_NEAR_POINT(xyz_values(m), Point(-10, 20, 30), 0);
}

// With the linear axes placed and the table at its new angle, the tool point carried through both trees is X,
// Y, Z turned about the table's own line: (10, 20, 30) about the line through (20, 0) by 90 degrees is (0,
// -10, 30).
TEST_F(Update, LeavesTheToolPointOnXyzTurnedByTheTable) {
  const Point base(20, 0, 0);
  const NodePtr c = rotary_node(5, AXIS_C, TABLE, kZ, base);
  const NodePtr back = shift_node(kFixedId, base);
  SceneMachine m(chain({x, y, z, shift_node(kFixedId, Point(5, -6, 7)), tool}), chain({back, c}), c);
  m.update(Point(10, 20, 30), Point(0, 0, math::m_pi2));
  const Point p_mach = Point() * m.transform(tool) * Geometry::Translate(Point(5, -6, 7)) * m.transform(z) *
                       m.transform(y) * m.transform(x);
  EXPECT_NEAR_POINT(p_mach, Point(10, 20, 30), kHandTolerance);
  EXPECT_NEAR_POINT(p_mach * m.transform(c) * m.transform(back), Point(0, -10, 30), kHandTolerance);
}

// Z is a quill on the swivelling head: with B at 30 degrees it points along (sin 30, 0, cos 30), so 10
// upwards is 10 / cos 30 along the quill, and X makes up for 10 tan 30.
TEST_F(Update, TakesTheDirectionOfZAtTheNewPoseOfTheHead) {
  const NodePtr b = rotary_node(5, AXIS_B, HEAD, kY);
  SceneMachine m(chain({x, y, b, z, tool}), NodePtr(), b);
  EXPECT_TRUE(m.update(Point(0, 0, 10), Point(0, k5ax_test::deg(30), 0)));
  EXPECT_NEAR_POINT(xyz_values(m), Point(-10 / std::sqrt(3.0), 0, 20 / std::sqrt(3.0)), kHandTolerance);
}

// Z in the second tree, on the table: its direction is taken through the table's former pose, A at 30
// degrees, which takes (0, 0, 1) to (0, -sin 30, cos 30).
TEST_F(Update, TakesTheDirectionOfZAtTheFormerPoseOfTheTable) {
  const NodePtr a = rotary_node(5, AXIS_A, TABLE, kX, Point(), k5ax_test::deg(30));
  SceneMachine m(chain({x, y, tool}), chain({a, z}), a);
  EXPECT_TRUE(m.update(Point(0, 0, 10), Point(1, 0, 0)));
  EXPECT_NEAR_POINT(xyz_values(m), Point(0, 10 / std::sqrt(3.0), 20 / std::sqrt(3.0)), kHandTolerance);
}

// Deliberate: X and Y are given the differences of the coordinates whatever their own directions are. Here X
// points along Y, and the tool point misses its place.
TEST_F(Update, GivesXAndYTheDifferencesWhateverTheirDirections) {
  const NodePtr odd_x = linear_node(1, AXIS_X, kY);
  const NodePtr odd_y = linear_node(2, AXIS_Y, -kX);
  SceneMachine m(chain({odd_x, odd_y, z, tool}));
  EXPECT_TRUE(m.update(Point(10, 20, 30)));
  EXPECT_EQ(m.value(odd_x), 10);
  EXPECT_EQ(m.value(odd_y), 20);
  EXPECT_NEAR_POINT(m.shift(odd_x), Point(0, 10, 0), 0);
}

// d . (I - P) with d of length 2 counts the length once more: 2 * 30. Only a host that stores a direction
// which is no unit vector meets it.
TEST_F(Update, TakesTheDirectionOfZAtItsLength) {
  const NodePtr long_z = linear_node(3, AXIS_Z, kZ * 2);
  SceneMachine m(chain({x, y, long_z, tool}));
  EXPECT_TRUE(m.update(Point(10, 20, 30)));
  EXPECT_NEAR(m.value(long_z), 60, kHandTolerance);
}

TEST_F(Update, AZAxisPointingDownGetsTheOppositeValue) {
  const NodePtr down = linear_node(3, AXIS_Z, -kZ);
  SceneMachine m(chain({x, y, down, tool}));
  EXPECT_TRUE(m.update(Point(10, 20, 30)));
  EXPECT_NEAR(m.value(down), -30, kHandTolerance);
  EXPECT_NEAR_POINT(m.shift(down), Point(0, 0, 30), kHandTolerance);
}

TEST_F(Update, GivesTheRotariesTheirAnglesByLetter) {
  for (const AXIS_LOCATION location : {HEAD, TABLE}) {
    for (const AXIS_TYPE letter : {AXIS_A, AXIS_B, AXIS_C}) {
      const NodePtr rotary = rotary_node(5, letter, location, kZ);
      SceneMachine m(chain({linear_node(1, AXIS_X, kX), linear_node(2, AXIS_Y, kY),
                            linear_node(3, AXIS_Z, kZ), rotary, tool_node(4)}),
                     NodePtr(), rotary);
      m.update(Point(10, 20, 30), Point(0.1, 0.2, 0.3));
      const double expected[] = {0.1, 0.2, 0.3};
      EXPECT_EQ(m.value(rotary), expected[letter]) << letter << location;
    }
  }
}

// Deliberate: the routing by letter is the same for both kinds of axis, so a rotary node of a linear letter
// takes the length as its angle.
TEST_F(Update, GivesARotaryOfALinearLetterTheLengthAsItsAngle) {
  const NodePtr rotary = rotary_node(5, AXIS_Y, TABLE, kZ);
  SceneMachine m(chain({x, y, z, tool}), rotary, rotary);
  m.update(Point(10, 0.25, 30), Point(0.1, 0.2, 0.3));
  EXPECT_EQ(m.value(rotary), 0.25);
}

TEST_F(Update, SkipsARotaryOfAnyOtherLetter) {
  for (const int letter : {std::numeric_limits<int>::min(), -1, 6, 7, std::numeric_limits<int>::max()}) {
    for (const AXIS_LOCATION location : {HEAD, TABLE}) {
      const NodePtr rotary = rotary_node(5, static_cast<AXIS_TYPE>(letter), location, kZ, Point(), 0.7);
      SceneMachine m(chain({linear_node(1, AXIS_X, kX), linear_node(2, AXIS_Y, kY),
                            linear_node(3, AXIS_Z, kZ), tool_node(4)}),
                     rotary, rotary);
      EXPECT_TRUE(m.update(Point(10, 20, 30), Point(0.1, 0.2, 0.3)));
      EXPECT_EQ(m.value(rotary), 0.7) << letter << location;
    }
  }
}

TEST_F(Update, SkipsARotaryThatSitsNowhere) {
  for (const AXIS_LOCATION location : {AXIS_LOCATION_INVALID_LOWEST, AXIS_LOCATION_INVALID_HIGHEST}) {
    const NodePtr rotary = rotary_node(5, AXIS_C, location, kZ, Point(), 0.7);
    SceneMachine m(chain({linear_node(1, AXIS_X, kX), linear_node(2, AXIS_Y, kY), linear_node(3, AXIS_Z, kZ),
                          tool_node(4)}),
                   rotary, rotary);
    EXPECT_TRUE(m.update(Point(10, 20, 30), Point(0.1, 0.2, 0.3)));
    EXPECT_EQ(m.value(rotary), 0.7) << location;
  }
}

TEST_F(Update, WritesBothRotariesWhereverEachSits) {
  for (const AXIS_LOCATION of_primary : {HEAD, TABLE}) {
    for (const AXIS_LOCATION of_secondary : {HEAD, TABLE}) {
      const NodePtr primary = rotary_node(5, AXIS_A, of_primary, kX);
      const NodePtr secondary = rotary_node(6, AXIS_C, of_secondary, kZ);
      SceneMachine m(chain({linear_node(1, AXIS_X, kX), linear_node(2, AXIS_Y, kY),
                            linear_node(3, AXIS_Z, kZ), tool_node(4)}),
                     chain({secondary, primary}), primary, secondary);
      m.update(Point(10, 20, 30), Point(0.1, 0.2, 0.3));
      EXPECT_EQ(m.value(primary), 0.1);
      EXPECT_EQ(m.value(secondary), 0.3);
    }
  }
}

TEST_F(Update, WritesRotaryTransformsWithTheirValues) {
  const NodePtr c = rotary_node(5, AXIS_C, TABLE, kZ, Point(20, 0, 0));
  SceneMachine m(chain({x, y, z, tool}), c, c);
  m.update(Point(), Point(0, 0, math::m_pi2));
  // Minus the base point, then the turn: (1, 0, 0) to (-19, 0, 0) to (0, -19, 0). No translation back.
  EXPECT_NEAR_POINT(kX * m.transform(c), Point(0, -19, 0), kHandTolerance);
}

TEST_F(Update, DrivesTheTwoRotariesWithoutAnyFlag) {
  const NodePtr c = rotary_node(5, AXIS_C, TABLE, kZ);
  ASSERT_EQ(c->flags(), 0u);
  SceneMachine m(chain({x, y, z, tool}), c, c);
  m.update(Point(), Point(0, 0, 0.3));
  EXPECT_EQ(m.value(c), 0.3);
}

TEST_F(Update, LeavesARotaryNodeThatIsNotOneOfTheTwo) {
  const NodePtr c = rotary_node(5, AXIS_C, HEAD, kZ, Point(), 0.7);
  c->flags(kDriven);
  SceneMachine m(chain({x, y, z, c, tool}));
  m.update(Point(10, 20, 30), Point(0, 0, 0.3));
  EXPECT_EQ(m.value(c), 0.7);
}

TEST_F(Update, SkipsAPlainNodeInPlaceOfARotary) {
  SceneMachine m(chain({x, y, z, tool}));
  const NodePtr other = shift_node(5, Point(1, 2, 3));
  m.machdef().SG_RotAxs()[0] = other;
  m.machdef().SG_RotAxs()[1] = m.twin(tool);
  EXPECT_TRUE(m.update(Point(10, 20, 30), Point(0.1, 0.2, 0.3)));
  EXPECT_EQ(other->value(), 0);
  EXPECT_NEAR_MATRIX(other->transform(), Geometry::Translate(Point(1, 2, 3)), 0);
}

TEST_F(Update, WritesANodeThatStandsForBothRotaries) {
  const NodePtr c = rotary_node(5, AXIS_C, TABLE, kZ);
  SceneMachine m(chain({x, y, z, tool}), c, c, c);
  EXPECT_TRUE(m.update(Point(10, 20, 30), Point(0.1, 0.2, 0.3)));
  EXPECT_EQ(m.value(c), 0.3);
}

TEST_F(Update, DoesNotLookAtLimits) {
  const NodePtr c = rotary_node(5, AXIS_C, TABLE, kZ);
  SceneMachine m(chain({x, y, z, tool}), c, c);
  // Every node of these machines has the limits -1 and 1.
  EXPECT_TRUE(m.update(Point(10, 20, 30), Point(0, 0, 5)));
  EXPECT_NEAR_POINT(xyz_values(m), Point(10, 20, 30), 0);
  EXPECT_EQ(m.value(c), 5);
}

TEST_F(Update, LeavesAnUnflaggedLinearAxisAndMeasuresWithIt) {
  const NodePtr free_y = linear_node(2, AXIS_Y, kY, 0, 8);
  SceneMachine m(chain({x, free_y, z, tool}));
  EXPECT_TRUE(m.update(Point(10, 20, 30)));
  EXPECT_EQ(m.value(free_y), 8);
  EXPECT_NEAR_POINT(Point(m.value(x), 0, m.value(z)), Point(10, 0, 30), 0);
}

TEST_F(Update, Value2AloneDoesNotMakeALinearAxisDriven) {
  const NodePtr marked_y = linear_node(2, AXIS_Y, kY, k5ax_test::kMarked, 8);
  SceneMachine m(chain({x, marked_y, z, tool}));
  EXPECT_TRUE(m.update(Point(10, 20, 30)));
  EXPECT_EQ(m.value(marked_y), 8);
}

TEST_F(Update, WithoutADrivenZReachesItsOwnHeightOnly) {
  const NodePtr free_z = linear_node(3, AXIS_Z, kZ, 0, 9);
  SceneMachine m(chain({x, y, free_z, tool}));
  EXPECT_TRUE(m.update(Point(10, 20, 9)));
  EXPECT_EQ(m.value(x), 10);
  EXPECT_EQ(m.value(y), 20);
  EXPECT_EQ(m.value(free_z), 9);
  EXPECT_FALSE(m.update(Point(10, 20, 30)));
}

TEST_F(Update, WithZLevelReachesItsOwnHeightAndLeavesZAtZero) {
  const NodePtr level_z = linear_node(3, AXIS_Z, kLevel, kDriven, 9);
  SceneMachine m(chain({x, y, level_z, tool}));
  EXPECT_TRUE(m.update(Point(10, 20, 0)));
  EXPECT_NEAR_POINT(Point(m.value(x), m.value(y), m.value(level_z)), Point(10, 20, 0), 0);
}

TEST_F(Update, WithZLevelMakesUpForTheToolPoint) {
  const NodePtr long_tool = tool_node(4, Point(1, 2, 3));
  SceneMachine m(chain({x, y, linear_node(3, AXIS_Z, kLevel), long_tool}));
  EXPECT_TRUE(m.update(Point(10, 20, -3)));
  EXPECT_EQ(m.value(x), 11);
  EXPECT_EQ(m.value(y), 22);
}

// A point lies in the plane within 1e-6.
TEST_F(Update, WithZLevelReachesAHeightOffByLessThan1e6) {
  SceneMachine m(chain({x, y, linear_node(3, AXIS_Z, kLevel), tool}));
  EXPECT_TRUE(m.update(Point(10, 20, 0.9e-6)));
  EXPECT_FALSE(m.update(Point(10, 20, 1.1e-6)));
  EXPECT_TRUE(m.update(Point(10, 20, -0.9e-6)));
  EXPECT_FALSE(m.update(Point(10, 20, -1.1e-6)));
}

TEST_F(Update, ThatFailsLeavesTheDrivenLinearAxesAtZero) {
  const NodePtr level_z = linear_node(3, AXIS_Z, kLevel, kDriven, 9);
  SceneMachine m(chain({x, y, level_z, tool}));
  EXPECT_FALSE(m.update(Point(10, 20, 30)));
  EXPECT_NEAR_POINT(Point(m.value(x), m.value(y), m.value(level_z)), Point(), 0);
  EXPECT_NEAR_MATRIX(m.transform(x), Geometry::Matrix(), 0);
}

TEST_F(Update, ThatFailsStillWritesHeadAndTableRotaries) {
  const NodePtr b = rotary_node(5, AXIS_B, HEAD, kY);
  const NodePtr c = rotary_node(6, AXIS_C, TABLE, kZ);
  SceneMachine m(chain({x, y, b, tool}), c, b, c);
  EXPECT_FALSE(m.update(Point(10, 20, 30), Point(0.1, 0.2, 0.3)));
  EXPECT_EQ(m.value(b), 0.2);
  EXPECT_EQ(m.value(c), 0.3);
}

TEST_F(Update, ThatFailsLeavesUnflaggedLinearAxes) {
  const NodePtr free_z = linear_node(3, AXIS_Z, kZ, 0, 9);
  SceneMachine m(chain({x, y, free_z, tool}));
  EXPECT_FALSE(m.update(Point(10, 20, 30)));
  EXPECT_EQ(m.value(free_z), 9);
}

// Deliberate: zeroing goes by the ids of the driven nodes, so an unflagged linear axis that shares such an id
// is zeroed with them. It is not written afterwards.
TEST_F(Update, ZeroesAnUnflaggedLinearAxisThatSharesTheIdOfADrivenOne) {
  const NodePtr follower = linear_node(1, AXIS_X, kX, 0, 50);
  SceneMachine m(chain({x, y, z, follower, tool}));
  EXPECT_TRUE(m.update(Point(10, 20, 30)));
  EXPECT_EQ(m.value(follower), 0);
  EXPECT_EQ(m.value(x), 10);
}

// The ids are listed in two places, one for few nodes and one for many: both sides of the border.
TEST_F(Update, ZeroesByTheIdsOfDrivenNodesHoweverManyThereAre) {
  const NodePtr follower = linear_node(1, AXIS_X, kX, 0, 50);
  const NodePtr stranger = linear_node(-5, AXIS_X, kX, 0, 50);
  chain({x, y, z, follower, stranger});
  NodePtr end = stranger;
  for (int count = 7; count <= 40; ++count) {
    const NodePtr driven =
        k5ax_test::axis_node(1000 - count, AXIS_DUMMY, HEAD, LINEAR, Point(), kX, kDriven, 7);
    end->add_child(driven);
    driven->add_child(tool);
    end = driven;
    SceneMachine m(x);
    EXPECT_TRUE(m.update(Point(10, 20, 30))) << count;
    EXPECT_EQ(m.value(follower), 0) << count;
    EXPECT_EQ(m.value(stranger), 50) << count;
    EXPECT_EQ(m.value(end), 0) << count;
  }
}

TEST_F(Update, ZeroesALinearAxisThatSharesTheIdOfAFlaggedRotary) {
  const NodePtr rotary = rotary_node(8, AXIS_A, HEAD, kX, Point(), 0.4);
  rotary->flags(kDriven);
  const NodePtr free_axis = linear_node(8, AXIS_Y, kY, 0, 50);
  SceneMachine m(chain({x, y, z, tool}), chain({rotary, free_axis}));
  EXPECT_TRUE(m.update(Point(10, 20, 30)));
  EXPECT_EQ(m.value(free_axis), 0);
}

TEST_F(Update, DoesNotZeroARotaryThatSharesTheIdOfADrivenLinearAxis) {
  const NodePtr rotary = rotary_node(1, AXIS_A, HEAD, kX, Point(), 0.4);
  SceneMachine m(chain({x, y, z, tool}), rotary);
  m.update(Point(10, 20, 30));
  EXPECT_EQ(m.value(rotary), 0.4);
}

// The last node of a letter is the one that is written; the others are zeroed by their ids.
TEST_F(Update, OfTwoDrivenNodesOfALetterWritesTheLastAndZeroesTheFirst) {
  const NodePtr first = linear_node(11, AXIS_X, kX, kDriven, 50);
  SceneMachine m(chain({first, x, y, z, tool}));
  EXPECT_TRUE(m.update(Point(10, 20, 30)));
  EXPECT_EQ(m.value(first), 0);
  EXPECT_EQ(m.value(x), 10);
}

TEST_F(Update, OfTwoDrivenNodesOfALetterTheOneInTheSecondTreeIsTheLast) {
  const NodePtr last = linear_node(11, AXIS_X, kX, kDriven, 50);
  SceneMachine m(chain({x, y, z, tool}), last);
  EXPECT_TRUE(m.update(Point(10, 20, 30)));
  EXPECT_EQ(m.value(x), 0);
  EXPECT_EQ(m.value(last), 10);
}

TEST_F(Update, ZeroesADrivenLinearAxisOfARotaryLetterAndDoesNotWriteIt) {
  const NodePtr odd = linear_node(11, AXIS_B, kY, kDriven, 50);
  SceneMachine m(chain({x, y, z, odd, tool}));
  EXPECT_TRUE(m.update(Point(10, 20, 30), Point(0.1, 0.2, 0.3)));
  EXPECT_EQ(m.value(odd), 0);
  EXPECT_EQ(m.value(y), 20);
}

// Any integer may stand in the letter.
TEST_F(Update, ZeroesADrivenLinearAxisOfAnyOtherLetter) {
  for (const int letter : {std::numeric_limits<int>::min(), -1, 6, std::numeric_limits<int>::max()}) {
    const NodePtr odd = linear_node(11, static_cast<AXIS_TYPE>(letter), kY, kDriven, 50);
    SceneMachine m(chain({linear_node(1, AXIS_X, kX), linear_node(2, AXIS_Y, kY), linear_node(3, AXIS_Z, kZ),
                          odd, tool_node(4)}));
    EXPECT_TRUE(m.update(Point(10, 20, 30))) << letter;
    EXPECT_EQ(m.value(odd), 0) << letter;
  }
}

TEST_F(Update, LeavesADrivenAxisNodeThatIsNeitherLinearNorRotary) {
  const NodePtr odd =
      k5ax_test::axis_node(11, AXIS_Y, HEAD, AXIS_MODE_INVALID_LOWEST, Point(), kY, kDriven, 50);
  SceneMachine m(chain({x, y, z, odd, tool}));
  EXPECT_TRUE(m.update(Point(10, 20, 30)));
  EXPECT_EQ(m.value(odd), 50);
  EXPECT_EQ(m.value(y), 20);
}

TEST_F(Update, ChangesNeitherIdsNorFlagsNorAxes) {
  const NodePtr c = rotary_node(5, AXIS_C, TABLE, kZ, Point(20, 0, 0));
  SceneMachine m(chain({x, y, z, tool}), c, c);
  m.update(Point(10, 20, 30), Point(0, 0, 0.3));
  const NodePtr now = m.twin(x);
  EXPECT_EQ(now->id(), 1);
  EXPECT_EQ(now->flags(), kDriven);
  EXPECT_NEAR_POINT(md::sg::axis_node(now.get())->GetAxisVector(), kX, 0);
  EXPECT_NEAR_POINT(md::sg::axis_node(m.twin(c).get())->GetBaseVector(), Point(20, 0, 0), 0);
}

TEST_F(Update, LeavesPlainNodesAndTheToolNode) {
  const NodePtr offset = shift_node(kFixedId, Point(1, 2, 3));
  const NodePtr long_tool = tool_node(4, Point(0, 0, 100));
  SceneMachine m(chain({x, y, z, offset, long_tool}));
  m.update(Point(10, 20, 30));
  EXPECT_NEAR_MATRIX(m.transform(offset), Geometry::Translate(Point(1, 2, 3)), 0);
  EXPECT_NEAR_MATRIX(m.transform(long_tool), Geometry::Translate(Point(0, 0, -100)), 0);
}

// The machine's flags word goes to every axis node as a selector that has no effect: B and C would be the
// ones to feel it.
TEST_F(Update, TheFlagsWordOfTheMachineHasNoEffect) {
  const NodePtr b = rotary_node(5, AXIS_B, HEAD, kY, Point(1, 2, 3));
  const NodePtr c = rotary_node(6, AXIS_C, TABLE, kZ, Point(4, 5, 6));
  SceneMachine without(chain({x, y, z, b, tool}), c, b, c);
  for (const unsigned int flags : {4u, 7u, 0xffffffffu}) {
    const NodePtr b2 = rotary_node(5, AXIS_B, HEAD, kY, Point(1, 2, 3));
    const NodePtr c2 = rotary_node(6, AXIS_C, TABLE, kZ, Point(4, 5, 6));
    SceneMachine with(chain({linear_node(1, AXIS_X, kX), linear_node(2, AXIS_Y, kY),
                             linear_node(3, AXIS_Z, kZ), b2, tool_node(4)}),
                      c2, b2, c2);
    with.machdef().flags(flags);
    with.update(Point(10, 20, 30), Point(0.1, 0.2, 0.3));
    // From the table's zero pose each time.
    k5axSgNode_value_set2(flags, without.twin(c).get(), 0);
    without.update(Point(10, 20, 30), Point(0.1, 0.2, 0.3));
    EXPECT_NEAR_MATRIX(with.transform(b2), without.transform(b), 0);
    EXPECT_NEAR_MATRIX(with.transform(c2), without.transform(c), 0);
    EXPECT_EQ(with.value(b2), 0.2);
    EXPECT_EQ(with.value(c2), 0.3);
  }
}

// A machine whose trees were set by hand and that was not cloned has no lists yet.
class UpdateWithoutLists : public Update {
 protected:
  UpdateWithoutLists() {
    chain({x, y, z, b, tool});
    m_machdef.SG()[0] = x;
    m_machdef.SG()[1] = c;
    m_machdef.SG_RotAxs()[0] = b;
    m_machdef.SG_RotAxs()[1] = c;
    m_machdef.tool_node(boost::dynamic_pointer_cast<md::sg::tnode<angled_head>>(tool));
  }

  const NodePtr b = rotary_node(5, AXIS_B, HEAD, kY);
  const NodePtr c = rotary_node(6, AXIS_C, TABLE, kZ);
  md::CMachDef m_machdef;
};

TEST_F(UpdateWithoutLists, SucceedsAndWritesTheHeadRotaries) {
  EXPECT_TRUE(md::UpdateNodeAxes_(&m_machdef, Point(10, 20, 30), Point(0.1, 0.2, 0.3)));
  EXPECT_EQ(b->value(), 0.2);
}

TEST_F(UpdateWithoutLists, WritesNeitherTableRotariesNorLinearAxes) {
  md::UpdateNodeAxes_(&m_machdef, Point(10, 20, 30), Point(0.1, 0.2, 0.3));
  EXPECT_EQ(c->value(), 0);
  EXPECT_NEAR_POINT(Point(x->value(), y->value(), z->value()), Point(7, 8, 9), 0);
}

TEST(UpdateOfAnEmptyMachine, Succeeds) {
  md::CMachDef machdef;
  EXPECT_TRUE(md::UpdateNodeAxes_(&machdef, Point(10, 20, 30), Point(0.1, 0.2, 0.3)));
}

TEST(UpdateOfNoMachine, IsFalse) { EXPECT_FALSE(md::UpdateNodeAxes_(nullptr, Point(), Point())); }

TEST_F(Update, PosesASecondTreeThatIsAlone) {
  SceneMachine m(NodePtr(), chain({x, y, z}));
  EXPECT_TRUE(m.update(Point(10, 20, 30)));
  EXPECT_NEAR_POINT(xyz_values(m), Point(10, 20, 30), 0);
}

TEST_F(Update, ThroughAReferenceIsTheSame) {
  const NodePtr c = rotary_node(5, AXIS_C, TABLE, kZ);
  SceneMachine m(chain({x, y, z, tool}), c, c);
  EXPECT_TRUE(md::CMachDef_MachCoords2SG(m.machdef(), Point(10, 20, 30), Point(0.1, 0.2, 0.3)));
  EXPECT_NEAR_POINT(xyz_values(m), Point(10, 20, 30), 0);
  EXPECT_EQ(m.value(c), 0.3);
}

TEST_F(Update, ThroughAReferenceFailsAsWell) {
  SceneMachine m(chain({x, y, tool}));
  EXPECT_FALSE(md::CMachDef_MachCoords2SG(m.machdef(), Point(10, 20, 30), Point()));
}

// Any two rotary axes and what they have to stand at for (0.1, 0.2, 0.3).
struct RotaryPair {
  AXIS_TYPE first;
  double first_value;
  AXIS_TYPE second;
  double second_value;
};
constexpr RotaryPair kRotaryPairs[] = {{AXIS_A, 0.1, AXIS_B, 0.2}, {AXIS_B, 0.2, AXIS_C, 0.3}};

TEST_F(Update, ThroughSixNumbersTakesXyzThenAbc) {
  for (const RotaryPair& pair : kRotaryPairs) {
    const NodePtr first = rotary_node(5, pair.first, TABLE, kX);
    const NodePtr second = rotary_node(6, pair.second, TABLE, kY);
    SceneMachine m(chain({x, y, z, tool}), chain({first, second}), first, second);
    EXPECT_TRUE(UpdateNodeAxes_2(&m.machdef(), 10, 20, 30, 0.1, 0.2, 0.3));
    EXPECT_NEAR_POINT(xyz_values(m), Point(10, 20, 30), 0);
    EXPECT_EQ(m.value(first), pair.first_value);
    EXPECT_EQ(m.value(second), pair.second_value);
  }
}

TEST_F(Update, ThroughSixNumbersFailsAsWell) {
  SceneMachine m(chain({x, y, tool}));
  EXPECT_FALSE(UpdateNodeAxes_2(&m.machdef(), 10, 20, 30, 0, 0, 0));
}

TEST(UpdateOfNoMachine, IsFalseThroughSixNumbers) {
  EXPECT_FALSE(UpdateNodeAxes_2(nullptr, 1, 2, 3, 4, 5, 6));
}

TEST_F(Update, ThroughAnArrayIsOneWhenReached) {
  const double v[] = {10, 20, 30, 0.1, 0.2, 0.3};
  for (const RotaryPair& pair : kRotaryPairs) {
    const NodePtr first = rotary_node(5, pair.first, TABLE, kX);
    const NodePtr second = rotary_node(6, pair.second, TABLE, kY);
    SceneMachine m(chain({x, y, z, tool}), chain({first, second}), first, second);
    EXPECT_EQ(k5axCMachDef_MachCoords2SG(&m.machdef(), v), 1);
    EXPECT_NEAR_POINT(xyz_values(m), Point(10, 20, 30), 0);
    EXPECT_EQ(m.value(first), pair.first_value);
    EXPECT_EQ(m.value(second), pair.second_value);
  }
}

TEST_F(Update, ThroughAnArrayIsZeroWhenNotReached) {
  SceneMachine m(chain({x, y, tool}));
  const double v[] = {10, 20, 30, 0.1, 0.2, 0.3};
  EXPECT_EQ(k5axCMachDef_MachCoords2SG(&m.machdef(), v), 0);
}

TEST_F(Update, ThroughANullArrayIsZeroAndChangesNothing) {
  SceneMachine m(chain({x, y, z, tool}));
  EXPECT_EQ(k5axCMachDef_MachCoords2SG(&m.machdef(), nullptr), 0);
  EXPECT_NEAR_POINT(xyz_values(m), Point(7, 8, 9), 0);
}

TEST(UpdateOfNoMachine, IsZeroThroughAnArray) {
  const double v[] = {10, 20, 30, 0.1, 0.2, 0.3};
  EXPECT_EQ(k5axCMachDef_MachCoords2SG(nullptr, v), 0);
}

}  // namespace
