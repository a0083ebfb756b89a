// Numbers and angles in text, so that what is read again is the same to the last bit.
#ifndef K5AX_TOOL_MACHINE_ANGLE_TEXT_H
#define K5AX_TOOL_MACHINE_ANGLE_TEXT_H

#include <optional>
#include <string>

namespace tool {

/// What an angle in degrees means: the product with `math::D2R`, rounded once, as the library converts too.
double radians(double angle_deg);

/// The shortest text that reads as exactly this number; "-0.0" for the zero with a sign. The number must be
/// finite.
std::string number_text(double number);

/// The shortest number of degrees that means exactly these radians; none where no double does.
std::optional<std::string> degrees_text(double angle);

}  // namespace tool

#endif
