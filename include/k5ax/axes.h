/// @file
/// One axis of a machine: its letter, its place, its line and its travel; made from and given back to a pool.
#ifndef K5AX_AXES_H
#define K5AX_AXES_H

#include <k5ax/foundation.h>

#ifdef __cplusplus
#include <k5ax/platform/stream.h>

#include <boost/shared_ptr.hpp>

#include <list>
#include <string>
#include <type_traits>
#endif

/// The letter of an axis. A rotary axis and the linear axis parallel to it have the same value modulo 3.
// clang-format off
K5AX_ENUM_BEGIN(AXIS_TYPE)
  AXIS_TYPE_INVALID_LOWEST = -1,  ///< what a fresh axis has
  AXIS_A = 0,                     ///< rotary, about X
  AXIS_B = 1,                     ///< rotary, about Y
  AXIS_C = 2,                     ///< rotary, about Z
  AXIS_X = 3,                     ///< linear
  AXIS_Y = 4,                     ///< linear
  AXIS_Z = 5,                     ///< linear
  AXIS_DUMMY = 6,                 ///< no axis: what `md::GetAxis` says of an empty pointer
  AXIS_TYPE_INVALID_HIGHEST = 7   ///< one past the last; no letter
K5AX_ENUM_END(AXIS_TYPE);

/// How an axis moves.
K5AX_ENUM_BEGIN(AXIS_MODE)
  AXIS_MODE_INVALID_LOWEST = -1,  ///< what a fresh axis has
  ROTARY = 0,                     ///< values and limits are angles in radians
  LINEAR = 1,                     ///< values and limits are lengths in the definition's unit
  AXIS_MODE_INVALID_HIGHEST = 2   ///< one past the last; no mode
K5AX_ENUM_END(AXIS_MODE);

/// What an axis carries.
K5AX_ENUM_BEGIN(AXIS_LOCATION)
  AXIS_LOCATION_INVALID_LOWEST = -1,  ///< what a fresh axis has
  HEAD = 0,                           ///< the axis moves the tool
  TABLE = 1,                          ///< the axis moves the part
  AXIS_LOCATION_INVALID_HIGHEST = 2   ///< one past the last; no location
K5AX_ENUM_END(AXIS_LOCATION);
// clang-format on

// An axis object begins with an axis record, and flat functions read it through a pointer to the record. The
// attribute keeps the compiler's type-based alias analysis from taking the two for unrelated memory.
#if defined(__GNUC__) || defined(__clang__)
/// What is marked so may be read as what it begins with.
#define K5AX_MAY_ALIAS __attribute__((__may_alias__))
#else
#define K5AX_MAY_ALIAS
#endif

/// The plain axis record: the leading part of every `md::CAxis2`, copied bytewise.
typedef struct K5AX_MAY_ALIAS TAxis {
  k5ax_point base;         ///< a point on the axis line, machine coordinates, length unit
  k5ax_point vector;       ///< direction of the axis, machine coordinates; see `md::CAxis2` for its length
  AXIS_TYPE type;          ///< letter
  AXIS_LOCATION location;  ///< head or table
  double min;              ///< lower travel limit, length unit or radians by mode
  double max;              ///< upper travel limit, length unit or radians by mode
  AXIS_MODE mode;          ///< rotary or linear
} TAxis;

#ifdef __cplusplus

namespace IIO {

/// Writes a point: x, y, z, three doubles.
/// @param stream  a writing stream; its exceptions pass through
/// @param p       the point
/// @return the stream
inline Stream& operator<<(Stream& stream, const Geometry::TPoint<double>& p) {
  return stream << p.x << p.y << p.z;
}

/// Reads a point: x, y, z, three doubles.
/// @param stream  a reading stream; its exceptions pass through
/// @param[out] p  the point
/// @return the stream
inline Stream& operator>>(Stream& stream, Geometry::TPoint<double>& p) { return stream >> p.x >> p.y >> p.z; }

}  // namespace IIO

/// The machine definition, its axes and its scene graph, and what is computed of them.
namespace md {

class CMachDef;

namespace sg {
template <class T>
class tnode;
}

/// One axis of a five-axis machine: a linear slide X, Y, Z or a rotary axis A, B, C, on the head or on the
/// table.
///
/// An axis is handed out as a boost::shared_ptr by `create` and given back with `free`, which parks it in a
/// process-wide pool; the next `create` takes the one parked last, with all it held. It may also be held by
/// value as a copy. Lengths are in the definition's unit, angles in radians; the frame is the machine's. No
/// setter checks anything: any integer may stand in the enum fields, and the direction may have any length,
/// zero included. `is_valid` says what is usable. One thread at a time, the pool included.
class K5AX_API CAxis2 {
 public:
  /// Copies the record; the new axis belongs to no machine.
  /// @param other  the axis whose record it is
  CAxis2(const CAxis2& other);

  /// Copies the record and the owner. Only this operation carries the owner across.
  /// @param other  the axis that this one becomes equal to
  /// @return this axis
  CAxis2& operator=(const CAxis2& other);

  /// Returns nothing to a pool; only `free` does.
  ~CAxis2();

  /// Takes an axis out of the pool, or makes one.
  /// @return the axis parked last, exactly as it was when it was freed (owner included), or a fresh one:
  ///         type, location and mode -1, base point at the origin, direction, limits and owner zero. Throws
  ///         std::bad_alloc
  static boost::shared_ptr<CAxis2> create();

  /// `create()`, and every field of the record set. The owner is not touched, so that an axis from the pool
  /// keeps its former one.
  /// @param type      the letter; like the other two enums, any value is kept
  /// @param location  head or table
  /// @param base      a point on the axis line, machine coordinates, length unit
  /// @param vector    the direction, machine coordinates, any length; it is normalised, and one shorter than
  ///                  5e-9 becomes (0, 0, 1)
  /// @param min       the lower limit: a length for a linear axis, radians for a rotary one
  /// @param max       the upper limit; not held against the lower one
  /// @param mode      rotary or linear
  /// @return the axis
  static boost::shared_ptr<CAxis2> create(AXIS_TYPE type, AXIS_LOCATION location,
                                          const Geometry::TPoint<double>& base,
                                          Geometry::TPoint<double> vector, double min, double max,
                                          AXIS_MODE mode);

  /// Makes a distinct axis with an equal record.
  /// @param axis  the axis to copy
  /// @return the copy, its direction normalised anew, its owner whatever `create` gave; empty for an empty
  ///         pointer
  static boost::shared_ptr<CAxis2> clone(boost::shared_ptr<CAxis2> axis);

  /// Copies one axis's record into another, which keeps its owner; nothing when either is empty.
  /// @param to    the axis that changes
  /// @param from  the axis whose record it is
  static void copy(boost::shared_ptr<CAxis2> to, boost::shared_ptr<const CAxis2> from);

  /// Copies a record into this axis, which keeps its owner.
  /// @param from  the axis whose record it is; empty does nothing
  void copy(boost::shared_ptr<const CAxis2> from);

  /// Parks an axis in the pool. Nothing is reset and nothing is checked: free an axis once, through its last
  /// holder, or two later `create` calls give out the same object.
  /// @param[in,out] axis  empty afterwards; an empty one is left alone. Where memory for the place in the
  ///                      pool is missing, std::bad_alloc is thrown and the pointer is as it was
  static void free(boost::shared_ptr<CAxis2>& axis);

  /// The letter.
  /// @return as it was set
  AXIS_TYPE GetAxis() const { return m_type; }

  /// Sets the letter.
  /// @param type  any value is kept
  void SetAxis(AXIS_TYPE type) { m_type = type; }

  /// What the axis carries.
  /// @return head or table, as it was set
  AXIS_LOCATION GetAxisLocation() const { return m_location; }

  /// Sets what the axis carries.
  /// @param location  any value is kept
  void SetAxisLocation(AXIS_LOCATION location) { m_location = location; }

  /// A point on the axis line.
  /// @return machine coordinates, length unit
  Geometry::TPoint<double> GetBaseVector() const { return m_base; }

  /// Sets the point on the axis line.
  /// @param base  machine coordinates, length unit
  void SetBaseVector(const Geometry::TPoint<double>& base) { m_base = base; }

  /// The direction of the axis.
  /// @return machine coordinates, as stored and of any length
  Geometry::TPoint<double> GetAxisVector() const { return m_vector; }

  /// Stores the direction as it is; `create` normalises, this does not.
  /// @param vector  machine coordinates, any length
  void SetAxisVector(const Geometry::TPoint<double>& vector) { m_vector = vector; }

  /// The lower travel limit.
  /// @return a length for a linear axis, radians for a rotary one
  double GetMin() const { return m_min; }

  /// The upper travel limit.
  /// @return a length for a linear axis, radians for a rotary one
  double GetMax() const { return m_max; }

  /// Sets the lower limit; the upper one is not looked at.
  /// @param min  a length for a linear axis, radians for a rotary one
  void SetMin(double min) { m_min = min; }

  /// Sets the upper limit; the lower one is not looked at.
  /// @param max  a length for a linear axis, radians for a rotary one
  void SetMax(double max) { m_max = max; }

  /// How the axis moves.
  /// @return rotary or linear, as it was set
  AXIS_MODE mode() const { return m_mode; }

  /// Sets how the axis moves.
  /// @param mode  any value is kept
  void mode(AXIS_MODE mode) { m_mode = mode; }

  /// The machine definition that holds the axis.
  /// @return a borrowed pointer, which nothing keeps up to date when the machine goes away; null for none
  const md::CMachDef* machdef() const { return m_machdef; }

  /// Sets that pointer. The machine is not told.
  /// @param machdef  null for none
  void machdef(md::CMachDef* machdef) { m_machdef = machdef; }

  /// Whether the record makes an axis. The mode is not looked at.
  /// @return true when the location is head or table, the direction is longer than exactly 0, the letter is
  ///         one of A, B, C, X, Y, Z and max >= min
  bool is_valid() const;

  /// Whether the direction is the positive unit vector of the letter (A and X: (1, 0, 0); B and Y: (0, 1, 0);
  /// C and Z: (0, 0, 1)).
  /// @return true when each component is closer than 5e-9. The opposite direction is not orthogonal; nor is
  ///         another letter
  bool is_orthogonal() const;

  /// Multiplies the base point by `factor`, and the limits as well where the mode is linear; the direction
  /// and the limits of a rotary axis stay.
  /// @param axis    the axis; empty does nothing
  /// @param factor  any number; 25.4 brings inches to millimetres
  static void scale(boost::shared_ptr<CAxis2> axis, double factor);

  /// The component of a triple that the letter names: A and X give x, B and Y y, C and Z z. The value goes
  /// through as it is: no unit, no range, no limits.
  /// @param x  the component of A and X
  /// @param y  the component of B and Y
  /// @param z  the component of C and Z
  /// @return one of the three; 0.0 for any other type
  double GetValue(double x, double y, double z) const;

  /// The same as `GetValue`, for a triple of angles.
  /// @param x  the angle of A and X, radians
  /// @param y  the angle of B and Y, radians
  /// @param z  the angle of C and Z, radians
  /// @return one of the three; 0.0 for any other type
  double GetAngle(double x, double y, double z) const;

  /// `GetValue` of an axis.
  /// @param axis  the axis; empty gives 0.0
  /// @param x     the component of A and X
  /// @param y     the component of B and Y
  /// @param z     the component of C and Z
  /// @return one of the three; 0.0 for any other type
  static double GetValue(boost::shared_ptr<CAxis2> axis, double x, double y, double z);

  /// `GetAngle` of an axis.
  /// @param axis  the axis; empty gives 0.0
  /// @param x     the angle of A and X, radians
  /// @param y     the angle of B and Y, radians
  /// @param z     the angle of C and Z, radians
  /// @return one of the three; 0.0 for any other type
  static double GetAngle(boost::shared_ptr<CAxis2> axis, double x, double y, double z);

  /// Writes a value into the component that the letter names; another type writes nothing.
  /// @param value      as it is: no unit, no range, no limits
  /// @param[in,out] x  the component of A and X
  /// @param[in,out] y  the component of B and Y
  /// @param[in,out] z  the component of C and Z
  void SetValue(double value, double& x, double& y, double& z);

  /// Writes one axis record to a writing stream, else reads one; docs/file-format.md has the fields. The
  /// version read is ignored; the fields change only when the whole record was read. The owner is not part of
  /// the record.
  /// @param stream  its exceptions pass through
  void serialize(IIO::Stream& stream);

 protected:
  /// Made by `create` alone.
  CAxis2();

  /// The axes that were given back, the last one first to go out again.
  static std::list<boost::shared_ptr<CAxis2>> _axis_pool;

 private:
  friend class CMachDef;
  friend class sg::tnode<CAxis2>;

  struct deleter;

  CAxis2(AXIS_TYPE type, AXIS_LOCATION location, const Geometry::TPoint<double>& base,
         Geometry::TPoint<double> vector, double min, double max);
  boost::shared_ptr<CAxis2> clone() const;
  void copy_record(const CAxis2& from);
  void scale(double factor);
  operator TAxis() const;

  static const int _version;

  // The seven fields of TAxis, in its order.
  Geometry::TPoint<double> m_base;
  Geometry::TPoint<double> m_vector;
  AXIS_TYPE m_type;
  AXIS_LOCATION m_location;
  double m_min;
  double m_max;
  AXIS_MODE m_mode;

  md::CMachDef* m_machdef;  // borrowed; null when the axis belongs to no machine
};

/// The letter of an axis.
/// @param axis  the axis
/// @return its letter; `AXIS_DUMMY` for an empty pointer
K5AX_API AXIS_TYPE GetAxis(boost::shared_ptr<CAxis2> axis);

}  // namespace md

/// The letter as a text.
/// @param type  any value
/// @return "A", "B", "C", "X", "Y", "Z", or the enumerator's name for the others; "AXIS_TYPE_UNKNOW", spelled
///         so since hosts compare it, for any other value
K5AX_API std::string AXIS_TYPE2String(AXIS_TYPE type);

/// The mode as a text.
/// @param mode  any value
/// @return the enumerator's name; "AXIS_MODE_UNKNOWN" for any other value
K5AX_API std::string AXIS_MODE2String(AXIS_MODE mode);

/// The location as a text.
/// @param location  any value
/// @return the enumerator's name; "AXIS_LOCATION_UNKNOW", spelled so since hosts compare it, for any other
///         value
K5AX_API std::string AXIS_LOCATION2String(AXIS_LOCATION location);

/// An axis as the flat functions hand it out; in C it is the record itself.
typedef md::CAxis2 k5ax_axis;
#else
typedef TAxis k5ax_axis;
#endif  // __cplusplus

// Every record argument may point to an axis object, since that begins with its record.
K5AX_FLAT_BEGIN

/// A new record with the same seven fields, outside every pool. Memory running out is std::bad_alloc.
/// @param axis  a record, or an axis object
/// @return the record; give it back with `axis_free`. Null for null
K5AX_API TAxis* axis_clone(const TAxis* axis);

/// Copies the seven fields; nothing when either is null.
/// @param[out] to  a record, or an axis object
/// @param from     another one
/// @return always 1
K5AX_API int axis_copy(TAxis* to, const TAxis* from);

/// Deletes a record from `axis_clone`.
/// @param[in,out] axis  the caller's pointer, which is null afterwards; null, or a pointer to null, does
///                      nothing
/// @return always 1
K5AX_API int axis_free(TAxis** axis);

/// The record's location.
/// @param axis  a record, or an axis object
/// @return head or table, as stored; -1 for null
K5AX_API AXIS_LOCATION axis_location(const TAxis* axis);

/// The record's limits, to read and write.
/// @param axis  a record, or an axis object
/// @return the address of min, directly followed by max; lives as long as the record. Null for null
K5AX_API double* axis_limits(TAxis* axis);

/// The component of a triple that the record's letter names.
/// @param axis  a record, or an axis object
/// @param x     the component of A and X
/// @param y     the component of B and Y
/// @param z     the component of C and Z
/// @return one of the three; 0.0 for another type and for null
K5AX_API double axis_get_value(const TAxis* axis, double x, double y, double z);

/// Writes a value to the component that the record's letter names; nothing for another type and for null.
/// @param axis       a record, or an axis object
/// @param value      as it is: no unit, no range, no limits
/// @param[in,out] x  the component of A and X; like the other two, null is not tested
/// @param[in,out] y  the component of B and Y
/// @param[in,out] z  the component of C and Z
/// @return always 1
K5AX_API int axis_set_value(const TAxis* axis, double value, double* x, double* y, double* z);

K5AX_FLAT_END

#ifdef __cplusplus

// The flat functions for axis objects, beside those for records. They are templates so that a literal null
// still names the record form.
namespace k5ax_detail {

template <class A, class Result>
using if_axis = typename std::enable_if<std::is_base_of<md::CAxis2, A>::value, Result>::type;

inline TAxis* record(md::CAxis2* axis) { return reinterpret_cast<TAxis*>(axis); }
inline const TAxis* record(const md::CAxis2* axis) { return reinterpret_cast<const TAxis*>(axis); }

}  // namespace k5ax_detail

/// `axis_clone` of an axis object.
/// @param axis  the axis
/// @return its record, outside every pool; give it back with `axis_free`
template <class A>
k5ax_detail::if_axis<A, TAxis*> axis_clone(A* axis) {
  return axis_clone(k5ax_detail::record(axis));
}

/// `axis_copy` between axis objects; the owner stays.
/// @param[out] to  an axis
/// @param from     an axis
/// @return always 1
template <class A, class B>
k5ax_detail::if_axis<A, k5ax_detail::if_axis<B, int>> axis_copy(A* to, B* from) {
  return axis_copy(k5ax_detail::record(to), k5ax_detail::record(from));
}

/// `axis_copy` from a record to an axis object; the owner stays.
/// @param[out] to  an axis
/// @param from     a record
/// @return always 1
template <class A>
k5ax_detail::if_axis<A, int> axis_copy(A* to, const TAxis* from) {
  return axis_copy(k5ax_detail::record(to), from);
}

/// `axis_copy` from an axis object to a record.
/// @param[out] to  a record
/// @param from     an axis
/// @return always 1
template <class B>
k5ax_detail::if_axis<B, int> axis_copy(TAxis* to, B* from) {
  return axis_copy(to, k5ax_detail::record(from));
}

/// `axis_location` of an axis object.
/// @param axis  the axis
/// @return head or table
template <class A>
k5ax_detail::if_axis<A, AXIS_LOCATION> axis_location(A* axis) {
  return axis_location(k5ax_detail::record(axis));
}

/// `axis_limits` of an axis object.
/// @param axis  the axis
/// @return the address of its lower limit, directly followed by the upper one
template <class A>
k5ax_detail::if_axis<A, double*> axis_limits(A* axis) {
  return axis_limits(k5ax_detail::record(axis));
}

/// `axis_get_value` of an axis object.
/// @param axis  the axis
/// @param x     the component of A and X
/// @param y     the component of B and Y
/// @param z     the component of C and Z
/// @return one of the three; 0.0 for another type and for null
template <class A>
k5ax_detail::if_axis<A, double> axis_get_value(A* axis, double x, double y, double z) {
  return axis_get_value(k5ax_detail::record(axis), x, y, z);
}

/// `axis_set_value` of an axis object.
/// @param axis       the axis
/// @param value      as it is: no unit, no range, no limits
/// @param[in,out] x  the component of A and X; like the other two, null is not tested
/// @param[in,out] y  the component of B and Y
/// @param[in,out] z  the component of C and Z
/// @return always 1
template <class A>
k5ax_detail::if_axis<A, int> axis_set_value(A* axis, double value, double* x, double* y, double* z) {
  return axis_set_value(k5ax_detail::record(axis), value, x, y, z);
}

#endif  // __cplusplus

#endif
