// An axis node's transform from its value, and what a change of unit does to it.

#include "scenegraph/scene_tree.h"

using namespace k5ax_test;
using md::sg::node;

namespace {

// The quarter turn about Z, written down: +X goes to +Y, +Y to -X.
Matrix quarter_turn_about_z() {
  Matrix m;
  m.SetMatrix(0, 1, 0, -1, 0, 0, 0, 0, 1, 0, 0, 0);
  return m;
}

}  // namespace

TEST(AxisTransform, OfALinearAxisIsTheTravelAlongItsDirection) {
  const AxisNodePtr n = make_axis_node(1, AXIS_Z, LINEAR, {0, 0, 0}, {0, 0, 1});
  EXPECT_EQ(components(md::NodeAxis_transform_calc(0, n, 25)), components(Geometry::Translate({0, 0, 25})));
}

TEST(AxisTransform, OfALinearAxisAtZeroIsTheIdentity) {
  const AxisNodePtr n = make_axis_node(1, AXIS_Z, LINEAR, {0, 0, 0}, {0, 0, 1});
  EXPECT_EQ(components(md::NodeAxis_transform_calc(0, n, 0)), components(Matrix()));
}

TEST(AxisTransform, OfALinearAxisTakesTheDirectionAsItStands) {
  const AxisNodePtr n = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {2, -3, 4});
  EXPECT_EQ(components(md::NodeAxis_transform_calc(0, n, 0.5)),
            components(Geometry::Translate({1, -1.5, 2})));
}

TEST(AxisTransform, OfALinearAxisDoesNotDependOnTheBasePoint) {
  const AxisNodePtr n = make_axis_node(1, AXIS_Z, LINEAR, {10, 20, 30}, {0, 0, 1});
  EXPECT_EQ(components(md::NodeAxis_transform_calc(0, n, 25)), components(Geometry::Translate({0, 0, 25})));
}

TEST(AxisTransform, OfALinearAxisGoesByTheModeAndNotByTheLetter) {
  const AxisNodePtr n = make_axis_node(1, AXIS_C, LINEAR, {0, 0, 0}, {0, 0, 1});
  EXPECT_EQ(components(md::NodeAxis_transform_calc(0, n, 25)), components(Geometry::Translate({0, 0, 25})));
}

TEST(AxisTransform, OfALinearAxisTakesANegativeTravel) {
  const AxisNodePtr n = make_axis_node(1, AXIS_Y, LINEAR, {0, 0, 0}, {0, 1, 0});
  EXPECT_EQ(components(md::NodeAxis_transform_calc(0, n, -8)), components(Geometry::Translate({0, -8, 0})));
}

TEST(AxisTransform, OfARotaryAxisThroughTheOriginIsTheTurn) {
  const AxisNodePtr n = make_axis_node(1, AXIS_C, ROTARY, {0, 0, 0}, {0, 0, 1});
  // cos(pi/2) comes out as 6e-17.
  EXPECT_NEAR_MATRIX(md::NodeAxis_transform_calc(0, n, deg(90)), quarter_turn_about_z(), 1e-15);
}

// Deliberate: the node's transform does not move back by the base point. A fixed node on the root side holds
// that, so that this node alone carries what changes. By hand: (10, 0, 0) goes to the origin and stays there;
// (11, 0, 0) goes to (1, 0, 0) and turns to (0, 1, 0); the origin goes to (-10, 0, 0) and turns to (0, -10,
// 0).
TEST(AxisTransform, OfARotaryAxisOffTheOriginHasNoTranslationBack) {
  const AxisNodePtr n = make_axis_node(1, AXIS_C, ROTARY, {10, 0, 0}, {0, 0, 1});
  const Matrix m = md::NodeAxis_transform_calc(0, n, deg(90));
  // cos(pi/2) = 6e-17 times coordinates up to 11.
  EXPECT_NEAR_POINT((TPoint<double>(10, 0, 0) * m), (TPoint<double>(0, 0, 0)), 1e-14);
  EXPECT_NEAR_POINT((TPoint<double>(11, 0, 0) * m), (TPoint<double>(0, 1, 0)), 1e-14);
  EXPECT_NEAR_POINT((TPoint<double>(0, 0, 0) * m), (TPoint<double>(0, -10, 0)), 1e-14);
}

TEST(AxisTransform, OfARotaryAxisAtZeroIsTheTranslationToItsBase) {
  const AxisNodePtr n = make_axis_node(1, AXIS_A, ROTARY, {10, 20, 30}, {1, 0, 0});
  EXPECT_EQ(components(md::NodeAxis_transform_calc(0, n, 0)),
            components(Geometry::Translate({-10, -20, -30})));
}

// By hand, with base (1, 2, 3): about +X a quarter turn takes +Y to +Z and +Z to -Y, so (2, 4, 6) goes to (1,
// 2, 3) and on to (1, -3, 2); about +Y it takes +Z to +X and +X to -Z, so (1, 2, 3) goes on to (3, 2, -1).
TEST(AxisTransform, OfARotaryAxisAboutXTurnsYToZ) {
  const AxisNodePtr n = make_axis_node(1, AXIS_A, ROTARY, {1, 2, 3}, {1, 0, 0});
  EXPECT_NEAR_POINT((TPoint<double>(2, 4, 6) * md::NodeAxis_transform_calc(0, n, deg(90))),
                    (TPoint<double>(1, -3, 2)), 1e-15);
}

TEST(AxisTransform, OfARotaryAxisAboutYTurnsZToX) {
  const AxisNodePtr n = make_axis_node(1, AXIS_B, ROTARY, {1, 2, 3}, {0, 1, 0});
  EXPECT_NEAR_POINT((TPoint<double>(2, 4, 6) * md::NodeAxis_transform_calc(0, n, deg(90))),
                    (TPoint<double>(3, 2, -1)), 1e-15);
}

TEST(AxisTransform, OfARotaryAxisAboutTheOppositeDirectionTurnsTheOtherWay) {
  const AxisNodePtr n = make_axis_node(1, AXIS_C, ROTARY, {0, 0, 0}, {0, 0, -1});
  EXPECT_NEAR_POINT((TPoint<double>(1, 0, 0) * md::NodeAxis_transform_calc(0, n, deg(90))),
                    (TPoint<double>(0, -1, 0)), 1e-15);
}

// About (1, 1, 1) a third of a turn takes X to Y, Y to Z and Z to X.
TEST(AxisTransform, OfARotaryAxisGoesByTheDirectionAndNotByTheLetter) {
  const AxisNodePtr n = make_axis_node(1, AXIS_A, ROTARY, {0, 0, 0}, {1, 1, 1});
  EXPECT_NEAR_POINT((TPoint<double>(1, 2, 3) * md::NodeAxis_transform_calc(0, n, deg(120))),
                    (TPoint<double>(3, 1, 2)),
                    5e-15);  // three products of size 3 and a square root: 8 eps |p|
}

TEST(AxisTransform, OfAnAxisWithoutAModeIsTheIdentity) {
  for (const int mode : {-1, 2, 3, 1000}) {
    const AxisNodePtr n = make_axis_node(1, AXIS_C, static_cast<AXIS_MODE>(mode), {10, 0, 0}, {0, 0, 1});
    EXPECT_EQ(components(md::NodeAxis_transform_calc(0, n, 1.25)), components(Matrix())) << "mode " << mode;
  }
}

TEST(AxisTransform, OfAFreshAxisNodeIsTheIdentity) {
  empty_pools();
  EXPECT_EQ(components(md::NodeAxis_transform_calc(0, md::NodeAxis_Create(), 1.25)), components(Matrix()));
}

TEST(AxisTransform, OfAnEmptyPointerIsTheIdentity) {
  EXPECT_EQ(components(md::NodeAxis_transform_calc(0, AxisNodePtr(), 1.25)), components(Matrix()));
}

TEST(AxisTransform, CalcChangesNothing) {
  const AxisNodePtr n = make_axis_node(17, AXIS_C, ROTARY, {10, 0, 0}, {0, 0, 1});
  n->value(3);
  n->transform(numbered_matrix(1));
  md::NodeAxis_transform_calc(0, n, 1.25);
  EXPECT_EQ(n->value(), 3);
  EXPECT_EQ(components(n->transform()), components(numbered_matrix(1)));
}

TEST(AxisTransform, CalcDoesNotLookAtTheNodesOwnValue) {
  const AxisNodePtr n = make_axis_node(17, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  n->value(3);
  EXPECT_EQ(components(md::NodeAxis_transform_calc(0, n, 5)), components(Geometry::Translate({5, 0, 0})));
}

TEST(AxisTransform, DoesNotLookAtTheLimits) {
  const AxisNodePtr n = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  n->SetMin(-1);
  n->SetMax(1);
  EXPECT_EQ(components(md::NodeAxis_transform_calc(0, n, 50)), components(Geometry::Translate({50, 0, 0})));
}

// Bit value 4 of the selector would choose another sense of rotation for B and C; the switch in front of it
// is off.
TEST(AxisTransform, SelectorHasNoEffect) {
  int checked = 0;
  for (const AXIS_TYPE type : {AXIS_A, AXIS_B, AXIS_C}) {
    const AxisNodePtr n = make_axis_node(1, type, ROTARY, {1, 2, 3}, {0.6, 0, 0.8});
    for (const unsigned int selector : {1u, 2u, 4u, 7u, 0xffffffffu}) {
      EXPECT_EQ(components(md::NodeAxis_transform_calc(selector, n, 0.7)),
                components(md::NodeAxis_transform_calc(0, n, 0.7)))
          << "type " << type << ", selector " << selector;
      ++checked;
    }
  }
  EXPECT_EQ(checked, 15);
}

TEST(AxisTransform, OfAReferenceIsTheSame) {
  const AxisNodePtr n = make_axis_node(1, AXIS_C, ROTARY, {10, 0, 0}, {0, 0, 1});
  EXPECT_EQ(components(md::NodeAxis_transform_calc(0, *n, 1.25)),
            components(md::NodeAxis_transform_calc(0, n, 1.25)));
}

TEST(AxisTransformSet, StoresTheTransformAtTheValue) {
  const AxisNodePtr n = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  md::NodeAxis_transform_set(0, n, 5);
  EXPECT_EQ(components(n->transform()), components(Geometry::Translate({5, 0, 0})));
}

TEST(AxisTransformSet, StoresTheValue) {
  const AxisNodePtr n = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  md::NodeAxis_transform_set(0, n, 5);
  EXPECT_EQ(n->value(), 5);
}

TEST(AxisTransformSet, LeavesIdAndFlags) {
  const AxisNodePtr n = make_axis_node(17, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  n->flags(3);
  md::NodeAxis_transform_set(4, n, 5);
  EXPECT_EQ(n->id(), 17);
  EXPECT_EQ(n->flags(), 3u);
}

TEST(AxisTransformSet, OnAnEmptyPointerDoesNothing) {
  md::NodeAxis_transform_set(0, AxisNodePtr(), 5);
  SUCCEED();
}

TEST(AxisTransformSet, ReplacesWhatWasThere) {
  const AxisNodePtr n = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  n->transform(numbered_matrix(1));
  md::NodeAxis_transform_set(0, n, 5);
  md::NodeAxis_transform_set(0, n, 2);
  EXPECT_EQ(components(n->transform()), components(Geometry::Translate({2, 0, 0})));
}

TEST(AxisTransformSet, OfAReferenceStoresBoth) {
  const AxisNodePtr n = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  md::NodeAxis_transform_set(0, *n, 5);
  EXPECT_EQ(n->value(), 5);
  EXPECT_EQ(components(n->transform()), components(Geometry::Translate({5, 0, 0})));
}

TEST(AxisTransformSet, ReservedIdIsSetLikeAnyOther) {
  const AxisNodePtr n = make_axis_node(-999, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  md::NodeAxis_transform_set(0, n, 5);
  EXPECT_EQ(n->value(), 5);
}

TEST(AxisTransformSet, NothingElseRebuildsTheTransform) {
  const AxisNodePtr n = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  md::NodeAxis_transform_set(0, n, 5);
  n->SetAxisVector({0, 1, 0});
  n->value(7);
  EXPECT_EQ(components(n->transform()), components(Geometry::Translate({5, 0, 0})));
}

TEST(AxisNodeScale, ScalesTheBasePoint) {
  const AxisNodePtr n = make_axis_node(1, AXIS_C, ROTARY, {1, 2, 4}, {0, 0, 1});
  n->scale_node(0.5, false);
  EXPECT_EQ(n->GetBaseVector(), (TPoint<double>(0.5, 1, 2)));
}

TEST(AxisNodeScale, ScalesTheLimitsOfALinearAxis) {
  const AxisNodePtr n = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  n->SetMin(-100);
  n->SetMax(300);
  n->scale_node(0.5, false);
  EXPECT_EQ(n->GetMin(), -50);
  EXPECT_EQ(n->GetMax(), 150);
}

TEST(AxisNodeScale, LeavesTheLimitsOfARotaryAxis) {
  const AxisNodePtr n = make_axis_node(1, AXIS_C, ROTARY, {0, 0, 0}, {0, 0, 1});
  n->SetMin(-2);
  n->SetMax(3);
  n->scale_node(0.5, false);
  EXPECT_EQ(n->GetMin(), -2);
  EXPECT_EQ(n->GetMax(), 3);
}

TEST(AxisNodeScale, LeavesTheDirection) {
  const AxisNodePtr n = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {3, 4, 0});
  n->scale_node(0.5, false);
  EXPECT_EQ(n->GetAxisVector(), (TPoint<double>(3, 4, 0)));
}

TEST(AxisNodeScale, MultipliesTheValueOfALinearAxis) {
  const AxisNodePtr n = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  md::NodeAxis_transform_set(0, n, 10);
  n->scale_node(25.4, false);
  EXPECT_EQ(n->value(), 254);
  EXPECT_EQ(components(n->transform()), components(Geometry::Translate({254, 0, 0})));
}

// Deliberate: the angle of a rotary axis is multiplied as well, though it is no length. Hosts set the pose
// anew after a change of unit, and files in the field were written by this rule.
TEST(AxisNodeScale, MultipliesTheAngleOfARotaryAxisToo) {
  const AxisNodePtr n = make_axis_node(1, AXIS_C, ROTARY, {0, 0, 0}, {0, 0, 1});
  md::NodeAxis_transform_set(0, n, 0.1);
  n->scale_node(25.4, false);
  EXPECT_EQ(n->value(), 0.1 * 25.4);
}

TEST(AxisNodeScale, RebuildsTheTransformFromTheScaledAxisAndValue) {
  const AxisNodePtr n = make_axis_node(1, AXIS_C, ROTARY, {10, 0, 0}, {0, 0, 1});
  md::NodeAxis_transform_set(0, n, deg(45));
  n->scale_node(2, false);
  // By hand: base (20, 0, 0) and a quarter turn take the origin to (-20, 0, 0) and on to (0, -20, 0).
  EXPECT_NEAR_POINT((TPoint<double>(0, 0, 0) * n->transform()), (TPoint<double>(0, -20, 0)), 1e-14);
}

TEST(AxisNodeScale, LeavesIdAndFlags) {
  const AxisNodePtr n = make_axis_node(17, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  n->flags(3);
  n->scale_node(2, false);
  EXPECT_EQ(n->id(), 17);
  EXPECT_EQ(n->flags(), 3u);
}

TEST(AxisNodeScale, WorksWithoutAnOwner) {
  const AxisNodePtr n = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  ASSERT_EQ(n->machdef(), nullptr);
  md::NodeAxis_transform_set(0, n, 10);
  n->scale_node(2, false);
  EXPECT_EQ(n->value(), 20);
}

// A node from the pool may name a machine that is gone. Nothing may be read through that name.
TEST(AxisNodeScale, NeverReadsThroughAStaleOwner) {
  const AxisNodePtr n = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  n->machdef(reinterpret_cast<md::CMachDef*>(std::size_t{8}));
  md::NodeAxis_transform_set(0, n, 10);
  n->scale_node(2, true);
  EXPECT_EQ(n->value(), 20);
  n->machdef(nullptr);
}

TEST(AxisNodeScale, RecursiveScalesAxisNodesBelow) {
  const AxisNodePtr top = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  const NodePtr plain = make_node(2);
  const AxisNodePtr low = make_axis_node(3, AXIS_Y, LINEAR, {0, 0, 0}, {0, 1, 0});
  top->add_child(plain);
  plain->add_child(low);
  md::NodeAxis_transform_set(0, low, 3);
  top->scale_node(2, true);
  EXPECT_EQ(low->value(), 6);
}

TEST(AxisNodeScale, ReservedIdIsScaledLikeAnyOther) {
  const AxisNodePtr n = make_axis_node(-999, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  md::NodeAxis_transform_set(0, n, 3);
  n->scale_node(2, false);
  EXPECT_EQ(n->value(), 6);
}

TEST(AxisNodeScale, OfANodeWithoutAModeScalesBaseAndValue) {
  const AxisNodePtr n = make_axis_node(1, AXIS_X, AXIS_MODE_INVALID_LOWEST, {1, 2, 3}, {1, 0, 0});
  n->value(3);
  n->transform(numbered_matrix(1));
  n->scale_node(2, false);
  EXPECT_EQ(n->GetBaseVector(), (TPoint<double>(2, 4, 6)));
  EXPECT_EQ(n->value(), 6);
  EXPECT_EQ(components(n->transform()), components(Matrix()));
}
