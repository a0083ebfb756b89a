// The nodes of a machine's two trees in one list, with what a listing or a check wants to know of each.
#include "tool/scene_nodes.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <k5ax/kinematics.h>

namespace tool {
namespace {

struct ToVisit {
  md::sg::node* node;
  int parent;
  int depth;
  bool last_child;
  bool in_first_line;
};

}  // namespace

std::vector<SceneNode> scene_nodes(md::CMachDef& machine) {
  std::vector<SceneNode> nodes;
  for (int tree = 0; tree < 2; ++tree) {
    md::sg::node* root = k5axCMachDef_SG(&machine, tree);
    if (root == nullptr) continue;
    std::vector<ToVisit> to_visit = {{root, -1, 0, true, true}};
    while (!to_visit.empty()) {
      const ToVisit next = to_visit.back();
      to_visit.pop_back();
      const int place = static_cast<int>(nodes.size());
      nodes.push_back({next.node, md::sg::axis_node(next.node), md::sg::tool_node(next.node), tree,
                       next.parent, next.depth, next.last_child, next.in_first_line});

      // The first child is visited next, so it is put down last.
      const auto& children = next.node->child_list();
      for (std::size_t i = children.size(); i-- > 0;) {
        to_visit.push_back({children[i].get(), place, next.depth + 1, i + 1 == children.size(),
                            next.in_first_line && i == 0});
      }
    }
  }
  return nodes;
}

std::vector<Geometry::Matrix> to_roots(const std::vector<SceneNode>& nodes) {
  std::vector<Geometry::Matrix> node_to_root;
  node_to_root.reserve(nodes.size());
  for (const SceneNode& entry : nodes) {
    const Geometry::Matrix& node_to_parent = entry.node->transform();
    node_to_root.push_back(entry.parent < 0
                               ? node_to_parent
                               : node_to_parent * node_to_root[static_cast<std::size_t>(entry.parent)]);
  }
  return node_to_root;
}

int rotary_role(md::CMachDef& machine, const md::sg::node* node) {
  for (int role = 0; role < 2; ++role) {
    if (machine.SG_RotAxs()[static_cast<std::size_t>(role)].get() == node) return role;
  }
  return -1;
}

bool is_driven(md::CMachDef& machine, const SceneNode& entry) {
  if (entry.axis == nullptr) return false;
  const md::CAxis2& axis = entry.axis->payload();
  if (rotary_role(machine, entry.node) >= 0) {
    return axis.GetAxis() >= AXIS_A && axis.GetAxis() <= AXIS_Z &&
           (axis.GetAxisLocation() == HEAD || axis.GetAxisLocation() == TABLE);
  }
  return axis.mode() == LINEAR && (entry.node->flags() & 1U) != 0 && axis.GetAxis() >= AXIS_X &&
         axis.GetAxis() <= AXIS_Z;
}

void table_to_zero(md::CMachDef& machine) {
  for (const auto& rotary : machine.SG_RotAxs()) {
    const auto* axis = md::sg::axis_node(rotary.get());
    if (axis == nullptr || axis->GetAxisLocation() != TABLE) continue;
    k5axSgNode_value_set2(machine.flags(), rotary.get(), 0);
  }
}

Geometry::TPoint<double> shift_of(const Geometry::Matrix& matrix) { return CUtility::pt_o * matrix; }

MatrixNumbers numbers_of(const Geometry::Matrix& matrix) {
  MatrixNumbers n{};
  double* v = n.values;
  matrix.GetMatrix(v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8], v[9], v[10], v[11]);
  return n;
}

double difference(const Geometry::Matrix& a, const Geometry::Matrix& b) {
  const MatrixNumbers from = numbers_of(a);
  const MatrixNumbers to = numbers_of(b);
  double largest = 0;
  for (int i = 0; i < 12; ++i) {
    const double here = std::abs(from.values[i] - to.values[i]);
    if (std::isnan(here)) return std::numeric_limits<double>::infinity();
    largest = std::max(largest, here);
  }
  return largest;
}

}  // namespace tool
