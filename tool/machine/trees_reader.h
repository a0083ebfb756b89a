// The trees of a machine definition from their text.
#ifndef K5AX_TOOL_MACHINE_TREES_READER_H
#define K5AX_TOOL_MACHINE_TREES_READER_H

#include "tool/machine/json_view.h"
#include "tool/machine/machine_record.h"

#include <array>
#include <vector>

namespace tool {

/// Reads nodes and what points at them. The machine's axes and head must be there, since nodes refer to them.
/// Trees nest as deep as they like.
void read_trees(const JsonView& view, MachineRecord& machine);

/// The nodes for the two rotary axes and the tool where nothing is said of them: the first axis node that
/// refers to the primary axis, the first that refers to the secondary, the first tool node. -1 for none.
/// @param slots  for each node the place of the machine's axis that it refers to, -1 for none
struct NodeRoles {
  std::array<int, 2> rotary = {-1, -1};
  int tool = -1;
};
NodeRoles usual_roles(const std::vector<NodeRecord>& nodes, const std::vector<int>& slots);

}  // namespace tool

#endif
