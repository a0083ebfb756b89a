// An update beside a question to the same machine: a race, and the thread sanitizer has to find it.
// scripts/threads runs this to see that the sanitizer looks; it is no test.
#include <k5ax/kinematics.h>

#include <iostream>
#include <thread>

namespace {

constexpr int kRounds = 10000;

}  // namespace

int main() {
  md::CMachDef machdef;
  if (MachdefLoad(&machdef, K5AX_MACHINES_FOLDER "/table_table_trunnion.k5m") != 1) {
    std::cerr << "race_on_purpose: no machine to race on\n";
    return 1;
  }
  std::thread update([&machdef] {
    for (int i = 0; i < kRounds; ++i) UpdateNodeAxes_2(&machdef, i, 2, 3, 0.1, 0.2, 0.3);
  });
  double sum = 0;
  for (int i = 0; i < kRounds; ++i)
    for (const auto& entry : md::CMachDef_IdAxisState_get(machdef)) sum += entry.second.value;
  update.join();
  std::cout << "nobody minded, the sum is " << sum << '\n';
  return 0;
}
