// Loads a machine definition, makes sure that it can be worked with, and saves it.
#ifndef K5AX_EXAMPLES_HOST_MACHINE_FILE_H
#define K5AX_EXAMPLES_HOST_MACHINE_FILE_H

#include <memory>
#include <string>

#include <k5ax/k5ax.h>

namespace host {

struct FreeMachine {
  void operator()(md::CMachDef* machine) const { k5axCMachDef_free(&machine); }
};

// A machine made by k5axCMachDef_create and given back by k5axCMachDef_free.
using MachinePtr = std::unique_ptr<md::CMachDef, FreeMachine>;

// Throws InputError when there is no such file or when it holds no machine definition.
MachinePtr load_machine(const std::string& path);

// Throws InputError with the reason when the kinematics cannot work with the machine, or when it has no trees
// to pose. `path` is for the message.
void require_valid(const md::CMachDef& machine, const std::string& path);

// Saves the machine to a temporary file, loads that into another machine and compares the two field by field.
// Returns the first field that differs, and an empty text when none does. Throws InputError when it cannot be
// saved.
std::string save_load_compare(md::CMachDef& machine);

}  // namespace host

#endif
