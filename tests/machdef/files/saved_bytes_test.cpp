// What a machine is written as: each field at the offset where docs/file-format.md puts it.

#include <cstring>
#include <limits>

#include <gtest/gtest.h>

#include "machdef/files/memory_stream.h"
#include "machdef/files/rich_machine.h"

using namespace k5ax_test;
using md::CMachDef;
using md::sg::node;

namespace {

// The file of a fresh machine, byte by byte.
Bytes fresh_bytes() {
  const unsigned char bytes[248] = {
      0x01, 0x00, 0x00, 0x00,                          //   0 version 1
      0xff, 0xff, 0xff, 0xff,                          //   4 type -1
      0xff, 0xff, 0xff, 0xff,                          //   8 mode -1
      0x01, 0x00, 0x00, 0x00,                          //  12 metric
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  //  16 loading vector x
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  //  24 y
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  //  32 z
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  //  40 work zero x
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  //  48 y
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  //  56 z
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  //  64 head: tilt
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  //  72 turn
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  //  80 first length
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  //  88 second length
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  //  96 tip x
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // 104 y
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // 112 z
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // 120 tool direction x
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // 128 y
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xf0, 0x3f,  // 136 z = 1
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xf0, 0x3f,  // 144 reference direction x = 1
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // 152 y
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // 160 z
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // 168 offset x
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // 176 y
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // 184 z
      0x00, 0x00, 0x00, 0x00,                          // 192 flags
      0x00, 0x00, 0x00, 0x00,                          // 196 padding
      0x00, 0x00, 0x00, 0x00,                          // 200 no primary axis
      0x00, 0x00, 0x00, 0x00,                          // 204 no secondary axis
      0x00, 0x00, 0x00, 0x00,                          // 208 no X axis
      0x00, 0x00, 0x00, 0x00,                          // 212 no Y axis
      0x00, 0x00, 0x00, 0x00,                          // 216 no Z axis
      0x00, 0x00, 0x00, 0x00,                          // 220 no nodes
      0xff, 0xff, 0xff, 0xff,                          // 224 no root 0
      0xff, 0xff, 0xff, 0xff,                          // 228 no root 1
      0xff, 0xff, 0xff, 0xff,                          // 232 no primary rotary node
      0xff, 0xff, 0xff, 0xff,                          // 236 no secondary rotary node
      0xff, 0xff, 0xff, 0xff,                          // 240 no tool node
      0x00, 0x00, 0x00, 0x00,                          // 244 discipline 0
  };
  return Bytes(reinterpret_cast<const char*>(bytes), sizeof bytes);
}

int int_at(const Bytes& bytes, std::size_t offset) {
  std::uint32_t bits = 0;
  for (std::size_t i = 0; i < 4; ++i)
    bits |= std::uint32_t{static_cast<unsigned char>(bytes.at(offset + i))} << (8 * i);
  return static_cast<int>(bits);
}

double double_at(const Bytes& bytes, std::size_t offset) {
  std::uint64_t bits = 0;
  for (std::size_t i = 0; i < 8; ++i)
    bits |= std::uint64_t{static_cast<unsigned char>(bytes.at(offset + i))} << (8 * i);
  double value;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

using Triple = std::array<double, 3>;

Triple point_at(const Bytes& bytes, std::size_t offset) {
  return {double_at(bytes, offset), double_at(bytes, offset + 8), double_at(bytes, offset + 16)};
}

std::array<double, 12> matrix_at(const Bytes& bytes, std::size_t offset) {
  std::array<double, 12> m;
  for (std::size_t i = 0; i < 12; ++i) m[i] = double_at(bytes, offset + 8 * i);
  return m;
}

// The bytes of the rich machine; each test looks at some of its fields.
struct RichBytes : testing::Test {
  CMachDef machine;
  Bytes bytes;

  RichBytes() {
    make_rich(machine);
    bytes = saved(machine);
  }

  void expect_axis(std::size_t at, const Triple& base, const Triple& vector, double min, double max, int type,
                   int location, int mode) const {
    EXPECT_EQ(int_at(bytes, at), 1) << "version";
    EXPECT_EQ(point_at(bytes, at + 4), base);
    EXPECT_EQ(point_at(bytes, at + 28), vector);
    EXPECT_EQ(double_at(bytes, at + 52), min);
    EXPECT_EQ(double_at(bytes, at + 60), max);
    EXPECT_EQ(int_at(bytes, at + 68), type);
    EXPECT_EQ(int_at(bytes, at + 72), location);
    EXPECT_EQ(int_at(bytes, at + 76), mode);
  }

  void expect_node(std::size_t at, int kind, int parent, int id, int flags, double value,
                   double first) const {
    EXPECT_EQ(int_at(bytes, at), kind);
    EXPECT_EQ(int_at(bytes, at + 4), parent);
    EXPECT_EQ(int_at(bytes, at + 8), id);
    EXPECT_EQ(int_at(bytes, at + 12), flags);
    EXPECT_EQ(double_at(bytes, at + 16), value);
    EXPECT_EQ(matrix_at(bytes, at + 24), numbers_from(first));
  }
};

boost::shared_ptr<node> make_node(int id) {
  const boost::shared_ptr<node> n = node::create();
  n->reset();
  n->id(id);
  return n;
}

}  // namespace

TEST(FreshMachineBytes, AreAsListed) {
  CMachDef machine;
  EXPECT_SAME_BYTES(saved(machine), fresh_bytes());
}

TEST(FreshMachineBytes, DifferInTheModeOnlyForAMachineMadeWithAMode) {
  CMachDef machine(static_cast<MACHINE_MODE>(5));
  Bytes expected = fresh_bytes();
  expected[8] = 5;
  expected[9] = expected[10] = expected[11] = 0;
  EXPECT_SAME_BYTES(saved(machine), expected);
}

TEST(FreshMachineBytes, AgreeWithTheSecondWriter) { EXPECT_SAME_BYTES(pack(MachineRecord()), fresh_bytes()); }

TEST(FreshMachineBytes, ComeOutOfAResetMachineThatKeptItsHostsSetting) {
  CMachDef machine;
  make_rich(machine);
  machine.reset();
  machine.mwZeroPos({0, 0, 0});
  machine.set_mode(static_cast<MACHINE_MODE>(-1));
  machine.setMetric(true);
  machine.discipline(static_cast<K5AX_DISCIPLINE>(0));
  EXPECT_SAME_BYTES(saved(machine), fresh_bytes());
}

TEST_F(RichBytes, AreAsManyAsTheFieldsTake) {
  // 200 up to the axes, 5 axes of 84, a count, 3 plain nodes of 120, 5 axis nodes of 200, a tool node of 256,
  // 6 ints.
  EXPECT_EQ(bytes.size(), 200u + 5 * 84 + 4 + 3 * 120 + 5 * 200 + 256 + 6 * 4);
}

TEST_F(RichBytes, BeginWithVersionTypeModeAndUnits) {
  EXPECT_EQ(int_at(bytes, 0), 1);
  EXPECT_EQ(int_at(bytes, 4), 1);
  EXPECT_EQ(int_at(bytes, 8), 77);
  EXPECT_EQ(int_at(bytes, 12), 0);
}

TEST_F(RichBytes, HaveTheLoadingVectorAt16) { EXPECT_EQ(point_at(bytes, 16), (Triple{1.5, -2.5, 3.5})); }

TEST_F(RichBytes, HaveTheWorkZeroAt40) { EXPECT_EQ(point_at(bytes, 40), (Triple{-4.25, 5.25, -6.25})); }

TEST_F(RichBytes, HaveTheHeadAt64) {
  EXPECT_EQ(double_at(bytes, 64), 0.125);
  EXPECT_EQ(double_at(bytes, 72), -0.25);
  EXPECT_EQ(double_at(bytes, 80), 3.75);
  EXPECT_EQ(double_at(bytes, 88), 2.125);
  EXPECT_EQ(point_at(bytes, 96), (Triple{0.5, 0.75, 5.875}));
  EXPECT_EQ(point_at(bytes, 120), (Triple{0.28, 0, 0.96}));
  EXPECT_EQ(point_at(bytes, 144), (Triple{0.96, 0, -0.28}));
  EXPECT_EQ(point_at(bytes, 168), (Triple{7.5, 8.5, 9.5}));
  EXPECT_EQ(static_cast<unsigned>(int_at(bytes, 192)), 0x80000004u);
  EXPECT_EQ(int_at(bytes, 196), 0);
}

TEST_F(RichBytes, HaveThePrimaryAxisAt200) {
  EXPECT_EQ(int_at(bytes, 200), 1);
  expect_axis(204, {0, 0, -1.75}, {0, 0, 1}, -6.5, 6.75, 2, 1, 0);
}

TEST_F(RichBytes, HaveTheSecondaryAxisAt284) {
  EXPECT_EQ(int_at(bytes, 284), 1);
  expect_axis(288, {11, 12, 13}, {0, 1, 0}, -2.25, 2.375, 1, 0, 0);
}

TEST_F(RichBytes, HaveTheXAxisAt368) {
  EXPECT_EQ(int_at(bytes, 368), 1);
  expect_axis(372, {21, 22, 23}, {1, 0, 0}, -20.5, 20.25, 3, 1, 1);
}

TEST_F(RichBytes, HaveTheYAxisAt452) {
  EXPECT_EQ(int_at(bytes, 452), 1);
  expect_axis(456, {31, 32, 33}, {0, 1, 0}, -15.5, 15.25, 4, 1, 1);
}

TEST_F(RichBytes, HaveTheZAxisAt536) {
  EXPECT_EQ(int_at(bytes, 536), 1);
  expect_axis(540, {41, 42, 43}, {0, 0, 1}, -10.5, 10.25, 5, 0, 1);
}

TEST_F(RichBytes, HaveTheNodeCountAt620) { EXPECT_EQ(int_at(bytes, 620), 9); }

TEST_F(RichBytes, BeginTheNodesWithTheRootOfTree0) { expect_node(624, 0, -1, -999, 0x40000000, 0.5, 100); }

TEST_F(RichBytes, HaveAnAxisNodeWithItsAxisAt744) {
  expect_node(744, 1, 0, 3, 3, 1.25, 200);
  expect_axis(864, {51, 52, 53}, {0, 0, 1}, -50.5, 50.25, 5, 0, 1);
}

TEST_F(RichBytes, HaveItsChildAt944) {
  expect_node(944, 1, 1, 5, 1, -0.75, 300);
  expect_axis(1064, {61, 62, 63}, {0, 1, 0}, -2.5, 2.625, 1, 0, 0);
}

TEST_F(RichBytes, HaveTheToolNodeWithItsHeadAt1144) {
  expect_node(1144, 2, 2, 9, 8, 2.75, 400);
  EXPECT_EQ(double_at(bytes, 1264), 0.375);
  EXPECT_EQ(double_at(bytes, 1272), -0.5);
  EXPECT_EQ(double_at(bytes, 1280), 1.125);
  EXPECT_EQ(double_at(bytes, 1288), 1.25);
  EXPECT_EQ(point_at(bytes, 1296), (Triple{1.375, 1.5, 1.625}));
  EXPECT_EQ(point_at(bytes, 1320), (Triple{0.6, 0, 0.8}));
  EXPECT_EQ(point_at(bytes, 1344), (Triple{0.8, 0, -0.6}));
  EXPECT_EQ(point_at(bytes, 1368), (Triple{2.125, 2.25, 2.375}));
  EXPECT_EQ(int_at(bytes, 1392), 0x20000001);
  EXPECT_EQ(int_at(bytes, 1396), 0);
}

TEST_F(RichBytes, HaveTheSecondChildOfTheRootAfterTheFirstBranch) {
  expect_node(1400, 0, 0, 20, 16, 3.25, 500);
}

TEST_F(RichBytes, HaveTheRootOfTree1At1520) {
  expect_node(1520, 1, -1, 4, 1, 0.625, 600);
  expect_axis(1640, {0, 0, 73}, {0, 0, 1}, -7.5, 7.625, 2, 1, 0);
}

TEST_F(RichBytes, HaveTheRestOfTree1BelowIt) {
  expect_node(1720, 0, 5, -999, 32, 4.25, 700);
  expect_node(1840, 1, 6, 1, 3, 5.25, 800);
  expect_axis(1960, {81, 82, 83}, {1, 0, 0}, -80.5, 80.25, 3, 1, 1);
  expect_node(2040, 1, 7, 2, 3, 6.25, 900);
  expect_axis(2160, {91, 92, 93}, {0, 1, 0}, -90.5, 90.25, 4, 1, 1);
}

TEST_F(RichBytes, EndWithTheIndicesAndTheDiscipline) {
  EXPECT_EQ(int_at(bytes, 2240), 0);   // root of tree 0
  EXPECT_EQ(int_at(bytes, 2244), 5);   // root of tree 1
  EXPECT_EQ(int_at(bytes, 2248), 5);   // primary rotary node
  EXPECT_EQ(int_at(bytes, 2252), 2);   // secondary rotary node
  EXPECT_EQ(int_at(bytes, 2256), 3);   // tool node
  EXPECT_EQ(int_at(bytes, 2260), -5);  // discipline
}

TEST_F(RichBytes, AgreeWithTheSecondWriter) { EXPECT_SAME_BYTES(bytes, pack(rich_record())); }

TEST_F(RichBytes, AreTheSameWhenSavedAgain) { EXPECT_SAME_BYTES(saved(machine), bytes); }

TEST_F(RichBytes, AreTheSameForAClone) {
  CMachDef clone;
  clone.clone(machine, 3);
  EXPECT_SAME_BYTES(saved(clone), bytes);
}

TEST(SavedMachine, WritesMetricAsOne) {
  CMachDef machine;
  machine.setMetric(true);
  EXPECT_EQ(int_at(saved(machine), 12), 1);
}

TEST(SavedMachine, WritesAnyEnumValueAsItStands) {
  CMachDef machine;
  machine.setMachType(static_cast<MACHINE_TYPE>(1234567));
  machine.set_mode(static_cast<MACHINE_MODE>(-2147483647 - 1));
  machine.discipline(static_cast<K5AX_DISCIPLINE>(2147483647));
  const Bytes bytes = saved(machine);
  EXPECT_EQ(int_at(bytes, 4), 1234567);
  EXPECT_EQ(int_at(bytes, 8), -2147483647 - 1);
  EXPECT_EQ(int_at(bytes, 244), 2147483647);
}

// The head is a block of memory; what a host or a file left in its padding goes back to the file.
TEST(SavedMachine, WritesThePaddingOfTheHeadAsItStands) {
  CMachDef machine;
  std::memcpy(reinterpret_cast<char*>(&machine.head()) + 132, "\x11\x22\x33\x44", 4);
  const Bytes bytes = saved(machine);
  EXPECT_EQ(bytes.substr(196, 4), "\x11\x22\x33\x44");
}

TEST(SavedMachine, WritesTheAxesThatAreThere) {
  CMachDef machine;
  machine.setSecondary(md::CAxis2::create(AXIS_B, HEAD, {1, 2, 3}, {0, 1, 0}, -1, 1, ROTARY));
  machine.xyz_axes()[1] = md::CAxis2::create(AXIS_Y, TABLE, {4, 5, 6}, {0, 1, 0}, -2, 2, LINEAR);
  MachineRecord expected;
  expected.axes[1] = {1, axis_record(1, 0, 0, {1, 2, 3}, {0, 1, 0}, -1, 1)};
  expected.axes[3] = {1, axis_record(4, 1, 1, {4, 5, 6}, {0, 1, 0}, -2, 2)};
  EXPECT_SAME_BYTES(saved(machine), pack(expected));
}

TEST(SavedMachine, WritesTheDirectionOfAnAxisAsItStands) {
  CMachDef machine;
  machine.setPrimary(md::CAxis2::create());
  machine.getPrimary()->SetAxisVector({3, 4, 0});
  EXPECT_EQ(point_at(saved(machine), 232), (Triple{3, 4, 0}));
}

TEST(SavedMachine, WritesNodesThatWereOnlyJustHungIn) {
  // The machine's own list of its nodes does not know this one yet.
  CMachDef machine;
  make_rich(machine);
  CMachDef listed;
  listed.clone(machine, 3);
  listed.SG()[0]->add_child(make_node(1000));
  const MachineRecord record = unpack_machine(saved(listed));
  ASSERT_EQ(record.nodes.size(), 10u);
  EXPECT_EQ(record.nodes[5].id, 1000);
  EXPECT_EQ(record.nodes[5].parent, 0);
}

TEST(SavedMachine, WritesTree1AloneWhenTree0IsEmpty) {
  CMachDef machine;
  machine.SG()[1] = make_node(7);
  machine.SG()[1]->add_child(make_node(8));
  const MachineRecord record = unpack_machine(saved(machine));
  ASSERT_EQ(record.nodes.size(), 2u);
  EXPECT_EQ(record.nodes[1].parent, 0);
  EXPECT_EQ(record.roots, (std::array<int, 2>{-1, 0}));
}

TEST(SavedMachine, CountsTheNodesOfTree1OnFromThoseOfTree0) {
  CMachDef machine;
  machine.SG()[0] = make_node(7);
  machine.SG()[0]->add_child(make_node(8));
  machine.SG()[1] = make_node(9);
  machine.SG()[1]->add_child(make_node(10));
  const MachineRecord record = unpack_machine(saved(machine));
  ASSERT_EQ(record.nodes.size(), 4u);
  EXPECT_EQ(record.nodes[3].parent, 2);
  EXPECT_EQ(record.roots, (std::array<int, 2>{0, 2}));
}

// A rotary node that hangs in neither tree is a host's mistake; it is written as an index that nothing has.
TEST(SavedMachine, WritesTheNodeCountForAPointerToANodeInNeitherTree) {
  CMachDef machine;
  machine.SG()[0] = make_node(7);
  machine.SG_RotAxs()[0] = make_node(8);
  machine.tool_node(md::TOOL_NODE_Create());
  const MachineRecord record = unpack_machine(saved(machine));
  EXPECT_EQ(record.rotary_nodes, (std::array<int, 2>{1, -1}));
  EXPECT_EQ(record.tool_node, 1);
}

TEST(SavedMachine, WritesTheNodeCountForAParentInNeitherTree) {
  const boost::shared_ptr<node> above = make_node(6);
  CMachDef machine;
  machine.SG()[0] = make_node(7);
  above->add_child(machine.SG()[0]);
  const MachineRecord record = unpack_machine(saved(machine));
  ASSERT_EQ(record.nodes.size(), 1u);
  EXPECT_EQ(record.nodes[0].parent, 1);
}

TEST(SavedMachine, WritesMinusOneForAParentThatIsGone) {
  CMachDef machine;
  {
    const boost::shared_ptr<node> above = make_node(6);
    machine.SG()[0] = make_node(7);
    above->add_child(machine.SG()[0]);
  }
  const MachineRecord record = unpack_machine(saved(machine));
  ASSERT_EQ(record.nodes.size(), 1u);
  EXPECT_EQ(record.nodes[0].parent, -1);
}

// One node as the root of both trees stands in the list twice, and its first place is the one that indices
// name.
TEST(SavedMachine, WritesASharedTreeTwiceAndNamesItsFirstPlace) {
  CMachDef machine;
  machine.SG()[0] = make_node(7);
  machine.SG()[0]->add_child(make_node(8));
  machine.SG()[1] = machine.SG()[0];
  const MachineRecord record = unpack_machine(saved(machine));
  ASSERT_EQ(record.nodes.size(), 4u);
  EXPECT_EQ(record.nodes[2].id, 7);
  EXPECT_EQ(record.nodes[3].id, 8);
  EXPECT_EQ(record.nodes[3].parent, 0);
  EXPECT_EQ(record.roots, (std::array<int, 2>{0, 0}));
}

TEST(SavedMachine, WritesAHostsOwnNodeAsAPlainOne) {
  class HostNode : public node {
   public:
    HostNode() = default;
    ~HostNode() override = default;
  };
  CMachDef machine;
  machine.SG()[0].reset(new HostNode);
  machine.SG()[0]->id(31);
  const MachineRecord record = unpack_machine(saved(machine));
  ASSERT_EQ(record.nodes.size(), 1u);
  EXPECT_EQ(record.nodes[0].kind, kPlain);
  EXPECT_EQ(record.nodes[0].id, 31);
}

TEST(SavedMachine, WritesTheFlagsOfAToolNodeAndThoseOfItsHead) {
  CMachDef machine;
  const auto tool = md::TOOL_NODE_Create();
  tool->reset();
  tool->flags(2);
  tool->payload().flags = 5;
  machine.SG()[0] = tool;
  const MachineRecord record = unpack_machine(saved(machine));
  ASSERT_EQ(record.nodes.size(), 1u);
  EXPECT_EQ(record.nodes[0].flags, 2u);
  EXPECT_EQ(record.nodes[0].head.flags, 5u);
}

TEST(SavedMachine, WritesNumbersThatAreNoneBitForBit) {
  const double odd[] = {-0.0,
                        1e-320,
                        1.7976931348623157e308,
                        std::numeric_limits<double>::infinity(),
                        -std::numeric_limits<double>::infinity(),
                        std::numeric_limits<double>::quiet_NaN()};
  for (const double number : odd) {
    CMachDef machine;
    machine.mwZeroPos({number, 0, 0});
    MachineRecord expected;
    expected.work_zero[0] = number;
    EXPECT_SAME_BYTES(saved(machine), pack(expected)) << number;
  }
}

TEST(SavedMachine, IsNotChangedBySaving) {
  CMachDef machine;
  make_rich(machine);
  const std::vector<boost::shared_ptr<node>> before = node::all_nodes(machine.SG()[0]);
  saved(machine);
  EXPECT_EQ(node::all_nodes(machine.SG()[0]), before);
  EXPECT_EQ(machine.getPrimary()->machdef(), nullptr);
}

// A host's stream may store typed values in its own way; so they are asked for one by one, and only the head
// and the transforms come as blocks.
TEST(SavedMachine, IsWrittenValueByValueAndTwoKindsOfBlock) {
  CMachDef machine;
  machine.SG()[0] = make_node(7);
  MemoryStream stream;
  machine.serialize(stream);
  std::vector<std::size_t> expected = {4, 4,   4, 4, 8, 8, 8, 8, 8,
                                       8, 136, 4, 4, 4, 4, 4, 4};  // up to the count
  expected.insert(expected.end(), {4, 4, 4, 4, 8, 96});            // the node
  expected.insert(expected.end(), {4, 4, 4, 4, 4, 4});             // the indices
  EXPECT_EQ(stream.sizes, expected);
}

TEST(SavedMachine, IsWrittenAfterWhatTheStreamHolds) {
  CMachDef machine;
  MemoryStream stream("before", IIO::FILE_WRITE);
  machine.serialize(stream);
  EXPECT_SAME_BYTES(stream.bytes(), "before" + fresh_bytes());
}

TEST(SavedAxis, IsARecordOf80Bytes) {
  const auto axis = md::CAxis2::create(AXIS_B, TABLE, {1, 2, 3}, {0, 1, 0}, -4, 5, ROTARY);
  MemoryStream stream;
  axis->serialize(stream);
  EXPECT_SAME_BYTES(stream.bytes(), pack(axis_record(1, 1, 0, {1, 2, 3}, {0, 1, 0}, -4, 5)));
  EXPECT_EQ(stream.bytes().size(), 80u);
}
