// A machine definition as text: an axis, a head and a node take a line each.
#include "tool/machine/machine_writer.h"

#include "tool/errors.h"
#include "tool/machine/angle_text.h"
#include "tool/machine/finite.h"
#include "tool/machine/machine_words.h"
#include "tool/machine/node_geometry.h"
#include "tool/machine/trees_reader.h"

#include <algorithm>
#include <cmath>

namespace tool {
namespace {

constexpr std::size_t kDeepestIndent = 40;  // levels; a line of a deep tree would be all spaces
constexpr unsigned int kUsualAxisFlags = 1;

std::string quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

std::string point_text(const Point& p) {
  return "[" + number_text(p.x) + ", " + number_text(p.y) + ", " + number_text(p.z) + "]";
}

std::string angle_text(double angle) {
  const std::optional<std::string> degrees = degrees_text(angle);
  return degrees ? *degrees : "{\"rad\": " + number_text(angle) + "}";
}

std::string word_text(const std::vector<Word>& words, int number) {
  const std::string_view word = word_for(words, number);
  return word.empty() ? std::to_string(number) : quoted(word);
}

// {"key": value, ...} on one line.
class Line {
 public:
  Line& add(std::string_view key, const std::string& value) {
    m_text += m_text.size() > 1 ? ", " : "";
    m_text += quoted(key) + ": " + value;
    return *this;
  }
  /// Still open.
  const std::string& text() const { return m_text; }
  std::string closed() const { return m_text + "}"; }

 private:
  std::string m_text = "{";
};

std::string axis_text(const AxisRecord& axis, int usual_letter) {
  Line line;
  if (usual_letter < 0 || axis.letter != usual_letter) line.add("letter", word_text(kLetters, axis.letter));
  line.add("location", word_text(kLocations, axis.location));
  const int usual_motion = motion_of_letter(axis.letter);
  if (usual_motion < 0 || axis.motion != usual_motion) line.add("motion", word_text(kMotions, axis.motion));
  if (is_rotary(axis) || !same_bits(axis.base, CUtility::pt_o)) line.add("point", point_text(axis.base));
  const Point usual_direction = direction_of_letter(axis.letter);
  if (usual_direction == CUtility::pt_o || !same_bits(axis.direction, usual_direction))
    line.add("direction", point_text(axis.direction));
  const auto limit = [&axis](double value) {
    return is_rotary(axis) ? angle_text(value) : number_text(value);
  };
  line.add("limits", "[" + limit(axis.min) + ", " + limit(axis.max) + "]");
  return line.closed();
}

// Without sine and cosine the head's geometry, and a node's transform, are the same wherever they are
// computed.
bool is_exact(const HeadRecord& head) { return head.tilt == 0 && head.turn == 0; }

std::string head_text(const HeadRecord& head, bool has_offset) {
  Line line;
  if (!same_bits(head.tilt, 0.0)) line.add("tilt", angle_text(head.tilt));
  if (!same_bits(head.turn, 0.0)) line.add("turn", angle_text(head.turn));
  if (!same_bits(head.lengths[0], 0.0) || !same_bits(head.lengths[1], 0.0))
    line.add("lengths", "[" + number_text(head.lengths[0]) + ", " + number_text(head.lengths[1]) + "]");
  HeadRecord usual;
  if (is_exact(head)) usual = head_of(head.turn, head.tilt, head.lengths, 0);
  const auto add = [&](const char* key, const Point& p, const Point& usual_p) {
    if (!is_exact(head) || !same_bits(p, usual_p)) line.add(key, point_text(p));
  };
  add("tip", head.tip, usual.tip);
  add("direction", head.direction, usual.direction);
  add("reference", head.reference, usual.reference);
  if (has_offset && !same_bits(head.offset, CUtility::pt_o)) line.add("offset", point_text(head.offset));
  if (head.flags != 0) line.add("flags", std::to_string(head.flags));
  if (head.padding != 0) line.add("padding", std::to_string(head.padding));
  return line.closed();
}

std::string rotation_text(const Transform& m) {
  std::string rows;
  for (std::size_t i = 0; i < 9; i += 3)
    rows += (i > 0 ? ", " : "") + point_text(Point(m[i], m[i + 1], m[i + 2]));
  return "{\"matrix\": [" + rows + "]}";
}

bool is_turned(const Transform& m) {
  return !std::equal(m.begin(), m.begin() + 9, kIdentity.begin(),
                     [](double a, double b) { return same_bits(a, b); });
}

class MachineWriter {
 public:
  explicit MachineWriter(const MachineRecord& machine) : m_machine(machine) {
    m_slots.reserve(machine.nodes.size());
    for (const NodeRecord& node : machine.nodes) m_slots.push_back(slot_of(node));
  }

  std::string write() {
    m_text = "{\n";
    add("format", std::to_string(kTextFormat));
    add("units", word_text(kUnits, m_machine.is_metric ? 1 : 0));
    add("type", word_text(kTypes, m_machine.type));
    if (m_machine.mode != -1) add("mode", std::to_string(m_machine.mode));
    if (m_machine.discipline != 0) add("discipline", std::to_string(m_machine.discipline));
    write_axes();
    if (!same_bits(m_machine.head, straight_head())) add("head", head_text(m_machine.head, true));
    add("work_zero", point_text(m_machine.work_zero));
    add("loading_vector", point_text(m_machine.loading_vector));
    write_trees();
    m_text += "\n}\n";
    return m_text;
  }

 private:
  // One entry of the object that is open; entries are set apart by what stands before them.
  void add(std::string_view key, const std::string& value) {
    m_text += m_separator;
    m_text += quoted(key) + ": " + value;
    m_separator = m_next_separator;
  }

  void open(std::string_view key) {
    add(key, "{\n");
    m_separator = "    ";
    m_next_separator = ",\n    ";
  }

  void close() {
    m_text += "\n  }";
    m_separator = m_next_separator = ",\n  ";
  }

  void write_axes() {
    const auto is_there = [](const std::optional<AxisRecord>& axis) { return axis.has_value(); };
    if (std::none_of(m_machine.axes.begin(), m_machine.axes.end(), is_there)) {
      add("axes", "{}");
      return;
    }
    open("axes");
    for (const Word& slot : kSlots)
      if (const auto& axis = m_machine.axes[static_cast<std::size_t>(slot.number)])
        add(slot.text, axis_text(*axis, letter_of_slot(slot.number)));
    close();
  }

  void write_trees() {
    const std::optional<std::size_t> second = second_tree();
    const NodeRoles usual = usual_roles(m_machine.nodes, m_slots);
    const bool has_usual_roles = m_machine.rotary_nodes == usual.rotary && m_machine.tool_node == usual.tool;
    if (second && m_machine.nodes.empty() && has_usual_roles) {
      add("trees", "{}");
      return;
    }
    open("trees");
    if (second) {
      if (*second > 0) write_tree("tool", 0, *second);
      if (*second < m_machine.nodes.size()) write_tree("part", *second, m_machine.nodes.size());
    } else {
      write_list();
      add("tool_root", std::to_string(m_machine.roots[0]));
      add("part_root", std::to_string(m_machine.roots[1]));
    }
    const auto add_role = [this](const char* key, int place, int usual_place) {
      if (place != usual_place) add(key, std::to_string(place));
    };
    add_role("primary_node", m_machine.rotary_nodes[0], usual.rotary[0]);
    add_role("secondary_node", m_machine.rotary_nodes[1], usual.rotary[1]);
    add_role("tool_node", m_machine.tool_node, usual.tool);
    close();
  }

  // Where the second tree begins, when the nodes are those of two trees and nothing else, each node before
  // its children and an earlier child's descendants before the next child; the order is then that of the
  // nested text. None when they have to be written as a list.
  std::optional<std::size_t> second_tree() const {
    const std::vector<NodeRecord>& nodes = m_machine.nodes;
    std::vector<std::size_t> starts;
    std::vector<std::size_t>
        path;  // from the root to the node before: what comes next hangs below one of these
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      if (nodes[i].parent == -1) {
        starts.push_back(i);
        path.clear();
      } else {
        while (!path.empty() && static_cast<int>(path.back()) != nodes[i].parent) path.pop_back();
        if (path.empty()) return std::nullopt;
      }
      path.push_back(i);
    }
    const std::size_t count = nodes.size();
    const auto roots_are = [this](int first, int second) {
      return m_machine.roots[0] == first && m_machine.roots[1] == second;
    };
    if (starts.empty()) return roots_are(-1, -1) ? std::optional<std::size_t>(0) : std::nullopt;
    if (starts.size() == 1 && roots_are(0, -1)) return count;
    if (starts.size() == 1 && roots_are(-1, 0)) return 0;
    if (starts.size() == 2 && roots_are(0, static_cast<int>(starts[1]))) return starts[1];
    return std::nullopt;
  }

  void write_tree(std::string_view key, std::size_t from, std::size_t to) {
    std::vector<std::size_t> path;  // the nodes whose children are being written
    for (std::size_t i = from; i < to; ++i) {
      const bool is_leaf = i + 1 == to || m_machine.nodes[i + 1].parent != static_cast<int>(i);
      std::string text = node_line(i).text();
      text += is_leaf ? "}" : ", \"children\": [";
      if (i == from) {
        add(key, text);
      } else {
        // Back to the parent.
        bool is_first = true;
        while (static_cast<int>(path.back()) != m_machine.nodes[i].parent) {
          path.pop_back();
          close_children(path.size());
          is_first = false;
        }
        is_first = is_first && path.back() + 1 == i;
        m_text += is_first ? "\n" : ",\n";
        indent(path.size());
        m_text += text;
      }
      if (!is_leaf) path.push_back(i);
    }
    while (!path.empty()) {
      path.pop_back();
      close_children(path.size());
    }
  }

  void indent(std::size_t depth) { m_text.append(4 + 2 * std::min(depth, kDeepestIndent), ' '); }

  void close_children(std::size_t depth) {
    m_text += "\n";
    indent(depth);
    m_text += "]}";
  }

  void write_list() {
    add("nodes", "[");
    for (std::size_t i = 0; i < m_machine.nodes.size(); ++i) {
      m_text += i > 0 ? ",\n      " : "\n      ";
      m_text += node_line(i).add("parent", std::to_string(m_machine.nodes[i].parent)).closed();
    }
    m_text += "\n    ]";
  }

  // The first of the machine's axes that is the node's to the last bit.
  int slot_of(const NodeRecord& node) const {
    if (node.kind != kAxisNode) return -1;
    for (const Word& slot : kSlots) {
      const auto& axis = m_machine.axes[static_cast<std::size_t>(slot.number)];
      if (axis && same_bits(*axis, node.axis)) return slot.number;
    }
    return -1;
  }

  Line node_line(std::size_t place) const {
    const NodeRecord& node = m_machine.nodes[place];
    Line line;
    line.add("kind", word_text(kKinds, node.kind)).add("id", std::to_string(node.id));
    if (node.kind == kAxisNode)
      line.add("axis", m_slots[place] >= 0 ? word_text(kSlots, m_slots[place]) : axis_text(node.axis, -1));
    if (node.kind == kToolNode) {
      line.add("tool_point", point_text(node.head.offset));
      HeadRecord carried = node.head;
      carried.offset = m_machine.head.offset;
      if (!same_bits(carried, m_machine.head)) line.add("head", head_text(node.head, false));
    }
    const unsigned int usual_flags = node.kind == kAxisNode ? kUsualAxisFlags : 0;
    if (node.flags != usual_flags) line.add("flags", std::to_string(node.flags));
    const bool is_angle = node.kind == kAxisNode && is_rotary(node.axis);
    if (!same_bits(node.value, 0.0))
      line.add("value", is_angle ? angle_text(node.value) : number_text(node.value));

    const bool is_computed_exactly =
        node.kind == kToolNode ? is_exact(node.head) : !is_angle || node.value == 0;
    if (!is_computed_exactly || !same_bits(node.transform, computed_transform(node))) {
      const Transform& m = node.transform;
      line.add("translation", point_text(Point(m[9], m[10], m[11])));
      if (is_turned(m)) line.add("rotation", rotation_text(m));
    }
    return line;
  }

  const MachineRecord& m_machine;
  std::vector<int> m_slots;  // for each node the machine's axis that it refers to, -1 for none
  std::string m_text;
  std::string m_separator = "  ";
  std::string m_next_separator = ",\n  ";
};

}  // namespace

std::string write_machine_text(const MachineRecord& machine, const std::string& file) {
  const NotFinite found = find_not_finite(machine);
  if (!found.place.empty()) {
    const char* shown = std::isnan(found.number) ? "nan" : found.number > 0 ? "inf" : "-inf";
    throw InputError(file, found.place, std::string(shown) + " cannot be written as text",
                     "put the number right, or keep the machine in a binary file");
  }
  return MachineWriter(machine).write();
}

}  // namespace tool
