/* A host on Microsoft's side of Windows: compiled for Microsoft's target, without any C library, and linked
 * with the import library that was made of k5ax.def. The exit code is the number of the first answer that is
 * wrong, 0 where all are right. */
#include <k5ax/k5ax.h>

__declspec(dllimport) void __stdcall ExitProcess(unsigned int code);

int _fltused = 1; /* that there is arithmetic; Microsoft's C library brings it otherwise */

static int first_wrong_answer(void) {
  /* 7 - 2 pi */
  const double angle = k5ax_normalise_angle(7, 1);
  if (angle < 0.7168146928 || angle > 0.7168146929) return 1;

  md_flags_set(6);
  if (md_flags_get() != 6 || md_regression() != 1) return 2;

  /* Tilted by 90 degrees, a spindle of 10 and 5 reaches 10 up and 5 to the side. */
  angled_head head;
  k5ax_angled_head_initialise(&head);
  if (k5ax_is_angled_head(&head) != 0) return 3;
  const double lengths[2] = {10, 5};
  k5ax_angled_head_set(0, 90, lengths, 0, &head);
  if (k5ax_is_angled_head(&head) != 1) return 4;
  if (head.tip.x < 4.999999 || head.tip.x > 5.000001 || head.tip.z < 9.999999 || head.tip.z > 10.000001)
    return 5;

  k5ax_machdef* machine = k5axCMachDef_create();
  if (machine == 0) return 6;
  if (k5axCMachDef_type(machine) != MC_UNDEFINED) return 7;
  if (MachdefSave(machine, "msvc_host \xc3\xbc.k5m") != 1) return 8;
  k5ax_machdef* loaded = k5axCMachDef_create();
  if (MachdefLoad(loaded, "msvc_host \xc3\xbc.k5m") != 1) return 9;
  if (MachdefLoad(loaded, "none.k5m") != 0) return 10;
  k5axCMachDef_free(&loaded);
  k5axCMachDef_free(&machine);
  return 0;
}

void start(void);
void start(void) { ExitProcess((unsigned int)first_wrong_answer()); }
