// A machine through text and back: the same bytes.
#include "tool/errors.h"
#include "tool/machine/machine_reader.h"
#include "tool/machine/machine_record.h"
#include "tool/machine/machine_writer.h"

#include <cmath>
#include <cstddef>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "machdef/files/memory_stream.h"
#include "support/random_scene.h"
#include "system/tree_support.h"
#include "tool/json/random_record.h"

namespace {

using namespace k5ax_test;

Bytes through_text(const Bytes& bytes) {
  const std::string text = tool::write_machine_text(tool::record_of(bytes), "there.k5m");
  return tool::bytes_of(tool::read_machine_text(text, "there.json"));
}

// ---- random files, packed by the tests' own writer ----

TEST(JsonRoundTrip, BringsAnyRandomFileBackByteForByte) {
  Random random(20240501);
  int lists = 0;
  int radians = 0;
  for (int i = 0; i < 6000; ++i) {
    const Bytes bytes = pack(random_record(random));
    const std::string text = tool::write_machine_text(tool::record_of(bytes), "there.k5m");
    lists += text.find("\"nodes\"") != std::string::npos ? 1 : 0;
    radians += text.find("\"rad\"") != std::string::npos ? 1 : 0;
    ASSERT_SAME_BYTES(tool::bytes_of(tool::read_machine_text(text, "there.json")), bytes)
        << "machine " << i << "\n"
        << text;
  }
  // Both forms of trees and of angles were there.
  EXPECT_GT(lists, 500);
  EXPECT_GT(radians, 500);
}

// What the library makes of a random file, saved again: that file has lost what cannot be part of its trees.
TEST(JsonRoundTrip, BringsWhatTheLibraryLoadedAndSavedBackByteForByte) {
  Random random(77);
  for (int i = 0; i < 2000; ++i) {
    md::CMachDef machine;
    load(machine, random_record(random));
    const Bytes bytes = saved(machine);
    ASSERT_SAME_BYTES(through_text(bytes), bytes) << "machine " << i;
  }
}

TEST(JsonRoundTrip, BringsPosedMachinesBackByteForByte) {
  Random random(4711);
  for (int i = 0; i < 1000; ++i) {
    const std::unique_ptr<SceneMachine> scene = build(random_plan(random));
    md::CMachDef& machine = scene->machdef();
    md::UpdateNodeAxes_(&machine, vector_form::point(random.vector(kRandomSize)),
                        vector_form::point(random.angles()));
    const Bytes bytes = saved(machine);
    ASSERT_SAME_BYTES(through_text(bytes), bytes) << "machine " << i;
  }
}

TEST(JsonRoundTrip, BringsTheSameTreeInBothPlacesBack) {
  Random random(12);
  const std::unique_ptr<SceneMachine> scene = build(random_plan(random));
  md::CMachDef& machine = scene->machdef();
  const NodePtr second = machine.SG()[1];
  machine.SG()[1] = machine.SG()[0];
  const Bytes bytes = saved(machine);
  EXPECT_SAME_BYTES(through_text(bytes), bytes);
  machine.SG()[1] = second;
}

TEST(JsonRoundTrip, BringsAPointerToANodeOutsideBothTreesBack) {
  Random random(13);
  const std::unique_ptr<SceneMachine> scene = build(random_plan(random));
  md::CMachDef& machine = scene->machdef();
  const NodePtr inside = machine.SG_RotAxs()[0];
  machine.SG_RotAxs()[0] = plain_node(5);
  const Bytes bytes = saved(machine);
  EXPECT_SAME_BYTES(through_text(bytes), bytes);
  machine.SG_RotAxs()[0] = inside;
}

TEST(JsonRoundTrip, BringsAFreshMachineBack) {
  const Bytes bytes = pack(MachineRecord());
  EXPECT_SAME_BYTES(through_text(bytes), bytes);
}

// ---- depth: what recursed would run out of stack ----

MachineRecord deep_record(int depth) {
  MachineRecord m;
  m.roots[0] = 0;
  for (int i = 0; i < depth; ++i) {
    m.nodes.emplace_back();
    m.nodes.back().parent = i - 1;
    m.nodes.back().id = i;
  }
  return m;
}

TEST(JsonRoundTrip, BringsAChainOfTwoHundredThousandNodesBack) {
  const Bytes bytes = pack(deep_record(200000));
  EXPECT_TRUE(through_text(bytes) == bytes);
}

// Below every node a leaf, and then the node that leads on.
TEST(JsonRoundTrip, BringsADeepCombBack) {
  MachineRecord m = deep_record(1);
  int spine = 0;
  for (int i = 0; i < 100000; ++i) {
    NodeRecord n;
    n.parent = spine;
    m.nodes.push_back(n);
    m.nodes.push_back(n);
    spine = static_cast<int>(m.nodes.size()) - 1;
  }
  const Bytes bytes = pack(m);
  EXPECT_TRUE(through_text(bytes) == bytes);
}

TEST(JsonRoundTrip, BringsALongListWithParentsBehindTheirChildrenBack) {
  MachineRecord m = deep_record(200000);
  for (int i = 0; i < 200000; ++i) m.nodes[static_cast<std::size_t>(i)].parent = i + 1;
  m.roots[0] = 199999;
  const Bytes bytes = pack(m);
  EXPECT_TRUE(through_text(bytes) == bytes);
}

// ---- what text cannot hold ----

struct Broken {
  const char* place;
  std::function<void(MachineRecord&, double)> set;
};

TEST(JsonRoundTrip, RefusesNumbersThatAreNotFiniteAndNamesTheirPlace) {
  const std::vector<Broken> all = {
      {"/work_zero/1", [](MachineRecord& m, double x) { m.work_zero[1] = x; }},
      {"/loading_vector/2", [](MachineRecord& m, double x) { m.loading_vector[2] = x; }},
      {"/head/tilt", [](MachineRecord& m, double x) { m.head.b_angle = x; }},
      {"/head/lengths/1", [](MachineRecord& m, double x) { m.head.length2 = x; }},
      {"/head/reference/0", [](MachineRecord& m, double x) { m.head.ref_dir[0] = x; }},
      {"/axes/primary/limits/1", [](MachineRecord& m, double x) { m.axes[0].axis.max = x; }},
      {"/axes/z/point/2", [](MachineRecord& m, double x) { m.axes[4].axis.base[2] = x; }},
      {"/axes/y/direction/0", [](MachineRecord& m, double x) { m.axes[3].axis.vector[0] = x; }},
      {"node 1 (id 7) /value", [](MachineRecord& m, double x) { m.nodes[1].value = x; }},
      {"node 1 (id 7) /translation", [](MachineRecord& m, double x) { m.nodes[1].transform[10] = x; }},
      {"node 2 (id 8) /axis/limits/0", [](MachineRecord& m, double x) { m.nodes[2].axis.min = x; }},
      {"node 3 (id 9) /head/offset/1", [](MachineRecord& m, double x) { m.nodes[3].head.offset[1] = x; }},
  };
  MachineRecord machine = deep_record(4);
  machine.nodes[1].id = 7;
  machine.nodes[2].id = 8;
  machine.nodes[3].id = 9;
  machine.nodes[2].kind = kAxis;
  machine.nodes[3].kind = kTool;
  for (AxisSlot& slot : machine.axes) slot.present = 1;

  for (const Broken& broken : all) {
    for (const double bad :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
          -std::numeric_limits<double>::infinity()}) {
      MachineRecord m = machine;
      broken.set(m, bad);
      const char* shown = std::isnan(bad) ? "nan" : bad > 0 ? "inf" : "-inf";
      try {
        tool::write_machine_text(tool::record_of(pack(m)), "there.k5m");
        ADD_FAILURE() << broken.place << " was written";
      } catch (const tool::InputError& error) {
        EXPECT_EQ(std::string(error.what()),
                  std::string("there.k5m: ") + broken.place + ": " + shown +
                      " cannot be written as text; put the number right, or keep the "
                      "machine in a binary file");
      }
    }
  }
}

}  // namespace
