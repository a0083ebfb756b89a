// first_program MACHINE: loads a machine and asks where it has to go for one position on the part.
#include <k5ax/k5ax.h>

#include <cstdio>

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: first_program MACHINE\n");
    return 2;
  }
  // [snippet first_program]
  md::CMachDef machine;
  if (MachdefLoad(&machine, argv[1]) == 0 || !machine.is_valid()) {
    std::fprintf(stderr, "%s: not a machine to work with\n", argv[1]);
    return 1;
  }

  const Geometry::TPoint<double> p_part(30, 20, 50);                    // in the machine's unit
  const Geometry::TPoint<double> abc(-40 * math::D2R, 0, math::m_pi2);  // A, B, C in radians
  const Geometry::TPoint<double> p_mach = machine.Part2MachCoords(p_part, abc);

  std::printf("X %.3f  Y %.3f  Z %.3f\n", p_mach.x, p_mach.y, p_mach.z);
  // [end]
  return 0;
}
