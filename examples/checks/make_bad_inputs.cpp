// make_bad_inputs FOLDER: writes machines and tool paths that the host must refuse, for the tests.
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include "example_machines.h"

namespace {

void write_bytes(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

std::string read_bytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

bool make_machines(const std::string& folder) {
  md::CMachDef machine;
  examples::build_table_table_trunnion(machine);
  const std::string whole = folder + "/whole.k5m";
  bool saved = MachdefSave(&machine, whole.c_str()) != 0;

  const std::string bytes = read_bytes(whole);
  write_bytes(folder + "/truncated.k5m", bytes.substr(0, bytes.size() - 1));
  write_bytes(folder + "/empty.k5m", "");

  machine.getSecondary()->SetBaseVector(Geometry::TPoint<double>(0, 0.002, 0));
  saved = MachdefSave(&machine, (folder + "/off_origin.k5m").c_str()) != 0 && saved;

  machine.getSecondary()->SetBaseVector(CUtility::pt_o);
  machine.getSecondary()->SetAxis(AXIS_A);
  saved = MachdefSave(&machine, (folder + "/same_letter.k5m").c_str()) != 0 && saved;

  machine.getSecondary()->SetAxis(AXIS_C);
  machine.setMachType(MC_HH);
  saved = MachdefSave(&machine, (folder + "/wrong_side.k5m").c_str()) != 0 && saved;

  machine.setMachType(MC_TT);
  machine.getSecondary()->SetMax(machine.getSecondary()->GetMin());
  saved = MachdefSave(&machine, (folder + "/no_travel.k5m").c_str()) != 0 && saved;

  machine.getSecondary()->SetMax(3);
  machine.SG()[1].reset();
  saved = MachdefSave(&machine, (folder + "/no_tree.k5m").c_str()) != 0 && saved;

  // A machine whose tree has A's line a tenth lower than its axis says.
  md::CMachDef askew;
  examples::build_table_table_trunnion(askew);
  askew.getPrimary()->SetBaseVector(askew.getPrimary()->GetBaseVector() +
                                    Geometry::TPoint<double>(0, 0, 0.1));
  saved = MachdefSave(&askew, (folder + "/trees_do_not_fit.k5m").c_str()) != 0 && saved;
  return saved && !bytes.empty();
}

void make_paths(const std::string& folder) {
  const std::string good = "x,y,z,a,b,c\n10,20,70,-30,0,45\n";
  write_bytes(folder + "/good.csv", good);
  write_bytes(folder + "/good_windows.csv", "x,y,z,a,b,c\r\n10,20,70,-30,0,45\r\n");
  write_bytes(folder + "/empty.csv", "");
  write_bytes(folder + "/header_only.csv", "x,y,z,a,b,c\n");
  write_bytes(folder + "/no_header.csv", "10,20,70,-30,0,45\n");
  write_bytes(folder + "/five_values.csv", good + "10,20,70,-30,0\n");
  write_bytes(folder + "/seven_values.csv", good + "10,20,70,-30,0,45,1\n");
  write_bytes(folder + "/blank_line.csv", good + "\n" + "10,20,70,-30,0,45\n");
  write_bytes(folder + "/word.csv", good + "10,20,seventy,-30,0,45\n");
  write_bytes(folder + "/unit.csv", good + "10,20,70mm,-30,0,45\n");
  write_bytes(folder + "/comma.csv", good + "10,20,70,-30,,45\n");
  write_bytes(folder + "/nan.csv", good + "10,20,70,nan,0,45\n");
  write_bytes(folder + "/infinite.csv", good + "10,inf,70,-30,0,45\n");
  write_bytes(folder + "/too_large.csv", good + "10,20,70,-30,0,1e999\n");
  write_bytes(folder + "/space.csv", good + "10, 20,70,-30,0,45\n");
  write_bytes(folder + "/other_machine.csv", good + "10,20,70,-30,5,45\n");
  write_bytes(folder + "/outside.csv", good + "10,20,70,-30,0,45\n10,400,70,-30,0,45\n10,20,70,31,0,45\n");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: make_bad_inputs FOLDER\n");
    return 2;
  }
  const std::string folder = argv[1];
  make_paths(folder);
  if (!make_machines(folder)) {
    std::fprintf(stderr, "make_bad_inputs: %s: cannot be written\n", argv[1]);
    return 1;
  }
  return 0;
}
