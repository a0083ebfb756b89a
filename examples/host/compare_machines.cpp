// Compares two machine definitions field by field.
#include "host/compare_machines.h"

#include <array>
#include <vector>

namespace host {
namespace {

using Node = boost::shared_ptr<md::sg::node>;

std::array<double, 12> components(const Geometry::Matrix& m) {
  std::array<double, 12> c = {};
  m.GetMatrix(c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7], c[8], c[9], c[10], c[11]);
  return c;
}

bool same_axis(const md::CAxis2& one, const md::CAxis2& other) {
  return one.GetAxis() == other.GetAxis() && one.GetAxisLocation() == other.GetAxisLocation() &&
         one.mode() == other.mode() && one.GetBaseVector() == other.GetBaseVector() &&
         one.GetAxisVector() == other.GetAxisVector() && one.GetMin() == other.GetMin() &&
         one.GetMax() == other.GetMax();
}

bool same_axis(const boost::shared_ptr<md::CAxis2>& one, const boost::shared_ptr<md::CAxis2>& other) {
  return one && other ? same_axis(*one, *other) : !one && !other;
}

bool same_head(const angled_head& one, const angled_head& other) {
  return one.b_angle == other.b_angle && one.c_angle == other.c_angle && one.length1 == other.length1 &&
         one.length2 == other.length2 && one.tip == other.tip && one.tool_dir == other.tool_dir &&
         one.ref_dir == other.ref_dir && one.offset == other.offset && one.flags == other.flags;
}

// Where a node stands in its tree; -1 for none, so that roots without a parent are equal.
int place_of(const md::sg::node* wanted, const std::vector<Node>& nodes) {
  for (std::size_t i = 0; i < nodes.size(); ++i)
    if (nodes[i].get() == wanted) return static_cast<int>(i);
  return -1;
}

std::string differing_field(const md::sg::node& one, const md::sg::node& other) {
  if (one.id() != other.id()) return "id";
  if (one.flags() != other.flags()) return "flags";
  if (one.value() != other.value()) return "value";
  if (components(one.transform()) != components(other.transform())) return "transform";
  return std::string();
}

std::string differing_payload(md::sg::node* one, md::sg::node* other) {
  const auto* axis = md::sg::axis_node(one);
  const auto* other_axis = md::sg::axis_node(other);
  const auto* tool = md::sg::tool_node(one);
  const auto* other_tool = md::sg::tool_node(other);
  if ((axis == nullptr) != (other_axis == nullptr) || (tool == nullptr) != (other_tool == nullptr))
    return "kind";
  if (axis != nullptr && !same_axis(axis->payload(), other_axis->payload())) return "axis";
  if (tool != nullptr && !same_head(tool->payload(), other_tool->payload())) return "head";
  return std::string();
}

std::string first_difference(const Node& root, const Node& other_root) {
  const std::vector<Node> nodes = md::sg::node::all_nodes(root);
  const std::vector<Node> others = md::sg::node::all_nodes(other_root);
  if (nodes.size() != others.size()) return "number of nodes";

  for (std::size_t i = 0; i < nodes.size(); ++i) {
    std::string field = differing_field(*nodes[i], *others[i]);
    if (field.empty()) field = differing_payload(nodes[i].get(), others[i].get());
    if (field.empty() && place_of(nodes[i]->parent_ptr(), nodes) != place_of(others[i]->parent_ptr(), others))
      field = "parent";
    if (!field.empty()) return "node " + std::to_string(i) + ": " + field;
  }
  return std::string();
}

// Both absent, or both present with one id.
bool same_role(const md::sg::node* one, const md::sg::node* other) {
  return one != nullptr && other != nullptr ? one->id() == other->id() : one == other;
}

}  // namespace

std::string first_difference(const md::CMachDef& one, const md::CMachDef& other) {
  if (one.getMachType() != other.getMachType()) return "machine type";
  if (one.get_mode() != other.get_mode()) return "mode";
  if (one.discipline() != other.discipline()) return "discipline";
  if (one.isMetric() != other.isMetric()) return "units";
  if (one.loading_vector() != other.loading_vector()) return "loading vector";
  if (one.mwZeroPos() != other.mwZeroPos()) return "work zero";
  if (!same_head(one.head(), other.head())) return "head";
  if (!same_axis(one.getPrimary(), other.getPrimary())) return "primary axis";
  if (!same_axis(one.getSecondary(), other.getSecondary())) return "secondary axis";
  for (std::size_t i = 0; i < 3; ++i)
    if (!same_axis(one.xyz_axes()[i], other.xyz_axes()[i])) return std::string(1, "XYZ"[i]) + " axis";

  for (std::size_t tree = 0; tree < 2; ++tree) {
    const std::string difference = first_difference(one.SG()[tree], other.SG()[tree]);
    if (!difference.empty()) return "tree " + std::to_string(tree) + ", " + difference;
  }
  for (std::size_t i = 0; i < 2; ++i)
    if (!same_role(one.SG_RotAxs()[i].get(), other.SG_RotAxs()[i].get()))
      return i == 0 ? "primary rotary node" : "secondary rotary node";
  if (!same_role(one.tool_node().get(), other.tool_node().get())) return "tool node";
  return std::string();
}

}  // namespace host
