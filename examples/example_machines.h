// The four machines of examples/machines, as programs build them.
#ifndef K5AX_EXAMPLES_EXAMPLE_MACHINES_H
#define K5AX_EXAMPLES_EXAMPLE_MACHINES_H

#include <vector>

#include <k5ax/k5ax.h>

namespace examples {

// Each fills an empty machine: axes, head, trees; every axis at 0.

// Millimetres. C on A on the X slide of the table; Y and Z carry the spindle.
void build_table_table_trunnion(md::CMachDef& machine);
// Millimetres. C on the Y slide of the table; B swivels the spindle on X and Z.
void build_head_table_swivel(md::CMachDef& machine);
// Millimetres. A bridge over a fixed bed: X, Y and Z carry the fork with C and A.
void build_head_head_fork(md::CMachDef& machine);
// Inches. C on the X and Y slides of the table; A swivels, on Z, an angled head.
void build_head_table_inch(md::CMachDef& machine);

struct ExampleMachine {
  const char* name;  // the file's, without its ending
  void (*build)(md::CMachDef&);
};

const std::vector<ExampleMachine>& example_machines();

}  // namespace examples

#endif
