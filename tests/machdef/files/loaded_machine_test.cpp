// What bytes become: each field in its place, and what a reader passes over, replaces or leaves alone.

#include <cstring>
#include <limits>

#include <gtest/gtest.h>

#include "machdef/files/memory_stream.h"
#include "machdef/files/rich_machine.h"
#include "support/near.h"
#include "support/numbers.h"
#include "support/pools.h"

using namespace k5ax_test;
using Geometry::TPoint;
using md::CMachDef;
using md::sg::node;
using NodePtr = boost::shared_ptr<node>;

namespace {

std::vector<int> ids(const std::vector<NodePtr>& nodes) {
  std::vector<int> result;
  for (const NodePtr& n : nodes) result.push_back(n->id());
  return result;
}

std::vector<int> tree_ids(const CMachDef& machine, std::size_t tree) {
  return ids(node::all_nodes(machine.SG()[tree]));
}

struct LoadedRich : testing::Test {
  CMachDef machine;
  std::vector<NodePtr> nodes;  // in the order of the file

  LoadedRich() {
    load(machine, rich_record());
    nodes = node::all_nodes(machine.SG()[0]);
    for (const NodePtr& n : node::all_nodes(machine.SG()[1])) nodes.push_back(n);
  }

  static void expect_axis(const md::CAxis2& axis, const AxisRecord& expected) {
    EXPECT_EQ(axis.GetBaseVector(), (TPoint<double>(expected.base[0], expected.base[1], expected.base[2])));
    EXPECT_EQ(axis.GetAxisVector(),
              (TPoint<double>(expected.vector[0], expected.vector[1], expected.vector[2])));
    EXPECT_EQ(axis.GetMin(), expected.min);
    EXPECT_EQ(axis.GetMax(), expected.max);
    EXPECT_EQ(axis.GetAxis(), expected.type);
    EXPECT_EQ(axis.GetAxisLocation(), expected.location);
    EXPECT_EQ(axis.mode(), expected.mode);
  }
};

// An address to tell owners apart by. Nothing may read through it.
CMachDef* nobody() {
  static char place;
  return reinterpret_cast<CMachDef*>(&place);
}

}  // namespace

TEST_F(LoadedRich, HasTypeModeUnitsAndDiscipline) {
  EXPECT_EQ(machine.getMachType(), MC_HT);
  EXPECT_EQ(static_cast<int>(machine.get_mode()), 77);
  EXPECT_FALSE(machine.isMetric());
  EXPECT_EQ(static_cast<int>(machine.discipline()), -5);
}

TEST_F(LoadedRich, HasTheLoadingVector) {
  EXPECT_EQ(machine.loading_vector(), (TPoint<double>(1.5, -2.5, 3.5)));
}

TEST_F(LoadedRich, HasTheWorkZero) { EXPECT_EQ(machine.mwZeroPos(), (TPoint<double>(-4.25, 5.25, -6.25))); }

TEST_F(LoadedRich, HasTheHead) {
  const angled_head& head = machine.head();
  EXPECT_EQ(head.b_angle, 0.125);
  EXPECT_EQ(head.c_angle, -0.25);
  EXPECT_EQ(head.length1, 3.75);
  EXPECT_EQ(head.length2, 2.125);
  EXPECT_EQ(head.tip, (TPoint<double>(0.5, 0.75, 5.875)));
  EXPECT_EQ(head.tool_dir, (TPoint<double>(0.28, 0, 0.96)));
  EXPECT_EQ(head.ref_dir, (TPoint<double>(0.96, 0, -0.28)));
  EXPECT_EQ(head.offset, (TPoint<double>(7.5, 8.5, 9.5)));
  EXPECT_EQ(head.flags, 0x80000004u);
}

TEST_F(LoadedRich, HasTheFiveAxes) {
  const MachineRecord record = rich_record();
  ASSERT_TRUE(machine.getPrimary() && machine.getSecondary());
  expect_axis(*machine.getPrimary(), record.axes[0].axis);
  expect_axis(*machine.getSecondary(), record.axes[1].axis);
  for (std::size_t i = 0; i < 3; ++i) {
    ASSERT_TRUE(machine.xyz_axes()[i]);
    expect_axis(*machine.xyz_axes()[i], record.axes[2 + i].axis);
  }
}

TEST_F(LoadedRich, HasTheTwoTrees) {
  EXPECT_EQ(tree_ids(machine, 0), (std::vector<int>{-999, 3, 5, 9, 20}));
  EXPECT_EQ(tree_ids(machine, 1), (std::vector<int>{4, -999, 1, 2}));
}

TEST_F(LoadedRich, HasTheParentLinks) {
  ASSERT_EQ(nodes.size(), 9u);
  EXPECT_FALSE(nodes[0]->parent());
  EXPECT_EQ(nodes[1]->parent(), nodes[0]);
  EXPECT_EQ(nodes[2]->parent(), nodes[1]);
  EXPECT_EQ(nodes[3]->parent(), nodes[2]);
  EXPECT_EQ(nodes[4]->parent(), nodes[0]);
  EXPECT_FALSE(nodes[5]->parent());
  EXPECT_EQ(nodes[6]->parent(), nodes[5]);
  EXPECT_EQ(nodes[7]->parent(), nodes[6]);
  EXPECT_EQ(nodes[8]->parent(), nodes[7]);
}

TEST_F(LoadedRich, HasEachNodesFlagsValueAndTransform) {
  const MachineRecord record = rich_record();
  ASSERT_EQ(nodes.size(), record.nodes.size());
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    EXPECT_EQ(nodes[i]->flags(), record.nodes[i].flags) << "node " << i;
    EXPECT_EQ(nodes[i]->value(), record.nodes[i].value) << "node " << i;
    EXPECT_EQ(components(nodes[i]->transform()), record.nodes[i].transform) << "node " << i;
  }
}

TEST_F(LoadedRich, HasEachNodesKindAndAxis) {
  const MachineRecord record = rich_record();
  ASSERT_EQ(nodes.size(), record.nodes.size());
  int axes = 0;
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const md::sg::tnode<md::CAxis2>* axis = md::sg::axis_node(nodes[i].get());
    ASSERT_EQ(axis != nullptr, record.nodes[i].kind == kAxis) << "node " << i;
    ASSERT_EQ(md::sg::tool_node(nodes[i].get()) != nullptr, record.nodes[i].kind == kTool) << "node " << i;
    if (axis == nullptr) continue;
    expect_axis(*axis, record.nodes[i].axis);
    ++axes;
  }
  EXPECT_EQ(axes, 5);
}

TEST_F(LoadedRich, HasTheToolNodesHead) {
  ASSERT_TRUE(machine.tool_node());
  EXPECT_EQ(machine.tool_node(), nodes[3]);
  const angled_head& head = machine.tool_node()->payload();
  EXPECT_EQ(head.b_angle, 0.375);
  EXPECT_EQ(head.c_angle, -0.5);
  EXPECT_EQ(head.length1, 1.125);
  EXPECT_EQ(head.length2, 1.25);
  EXPECT_EQ(head.tip, (TPoint<double>(1.375, 1.5, 1.625)));
  EXPECT_EQ(head.tool_dir, (TPoint<double>(0.6, 0, 0.8)));
  EXPECT_EQ(head.ref_dir, (TPoint<double>(0.8, 0, -0.6)));
  EXPECT_EQ(head.offset, (TPoint<double>(2.125, 2.25, 2.375)));
  EXPECT_EQ(head.flags, 0x20000001u);
}

TEST_F(LoadedRich, HasTheRotaryNodes) {
  EXPECT_EQ(machine.SG_RotAxs()[0], nodes[5]);
  EXPECT_EQ(machine.SG_RotAxs()[1], nodes[2]);
}

TEST_F(LoadedRich, IsSavedByteForByteAsItWas) { EXPECT_SAME_BYTES(saved(machine), pack(rich_record())); }

// A machine that the tests of the kinematics would accept: what is loaded is no mere container.
TEST_F(LoadedRich, IsValid) { EXPECT_TRUE(machine.is_valid()); }

TEST(LoadedFresh, IsSavedByteForByteAsItWas) {
  CMachDef machine;
  load(machine, MachineRecord());
  EXPECT_SAME_BYTES(saved(machine), pack(MachineRecord()));
}

TEST(LoadedFresh, HasNoAxesAndNoTrees) {
  CMachDef machine;
  load(machine, MachineRecord());
  EXPECT_FALSE(machine.getPrimary());
  EXPECT_FALSE(machine.getSecondary());
  for (const auto& axis : machine.xyz_axes()) EXPECT_FALSE(axis);
  for (const NodePtr& root : machine.SG()) EXPECT_FALSE(root);
  for (const NodePtr& rotary : machine.SG_RotAxs()) EXPECT_FALSE(rotary);
  EXPECT_FALSE(machine.tool_node());
}

// There is one layout, and it is read whatever number stands in front of it.
TEST(LoadRules, VersionOfTheMachineIsIgnored) {
  for (const int version : {7, 0, -1, 2, kIntMax, kIntMin}) {
    MachineRecord record = rich_record();
    record.version = version;
    CMachDef machine;
    load(machine, record);
    EXPECT_SAME_BYTES(saved(machine), pack(rich_record())) << "version " << version;
  }
}

TEST(LoadRules, VersionOfAnAxisIsIgnored) {
  MachineRecord record = rich_record();
  record.axes[0].axis.version = 7;
  record.nodes[1].axis.version = -3;
  CMachDef machine;
  load(machine, record);
  EXPECT_SAME_BYTES(saved(machine), pack(rich_record()));
}

TEST(LoadRules, AnyPresentFlagButZeroMeansAnAxis) {
  for (const int present : {2, -1, 256, 65536, kIntMax, kIntMin}) {
    MachineRecord record = rich_record();
    for (AxisSlot& slot : record.axes) slot.present = present;
    CMachDef machine;
    load(machine, record);
    EXPECT_SAME_BYTES(saved(machine), pack(rich_record())) << "present " << present;
  }
}

TEST(LoadRules, AnyMetricFlagButZeroMeansMetric) {
  for (const int metric : {2, -1, 256, 65536, kIntMax, kIntMin}) {
    MachineRecord record;
    record.metric = metric;
    CMachDef machine;
    machine.setMetric(false);
    load(machine, record);
    EXPECT_TRUE(machine.isMetric()) << "metric " << metric;
  }
}

TEST(LoadRules, MetricFlagZeroMeansInches) {
  MachineRecord record;
  record.metric = 0;
  CMachDef machine;
  load(machine, record);
  EXPECT_FALSE(machine.isMetric());
}

TEST(LoadRules, EnumsAreKeptWhateverTheyAre) {
  MachineRecord record = rich_record();
  record.type = 99;
  record.mode = kIntMin;
  record.discipline = kIntMax;
  record.axes[0].axis.type = 1000;
  record.axes[0].axis.location = -77;
  record.axes[0].axis.mode = kIntMax;
  record.nodes[1].axis.type = -5;
  CMachDef machine;
  load(machine, record);
  EXPECT_EQ(static_cast<int>(machine.getMachType()), 99);
  EXPECT_EQ(static_cast<int>(machine.getPrimary()->GetAxis()), 1000);
  EXPECT_SAME_BYTES(saved(machine), pack(record));
}

// What a host stored with a setter comes back as it stood; is_valid and the rest say what is usable.
TEST(LoadRules, DirectionOfAnAxisIsNotNormalised) {
  MachineRecord record = rich_record();
  record.axes[0].axis.vector = {3, 4, 0};
  record.axes[1].axis.vector = {0, 0, 0};
  record.nodes[1].axis.vector = {0, -7, 0};
  CMachDef machine;
  load(machine, record);
  EXPECT_EQ(machine.getPrimary()->GetAxisVector(), (TPoint<double>(3, 4, 0)));
  EXPECT_EQ(machine.getSecondary()->GetAxisVector(), (TPoint<double>(0, 0, 0)));
  EXPECT_SAME_BYTES(saved(machine), pack(record));
}

TEST(LoadRules, NumbersThatAreNoneAreKeptBitForBit) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  MachineRecord record = rich_record();
  record.loading_vector = {nan, infinity, -infinity};
  record.head.length1 = nan;
  record.axes[0].axis.min = -0.0;
  record.axes[0].axis.max = 5e-324;
  record.nodes[0].value = nan;
  record.nodes[0].transform[4] = infinity;
  CMachDef machine;
  load(machine, record);
  EXPECT_SAME_BYTES(saved(machine), pack(record));
}

TEST(LoadRules, PaddingOfBothKindsOfHeadIsKept) {
  MachineRecord record = rich_record();
  record.head.padding = {0x11, 0x22, 0x33, 0x44};
  record.nodes[3].head.padding = {0xaa, 0xbb, 0xcc, 0xdd};
  CMachDef machine;
  load(machine, record);
  EXPECT_SAME_BYTES(saved(machine), pack(record));
}

TEST(LoadRules, PaddingOfBothKindsOfHeadIsClonedToo) {
  MachineRecord record = rich_record();
  record.head.padding = {0x11, 0x22, 0x33, 0x44};
  record.nodes[3].head.padding = {0xaa, 0xbb, 0xcc, 0xdd};
  CMachDef machine;
  load(machine, record);
  CMachDef clone;
  clone.clone(machine, 3);
  EXPECT_SAME_BYTES(saved(clone), pack(record));
}

TEST(LoadRules, TrailingBytesAreLeftInTheStream) {
  const Bytes record = pack(rich_record());
  MemoryStream stream(record + "what follows");
  CMachDef machine;
  machine.serialize(stream);
  EXPECT_EQ(stream.position(), record.size());
  EXPECT_SAME_BYTES(saved(machine), record);
}

TEST(LoadRules, RecordIsReadFromWhereTheStreamStands) {
  MemoryStream stream("before" + pack(rich_record()));
  char before[6];
  stream.Read(before, sizeof before);
  CMachDef machine;
  machine.serialize(stream);
  EXPECT_SAME_BYTES(saved(machine), pack(rich_record()));
}

TEST(LoadRules, AnyModeButWritingReads) {
  for (const int mode : {0, 2, -1}) {
    MemoryStream stream(pack(rich_record()), static_cast<IIO::FILE_MODE>(mode));
    CMachDef machine;
    machine.serialize(stream);
    EXPECT_SAME_BYTES(saved(machine), pack(rich_record())) << "mode " << mode;
  }
}

// What stands outside the records is replaced as it comes, so it is asked for value by value. A node comes
// with all that every kind of node has.
TEST(LoadRules, ValuesAreAskedForOneByOneAndNodesAsBlocks) {
  MemoryStream stream(pack(record_of_parents({-1})));
  CMachDef machine;
  machine.serialize(stream);
  std::vector<std::size_t> expected = {4, 4, 4, 4, 8, 8, 8, 8, 8, 8, 136, 4, 4, 4, 4, 4, 4};
  expected.push_back(4 + 4 + 4 + 4 + 8 + 96);
  expected.insert(expected.end(), {4, 4, 4, 4, 4, 4});
  EXPECT_EQ(stream.sizes, expected);
}

TEST(LoadAxes, FromAFreshAxisHaveNoOwner) {
  empty_pools();
  CMachDef machine;
  load(machine, rich_record());
  EXPECT_EQ(machine.getPrimary()->machdef(), nullptr);
  EXPECT_EQ(machine.xyz_axes()[2]->machdef(), nullptr);
}

// The owner is no part of a file, and loading sets none: an axis keeps what it had in the pool until somebody
// gives it to a machine by clone or copy.
TEST(LoadAxes, FromAParkedAxisKeepThatAxissOwner) {
  boost::shared_ptr<md::CAxis2> parked = md::CAxis2::create();
  md::CAxis2* const address = parked.get();
  parked->machdef(nobody());
  md::CAxis2::free(parked);
  CMachDef machine;
  load(machine, rich_record());
  ASSERT_EQ(machine.getPrimary().get(), address);
  EXPECT_EQ(machine.getPrimary()->machdef(), nobody());
  machine.getPrimary()->machdef(nullptr);
}

TEST(LoadAxes, OfAxisNodesKeepTheOwnerOfTheParkedNode) {
  auto parked = md::NodeAxis_Create();
  node* const address = parked.get();
  parked->machdef(nobody());
  md::NodeAxis_Free(parked);
  CMachDef machine;
  load(machine, rich_record());
  const NodePtr z = node::all_nodes(machine.SG()[0])[1];
  ASSERT_EQ(z.get(), address);
  EXPECT_EQ(md::sg::axis_node(z.get())->machdef(), nobody());
  md::sg::axis_node(z.get())->machdef(nullptr);
}

TEST(LoadAxes, GetTheirOwnerByAClone) {
  CMachDef machine;
  load(machine, rich_record());
  CMachDef clone;
  clone.clone(machine, 3);
  EXPECT_EQ(clone.getPrimary()->machdef(), &clone);
  EXPECT_EQ(md::sg::axis_node(clone.SG_RotAxs()[0].get())->machdef(), &clone);
}

TEST(LoadNodes, FromParkedNodesStartWithoutTheirRemains) {
  const NodePtr old_parent = node::create();
  NodePtr plain = node::create();
  auto axis = md::NodeAxis_Create();
  auto tool = md::TOOL_NODE_Create();
  for (const NodePtr& n : {old_parent, plain, NodePtr(axis), NodePtr(tool)}) n->reset();
  const NodePtr old_child = node::create();
  old_child->reset();
  old_parent->add_child(plain);
  plain->add_child(axis);
  axis->add_child(tool);
  tool->add_child(old_child);
  node* const addresses[] = {plain.get(), axis.get(), tool.get()};
  node::free(plain);
  md::NodeAxis_Free(axis);
  md::TOOL_NODE_Free(tool);

  MachineRecord record = record_of_parents({-1, -1, -1});
  record.nodes[1].kind = kAxis;
  record.nodes[2].kind = kTool;
  record.roots = {0, 1};
  record.tool_node = 2;
  CMachDef machine;
  load(machine, record);

  const NodePtr loaded[] = {machine.SG()[0], machine.SG()[1], machine.tool_node()};
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(loaded[i].get(), addresses[i]) << "node " << i;
    EXPECT_TRUE(loaded[i]->children().empty()) << "node " << i;
    EXPECT_FALSE(loaded[i]->parent()) << "node " << i;
  }
}

TEST(LoadNodes, ChildrenStandInTheOrderOfTheirRecords) {
  CMachDef machine;
  load(machine, record_of_parents({-1, 0, 0, 1, 0, 1}));
  EXPECT_EQ(tree_ids(machine, 0), (std::vector<int>{0, 1, 3, 5, 2, 4}));
}

// Our own writer puts a node after its parent; a reader does not insist.
TEST(LoadNodes, ParentMayComeAfterItsChildren) {
  MachineRecord record = record_of_parents({2, 2, -1, 0});
  record.roots[0] = 2;
  CMachDef machine;
  load(machine, record);
  EXPECT_EQ(tree_ids(machine, 0), (std::vector<int>{2, 0, 3, 1}));
}

TEST(LoadNodes, ParentIndexOutsideTheListMeansNone) {
  for (const int parent : {-1, -2, 3, 4, 1000, kIntMax, kIntMin}) {
    MachineRecord record = record_of_parents({-1, 0, parent});
    record.roots[1] = 2;
    CMachDef machine;
    load(machine, record);
    ASSERT_TRUE(machine.SG()[1]) << "parent " << parent;
    EXPECT_EQ(machine.SG()[1]->id(), 2);
    EXPECT_FALSE(machine.SG()[1]->parent()) << "parent " << parent;
    EXPECT_EQ(tree_ids(machine, 0), (std::vector<int>{0, 1})) << "parent " << parent;
  }
}

TEST(LoadNodes, RootIndexOutsideTheListGivesAnEmptyTree) {
  for (const int root : {-1, -2, 2, 3, kIntMax, kIntMin}) {
    MachineRecord record = record_of_parents({-1, 0});
    record.roots = {root, 0};
    CMachDef machine;
    load(machine, record);
    EXPECT_FALSE(machine.SG()[0]) << "root " << root;
    EXPECT_EQ(tree_ids(machine, 1), (std::vector<int>{0, 1}));

    record.roots = {0, root};
    CMachDef other;
    load(other, record);
    EXPECT_FALSE(other.SG()[1]) << "root " << root;
  }
}

TEST(LoadNodes, RotaryNodeIndexOutsideTheListGivesNone) {
  for (const int index : {-1, -2, 9, 10, kIntMax, kIntMin}) {
    MachineRecord record = rich_record();
    record.rotary_nodes = {index, index};
    CMachDef machine;
    load(machine, record);
    EXPECT_FALSE(machine.SG_RotAxs()[0]) << "index " << index;
    EXPECT_FALSE(machine.SG_RotAxs()[1]) << "index " << index;
  }
}

TEST(LoadNodes, ToolNodeIndexOutsideTheListGivesNone) {
  for (const int index : {-1, -2, 9, 10, kIntMax, kIntMin}) {
    MachineRecord record = rich_record();
    record.tool_node = index;
    CMachDef machine;
    load(machine, record);
    EXPECT_FALSE(machine.tool_node()) << "index " << index;
  }
}

// The pointer is one to a tool node; a plain node or an axis node in its place is none.
TEST(LoadNodes, ToolNodeIndexOfAnotherKindGivesNone) {
  for (const int index : {0, 1, 5, 8}) {
    MachineRecord record = rich_record();
    record.tool_node = index;
    CMachDef machine;
    load(machine, record);
    EXPECT_FALSE(machine.tool_node()) << "index " << index;
    record.tool_node = -1;
    EXPECT_SAME_BYTES(saved(machine), pack(record)) << "index " << index;
  }
}

TEST(LoadNodes, RotaryNodeMayBeOfAnyKind) {
  MachineRecord record = rich_record();
  record.rotary_nodes = {0, 3};
  CMachDef machine;
  load(machine, record);
  ASSERT_TRUE(machine.SG_RotAxs()[0] && machine.SG_RotAxs()[1]);
  EXPECT_EQ(machine.SG_RotAxs()[0]->id(), -999);
  EXPECT_EQ(machine.SG_RotAxs()[1]->id(), 9);
}

TEST(LoadNodes, AllIndicesMayNameOneNode) {
  MachineRecord record = record_of_parents({-1});
  record.nodes[0].kind = kTool;
  record.roots = {0, 0};
  record.rotary_nodes = {0, 0};
  record.tool_node = 0;
  CMachDef machine;
  load(machine, record);
  EXPECT_EQ(machine.SG()[0], machine.SG()[1]);
  EXPECT_EQ(machine.SG()[0], machine.SG_RotAxs()[0]);
  EXPECT_EQ(machine.SG()[0], machine.SG_RotAxs()[1]);
  EXPECT_EQ(machine.SG()[0], machine.tool_node());
}

// A node in both trees goes back to its pool once; twice would hand it out twice.
TEST(LoadNodes, OfASharedTreeAreGivenBackOnce) {
  NodePtr first;
  NodePtr second;
  {
    MachineRecord record = record_of_parents({-1, 0});
    record.roots = {0, 0};
    CMachDef machine;
    load(machine, record);
  }
  first = node::create();
  second = node::create();
  EXPECT_NE(first, second);
  EXPECT_NE(node::create(), first);
}

// Tree 1 is a branch of tree 0: its nodes are in both lists.
TEST(LoadNodes, OfATreeInsideTheOtherAreGivenBackOnce) {
  {
    MachineRecord record = record_of_parents({-1, 0, 1});
    record.roots = {0, 1};
    CMachDef machine;
    load(machine, record);
    EXPECT_EQ(tree_ids(machine, 1), (std::vector<int>{1, 2}));
  }
  std::vector<NodePtr> created;
  for (int i = 0; i < 4; ++i) {
    created.push_back(node::create());
    for (int k = 0; k < i; ++k)
      EXPECT_NE(created[static_cast<std::size_t>(i)], created[static_cast<std::size_t>(k)]);
  }
}

TEST(LoadNodes, RootBelowAnotherNodeLosesIt) {
  // The node above is in no tree, so nobody holds it once the record is read.
  MachineRecord record = record_of_parents({-1, 0, 1});
  record.roots = {1, -1};
  CMachDef machine;
  load(machine, record);
  ASSERT_TRUE(machine.SG()[0]);
  EXPECT_FALSE(machine.SG()[0]->parent());
  EXPECT_EQ(tree_ids(machine, 0), (std::vector<int>{1, 2}));
}

TEST(LoadNodes, InNoTreeAreDropped) {
  NodePtr parked = node::create();
  const boost::weak_ptr<node> watch = parked;
  node::free(parked);
  MachineRecord record = record_of_parents({-1});
  record.roots[0] = -1;
  CMachDef machine;
  load(machine, record);
  EXPECT_TRUE(watch.expired());
}

// A node that is reset where it hangs has no parent any more, though it is listed still.
TEST(LoadNodes, OneThatWasResetWhereItHungStaysForWhatNamesIt) {
  CMachDef machine;
  machine.SG()[0] = node::create();
  machine.SG()[0]->reset();
  machine.SG()[0]->id(7);
  machine.SG_RotAxs()[0] = node::create();
  machine.SG()[0]->add_child(machine.SG_RotAxs()[0]);
  machine.SG_RotAxs()[0]->reset();
  machine.SG_RotAxs()[0]->id(8);
  ASSERT_EQ(tree_ids(machine, 0), (std::vector<int>{7, 8}));

  CMachDef once;
  load(once, saved(machine));
  EXPECT_EQ(tree_ids(once, 0), (std::vector<int>{7}));
  ASSERT_TRUE(once.SG_RotAxs()[0]);
  EXPECT_EQ(once.SG_RotAxs()[0]->id(), 8);

  CMachDef twice;
  load(twice, saved(once));
  EXPECT_EQ(tree_ids(twice, 0), (std::vector<int>{7}));
  EXPECT_FALSE(twice.SG_RotAxs()[0]);
}

TEST(LoadNodes, FlagsUseAllBits) {
  MachineRecord record = record_of_parents({-1});
  record.nodes[0].flags = 0xfedcba98u;
  CMachDef machine;
  load(machine, record);
  EXPECT_EQ(machine.SG()[0]->flags(), 0xfedcba98u);
}

TEST(LoadNodes, CountBelowZeroMeansNone) {
  for (const int count : {-1, -2, kIntMin}) {
    Bytes bytes = pack(MachineRecord());
    bytes.replace(220, 4, pack(count));
    CMachDef machine;
    load(machine, bytes);
    EXPECT_SAME_BYTES(saved(machine), pack(MachineRecord())) << "count " << count;
  }
}

// The update poses what the lists of the trees hold: they are made by loading.
TEST(LoadNodes, StandInTheListsThatTheUpdateDrives) {
  CMachDef machine;
  load(machine, rich_record());
  UpdateNodeAxes_2(&machine, 1, 2, 3, 0, 0.25, 0.5);
  EXPECT_EQ(machine.SG_RotAxs()[1]->value(), 0.25);
  EXPECT_EQ(machine.SG_RotAxs()[0]->value(), 0.5);
  // X, Y and Z carry the driven flag; each got a new value.
  for (const int id : {1, 2, 3})
    EXPECT_NE(CMachDef_Axis_Position_Get(&machine, id), id == 1 ? 5.25 : id == 2 ? 6.25 : 1.25);
}

TEST(LoadAgain, ReplacesEveryField) {
  CMachDef machine;
  load(machine, rich_record());
  load(machine, MachineRecord());
  EXPECT_SAME_BYTES(saved(machine), pack(MachineRecord()));
}

TEST(LoadAgain, ReplacesAFreshMachinesFields) {
  MachineRecord record = rich_record();
  CMachDef machine;
  load(machine, MachineRecord());
  load(machine, record);
  EXPECT_SAME_BYTES(saved(machine), pack(record));
}

TEST(LoadAgain, EmptySlotsEmptyTheAxes) {
  CMachDef machine;
  load(machine, rich_record());
  MachineRecord record = rich_record();
  record.axes[0].present = 0;
  record.axes[4].present = 0;
  load(machine, record);
  EXPECT_FALSE(machine.getPrimary());
  EXPECT_TRUE(machine.getSecondary());
  EXPECT_FALSE(machine.xyz_axes()[2]);
}

// The axes that were there are dropped and not parked: somebody may still hold them.
TEST(LoadAgain, DropsTheFormerAxes) {
  CMachDef machine;
  load(machine, rich_record());
  const boost::shared_ptr<md::CAxis2> held = machine.getPrimary();
  const boost::weak_ptr<md::CAxis2> watch = machine.getSecondary();
  load(machine, rich_record());
  EXPECT_NE(machine.getPrimary(), held);
  EXPECT_TRUE(watch.expired());
  EXPECT_EQ(held.use_count(), 1);
}

TEST(LoadAgain, DropsTheFormerNodes) {
  CMachDef machine;
  load(machine, rich_record());
  std::vector<boost::weak_ptr<node>> watch;
  for (const NodePtr& n : node::all_nodes(machine.SG()[0])) watch.emplace_back(n);
  load(machine, MachineRecord());
  ASSERT_EQ(watch.size(), 5u);
  for (const boost::weak_ptr<node>& n : watch) EXPECT_TRUE(n.expired());
}

TEST(LoadAgain, LeavesNodesThatSomebodyHolds) {
  CMachDef machine;
  load(machine, rich_record());
  const NodePtr held = machine.SG()[0];
  load(machine, rich_record());
  EXPECT_NE(machine.SG()[0], held);
  EXPECT_EQ(ids(node::all_nodes(held)), (std::vector<int>{-999, 3, 5, 9, 20}));
}

TEST(LoadAgain, GivesBackTheNodesOfTheLastFileOnly) {
  NodePtr held;
  {
    CMachDef machine;
    load(machine, rich_record());
    held = machine.SG()[0];
    load(machine, MachineRecord());
  }
  EXPECT_EQ(held.use_count(), 1);
  EXPECT_EQ(held->id(), -999);
}

TEST(LoadIntoAResetMachine, GivesTheSameAsIntoAFreshOne) {
  CMachDef machine;
  load(machine, rich_record());
  machine.reset();
  load(machine, rich_record());
  EXPECT_SAME_BYTES(saved(machine), pack(rich_record()));
}

TEST(LoadedAxis, ReadsItsRecord) {
  const AxisRecord record = axis_record(1, 1, 0, {1, 2, 3}, {4, 5, 6}, -4, 5);
  MemoryStream stream(pack(record));
  const auto axis = md::CAxis2::create();
  axis->machdef(nobody());
  axis->serialize(stream);
  EXPECT_EQ(axis->GetAxis(), AXIS_B);
  EXPECT_EQ(axis->GetAxisLocation(), TABLE);
  EXPECT_EQ(axis->mode(), ROTARY);
  EXPECT_EQ(axis->GetBaseVector(), (TPoint<double>(1, 2, 3)));
  EXPECT_EQ(axis->GetAxisVector(), (TPoint<double>(4, 5, 6)));
  EXPECT_EQ(axis->GetMin(), -4);
  EXPECT_EQ(axis->GetMax(), 5);
  EXPECT_EQ(axis->machdef(), nobody());
}
