// The comparing helpers fail when they should and say where: a helper that always agrees would make every
// test with it worthless.
#include "support/near.h"

#include <cmath>
#include <limits>

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace {

using Geometry::Matrix;
using Geometry::TPoint;

const TPoint<double> p_exact(1, 2, 3);

TEST(Near, PointWithinTheToleranceIsNear) { EXPECT_NEAR_POINT(p_exact, TPoint<double>(1.25, 2, 3), 0.25); }

TEST(Near, PointBeyondTheToleranceIsNamedByComponentValuesAndDifference) {
  EXPECT_NONFATAL_FAILURE(EXPECT_NEAR_POINT(p_exact, TPoint<double>(1, 2.5, 3), 0.25),
                          "[1] y: 2 against 2.5, difference -0.5");
}

TEST(Near, NanIsNeverNear) {
  const TPoint<double> p_nan(1, 2, std::numeric_limits<double>::quiet_NaN());
  EXPECT_NONFATAL_FAILURE(EXPECT_NEAR_POINT(p_nan, p_nan, 1e9), "[2] z");
}

TEST(Near, MatrixThatDiffersInItsTranslationIsNamedThere) {
  Matrix shifted;
  shifted.SetTranslation(0, 0, 4);
  EXPECT_NEAR_MATRIX(shifted, shifted, 0);
  EXPECT_NONFATAL_FAILURE(EXPECT_NEAR_MATRIX(Matrix(), shifted, 1),
                          "[11] shift z: 0 against 4, difference -4");
}

TEST(Near, MatrixThatDiffersInItsRotationIsNamedThere) {
  Matrix skewed;
  skewed.SetMatrix(1, 0, 0, 0, 1, 2, 0, 0, 1, 0, 0, 0);
  EXPECT_NONFATAL_FAILURE(EXPECT_NEAR_MATRIX(skewed, Matrix(), 1), "[5] row Y, z: 2 against 0, difference 2");
}

TEST(Near, ArrayIsComparedUpToItsLastElement) {
  const double a[] = {1, 2, 3, 4};
  const double b[] = {1, 2, 3, 5};
  EXPECT_NEAR_ARRAY(a, b, 3, 0);
  EXPECT_NONFATAL_FAILURE(EXPECT_NEAR_ARRAY(a, b, 4, 0.5), "[3] element: 4 against 5, difference -1");
}

TEST(Deg, HalfATurnIsPi) { EXPECT_DOUBLE_EQ(k5ax_test::deg(180), std::acos(-1.0)); }

}  // namespace
