// The rotary angles at which a machine's tool has a wanted direction on the part, in closed form.
#ifndef K5AX_EXAMPLES_ROTARY_SOLUTION_H
#define K5AX_EXAMPLES_ROTARY_SOLUTION_H

#include <k5ax/k5ax.h>

namespace examples {

using Point = Geometry::TPoint<double>;

struct RotaryAngles {
  double tilt;  // of the A or B axis, radians
  double turn;  // of the C axis, radians
};

// Solves  u_part = u_tool Rot(tilt axis, tilt) Rot(Z, turn)  for the two angles.
//
// That is how the tool turns as seen from the part on every machine whose C is next to the part, or next to
// the bed, and whose A or B is next to the tool; so it serves a trunnion, a swivel head and a fork alike.
//
// @param u_tool     the tool direction with both axes at 0; a straight head has Z
// @param tilt_axis  AXIS_A or AXIS_B
// @param branch     +1 or -1: which of the two solutions; of a straight head it is the sign of the tilt
// @param turn_near  the turn is the solution nearest to this one, radians
// @return false when no tilt reaches the direction; `angles` stays
bool solve_rotary_angles(const Point& u_tool, AXIS_TYPE tilt_axis, int branch, const Point& u_part,
                         double turn_near, RotaryAngles& angles);

}  // namespace examples

#endif
