// What the executable that includes watched_memory.cpp asks its allocator: how many allocations a stretch of
// work makes, and whether it touches the reference count of a shared pointer.
#ifndef K5AX_TESTS_KINEMATICS_WATCHED_MEMORY_H
#define K5AX_TESTS_KINEMATICS_WATCHED_MEMORY_H

#include <cstddef>

namespace k5ax_test {

// Calls of any operator new so far, the library's included.
std::size_t allocations();

// While it lives, what is allocated at the size of a shared pointer's reference counts comes from pages of
// its own, which can be made read-only: whoever copies or drops such a pointer then, even for a moment, dies
// of it.
class CountsOnOwnPages {
 public:
  CountsOnOwnPages();
  ~CountsOnOwnPages();
  CountsOnOwnPages(const CountsOnOwnPages&) = delete;
  CountsOnOwnPages& operator=(const CountsOnOwnPages&) = delete;

  // For good, so in a process of its own.
  static void make_read_only();
  // How many allocations these pages have taken up.
  static std::size_t used();
};

}  // namespace k5ax_test

#endif
