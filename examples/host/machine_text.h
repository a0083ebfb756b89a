// Prints what a machine definition says.
#ifndef K5AX_EXAMPLES_HOST_MACHINE_TEXT_H
#define K5AX_EXAMPLES_HOST_MACHINE_TEXT_H

#include <k5ax/k5ax.h>

namespace host {

// "mm" or "in".
const char* length_unit(const md::CMachDef& machine);

// Type, units, tool and work zero, then a line for each axis: letter, role, location, line and limits.
void print_machine(const md::CMachDef& machine);

}  // namespace host

#endif
