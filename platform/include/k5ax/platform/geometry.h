// Points, rigid transforms, lines and planes: the geometry that the whole library is written in.
//
// Conventions, for every name below:
// - Points and directions are rows. `p * M` moves a point, and `A * B` applies A first, then B.
// - Angles are radians. Rotations are right-handed: +90 degrees about +Z takes +X to +Y.
// - Lengths are whatever unit the caller uses throughout; the few tolerances are stated in that unit.
// - Nothing throws, allocates or keeps state. Input that is not finite gives results that are not finite (or
//   false from the plane's questions), never a crash or an endless loop.
//
// These are declarations: the embedded implementation stands in platform/builtin, and another one can take
// its place when the library is configured.
#ifndef K5AX_PLATFORM_GEOMETRY_H
#define K5AX_PLATFORM_GEOMETRY_H

#include <k5ax/platform/export.h>

namespace Geometry {

/// A point or a direction: three coordinates, by value. Which of the two it is, the caller knows.
///
/// Trivially copyable, and a constant of it is initialised at compile time.
template <class T>
struct TPoint {
  T x;
  T y;
  T z;

  /// The origin, or a direction without length.
  constexpr TPoint() noexcept : x(), y(), z() {}
  constexpr TPoint(T x_value, T y_value, T z_value) noexcept : x(x_value), y(y_value), z(z_value) {}

  constexpr TPoint operator+(const TPoint& other) const noexcept {
    return TPoint(x + other.x, y + other.y, z + other.z);
  }
  constexpr TPoint operator-(const TPoint& other) const noexcept {
    return TPoint(x - other.x, y - other.y, z - other.z);
  }
  constexpr TPoint operator-() const noexcept { return TPoint(-x, -y, -z); }
  constexpr TPoint operator*(T factor) const noexcept { return TPoint(x * factor, y * factor, z * factor); }

  /// Exact, coordinate by coordinate; no tolerance.
  constexpr bool operator==(const TPoint& other) const noexcept {
    return x == other.x && y == other.y && z == other.z;
  }
  constexpr bool operator!=(const TPoint& other) const noexcept { return !(*this == other); }
};

/// A rigid transform: a rotation, then a translation. Twelve doubles, by value, trivially copyable.
///
/// The twelve values stand in memory, and in the arguments of GetMatrix and SetMatrix, as four rows of
/// three: the images of the directions X, Y and Z, then the image of the origin (the translation). So
///
///     p * M  =  p.x * (xx, xy, xz)  +  p.y * (yx, yy, yz)  +  p.z * (zx, zy, zz)  +  (tx, ty, tz)
///
/// Nothing checks that the first three rows are a rotation: twelve arbitrary values are kept and applied as
/// they stand.
class Matrix {
 public:
  /// The identity.
  Matrix() noexcept : m_values{1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0} {}

  /// Writes the twelve values, row by row, to the twelve arguments.
  void GetMatrix(double& xx, double& xy, double& xz, double& yx, double& yy, double& yz, double& zx,
                 double& zy, double& zz, double& tx, double& ty, double& tz) const noexcept {
    xx = m_values[0];
    xy = m_values[1];
    xz = m_values[2];
    yx = m_values[3];
    yy = m_values[4];
    yz = m_values[5];
    zx = m_values[6];
    zy = m_values[7];
    zz = m_values[8];
    tx = m_values[9];
    ty = m_values[10];
    tz = m_values[11];
  }

  /// Takes the twelve values, row by row, as they stand.
  void SetMatrix(double xx, double xy, double xz, double yx, double yy, double yz, double zx, double zy,
                 double zz, double tx, double ty, double tz) noexcept {
    m_values[0] = xx;
    m_values[1] = xy;
    m_values[2] = xz;
    m_values[3] = yx;
    m_values[4] = yy;
    m_values[5] = yz;
    m_values[6] = zx;
    m_values[7] = zy;
    m_values[8] = zz;
    m_values[9] = tx;
    m_values[10] = ty;
    m_values[11] = tz;
  }

  /// Becomes the identity.
  void Identity() noexcept { *this = Matrix(); }

  /// Replaces the translation and keeps the rotation; SetTranslation(0, 0, 0) leaves the rotation alone.
  void SetTranslation(double tx, double ty, double tz) noexcept {
    m_values[9] = tx;
    m_values[10] = ty;
    m_values[11] = tz;
  }

  /// Turns a direction: the rotation without the translation. For a point, `p * M`.
  K5AX_API TPoint<double> TransformDirection(const TPoint<double>& direction) const noexcept;

  /// `A *= B` is `A = A * B`: what A does first, then what B does. B may be A itself.
  K5AX_API Matrix& operator*=(const Matrix& next) noexcept;

 private:
  double m_values[12];  // four rows of three: the images of X, Y, Z, then the translation
};

/// The transform that does `first`, then `next`.
K5AX_API Matrix operator*(const Matrix& first, const Matrix& next) noexcept;

/// Moves a point: the rotation, then the translation. For a direction, Matrix::TransformDirection.
K5AX_API TPoint<double> operator*(const TPoint<double>& point, const Matrix& matrix) noexcept;

/// The rotation about the line through the origin along `direction`, right-handed.
///
/// @param direction any length (1e200 too) and not necessarily a unit vector; one shorter than 5e-9 has no
///                  direction to speak of and gives the identity
/// @param radians   any finite angle, not wrapped; 0 gives exactly the identity, whatever the direction
/// To turn about a line elsewhere: Translate(-base) * RotateAboutAxis(direction, radians) * Translate(base).
/// Rotation by Rodrigues' formula.
K5AX_API Matrix RotateAboutAxis(const TPoint<double>& direction, double radians) noexcept;

/// The same, about the direction (x, y, z).
K5AX_API Matrix RotateAboutAxis(double x, double y, double z, double radians) noexcept;

/// The translation by `offset`, without a rotation.
K5AX_API Matrix Translate(const TPoint<double>& offset) noexcept;

/// The point nearest to `p` on the line through `a` and `b`, which has no ends; `a` when the two coincide.
K5AX_API TPoint<double> NearestPointOnLine(const TPoint<double>& p, const TPoint<double>& a,
                                           const TPoint<double>& b) noexcept;

/// The point nearest to `p` on the line through `base` along `direction`; `base` when the direction is zero.
///
/// The same foot point as NearestPointOnLine, for a line given the other way. The direction may have any
/// length.
K5AX_API TPoint<double> FindNearestPointOnLine(const TPoint<double>& base, const TPoint<double>& direction,
                                               const TPoint<double>& p) noexcept;

/// A plane without bounds, by a normal and a point in it.
///
/// The normal may have any length. A plane whose normal is zero (or not finite) is no plane: no line meets
/// it and no point lies in it.
class Plane {
 public:
  K5AX_API Plane(const TPoint<double>& normal, const TPoint<double>& point) noexcept;

  /// Where the line through two points meets the plane. The line has no ends: the meeting point may lie
  /// beyond either.
  ///
  /// @param[out] result written only when true is returned
  /// @return false when the line is parallel to the plane (the cosine between line and normal is at most
  ///         1e-9 in size, also for a line that lies in the plane), when the two points coincide, or when
  ///         the answer is not finite
  K5AX_API bool Intersect(const TPoint<double>& lineStart, const TPoint<double>& lineEnd,
                          TPoint<double>& result) const noexcept;

  /// Whether `p` is within 1e-6 (length unit) of the plane, on either side.
  K5AX_API bool PointLiesInPlane(const TPoint<double>& p) const noexcept;

 private:
  TPoint<double> m_normal;  // of length 1, or zero when there is no plane
  TPoint<double> m_point;   // any point in the plane
};

}  // namespace Geometry

#endif
