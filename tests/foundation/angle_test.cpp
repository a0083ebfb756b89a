// Angles brought into a range by whole turns.
#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include <k5ax/foundation.h>

namespace {

constexpr double kPi = 3.141592653589793;
constexpr double kTurn = 6.283185307179586;
constexpr int kFromZero = 1;   // [0, 2 pi)
constexpr int kAboutZero = 2;  // [-pi, pi]
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// One step is one rounding of a sum below 8, at most half of 8.9e-16; the inputs bring as much again.
constexpr double kRounding = 2e-15;

TEST(AngleFromZero, NegativeAngleGainsATurn) {
  EXPECT_EQ(k5ax_normalise_angle(-0.5, kFromZero), kTurn - 0.5);  // exact: the same single addition
}

TEST(AngleFromZero, FullTurnIsZero) { EXPECT_EQ(k5ax_normalise_angle(kTurn, kFromZero), 0.0); }

TEST(AngleFromZero, ZeroStays) { EXPECT_EQ(k5ax_normalise_angle(0.0, kFromZero), 0.0); }

TEST(AngleFromZero, ZeroWithASignStaysAsItIs) {
  // A turn up and one down would take the sign.
  EXPECT_TRUE(std::signbit(k5ax_normalise_angle(-0.0, kFromZero)));
}

TEST(AngleFromZero, AngleInsideTheRangeStaysExactly) {
  EXPECT_EQ(k5ax_normalise_angle(0.1, kFromZero), 0.1);  // a turn up and one down would take its last bits
  EXPECT_EQ(k5ax_normalise_angle(1.25, kFromZero), 1.25);
  EXPECT_EQ(k5ax_normalise_angle(5.0, kFromZero), 5.0);
}

TEST(AngleFromZero, LargestAngleBelowAFullTurnStays) {
  const double below = std::nextafter(kTurn, 0.0);
  EXPECT_EQ(k5ax_normalise_angle(below, kFromZero), below);
}

TEST(AngleFromZero, MinusAFullTurnIsZero) { EXPECT_EQ(k5ax_normalise_angle(-kTurn, kFromZero), 0.0); }

TEST(AngleFromZero, TinyNegativeAngleIsZeroAndNotAFullTurn) {
  // -1e-20 plus a turn rounds to the turn itself, which the range leaves out: a second step takes it off
  // again.
  EXPECT_EQ(k5ax_normalise_angle(-1e-20, kFromZero), 0.0);
}

TEST(AngleFromZero, SeveralTurnsUpComeDown) {
  EXPECT_NEAR(k5ax_normalise_angle(3 * kTurn + 1.0, kFromZero), 1.0, 10 * kRounding);
}

TEST(AngleFromZero, SeveralTurnsDownComeUp) {
  EXPECT_NEAR(k5ax_normalise_angle(-3 * kTurn - 1.0, kFromZero), kTurn - 1.0, 10 * kRounding);
}

TEST(AngleFromZero, HalfTurnBackIsHalfATurn) { EXPECT_EQ(k5ax_normalise_angle(-kPi, kFromZero), kPi); }

TEST(AngleAboutZero, PiStays) { EXPECT_EQ(k5ax_normalise_angle(kPi, kAboutZero), kPi); }

TEST(AngleAboutZero, MinusPiStays) {
  // Both ends belong to the range, so that an axis stored at either limit comes back as it was.
  EXPECT_EQ(k5ax_normalise_angle(-kPi, kAboutZero), -kPi);
}

TEST(AngleAboutZero, ThreeQuartersOfATurnIsAQuarterBack) {
  EXPECT_NEAR(k5ax_normalise_angle(1.5 * kPi, kAboutZero), -kPi / 2, kRounding);
}

TEST(AngleAboutZero, ThreeQuartersBackIsAQuarterTurn) {
  EXPECT_NEAR(k5ax_normalise_angle(-1.5 * kPi, kAboutZero), kPi / 2, kRounding);
}

TEST(AngleAboutZero, SmallestAngleAbovePiLosesATurn) {
  const double above = std::nextafter(kPi, 4.0);
  EXPECT_EQ(k5ax_normalise_angle(above, kAboutZero), above - kTurn);
}

TEST(AngleAboutZero, LargestAngleBelowMinusPiGainsATurn) {
  const double below = std::nextafter(-kPi, -4.0);
  EXPECT_EQ(k5ax_normalise_angle(below, kAboutZero), below + kTurn);
}

TEST(AngleAboutZero, AngleInsideTheRangeStaysExactly) {
  EXPECT_EQ(k5ax_normalise_angle(-3.0, kAboutZero), -3.0);
  EXPECT_EQ(k5ax_normalise_angle(3.0, kAboutZero), 3.0);
}

TEST(AngleAboutZero, FullTurnIsZero) { EXPECT_EQ(k5ax_normalise_angle(kTurn, kAboutZero), 0.0); }

TEST(AngleAboutZero, SeveralTurnsUpComeDown) {
  EXPECT_NEAR(k5ax_normalise_angle(4 * kTurn - 1.0, kAboutZero), -1.0, 10 * kRounding);
}

TEST(AngleAboutZero, SeveralTurnsDownComeUp) {
  EXPECT_NEAR(k5ax_normalise_angle(-4 * kTurn + 1.0, kAboutZero), 1.0, 10 * kRounding);
}

TEST(AngleSteps, AreWholeTurnsOneAtATime) {
  // Wanted: the result is the sum of single steps, each rounded, and not the remainder of a division, which
  // has other last bits here. Hosts compare such angles with ones they stepped themselves.
  double stepped = 1000.0;
  int steps = 0;
  for (; stepped >= kTurn; ++steps) stepped -= kTurn;
  ASSERT_EQ(steps, 159);  // 1000 / 6.2832 = 159.15
  ASSERT_NE(stepped, std::fmod(1000.0, kTurn));

  EXPECT_EQ(k5ax_normalise_angle(1000.0, kFromZero), stepped);
}

// Single steps, as the library's answer is defined.
double stepped_from_zero(double angle) {
  while (angle < 0) angle += kTurn;
  while (angle >= kTurn) angle -= kTurn;
  return angle;
}

double stepped_about_zero(double angle) {
  while (angle > kPi) angle -= kTurn;
  while (angle < -kPi) angle += kTurn;
  return angle;
}

TEST(AngleSteps, OfLargeAnglesAddUpAsIfTakenOneAtATime) {
  std::mt19937_64 random(20261120);
  int compared = 0;
  for (int round = 0; round < 60; ++round) {
    // Sizes from 2^7 to 2^22, evenly by their exponent: up to 700,000 steps.
    const double exponent = 7 + 15 * (static_cast<double>(random() >> 11) * 0x1p-53);
    const double angle = (round % 2 == 0 ? 1 : -1) * std::exp2(exponent);
    ASSERT_EQ(k5ax_normalise_angle(angle, kFromZero), stepped_from_zero(angle)) << angle;
    ASSERT_EQ(k5ax_normalise_angle(angle, kAboutZero), stepped_about_zero(angle)) << angle;
    ++compared;
  }
  EXPECT_EQ(compared, 60);
}

TEST(AngleSteps, AddUpAcrossPowersOfTwo) {
  for (const double power : {1024.0, 2048.0, 65536.0, 1048576.0}) {
    for (const double off : {-kTurn, -1.0, 0.0, 1.0, kTurn, 2 * kTurn}) {
      const double angle = power + off;
      ASSERT_EQ(k5ax_normalise_angle(angle, kFromZero), stepped_from_zero(angle)) << angle;
      ASSERT_EQ(k5ax_normalise_angle(-angle, kAboutZero), stepped_about_zero(-angle)) << -angle;
    }
  }
}

TEST(AngleSteps, OfAHundredMillionRadiansAddUp) {
  EXPECT_EQ(k5ax_normalise_angle(1e8, kFromZero), stepped_from_zero(1e8));  // 16 million steps
}

// One at a time these would be 10^14 to 10^16 steps: hours to months.
TEST(AngleSteps, OfHugeAnglesComeToAnEnd) {
  for (const double angle : {1e15, -1e15, 3e15, 1e16, -5e16}) {
    const double from_zero = k5ax_normalise_angle(angle, kFromZero);
    EXPECT_GE(from_zero, 0.0) << angle;
    EXPECT_LT(from_zero, kTurn) << angle;
    const double about_zero = k5ax_normalise_angle(angle, kAboutZero);
    EXPECT_GE(about_zero, -kPi) << angle;
    EXPECT_LE(about_zero, kPi) << angle;
  }
}

TEST(AngleRange, UnknownReturnsTheAngleUnchanged) {
  EXPECT_EQ(k5ax_normalise_angle(7.0, 3), 7.0);
  EXPECT_EQ(k5ax_normalise_angle(7.0, 0), 7.0);
  EXPECT_EQ(k5ax_normalise_angle(-7.0, -1), -7.0);
}

TEST(AngleThatIsNoNumber, ComesBackAsItIs) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_TRUE(std::isnan(k5ax_normalise_angle(nan, kFromZero)));
  EXPECT_TRUE(std::isnan(k5ax_normalise_angle(nan, kAboutZero)));
  EXPECT_TRUE(std::isnan(k5ax_normalise_angle(nan, 3)));
}

// An angle that a turn no longer changes would step for ever; it comes back instead, and the host sees at
// once that it is no angle of a machine.
TEST(AngleBeyondSteps, InfinityComesBackAsItIs) {
  EXPECT_EQ(k5ax_normalise_angle(kInfinity, kFromZero), kInfinity);
  EXPECT_EQ(k5ax_normalise_angle(-kInfinity, kFromZero), -kInfinity);
  EXPECT_EQ(k5ax_normalise_angle(kInfinity, kAboutZero), kInfinity);
  EXPECT_EQ(k5ax_normalise_angle(-kInfinity, kAboutZero), -kInfinity);
}

TEST(AngleBeyondSteps, HugeFiniteAngleComesBackAsItIs) {
  // Doubles near 1e300 stand 1e284 apart.
  EXPECT_EQ(k5ax_normalise_angle(1e300, kFromZero), 1e300);
  EXPECT_EQ(k5ax_normalise_angle(-1e300, kFromZero), -1e300);
  EXPECT_EQ(k5ax_normalise_angle(1e300, kAboutZero), 1e300);
  EXPECT_EQ(k5ax_normalise_angle(-1e300, kAboutZero), -1e300);
}

}  // namespace
