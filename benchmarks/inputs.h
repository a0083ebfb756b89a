// The positions that every side is checked and measured with.
#ifndef K5AX_BENCHMARKS_INPUTS_H
#define K5AX_BENCHMARKS_INPUTS_H

#include <cstddef>
#include <vector>

#include <k5ax/platform/geometry.h>

namespace bench {

using Point = Geometry::TPoint<double>;

// What a host programs: x, y, z in millimetres, a, b, c in radians.
struct Position {
  Point xyz;
  Point abc;
};

// So many that no branch predictor knows the angles by heart, and few enough that they stay in the first
// cache.
constexpr std::size_t kPositionCount = 1024;

// The same ones in every run and on every system.
const std::vector<Position>& positions();

}  // namespace bench

#endif
