// Laws of wrapping, on machines of all types and with lines in any direction.
#include <k5ax/kinematics.h>

#include <cmath>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "laws/generators.h"
#include "laws/ulps.h"

namespace {

using k5ax_test::Point;
using laws::require_near;
using vector_form::length;
using vector_form::Machine;
using vector_form::point;
using vector_form::vec;
using vector_form::Vec;

constexpr double kSize = 300;

// A point of length 520 at most, turned once by the library and once here, about directions that were turned
// twice themselves: 26 units of the last place for each of the four turns, twice for a direction.
constexpr double kTurned = 4 * 26 * 2;
constexpr double kLongestPoint = 520;

// The arc cosine near 1 and -1 is good to the square root of eps alone: 1.5e-8 radians, three times for what
// the cosine is rounded by before.
constexpr double kAngle = 3 * 1.5e-8;

struct Wrapped {
  Machine m;
  Vec p;
  Vec abc;
  Vec u_ref;
  Vec d_axis;  // the direction of the part's axis at that pose
  Vec out_point;
  Vec out_rotary;
  double radius = 0;
};

// One call on a machine, a point and a half-plane that RapidCheck makes.
Wrapped wrap() {
  static const Vec along[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  Wrapped w;
  w.m = *laws::machine(kSize);
  RC_PRE(vector_form::part_axis(w.m).present);
  w.p = *laws::position(kSize);
  w.abc = *laws::angles();
  const int ref_axis = *rc::gen::inRange(0, 3);
  const int ref_sign = *rc::gen::element(1, -1);
  w.u_ref = along[ref_axis] * ref_sign;
  w.d_axis = vector_form::wrapping_axis(w.m, w.abc);

  Point out_point;
  Point out_rotary;
  md::Cartesian2AxialRotaryVals(k5ax_test::make_machdef(w.m).get(), point(w.p), point(w.abc), ref_axis,
                                ref_sign, out_point, out_rotary, w.radius);
  w.out_point = vec(out_point);
  w.out_rotary = vec(out_rotary);
  return w;
}

double wrapped_angle(const Wrapped& w) { return angle_of(part_axis(w.m), w.out_rotary); }

RC_GTEST_PROP(WrappingLaws, ThePointKeepsItsHeightAndItsDistanceFromTheAxis, ()) {
  const Wrapped w = wrap();
  const double height = dot(w.p, w.d_axis);
  const double allowed = kTurned * laws::unit_of_last_place(kLongestPoint);
  RC_ASSERT(std::abs(dot(w.out_point, w.d_axis) - height) <= allowed);
  RC_ASSERT(std::abs(length(w.out_point - w.d_axis * height) - w.radius) <= allowed);
  RC_ASSERT(std::abs(length(w.p - w.d_axis * height) - w.radius) <= allowed);
}

RC_GTEST_PROP(WrappingLaws, TheAngleIsWithinHalfATurnAndTurnsThePointBack, ()) {
  const Wrapped w = wrap();
  RC_PRE(w.radius >= vector_form::kShortest);
  const double angle = wrapped_angle(w);
  RC_ASSERT(std::abs(angle) <= math::m_pi);
  require_near(turned(w.out_point, w.d_axis, angle), w.p, kTurned, kLongestPoint);
}

RC_GTEST_PROP(WrappingLaws, OnlyTheComponentOfThePartsAxisIsReplaced, ()) {
  const Wrapped w = wrap();
  const AXIS_TYPE letter = part_axis(w.m).letter;
  if (letter != AXIS_A) RC_ASSERT(w.out_rotary.x == w.abc.x);
  if (letter != AXIS_B) RC_ASSERT(w.out_rotary.y == w.abc.y);
  if (letter != AXIS_C) RC_ASSERT(w.out_rotary.z == w.abc.z);
}

// Where the reference is at right angles to the axis there is a half-plane to land in.
RC_GTEST_PROP(WrappingLaws, ThePointLandsInTheHalfPlane, ()) {
  const Wrapped w = wrap();
  RC_PRE(std::abs(dot(w.d_axis, w.u_ref)) < 1e-15);
  RC_PRE(w.radius >= vector_form::kShortest);
  const Vec expected = w.d_axis * dot(w.p, w.d_axis) + w.u_ref * w.radius;
  RC_ASSERT(laws::largest_component(w.out_point - expected) <=
            kAngle * w.radius + kTurned * laws::unit_of_last_place(kLongestPoint));
}

}  // namespace
