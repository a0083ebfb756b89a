// Transforms: the layout of the twelve numbers, the row convention, the order of a product.

#include <array>
#include <cstring>
#include <limits>
#include <type_traits>

#include <gtest/gtest.h>

#include <k5ax/platform/geometry.h>

#include "allocation_meter.h"
#include "plain_vectors.h"
#include "support/near.h"
#include "support/numbers.h"

namespace {

using Geometry::Matrix;
using k5ax_test::kEps;
using Point = Geometry::TPoint<double>;
using Twelve = std::array<double, 12>;

constexpr Twelve kIdentity = {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};

// Twelve different numbers, so that no two places can be confused. Not a rotation; nothing asks for one.
Matrix one_to_twelve() {
  Matrix m;
  m.SetMatrix(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12);
  return m;
}

Twelve numbers(const Matrix& m) { return k5ax_test::components(m); }

TEST(Matrix, DefaultIsTheIdentity) { EXPECT_EQ(numbers(Matrix()), kIdentity); }

TEST(Matrix, IdentityReplacesEverything) {
  Matrix m = one_to_twelve();
  m.Identity();
  EXPECT_EQ(numbers(m), kIdentity);
}

TEST(Matrix, GivesBackTheTwelveNumbersInTheOrderTheyWereSet) {
  EXPECT_EQ(numbers(one_to_twelve()), (Twelve{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
}

// Hosts copy matrices as bytes, and files hold that image.
TEST(Matrix, MemoryHoldsTheTwelveNumbersInTheSameOrder) {
  const Matrix m = one_to_twelve();
  Twelve memory{};
  ASSERT_EQ(sizeof m, sizeof memory);
  std::memcpy(memory.data(), &m, sizeof memory);
  EXPECT_EQ(memory, (Twelve{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
}

TEST(Matrix, CopiesAsBytes) {
  EXPECT_TRUE(std::is_trivially_copyable<Matrix>::value);
  EXPECT_TRUE(std::is_standard_layout<Matrix>::value);
}

TEST(Matrix, SetTranslationKeepsTheRotation) {
  Matrix m = one_to_twelve();
  m.SetTranslation(-1, -2, -3);
  EXPECT_EQ(numbers(m), (Twelve{1, 2, 3, 4, 5, 6, 7, 8, 9, -1, -2, -3}));
}

// 2 (1, 2, 3) + 3 (4, 5, 6) + 5 (7, 8, 9) + (10, 11, 12), in whole numbers and so exact.
TEST(Matrix, PointIsARowTimesTheMatrix) { EXPECT_EQ(Point(2, 3, 5) * one_to_twelve(), Point(59, 70, 81)); }

// The same without (10, 11, 12).
TEST(Matrix, DirectionIsTurnedWithoutTheTranslation) {
  EXPECT_EQ(one_to_twelve().TransformDirection(Point(2, 3, 5)), Point(49, 59, 69));
}

TEST(Matrix, FirstThreeRowsAreTheImagesOfTheAxes) {
  const Matrix m = one_to_twelve();
  EXPECT_EQ(m.TransformDirection(Point(1, 0, 0)), Point(1, 2, 3));
  EXPECT_EQ(m.TransformDirection(Point(0, 1, 0)), Point(4, 5, 6));
  EXPECT_EQ(m.TransformDirection(Point(0, 0, 1)), Point(7, 8, 9));
}

TEST(Matrix, LastRowIsTheImageOfTheOrigin) { EXPECT_EQ(Point() * one_to_twelve(), Point(10, 11, 12)); }

TEST(Matrix, IdentityLeavesAPointExactly) {
  const Point p(0.1, -1e300, 3e-300);
  EXPECT_EQ(p * Matrix(), p);
}

// Out by 5 along X and then a quarter turn about Z ends on Y; the turn first would leave it on X.
TEST(Product, DoesTheLeftOneFirst) {
  const Matrix out = Geometry::Translate(Point(5, 0, 0));
  const Matrix turn = Geometry::RotateAboutAxis(0, 0, 1, k5ax_test::deg(90));
  // The cosine of the nearest double to a quarter turn is 6.2e-17, times 5.
  EXPECT_NEAR_POINT(Point() * (out * turn), Point(0, 5, 0), 4e-16);
  EXPECT_NEAR_POINT(Point() * (turn * out), Point(5, 0, 0), 4e-16);
}

// Rows of the left one through the right one, by hand: (1, 2, 3) gives 1 (2, 0, 1) + 2 (0, 3, 0) + 3 (1, 0,
// -1), and so on; the last row gets (5, -7, 11) on top.
TEST(Product, IsRowsTimesColumnsByHand) {
  Matrix right;
  right.SetMatrix(2, 0, 1, 0, 3, 0, 1, 0, -1, 5, -7, 11);
  EXPECT_EQ(numbers(one_to_twelve() * right), (Twelve{5, 6, -2, 14, 15, -2, 23, 24, -2, 37, 26, 9}));
}

TEST(Product, CompoundFormMeansTheSame) {
  Matrix right;
  right.SetMatrix(2, 0, 1, 0, 3, 0, 1, 0, -1, 5, -7, 11);
  Matrix m = one_to_twelve();
  m *= right;
  EXPECT_EQ(numbers(m), numbers(one_to_twelve() * right));
}

TEST(Product, CompoundFormReturnsTheMatrixItself) {
  Matrix m;
  EXPECT_EQ(&(m *= one_to_twelve()), &m);
}

// A result written while its own factor is still being read would differ. By hand, the rotation rows are
// those of the square of (1..9): (30, 36, 42), (66, 81, 96), (102, 126, 150); the last is (138, 171, 204) +
// (10, 11, 12).
TEST(Product, MatrixMayBeMultipliedByItself) {
  Matrix m = one_to_twelve();
  m *= m;
  EXPECT_EQ(numbers(m), (Twelve{30, 36, 42, 66, 81, 96, 102, 126, 150, 148, 182, 216}));
}

TEST(Product, AgreesWithOneAfterTheOther) {
  k5ax_test::Numbers random(20261);
  int checked = 0;
  for (int i = 0; i < 1000; ++i) {
    const Matrix a =
        Geometry::RotateAboutAxis(k5ax_test::point(random.vec_between(-1, 1)), random.between(-7, 7)) *
        Geometry::Translate(k5ax_test::point(random.vec_between(-100, 100)));
    const Matrix b =
        Geometry::Translate(k5ax_test::point(random.vec_between(-100, 100))) *
        Geometry::RotateAboutAxis(k5ax_test::point(random.vec_between(-1, 1)), random.between(-7, 7));
    const Point p = k5ax_test::point(random.vec_between(-100, 100));
    // Sums of size 3 * 174 (the diagonal of a cube of 100), twice a few roundings each: 16 eps * 522.
    EXPECT_NEAR_POINT(p * (a * b), (p * a) * b, 16 * kEps * 522) << "round " << i;
    ++checked;
  }
  EXPECT_EQ(checked, 1000);
}

TEST(Product, IsNotFiniteWhereAFactorIsNot) {
  Matrix broken;
  broken.SetTranslation(std::numeric_limits<double>::quiet_NaN(), 0, 0);
  EXPECT_TRUE(std::isnan((Point(1, 2, 3) * (Matrix() * broken)).x));
}

TEST(Translation, MovesPointsByTheOffset) {
  EXPECT_EQ(Point(1, 2, 3) * Geometry::Translate(Point(10, -20, 30)), Point(11, -18, 33));
}

TEST(Translation, LeavesDirectionsAlone) {
  EXPECT_EQ(Geometry::Translate(Point(10, -20, 30)).TransformDirection(Point(1, 2, 3)), Point(1, 2, 3));
}

TEST(Translation, StandsInTheLastThreeNumbers) {
  EXPECT_EQ(numbers(Geometry::Translate(Point(10, -20, 30))),
            (Twelve{1, 0, 0, 0, 1, 0, 0, 0, 1, 10, -20, 30}));
}

// Transforms run for every position of a tool path.
TEST(Transforms, TakeNothingFromTheHeap) {
  const std::size_t before = k5ax_test::bytes_allocated();
  Matrix m;
  m *= Geometry::RotateAboutAxis(Point(3, 1, 2), 0.3) * Geometry::Translate(Point(1, 2, 3));
  m *= Geometry::RotateAboutAxis(1e200, 1e200, 0, 0.3);
  Point p = Point(1, 2, 3) * m + m.TransformDirection(Point(1, 2, 3));
  p = Geometry::NearestPointOnLine(p, Point(), Geometry::FindNearestPointOnLine(Point(), p, Point(1, 1, 1)));
  const bool meets = Geometry::Plane(Point(0, 0, 1), p).Intersect(Point(), Point(1, 1, 1), p);
  const std::size_t after = k5ax_test::bytes_allocated();
  EXPECT_TRUE(meets);
  EXPECT_EQ(after - before, 0u);
}

}  // namespace
