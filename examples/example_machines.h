// One of the machines of examples/machines, as a program builds it.
#ifndef K5AX_EXAMPLES_EXAMPLE_MACHINES_H
#define K5AX_EXAMPLES_EXAMPLE_MACHINES_H

#include <k5ax/k5ax.h>

namespace examples {

// Fills an empty machine: axes, head, trees; every axis at 0. Millimetres; C on A on the X slide of the
// table; Y and Z carry the spindle. machines/table_table_trunnion.json says the same as text.
void build_table_table_trunnion(md::CMachDef& machine);

}  // namespace examples

#endif
