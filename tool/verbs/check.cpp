// k5ax check: is the machine valid, why not, and what looks wrong.
#include "tool/verbs/check.h"

#include "tool/check/validity.h"
#include "tool/check/warnings.h"
#include "tool/errors.h"
#include "tool/machine/machine_file.h"
#include "tool/style.h"
#include "tool/text.h"
#include "tool/verb.h"

#include <nlohmann/json.hpp>

#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace tool {
namespace {

constexpr int kShownOfARule = 10;  // a file that is no machine at all breaks one rule thousands of times

struct Options {
  std::string path;
  bool strict = false;
};

struct Verdict {
  bool valid;
  std::vector<Finding> reasons;
  std::vector<Finding> warnings;
};

Verdict judge(md::CMachDef& machine) {
  Verdict verdict{machine.is_valid(), reasons_not_valid(machine), all_warnings(machine)};
  // The library decides. Were it ever to say no by a rule that is not explained here, or yes against one,
  // people would still read the right answer.
  if (verdict.valid) verdict.reasons.clear();
  if (!verdict.valid && verdict.reasons.empty()) {
    verdict.reasons.push_back({"unexplained", "machine",
                               "the library does not accept it, by a rule unknown here",
                               "use a tool of the library's version"});
  }
  return verdict;
}

nlohmann::ordered_json to_json(const std::vector<Finding>& findings) {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const Finding& finding : findings) {
    list.push_back({{"rule", finding.rule},
                    {"place", finding.place},
                    {"value", finding.value},
                    {"remedy", finding.remedy}});
  }
  return list;
}

void print_findings(const Context& context, const std::vector<Finding>& findings, const std::string& label) {
  std::map<std::string, int> shown;
  for (const Finding& finding : findings) {
    if (++shown[finding.rule] <= kShownOfARule)
      context.out << "  " << label << printable(finding.line()) << "\n";
  }
  for (const auto& [rule, count] : shown) {
    if (count <= kShownOfARule) continue;
    context.out << "  " << label << count - kShownOfARule << " more of " << rule << "; --json has them all\n";
  }
}

void print(const Context& context, const std::string& path, const Verdict& verdict) {
  const std::string answer =
      verdict.valid ? styled(context, Style::good, "valid") : styled(context, Style::bad, "not valid");
  context.out << printable(path) << ": " << answer;
  if (!verdict.reasons.empty()) context.out << ", " << counted(verdict.reasons.size(), "reason");
  if (!verdict.warnings.empty()) context.out << ", " << counted(verdict.warnings.size(), "warning");
  context.out << "\n";
  print_findings(context, verdict.reasons, styled(context, Style::bad, "reason: "));
  print_findings(context, verdict.warnings, styled(context, Style::doubtful, "warning: "));
}

void check(const Options& options, Context& context) {
  const std::unique_ptr<md::CMachDef> machine = read_machine(options.path);
  const Verdict verdict = judge(*machine);
  if (context.json) {
    const nlohmann::ordered_json document = {{"file", options.path},
                                             {"valid", verdict.valid},
                                             {"reasons", to_json(verdict.reasons)},
                                             {"warnings", to_json(verdict.warnings)}};
    context.out << document.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << "\n";
  } else {
    print(context, options.path, verdict);
  }
  if (!verdict.valid || (options.strict && !verdict.warnings.empty())) context.exit_code = kNo;
}

}  // namespace

void add_check(CLI::App& app, Context& context) {
  Verb verb(app, "check", "Say whether a machine is valid, why not, and what looks wrong");
  auto options = std::make_shared<Options>();
  verb.add_argument("MACHINE", options->path, "The machine definition, .k5m or .json");
  verb.add_flag("--strict", options->strict, "End with 1 also when there are only warnings");
  verb.add_json_flag(context);
  verb.set_examples({"k5ax check machine.json", "k5ax check machine.k5m --strict"});
  verb.set_work([options, &context] { check(*options, context); });
}

}  // namespace tool
