// Compares doubles, points, matrices and arrays with a tolerance and says which component is off: index, both
// values, the difference. A NaN on either side is a failure.
#ifndef K5AX_TESTS_SUPPORT_NEAR_H
#define K5AX_TESTS_SUPPORT_NEAR_H

#include <array>
#include <cmath>
#include <cstddef>
#include <iomanip>
#include <limits>
#include <ostream>

#include <gtest/gtest.h>

#include <k5ax/foundation.h>
#include <k5ax/platform/geometry.h>

namespace k5ax_test {

// Degrees as a person types them, to the radians that the library takes.
inline double deg(double angle_deg) { return angle_deg * math::D2R; }

// The one comparison behind all macros below; `name_of(i)` names component i in the failure text.
template <class NameOf>
testing::AssertionResult near_components(const char* a_text, const char* b_text, const char* tolerance_text,
                                         const double* a, const double* b, std::size_t count,
                                         double tolerance, NameOf name_of) {
  testing::AssertionResult failure = testing::AssertionFailure();
  failure << std::setprecision(std::numeric_limits<double>::max_digits10) << a_text << " and " << b_text
          << " differ by more than " << tolerance_text << " = " << tolerance;
  bool all_near = true;
  for (std::size_t i = 0; i < count; ++i) {
    // Not `> tolerance`: a NaN must fail.
    if (std::abs(a[i] - b[i]) <= tolerance) continue;
    all_near = false;
    failure << "\n  [" << i << "] " << name_of(i) << ": " << a[i] << " against " << b[i] << ", difference "
            << a[i] - b[i];
  }
  return all_near ? testing::AssertionSuccess() : failure;
}

inline testing::AssertionResult near_point(const char* p_text, const char* q_text, const char* tolerance_text,
                                           const Geometry::TPoint<double>& p,
                                           const Geometry::TPoint<double>& q, double tolerance) {
  const double p_xyz[] = {p.x, p.y, p.z};
  const double q_xyz[] = {q.x, q.y, q.z};
  return near_components(p_text, q_text, tolerance_text, p_xyz, q_xyz, 3, tolerance,
                         [](std::size_t i) { return "xyz"[i]; });
}

// The twelve numbers of a matrix: the images of X, Y and Z, then the translation.
inline std::array<double, 12> components(const Geometry::Matrix& m) {
  std::array<double, 12> c{};
  m.GetMatrix(c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7], c[8], c[9], c[10], c[11]);
  return c;
}

inline testing::AssertionResult near_matrix(const char* a_text, const char* b_text,
                                            const char* tolerance_text, const Geometry::Matrix& a,
                                            const Geometry::Matrix& b, double tolerance) {
  static const char* const names[] = {"row X, x", "row X, y", "row X, z", "row Y, x", "row Y, y", "row Y, z",
                                      "row Z, x", "row Z, y", "row Z, z", "shift x",  "shift y",  "shift z"};
  const std::array<double, 12> a_components = components(a);
  const std::array<double, 12> b_components = components(b);
  return near_components(a_text, b_text, tolerance_text, a_components.data(), b_components.data(), 12,
                         tolerance, [](std::size_t i) { return names[i]; });
}

inline testing::AssertionResult near_array(const char* a_text, const char* b_text, const char* /* count */,
                                           const char* tolerance_text, const double* a, const double* b,
                                           std::size_t count, double tolerance) {
  return near_components(a_text, b_text, tolerance_text, a, b, count, tolerance,
                         [](std::size_t) { return "element"; });
}

}  // namespace k5ax_test

#define EXPECT_NEAR_POINT(p, q, tolerance) EXPECT_PRED_FORMAT3(::k5ax_test::near_point, p, q, tolerance)
#define ASSERT_NEAR_POINT(p, q, tolerance) ASSERT_PRED_FORMAT3(::k5ax_test::near_point, p, q, tolerance)

#define EXPECT_NEAR_MATRIX(a, b, tolerance) EXPECT_PRED_FORMAT3(::k5ax_test::near_matrix, a, b, tolerance)
#define ASSERT_NEAR_MATRIX(a, b, tolerance) ASSERT_PRED_FORMAT3(::k5ax_test::near_matrix, a, b, tolerance)

// The first `count` doubles at `a` and `b`.
#define EXPECT_NEAR_ARRAY(a, b, count, tolerance) \
  EXPECT_PRED_FORMAT4(::k5ax_test::near_array, a, b, count, tolerance)

#endif
