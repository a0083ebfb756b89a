// Trees made from the axes: they are those of the shipped machines, and pose as the transforms say.
#include "tool/machine/derive_trees.h"

#include "tool/machine/machine_file.h"
#include "tool/machine/machine_reader.h"
#include "tool/machine/machine_record.h"
#include "tool/machine/machine_words.h"

#include <cmath>
#include <cstddef>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "example_machines.h"
#include "machdef/files/memory_stream.h"
#include "support/near.h"
#include "system/tree_support.h"
#include "tool/process.h"
#include "tool/shipped.h"

namespace {

using namespace k5ax_test;
using tool_test::in_tree;
using tool_test::kShipped;
using tool_test::read_file;

// What the cosine of a right angle is off by. The shipped machines have that of the GNU library.
#ifdef _WIN32
constexpr double kOtherCosine = 1e-15;
#else
constexpr double kOtherCosine = 0;
#endif

void take_over_last_bits(const tool::MachineRecord& shipped, tool::MachineRecord& derived) {
  ASSERT_EQ(derived.nodes.size(), shipped.nodes.size());
  for (std::size_t i = 0; i < shipped.nodes.size(); ++i) {
    tool::Transform& transform = derived.nodes[i].transform;
    const tool::Transform& wanted = shipped.nodes[i].transform;
    for (std::size_t j = 0; j < transform.size(); ++j)
      if (std::abs(transform[j] - wanted[j]) < kOtherCosine) transform[j] = wanted[j];
  }
}

// To the last bit, so they pose alike too. The fork's trees are written out in its text: here they are left
// out.
TEST(DeriveTrees, GivesEveryShippedMachineItsTrees) {
  for (const std::string name : kShipped) {
    const std::string bytes = read_file(in_tree("examples/machines/" + name + ".k5m"));
    const tool::MachineRecord shipped = tool::record_of(bytes);
    tool::MachineRecord derived = shipped;
    tool::ToolPlace place;
    if (name == "table_table_trunnion") place.mount = Point(0, 0, 520);
    place.tool_point = shipped.nodes[static_cast<std::size_t>(shipped.tool_node)].head.offset;
    derived.nodes.clear();
    derived.roots = {-1, -1};
    derived.rotary_nodes = {-1, -1};
    derived.tool_node = -1;
    ASSERT_EQ(tool::derive_obstacle(derived).wrong, "");
    tool::derive_trees(derived, place);
    take_over_last_bits(shipped, derived);
    EXPECT_SAME_BYTES(tool::bytes_of(derived), bytes) << name;
  }
}

// The sample of how a program builds a machine, and the text.
TEST(DeriveTrees, MakesTheMachineThatTheSampleProgramBuilds) {
  md::CMachDef built;
  examples::build_table_table_trunnion(built);
  EXPECT_SAME_BYTES(
      saved(built),
      tool::bytes_of(tool::read_record(in_tree("examples/machines/table_table_trunnion.json"))));
}

// A random machine of the three types as a record without trees; inclined axes and an angled head included.
tool::MachineRecord random_axes(Random& random, tool::ToolPlace& place) {
  const TreePlan plan = random_plan(random);
  tool::MachineRecord machine;
  machine.type = plan.rotary.type;
  machine.head = tool::straight_head();
  machine.head.tilt = plan.head_tilt;
  machine.head.turn = plan.head_turn;
  machine.head.lengths[0] = plan.head_length1;
  machine.head.lengths[1] = plan.head_length2;
  const vector_form::Axis* const rotaries[] = {&plan.rotary.primary, &plan.rotary.secondary};
  for (int i = 0; i < 2; ++i) {
    if (!rotaries[i]->present) continue;
    tool::AxisRecord axis;
    axis.letter = rotaries[i]->letter;
    axis.location = rotaries[i]->location;
    axis.motion = ROTARY;
    axis.base = vector_form::point(rotaries[i]->base);
    axis.direction = vector_form::point(rotaries[i]->direction);
    machine.axes[static_cast<std::size_t>(i)] = axis;
  }
  for (int i = 0; i < 3; ++i) {
    tool::AxisRecord axis;
    axis.letter = AXIS_X + i;
    axis.location = plan.slide_on_table[i] ? TABLE : HEAD;
    axis.motion = LINEAR;
    axis.direction = tool::direction_of_letter(axis.letter);
    machine.axes[static_cast<std::size_t>(tool::kX + i)] = axis;
  }
  if (random.one_in(2)) place.mount = vector_form::point(plan.nose);
  place.tool_point = vector_form::point(plan.tool_point);
  return machine;
}

// From the part to the machine by the library's transform, through both trees back to the part: the tool
// point is where it was programmed.
TEST(DeriveTrees, BringsAPointFromThePartThroughTheTreesBackToThePart) {
  Random random(8);
  int posed = 0;
  for (int i = 0; i < 600; ++i) {
    tool::ToolPlace place;
    tool::MachineRecord record = random_axes(random, place);
    ASSERT_EQ(tool::derive_obstacle(record).wrong, "");
    tool::derive_trees(record, place);
    const std::unique_ptr<md::CMachDef> machine = tool::machine_of(record);

    const Point p_part = vector_form::point(random.vector(kRandomSize));
    const Point abc = vector_form::point(random.angles());
    const Point p_mach = machine->Part2MachCoords(p_part, abc);
    if (!machine->getPrimary() && !machine->getSecondary()) continue;  // see Part2MachTransform
    zero_table(*machine);
    ASSERT_TRUE(md::UpdateNodeAxes_(machine.get(), p_mach, abc));
    EXPECT_NEAR_POINT(tool_on_part(*machine), p_part, kTreeTolerance) << "machine " << i;
    ++posed;
  }
  EXPECT_GT(posed, 500);
}

TEST(DeriveTrees, GivesEveryAxisNodeAPositiveIdOfItsOwn) {
  Random random(9);
  tool::ToolPlace place;
  tool::MachineRecord record = random_axes(random, place);
  for (std::size_t i = 0; i < 2; ++i)
    if (!record.axes[i]) record.axes[i] = record.axes[1 - i] ? record.axes[1 - i] : record.axes[tool::kX];
  tool::derive_trees(record, place);
  int found = 0;
  for (const tool::NodeRecord& node : record.nodes) {
    if (node.kind != tool::kAxisNode) continue;
    EXPECT_EQ(found & (1 << node.id), 0) << node.id;
    EXPECT_GT(node.id, 0);
    found |= 1 << node.id;
  }
  EXPECT_NE(found, 0);
}

// ---- what cannot be derived ----

tool::MachineRecord trunnion() {
  return tool::read_record(in_tree("examples/machines/table_table_trunnion.json"));
}

TEST(DeriveTrees, NeedsOneOfTheThreeTypes) {
  tool::MachineRecord machine = trunnion();
  machine.type = 3;
  EXPECT_EQ(tool::derive_obstacle(machine).slot, -1);
  EXPECT_NE(tool::derive_obstacle(machine).wrong, "");
}

TEST(DeriveTrees, NeedsEveryAxisSomewhere) {
  tool::MachineRecord machine = trunnion();
  machine.axes[tool::kY]->location = 2;
  EXPECT_EQ(tool::derive_obstacle(machine).slot, tool::kY);
}

TEST(DeriveTrees, NeedsRotaryAxesWhereTheTypeHasThem) {
  tool::MachineRecord machine = trunnion();
  machine.axes[tool::kSecondary]->location = HEAD;
  EXPECT_EQ(tool::derive_obstacle(machine).slot, tool::kSecondary);
}

}  // namespace
