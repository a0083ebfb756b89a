// Points nearest to a point on a line, by two points and by a base and a direction.

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include <k5ax/platform/geometry.h>

#include "plain_vectors.h"
#include "support/near.h"
#include "support/numbers.h"

namespace {

using Geometry::FindNearestPointOnLine;
using Geometry::NearestPointOnLine;
using k5ax_test::kEps;
using k5ax_test::kNan;
using k5ax_test::Vec;
using Point = Geometry::TPoint<double>;

// The line through (1, 2, 3) along (2, 1, 2), whose length is 3. Two directions on, at (5, 4, 7), stand off
// by (1, -2, 0), which is square to it (2 - 2 = 0): (6, 2, 7). All in whole numbers and so exact.
const Point kBase(1, 2, 3);
const Point kAlong(2, 1, 2);
const Point kBeside(6, 2, 7);
const Point kFoot(5, 4, 7);

TEST(NearestPointOnLine, IsTheFootOfThePerpendicular) {
  EXPECT_EQ(NearestPointOnLine(kBeside, kBase, kBase + kAlong), kFoot);
}

// Three directions back: (-5, -1, -3), and the point beside it.
TEST(NearestPointOnLine, MayLieBeyondTheTwoPoints) {
  EXPECT_EQ(NearestPointOnLine(Point(-4, -3, -3), kBase, kBase + kAlong), Point(-5, -1, -3));
}

TEST(NearestPointOnLine, OfAPointOnTheLineIsThePointItself) {
  EXPECT_EQ(NearestPointOnLine(kFoot, kBase, kBase + kAlong), kFoot);
}

TEST(NearestPointOnLine, IsTheFirstPointWhenTheTwoCoincide) {
  EXPECT_EQ(NearestPointOnLine(kBeside, kBase, kBase), kBase);
}

TEST(NearestPointOnLine, HoldsForPointsThatAlmostCoincide) {
  EXPECT_NEAR_POINT(NearestPointOnLine(Point(3, 4, 5), Point(), Point(0, 0, 1e-200)), Point(0, 0, 5), 0.0);
}

TEST(NearestPointOnLine, IsNotANumberForWhatIsNone) {
  EXPECT_TRUE(std::isnan(NearestPointOnLine(Point(kNan, 0, 0), kBase, kBase + kAlong).x));
  EXPECT_TRUE(std::isnan(NearestPointOnLine(kBeside, kBase, Point(kNan, 0, 0)).x));
}

TEST(FindNearestPointOnLine, IsTheFootOfThePerpendicular) {
  EXPECT_EQ(FindNearestPointOnLine(kBase, kAlong, kBeside), kFoot);
}

TEST(FindNearestPointOnLine, TakesADirectionOfEitherSense) {
  EXPECT_EQ(FindNearestPointOnLine(kBase, -kAlong, kBeside), kFoot);
}

// The steps along the line are 4 and 5 in size: sums and one quotient, each good to half an ulp.
TEST(FindNearestPointOnLine, TakesADirectionOfAnyLength) {
  for (const double size : {5e-324, 1e-310, 1e-200, 1e-31, 1e-9, 0.3, 1e9, 1e31, 1e200, 8e307}) {
    // (0, 1, 0) keeps its direction at any size, while a skew subnormal one has too few bits to have it.
    EXPECT_NEAR_POINT(FindNearestPointOnLine(kBase, Point(0, size, 0), kBeside), Point(1, 2, 3), 0.0) << size;
  }
  for (const double size : {1e-300, 1e-200, 1e-31, 1e-9, 0.3, 1e9, 1e31, 1e200, 8e307}) {
    EXPECT_NEAR_POINT(FindNearestPointOnLine(kBase, kAlong * size, kBeside), kFoot, 16 * kEps) << size;
  }
}

TEST(FindNearestPointOnLine, IsTheBaseForADirectionOfZero) {
  EXPECT_EQ(FindNearestPointOnLine(kBase, Point(), kBeside), kBase);
}

TEST(FindNearestPointOnLine, IsNotANumberForWhatIsNone) {
  EXPECT_TRUE(std::isnan(FindNearestPointOnLine(kBase, Point(kNan, 1, 0), kBeside).x));
  EXPECT_TRUE(std::isnan(FindNearestPointOnLine(kBase, kAlong, Point(0, 0, kNan)).x));
}

TEST(FindNearestPointOnLine, LeavesAnOffsetSquareToTheLine) {
  k5ax_test::Numbers random(20264);
  int checked = 0;
  for (int i = 0; i < 1000; ++i) {
    const Vec base = random.vec_between(-100, 100);
    const Vec along = random.vec_between(-1, 1);
    const Vec p = random.vec_between(-100, 100);
    const double size = k5ax_test::length(along);
    const Point foot =
        FindNearestPointOnLine(k5ax_test::point(base), k5ax_test::point(along), k5ax_test::point(p));
    const Vec offset = k5ax_test::vec(k5ax_test::point(p) - foot);
    const Vec step = k5ax_test::vec(foot - k5ax_test::point(base));
    // Positions of up to 347 (the diagonal of a cube of 200), a dozen roundings on the way.
    EXPECT_NEAR(k5ax_test::dot(offset, along) / size, 0, 12 * kEps * 347) << "round " << i;
    EXPECT_NEAR(k5ax_test::length(k5ax_test::cross(step, along)) / size, 0, 12 * kEps * 347) << "round " << i;
    ++checked;
  }
  EXPECT_EQ(checked, 1000);
}

}  // namespace
