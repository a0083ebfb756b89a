// make_golden FOLDER: writes the files of golden/, for the day when one is added. The library has no part in
// it, and a file that is there already is left alone: it stays as it is for ever.

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "machdef/files/golden_machines.h"

int main(int count, char** arguments) {
  if (count != 2) {
    std::fprintf(stderr, "usage: make_golden FOLDER\n");
    return 2;
  }
  for (const k5ax_test::GoldenMachine& machine : k5ax_test::golden_machines()) {
    const std::filesystem::path path = std::filesystem::path(arguments[1]) / machine.file;
    if (std::filesystem::exists(path)) continue;
    std::ofstream file(path, std::ios::binary);
    file << k5ax_test::pack(machine.record);
    if (!file.flush()) {
      std::fprintf(stderr, "%s: cannot be written\n", path.string().c_str());
      return 1;
    }
    std::printf("%s\n", path.string().c_str());
  }
  return 0;
}
