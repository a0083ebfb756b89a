// The vector arithmetic that the geometry library leaves out.
#include <gtest/gtest.h>

#include <k5ax/foundation.h>

#include "support/near.h"

namespace {

using Geometry::TPoint;

// Small integers and 3-4-5 triangles, so that every expectation is exact.
TEST(DotProduct, SumsTheProductsOfLikeComponents) {
  EXPECT_EQ(math::dot(TPoint<double>(2, -3, 5), TPoint<double>(7, 11, -13)), 14 - 33 - 65);
}

TEST(CrossProduct, OfXAndYIsZ) {
  EXPECT_NEAR_POINT(math::cross(CUtility::pt_x, CUtility::pt_y), CUtility::pt_z, 0.0);
}

TEST(CrossProduct, FollowsTheRightHandInEveryComponent) {
  // (-3 * -13 - 5 * 11, 5 * 7 - 2 * -13, 2 * 11 - -3 * 7)
  EXPECT_NEAR_POINT(math::cross(TPoint<double>(2, -3, 5), TPoint<double>(7, 11, -13)),
                    (TPoint<double>(-16, 61, 43)), 0.0);
}

TEST(VectorLength, IsTheRootOfTheSumOfSquares) { EXPECT_EQ(math::length(TPoint<double>(-2, 3, 6)), 7); }

TEST(VectorLength, OfZeroIsZero) { EXPECT_EQ(math::length(TPoint<double>(0, 0, 0)), 0); }

TEST(SafeNormal, HasLengthOneAndTheSameSense) {
  EXPECT_NEAR_POINT(math::safe_normal(TPoint<double>(0, -3, 4)), (TPoint<double>(0, -0.6, 0.8)), 0.0);
}

// Deliberate: a direction that is noise points along Z, so that what is made of it is still a direction.
TEST(SafeNormal, OfAVectorShorterThanTheLimitIsZ) {
  EXPECT_NEAR_POINT(math::safe_normal(TPoint<double>(0, 0, 0)), CUtility::pt_z, 0.0);
  EXPECT_NEAR_POINT(math::safe_normal(TPoint<double>(-4.999e-9, 0, 0)), CUtility::pt_z, 0.0);
}

TEST(SafeNormal, OfAVectorAtTheLimitIsItsOwn) {
  EXPECT_NEAR_POINT(math::safe_normal(TPoint<double>(0, -5e-9, 0)), (TPoint<double>(0, -1, 0)), 0.0);
}

}  // namespace
