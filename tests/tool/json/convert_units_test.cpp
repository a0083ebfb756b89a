// A whole machine in the other unit.
#include "tool/machine/convert_units.h"

#include "tool/machine/machine_file.h"
#include "tool/machine/machine_record.h"

#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "machdef/files/memory_stream.h"
#include "support/near.h"
#include "system/tree_support.h"
#include "tool/json/random_record.h"
#include "tool/process.h"
#include "tool/shipped.h"

namespace {

using namespace k5ax_test;
using tool_test::in_tree;
using tool_test::kShipped;

tool::MachineRecord shipped(const std::string& name) {
  return tool::read_record(in_tree("examples/machines/" + name + ".k5m"));
}

// Where the tool stands on the part, and the slides, for machine coordinates in the machine's unit.
Point posed(md::CMachDef& machine, const Point& xyz, const Point& abc, double (&slides)[3]) {
  zero_table(machine);
  EXPECT_TRUE(md::UpdateNodeAxes_(&machine, xyz, abc));
  for (int i = 0; i < 3; ++i) slides[i] = node_with_id(machine, kXId + i)->value();
  return tool_on_part(machine);
}

TEST(ConvertUnits, PosesEveryShippedMachineAsBefore) {
  Random random(5);
  int posed_count = 0;
  for (const std::string name : kShipped) {
    const tool::MachineRecord before = shipped(name);
    tool::MachineRecord after = before;
    tool::convert_units(after, !before.is_metric);
    EXPECT_EQ(after.is_metric, !before.is_metric);
    const double factor = after.is_metric ? 25.4 : 1 / 25.4;
    const std::unique_ptr<md::CMachDef> first = tool::machine_of(before);
    const std::unique_ptr<md::CMachDef> second = tool::machine_of(after);
    for (int i = 0; i < 50; ++i) {
      const Point xyz = vector_form::point(random.vector(before.is_metric ? 200 : 8));
      const Point abc = vector_form::point(random.angles());
      double slides[3];
      double scaled_slides[3];
      const Point p_part = posed(*first, xyz, abc, slides);
      const Point p_scaled = posed(*second, xyz * factor, abc, scaled_slides);
      for (double& slide : slides) slide *= factor;
      // Lengths within 1700 millimetres along both trees: 12 * 4 * eps * 1700 = 1.9e-11, and that of two
      // machines.
      EXPECT_NEAR_POINT(p_scaled, p_part * factor, 4e-11) << name;
      EXPECT_NEAR_ARRAY(scaled_slides, slides, 3, 4e-11) << name;
      ++posed_count;
    }
  }
  EXPECT_EQ(posed_count, 200);
}

TEST(ConvertUnits, ConvertsWhatTheLibraryLeavesToTheHost) {
  tool::MachineRecord machine = shipped("head_table_inch");
  tool::convert_units(machine, true);
  // -26 and 8 inches.
  EXPECT_NEAR(machine.work_zero.z, -660.4, 1e-12);
  EXPECT_NEAR(machine.loading_vector.z, 203.2, 1e-12);
  // The way back to A's line, 6.5005 inches up; the head that the tool node carries, 4.25 inches.
  EXPECT_NEAR(machine.nodes[2].transform[11], 6.5005 * 25.4, 1e-12);
  EXPECT_NEAR(machine.nodes[static_cast<std::size_t>(machine.tool_node)].head.lengths[0], 107.95, 1e-12);
}

TEST(ConvertUnits, LeavesAnglesAndDirections) {
  const tool::MachineRecord before = shipped("head_table_inch");
  tool::MachineRecord after = before;
  tool::convert_units(after, true);
  for (const int slot : {tool::kPrimary, tool::kSecondary}) {
    const auto& a = *before.axes[static_cast<std::size_t>(slot)];
    const auto& b = *after.axes[static_cast<std::size_t>(slot)];
    EXPECT_EQ(a.min, b.min);
    EXPECT_EQ(a.max, b.max);
    EXPECT_EQ(a.direction, b.direction);
  }
  EXPECT_EQ(before.head.tilt, after.head.tilt);
  EXPECT_EQ(before.head.direction, after.head.direction);
}

// One unit in the last place, or a rounding of zero.
bool is_next_to(double a, double b) { return a == b || std::nextafter(a, b) == b; }

// Every double of the record is a length that went there and back, or was left alone: within a unit in the
// last place either way. Transforms that follow from what a node carries are made anew of such lengths and
// are left out of this; the pose is tested above.
TEST(ConvertUnits, ThereAndBackIsWithinAUnitInTheLastPlace) {
  Random random(31);
  int compared = 0;
  for (int i = 0; i < 500; ++i) {
    MachineRecord record = random_record(random);
    const auto tame = [&random](double& x) {
      if (std::abs(x) > 1e300 || (x != 0 && std::abs(x) < 1e-300)) x = random.between(-300, 300);
    };
    for (NodeRecord& node : record.nodes)
      for (double& x : node.transform) tame(x);
    const tool::MachineRecord before = tool::record_of(pack(record));
    tool::MachineRecord after = before;
    tool::convert_units(after, !before.is_metric);
    tool::convert_units(after, before.is_metric);
    for (std::size_t n = 0; n < before.nodes.size(); ++n) {
      if (before.nodes[n].kind != tool::kPlainNode) continue;
      for (std::size_t k = 0; k < 12; ++k)
        EXPECT_TRUE(is_next_to(before.nodes[n].transform[k], after.nodes[n].transform[k]))
            << before.nodes[n].transform[k] << " " << after.nodes[n].transform[k];
      ++compared;
    }
  }
  EXPECT_GT(compared, 300);

  for (const std::string name : kShipped) {
    const tool::MachineRecord before = shipped(name);
    tool::MachineRecord after = before;
    tool::convert_units(after, !before.is_metric);
    tool::convert_units(after, before.is_metric);
    for (std::size_t slot = 0; slot < tool::kSlotCount; ++slot) {
      const auto& a = *before.axes[slot];
      const auto& b = *after.axes[slot];
      for (const auto& pair : {std::pair<double, double>(a.min, b.min),
                               {a.max, b.max},
                               {a.base.x, b.base.x},
                               {a.base.y, b.base.y},
                               {a.base.z, b.base.z}})
        EXPECT_TRUE(is_next_to(pair.first, pair.second)) << name << " " << pair.first << " " << pair.second;
    }
    EXPECT_TRUE(is_next_to(before.work_zero.z, after.work_zero.z));
    EXPECT_TRUE(is_next_to(before.head.tip.z, after.head.tip.z));
  }
}

// A slide that stands at 254 millimetres stands at 10 inches.
TEST(ConvertUnits, ConvertsTheValueOfASlideAndNotOfARotaryAxis) {
  tool::MachineRecord machine = shipped("head_head_fork");
  for (tool::NodeRecord& node : machine.nodes)
    if (node.kind == tool::kAxisNode) node.value = 254;
  tool::convert_units(machine, false);
  int slides = 0;
  for (const tool::NodeRecord& node : machine.nodes) {
    if (node.kind != tool::kAxisNode) continue;
    EXPECT_EQ(node.value, tool::is_linear(node.axis) ? 10 : 254);
    slides += tool::is_linear(node.axis) ? 1 : 0;
  }
  EXPECT_EQ(slides, 3);
}

}  // namespace
