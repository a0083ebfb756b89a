// How often this program, the shared library included, has asked for memory.
#include "allocations.h"

#include <cstdlib>
#include <new>

namespace {

std::size_t counted = 0;

void* allocate(std::size_t size) {
  ++counted;
  if (void* const memory = std::malloc(size != 0 ? size : 1)) return memory;
  throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace bench {

std::size_t allocation_count() { return counted; }

}  // namespace bench
