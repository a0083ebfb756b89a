#include "faults/entry_points.h"

#include <ostream>

namespace k5ax_test {

std::ostream& operator<<(std::ostream& out, const EntryPoint& point) { return out << point.name; }
std::ostream& operator<<(std::ostream& out, const QuietCalls& calls) { return out << calls.name; }

std::vector<EntryPoint> all_entry_points() {
  std::vector<EntryPoint> all = axis_entry_points();
  for (const std::vector<EntryPoint>& more : {node_entry_points(), machine_entry_points()})
    all.insert(all.end(), more.begin(), more.end());
  return all;
}

}  // namespace k5ax_test
