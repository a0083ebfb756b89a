// Axes from their text.
#ifndef K5AX_TOOL_MACHINE_AXIS_READER_H
#define K5AX_TOOL_MACHINE_AXIS_READER_H

#include "tool/machine/json_view.h"
#include "tool/machine/machine_record.h"

namespace tool {

/// The axes of the machine, by their places. The type must be there: a rotary axis may leave out where it
/// sits.
void read_axes(const JsonView& view, MachineRecord& machine);

/// One axis on its own, as a node may carry it: nothing follows from a place.
AxisRecord read_axis(const JsonView& view);

}  // namespace tool

#endif
