// five_axis_host MACHINE TOOLPATH: what a CAM host does with the library, from loading a machine to freeing
// it.
//
// This is the program to read first. Each step of run() is a function of a few lines in host/; the steps come
// in the order in which a host meets them.
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <exception>
#include <string>
#include <vector>

#include <k5ax/k5ax.h>

#include "host/figures.h"
#include "host/input_error.h"
#include "host/machine_file.h"
#include "host/machine_text.h"
#include "host/path_run.h"
#include "host/scene.h"
#include "host/toolpath_csv.h"

namespace {

using namespace host;

enum ExitCode { kWell = 0, kNotWell = 1, kBadInput = 2 };

constexpr char kHelp[] =
    "five_axis_host [--tolerance T] MACHINE TOOLPATH\n"
    "\n"
    "Runs a tool path on a machine and prints how well every step comes back to where it started.\n"
    "\n"
    "  MACHINE        a machine definition file, such as examples/machines/head_head_fork.k5m\n"
    "  TOOLPATH       a CSV file: the line x,y,z,a,b,c, then six numbers a line; part coordinates of the\n"
    "                 tool point in the machine's unit, and rotary angles in degrees\n"
    "  --tolerance T  how far a round trip may be off, relative to the largest coordinate; 1e-9 if not "
    "given\n"
    "\n"
    "Exit status: 0 when all is well; 1 when a round trip is off, a travel is exceeded or a position cannot "
    "be\n"
    "reached; 2 when an input cannot be used.\n";

struct Arguments {
  std::string machine;
  std::string toolpath;
  double tolerance = 1e-9;
};

Arguments read_arguments(int argc, char** argv) {
  Arguments arguments;
  std::vector<std::string> files;
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--tolerance") != 0) {
      files.push_back(argv[i]);
      continue;
    }
    const char* const text = i + 1 < argc ? argv[++i] : "";
    const char* const end = text + std::strlen(text);
    const std::from_chars_result result = std::from_chars(text, end, arguments.tolerance);
    if (result.ec != std::errc() || result.ptr != end || !(arguments.tolerance >= 0))
      throw InputError("--tolerance '" + std::string(text) +
                       "' is not a positive number; write one such as 1e-9");
  }
  if (files.size() != 2)
    throw InputError(std::to_string(files.size()) +
                     " instead of 2 files; give a machine and a tool path (see --help)");
  arguments.machine = files[0];
  arguments.toolpath = files[1];
  return arguments;
}

// A path made for another machine would run, with one of its angles ignored.
void require_axes_for(const std::vector<Position>& path, const md::CMachDef& machine,
                      const std::string& file) {
  const AXIS_TYPE primary = md::GetAxis(machine.getPrimary());
  const AXIS_TYPE secondary = md::GetAxis(machine.getSecondary());
  for (const Position& position : path) {
    const double angles[] = {position.abc.x, position.abc.y, position.abc.z};
    for (const AXIS_TYPE letter : {AXIS_A, AXIS_B, AXIS_C}) {
      if (angles[letter] == 0 || letter == primary || letter == secondary) continue;
      const std::string name = AXIS_TYPE2String(letter);
      throw InputError(file + ":" + std::to_string(position.line) + ": an angle for " + name +
                       ", and the machine has no " + name + " axis; take the path that was made for it");
    }
  }
}

int run(const Arguments& arguments) {
  // Load a machine, let the library judge it, and see what it is.
  const MachinePtr machine = load_machine(arguments.machine);
  require_valid(*machine, arguments.machine);
  std::printf("machine    %s\n", arguments.machine.c_str());
  print_machine(*machine);

  const std::vector<Position> path = read_toolpath(arguments.toolpath);
  require_axes_for(path, *machine, arguments.toolpath);
  std::printf("\ntool path  %s\n", arguments.toolpath.c_str());

  // Part coordinates are programmed, machine coordinates are driven to.
  Figures figures;
  const std::vector<Point> machine_points = convert_path(*machine, path, figures);

  // The trees show the machine at each position, and give its coordinates back.
  Scene scene(*machine);
  drive_scene(*machine, scene, path, machine_points, figures);
  exchange_states(*machine, scene, path, machine_points, figures);

  // The same path, as wrapped machining sees it: an axial position, a radius, a rotary value.
  wrap_path(*machine, path, figures);

  figures.reload_difference = save_load_compare(*machine);
  measure_speed(*machine, scene, path, machine_points, figures);

  const char* const unit = length_unit(*machine);
  print_figures(figures, unit, arguments.tolerance);
  std::fflush(stdout);
  return all_is_well(figures, unit, arguments.tolerance, arguments.toolpath) ? kWell : kNotWell;
}  // the machine is freed here, by k5axCMachDef_free

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0)) {
    std::fputs(kHelp, stdout);
    return kWell;
  }
  try {
    return run(read_arguments(argc, argv));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "five_axis_host: %s\n", error.what());
    return kBadInput;
  }
}
