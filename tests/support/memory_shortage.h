// Lets memory run out at a chosen allocation, and counts what is in use. The library's allocations are
// counted too.
#ifndef K5AX_TESTS_SUPPORT_MEMORY_SHORTAGE_H
#define K5AX_TESTS_SUPPORT_MEMORY_SHORTAGE_H

#include <cstddef>
#include <new>

namespace k5ax_test {

// Bytes got from operator new and not given back yet.
std::size_t bytes_in_use();

// The highest that bytes_in_use has been since the last call of forget_peak.
std::size_t peak_bytes_in_use();
void forget_peak();

// While it lives, `allowed` more allocations succeed; then one fails, or, when it lasts, every one.
class MemoryShortage {
 public:
  enum Kind { kOnce, kLasting };

  MemoryShortage(long allowed, Kind kind);
  ~MemoryShortage() { end(); }
  MemoryShortage(const MemoryShortage&) = delete;
  MemoryShortage& operator=(const MemoryShortage&) = delete;

  static void end();
  // Whether an allocation has failed for it.
  static bool struck();
};

// Runs `work` again and again, each time with the next allocation failing, and `check` after each time in
// which it came out as std::bad_alloc. Ends with the first run that needed no more; answers how many runs
// failed.
template <class Prepare, class Work, class Check>
int fail_each_allocation(MemoryShortage::Kind kind, Prepare prepare, Work work, Check check) {
  for (long allowed = 0;; ++allowed) {
    prepare();
    bool failed = false;
    bool struck = false;
    {
      MemoryShortage shortage(allowed, kind);
      try {
        work();
      } catch (const std::bad_alloc&) {
        failed = true;
      }
      struck = MemoryShortage::struck();
    }
    if (!struck) return static_cast<int>(allowed);
    check(failed);
  }
}

}  // namespace k5ax_test

#endif
