// k5ax_bench: k5ax beside the limit, Orocos KDL, a naive scene graph and raw input and output, all in one
// run.
#include <stdlib.h>

#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "report.h"

namespace {

const char* const kUsage =
    "usage: k5ax_bench [--rounds=N] [--json=FILE] [--example=MACHINE] [--scratch=FOLDER] "
    "[--benchmark_filter=REGEX]\n"
    "  rounds   how often everything is measured, 1 at least; 15 when not given\n"
    "  json     where to write the results\n"
    "  example  a table-table machine file to measure beside the nine-node machine\n"
    "  scratch  where files are saved and loaded, on the disk that counts; the working directory when not "
    "given\n";

struct Options {
  int rounds = 15;
  std::string json;
  std::string example;
  std::string scratch = ".";
};

// Takes "name=value" out of the arguments.
bool take(std::vector<std::string>& arguments, const std::string& name, std::string& value) {
  for (auto argument = arguments.begin(); argument != arguments.end(); ++argument)
    if (argument->rfind(name + "=", 0) == 0) {
      value = argument->substr(name.size() + 1);
      arguments.erase(argument);
      return true;
    }
  return false;
}

Options parse(int argc, char** argv) {
  // One measurement in one round; what is asked for on the command line comes later and wins.
  std::vector<std::string> arguments = {argv[0], "--benchmark_min_time=0.02"};
  arguments.insert(arguments.end(), argv + 1, argv + argc);

  Options options;
  std::string rounds;
  if (take(arguments, "--rounds", rounds)) options.rounds = std::stoi(rounds);
  take(arguments, "--json", options.json);
  take(arguments, "--example", options.example);
  take(arguments, "--scratch", options.scratch);

  std::vector<char*> rest;
  for (std::string& argument : arguments) rest.push_back(&argument[0]);
  int count = static_cast<int>(rest.size());
  benchmark::Initialize(&count, rest.data());
  if (benchmark::ReportUnrecognizedArguments(count, rest.data()) || options.rounds < 1) {
    std::cerr << kUsage;
    std::exit(2);
  }
  return options;
}

double load_average() {
  double load = 0;
  return ::getloadavg(&load, 1) == 1 ? load : 0;
}

void run(const Options& options) {
  bench::Results results;
  results.rounds = options.rounds;
  results.load_at_start = load_average();

  const bench::ScratchFolder scratch(options.scratch);
  bench::Sides sides(options.example);
  results.agreement = bench::check_agreement(sides, scratch);
  results.allocations = bench::count_allocations(sides);

  std::vector<bench::Grown> grown = bench::make_grown_machines(scratch);
  bench::register_points(sides);
  for (bench::PosedMachine* const posed : {&sides.nine, sides.example.get()}) {
    if (posed == nullptr) continue;
    results.labels.push_back(posed->label);
    bench::register_scenes(*posed);
    bench::register_files(*posed, scratch);
  }
  bench::register_growth(grown);

  results.measurements.run(options.rounds);
  benchmark::ClearRegisteredBenchmarks();  // they refer to what ends here
  bench::print_report(std::cout, results);
  if (!options.json.empty()) bench::write_json(options.json, results);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    run(parse(argc, argv));
  } catch (const std::exception& error) {
    std::cerr << "k5ax_bench: " << error.what() << '\n';
    return 1;
  }
  return 0;
}
