// Points and tool directions between part and machine, worked out by hand with quarter turns:
//   +90 degrees about X takes (x, y, z) to (x, -z, y), about Y to (z, y, -x), about Z to (-y, x, z);
//   -90 degrees about X takes (x, y, z) to (x, z, -y), about Y to (-z, y, x), about Z to (y, -x, z).
#include <k5ax/machdef.h>

#include <cmath>

#include <gtest/gtest.h>

#include "support/hand_machine.h"
#include "support/near.h"

namespace {

using Geometry::Matrix;
using k5ax_test::kHandTolerance;
using k5ax_test::kUnknownType;
using k5ax_test::kVerticalTool;
using k5ax_test::make_machine;
using k5ax_test::no_axis;
using k5ax_test::Point;
using k5ax_test::rotary_axis;

const Point kQuarters(math::m_pi2, math::m_pi2, math::m_pi2);

// A through (0, 10, 0) along X; C through (20, 0, 0) along Z.
boost::shared_ptr<md::CAxis2> a_axis(AXIS_LOCATION location) {
  return rotary_axis(AXIS_A, location, Point(1, 0, 0), Point(0, 10, 0));
}
boost::shared_ptr<md::CAxis2> c_axis(AXIS_LOCATION location) {
  return rotary_axis(AXIS_C, location, Point(0, 0, 1), Point(20, 0, 0));
}

// A is the primary and carries C. At a = c = 90 degrees, with (x, y, z) taken
//   by A to (x, 10 - z, y - 10),  by C to (20 - y, x - 20, z).
std::unique_ptr<md::CMachDef> machine(MACHINE_TYPE type, AXIS_LOCATION primary, AXIS_LOCATION secondary) {
  return make_machine(type, a_axis(primary), c_axis(secondary));
}

struct Pair {
  Matrix primary;
  Matrix secondary;
};

Pair axis_matrices(const md::CMachDef& machdef, const Point& abc) {
  Pair matrices;
  // Filled beforehand, so that an identity found afterwards has been written.
  matrices.primary.SetMatrix(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12);
  matrices.secondary = matrices.primary;
  machdef.Mach2PartTransform(Point(), abc, matrices.primary, matrices.secondary);
  return matrices;
}

TEST(Mach2PartTransform, ThePrimaryMatrixTurnsAboutThePrimarysOwnLine) {
  const Pair m = axis_matrices(*machine(MC_TT, TABLE, TABLE), kQuarters);
  EXPECT_NEAR_POINT(Point(1, 2, 3) * m.primary, Point(1, 7, -8), kHandTolerance);
}

TEST(Mach2PartTransform, TheSecondaryMatrixTurnsAboutTheSecondarysOwnLine) {
  const Pair m = axis_matrices(*machine(MC_TT, TABLE, TABLE), kQuarters);
  EXPECT_NEAR_POINT(Point(1, 2, 3) * m.secondary, Point(18, -19, 3), kHandTolerance);
}

TEST(Mach2PartTransform, EachAxisTakesItsAngleByLetter) {
  const Pair m = axis_matrices(*machine(MC_TT, TABLE, TABLE), Point(math::m_pi2, 0.3, 0));
  EXPECT_NEAR_POINT(Point(1, 2, 3) * m.primary, Point(1, 7, -8), kHandTolerance);
  EXPECT_NEAR_MATRIX(m.secondary, Matrix(), 0);
}

TEST(Mach2PartTransform, AngleZeroIsTheIdentity) {
  const Pair m = axis_matrices(*machine(MC_TT, TABLE, TABLE), Point());
  EXPECT_NEAR_MATRIX(m.primary, Matrix(), 0);
  EXPECT_NEAR_MATRIX(m.secondary, Matrix(), 0);
}

TEST(Mach2PartTransform, WhereTheAxesSitHasNoSay) {
  for (const AXIS_LOCATION location : {HEAD, TABLE, AXIS_LOCATION_INVALID_LOWEST}) {
    const Pair m = axis_matrices(*machine(MC_TT, location, location), kQuarters);
    EXPECT_NEAR_POINT(Point(1, 2, 3) * m.primary, Point(1, 7, -8), kHandTolerance);
    EXPECT_NEAR_POINT(Point(1, 2, 3) * m.secondary, Point(18, -19, 3), kHandTolerance);
  }
}

TEST(Mach2PartTransform, AllThreeTypesTurn) {
  for (const MACHINE_TYPE type : {MC_TT, MC_HT, MC_HH}) {
    const Pair m = axis_matrices(*machine(type, TABLE, TABLE), kQuarters);
    EXPECT_NEAR_POINT(Point(1, 2, 3) * m.primary, Point(1, 7, -8), kHandTolerance) << type;
  }
}

TEST(Mach2PartTransform, AnUnknownTypeGivesTheIdentityTwice) {
  for (const int type : {-1, 3, 4, -2, 1000}) {
    const Pair m = axis_matrices(*machine(static_cast<MACHINE_TYPE>(type), TABLE, TABLE), kQuarters);
    EXPECT_NEAR_MATRIX(m.primary, Matrix(), 0) << type;
    EXPECT_NEAR_MATRIX(m.secondary, Matrix(), 0) << type;
  }
}

TEST(Mach2PartTransform, AMissingAxisGivesTheIdentity) {
  const Pair without_primary = axis_matrices(*make_machine(MC_TT, no_axis(), c_axis(TABLE)), kQuarters);
  EXPECT_NEAR_MATRIX(without_primary.primary, Matrix(), 0);
  EXPECT_NEAR_POINT(Point(1, 2, 3) * without_primary.secondary, Point(18, -19, 3), kHandTolerance);

  const Pair without_secondary = axis_matrices(*make_machine(MC_TT, a_axis(TABLE), no_axis()), kQuarters);
  EXPECT_NEAR_POINT(Point(1, 2, 3) * without_secondary.primary, Point(1, 7, -8), kHandTolerance);
  EXPECT_NEAR_MATRIX(without_secondary.secondary, Matrix(), 0);
}

TEST(Mach2PartTransform, ThePositionHasNoSay) {
  const auto machdef = machine(MC_TT, TABLE, TABLE);
  EXPECT_NEAR_MATRIX(machdef->Mach2PartTransform(Point(100, -200, 300), kQuarters),
                     machdef->Mach2PartTransform(Point(), kQuarters), 0);
}

// (1, 2, 3) by C to (18, -19, 3), then by A to (18, 7, -29).
TEST(Mach2PartTransform, CombinedTurnsBySecondaryThenPrimary) {
  const Matrix combined = machine(MC_TT, TABLE, TABLE)->Mach2PartTransform(Point(), kQuarters);
  EXPECT_NEAR_POINT(Point(1, 2, 3) * combined, Point(18, 7, -29), kHandTolerance);
}

struct PartCoords {
  Point point;
  Point d_tool;
};

PartCoords mach_to_part(const md::CMachDef& machdef, const Point& xyz, const Point& abc) {
  PartCoords part;
  machdef.Mach2PartCoords(xyz, abc, part.point, part.d_tool);
  return part;
}

// (1, 2, 3) by A to (1, 7, -8), then by C to (13, -19, -8). The tool the other way round, by C first: (0,
// 0.6, 0.8) to (-0.6, 0, 0.8), then by A to (-0.6, -0.8, 0).
TEST(Mach2PartCoords, ThePointIsTurnedByPrimaryThenSecondary) {
  const auto machdef = machine(MC_TT, TABLE, TABLE);
  EXPECT_NEAR_POINT(mach_to_part(*machdef, Point(1, 2, 3), kQuarters).point, Point(13, -19, -8),
                    kHandTolerance);
}

// Deliberate: the tool direction is turned in the other order than the point. Hosts and their files know it
// so.
TEST(Mach2PartCoords, TheToolDirectionIsTurnedBySecondaryThenPrimary) {
  const auto machdef = machine(MC_TT, TABLE, TABLE);
  machdef->setToolDir(Point(0, 0.6, 0.8));
  EXPECT_NEAR_POINT(mach_to_part(*machdef, Point(1, 2, 3), kQuarters).d_tool, Point(-0.6, -0.8, 0),
                    kHandTolerance);
}

// Deliberate: head axes move the tool but not the part, so they turn the direction and leave the point.
TEST(Mach2PartCoords, AHeadPrimaryLeavesThePointAndTurnsTheToolDirection) {
  const auto machdef = machine(MC_HT, HEAD, TABLE);
  machdef->setToolDir(Point(0, 0.6, 0.8));
  const PartCoords part = mach_to_part(*machdef, Point(1, 2, 3), kQuarters);
  EXPECT_NEAR_POINT(part.point, Point(18, -19, 3), kHandTolerance);
  EXPECT_NEAR_POINT(part.d_tool, Point(-0.6, -0.8, 0), kHandTolerance);
}

TEST(Mach2PartCoords, AHeadSecondaryLeavesThePointAndTurnsTheToolDirection) {
  const auto machdef = machine(MC_HT, TABLE, HEAD);
  machdef->setToolDir(Point(0, 0.6, 0.8));
  const PartCoords part = mach_to_part(*machdef, Point(1, 2, 3), kQuarters);
  EXPECT_NEAR_POINT(part.point, Point(1, 7, -8), kHandTolerance);
  EXPECT_NEAR_POINT(part.d_tool, Point(-0.6, -0.8, 0), kHandTolerance);
}

TEST(Mach2PartCoords, TwoHeadAxesLeaveThePointAndTurnTheToolDirection) {
  const auto machdef = machine(MC_HH, HEAD, HEAD);
  machdef->setToolDir(Point(0, 0.6, 0.8));
  const PartCoords part = mach_to_part(*machdef, Point(1, 2, 3), kQuarters);
  EXPECT_NEAR_POINT(part.point, Point(1, 2, 3), 0);
  EXPECT_NEAR_POINT(part.d_tool, Point(-0.6, -0.8, 0), kHandTolerance);
}

TEST(Mach2PartCoords, AnAxisThatSitsNowhereLeavesThePoint) {
  const auto machdef = machine(MC_TT, AXIS_LOCATION_INVALID_LOWEST, AXIS_LOCATION_INVALID_HIGHEST);
  EXPECT_NEAR_POINT(mach_to_part(*machdef, Point(1, 2, 3), kQuarters).point, Point(1, 2, 3), 0);
}

TEST(Mach2PartCoords, TheToolDirectionFeelsNoTranslation) {
  const auto machdef = machine(MC_TT, TABLE, TABLE);
  machdef->getPrimary()->SetBaseVector(Point(100, -50, 70));
  machdef->getSecondary()->SetBaseVector(Point(-30, 80, 60));
  EXPECT_NEAR_POINT(mach_to_part(*machdef, Point(), kQuarters).d_tool, Point(0, -1, 0), kHandTolerance);
}

TEST(Mach2PartCoords, TheToolDirectionIsNotNormalised) {
  const auto machdef = machine(MC_TT, TABLE, TABLE);
  machdef->setToolDir(Point(0, 3, 4));
  EXPECT_NEAR_POINT(mach_to_part(*machdef, Point(), kQuarters).d_tool, Point(-3, -4, 0), kHandTolerance);
}

TEST(Mach2PartCoords, UsesTheVerticalToolOfTheFlags) {
  const auto machdef = machine(MC_TT, TABLE, TABLE);
  machdef->setToolDir(Point(1, 0, 0));
  machdef->flags(kVerticalTool);
  EXPECT_NEAR_POINT(mach_to_part(*machdef, Point(), kQuarters).d_tool, Point(0, -1, 0), kHandTolerance);
}

TEST(Mach2PartCoords, WithoutAxesGivesTheInputsBack) {
  const auto machdef = make_machine(MC_TT, no_axis(), no_axis());
  machdef->setToolDir(Point(0, 3, 4));
  const PartCoords part = mach_to_part(*machdef, Point(1, 2, 3), kQuarters);
  EXPECT_NEAR_POINT(part.point, Point(1, 2, 3), 0);
  EXPECT_NEAR_POINT(part.d_tool, Point(0, 3, 4), 0);
}

TEST(Mach2PartCoords, OfAnUnknownTypeGivesTheInputsBack) {
  for (const int type : {-1, 3}) {
    const auto machdef = machine(static_cast<MACHINE_TYPE>(type), TABLE, TABLE);
    machdef->setToolDir(Point(0, 3, 4));
    const PartCoords part = mach_to_part(*machdef, Point(1, 2, 3), kQuarters);
    EXPECT_NEAR_POINT(part.point, Point(1, 2, 3), 0);
    EXPECT_NEAR_POINT(part.d_tool, Point(0, 3, 4), 0);
  }
}

TEST(Mach2PartCoords, ThePartPointMayBeTheMachinePoint) {
  const auto machdef = machine(MC_TT, TABLE, TABLE);
  Point point(1, 2, 3);
  Point d_tool;
  machdef->Mach2PartCoords(point, kQuarters, point, d_tool);
  EXPECT_NEAR_POINT(point, Point(13, -19, -8), kHandTolerance);
}

TEST(Mach2PartCoords, APointOnTheAxisLineStaysForAnyAngle) {
  const auto machdef = make_machine(MC_TT, a_axis(TABLE), no_axis());
  for (const double angle : {0.3, 1.0, 2.0, -2.5, 17.0})
    EXPECT_NEAR_POINT(mach_to_part(*machdef, Point(-7, 10, 0), Point(angle, 0, 0)).point, Point(-7, 10, 0),
                      kHandTolerance);
}

// The turn back by C takes (x, y, z) to (20 + y, 20 - x, z), the one by A to (x, 10 + z, 10 - y). (1, 2, 3)
// goes by C to (22, 19, 3), then by A to (22, 13, -9).
TEST(Part2MachTransform, TurnsBackBySecondaryThenPrimary) {
  EXPECT_NEAR_POINT(Point(1, 2, 3) * machine(MC_TT, TABLE, TABLE)->Part2MachTransform(kQuarters),
                    Point(22, 13, -9), kHandTolerance);
}

TEST(Part2MachTransform, LeavesAHeadPrimaryOut) {
  EXPECT_NEAR_POINT(Point(1, 2, 3) * machine(MC_HT, HEAD, TABLE)->Part2MachTransform(kQuarters),
                    Point(22, 19, 3), kHandTolerance);
}

TEST(Part2MachTransform, LeavesAHeadSecondaryOut) {
  EXPECT_NEAR_POINT(Point(1, 2, 3) * machine(MC_HT, TABLE, HEAD)->Part2MachTransform(kQuarters),
                    Point(1, 13, 8), kHandTolerance);
}

TEST(Part2MachTransform, OfTwoHeadAxesIsTheIdentity) {
  EXPECT_NEAR_MATRIX(machine(MC_HH, HEAD, HEAD)->Part2MachTransform(kQuarters), Matrix(), 0);
}

TEST(Part2MachTransform, LeavesAnAxisThatSitsNowhereOut) {
  const auto machdef = machine(MC_TT, AXIS_LOCATION_INVALID_LOWEST, AXIS_LOCATION_INVALID_HIGHEST);
  EXPECT_NEAR_MATRIX(machdef->Part2MachTransform(kQuarters), Matrix(), 0);
}

TEST(Part2MachTransform, TurnsByThePrimaryAlone) {
  EXPECT_NEAR_POINT(
      Point(1, 2, 3) * make_machine(MC_TT, a_axis(TABLE), no_axis())->Part2MachTransform(kQuarters),
      Point(1, 13, 8), kHandTolerance);
}

TEST(Part2MachTransform, TurnsByTheSecondaryAlone) {
  EXPECT_NEAR_POINT(
      Point(1, 2, 3) * make_machine(MC_TT, no_axis(), c_axis(TABLE))->Part2MachTransform(kQuarters),
      Point(22, 19, 3), kHandTolerance);
}

TEST(Part2MachTransform, EachAxisTakesItsAngleByLetter) {
  const auto machdef = machine(MC_TT, TABLE, TABLE);
  EXPECT_NEAR_POINT(Point(1, 2, 3) * machdef->Part2MachTransform(Point(math::m_pi2, 0.3, 0)), Point(1, 13, 8),
                    kHandTolerance);
}

// Deliberate: unlike Mach2PartCoords, which turns nothing for an unknown type.
TEST(Part2MachTransform, DoesNotLookAtTheTypeWhenThereIsAnAxis) {
  for (const int type : {-1, 0, 1, 2, 3, 99}) {
    const auto machdef = machine(static_cast<MACHINE_TYPE>(type), TABLE, TABLE);
    EXPECT_NEAR_POINT(Point(1, 2, 3) * machdef->Part2MachTransform(kQuarters), Point(22, 13, -9),
                      kHandTolerance)
        << type;
  }
}

// Deliberate: a table-table machine that was given no axes is taken as one with C and B through the origin,
// and any other as one with C. (1, 2, 3) by -90 degrees about Z to (2, -1, 3), then by -90 degrees about Y to
// (-3, -1, 2).
TEST(Part2MachTransform, OfTableTableWithoutAxesTurnsBackByCThenB) {
  const auto machdef = make_machine(MC_TT, no_axis(), no_axis());
  EXPECT_NEAR_POINT(Point(1, 2, 3) * machdef->Part2MachTransform(Point(0.3, math::m_pi2, math::m_pi2)),
                    Point(-3, -1, 2), kHandTolerance);
}

TEST(Part2MachTransform, OfAnyOtherTypeWithoutAxesTurnsBackByCAlone) {
  for (const int type : {-1, 1, 2, 3}) {
    const auto machdef = make_machine(static_cast<MACHINE_TYPE>(type), no_axis(), no_axis());
    EXPECT_NEAR_POINT(Point(1, 2, 3) * machdef->Part2MachTransform(Point(0.3, math::m_pi2, math::m_pi2)),
                      Point(2, -1, 3), kHandTolerance)
        << type;
  }
}

// One axis is enough to leave the fallback, wherever it sits: a head axis then turns nothing at all.
TEST(Part2MachTransform, WithOneHeadAxisAloneIsTheIdentityAndNotTheFallback) {
  EXPECT_NEAR_MATRIX(make_machine(MC_TT, a_axis(HEAD), no_axis())->Part2MachTransform(kQuarters), Matrix(),
                     0);
  EXPECT_NEAR_MATRIX(make_machine(MC_TT, no_axis(), c_axis(HEAD))->Part2MachTransform(kQuarters), Matrix(),
                     0);
}

TEST(Part2MachTransform, UndoesThePointTransformOfMach2PartCoords) {
  const auto machdef = machine(MC_TT, TABLE, TABLE);
  EXPECT_NEAR_POINT(Point(13, -19, -8) * machdef->Part2MachTransform(kQuarters), Point(1, 2, 3),
                    kHandTolerance);
}

TEST(Part2MachCoords, CarriesThePointByThePartToMachineTransform) {
  EXPECT_NEAR_POINT(machine(MC_TT, TABLE, TABLE)->Part2MachCoords(Point(1, 2, 3), kQuarters),
                    Point(22, 13, -9), kHandTolerance);
}

// Back by +90 degrees about +X: (x, y, z) becomes (x, z, -y).
TEST(Part2MachCoords, TurnsAboutAnAxisDirectionOf5e9AndAboutNoShorterOne) {
  const auto machdef = make_machine(MC_TT, rotary_axis(AXIS_A, TABLE, Point(1, 0, 0), Point()), no_axis());
  machdef->getPrimary()->SetAxisVector(Point(5e-9, 0, 0));
  EXPECT_NEAR_POINT(machdef->Part2MachCoords(Point(1, 2, 3), kQuarters), Point(1, 3, -2), kHandTolerance);
  machdef->getPrimary()->SetAxisVector(Point(std::nextafter(5e-9, 0), 0, 0));
  EXPECT_NEAR_POINT(machdef->Part2MachCoords(Point(1, 2, 3), kQuarters), Point(1, 2, 3), 0);
}

// Back by +90 degrees about u, the bisector of +X and +Y: Z goes to -(u x Z) = -(1, -1, 0) / sqrt(2).
TEST(Part2MachCoords, TheLengthOfTheAxisDirectionHasNoSay) {
  const auto machdef = make_machine(MC_TT, rotary_axis(AXIS_A, TABLE, Point(1, 0, 0), Point()), no_axis());
  for (const double length : {0.25, 1.0, std::sqrt(2.0), 40.0}) {
    machdef->getPrimary()->SetAxisVector(Point(1, 1, 0) * (length / std::sqrt(2.0)));
    EXPECT_NEAR_POINT(machdef->Part2MachCoords(Point(0, 0, 1), kQuarters),
                      Point(-std::sqrt(0.5), std::sqrt(0.5), 0), kHandTolerance);
  }
}

TEST(Part2MachCoords, WithoutAxesFallsBackAsTheTransformDoes) {
  const auto machdef = make_machine(MC_TT, no_axis(), no_axis());
  EXPECT_NEAR_POINT(machdef->Part2MachCoords(Point(1, 2, 3), Point(0.3, math::m_pi2, math::m_pi2)),
                    Point(-3, -1, 2), kHandTolerance);
}

TEST(PartAndMachine, TheTurnedMachineIsWhatTheTransformsSee) {
  const auto machdef = make_machine(MC_TT, rotary_axis(AXIS_C, TABLE, Point(0, 0, 1)),
                                    rotary_axis(AXIS_A, TABLE, Point(1, 0, 0)));
  // The secondary then points along (0, -1, 0): turning back by a = 90 degrees about it is +90 degrees about
  // Y.
  machdef->orientate(math::m_pi2, 0);
  EXPECT_NEAR_POINT(machdef->Part2MachCoords(Point(1, 2, 3), Point(math::m_pi2, 0, 0)), Point(3, 2, -1),
                    kHandTolerance);
}

TEST(PartAndMachine, AnglesBeyondTheLimitsAreTakenAsTheyAre) {
  const auto machdef = make_machine(MC_TT, a_axis(TABLE), no_axis());
  machdef->getPrimary()->SetMin(-0.1);
  machdef->getPrimary()->SetMax(0.1);
  EXPECT_NEAR_POINT(machdef->Part2MachCoords(Point(1, 2, 3), kQuarters), Point(1, 13, 8), kHandTolerance);
}

Point control_point(const md::CMachDef& machdef, const Point& tool_point) {
  Point ctrl(101, 102, 103);
  machdef.Tool2CtrlPt(ctrl, tool_point);
  return ctrl;
}

TEST(Tool2CtrlPt, AddsTheTip) {
  const auto machdef = make_machine(MC_TT, no_axis(), no_axis());
  machdef->head().tip = Point(100, 200, 300);
  EXPECT_NEAR_POINT(control_point(*machdef, Point(1, 2, 3)), Point(101, 202, 303), 0);
}

TEST(Tool2CtrlPt, AddsTheBasePointsOfHeadAxes) {
  const auto machdef = machine(MC_HH, HEAD, HEAD);
  machdef->head().tip = Point(100, 200, 300);
  // (1, 2, 3) + the tip + (0, 10, 0) of A + (20, 0, 0) of C
  EXPECT_NEAR_POINT(control_point(*machdef, Point(1, 2, 3)), Point(121, 212, 303), 0);
}

TEST(Tool2CtrlPt, OnHeadTableAddsTheSecondarysBasePointOnly) {
  const auto machdef = machine(MC_HT, TABLE, HEAD);
  machdef->head().tip = Point(100, 200, 300);
  EXPECT_NEAR_POINT(control_point(*machdef, Point(1, 2, 3)), Point(121, 202, 303), 0);
}

TEST(Tool2CtrlPt, LeavesTableAxesOut) {
  EXPECT_NEAR_POINT(control_point(*machine(MC_TT, TABLE, TABLE), Point(1, 2, 3)), Point(1, 2, 3), 0);
}

TEST(Tool2CtrlPt, LeavesAxesThatSitNowhereOut) {
  const auto machdef = machine(MC_HH, AXIS_LOCATION_INVALID_LOWEST, AXIS_LOCATION_INVALID_HIGHEST);
  EXPECT_NEAR_POINT(control_point(*machdef, Point(1, 2, 3)), Point(1, 2, 3), 0);
}

// Deliberate: it is the head's home pose. Neither type nor tool direction nor flags have a say, and no angle
// enters.
TEST(Tool2CtrlPt, IsTheHomePoseWhateverTheTypeAndTheTool) {
  const auto machdef = machine(kUnknownType, HEAD, HEAD);
  machdef->head().tip = Point(100, 200, 300);
  machdef->head().b_angle = 1;
  machdef->head().length1 = 55;
  machdef->setToolDir(Point(1, 0, 0));
  machdef->flags(kVerticalTool);
  EXPECT_NEAR_POINT(control_point(*machdef, Point(1, 2, 3)), Point(121, 212, 303), 0);
}

}  // namespace
