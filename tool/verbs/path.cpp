// k5ax path: a whole tool path between part and machine coordinates.
#include "tool/verbs/path.h"

#include "tool/errors.h"
#include "tool/text.h"
#include "tool/toolpath/machine_for_path.h"
#include "tool/toolpath/path_summary.h"
#include "tool/toolpath/path_table.h"
#include "tool/toolpath/slide_values.h"
#include "tool/toolpath/travels.h"
#include "tool/verb.h"
#include "tool/verbs/path_files.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <ostream>
#include <string>

#include <k5ax/k5ax.h>

namespace tool {
namespace {

using Geometry::TPoint;

struct PathOptions {
  PathFiles files;
  std::string to;
  bool no_travel = false;

  bool to_machine() const { return to == "machine"; }
};

TablePlan plan_for(const md::CMachDef& machine, const PathOptions& options) {
  TablePlan plan;
  for (std::size_t i = 0; i < 3; ++i) {
    plan.use[i] = ColumnUse::kRequired;
    plan.rewritten[i] = true;
    plan.use[3 + i] = rotary_letters(machine)[i] ? ColumnUse::kRequired : ColumnUse::kZero;
  }
  // Without any rotary axis, part to machine turns by C about Z and, on a table-table machine, then by B
  // about Y. There a path may have these columns and need not. The way back turns nothing.
  if (!machine.getPrimary() && !machine.getSecondary() && options.to_machine()) {
    plan.use[5] = ColumnUse::kOptional;
    if (machine.getMachType() == MC_TT) plan.use[4] = ColumnUse::kOptional;
  }
  return plan;
}

// Holds every row against the travels of the slides, where the trees say how they stand, and of the rotary
// axes.
class TravelWatch {
 public:
  explicit TravelWatch(md::CMachDef& machine) : m_slides(machine) {
    for (std::size_t i = 0; i < 3; ++i) {
      const md::CAxis2* const axis = m_slides.axis(i);
      if (axis == nullptr) continue;
      m_places[m_axes++] = i;
      m_travels.add(*axis, false);
      m_has_slides = true;
    }
    for (const auto& axis : {machine.getPrimary(), machine.getSecondary()}) {
      if (!axis) continue;
      m_places[m_axes++] = 3 + static_cast<std::size_t>(axis->GetAxis()) % 3;
      m_travels.add(*axis, true);
    }
  }

  void take(const PathRow& row, const TPoint<double>& p_mach, const TPoint<double>& abc) {
    std::array<double, 3> slides{};
    if (m_has_slides && !m_slides.at(p_mach, abc, slides)) {
      m_travels.take_unreached(row.line);
      return;
    }
    std::array<double, kMostAxes> values{};
    for (std::size_t k = 0; k < m_axes; ++k)
      values[k] = m_places[k] < 3 ? slides[m_places[k]] : row.values[m_places[k]];
    m_travels.take(row.line, values.data());
  }

  const Travels& travels() const { return m_travels; }
  bool has_slides() const { return m_has_slides; }

 private:
  static constexpr std::size_t kMostAxes = 5;

  SlideValues m_slides;
  Travels m_travels;
  std::array<std::size_t, kMostAxes> m_places{};  // by travel: 0 to 2 a slide, 3 to 5 an angle of the row
  std::size_t m_axes = 0;
  bool m_has_slides = false;
};

// Points, one way or the other.
//
//     p_mach  =  p_part * Q(secondary, -a2) * Q(primary, -a1)
//     p_part  =  p_mach * Q(primary, a1) * Q(secondary, a2)
//
// So to the part goes what goes to the machine once the axes are exchanged and the angles negated, to the
// same bits. That leaves out the tool direction, which Mach2PartCoords turns as well and nobody asks for
// here. A machine without rotary axes has no angles but zeros on that way, see plan_for().
class Conversion {
 public:
  Conversion(const md::CMachDef& machine, bool to_machine) : m_to_machine(to_machine) {
    m_machine.clone(machine, 1);
    if (to_machine) return;

    const boost::shared_ptr<md::CAxis2> primary = m_machine.getPrimary();
    m_machine.setPrimary(m_machine.getSecondary());
    m_machine.setSecondary(primary);
  }

  TPoint<double> apply(const TPoint<double>& p, const TPoint<double>& abc) const {
    return m_machine.Part2MachCoords(p, m_to_machine ? abc : -abc);
  }

 private:
  md::CMachDef m_machine;
  bool m_to_machine;
};

void run_path(const PathOptions& options, Context& context) {
  const std::unique_ptr<md::CMachDef> machine = read_valid_machine(options.files.machine);
  const bool to_machine = options.to_machine();
  const Conversion conversion(*machine, to_machine);
  TravelWatch watch(*machine);
  const bool watches = !options.no_travel;

  const auto convert = [&](PathRow& row) {
    const TPoint<double> abc = abc_of(row);
    const TPoint<double> p_given = xyz_of(row);
    const TPoint<double> p_new = conversion.apply(p_given, abc);
    set_xyz(row, p_new);
    if (watches) watch.take(row, to_machine ? p_new : p_given, abc);
  };
  const std::uint64_t rows = convert_path(options.files, plan_for(*machine, options), context, convert);

  const PathSummary summary = {options.files.path, rows,           unit_name(*machine), watches,
                               watch.has_slides(), watch.travels()};
  std::ostream& stream = summary_stream(options.files, context);
  if (context.json)
    print_summary_json(summary, stream);
  else
    print_summary(summary, stream);
  if (watch.travels().rows_out() > 0) context.exit_code = kNo;
}

}  // namespace

void add_path(CLI::App& app, Context& context) {
  Verb verb(app, "path", "Convert a tool path between part and machine coordinates");
  auto options = std::make_shared<PathOptions>();
  add_path_arguments(verb, options->files,
                     "The tool path, - for standard input: CSV with a header that names x, y, z and the "
                     "machine's of a, b, c; lengths in the machine's unit, angles in degrees");
  verb.add_required_option("--to", "machine|part", options->to, {"machine", "part"},
                           "What x, y, z become: machine or part coordinates");
  add_output_option(verb, options->files);
  verb.add_flag("--no-travel", options->no_travel, "Do not hold the rows against the axes' travels");
  verb.add_json_flag(context);
  verb.set_examples({"k5ax path machine.k5m path.csv --to machine -o moved.csv",
                     "k5ax path machine.json - --to part < path.csv"});
  verb.set_work([options, &context] { run_path(*options, context); });
}

}  // namespace tool
