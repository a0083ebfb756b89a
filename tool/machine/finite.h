// Numbers that text cannot hold.
#ifndef K5AX_TOOL_MACHINE_FINITE_H
#define K5AX_TOOL_MACHINE_FINITE_H

#include "tool/machine/machine_record.h"

#include <string>

namespace tool {

struct NotFinite {
  std::string place;  ///< "/axes/x/limits/1", "node 3 (id 5), value"; empty when all numbers are finite
  double number = 0;
};

/// The first number in the machine that is infinite or none at all.
NotFinite find_not_finite(const MachineRecord& machine);

}  // namespace tool

#endif
