// make_machines FOLDER: writes the machine definition files of examples/machines into a folder that is there.
#include <cstdio>
#include <string>

#include "example_machines.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: make_machines FOLDER\n");
    return 2;
  }
  for (const examples::ExampleMachine& example : examples::example_machines()) {
    const std::string path = std::string(argv[1]) + "/" + example.name + ".k5m";
    md::CMachDef machine;
    example.build(machine);
    if (!machine.is_valid() || !machine.mw_valid()) {
      std::fprintf(stderr, "make_machines: %s: not a valid machine; see build_%s\n", example.name,
                   example.name);
      return 1;
    }
    if (MachdefSave(&machine, path.c_str()) == 0) {
      std::fprintf(stderr,
                   "make_machines: %s: cannot be written; is the folder there, and may it be written?\n",
                   path.c_str());
      return 1;
    }
    std::printf("%s\n", path.c_str());
  }
  return 0;
}
