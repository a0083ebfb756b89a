/* The flat face as a host in C uses it. */
#include <k5ax/k5ax.h>

#include <math.h>
#include <stdio.h>

#ifdef OTHER_GEOMETRY
int other_geometry_mark(void);
#endif

static int refuse(const char* why) {
  puts(why);
  return 1;
}

int main(void) {
  const double lengths[2] = {100, 50};
  const double quarter_turn = 90 * k5ax_D2R();
  k5ax_machdef* machine = k5axCMachDef_create();

  if (machine == NULL || k5axCMachDef_type(machine) != MC_UNDEFINED) return refuse("not an empty machine");
  k5axCMachDef_flags_set(machine, 5);
  if (k5axCMachDef_flags_get(machine) != 5) return refuse("flags are lost");

  /* Tilted by 90 degrees about Y the lower length lies along +X. */
  k5ax_angled_head_set(0, 90, lengths, 0, k5axCMachDef_head(machine));
  if (fabs(k5axCMachDef_head(machine)->tip.x - 50) > 1e-12) return refuse("the head is not tilted");
  if (fabs(k5axCMachDef_head(machine)->tip.z - 100) > 1e-12) return refuse("the head is not tilted");
  if (k5ax_is_angled_head(k5axCMachDef_head(machine)) != 1) return refuse("the head is straight");

  if (fabs(k5ax_normalise_angle(5 * quarter_turn, 1) - quarter_turn) > 1e-14)
    return refuse("a turn too many");
  if (k5axCMachDef_axis(0, machine) != NULL) return refuse("an axis out of nothing");
  k5axCMachDef_free(&machine);

#ifdef OTHER_GEOMETRY
  if (other_geometry_mark() != 4711) return refuse("not the host's geometry");
#endif
  puts("the C host is content");
  return 0;
}
