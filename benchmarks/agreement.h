// Whether all sides compute the same numbers. A side that computes something else is fast for nothing.
#ifndef K5AX_BENCHMARKS_AGREEMENT_H
#define K5AX_BENCHMARKS_AGREEMENT_H

#include <cstddef>
#include <stdexcept>
#include <string>

#include "raw_files.h"
#include "sides.h"

namespace bench {

// what() names the operation, the sides, the position and both numbers.
class Disagreement : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct Agreement {
  std::size_t numbers_compared = 0;
  double worst_difference = 0;  // millimetres, radians, and components of rotations
};

// Compares the sides at every position, and throws a Disagreement at the first number that is off. Leaves the
// machines in other poses.
Agreement check_agreement(Sides& sides, const ScratchFolder& scratch);

}  // namespace bench

#endif
