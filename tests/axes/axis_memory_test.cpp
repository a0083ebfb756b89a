// What happens to axes and to the pool when memory runs out.
#include <new>

#include <boost/shared_ptr.hpp>

#include <gtest/gtest.h>

#include <k5ax/axes.h>

#include "axes/axis_support.h"
#include "support/memory_shortage.h"

namespace {

using k5ax_test::AxisPool;
using k5ax_test::bytes_in_use;
using k5ax_test::MemoryShortage;
using md::CAxis2;

// Runs `work` while its allocation number `refused` (from 0) fails, and answers whether bad_alloc came out.
template <class Work>
bool runs_out_of_memory(long refused, Work work) {
  const MemoryShortage shortage(refused, MemoryShortage::kOnce);
  try {
    work();
  } catch (const std::bad_alloc&) {
    return true;
  }
  return false;
}

TEST(AxisWithoutMemory, CannotBeCreated) {
  AxisPool::drain();
  EXPECT_TRUE(runs_out_of_memory(0, [] { CAxis2::create(); }));
}

TEST(AxisWithoutMemory, IsDeletedAgainWhenItsSharedPointerCannotBeMade) {
  AxisPool::drain();
  const std::size_t before = bytes_in_use();
  const bool out = runs_out_of_memory(1, [] { CAxis2::create(); });
  EXPECT_TRUE(out);  // the axis is the first block, the count of its holders the second
  EXPECT_EQ(bytes_in_use(), before);
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

TEST(AxisWithoutMemory, IsParkedAgainWhenItCameFromThePool) {
  AxisPool::drain();
  auto axis = k5ax_test::rotary_b_on_head();
  CAxis2::free(axis);
  axis = CAxis2::create();

  const bool out = runs_out_of_memory(0, [&axis] { CAxis2::free(axis); });

  EXPECT_FALSE(out);
  EXPECT_FALSE(axis);
  EXPECT_EQ(AxisPool::size(), 1u);
}

TEST(AxisPoolMemory, PlacesOfTakenAxesAreGivenBackWhenThePoolRunsDry) {
  AxisPool::drain();
  auto first = CAxis2::create();
  auto second = CAxis2::create();
  const std::size_t before = bytes_in_use();
  CAxis2::free(first);
  CAxis2::free(second);
  second = CAxis2::create();
  first = CAxis2::create();
  EXPECT_GT(bytes_in_use(), before);
  CAxis2::create();
  EXPECT_EQ(bytes_in_use(), before);
}

TEST(FlatAxisWithoutMemory, CannotBeCloned) {
  const TAxis record = k5ax_test::record_of_its_own();
  EXPECT_TRUE(runs_out_of_memory(0, [&record] { axis_clone(&record); }));
}

}  // namespace
