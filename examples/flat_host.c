/* flat_host MACHINE TOOLPATH COPY: the main steps of a CAM host, in C, through the flat functions alone.
 *
 * The flat face has no part and machine transforms, so this host turns the part by the table itself, from the
 * axis records; and it shows the machine by the values of the nodes, since their transforms belong to the
 * class face. COPY is where the machine is saved on the way.
 */
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <k5ax/k5ax.h>

enum { kMostAxes = 16, kLongestLine = 256 };

static const double kTolerance = 1e-9; /* relative to the largest coordinate */

/* ---- points ---- */

typedef struct {
  double v[3];
} point;

static point from_record(const k5ax_point* p) {
  const point result = {{p->x, p->y, p->z}};
  return result;
}

static point plus(point a, point b, double factor) {
  for (int i = 0; i < 3; ++i) a.v[i] += factor * b.v[i];
  return a;
}

static double dot(point a, point b) { return a.v[0] * b.v[0] + a.v[1] * b.v[1] + a.v[2] * b.v[2]; }

static double distance(point a, point b) {
  const point d = plus(a, b, -1);
  return sqrt(dot(d, d));
}

/* p about the line through the origin along the unit vector u, right-handed, by Rodrigues' formula:
 * p cos + (u x p) sin + u (u . p) (1 - cos) */
static point turned(point p, point u, double angle) {
  const point u_cross_p = {{u.v[1] * p.v[2] - u.v[2] * p.v[1], u.v[2] * p.v[0] - u.v[0] * p.v[2],
                            u.v[0] * p.v[1] - u.v[1] * p.v[0]}};
  const double along = dot(u, p) * (1 - cos(angle));
  point result = {{0, 0, 0}};
  result = plus(result, p, cos(angle));
  result = plus(result, u_cross_p, sin(angle));
  return plus(result, u, along);
}

/* ---- the machine ---- */

static double angle_of(const k5ax_axis* axis, point abc) {
  return axis_get_value(axis, abc.v[0], abc.v[1], abc.v[2]);
}

/* The part turned by the table: the axis next to the part first, so the secondary before the primary. */
static point part_to_machine(k5ax_machdef* machine, point p, point abc) {
  for (int which = 1; which >= 0; --which) {
    const k5ax_axis* axis = k5axCMachDef_axis(which, machine);
    if (axis == NULL || axis_location(axis) != TABLE) continue;
    const point base = from_record(&axis->base);
    p = plus(base, turned(plus(p, base, -1), from_record(&axis->vector), -angle_of(axis, abc)), 1);
  }
  return p;
}

static void print_axis(const char* role, k5ax_axis* axis) {
  if (axis == NULL) return;
  const double* const limits = axis_limits(axis);
  printf("  %c  %-9s  %-5s  through (%g, %g, %g) along (%g, %g, %g)  %g to %g deg\n", "ABC"[axis->type], role,
         axis_location(axis) == TABLE ? "table" : "head", axis->base.x, axis->base.y, axis->base.z,
         axis->vector.x, axis->vector.y, axis->vector.z, limits[0] * k5ax_R2D(), limits[1] * k5ax_R2D());
}

static void print_machine(k5ax_machdef* machine) {
  static const char* const types[] = {"table-table", "head-table", "head-head"};
  const MACHINE_TYPE type = k5axCMachDef_type(machine);
  printf("type  %s, %s head, axes %s\n", type >= MC_TT && type <= MC_HH ? types[type] : "unknown",
         k5ax_is_angled_head(k5axCMachDef_head(machine)) == 1 ? "angled" : "straight",
         k5axCMachDef_orthogonal(machine) ? "orthogonal" : "askew");
  print_axis("primary", k5axCMachDef_axis(0, machine));
  print_axis("secondary", k5axCMachDef_axis(1, machine));
}

/* ---- the trees ---- */

/* Brings the driven axes below `node` to their zero pose. */
static void zero_axes(k5ax_machdef* machine, k5ax_node* node) {
  const int is_driven = (k5axSgNode_flags_get(node) & k5axSgNode_calc_flags(1, 0)) != 0;
  if (is_driven) k5axSgNode_value_set2(k5axCMachDef_flags_get(machine), node, 0);
  for (int i = 0; i < k5axSgNode_child_count(node); ++i) zero_axes(machine, k5axSgNode_child(node, i));
}

/* The update measures the tool point before it turns the table, so the table, which is in tree 1, is brought
 * to its zero pose first. (Its slides, if it has any, are zeroed by the update in any case.) */
static int pose(k5ax_machdef* machine, point xyz, point abc) {
  zero_axes(machine, k5axCMachDef_SG(machine, 1));
  return UpdateNodeAxes_2(machine, xyz.v[0], xyz.v[1], xyz.v[2], abc.v[0], abc.v[1], abc.v[2]);
}

/* Collects the states of the axis nodes below `node` behind the first `count`; returns the new count. */
static int take_states(k5ax_node* node, node_state* states, int count) {
  if (k5axSgNode_NodeAxis_cast(node) != NULL && count < kMostAxes)
    k5axSgNode_state_get_(node, &states[count++]);
  for (int i = 0; i < k5axSgNode_child_count(node); ++i)
    count = take_states(k5axSgNode_child(node, i), states, count);
  return count;
}

static int take_all_states(k5ax_machdef* machine, node_state* states) {
  return take_states(k5axCMachDef_SG(machine, 1), states,
                     take_states(k5axCMachDef_SG(machine, 0), states, 0));
}

static int same_tree(k5ax_node* one, k5ax_node* other) {
  if (one == NULL || other == NULL) return one == other;
  const int count = k5axSgNode_child_count(one);
  if (count != k5axSgNode_child_count(other) || k5axSgNode_id(one) != k5axSgNode_id(other) ||
      k5axSgNode_flags_get(one) != k5axSgNode_flags_get(other) ||
      k5axSgNode_value_get(one) != k5axSgNode_value_get(other))
    return 0;
  for (int i = 0; i < count; ++i)
    if (!same_tree(k5axSgNode_child(one, i), k5axSgNode_child(other, i))) return 0;
  return 1;
}

static int same_axis(const k5ax_axis* one, const k5ax_axis* other) {
  if (one == NULL || other == NULL) return one == other;
  return distance(from_record(&one->base), from_record(&other->base)) == 0 &&
         distance(from_record(&one->vector), from_record(&other->vector)) == 0 && one->type == other->type &&
         one->location == other->location && one->min == other->min && one->max == other->max &&
         one->mode == other->mode;
}

static int same_machine(k5ax_machdef* one, k5ax_machdef* other) {
  return k5axCMachDef_type(one) == k5axCMachDef_type(other) &&
         same_axis(k5axCMachDef_axis(0, one), k5axCMachDef_axis(0, other)) &&
         same_axis(k5axCMachDef_axis(1, one), k5axCMachDef_axis(1, other)) &&
         same_tree(k5axCMachDef_SG(one, 0), k5axCMachDef_SG(other, 0)) &&
         same_tree(k5axCMachDef_SG(one, 1), k5axCMachDef_SG(other, 1));
}

/* ---- the path ---- */

typedef struct {
  int positions;
  int unreachable;
  double scale;       /* the largest coordinate */
  double read_back;   /* worst of X, Y, Z and of the angles read back */
  double states;      /* worst of the values restored */
  double radius;      /* worst of the radius of a wrapped point, against the distance from the axis */
  double wrap;        /* worst of a wrapped point, against its place in the half-plane of +X */
  double turned_back; /* worst of a point wrapped and turned back */
} figures;

/* A NaN is kept: it must not pass for a small deviation. */
static void take(double* worst, double deviation) {
  if (!(fabs(deviation) <= *worst)) *worst = fabs(deviation);
}

static int run_position(k5ax_machdef* machine, point p_part, point abc, figures* f) {
  const point p_mach = part_to_machine(machine, p_part, abc);
  for (int i = 0; i < 3; ++i) f->scale = fmax(f->scale, fmax(fabs(p_part.v[i]), fabs(p_mach.v[i])));

  /* Pose it, and read the coordinates back. */
  if (!pose(machine, p_mach, abc)) ++f->unreachable;
  double back[6];
  k5axCMachDef_SG2MachCoords(machine, back);
  for (int i = 0; i < 3; ++i) {
    take(&f->read_back, back[i] - p_mach.v[i]);
    take(&f->read_back, (back[3 + i] - abc.v[i]) * f->scale);
  }

  /* Take the states, move away, restore. */
  node_state states[kMostAxes];
  const int count = take_all_states(machine, states);
  const point elsewhere = {{0, 0, 0}};
  pose(machine, elsewhere, elsewhere);
  if (CMachDef_IdAxisState_set2(machine, states, count) != 1) return 0;
  for (int i = 0; i < count; ++i)
    take(&f->states, CMachDef_Axis_Position_Get(machine, states[i].id) - states[i].value);

  /* Wrap it about the rotary axis into the half-plane of +X, and turn it back. */
  const k5ax_axis* const axis = k5axCMachDef_rotary_axis(machine);
  if (axis == NULL) return 1;
  const point u_axis = from_record(&axis->vector);
  const double at_zero[3] = {0, 0, 0};
  point p_wrapped = {{0, 0, 0}};
  point rotary = {{0, 0, 0}};
  double radius = -1;
  Cartesian2AxialRotaryVals_c(machine, p_part.v, at_zero, 0, 1, p_wrapped.v, rotary.v, &radius);
  const point origin = {{0, 0, 0}};
  const point u_x = {{1, 0, 0}};
  const point p_foot = plus(origin, u_axis, dot(p_part, u_axis));
  take(&f->radius, radius - distance(p_part, p_foot));
  if (dot(u_axis, u_x) == 0) take(&f->wrap, distance(p_wrapped, plus(p_foot, u_x, radius)));
  take(&f->turned_back, distance(turned(p_wrapped, u_axis, angle_of(axis, rotary)), p_part));
  return 1;
}

/* Six numbers with commas between them and nothing else. */
static int read_row(const char* text, double* values) {
  for (int i = 0; i < 6; ++i) {
    char* end = NULL;
    values[i] = strtod(text, &end);
    if (end == text || !isfinite(values[i]) || *end != (i < 5 ? ',' : '\n')) return 0;
    text = end + 1;
  }
  return *text == '\0';
}

static int run_path(k5ax_machdef* machine, const char* path, figures* f) {
  FILE* const file = fopen(path, "r");
  if (file == NULL) {
    fprintf(stderr, "flat_host: %s: cannot be opened; give a tool path that is there\n", path);
    return 0;
  }

  char line[kLongestLine];
  int good = fgets(line, sizeof line, file) != NULL && strcmp(line, "x,y,z,a,b,c\n") == 0;
  if (!good) fprintf(stderr, "flat_host: %s:1: not the header; begin with the line x,y,z,a,b,c\n", path);

  while (good && fgets(line, sizeof line, file) != NULL) {
    double values[6];
    good = read_row(line, values);
    if (!good) {
      fprintf(stderr, "flat_host: %s:%d: not six numbers; write x,y,z,a,b,c\n", path, f->positions + 2);
      break;
    }
    const point p_part = {{values[0], values[1], values[2]}};
    const point abc = {{values[3] * k5ax_D2R(), values[4] * k5ax_D2R(), values[5] * k5ax_D2R()}};
    good = run_position(machine, p_part, abc, f);
    ++f->positions;
  }
  fclose(file);
  return good;
}

static int report(const char* name, double worst, double allowed) {
  const int well = worst <= allowed;
  printf("%-28s %10.3g  allowed %10.3g%s\n", name, worst, allowed, well ? "" : "  OFF");
  return well;
}

static int save_and_load(k5ax_machdef* machine, const char* copy) {
  if (MachdefSave(machine, copy) == 0) {
    fprintf(stderr, "flat_host: %s: cannot be written; give a file in a folder that is there\n", copy);
    return 0;
  }
  k5ax_machdef* loaded = k5axCMachDef_create();
  const int same = MachdefLoad(loaded, copy) == 1 && same_machine(machine, loaded);
  k5axCMachDef_free(&loaded);
  printf("%-28s %s\n", "saved and loaded again", same ? "equal" : "DIFFERENT");
  return same;
}

static int run(k5ax_machdef* machine, char** files) {
  if (MachdefLoad(machine, files[0]) == 0) {
    fprintf(stderr, "flat_host: %s: not there, damaged, or no machine definition\n", files[0]);
    return 0;
  }
  if (k5axCMachDef_SG(machine, 0) == NULL || k5axCMachDef_SG(machine, 1) == NULL) {
    fprintf(stderr, "flat_host: %s: no scene graph; save the machine with both trees\n", files[0]);
    return 0;
  }
  print_machine(machine);

  figures f = {0};
  if (!run_path(machine, files[1], &f)) return 0;
  const double allowed = kTolerance * f.scale;
  printf("%-28s %10d\n", "positions", f.positions);
  int well = f.positions > 0 && f.unreachable == 0;
  well = report("coordinates read back", f.read_back, allowed) && well;
  well = report("axis states restored", f.states, allowed) && well;
  well = report("radius of wrapped points", f.radius, allowed) && well;
  well = report("wrapped into the half-plane", f.wrap, allowed) && well;
  well = report("wrapped and turned back", f.turned_back, allowed) && well;
  return save_and_load(machine, files[2]) && well;
}

int main(int argc, char** argv) {
  if (argc != 4) {
    fprintf(stderr, "usage: flat_host MACHINE TOOLPATH COPY\n");
    return 2;
  }
  k5ax_machdef* machine = k5axCMachDef_create();
  const int well = run(machine, argv + 1);
  k5axCMachDef_free(&machine);
  return well ? 0 : 1;
}
