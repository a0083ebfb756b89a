// k5ax pose: where every node of a machine goes.
#include "tool/verbs/pose.h"

#include "tool/errors.h"
#include "tool/machine/machine_file.h"
#include "tool/node_text.h"
#include "tool/scene_nodes.h"
#include "tool/style.h"
#include "tool/text.h"
#include "tool/verb.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <k5ax/kinematics.h>

namespace tool {
namespace {

using nlohmann::ordered_json;

constexpr std::size_t kScreen = 80;  // columns
constexpr std::array<const char*, 6> kNames = {"X", "Y", "Z", "A", "B", "C"};

struct Options {
  std::string path;
  std::array<std::string, 6> coordinates;
  bool part = false;
};

// What came of it.
struct Posed {
  Point p_mach;  // where the update was sent
  Point abc;     // radians
  bool reached = false;
  Point p_tool_part;  // where the tool point is, in the part frame
  Point u_tool_part;  // and where the tool points
};

double coordinate(const std::string& name, const std::string& text) {
  double value = 0;
  const char* const begin = text.c_str() + (text.size() > 1 && text[0] == '+' && text[1] != '-' ? 1 : 0);
  const char* const end = text.c_str() + text.size();
  const std::from_chars_result read = std::from_chars(begin, end, value);
  if (read.ec != std::errc() || read.ptr != end || !std::isfinite(value)) {
    throw UsageError("pose: " + name + ": \"" + text + "\" is not a number",
                     "give six numbers, X Y Z A B C, the last three in degrees");
  }
  return value;
}

bool has_letter(const md::CMachDef& machine, AXIS_TYPE letter) {
  for (const md::CAxis2* axis : {machine.getPrimary().get(), machine.getSecondary().get()}) {
    if (axis != nullptr && axis->GetAxis() == letter) return true;
  }
  return false;
}

void note_unused_angles(const md::CMachDef& machine, const Point& abc, const Context& context) {
  const double angles[3] = {abc.x, abc.y, abc.z};
  for (int i = 0; i < 3; ++i) {
    if (angles[i] == 0 || has_letter(machine, static_cast<AXIS_TYPE>(i))) continue;
    context.err << "k5ax: note: the machine has no rotary axis " << kNames[static_cast<std::size_t>(i) + 3]
                << ", so " << degrees(angles[i]) << " deg of it turn nothing\n";
  }
}

// The product of two steps that may be missing: without a tool node or a second tree the update measures from
// the machine frame.
Geometry::Matrix tool_to_part(md::CMachDef& machine, const std::vector<SceneNode>& nodes,
                              const std::vector<Geometry::Matrix>& node_to_root) {
  Geometry::Matrix tool_to_mach;
  Geometry::Matrix mach_to_part;
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    if (nodes[i].node == machine.tool_node().get()) tool_to_mach = node_to_root[i];
    if (nodes[i].tree == 1 && nodes[i].in_first_line) mach_to_part = node_to_root[i];
  }
  return tool_to_mach * mach_to_part;
}

ordered_json point_json(const Point& p) { return {p.x, p.y, p.z}; }

// How far the node's value is out of its travel; 0 within.
double beyond_travel(const md::CAxis2& axis, double value) {
  if (value < axis.GetMin()) return value - axis.GetMin();
  if (value > axis.GetMax()) return value - axis.GetMax();
  return 0;
}

ordered_json to_json(md::CMachDef& machine, const Options& options, const Posed& posed,
                     const std::vector<SceneNode>& nodes, const std::vector<Geometry::Matrix>& node_to_root) {
  ordered_json document = {
      {"file", options.path},
      {"unit", unit_name(machine)},
      {"machine_coordinates", point_json(posed.p_mach)},
      {"angles_deg", point_json(posed.abc * math::R2D)},
      {"reached", posed.reached},
      {"tool_on_part",
       {{"point", point_json(posed.p_tool_part)}, {"direction", point_json(posed.u_tool_part)}}},
      {"nodes", ordered_json::array()}};
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const SceneNode& entry = nodes[i];
    const MatrixNumbers numbers = numbers_of(node_to_root[i]);
    ordered_json node = {{"tree", entry.tree}, {"id", entry.node->id()}, {"kind", node_kind(entry)}};
    if (entry.axis != nullptr) {
      const bool rotary = entry.axis->mode() == ROTARY;
      node["letter"] = letter_name(entry.axis->GetAxis());
      node[rotary ? "value_deg" : "value"] = entry.node->value() * (rotary ? math::R2D : 1);
      node["within_travel"] = beyond_travel(*entry.axis, entry.node->value()) == 0;
    }
    node["to_root"] = std::vector<double>(numbers.values, numbers.values + 12);
    document["nodes"].push_back(node);
  }
  return document;
}

// Name, value and transform in a line where they fit, else the transform in a line of its own.
void print_node(const Context& context, const md::CMachDef& machine, const SceneNode& entry,
                const Geometry::Matrix& node_to_root) {
  const bool rotary = entry.axis != nullptr && entry.axis->mode() == ROTARY;
  const std::string name = node_name(entry) + " (id " + std::to_string(entry.node->id()) + ")";
  std::string value;
  if (entry.axis != nullptr) {
    value =
        number(entry.node->value() * (rotary ? math::R2D : 1)) + " " + (rotary ? "deg" : unit_name(machine));
  }
  std::string front = "  " + name + std::string(name.size() < 20 ? 20 - name.size() : 1, ' ') + value;
  front += std::string(front.size() < 38 ? 38 - front.size() : 1, ' ');

  std::string words;
  for (const int digits : {9, 7, 6, 5}) {
    words = transform_words(node_to_root, digits);
    if (front.size() + words.size() <= kScreen) {
      context.out << front << (words.empty() ? "at the root" : words) << "\n";
      return;
    }
  }
  while (front.back() == ' ') front.pop_back();
  context.out << front << "\n";
  words = transform_words(node_to_root, 9);
  const std::size_t turn_end = words.find(", shift ");
  const std::size_t rows_end = words.find(" | ", words.find(" | ") + 1);
  if (6 + words.size() > kScreen && turn_end != std::string::npos) words.replace(turn_end, 2, ",\n      ");
  if (6 + words.size() > kScreen && rows_end != std::string::npos) words.replace(rows_end, 3, " |\n      ");
  context.out << "      " << words << "\n";
}

void print(const Context& context, md::CMachDef& machine, const Options& options, const Posed& posed,
           const std::vector<SceneNode>& nodes, const std::vector<Geometry::Matrix>& node_to_root) {
  context.out << styled(context, Style::heading, printable(options.path)) << " at X "
              << number(posed.p_mach.x) << " Y " << number(posed.p_mach.y) << " Z " << number(posed.p_mach.z);
  for (int i = 0; i < 3; ++i) {
    const double angles[3] = {posed.abc.x, posed.abc.y, posed.abc.z};
    if (has_letter(machine, static_cast<AXIS_TYPE>(i))) {
      context.out << " " << kNames[static_cast<std::size_t>(i) + 3] << " " << degrees(angles[i]);
    }
  }
  context.out << "\nreached: "
              << (posed.reached ? styled(context, Style::good, "yes")
                                : styled(context, Style::bad, "no; the slides stand at 0"))
              << "\ntool point on the part: " << triple(posed.p_tool_part)
              << "\ntool direction there:   " << triple(posed.u_tool_part, 7) << "\n";

  const char* const names[2] = {"tree 0: each node seen from the machine frame",
                                "tree 1: each node seen from the part"};
  for (int tree = 0; tree < 2; ++tree) {
    context.out << "\n" << styled(context, Style::heading, names[tree]) << "\n";
    bool any = false;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      if (nodes[i].tree != tree) continue;
      any = true;
      print_node(context, machine, nodes[i], node_to_root[i]);
    }
    if (!any) context.out << "  none\n";
  }

  for (const SceneNode& entry : nodes) {
    if (entry.axis == nullptr) continue;
    const double beyond = beyond_travel(*entry.axis, entry.node->value());
    if (beyond == 0) continue;
    const char* const unit = unit_name(machine);
    context.out << "\n"
                << styled(context, Style::doubtful, "out of travel: ") << node_name(entry) << " (id "
                << entry.node->id() << ") stands " << axis_value(*entry.axis, std::abs(beyond), unit)
                << (beyond < 0 ? " below " : " above ")
                << axis_value(*entry.axis, beyond < 0 ? entry.axis->GetMin() : entry.axis->GetMax(), unit);
  }
  if (std::any_of(nodes.begin(), nodes.end(), [](const SceneNode& entry) {
        return entry.axis != nullptr && beyond_travel(*entry.axis, entry.node->value()) != 0;
      })) {
    context.out << "\n";
  }
}

void pose(const Options& options, Context& context) {
  std::array<double, 6> values{};
  for (std::size_t i = 0; i < values.size(); ++i) values[i] = coordinate(kNames[i], options.coordinates[i]);
  const std::unique_ptr<md::CMachDef> machine = read_machine(options.path);
  const std::vector<SceneNode> nodes = scene_nodes(*machine);
  if (nodes.empty()) {
    throw InputError(options.path, "", "has no trees, so there is nothing to pose",
                     "add them; a .json definition without trees gets both from its axes");
  }

  Posed posed;
  posed.abc = Point(values[3], values[4], values[5]) * math::D2R;
  posed.p_mach = Point(values[0], values[1], values[2]);
  if (options.part) posed.p_mach = machine->Part2MachCoords(posed.p_mach, posed.abc);
  note_unused_angles(*machine, posed.abc, context);

  table_to_zero(*machine);
  posed.reached = md::UpdateNodeAxes_(machine.get(), posed.p_mach, posed.abc);

  const std::vector<Geometry::Matrix> node_to_root = to_roots(nodes);
  const Geometry::Matrix tool = tool_to_part(*machine, nodes, node_to_root);
  posed.p_tool_part = shift_of(tool);
  posed.u_tool_part = tool.TransformDirection(CUtility::pt_z);
  if (context.json) {
    context.out << to_json(*machine, options, posed, nodes, node_to_root)
                       .dump(2, ' ', false, ordered_json::error_handler_t::replace)
                << "\n";
  } else {
    print(context, *machine, options, posed, nodes, node_to_root);
  }
  if (!posed.reached) context.exit_code = kNo;
}

}  // namespace

void add_pose(CLI::App& app, Context& context) {
  Verb verb(app, "pose", "Pose a machine and show where every node of its trees goes");
  auto options = std::make_shared<Options>();
  verb.add_argument("MACHINE", options->path, "The machine definition, .k5m or .json");
  for (std::size_t i = 0; i < kNames.size(); ++i) {
    verb.add_argument(kNames[i], options->coordinates[i],
                      i < 3 ? "Machine coordinate, a length in the machine's unit"
                            : "Angle in degrees; 0 where the machine has no such axis");
  }
  verb.add_flag("--part", options->part, "X Y Z are a point on the part instead, carried along by the table");
  verb.add_json_flag(context);
  verb.set_examples(
      {"k5ax pose machine.k5m 10 20 30 -40 0 90", "k5ax pose machine.json 10 20 30 -40 0 90 --part"});
  verb.say_more(
      "X Y Z are machine coordinates, as k5ax path --to machine writes them: the place\n"
      "of the tool point while the rotary axes of the table stand at 0. With --part\n"
      "they are a point on the part. Ends with 1 when the point cannot be reached.");
  verb.set_work([options, &context] { pose(*options, context); });
}

}  // namespace tool
