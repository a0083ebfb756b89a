// Reading machine coordinates back out of the scene graph.
#include "kinematics/machine_view.h"

namespace md {

namespace {

// The first node below `root` without children, in the order of all_nodes.
sg::node* first_leaf(sg::node* root) {
  while (root != nullptr && !root->child_list().empty()) root = root->child_list().front().get();
  return root;
}

// Whether the node moves the read-back position: linear axes do, and the fixed offsets that a host gave an
// id. The rotary axes do not, nor do the offsets that belong to them, so that the position does not turn with
// the table.
bool moves_position(sg::node& n) {
  const sg::tnode<CAxis2>* const axis_node = sg::axis_node(&n);
  return axis_node != nullptr ? axis_node->mode() == LINEAR : n.id() >= 1;
}

}  // namespace

void CMachDef_SG2MachCoords(CMachDef& md, Geometry::TPoint<double>& xyz, Geometry::TPoint<double>& abc) {
  xyz = point_to_root(CUtility::pt_o, MachineView::tool_node(md));
  for (sg::node* n = first_leaf(md.SG()[1].get()); n != nullptr; n = n->parent_ptr())
    if (moves_position(*n)) xyz = n->point_to_parent(xyz);

  for (const boost::shared_ptr<sg::node>& rotary : md.SG_RotAxs()) {
    const sg::tnode<CAxis2>* const axis_node = sg::axis_node(rotary.get());
    if (axis_node == nullptr) continue;
    switch (axis_node->GetAxis()) {
      case AXIS_A:
        abc.x = axis_node->value();
        break;
      case AXIS_B:
        abc.y = axis_node->value();
        break;
      case AXIS_C:
        abc.z = axis_node->value();
        break;
      default:
        break;
    }
  }
}

}  // namespace md

extern "C" void k5axCMachDef_SG2MachCoords(md::CMachDef* machdef, double* v) {
  if (machdef == nullptr || v == nullptr) return;
  Geometry::TPoint<double> xyz;
  Geometry::TPoint<double> abc;
  md::CMachDef_SG2MachCoords(*machdef, xyz, abc);
  v[0] = xyz.x;
  v[1] = xyz.y;
  v[2] = xyz.z;
  v[3] = abc.x;
  v[4] = abc.y;
  v[5] = abc.z;
}
