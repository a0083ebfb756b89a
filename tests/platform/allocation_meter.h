// Counts what this program takes from the heap, the shared library's share included.
#ifndef K5AX_TESTS_PLATFORM_ALLOCATION_METER_H
#define K5AX_TESTS_PLATFORM_ALLOCATION_METER_H

#include <cstddef>

namespace k5ax_test {

// Bytes asked of operator new since the program began; never goes down.
std::size_t bytes_allocated();

}  // namespace k5ax_test

#endif
