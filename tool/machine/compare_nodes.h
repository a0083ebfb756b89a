// What differs between the trees of two machine definitions.
#ifndef K5AX_TOOL_MACHINE_COMPARE_NODES_H
#define K5AX_TOOL_MACHINE_COMPARE_NODES_H

#include "tool/machine/comparison.h"
#include "tool/machine/machine_record.h"

namespace tool {

/// Finds partners among the nodes and compares them; see `compare_machines`.
void compare_nodes(Comparison& comparison, const MachineRecord& first, const MachineRecord& second);

}  // namespace tool

#endif
