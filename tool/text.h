// Numbers and names as the tool prints them.
#ifndef K5AX_TOOL_TEXT_H
#define K5AX_TOOL_TEXT_H

#include <string>

#include <k5ax/machdef.h>

namespace tool {

using Point = Geometry::TPoint<double>;

/// The number with at most `digits` significant digits and no zeros at its end: "62.481", "1e-09", "nan".
/// Negative zero is "0".
std::string number(double value, int digits = 10);

/// The shortest text that reads back as exactly this number; for messages in which a small difference counts.
std::string exact(double value);

/// An angle in degrees, without the unit: the shortest text whose conversion to radians gives exactly this
/// angle, and where there is none, 15 digits.
std::string degrees(double angle);

/// "x y z"; a coordinate that is nothing beside the largest one (1e-14 of it) is 0.
std::string triple(const Point& p, int digits = 10);

/// "x y z", each number as `exact` has it.
std::string exact_triple(const Point& p);

/// "A" to "Z", else "letter 7".
std::string letter_name(AXIS_TYPE type);

/// "head", "table", else "location 7".
std::string location_name(AXIS_LOCATION location);

/// "rotary", "linear", else "mode 7".
std::string mode_name(AXIS_MODE mode);

/// "table-table", "head-table", "head-head", "unset", else "type 7".
std::string type_name(MACHINE_TYPE type);

/// "mm" or "inch".
const char* unit_name(const md::CMachDef& machine);

/// "1 reason", "2 reasons".
std::string counted(std::size_t count, const std::string& noun);

/// A value of the axis with its unit: degrees for a rotary axis ("30 deg"), else a length ("30 mm").
std::string axis_value(const md::CAxis2& axis, double value, const char* unit);

/// True when x, y and z are finite.
bool is_finite(const Point& p);

}  // namespace tool

#endif
