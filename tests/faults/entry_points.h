// Every entry point that can ask for memory, as a call on a stage; and those that never do.
#ifndef K5AX_TESTS_FAULTS_ENTRY_POINTS_H
#define K5AX_TESTS_FAULTS_ENTRY_POINTS_H

#include <iosfwd>
#include <string>
#include <vector>

#include "faults/allocation_stage.h"

namespace k5ax_test {

// What comes of an entry point that gets no memory.
enum class WithoutMemory {
  throws,             // std::bad_alloc
  answers_zero,       // the stage's answer is "0"
  goes_on,            // it does its work, and only parks less
  throws_or_goes_on,  // the first, and the other once nothing is left to do but to park
};

struct EntryPoint {
  const char* name;                // of the test
  std::vector<std::string> names;  // the exported functions that it calls and that may ask for memory
  WithoutMemory outcome;
  void (*call)(AllocationStage& stage);
};

std::ostream& operator<<(std::ostream& out, const EntryPoint& point);

std::vector<EntryPoint> axis_entry_points();
std::vector<EntryPoint> node_entry_points();
std::vector<EntryPoint> machine_entry_points();
std::vector<EntryPoint> all_entry_points();

// Calls that ask for no memory, whatever the stage.
struct QuietCalls {
  const char* name;
  std::vector<std::string> names;
  void (*call)(AllocationStage& stage);
};

std::ostream& operator<<(std::ostream& out, const QuietCalls& calls);

std::vector<QuietCalls> quiet_calls();

}  // namespace k5ax_test

#endif
