// The rotation about an axis whose direction is no unit vector.
#include "kinematics/axis_rotation.h"

#include <algorithm>

namespace md {

namespace {

constexpr double kShortest = 5e-9;  // length unit; a shorter direction is noise and points nowhere

}  // namespace

Geometry::TPoint<double> AxisRotation::unit_or_zero(const Geometry::TPoint<double>& d) {
  // By the largest component first, so that no square overflows.
  const double largest = std::max({std::abs(d.x), std::abs(d.y), std::abs(d.z)});
  const Geometry::TPoint<double> scaled(d.x / largest, d.y / largest, d.z / largest);
  const double scaled_length = math::length(scaled);
  if (largest == 0 || scaled_length * largest < kShortest) return Geometry::TPoint<double>();
  return Geometry::TPoint<double>(scaled.x / scaled_length, scaled.y / scaled_length,
                                  scaled.z / scaled_length);
}

}  // namespace md
