// The rotation of one axis about its own line, for a single point or direction.
#ifndef K5AX_KINEMATICS_AXIS_ROTATION_H
#define K5AX_KINEMATICS_AXIS_ROTATION_H

#include <k5ax/axes.h>

#include <cmath>
#include <limits>

namespace md {

// Rodrigues' formula, with the unit direction u, the base point b and the angle t:
//
//     d'  =  d cos t  +  (u x d) sin t  +  u (u . d) (1 - cos t)
//     p'  =  (p - b)'  +  b
//
// The rotation that Geometry::RotateAboutAxis makes a matrix of: where a single vector is to be turned, the
// matrix is the longer way.
class AxisRotation {
 public:
  // Turns nothing.
  AxisRotation() : m_sin(0.0), m_cos(1.0) {}

  AxisRotation(const CAxis2& axis, double angle)
      : m_base(axis.GetBaseVector()),
        m_u_axis(axis.GetAxisVector()),
        m_sin(std::sin(angle)),
        m_cos(std::cos(angle)) {
    const double squared_length = math::dot(m_u_axis, m_u_axis);
    // Written so that what is not a number takes the long way, and comes out as what it is.
    if (std::abs(squared_length - 1) <= kUnitSlack) return;
    m_u_axis = unit_or_zero(m_u_axis);
    if (m_u_axis != Geometry::TPoint<double>()) return;
    m_sin = 0.0;
    m_cos = 1.0;
  }

  // The way back. (From the angle's negative, sine and cosine would be two calls of the C library.)
  AxisRotation inverse() const {
    AxisRotation back = *this;
    back.m_sin = -m_sin;
    return back;
  }

  Geometry::TPoint<double> turn_direction(const Geometry::TPoint<double>& d) const {
    return d * m_cos + math::cross(m_u_axis, d) * m_sin + m_u_axis * (math::dot(m_u_axis, d) * (1 - m_cos));
  }

  Geometry::TPoint<double> turn_point(const Geometry::TPoint<double>& p) const {
    return turn_direction(p - m_base) + m_base;
  }

 private:
  // A squared length that differs from 1 by the rounding of its own sum: a unit vector as good as any.
  static constexpr double kUnitSlack = 4 * std::numeric_limits<double>::epsilon();

  // Zero for a direction that is too short: there is none to turn about, and nothing turns. By value, so that
  // the usual rotation never needs an address and lives in registers; in a file of its own, so that it takes
  // no room where the others are inlined.
  static Geometry::TPoint<double> unit_or_zero(const Geometry::TPoint<double>& d);

  Geometry::TPoint<double> m_base;
  Geometry::TPoint<double> m_u_axis;
  double m_sin;
  double m_cos;
};

}  // namespace md

#endif
