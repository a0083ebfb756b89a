// Loading and saving when memory runs out. Each is run once for every allocation that it makes, and that one
// fails.

#include <memory>

#include <gtest/gtest.h>

#include "machdef/files/memory_stream.h"
#include "machdef/files/rich_machine.h"
#include "platform/scratch.h"
#include "support/memory_shortage.h"
#include "support/pools.h"

using namespace k5ax_test;
using md::CMachDef;
using md::sg::node;

namespace {

class MachineWithoutMemory : public testing::TestWithParam<MemoryShortage::Kind> {};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Kinds, MachineWithoutMemory,
                         testing::Values(MemoryShortage::kOnce, MemoryShortage::kLasting),
                         [](const testing::TestParamInfo<MemoryShortage::Kind>& kind) {
                           return kind.param == MemoryShortage::kOnce ? "Once" : "Lasting";
                         });

TEST_P(MachineWithoutMemory, CannotBeLoadedFromAFile) {
  const ScratchFolder folder;
  const std::string path = folder / "machine";
  make_file(path, pack(rich_record()));
  int result = -1;
  int failures = 0;
  std::unique_ptr<CMachDef> machine;
  fail_each_allocation(
      GetParam(),
      [&] {
        machine = std::make_unique<CMachDef>();
        empty_pools();
      },
      [&] { result = MachdefLoad(machine.get(), path.c_str()); },
      [&](bool thrown) {
        EXPECT_FALSE(thrown);
        EXPECT_EQ(result, 0);
        CMachDef clone;
        clone.clone(*machine, 3);
        ++failures;
      });
  EXPECT_EQ(result, 1);
  EXPECT_GT(failures, 9 * 2 + 5 * 2);  // nine nodes and five axes, and each of them a count of its holders
}

TEST_P(MachineWithoutMemory, ThrowsBadAllocOutOfSerialize) {
  std::unique_ptr<CMachDef> machine;
  std::unique_ptr<MemoryStream> stream;
  int failures = 0;
  fail_each_allocation(
      GetParam(),
      [&] {
        machine = std::make_unique<CMachDef>();
        stream = std::make_unique<MemoryStream>(pack(rich_record()));
        stream->sizes.reserve(10000);
        empty_pools();
      },
      [&] { machine->serialize(*stream); },
      [&](bool thrown) {
        EXPECT_TRUE(thrown);
        ++failures;
      });
  EXPECT_GT(failures, 9 * 2 + 5 * 2);
  EXPECT_SAME_BYTES(saved(*machine), pack(rich_record()));
}

TEST_P(MachineWithoutMemory, LosesNothingOfABrokenOffLoad) {
  const Bytes bytes = pack(rich_record());
  std::size_t before = 0;
  int failures = 0;
  fail_each_allocation(
      GetParam(), [&] { before = bytes_without_pools(); },
      [&] {
        CMachDef machine;
        load(machine, bytes);
      },
      [&](bool) {
        EXPECT_EQ(bytes_without_pools(), before) << "allocation " << failures;
        ++failures;
      });
  EXPECT_GT(failures, 28);
}

TEST_P(MachineWithoutMemory, CannotBeSavedAndLeavesTheOldFile) {
  const ScratchFolder folder;
  const std::string path = folder / "machine";
  CMachDef machine;
  make_rich(machine);
  int result = -1;
  int failures = 0;
  fail_each_allocation(
      GetParam(), [&] { make_file(path, "old"); }, [&] { result = MachdefSave(&machine, path.c_str()); },
      [&](bool thrown) {
        EXPECT_FALSE(thrown);
        EXPECT_EQ(result, 0);
        EXPECT_EQ(contents(path), "old");
        EXPECT_EQ(folder.names(), Names{"machine"});
        ++failures;
      });
  EXPECT_EQ(result, 1);
  EXPECT_GT(failures, 3);
  EXPECT_SAME_BYTES(contents(path), pack(rich_record()));
}

// Giving nodes back takes memory for the pools' lists; a destructor that gets none destroys them instead.
TEST_P(MachineWithoutMemory, DiesAndLosesNothingWhereNothingCanBeParked) {
  const std::size_t before = bytes_without_pools();
  auto machine = std::make_unique<CMachDef>();
  load(*machine, rich_record());
  empty_pools();
  MemoryShortage shortage(0, GetParam());
  machine.reset();
  MemoryShortage::end();
  EXPECT_EQ(bytes_without_pools(), before);
}

TEST_P(MachineWithoutMemory, ResetThatCannotParkThrowsAndCanBeTakenUpAgain) {
  const std::size_t before = bytes_without_pools();
  {
    CMachDef machine;
    int failures = 0;
    fail_each_allocation(
        GetParam(),
        [&] {
          load(machine, rich_record());
          empty_pools();
        },
        [&] { machine.reset(); },
        [&](bool thrown) {
          EXPECT_TRUE(thrown);
          machine.reset();
          EXPECT_FALSE(machine.SG()[0]);
          EXPECT_FALSE(machine.getPrimary());
          ++failures;
        });
    EXPECT_GT(failures, 5);
  }
  EXPECT_EQ(bytes_without_pools(), before);
}

TEST(StreamWithoutMemory, WritesThroughItsSmallBuffer) {
  const ScratchFolder folder;
  const std::string path = folder / "file";
  const std::string text = std::string(10000, 'a') + std::string(10000, 'b') + std::string(10000, 'c');
  {
    IIO::FileStream stream(path.c_str(), IIO::FILE_WRITE);
    stream.Write(text.data(), 10000);
    const MemoryShortage shortage(0, MemoryShortage::kLasting);
    stream.Write(text.data() + 10000, 10000);
    EXPECT_TRUE(MemoryShortage::struck());
    stream.Write(text.data() + 20000, 10000);
  }
  EXPECT_EQ(contents(path), text);
}

TEST(StreamWithoutMemory, ReadsThroughItsSmallBuffer) {
  const ScratchFolder folder;
  const std::string path = folder / "file";
  const std::string text = std::string(20000, 'a') + std::string(20000, 'b') + std::string(20000, 'c');
  make_file(path, text);
  std::string back(text.size(), '?');
  {
    IIO::FileStream stream(path.c_str(), IIO::FILE_READ);
    const MemoryShortage shortage(0, MemoryShortage::kLasting);
    for (std::size_t at = 0; at < text.size(); at += 10000) stream.Read(&back[at], 10000);
    EXPECT_TRUE(MemoryShortage::struck());
  }
  EXPECT_EQ(back, text);
}
