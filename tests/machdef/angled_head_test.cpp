// The angled head: its record, its geometry from angles and lengths, and what counts as angled.
#include <cmath>
#include <cstddef>
#include <cstring>
#include <type_traits>

#include <gtest/gtest.h>

#include <k5ax/angled_head.h>

#include "machdef/machine_support.h"

namespace {

using Geometry::TPoint;
using k5ax_test::expect_head;
using k5ax_test::numbered_head;

const double kRoot3 = std::sqrt(3.0);

// Coordinates up to 150, each the sum of at most four rounded products: 4 * 150 * 1.1e-16 = 7e-14; a cosine
// of 90 degrees that is 6e-17 instead of 0 adds less than that.
constexpr double kRounding = 1e-13;

TEST(HeadRecord, StandsInMemoryInItsOrder) {
  // Files carry the record as it stands in memory.
  EXPECT_EQ(offsetof(angled_head, b_angle), 0u);
  EXPECT_EQ(offsetof(angled_head, c_angle), 8u);
  EXPECT_EQ(offsetof(angled_head, length1), 16u);
  EXPECT_EQ(offsetof(angled_head, length2), 24u);
  EXPECT_EQ(offsetof(angled_head, tip), 32u);
  EXPECT_EQ(offsetof(angled_head, tool_dir), 56u);
  EXPECT_EQ(offsetof(angled_head, ref_dir), 80u);
  EXPECT_EQ(offsetof(angled_head, offset), 104u);
  EXPECT_EQ(offsetof(angled_head, flags), 128u);
  EXPECT_EQ(sizeof(angled_head), 136u);
}

TEST(HeadRecord, MayBeCopiedBytewise) {
  EXPECT_TRUE(std::is_trivially_copyable<angled_head>::value);
  EXPECT_TRUE(std::is_standard_layout<angled_head>::value);
}

TEST(InitialisedHead, IsZeroInEveryByteButTwoDirections) {
  angled_head expected;
  std::memset(static_cast<void*>(&expected), 0, sizeof expected);
  expected.tool_dir.z = 1;
  expected.ref_dir.x = 1;
  angled_head head;
  std::memset(static_cast<void*>(&head), 0xAB, sizeof head);

  k5ax_angled_head_initialise(&head);

  // The padding as well: it goes to files.
  EXPECT_EQ(std::memcmp(&head, &expected, sizeof head), 0);
}

TEST(InitialisedHead, IsStraight) {
  angled_head head;
  k5ax_angled_head_initialise(&head);
  EXPECT_EQ(k5ax_is_angled_head(&head), 0);
  EXPECT_NEAR_POINT(head.tool_dir, (TPoint<double>(0, 0, 1)), 0.0);
  EXPECT_NEAR_POINT(head.ref_dir, (TPoint<double>(1, 0, 0)), 0.0);
  EXPECT_EQ(head.flags, 0u);
}

TEST(CopiedHead, IsEqualInEveryByte) {
  angled_head source;
  std::memset(static_cast<void*>(&source), 0x5C, sizeof source);
  angled_head target;
  std::memset(static_cast<void*>(&target), 0, sizeof target);

  k5ax_angled_head_copy(&target, &source);

  EXPECT_EQ(std::memcmp(&target, &source, sizeof target), 0);
}

TEST(CopiedHead, LeavesItsSource) {
  const angled_head source = numbered_head();
  angled_head target = k5ax_test::straight_head();
  k5ax_angled_head_copy(&target, &source);
  expect_head(source, numbered_head());
}

TEST(HeadFlags, AreReadAndReplacedAsAWhole) {
  angled_head head = k5ax_test::straight_head();
  k5ax_angled_head_flags_set(&head, 0xFFFF0001u);
  EXPECT_EQ(head.flags, 0xFFFF0001u);
  head.flags = 0x12345678u;
  EXPECT_EQ(k5ax_angled_head_flags_get(&head), 0x12345678u);
}

// What k5ax_angled_head_set makes of a straight head.
angled_head head_set(double c_deg, double b_deg, double length1, double length2, double side_offset) {
  angled_head head = k5ax_test::straight_head();
  const double lengths[2] = {length1, length2};
  k5ax_angled_head_set(c_deg, b_deg, lengths, side_offset, &head);
  return head;
}

TEST(SetHead, WithoutAnglesStandsAboveItsMount) {
  const angled_head head = head_set(0, 0, 100, 50, 0);
  EXPECT_NEAR_POINT(head.tip, (TPoint<double>(0, 0, 150)), 0.0);
  EXPECT_NEAR_POINT(head.tool_dir, (TPoint<double>(0, 0, 1)), 0.0);
  EXPECT_NEAR_POINT(head.ref_dir, (TPoint<double>(1, 0, 0)), 0.0);
  EXPECT_EQ(k5ax_is_angled_head(&head), 1);  // displaced, though not tilted
}

TEST(SetHead, OnlyTurnedHasNoTipAndIsStraight) {
  const angled_head head = head_set(90, 0, 0, 0, 0);
  EXPECT_NEAR(head.c_angle, math::m_pi / 2, 1e-15);  // one product near 1.6
  EXPECT_NEAR_POINT(head.tip, (TPoint<double>(0, 0, 0)), 0.0);
  EXPECT_EQ(k5ax_is_angled_head(&head), 0);
}

TEST(SetHead, TakesTheTurnFirstAndTheTiltSecond) {
  // Deliberate order: the spindle is described as it is set up, first turned, then tilted.
  const angled_head head = head_set(10, 20, 0, 0, 0);
  EXPECT_EQ(head.c_angle, math::D2R * 10);
  EXPECT_EQ(head.b_angle, math::D2R * 20);
}

TEST(SetHead, StoresTheLengthsInTheirOrder) {
  const angled_head head = head_set(10, 20, 3, 4, 0);
  EXPECT_EQ(head.length1, 3);
  EXPECT_EQ(head.length2, 4);
}

TEST(SetHead, TiltedAQuarterPointsAlongX) {
  // +90 degrees about Y takes +Z to +X and +X to -Z.
  const angled_head head = head_set(0, 90, 100, 50, 0);
  EXPECT_NEAR_POINT(head.tool_dir, (TPoint<double>(1, 0, 0)), kRounding);
  EXPECT_NEAR_POINT(head.ref_dir, (TPoint<double>(0, 0, -1)), kRounding);
  EXPECT_NEAR_POINT(head.tip, (TPoint<double>(50, 0, 100)), kRounding);
}

TEST(SetHead, TiltedThenTurnedAQuarterPointsAlongY) {
  // Tilted, the lower segment (0, 7, 50) stands at (50, 7, 0); +90 degrees about Z takes it to (-7, 50, 0).
  const angled_head head = head_set(90, 90, 100, 50, 7);
  EXPECT_NEAR_POINT(head.tool_dir, (TPoint<double>(0, 1, 0)), kRounding);
  EXPECT_NEAR_POINT(head.ref_dir, (TPoint<double>(0, 0, -1)), kRounding);
  EXPECT_NEAR_POINT(head.tip, (TPoint<double>(-7, 50, 100)), kRounding);
}

TEST(SetHead, AtSkewAnglesFollowsTheTrigonometry) {
  // Tilt -60: (x, y, z) -> (x / 2 - z s, y, x s + z / 2) with s = sqrt(3) / 2.
  // Turn 30: (x, y, z) -> (x s - y / 2, x / 2 + y s, z). So, with the lower segment (0, 3, 20):
  //   (0, 3, 20) -> (-10 sqrt(3), 3, 10) -> (-16.5, -3.5 sqrt(3), 10), and 10 of the upper segment on top;
  //   (0, 0, 1) -> (-s, 0, 1/2) -> (-3/4, -sqrt(3)/4, 1/2);  (1, 0, 0) -> (1/2, 0, s) -> (sqrt(3)/4, 1/4, s).
  const angled_head head = head_set(30, -60, 10, 20, 3);
  EXPECT_NEAR_POINT(head.tip, (TPoint<double>(-16.5, -3.5 * kRoot3, 20)), kRounding);
  EXPECT_NEAR_POINT(head.tool_dir, (TPoint<double>(-0.75, -kRoot3 / 4, 0.5)), kRounding);
  EXPECT_NEAR_POINT(head.ref_dir, (TPoint<double>(kRoot3 / 4, 0.25, kRoot3 / 2)), kRounding);
}

TEST(SetHead, ShowsTheSideOffsetInTheTipAlone) {
  const angled_head with_offset = head_set(0, 0, 1, 2, 9);
  angled_head expected = head_set(0, 0, 1, 2, 0);
  EXPECT_NEAR_POINT(with_offset.tip, (TPoint<double>(0, 9, 3)), 0.0);
  expected.tip = with_offset.tip;
  expect_head(with_offset, expected);
}

TEST(SetHead, LeavesFlagsAndOffset) {
  angled_head head = k5ax_test::straight_head();
  head.flags = 0x77;
  head.offset = {1, 2, 3};
  const double lengths[2] = {4, 5};

  k5ax_angled_head_set(10, 20, lengths, 6, &head);

  EXPECT_EQ(head.flags, 0x77u);
  EXPECT_NEAR_POINT(head.offset, (TPoint<double>(1, 2, 3)), 0.0);
}

TEST(SetHead, ReplacesWhatWasSetBefore) {
  angled_head head = numbered_head();
  const double lengths[2] = {0, 0};
  k5ax_angled_head_set(0, 0, lengths, 0, &head);
  EXPECT_NEAR_POINT(head.tip, (TPoint<double>(0, 0, 0)), 0.0);
  EXPECT_NEAR_POINT(head.tool_dir, (TPoint<double>(0, 0, 1)), 0.0);
  EXPECT_NEAR_POINT(head.ref_dir, (TPoint<double>(1, 0, 0)), 0.0);
}

int angled_at_tilt(double b_angle) {
  angled_head head = k5ax_test::straight_head();
  head.b_angle = b_angle;
  return k5ax_is_angled_head(&head);
}

// Deliberate: a tilt up to a thousandth of a radian, either way, is how straight a straight head is adjusted.
TEST(AngledHead, IsTiltedByMoreThanTheThreshold) {
  EXPECT_EQ(angled_at_tilt(std::nextafter(0.001, 1)), 1);
  EXPECT_EQ(angled_at_tilt(-std::nextafter(0.001, 1)), 1);
  EXPECT_EQ(angled_at_tilt(1.5), 1);
}

TEST(AngledHead, IsNotTiltedByExactlyTheThreshold) {
  EXPECT_EQ(angled_at_tilt(0.001), 0);
  EXPECT_EQ(angled_at_tilt(-0.001), 0);
}

TEST(AngledHead, HasItsTipAwayFromTheMountInAnyDirection) {
  int directions = 0;
  for (const TPoint<double>& tip : {TPoint<double>(1e-9, 0, 0), TPoint<double>(0, -1e-9, 0),
                                    TPoint<double>(0, 0, 1e-9), TPoint<double>(-3, 4, -5)}) {
    angled_head head = k5ax_test::straight_head();
    head.tip = tip;
    EXPECT_EQ(k5ax_is_angled_head(&head), 1) << "tip " << tip.x << " " << tip.y << " " << tip.z;
    ++directions;
  }
  EXPECT_EQ(directions, 4);
}

TEST(AngledHead, WithATiltAtTheThresholdStillCountsByItsTip) {
  angled_head head = k5ax_test::straight_head();
  head.b_angle = 0.0005;
  head.tip = {0, 0, 1};
  EXPECT_EQ(k5ax_is_angled_head(&head), 1);
}

// Deliberate: a turn about the spindle's own axis bends nothing.
TEST(AngledHead, IsNotMadeByATurnAlone) {
  angled_head head = k5ax_test::straight_head();
  head.c_angle = 2;
  EXPECT_EQ(k5ax_is_angled_head(&head), 0);
}

TEST(AngledHead, IsNotMadeByLengthsOrOffsetAlone) {
  angled_head head = k5ax_test::straight_head();
  head.length1 = 10;
  head.length2 = 20;
  head.offset = {1, 2, 3};
  EXPECT_EQ(k5ax_is_angled_head(&head), 0);
}

TEST(AngledHead, OfNullIsMinusOne) { EXPECT_EQ(k5ax_is_angled_head(nullptr), -1); }

TEST(ScaledHead, HasItsLengthsMultipliedAndNothingElse) {
  angled_head head = numbered_head();
  angled_head expected = numbered_head();
  expected.length1 = 11 * 25.4;
  expected.length2 = 12 * 25.4;
  expected.tip = {13 * 25.4, 14 * 25.4, 15 * 25.4};
  expected.offset = {16 * 25.4, 17 * 25.4, 18 * 25.4};

  k5ax_angled_head_scale(&head, 25.4);

  expect_head(head, expected);
}

TEST(ScaledHead, OfNullDoesNothing) { EXPECT_NO_THROW(k5ax_angled_head_scale(nullptr, 2)); }

}  // namespace
