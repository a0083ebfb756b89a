// What the kinematics reads of a machine without copying a pointer, and how a point goes up a tree.
#ifndef K5AX_KINEMATICS_MACHINE_VIEW_H
#define K5AX_KINEMATICS_MACHINE_VIEW_H

#include <k5ax/kinematics.h>

#include <array>

namespace md {

struct MachineView {
  static const std::vector<boost::shared_ptr<sg::node>>& nodes(const CMachDef& machdef, std::size_t tree) {
    return machdef.m_nodes[tree];
  }
  static const CAxis2* primary(const CMachDef& machdef) { return machdef.m_primary.get(); }
  static const CAxis2* secondary(const CMachDef& machdef) { return machdef.m_secondary.get(); }
  static CAxis2* part_axis(const CMachDef& machdef) { return machdef.part_axis().get(); }
  static const sg::node* tool_node(const CMachDef& machdef) { return machdef.m_tool_node.get(); }

  // A place for the id of each node: `few`, or where the machine has more, the room that it keeps. That was
  // made when they were listed, unless memory ran out.
  using FewIds = std::array<int, CMachDef::kFewNodes>;
  static int* room_for_ids(CMachDef& machdef, FewIds& few) {
    if (machdef.m_nodes[0].size() + machdef.m_nodes[1].size() <= few.size()) return few.data();
    machdef.make_room_for_update();
    return machdef.m_driven_ids.data();
  }
};

// Carries a point from the frame of node `n` to its root's, node by node; null leaves it where it is.
inline Geometry::TPoint<double> point_to_root(Geometry::TPoint<double> p, const sg::node* n) {
  for (; n != nullptr; n = n->parent_ptr()) p = n->point_to_parent(p);
  return p;
}

inline Geometry::TPoint<double> direction_to_root(Geometry::TPoint<double> d, const sg::node* n) {
  for (; n != nullptr; n = n->parent_ptr()) d = n->direction_to_parent(d);
  return d;
}

}  // namespace md

#endif
