// The embedded geometry, on Eigen. Eigen stays inside this file: no header of ours names it.

// Eigen picks its vector code by the compiler's target, and another order of sums gives other last bits.
// Without it the same source gives the same figures everywhere; at three by three it is no slower.
#define EIGEN_DONT_VECTORIZE

#include <k5ax/platform/geometry.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include <Eigen/Core>

namespace Geometry {
namespace {

constexpr double kShortestAxis = 5e-9;  // length unit; a shorter rotation axis is noise and points nowhere
constexpr double kParallel = 1e-9;      // cosine between line and normal; at or below it they never meet
constexpr double kInPlane = 1e-6;       // length unit; a point at this distance still lies in the plane

// A squared length this near to 1 differs from it by the rounding of the squares alone: three products, two
// sums and the division that once made the vector a unit vector. Dividing by such a length again would
// change nothing for the better.
constexpr double kUnitSlack = 4 * std::numeric_limits<double>::epsilon();

// Components up to this size, and down to its inverse, leave room for their squares and for products with
// positions.
constexpr double kHandy = 1e30;

using Row = Eigen::RowVector3d;
using Rotation = Eigen::Matrix<double, 3, 3, Eigen::RowMajor>;  // rows: the images of X, Y and Z

Row to_row(const TPoint<double>& p) { return Row(p.x, p.y, p.z); }

TPoint<double> to_point(const Row& row) { return TPoint<double>(row.x(), row.y(), row.z()); }

struct Rigid {
  Rotation rotation;
  Row translation;
};

Rigid to_rigid(const Matrix& matrix) {
  Rigid r;
  matrix.GetMatrix(r.rotation(0, 0), r.rotation(0, 1), r.rotation(0, 2),  //
                   r.rotation(1, 0), r.rotation(1, 1), r.rotation(1, 2),  //
                   r.rotation(2, 0), r.rotation(2, 1), r.rotation(2, 2),  //
                   r.translation.x(), r.translation.y(), r.translation.z());
  return r;
}

Matrix to_matrix(const Rotation& rotation, const Row& translation) {
  Matrix matrix;
  matrix.SetMatrix(rotation(0, 0), rotation(0, 1), rotation(0, 2),  //
                   rotation(1, 0), rotation(1, 1), rotation(1, 2),  //
                   rotation(2, 0), rotation(2, 1), rotation(2, 2),  //
                   translation.x(), translation.y(), translation.z());
  return matrix;
}

// The same direction at a size whose square neither overflows nor underflows: as it is where it can be,
// else with its largest component between 1 and 2. The factor is a power of two and nothing is rounded.
// Zero and what is not finite stay as they are.
Row to_handy_size(const Row& direction) {
  const double largest = direction.cwiseAbs().maxCoeff();
  if (largest > 1 / kHandy && largest < kHandy) return direction;
  if (!(largest > 0) || !std::isfinite(largest)) return direction;

  const int exponent = -std::ilogb(largest);
  return Row(std::scalbn(direction.x(), exponent), std::scalbn(direction.y(), exponent),
             std::scalbn(direction.z(), exponent));
}

// Where the line from `base` along `direction` is nearest to `p`:   base + ((p - base) . d / d . d) d
Row foot_point(const Row& p, const Row& base, const Row& direction) {
  const Row d = to_handy_size(direction);
  const double squared_length = d.squaredNorm();
  if (squared_length == 0) return base;

  return base + d * ((p - base).dot(d) / squared_length);
}

}  // namespace

// A single point or direction takes the values where they stand: a copy for Eigen would cost more than the
// nine products. The sums are in Eigen's order.
TPoint<double> Matrix::TransformDirection(const TPoint<double>& direction) const noexcept {
  const auto& [x, y, z] = direction;
  const double* const m = m_values;
  return TPoint<double>(x * m[0] + (y * m[3] + z * m[6]),  //
                        x * m[1] + (y * m[4] + z * m[7]),  //
                        x * m[2] + (y * m[5] + z * m[8]));
}

Matrix& Matrix::operator*=(const Matrix& next) noexcept { return *this = *this * next; }

Matrix operator*(const Matrix& first, const Matrix& next) noexcept {
  const Rigid a = to_rigid(first);
  const Rigid b = to_rigid(next);
  return to_matrix(a.rotation * b.rotation, a.translation * b.rotation + b.translation);
}

TPoint<double> operator*(const TPoint<double>& point, const Matrix& matrix) noexcept {
  const auto& [x, y, z] = point;
  double xx, xy, xz, yx, yy, yz, zx, zy, zz, tx, ty, tz;
  matrix.GetMatrix(xx, xy, xz, yx, yy, yz, zx, zy, zz, tx, ty, tz);
  return TPoint<double>(x * xx + (y * yx + z * zx) + tx,  //
                        x * xy + (y * yy + z * zy) + ty,  //
                        x * xz + (y * yz + z * zz) + tz);
}

Matrix RotateAboutAxis(const TPoint<double>& direction, double radians) noexcept {
  // Not only for speed: the formula would leave zeros with a minus sign, and they would be saved.
  if (radians == 0) return Matrix();

  Row u_axis = to_row(direction);
  const double squared_length = u_axis.squaredNorm();
  // Written so that what is not a number takes the long way, and comes out as what it is.
  if (!(std::abs(squared_length - 1) <= kUnitSlack)) {
    if (squared_length <= std::numeric_limits<double>::max()) {
      const double length = std::sqrt(squared_length);
      if (length < kShortestAxis) return Matrix();
      u_axis /= length;
    } else {
      u_axis = to_handy_size(u_axis);
      u_axis /= u_axis.norm();
    }
  }

  // Rodrigues' formula for the rows, the images of X, Y and Z: with the unit direction u,
  //     s = u sin,  v = u (1 - cos)
  const Row& u = u_axis;
  const double cosine = std::cos(radians);
  const Row s = u * std::sin(radians);
  const Row v = u * (1 - cosine);
  Matrix matrix;
  matrix.SetMatrix(v.x() * u.x() + cosine, v.x() * u.y() + s.z(), v.x() * u.z() - s.y(),  //
                   v.x() * u.y() - s.z(), v.y() * u.y() + cosine, v.y() * u.z() + s.x(),  //
                   v.x() * u.z() + s.y(), v.y() * u.z() - s.x(), v.z() * u.z() + cosine,  //
                   0, 0, 0);
  return matrix;
}

Matrix RotateAboutAxis(double x, double y, double z, double radians) noexcept {
  return RotateAboutAxis(TPoint<double>(x, y, z), radians);
}

Matrix Translate(const TPoint<double>& offset) noexcept {
  Matrix matrix;
  matrix.SetTranslation(offset.x, offset.y, offset.z);
  return matrix;
}

TPoint<double> NearestPointOnLine(const TPoint<double>& p, const TPoint<double>& a,
                                  const TPoint<double>& b) noexcept {
  return to_point(foot_point(to_row(p), to_row(a), to_row(b) - to_row(a)));
}

TPoint<double> FindNearestPointOnLine(const TPoint<double>& base, const TPoint<double>& direction,
                                      const TPoint<double>& p) noexcept {
  return to_point(foot_point(to_row(p), to_row(base), to_row(direction)));
}

Plane::Plane(const TPoint<double>& normal, const TPoint<double>& point) noexcept
    : m_normal(), m_point(point) {
  // The usual normal; to divide it by its length would change nothing.
  if (to_row(normal).squaredNorm() == 1) {
    m_normal = normal;
    return;
  }
  const Row handy_normal = to_handy_size(to_row(normal));
  const double length = handy_normal.norm();
  if (length > 0 && std::isfinite(length)) m_normal = to_point(handy_normal / length);
}

bool Plane::Intersect(const TPoint<double>& lineStart, const TPoint<double>& lineEnd,
                      TPoint<double>& result) const noexcept {
  const Row p_start = to_row(lineStart);
  const Row d_line = to_handy_size(to_row(lineEnd) - p_start);
  const Row u_normal = to_row(m_normal);
  const double slope = u_normal.dot(d_line);
  // Also false for a line without direction, a plane without normal and anything that is not a number.
  if (!(std::abs(slope) > kParallel * d_line.norm())) return false;

  const Row p_meet = p_start + d_line * (u_normal.dot(to_row(m_point) - p_start) / slope);
  if (!p_meet.allFinite()) return false;

  result = to_point(p_meet);
  return true;
}

bool Plane::PointLiesInPlane(const TPoint<double>& p) const noexcept {
  if (m_normal == TPoint<double>()) return false;

  return std::abs(to_row(m_normal).dot(to_row(p) - to_row(m_point))) <= kInPlane;
}

}  // namespace Geometry
