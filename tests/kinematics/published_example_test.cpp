// A published worked example of a machine whose two rotary axes both carry the part, row by row.
//
// C.-H. She and C.-C. Chang, Int. J. Machine Tools & Manufacture 47 (2007) 537-545: cutter locations on a
// part, and the machine positions and angles that the paper prints for them.
#include <k5ax/machdef.h>

#include <cmath>
#include <ostream>

#include <gtest/gtest.h>

#include "support/hand_machine.h"
#include "support/near.h"

namespace {

using k5ax_test::make_machine;
using k5ax_test::Point;
using k5ax_test::rotary_axis;

struct Row {
  Point p_part;  // cutter location, millimetres
  Point d_tool;  // tool axis as printed, three decimals
  Point p_mach;  // machine position, four decimals
  double a_deg;  // four decimals
  double c_deg;
};

std::ostream& operator<<(std::ostream& out, const Row& row) {
  return out << "cutter location (" << row.p_part.x << ", " << row.p_part.y << ", " << row.p_part.z << ')';
}

const Row kRows[] = {
    {{-0.806, -0.341, 36.161}, {0.481, 0.511, 0.712}, {-24.2844, -63.1582, 51.0824}, 44.6021, 43.2678},
    {{-24.840, -25.901, 0.537}, {0.481, 0.511, 0.712}, {-24.2659, -63.1242, 1.0823}, 44.6021, 43.2678},
    {{-24.840, -25.009, -0.074}, {0.487, 0.492, 0.722}, {-24.8800, -61.5673, 1.3479}, 43.7801, 44.7074},
    {{-24.840, -24.104, -0.662}, {0.492, 0.472, 0.731}, {-25.5358, -60.0974, 1.5607}, 43.0297, 46.1885},
    {{-24.841, -23.188, -1.225}, {0.498, 0.453, 0.740}, {-26.2334, -58.6541, 1.7448}, 42.2686, 47.7091},
    {{-24.841, -22.260, -1.765}, {0.503, 0.433, 0.748}, {-26.9728, -57.3078, 1.8801}, 41.5826, 49.2770},
    {{-24.841, -21.322, -2.281}, {0.507, 0.414, 0.756}, {-27.7483, -55.9909, 1.9903}, 40.8872, 50.7660},
    {{-24.842, -20.373, -2.773}, {0.512, 0.395, 0.763}, {-28.5670, -54.7835, 2.0550}, 40.2706, 52.3504},
    {{-24.842, -19.415, -3.241}, {0.516, 0.375, 0.770}, {-29.4250, -53.6175, 2.0918}, 39.6461, 53.9924},
    {{-24.842, -18.447, -3.685}, {0.520, 0.356, 0.777}, {-30.3180, -52.4902, 2.1042}, 39.0133, 55.6039},
    {{-24.842, -17.471, -4.105}, {0.524, 0.336, 0.783}, {-31.2527, -51.4913, 2.0719}, 38.4639, 57.3311},
};

// Four printed decimals are good to 5e-5, and the figures are met within 6e-5.
constexpr double kPrinted = 6e-5;

class PublishedExample : public testing::TestWithParam<Row> {
 protected:
  // C carries the part and stands on A, so A is the primary and C the secondary.
  PublishedExample()
      : m_machdef(make_machine(MC_TT, rotary_axis(AXIS_A, TABLE, Point(1, 0, 0), Point(-35, -45, -45)),
                               rotary_axis(AXIS_C, TABLE, Point(0, 0, 1), Point(-25, -25, -15)))) {}

  // From the printed components as they stand.
  double a() const { return std::acos(GetParam().d_tool.z); }
  double c() const { return std::atan2(GetParam().d_tool.x, GetParam().d_tool.y); }

  std::unique_ptr<md::CMachDef> m_machdef;
};

TEST_P(PublishedExample, PartPointComesToThePrintedMachinePosition) {
  EXPECT_NEAR(a() * math::R2D, GetParam().a_deg, kPrinted);
  EXPECT_NEAR(c() * math::R2D, GetParam().c_deg, kPrinted);
  // The paper turns the part by +A and +C where the library's part to machine transform turns it by minus the
  // angle.
  EXPECT_NEAR_POINT(m_machdef->Part2MachCoords(GetParam().p_part, Point(-a(), 0, -c())), GetParam().p_mach,
                    kPrinted);
}

TEST_P(PublishedExample, MachinePositionComesBackToThePartPoint) {
  Point p_part;
  Point d_tool_part;
  m_machdef->Mach2PartCoords(GetParam().p_mach, Point(-a(), 0, -c()), p_part, d_tool_part);
  // A rotation keeps distances, but each coordinate mixes three of 6e-5.
  EXPECT_NEAR_POINT(p_part, GetParam().p_part, 2 * kPrinted);
}

INSTANTIATE_TEST_SUITE_P(Rows, PublishedExample, testing::ValuesIn(kRows));

}  // namespace
