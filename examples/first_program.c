/* first_program_c MACHINE: loads a machine, poses it, and asks where its axes stand. */
#include <stdio.h>

#include <k5ax/k5ax.h>

int main(int argc, char** argv) {
  if (argc != 2) {
    fprintf(stderr, "usage: first_program_c MACHINE\n");
    return 2;
  }
  /* [snippet first_program] */
  k5ax_machdef* machine = k5axCMachDef_create();
  int failed = MachdefLoad(machine, argv[1]) == 0;
  if (!failed && UpdateNodeAxes_2(machine, 30, 20, 50, -40 * k5ax_D2R(), 0, 90 * k5ax_D2R())) {
    double xyzabc[6];
    k5axCMachDef_SG2MachCoords(machine, xyzabc);
    printf("X %.3f  Y %.3f  Z %.3f\n", xyzabc[0], xyzabc[1], xyzabc[2]);
    printf("A %.3f  C %.3f degrees\n", xyzabc[3] * k5ax_R2D(), xyzabc[5] * k5ax_R2D());
    printf("the slide of Z stands at %.3f\n", CMachDef_Axis_Position_Get(machine, 3));
  }
  k5axCMachDef_free(&machine);
  /* [end] */
  return failed;
}
