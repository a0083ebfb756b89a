// A whole machine in the other unit of length.
#ifndef K5AX_TOOL_MACHINE_CONVERT_UNITS_H
#define K5AX_TOOL_MACHINE_CONVERT_UNITS_H

#include "tool/machine/machine_record.h"

namespace tool {

/// How many values of each sort were converted.
struct ConvertedLengths {
  int axes = 0;   ///< axes, each its base point and, of a slide, its limits
  int nodes = 0;  ///< nodes of the trees
};

/// Converts everything that is a length to millimetres or to inches; angles, directions and rotations stay.
/// The machine poses as before, in the new unit. It must be in the other unit.
///
/// Converted: base points, limits of linear axes; the head's lengths, tip and offset; work zero and loading
/// vector; of the nodes the translations, the values of slides, and what axis and tool nodes carry. The value
/// of a plain node or of an axis that neither turns nor slides is nobody's length and stays. Where a
/// transform is what the node's axis or head makes of its value, it is that afterwards too.
ConvertedLengths convert_units(MachineRecord& machine, bool to_metric);

}  // namespace tool

#endif
