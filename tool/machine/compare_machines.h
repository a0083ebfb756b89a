// What differs between two machine definitions.
#ifndef K5AX_TOOL_MACHINE_COMPARE_MACHINES_H
#define K5AX_TOOL_MACHINE_COMPARE_MACHINES_H

#include "tool/machine/machine_record.h"

#include <string>
#include <vector>

namespace tool {

/// One thing that differs, in words: "x axis, upper limit", "250 mm", "300 mm".
struct Difference {
  std::string what;
  std::string first;
  std::string second;
};

/// Everything that differs, field by field and node by node; empty when the two say the same.
///
/// Numbers differ when a bit does, so that zeros of either sign differ. In machines of different units
/// lengths are compared in the first one's unit, and conversion may have rounded them. Nodes are partners by
/// tree, kind and id, and among equal ones by their order; where they hang is compared then. What a node
/// carries as a copy of the machine's own axis or head is compared there alone, and a transform that follows
/// from what the node carries not at all.
std::vector<Difference> compare_machines(const MachineRecord& first, const MachineRecord& second);

}  // namespace tool

#endif
