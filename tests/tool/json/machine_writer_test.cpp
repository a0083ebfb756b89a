// What the text of a machine spells out, and what it leaves to the reader.
#include "tool/machine/machine_writer.h"

#include "tool/machine/machine_file.h"
#include "tool/machine/machine_record.h"
#include "tool/machine/node_geometry.h"

#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "support/near.h"
#include "tool/process.h"

namespace {

using k5ax_test::deg;

tool::MachineRecord fork() {
  return tool::read_record(tool_test::in_tree("examples/machines/head_head_fork.k5m"));
}

// The line of the fork's node with the id.
std::string line_of(const tool::MachineRecord& machine, int id) {
  const std::string text = tool::write_machine_text(machine, "m.k5m");
  const std::size_t at = text.find("\"id\": " + std::to_string(id) + ",");
  return text.substr(at, text.find('\n', at) - at);
}

tool::NodeRecord& node(tool::MachineRecord& machine, int id) {
  for (tool::NodeRecord& n : machine.nodes)
    if (n.id == id) return n;
  throw std::out_of_range("no such node");
}

TEST(MachineWriter, LeavesOutTheTransformOfASlideThatStandsWhereItsValueSays) {
  tool::MachineRecord machine = fork();
  tool::NodeRecord& x = node(machine, 1);
  x.value = 12.5;
  x.transform[9] = 12.5;
  EXPECT_EQ(line_of(machine, 1), "\"id\": 1, \"axis\": \"x\", \"value\": 12.5, \"children\": [");
}

TEST(MachineWriter, SpellsOutATransformThatDoesNotFitTheValue) {
  tool::MachineRecord machine = fork();
  node(machine, 1).value = 12.5;
  EXPECT_EQ(line_of(machine, 1),
            "\"id\": 1, \"axis\": \"x\", \"value\": 12.5, \"translation\": [0, 0, 0], \"children\": [");
}

// Its sine and cosine may have another last bit elsewhere.
TEST(MachineWriter, SpellsOutTheTransformOfARotaryAxisThatHasTurned) {
  tool::MachineRecord machine = fork();
  tool::NodeRecord& c = node(machine, 4);
  c.value = deg(30);
  c.transform = tool::computed_transform(c);
  EXPECT_EQ(
      line_of(machine, 4).rfind("\"id\": 4, \"axis\": \"primary\", \"value\": 30, \"translation\": ", 0), 0U);
  EXPECT_NE(line_of(machine, 4).find("\"rotation\": {\"matrix\": [["), std::string::npos);
}

TEST(MachineWriter, SpellsOutTheGeometryOfATiltedHead) {
  const double lengths[2] = {4, 3};
  tool::MachineRecord machine;
  machine.head = tool::head_of(0, 30, lengths, 0);
  const std::string text = tool::write_machine_text(machine, "m.k5m");
  for (const char* key : {"\"tilt\": 30", "\"tip\": [", "\"direction\": [", "\"reference\": ["})
    EXPECT_NE(text.find(key), std::string::npos) << key;
}

TEST(MachineWriter, LeavesOutTheGeometryOfAHeadThatIsNotTilted) {
  const double lengths[2] = {4, 3};
  tool::MachineRecord machine;
  machine.head = tool::head_of(0, 0, lengths, 0);
  EXPECT_NE(tool::write_machine_text(machine, "m.k5m").find("\"head\": {\"lengths\": [4, 3]},"),
            std::string::npos);
}

TEST(MachineWriter, NamesNodesThatStandForAnotherAxis) {
  tool::MachineRecord machine = fork();
  std::swap(machine.rotary_nodes[0], machine.rotary_nodes[1]);
  machine.tool_node = -1;
  const std::string text = tool::write_machine_text(machine, "m.k5m");
  // From the machine frame: X, Y, Z, the way back, C at 5, the way back, A at 7.
  EXPECT_NE(text.find("\"primary_node\": 7,\n    \"secondary_node\": 5,\n    \"tool_node\": -1\n"),
            std::string::npos)
      << text;
}

}  // namespace
