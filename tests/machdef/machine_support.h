// What the tests about machine definitions share: clean nodes, a machine that has everything, what the node
// pools hand out.
#ifndef K5AX_TESTS_MACHDEF_MACHINE_SUPPORT_H
#define K5AX_TESTS_MACHDEF_MACHINE_SUPPORT_H

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

#include <boost/pointer_cast.hpp>
#include <boost/shared_ptr.hpp>

#include <gtest/gtest.h>

#include <k5ax/machdef.h>

#include "machdef/files/memory_stream.h"
#include "support/near.h"

namespace k5ax_test {

using AxisPtr = boost::shared_ptr<md::CAxis2>;
using NodePtr = boost::shared_ptr<md::sg::node>;
using AxisNodePtr = boost::shared_ptr<md::sg::tnode<md::CAxis2>>;
using ToolNodePtr = boost::shared_ptr<md::sg::tnode<angled_head>>;

// Twelve different numbers, so that a copied transform cannot be mistaken for another. Nodes take any twelve.
inline Geometry::Matrix numbered_transform(double start) {
  Geometry::Matrix m;
  m.SetMatrix(start, start + 1, start + 2, start + 3, start + 4, start + 5, start + 6, start + 7, start + 8,
              start + 9, start + 10, start + 11);
  return m;
}

// Nodes as a host makes them: cleaned, since they may come out of a pool.
inline NodePtr plain_node(int id) {
  const NodePtr n = md::sg::node::create();
  n->reset();
  n->id(id);
  return n;
}

inline AxisNodePtr axis_node(int id, AXIS_TYPE letter, AXIS_LOCATION location,
                             const Geometry::TPoint<double>& base, const Geometry::TPoint<double>& vector,
                             double min, double max, AXIS_MODE mode) {
  const AxisNodePtr n = md::NodeAxis_Create();
  n->reset();
  n->id(id);
  n->SetAxis(letter);
  n->SetAxisLocation(location);
  n->SetBaseVector(base);
  n->SetAxisVector(vector);
  n->SetMin(min);
  n->SetMax(max);
  n->mode(mode);
  n->machdef(nullptr);
  return n;
}

inline ToolNodePtr tool_node(int id) {
  const ToolNodePtr n = md::TOOL_NODE_Create();
  n->reset();
  n->id(id);
  k5ax_angled_head_initialise(&n->payload());
  return n;
}

inline std::vector<NodePtr> nodes_of(const md::CMachDef& machdef) {
  std::vector<NodePtr> nodes = md::sg::node::all_nodes(machdef.SG()[0]);
  const std::vector<NodePtr> second = md::sg::node::all_nodes(machdef.SG()[1]);
  nodes.insert(nodes.end(), second.begin(), second.end());
  return nodes;
}

inline NodePtr find_node(const md::CMachDef& machdef, int id) {
  for (const NodePtr& n : nodes_of(machdef))
    if (n->id() == id) return n;
  ADD_FAILURE() << "no node of id " << id;
  return NodePtr();
}

inline AxisNodePtr find_axis_node(const md::CMachDef& machdef, int id) {
  return boost::dynamic_pointer_cast<md::sg::tnode<md::CAxis2>>(find_node(machdef, id));
}

// Ids of the nodes in `give_scene`.
constexpr int kMachineRoot = 1;
constexpr int kLinearX = 10;
constexpr int kRotaryC = 20;
constexpr int kToolMount = 5;
constexpr int kToolNode = 30;
constexpr int kPartRoot = 2;
constexpr int kRotaryA = 21;
constexpr int kPartLeaf = 3;
constexpr std::size_t kSceneNodes = 8;

// Two trees with every kind of node:
//   tree 0: machine root - X - C - mount - tool, tree 1: part root - A - leaf
// Every node differs from the others in transform, value and flags. The definition has no lists of its nodes
// yet: those are made by cloning.
inline void give_scene(md::CMachDef& machdef) {
  const NodePtr tree0[] = {plain_node(kMachineRoot),
                           axis_node(kLinearX, AXIS_X, HEAD, {7, 8, 9}, {1, 0, 0}, -50, 60, LINEAR),
                           axis_node(kRotaryC, AXIS_C, HEAD, {1, 2, 3}, {0, 0, 1}, -2, 3, ROTARY),
                           plain_node(kToolMount), tool_node(kToolNode)};
  const NodePtr tree1[] = {plain_node(kPartRoot),
                           axis_node(kRotaryA, AXIS_A, TABLE, {4, 5, 6}, {1, 0, 0}, -1, 1, ROTARY),
                           plain_node(kPartLeaf)};
  for (std::size_t i = 1; i < 5; ++i) tree0[i - 1]->add_child(tree0[i]);
  for (std::size_t i = 1; i < 3; ++i) tree1[i - 1]->add_child(tree1[i]);
  machdef.SG()[0] = tree0[0];
  machdef.SG()[1] = tree1[0];
  machdef.SG_RotAxs()[0] = tree0[2];
  machdef.SG_RotAxs()[1] = tree1[1];
  machdef.tool_node(boost::dynamic_pointer_cast<md::sg::tnode<angled_head>>(tree0[4]));

  int place = 1;
  for (const NodePtr& n : nodes_of(machdef)) {
    n->transform(numbered_transform(100.0 * place));
    n->value(0.25 * place);
    n->flags(static_cast<unsigned int>(0x40 + place));
    ++place;
  }
}

// A head in which every field differs.
inline angled_head numbered_head() {
  angled_head head;
  k5ax_angled_head_initialise(&head);
  head.b_angle = 0.5;
  head.c_angle = -0.75;
  head.length1 = 11;
  head.length2 = 12;
  head.tip = {13, 14, 15};
  head.tool_dir = {0.6, 0, 0.8};
  head.ref_dir = {0.8, 0, -0.6};
  head.offset = {16, 17, 18};
  head.flags = 0xA0B0;
  return head;
}

inline void expect_head(const angled_head& head, const angled_head& expected) {
  EXPECT_EQ(head.b_angle, expected.b_angle);
  EXPECT_EQ(head.c_angle, expected.c_angle);
  EXPECT_EQ(head.length1, expected.length1);
  EXPECT_EQ(head.length2, expected.length2);
  EXPECT_NEAR_POINT(head.tip, expected.tip, 0.0);
  EXPECT_NEAR_POINT(head.tool_dir, expected.tool_dir, 0.0);
  EXPECT_NEAR_POINT(head.ref_dir, expected.ref_dir, 0.0);
  EXPECT_NEAR_POINT(head.offset, expected.offset, 0.0);
  EXPECT_EQ(head.flags, expected.flags);
}

// The state of a head that nobody has set.
inline angled_head straight_head() {
  angled_head head = angled_head();
  head.tool_dir.z = 1;
  head.ref_dir.x = 1;
  return head;
}

// All five axes. The directions are exactly normal, so that clones equal them to the last bit.
inline void give_axes(md::CMachDef& machdef) {
  machdef.setPrimary(md::CAxis2::create(AXIS_C, TABLE, {1, 2, 3}, {0, 0, 1}, -3, 3.5, ROTARY));
  machdef.setSecondary(md::CAxis2::create(AXIS_A, TABLE, {4, 5, 6}, {1, 0, 0}, -2, 2.5, ROTARY));
  machdef.xyz_axes()[0] = md::CAxis2::create(AXIS_X, TABLE, {7, 8, 9}, {1, 0, 0}, -100, 150, LINEAR);
  machdef.xyz_axes()[1] = md::CAxis2::create(AXIS_Y, TABLE, {10, 11, 12}, {0, 1, 0}, -200, 250, LINEAR);
  machdef.xyz_axes()[2] = md::CAxis2::create(AXIS_Z, HEAD, {13, 14, 15}, {0, 0, 1}, -300, 350, LINEAR);
  const AxisPtr axes[] = {machdef.getPrimary(), machdef.getSecondary(), machdef.xyz_axes()[0],
                          machdef.xyz_axes()[1], machdef.xyz_axes()[2]};
  for (const AxisPtr& axis : axes) axis->machdef(nullptr);
}

inline std::vector<AxisPtr> axes_of(const md::CMachDef& machdef) {
  return {machdef.getPrimary(), machdef.getSecondary(), machdef.xyz_axes()[0], machdef.xyz_axes()[1],
          machdef.xyz_axes()[2]};
}

// Everything a definition can hold, each value different from a fresh machine's and from every other.
inline std::unique_ptr<md::CMachDef> full_machine() {
  std::unique_ptr<md::CMachDef> machdef(new md::CMachDef(static_cast<MACHINE_MODE>(5)));
  give_axes(*machdef);
  give_scene(*machdef);
  machdef->setMachType(MC_TT);
  machdef->discipline(static_cast<K5AX_DISCIPLINE>(2));
  machdef->setMetric(false);
  machdef->loading_vector({21, 22, 23});
  machdef->mwZeroPos({31, 32, 33});
  machdef->head() = numbered_head();
  return machdef;
}

inline std::unique_ptr<md::CMachDef> clone_of(const md::CMachDef& machdef, unsigned int flags = 3) {
  std::unique_ptr<md::CMachDef> clone(new md::CMachDef);
  clone->clone(machdef, flags);
  return clone;
}

// A full machine that has the lists of its nodes.
inline std::unique_ptr<md::CMachDef> listed_machine() { return clone_of(*full_machine()); }

// More than any test leaves parked in one pool.
constexpr int kManyNodes = 200;

// What the three node pools hand out next, in order. Held by the caller, the nodes are not parked again.
struct HandedOut {
  std::vector<NodePtr> plain;
  std::vector<NodePtr> axis;
  std::vector<NodePtr> tool;

  HandedOut() {
    for (int i = 0; i < kManyNodes; ++i) {
      plain.push_back(md::sg::node::create());
      axis.push_back(md::NodeAxis_Create());
      tool.push_back(md::TOOL_NODE_Create());
    }
  }
};

inline std::ptrdiff_t times_in(const std::vector<NodePtr>& nodes, const NodePtr& n) {
  return std::count(nodes.begin(), nodes.end(), n);
}

}  // namespace k5ax_test

#endif
