// Loads that break off: what has been read by then stays, the rest is as it was before.

#include <cstring>

#include <gtest/gtest.h>

#include "machdef/files/memory_stream.h"
#include "machdef/files/rich_machine.h"

using namespace k5ax_test;
using Geometry::TPoint;
using md::CMachDef;
using md::sg::node;
using NodePtr = boost::shared_ptr<node>;

namespace {

// A machine that differs from the rich one in every field that stands outside the trees, and has trees of its
// own.
MachineRecord former_record() {
  MachineRecord m;
  m.type = 2;
  m.mode = 33;
  m.metric = 1;
  m.loading_vector = {1001, 1002, 1003};
  m.work_zero = {1004, 1005, 1006};
  m.head.length1 = 1007;
  m.head.flags = 64;
  for (std::size_t i = 0; i < 5; ++i) {
    const double x = 1010 + static_cast<double>(i);
    m.axes[i] = {1, axis_record(0, 0, 0, {x, x, x}, {1, 0, 0}, -x, x)};
  }
  m.nodes.push_back(node_record(kAxis, -1, 801, 0, 0, numbers_from(1)));
  m.nodes.push_back(node_record(kTool, 0, 802, 0, 0, numbers_from(1)));
  m.nodes.push_back(node_record(kAxis, -1, 803, 0, 0, numbers_from(1)));
  m.roots = {0, 2};
  m.rotary_nodes = {0, 2};
  m.tool_node = 1;
  m.discipline = 9;
  return m;
}

// The former machine after a load of the rich record broke off behind `length` bytes.
struct BrokenOff {
  CMachDef machine;

  explicit BrokenOff(std::size_t length) {
    load(machine, former_record());
    EXPECT_THROW(load(machine, pack(rich_record()).substr(0, length)), IIO::FileError);
  }
};

// What the machine then must be saved as: the former record, with these changes.
template <class Change>
void expect_after(std::size_t length, Change change) {
  BrokenOff broken(length);
  MachineRecord expected = former_record();
  change(expected, rich_record());
  EXPECT_SAME_BYTES(saved(broken.machine), pack(expected)) << "broken off behind " << length << " bytes";
}

void take_up_to_head(MachineRecord& to, const MachineRecord& from) {
  to.type = from.type;
  to.mode = from.mode;
  to.metric = from.metric;
  to.loading_vector = from.loading_vector;
  to.work_zero = from.work_zero;
  to.head = from.head;
}

void take_up_to_axes(MachineRecord& to, const MachineRecord& from) {
  take_up_to_head(to, from);
  to.axes = from.axes;
}

}  // namespace

TEST(BrokenOffLoad, WithNothingReadChangesNothing) {
  expect_after(0, [](MachineRecord&, const MachineRecord&) {});
}

TEST(BrokenOffLoad, InTheVersionChangesNothing) {
  expect_after(3, [](MachineRecord&, const MachineRecord&) {});
}

TEST(BrokenOffLoad, BehindTheVersionChangesNothing) {
  expect_after(4, [](MachineRecord&, const MachineRecord&) {});
}

TEST(BrokenOffLoad, BehindTheTypeHasTheType) {
  expect_after(8, [](MachineRecord& to, const MachineRecord& from) { to.type = from.type; });
}

TEST(BrokenOffLoad, BehindTheModeHasTheMode) {
  expect_after(12, [](MachineRecord& to, const MachineRecord& from) {
    to.type = from.type;
    to.mode = from.mode;
  });
}

TEST(BrokenOffLoad, BehindTheUnitsHasTheUnits) {
  expect_after(16, [](MachineRecord& to, const MachineRecord& from) {
    to.type = from.type;
    to.mode = from.mode;
    to.metric = from.metric;
  });
}

TEST(BrokenOffLoad, BehindTheLoadingVectorHasIt) {
  expect_after(40, [](MachineRecord& to, const MachineRecord& from) {
    to.type = from.type;
    to.mode = from.mode;
    to.metric = from.metric;
    to.loading_vector = from.loading_vector;
  });
}

TEST(BrokenOffLoad, BehindTheWorkZeroHasIt) {
  expect_after(64, [](MachineRecord& to, const MachineRecord& from) {
    take_up_to_head(to, from);
    to.head = former_record().head;
  });
}

TEST(BrokenOffLoad, BehindTheHeadHasIt) { expect_after(200, take_up_to_head); }

// An axis takes the place of the former one only when its whole record was read.
TEST(BrokenOffLoad, InsideAnAxisKeepsTheFormerOne) {
  for (const std::size_t length : {204u, 208u, 232u, 256u, 264u, 272u, 276u, 280u, 283u}) {
    expect_after(length, take_up_to_head);
  }
}

TEST(BrokenOffLoad, BehindAnAxisHasIt) {
  expect_after(284, [](MachineRecord& to, const MachineRecord& from) {
    take_up_to_head(to, from);
    to.axes[0] = from.axes[0];
  });
}

TEST(BrokenOffLoad, BehindEachFurtherAxisHasThatToo) {
  for (std::size_t axis = 1; axis < 5; ++axis) {
    expect_after(284 + 84 * axis, [axis](MachineRecord& to, const MachineRecord& from) {
      take_up_to_head(to, from);
      for (std::size_t i = 0; i <= axis; ++i) to.axes[i] = from.axes[i];
    });
  }
}

TEST(BrokenOffLoad, BehindTheNodeCountKeepsTheFormerTrees) { expect_after(624, take_up_to_axes); }

TEST(BrokenOffLoad, AmongTheNodesKeepsTheFormerTrees) {
  for (const std::size_t length : {628u, 744u, 944u, 1200u, 1300u, 1400u, 2239u})
    expect_after(length, take_up_to_axes);
}

TEST(BrokenOffLoad, BehindTheNodesKeepsTheFormerTrees) { expect_after(2240, take_up_to_axes); }

TEST(BrokenOffLoad, BehindTheFirstRootHasThatTree) {
  BrokenOff broken(2244);
  EXPECT_EQ(node::all_nodes(broken.machine.SG()[0]).size(), 5u);
  ASSERT_TRUE(broken.machine.SG()[1]);
  EXPECT_EQ(broken.machine.SG()[1]->id(), 803);
  EXPECT_EQ(static_cast<int>(broken.machine.discipline()), 9);
}

TEST(BrokenOffLoad, BehindBothRootsHasBothTreesAndTheFormerPointers) {
  BrokenOff broken(2248);
  EXPECT_EQ(node::all_nodes(broken.machine.SG()[0]).size(), 5u);
  EXPECT_EQ(node::all_nodes(broken.machine.SG()[1]).size(), 4u);
  EXPECT_EQ(broken.machine.SG_RotAxs()[0]->id(), 801);
  EXPECT_EQ(broken.machine.SG_RotAxs()[1]->id(), 803);
  EXPECT_EQ(broken.machine.tool_node()->id(), 802);
}

TEST(BrokenOffLoad, BehindTheRotaryNodesHasThem) {
  BrokenOff broken(2256);
  EXPECT_EQ(broken.machine.SG_RotAxs()[0]->id(), 4);
  EXPECT_EQ(broken.machine.SG_RotAxs()[1]->id(), 5);
  EXPECT_EQ(broken.machine.tool_node()->id(), 802);
}

TEST(BrokenOffLoad, BehindTheToolNodeLacksTheDisciplineOnly) {
  BrokenOff broken(2260);
  EXPECT_EQ(broken.machine.tool_node()->id(), 9);
  EXPECT_EQ(static_cast<int>(broken.machine.discipline()), 9);
}

TEST(BrokenOffLoad, LeavesAMachineThatCanBeLoadedAgain) {
  int tried = 0;
  for (std::size_t length = 0; length < 2264; length += 4) {
    BrokenOff broken(length);
    load(broken.machine, rich_record());
    ASSERT_SAME_BYTES(saved(broken.machine), pack(rich_record()))
        << "broken off behind " << length << " bytes";
    ++tried;
  }
  EXPECT_EQ(tried, 566);
}

TEST(BrokenOffLoad, LeavesAMachineThatCanBeResetAndCloned) {
  for (std::size_t length = 0; length < 2264; length += 4) {
    BrokenOff broken(length);
    CMachDef clone;
    clone.clone(broken.machine, 3);
    broken.machine.reset();
    ASSERT_FALSE(broken.machine.SG()[0]) << length;
  }
}

TEST(BrokenOffLoad, OfAnAxisChangesNothingInIt) {
  const AxisRecord former = axis_record(1, 1, 0, {1, 2, 3}, {4, 5, 6}, -4, 5);
  const Bytes other = pack(axis_record(5, 0, 1, {7, 8, 9}, {0, 0, 1}, -70, 80));
  for (std::size_t length = 0; length < other.size(); ++length) {
    const auto axis = md::CAxis2::create();
    MemoryStream first(pack(former));
    axis->serialize(first);
    MemoryStream second(other.substr(0, length));
    ASSERT_THROW(axis->serialize(second), IIO::FileError) << length;
    MemoryStream out;
    axis->serialize(out);
    ASSERT_SAME_BYTES(out.bytes(), pack(former)) << length;
  }
}

// Unknown kinds and cycles are damage like any other: the machine keeps what stood before them.
TEST(RefusedLoad, HasWhatStoodBeforeTheNodes) {
  MachineRecord record = rich_record();
  record.nodes[4].kind = 3;
  CMachDef machine;
  load(machine, former_record());
  EXPECT_THROW(load(machine, record), std::runtime_error);
  MachineRecord expected = former_record();
  take_up_to_axes(expected, record);
  EXPECT_SAME_BYTES(saved(machine), pack(expected));
}

TEST(RefusedLoad, OfACycleKeepsTheFormerTrees) {
  MachineRecord record = rich_record();
  record.nodes[1].parent = 3;
  CMachDef machine;
  load(machine, former_record());
  EXPECT_THROW(load(machine, record), std::runtime_error);
  MachineRecord expected = former_record();
  take_up_to_axes(expected, record);
  EXPECT_SAME_BYTES(saved(machine), pack(expected));
}

// A stream that delivers nothing and says nothing: an int that does not come is -1, and only a 0 is an empty
// slot.
TEST(SilentStreamEnd, BeforeTheFirstByteGivesFiveAxesWithoutALetterAndNoNodes) {
  CMachDef machine;
  SilentStream stream("");
  machine.serialize(stream);
  MachineRecord expected;
  expected.discipline = -1;
  for (AxisSlot& slot : expected.axes) slot.present = 1;
  EXPECT_SAME_BYTES(saved(machine), pack(expected));
}

TEST(SilentStreamEnd, LeavesTheHeadAsItWas) {
  CMachDef machine;
  machine.head().length1 = 55;
  SilentStream stream("");
  machine.serialize(stream);
  EXPECT_EQ(machine.head().length1, 55);
}

TEST(SilentStreamEnd, BehindTheNodesGivesNoTrees) {
  CMachDef machine;
  SilentStream stream(pack(rich_record()).substr(0, 2240));
  machine.serialize(stream);
  EXPECT_FALSE(machine.SG()[0]);
  EXPECT_FALSE(machine.SG()[1]);
  EXPECT_FALSE(machine.tool_node());
}

TEST(SilentStreamEnd, AmongTheNodesIsRefused) {
  // The kind that does not come is -1.
  CMachDef machine;
  SilentStream stream(pack(rich_record()).substr(0, 744));
  EXPECT_THROW(machine.serialize(stream), std::runtime_error);
}

TEST(SilentStreamEnd, InAnAxisGivesZeroAndMinusOneForTheRest) {
  // The record ends behind the base point.
  SilentStream stream(pack(axis_record(1, 1, 0, {1, 2, 3}, {4, 5, 6}, -4, 5)).substr(0, 28));
  const auto axis = md::CAxis2::create();
  axis->SetMin(17);
  axis->SetAxisVector({1, 1, 1});
  axis->serialize(stream);
  MemoryStream out;
  axis->serialize(out);
  EXPECT_SAME_BYTES(out.bytes(), pack(axis_record(-1, -1, -1, {1, 2, 3}, {0, 0, 0}, 0, 0)));
}

// Also within a number: the bytes that come stand before those of -1 and 0.
TEST(SilentStreamEnd, AtEveryByteOfAnAxisLeavesTheBytesOfZeroAndMinusOne) {
  const Bytes whole = pack(axis_record(1, 1, 0, {1.1, 2.2, 3.3}, {4.4, 5.5, 6.6}, -4.7, 5.8));
  const Bytes nothing = pack(axis_record(-1, -1, -1, {0, 0, 0}, {0, 0, 0}, 0, 0));
  ASSERT_EQ(whole.size(), 80u);
  int checked = 0;
  for (std::size_t length = 0; length <= whole.size(); ++length, ++checked) {
    SilentStream stream(whole.substr(0, length));
    const auto axis = md::CAxis2::create();
    axis->serialize(stream);
    MemoryStream out;
    axis->serialize(out);
    Bytes expected = whole.substr(0, length) + nothing.substr(length);
    expected.replace(0, 4, whole.substr(0, 4));  // the version is what is written, whatever was read
    ASSERT_SAME_BYTES(out.bytes(), expected) << length;
  }
  EXPECT_EQ(checked, 81);
}

TEST(SilentGap, UpToTheEndOfANodeLeavesTheBytesOfZeroAndMinusOne) {
  MachineRecord record;
  record.nodes.push_back(node_record(kPlain, -1, 801, 0x01020304u, 7.7, numbers_from(1.5)));
  record.roots = {0, -1};
  const Bytes whole = pack(record);
  MachineRecord without = record;
  without.nodes[0] = node_record(kPlain, -1, -1, 0, 0, {});
  const Bytes nothing = pack(without);
  ASSERT_EQ(nothing.size(), whole.size());
  // A head, five empty slots and the count stand before the node; its kind comes first.
  const std::size_t node_begin = 200 + 5 * 4 + 4;
  const std::size_t node_end = node_begin + 120;
  int checked = 0;
  for (std::size_t gap = node_begin + 4; gap <= node_end; ++gap, ++checked) {
    GappyStream stream(whole, gap, node_end);
    CMachDef machine;
    machine.serialize(stream);
    const Bytes expected =
        whole.substr(0, gap) + nothing.substr(gap, node_end - gap) + whole.substr(node_end);
    ASSERT_SAME_BYTES(saved(machine), expected) << gap;
  }
  EXPECT_EQ(checked, 117);
}

TEST(SilentStreamEnd, AnywhereNeverCrashes) {
  const Bytes bytes = pack(rich_record());
  int refused = 0;
  int loaded = 0;
  for (std::size_t length = 0; length <= bytes.size(); ++length) {
    CMachDef machine;
    SilentStream stream(bytes.substr(0, length));
    try {
      machine.serialize(stream);
      ++loaded;
    } catch (const std::runtime_error&) {
      ++refused;
    }
    CMachDef clone;
    clone.clone(machine, 3);
  }
  EXPECT_GT(refused, 1000);
  EXPECT_GT(loaded, 600);
}

// An exception of the host's own passes through serialize as it is, at whichever call it is thrown.
TEST(HostsException, PassesThroughReading) {
  const Bytes bytes = pack(rich_record());
  MemoryStream counting(bytes);
  CMachDef counted;
  counted.serialize(counting);
  const int calls = static_cast<int>(counting.sizes.size());
  ASSERT_GT(calls, 9 + 5);  // each node and each axis is one at least
  for (int allowed = 0; allowed < calls; ++allowed) {
    CMachDef machine;
    BreakingStream stream(bytes, allowed);
    int number = 0;
    try {
      machine.serialize(stream);
    } catch (const HostsOwnError& error) {
      number = error.number;
    }
    ASSERT_EQ(number, 42) << "behind " << allowed << " calls";
  }
}

TEST(HostsException, PassesThroughWriting) {
  CMachDef machine;
  make_rich(machine);
  MemoryStream counting;
  machine.serialize(counting);
  const int calls = static_cast<int>(counting.sizes.size());
  ASSERT_GT(calls, 100);
  for (int allowed = 0; allowed < calls; ++allowed) {
    BreakingStream stream(allowed);
    int number = 0;
    try {
      machine.serialize(stream);
    } catch (const HostsOwnError& error) {
      number = error.number;
    }
    ASSERT_EQ(number, 42) << "behind " << allowed << " calls";
  }
  EXPECT_SAME_BYTES(saved(machine), pack(rich_record()));
}

TEST(HostsException, PassesThroughAnAxis) {
  const auto axis = md::CAxis2::create();
  BreakingStream stream(3);
  EXPECT_THROW(axis->serialize(stream), HostsOwnError);
}
