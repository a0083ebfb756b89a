// Replaces operator new for the whole program. A shared library finds the program's before the standard one;
// a library of Windows does not, and is part of the program instead (OWN_MEMORY in tests/CMakeLists.txt).

#include "support/memory_shortage.h"

#include <malloc.h>

#include <atomic>
#include <cstdlib>

namespace {

#ifdef _WIN32
std::size_t usable_size(void* memory) { return ::_msize(memory); }
#else
std::size_t usable_size(void* memory) { return ::malloc_usable_size(memory); }
#endif

std::atomic<std::size_t> in_use{0};
std::atomic<std::size_t> peak{0};

constexpr long kNoShortage = -1;
std::atomic<long> allowed_allocations{kNoShortage};
std::atomic<bool> lasts{false};
std::atomic<bool> has_struck{false};

bool may_allocate() {
  const long allowed = allowed_allocations;
  if (allowed == kNoShortage) return true;
  if (allowed > 0) {
    allowed_allocations = allowed - 1;
    return true;
  }
  if (has_struck && !lasts) return true;
  has_struck = true;
  return false;
}

void* try_to_allocate(std::size_t size) noexcept {
  void* const memory = may_allocate() ? std::malloc(size > 0 ? size : 1) : nullptr;
  if (memory == nullptr) return nullptr;
  const std::size_t now = in_use += usable_size(memory);
  if (now > peak) peak = now;
  return memory;
}

void* allocate(std::size_t size) {
  void* const memory = try_to_allocate(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void release(void* memory) {
  if (memory == nullptr) return;
  in_use -= usable_size(memory);
  std::free(memory);
}

}  // namespace

namespace k5ax_test {

std::size_t bytes_in_use() { return in_use; }
std::size_t peak_bytes_in_use() { return peak; }
void forget_peak() { peak = in_use.load(); }

MemoryShortage::MemoryShortage(long allowed, Kind kind) {
  lasts = kind == kLasting;
  has_struck = false;
  allowed_allocations = allowed;
}

void MemoryShortage::end() { allowed_allocations = kNoShortage; }
bool MemoryShortage::struck() { return has_struck; }

}  // namespace k5ax_test

void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return try_to_allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return try_to_allocate(size); }
void operator delete(void* memory) noexcept { release(memory); }
void operator delete[](void* memory) noexcept { release(memory); }
void operator delete(void* memory, std::size_t) noexcept { release(memory); }
void operator delete[](void* memory, std::size_t) noexcept { release(memory); }
