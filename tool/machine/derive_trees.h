// The two trees of a common machine, made from its axes.
#ifndef K5AX_TOOL_MACHINE_DERIVE_TREES_H
#define K5AX_TOOL_MACHINE_DERIVE_TREES_H

#include "tool/machine/machine_record.h"

#include <optional>
#include <string>

namespace tool {

/// What the axes do not say of the tool.
struct ToolPlace {
  std::optional<Point> mount;  ///< from the last axis of the head to where the tool's head is mounted
  Point tool_point;            ///< from the tool point to the head's tool reference point
};

/// What keeps the trees from being derived; empty when nothing does. The type must be one of the three, and
/// every axis on the side that goes with it.
struct DeriveObstacle {
  int slot = -1;      ///< the axis, -1 for the machine as a whole
  std::string wrong;  ///< empty for none
  std::string remedy;
};
DeriveObstacle derive_obstacle(const MachineRecord& machine);

/// Replaces the trees by those that go with the axes; docs/scene-graph.md says why they hang so. Nothing must
/// stand against it (`derive_obstacle`).
///
/// Tree 0: machine frame, the head's slides, the head's rotary axes (primary first), the mount, the tool.
/// Tree 1: part, the table's rotary axes (secondary first), the table's slides, the machine frame. Slides
/// stand in the order X, Y, Z. Before each rotary axis a fixed node leads back to its line.
void derive_trees(MachineRecord& machine, const ToolPlace& place);

}  // namespace tool

#endif
