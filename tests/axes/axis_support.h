// What the tests about axes share: the pool as derived classes see it, and axes that differ in every field.
#ifndef K5AX_TESTS_AXES_AXIS_SUPPORT_H
#define K5AX_TESTS_AXES_AXIS_SUPPORT_H

#include <cstddef>

#include <boost/shared_ptr.hpp>

#include <gtest/gtest.h>

#include <k5ax/axes.h>

#include "support/near.h"

namespace k5ax_test {

// The pool is process-wide: other tests of the same program may have parked axes in it.
class AxisPool : public md::CAxis2 {
 public:
  AxisPool() = delete;

  static std::size_t size() { return _axis_pool.size(); }

  // Takes out everything parked and lets it go, so that the next axis created is a fresh one.
  static void drain() {
    while (size() != 0) md::CAxis2::create();
  }
};

// An address to stand for an owner. Nothing looks at what is there: an axis only keeps the pointer.
inline md::CMachDef* owner_address(std::size_t which) {
  alignas(16) static char places[4][16];
  return reinterpret_cast<md::CMachDef*>(places[which]);
}

inline void expect_record(const md::CAxis2& axis, AXIS_TYPE type, AXIS_LOCATION location,
                          const Geometry::TPoint<double>& base, const Geometry::TPoint<double>& vector,
                          double min, double max, AXIS_MODE mode) {
  EXPECT_EQ(axis.GetAxis(), type);
  EXPECT_EQ(axis.GetAxisLocation(), location);
  EXPECT_NEAR_POINT(axis.GetBaseVector(), base, 0.0);
  EXPECT_NEAR_POINT(axis.GetAxisVector(), vector, 0.0);
  EXPECT_EQ(axis.GetMin(), min);
  EXPECT_EQ(axis.GetMax(), max);
  EXPECT_EQ(axis.mode(), mode);
}

inline void expect_equal_records(const md::CAxis2& axis, const md::CAxis2& expected) {
  expect_record(axis, expected.GetAxis(), expected.GetAxisLocation(), expected.GetBaseVector(),
                expected.GetAxisVector(), expected.GetMin(), expected.GetMax(), expected.mode());
}

// Two axes without a field in common; both directions are exactly normal, so that creating and cloning keep
// them to the last bit.
inline boost::shared_ptr<md::CAxis2> rotary_b_on_head() {
  return md::CAxis2::create(AXIS_B, HEAD, {1.5, -2.5, 3.5}, {0, -1, 0}, -1.25, 2.75, ROTARY);
}

inline boost::shared_ptr<md::CAxis2> linear_x_on_table() {
  return md::CAxis2::create(AXIS_X, TABLE, {10, 20, -30}, {1, 0, 0}, -400, 500, LINEAR);
}

inline TAxis record_of_its_own() {
  TAxis record;
  record.base = Geometry::TPoint<double>(1, 2, 3);
  record.vector = Geometry::TPoint<double>(4, 5, 6);
  record.type = AXIS_Y;
  record.location = TABLE;
  record.min = -7;
  record.max = 8;
  record.mode = LINEAR;
  return record;
}

inline void expect_equal_records(const TAxis& record, const TAxis& expected) {
  EXPECT_NEAR_POINT(record.base, expected.base, 0.0);
  EXPECT_NEAR_POINT(record.vector, expected.vector, 0.0);
  EXPECT_EQ(record.type, expected.type);
  EXPECT_EQ(record.location, expected.location);
  EXPECT_EQ(record.min, expected.min);
  EXPECT_EQ(record.max, expected.max);
  EXPECT_EQ(record.mode, expected.mode);
}

}  // namespace k5ax_test

#endif
