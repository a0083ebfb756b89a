// k5ax wrap: a tool path about the rotary axis, as axial position, radius and rotary value.
#include "tool/verbs/wrap.h"

#include "tool/errors.h"
#include "tool/text.h"
#include "tool/toolpath/machine_for_path.h"
#include "tool/toolpath/path_table.h"
#include "tool/verb.h"
#include "tool/verbs/path_files.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <ostream>
#include <string>

#include <k5ax/k5ax.h>

#include <nlohmann/json.hpp>

namespace tool {
namespace {

using Geometry::TPoint;

struct WrapOptions {
  PathFiles files;
  std::string onto;
};

// A half-plane of the library: the one of +X, +Y, +Z (0, 1, 2) or of the opposite direction.
struct Reference {
  int axis;
  int sign;
};

// "+x", "-x", "x" and so on.
Reference reference_of(const std::string& onto) { return {onto.back() - 'x', onto.front() == '-' ? -1 : 1}; }

class Range {
 public:
  void take(double value) {
    m_from = std::min(m_from, value);
    m_to = std::max(m_to, value);
  }
  bool empty() const { return m_from > m_to; }
  double from() const { return m_from; }
  double to() const { return m_to; }

 private:
  double m_from = std::numeric_limits<double>::infinity();
  double m_to = -std::numeric_limits<double>::infinity();
};

// Every column is there or is added, so that what comes out can always be turned back.
TablePlan plan_for(const md::CMachDef& machine, std::size_t turned) {
  TablePlan plan;
  const std::array<bool, 3> letters = rotary_letters(machine);
  for (std::size_t i = 0; i < 3; ++i) {
    plan.use[i] = ColumnUse::kRequired;
    plan.rewritten[i] = true;
    plan.use[3 + i] = letters[i] ? ColumnUse::kOptional : ColumnUse::kZero;
  }
  plan.rewritten[3 + turned] = true;
  plan.appended_if_missing[3 + turned] = true;
  plan.appended = {"radius"};
  return plan;
}

struct WrapSummary {
  std::string path;
  std::uint64_t rows = 0;
  const char* unit = "";
  std::string letter;  // of the rotary axis
  Range radius;
  Range angle;
};

void print_range(const Range& range, const std::string& name, const char* unit, std::ostream& stream) {
  if (!range.empty())
    stream << name << " " << number(range.from(), 8) << " to " << number(range.to(), 8) << " " << unit
           << "\n";
}

nlohmann::ordered_json json_of(const Range& range) {
  if (range.empty()) return nullptr;
  return {range.from(), range.to()};
}

void print_wrap_summary(const WrapSummary& summary, bool json, std::ostream& stream) {
  if (!json) {
    stream << printable(summary.path) << ": " << counted(summary.rows, "row") << "\n";
    print_range(summary.radius, "radius", summary.unit, stream);
    print_range(summary.angle, summary.letter, "deg", stream);
    return;
  }
  nlohmann::ordered_json object;
  object["path"] = summary.path;
  object["rows"] = summary.rows;
  object["unit"] = summary.unit;
  object["axis"] = summary.letter;
  object["radius"] = json_of(summary.radius);
  object["angle_deg"] = json_of(summary.angle);
  stream << object.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << "\n";
}

void run_wrap(const WrapOptions& options, Context& context) {
  const std::unique_ptr<md::CMachDef> machine = read_valid_machine(options.files.machine);
  const boost::shared_ptr<md::CAxis2> axis = machine->rotary_axis();
  if (!axis)
    throw InputError(options.files.machine, "", "the machine has no rotary axis to wrap about",
                     "take a machine that has one");

  // Every call works on a clone of the machine. Without its trees, which wrapping does not look at, that is
  // soon done.
  md::CMachDef bare;
  bare.clone(*machine, 1);

  const std::size_t turned = static_cast<std::size_t>(axis->GetAxis()) % 3;
  const TablePlan plan = plan_for(*machine, turned);
  const std::string across = turned == 0 ? "+y" : "+x";
  const Reference reference = reference_of(options.onto.empty() ? across : options.onto);

  WrapSummary summary;
  summary.path = options.files.path;
  summary.unit = unit_name(*machine);
  summary.letter = kRotaryLetters[turned];

  summary.rows = convert_path(options.files, plan, context, [&](PathRow& row) {
    const TPoint<double> pose = abc_of(row);
    TPoint<double> p_wrapped;
    TPoint<double> abc;
    double radius = 0;
    md::Cartesian2AxialRotaryVals(&bare, xyz_of(row), pose, reference.axis, reference.sign, p_wrapped, abc,
                                  radius);
    set_xyz(row, p_wrapped);
    // A point on the axis keeps its angle, to the last digit.
    if (abc != pose) row.values[3 + turned] = axis->GetAngle(abc.x, abc.y, abc.z) * math::R2D;
    row.appended[0] = radius;
    summary.radius.take(radius);
    summary.angle.take(row.values[3 + turned]);
  });
  print_wrap_summary(summary, context.json, summary_stream(options.files, context));
}

}  // namespace

void add_wrap(CLI::App& app, Context& context) {
  Verb verb(app, "wrap", "Wrap a tool path about the machine's rotary axis");
  auto options = std::make_shared<WrapOptions>();
  add_path_arguments(verb, options->files,
                     "The path, - for standard input: CSV with a header that names x, y, z; a, b, c in "
                     "degrees are the pose, 0 where they are missing");
  verb.add_option(
      "--onto", "DIRECTION", options->onto, {"+x", "-x", "+y", "-y", "+z", "-z", "x", "y", "z"},
      "The half-plane that every point is turned into: +x, -x, +y, -y, +z, -z; +x if not given, +y "
      "about an A axis");
  add_output_option(verb, options->files);
  verb.add_json_flag(context);
  verb.set_examples({"k5ax wrap machine.k5m cartesian.csv -o wrapped.csv",
                     "k5ax wrap machine.json - --onto -x < cartesian.csv"});
  verb.set_work([options, &context] { run_wrap(*options, context); });
}

}  // namespace tool
