// Vector algebra on plain arrays, without a matrix: the second formulation that rotations and lines are
// compared with, and the seeded numbers to do it on.
#ifndef K5AX_TESTS_PLATFORM_PLAIN_VECTORS_H
#define K5AX_TESTS_PLATFORM_PLAIN_VECTORS_H

#include <array>
#include <cmath>
#include <cstdint>
#include <random>

#include <k5ax/platform/geometry.h>

namespace k5ax_test {

using Vec = std::array<double, 3>;

inline Vec vec(const Geometry::TPoint<double>& p) { return {p.x, p.y, p.z}; }
inline Geometry::TPoint<double> point(const Vec& v) { return {v[0], v[1], v[2]}; }

inline double dot(const Vec& a, const Vec& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
inline Vec cross(const Vec& a, const Vec& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
inline double length(const Vec& a) { return std::hypot(a[0], a[1], a[2]); }

// Rodrigues' formula in vector form, u = axis / |axis|:   v cos(t) + (u x v) sin(t) + u (u . v) (1 - cos(t))
inline Vec turned(const Vec& v, const Vec& axis, double radians) {
  const double size = length(axis);
  const Vec u = {axis[0] / size, axis[1] / size, axis[2] / size};
  const Vec u_x_v = cross(u, v);
  const double along = dot(u, v) * (1 - std::cos(radians));
  Vec result{};
  for (std::size_t i = 0; i < 3; ++i) {
    result[i] = v[i] * std::cos(radians) + u_x_v[i] * std::sin(radians) + u[i] * along;
  }
  return result;
}

// The same numbers with every standard library: the mapping to a range is our own.
class Numbers {
 public:
  explicit Numbers(std::uint64_t seed) : m_engine(seed) {}

  // 53 random bits as a fraction of 1, stretched to [low, high).
  double between(double low, double high) {
    return low + (high - low) * (static_cast<double>(m_engine() >> 11) * 0x1p-53);
  }
  Vec vec_between(double low, double high) {
    const double x = between(low, high);
    const double y = between(low, high);
    return {x, y, between(low, high)};
  }

  // A whole number in [0, count). The bias of the remainder is below count / 2^64.
  std::uint64_t below(std::uint64_t count) { return m_engine() % count; }

 private:
  std::mt19937_64 m_engine;
};

}  // namespace k5ax_test

#endif
