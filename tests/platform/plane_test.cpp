// Planes: where a line meets them, and which points lie in them.

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include <k5ax/platform/geometry.h>

#include "support/near.h"
#include "support/numbers.h"

namespace {

using Geometry::Plane;
using k5ax_test::kEps;
using k5ax_test::kInfinity;
using k5ax_test::kNan;
using Point = Geometry::TPoint<double>;

const Point kOther(-7, -8, -9);  // what a result holds before the call

// The line through (1, 2, 0) and (1, 2, 1) meets the plane z = 5, beyond the second point.
TEST(Plane, MeetsALineBeyondItsSecondPoint) {
  Point p = kOther;
  EXPECT_TRUE(Plane(Point(0, 0, 1), Point(8, 9, 5)).Intersect(Point(1, 2, 0), Point(1, 2, 1), p));
  EXPECT_EQ(p, Point(1, 2, 5));
}

TEST(Plane, MeetsALineBeforeItsFirstPoint) {
  Point p = kOther;
  EXPECT_TRUE(Plane(Point(0, 0, 1), Point(8, 9, 5)).Intersect(Point(1, 2, 7), Point(1, 2, 8), p));
  EXPECT_EQ(p, Point(1, 2, 5));
}

// The normal comes first: the plane z = 7. Taken the other way round, it would be 5 y + 7 z = 14.
TEST(Plane, TakesTheNormalBeforeThePoint) {
  Point p = kOther;
  EXPECT_TRUE(Plane(Point(0, 0, 2), Point(0, 5, 7)).Intersect(Point(3, 4, 0), Point(3, 4, 1), p));
  EXPECT_EQ(p, Point(3, 4, 7));
}

// x + 2 y + 2 z = 5. From (2, 0, 0), where the left side is 2, along (1, 1, 0), where it grows by 3: at
// once (3, 1, 0).
TEST(Plane, MeetsASkewLine) {
  Point p = kOther;
  EXPECT_TRUE(Plane(Point(1, 2, 2), Point(1, 1, 1)).Intersect(Point(2, 0, 0), Point(3, 1, 0), p));
  // The normal of length 3 is divided by it: a handful of roundings of numbers of at most 5.
  EXPECT_NEAR_POINT(p, Point(3, 1, 0), 16 * kEps);
}

TEST(Plane, NormalMayHaveAnyLength) {
  for (const double size : {1e-300, 1e-200, 1e-31, 1e-3, 1e3, 1e31, 1e200, 8e307}) {
    Point p = kOther;
    EXPECT_TRUE(Plane(Point(1, 2, 2) * size, Point(1, 1, 1)).Intersect(Point(2, 0, 0), Point(3, 1, 0), p))
        << size;
    EXPECT_NEAR_POINT(p, Point(3, 1, 0), 16 * kEps) << size;
  }
}

TEST(Plane, LineMayBeGivenByPointsOfAnyDistance) {
  for (const double size : {1e-300, 1e-200, 1e-31, 1e-3, 1e3, 1e31, 1e200, 8e307}) {
    Point p = kOther;
    EXPECT_TRUE(Plane(Point(1, 2, 2), Point(1, 1, 1)).Intersect(Point(), Point(1, 1, 0) * size, p)) << size;
    EXPECT_NEAR_POINT(p, Point(5.0 / 3, 5.0 / 3, 0), 16 * kEps) << size;
  }
}

TEST(Plane, DoesNotMeetAParallelLine) {
  Point p = kOther;
  EXPECT_FALSE(Plane(Point(0, 0, 1), Point(0, 0, 5)).Intersect(Point(), Point(3, 4, 0), p));
  EXPECT_EQ(p, kOther);
}

TEST(Plane, DoesNotMeetALineThatLiesInIt) {
  Point p = kOther;
  EXPECT_FALSE(Plane(Point(0, 0, 1), Point(0, 0, 5)).Intersect(Point(1, 2, 5), Point(3, 4, 5), p));
  EXPECT_EQ(p, kOther);
}

TEST(Plane, DoesNotMeetALineOfOnePoint) {
  Point p = kOther;
  EXPECT_FALSE(Plane(Point(0, 0, 1), Point(0, 0, 5)).Intersect(Point(1, 2, 5), Point(1, 2, 5), p));
  EXPECT_EQ(p, kOther);
}

// The direction (1, 0, s) has length 1 to the last bit, so s is the cosine.
TEST(Plane, LineIsParallelUpToACosineOfOneInABillion) {
  const Plane plane(Point(0, 0, 1), Point(0, 0, 0));
  Point p = kOther;
  EXPECT_FALSE(plane.Intersect(Point(), Point(1, 0, 1e-9), p));
  EXPECT_FALSE(plane.Intersect(Point(), Point(1, 0, -1e-9), p));
  EXPECT_TRUE(plane.Intersect(Point(), Point(1, 0, std::nextafter(1e-9, 1.0)), p));
  EXPECT_TRUE(plane.Intersect(Point(), Point(1, 0, -std::nextafter(1e-9, 1.0)), p));
}

TEST(Plane, LengthsDoNotChangeWhatIsParallel) {
  Point p = kOther;
  for (const double size : {1e-200, 1e-12, 1e-3, 1e3, 1e12, 1e200}) {
    const Plane plane(Point(0, 0, size), Point(0, 0, 0));
    EXPECT_FALSE(plane.Intersect(Point(), Point(1, 0, 0.999e-9), p)) << size;
    EXPECT_TRUE(plane.Intersect(Point(), Point(1, 0, 1.001e-9), p)) << size;
    EXPECT_FALSE(plane.Intersect(Point(), Point(1, 0, 0.999e-9) * size, p)) << size;
    EXPECT_TRUE(plane.Intersect(Point(), Point(1, 0, 1.001e-9) * size, p)) << size;
  }
}

TEST(Plane, DoesNotMeetALineOutOfReachOfADouble) {
  // 1e305 away at a slope of 1e-8: the meeting point would be at 1e313.
  Point p = kOther;
  EXPECT_FALSE(Plane(Point(0, 0, 1), Point(0, 0, 1e305)).Intersect(Point(), Point(1, 0, 1e-8), p));
  EXPECT_EQ(p, kOther);
}

TEST(Plane, PointLiesInItUpToAMillionth) {
  const Plane plane(Point(0, 0, 1), Point(4, 5, 0));
  EXPECT_TRUE(plane.PointLiesInPlane(Point(1, 2, 0)));
  EXPECT_TRUE(plane.PointLiesInPlane(Point(1, 2, 1e-6)));
  EXPECT_TRUE(plane.PointLiesInPlane(Point(1, 2, -1e-6)));
  EXPECT_FALSE(plane.PointLiesInPlane(Point(1, 2, std::nextafter(1e-6, 1.0))));
  EXPECT_FALSE(plane.PointLiesInPlane(Point(1, 2, -std::nextafter(1e-6, 1.0))));
}

// The tolerance is a distance, whatever the length of the normal. Along (1, 2, 2) / 3.
TEST(Plane, LengthOfTheNormalDoesNotChangeWhichPointsLieInIt) {
  for (const double size : {1e-200, 1e-3, 1.0, 1e3, 1e200}) {
    const Plane plane(Point(1, 2, 2) * size, Point(4, -1, -1));  // x + 2 y + 2 z = 0
    EXPECT_TRUE(plane.PointLiesInPlane(Point(1, 2, 2) * (0.999e-6 / 3))) << size;
    EXPECT_FALSE(plane.PointLiesInPlane(Point(1, 2, 2) * (1.001e-6 / 3))) << size;
  }
}

TEST(Plane, ANormalAlongABisectorIsNoUnitVector) {
  const Plane plane(Point(1, 1, 0), Point(0, 0, 0));
  EXPECT_TRUE(plane.PointLiesInPlane(Point(1, 1, 0) * (0.999e-6 / std::sqrt(2.0))));
  EXPECT_FALSE(plane.PointLiesInPlane(Point(1, 1, 0) * (1.001e-6 / std::sqrt(2.0))));
}

TEST(Plane, WithoutANormalMeetsNoLine) {
  Point p = kOther;
  EXPECT_FALSE(Plane(Point(), Point(0, 0, 5)).Intersect(Point(), Point(0, 0, 1), p));
  EXPECT_EQ(p, kOther);
}

TEST(Plane, WithoutANormalHoldsNoPoint) {
  EXPECT_FALSE(Plane(Point(), Point(0, 0, 5)).PointLiesInPlane(Point(0, 0, 5)));
}

TEST(Plane, WithANormalThatIsNotFiniteIsNoPlane) {
  for (const Point& normal : {Point(kNan, 0, 1), Point(0, 0, kInfinity), Point(-kInfinity, 1, kInfinity)}) {
    const Plane plane(normal, Point(0, 0, 5));
    Point p = kOther;
    EXPECT_FALSE(plane.Intersect(Point(), Point(0, 0, 1), p));
    EXPECT_EQ(p, kOther);
    EXPECT_FALSE(plane.PointLiesInPlane(Point(0, 0, 5)));
  }
}

TEST(Plane, AnswersNoToWhatIsNotFinite) {
  const Plane plane(Point(0, 0, 1), Point(0, 0, 5));
  Point p = kOther;
  EXPECT_FALSE(plane.Intersect(Point(kNan, 0, 0), Point(0, 0, 1), p));
  EXPECT_FALSE(plane.Intersect(Point(), Point(0, 0, kNan), p));
  EXPECT_FALSE(plane.Intersect(Point(), Point(0, 0, kInfinity), p));
  EXPECT_FALSE(Plane(Point(0, 0, 1), Point(0, 0, kInfinity)).Intersect(Point(), Point(0, 0, 1), p));
  EXPECT_EQ(p, kOther);
  EXPECT_FALSE(plane.PointLiesInPlane(Point(0, 0, kNan)));
  EXPECT_FALSE(plane.PointLiesInPlane(Point(0, 0, kInfinity)));
}

}  // namespace
