// Rotations about a line through the origin.

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include <k5ax/platform/geometry.h>

#include "plain_vectors.h"
#include "support/near.h"
#include "support/numbers.h"

namespace {

using Geometry::Matrix;
using Geometry::RotateAboutAxis;
using k5ax_test::deg;
using k5ax_test::kEps;
using k5ax_test::kInfinity;
using k5ax_test::kNan;
using k5ax_test::Vec;
using Point = Geometry::TPoint<double>;

constexpr double kMax = std::numeric_limits<double>::max();

// Entries of a rotation are sums of three products of numbers of at most 1, and sine and cosine are good to
// an ulp.
constexpr double kRotation = 4 * kEps;

// A zero and a zero with a minus sign are equal as numbers and not as bits.
std::array<std::uint64_t, 12> bits(const Matrix& m) {
  std::array<std::uint64_t, 12> result{};
  std::memcpy(result.data(), &m, sizeof result);
  return result;
}

bool is_identity_to_the_bit(const Matrix& m) { return bits(m) == bits(Matrix()); }

bool any_not_finite(const Matrix& m) {
  for (const double value : k5ax_test::components(m)) {
    if (!std::isfinite(value)) return true;
  }
  return false;
}

TEST(Rotation, QuarterTurnAboutZTakesXToY) {
  const Matrix turn = RotateAboutAxis(0, 0, 1, deg(90));
  EXPECT_NEAR_POINT(Point(1, 0, 0) * turn, Point(0, 1, 0), kRotation);
  EXPECT_NEAR_POINT(Point(0, 1, 0) * turn, Point(-1, 0, 0), kRotation);
  EXPECT_EQ(Point(0, 0, 1) * turn, Point(0, 0, 1));
}

TEST(Rotation, QuarterTurnAboutXTakesYToZ) {
  const Matrix turn = RotateAboutAxis(1, 0, 0, deg(90));
  EXPECT_NEAR_POINT(Point(0, 1, 0) * turn, Point(0, 0, 1), kRotation);
  EXPECT_NEAR_POINT(Point(0, 0, 1) * turn, Point(0, -1, 0), kRotation);
  EXPECT_EQ(Point(1, 0, 0) * turn, Point(1, 0, 0));
}

TEST(Rotation, QuarterTurnAboutYTakesZToX) {
  const Matrix turn = RotateAboutAxis(0, 1, 0, deg(90));
  EXPECT_NEAR_POINT(Point(0, 0, 1) * turn, Point(1, 0, 0), kRotation);
  EXPECT_NEAR_POINT(Point(1, 0, 0) * turn, Point(0, 0, -1), kRotation);
  EXPECT_EQ(Point(0, 1, 0) * turn, Point(0, 1, 0));
}

// cos 30 = sqrt(3) / 2 and sin 30 = 1/2.
TEST(Rotation, ThirtyDegreesAboutZByHand) {
  EXPECT_NEAR_POINT(Point(2, 0, 7) * RotateAboutAxis(0, 0, 1, deg(30)), Point(std::sqrt(3.0), 1, 7),
                    7 * kRotation);
}

// About the diagonal of the XY plane a half turn swaps x and y and turns z over.
TEST(Rotation, HalfTurnAboutTheDiagonalSwapsXAndY) {
  EXPECT_NEAR_POINT(Point(2, 3, 5) * RotateAboutAxis(1, 1, 0, deg(180)), Point(3, 2, -5), 10 * kRotation);
}

// About the space diagonal a third of a turn takes X to Y, Y to Z and Z to X.
TEST(Rotation, ThirdOfATurnAboutTheSpaceDiagonalMovesTheAxesRound) {
  EXPECT_NEAR_POINT(Point(2, 3, 5) * RotateAboutAxis(1, 1, 1, deg(120)), Point(5, 2, 3), 10 * kRotation);
}

TEST(Rotation, NegativeAngleTurnsTheOtherWay) {
  EXPECT_NEAR_POINT(Point(1, 0, 0) * RotateAboutAxis(0, 0, 1, deg(-90)), Point(0, -1, 0), kRotation);
}

TEST(Rotation, OppositeDirectionTurnsTheOtherWay) {
  EXPECT_NEAR_POINT(Point(1, 0, 0) * RotateAboutAxis(0, 0, -1, deg(90)), Point(0, -1, 0), kRotation);
}

TEST(Rotation, HasNoTranslation) { EXPECT_EQ(Point() * RotateAboutAxis(3, -1, 2, 0.7), Point()); }

// To the bit: the formula would give zeros with a minus sign, which a saved file would show.
TEST(Rotation, AngleZeroIsExactlyTheIdentity) {
  EXPECT_TRUE(is_identity_to_the_bit(RotateAboutAxis(0, 0, 1, 0.0)));
  EXPECT_TRUE(is_identity_to_the_bit(RotateAboutAxis(-0.3, 0.5, -0.7, 0.0)));
  EXPECT_TRUE(is_identity_to_the_bit(RotateAboutAxis(-0.3, 0.5, -0.7, -0.0)));
}

TEST(Rotation, AgreesWithVectorsOnSkewAxes) {
  const std::vector<double> hard_angles = {1e-8, -1e-8, deg(90), deg(-90), deg(180), deg(360), deg(720), 1e6};
  const std::vector<double> lengths = {1e-8, 1e-3, 1, 7, 1e8};
  k5ax_test::Numbers random(20262);
  int checked = 0;
  for (int i = 0; i < 4000; ++i) {
    Vec axis = random.vec_between(-1, 1);
    // Keeps clear of the shortest direction: 0.6 * 1e-8 is still longer than 5e-9.
    if (k5ax_test::length(axis) < 0.6) continue;
    const double scale = lengths[random.below(lengths.size())];
    for (double& component : axis) component *= scale;
    const bool is_hard = random.below(4) == 0;
    const double angle = is_hard ? hard_angles[random.below(hard_angles.size())] : random.between(-7, 7);
    const Vec v = random.vec_between(-10, 10);

    // Both ways add three products of size |v| <= 17.4 with entries that are good to kRotation.
    EXPECT_NEAR_POINT(k5ax_test::point(v) * RotateAboutAxis(k5ax_test::point(axis), angle),
                      k5ax_test::point(k5ax_test::turned(v, axis, angle)), 17.4 * 2 * kRotation)
        << "round " << i << ", axis " << axis[0] << ' ' << axis[1] << ' ' << axis[2] << ", angle " << angle;
    ++checked;
  }
  // A cube of half-width 1 has at least 8 - 4.19 * 0.6^3 = 7.1 of its 8 parts outside that ball.
  EXPECT_GT(checked, 3300);
}

// Each row of length 1, square to the others, and the third the cross product of the first two.
TEST(Rotation, RowsAreARightHandedFrame) {
  k5ax_test::Numbers random(20263);
  int checked = 0;
  for (int i = 0; i < 1000; ++i) {
    const Vec axis = random.vec_between(-1, 1);
    const Matrix turn = RotateAboutAxis(k5ax_test::point(axis), random.between(-7, 7));
    const Vec x = k5ax_test::vec(turn.TransformDirection(Point(1, 0, 0)));
    const Vec y = k5ax_test::vec(turn.TransformDirection(Point(0, 1, 0)));
    const Vec z = k5ax_test::vec(turn.TransformDirection(Point(0, 0, 1)));
    // Products of two entries, each good to kRotation.
    EXPECT_NEAR(k5ax_test::dot(x, x), 1, 4 * kRotation) << "round " << i;
    EXPECT_NEAR(k5ax_test::dot(y, y), 1, 4 * kRotation) << "round " << i;
    EXPECT_NEAR(k5ax_test::dot(x, y), 0, 4 * kRotation) << "round " << i;
    EXPECT_NEAR_POINT(k5ax_test::point(k5ax_test::cross(x, y)), k5ax_test::point(z), 4 * kRotation)
        << "round " << i;
    ++checked;
  }
  EXPECT_EQ(checked, 1000);
}

TEST(Rotation, TurnsAboutOneAxisAddUp) {
  const Point axis(0.2, -0.9, 0.4);
  EXPECT_NEAR_MATRIX(RotateAboutAxis(axis, 0.4) * RotateAboutAxis(axis, 1.3), RotateAboutAxis(axis, 1.7),
                     3 * kRotation);
}

TEST(Rotation, DirectionNeedNotBeAUnitVector) {
  const Matrix unit = RotateAboutAxis(2.0 / 3, -1.0 / 3, 2.0 / 3, 0.7);
  EXPECT_NEAR_MATRIX(RotateAboutAxis(2, -1, 2, 0.7), unit, kRotation);
  EXPECT_NEAR_MATRIX(RotateAboutAxis(2e-8, -1e-8, 2e-8, 0.7), unit, kRotation);
  EXPECT_NEAR_MATRIX(RotateAboutAxis(2e6, -1e6, 2e6, 0.7), unit, kRotation);
}

// Its square is far beyond the largest double.
TEST(Rotation, HugeDirectionTurnsLikeAnyOther) {
  const Matrix unit = RotateAboutAxis(2.0 / 3, -1.0 / 3, 2.0 / 3, 0.7);
  EXPECT_NEAR_MATRIX(RotateAboutAxis(2e200, -1e200, 2e200, 0.7), unit, kRotation);
  EXPECT_NEAR_MATRIX(RotateAboutAxis(kMax, -kMax / 2, kMax, 0.7), unit, kRotation);
}

TEST(Rotation, DirectionShorterThanTheLimitIsTheIdentity) {
  const double just_below = std::nextafter(5e-9, 0.0);
  EXPECT_TRUE(is_identity_to_the_bit(RotateAboutAxis(0, 0, just_below, 0.7)));
  EXPECT_TRUE(is_identity_to_the_bit(RotateAboutAxis(-just_below, 0, 0, 0.7)));
  // |(2, -1, 2)| = 3, so these are 4.9999e-9 long.
  EXPECT_TRUE(is_identity_to_the_bit(RotateAboutAxis(2 * 1.66663e-9, -1.66663e-9, 2 * 1.66663e-9, 0.7)));
  EXPECT_TRUE(is_identity_to_the_bit(RotateAboutAxis(0, 0, 0, 0.7)));
}

// Their squares underflow to nothing.
TEST(Rotation, TinyDirectionIsTheIdentity) {
  EXPECT_TRUE(is_identity_to_the_bit(RotateAboutAxis(1e-200, 1e-200, 0, 0.7)));
  EXPECT_TRUE(is_identity_to_the_bit(RotateAboutAxis(0, std::numeric_limits<double>::denorm_min(), 0, 0.7)));
}

TEST(Rotation, DirectionAsLongAsTheLimitTurns) {
  const Matrix about_z = RotateAboutAxis(0, 0, 1, 0.7);
  EXPECT_NEAR_MATRIX(RotateAboutAxis(0, 0, 5e-9, 0.7), about_z, kRotation);
  EXPECT_NEAR_MATRIX(RotateAboutAxis(0, 0, 5.0001e-9, 0.7), about_z, kRotation);
}

// A direction that is almost of length 1 is not almost a rotation: what is left over would grow with every
// product.
TEST(Rotation, AlmostAUnitVectorStillGivesAFullRotation) {
  for (const double excess : {-1e-6, -1e-9, -1e-12, -1e-14, 1e-14, 1e-12, 1e-9, 1e-6}) {
    const double size = 1 + excess;
    const Matrix turn = RotateAboutAxis(0.6 * size, 0, 0.8 * size, 2.5);
    EXPECT_NEAR_MATRIX(turn, RotateAboutAxis(0.6, 0, 0.8, 2.5), 2 * kRotation) << "excess " << excess;
  }
}

TEST(Rotation, FourNumbersMeanTheSameAsADirection) {
  EXPECT_EQ(bits(RotateAboutAxis(0.3, -0.5, 0.9, 0.7)), bits(RotateAboutAxis(Point(0.3, -0.5, 0.9), 0.7)));
}

TEST(Rotation, IsNotFiniteWhereItsInputIsNot) {
  EXPECT_TRUE(any_not_finite(RotateAboutAxis(kNan, 0, 1, 0.7)));
  EXPECT_TRUE(any_not_finite(RotateAboutAxis(0, kInfinity, 0, 0.7)));
  EXPECT_TRUE(any_not_finite(RotateAboutAxis(1, -kInfinity, 1, 0.7)));
  EXPECT_TRUE(any_not_finite(RotateAboutAxis(0, 0, 1, kNan)));
  EXPECT_TRUE(any_not_finite(RotateAboutAxis(0, 0, 1, kInfinity)));
}

// The line through (1, 0, 0) along Z: (2, 0, 0) is one to its right and comes to lie one beyond it in y.
TEST(Rotation, AboutALineElsewhereStandsBetweenTwoTranslations) {
  const Point base(1, 0, 0);
  const Matrix turn =
      Geometry::Translate(-base) * RotateAboutAxis(0, 0, 1, deg(90)) * Geometry::Translate(base);
  EXPECT_NEAR_POINT(Point(2, 0, 0) * turn, Point(1, 1, 0), kRotation);
  EXPECT_NEAR_POINT(Point(1, 0, 9) * turn, Point(1, 0, 9), kRotation);
}

}  // namespace
