// k5ax diff: what differs between two machine definitions.
#include "tool/verbs/diff.h"

#include "tool/errors.h"
#include "tool/machine/compare_machines.h"
#include "tool/machine/machine_file.h"
#include "tool/verb.h"

#include <nlohmann/json.hpp>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace tool {
namespace {

struct Paths {
  std::string first;
  std::string second;
};

void print_json(const std::vector<Difference>& differences, std::ostream& out) {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const Difference& difference : differences)
    list.push_back({{"what", difference.what}, {"first", difference.first}, {"second", difference.second}});
  nlohmann::ordered_json answer;
  answer["same"] = differences.empty();
  answer["differences"] = list;
  out << answer.dump(2) << "\n";
}

void print_words(const std::vector<Difference>& differences, std::ostream& out) {
  if (differences.empty()) out << "no differences\n";
  for (const Difference& difference : differences)
    out << difference.what << ": " << difference.first << " -> " << difference.second << "\n";
}

void diff(const Paths& paths, Context& context) {
  const MachineRecord first = read_record(paths.first);
  const MachineRecord second = read_record(paths.second);
  const std::vector<Difference> differences = compare_machines(first, second);
  if (context.json)
    print_json(differences, context.out);
  else
    print_words(differences, context.out);
  if (!differences.empty()) context.exit_code = kNo;
}

}  // namespace

void add_diff(CLI::App& app, Context& context) {
  Verb verb(app, "diff", "Say what differs between two machines; 1 when something does");
  auto paths = std::make_shared<Paths>();
  verb.add_argument("A", paths->first, "A machine definition, .k5m or .json");
  verb.add_argument("B", paths->second, "The other");
  verb.add_json_flag(context);
  verb.set_examples({"k5ax diff machine.json machine.k5m", "k5ax diff machine.json machine.k5m --json"});

  verb.set_work([paths, &context] { diff(*paths, context); });
}

}  // namespace tool
