// The constant points and the angle constants hold their values before any initialisation has run: other
// objects of the library, and of a host that links its objects directly, are made from them in no particular
// order.
#include <gtest/gtest.h>

#include <k5ax/foundation.h>

namespace {

using Geometry::TPoint;

struct SeenFirst {
  TPoint<double> pt_o = CUtility::pt_o;
  TPoint<double> pt_x = CUtility::pt_x;
  TPoint<double> pt_y = CUtility::pt_y;
  TPoint<double> pt_z = CUtility::pt_z;
  double pi = math::m_pi;
  double half_pi = math::m_pi2;
  double two_pi = math::m_2pi;
  double degree = math::D2R;
  double radian_deg = math::R2D;
};

// 101 is the first priority there is: made before every static object that names none, the library's among
// them, whose objects this program is linked from.
__attribute__((init_priority(101))) SeenFirst seen;

TEST(ConstantPoints, NeedNoInitialisation) {
  EXPECT_TRUE(seen.pt_o == TPoint<double>(0, 0, 0));
  EXPECT_TRUE(seen.pt_x == TPoint<double>(1, 0, 0));
  EXPECT_TRUE(seen.pt_y == TPoint<double>(0, 1, 0));
  EXPECT_TRUE(seen.pt_z == TPoint<double>(0, 0, 1));
}

TEST(AngleConstants, NeedNoInitialisation) {
  EXPECT_EQ(seen.pi, 3.141592653589793);
  EXPECT_EQ(seen.half_pi, 1.5707963267948966);
  EXPECT_EQ(seen.two_pi, 6.283185307179586);
  EXPECT_EQ(seen.degree, 0.017453292519943295);
  EXPECT_EQ(seen.radian_deg, 57.29577951308232);
}

}  // namespace
