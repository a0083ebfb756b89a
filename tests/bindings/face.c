/* face MACHINE FOLDER: calls every function that plain C can call, and the bridge, and prints what comes out.
 * The programs in C# and in Pascal beside it do the same; face.expected says what all three have to print.
 */
#include <math.h>
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>

#include <k5ax/k5ax.h>

#include "k5ax_bridge.h"
#include "numbers.h"

enum { kLongestPath = 4096 };

/* ---- text ---- */

static void name(const char* function) { printf("%s:", function); }

static void line(const char* function, const double* values, int count) {
  name(function);
  print_numbers(values, count);
  printf("\n");
}

static void line_of_one(const char* function, double value) { line(function, &value, 1); }

static void print_head(const char* function, const angled_head* head) {
  name(function);
  print_numbers(&head->b_angle, 4);
  print_numbers(&head->tip.x, 3);
  print_numbers(&head->tool_dir.x, 3);
  print_numbers(&head->ref_dir.x, 3);
  print_numbers(&head->offset.x, 3);
  printf(" %u\n", head->flags);
}

static void print_record(const char* function, const TAxis* axis) {
  name(function);
  print_numbers(&axis->base.x, 3);
  print_numbers(&axis->vector.x, 3);
  printf(" %d %d", axis->type, axis->location);
  print_numbers(&axis->min, 1);
  print_numbers(&axis->max, 1);
  printf(" %d\n", axis->mode);
}

static const char* there(const void* pointer) { return pointer != NULL ? "there" : "null"; }

/* ---- layout ---- */

#define SIZE(type) ((int)sizeof(type))
#define AT(type, field) ((int)offsetof(type, field))

static void layout(void) {
  printf("k5ax_point %d: %d %d %d\n", SIZE(k5ax_point), AT(k5ax_point, x), AT(k5ax_point, y),
         AT(k5ax_point, z));
  printf("TAxis %d: %d %d %d %d %d %d %d\n", SIZE(TAxis), AT(TAxis, base), AT(TAxis, vector), AT(TAxis, type),
         AT(TAxis, location), AT(TAxis, min), AT(TAxis, max), AT(TAxis, mode));
  printf("angled_head %d: %d %d %d %d %d %d %d %d %d\n", SIZE(angled_head), AT(angled_head, b_angle),
         AT(angled_head, c_angle), AT(angled_head, length1), AT(angled_head, length2), AT(angled_head, tip),
         AT(angled_head, tool_dir), AT(angled_head, ref_dir), AT(angled_head, offset),
         AT(angled_head, flags));
  printf("node_state %d: %d %d %d\n", SIZE(node_state), AT(node_state, id), AT(node_state, flags),
         AT(node_state, value));
  printf("AXIS_TYPE %d: %d %d %d %d %d %d %d %d %d\n", SIZE(AXIS_TYPE), AXIS_TYPE_INVALID_LOWEST, AXIS_A,
         AXIS_B, AXIS_C, AXIS_X, AXIS_Y, AXIS_Z, AXIS_DUMMY, AXIS_TYPE_INVALID_HIGHEST);
  printf("AXIS_MODE %d: %d %d %d %d\n", SIZE(AXIS_MODE), AXIS_MODE_INVALID_LOWEST, ROTARY, LINEAR,
         AXIS_MODE_INVALID_HIGHEST);
  printf("AXIS_LOCATION %d: %d %d %d %d\n", SIZE(AXIS_LOCATION), AXIS_LOCATION_INVALID_LOWEST, HEAD, TABLE,
         AXIS_LOCATION_INVALID_HIGHEST);
  printf("MACHINE_TYPE %d: %d %d %d %d\n", SIZE(MACHINE_TYPE), MC_UNDEFINED, MC_TT, MC_HT, MC_HH);
}

/* ---- the functions ---- */

static void process(void) {
  printf("md_flags_get: %u", md_flags_get());
  md_flags_set(0xfffffff5u);
  printf(" %u\n", md_flags_get());
  printf("md_regression: %d", md_regression());
  md_flags_set(2);
  printf(" %d\n", md_regression());
  md_flags_set(0);
  printf("md_flags_set: %u\n", md_flags_get());
  line_of_one("k5ax_R2D", k5ax_R2D());
  line_of_one("k5ax_D2R", k5ax_D2R());
  const double angles[2] = {k5ax_normalise_angle(-1, 1), k5ax_normalise_angle(4, 2)};
  line("k5ax_normalise_angle", angles, 2);
}

static void head(void) {
  angled_head one;
  memset(&one, 0x55, sizeof one);
  k5ax_angled_head_initialise(&one);
  print_head("k5ax_angled_head_initialise", &one);
  const int straight = k5ax_is_angled_head(&one);

  const double lengths[2] = {4, 2};
  k5ax_angled_head_set(90, 30, lengths, 1, &one);
  print_head("k5ax_angled_head_set", &one);
  k5ax_angled_head_flags_set(&one, 0x80000003u);
  printf("k5ax_angled_head_flags_set: %u\n", one.flags);
  printf("k5ax_angled_head_flags_get: %u\n", k5ax_angled_head_flags_get(&one));
  printf("k5ax_is_angled_head: %d %d %d\n", straight, k5ax_is_angled_head(&one), k5ax_is_angled_head(NULL));

  angled_head other;
  k5ax_angled_head_copy(&other, &one);
  print_head("k5ax_angled_head_copy", &other);
  other.offset.x = 1;
  other.offset.y = 2;
  other.offset.z = 3;
  k5ax_angled_head_scale(&other, 2);
  print_head("k5ax_angled_head_scale", &other);
}

static void axis_record(void) {
  TAxis axis = {{1, 2, 3}, {0, 1, 0}, AXIS_B, TABLE, -2, 3, LINEAR};
  printf("axis_location: %d\n", axis_location(&axis));
  line("axis_limits", axis_limits(&axis), 2);
  line_of_one("axis_get_value", axis_get_value(&axis, 7, 8, 9));
  double triple[3] = {0, 0, 0};
  printf("axis_set_value: %d", axis_set_value(&axis, 5, &triple[0], &triple[1], &triple[2]));
  print_numbers(triple, 3);
  printf("\n");

  TAxis* clone = axis_clone(&axis);
  print_record("axis_clone", clone);
  TAxis other = {{0, 0, 0}, {0, 0, 0}, AXIS_A, HEAD, 0, 0, ROTARY};
  printf("axis_copy: %d\n", axis_copy(&other, clone));
  print_record("axis_copy", &other);
  printf("axis_free: %d", axis_free(&clone));
  printf(" %s\n", there(clone));

  double six[6] = {1, 2, 3, 4, 5, 6};
  name("AXIS_TYPE_val_get");
  print_numbers(AXIS_TYPE_val_get(AXIS_B, &six[0], &six[1], &six[2], &six[3], &six[4], &six[5]), 1);
  print_numbers(AXIS_TYPE_val_get(AXIS_Z, &six[0], &six[1], &six[2], &six[3], &six[4], &six[5]), 1);
  printf(" %s\n", there(AXIS_TYPE_val_get(AXIS_DUMMY, &six[0], &six[1], &six[2], &six[3], &six[4], &six[5])));
}

static k5ax_machdef* machine_made(const char* file) {
  k5ax_machdef* machine = k5axCMachDef_create();
  printf("k5axCMachDef_create: %d\n", k5axCMachDef_type(machine));
  printf("MachdefLoad: %d", MachdefLoad(machine, "nowhere.k5m"));
  printf(" %d\n", MachdefLoad(machine, file));
  printf("k5axCMachDef_type: %d\n", k5axCMachDef_type(machine));
  printf("k5axCMachDef_mode: %d\n", k5axCMachDef_mode(machine));
  printf("k5axCMachDef_discipline: %d\n", k5axCMachDef_discipline(machine));
  printf("k5axCMachDef_flags_get: %u\n", k5axCMachDef_flags_get(machine));
  k5axCMachDef_flags_set(machine, 0x80000004u);
  printf("k5axCMachDef_flags_set: %u\n", k5axCMachDef_flags_get(machine));
  k5axCMachDef_flags_set(machine, 0);
  return machine;
}

static void parts(k5ax_machdef* machine) {
  k5axCMachDef_head(machine)->length1 = 7;
  line_of_one("k5axCMachDef_head", k5axCMachDef_head_const(machine)->length1);
  k5axCMachDef_head(machine)->length1 = 0;
  line("k5axCMachDef_head_const", &k5axCMachDef_head_const(machine)->tool_dir.x, 3);

  print_record("k5axCMachDef_axis", k5axCMachDef_axis(0, machine));
  printf("k5axCMachDef_axis: %d %s\n", k5axCMachDef_axis(1, machine)->type,
         there(k5axCMachDef_axis(2, machine)));
  print_record("k5axCMachDef_rotary_axis", k5axCMachDef_rotary_axis(machine));
  print_record("k5axCMachDef_rotary_axis_const", k5axCMachDef_rotary_axis_const(machine));
  printf("k5axCMachDef_SG: %d %d\n", k5axSgNode_id(k5axCMachDef_SG(machine, 0)),
         k5axSgNode_id(k5axCMachDef_SG(machine, 1)));
  printf("k5axCMachDef_Tool: %s\n", there(k5axCMachDef_Tool(machine)));
}

static void copies(k5ax_machdef* machine, const char* folder) {
  k5ax_machdef* copy = k5axCMachDef_create();
  k5axCMachDef_clone_ex(copy, machine, 1);
  printf("k5axCMachDef_clone_ex: %d %s", k5axCMachDef_type(copy), there(k5axCMachDef_SG(copy, 0)));
  k5axCMachDef_clone_ex(copy, machine, 2);
  printf(" %d %s\n", k5axCMachDef_type(copy), there(k5axCMachDef_SG(copy, 0)));
  k5axCMachDef_clone(copy, machine);
  printf("k5axCMachDef_clone: %d %s\n", k5axCMachDef_type(copy), there(k5axCMachDef_SG(copy, 0)));

  const bool before = k5axCMachDef_orthogonal(copy);
  printf("k5axCMachDef_orientate: %d", k5axCMachDef_orientate(copy, 90 * k5ax_D2R(), 0));
  print_numbers(&k5axCMachDef_axis(1, copy)->vector.x, 3);
  printf("\nk5axCMachDef_orthogonal: %d %d\n", before, k5axCMachDef_orthogonal(copy));

  char path[kLongestPath];
  snprintf(path, sizeof path,
           "%s/gone/gr\xc3\xbc\xc3\x9f"
           "e.k5m",
           folder);
  printf("MachdefSave: %d", MachdefSave(machine, path));
  snprintf(path, sizeof path,
           "%s/gr\xc3\xbc\xc3\x9f"
           "e.k5m",
           folder);
  printf(" %d", MachdefSave(machine, path));
  printf(" %d\n", MachdefLoad(copy, path));
  k5axCMachDef_free(&copy);
  printf("k5axCMachDef_free: done\n");
}

static void nodes(k5ax_machdef* machine) {
  k5ax_node* const root = k5axCMachDef_SG(machine, 0);
  printf("k5axSgNode_child_count: %d\n", k5axSgNode_child_count(root));
  k5ax_node* const y = k5axSgNode_child(root, 0);
  printf("k5axSgNode_child: %d\n", k5axSgNode_id(y));
  printf("k5axSgNode_parent: %d %s\n", k5axSgNode_id(k5axSgNode_parent(y)), there(k5axSgNode_parent(root)));
  k5ax_node* all[5];
  printf("k5axSgNode_all_nodes: %d\n", k5axSgNode_all_nodes(root, all));
  printf("k5axSgNode_id: %d %d %d %d %d\n", k5axSgNode_id(all[0]), k5axSgNode_id(all[1]),
         k5axSgNode_id(all[2]), k5axSgNode_id(all[3]), k5axSgNode_id(all[4]));
  printf("k5axSgNode_NodeAxis_cast: %s %s\n", there(k5axSgNode_NodeAxis_cast(root)),
         there(k5axSgNode_NodeAxis_cast(y)));
  printf("k5axSgNode_calc_flags: %u %u %u\n", k5axSgNode_calc_flags(0, 7), k5axSgNode_calc_flags(7, 0),
         k5axSgNode_calc_flags(7, 7));

  printf("k5axSgNode_flags_get: %u\n", k5axSgNode_flags_get(y));
  k5axSgNode_flags_set(y, 0xffffffffu);
  printf("k5axSgNode_flags_set: %u\n", k5axSgNode_flags_get(y));
  k5axSgNode_flags_set(y, 1);
  k5axSgNode_value_set(y, 7);
  double matrix[12];
  k5ax_bridge_node_matrix(y, matrix);
  line_of_one("k5axSgNode_value_set", matrix[10]);
  line_of_one("k5axSgNode_value_get", k5axSgNode_value_get(y));
  k5axSgNode_value_set2(k5axCMachDef_flags_get(machine), y, -14.5);
  k5ax_bridge_node_matrix(y, matrix);
  line_of_one("k5axSgNode_value_set2", matrix[10]);
  node_state state = {0, 0, 0};
  k5axSgNode_state_get_(y, &state);
  printf("k5axSgNode_state_get_: %d %u", state.id, state.flags);
  print_numbers(&state.value, 1);
  printf("\n");

  printf("k5ax_bridge_node_kind: %d %d %d %d\n", k5ax_bridge_node_kind(root), k5ax_bridge_node_kind(y),
         k5ax_bridge_node_kind(all[4]), k5ax_bridge_node_kind(NULL));
  line("k5ax_bridge_node_matrix", matrix, 12);
  print_record("k5ax_bridge_node_axis", k5ax_bridge_node_axis(y));
  printf("k5ax_bridge_node_axis: %s\n", there(k5ax_bridge_node_axis(root)));

  k5axSgNode_initialise(root, 0);
  const double kept = k5axSgNode_value_get(y);
  k5axSgNode_initialise(root, 1);
  const double values[2] = {kept, k5axSgNode_value_get(y)};
  line("k5axSgNode_initialise", values, 2);
}

static void pose(k5ax_machdef* machine) {
  const double a = -40 * k5ax_D2R();
  const double c = 90 * k5ax_D2R();
  k5ax_node* tree[7];
  k5axSgNode_all_nodes(k5axCMachDef_SG(machine, 1), tree);

  printf("UpdateNodeAxes_2: %d", UpdateNodeAxes_2(machine, INFINITY, 20, 50, a, 0, c));
  k5axSgNode_value_set2(0, tree[2], 0);
  k5axSgNode_value_set2(0, tree[4], 0);
  printf(" %d\n", UpdateNodeAxes_2(machine, 30, 20, 50, a, 0, c));
  const double slides[2] = {CMachDef_Axis_Position_Get(machine, 3), CMachDef_Axis_Position_Get(machine, 99)};
  line("CMachDef_Axis_Position_Get", slides, 2);
  double back[6];
  k5axCMachDef_SG2MachCoords(machine, back);
  line("k5axCMachDef_SG2MachCoords", back, 6);

  k5axSgNode_value_set2(0, tree[2], 0);
  k5axSgNode_value_set2(0, tree[4], 0);
  const double wanted[6] = {1, 2, 3, 0, 0, 0};
  printf("k5axCMachDef_MachCoords2SG: %d", k5axCMachDef_MachCoords2SG(machine, wanted));
  for (int id = 1; id <= 3; ++id) {
    const double slide = CMachDef_Axis_Position_Get(machine, id);
    print_numbers(&slide, 1);
  }
  printf("\n");

  const node_state states[2] = {{2, 1, 12}, {3, 1, -34}};
  printf("CMachDef_IdAxisState_set2: %d", CMachDef_IdAxisState_set2(machine, states, 0));
  printf(" %d", CMachDef_IdAxisState_set2(machine, states, 2));
  const double restored[2] = {CMachDef_Axis_Position_Get(machine, 2), CMachDef_Axis_Position_Get(machine, 3)};
  print_numbers(restored, 2);
  printf("\n");

  CMachDef_ToolNode_matrix_SetXYZ(machine, 0, 6, 200);
  UpdateNodeAxes_2(machine, 30, 20, 50, 0, 0, 0);
  const double placed[2] = {CMachDef_Axis_Position_Get(machine, 2), CMachDef_Axis_Position_Get(machine, 3)};
  line("CMachDef_ToolNode_matrix_SetXYZ", placed, 2);

  const double point[3] = {0, 3, 5};
  const double zero[3] = {0, 0, 0};
  double wrapped[7];
  Cartesian2AxialRotaryVals_c(machine, point, zero, 0, 1, &wrapped[0], &wrapped[3], &wrapped[6]);
  line("Cartesian2AxialRotaryVals_c", wrapped, 7);

  const double part[3] = {30, 20, 50};
  const double abc[3] = {a, 0, c};
  double mach[3];
  double again[6];
  k5ax_bridge_part_to_machine(machine, part, abc, mach);
  line("k5ax_bridge_part_to_machine", mach, 3);
  k5ax_bridge_machine_to_part(machine, mach, abc, &again[0], &again[3]);
  line("k5ax_bridge_machine_to_part", again, 6);
}

/* ---- the channels ---- */

static void print_bytes(const char* text) {
  for (; *text != '\0'; ++text) printf(" %02x", (unsigned char)*text);
}

static int as_int(const void* data) { return (int)(intptr_t)data; }

static void hear_text(const char* text, void* data) {
  name("k5ax_bridge_feedback");
  print_bytes(text);
  printf(" %d\n", as_int(data));
}

static void hear_error(const char* text, int code, void* data) {
  name("k5ax_bridge_error");
  print_bytes(text);
  printf(" %d %d\n", code, as_int(data));
}

static void hear_assertion(const char* a, const char* b, const char* c, int line_number, void* data) {
  name("k5ax_bridge_assertion_failed");
  print_bytes(a);
  print_bytes(b);
  print_bytes(c);
  printf(" %d %d\n", line_number, as_int(data));
}

static void speak(void) {
  k5ax_bridge_feedback(
      "gr\xc3\xbc\xc3\x9f"
      "e");
  k5ax_bridge_error("e", 70000);
  k5ax_bridge_assertion_failed("a", "b", "c", 12);
}

static void channels(const k5ax_machdef* machine) {
  k5ax_machdef* empty = k5axCMachDef_create();
  printf("k5ax_bridge_is_valid: %d %d\n", k5ax_bridge_is_valid(machine), k5ax_bridge_is_valid(empty));
  k5axCMachDef_free(&empty);

  k5ax_bridge_on_feedback(hear_text, (void*)(intptr_t)71);
  k5ax_bridge_on_error(hear_error, (void*)(intptr_t)72);
  k5ax_bridge_on_assertion(hear_assertion, (void*)(intptr_t)73);
  speak();
  k5ax_bridge_on_feedback(NULL, NULL);
  k5ax_bridge_on_error(NULL, NULL);
  k5ax_bridge_on_assertion(NULL, NULL);
  speak();
  printf("k5ax_bridge_on_feedback, k5ax_bridge_on_error, k5ax_bridge_on_assertion: quiet\n");
}

int main(int argc, char** argv) {
  if (argc != 3) {
    fprintf(stderr, "usage: face MACHINE FOLDER\n");
    return 2;
  }
  layout();
  process();
  head();
  axis_record();
  k5ax_machdef* machine = machine_made(argv[1]);
  parts(machine);
  copies(machine, argv[2]);
  nodes(machine);
  pose(machine);
  channels(machine);
  k5axCMachDef_free(&machine);
  return 0;
}
