// Machines with trees of 200,000 nodes, deep and wide: loaded, walked, posed, cloned, scaled, saved and
// released, in seconds, and without the call stack.

#include <gtest/gtest.h>

#include "machdef/files/memory_stream.h"
#include "machdef/files/rich_machine.h"
#include "platform/scratch.h"
#include "scenegraph/small_stack.h"

using namespace k5ax_test;
using md::CMachDef;
using md::sg::node;
using NodePtr = boost::shared_ptr<node>;

namespace {

constexpr int kCount = 200000;

// Of the three kinds in turn; the slides' values are 1.
template <class ParentOf>
MachineRecord large_record(ParentOf parent_of) {
  MachineRecord record;
  record.nodes.reserve(kCount);
  for (int i = 0; i < kCount; ++i) {
    NodeRecord n = node_record(i % 3, parent_of(i), i, 0, 1, numbers_from(0));
    n.transform = {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};
    n.axis = axis_record(3, 1, 1, {1, 2, 3}, {1, 0, 0}, -1, 1);
    record.nodes.push_back(n);
  }
  record.roots[0] = 0;
  record.tool_node = 2;
  return record;
}

Bytes deep_bytes() {
  return pack(large_record([](int i) { return i - 1; }));
}

Bytes wide_bytes() {
  return pack(large_record([](int i) { return i == 0 ? -1 : 0; }));
}

// Children before their parents: the list upside down.
Bytes upside_down_bytes() {
  MachineRecord record = large_record([](int i) { return i == kCount - 1 ? -1 : i + 1; });
  record.roots[0] = kCount - 1;
  return pack(record);
}

void live(const Bytes& bytes) {
  CMachDef machine;
  load(machine, bytes);
  ASSERT_EQ(node::all_nodes(machine.SG()[0]).size(), std::size_t{kCount});
  EXPECT_SAME_BYTES(saved(machine), bytes);

  EXPECT_FALSE(machine.is_valid());  // it has trees and no axes
  UpdateNodeAxes_2(&machine, 0, 0, 0, 0, 0, 0);

  CMachDef clone;
  clone.clone(machine, 3);
  EXPECT_SAME_BYTES(saved(clone), bytes);

  clone.scale(false);
  int scaled = 0;
  for (const NodePtr& n : node::all_nodes(clone.SG()[0])) scaled += n->value() == 1 / 25.4;
  EXPECT_EQ(scaled, 66667);  // the axis nodes: 1, 4, 7, ... 199,999

  machine.copy(clone);
  machine.reset();
  EXPECT_FALSE(machine.SG()[0]);
}

}  // namespace

TEST(LargeMachine, DeepLivesOnTheOrdinaryStack) { live(deep_bytes()); }

TEST(LargeMachine, DeepLivesOnAStackOf256KiB) {
  on_small_stack([] { live(deep_bytes()); });
}

TEST(LargeMachine, WideLivesOnAStackOf256KiB) {
  on_small_stack([] { live(wide_bytes()); });
}

TEST(LargeMachine, UpsideDownIsLoadedAndSavedInOrder) {
  on_small_stack([] {
    CMachDef machine;
    load(machine, upside_down_bytes());
    const std::vector<NodePtr> nodes = node::all_nodes(machine.SG()[0]);
    ASSERT_EQ(nodes.size(), std::size_t{kCount});
    EXPECT_EQ(nodes.front()->id(), kCount - 1);
    EXPECT_EQ(nodes.back()->id(), 0);
    const MachineRecord record = unpack_machine(saved(machine));
    EXPECT_EQ(record.nodes[1].parent, 0);
    EXPECT_EQ(record.nodes[kCount - 1].parent, kCount - 2);
  });
}

TEST(LargeMachine, BrokenOffIsReleased) {
  on_small_stack([] {
    const Bytes bytes = deep_bytes();
    CMachDef machine;
    // Behind the nodes, and behind the roots: linked by then.
    EXPECT_THROW(load(machine, bytes.substr(0, bytes.size() - 24)), IIO::FileError);
    EXPECT_THROW(load(machine, bytes.substr(0, bytes.size() - 16)), IIO::FileError);
    EXPECT_TRUE(machine.SG()[0]);
  });
}

TEST(LargeMachine, IsReplacedByTheNextLoad) {
  on_small_stack([] {
    CMachDef machine;
    load(machine, deep_bytes());
    const boost::weak_ptr<node> watch = node::all_nodes(machine.SG()[0]).back();
    load(machine, rich_record());
    EXPECT_TRUE(watch.expired());
    EXPECT_SAME_BYTES(saved(machine), pack(rich_record()));
  });
}

TEST(LargeMachine, GoesThroughAFile) {
  const ScratchFolder folder;
  const std::string path = folder / "machine";
  const Bytes bytes = deep_bytes();
  make_file(path, bytes);
  CMachDef machine;
  ASSERT_EQ(MachdefLoad(&machine, path.c_str()), 1);
  ASSERT_EQ(MachdefSave(&machine, path.c_str()), 1);
  EXPECT_SAME_BYTES(contents(path), bytes);
}
