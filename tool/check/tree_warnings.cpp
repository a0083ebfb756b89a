// What the trees hold that does not fit the axes, or that the update passes over.
#include "tool/check/warnings.h"

#include "tool/scene_nodes.h"
#include "tool/text.h"

#include <cmath>
#include <map>
#include <string>

#include <k5ax/kinematics.h>

namespace tool {
namespace {

constexpr double kStale = 1e-9;      // of the size of the transform: beyond rounding
constexpr double kParallel = 0.001;  // the update's own: dot products this near to 1 or -1 are parallel
constexpr int kFixedId = -999;

using Findings = std::vector<Finding>;

std::string place_of(const SceneNode& entry) {
  std::string kind = "plain";
  if (entry.axis != nullptr) kind = "axis " + letter_name(entry.axis->GetAxis());
  if (entry.tool != nullptr) kind = "tool";
  return "tree " + std::to_string(entry.tree) + ", node " + std::to_string(entry.node->id()) + " (" + kind +
         ")";
}

const char* role_name(int role) { return role == 0 ? "primary" : "secondary"; }

const md::CAxis2* rotary_axis_of(const md::CMachDef& machine, int role) {
  return role == 0 ? machine.getPrimary().get() : machine.getSecondary().get();
}

void look_for_missing(md::CMachDef& machine, const std::vector<SceneNode>& nodes, Findings& findings) {
  const char* const purposes[2] = {"machine frame down to the tool", "part down to the machine frame"};
  for (int tree = 0; tree < 2; ++tree) {
    if (machine.SG()[static_cast<std::size_t>(tree)]) continue;
    findings.push_back({"tree-missing", "tree " + std::to_string(tree),
                        std::string("there is none, which would lead from the ") + purposes[tree],
                        "add it; a .json definition without trees gets both from its axes"});
  }
  if (nodes.empty()) return;

  const md::sg::node* tool_node = machine.tool_node().get();
  if (tool_node == nullptr) {
    findings.push_back({"tool-node-missing", "trees", "no node stands for the tool",
                        "hang a tool node into tree 0 and name it to the machine"});
  }
  for (int role = 0; role < 2; ++role) {
    const md::sg::node* const node = machine.SG_RotAxs()[static_cast<std::size_t>(role)].get();
    const md::CAxis2* const axis = rotary_axis_of(machine, role);
    const std::string name = role_name(role);
    if (axis != nullptr && node == nullptr) {
      findings.push_back({"rotary-node-missing", name + " axis " + letter_name(axis->GetAxis()),
                          "no node of the trees stands for it, so no pose turns it",
                          "name its node as the " + name + " rotary node"});
    }
    if (axis == nullptr && node != nullptr) {
      findings.push_back(
          {"rotary-node-without-axis", name + " rotary node",
           "is node " + std::to_string(node->id()) + ", and the machine has no " + name + " axis",
           "give the machine that axis, or no such node"});
    }
  }
  if (machine.SG_RotAxs()[0] && machine.SG_RotAxs()[0] == machine.SG_RotAxs()[1]) {
    findings.push_back({"rotary-node-twice", "primary and secondary rotary node",
                        "are one node, " + std::to_string(machine.SG_RotAxs()[0]->id()),
                        "name a node for each"});
  }
}

// Ids: states are exchanged by them, and a clone looks for its rotary nodes by them.
void look_at_ids(const std::vector<SceneNode>& nodes, Findings& findings) {
  std::map<int, int> uses;
  for (const SceneNode& entry : nodes) {
    const int id = entry.node->id();
    if (id != kFixedId) ++uses[id];
    if (entry.axis == nullptr || id > 0) continue;
    const char* const why = id == kFixedId ? "is kept for fixed nodes"
                            : id == 0      ? "is passed over when states are exchanged"
                                           : "is not positive";
    findings.push_back({"axis-id", place_of(entry), "the id " + std::to_string(id) + " " + why,
                        "give it a positive id of its own"});
  }
  for (const auto& [id, count] : uses) {
    if (count == 1) continue;
    findings.push_back(
        {"id-twice", "node id " + std::to_string(id),
         "stands for " + std::to_string(count) + " nodes, of which only the first would be found",
         "give each node an id of its own"});
  }
}

// Why the update does not write the node's value; empty when it does.
std::string why_not_driven(md::CMachDef& machine, const SceneNode& entry) {
  if (is_driven(machine, entry)) return {};
  const md::CAxis2& axis = entry.axis->payload();
  const bool known_letter = axis.GetAxis() >= AXIS_A && axis.GetAxis() <= AXIS_Z;
  if (!known_letter) return "the letter is none of A, B, C, X, Y, Z";
  if (rotary_role(machine, entry.node) >= 0) return "it sits neither on the head nor on the table";
  if (axis.mode() != LINEAR) return "it is neither the primary nor the secondary rotary node";
  if (axis.GetAxis() < AXIS_X) return "it slides, and has the letter of a rotary axis";
  return "flag 1 is not set";
}

void look_at_driving(md::CMachDef& machine, const std::vector<SceneNode>& nodes, Findings& findings) {
  std::map<AXIS_TYPE, const SceneNode*> last_of;
  for (const SceneNode& entry : nodes) {
    if (entry.axis == nullptr) continue;
    const std::string why = why_not_driven(machine, entry);
    if (!why.empty()) {
      findings.push_back({"not-driven", place_of(entry), "no pose moves it: " + why,
                          "leave it only if it is to stay where it stands"});
      continue;
    }
    if (rotary_role(machine, entry.node) >= 0) continue;
    const SceneNode*& last = last_of[entry.axis->GetAxis()];
    if (last != nullptr) {
      findings.push_back({"not-driven", place_of(*last),
                          "a pose sets it to 0: node " + std::to_string(entry.node->id()) +
                              " comes after it and has the same letter",
                          "give one of them another letter, or clear its flag 1"});
    }
    last = &entry;
  }
}

// An axis node carries an axis of its own; the machine's must be the same one.
void compare_axes(md::CMachDef& machine, const SceneNode& entry, Findings& findings) {
  const md::CAxis2& of_node = entry.axis->payload();
  const AXIS_TYPE letter = of_node.GetAxis();
  const int role = rotary_role(machine, entry.node);
  const md::CAxis2* of_machine = nullptr;
  if (role >= 0) {
    of_machine = rotary_axis_of(machine, role);
  } else if (of_node.mode() == LINEAR && letter >= AXIS_X && letter <= AXIS_Z) {
    of_machine = machine.xyz_axes()[static_cast<std::size_t>(letter - AXIS_X)].get();
  }
  if (of_machine == nullptr) return;

  const char* const unit = unit_name(machine);
  std::string text;
  const auto differs = [&text](const char* field, const std::string& node, const std::string& mach) {
    text += (text.empty() ? "" : ", ") + std::string(field) + " " + node + " where the machine's axis has " +
            mach;
  };
  if (letter != of_machine->GetAxis())
    differs("letter", letter_name(letter), letter_name(of_machine->GetAxis()));
  if (of_node.GetAxisLocation() != of_machine->GetAxisLocation()) {
    differs("place", location_name(of_node.GetAxisLocation()), location_name(of_machine->GetAxisLocation()));
  }
  if (of_node.mode() != of_machine->mode()) {
    differs("mode", mode_name(of_node.mode()), mode_name(of_machine->mode()));
  }
  if (of_node.GetBaseVector() != of_machine->GetBaseVector()) {
    differs("base point", exact_triple(of_node.GetBaseVector()), exact_triple(of_machine->GetBaseVector()));
  }
  if (of_node.GetAxisVector() != of_machine->GetAxisVector()) {
    differs("direction", exact_triple(of_node.GetAxisVector()), exact_triple(of_machine->GetAxisVector()));
  }
  if (of_node.GetMin() != of_machine->GetMin()) {
    differs("min", axis_value(of_node, of_node.GetMin(), unit),
            axis_value(*of_machine, of_machine->GetMin(), unit));
  }
  if (of_node.GetMax() != of_machine->GetMax()) {
    differs("max", axis_value(of_node, of_node.GetMax(), unit),
            axis_value(*of_machine, of_machine->GetMax(), unit));
  }
  if (text.empty()) return;
  findings.push_back({"node-axis", place_of(entry), text, "make the two agree"});
}

double size_of(const Geometry::Matrix& matrix) {
  const Geometry::TPoint<double> shift = shift_of(matrix);
  return 1 + math::length(shift);
}

// A rotary node off the origin leads by minus its base point, and its parent has to lead back. In tree 1 the
// motion shows it; in tree 0 any offset may stand, and the slides make up for a wrong one.
void look_at_way_back(md::CMachDef& machine, const SceneNode& entry, Findings& findings) {
  if (entry.tree != 0 || rotary_role(machine, entry.node) < 0) return;
  const Point base = entry.axis->GetBaseVector();
  const md::sg::node* const parent = entry.node->parent_ptr();
  if (base == Point()) return;
  if (parent != nullptr &&
      difference(parent->transform(), Geometry::Translate(base)) <= kStale * (1 + math::length(base)))
    return;
  findings.push_back({"way-back", place_of(entry),
                      "its base point is " + triple(base) + ", and its parent does not lead back by it",
                      "hang it below a fixed node with just that shift"});
}

void look_at_axis_node(md::CMachDef& machine, const SceneNode& entry, Findings& findings) {
  const md::CAxis2& axis = entry.axis->payload();
  const double value = entry.node->value();
  const char* const unit = unit_name(machine);
  compare_axes(machine, entry, findings);
  look_at_way_back(machine, entry, findings);

  if ((axis.GetAxisLocation() == HEAD && entry.tree == 1) ||
      (axis.GetAxisLocation() == TABLE && entry.tree == 0)) {
    findings.push_back({"tree-side", place_of(entry),
                        "sits on the " + location_name(axis.GetAxisLocation()) +
                            " and hangs in the tree of the " + (entry.tree == 0 ? "head" : "table"),
                        "move it to the other tree, or change its place"});
  }
  // Of limits that run backwards, so that every value is outside, others speak.
  if (axis.GetMin() <= axis.GetMax() && (value < axis.GetMin() || value > axis.GetMax())) {
    findings.push_back({"value-range", place_of(entry),
                        "stands at " + axis_value(axis, value, unit) + ", outside its travel from " +
                            axis_value(axis, axis.GetMin(), unit) + " to " +
                            axis_value(axis, axis.GetMax(), unit),
                        "pose the machine within its travel before saving it"});
  }
  const Geometry::Matrix wanted = md::NodeAxis_transform_calc(machine.flags(), *entry.axis, value);
  if (!(difference(wanted, entry.node->transform()) <= kStale * size_of(wanted))) {
    findings.push_back({"stale-transform", place_of(entry),
                        "its transform is not the one of its value " + axis_value(axis, value, unit),
                        "set its value anew"});
  }
}

void look_at_tool_node(md::CMachDef& machine, const SceneNode& entry, Findings& findings) {
  if (machine.tool_node().get() != entry.node) return;
  if (entry.tree == 1) {
    findings.push_back({"tree-side", place_of(entry), "hangs in the tree of the table", "move it to tree 0"});
  }
  const angled_head& of_node = entry.tool->payload();
  const angled_head& of_machine = machine.head();
  if (of_node.b_angle != of_machine.b_angle || of_node.c_angle != of_machine.c_angle ||
      of_node.length1 != of_machine.length1 || of_node.length2 != of_machine.length2) {
    const auto text = [](const angled_head& head) {
      return "tilt " + degrees(head.b_angle) + " deg, turn " + degrees(head.c_angle) + " deg, lengths " +
             exact(head.length1) + " and " + exact(head.length2);
    };
    findings.push_back({"node-head", place_of(entry),
                        text(of_node) + " where the machine's head has " + text(of_machine),
                        "make the two agree"});
  }

  auto probe = md::TOOL_NODE_Create();
  probe->node::reset();
  probe->payload() = of_node;
  k5axSgToolNodeMatrixSet(probe, of_node.offset);
  const Geometry::Matrix wanted = probe->transform();
  md::TOOL_NODE_Free(probe);
  if (!(difference(wanted, entry.node->transform()) <= kStale * size_of(wanted))) {
    findings.push_back(
        {"stale-transform", place_of(entry),
         "its transform is not the one of its head and its tool point " + triple(of_node.offset),
         "place the tool anew"});
  }
}

// Axes that move neither the tool nor the part, since they hang beside the chain.
void look_at_chains(md::CMachDef& machine, const std::vector<SceneNode>& nodes, Findings& findings) {
  std::vector<bool> in_chain(nodes.size(), false);
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    in_chain[i] = nodes[i].tree == 1 && nodes[i].in_first_line;
    if (nodes[i].node != machine.tool_node().get()) continue;
    for (int at = static_cast<int>(i); at >= 0; at = nodes[static_cast<std::size_t>(at)].parent) {
      in_chain[static_cast<std::size_t>(at)] = true;
    }
  }
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    if (in_chain[i] || !is_driven(machine, nodes[i])) continue;
    if (nodes[i].tree == 0 && !machine.tool_node()) continue;
    findings.push_back({"beside-the-chain", place_of(nodes[i]),
                        nodes[i].tree == 0
                            ? "the tool does not hang below it, so it does not move the tool"
                            : "it is not on the way to the first leaf, so it does not move the part",
                        nodes[i].tree == 0 ? "hang it above the tool node"
                                           : "put the child that leads to the machine frame first"});
  }
}

void look_at_marks(md::CMachDef& machine, const std::vector<SceneNode>& nodes, Findings& findings) {
  const std::vector<Geometry::Matrix> node_to_root = to_roots(nodes);
  std::vector<std::size_t> slides;
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    if (is_driven(machine, nodes[i]) && rotary_role(machine, nodes[i].node) < 0) slides.push_back(i);
  }
  for (const std::size_t i : slides) {
    if ((nodes[i].node->flags() & 2U) == 0) continue;
    const Point d_here = node_to_root[i].TransformDirection(nodes[i].axis->GetAxisVector());
    bool has_rival = false;
    for (const std::size_t j : slides) {
      const Point d_there = node_to_root[j].TransformDirection(nodes[j].axis->GetAxisVector());
      has_rival |= nodes[i].axis->GetAxis() != nodes[j].axis->GetAxis() &&
                   std::abs(std::abs(math::dot(d_here, d_there)) - 1) <= kParallel;
    }
    if (has_rival) continue;
    findings.push_back(
        {"flag-2", place_of(nodes[i]),
         "flag 2 says that it wins over a parallel slide, and no driven slide is parallel to it",
         "clear flag 2"});
  }
}

}  // namespace

std::vector<Finding> tree_warnings(md::CMachDef& machine) {
  Findings findings;
  const std::vector<SceneNode> nodes = scene_nodes(machine);
  look_for_missing(machine, nodes, findings);
  look_at_ids(nodes, findings);
  look_at_driving(machine, nodes, findings);
  for (const SceneNode& entry : nodes) {
    if (entry.axis != nullptr) look_at_axis_node(machine, entry, findings);
    if (entry.tool != nullptr) look_at_tool_node(machine, entry, findings);
  }
  look_at_chains(machine, nodes, findings);
  look_at_marks(machine, nodes, findings);
  return findings;
}

std::vector<Finding> all_warnings(md::CMachDef& machine) {
  std::vector<Finding> findings = axis_warnings(machine);
  for (const std::vector<Finding>& more :
       {head_warnings(machine), tree_warnings(machine), motion_warnings(machine)}) {
    findings.insert(findings.end(), more.begin(), more.end());
  }
  return findings;
}

}  // namespace tool
