// make_toolpaths MACHINES FOLDER: writes the tool paths of examples/toolpaths into a folder that is there,
// for the machines in the folder MACHINES.
//
// Each path finishes a dome and then the flank of a blade on one of the example machines; the part stands on
// that machine's work zero. Positions are those of the cutter's tip, in part coordinates.
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "rotary_solution.h"
#include "surfaces.h"

namespace examples {
namespace {

struct Job {
  const char* machine;  // the file's name, without its ending
  double part_size;
  AXIS_TYPE tilt_axis;
  int branch;         // the sign of the tilt; see solve_rotary_angles
  double first_turn;  // degrees: the path's C begins as near to this as it can
};

constexpr Job kJobs[] = {{"table_table_trunnion", 1, AXIS_A, -1, 0},
                         {"head_table_swivel", 2, AXIS_B, +1, 0},
                         {"head_head_fork", 4, AXIS_A, +1, -60},
                         {"head_table_inch", 0.0625, AXIS_A, -1, 0}};

struct Row {
  Point p_part;
  double tilt_deg;
  double turn_deg;
};

// The cuts as rows, with a way out of the dome and into the blade between the two.
bool rows_of(const Job& job, const md::CMachDef& machine, std::vector<Row>& rows) {
  const Part part = {machine.mwZeroPos(), job.part_size};
  const double clearance = 30 * part.size;
  double turn = job.first_turn * math::D2R;

  const auto add = [&](const Cut& cut, double lift) {
    RotaryAngles angles = {};
    if (!solve_rotary_angles(machine.getToolDir(), job.tilt_axis, job.branch, cut.u_tool, turn, angles))
      return false;
    turn = angles.turn;
    rows.push_back({p_tip(part, cut) + cut.u_tool * lift, angles.tilt * math::R2D, turn * math::R2D});
    return true;
  };

  const std::vector<Cut> dome = dome_cuts(part);
  const std::vector<Cut> blade = blade_cuts(part);
  bool solved = add(dome.front(), clearance);
  for (const Cut& cut : dome) solved = solved && add(cut, 0);
  solved = solved && add(dome.back(), clearance) && add(blade.front(), clearance);
  for (const Cut& cut : blade) solved = solved && add(cut, 0);
  return solved && add(blade.back(), clearance);
}

// With six decimals a value would have to lie within a millionth of a millionth of a tie for the last bit of
// the mathematical library to show. -0 is written as 0.
void write_number(std::FILE* file, double value, char after) {
  const double shown = std::round(value * 1e6) == 0 ? 0.0 : value;
  std::fprintf(file, "%.6f%c", shown, after);
}

bool write_rows(const std::string& path, const Job& job, const std::vector<Row>& rows) {
  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) return false;
  std::fputs("x,y,z,a,b,c\n", file);
  for (const Row& row : rows) {
    write_number(file, row.p_part.x, ',');
    write_number(file, row.p_part.y, ',');
    write_number(file, row.p_part.z, ',');
    write_number(file, job.tilt_axis == AXIS_A ? row.tilt_deg : 0, ',');
    write_number(file, job.tilt_axis == AXIS_B ? row.tilt_deg : 0, ',');
    write_number(file, row.turn_deg, '\n');
  }
  const bool written = std::ferror(file) == 0;
  return std::fclose(file) == 0 && written;
}

int make(const std::string& machines, const std::string& folder) {
  for (const Job& job : kJobs) {
    md::CMachDef machine;
    const std::string machine_path = machines + "/" + job.machine + ".k5m";
    if (MachdefLoad(&machine, machine_path.c_str()) == 0) {
      std::fprintf(stderr, "make_toolpaths: %s: cannot be loaded; give the folder with the machines\n",
                   machine_path.c_str());
      return 1;
    }
    std::vector<Row> rows;
    if (!rows_of(job, machine, rows)) {
      std::fprintf(stderr, "make_toolpaths: %s: the head cannot point where the path wants the tool\n",
                   job.machine);
      return 1;
    }
    const std::string path = folder + "/" + job.machine + ".csv";
    if (!write_rows(path, job, rows)) {
      std::fprintf(stderr,
                   "make_toolpaths: %s: cannot be written; is the folder there, and may it be written?\n",
                   path.c_str());
      return 1;
    }
    std::printf("%s: %zu positions\n", path.c_str(), rows.size());
  }
  return 0;
}

}  // namespace
}  // namespace examples

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: make_toolpaths MACHINES FOLDER\n");
    return 2;
  }
  return examples::make(argv[1], argv[2]);
}
