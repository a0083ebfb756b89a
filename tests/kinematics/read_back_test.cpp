// Machine coordinates read back out of the scene graph.
#include <k5ax/kinematics.h>

#include <gtest/gtest.h>

#include "support/near.h"
#include "support/scene_machine.h"

namespace {

using k5ax_test::axis_node;
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

Point xyz_of(md::CMachDef& machdef) {
  Point xyz(101, 102, 103);
  Point abc;
  md::CMachDef_SG2MachCoords(machdef, xyz, abc);
  return xyz;
}

// What the components of abc were beforehand shows which of them were written.
Point abc_of(md::CMachDef& machdef) {
  Point xyz;
  Point abc(101, 102, 103);
  md::CMachDef_SG2MachCoords(machdef, xyz, abc);
  return abc;
}

// The tool at the origin and a second tree of one branch.
Point xyz_through(std::initializer_list<NodePtr> root_to_leaf) {
  SceneMachine m(tool_node(4), chain(root_to_leaf));
  return xyz_of(m.machdef());
}

TEST(ReadBackXyz, IsWhereTheToolNodesStackTakesTheOrigin) {
  const NodePtr x = linear_node(1, AXIS_X, kX, kDriven, 10);
  const NodePtr y = linear_node(2, AXIS_Y, kY, kDriven, 20);
  const NodePtr z = linear_node(3, AXIS_Z, kZ, kDriven, 30);
  SceneMachine m(chain({x, y, z, shift_node(kFixedId, Point(0.5, 0, 0)), tool_node(4, Point(1, 2, 3))}));
  EXPECT_NEAR_POINT(xyz_of(m.machdef()), Point(9.5, 18, 27), 0);
}

TEST(ReadBackXyz, FeelsTheHeadRotaries) {
  // The tool point hangs 100 below B at +90 degrees: (-100, 0, 0).
  const NodePtr b = rotary_node(5, AXIS_B, HEAD, kY, Point(), math::m_pi2);
  SceneMachine m(chain({b, tool_node(4, Point(0, 0, 100))}), NodePtr(), b);
  EXPECT_NEAR_POINT(xyz_of(m.machdef()), Point(-100, 0, 0), kHandTolerance);
}

TEST(ReadBackXyz, TakesLinearAxesOfTheSecondTree) {
  EXPECT_NEAR_POINT(xyz_through({plain_node(0), linear_node(1, AXIS_X, kX, kDriven, 10)}), Point(10, 0, 0),
                    0);
}

TEST(ReadBackXyz, TakesLinearAxesWhateverTheirIdFlagsAndLetter) {
  EXPECT_NEAR_POINT(
      xyz_through({linear_node(kFixedId, AXIS_X, kX, 0, 10), linear_node(0, AXIS_DUMMY, kY, 0, 20)}),
      Point(10, 20, 0), 0);
}

TEST(ReadBackXyz, TakesPlainNodesOfId1AndMore) {
  EXPECT_NEAR_POINT(xyz_through({shift_node(1, Point(10, 0, 0)), shift_node(2000000000, Point(0, 20, 0))}),
                    Point(10, 20, 0), 0);
}

TEST(ReadBackXyz, LeavesPlainNodesOfId0AndLessOut) {
  EXPECT_NEAR_POINT(xyz_through({shift_node(0, Point(10, 0, 0)), shift_node(-1, Point(0, 20, 0)),
                                 shift_node(kFixedId, Point(0, 0, 30))}),
                    Point(0, 0, 0), 0);
}

TEST(ReadBackXyz, LeavesRotaryAxesOutWhateverTheirId) {
  EXPECT_NEAR_POINT(xyz_through({rotary_node(5, AXIS_C, TABLE, kZ, Point(20, 0, 0), 0.3),
                                 rotary_node(0, AXIS_A, TABLE, kX, Point(0, 30, 0), 0.4)}),
                    Point(0, 0, 0), 0);
}

TEST(ReadBackXyz, LeavesAxisNodesOfNoModeOut) {
  const NodePtr odd = axis_node(5, AXIS_X, TABLE, AXIS_MODE_INVALID_LOWEST, Point(), kX, kDriven, 10);
  odd->transform(Geometry::Translate(Point(10, 0, 0)));
  EXPECT_NEAR_POINT(xyz_through({odd}), Point(0, 0, 0), 0);
}

TEST(ReadBackXyz, GoesFromTheLeafToTheRoot) {
  // (10, 0, 0) from the leaf first, then turned by a quarter about Z at the root.
  const NodePtr quarter_turn = plain_node(1, Geometry::RotateAboutAxis(0, 0, 1, math::m_pi2));
  EXPECT_NEAR_POINT(xyz_through({quarter_turn, linear_node(2, AXIS_X, kX, kDriven, 10)}), Point(0, 10, 0),
                    kHandTolerance);
}

TEST(ReadBackXyz, CarriesTheToolsPlaceThroughTheSecondTree) {
  const NodePtr quarter_turn = plain_node(1, Geometry::RotateAboutAxis(0, 0, 1, math::m_pi2));
  SceneMachine m(chain({linear_node(1, AXIS_X, kX, kDriven, 10), tool_node(4)}), quarter_turn);
  EXPECT_NEAR_POINT(xyz_of(m.machdef()), Point(0, 10, 0), kHandTolerance);
}

TEST(ReadBackXyz, TakesTheFirstLeafAlone) {
  const NodePtr root = plain_node(0);
  root->add_child(chain({plain_node(0), linear_node(1, AXIS_X, kX, kDriven, 10)}));
  root->add_child(linear_node(2, AXIS_Y, kY, kDriven, 20));
  SceneMachine m(tool_node(4), root);
  EXPECT_NEAR_POINT(xyz_of(m.machdef()), Point(10, 0, 0), 0);
}

// Deliberate: inside the second tree the tool node is a node that is no axis node, and counts by its id like
// a plain one, after it has been counted in its own stack.
TEST(ReadBackXyz, CountsAToolNodeInTheSecondTreeByItsIdLikeAPlainNode) {
  SceneMachine m(NodePtr(), chain({plain_node(0), tool_node(5, Point(1, 0, 0))}));
  EXPECT_NEAR_POINT(xyz_of(m.machdef()), Point(-2, 0, 0), 0);
  SceneMachine without_id(NodePtr(), chain({plain_node(0), tool_node(0, Point(1, 0, 0))}));
  EXPECT_NEAR_POINT(xyz_of(without_id.machdef()), Point(-1, 0, 0), 0);
}

TEST(ReadBackXyz, WithoutAToolNodeStartsAtTheOrigin) {
  SceneMachine m(plain_node(0), linear_node(1, AXIS_X, kX, kDriven, 10));
  ASSERT_FALSE(m.machdef().tool_node());
  EXPECT_NEAR_POINT(xyz_of(m.machdef()), Point(10, 0, 0), 0);
}

TEST(ReadBackXyz, WithoutASecondTreeIsTheToolsPlace) {
  SceneMachine m(chain({linear_node(1, AXIS_X, kX, kDriven, 10), tool_node(4)}));
  EXPECT_NEAR_POINT(xyz_of(m.machdef()), Point(10, 0, 0), 0);
}

TEST(ReadBackXyz, OfAnEmptyMachineIsTheOrigin) {
  md::CMachDef machdef;
  EXPECT_NEAR_POINT(xyz_of(machdef), Point(), 0);
}

TEST(ReadBackXyz, FollowsTheRootsOfAMachineThatWasNotCloned) {
  // Unlike the update, which walks the lists that cloning and loading make.
  md::CMachDef machdef;
  machdef.SG()[1] = linear_node(1, AXIS_X, kX, kDriven, 10);
  EXPECT_NEAR_POINT(xyz_of(machdef), Point(10, 0, 0), 0);
}

TEST(ReadBackAbc, EachRotaryGivesTheComponentOfItsLetter) {
  for (const AXIS_TYPE letter : {AXIS_A, AXIS_B, AXIS_C}) {
    const NodePtr rotary = rotary_node(5, letter, TABLE, kZ, Point(), 0.7);
    SceneMachine m(tool_node(4), rotary, rotary);
    const Point expected[] = {{0.7, 102, 103}, {101, 0.7, 103}, {101, 102, 0.7}};
    EXPECT_NEAR_POINT(abc_of(m.machdef()), expected[letter], 0) << letter;
  }
}

TEST(ReadBackAbc, TakesBothRotariesWhereverTheySit) {
  const NodePtr b = rotary_node(5, AXIS_B, HEAD, kY, Point(), 0.2);
  const NodePtr c = rotary_node(6, AXIS_C, TABLE, kZ, Point(), 0.3);
  SceneMachine m(chain({b, tool_node(4)}), c, c, b);
  EXPECT_NEAR_POINT(abc_of(m.machdef()), Point(101, 0.2, 0.3), 0);
}

TEST(ReadBackAbc, OfTwoRotariesOfALetterTheSecondaryWins) {
  const NodePtr first = rotary_node(5, AXIS_C, TABLE, kZ, Point(), 0.2);
  const NodePtr second = rotary_node(6, AXIS_C, TABLE, kZ, Point(), 0.3);
  SceneMachine m(tool_node(4), chain({first, second}), first, second);
  EXPECT_EQ(abc_of(m.machdef()).z, 0.3);
}

// Deliberate: a component that no rotary axis writes keeps what the host passed in.
TEST(ReadBackAbc, KeepsWhatNoAxisWrites) {
  md::CMachDef machdef;
  EXPECT_NEAR_POINT(abc_of(machdef), Point(101, 102, 103), 0);
}

TEST(ReadBackAbc, AnyOtherLetterWritesNothing) {
  for (const int letter : {-1, 3, 4, 5, 6, 7}) {
    const NodePtr rotary = rotary_node(5, static_cast<AXIS_TYPE>(letter), TABLE, kZ, Point(), 0.7);
    SceneMachine m(tool_node(4), rotary, rotary);
    EXPECT_NEAR_POINT(abc_of(m.machdef()), Point(101, 102, 103), 0) << letter;
  }
}

TEST(ReadBackAbc, LeavesRotaryNodesThatAreNotOneOfTheTwoOut) {
  SceneMachine m(tool_node(4), rotary_node(5, AXIS_C, TABLE, kZ, Point(), 0.7));
  EXPECT_NEAR_POINT(abc_of(m.machdef()), Point(101, 102, 103), 0);
}

TEST(ReadBackAbc, SkipsAPlainNodeInPlaceOfARotary) {
  SceneMachine m(tool_node(4));
  m.machdef().SG_RotAxs()[0] = plain_node(5);
  EXPECT_NEAR_POINT(abc_of(m.machdef()), Point(101, 102, 103), 0);
}

TEST(ReadBackAbc, IsTheValueAndNotWhatTheTransformShows) {
  const NodePtr c = rotary_node(5, AXIS_C, TABLE, kZ, Point(), 0.3);
  SceneMachine m(tool_node(4), c, c);
  m.twin(c)->value(0.7);
  EXPECT_EQ(abc_of(m.machdef()).z, 0.7);
}

TEST(ReadBack, ChangesNothing) {
  const NodePtr x = linear_node(1, AXIS_X, kX, kDriven, 10);
  const NodePtr c = rotary_node(5, AXIS_C, TABLE, kZ, Point(20, 0, 0), 0.3);
  SceneMachine m(chain({x, tool_node(4)}), c, c);
  xyz_of(m.machdef());
  EXPECT_EQ(m.value(x), 10);
  EXPECT_EQ(m.value(c), 0.3);
  EXPECT_NEAR_MATRIX(m.transform(c), c->transform(), 0);
}

// The table's fixed offsets carry the reserved id and stay out together with its rotation, so that what was
// commanded comes back.
TEST(ReadBack, AnswersWhatTheUpdateWasGiven) {
  const Point base(20, -30, 40);
  const NodePtr x = linear_node(1, AXIS_X, kX);
  const NodePtr y = linear_node(2, AXIS_Y, kY);
  const NodePtr z = linear_node(3, AXIS_Z, kZ);
  const NodePtr b = rotary_node(5, AXIS_B, HEAD, kY, Point(0, 0, 100));
  const NodePtr c = rotary_node(6, AXIS_C, TABLE, kZ, base);
  SceneMachine m(chain({z, shift_node(kFixedId, Point(0, 0, 100)), b, tool_node(4, Point(1, 2, 3))}),
                 chain({plain_node(0), shift_node(kFixedId, base), c, x, y}), b, c);
  // From the table's zero pose, where the base point and its way back cancel.
  ASSERT_TRUE(m.update(Point(10, 20, 30), Point(0.1, 0.2, 0.3)));
  EXPECT_NEAR_POINT(xyz_of(m.machdef()), Point(10, 20, 30), kHandTolerance);
  EXPECT_NEAR_POINT(abc_of(m.machdef()), Point(101, 0.2, 0.3), 0);
}

TEST(ReadBackFlat, WritesXyzThenAbc) {
  const NodePtr a = rotary_node(5, AXIS_A, HEAD, kX, Point(), 0.1);
  const NodePtr c = rotary_node(6, AXIS_C, TABLE, kZ, Point(), 0.3);
  SceneMachine m(chain({linear_node(1, AXIS_X, kX, kDriven, 10), linear_node(2, AXIS_Y, kY, kDriven, 20),
                        linear_node(3, AXIS_Z, kZ, kDriven, 30), a, tool_node(4)}),
                 c, a, c);
  double v[] = {101, 102, 103, 104, 105, 106};
  k5axCMachDef_SG2MachCoords(&m.machdef(), v);
  // No B axis: unlike the class face, which keeps what was there, it comes out 0.
  const double expected[] = {10, 20, 30, 0.1, 0, 0.3};
  EXPECT_NEAR_ARRAY(v, expected, 6, 0);
}

TEST(ReadBackFlat, OfNoMachineWritesNothing) {
  double v[] = {101, 102, 103, 104, 105, 106};
  k5axCMachDef_SG2MachCoords(nullptr, v);
  const double expected[] = {101, 102, 103, 104, 105, 106};
  EXPECT_NEAR_ARRAY(v, expected, 6, 0);
}

TEST(ReadBackFlat, IntoNullDoesNothing) {
  const NodePtr x = linear_node(1, AXIS_X, kX, kDriven, 10);
  SceneMachine m(chain({x, tool_node(4)}));
  k5axCMachDef_SG2MachCoords(&m.machdef(), nullptr);
  EXPECT_EQ(m.value(x), 10);
}

}  // namespace
