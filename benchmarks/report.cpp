// The table of ratios, and the same as JSON.
#include "report.h"

#include <cmath>
#include <fstream>
#include <iomanip>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <thread>

#include <kdl/config.h>
#include <nlohmann/json.hpp>

namespace bench {

namespace {

const char* const kLimit = "part to machine/L";

// An operation, what it is measured against and what is asked of it. Without a reference the figures are
// microseconds.
struct Row {
  std::string operation;
  std::string name;
  std::string reference;
  std::string reference_text;
  double required;
  double aim;
};

std::vector<Row> make_rows(const std::vector<std::string>& labels) {
  std::vector<Row> rows = {
      {"`Part2MachCoords`", "part to machine/k5ax", kLimit, "L", 2.0, 1.0},
      {"`Mach2PartCoords`, point and tool direction", "machine to part/k5ax", kLimit, "L", 2.0, 1.0},
      {"`IsToolAxial`", "tool axial/k5ax", kLimit, "L", 2.0, 1.0},
      {"`Cartesian2AxialRotaryVals_c`, axes alone", "wrapping (no trees)/k5ax", kLimit, "L", 25, 10},
      {"`Cartesian2AxialRotaryVals_c`, 9 nodes", "wrapping (9 nodes)/k5ax", kLimit, "L", 25, 10}};
  for (const std::string& label : labels) {
    const std::string of = " (" + label + ")";
    const std::string kdl = "pose" + of + "/KDL";
    rows.push_back({"`UpdateNodeAxes_2`, " + label, "update" + of + "/k5ax", kdl, "KDL", 1.0, 0.4});
    rows.push_back(
        {"`k5axCMachDef_SG2MachCoords`, " + label, "read back" + of + "/k5ax", kdl, "KDL", 0.5, 0.2});
    rows.push_back({"`k5axSgNode_state_get_` of every axis, `CMachDef_IdAxisState_set2`, " + label,
                    "states, flat" + of + "/k5ax", kdl, "KDL", 1.0, 0.3});
    rows.push_back({"`CMachDef_IdAxisState_get`, `CMachDef_IdAxisState_set`, " + label,
                    "states, class" + of + "/k5ax", kdl, "KDL", 1.0, 0.3});
    rows.push_back({"`k5axCMachDef_clone`, pools warm, " + label, "clone" + of + "/k5ax", "", "", 1.5, 0.7});
    rows.push_back(
        {"`MachdefLoad`, " + label, "load" + of + "/k5ax", "load" + of + "/raw", "raw read", 2.0, 1.3});
    rows.push_back(
        {"`MachdefSave`, " + label, "save" + of + "/k5ax", "save" + of + "/raw", "raw replace", 1.2, 1.05});
  }
  return rows;
}

// What the same costs elsewhere: no figure is asked for.
struct Comparison {
  std::string operation;
  std::string name;
  std::vector<std::string> others;
};

std::vector<Comparison> make_comparisons(const std::vector<std::string>& labels) {
  std::vector<Comparison> comparisons = {
      {"part to machine", "part to machine/k5ax", {kLimit, "part to machine/KDL", "part to machine/naive"}},
      {"machine to part, with the tool", "machine to part/k5ax", {"machine to part/L with tool"}}};
  for (const std::string& label : labels) {
    const std::string of = " (" + label + ")";
    comparisons.push_back(
        {"update, " + label, "update" + of + "/k5ax", {"pose" + of + "/KDL", "update" + of + "/naive"}});
    comparisons.push_back({"table zeroed, then update, " + label,
                           "zeroed table and update" + of + "/k5ax",
                           {"pose" + of + "/KDL"}});
    comparisons.push_back({"read back, " + label, "read back" + of + "/k5ax", {"read back" + of + "/naive"}});
    comparisons.push_back({"states, " + label, "states, flat" + of + "/k5ax", {"states" + of + "/naive"}});
    comparisons.push_back({"clone, " + label, "clone" + of + "/k5ax", {"clone" + of + "/naive"}});
    comparisons.push_back({"clone into an empty machine, " + label,
                           "clone into an empty machine" + of + "/k5ax",
                           {"clone" + of + "/naive"}});
    comparisons.push_back(
        {"reset and load, " + label, "reset and load" + of + "/k5ax", {"load" + of + "/raw"}});
  }
  return comparisons;
}

const char* const kGrowing[] = {"update", "walk", "walk by list", "clone", "save", "load"};
const char* const kShapes[] = {"wide", "deep"};

// The exponent of the cost between 90 and 9,000 nodes up to which growth counts as linear. Linear is 1, each
// further node costs as much as the last; a larger tree leaves the caches, which is the slack; a search in
// every step would be 2.
constexpr double kLinear = 1.3;

struct Growth {
  std::string operation;
  std::vector<double> nanoseconds;  // for each of kNodeCounts
  double exponent;
};

std::vector<Growth> growth_of(const Measurements& measurements) {
  std::vector<Growth> all;
  for (const char* const operation : kGrowing)
    for (const char* const shape : kShapes) {
      Growth growth{std::string(operation) + ", " + shape, {}, 0};
      for (const int count : kNodeCounts) {
        const std::vector<double>& measured = measurements.nanoseconds(
            std::string("growth: ") + operation + " (" + shape + ", " + std::to_string(count) + " nodes)");
        if (!measured.empty()) growth.nanoseconds.push_back(quartiles(measured).median);
      }
      if (growth.nanoseconds.size() != std::size(kNodeCounts)) continue;
      growth.exponent = std::log(growth.nanoseconds[3] / growth.nanoseconds[1]) / std::log(9000.0 / 90.0);
      all.push_back(growth);
    }
  return all;
}

struct Judged {
  Row row;
  double nanoseconds;
  double reference_nanoseconds;  // 0 without a reference
  Quartiles figure;              // a ratio, or microseconds
  std::string verdict;
};

std::string verdict_of(double figure, double required, double aim) {
  if (figure <= aim) return "aim met";
  return figure <= required ? "required met" : "REQUIRED MISSED";
}

std::vector<Judged> judge(const Results& results) {
  const Measurements& measurements = results.measurements;
  std::vector<Judged> judged;
  for (const Row& row : make_rows(results.labels)) {
    if (measurements.nanoseconds(row.name).empty()) continue;
    Judged result{row, quartiles(measurements.nanoseconds(row.name)).median, 0, {}, ""};
    if (row.reference.empty()) {
      const Quartiles ns = quartiles(measurements.nanoseconds(row.name));
      result.figure = {ns.lower / 1000, ns.median / 1000, ns.upper / 1000};
    } else {
      if (measurements.nanoseconds(row.reference).empty()) continue;
      result.figure = measurements.ratio(row.name, row.reference);
      result.reference_nanoseconds = quartiles(measurements.nanoseconds(row.reference)).median;
    }
    result.verdict = verdict_of(result.figure.median, row.required, row.aim);
    judged.push_back(result);
  }
  return judged;
}

std::string fixed(double value, int digits) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(digits) << value;
  return text.str();
}

std::string time_text(double nanoseconds) {
  if (nanoseconds < 1e4) return fixed(nanoseconds, nanoseconds < 100 ? 1 : 0) + " ns";
  if (nanoseconds < 1e7) return fixed(nanoseconds / 1e3, 1) + " us";
  return fixed(nanoseconds / 1e6, 1) + " ms";
}

std::string processor_name() {
  std::ifstream info("/proc/cpuinfo");
  for (std::string line; std::getline(info, line);)
    if (line.rfind("model name", 0) == 0) return line.substr(line.find(':') + 2);
  return "an unknown processor";
}

void print_rows(std::ostream& out, const Results& results) {
  int required_met = 0;
  int aims_met = 0;
  const std::vector<Judged> judged = judge(results);
  out << "| operation | k5ax | against | figure | quartiles | required | aim | |\n"
      << "|---|---:|---:|---:|---:|---:|---:|---|\n";
  for (const Judged& each : judged) {
    const std::string unit = each.row.reference.empty() ? " us" : "";
    const int digits = each.row.required >= 10 ? 1 : 2;
    out << "| " << each.row.operation << " | " << time_text(each.nanoseconds) << " | ";
    if (!each.row.reference.empty())
      out << each.row.reference_text << " " << time_text(each.reference_nanoseconds);
    out << " | " << fixed(each.figure.median, digits) << unit << " | " << fixed(each.figure.lower, digits)
        << " to " << fixed(each.figure.upper, digits) << " | " << each.row.required << unit << " | "
        << each.row.aim << unit << " | " << each.verdict << " |\n";
    if (each.figure.median <= each.row.required) ++required_met;
    if (each.figure.median <= each.row.aim) ++aims_met;
  }
  out << "\nRequired met: " << required_met << " of " << judged.size() << "; aims met: " << aims_met << " of "
      << judged.size() << ".\n";
}

void print_allocations(std::ostream& out, const Results& results) {
  out << "\n| heap allocations | calls | allocations | required |\n|---|---:|---:|---|\n";
  for (const AllocationCount& count : results.allocations) {
    out << "| " << count.operation << " | " << count.calls << " | " << count.allocations << " | ";
    if (count.required) out << (count.allocations == 0 ? "0, met" : "0, MISSED");
    out << " |\n";
  }
}

void print_comparisons(std::ostream& out, const Results& results) {
  out << "\n| for comparison | k5ax | other | other / k5ax |\n|---|---:|---:|---:|\n";
  for (const Comparison& comparison : make_comparisons(results.labels))
    for (const std::string& other : comparison.others) {
      const std::vector<double>& own = results.measurements.nanoseconds(comparison.name);
      const std::vector<double>& others = results.measurements.nanoseconds(other);
      if (own.empty() || others.empty()) continue;
      out << "| " << comparison.operation << " | " << time_text(quartiles(own).median) << " | "
          << other.substr(other.find('/') + 1) << " " << time_text(quartiles(others).median) << " | "
          << fixed(results.measurements.ratio(other, comparison.name).median, 2) << " |\n";
    }
}

void print_growth(std::ostream& out, const Results& results) {
  const std::vector<Growth> growth = growth_of(results.measurements);
  if (growth.empty()) return;
  out << "\n| time per node";
  for (const int count : kNodeCounts) out << " | " << count << " nodes";
  out << " | exponent | linear |\n|---|---:|---:|---:|---:|---:|---|\n";
  for (const Growth& each : growth) {
    out << "| " << each.operation;
    for (std::size_t i = 0; i < each.nanoseconds.size(); ++i)
      out << " | " << time_text(each.nanoseconds[i] / kNodeCounts[i]);
    out << " | " << fixed(each.exponent, 2) << " | " << (each.exponent <= kLinear ? "yes" : "NO") << " |\n";
  }
}

}  // namespace

void print_report(std::ostream& out, const Results& results) {
  out << processor_name() << ", " << std::thread::hardware_concurrency() << " cores; compiler " << __VERSION__
      << "; KDL " << KDL_VERSION_STRING << "; " << results.rounds << " rounds; load at the start "
      << fixed(results.load_at_start, 2) << ".\n";
  out << "All sides agree: " << results.agreement.numbers_compared << " numbers compared, worst difference "
      << std::scientific << std::setprecision(1) << results.agreement.worst_difference << std::defaultfloat
      << ".\n\n";
  out << std::setprecision(6);
  print_rows(out, results);
  print_allocations(out, results);
  print_comparisons(out, results);
  print_growth(out, results);
}

void write_json(const std::string& path, const Results& results) {
  using nlohmann::json;
  json root;
  root["context"] = {{"processor", processor_name()}, {"cores", std::thread::hardware_concurrency()},
                     {"compiler", __VERSION__},       {"kdl", KDL_VERSION_STRING},
                     {"rounds", results.rounds},      {"load_at_start", results.load_at_start}};
  root["agreement"] = {{"numbers_compared", results.agreement.numbers_compared},
                       {"worst_difference", results.agreement.worst_difference}};
  root["rows"] = json::array();
  for (const Judged& each : judge(results)) {
    json row = {{"operation", each.row.operation},
                {"measurement", each.row.name},
                {"nanoseconds", each.nanoseconds},
                {"figure", each.figure.median},
                {"lower_quartile", each.figure.lower},
                {"upper_quartile", each.figure.upper},
                {"unit", each.row.reference.empty() ? "microseconds" : "ratio"},
                {"required", each.row.required},
                {"aim", each.row.aim},
                {"required_met", each.figure.median <= each.row.required},
                {"aim_met", each.figure.median <= each.row.aim}};
    if (!each.row.reference.empty()) {
      row["reference"] = each.row.reference;
      row["reference_nanoseconds"] = each.reference_nanoseconds;
    }
    root["rows"].push_back(row);
  }
  root["allocations"] = json::array();
  for (const AllocationCount& count : results.allocations) {
    json line = {{"operation", count.operation}, {"calls", count.calls}, {"allocations", count.allocations}};
    if (count.required) line["required_met"] = count.allocations == 0;
    root["allocations"].push_back(line);
  }
  root["growth"] = json::array();
  for (const Growth& each : growth_of(results.measurements))
    root["growth"].push_back({{"operation", each.operation},
                              {"nodes", kNodeCounts},
                              {"nanoseconds", each.nanoseconds},
                              {"exponent", each.exponent},
                              {"linear", each.exponent <= kLinear}});
  for (const auto& [name, values] : results.measurements.all()) {
    const Quartiles ns = quartiles(values);
    root["measurements"][name] = {
        {"median_ns", ns.median}, {"lower_quartile_ns", ns.lower}, {"upper_quartile_ns", ns.upper}};
  }

  std::ofstream file(path);
  file << root.dump(2) << '\n';
  if (!file.flush()) throw std::runtime_error(path + ": cannot be written");
}

}  // namespace bench
