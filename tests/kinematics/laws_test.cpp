// Laws of the rotary mathematics: there and back, one turn after another, whole turns, points that stay, and
// a clone that answers as its original.
#include <k5ax/kinematics.h>

#include <cmath>

#include <gtest/gtest.h>

#include "support/hand_machine.h"
#include "support/near.h"
#include "support/random_machine.h"

namespace {

using k5ax_test::kRandomSize;
using k5ax_test::make_machdef;
using k5ax_test::Point;
using k5ax_test::Random;
using k5ax_test::random_machine;
using vector_form::length;
using vector_form::Machine;
using vector_form::point;
using vector_form::vec;
using vector_form::Vec;

constexpr int kMachines = 1500;

// Four turns about lines at most: lengths below 2100, 120 operations rounding by eps / 2 of that.
constexpr double kLength = 4e-11;

// A machine of a known type with at least one axis, so that neither the fallback nor the identity of an
// unknown type comes in.
Machine machine_with_axes(Random& random) {
  for (;;) {
    const Machine m = random_machine(random);
    if (has_known_type(m) && (m.primary.present || m.secondary.present)) return m;
  }
}

Point to_part(const md::CMachDef& machdef, const Point& p_mach, const Point& abc) {
  Point p_part;
  Point d_tool_part;
  machdef.Mach2PartCoords(p_mach, abc, p_part, d_tool_part);
  return p_part;
}

TEST(Laws, FromMachineToPartAndBackIsTheStart) {
  Random random(1);
  for (int i = 0; i < kMachines; ++i) {
    const Machine m = machine_with_axes(random);
    const auto machdef = make_machdef(m);
    const Point p = point(random.position(kRandomSize));
    const Point abc = point(random.angles());
    ASSERT_NEAR_POINT(machdef->Part2MachCoords(to_part(*machdef, p, abc), abc), p, kLength) << i << m;
  }
}

TEST(Laws, FromPartToMachineAndBackIsTheStart) {
  Random random(2);
  for (int i = 0; i < kMachines; ++i) {
    const Machine m = machine_with_axes(random);
    const auto machdef = make_machdef(m);
    const Point p = point(random.position(kRandomSize));
    const Point abc = point(random.angles());
    ASSERT_NEAR_POINT(to_part(*machdef, machdef->Part2MachCoords(p, abc), abc), p, kLength) << i << m;
  }
}

// The point transform by the per-axis matrices, put together by hand, is what Mach2PartCoords does.
TEST(Laws, ThePointGoesByThePrimaryMatrixThenTheSecondaryMatrixOfTheTableAxes) {
  Random random(3);
  for (int i = 0; i < kMachines; ++i) {
    const Machine m = random_machine(random);
    const auto machdef = make_machdef(m);
    const Point abc = point(random.angles());
    Point p = point(random.position(kRandomSize));
    const Point p_part = to_part(*machdef, p, abc);

    Geometry::Matrix primary;
    Geometry::Matrix secondary;
    machdef->Mach2PartTransform(p, abc, primary, secondary);
    if (on_table(m.primary)) p = p * primary;
    if (on_table(m.secondary)) p = p * secondary;
    ASSERT_NEAR_POINT(p_part, p, kLength) << i << m;
  }
}

TEST(Laws, TwoTurnsOfOneTableAxisAreTheTurnByTheSum) {
  Random random(4);
  int tried = 0;
  while (tried < kMachines) {
    Machine m = random_machine(random);
    m.type = MC_TT;
    m.primary.present = true;
    m.primary.location = TABLE;
    m.secondary.present = false;
    const auto machdef = make_machdef(m);
    const Point p = point(random.position(kRandomSize));
    const double first = random.angle();
    const double next = random.angle();

    const Point step = to_part(*machdef, p, Point(first, first, first));
    ASSERT_NEAR_POINT(to_part(*machdef, step, Point(next, next, next)),
                      to_part(*machdef, p, Point(first + next, first + next, first + next)), kLength)
        << m;
    ++tried;
  }
}

TEST(Laws, WholeTurnsChangeNothing) {
  Random random(5);
  // Adding a turn rounds the angle by eps * 14, and the turn itself is off by 2.4e-16: at a distance of 1040
  // that is 4e-12 for each axis and turn.
  for (int i = 0; i < kMachines; ++i) {
    const Machine m = random_machine(random);
    const auto machdef = make_machdef(m);
    const Point p = point(random.position(kRandomSize));
    const Point abc = point(random.angles());
    const double turn = random.one_in(2) ? math::m_2pi : -math::m_2pi;
    const Point abc_and_turns(abc.x + turn, abc.y + turn, abc.z + turn);
    ASSERT_NEAR_POINT(to_part(*machdef, p, abc_and_turns), to_part(*machdef, p, abc), kLength) << i << m;
    ASSERT_NEAR_POINT(machdef->Part2MachCoords(p, abc_and_turns), machdef->Part2MachCoords(p, abc), kLength)
        << i << m;
  }
}

TEST(Laws, PointsOnTheLineOfTheOnlyTableAxisStay) {
  Random random(6);
  int tried = 0;
  for (int i = 0; i < kMachines; ++i) {
    Machine m = machine_with_axes(random);
    m.secondary.present = false;
    m.primary.present = true;
    const auto machdef = make_machdef(m);
    const Point abc = point(random.angles());
    const Point p_on_line = point(m.primary.base + m.primary.direction * random.between(-60, 60));
    ASSERT_NEAR_POINT(to_part(*machdef, p_on_line, abc), p_on_line, kLength) << m;
    ASSERT_NEAR_POINT(machdef->Part2MachCoords(p_on_line, abc), p_on_line, kLength) << m;
    if (on_table(m.primary)) ++tried;
  }
  EXPECT_GT(tried, kMachines / 4);
}

TEST(Laws, DistancesBetweenPointsStay) {
  Random random(7);
  for (int i = 0; i < kMachines; ++i) {
    const Machine m = random_machine(random);
    const auto machdef = make_machdef(m);
    const Vec p = random.vector(kRandomSize);
    const Vec q = random.vector(kRandomSize);
    const Point abc = point(random.angles());
    const Vec p_mach = vec(machdef->Part2MachCoords(point(p), abc));
    const Vec q_mach = vec(machdef->Part2MachCoords(point(q), abc));
    ASSERT_NEAR(length(p_mach - q_mach), length(p - q), kLength) << i << m;
  }
}

TEST(Laws, TheToolDirectionKeepsItsLength) {
  Random random(8);
  for (int i = 0; i < kMachines; ++i) {
    const Machine m = random_machine(random);
    Point p_part;
    Point d_tool_part;
    make_machdef(m)->Mach2PartCoords(Point(), point(random.angles()), p_part, d_tool_part);
    // Directions of length up to 5, two turns.
    ASSERT_NEAR(length(vec(d_tool_part)), length(tool_direction(m)), 1e-13) << i << m;
  }
}

// At zero every transform is the identity and the pose is the machine itself, but for the vertical tool that
// is written back.
TEST(Laws, ZeroAnglesChangeNothing) {
  Random random(9);
  for (int i = 0; i < kMachines; ++i) {
    const Machine m = random_machine(random);
    const auto machdef = make_machdef(m);
    const Point p = point(random.position(kRandomSize));
    ASSERT_NEAR_POINT(to_part(*machdef, p, Point()), p, kLength) << i << m;
    ASSERT_NEAR_POINT(machdef->Part2MachCoords(p, Point()), p, kLength) << i << m;

    Machine expected = m;
    expected.tool_dir = tool_direction(m);
    machdef->orientate(0, 0);
    const auto now = numbers(k5ax_test::machine_form(*machdef));
    const auto numbers_before = numbers(expected);
    ASSERT_PRED_FORMAT4(k5ax_test::near_array, now.data(), numbers_before.data(), now.size(), kLength)
        << i << m;
  }
}

TEST(Laws, OrientatingByMinusTheAnglesOfASingleAxisTakesItBack) {
  Random random(10);
  for (int i = 0; i < kMachines; ++i) {
    Machine m = machine_with_axes(random);
    // Turning back in the same order undoes one axis only.
    m.secondary.present = m.type == MC_HT;
    m.flags = 0;
    const auto machdef = make_machdef(m);
    const double angle = random.angle();
    machdef->orientate(angle, angle);
    machdef->orientate(-angle, -angle);
    const auto now = numbers(k5ax_test::machine_form(*machdef));
    const auto before = numbers(k5ax_test::machine_form(*make_machdef(m)));
    ASSERT_PRED_FORMAT4(k5ax_test::near_array, now.data(), before.data(), now.size(), kLength) << i << m;
  }
}

// The part's axis of the axial test is the direction that orientate gives the axis which turns the part.
TEST(Laws, AToolAlongThePartsAxisOfTheTurnedMachineIsAxial) {
  Random random(11);
  int tried = 0;
  while (tried < kMachines) {
    Machine m = random_machine(random);
    if (m.type != MC_TT || !m.primary.present) continue;
    // A direction that is too short counts as Z, and so does its opposite.
    if (length(part_axis(m).direction) < vector_form::kShortest) continue;
    const Vec abc = random.angles();
    m.flags = 0;
    const auto turned_machdef = make_machdef(m);
    turned_machdef->orientate(angle_of(m.primary, abc), angle_of(m.secondary, abc));

    const auto machdef = make_machdef(m);
    machdef->setToolDir(turned_machdef->rotary_axis()->GetAxisVector());
    ASSERT_TRUE(machdef->IsToolAxial(abc.x, abc.y, abc.z)) << m << "\nabc " << abc;
    ASSERT_FALSE(machdef->IsToolRadial(abc.x, abc.y, abc.z)) << m << "\nabc " << abc;
    machdef->setToolDir(-turned_machdef->rotary_axis()->GetAxisVector());
    ASSERT_FALSE(machdef->IsToolAxial(abc.x, abc.y, abc.z)) << m << "\nabc " << abc;
    ++tried;
  }
}

// A machine that turns the part about one of the machine's axes, and a reference at right angles to it.
struct WrapCase {
  std::unique_ptr<md::CMachDef> machdef;
  Vec d_axis;
  Vec u_ref;
  int ref_axis;
  int ref_sign;
};

WrapCase wrap_case(Random& random) {
  static const Vec along[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  const int axis = random.below(3);
  Machine m;
  m.type = random.one_in(2) ? MC_TT : MC_HT;
  m.primary = k5ax_test::random_axis(random);
  m.primary.present = true;
  m.primary.letter = static_cast<AXIS_TYPE>(axis);
  m.primary.direction = random.one_in(2) ? along[axis] : -along[axis];

  WrapCase result;
  result.machdef = make_machdef(m);
  result.d_axis = m.primary.direction;
  result.ref_axis = (axis + 1 + random.below(2)) % 3;
  result.ref_sign = random.one_in(2) ? 1 : -1;
  result.u_ref = along[result.ref_axis] * result.ref_sign;
  return result;
}

// The arc cosine near 1 and -1 is good to the square root of eps alone: 1.5e-8 radians, at a radius below
// 520.
constexpr double kWrapped = 1e-5;

TEST(Laws, WrappingBringsThePointIntoTheHalfPlane) {
  Random random(12);
  for (int i = 0; i < kMachines; ++i) {
    const WrapCase c = wrap_case(random);
    const Vec p = random.vector(kRandomSize);
    Point out_point;
    Point out_rotary;
    double radius = 0;
    md::Cartesian2AxialRotaryVals(c.machdef.get(), point(p), point(random.angles()), c.ref_axis, c.ref_sign,
                                  out_point, out_rotary, radius);
    const Vec expected = c.d_axis * dot(p, c.d_axis) + c.u_ref * radius;
    ASSERT_NEAR_POINT(out_point, point(expected), kWrapped) << i;
  }
}

TEST(Laws, WrappingAnswersAnAngleWithinHalfATurnThatTurnsThePointBack) {
  Random random(13);
  for (int i = 0; i < kMachines; ++i) {
    const WrapCase c = wrap_case(random);
    const Vec p = random.vector(kRandomSize);
    Point out_point;
    Point out_rotary;
    double radius = 0;
    md::Cartesian2AxialRotaryVals(c.machdef.get(), point(p), Point(), c.ref_axis, c.ref_sign, out_point,
                                  out_rotary, radius);
    const double angle = angle_of(k5ax_test::axis_form(c.machdef->getPrimary()), vec(out_rotary));
    ASSERT_LE(std::abs(angle), math::m_pi) << i;
    ASSERT_NEAR_POINT(point(turned(vec(out_point), c.d_axis, angle)), point(p), kLength) << i;
  }
}

TEST(Laws, WrappingAWrappedPointAnswersZero) {
  Random random(14);
  for (int i = 0; i < kMachines; ++i) {
    const WrapCase c = wrap_case(random);
    Point p = point(random.vector(kRandomSize));
    Point rotary;
    double radius = 0;
    for (int twice = 0; twice < 2; ++twice)
      md::Cartesian2AxialRotaryVals(c.machdef.get(), p, rotary, c.ref_axis, c.ref_sign, p, rotary, radius);
    // Two times the square root of eps, from the arc cosine, and a little more.
    ASSERT_NEAR(angle_of(k5ax_test::axis_form(c.machdef->getPrimary()), vec(rotary)), 0, 1e-7) << i;
  }
}

TEST(Laws, ACloneAnswersAsItsOriginalToTheLastBit) {
  Random random(15);
  for (int i = 0; i < kMachines / 2; ++i) {
    const Machine m = random_machine(random);
    const auto original = make_machdef(m);
    md::CMachDef clone;
    clone.clone(*original, 3);
    // A clone normalises the directions of its axes; only a direction that was stored at length 1 stays to
    // the bit.
    if (numbers(k5ax_test::machine_form(clone)) != numbers(m)) continue;

    const Point p = point(random.position(kRandomSize));
    const Point abc = point(random.angles());
    ASSERT_EQ(clone.Part2MachCoords(p, abc), original->Part2MachCoords(p, abc)) << i << m;
    ASSERT_EQ(to_part(clone, p, abc), to_part(*original, p, abc)) << i << m;
    ASSERT_EQ(clone.IsToolRadial(abc.x, abc.y, abc.z), original->IsToolRadial(abc.x, abc.y, abc.z)) << i << m;
    Point ctrl_of_clone;
    Point ctrl;
    clone.Tool2CtrlPt(ctrl_of_clone, p);
    original->Tool2CtrlPt(ctrl, p);
    ASSERT_EQ(ctrl_of_clone, ctrl) << i << m;

    ASSERT_EQ(clone.orientate(abc.x, abc.y), original->orientate(abc.x, abc.y)) << i << m;
    ASSERT_EQ(numbers(k5ax_test::machine_form(clone)), numbers(k5ax_test::machine_form(*original))) << i << m;
  }
}

TEST(Laws, OrientatingACloneLeavesTheOriginal) {
  Random random(16);
  for (int i = 0; i < kMachines / 4; ++i) {
    const Machine m = random_machine(random);
    const auto original = make_machdef(m);
    md::CMachDef clone;
    clone.clone(*original, 1);
    clone.orientate(random.angle(), random.angle());
    ASSERT_EQ(numbers(k5ax_test::machine_form(*original)), numbers(k5ax_test::machine_form(*make_machdef(m))))
        << i << m;
  }
}

}  // namespace
