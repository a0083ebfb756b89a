// Loading and saving, beside what the system takes for the same bytes.
#include <stdexcept>

#include "benchmarks.h"

namespace bench {

void register_files(PosedMachine& posed, const ScratchFolder& scratch) {
  md::CMachDef* const machine = posed.k5ax.get();
  const std::string of = " (" + posed.label + ")";
  const std::string path = scratch.file(posed.label + ".k5m");
  const std::string raw_path = scratch.file(posed.label + ".raw");
  if (MachdefSave(machine, path.c_str()) != 1) throw std::runtime_error(path + ": cannot be saved");
  const std::vector<unsigned char> bytes = file_bytes(path);
  replace_raw(raw_path, raw_path + ".tmp", bytes);

  measure_into_empty("load" + of + "/k5ax", [path](md::CMachDef& into) {
    int loaded = MachdefLoad(&into, path.c_str());
    benchmark::DoNotOptimize(loaded);
  });
  measure("reset and load" + of + "/k5ax", [path, into = std::make_shared<md::CMachDef>()] {
    into->reset();
    int loaded = MachdefLoad(into.get(), path.c_str());
    benchmark::DoNotOptimize(loaded);
  });
  measure("load" + of + "/raw", [raw_path, buffer = bytes]() mutable {
    read_raw(raw_path, buffer);
    benchmark::DoNotOptimize(buffer.data());
  });

  measure("save" + of + "/k5ax", [path, machine] {
    int saved = MachdefSave(machine, path.c_str());
    benchmark::DoNotOptimize(saved);
  })->UseRealTime();
  measure("save" + of + "/raw", [raw_path, bytes] {
    replace_raw(raw_path, raw_path + ".tmp", bytes);
  })->UseRealTime();
}

}  // namespace bench
