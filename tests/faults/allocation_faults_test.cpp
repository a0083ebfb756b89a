// Memory running out in every entry point, at each allocation that it makes, with pools that are empty and
// pools that are not: what was there before goes on, nothing is lost, and the call can be made again.

#include <algorithm>
#include <fstream>
#include <iostream>
#include <set>

#include <gtest/gtest.h>

#include "faults/entry_points.h"
#include "support/memory_shortage.h"

using namespace k5ax_test;

namespace {

class EntryPointWithoutMemory : public testing::TestWithParam<EntryPoint> {
 public:
  // ctest runs each test in a process of its own; run by itself the program says how many faults it made.
  static void TearDownTestSuite() { std::cout << "allocation faults in all: " << s_all_points << '\n'; }

 protected:
  static int s_all_points;

  // Calls once for each allocation, and answers how many there were.
  int fail_each(MemoryShortage::Kind kind, Pools pools) {
    const std::string expected = look_after_a_call(pools);
    std::unique_ptr<AllocationStage> stage;
    std::size_t before = 0;
    int points = 0;
    const auto prepare = [&] {
      stage.reset();
      before = bytes_without_pools();
      stage = std::make_unique<AllocationStage>(pools, m_folder);
    };
    const auto check = [&](bool thrown) {
      ++points;
      check_outcome(*stage, thrown, expected);
      EXPECT_EQ(stage->fault_of_files(), "");
      EXPECT_EQ(stage->fault_of_source(), "");
      // After one failure the host calls again, after a lasting one it goes on with what is there.
      if (kind == MemoryShortage::kOnce) {
        GetParam().call(*stage);
        EXPECT_TRUE(stage->look() == expected) << "called again it leaves something else";
      } else {
        EXPECT_EQ(stage->fault_of_the_rest(), "");
      }
      EXPECT_EQ(stage->fault_of_pools(), "");
      stage.reset();
      EXPECT_EQ(bytes_without_pools(), before) << "something is lost";
      if (HasFailure()) std::cout << "at allocation " << points << '\n';
    };
    fail_each_allocation(
        kind, prepare, [&] { GetParam().call(*stage); }, check);
    return points;
  }

 private:
  std::string look_after_a_call(Pools pools) {
    AllocationStage stage(pools, m_folder);
    GetParam().call(stage);
    return stage.look();
  }

  static void check_outcome(AllocationStage& stage, bool thrown, const std::string& expected) {
    const WithoutMemory outcome = GetParam().outcome;
    if (outcome != WithoutMemory::throws_or_goes_on) {
      EXPECT_EQ(thrown, outcome == WithoutMemory::throws);
    }
    // A file may also be read or written with a smaller buffer.
    if (outcome == WithoutMemory::answers_zero && stage.answer == "0") return;
    if (!thrown) {
      EXPECT_TRUE(stage.look() == expected) << "it went on, and leaves something else";
    }
  }

  ScratchFolder m_folder;
};

int EntryPointWithoutMemory::s_all_points = 0;

class Quiet : public testing::TestWithParam<QuietCalls> {};

std::string name_of(const testing::TestParamInfo<EntryPoint>& info) { return info.param.name; }
std::string name_of_quiet(const testing::TestParamInfo<QuietCalls>& info) { return info.param.name; }

std::set<std::string> known_names() {
  std::set<std::string> names;
  for (const EntryPoint& point : all_entry_points()) names.insert(point.names.begin(), point.names.end());
  for (const QuietCalls& calls : quiet_calls()) names.insert(calls.names.begin(), calls.names.end());
  return names;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Each, EntryPointWithoutMemory, testing::ValuesIn(all_entry_points()), name_of);
INSTANTIATE_TEST_SUITE_P(Each, Quiet, testing::ValuesIn(quiet_calls()), name_of_quiet);

TEST_P(EntryPointWithoutMemory, LeavesWhatWasThereAndCanBeCalledAgain) {
  int points = 0;
  int cold_points = 0;
  for (const MemoryShortage::Kind kind : {MemoryShortage::kOnce, MemoryShortage::kLasting})
    for (const Pools pools : {Pools::cold, Pools::warm}) {
      const int here = fail_each(kind, pools);
      points += here;
      if (pools == Pools::cold) cold_points += here;
    }
  EXPECT_GT(cold_points, 0) << "it asks for no memory: name it among the quiet calls";
  s_all_points += points;
}

TEST_P(Quiet, CallsAskForNoMemory) {
  const ScratchFolder folder;
  AllocationStage stage(Pools::cold, folder);
  bool struck = true;
  {
    const MemoryShortage shortage(0, MemoryShortage::kLasting);
    EXPECT_NO_THROW(GetParam().call(stage));
    struck = MemoryShortage::struck();
  }
  EXPECT_FALSE(struck);
}

TEST(EntryPoints, AreAllThatTheLibraryExportsByPlainNames) {
  std::ifstream list(K5AX_PLAIN_NAMES);
  const std::set<std::string> known = known_names();
  int names = 0;
  for (std::string name; std::getline(list, name); ++names)
    EXPECT_EQ(known.count(name), 1u) << name << " is neither an entry point here nor among the quiet calls";
  EXPECT_GT(names, 50);
}
