// make_random_machines FOLDER: writes random machines as text, for the check against the schema.
#include "tool/machine/machine_file.h"
#include "tool/machine/machine_record.h"

#include <string>

#include "tool/json/random_record.h"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  k5ax_test::Random random(99);
  for (int i = 0; i < 300; ++i) {
    const std::string path = std::string(argv[1]) + "/random_" + std::to_string(i) + ".json";
    tool::write_record(tool::record_of(k5ax_test::pack(k5ax_test::random_record(random))), path, path);
  }
  return 0;
}
