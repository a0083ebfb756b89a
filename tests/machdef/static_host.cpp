// A host whose machine is a static object: it is filled before main, and gives its axis and its node back
// after main, to pools that must still be there then.
#include <cstdio>
#include <cstdlib>

#include <k5ax/machdef.h>

namespace {

bool main_ran = false;

[[noreturn]] void fail(const char* what) {
  std::fprintf(stderr, "static host: %s\n", what);
  std::_Exit(1);
}

// Made before the machine, so it dies after it, and asks the pools for what the machine gave back. What is
// told by content and not by address: a fresh axis or node may well stand where a destroyed one stood.
struct Witness {
  Witness() = default;
  Witness(const Witness&) = delete;
  Witness& operator=(const Witness&) = delete;

  ~Witness() {
    if (!main_ran) fail("main did not run");
    if (md::CAxis2::create()->GetMax() != 4711) fail("the axis is not in the pool");
    if (md::NodeAxis_Create()->GetMax() != 4712) fail("the axis node is not in the pool");
    std::puts("static host: the machine gave everything back");
  }
} witness;

md::CMachDef machine;

// Fills the machine before main.
struct Filler {
  Filler() {
    md::CMachDef made;
    made.setMachType(MC_TT);
    made.setPrimary(md::CAxis2::create(AXIS_C, TABLE, CUtility::pt_o, CUtility::pt_z, -1, 4711, ROTARY));
    const boost::shared_ptr<md::sg::tnode<md::CAxis2>> node = md::NodeAxis_Create();
    node->SetMax(4712);
    made.SG()[0] = node;
    machine.clone(made, 3);

    // The axis it was cloned from is parked by now. Taken out and dropped, it cannot pass for the machine's.
    made.reset();
    md::CAxis2::create();
  }
} filler;

}  // namespace

int main() {
  main_ran = machine.is_valid() && machine.SG()[0];
  return main_ran ? 0 : 1;
}
