// Laws of the transforms between part and machine.
#include <k5ax/machdef.h>

#include <cmath>
#include <limits>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "laws/generators.h"
#include "laws/round_trip.h"
#include "laws/ulps.h"
#include "support/near.h"

namespace {

using laws::require_near;
using vector_form::length;
using vector_form::Machine;
using vector_form::point;
using vector_form::vec;
using vector_form::Vec;

constexpr double kHalfEps = std::numeric_limits<double>::epsilon() / 2;

// Two ways of one point, each of two turns at most, over vectors of length L at most: 26 units of the last
// place of L for each turn and 16 for |a|^2 (see round_trip.h), four turns.
constexpr double kTwoWays = 4 * (26 + 16);

Vec to_part(const md::CMachDef& machdef, const Vec& p_mach, const Vec& abc) {
  Geometry::TPoint<double> p_part;
  Geometry::TPoint<double> d_tool_part;
  machdef.Mach2PartCoords(point(p_mach), point(abc), p_part, d_tool_part);
  return vec(p_part);
}

Vec to_machine(const md::CMachDef& machdef, const Vec& p_part, const Vec& abc) {
  return vec(machdef.Part2MachCoords(point(p_part), point(abc)));
}

// No vector that is met on the way is longer: from the origin or from a base point, before a turn or after.
double longest_on_the_way(const Machine& m, const Vec& p) {
  return length(p) + 2 * (length(m.primary.base) + length(m.secondary.base));
}

// The rigid motion that a law moves a whole machine by: a turn about a line through the origin, then a shift.
struct Motion {
  Vec axis;
  double turn;
  Vec shift;

  Vec direction(const Vec& d) const { return turned(d, axis, turn); }
  Vec place(const Vec& p) const { return direction(p) + shift; }
};

Machine moved(Machine m, const Motion& motion) {
  for (vector_form::Axis* const axis : {&m.primary, &m.secondary}) {
    axis->base = motion.place(axis->base);
    axis->direction = motion.direction(axis->direction);
  }
  m.tool_dir = motion.direction(m.tool_dir);
  return m;
}

RC_GTEST_PROP(TransformLaws, FromMachineToPartAndBackIsTheStart, ()) {
  const double size = *laws::machine_size();
  const laws::RoundTrips trips(*laws::machine(size));
  RC_ASSERT(trips.from_machine(point(*laws::position(size)), point(*laws::angles())) <= laws::kRoundTripUlps);
}

RC_GTEST_PROP(TransformLaws, FromPartToMachineAndBackIsTheStart, ()) {
  const double size = *laws::machine_size();
  const laws::RoundTrips trips(*laws::machine(size));
  RC_ASSERT(trips.from_part(point(*laws::position(size)), point(*laws::angles())) <= laws::kRoundTripUlps);
}

RC_GTEST_PROP(TransformLaws, TwoTurnsOfOneAxisAreTheTurnByTheirSum, ()) {
  const double size = *laws::machine_size();
  const Machine m = *laws::machine_of_one_axis(size);
  const auto machdef = k5ax_test::make_machdef(m);
  const Vec p = *laws::position(size);
  const double first = *laws::angle();
  const double next = *laws::angle();
  const double sum = first + next;

  const Vec in_two = to_part(*machdef, to_part(*machdef, p, {first, first, first}), {next, next, next});
  // The sum of the angles is rounded, and turns by that much more: 14 u of the distance.
  require_near(in_two, to_part(*machdef, p, {sum, sum, sum}), kTwoWays + 14, longest_on_the_way(m, p));
}

RC_GTEST_PROP(TransformLaws, TheMatrixToTheMachineCarriesAPointAsTheCallDoes, ()) {
  const double size = *laws::machine_size();
  const Machine m = *laws::machine(size);
  const auto machdef = k5ax_test::make_machdef(m);
  const Vec p = *laws::position(size);
  const Vec abc = *laws::angles();
  const Vec by_matrix = vec(point(p) * machdef->Part2MachTransform(point(abc)));
  // The matrix is rounded like the point, component by component: 3 of them make a component of the point,
  // for each of 2 matrices and their product.
  require_near(by_matrix, to_machine(*machdef, p, abc), kTwoWays + 9 * 26, longest_on_the_way(m, p));
}

RC_GTEST_PROP(TransformLaws, ThePartIsReachedByTheMatricesOfTheTablesAxesPrimaryFirst, ()) {
  const double size = *laws::machine_size();
  const Machine m = *laws::machine(size);
  const auto machdef = k5ax_test::make_machdef(m);
  const Vec p = *laws::position(size);
  const Vec abc = *laws::angles();

  Geometry::Matrix primary;
  Geometry::Matrix secondary;
  machdef->Mach2PartTransform(Geometry::TPoint<double>(), point(abc), primary, secondary);
  Geometry::TPoint<double> p_part = point(p);
  if (on_table(m.primary)) p_part = p_part * primary;
  if (on_table(m.secondary)) p_part = p_part * secondary;
  require_near(vec(p_part), to_part(*machdef, p, abc), kTwoWays + 9 * 26, longest_on_the_way(m, p));

  // And the one matrix of both is their product, to the bit.
  RC_ASSERT(k5ax_test::components(machdef->Mach2PartTransform(point(p), point(abc))) ==
            k5ax_test::components(secondary * primary));
}

RC_GTEST_PROP(TransformLaws, WholeTurnsChangeNothing, ()) {
  const double size = *laws::machine_size();
  const Machine m = *laws::machine(size);
  const auto machdef = k5ax_test::make_machdef(m);
  const Vec p = *laws::position(size);
  const Vec abc = *laws::angles();
  const int turns = *rc::gen::element(1, -1, 2, -3, 10);
  const double turn = turns * math::m_2pi;
  const Vec further = abc + Vec{turn, turn, turn};

  // 2 pi as a double is off by 2.5e-16 = 2.3 u, the product by |turns| 6.3 u / 2, the sum by (7 + |turn|) u:
  // radians that two axes turn by.
  const double ulps = kTwoWays + 2 * (std::abs(turns) * 5.5 + 7 + std::abs(turn));
  require_near(to_part(*machdef, p, further), to_part(*machdef, p, abc), ulps, longest_on_the_way(m, p));
  require_near(to_machine(*machdef, p, further), to_machine(*machdef, p, abc), ulps,
               longest_on_the_way(m, p));
}

RC_GTEST_PROP(TransformLaws, PointsOnTheLineOfTheOnlyAxisStay, ()) {
  const double size = *laws::machine_size();
  const Machine m = *laws::machine_of_one_axis(size);
  const auto machdef = k5ax_test::make_machdef(m);
  const Vec p = m.primary.base + m.primary.direction * (*rc::gen::element(0.0, 1.0, -0.3, 0.7) * size);
  const Vec abc = *laws::angles();
  // The point itself is rounded off the line, by 3 u.
  require_near(to_part(*machdef, p, abc), p, kTwoWays + 6, longest_on_the_way(m, p));
  require_near(to_machine(*machdef, p, abc), p, kTwoWays + 6, longest_on_the_way(m, p));
}

RC_GTEST_PROP(TransformLaws, DistancesStay, ()) {
  const double size = *laws::machine_size();
  const Machine m = *laws::machine(size);
  const auto machdef = k5ax_test::make_machdef(m);
  const Vec p = *laws::position(size);
  const Vec q = *laws::position(size);
  const Vec abc = *laws::angles();
  const double longest = longest_on_the_way(m, p) + longest_on_the_way(m, q);
  const double before = length(p - q);
  const double after = length(to_part(*machdef, p, abc) - to_part(*machdef, q, abc));
  RC_ASSERT(std::abs(after - before) <= 2 * kTwoWays * laws::unit_of_last_place(longest));
}

RC_GTEST_PROP(TransformLaws, AMachineInInchesTurnsInInches, ()) {
  const double size = *laws::machine_size();
  const Machine m = *laws::machine(size);
  const auto machdef = k5ax_test::make_machdef(m);
  const Vec p = *laws::position(size);
  const Vec abc = *laws::angles();
  const Vec p_part_mm = to_part(*machdef, p, abc);
  const Vec p_mach_mm = to_machine(*machdef, p, abc);

  machdef->scale(false);
  // Points and base points are rounded once more on the way to inches: 2 u of each, turned twice.
  const double longest = longest_on_the_way(m, p) / 25.4;
  const double ulps = kTwoWays + 8;
  require_near(to_part(*machdef, p * (1 / 25.4), abc), p_part_mm * (1 / 25.4), ulps, longest);
  require_near(to_machine(*machdef, p * (1 / 25.4), abc), p_mach_mm * (1 / 25.4), ulps, longest);
}

// What the frame is that machine, point and result are all written in does not matter.
RC_GTEST_PROP(TransformLaws, AMachineInAnotherFrameTurnsInThatFrame, ()) {
  const double size = *laws::machine_size();
  const Machine m = *laws::machine(size);
  const Motion motion{*laws::unit_direction(), *laws::angle(), *laws::position(size)};
  const auto machdef = k5ax_test::make_machdef(m);
  const auto there = k5ax_test::make_machdef(moved(m, motion));
  const Vec p = *laws::position(size);
  const Vec abc = *laws::angles();

  // A direction is off by 19 u of itself after the motion, and turns a point by twice that at most; base
  // points and points by 20 u. Two axes, there and of the result.
  const double ulps = kTwoWays + 2 * (4 * 19 + 2 * 20) + 2 * 20;
  const double longest = longest_on_the_way(m, p) + 5 * length(motion.shift);
  require_near(to_part(*there, motion.place(p), abc), motion.place(to_part(*machdef, p, abc)), ulps, longest);
  require_near(to_machine(*there, motion.place(p), abc), motion.place(to_machine(*machdef, p, abc)), ulps,
               longest);
}

RC_GTEST_PROP(TransformLaws, TheToolDirectionKeepsItsLength, ()) {
  const Machine m = *laws::machine(1);
  Geometry::TPoint<double> p_part;
  Geometry::TPoint<double> d_tool_part;
  k5ax_test::make_machdef(m)->Mach2PartCoords(Geometry::TPoint<double>(), point(*laws::angles()), p_part,
                                              d_tool_part);
  // A direction of length 1, turned twice; its own length is rounded to 4 u.
  RC_ASSERT(std::abs(length(vec(d_tool_part)) - 1) <= (kTwoWays + 4) * 2 * kHalfEps);
}

}  // namespace
