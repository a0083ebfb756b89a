// Points and directions carried from a node's frame to its parent's. A node remembers whether its transform
// only translates, so each way of writing a transform is tried after one that turns, and before.

#include <limits>

#include "scenegraph/scene_tree.h"

using namespace k5ax_test;
using md::sg::node;

namespace {

const TPoint<double> kPoint(2, 4, 8);
const TPoint<double> kOffset(10, 20, 30);
constexpr double kRounding =
    1e-14;  // products of numbers up to 12 with the sine and cosine of a quarter turn

// A quarter turn about a line along Z through (10, 0, 0): (12, 4, 8) is (2, 4, 8) from the line, and +X goes
// to +Y, so it becomes (-4, 2, 8), without a way back.
const TPoint<double> kBeforeTurn(12, 4, 8);
const TPoint<double> kAfterTurn(-4, 2, 8);

AxisNodePtr turned_node() {
  AxisNodePtr n = make_axis_node(1, AXIS_C, ROTARY, {10, 0, 0}, {0, 0, 1});
  md::NodeAxis_transform_set(0, n, deg(90));
  return n;
}

AxisNodePtr moved_node() {
  AxisNodePtr n = make_axis_node(1, AXIS_X, LINEAR, {10, 0, 0}, {0, 0, 1});
  md::NodeAxis_transform_set(0, n, 25);
  return n;
}

}  // namespace

TEST(PointToParent, OfATranslationIsShifted) {
  const NodePtr n = make_node(1);
  n->transform(Geometry::Translate(kOffset));
  EXPECT_EQ(n->point_to_parent(kPoint), TPoint<double>(12, 24, 38));
}

TEST(DirectionToParent, OfATranslationStays) {
  const NodePtr n = make_node(1);
  n->transform(Geometry::Translate(kOffset));
  EXPECT_EQ(n->direction_to_parent(kPoint), kPoint);
}

// Products with the zeros of the rotation would be no numbers.
TEST(DirectionToParent, OfATranslationKeepsWhatHasNoEndToItsCoordinate) {
  const NodePtr n = make_node(1);
  n->transform(Geometry::Translate(kOffset));
  const double endless = std::numeric_limits<double>::infinity();
  for (const NodePtr& shifts : {n, NodePtr(moved_node())}) {
    EXPECT_EQ(shifts->direction_to_parent({endless, 4, 8}), TPoint<double>(endless, 4, 8));
    EXPECT_EQ(shifts->direction_to_parent({2, endless, 8}), TPoint<double>(2, endless, 8));
    EXPECT_EQ(shifts->direction_to_parent({2, 4, endless}), TPoint<double>(2, 4, endless));
  }
}

// (1, 2, 3) through the rows (1, 2, 3), (4, 5, 6), (7, 8, 9): 1 + 8 + 21 = 30, 2 + 10 + 24 = 36,
// 3 + 12 + 27 = 42; and (10, 11, 12) more for a point.
TEST(PointToParent, GoesThroughAnyTwelveNumbers) {
  const NodePtr n = make_node(1);
  n->transform(numbered_matrix(1));
  EXPECT_EQ(n->point_to_parent({1, 2, 3}), TPoint<double>(40, 47, 54));
}

TEST(DirectionToParent, GoesThroughTheFirstNineNumbers) {
  const NodePtr n = make_node(1);
  n->transform(numbered_matrix(1));
  EXPECT_EQ(n->direction_to_parent({1, 2, 3}), TPoint<double>(30, 36, 42));
}

// Half a unit more in row r and column c adds half of coordinate r to coordinate c.
TEST(PointToParent, NoticesEachNumberThatIsNotTheIdentitys) {
  int tried = 0;
  for (std::size_t i = 0; i < 9; ++i) {
    std::array<double, 12> c = {1, 0, 0, 0, 1, 0, 0, 0, 1, 10, 20, 30};
    c[i] += 0.5;
    Matrix m;
    m.SetMatrix(c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7], c[8], c[9], c[10], c[11]);
    const NodePtr n = make_node(1);
    n->transform(m);

    const double p[] = {kPoint.x, kPoint.y, kPoint.z};
    double expected[] = {12, 24, 38};
    expected[i % 3] += 0.5 * p[i / 3];
    EXPECT_EQ(n->point_to_parent(kPoint), TPoint<double>(expected[0], expected[1], expected[2])) << i;
    ++tried;
  }
  EXPECT_EQ(tried, 9);
}

TEST(PointToParent, OfARotaryAxisIsTurned) {
  EXPECT_NEAR_POINT(turned_node()->point_to_parent(kBeforeTurn), kAfterTurn, kRounding);
}

TEST(DirectionToParent, OfARotaryAxisIsTurned) {
  EXPECT_NEAR_POINT(turned_node()->direction_to_parent(kPoint), kAfterTurn, kRounding);
}

TEST(PointToParent, OfALinearAxisIsShiftedAlongIt) {
  EXPECT_EQ(moved_node()->point_to_parent(kPoint), TPoint<double>(2, 4, 33));
}

TEST(PointToParent, OfALinearAxisThatWasRotaryIsShiftedAlongIt) {
  const AxisNodePtr n = turned_node();
  n->mode(LINEAR);
  md::NodeAxis_transform_set(0, n, 25);
  EXPECT_EQ(n->point_to_parent(kPoint), TPoint<double>(2, 4, 33));
  EXPECT_EQ(components(n->transform()), components(Geometry::Translate({0, 0, 25})));
}

TEST(PointToParent, OfARotaryAxisThatWasLinearIsTurned) {
  const AxisNodePtr n = moved_node();
  n->mode(ROTARY);
  md::NodeAxis_transform_set(0, n, deg(90));
  EXPECT_NEAR_POINT(n->point_to_parent(kBeforeTurn), kAfterTurn, kRounding);
}

TEST(PointToParent, OfAnAxisOfNoModeThatWasRotaryStays) {
  const AxisNodePtr n = turned_node();
  n->mode(AXIS_MODE_INVALID_LOWEST);
  md::NodeAxis_transform_set(0, n, 25);
  EXPECT_EQ(n->point_to_parent(kPoint), kPoint);
}

TEST(PointToParent, StaysAfterAReset) {
  const AxisNodePtr n = turned_node();
  n->reset();
  EXPECT_EQ(n->point_to_parent(kPoint), kPoint);
}

TEST(PointToParent, StaysAfterInitialise) {
  const AxisNodePtr n = turned_node();
  n->initialise(false);
  EXPECT_EQ(n->point_to_parent(kPoint), kPoint);
}

TEST(PointToParent, OfACopyOfATurnedNodeIsTurned) {
  const NodePtr n = make_node(1);
  node::shallow_copy(n, turned_node());
  EXPECT_NEAR_POINT(n->point_to_parent(kBeforeTurn), kAfterTurn, kRounding);
}

TEST(PointToParent, OfATurnedNodeThatBecameACopyIsShifted) {
  const AxisNodePtr n = turned_node();
  node::shallow_copy(n, moved_node());
  EXPECT_EQ(n->point_to_parent(kPoint), TPoint<double>(2, 4, 33));
}

TEST(PointToParent, OfACloneOfATurnedNodeIsTurned) {
  EXPECT_NEAR_POINT(turned_node()->shallow_clone()->point_to_parent(kBeforeTurn), kAfterTurn, kRounding);
}

// A spindle turned by a quarter about Z, its tool point at (-12, -4, -8): the translation by (12, 4, 8) comes
// last, so (2, 4, 8) is turned to (-4, 2, 8) first.
TEST(PointToParent, OfTheToolNodeGoesByTheHead) {
  const ToolNodePtr n = make_tool_node(1);
  n->payload().c_angle = deg(90);
  k5axSgToolNodeMatrixSet(n, {-12, -4, -8});
  EXPECT_NEAR_POINT(n->point_to_parent(kPoint), TPoint<double>(8, 6, 16), kRounding);
}
