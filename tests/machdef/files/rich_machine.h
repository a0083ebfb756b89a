// One machine in which every field says something of its own, twice: as an object of the library, and as a
// record.
//
// A head-table machine in inches. Tree 0: fixed base (0), Z slide (1), B head (2), tool (3); beside the slide
// a plain node (4). Tree 1: C table (5), fixed base (6), X slide (7), Y slide (8).
#ifndef K5AX_TESTS_MACHDEF_FILES_RICH_MACHINE_H
#define K5AX_TESTS_MACHDEF_FILES_RICH_MACHINE_H

#include <array>
#include <cstring>

#include <k5ax/machdef.h>

#include "machdef/files/record_bytes.h"

namespace k5ax_test {

// A transform whose twelve values are first, first + 1, ...: no rotation, but files keep any twelve.
inline std::array<double, 12> numbers_from(double first) {
  std::array<double, 12> numbers;
  for (double& number : numbers) number = first++;
  return numbers;
}

inline AxisRecord axis_record(int type, int location, int mode, const std::array<double, 3>& base,
                              const std::array<double, 3>& vector, double min, double max) {
  AxisRecord axis;
  axis.base = base;
  axis.vector = vector;
  axis.min = min;
  axis.max = max;
  axis.type = type;
  axis.location = location;
  axis.mode = mode;
  return axis;
}

inline NodeRecord node_record(int kind, int parent, int id, unsigned int flags, double value,
                              const std::array<double, 12>& transform) {
  NodeRecord n;
  n.kind = kind;
  n.parent = parent;
  n.id = id;
  n.flags = flags;
  n.value = value;
  n.transform = transform;
  return n;
}

// Plain nodes with the ids 0, 1, 2, ... and these parents; the first is the root of tree 0.
inline MachineRecord record_of_parents(const std::vector<int>& parents) {
  MachineRecord record;
  for (const int parent : parents)
    record.nodes.push_back(
        node_record(kPlain, parent, static_cast<int>(record.nodes.size()), 0, 0, numbers_from(1)));
  if (!parents.empty()) record.roots[0] = 0;
  return record;
}

inline MachineRecord rich_record() {
  MachineRecord m;
  m.type = 1;
  m.mode = 77;
  m.metric = 0;
  m.loading_vector = {1.5, -2.5, 3.5};
  m.work_zero = {-4.25, 5.25, -6.25};
  m.head.b_angle = 0.125;
  m.head.c_angle = -0.25;
  m.head.length1 = 3.75;
  m.head.length2 = 2.125;
  m.head.tip = {0.5, 0.75, 5.875};
  m.head.tool_dir = {0.28, 0, 0.96};
  m.head.ref_dir = {0.96, 0, -0.28};
  m.head.offset = {7.5, 8.5, 9.5};
  m.head.flags = 0x80000004u;
  m.axes[0] = {1, axis_record(2, 1, 0, {0, 0, -1.75}, {0, 0, 1}, -6.5, 6.75)};
  m.axes[1] = {1, axis_record(1, 0, 0, {11, 12, 13}, {0, 1, 0}, -2.25, 2.375)};
  m.axes[2] = {1, axis_record(3, 1, 1, {21, 22, 23}, {1, 0, 0}, -20.5, 20.25)};
  m.axes[3] = {1, axis_record(4, 1, 1, {31, 32, 33}, {0, 1, 0}, -15.5, 15.25)};
  m.axes[4] = {1, axis_record(5, 0, 1, {41, 42, 43}, {0, 0, 1}, -10.5, 10.25)};

  m.nodes.push_back(node_record(kPlain, -1, -999, 0x40000000u, 0.5, numbers_from(100)));
  m.nodes.push_back(node_record(kAxis, 0, 3, 3, 1.25, numbers_from(200)));
  m.nodes.back().axis = axis_record(5, 0, 1, {51, 52, 53}, {0, 0, 1}, -50.5, 50.25);
  m.nodes.push_back(node_record(kAxis, 1, 5, 1, -0.75, numbers_from(300)));
  m.nodes.back().axis = axis_record(1, 0, 0, {61, 62, 63}, {0, 1, 0}, -2.5, 2.625);
  m.nodes.push_back(node_record(kTool, 2, 9, 8, 2.75, numbers_from(400)));
  HeadRecord& head = m.nodes.back().head;
  head.b_angle = 0.375;
  head.c_angle = -0.5;
  head.length1 = 1.125;
  head.length2 = 1.25;
  head.tip = {1.375, 1.5, 1.625};
  head.tool_dir = {0.6, 0, 0.8};
  head.ref_dir = {0.8, 0, -0.6};
  head.offset = {2.125, 2.25, 2.375};
  head.flags = 0x20000001u;
  m.nodes.push_back(node_record(kPlain, 0, 20, 16, 3.25, numbers_from(500)));
  m.nodes.push_back(node_record(kAxis, -1, 4, 1, 0.625, numbers_from(600)));
  m.nodes.back().axis = axis_record(2, 1, 0, {0, 0, 73}, {0, 0, 1}, -7.5, 7.625);
  m.nodes.push_back(node_record(kPlain, 5, -999, 32, 4.25, numbers_from(700)));
  m.nodes.push_back(node_record(kAxis, 6, 1, 3, 5.25, numbers_from(800)));
  m.nodes.back().axis = axis_record(3, 1, 1, {81, 82, 83}, {1, 0, 0}, -80.5, 80.25);
  m.nodes.push_back(node_record(kAxis, 7, 2, 3, 6.25, numbers_from(900)));
  m.nodes.back().axis = axis_record(4, 1, 1, {91, 92, 93}, {0, 1, 0}, -90.5, 90.25);

  m.roots = {0, 5};
  m.rotary_nodes = {5, 2};
  m.tool_node = 3;
  m.discipline = -5;
  return m;
}

inline Geometry::Matrix matrix_of(const std::array<double, 12>& v) {
  Geometry::Matrix m;
  m.SetMatrix(v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8], v[9], v[10], v[11]);
  return m;
}

// Sets node and links of a node from the pool or a fresh one.
inline void set_node(md::sg::node& n, int id, unsigned int flags, double value, double first_of_transform) {
  n.reset();
  n.id(id);
  n.flags(flags);
  n.value(value);
  n.transform(matrix_of(numbers_from(first_of_transform)));
}

inline boost::shared_ptr<md::sg::tnode<md::CAxis2>> make_axis_node(AXIS_TYPE type, AXIS_LOCATION location,
                                                                   AXIS_MODE mode,
                                                                   const Geometry::TPoint<double>& base,
                                                                   const Geometry::TPoint<double>& vector,
                                                                   double min, double max) {
  const boost::shared_ptr<md::sg::tnode<md::CAxis2>> n = md::NodeAxis_Create();
  n->SetAxis(type);
  n->SetAxisLocation(location);
  n->mode(mode);
  n->SetBaseVector(base);
  n->SetAxisVector(vector);
  n->SetMin(min);
  n->SetMax(max);
  n->machdef(nullptr);
  return n;
}

// The machine of rich_record, made through the class interface.
inline void make_rich(md::CMachDef& m) {
  m.setMachType(MC_HT);
  m.set_mode(static_cast<MACHINE_MODE>(77));
  m.setMetric(false);
  m.loading_vector({1.5, -2.5, 3.5});
  m.mwZeroPos({-4.25, 5.25, -6.25});
  m.discipline(static_cast<K5AX_DISCIPLINE>(-5));

  angled_head& head = m.head();
  head.b_angle = 0.125;
  head.c_angle = -0.25;
  head.length1 = 3.75;
  head.length2 = 2.125;
  head.tip = {0.5, 0.75, 5.875};
  head.tool_dir = {0.28, 0, 0.96};
  head.ref_dir = {0.96, 0, -0.28};
  head.offset = {7.5, 8.5, 9.5};
  head.flags = 0x80000004u;

  m.setPrimary(md::CAxis2::create(AXIS_C, TABLE, {0, 0, -1.75}, {0, 0, 1}, -6.5, 6.75, ROTARY));
  m.setSecondary(md::CAxis2::create(AXIS_B, HEAD, {11, 12, 13}, {0, 1, 0}, -2.25, 2.375, ROTARY));
  m.xyz_axes()[0] = md::CAxis2::create(AXIS_X, TABLE, {21, 22, 23}, {1, 0, 0}, -20.5, 20.25, LINEAR);
  m.xyz_axes()[1] = md::CAxis2::create(AXIS_Y, TABLE, {31, 32, 33}, {0, 1, 0}, -15.5, 15.25, LINEAR);
  m.xyz_axes()[2] = md::CAxis2::create(AXIS_Z, HEAD, {41, 42, 43}, {0, 0, 1}, -10.5, 10.25, LINEAR);

  const auto base0 = md::sg::node::create();
  const auto z = make_axis_node(AXIS_Z, HEAD, LINEAR, {51, 52, 53}, {0, 0, 1}, -50.5, 50.25);
  const auto b = make_axis_node(AXIS_B, HEAD, ROTARY, {61, 62, 63}, {0, 1, 0}, -2.5, 2.625);
  const auto tool = md::TOOL_NODE_Create();
  const auto beside = md::sg::node::create();
  const auto c = make_axis_node(AXIS_C, TABLE, ROTARY, {0, 0, 73}, {0, 0, 1}, -7.5, 7.625);
  const auto base1 = md::sg::node::create();
  const auto x = make_axis_node(AXIS_X, TABLE, LINEAR, {81, 82, 83}, {1, 0, 0}, -80.5, 80.25);
  const auto y = make_axis_node(AXIS_Y, TABLE, LINEAR, {91, 92, 93}, {0, 1, 0}, -90.5, 90.25);
  set_node(*base0, -999, 0x40000000u, 0.5, 100);
  set_node(*z, 3, 3, 1.25, 200);
  set_node(*b, 5, 1, -0.75, 300);
  set_node(*tool, 9, 8, 2.75, 400);
  set_node(*beside, 20, 16, 3.25, 500);
  set_node(*c, 4, 1, 0.625, 600);
  set_node(*base1, -999, 32, 4.25, 700);
  set_node(*x, 1, 3, 5.25, 800);
  set_node(*y, 2, 3, 6.25, 900);
  angled_head& node_head = tool->payload();
  std::memset(static_cast<void*>(&node_head), 0, sizeof node_head);
  node_head.b_angle = 0.375;
  node_head.c_angle = -0.5;
  node_head.length1 = 1.125;
  node_head.length2 = 1.25;
  node_head.tip = {1.375, 1.5, 1.625};
  node_head.tool_dir = {0.6, 0, 0.8};
  node_head.ref_dir = {0.8, 0, -0.6};
  node_head.offset = {2.125, 2.25, 2.375};
  node_head.flags = 0x20000001u;

  base0->add_child(z);
  z->add_child(b);
  b->add_child(tool);
  base0->add_child(beside);
  c->add_child(base1);
  base1->add_child(x);
  x->add_child(y);
  m.SG()[0] = base0;
  m.SG()[1] = c;
  m.SG_RotAxs()[0] = c;
  m.SG_RotAxs()[1] = b;
  m.tool_node(tool);
}

struct Rich : md::CMachDef {
  Rich() { make_rich(*this); }
};

}  // namespace k5ax_test

#endif
