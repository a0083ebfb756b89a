// k5ax info: a machine on one screen.
#include "tool/verbs/info.h"

#include "tool/errors.h"
#include "tool/machine/machine_file.h"
#include "tool/node_text.h"
#include "tool/scene_nodes.h"
#include "tool/style.h"
#include "tool/text.h"
#include "tool/verb.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace tool {
namespace {

using nlohmann::ordered_json;

constexpr std::size_t kScreen = 80;      // columns
constexpr std::size_t kShownNodes = 40;  // of a tree, without --all
constexpr int kDrawnDepth = 8;           // levels of indentation; deeper ones are numbered

struct Options {
  std::string path;
  bool all = false;
};

struct AxisRow {
  const char* role;
  const md::CAxis2* axis;
};

// X, Y, Z, primary, secondary; those that the machine has.
std::vector<AxisRow> axes_of(const md::CMachDef& machine) {
  std::vector<AxisRow> rows;
  for (const auto& axis : machine.xyz_axes()) rows.push_back({"linear", axis.get()});
  rows.push_back({"primary", machine.getPrimary().get()});
  rows.push_back({"secondary", machine.getSecondary().get()});
  rows.erase(std::remove_if(rows.begin(), rows.end(), [](const AxisRow& row) { return row.axis == nullptr; }),
             rows.end());
  return rows;
}

using Cells = std::vector<std::string>;

std::size_t table_width(const std::vector<Cells>& table, std::vector<std::size_t>& widths) {
  widths.assign(table.front().size(), 0);
  for (const Cells& cells : table) {
    for (std::size_t i = 0; i < cells.size(); ++i) widths[i] = std::max(widths[i], cells[i].size());
  }
  std::size_t sum = 2 * (widths.size() - 1);
  for (const std::size_t width : widths) sum += width;
  return sum;
}

void print_table(const Context& context, const std::vector<Cells>& table) {
  std::vector<std::size_t> widths;
  table_width(table, widths);
  for (const Cells& cells : table) {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
      line += cells[i];
      if (i + 1 < cells.size()) line += std::string(widths[i] - cells[i].size() + 2, ' ');
    }
    context.out << (&cells == &table.front() ? styled(context, Style::heading, line) : line) << "\n";
  }
}

std::string role_cell(const AxisRow& row) {
  const bool linear = std::string(row.role) == "linear";
  const AXIS_MODE wanted = linear ? LINEAR : ROTARY;
  return row.axis->mode() == wanted ? row.role : std::string(row.role) + ", " + mode_name(row.axis->mode());
}

std::string travel_cell(const md::CAxis2& axis, const char* unit) {
  if (axis.mode() == ROTARY) return degrees(axis.GetMin()) + " to " + degrees(axis.GetMax()) + " deg";
  return number(axis.GetMin()) + " to " + number(axis.GetMax()) + " " + unit;
}

// The axes in one table where it fits with enough digits, else in two.
void print_axes(const Context& context, const md::CMachDef& machine) {
  const std::vector<AxisRow> rows = axes_of(machine);
  if (rows.empty()) {
    context.out << "no axes\n";
    return;
  }

  const char* const unit = unit_name(machine);
  std::vector<Cells> table;
  std::vector<std::size_t> widths;
  for (const int digits : {10, 8, 7}) {
    table = {{"axis", "role", "on", "base point", "direction", "travel"}};
    for (const AxisRow& row : rows) {
      const md::CAxis2& axis = *row.axis;
      table.push_back({letter_name(axis.GetAxis()), role_cell(row), location_name(axis.GetAxisLocation()),
                       triple(axis.GetBaseVector(), digits), triple(axis.GetAxisVector(), digits),
                       travel_cell(axis, unit)});
    }
    if (table_width(table, widths) <= kScreen) {
      print_table(context, table);
      return;
    }
  }

  table = {{"axis", "role", "on", "travel"}};
  for (const AxisRow& row : rows) {
    const md::CAxis2& axis = *row.axis;
    table.push_back({letter_name(axis.GetAxis()), role_cell(row), location_name(axis.GetAxisLocation()),
                     travel_cell(axis, unit)});
  }
  print_table(context, table);
  context.out << "\n";
  for (const int digits : {10, 8, 7, 6}) {
    table = {{"axis", "base point", "direction"}};
    for (const AxisRow& row : rows) {
      table.push_back({letter_name(row.axis->GetAxis()), triple(row.axis->GetBaseVector(), digits),
                       triple(row.axis->GetAxisVector(), digits)});
    }
    if (table_width(table, widths) <= kScreen) break;
  }
  print_table(context, table);
}

std::string head_words(const md::CMachDef& machine) {
  const angled_head& head = machine.head();
  std::string words = "straight";
  if (k5ax_is_angled_head(&head) == 1) {
    words = "tilt " + degrees(head.b_angle) + " deg, turn " + degrees(head.c_angle) + " deg, lengths " +
            number(head.length1) + " and " + number(head.length2);
  } else if (head.c_angle != 0) {
    words += ", turn " + degrees(head.c_angle) + " deg";
  }
  return words;
}

std::string flags_words(unsigned int flags) {
  if (flags == 0) return {};
  char text[32];
  std::snprintf(text, sizeof text, "flags 0x%x", flags);
  return std::string(text) + ((flags & 3U) == 1U ? " (the tool is vertical)" : "");
}

void print_facts(const Context& context, const md::CMachDef& machine) {
  const auto fact = [&context](const char* name, const std::string& words) {
    context.out << styled(context, Style::heading, name) << std::string(16 - std::string(name).size(), ' ')
                << words << "\n";
  };
  fact("head", head_words(machine));
  if (machine.head().tip != Point()) fact("tip", triple(machine.head().tip, 7));
  const std::string flags = flags_words(machine.flags());
  fact("tool direction", triple(machine.getToolDir(), 7) + (flags.empty() ? "" : ", " + flags));
  fact("work zero", triple(machine.mwZeroPos()));
  fact("loading vector", triple(machine.loading_vector()));
  if (machine.get_mode() != -1 || machine.discipline() != 0) {
    fact("host's own", "mode " + std::to_string(machine.get_mode()) + ", discipline " +
                           std::to_string(machine.discipline()));
  }
}

std::string value_words(const md::CMachDef& machine, const SceneNode& entry, int digits) {
  if (entry.axis != nullptr) {
    const bool rotary = entry.axis->mode() == ROTARY;
    const double value = entry.node->value();
    return "at " + (rotary ? number(value * math::R2D, digits) + " deg"
                           : number(value, digits) + " " + unit_name(machine));
  }
  if (entry.tool != nullptr) return "tool point " + triple(entry.tool->offset, digits);
  return transform_words(entry.node->transform(), digits);
}

// The lines that lead from a node's ancestors past it, and its own. A chain's only child needs no line past.
std::string branch(const std::vector<SceneNode>& nodes, const SceneNode& entry) {
  if (entry.depth > kDrawnDepth) {
    return std::string(std::size_t{3} * (kDrawnDepth - 1), ' ') + "(" + std::to_string(entry.depth) +
           " down) ";
  }
  std::string drawing = entry.depth > 0 ? "+- " : "";
  for (int at = entry.parent; at >= 0; at = nodes[static_cast<std::size_t>(at)].parent) {
    const SceneNode& above = nodes[static_cast<std::size_t>(at)];
    if (above.depth > 0) drawing.insert(0, above.last_child ? "   " : "|  ");
  }
  return drawing;
}

std::string node_line(const Context& context, md::CMachDef& machine, const std::vector<SceneNode>& nodes,
                      const SceneNode& entry) {
  const std::string front = branch(nodes, entry);
  const std::string name = node_name(entry);
  const std::string id = " (id " + std::to_string(entry.node->id()) + ")";
  const std::string words = node_words(machine, entry);
  std::string rest;
  for (const int digits : {10, 7, 5, 4, 3}) {
    const std::string value = value_words(machine, entry, digits);
    rest = words + (words.empty() || value.empty() ? "" : ", ") + value;
    if (front.size() + name.size() + id.size() + 2 + rest.size() <= kScreen) break;
  }
  const bool carries = entry.axis != nullptr || entry.tool != nullptr;
  return front + (carries ? styled(context, Style::name, name) : name) + id +
         (rest.empty() ? "" : ": " + rest);
}

void print_trees(const Context& context, md::CMachDef& machine, bool all) {
  const std::vector<SceneNode> nodes = scene_nodes(machine);
  const char* const names[2] = {"tree 0, from the machine frame down to the tool",
                                "tree 1, from the part down to the machine frame"};
  for (int tree = 0; tree < 2; ++tree) {
    context.out << "\n" << styled(context, Style::heading, names[tree]) << "\n";
    std::size_t count = 0;
    for (const SceneNode& entry : nodes) {
      if (entry.tree != tree) continue;
      if (++count > kShownNodes && !all) continue;
      context.out << "  " << node_line(context, machine, nodes, entry) << "\n";
    }
    if (count == 0) context.out << "  none\n";
    if (count > kShownNodes && !all) {
      context.out << "  and " << counted(count - kShownNodes, "more node") << "; --all shows them\n";
    }
  }
}

ordered_json point_json(const Point& p) { return {p.x, p.y, p.z}; }

ordered_json axis_json(const AxisRow& row) {
  const md::CAxis2& axis = *row.axis;
  const bool rotary = axis.mode() == ROTARY;
  const char* const min = rotary ? "min_deg" : "min";
  const char* const max = rotary ? "max_deg" : "max";
  const double factor = rotary ? math::R2D : 1;
  return {{"letter", letter_name(axis.GetAxis())},
          {"role", row.role},
          {"mode", mode_name(axis.mode())},
          {"location", location_name(axis.GetAxisLocation())},
          {"base", point_json(axis.GetBaseVector())},
          {"direction", point_json(axis.GetAxisVector())},
          {min, axis.GetMin() * factor},
          {max, axis.GetMax() * factor}};
}

ordered_json node_json(md::CMachDef& machine, const SceneNode& entry, std::size_t first_of_tree) {
  const MatrixNumbers numbers = numbers_of(entry.node->transform());
  ordered_json node = {{"id", entry.node->id()}, {"kind", node_kind(entry)}, {"parent", nullptr}};
  if (entry.parent >= 0) node["parent"] = static_cast<std::size_t>(entry.parent) - first_of_tree;
  if (entry.axis != nullptr) {
    const bool rotary = entry.axis->mode() == ROTARY;
    const int role = rotary_role(machine, entry.node);
    node["letter"] = letter_name(entry.axis->GetAxis());
    node["role"] = role < 0 ? "linear" : role == 0 ? "primary" : "secondary";
    if (role < 0 && rotary) node["role"] = "none";
    node["driven"] = is_driven(machine, entry);
    node[rotary ? "value_deg" : "value"] = entry.node->value() * (rotary ? math::R2D : 1);
  }
  if (entry.tool != nullptr) {
    node["tool_node"] = machine.tool_node().get() == entry.node;
    node["tool_point"] = point_json(entry.tool->offset);
  }
  node["flags"] = entry.node->flags();
  node["transform"] = std::vector<double>(numbers.values, numbers.values + 12);
  return node;
}

ordered_json machine_json(const std::string& path, md::CMachDef& machine) {
  const angled_head& head = machine.head();
  ordered_json document = {{"file", path},
                           {"type", type_name(machine.getMachType())},
                           {"unit", unit_name(machine)},
                           {"valid", machine.is_valid()},
                           {"mode", static_cast<int>(machine.get_mode())},
                           {"discipline", static_cast<int>(machine.discipline())},
                           {"axes", ordered_json::array()},
                           {"head",
                            {{"angled", k5ax_is_angled_head(&head) == 1},
                             {"tilt_deg", head.b_angle * math::R2D},
                             {"turn_deg", head.c_angle * math::R2D},
                             {"lengths", {head.length1, head.length2}},
                             {"tip", point_json(head.tip)},
                             {"tool_direction", point_json(machine.getToolDir())},
                             {"flags", head.flags}}},
                           {"work_zero", point_json(machine.mwZeroPos())},
                           {"loading_vector", point_json(machine.loading_vector())},
                           {"trees", {ordered_json::array(), ordered_json::array()}}};
  for (const AxisRow& row : axes_of(machine)) document["axes"].push_back(axis_json(row));

  const std::vector<SceneNode> nodes = scene_nodes(machine);
  std::size_t first = 0;  // of the tree
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    if (nodes[i].parent < 0) first = i;
    document["trees"][static_cast<std::size_t>(nodes[i].tree)].push_back(node_json(machine, nodes[i], first));
  }
  return document;
}

void info(const Options& options, Context& context) {
  const std::unique_ptr<md::CMachDef> machine = read_machine(options.path);
  if (context.json) {
    context.out
        << machine_json(options.path, *machine).dump(2, ' ', false, ordered_json::error_handler_t::replace)
        << "\n";
    return;
  }
  context.out << styled(context, Style::heading, printable(options.path)) << ": "
              << type_name(machine->getMachType()) << ", " << (machine->isMetric() ? "millimetres" : "inches")
              << ", "
              << (machine->is_valid() ? styled(context, Style::good, "valid")
                                      : styled(context, Style::bad, "not valid (see k5ax check)"))
              << "\n\n";
  print_axes(context, *machine);
  context.out << "\n";
  print_facts(context, *machine);
  print_trees(context, *machine, options.all);
}

}  // namespace

void add_info(CLI::App& app, Context& context) {
  Verb verb(app, "info", "Show a machine on one screen");
  auto options = std::make_shared<Options>();
  verb.add_argument("MACHINE", options->path, "The machine definition, .k5m or .json");
  verb.add_flag("--all", options->all, "Show every node of large trees");
  verb.add_json_flag(context);
  verb.set_examples({"k5ax info machine.k5m", "k5ax info machine.json --json"});
  verb.set_work([options, &context] { info(*options, context); });
}

}  // namespace tool
