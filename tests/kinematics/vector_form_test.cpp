// The rotary mathematics against a second formulation in plain vectors, over random machines of every kind:
// all types and unknown ones, axes present and missing, on head and table and nowhere, any letters, lines off
// the origin.
#include <k5ax/kinematics.h>

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "support/hand_machine.h"
#include "support/near.h"
#include "support/random_machine.h"

namespace {

using Geometry::Matrix;
using k5ax_test::kRandomSize;
using k5ax_test::make_machdef;
using k5ax_test::Point;
using k5ax_test::Random;
using k5ax_test::random_machine;
using vector_form::Machine;
using vector_form::point;
using vector_form::Vec;

constexpr int kMachines = 5000;

// A turn about a line is a subtraction, nine products, six sums and an addition; two turns follow one
// another, in both formulations. Lengths stay below 2 (sqrt(3) 300 + sqrt(3) 300) = 2100, and each of about
// 60 operations rounds by eps / 2 of that: 1.4e-11.
constexpr double kLength = 2e-11;

// The same with directions of length up to 5.
constexpr double kDirection = 1e-13;

TEST(VectorForm, Mach2PartCoordsAgrees) {
  Random random(5201);
  int moved_points = 0;
  for (int i = 0; i < kMachines; ++i) {
    const Machine m = random_machine(random);
    const Vec xyz = random.position(kRandomSize);
    const Vec abc = random.angles();

    Point p_part;
    Point d_tool_part;
    make_machdef(m)->Mach2PartCoords(point(xyz), point(abc), p_part, d_tool_part);
    const Vec expected = machine_to_part(m, xyz, abc);
    ASSERT_NEAR_POINT(p_part, point(expected), kLength) << i << m << "\nxyz " << xyz << " abc " << abc;
    ASSERT_NEAR_POINT(d_tool_part, point(tool_in_part(m, abc)), kDirection) << i << m << "\nabc " << abc;
    if (length(expected - xyz) > 1) ++moved_points;
  }
  EXPECT_GT(moved_points, kMachines / 4);
}

TEST(VectorForm, Part2MachCoordsAgrees) {
  Random random(5202);
  int moved_points = 0;
  for (int i = 0; i < kMachines; ++i) {
    const Machine m = random_machine(random);
    const Vec xyz = random.position(kRandomSize);
    const Vec abc = random.angles();

    const Vec expected = part_to_machine(m, xyz, abc);
    ASSERT_NEAR_POINT(make_machdef(m)->Part2MachCoords(point(xyz), point(abc)), point(expected), kLength)
        << i << m << "\nxyz " << xyz << " abc " << abc;
    if (length(expected - xyz) > 1) ++moved_points;
  }
  EXPECT_GT(moved_points, kMachines / 4);
}

TEST(VectorForm, Part2MachTransformAppliedToPointsAgrees) {
  Random random(5203);
  for (int i = 0; i < kMachines; ++i) {
    const Machine m = random_machine(random);
    const Vec abc = random.angles();
    const Matrix part_to_mach = make_machdef(m)->Part2MachTransform(point(abc));

    // Four points that are in no common plane fix a rigid transform.
    for (const Vec& p :
         {Vec{0, 0, 0}, Vec{kRandomSize, 0, 0}, Vec{0, kRandomSize, 0}, Vec{0, 0, kRandomSize}})
      ASSERT_NEAR_POINT(point(p) * part_to_mach, point(part_to_machine(m, p, abc)), kLength)
          << i << m << "\np " << p << " abc " << abc;
  }
}

TEST(VectorForm, Mach2PartTransformAppliedToPointsAgrees) {
  Random random(5204);
  for (int i = 0; i < kMachines; ++i) {
    const Machine m = random_machine(random);
    const Vec p = random.position(kRandomSize);
    const Vec abc = random.angles();
    const auto machdef = make_machdef(m);

    Matrix primary;
    Matrix secondary;
    machdef->Mach2PartTransform(Point(), point(abc), primary, secondary);
    const Matrix combined = machdef->Mach2PartTransform(Point(), point(abc));

    // Whatever the location; an unknown type turns nothing.
    const auto turned_by = [&](const Vec& from, const vector_form::Axis& axis) {
      return has_known_type(m) ? turned_about_line(from, axis, angle_of(axis, abc)) : from;
    };
    ASSERT_NEAR_POINT(point(p) * primary, point(turned_by(p, m.primary)), kLength)
        << i << m << "\nabc " << abc;
    ASSERT_NEAR_POINT(point(p) * secondary, point(turned_by(p, m.secondary)), kLength)
        << i << m << "\nabc " << abc;
    ASSERT_NEAR_POINT(point(p) * combined, point(turned_by(turned_by(p, m.secondary), m.primary)), kLength)
        << i << m << "\nabc " << abc;
  }
}

TEST(VectorForm, OrientateAgreesInEveryField) {
  Random random(5101);
  int refused = 0;
  for (int i = 0; i < kMachines; ++i) {
    const Machine m = random_machine(random);
    const double angle1 = random.angle();
    const double angle2 = random.angle();
    const auto machdef = make_machdef(m);

    const bool known = machdef->orientate(angle1, angle2);
    ASSERT_EQ(known, has_known_type(m)) << i << m;
    const auto now = numbers(k5ax_test::machine_form(*machdef));
    const auto expected = numbers(oriented(m, angle1, angle2));
    ASSERT_PRED_FORMAT4(k5ax_test::near_array, now.data(), expected.data(), now.size(), kLength)
        << i << m << "\nangles " << angle1 << ", " << angle2;
    if (!known) ++refused;
  }
  EXPECT_GT(refused, kMachines / 10);
}

TEST(VectorForm, OrientateTwiceAgrees) {
  Random random(5102);
  for (int i = 0; i < kMachines / 4; ++i) {
    const Machine m = random_machine(random);
    const auto machdef = make_machdef(m);
    Machine expected = m;
    for (int turn = 0; turn < 2; ++turn) {
      const double angle1 = random.angle();
      const double angle2 = random.angle();
      machdef->orientate(angle1, angle2);
      expected = oriented(expected, angle1, angle2);
    }
    const auto now = numbers(k5ax_test::machine_form(*machdef));
    const auto expected_numbers = numbers(expected);
    ASSERT_PRED_FORMAT4(k5ax_test::near_array, now.data(), expected_numbers.data(), now.size(), kLength)
        << i << m;
  }
}

TEST(VectorForm, IsToolAxialAndIsToolRadialAgreeOnAnyMachine) {
  Random random(5103);
  int axial = 0;
  int radial = 0;
  for (int i = 0; i < 2 * kMachines; ++i) {
    const Machine m = random_machine(random);
    const Vec abc = random.angles();
    const auto machdef = make_machdef(m);

    Vec u_tool;
    Vec u_part_axis;
    const bool has_pair = tool_and_part_axis(m, abc, u_tool, u_part_axis);
    const double cosine = dot(u_tool, u_part_axis);
    const bool expect_axial = has_pair && std::abs(cosine - 1) < 1e-5;
    const bool expect_radial = has_pair && std::abs(cosine) < 1e-5;
    ASSERT_EQ(machdef->IsToolAxial(abc.x, abc.y, abc.z), expect_axial) << i << m << "\nabc " << abc;
    ASSERT_EQ(machdef->IsToolRadial(abc.x, abc.y, abc.z), expect_radial) << i << m << "\nabc " << abc;
    axial += expect_axial ? 1 : 0;
    radial += expect_radial ? 1 : 0;
  }
  // The directions along the machine's axes and the hard angles bring both about.
  EXPECT_GT(axial, kMachines / 100);
  EXPECT_GT(radial, kMachines / 40);
}

// A machine whose tool makes exactly this cosine with the part's axis at abc, whatever the pose.
Machine with_tool_at(Machine m, Random& random, const Vec& abc, double cosine) {
  Vec u_tool;
  Vec u_part_axis;
  tool_and_part_axis(m, abc, u_tool, u_part_axis);

  const Vec u_across = safe_unit(cross(u_part_axis, random.direction()));
  Vec tool = u_part_axis * cosine + u_across * std::sqrt(1 - cosine * cosine);
  // The head axis will turn it there.
  if (m.type == MC_HT) tool = turned(tool, m.secondary.direction, -angle_of(m.secondary, abc));
  m.tool_dir = tool * random.between(0.2, 5);
  m.flags = 0;
  return m;
}

TEST(VectorForm, IsToolAxialAndIsToolRadialAreRightOnBothSidesOfTheirThresholds) {
  struct Case {
    double cosine;
    bool axial;
    bool radial;
  };
  // Rounding moves the cosine by about 1e-15, and these stand 1e-9 or more away from the thresholds.
  static const Case cases[] = {
      {1, true, false},          {1 - 0.9999e-5, true, false}, {1 - 1.0001e-5, false, false},
      {-1, false, false},        {-1 + 1e-7, false, false},    {0, false, true},
      {0.9999e-5, false, true},  {-0.9999e-5, false, true},    {1.0001e-5, false, false},
      {-1.0001e-5, false, false}};

  Random random(5104);
  int tried = 0;
  while (tried < kMachines) {
    Machine m = random_machine(random);
    m.type = random.one_in(2) ? MC_TT : MC_HT;
    m.primary.present = true;
    if (m.type == MC_HT) m.secondary.present = true;
    const Vec abc = random.angles();

    for (const Case& c : cases) {
      const Machine posed = with_tool_at(m, random, abc, c.cosine);
      const auto machdef = make_machdef(posed);
      ASSERT_EQ(machdef->IsToolAxial(abc.x, abc.y, abc.z), c.axial) << c.cosine << posed << "\nabc " << abc;
      ASSERT_EQ(machdef->IsToolRadial(abc.x, abc.y, abc.z), c.radial) << c.cosine << posed << "\nabc " << abc;
      ++tried;
    }
  }
}

TEST(VectorForm, Tool2CtrlPtAgrees) {
  Random random(5205);
  for (int i = 0; i < kMachines; ++i) {
    const Machine m = random_machine(random);
    const Vec tool_point = random.position(kRandomSize);
    Point ctrl;
    make_machdef(m)->Tool2CtrlPt(ctrl, point(tool_point));
    ASSERT_NEAR_POINT(ctrl, point(control_point(m, tool_point)), kLength) << i << m;
  }
}

// The reference along X, Y or Z, or against it.
Vec reference(int ref_axis, int ref_sign) {
  const Vec along = ref_axis == 1 ? Vec{0, 1, 0} : ref_axis == 2 ? Vec{0, 0, 1} : Vec{1, 0, 0};
  return ref_sign < 0 ? -along : along;
}

// Both formulations lose digits where they compute the angle: the arc cosine as the reference comes near (at
// a cosine of 1 - x its error is eps / sqrt(2 x)), and the side of the axis is decided by a sign that may be
// noise. The random inputs keep away from that by a sine of 1e-4: eps / 1e-4 = 2.2e-12 radians, times a
// radius of 520.
constexpr double kWrapped = 2e-9;

TEST(VectorForm, CartesianToAxialAgrees) {
  Random random(5105);
  int wrapped_points = 0;
  int neutral = 0;
  for (int i = 0; i < kMachines; ++i) {
    const Machine m = random_machine(random);
    const Vec p = random.vector(kRandomSize);
    const Vec abc = random.angles();
    const int ref_axis = random.below(5) - 1;
    const int ref_sign = random.below(5) - 2;

    const bool has_axis = part_axis(m).present;
    if (has_axis) {
      const Vec d = wrapping_axis(m, abc);
      const Vec normal = cross(safe_unit(p - d * dot(p, d)), reference(ref_axis, ref_sign));
      if (std::abs(dot(safe_unit(normal), d)) < 1e-6 || length(normal) < 1e-4) continue;
    }

    const vector_form::Wrapped expected = wrapped(m, p, abc, reference(ref_axis, ref_sign));
    Point out_point;
    Point out_rotary;
    double radius = -1;
    md::Cartesian2AxialRotaryVals(make_machdef(m).get(), point(p), point(abc), ref_axis, ref_sign, out_point,
                                  out_rotary, radius);
    ASSERT_NEAR_POINT(out_point, point(expected.point), kWrapped)
        << i << m << "\np " << p << " abc " << abc << " reference " << ref_axis << ' ' << ref_sign;
    ASSERT_NEAR_POINT(out_rotary, point(expected.rotary), kWrapped)
        << i << m << "\np " << p << " abc " << abc << " reference " << ref_axis << ' ' << ref_sign;
    ASSERT_NEAR(radius, expected.radius, kLength) << i << m;
    ++(has_axis ? wrapped_points : neutral);
  }
  EXPECT_GT(wrapped_points, kMachines / 4);
  EXPECT_GT(neutral, kMachines / 20);
}

TEST(VectorForm, CartesianToAxialThroughTheFlatFaceIsTheSameToTheLastBit) {
  Random random(5106);
  for (int i = 0; i < kMachines / 4; ++i) {
    const auto machdef = make_machdef(random_machine(random));
    const Point p = point(random.vector(kRandomSize));
    const Point abc = point(random.angles());
    const int ref_axis = random.below(5) - 1;
    const int ref_sign = random.below(3) - 1;

    Point out_point;
    Point out_rotary;
    double radius = -1;
    md::Cartesian2AxialRotaryVals(machdef.get(), p, abc, ref_axis, ref_sign, out_point, out_rotary, radius);

    const double flat_in[] = {p.x, p.y, p.z, abc.x, abc.y, abc.z};
    double flat_out[7] = {};
    Cartesian2AxialRotaryVals_c(machdef.get(), flat_in, flat_in + 3, ref_axis, ref_sign, flat_out,
                                flat_out + 3, flat_out + 6);
    const double expected[] = {out_point.x,  out_point.y,  out_point.z, out_rotary.x,
                               out_rotary.y, out_rotary.z, radius};
    ASSERT_PRED_FORMAT4(k5ax_test::near_array, flat_out, expected, 7, 0) << i;
  }
}

}  // namespace
