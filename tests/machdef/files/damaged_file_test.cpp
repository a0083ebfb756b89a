// Files that are damaged or hostile: they are refused or read as they stand, and the machine can be used
// afterwards; there is no crash, no hang, and no memory out of proportion.

#include <cstring>
#include <random>

#include <gtest/gtest.h>

#include "machdef/files/memory_stream.h"
#include "machdef/files/rich_machine.h"
#include "platform/scratch.h"
#include "support/memory_shortage.h"
#include "support/numbers.h"
#include "support/pools.h"
#include "support/use_machine.h"

using namespace k5ax_test;
using md::CMachDef;
using md::sg::node;
using NodePtr = boost::shared_ptr<node>;

namespace {

bool loads(CMachDef& machine, const Bytes& bytes) {
  try {
    load(machine, bytes);
  } catch (const std::runtime_error&) {
    return false;
  }
  return true;
}

bool loads(const MachineRecord& record) {
  CMachDef machine;
  return loads(machine, pack(record));
}

void use(CMachDef& machine) { EXPECT_EQ(use_machine(machine), ""); }

// The parents that a reader sees: -1 for an index outside the list.
std::vector<int> effective(const std::vector<int>& parents) {
  std::vector<int> result = parents;
  const int count = static_cast<int>(parents.size());
  for (int& parent : result)
    if (parent < 0 || parent >= count) parent = -1;
  return result;
}

// A second way to see a cycle: whoever is still below somebody after as many steps as there are nodes is in
// one.
bool has_cycle(const std::vector<int>& parents) {
  for (std::size_t start = 0; start < parents.size(); ++start) {
    int at = static_cast<int>(start);
    for (std::size_t steps = 0; at >= 0 && steps <= parents.size(); ++steps)
      at = parents[static_cast<std::size_t>(at)];
    if (at >= 0) return true;
  }
  return false;
}

void list_below(int root, const std::vector<int>& parents, std::vector<int>& list) {
  list.push_back(root);
  for (std::size_t i = 0; i < parents.size(); ++i)
    if (parents[i] == root) list_below(static_cast<int>(i), parents, list);
}

std::vector<int> tree_ids(const NodePtr& root) {
  std::vector<int> ids;
  for (const NodePtr& n : node::all_nodes(root)) ids.push_back(n->id());
  return ids;
}

std::vector<int> ring(int count) {
  std::vector<int> parents;
  for (int i = 0; i < count; ++i) parents.push_back((i + 1) % count);
  return parents;
}

// An even choice from 0 to count - 1 that is the same with every standard library; the bias of the remainder
// does not matter here.
int choose(std::mt19937_64& random, int count) {
  return static_cast<int>(random() % static_cast<unsigned>(count));
}

}  // namespace

TEST(EveryTruncation, OfAMachineIsRefused) {
  const Bytes bytes = pack(rich_record());
  int refused = 0;
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    CMachDef machine;
    ASSERT_FALSE(loads(machine, bytes.substr(0, length))) << length << " bytes";
    use(machine);
    ++refused;
  }
  EXPECT_EQ(refused, 2264);
}

TEST(EveryTruncation, OfAFreshMachineIsRefused) {
  const Bytes bytes = pack(MachineRecord());
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    CMachDef machine;
    ASSERT_FALSE(loads(machine, bytes.substr(0, length))) << length << " bytes";
  }
}

TEST(EveryTruncation, OfAFileGivesZero) {
  const ScratchFolder folder;
  const std::string path = folder / "machine";
  make_file(path, pack(rich_record()));
  CMachDef whole;
  ASSERT_EQ(MachdefLoad(&whole, path.c_str()), 1);
  for (std::size_t length = 2264; length-- > 0;) {
    fs::resize_file(path, length);
    CMachDef machine;
    ASSERT_EQ(MachdefLoad(&machine, path.c_str()), 0) << length << " bytes";
  }
}

// 2264 bytes, four values each: enums, counts, indices, kinds, exponents, everything is hit.
TEST(EveryByte, ChangedIsReadOrRefusedAndTheMachineCanBeUsed) {
  const Bytes good = pack(rich_record());
  int read = 0;
  int refused = 0;
  for (std::size_t at = 0; at < good.size(); ++at) {
    for (const int value : {0x00, 0x7f, 0x80, 0xff}) {
      Bytes bytes = good;
      bytes[at] = static_cast<char>(value);
      CMachDef machine;
      (loads(machine, bytes) ? read : refused) += 1;
      use(machine);
      if (testing::Test::HasFailure()) FAIL() << "byte " << at << " set to " << value;
    }
  }
  EXPECT_EQ(read + refused, 4 * 2264);
  // Most bytes are of numbers, which are taken as they stand.
  EXPECT_GT(read, 8000);
  EXPECT_GT(refused, 50);
}

TEST(RandomDamage, IsReadOrRefusedAndTheMachineCanBeUsed) {
  const Bytes good = pack(rich_record());
  const int words[] = {0, 1, 2, 3, 4, 5, 8, 9, 10, -1, -2, -999, 255, 256, kIntMax, kIntMin};
  std::mt19937_64 random(20240607);
  int read = 0;
  int refused = 0;
  for (int round = 0; round < 4000; ++round) {
    Bytes bytes = good;
    const int changes = 1 + choose(random, 6);
    for (int change = 0; change < changes; ++change) {
      // Every field begins at a multiple of four.
      const std::size_t at = 4 * static_cast<std::size_t>(choose(random, 2264 / 4));
      bytes.replace(at, 4, pack(words[choose(random, 16)]));
    }
    CMachDef machine;
    (loads(machine, bytes) ? read : refused) += 1;
    use(machine);
    if (testing::Test::HasFailure()) FAIL() << "round " << round;
  }
  EXPECT_GT(read, 1000);
  EXPECT_GT(refused, 100);
}

TEST(RandomTrees, AreReadAsTheirParentsSayOrRefusedForACycle) {
  std::mt19937_64 random(4711);
  int read = 0;
  int refused = 0;
  for (int round = 0; round < 6000; ++round) {
    const int count = 1 + choose(random, 9);
    std::vector<int> parents;
    MachineRecord record;
    for (int i = 0; i < count; ++i) {
      // Mostly an earlier node, as writers do it; now and then any index, in the list or not.
      const int parent = choose(random, 4) > 0 ? choose(random, i + 1) - 1 : choose(random, count + 4) - 2;
      parents.push_back(parent);
      record.nodes.push_back(node_record(choose(random, 3), parent, i, 0, 0, numbers_from(1)));
    }
    record.roots = {choose(random, count), choose(random, count)};

    CMachDef machine;
    const bool cycle = has_cycle(effective(parents));
    ASSERT_EQ(loads(machine, pack(record)), !cycle) << "round " << round;
    (cycle ? refused : read) += 1;
    if (cycle) continue;
    for (std::size_t tree = 0; tree < 2; ++tree) {
      std::vector<int> expected;
      list_below(record.roots[tree], effective(parents), expected);
      ASSERT_EQ(tree_ids(machine.SG()[tree]), expected) << "round " << round << ", tree " << tree;
      for (const NodePtr& n : node::all_nodes(machine.SG()[tree])) {
        if (n == machine.SG()[tree]) continue;
        ASSERT_EQ(n->parent()->id(), parents[static_cast<std::size_t>(n->id())]) << "round " << round;
      }
    }
    use(machine);
  }
  EXPECT_GT(read, 2000);
  EXPECT_GT(refused, 500);
}

TEST(NodeKind, OtherThanTheThreeIsRefused) {
  for (const int kind : {3, -1, 4, 256, 257, 65536, kIntMax, kIntMin}) {
    MachineRecord record = record_of_parents({-1, 0});
    record.nodes[1].kind = kind;
    EXPECT_FALSE(loads(record)) << "kind " << kind;
  }
}

TEST(NodeKind, OtherThanTheThreeIsAStandardRuntimeError) {
  MachineRecord record = record_of_parents({-1});
  record.nodes[0].kind = 3;
  CMachDef machine;
  EXPECT_THROW(load(machine, record), std::runtime_error);
}

TEST(NodeKind, OtherThanTheThreeMakesTheFlatLoadAnswerZero) {
  const ScratchFolder folder;
  const std::string path = folder / "machine";
  for (const int kind : {3, -1, kIntMax}) {
    MachineRecord record = record_of_parents({-1});
    record.nodes[0].kind = kind;
    make_file(path, pack(record));
    CMachDef machine;
    EXPECT_EQ(MachdefLoad(&machine, path.c_str()), 0) << "kind " << kind;
  }
}

TEST(NodeKind, OfTheThreeIsTaken) {
  for (const int kind : {0, 1, 2}) {
    MachineRecord record = record_of_parents({-1, 0});
    record.nodes[1].kind = kind;
    EXPECT_TRUE(loads(record)) << "kind " << kind;
  }
}

TEST(NodeCount, BeyondTheFileIsRefused) {
  for (const int count : {1, 2, 1000, 1000000, kIntMax}) {
    Bytes bytes = pack(MachineRecord());
    bytes.replace(220, 4, pack(count));
    CMachDef machine;
    EXPECT_FALSE(loads(machine, bytes)) << "count " << count;
  }
}

// A count is a claim; memory is taken for what is really there.
TEST(NodeCount, IsNeverTrustedForMemory) {
  Bytes bytes = pack(MachineRecord());
  bytes.replace(220, 4, pack(kIntMax));
  CMachDef machine;
  const std::size_t before = bytes_in_use();
  forget_peak();
  EXPECT_FALSE(loads(machine, bytes));
  EXPECT_LT(peak_bytes_in_use() - before, 20000u);
}

TEST(NodeCount, OfAFileIsNeverTrustedForMemory) {
  const ScratchFolder folder;
  const std::string path = folder / "machine";
  Bytes bytes = pack(MachineRecord());
  bytes.replace(220, 4, pack(kIntMax));
  make_file(path, bytes);
  CMachDef machine;
  const std::size_t before = bytes_in_use();
  forget_peak();
  EXPECT_EQ(MachdefLoad(&machine, path.c_str()), 0);
  // The stream's buffer is 64 KiB.
  EXPECT_LT(peak_bytes_in_use() - before, 100000u);
}

TEST(NodeCount, TakesMemoryInProportionToTheRecordsThatAreThere) {
  const std::vector<int> parents(10000, -1);
  Bytes bytes = pack(record_of_parents(parents));
  bytes.replace(220, 4, pack(kIntMax));
  CMachDef machine;
  MemoryStream stream(bytes);
  const std::size_t before = bytes_in_use();
  forget_peak();
  EXPECT_THROW(machine.serialize(stream), IIO::FileError);
  // A node of 120 bytes in the file is an object of two to three times that; the test's own log of read sizes
  // is 6 * 8 bytes a node, doubled as it grows.
  EXPECT_LT(peak_bytes_in_use() - before, 8 * bytes.size());
  EXPECT_GT(peak_bytes_in_use() - before, bytes.size());
}

TEST(ParentCycle, OfOneNodeIsRefused) { EXPECT_FALSE(loads(record_of_parents({0}))); }

TEST(ParentCycle, OfTwoNodesIsRefused) { EXPECT_FALSE(loads(record_of_parents({1, 0}))); }

TEST(ParentCycle, OfThreeNodesIsRefused) { EXPECT_FALSE(loads(record_of_parents({1, 2, 0}))); }

TEST(ParentCycle, IsRefusedWithAStandardRuntimeError) {
  CMachDef machine;
  EXPECT_THROW(load(machine, record_of_parents({0})), std::runtime_error);
}

TEST(ParentCycle, BehindATailIsRefused) { EXPECT_FALSE(loads(record_of_parents({1, 2, 3, 1}))); }

TEST(ParentCycle, BesideAWholeTreeIsRefused) { EXPECT_FALSE(loads(record_of_parents({-1, 0, 0, 4, 3}))); }

TEST(ParentCycle, OfTypedNodesIsRefused) {
  MachineRecord record = record_of_parents({1, 0});
  record.nodes[0].kind = kAxis;
  record.nodes[1].kind = kTool;
  EXPECT_FALSE(loads(record));
}

TEST(ParentCycle, OfManyNodesIsRefusedAtOnce) {
  for (const int count : {10, 1000, 100000})
    EXPECT_FALSE(loads(record_of_parents(ring(count)))) << count << " nodes";
}

// Each node of a long tail leads into the same ring; walking to the ring from each of them would take hours.
TEST(ParentCycle, AtTheEndOfALongTailIsRefusedAtOnce) {
  constexpr int count = 200000;
  std::vector<int> parents;
  for (int i = 0; i < count; ++i) parents.push_back(i + 1);
  parents.back() = count - 2;
  EXPECT_FALSE(loads(record_of_parents(parents)));
}

TEST(ParentCycle, InAFileMakesTheFlatLoadAnswerZero) {
  const ScratchFolder folder;
  const std::string path = folder / "machine";
  for (const int count : {1, 2, 3, 1000}) {
    make_file(path, pack(record_of_parents(ring(count))));
    CMachDef machine;
    EXPECT_EQ(MachdefLoad(&machine, path.c_str()), 0) << count << " nodes";
  }
}

TEST(ParentCycle, LosesNoMemory) {
  const Bytes bytes = pack(record_of_parents(ring(3)));
  CMachDef machine;
  const std::size_t before = bytes_without_pools();
  EXPECT_FALSE(loads(machine, bytes));
  EXPECT_EQ(bytes_without_pools(), before);
}

TEST(GarbageFile, GivesZero) {
  const ScratchFolder folder;
  const std::string path = folder / "machine";
  std::mt19937_64 random(99);
  for (const std::size_t size : {1u, 100u, 247u, 10000u, 100000u}) {
    Bytes bytes;
    for (std::size_t i = 0; i < size; ++i) bytes.push_back(static_cast<char>(random() & 0xff));
    // Five present flags that are not 0, so the node count stands at 620. Left to chance it may be below 0.
    if (size > 1000) bytes.replace(620, 4, pack(kIntMax));
    make_file(path, bytes);
    CMachDef machine;
    EXPECT_EQ(MachdefLoad(&machine, path.c_str()), 0) << size << " bytes";
    use(machine);
  }
}

TEST(GarbageFile, OfZerosIsReadAsItStands) {
  // 248 bytes of zeros: no axes, no nodes, and every index names a node that is not there.
  CMachDef machine;
  ASSERT_TRUE(loads(machine, Bytes(248, '\0')));
  EXPECT_EQ(machine.getMachType(), MC_TT);
  EXPECT_FALSE(machine.isMetric());
  EXPECT_FALSE(machine.SG()[0]);
  EXPECT_FALSE(machine.is_valid());
}
