// The trees of a machine definition from their text.
#include "tool/machine/trees_reader.h"

#include "tool/machine/axis_reader.h"
#include "tool/machine/head_reader.h"
#include "tool/machine/machine_words.h"
#include "tool/machine/node_geometry.h"

#include <algorithm>

namespace tool {
namespace {

constexpr unsigned int kDriven = 1;

void read_rotation(const JsonView& view, Transform& transform) {
  const std::string remedy =
      "write {\"axis\": [x, y, z], \"angle\": degrees}, or {\"matrix\": [[...], [...], [...]]}, three rows "
      "of three";
  view.require_keys("a rotation", {"matrix", "axis", "angle"});
  const auto matrix = view.find("matrix");
  const auto axis = view.find("axis");
  const auto angle = view.find("angle");
  if (matrix.has_value() == (axis || angle)) view.fail_value("is not one rotation", remedy);
  if (matrix) {
    const std::vector<JsonView> rows = matrix->entries();
    if (!matrix->is_list() || rows.size() != 3)
      matrix->fail_value("is not a matrix", "write three rows of three");
    for (std::size_t i = 0; i < 3; ++i) {
      const Point row = rows[i].point();
      transform[3 * i] = row.x;
      transform[3 * i + 1] = row.y;
      transform[3 * i + 2] = row.z;
    }
    return;
  }
  const Point direction = view.require("axis", remedy).point();
  const double radians = view.require("angle", remedy).angle();
  if (!(math::length(direction) >= 5e-9)) axis->fail_value("has no direction", "give numbers around 1");
  const Transform turned = values_of(Geometry::RotateAboutAxis(direction, radians));
  std::copy(turned.begin(), turned.begin() + 9, transform.begin());
}

class TreesReader {
 public:
  TreesReader(const JsonView& view, MachineRecord& machine) : m_view(view), m_machine(machine) {}

  void read() {
    m_view.require_keys("the trees", kTreesKeys);
    if (const auto nodes = m_view.find("nodes")) {
      for (const char* key : {"tool", "part"})
        if (const auto tree = m_view.find(key))
          tree->fail("the nodes stand in \"nodes\"", "keep one of the two");
      read_list(*nodes);
      m_machine.roots = {read_place("tool_root", -1), read_place("part_root", -1)};
    } else {
      for (const char* key : {"tool_root", "part_root"})
        if (const auto root = m_view.find(key))
          root->fail("a root goes with \"nodes\" only",
                     "leave it out; the root is what \"tool\" and \"part\" begin with");
      m_machine.roots = {read_tree("tool"), read_tree("part")};
    }
    const NodeRoles usual = usual_roles(m_machine.nodes, m_slots);
    m_machine.rotary_nodes = {read_place("primary_node", usual.rotary[0]),
                              read_place("secondary_node", usual.rotary[1])};
    m_machine.tool_node = read_place("tool_node", usual.tool);
  }

 private:
  int read_place(std::string_view key, int usual) const {
    const auto place = m_view.find(key);
    return place ? place->whole() : usual;
  }

  // Nested nodes, a parent before its children, an earlier child's before the next child.
  int read_tree(std::string_view key) {
    const auto root = m_view.find(key);
    if (!root) return -1;
    const int first = static_cast<int>(m_machine.nodes.size());

    struct ToRead {
      JsonView view;
      int parent;
    };
    std::vector<ToRead> stack = {{*root, -1}};
    while (!stack.empty()) {
      const ToRead next = stack.back();
      stack.pop_back();
      read_node(next.view);
      m_machine.nodes.back().parent = next.parent;
      if (const auto parent = next.view.find("parent"))
        parent->fail("a nested node hangs below the node around it", "leave \"parent\" out");
      const auto children = next.view.find("children");
      if (!children) continue;
      if (!children->is_list()) children->fail_value("is not a list of nodes", "write [{...}, ...]");
      std::vector<JsonView> entries = children->entries();
      const int place = static_cast<int>(m_machine.nodes.size()) - 1;
      for (auto child = entries.rbegin(); child != entries.rend(); ++child) stack.push_back({*child, place});
    }
    return first;
  }

  void read_list(const JsonView& list) {
    if (!list.is_list()) list.fail_value("is not a list of nodes", "write [{...}, ...]");
    const std::vector<JsonView> entries = list.entries();
    for (const JsonView& entry : entries) {
      read_node(entry);
      m_machine.nodes.back().parent =
          entry.require("parent", "write \"parent\": the place of a node in this list, from 0, or -1")
              .whole();
      if (const auto children = entry.find("children"))
        children->fail("a node in a list names its parent", "leave \"children\" out");
    }
    refuse_cycles(entries);
  }

  // A node above itself would keep every later walk going for ever.
  void refuse_cycles(const std::vector<JsonView>& entries) const {
    const std::vector<NodeRecord>& nodes = m_machine.nodes;
    std::vector<std::size_t> walked_from(nodes.size(),
                                         nodes.size());  // the start of the walk that met the node first
    for (std::size_t start = 0; start < nodes.size(); ++start) {
      for (std::size_t i = start; i < nodes.size();) {
        if (walked_from[i] == start)
          entries[i]
              .require("parent", "")
              .fail_value("makes the node its own ancestor", "give the node another parent");
        if (walked_from[i] < nodes.size()) break;
        walked_from[i] = start;
        const int parent = nodes[i].parent;
        i = parent < 0 ? nodes.size() : static_cast<std::size_t>(parent);
      }
    }
  }

  void read_node(const JsonView& view) {
    static const Keys any_keys = kinds_together();
    // First what every kind has, so that a misspelt "kind" is named as such.
    view.require_keys("a node", any_keys);
    NodeRecord node;
    const JsonView kind = view.require("kind", "write \"kind\": " + choice(kKinds));
    node.kind = kind.word(kKinds);
    view.require_keys("a node of kind \"" + std::string(kind.text()) + '"',
                      node.kind == kAxisNode   ? kAxisNodeKeys
                      : node.kind == kToolNode ? kToolNodeKeys
                                               : kPlainNodeKeys);
    node.id = view.require("id", "write \"id\": a whole number; -999 for a fixed offset").whole();
    int slot = -1;
    if (node.kind == kAxisNode) slot = read_carried_axis(view, node);
    if (node.kind == kToolNode) read_carried_head(view, node);

    node.flags = node.kind == kAxisNode ? kDriven : 0;
    if (const auto flags = view.find("flags")) node.flags = flags->bits();
    if (const auto value = view.find("value"))
      node.value = node.kind == kAxisNode && is_rotary(node.axis) ? value->angle() : value->number();

    const auto translation = view.find("translation");
    const auto rotation = view.find("rotation");
    if (translation || rotation) {
      if (rotation) read_rotation(*rotation, node.transform);
      const Point offset = translation ? translation->point() : CUtility::pt_o;
      node.transform[9] = offset.x;
      node.transform[10] = offset.y;
      node.transform[11] = offset.z;
    } else {
      node.transform = computed_transform(node);
    }
    m_machine.nodes.push_back(node);
    m_slots.push_back(slot);
  }

  static Keys kinds_together() {
    Keys keys = kPlainNodeKeys;
    for (const Keys* more : {&kAxisNodeKeys, &kToolNodeKeys})
      for (const std::string_view key : *more)
        if (std::find(keys.begin(), keys.end(), key) == keys.end()) keys.push_back(key);
    return keys;
  }

  // The place of the machine's axis that the node refers to, or -1.
  int read_carried_axis(const JsonView& view, NodeRecord& node) const {
    const JsonView axis =
        view.require("axis", "write \"axis\": " + choice(kSlots) + ", or an axis of its own, {...}");
    if (axis.is_object()) {
      node.axis = read_axis(axis);
      return -1;
    }
    const int slot = axis.word(kSlots);
    const std::optional<AxisRecord>& carried = m_machine.axes[static_cast<std::size_t>(slot)];
    if (!carried) axis.fail_value("is an axis that the machine does not have", "add it to \"axes\"");
    node.axis = *carried;
    return slot;
  }

  void read_carried_head(const JsonView& view, NodeRecord& node) const {
    const auto head = view.find("head");
    node.head = head ? read_head(*head, kToolNodeHeadKeys) : m_machine.head;
    node.head.offset =
        view.require("tool_point",
                     "write \"tool_point\": [x, y, z], from the tool point to the tool reference point")
            .point();
  }

  JsonView m_view;
  MachineRecord& m_machine;
  std::vector<int> m_slots;
};

}  // namespace

void read_trees(const JsonView& view, MachineRecord& machine) { TreesReader(view, machine).read(); }

NodeRoles usual_roles(const std::vector<NodeRecord>& nodes, const std::vector<int>& slots) {
  NodeRoles roles;
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    int* role = nodes[i].kind == kToolNode ? &roles.tool : nullptr;
    if (slots[i] == kPrimary || slots[i] == kSecondary)
      role = &roles.rotary[static_cast<std::size_t>(slots[i])];
    if (role != nullptr && *role < 0) *role = static_cast<int>(i);
  }
  return roles;
}

}  // namespace tool
