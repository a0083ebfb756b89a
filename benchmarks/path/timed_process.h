// A program run to its end, and what time it took.
#ifndef K5AX_BENCHMARKS_PATH_TIMED_PROCESS_H
#define K5AX_BENCHMARKS_PATH_TIMED_PROCESS_H

#include <string>
#include <vector>

namespace bench {

struct Times {
  double processor = 0;  ///< seconds, the system's share included
  double clock = 0;      ///< seconds
  long peak_kib = 0;     ///< the most memory it held
};

/// Runs the program (the first argument is its path) with standard output to a file, and waits. Throws
/// std::runtime_error when it cannot be started or ends with another code than 0.
Times run(const std::vector<std::string>& arguments, const std::string& output);

}  // namespace bench

#endif
