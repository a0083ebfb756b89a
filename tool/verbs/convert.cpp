// k5ax convert: a machine definition in another form or unit.
#include "tool/verbs/convert.h"

#include "tool/errors.h"
#include "tool/machine/convert_units.h"
#include "tool/machine/finite.h"
#include "tool/machine/machine_file.h"
#include "tool/machine/machine_writer.h"
#include "tool/verb.h"

#include <memory>
#include <ostream>
#include <string>

namespace tool {
namespace {

struct Options {
  std::string from;
  std::string to;
  std::string units;  // empty: as they are
};

const char* unit_name(bool is_metric) { return is_metric ? "millimetres" : "inches"; }

std::string counted(int count, const char* one, const char* many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

void change_units(MachineRecord& machine, bool to_metric, const std::string& file, std::ostream& err) {
  if (machine.is_metric == to_metric) {
    err << printable(file) << ": in " << unit_name(to_metric) << " already; no length was converted\n";
    return;
  }
  const ConvertedLengths converted = convert_units(machine, to_metric);
  const NotFinite too_large = find_not_finite(machine);
  if (!too_large.place.empty()) {
    throw InputError(file, too_large.place, std::string("not a finite number in ") + unit_name(to_metric),
                     "put the number right");
  }
  err << printable(file) << ": converted from " << unit_name(!to_metric) << " to " << unit_name(to_metric)
      << ": " << counted(converted.axes, "axis", "axes") << ", the head, work zero, loading vector, "
      << counted(converted.nodes, "node", "nodes") << "; angles and directions stay\n";
}

void convert(const Options& options, Context& context) {
  const bool to_output = options.to == "-";
  if (!to_output) require_machine_ending("OUT", options.to);
  MachineRecord machine = read_record(options.from);
  if (!options.units.empty()) change_units(machine, options.units == "mm", options.from, context.err);
  if (to_output)
    context.out << write_machine_text(machine, options.from);
  else
    write_record(machine, options.to, options.from);
}

}  // namespace

void add_convert(CLI::App& app, Context& context) {
  Verb verb(app, "convert", "Convert a machine between binary and text, or its units");
  auto options = std::make_shared<Options>();
  verb.add_argument("IN", options->from, "The machine definition; .json is text, any other ending binary");
  verb.add_argument("OUT", options->to,
                    "The file to write: .json for text, .k5m for binary; - for text on standard output");
  verb.add_option("--units", "mm|inch", options->units, {"mm", "inch"}, "Convert every length: mm or inch");
  verb.set_examples({"k5ax convert machine.k5m machine.json", "k5ax convert machine.json machine.k5m",
                     "k5ax convert machine.json machine_inch.json --units inch"});

  verb.set_work([options, &context] { convert(*options, context); });
}

}  // namespace tool
