// Replaces operator new for the whole program. The library's calls arrive here too: it finds the program's
// operator before the standard library's.

#include "allocation_meter.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::size_t> bytes{0};

}  // namespace

std::size_t k5ax_test::bytes_allocated() { return bytes; }

void* operator new(std::size_t size) {
  bytes += size;
  void* const memory = std::malloc(size > 0 ? size : 1);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
