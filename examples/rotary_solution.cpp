// The rotary angles at which a machine's tool has a wanted direction on the part, in closed form.
#include "rotary_solution.h"

#include <cmath>

namespace examples {

bool solve_rotary_angles(const Point& u_tool, AXIS_TYPE tilt_axis, int branch, const Point& u_part,
                         double turn_near, RotaryAngles& angles) {
  // The turn about Z keeps z, so the tilt alone must bring z to that of the part's direction. Of the tool
  // direction a tilt about X moves (y, z), one about Y moves (-x, z), both like this:
  //   z' = q sin(tilt) + z cos(tilt) = r cos(tilt - atan2(q, z)),   r = |(q, z)|
  const double q = tilt_axis == AXIS_A ? u_tool.y : -u_tool.x;
  const double r = std::hypot(q, u_tool.z);
  if (!(std::abs(u_part.z) <= r)) return false;
  const double tilt = std::atan2(q, u_tool.z) + branch * std::acos(u_part.z / r);

  const Point& axis = tilt_axis == AXIS_A ? CUtility::pt_x : CUtility::pt_y;
  const Point u_tilted = u_tool * Geometry::RotateAboutAxis(axis, tilt);
  const double turn = std::atan2(u_part.y, u_part.x) - std::atan2(u_tilted.y, u_tilted.x);

  angles.tilt = tilt;
  angles.turn = turn + math::m_2pi * std::round((turn_near - turn) / math::m_2pi);
  return true;
}

}  // namespace examples
