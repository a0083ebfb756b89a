// The table of ratios, and the same as JSON.
#ifndef K5AX_BENCHMARKS_REPORT_H
#define K5AX_BENCHMARKS_REPORT_H

#include <iosfwd>
#include <string>
#include <vector>

#include "agreement.h"
#include "benchmarks.h"
#include "measurements.h"

namespace bench {

struct Results {
  Agreement agreement;
  std::vector<AllocationCount> allocations;
  Measurements measurements;
  int rounds = 0;
  double load_at_start = 0;         // processes that wanted a processor in the minute before: noise
  std::vector<std::string> labels;  // of the machines with trees
};

// Tables in Markdown, as docs/performance.md holds them.
void print_report(std::ostream& out, const Results& results);

// Throws std::runtime_error when the file cannot be written.
void write_json(const std::string& path, const Results& results);

}  // namespace bench

#endif
