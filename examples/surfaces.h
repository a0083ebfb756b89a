// The two surfaces that the example tool paths finish, a dome and the flank of a blade, in closed formulas.
#ifndef K5AX_EXAMPLES_SURFACES_H
#define K5AX_EXAMPLES_SURFACES_H

#include <vector>

#include <k5ax/k5ax.h>

namespace examples {

using Point = Geometry::TPoint<double>;

// One place of a ball-ended cutter on the part, in part coordinates.
struct Cut {
  Point p_contact;  // where it touches the surface
  Point u_normal;   // out of the surface, there
  Point u_tool;     // from the tool's tip up its shank
};

// The part: what follows is in multiples of `size` and counts from `p_datum`, which is the work zero.
//
// Legend: phi runs round the dome, theta from its top down, s along the blade (-1 to 1), h up the blade (0 to
// 1).
//
//   dome      contact = centre + R n,   n = (sin theta cos phi, sin theta sin phi, cos theta)
//             tool    = n with theta replaced by tau = 6 deg + 0.7 theta: it leans less than the surface
//   blade     foot(s) = (55 + 8 (1 - s^2), 45 s, 5),   head(s) = foot(s) + (24 + 10 s, -9 s, 60)
//             contact = foot + h (head - foot),  tool along head - foot: the cutter's side lies on the flank
//             normal  = across the ruling and the curve half way up, on the side of -X
struct Part {
  Point p_datum;
  double size;

  double ball_radius() const { return 5 * size; }
  double dome_radius() const { return 40 * size; }
  Point p_dome_centre() const { return p_datum + Point(-55, 0, 0) * size; }
};

// 14 rounds to and fro from the top to the foot of the dome, 101 places each.
std::vector<Cut> dome_cuts(const Part& part);

// 5 passes to and fro along the blade's flank, from the head to the foot, 201 places each.
std::vector<Cut> blade_cuts(const Part& part);

// The tip of the cutter: the ball's centre is its radius away from the contact along the normal, and the tip
// is its radius below that along the tool.
Point p_tip(const Part& part, const Cut& cut);

}  // namespace examples

#endif
