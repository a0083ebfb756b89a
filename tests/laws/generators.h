// What the laws are tried on: RapidCheck makes it, and makes it smaller when a law fails.
#ifndef K5AX_TESTS_LAWS_GENERATORS_H
#define K5AX_TESTS_LAWS_GENERATORS_H

#include <iosfwd>
#include <memory>

#include <rapidcheck.h>

#include "support/random_scene.h"
#include "support/vector_form.h"

namespace laws {

// Neutral, tiny or generic; each coordinate within +-`size`.
rc::Gen<vector_form::Vec> position(double size);

// Along one of the machine's axes, or skew; of length 1.
rc::Gen<vector_form::Vec> unit_direction();

// Hard, tiny or generic: beyond a whole turn in both senses.
rc::Gen<double> angle();
rc::Gen<vector_form::Vec> angles();

// The size of a machine: a power of ten from 10^-2 to 10^5.
rc::Gen<double> machine_size();

// A machine of one of the three types with its two axes where that type has them, one of them missing now and
// then. Directions are of length 1, or of another one where a host has stored it.
rc::Gen<vector_form::Machine> machine(double size);

// A machine of the type MC_TT that has a primary axis alone, on the table.
rc::Gen<vector_form::Machine> machine_of_one_axis(double size);

// A machine with axes, head, units, flags and both trees, ready to be posed. What it was made from is printed
// when a law fails.
struct WholeMachine {
  k5ax_test::SceneOfMachine written;
  k5ax_test::BuiltScene scene;

  md::CMachDef& machdef() const { return scene.machdef(); }
};
rc::Gen<std::shared_ptr<WholeMachine>> whole_machine();

void showValue(const std::shared_ptr<WholeMachine>& machine, std::ostream& out);

}  // namespace laws

#endif
