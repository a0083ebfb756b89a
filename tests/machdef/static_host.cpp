// A host whose machine is a static object: it is made before main, and gives its axes and nodes back after
// main, to pools that must still be there then.
#include <cstdio>
#include <cstdlib>

#include <k5ax/machdef.h>

namespace {

// What the machine holds; the witness keeps the addresses to look for.
const md::CAxis2* machine_axis = nullptr;
const md::sg::node* machine_node = nullptr;
bool main_ran = false;

[[noreturn]] void fail(const char* what) {
  std::fprintf(stderr, "static host: %s\n", what);
  std::_Exit(1);
}

// Made before the machine, so it dies after it, and asks the pools for what the machine gave back.
struct Witness {
  Witness() = default;
  Witness(const Witness&) = delete;
  Witness& operator=(const Witness&) = delete;

  ~Witness() {
    if (!main_ran) fail("main did not run");
    if (machine_axis == nullptr || machine_node == nullptr) fail("the machine held nothing");
    if (md::CAxis2::create().get() != machine_axis) fail("the axis is not in the pool");
    if (md::NodeAxis_Create().get() != machine_node) fail("the axis node is not in the pool");
    std::puts("static host: the machine gave everything back");
  }
} witness;

md::CMachDef machine;

// Fills the machine before main.
struct Filler {
  Filler() {
    md::CMachDef made;
    made.setMachType(MC_TT);
    made.setPrimary(md::CAxis2::create(AXIS_C, TABLE, CUtility::pt_o, CUtility::pt_z, -1, 1, ROTARY));
    made.SG()[0] = md::NodeAxis_Create();
    machine.clone(made, 3);
    machine_axis = machine.getPrimary().get();
    machine_node = machine.SG()[0].get();
  }
} filler;

}  // namespace

int main() {
  main_ran = machine.is_valid();
  return main_ran ? 0 : 1;
}
