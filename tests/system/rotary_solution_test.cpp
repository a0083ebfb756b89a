// The closed form by which the example tool paths find their rotary angles, against turning a direction by
// hand.
#include "examples/rotary_solution.h"

#include <cmath>

#include <gtest/gtest.h>

#include "support/near.h"
#include "support/random_machine.h"
#include "support/vector_form.h"

namespace {

using k5ax_test::deg;
using k5ax_test::Random;
using vector_form::Vec;

// The tool direction on the part: by the tilt, then by the turn.
Vec on_part(const Vec& u_tool, AXIS_TYPE tilt_axis, double tilt, double turn) {
  const Vec tilt_direction = tilt_axis == AXIS_A ? Vec{1, 0, 0} : Vec{0, 1, 0};
  return vector_form::turned(vector_form::turned(u_tool, tilt_direction, tilt), {0, 0, 1}, turn);
}

TEST(RotarySolution, TurnsTheToolToWhereItIsWanted) {
  Random random(81);
  int solved = 0;
  for (int i = 0; i < 2000; ++i) {
    const Vec u_tool = random.direction();
    const Vec u_part = random.direction();
    const AXIS_TYPE tilt_axis = random.one_in(2) ? AXIS_A : AXIS_B;
    const int branch = random.one_in(2) ? 1 : -1;
    examples::RotaryAngles angles = {};
    if (!examples::solve_rotary_angles(vector_form::point(u_tool), tilt_axis, branch,
                                       vector_form::point(u_part), random.between(-20, 20), angles))
      continue;
    ++solved;
    // The arc cosine near 0 and pi loses up to half of the digits.
    ASSERT_NEAR_POINT(vector_form::point(on_part(u_tool, tilt_axis, angles.tilt, angles.turn)),
                      vector_form::point(u_part), 3e-8)
        << i;
  }
  EXPECT_GT(solved, 500);
}

TEST(RotarySolution, TurnIsTheNearestOfAllTurns) {
  Random random(82);
  for (int i = 0; i < 500; ++i) {
    const double near = random.between(-20, 20);
    examples::RotaryAngles angles = {};
    ASSERT_TRUE(examples::solve_rotary_angles(CUtility::pt_z, AXIS_A, 1,
                                              vector_form::point(random.direction()), near, angles));
    ASSERT_LE(std::abs(angles.turn - near), math::m_pi * (1 + 1e-15)) << i;
  }
}

TEST(RotarySolution, BranchIsTheSignOfTheTiltOfAStraightHead) {
  const examples::Point u_part(0.6, 0, 0.8);
  examples::RotaryAngles angles = {};
  ASSERT_TRUE(examples::solve_rotary_angles(CUtility::pt_z, AXIS_B, -1, u_part, 0, angles));
  EXPECT_NEAR(angles.tilt, -std::acos(0.8), 1e-15);
  ASSERT_TRUE(examples::solve_rotary_angles(CUtility::pt_z, AXIS_B, 1, u_part, 0, angles));
  EXPECT_NEAR(angles.tilt, std::acos(0.8), 1e-15);
}

// A spindle that leans by 40 degrees along the tilt axis itself comes no nearer to upright than that.
TEST(RotarySolution, RefusesADirectionThatNoTiltReaches) {
  const examples::Point u_tool(std::sin(deg(40)), 0, std::cos(deg(40)));
  examples::RotaryAngles angles = {7, 8};
  EXPECT_FALSE(examples::solve_rotary_angles(u_tool, AXIS_A, 1, CUtility::pt_z, 0, angles));
  EXPECT_EQ(angles.tilt, 7);
  EXPECT_EQ(angles.turn, 8);
}

}  // namespace
