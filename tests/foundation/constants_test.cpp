// The constant points and the angle constants.
#include <gtest/gtest.h>

#include <k5ax/foundation.h>

#include "support/near.h"

namespace {

using Geometry::TPoint;

TEST(ConstantPoints, OriginIsAllZero) { EXPECT_TRUE(CUtility::pt_o == TPoint<double>(0, 0, 0)); }
TEST(ConstantPoints, XIsTheUnitDirectionOfX) { EXPECT_TRUE(CUtility::pt_x == TPoint<double>(1, 0, 0)); }
TEST(ConstantPoints, YIsTheUnitDirectionOfY) { EXPECT_TRUE(CUtility::pt_y == TPoint<double>(0, 1, 0)); }
TEST(ConstantPoints, ZIsTheUnitDirectionOfZ) { EXPECT_TRUE(CUtility::pt_z == TPoint<double>(0, 0, 1)); }

// The decimal texts are the shortest ones that name the double nearest to each value, so the comparisons are
// exact.
TEST(AngleConstants, PiIsTheNearestDouble) { EXPECT_EQ(math::m_pi, 3.141592653589793); }
TEST(AngleConstants, HalfPiIsTheNearestDouble) { EXPECT_EQ(math::m_pi2, 1.5707963267948966); }
TEST(AngleConstants, TwoPiIsTheNearestDouble) { EXPECT_EQ(math::m_2pi, 6.283185307179586); }
TEST(AngleConstants, DegreesToRadiansIsTheNearestDouble) { EXPECT_EQ(math::D2R, 0.017453292519943295); }
TEST(AngleConstants, RadiansToDegreesIsTheNearestDouble) { EXPECT_EQ(math::R2D, 57.29577951308232); }

TEST(AngleConstants, FlatDegreesToRadiansIsTheSame) { EXPECT_EQ(k5ax_D2R(), 0.017453292519943295); }
TEST(AngleConstants, FlatRadiansToDegreesIsTheSame) { EXPECT_EQ(k5ax_R2D(), 57.29577951308232); }

}  // namespace
