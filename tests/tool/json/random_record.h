// Random machine files: everything that a file can hold and text must bring back, the odd things included.
#ifndef K5AX_TESTS_TOOL_JSON_RANDOM_RECORD_H
#define K5AX_TESTS_TOOL_JSON_RANDOM_RECORD_H

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include "machdef/files/record_bytes.h"
#include "support/random_machine.h"

namespace k5ax_test {

inline double random_number(Random& random) {
  static const double special[] = {0.0,
                                   -0.0,
                                   1.0,
                                   -1.0,
                                   std::numeric_limits<double>::denorm_min(),
                                   -std::numeric_limits<double>::denorm_min(),
                                   std::numeric_limits<double>::min(),
                                   std::numeric_limits<double>::max(),
                                   -std::numeric_limits<double>::max(),
                                   1e22,
                                   1e23,
                                   0.1,
                                   9007199254740993.0,
                                   math::m_pi};
  switch (random.below(6)) {
    case 0:
      return random.of(special);
    case 1:
      return random.below(1000) / 8.0;
    case 2:
      return random.between(-1e-8, 1e-8);
    case 3:
      return random.between(-1, 1) * math::D2R;
    case 4:
      return random.below(721) * math::D2R;
    default:
      return random.between(-300, 300);
  }
}

template <std::size_t count>
void fill(Random& random, std::array<double, count>& numbers) {
  for (double& number : numbers) number = random_number(random);
}

// A known number mostly, and now and then one that means nothing.
inline int random_enum(Random& random, int known) {
  static const int odd[] = {
      -1, 6, 7, 8, 100, -100, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};
  return random.one_in(4) ? random.of(odd) : random.below(known);
}

inline unsigned int random_flags(Random& random) {
  return random.one_in(3) ? static_cast<unsigned int>(random.below(1 << 16)) * 65537u
                          : static_cast<unsigned int>(random.below(4));
}

inline AxisRecord random_axis_record(Random& random) {
  static const std::array<double, 3> along[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {-0.0, 0, 1}};
  AxisRecord axis;
  if (random.one_in(2)) fill(random, axis.base);
  fill(random, axis.vector);
  axis.type = random_enum(random, 6);
  if (random.one_in(2)) axis.vector = random.of(along);
  if (axis.type >= 0 && axis.type < 6 && random.one_in(2)) axis.vector = along[axis.type % 3];
  axis.min = random_number(random);
  axis.max = random_number(random);
  axis.location = random_enum(random, 2);
  axis.mode = random.one_in(2) && axis.type >= 0 && axis.type < 6 ? axis.type / 3 : random_enum(random, 2);
  return axis;
}

inline HeadRecord random_head_record(Random& random) {
  HeadRecord head;
  if (random.one_in(3)) return head;
  if (random.one_in(2)) head.b_angle = random_number(random);
  if (random.one_in(2)) head.c_angle = random_number(random);
  if (random.one_in(2)) head.length1 = random_number(random);
  if (random.one_in(2)) head.length2 = random_number(random);
  if (random.one_in(2)) head.tip = {0, 0, head.length1 + head.length2};
  if (random.one_in(4)) fill(random, head.tip);
  if (random.one_in(4)) fill(random, head.tool_dir);
  if (random.one_in(4)) fill(random, head.ref_dir);
  if (random.one_in(4)) fill(random, head.offset);
  if (random.one_in(2)) head.flags = random_flags(random);
  if (random.one_in(4))
    for (unsigned char& byte : head.padding) byte = static_cast<unsigned char>(random.below(256));
  return head;
}

inline NodeRecord random_node_record(Random& random, const MachineRecord& machine) {
  NodeRecord n;
  n.kind = random.below(3);
  n.id = random.one_in(4) ? random_enum(random, 10) : random.one_in(3) ? -999 : random.below(20);
  n.flags = random_flags(random);
  if (random.one_in(2)) n.value = random_number(random);
  if (random.one_in(2)) fill(random, n.transform);
  if (random.one_in(2))
    std::copy_n(std::array<double, 9>{1, 0, 0, 0, 1, 0, 0, 0, 1}.begin(), 9, n.transform.begin());
  if (n.kind == kAxis) {
    const AxisSlot& slot = machine.axes[static_cast<std::size_t>(random.below(5))];
    n.axis = slot.present != 0 && random.one_in(2) ? slot.axis : random_axis_record(random);
    // What the library makes of a slide at its value; a product that overflows is no file for text.
    const auto overflows = [&n](double x) { return !std::isfinite(x * n.value); };
    if (n.axis.mode == LINEAR && random.one_in(2) &&
        std::none_of(n.axis.vector.begin(), n.axis.vector.end(), overflows)) {
      n.transform = NodeRecord().transform;
      for (std::size_t i = 0; i < 3; ++i) n.transform[9 + i] = n.axis.vector[i] * n.value;
    }
  }
  if (n.kind == kTool) {
    n.head = random.one_in(2) ? machine.head : random_head_record(random);
    fill(random, n.head.offset);
    if (random.one_in(2)) {
      n.transform = NodeRecord().transform;
      for (std::size_t i = 0; i < 3; ++i) n.transform[9 + i] = -n.head.offset[i];
    }
  }
  return n;
}

// Two trees in the order in which they are written, each of any shape.
inline void add_random_trees(Random& random, MachineRecord& machine) {
  for (std::size_t tree = 0; tree < 2; ++tree) {
    const int count = random.below(9);
    std::vector<int> path;
    for (int i = 0; i < count; ++i) {
      NodeRecord n = random_node_record(random, machine);
      if (i > 0 && random.one_in(3))
        path.resize(1 + static_cast<std::size_t>(random.below(static_cast<int>(path.size()))));
      n.parent = path.empty() ? -1 : path.back();
      path.push_back(static_cast<int>(machine.nodes.size()));
      if (i == 0) machine.roots[tree] = path.back();
      machine.nodes.push_back(n);
    }
  }
}

// Nodes that point anywhere, as long as none is above itself: a reader takes them all.
inline void add_random_list(Random& random, MachineRecord& machine) {
  const int count = random.below(10);
  const bool is_upside_down = random.one_in(3);
  for (int i = 0; i < count; ++i) {
    NodeRecord n = random_node_record(random, machine);
    const int other = is_upside_down ? i + 1 + random.below(count - i) : random.below(i + 1) - 1;
    n.parent = random.one_in(8) ? random_enum(random, 1) : other;
    if (!is_upside_down && n.parent >= i) n.parent = -1;
    if (is_upside_down && n.parent <= i) n.parent = -1;
    machine.nodes.push_back(n);
  }
  for (int& root : machine.roots) root = random.below(count + 2) - 1;
}

inline MachineRecord random_record(Random& random) {
  MachineRecord m;
  m.type = random_enum(random, 3);
  m.mode = random_enum(random, 3);
  m.metric = random.below(2);
  m.discipline = random_enum(random, 3);
  fill(random, m.loading_vector);
  fill(random, m.work_zero);
  m.head = random_head_record(random);
  for (AxisSlot& slot : m.axes) {
    slot.present = random.one_in(4) ? 0 : 1;
    if (slot.present != 0) slot.axis = random_axis_record(random);
  }
  if (random.one_in(4))
    add_random_list(random, m);
  else
    add_random_trees(random, m);

  const int count = static_cast<int>(m.nodes.size());
  for (int* place : {&m.rotary_nodes[0], &m.rotary_nodes[1], &m.tool_node})
    *place = random.one_in(8) ? random_enum(random, 4) : random.below(count + 2) - 1;
  return m;
}

}  // namespace k5ax_test

#endif
