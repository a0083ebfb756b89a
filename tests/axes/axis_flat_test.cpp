// The flat functions on axis records, and on axis objects, which begin with their record.
#include <cstddef>
#include <type_traits>

#include <gtest/gtest.h>

#include <k5ax/axes.h>
#include <k5ax/scenegraph.h>

#include "axes/axis_support.h"

namespace {

using Geometry::TPoint;
using k5ax_test::expect_equal_records;
using k5ax_test::expect_record;
using k5ax_test::linear_x_on_table;
using k5ax_test::owner_address;
using k5ax_test::record_of_its_own;
using k5ax_test::rotary_b_on_head;
using md::CAxis2;

// Gives a record from axis_clone back at the end of a test.
struct ClonedRecord {
  TAxis* record;
  explicit ClonedRecord(TAxis* r) : record(r) {}
  ClonedRecord(const ClonedRecord&) = delete;
  ClonedRecord& operator=(const ClonedRecord&) = delete;
  ~ClonedRecord() { axis_free(&record); }
};

TEST(FlatAxisClone, HasAnEqualRecord) {
  const TAxis record = record_of_its_own();
  const ClonedRecord clone(axis_clone(&record));
  ASSERT_NE(clone.record, nullptr);
  expect_equal_records(*clone.record, record);
}

TEST(FlatAxisClone, IsARecordOfItsOwn) {
  const TAxis record = record_of_its_own();
  const ClonedRecord clone(axis_clone(&record));
  ASSERT_NE(clone.record, &record);
  clone.record->min = 1000;
  EXPECT_EQ(record.min, -7);
}

// Deliberate: records are plain memory between host and library; the pool is for axis objects alone.
TEST(FlatAxisClone, GoesPastThePool) {
  auto parked = rotary_b_on_head();
  CAxis2::free(parked);
  const std::size_t parked_count = k5ax_test::AxisPool::size();

  TAxis record = record_of_its_own();
  TAxis* clone = axis_clone(&record);
  EXPECT_EQ(k5ax_test::AxisPool::size(), parked_count);
  axis_free(&clone);
  EXPECT_EQ(k5ax_test::AxisPool::size(), parked_count);
}

TEST(FlatAxisClone, OfAnAxisObjectIsItsRecord) {
  const auto axis = rotary_b_on_head();
  const ClonedRecord clone(axis_clone(axis.get()));
  ASSERT_NE(clone.record, nullptr);
  EXPECT_EQ(clone.record->type, AXIS_B);
  EXPECT_EQ(clone.record->location, HEAD);
  EXPECT_NEAR_POINT(clone.record->base, (TPoint<double>(1.5, -2.5, 3.5)), 0.0);
  EXPECT_NEAR_POINT(clone.record->vector, (TPoint<double>(0, -1, 0)), 0.0);
  EXPECT_EQ(clone.record->min, -1.25);
  EXPECT_EQ(clone.record->max, 2.75);
  EXPECT_EQ(clone.record->mode, ROTARY);
}

TEST(FlatAxisClone, KeepsADirectionAsItStands) {
  TAxis record = record_of_its_own();
  record.vector = TPoint<double>(0, 6, 8);
  const ClonedRecord clone(axis_clone(&record));
  EXPECT_NEAR_POINT(clone.record->vector, (TPoint<double>(0, 6, 8)), 0.0);
}

TEST(FlatAxisClone, OfNullIsNull) {
  EXPECT_EQ(axis_clone(nullptr), nullptr);
  EXPECT_EQ(axis_clone(NULL), nullptr);
}

TEST(FlatAxisCopy, CopiesFromRecordToRecord) {
  const TAxis from = record_of_its_own();
  TAxis to = TAxis();
  EXPECT_EQ(axis_copy(&to, &from), 1);
  expect_equal_records(to, from);
}

TEST(FlatAxisCopy, CopiesFromObjectToObjectAndLeavesTheOwner) {
  const auto from = rotary_b_on_head();
  const auto to = linear_x_on_table();
  from->machdef(owner_address(1));
  to->machdef(owner_address(2));

  EXPECT_EQ(axis_copy(to.get(), from.get()), 1);

  expect_equal_records(*to, *from);
  EXPECT_EQ(to->machdef(), owner_address(2));
}

TEST(FlatAxisCopy, CopiesFromRecordToObject) {
  const TAxis from = record_of_its_own();
  const auto to = linear_x_on_table();
  EXPECT_EQ(axis_copy(to.get(), &from), 1);
  expect_record(*to, AXIS_Y, TABLE, {1, 2, 3}, {4, 5, 6}, -7, 8, LINEAR);
}

TEST(FlatAxisCopy, CopiesFromObjectToRecord) {
  const auto from = rotary_b_on_head();
  TAxis to = record_of_its_own();
  EXPECT_EQ(axis_copy(&to, from.get()), 1);
  EXPECT_EQ(to.type, AXIS_B);
  EXPECT_EQ(to.max, 2.75);
  EXPECT_EQ(to.mode, ROTARY);
}

TEST(FlatAxisCopy, FromNullChangesNothingAndStillAnswersOne) {
  TAxis to = record_of_its_own();
  EXPECT_EQ(axis_copy(&to, nullptr), 1);
  expect_equal_records(to, record_of_its_own());
}

TEST(FlatAxisCopy, ToNullAnswersOne) {
  const TAxis from = record_of_its_own();
  EXPECT_EQ(axis_copy(nullptr, &from), 1);
  EXPECT_EQ(axis_copy(nullptr, nullptr), 1);
  EXPECT_EQ(axis_copy(NULL, NULL), 1);
}

TEST(FlatAxisFree, DeletesTheRecordAndClearsThePointer) {
  const TAxis record = record_of_its_own();
  TAxis* clone = axis_clone(&record);
  ASSERT_NE(clone, nullptr);
  EXPECT_EQ(axis_free(&clone), 1);  // the leak check of the sanitizer build sees whether it was deleted
  EXPECT_EQ(clone, nullptr);
}

TEST(FlatAxisFree, OfAPointerToNullDoesNothingAndAnswersOne) {
  TAxis* record = nullptr;
  EXPECT_EQ(axis_free(&record), 1);
  EXPECT_EQ(record, nullptr);
}

TEST(FlatAxisFree, OfNullAnswersOne) { EXPECT_EQ(axis_free(nullptr), 1); }

TEST(FlatAxisLocation, IsTheRecords) {
  TAxis record = record_of_its_own();
  EXPECT_EQ(axis_location(&record), TABLE);
  record.location = HEAD;
  EXPECT_EQ(axis_location(&record), HEAD);
  record.location = static_cast<AXIS_LOCATION>(55);
  EXPECT_EQ(static_cast<int>(axis_location(&record)), 55);
}

TEST(FlatAxisLocation, OfAnAxisObjectIsItsRecords) {
  EXPECT_EQ(axis_location(rotary_b_on_head().get()), HEAD);
}

TEST(FlatAxisLocation, OfNullIsMinusOne) {
  EXPECT_EQ(axis_location(nullptr), AXIS_LOCATION_INVALID_LOWEST);
  EXPECT_EQ(static_cast<int>(axis_location(NULL)), -1);
}

TEST(FlatAxisLimits, AreMinThenMax) {
  TAxis record = record_of_its_own();
  const double* const limits = axis_limits(&record);
  ASSERT_NE(limits, nullptr);
  EXPECT_EQ(limits, &record.min);
  EXPECT_EQ(limits + 1, &record.max);
}

TEST(FlatAxisLimits, MayBeWrittenThrough) {
  const auto axis = linear_x_on_table();
  double* const limits = axis_limits(axis.get());
  ASSERT_NE(limits, nullptr);

  limits[0] = -11;
  limits[1] = 22;

  EXPECT_EQ(axis->GetMin(), -11);
  EXPECT_EQ(axis->GetMax(), 22);
}

TEST(FlatAxisLimits, OfNullIsNull) {
  EXPECT_EQ(axis_limits(nullptr), nullptr);
  EXPECT_EQ(axis_limits(NULL), nullptr);
}

TEST(FlatAxisValue, IsTheComponentOfTheLetter) {
  TAxis record = record_of_its_own();
  const AXIS_TYPE letters[] = {AXIS_A, AXIS_B, AXIS_C, AXIS_X, AXIS_Y, AXIS_Z};
  const double expected[] = {10, 20, 30, 10, 20, 30};
  std::size_t letters_seen = 0;
  for (; letters_seen < 6; ++letters_seen) {
    record.type = letters[letters_seen];
    EXPECT_EQ(axis_get_value(&record, 10, 20, 30), expected[letters_seen]) << "letter " << record.type;
  }
  EXPECT_EQ(letters_seen, 6u);
}

TEST(FlatAxisValue, OfATypeThatIsNoLetterIsZero) {
  TAxis record = record_of_its_own();
  record.type = AXIS_DUMMY;
  EXPECT_EQ(axis_get_value(&record, 10, 20, 30), 0.0);
  record.type = AXIS_TYPE_INVALID_LOWEST;
  EXPECT_EQ(axis_get_value(&record, 10, 20, 30), 0.0);
}

TEST(FlatAxisValue, OfAnAxisObjectIsItsComponent) {
  EXPECT_EQ(axis_get_value(rotary_b_on_head().get(), 10, 20, 30), 20);
}

TEST(FlatAxisValue, OfNullIsZero) {
  EXPECT_EQ(axis_get_value(nullptr, 10, 20, 30), 0.0);
  EXPECT_EQ(axis_get_value(NULL, 10, 20, 30), 0.0);
}

class FlatSetAxisValue : public testing::Test {
 protected:
  void expect_triple(double x_expected, double y_expected, double z_expected) const {
    EXPECT_EQ(x, x_expected);
    EXPECT_EQ(y, y_expected);
    EXPECT_EQ(z, z_expected);
  }

  double x = 1;
  double y = 2;
  double z = 3;
};

TEST_F(FlatSetAxisValue, OfXWritesTheFirstComponentAlone) {
  TAxis record = record_of_its_own();
  record.type = AXIS_X;
  EXPECT_EQ(axis_set_value(&record, 7, &x, &y, &z), 1);
  expect_triple(7, 2, 3);
}

TEST_F(FlatSetAxisValue, OfBWritesTheSecondComponentAlone) {
  TAxis record = record_of_its_own();
  record.type = AXIS_B;
  EXPECT_EQ(axis_set_value(&record, 7, &x, &y, &z), 1);
  expect_triple(1, 7, 3);
}

TEST_F(FlatSetAxisValue, OfZWritesTheThirdComponentAlone) {
  TAxis record = record_of_its_own();
  record.type = AXIS_Z;
  EXPECT_EQ(axis_set_value(&record, 7, &x, &y, &z), 1);
  expect_triple(1, 2, 7);
}

TEST_F(FlatSetAxisValue, OfAnAxisObjectWritesItsComponent) {
  EXPECT_EQ(axis_set_value(rotary_b_on_head().get(), 7, &x, &y, &z), 1);
  expect_triple(1, 7, 3);
}

// Deliberate: these functions report that they were called, not that they did something.
TEST_F(FlatSetAxisValue, OfATypeThatIsNoLetterWritesNothingAndStillAnswersOne) {
  TAxis record = record_of_its_own();
  record.type = AXIS_DUMMY;
  EXPECT_EQ(axis_set_value(&record, 7, &x, &y, &z), 1);
  expect_triple(1, 2, 3);
}

TEST_F(FlatSetAxisValue, OfNullWritesNothingAndStillAnswersOne) {
  EXPECT_EQ(axis_set_value(nullptr, 7, &x, &y, &z), 1);
  EXPECT_EQ(axis_set_value(NULL, 7, &x, &y, &z), 1);
  expect_triple(1, 2, 3);
}

TEST(FlatAxisFunctions, TakeAnObjectThatIsConstant) {
  const auto axis = rotary_b_on_head();
  const CAxis2* const constant = axis.get();
  EXPECT_EQ(axis_location(constant), HEAD);
  EXPECT_EQ(axis_get_value(constant, 10, 20, 30), 20);
  const ClonedRecord clone(axis_clone(constant));
  EXPECT_EQ(clone.record->type, AXIS_B);
}

// An axis node holds its axis behind its node part, at another address than its own.
TEST(FlatAxisFunctions, TakeAnAxisNodeByItsAxis) {
  const auto node = md::NodeAxis_Create();
  node->payload() = *rotary_b_on_head();

  EXPECT_EQ(axis_location(node.get()), HEAD);
  EXPECT_EQ(axis_get_value(node.get(), 10, 20, 30), 20);
  EXPECT_EQ(axis_limits(node.get())[1], 2.75);
}

TEST(FlatAxisFunctions, SeeAtOnceWhatTheClassWrites) {
  // The same memory under two types: an optimising compiler must not keep a stale field.
  const auto axis = linear_x_on_table();
  TAxis* const record = reinterpret_cast<TAxis*>(axis.get());
  axis->SetMin(1);
  record->min = 2;
  EXPECT_EQ(axis->GetMin(), 2);
  axis->SetMin(3);
  EXPECT_EQ(record->min, 3);
}

// The handle of the flat face is the class itself in C++.
static_assert(std::is_same<k5ax_axis, CAxis2>::value, "k5ax_axis is md::CAxis2");

}  // namespace
