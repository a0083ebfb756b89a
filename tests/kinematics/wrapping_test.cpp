// A Cartesian point turned about the part's rotary axis into a half-plane, as a host wraps a path about that
// axis.
#include <k5ax/kinematics.h>

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "support/hand_machine.h"
#include "support/near.h"
#include "support/random_machine.h"

namespace {

using k5ax_test::kHandTolerance;
using k5ax_test::kUnknownType;
using k5ax_test::kVerticalTool;
using k5ax_test::make_machine;
using k5ax_test::no_axis;
using k5ax_test::Point;
using k5ax_test::rotary_axis;

struct Result {
  Point point{101, 102, 103};
  Point rotary{104, 105, 106};
  double radius = 107;
};

Result wrap(const md::CMachDef* machdef, const Point& point, const Point& rotary, int ref_axis,
            int ref_sign) {
  Result result;
  md::Cartesian2AxialRotaryVals(machdef, point, rotary, ref_axis, ref_sign, result.point, result.rotary,
                                result.radius);
  return result;
}

// One table axis of letter A along X, which turns the part.
std::unique_ptr<md::CMachDef> about_x(AXIS_TYPE letter = AXIS_A, const Point& base = Point()) {
  return make_machine(MC_TT, rotary_axis(letter, TABLE, Point(1, 0, 0), base), no_axis());
}

std::unique_ptr<md::CMachDef> about_z(const Point& d_axis = Point(0, 0, 1)) {
  return make_machine(MC_TT, rotary_axis(AXIS_C, TABLE, d_axis), no_axis());
}

// For the axis X and the point (5, 0, 3): the foot is (5, 0, 0), the radial direction u is Z. Against +Y the
// angle is 90 degrees, u x Y = -X lies against the axis, so the turn is by -90 degrees, which takes Z to Y.
TEST(Wrapping, TurnsThePointIntoTheHalfPlane) {
  const Result result = wrap(about_x().get(), Point(5, 0, 3), Point(), 1, 1);
  EXPECT_NEAR_POINT(result.point, Point(5, 3, 0), kHandTolerance);
}

TEST(Wrapping, AnswersMinusTheAngleTurned) {
  const Result result = wrap(about_x().get(), Point(5, 0, 3), Point(), 1, 1);
  EXPECT_NEAR_POINT(result.rotary, Point(math::m_pi2, 0, 0), kHandTolerance);
}

TEST(Wrapping, AnswersTheDistanceFromTheAxis) {
  EXPECT_NEAR(wrap(about_x().get(), Point(5, 0, 3), Point(), 1, 1).radius, 3, kHandTolerance);
  EXPECT_NEAR(wrap(about_x().get(), Point(5, -4, 3), Point(), 1, 1).radius, 5, kHandTolerance);
}

TEST(Wrapping, WithANegativeSignTurnsIntoTheOppositeHalfPlane) {
  const Result result = wrap(about_x().get(), Point(5, 0, 3), Point(), 1, -1);
  EXPECT_NEAR_POINT(result.point, Point(5, -3, 0), kHandTolerance);
  EXPECT_NEAR_POINT(result.rotary, Point(-math::m_pi2, 0, 0), kHandTolerance);
}

TEST(Wrapping, AnyNegativeSignCounts) {
  const int most_negative = std::numeric_limits<int>::min();
  EXPECT_NEAR_POINT(wrap(about_x().get(), Point(5, 0, 3), Point(), 1, most_negative).point, Point(5, -3, 0),
                    kHandTolerance);
}

TEST(Wrapping, ASignOfZeroIsPositive) {
  EXPECT_NEAR_POINT(wrap(about_x().get(), Point(5, 0, 3), Point(), 1, 0).point, Point(5, 3, 0),
                    kHandTolerance);
}

TEST(Wrapping, ReferenceAxis0IsX) {
  EXPECT_NEAR_POINT(wrap(about_z().get(), Point(0, 2, 5), Point(), 0, 1).point, Point(2, 0, 5),
                    kHandTolerance);
}

TEST(Wrapping, ReferenceAxis1IsY) {
  EXPECT_NEAR_POINT(wrap(about_z().get(), Point(2, 0, 5), Point(), 1, 1).point, Point(0, 2, 5),
                    kHandTolerance);
}

TEST(Wrapping, ReferenceAxis2IsZ) {
  EXPECT_NEAR_POINT(wrap(about_x().get(), Point(5, 3, 0), Point(), 2, 1).point, Point(5, 0, 3),
                    kHandTolerance);
}

TEST(Wrapping, AnyOtherReferenceAxisIsX) {
  for (const int ref_axis : {-1, 3, 100, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
    EXPECT_NEAR_POINT(wrap(about_z().get(), Point(0, 2, 5), Point(), ref_axis, 1).point, Point(2, 0, 5),
                      kHandTolerance);
}

TEST(Wrapping, APointInTheHalfPlaneStaysWithAngleZero) {
  const Result result = wrap(about_z().get(), Point(2, 0, 5), Point(0, 0, 0.7), 0, 1);
  EXPECT_NEAR_POINT(result.point, Point(2, 0, 5), 0);
  EXPECT_NEAR_POINT(result.rotary, Point(0, 0, 0), 0);
}

// Opposite the reference the normal u x ref vanishes and is taken as Z, by the rule for directions that are
// too short. An axis along +Z therefore turns by +180 degrees, one along -Z by -180.
TEST(Wrapping, OppositeTheReferenceAnAxisAlongZTurnsByPlusHalfATurn) {
  const Result result = wrap(about_z().get(), Point(-2, 0, 5), Point(), 0, 1);
  EXPECT_NEAR_POINT(result.point, Point(2, 0, 5), kHandTolerance);
  EXPECT_EQ(result.rotary.z, -math::m_pi);
}

TEST(Wrapping, OppositeTheReferenceAnAxisAlongMinusZTurnsByMinusHalfATurn) {
  const Result result = wrap(about_z(Point(0, 0, -1)).get(), Point(-2, 0, 5), Point(), 0, 1);
  EXPECT_NEAR_POINT(result.point, Point(2, 0, 5), kHandTolerance);
  EXPECT_EQ(result.rotary.z, math::m_pi);
}

TEST(Wrapping, OppositeTheReferenceAnAxisAlongXTurnsByPlusHalfATurn) {
  EXPECT_EQ(wrap(about_x().get(), Point(5, -3, 0), Point(), 1, 1).rotary.x, -math::m_pi);
}

// The cosine is 0 whatever the point, and u x ref is at right angles to the axis: +90 degrees.
TEST(Wrapping, AReferenceAlongTheAxisTurnsByAQuarter) {
  const Result result = wrap(about_z().get(), Point(2, 0, 5), Point(), 2, 1);
  EXPECT_NEAR_POINT(result.point, Point(0, 2, 5), kHandTolerance);
  EXPECT_NEAR_POINT(result.rotary, Point(0, 0, -math::m_pi2), kHandTolerance);
}

// Deliberate: the component is replaced, not offset; it says where the axis goes, not how far.
TEST(Wrapping, ReplacesTheComponentWhateverItWas) {
  const Result result = wrap(about_x().get(), Point(5, 0, 3), Point(40, 41, 42), 1, 1);
  EXPECT_NEAR(result.rotary.x, math::m_pi2, kHandTolerance);
}

TEST(Wrapping, LeavesTheOtherComponents) {
  const Result result = wrap(about_x().get(), Point(5, 0, 3), Point(40, 41, 42), 1, 1);
  EXPECT_EQ(result.rotary.y, 41);
  EXPECT_EQ(result.rotary.z, 42);
}

// Deliberate: unlike getABCAngles, where a linear letter writes nothing, the component is chosen here by what
// the letter shares with its rotary neighbour.
TEST(Wrapping, TakesLinearLettersToo) {
  const Point rotary(40, 41, 42);
  EXPECT_NEAR_POINT(wrap(about_x(AXIS_X).get(), Point(5, 0, 3), rotary, 1, 1).rotary,
                    Point(math::m_pi2, 41, 42), kHandTolerance);
  EXPECT_NEAR_POINT(wrap(about_x(AXIS_Y).get(), Point(5, 0, 3), rotary, 1, 1).rotary,
                    Point(40, math::m_pi2, 42), kHandTolerance);
  EXPECT_NEAR_POINT(wrap(about_x(AXIS_Z).get(), Point(5, 0, 3), rotary, 1, 1).rotary,
                    Point(40, 41, math::m_pi2), kHandTolerance);
}

TEST(Wrapping, EachRotaryLetterReplacesItsOwnComponent) {
  const Point rotary(40, 41, 42);
  EXPECT_NEAR_POINT(wrap(about_x(AXIS_B).get(), Point(5, 0, 3), rotary, 1, 1).rotary,
                    Point(40, math::m_pi2, 42), kHandTolerance);
  EXPECT_NEAR_POINT(wrap(about_x(AXIS_C).get(), Point(5, 0, 3), rotary, 1, 1).rotary,
                    Point(40, 41, math::m_pi2), kHandTolerance);
}

TEST(Wrapping, AnyOtherLetterTurnsThePointAndReplacesNothing) {
  for (const AXIS_TYPE letter : {AXIS_TYPE_INVALID_LOWEST, AXIS_DUMMY, static_cast<AXIS_TYPE>(8)}) {
    const Result result = wrap(about_x(letter).get(), Point(5, 0, 3), Point(40, 41, 42), 1, 1);
    EXPECT_NEAR_POINT(result.rotary, Point(40, 41, 42), 0) << letter;
    EXPECT_NEAR_POINT(result.point, Point(5, 3, 0), kHandTolerance);
  }
}

// Deliberate: the axis direction alone counts; the turn is about the line through the origin.
TEST(Wrapping, TheBasePointOfTheAxisHasNoSay) {
  const Result result = wrap(about_x(AXIS_A, Point(11, 12, 13)).get(), Point(5, 0, 3), Point(), 1, 1);
  EXPECT_NEAR_POINT(result.point, Point(5, 3, 0), kHandTolerance);
  EXPECT_NEAR(result.radius, 3, kHandTolerance);
}

TEST(Wrapping, TheLengthOfTheAxisDirectionHasNoSay) {
  const auto machdef = about_x();
  machdef->getPrimary()->SetAxisVector(Point(20, 0, 0));
  const Result result = wrap(machdef.get(), Point(5, 0, 3), Point(), 1, 1);
  EXPECT_NEAR_POINT(result.point, Point(5, 3, 0), kHandTolerance);
  EXPECT_NEAR(result.radius, 3, kHandTolerance);
}

// The pose is taken on a clone, and a clone's axes have directions of length 1: one too short for that
// becomes Z.
TEST(Wrapping, AnAxisDirectionShorterThan5e9IsTakenAsZ) {
  const auto machdef = about_x();
  machdef->getPrimary()->SetAxisVector(Point(4e-9, 0, 0));
  const Result result = wrap(machdef.get(), Point(2, 0, 5), Point(), 1, 1);
  EXPECT_NEAR_POINT(result.point, Point(0, 2, 5), kHandTolerance);
}

TEST(Wrapping, APointOnTheAxisStaysAsItIs) {
  const Result result = wrap(about_x().get(), Point(5, 0, 0), Point(40, 41, 42), 1, 1);
  EXPECT_NEAR_POINT(result.point, Point(5, 0, 0), 0);
  EXPECT_NEAR_POINT(result.rotary, Point(40, 41, 42), 0);
  EXPECT_EQ(result.radius, 0);
}

TEST(Wrapping, APointCloserThan5e9IsOnTheAxisAndItsRadiusIsToldAllTheSame) {
  const Result result = wrap(about_x().get(), Point(5, 0, 4e-9), Point(40, 41, 42), 1, 1);
  EXPECT_NEAR_POINT(result.point, Point(5, 0, 4e-9), 0);
  EXPECT_NEAR_POINT(result.rotary, Point(40, 41, 42), 0);
  EXPECT_EQ(result.radius, 4e-9);
}

TEST(Wrapping, APointAt5e9AndBeyondIsTurned) {
  for (const double off : {5e-9, 6e-9}) {
    const Result result = wrap(about_x().get(), Point(5, 0, off), Point(40, 41, 42), 1, 1);
    EXPECT_NEAR(result.rotary.x, math::m_pi2, kHandTolerance);
    EXPECT_NEAR_POINT(result.point, Point(5, off, 0), 1e-15);
  }
}

// On table-table the secondary turns the part, carried by the primary by minus its angle: at c = +90 degrees
// the axis is (0, -1, 0). The foot of (3, 7, 0) is (0, 7, 0) and u is X; against +Z the angle is 90 degrees,
// and u x Z = -Y lies along the axis, so the turn is by +90 degrees about -Y, which takes X to Z.
TEST(Wrapping, OnTableTableTurnsAboutTheSecondaryAsThePrimaryCarriesIt) {
  const auto machdef = make_machine(MC_TT, rotary_axis(AXIS_C, TABLE, Point(0, 0, 1)),
                                    rotary_axis(AXIS_A, TABLE, Point(1, 0, 0)));
  const Result result = wrap(machdef.get(), Point(3, 7, 0), Point(0.4, 0.5, math::m_pi2), 2, 1);
  EXPECT_NEAR_POINT(result.point, Point(0, 7, 3), kHandTolerance);
  EXPECT_NEAR(result.radius, 3, kHandTolerance);
  EXPECT_NEAR_POINT(result.rotary, Point(-math::m_pi2, 0.5, math::m_pi2), kHandTolerance);
}

TEST(Wrapping, OnHeadTableTurnsAboutThePrimaryAsItStands) {
  const auto machdef = make_machine(MC_HT, rotary_axis(AXIS_C, TABLE, Point(0, 0, 1)),
                                    rotary_axis(AXIS_B, HEAD, Point(0, 1, 0)));
  const Result result = wrap(machdef.get(), Point(0, 2, 5), Point(0.4, 0.5, 0.6), 0, 1);
  EXPECT_NEAR_POINT(result.point, Point(2, 0, 5), kHandTolerance);
  EXPECT_NEAR_POINT(result.rotary, Point(0.4, 0.5, math::m_pi2), kHandTolerance);
}

// No axis turns the part there; the primary serves all the same.
TEST(Wrapping, OnHeadHeadTurnsAboutThePrimary) {
  const auto machdef = make_machine(MC_HH, rotary_axis(AXIS_C, HEAD, Point(0, 0, 1)),
                                    rotary_axis(AXIS_B, HEAD, Point(0, 1, 0)));
  const Result result = wrap(machdef.get(), Point(0, 2, 5), Point(0.4, 0.5, 0.6), 0, 1);
  EXPECT_NEAR_POINT(result.point, Point(2, 0, 5), kHandTolerance);
}

void expect_neutral(const Result& result) {
  EXPECT_NEAR_POINT(result.point, Point(5, 0, 3), 0);
  EXPECT_NEAR_POINT(result.rotary, Point(40, 41, 42), 0);
  EXPECT_EQ(result.radius, 0);
}

TEST(Wrapping, WithoutAnAxisIsNeutral) {
  for (const MACHINE_TYPE type : {MC_TT, MC_HT, MC_HH})
    expect_neutral(
        wrap(make_machine(type, no_axis(), no_axis()).get(), Point(5, 0, 3), Point(40, 41, 42), 1, 1));
}

TEST(Wrapping, OnHeadTableWithoutAPrimaryIsNeutral) {
  const auto machdef = make_machine(MC_HT, no_axis(), rotary_axis(AXIS_B, HEAD, Point(0, 1, 0)));
  expect_neutral(wrap(machdef.get(), Point(5, 0, 3), Point(40, 41, 42), 1, 1));
}

TEST(Wrapping, OfAnUnknownTypeIsNeutral) {
  const auto machdef = about_x();
  machdef->setMachType(kUnknownType);
  expect_neutral(wrap(machdef.get(), Point(5, 0, 3), Point(40, 41, 42), 1, 1));
}

TEST(Wrapping, WithoutAMachineIsNeutral) {
  expect_neutral(wrap(nullptr, Point(5, 0, 3), Point(40, 41, 42), 1, 1));
}

TEST(Wrapping, LeavesTheMachineUnturned) {
  const auto machdef = make_machine(MC_TT, rotary_axis(AXIS_C, TABLE, Point(0, 0, 1)),
                                    rotary_axis(AXIS_A, TABLE, Point(1, 0, 0)));
  machdef->setToolDir(Point(1, 0, 0));
  machdef->flags(kVerticalTool);
  const auto before = vector_form::numbers(k5ax_test::machine_form(*machdef));
  wrap(machdef.get(), Point(3, 7, 0), Point(0.4, 0.5, 0.6), 2, 1);
  EXPECT_EQ(vector_form::numbers(k5ax_test::machine_form(*machdef)), before);
}

TEST(Wrapping, OutputsMayBeTheInputs) {
  const auto machdef = about_x();
  Point point(5, 0, 3);
  Point rotary(40, 41, 42);
  double radius = 0;
  md::Cartesian2AxialRotaryVals(machdef.get(), point, rotary, 1, 1, point, rotary, radius);
  EXPECT_NEAR_POINT(point, Point(5, 3, 0), kHandTolerance);
  EXPECT_NEAR_POINT(rotary, Point(math::m_pi2, 41, 42), kHandTolerance);
}

// A value that is no number goes through as such: a clamp before the arc cosine would turn it into an angle.
TEST(Wrapping, APointThatIsNoNumberGivesAnAngleThatIsNone) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const Result result = wrap(about_x().get(), Point(5, nan, 3), Point(), 1, 1);
  EXPECT_TRUE(std::isnan(result.rotary.x));
  EXPECT_TRUE(std::isnan(result.radius));
}

TEST(WrappingFlat, AnswersAsTheClassFace) {
  const double point[] = {5, 0, 3};
  const double rotary[] = {40, 41, 42};
  double out_point[3] = {};
  double out_rotary[3] = {};
  double radius = 0;
  Cartesian2AxialRotaryVals_c(about_x().get(), point, rotary, 1, -1, out_point, out_rotary, &radius);

  const double expected_point[] = {5, -3, 0};
  const double expected_rotary[] = {-math::m_pi2, 41, 42};
  EXPECT_NEAR_ARRAY(out_point, expected_point, 3, kHandTolerance);
  EXPECT_NEAR_ARRAY(out_rotary, expected_rotary, 3, kHandTolerance);
  EXPECT_NEAR(radius, 3, kHandTolerance);
}

TEST(WrappingFlat, OutputsMayBeTheInputs) {
  double point[] = {5, 0, 3};
  double rotary[] = {40, 41, 42};
  double radius = 0;
  Cartesian2AxialRotaryVals_c(about_x().get(), point, rotary, 1, 1, point, rotary, &radius);

  const double expected_point[] = {5, 3, 0};
  const double expected_rotary[] = {math::m_pi2, 41, 42};
  EXPECT_NEAR_ARRAY(point, expected_point, 3, kHandTolerance);
  EXPECT_NEAR_ARRAY(rotary, expected_rotary, 3, kHandTolerance);
}

TEST(WrappingFlat, WritesNothingWhenAnyPointerIsNull) {
  const auto machdef = about_x();
  const double point[] = {5, 0, 3};
  const double rotary[] = {40, 41, 42};
  for (int null_one = 0; null_one < 6; ++null_one) {
    double out_point[] = {101, 102, 103};
    double out_rotary[] = {104, 105, 106};
    double radius = 107;
    Cartesian2AxialRotaryVals_c(null_one == 0 ? nullptr : machdef.get(), null_one == 1 ? nullptr : point,
                                null_one == 2 ? nullptr : rotary, 1, 1, null_one == 3 ? nullptr : out_point,
                                null_one == 4 ? nullptr : out_rotary, null_one == 5 ? nullptr : &radius);
    const double untouched_point[] = {101, 102, 103};
    const double untouched_rotary[] = {104, 105, 106};
    EXPECT_NEAR_ARRAY(out_point, untouched_point, 3, 0) << "null argument " << null_one;
    EXPECT_NEAR_ARRAY(out_rotary, untouched_rotary, 3, 0) << "null argument " << null_one;
    EXPECT_EQ(radius, 107) << "null argument " << null_one;
  }
}

}  // namespace
