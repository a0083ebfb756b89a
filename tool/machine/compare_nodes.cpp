// What differs between the trees of two machine definitions, node by node.
#include "tool/machine/compare_nodes.h"

#include "tool/machine/machine_words.h"
#include "tool/machine/node_geometry.h"

#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace tool {
namespace {

constexpr int kNone = -1;
constexpr int kOutside = 2;  // of both trees

std::string name_of_tree(int tree) {
  return tree == 0 ? "tool tree, " : tree == 1 ? "part tree, " : "outside both trees, ";
}

// The nodes of a machine in the order of its trees, with what tells one from the other.
class Nodes {
 public:
  explicit Nodes(const MachineRecord& machine) : m_machine(machine) {
    const std::size_t count = machine.nodes.size();
    m_children.resize(count);
    m_names.resize(count);
    m_trees.assign(count, kOutside);
    for (std::size_t i = 0; i < count; ++i)
      if (parent_of(static_cast<int>(i)) != kNone)
        m_children[static_cast<std::size_t>(parent_of(static_cast<int>(i)))].push_back(static_cast<int>(i));
    std::vector<bool> is_listed(count, false);
    list_below(machine.roots[0], 0, is_listed);
    list_below(machine.roots[1], 1, is_listed);
    for (std::size_t i = 0; i < count; ++i)
      if (!is_listed[i]) m_order.push_back(static_cast<int>(i));
    name();
  }

  using Key = std::tuple<int, int, int, int>;  // tree, kind, id, which of those

  const std::vector<int>& order() const { return m_order; }
  const std::map<Key, int>& by_key() const { return m_by_key; }
  const NodeRecord& node(int place) const { return m_machine.nodes[static_cast<std::size_t>(place)]; }
  const std::vector<int>& children(int place) const { return m_children[static_cast<std::size_t>(place)]; }
  int tree(int place) const { return m_trees[static_cast<std::size_t>(place)]; }
  bool is_node(int place) const {
    return place >= 0 && static_cast<std::size_t>(place) < m_machine.nodes.size();
  }
  int parent_of(int place) const {
    const int parent = node(place).parent;
    return is_node(parent) ? parent : kNone;
  }

  // "axis node 5 (C)"; "plain node -999 no. 2"
  std::string name(int place) const {
    return is_node(place) ? m_names[static_cast<std::size_t>(place)] : std::string("no node");
  }

 private:
  void list_below(int root, int tree, std::vector<bool>& is_listed) {
    if (!is_node(root)) return;
    std::vector<int> stack = {root};
    while (!stack.empty()) {
      const int place = stack.back();
      stack.pop_back();
      if (is_listed[static_cast<std::size_t>(place)]) continue;
      is_listed[static_cast<std::size_t>(place)] = true;
      m_trees[static_cast<std::size_t>(place)] = tree;
      m_order.push_back(place);
      const std::vector<int>& below = children(place);
      stack.insert(stack.end(), below.rbegin(), below.rend());
    }
  }

  void name() {
    std::map<std::tuple<int, int, int>, int> counts;
    for (const int place : m_order) {
      const NodeRecord& n = node(place);
      const int which = ++counts[std::make_tuple(tree(place), n.kind, n.id)];
      m_by_key.emplace(Key(tree(place), n.kind, n.id, which), place);
      std::string text = std::string(word_for(kKinds, n.kind)) + " node " + std::to_string(n.id);
      if (n.kind == kAxisNode) {
        const std::string_view letter = word_for(kLetters, n.axis.letter);
        if (!letter.empty()) text += " (" + std::string(letter) + ")";
      }
      if (which > 1) text += " no. " + std::to_string(which);
      m_names[static_cast<std::size_t>(place)] = text;
    }
  }

  const MachineRecord& m_machine;
  std::vector<std::vector<int>> m_children;
  std::vector<int> m_trees;
  std::vector<std::string> m_names;
  std::vector<int> m_order;
  std::map<Key, int> m_by_key;
};

// The machine's own axis that the node's is a copy of; -1 for none.
int copied_axis(const MachineRecord& machine, const NodeRecord& node) {
  for (const Word& slot : kSlots) {
    const auto& axis = machine.axes[static_cast<std::size_t>(slot.number)];
    if (axis && same_bits(*axis, node.axis)) return slot.number;
  }
  return kNone;
}

bool is_copied_head(const MachineRecord& machine, const NodeRecord& node) {
  HeadRecord head = node.head;
  head.offset = machine.head.offset;
  return same_bits(head, machine.head);
}

class NodesComparison {
 public:
  NodesComparison(Comparison& comparison, const MachineRecord& first, const MachineRecord& second)
      : m_comparison(comparison), m_first(first), m_second(second), m_a(first), m_b(second) {}

  void compare() {
    find_partners();
    for (const int a : m_a.order())
      if (m_partner_of_a[static_cast<std::size_t>(a)] == kNone)
        m_comparison.add(name_of_tree(m_a.tree(a)) + m_a.name(a), "there", "missing");
    for (const int b : m_b.order())
      if (m_partner_of_b[static_cast<std::size_t>(b)] == kNone)
        m_comparison.add(name_of_tree(m_b.tree(b)) + m_b.name(b), "missing", "there");
    for (const int a : m_a.order())
      if (m_partner_of_a[static_cast<std::size_t>(a)] != kNone)
        compare_pair(a, m_partner_of_a[static_cast<std::size_t>(a)]);

    compare_role("root of the tool tree", m_first.roots[0], m_second.roots[0]);
    compare_role("root of the part tree", m_first.roots[1], m_second.roots[1]);
    compare_role("node of the primary axis", m_first.rotary_nodes[0], m_second.rotary_nodes[0]);
    compare_role("node of the secondary axis", m_first.rotary_nodes[1], m_second.rotary_nodes[1]);
    compare_role("node of the tool", m_first.tool_node, m_second.tool_node);
  }

 private:
  void find_partners() {
    m_partner_of_a.assign(m_a.order().size(), kNone);
    m_partner_of_b.assign(m_b.order().size(), kNone);
    for (const auto& entry : m_a.by_key()) {
      const auto found = m_b.by_key().find(entry.first);
      if (found == m_b.by_key().end()) continue;
      m_partner_of_a[static_cast<std::size_t>(entry.second)] = found->second;
      m_partner_of_b[static_cast<std::size_t>(found->second)] = entry.second;
    }
  }

  int partner_of_a(int a) const {
    return m_a.is_node(a) ? m_partner_of_a[static_cast<std::size_t>(a)] : kNone;
  }

  // Nothing on both sides, or partners.
  bool are_partners(int a, int b) const {
    return m_a.is_node(a) ? m_b.is_node(b) && partner_of_a(a) == b : !m_b.is_node(b);
  }

  void compare_role(const char* what, int a, int b) {
    if (!are_partners(a, b)) m_comparison.add(what, m_a.name(a), m_b.name(b));
  }

  void compare_pair(int a, int b) {
    const NodeRecord& first = m_a.node(a);
    const NodeRecord& second = m_b.node(b);
    const std::string what = name_of_tree(m_a.tree(a)) + m_a.name(a);
    if (!are_partners(m_a.parent_of(a), m_b.parent_of(b)))
      m_comparison.add(what + ", hangs below", m_a.name(m_a.parent_of(a)), m_b.name(m_b.parent_of(b)));
    compare_order_below(what, a, b);
    m_comparison.compare_flags(what + ", flags", first.flags, second.flags);

    if (first.kind == kAxisNode) {
      compare_carried_axis(what, first, second);
      if (is_rotary(first.axis) && is_rotary(second.axis))
        m_comparison.compare_angle(what + ", value", first.value, second.value);
      else if (is_linear(first.axis) && is_linear(second.axis))
        m_comparison.compare_length(what + ", value", first.value, second.value);
      else
        m_comparison.compare_number(what + ", value", first.value, second.value);
    } else {
      m_comparison.compare_number(what + ", value", first.value, second.value);
    }
    if (first.kind == kToolNode) {
      if (!is_copied_head(m_first, first) || !is_copied_head(m_second, second))
        m_comparison.compare_head(what + ", head", first.head, second.head);
      m_comparison.compare_length(what + ", tool point", first.head.offset, second.head.offset);
    }

    const bool follows = first.kind != kPlainNode && same_bits(first.transform, computed_transform(first)) &&
                         same_bits(second.transform, computed_transform(second));
    if (!follows) m_comparison.compare_transform(what, first.transform, second.transform);
  }

  void compare_carried_axis(const std::string& what, const NodeRecord& first, const NodeRecord& second) {
    const int a = copied_axis(m_first, first);
    const int b = copied_axis(m_second, second);
    if (a == kNone || a != b) m_comparison.compare_axis(what + ", its axis", first.axis, second.axis);
  }

  // Of the children that have partners here too.
  void compare_order_below(const std::string& what, int a, int b) {
    std::vector<int> order;
    for (const int child : m_a.children(a)) {
      const int partner = partner_of_a(child);
      if (partner != kNone && m_b.parent_of(partner) == b) order.push_back(partner);
    }
    std::vector<int> other;
    for (const int child : m_b.children(b)) {
      const int partner = m_partner_of_b[static_cast<std::size_t>(child)];
      if (partner != kNone && m_a.parent_of(partner) == a) other.push_back(child);
    }
    if (order == other) return;
    const auto list = [this](const std::vector<int>& children) {
      std::string text;
      for (const int child : children) text += (text.empty() ? "" : ", ") + m_b.name(child);
      return text;
    };
    m_comparison.add(what + ", order of its children", list(order), list(other));
  }

  Comparison& m_comparison;
  const MachineRecord& m_first;
  const MachineRecord& m_second;
  Nodes m_a;
  Nodes m_b;
  std::vector<int> m_partner_of_a;
  std::vector<int> m_partner_of_b;
};

}  // namespace

void compare_nodes(Comparison& comparison, const MachineRecord& first, const MachineRecord& second) {
  NodesComparison(comparison, first, second).compare();
}

}  // namespace tool
