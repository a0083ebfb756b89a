/// @file
/// Points, rigid transforms, lines and planes: the geometry that the whole library is written in.
///
/// Conventions, for every name below:
/// - Points and directions are rows. `p * M` moves a point, and `A * B` applies A first, then B.
/// - Angles are radians. Rotations are right-handed: +90 degrees about +Z takes +X to +Y.
/// - Lengths are whatever unit the caller uses throughout; the few tolerances are stated in that unit.
/// - Nothing throws, allocates or keeps state. Input that is not finite gives results that are not finite (or
///   false from the plane's questions), never a crash or an endless loop.
///
/// These are declarations: the embedded implementation stands in platform/builtin, and another one can take
/// its place when the library is configured.
#ifndef K5AX_PLATFORM_GEOMETRY_H
#define K5AX_PLATFORM_GEOMETRY_H

#include <k5ax/platform/export.h>

/// Points, rigid transforms, lines and planes.
namespace Geometry {

/// A point or a direction: three coordinates, by value. Which of the two it is, the caller knows.
///
/// Trivially copyable, and a constant of it is initialised at compile time.
template <class T>
struct TPoint {
  /// The first coordinate.
  T x;

  /// The second coordinate.
  T y;

  /// The third coordinate.
  T z;

  /// The origin, or a direction without length.
  constexpr TPoint() noexcept : x(), y(), z() {}

  /// A point of three coordinates.
  /// @param x_value  the first
  /// @param y_value  the second
  /// @param z_value  the third
  constexpr TPoint(T x_value, T y_value, T z_value) noexcept : x(x_value), y(y_value), z(z_value) {}

  /// The sum, coordinate by coordinate.
  /// @param other  what is added
  /// @return the sum
  constexpr TPoint operator+(const TPoint& other) const noexcept {
    return TPoint(x + other.x, y + other.y, z + other.z);
  }

  /// The way from another point to this one.
  /// @param other  what is taken away
  /// @return the difference, coordinate by coordinate
  constexpr TPoint operator-(const TPoint& other) const noexcept {
    return TPoint(x - other.x, y - other.y, z - other.z);
  }

  /// The opposite direction.
  /// @return each coordinate with the other sign
  constexpr TPoint operator-() const noexcept { return TPoint(-x, -y, -z); }

  /// A multiple.
  /// @param factor  any number
  /// @return each coordinate times the factor
  constexpr TPoint operator*(T factor) const noexcept { return TPoint(x * factor, y * factor, z * factor); }

  /// Exact, coordinate by coordinate; no tolerance.
  /// @param other  what it is held against
  /// @return true when all three are equal; never with a NaN
  constexpr bool operator==(const TPoint& other) const noexcept {
    return x == other.x && y == other.y && z == other.z;
  }

  /// The opposite of `==`.
  /// @param other  what it is held against
  /// @return true when one coordinate differs
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
  /// @param[out] xx  where X goes, its x
  /// @param[out] xy  its y
  /// @param[out] xz  its z
  /// @param[out] yx  where Y goes, its x
  /// @param[out] yy  its y
  /// @param[out] yz  its z
  /// @param[out] zx  where Z goes, its x
  /// @param[out] zy  its y
  /// @param[out] zz  its z
  /// @param[out] tx  the translation, its x
  /// @param[out] ty  its y
  /// @param[out] tz  its z
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
  /// @param xx  where X goes, its x
  /// @param xy  its y
  /// @param xz  its z
  /// @param yx  where Y goes, its x
  /// @param yy  its y
  /// @param yz  its z
  /// @param zx  where Z goes, its x
  /// @param zy  its y
  /// @param zz  its z
  /// @param tx  the translation, its x
  /// @param ty  its y
  /// @param tz  its z
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
  /// @param tx  the translation's x
  /// @param ty  its y
  /// @param tz  its z
  void SetTranslation(double tx, double ty, double tz) noexcept {
    m_values[9] = tx;
    m_values[10] = ty;
    m_values[11] = tz;
  }

  /// Turns a direction: the rotation without the translation. For a point, `p * M`.
  /// @param direction  of any length
  /// @return the direction as it is turned, of the same length where the matrix is a rotation
  K5AX_API TPoint<double> TransformDirection(const TPoint<double>& direction) const noexcept;

  /// `A *= B` is `A = A * B`: what A does first, then what B does.
  /// @param next  B; may be A itself
  /// @return A
  K5AX_API Matrix& operator*=(const Matrix& next) noexcept;

 private:
  double m_values[12];  // four rows of three: the images of X, Y, Z, then the translation
};

/// One transform after the other.
/// @param first  what is done first
/// @param next   what is done then
/// @return the transform that does both
K5AX_API Matrix operator*(const Matrix& first, const Matrix& next) noexcept;

/// Moves a point: the rotation, then the translation. For a direction, Matrix::TransformDirection.
/// @param point   the point
/// @param matrix  from the frame that the point is given in
/// @return the point in the frame that the matrix leads to
K5AX_API TPoint<double> operator*(const TPoint<double>& point, const Matrix& matrix) noexcept;

/// The rotation about the line through the origin along a direction, right-handed: +90 degrees about +Z take
/// +X to +Y.
///
/// To turn about a line elsewhere: Translate(-base) * RotateAboutAxis(direction, radians) * Translate(base).
/// Rotation by Rodrigues' formula.
/// @param direction  any length (1e200 too) and not necessarily a unit vector; one shorter than 5e-9 has no
///                   direction to speak of and gives the identity
/// @param radians    any finite angle, not wrapped; 0 gives exactly the identity, whatever the direction
/// @return the rotation, without a translation
K5AX_API Matrix RotateAboutAxis(const TPoint<double>& direction, double radians) noexcept;

/// The same, about the direction (x, y, z).
/// @param x        the direction's x
/// @param y        its y
/// @param z        its z
/// @param radians  any finite angle
/// @return the rotation, without a translation
K5AX_API Matrix RotateAboutAxis(double x, double y, double z, double radians) noexcept;

/// The translation by an offset, without a rotation.
/// @param offset  where the origin goes
/// @return the translation
K5AX_API Matrix Translate(const TPoint<double>& offset) noexcept;

/// The point nearest to another one on the line through two points, which has no ends.
/// @param p  the point that it is near to
/// @param a  a point on the line
/// @param b  another point on the line
/// @return the foot point; `a` when `a` and `b` coincide
K5AX_API TPoint<double> NearestPointOnLine(const TPoint<double>& p, const TPoint<double>& a,
                                           const TPoint<double>& b) noexcept;

/// The same foot point as NearestPointOnLine, for a line given the other way.
/// @param base       a point on the line
/// @param direction  along the line, of any length
/// @param p          the point that it is near to
/// @return the foot point; `base` when the direction is zero
K5AX_API TPoint<double> FindNearestPointOnLine(const TPoint<double>& base, const TPoint<double>& direction,
                                               const TPoint<double>& p) noexcept;

/// A plane without bounds, by a normal and a point in it.
///
/// The normal may have any length. A plane whose normal is zero (or not finite) is no plane: no line meets
/// it and no point lies in it.
class Plane {
 public:
  /// The plane through a point.
  /// @param normal  at right angles to the plane, of any length
  /// @param point   any point in it
  K5AX_API Plane(const TPoint<double>& normal, const TPoint<double>& point) noexcept;

  /// Where the line through two points meets the plane. The line has no ends: the meeting point may lie
  /// beyond either.
  /// @param lineStart    a point on the line
  /// @param lineEnd      another point on the line
  /// @param[out] result  written only when true is returned
  /// @return false when the line is parallel to the plane (the cosine between line and normal is at most 1e-9
  ///         in size, also for a line that lies in the plane), when the two points coincide, or when the
  ///         answer is not finite
  K5AX_API bool Intersect(const TPoint<double>& lineStart, const TPoint<double>& lineEnd,
                          TPoint<double>& result) const noexcept;

  /// Whether a point is in the plane.
  /// @param p  the point
  /// @return true within 1e-6 (length unit) of the plane, on either side
  K5AX_API bool PointLiesInPlane(const TPoint<double>& p) const noexcept;

 private:
  TPoint<double> m_normal;  // of length 1, or zero when there is no plane
  TPoint<double> m_point;   // any point in the plane
};

}  // namespace Geometry

#endif
