// The tool paths of examples/toolpaths: does the cutter touch the dome and the blade, along the direction
// that it should have there, within the machine's travels? Everything is worked out from the rows and from
// the shape of the part, whose formulas are written down here once more.
#include <cmath>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/near.h"
#include "system/tree_support.h"

namespace {

using namespace k5ax_test;
using vector_form::Vec;

constexpr int kDomeRounds = 14;
constexpr int kDomePlaces = 101;
constexpr int kBladePasses = 5;
constexpr int kBladePlaces = 201;

// The rows: a way in, the dome, a way out and one in, the blade, a way out.
constexpr int kFirstOfDome = 1;
constexpr int kFirstOfBlade = kFirstOfDome + kDomeRounds * kDomePlaces + 2;
constexpr int kRows = kFirstOfBlade + kBladePasses * kBladePlaces + 1;

struct Row {
  Vec p;
  Vec abc;
};

struct PathCase {
  const char* name;
  double size;  // of the part
};

void PrintTo(const PathCase& path, std::ostream* out) { *out << path.name; }

class ToolPath : public testing::TestWithParam<PathCase> {
 protected:
  void SetUp() override {
    const std::string folder = K5AX_EXAMPLES_FOLDER;
    ASSERT_EQ(MachdefLoad(&machdef, (folder + "/machines/" + GetParam().name + ".k5m").c_str()), 1);

    std::ifstream file(folder + "/toolpaths/" + GetParam().name + ".csv");
    std::string line;
    ASSERT_TRUE(std::getline(file, line));
    ASSERT_EQ(line, "x,y,z,a,b,c");
    while (std::getline(file, line)) {
      std::istringstream text(line);
      double v[6];
      char comma = 0;
      text >> v[0] >> comma >> v[1] >> comma >> v[2] >> comma >> v[3] >> comma >> v[4] >> comma >> v[5];
      ASSERT_TRUE(text) << line;
      rows.push_back({{v[0], v[1], v[2]}, {deg(v[3]), deg(v[4]), deg(v[5])}});
    }
    ASSERT_EQ(rows.size(), static_cast<std::size_t>(kRows));

    datum = vector_form::vec(machdef.mwZeroPos());
    // Six decimals in three coordinates; six of a degree in two angles, at the ball's radius.
    tolerance = 3 * 5e-7 + 2 * deg(5e-7) * ball();
  }

  double size() const { return GetParam().size; }
  double ball() const { return 5 * size(); }

  // The tool's direction on the part, turned by each axis as points are.
  Vec u_tool(const Row& row) const {
    Vec d = vector_form::vec(machdef.getToolDir());
    const auto turn = [&](const boost::shared_ptr<md::CAxis2>& axis) {
      d = vector_form::turned(d, vector_form::vec(axis->GetAxisVector()),
                              axis->GetAngle(row.abc.x, row.abc.y, row.abc.z));
    };
    const bool is_trunnion = machdef.getMachType() == MC_TT;
    turn(is_trunnion ? machdef.getPrimary() : machdef.getSecondary());
    turn(is_trunnion ? machdef.getSecondary() : machdef.getPrimary());
    return d;
  }
  // The centre of the ball at the cutter's end.
  Vec p_ball(const Row& row) const { return row.p + u_tool(row) * ball(); }

  // The blade at s along and h up, and the way up its ruling.
  Vec p_blade(double s, double h) const {
    const Vec foot = {55 + 8 * (1 - s * s), 45 * s, 5};
    return datum + (foot + up_blade(s) * h) * size();
  }
  static Vec up_blade(double s) { return {24 + 10 * s, -9 * s, 60}; }

  md::CMachDef machdef;
  std::vector<Row> rows;
  Vec datum;
  double tolerance = 0;
};

TEST_P(ToolPath, HasAtLeastTwoThousandPositions) { EXPECT_GE(rows.size(), 2000u); }

// The ball touches a sphere of radius R around the dome's centre when its own centre is R + r away.
TEST_P(ToolPath, TouchesTheDome) {
  const Vec centre = datum + Vec{-55, 0, 0} * size();
  for (int i = 0; i < kDomeRounds * kDomePlaces; ++i) {
    const Row& row = rows[static_cast<std::size_t>(kFirstOfDome + i)];
    ASSERT_NEAR(vector_form::length(p_ball(row) - centre), (40 + 5) * size(), tolerance) << i;
  }
}

// Two angles with six decimals of a degree: 2 * 5e-7 degrees.
constexpr double kDirectionTolerance = 1.8e-8;

// In round k the dome leans by theta = 10 + 5 k degrees and the tool by 6 + 0.7 theta, in the same vertical
// plane.
TEST_P(ToolPath, LeansTheToolOnTheDomeLessThanTheSurface) {
  const Vec centre = datum + Vec{-55, 0, 0} * size();
  const double normal_tolerance = tolerance / (45 * size());  // the ball's centre is 45 from the dome's
  for (int i = 0; i < kDomeRounds * kDomePlaces; ++i) {
    const Row& row = rows[static_cast<std::size_t>(kFirstOfDome + i)];
    const double theta_deg = 10 + 5 * (i / kDomePlaces);
    const Vec u_normal = vector_form::safe_unit(p_ball(row) - centre);
    const Vec u = u_tool(row);
    ASSERT_NEAR(u_normal.z, std::cos(deg(theta_deg)), normal_tolerance) << i;
    ASSERT_NEAR(u.z, std::cos(deg(6 + 0.7 * theta_deg)), kDirectionTolerance) << i;
    ASSERT_NEAR(vector_form::dot(vector_form::cross(u_normal, u), {0, 0, 1}), 0,
                normal_tolerance + kDirectionTolerance)
        << i;
  }
}

// The rounds go all the way round: seen from above, the places of a round are 3.6 degrees apart. The
// innermost round has the radius 45 sin 10 = 7.8, so two places that are off by 1.6e-6 at the smallest size
// turn by 2 * 1.6e-6 / 0.49.
TEST_P(ToolPath, GoesRoundTheDome) {
  const Vec centre = datum + Vec{-55, 0, 0} * size();
  for (int round = 0; round < kDomeRounds; ++round) {
    double turned = 0;
    for (int i = 1; i < kDomePlaces; ++i) {
      const std::size_t at = static_cast<std::size_t>(kFirstOfDome + round * kDomePlaces + i);
      const Vec from = p_ball(rows[at - 1]) - centre;
      const Vec to = p_ball(rows[at]) - centre;
      const double step = std::atan2(from.x * to.y - from.y * to.x, from.x * to.x + from.y * to.y);
      ASSERT_NEAR(step, deg(round % 2 == 0 ? 3.6 : -3.6), 7e-6) << round << ' ' << i;
      turned += step;
    }
    ASSERT_NEAR(std::abs(turned), math::m_2pi, 7e-6) << round;  // the steps between cancel
  }
}

// The side of the cutter lies along the ruling and the ball's centre stands off the blade by its radius,
// along the normal in the middle of the ruling. The normal is taken from places close by on the surface, not
// from a formula.
TEST_P(ToolPath, LiesAlongTheFlankOfTheBlade) {
  for (int pass = 0; pass < kBladePasses; ++pass) {
    for (int i = 0; i < kBladePlaces; ++i) {
      const Row& row = rows[static_cast<std::size_t>(kFirstOfBlade + pass * kBladePlaces + i)];
      const double forth = -1 + 2.0 * i / (kBladePlaces - 1);
      const double s = pass % 2 == 0 ? forth : -forth;
      const double h = 0.8 - 0.2 * pass;

      const Vec u = vector_form::safe_unit(up_blade(s));
      ASSERT_NEAR_POINT(vector_form::point(u_tool(row)), vector_form::point(u), kDirectionTolerance)
          << pass << ' ' << i;

      // Central difference: the surface is of the second degree in s, so it is exact but for rounding.
      const double step = 0.01;
      const Vec along = p_blade(s + step, 0.5) - p_blade(s - step, 0.5);
      const Vec u_normal = vector_form::safe_unit(vector_form::cross(u, along));
      ASSERT_LT(u_normal.x, 0);
      ASSERT_NEAR_POINT(vector_form::point(p_ball(row)),
                        vector_form::point(p_blade(s, h) + u_normal * ball()), tolerance)
          << pass << ' ' << i;
    }
  }
}

TEST_P(ToolPath, StaysWithinTheTravels) {
  std::vector<md::sg::tnode<md::CAxis2>*> axes;
  for (const NodePtr& root : machdef.SG())
    for (const NodePtr& node : md::sg::node::all_nodes(root))
      if (auto* axis = md::sg::axis_node(node.get())) axes.push_back(axis);
  ASSERT_EQ(axes.size(), 5u);

  for (std::size_t i = 0; i < rows.size(); ++i) {
    const Point abc = vector_form::point(rows[i].abc);
    zero_table(machdef);
    ASSERT_TRUE(
        md::UpdateNodeAxes_(&machdef, machdef.Part2MachCoords(vector_form::point(rows[i].p), abc), abc))
        << i;
    for (const auto* axis : axes) {
      ASSERT_GE(axis->value(), axis->GetMin()) << AXIS_TYPE2String(axis->GetAxis()) << " at " << i;
      ASSERT_LE(axis->value(), axis->GetMax()) << AXIS_TYPE2String(axis->GetAxis()) << " at " << i;
    }
  }
}

// Continuous: from one place on a surface to the next no rotary axis goes further than 10 degrees.
TEST_P(ToolPath, DoesNotSwingRoundBetweenPlaces) {
  for (int i = 1; i < kRows; ++i) {
    if (i == kFirstOfBlade - 1) continue;  // from the dome to the blade, clear of both
    const Vec step = rows[static_cast<std::size_t>(i)].abc - rows[static_cast<std::size_t>(i - 1)].abc;
    ASSERT_LT(vector_form::length(step), deg(10)) << i;
  }
}

INSTANTIATE_TEST_SUITE_P(Examples, ToolPath,
                         testing::Values(PathCase{"table_table_trunnion", 1},
                                         PathCase{"head_table_swivel", 2}, PathCase{"head_head_fork", 4},
                                         PathCase{"head_table_inch", 0.0625}),
                         [](const auto& shown) { return std::string(shown.param.name); });

}  // namespace
