#include "watched_memory.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <sys/mman.h>
#endif

#include <cstdint>
#include <cstdlib>
#include <new>

namespace {

// The counts of a shared pointer with a deleter: a table of functions, two counts of 32 bits, the pointer,
// the deleter (padded). A test asserts that the pages are used, so another size shows.
constexpr std::size_t kCountsSize = 32;
constexpr std::size_t kPlaces = 1 << 16;

std::size_t allocation_count = 0;
bool counts_on_own_pages = false;
unsigned char* pages = nullptr;
std::size_t places_used = 0;

#ifdef _WIN32
void* new_pages(std::size_t size) {
  return ::VirtualAlloc(nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
}
bool protect_pages(void* first, std::size_t size) {
  DWORD before = 0;
  return ::VirtualProtect(first, size, PAGE_READONLY, &before) != 0;
}
#else
void* new_pages(std::size_t size) {
  void* const mapped = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  return mapped == MAP_FAILED ? nullptr : mapped;
}
bool protect_pages(void* first, std::size_t size) { return ::mprotect(first, size, PROT_READ) == 0; }
#endif

bool on_own_pages(const void* p) {
  const std::uintptr_t address = reinterpret_cast<std::uintptr_t>(p);
  const std::uintptr_t first = reinterpret_cast<std::uintptr_t>(pages);
  return pages != nullptr && address >= first && address < first + kPlaces * kCountsSize;
}

void* allocate(std::size_t size) {
  ++allocation_count;
  // A place is used once: giving it back would have to be written down somewhere that may be read-only.
  if (counts_on_own_pages && size == kCountsSize && places_used < kPlaces)
    return pages + kCountsSize * places_used++;
  void* const p = std::malloc(size == 0 ? 1 : size);
  if (p == nullptr) throw std::bad_alloc();
  return p;
}

void give_back(void* p) noexcept {
  if (!on_own_pages(p)) std::free(p);
}

}  // namespace

namespace k5ax_test {

std::size_t allocations() { return allocation_count; }

CountsOnOwnPages::CountsOnOwnPages() {
  if (pages == nullptr) {
    pages = static_cast<unsigned char*>(new_pages(kPlaces * kCountsSize));
    if (pages == nullptr) throw std::bad_alloc();
  }
  counts_on_own_pages = true;
}

CountsOnOwnPages::~CountsOnOwnPages() { counts_on_own_pages = false; }

void CountsOnOwnPages::make_read_only() {
  counts_on_own_pages = false;
  if (!protect_pages(pages, kPlaces * kCountsSize)) std::abort();
}

std::size_t CountsOnOwnPages::used() { return places_used; }

}  // namespace k5ax_test

void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void operator delete(void* p) noexcept { give_back(p); }
void operator delete[](void* p) noexcept { give_back(p); }
void operator delete(void* p, std::size_t) noexcept { give_back(p); }
void operator delete[](void* p, std::size_t) noexcept { give_back(p); }
