/* tour MACHINE TOOLPATH: loads a machine, validates it, carries a tool path from the part to the machine,
 * poses the machine for every row, and shows both trees as the last row leaves them.
 *
 * The same program stands in ../csharp and ../pascal, and all three print the same. Exit status: 0 when all
 * is well; 1 when a position cannot be reached; 2 when an input cannot be used, with one line that says why.
 */
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <k5ax/k5ax.h>

#include "k5ax_bridge.h"
#include "numbers.h"

enum { kWell = 0, kNotReached = 1, kBadInput = 2 };
enum { kDeveloper = 2, kLongestLine = 256 };

static const char* const kHeader = "x,y,z,a,b,c";
static const char* const kNotOpened = "cannot be opened; give a tool path that is there";
static const double kTolerance = 1e-9; /* of what is read back, relative to the largest coordinate */

typedef struct {
  int line;
  double p_part[3];
  double abc[3]; /* radians */
} position;

typedef struct {
  position* rows;
  int count;
} toolpath;

/* ---- saying what is wrong ---- */

static int refuse(const char* file, const char* what) {
  fprintf(stderr, "tour: %s: %s\n", file, what);
  return 0;
}

static int refuse_line(const char* file, int line, const char* what) {
  fprintf(stderr, "tour: %s:%d: %s\n", file, line, what);
  return 0;
}

/* ---- the tool path ---- */

/* A decimal number and nothing else: strtod alone would take "nan", "0x10" and spaces in front as well. */
static int read_number(const char* text, size_t length, double* value) {
  if (length == 0 || strspn(text, "+-.0123456789eE") < length) return 0;
  char* end = NULL;
  *value = strtod(text, &end);
  return end == text + length && isfinite(*value);
}

static int read_row(const char* text, position* row) {
  double values[6];
  for (int i = 0; i < 6; ++i) {
    const size_t length = strcspn(text, ",");
    if (!read_number(text, length, &values[i])) return 0;
    if ((i < 5) != (text[length] == ',')) return 0;
    text += length + 1;
  }
  for (int i = 0; i < 3; ++i) {
    row->p_part[i] = values[i];
    row->abc[i] = values[3 + i] * k5ax_D2R();
  }
  return 1;
}

/* The next line without its end, which may be that of Windows. One that is too long becomes an empty one,
 * which is no row. */
static int next_line(FILE* file, char* text) {
  if (fgets(text, kLongestLine, file) == NULL) return 0;
  const size_t length = strlen(text);
  const int is_cut = length == kLongestLine - 1 && text[length - 1] != '\n';
  text[is_cut ? 0 : strcspn(text, "\r\n")] = '\0';
  return 1;
}

static int add_row(toolpath* path, const position* row) {
  const int is_full =
      (path->count & (path->count - 1)) == 0; /* at each power of two there is twice the room */
  if (is_full) {
    const size_t room = path->count == 0 ? 1 : 2 * (size_t)path->count;
    position* const rows = realloc(path->rows, room * sizeof *rows);
    if (rows == NULL) return 0;
    path->rows = rows;
  }
  path->rows[path->count++] = *row;
  return 1;
}

static int read_rows(FILE* file, const char* name, toolpath* path) {
  char text[kLongestLine];
  const int has_lines = next_line(file, text);
  if (ferror(file)) return refuse(name, kNotOpened); /* a folder, for one */
  if (!has_lines || strcmp(text, kHeader) != 0)
    return refuse_line(name, 1, "not the header; begin with the line x,y,z,a,b,c");
  for (int line = 2; next_line(file, text); ++line) {
    position row = {line, {0, 0, 0}, {0, 0, 0}};
    if (!read_row(text, &row)) return refuse_line(name, line, "not six numbers; write x,y,z,a,b,c");
    if (!add_row(path, &row)) return refuse_line(name, line, "no memory for a path of this length");
  }
  return path->count > 0 || refuse_line(name, 2, "no positions; write a row below the header");
}

static int read_toolpath(const char* name, toolpath* path) {
  FILE* const file = fopen(name, "rb");
  if (file == NULL) return refuse(name, kNotOpened);
  const int good = read_rows(file, name, path);
  fclose(file);
  return good;
}

/* ---- the machine ---- */

/* [snippet heard] */
static void keep_text(const char* text, void* data) { snprintf(data, kLongestLine, "%s", text); }

/* The library says why a machine is not valid only to a developer, and not for every reason. */
static int is_valid(const k5ax_machdef* machine, char* heard) {
  const unsigned int flags = md_flags_get();
  md_flags_set(flags | kDeveloper);
  k5ax_bridge_on_feedback(keep_text, heard);
  const int valid = k5ax_bridge_is_valid(machine) == 1;
  k5ax_bridge_on_feedback(NULL, NULL);
  md_flags_set(flags);
  return valid;
}
/* [end] */

static int load(k5ax_machdef* machine, const char* name) {
  if (MachdefLoad(machine, name) == 0)
    return refuse(name, "not there, damaged, or no machine definition; k5ax check says which");
  char heard[kLongestLine] = "";
  if (!is_valid(machine, heard)) {
    char what[kLongestLine + 64];
    snprintf(what, sizeof what, "not a valid machine: %s", heard[0] != '\0' ? heard : "k5ax check says why");
    return refuse(name, what);
  }
  if (k5axCMachDef_SG(machine, 0) == NULL || k5axCMachDef_SG(machine, 1) == NULL)
    return refuse(name, "no scene graph; save the machine with both trees");
  return 1;
}

/* ---- text ---- */

static char letter(const k5ax_axis* axis) {
  return axis->type >= AXIS_A && axis->type <= AXIS_Z ? "ABCXYZ"[axis->type] : '?';
}

static void print_axis(const char* role, const k5ax_axis* axis) {
  if (axis == NULL) return;
  const double travel[2] = {axis->min * k5ax_R2D(), axis->max * k5ax_R2D()};
  printf("%s %c %s through", role, letter(axis), axis_location(axis) == TABLE ? "table" : "head");
  print_numbers(&axis->base.x, 3);
  printf(" along");
  print_numbers(&axis->vector.x, 3);
  printf(" travel");
  print_numbers(travel, 2);
  printf("\n");
}

static void print_machine(k5ax_machdef* machine) {
  static const char* const types[] = {"table-table", "head-table", "head-head"};
  printf("%s, %s axes, %s head\n", types[k5axCMachDef_type(machine)],
         k5axCMachDef_orthogonal(machine) ? "orthogonal" : "skew",
         k5ax_is_angled_head(k5axCMachDef_head_const(machine)) == 1 ? "angled" : "straight");
  print_axis("primary", k5axCMachDef_axis(0, machine));
  print_axis("secondary", k5axCMachDef_axis(1, machine));
}

/* ---- the trees ---- */

/* A before B, as the points see it: both have three rows for directions and one for the origin. */
static void multiply(const double* a, const double* b, double* product) {
  for (int row = 0; row < 4; ++row)
    for (int column = 0; column < 3; ++column) {
      double sum = row == 3 ? b[9 + column] : 0;
      for (int i = 0; i < 3; ++i) sum += a[3 * row + i] * b[3 * i + column];
      product[3 * row + column] = sum;
    }
}

static void print_node(k5ax_machdef* machine, k5ax_node* node, const double* parent_to_root) {
  const int id = k5axSgNode_id(node);
  const int children = k5axSgNode_child_count(node);
  const TAxis* const axis = k5ax_bridge_node_axis(node);
  printf("node %d", id);
  if (axis != NULL) {
    const double value = CMachDef_Axis_Position_Get(machine, id) * (axis->mode == ROTARY ? k5ax_R2D() : 1);
    printf(" axis %c at", letter(axis));
    print_numbers(&value, 1);
  } else {
    printf(k5ax_bridge_node_kind(node) == 2 ? " tool" : " plain");
  }
  printf(", %d below:", children);

  double node_to_parent[12];
  double node_to_root[12];
  k5ax_bridge_node_matrix(node, node_to_parent);
  multiply(node_to_parent, parent_to_root, node_to_root);
  print_numbers(node_to_root, 12);
  printf("\n");
  for (int i = 0; i < children; ++i) print_node(machine, k5axSgNode_child(node, i), node_to_root);
}

static void print_trees(k5ax_machdef* machine) {
  static const double identity[12] = {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};
  for (int tree = 0; tree < 2; ++tree) {
    printf("tree %d\n", tree);
    print_node(machine, k5axCMachDef_SG(machine, tree), identity);
  }
}

/* Brings the rotary axes below `node` to their zero pose. */
static void zero_rotary_axes(k5ax_machdef* machine, k5ax_node* node) {
  const TAxis* const axis = k5ax_bridge_node_axis(node);
  if (axis != NULL && axis->mode == ROTARY) k5axSgNode_value_set2(k5axCMachDef_flags_get(machine), node, 0);
  for (int i = 0; i < k5axSgNode_child_count(node); ++i) zero_rotary_axes(machine, k5axSgNode_child(node, i));
}

/* The update measures the tool point before it turns the table, so the table, which is in tree 1, is brought
 * to its zero pose first. */
static int pose(k5ax_machdef* machine, const double* xyz, const double* abc) {
  zero_rotary_axes(machine, k5axCMachDef_SG(machine, 1));
  return UpdateNodeAxes_2(machine, xyz[0], xyz[1], xyz[2], abc[0], abc[1], abc[2]);
}

/* ---- the path ---- */

static int is_read_back(k5ax_machdef* machine, const double* xyz, const double* abc) {
  double back[6];
  k5axCMachDef_SG2MachCoords(machine, back);
  double scale = 1;
  double worst = 0;
  for (int i = 0; i < 3; ++i) {
    scale = fmax(scale, fabs(xyz[i]));
    worst = fmax(worst, fmax(fabs(back[i] - xyz[i]), fabs(back[3 + i] - abc[i])));
  }
  return worst <= kTolerance * scale;
}

static int run_path(k5ax_machdef* machine, const toolpath* path) {
  int reached = 0;
  int read_back = 0;
  for (int i = 0; i < path->count; ++i) {
    const position* const row = &path->rows[i];
    double p_mach[3];
    k5ax_bridge_part_to_machine(machine, row->p_part, row->abc, p_mach);
    reached += pose(machine, p_mach, row->abc);
    read_back += is_read_back(machine, p_mach, row->abc);

    printf("row %d:", row->line);
    print_numbers(p_mach, 3);
    printf("\n");
  }
  printf("%d rows, %d reached, %d read back\n", path->count, reached, read_back);
  return reached == path->count && read_back == path->count ? kWell : kNotReached;
}

int main(int argc, char** argv) {
  if (argc != 3) {
    fprintf(stderr, "usage: tour MACHINE TOOLPATH\n");
    return kBadInput;
  }
  int status = kBadInput;
  toolpath path = {NULL, 0};
  k5ax_machdef* machine = k5axCMachDef_create();
  if (load(machine, argv[1]) && read_toolpath(argv[2], &path)) {
    print_machine(machine);
    status = run_path(machine, &path);
    print_trees(machine);
  }
  k5axCMachDef_free(&machine);
  free(path.rows);
  return status;
}
