// What a machine asks of a tool path: which rotary columns, and that it is a machine that can be worked with.
#ifndef K5AX_TOOL_TOOLPATH_MACHINE_FOR_PATH_H
#define K5AX_TOOL_TOOLPATH_MACHINE_FOR_PATH_H

#include "tool/toolpath/path_table.h"

#include <k5ax/k5ax.h>

#include <array>
#include <memory>
#include <string>

namespace tool {

/// The machine in the file. Throws InputError for one that is not valid: what it would make of a path means
/// nothing.
std::unique_ptr<md::CMachDef> read_valid_machine(const std::string& path);

constexpr std::array<const char*, 3> kRotaryLetters = {"A", "B", "C"};

/// For each of a, b, c, whether the machine has a rotary axis of that letter. (An axis picks its angle by its
/// letter alone, and one called X, Y or Z picks the angle about that direction.)
std::array<bool, 3> rotary_letters(const md::CMachDef& machine);

/// The row's x, y, z, and its a, b, c in radians.
inline Geometry::TPoint<double> xyz_of(const PathRow& row) {
  return {row.values[0], row.values[1], row.values[2]};
}
inline Geometry::TPoint<double> abc_of(const PathRow& row) {
  return Geometry::TPoint<double>(row.values[3], row.values[4], row.values[5]) * math::D2R;
}

/// Puts a point into the row's x, y, z.
inline void set_xyz(PathRow& row, const Geometry::TPoint<double>& p) {
  row.values[0] = p.x;
  row.values[1] = p.y;
  row.values[2] = p.z;
}

}  // namespace tool

#endif
