// What happens to axes and to the pool when memory runs out.
#include <cstdlib>
#include <new>

#include <boost/shared_ptr.hpp>

#include <gtest/gtest.h>

#include <k5ax/axes.h>

#include "axes/axis_support.h"

namespace {

// Counts what goes through operator new, and refuses one call on demand. The library allocates through this
// too.
int allocations_until_refusal = -1;  // negative: never
long live_blocks = 0;

void* allocate(std::size_t size) {
  if (allocations_until_refusal == 0) {
    allocations_until_refusal = -1;
    throw std::bad_alloc();
  }
  if (allocations_until_refusal > 0) --allocations_until_refusal;
  void* const block = std::malloc(size != 0 ? size : 1);
  if (block == nullptr) throw std::bad_alloc();
  ++live_blocks;
  return block;
}

void release(void* block) {
  if (block == nullptr) return;
  --live_blocks;
  std::free(block);
}

}  // namespace

void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void operator delete(void* block) noexcept { release(block); }
void operator delete[](void* block) noexcept { release(block); }
void operator delete(void* block, std::size_t) noexcept { release(block); }
void operator delete[](void* block, std::size_t) noexcept { release(block); }

namespace {

using k5ax_test::AxisPool;
using md::CAxis2;

// Calls `work` so that its allocation number `refused` (from 0) fails, and answers whether bad_alloc came
// out.
template <class Work>
bool runs_out_of_memory(int refused, Work work) {
  bool out = false;
  allocations_until_refusal = refused;
  try {
    work();
  } catch (const std::bad_alloc&) {
    out = true;
  }
  allocations_until_refusal = -1;
  return out;
}

TEST(AxisWithoutMemory, CannotBeCreated) {
  AxisPool::drain();
  EXPECT_TRUE(runs_out_of_memory(0, [] { CAxis2::create(); }));
}

TEST(AxisWithoutMemory, IsDeletedAgainWhenItsSharedPointerCannotBeMade) {
  AxisPool::drain();
  const long blocks_before = live_blocks;
  const bool out = runs_out_of_memory(1, [] { CAxis2::create(); });
  EXPECT_TRUE(out);  // the axis is the first block, the pointer's count the second
  EXPECT_EQ(live_blocks, blocks_before);
}

TEST(AxisWithoutMemory, StaysWithItsHolderWhenItCannotBeParked) {
  AxisPool::drain();
  auto axis = k5ax_test::rotary_b_on_head();
  CAxis2* const address = axis.get();

  const bool out = runs_out_of_memory(0, [&axis] { CAxis2::free(axis); });

  EXPECT_TRUE(out);
  EXPECT_EQ(axis.get(), address);
  EXPECT_EQ(AxisPool::size(), 0u);
}

TEST(AxisWithoutMemory, StillComesFromThePool) {
  AxisPool::drain();
  auto parked = k5ax_test::rotary_b_on_head();
  CAxis2* const address = parked.get();
  CAxis2::free(parked);

  boost::shared_ptr<CAxis2> axis;
  const bool out = runs_out_of_memory(0, [&axis] { axis = CAxis2::create(); });

  EXPECT_FALSE(out);
  EXPECT_EQ(axis.get(), address);
}

TEST(FlatAxisWithoutMemory, CannotBeCloned) {
  const TAxis record = k5ax_test::record_of_its_own();
  EXPECT_TRUE(runs_out_of_memory(0, [&record] { axis_clone(&record); }));
}

}  // namespace
