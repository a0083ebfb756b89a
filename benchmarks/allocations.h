// How often this program, the shared library included, has asked for memory.
#ifndef K5AX_BENCHMARKS_ALLOCATIONS_H
#define K5AX_BENCHMARKS_ALLOCATIONS_H

#include <cstddef>

namespace bench {

// Calls of operator new since the start. This program replaces that operator, for itself and for the
// libraries it loads, by one that counts and then does what the standard library's does.
std::size_t allocation_count();

}  // namespace bench

#endif
