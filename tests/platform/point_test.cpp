// Points and directions: three numbers and their arithmetic.

#include <type_traits>

#include <gtest/gtest.h>

#include <k5ax/platform/geometry.h>

namespace {

using Point = Geometry::TPoint<double>;

TEST(Point, DefaultIsTheOrigin) {
  const Point p;
  EXPECT_EQ(p.x, 0.0);
  EXPECT_EQ(p.y, 0.0);
  EXPECT_EQ(p.z, 0.0);
}

TEST(Point, KeepsItsCoordinatesInOrder) {
  const Point p(2, 3, 5);
  EXPECT_EQ(p.x, 2.0);
  EXPECT_EQ(p.y, 3.0);
  EXPECT_EQ(p.z, 5.0);
}

TEST(Point, SumIsTakenCoordinateByCoordinate) {
  EXPECT_EQ(Point(1, 2, 3) + Point(10, 200, 3000), Point(11, 202, 3003));
}

TEST(Point, DifferenceIsTheFirstMinusTheSecond) {
  EXPECT_EQ(Point(1, 2, 3) - Point(10, 200, 3000), Point(-9, -198, -2997));
}

TEST(Point, MinusTurnsEverySign) { EXPECT_EQ(-Point(1, -2, 3), Point(-1, 2, -3)); }

TEST(Point, FactorScalesEveryCoordinate) { EXPECT_EQ(Point(1, -2, 3) * -2.5, Point(-2.5, 5, -7.5)); }

TEST(Point, EqualMeansEveryCoordinate) {
  EXPECT_TRUE(Point(1, 2, 3) == Point(1, 2, 3));
  EXPECT_FALSE(Point(1, 2, 3) == Point(9, 2, 3));
  EXPECT_FALSE(Point(1, 2, 3) == Point(1, 9, 3));
  EXPECT_FALSE(Point(1, 2, 3) == Point(1, 2, 9));
}

TEST(Point, UnequalIsTheOppositeOfEqual) {
  EXPECT_FALSE(Point(1, 2, 3) != Point(1, 2, 3));
  EXPECT_TRUE(Point(1, 2, 3) != Point(1, 2, 9));
}

// Constants of the library are points, and a host's static objects may use them before main.
TEST(Point, IsKnownToTheCompiler) {
  constexpr Point kSum = Point(1, 2, 3) + Point(1, 1, 1) * 2.0 - -Point(0, 0, 1);
  static_assert(kSum == Point(3, 4, 6), "worked out while compiling");
  EXPECT_EQ(kSum, Point(3, 4, 6));
}

TEST(Point, CopiesAsBytes) {
  EXPECT_TRUE(std::is_trivially_copyable<Point>::value);
  EXPECT_TRUE(std::is_standard_layout<Point>::value);
  EXPECT_EQ(sizeof(Point), 3 * sizeof(double));
}

}  // namespace
