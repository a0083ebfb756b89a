// How far two points are apart, in units of the last place of a length.
#ifndef K5AX_TESTS_LAWS_ULPS_H
#define K5AX_TESTS_LAWS_ULPS_H

#include <algorithm>
#include <cmath>
#include <limits>

#include <rapidcheck.h>

#include "support/vector_form.h"

namespace laws {

// The distance from `length` to the next double: 2^-52 of the power of two at or below it. So a rounding of
// eps / 2 of the length is never more than one of these, nor less than half of one.
inline double unit_of_last_place(double length) {
  if (!(length >= std::numeric_limits<double>::min())) return std::numeric_limits<double>::denorm_min();
  return std::ldexp(1.0, std::ilogb(length) - 52);
}

inline double largest_component(const vector_form::Vec& v) {
  return std::max({std::abs(v.x), std::abs(v.y), std::abs(v.z)});
}

// The largest difference of a component. Not a number when one of the two points is none.
inline double deviation_in_ulps(const vector_form::Vec& p, const vector_form::Vec& q, double length) {
  return largest_component(p - q) / unit_of_last_place(length);
}

// Fails the law that is being tried. `ulps` is its bound, of `length`.
inline void require_near(const vector_form::Vec& p, const vector_form::Vec& q, double ulps, double length) {
  const double deviation = deviation_in_ulps(p, q, length);
  if (deviation <= ulps) return;
  RC_LOG() << p << " and " << q << " are " << deviation << " units of the last place of " << length
           << " apart; allowed are " << ulps << std::endl;
  RC_FAIL("two points differ");
}

}  // namespace laws

#endif
