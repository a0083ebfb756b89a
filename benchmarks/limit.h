// L, what one point costs at the least: straight inlined C++, two sincos of the C library and two rotations
// about lines, no objects. Also the second formulation that the sides' numbers are checked with.
#ifndef K5AX_BENCHMARKS_LIMIT_H
#define K5AX_BENCHMARKS_LIMIT_H

#include <cmath>

#include <k5ax/foundation.h>

#include "inputs.h"

namespace bench {

struct Line {
  Point p_base;
  Point u_direction;
};

// Rodrigues' formula for a direction d about v, |v| = 1:   d cos + (v x d) sin + v (v . d) (1 - cos)
inline Point turned_direction(const Point& d, const Point& v, double sine, double cosine) {
  return d * cosine + math::cross(v, d) * sine + v * (math::dot(v, d) * (1 - cosine));
}

inline Point turned(const Point& p, const Line& line, double angle) {
  double sine = 0;
  double cosine = 0;
  ::sincos(angle, &sine, &cosine);
  return line.p_base + turned_direction(p - line.p_base, line.u_direction, sine, cosine);
}

// The two lines of a table-table machine: the part stands on the secondary, which stands on the primary.
struct TableLines {
  Line primary;    // turns by a
  Line secondary;  // turns by c
};

inline Point limit_part_to_mach(const TableLines& lines, const Position& position) {
  return turned(turned(position.xyz, lines.secondary, -position.abc.z), lines.primary, -position.abc.x);
}

// The other way: the point by A, then by C; the tool direction by C, then by A.
inline Point limit_mach_to_part(const TableLines& lines, const Position& position, Point& d_tool) {
  double sine_a = 0;
  double cosine_a = 0;
  double sine_c = 0;
  double cosine_c = 0;
  ::sincos(position.abc.x, &sine_a, &cosine_a);
  ::sincos(position.abc.z, &sine_c, &cosine_c);
  const Line& a = lines.primary;
  const Line& c = lines.secondary;
  const Point p = a.p_base + turned_direction(position.xyz - a.p_base, a.u_direction, sine_a, cosine_a);
  d_tool = turned_direction(turned_direction(d_tool, c.u_direction, sine_c, cosine_c), a.u_direction, sine_a,
                            cosine_a);
  return c.p_base + turned_direction(p - c.p_base, c.u_direction, sine_c, cosine_c);
}

}  // namespace bench

#endif
