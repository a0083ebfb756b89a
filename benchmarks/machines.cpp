// The machines that are measured.
#include "machines.h"

#include <algorithm>
#include <stdexcept>

namespace bench {

namespace {

using Axis = boost::shared_ptr<md::CAxis2>;
using Node = boost::shared_ptr<md::sg::node>;

enum NodeId : int {
  kXNode = 1,
  kYNode = 2,
  kZNode = 3,
  kPrimaryNode = 4,
  kSecondaryNode = 5,
  kToolNode = 6,
  kMachineFrame = 10,
  kFirstFurther = 100,
  kFixed = -999
};

struct Axes {
  Axis x, y, z, primary, secondary;
};

// Millimetres. The rotary lines are off the origin, and tilted by what is found when a machine is measured,
// and so is Z against X and Y.
Axes make_axes() {
  Axes axes;
  axes.x = md::CAxis2::create(AXIS_X, TABLE, CUtility::pt_o, CUtility::pt_x, -250, 250, LINEAR);
  axes.y = md::CAxis2::create(AXIS_Y, HEAD, CUtility::pt_o, CUtility::pt_y, -225, 225, LINEAR);
  axes.z = md::CAxis2::create(AXIS_Z, HEAD, CUtility::pt_o, Point(2e-5, -3e-5, 1), -400, 0, LINEAR);
  axes.primary = md::CAxis2::create(AXIS_A, TABLE, Point(-310, 0.024, 62.481), Point(1, 1.3e-4, -2.1e-4),
                                    -120 * math::D2R, 30 * math::D2R, ROTARY);
  axes.secondary = md::CAxis2::create(AXIS_C, TABLE, Point(0.017, -0.011, -85), Point(1.7e-4, -0.9e-4, 1),
                                      -3600 * math::D2R, 3600 * math::D2R, ROTARY);
  return axes;
}

void set_axes(md::CMachDef& machine, const Axes& axes) {
  machine.setMachType(MC_TT);
  machine.setPrimary(axes.primary);
  machine.setSecondary(axes.secondary);
  machine.xyz_axes()[0] = axes.x;
  machine.xyz_axes()[1] = axes.y;
  machine.xyz_axes()[2] = axes.z;
  machine.mwZeroPos(Point(0, 0, 40));
  machine.loading_vector(Point(0, 0, 150));
}

Node hang_plain(const Node& parent, int id, const Point& offset) {
  const Node node = md::sg::node::create();
  node->reset();  // one from the pool comes as it was given back
  node->id(id);
  node->transform(Geometry::Translate(offset));
  if (parent) parent->add_child(node);
  return node;
}

Node hang_axis(const Node& parent, int id, const md::CAxis2& axis, unsigned int flags) {
  const boost::shared_ptr<md::sg::tnode<md::CAxis2>> node = md::NodeAxis_Create();
  node->reset();
  node->payload() = axis;
  node->id(id);
  node->flags(flags);
  md::NodeAxis_transform_set(0, node, 0);
  parent->add_child(node);
  return node;
}

Node hang_further(const Node& parent, int index, const md::CAxis2& axis) {
  const int id = kFirstFurther + index;
  return index % 2 == 0 ? hang_plain(parent, id, Point()) : hang_axis(parent, id, axis, 0);
}

// The roots and the two rotary nodes are set in the machine; its flat lists come with a clone.
Machine build(Shape shape, int further_nodes) {
  const unsigned int driven = k5axSgNode_calc_flags(1, 0);
  Machine machine(new md::CMachDef);
  const Axes axes = make_axes();
  set_axes(*machine, axes);

  const Node machine_frame = hang_plain(Node(), kMachineFrame, Point());
  Node above = machine_frame;
  if (shape == Shape::deep)
    for (int i = 0; i < further_nodes; ++i) above = hang_further(above, i, *axes.x);
  const Node y = hang_axis(above, kYNode, *axes.y, driven);
  const Node z = hang_axis(y, kZNode, *axes.z, driven);
  const boost::shared_ptr<md::sg::tnode<angled_head>> tool = md::TOOL_NODE_Create();
  tool->reset();
  tool->payload() = machine->head();
  tool->id(kToolNode);
  k5axSgToolNodeMatrixSet(tool, Point(0, 0, -360));
  z->add_child(tool);
  if (shape == Shape::wide)
    for (int i = 0; i < further_nodes; ++i) hang_further(machine_frame, i, *axes.x);

  // A rotary node does Translate(-base), then the rotation; the way back to the line is its parent's.
  const Node part_frame = hang_plain(Node(), kFixed, axes.secondary->GetBaseVector());
  const Node secondary = hang_axis(part_frame, kSecondaryNode, *axes.secondary, driven);
  const Node primary_fixed = hang_plain(secondary, kFixed, axes.primary->GetBaseVector());
  const Node primary = hang_axis(primary_fixed, kPrimaryNode, *axes.primary, driven);
  hang_axis(primary, kXNode, *axes.x, driven);

  machine->SG()[0] = machine_frame;
  machine->SG()[1] = part_frame;
  machine->SG_RotAxs()[0] = primary;
  machine->SG_RotAxs()[1] = secondary;
  machine->tool_node(tool);

  Machine listed(new md::CMachDef);
  k5axCMachDef_clone(listed.get(), machine.get());
  return listed;
}

bool is_on_table(const Axis& axis, AXIS_TYPE letter) {
  return axis && axis->GetAxis() == letter && axis->GetAxisLocation() == TABLE;
}

}  // namespace

Machine make_axes_only() {
  Machine machine(new md::CMachDef);
  set_axes(*machine, make_axes());
  return machine;
}

Machine make_nine_nodes() { return make_grown(Shape::wide, 9); }

Machine make_grown(Shape shape, int count) {
  Machine machine = build(shape, count - 9);
  if (static_cast<int>(list_nodes(*machine).size()) != count)
    throw std::logic_error("a machine came out with " + std::to_string(list_nodes(*machine).size()) +
                           " nodes instead of " + std::to_string(count));
  return machine;
}

Machine load_machine(const std::string& path) {
  Machine machine(new md::CMachDef);
  if (MachdefLoad(machine.get(), path.c_str()) != 1) throw std::runtime_error(path + ": cannot be loaded");
  const bool fits = machine->getMachType() == MC_TT && is_on_table(machine->getPrimary(), AXIS_A) &&
                    is_on_table(machine->getSecondary(), AXIS_C) && machine->tool_node() &&
                    machine->SG()[1] && machine->SG_RotAxs()[0] && machine->SG_RotAxs()[1];
  if (!fits) throw std::runtime_error(path + ": not a table-table machine with C on A and both trees");
  return machine;
}

TableLines table_lines(const md::CMachDef& machine) {
  const boost::shared_ptr<md::CAxis2> primary = machine.getPrimary();
  const boost::shared_ptr<md::CAxis2> secondary = machine.getSecondary();
  return {{primary->GetBaseVector(), math::safe_normal(primary->GetAxisVector())},
          {secondary->GetBaseVector(), math::safe_normal(secondary->GetAxisVector())}};
}

std::vector<md::sg::node*> list_nodes(const md::CMachDef& machine) {
  std::vector<md::sg::node*> listed;
  for (const Node& root : machine.SG())
    for (const Node& n : md::sg::node::all_nodes(root)) listed.push_back(n.get());
  return listed;
}

std::vector<md::sg::node*> list_axis_nodes(const md::CMachDef& machine) {
  std::vector<md::sg::node*> listed;
  for (md::sg::node* const n : list_nodes(machine))
    if (md::sg::axis_node(n) != nullptr) listed.push_back(n);
  return listed;
}

std::vector<md::sg::node*> path_from_root(md::sg::node* n) {
  std::vector<md::sg::node*> path;
  for (; n != nullptr; n = n->parent_ptr()) path.push_back(n);
  std::reverse(path.begin(), path.end());
  return path;
}

md::sg::node* first_leaf(const md::CMachDef& machine) {
  md::sg::node* n = machine.SG()[1].get();
  while (!n->child_list().empty()) n = n->child_list().front().get();
  return n;
}

}  // namespace bench
