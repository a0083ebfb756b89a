// Changes a whole machine between millimetres and inches, its trees included.
#ifndef K5AX_EXAMPLES_MACHINE_UNITS_H
#define K5AX_EXAMPLES_MACHINE_UNITS_H

#include <k5ax/k5ax.h>

namespace examples {

// What md::CMachDef::scale does, and what it leaves to the host: afterwards the trees fit the axes again,
// every axis stands where it stood, and work zero and loading vector are in the new unit. Nothing when that
// is the unit already.
void change_units(md::CMachDef& machine, bool metric);

}  // namespace examples

#endif
