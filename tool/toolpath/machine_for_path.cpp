// What a machine asks of a tool path: which rotary columns, and that it is a machine that can be worked with.
#include "tool/toolpath/machine_for_path.h"

#include "tool/errors.h"
#include "tool/machine/machine_file.h"

#include <cstddef>

namespace tool {

std::unique_ptr<md::CMachDef> read_valid_machine(const std::string& path) {
  std::unique_ptr<md::CMachDef> machine = read_machine(path);
  if (!machine->is_valid())
    throw InputError(path, "", "not a valid machine", "see what is wrong with k5ax check, and put it right");
  return machine;
}

std::array<bool, 3> rotary_letters(const md::CMachDef& machine) {
  std::array<bool, 3> has{};
  for (const auto& axis : {machine.getPrimary(), machine.getSecondary()})
    if (axis && axis->GetAxis() >= AXIS_A && axis->GetAxis() <= AXIS_Z)
      has[static_cast<std::size_t>(axis->GetAxis()) % 3] = true;
  return has;
}

}  // namespace tool
