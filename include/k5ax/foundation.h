/// @file
/// What everything else stands on: host callbacks, the process-wide switches, constant points, angle
/// constants.
#ifndef K5AX_FOUNDATION_H
#define K5AX_FOUNDATION_H

#include <k5ax/platform/export.h>

#ifdef __cplusplus
#include <k5ax/platform/geometry.h>

#include <boost/function.hpp>

#include <cmath>
#include <string>
#else
#include <stdbool.h>
#endif

// The linkage of the flat functions, and the form in which one enum is declared for both languages: with the
// underlying type int in C++, so that any integer may be stored, and with a plain type name in C.
#ifdef __cplusplus
/// Opens a run of flat functions: C linkage.
#define K5AX_FLAT_BEGIN extern "C" {
/// Closes that run.
#define K5AX_FLAT_END }

/// Begins an enum of the type `int` in C++, a plain one in C.
#define K5AX_ENUM_BEGIN(name) enum name : int {
/// Ends it.
#define K5AX_ENUM_END(name) }
#else
#define K5AX_FLAT_BEGIN
#define K5AX_FLAT_END
#define K5AX_ENUM_BEGIN(name) typedef enum {
#define K5AX_ENUM_END(name) \
  }                         \
  name
#endif

/// A point or a direction of three doubles x, y, z; the frame and the unit are those of the place it stands
/// in.
#ifdef __cplusplus
typedef Geometry::TPoint<double> k5ax_point;
#else
typedef struct k5ax_point {
  double x;
  double y;
  double z;
} k5ax_point;
#endif

#ifdef __cplusplus

/// The channels to the host, and the switches that decide whether they are used.
///
/// Everything here is static and lives for the whole process. Nothing is synchronised: install callbacks and
/// set flags before the library is used from several threads. A callback runs on the thread of the call that
/// sends; what it throws reaches that call's caller. A callback must not replace itself while it runs.
class K5AX_API CUtility {
 public:
  /// A deleter that does nothing, for a boost::shared_ptr to an object that somebody else owns.
  struct K5AX_API null_deleter {
    /// Leaves the object alone.
    void operator()(const void*) const {}
  };

  /// Installs the sink for informational text. Starts empty.
  /// @param f  takes a text that lasts for the call; an empty function uninstalls the sink
  static void set_feedback_cbk(boost::function<void(const char*)> f);

  /// Installs the sink for errors. Starts empty.
  /// @param f  takes a text, which lasts for the call, and a code; an empty function uninstalls the sink
  static void set_error_cbk(boost::function<void(const char*, short)> f);

  /// Installs the assertion hook. Starts empty.
  /// @param f  takes three texts, which last for the call, and a line number; an empty function uninstalls
  ///           the hook
  static void set_assertion_handler_cbk(boost::function<void(const char*, const char*, const char*, long)> f);

  /// Hands a text to the feedback sink; without a sink it does nothing.
  /// @param text  the sink may use it during the call only
  static void feedback(const std::string& text);

  /// Hands a text and a code to the error sink; without a sink it does nothing. The library itself sends
  /// nothing here; the channel is for the host and the code it links.
  /// @param text  the sink may use it during the call only
  /// @param code  the sink sees the low 16 bits only
  static void error(const std::string& text, int code);

  /// Hands the four arguments, unchanged and in this order, to the assertion hook; without a hook it does
  /// nothing (no abort, no exception). The library itself never calls it.
  /// @param a     a text; what each of the three says is for the host and the code it links to agree on
  /// @param b     another one
  /// @param c     a third one
  /// @param line  a line number
  static void assertion_failed(const char* a, const char* b, const char* c, long line);

  /// Whether developer mode is on, in which `is_valid` says why.
  /// @return true when the flags word has the developer bit (value 2)
  static bool developer();

  /// Sets or clears the developer bit (value 2); the other bits stay.
  /// @param on  true sets it
  static void developer(bool on);

  /// Whether regression mode is on, in which `is_valid` says why too.
  /// @return true when the flags word has the regression bit (value 4)
  static bool regression();

  /// Sets or clears the regression bit (value 4); the other bits stay.
  /// @param on  true sets it
  static void regression(bool on);

  /// The process-wide flags word; 0 at the start.
  /// @return the whole word. Bits other than 2 and 4 are kept and mean nothing to the library
  static unsigned int flags();

  /// Replaces the whole flags word.
  /// @param word  any bits
  static void flags(unsigned int word);

  static const Geometry::TPoint<double> pt_o;  ///< the origin (0, 0, 0); usable before main
  static const Geometry::TPoint<double> pt_x;  ///< unit X (1, 0, 0); usable before main
  static const Geometry::TPoint<double> pt_y;  ///< unit Y (0, 1, 0); usable before main
  static const Geometry::TPoint<double> pt_z;  ///< unit Z (0, 0, 1); usable before main

 private:
  static boost::function<void(const char*)> _feedback;
  static boost::function<void(const char*, short)> _error;
  static boost::function<void(const char*, const char*, const char*, long)> _fassert_handler;
  static unsigned int _flags;
};

/// Angle constants, and the vector arithmetic that the geometry library leaves out.
namespace math {

// Each the double nearest to its value; constant-initialised, so usable before main.
extern K5AX_API const double m_pi;   ///< pi
extern K5AX_API const double m_pi2;  ///< pi / 2
extern K5AX_API const double m_2pi;  ///< 2 pi
extern K5AX_API const double D2R;    ///< pi / 180, degrees to radians
extern K5AX_API const double R2D;    ///< 180 / pi, radians to degrees

/// a . b
/// @param a  a vector
/// @param b  another one
/// @return the sum of the products of the components
inline double dot(const Geometry::TPoint<double>& a, const Geometry::TPoint<double>& b) {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}

/// a x b, by the right hand: X x Y = Z
/// @param a  a vector
/// @param b  another one
/// @return the vector at right angles to both, its length |a| |b| sin(angle between them)
inline Geometry::TPoint<double> cross(const Geometry::TPoint<double>& a, const Geometry::TPoint<double>& b) {
  return Geometry::TPoint<double>(a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x);
}

/// |v|
/// @param v  a vector
/// @return its Euclidean length; infinite where the squares overflow (beyond about 1e154)
inline double length(const Geometry::TPoint<double>& v) { return std::sqrt(dot(v, v)); }

/// v / |v|
/// @param v  a vector
/// @return a unit vector; (0, 0, 1) for a vector shorter than 5e-9, which has no direction
inline Geometry::TPoint<double> safe_normal(const Geometry::TPoint<double>& v) {
  const double v_length = length(v);
  if (v_length < 5e-9) return CUtility::pt_z;
  return Geometry::TPoint<double>(v.x / v_length, v.y / v_length, v.z / v_length);
}

}  // namespace math

#endif  // __cplusplus

K5AX_FLAT_BEGIN

/// The process-wide flags word, as `CUtility::flags()`.
/// @return the whole word
K5AX_API unsigned int md_flags_get(void);

/// Replaces the whole flags word, as `CUtility::flags(unsigned int)`.
/// @param flags  any bits
K5AX_API void md_flags_set(unsigned int flags);

/// Whether regression mode is on.
/// @return 1 when the flags word has the regression bit (value 4), else 0
K5AX_API int md_regression(void);

/// Radians to degrees.
/// @return 180 / pi
K5AX_API double k5ax_R2D(void);

/// Degrees to radians.
/// @return pi / 180
K5AX_API double k5ax_D2R(void);

/// Brings an angle into a range by whole turns.
///
/// @param angle  radians. The result is exactly the sum of adding or taking away one turn after the other,
///               rounded each time, and so the worse the larger the angle. NaN comes back as it is, and so
///               does an angle that a turn no longer changes (infinite, or beyond about 1e17).
/// @param range  1: [0, 2 pi); 2: [-pi, pi], where both ends stay as they are; any other value: no change
/// @return the angle in that range, radians
K5AX_API double k5ax_normalise_angle(double angle, int range);

K5AX_FLAT_END

#endif
