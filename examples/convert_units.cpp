// convert_units mm|in FROM TO: writes a machine definition in the other unit, its trees included.
#include <cstdio>
#include <cstring>

#include "machine_units.h"

int main(int argc, char** argv) {
  if (argc != 4 || (std::strcmp(argv[1], "mm") != 0 && std::strcmp(argv[1], "in") != 0)) {
    std::fprintf(stderr, "usage: convert_units mm|in FROM TO\n");
    return 2;
  }
  md::CMachDef machine;
  if (MachdefLoad(&machine, argv[2]) == 0) {
    std::fprintf(stderr, "convert_units: %s: not there, damaged, or no machine definition\n", argv[2]);
    return 1;
  }
  examples::change_units(machine, std::strcmp(argv[1], "mm") == 0);
  if (MachdefSave(&machine, argv[3]) == 0) {
    std::fprintf(stderr,
                 "convert_units: %s: cannot be written; is the folder there, and may it be written?\n",
                 argv[3]);
    return 1;
  }
  return 0;
}
