// The machines whose files are kept in the tree for ever, as records.
#ifndef K5AX_TESTS_MACHDEF_FILES_GOLDEN_MACHINES_H
#define K5AX_TESTS_MACHDEF_FILES_GOLDEN_MACHINES_H

#include <ostream>
#include <string>
#include <vector>

#include "machdef/files/record_bytes.h"
#include "machdef/files/rich_machine.h"

namespace k5ax_test {

struct GoldenMachine {
  std::string file;
  MachineRecord record;
};

// How the test framework shows one.
inline void PrintTo(const GoldenMachine& machine, std::ostream* out) { *out << machine.file; }

// A metric table-table machine without trees: C on A, as its builder measured it.
inline MachineRecord trunnion_record() {
  MachineRecord m;
  m.type = 0;
  m.mode = 3;
  m.work_zero = {250, -125, 80.5};
  m.axes[0] = {
      1, axis_record(0, 1, 0, {0, -35.25, -45.125}, {1, 0, 0}, -2.0943951023931953, 0.5235987755982988)};
  m.axes[1] = {1, axis_record(2, 1, 0, {0, 0, -15}, {0, 0, 1}, -6.283185307179586, 6.283185307179586)};
  m.axes[2] = {1, axis_record(3, 0, 1, {0, 0, 0}, {1, 0, 0}, -400, 400)};
  m.axes[3] = {1, axis_record(4, 0, 1, {0, 0, 0}, {0, 1, 0}, -255, 255)};
  m.axes[4] = {1, axis_record(5, 0, 1, {0, 0, 0}, {0, 0, 1}, -350, 160)};
  m.discipline = 1;
  return m;
}

// An inch head-head machine whose spindle is tilted for good; trees without fixed nodes.
inline MachineRecord fork_record() {
  MachineRecord m;
  m.type = 2;
  m.mode = 0;
  m.metric = 0;
  m.loading_vector = {0, 0, 12.5};
  m.head.b_angle = 0.7853981633974483;
  m.head.length1 = 4;
  m.head.length2 = 2;
  m.head.tip = {1.4142135623730951, 0, 5.414213562373095};
  m.head.tool_dir = {0.7071067811865475, 0, 0.7071067811865476};
  m.head.ref_dir = {0.7071067811865476, 0, -0.7071067811865475};
  m.axes[0] = {1, axis_record(2, 0, 0, {0, 0, 20}, {0, 0, 1}, -3.5, 3.5)};
  m.axes[1] = {1, axis_record(0, 0, 0, {0, 0, 14}, {1, 0, 0}, -1.9, 1.9)};
  m.nodes.push_back(node_record(kAxis, -1, 4, 1, 0, {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, -20}));
  m.nodes.back().axis = m.axes[0].axis;
  m.nodes.push_back(node_record(kAxis, 0, 5, 1, 0, {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, -14}));
  m.nodes.back().axis = m.axes[1].axis;
  m.nodes.push_back(node_record(kTool, 1, 6, 0, 0, {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, -6}));
  m.nodes.back().head.length1 = 4;
  m.nodes.back().head.length2 = 2;
  m.nodes.back().head.tool_dir = {};
  m.nodes.back().head.ref_dir = {};
  m.nodes.push_back(node_record(kPlain, -1, 7, 0, 0, {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0}));
  m.roots = {0, 3};
  m.rotary_nodes = {0, 1};
  m.tool_node = 2;
  return m;
}

// What other writers may have left: padding that is not zero, numbers that are none, enums that nobody knows.
inline MachineRecord odd_record() {
  MachineRecord m = rich_record();
  m.type = 7;
  m.mode = -2147483647 - 1;
  m.metric = 1;
  m.loading_vector = {-0.0, 5e-324, 1.7976931348623157e308};
  m.head.padding = {0xde, 0xad, 0xbe, 0xef};
  m.axes[1].present = 0;
  m.axes[2].axis.type = 6;
  m.axes[2].axis.vector = {3, 4, 0};
  m.nodes[3].head.padding = {1, 2, 3, 4};
  m.nodes[4].id = 2147483647;
  m.nodes[4].flags = 0xffffffffu;
  m.rotary_nodes = {-1, 0};
  m.discipline = 2147483647;
  return m;
}

// Each is saved by the library byte for byte as it stands.
inline std::vector<GoldenMachine> golden_machines() {
  return {{"fresh", MachineRecord()},
          {"rich", rich_record()},
          {"trunnion", trunnion_record()},
          {"fork", fork_record()},
          {"odd", odd_record()}};
}

}  // namespace k5ax_test

#endif
