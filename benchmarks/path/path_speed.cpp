// k5ax_path_speed TOOL EXAMPLES FOLDER [--rows=N] [--rounds=N]: how long the tool takes to convert a tool
// path, beside a program that only parses and prints the same rows.
//
// Both are processes and run in turn, round after round; a ratio is formed within each round, of processor
// times, and the median of the rounds counts. What they write goes to /dev/null, so that no disk takes time
// on both sides. `k5ax_path_speed --plain PATH` is the program that only parses and prints.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "benchmarks/path/plain_copy.h"
#include "benchmarks/path/timed_process.h"

namespace {

constexpr double kAllowed = 1.3;

struct Setup {
  std::string self;
  std::string tool;
  std::string examples;  // the folder with machines and toolpaths
  std::string folder;
  int rows = 1000000;
  int rounds = 15;
};

struct Machine {
  const char* name;
  int tilt;      // the column of the tilting axis; C is the other one
  double z_mid;  // where the part is: every row is within the travels
};

constexpr Machine kMachines[] = {
    {"table_table_trunnion", 3, 120}, {"head_table_swivel", 4, -550}, {"head_head_fork", 3, -650}};

void write_text(const std::string& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary);
  file << text;
  file.close();
  if (!file) throw std::runtime_error(path + " cannot be written");
}

std::string read_text(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error(path + " cannot be read");
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// A shipped path, again and again.
std::string shipped_path(const Setup& setup, const Machine& machine) {
  const std::string shipped = read_text(setup.examples + "/toolpaths/" + machine.name + ".csv");
  const std::size_t first_row = shipped.find('\n') + 1;
  std::string text = shipped.substr(0, first_row);
  std::size_t at = first_row;
  for (int row = 0; row < setup.rows; ++row) {
    if (at == shipped.size()) at = first_row;
    const std::size_t next = shipped.find('\n', at) + 1;
    text.append(shipped, at, next - at);
    at = next;
  }
  return text;
}

// The worst case: positions all over a part and other angles in every row, so that nothing comes twice.
std::string scattered_path(const Setup& setup, const Machine& machine) {
  std::mt19937_64 random(5);
  const auto between = [&random](double from, double to) {
    return from + (to - from) * (static_cast<double>(random() >> 11) / 9007199254740992.0);  // 2^53
  };
  std::string text = "x,y,z,a,b,c\n";
  for (int row = 0; row < setup.rows; ++row) {
    const double x = between(-100, 100);
    const double y = between(-100, 100);
    double values[6] = {x, y, machine.z_mid + between(-50, 50), 0, 0, between(-180, 180)};
    values[machine.tilt] = between(-20, 20);
    char line[200];
    std::snprintf(line, sizeof line, "%.6f,%.6f,%.6f,%.6f,%.6f,%.6f\n", values[0], values[1], values[2],
                  values[3], values[4], values[5]);
    text += line;
  }
  return text;
}

// The six-decimals form of a path, which is how CAM systems and controls write one down.
std::string rounded(const std::string& path) {
  const std::string text = read_text(path);
  std::size_t at = text.find('\n') + 1;
  std::string out = text.substr(0, at);
  while (at < text.size()) {
    char number[64];
    char* after = nullptr;
    std::snprintf(number, sizeof number, "%.6f", std::strtod(text.c_str() + at, &after));
    at = static_cast<std::size_t>(after - text.c_str());
    out += number;
    out += text.at(at++);
  }
  return out;
}

// How many numbers and how many lines a table has.
struct Size {
  std::ptrdiff_t numbers;
  std::ptrdiff_t lines;
};

Size size_of(const std::string& path) {
  const std::string text = read_text(path);
  const std::ptrdiff_t lines = std::count(text.begin(), text.end(), '\n');
  return {std::count(text.begin(), text.end(), ',') + lines, lines};
}

// The value that a part of the values does not exceed.
double quantile(std::vector<double> values, double part) {
  std::sort(values.begin(), values.end());
  return values[static_cast<std::size_t>(std::lround(part * static_cast<double>(values.size() - 1)))];
}

double median(const std::vector<double>& values) { return quantile(values, 0.5); }

// True when the ratio is allowed.
bool measure(const Setup& setup, const Machine& machine, const std::string& kind, const std::string& to,
             const std::string& path, const std::string& converted) {
  // Not measured, and compared: both sides write as many numbers as there are.
  const std::vector<std::string> convert = {
      setup.tool, "path", setup.examples + "/machines/" + machine.name + ".k5m", path, "--to", to};
  const std::vector<std::string> plain = {setup.self, "--plain", path};
  const std::string copied = setup.folder + "/copied.csv";
  bench::run(convert, converted);
  bench::run(plain, copied);
  const Size given = size_of(path);
  for (const std::string& written : {converted, copied}) {
    const Size size = size_of(written);
    if (size.lines != setup.rows + 1 || size.numbers != given.numbers || size.lines != given.lines)
      throw std::runtime_error(written + ": not the rows that were given");
  }

  std::vector<double> plain_times;
  std::vector<double> ratios;
  std::vector<double> clock_ratios;
  long peak_kib = 0;
  for (int round = 0; round < setup.rounds; ++round) {
    const bench::Times least = bench::run(plain, "/dev/null");
    const bench::Times tool = bench::run(convert, "/dev/null");
    plain_times.push_back(least.processor);
    ratios.push_back(tool.processor / least.processor);
    clock_ratios.push_back(tool.clock / least.clock);
    peak_kib = std::max(peak_kib, tool.peak_kib);
  }
  const double ratio = median(ratios);
  std::printf("%-21s %-10s %-8s %8.0f ns %8.2f %6.2f-%.2f %8.2f %8ld KiB\n", machine.name, kind.c_str(),
              to.c_str(), median(plain_times) / setup.rows * 1e9, ratio, quantile(ratios, 0.25),
              quantile(ratios, 0.75), median(clock_ratios), peak_kib);
  std::fflush(stdout);
  return ratio <= kAllowed;
}

int run(const Setup& setup) {
  std::printf("%d rows, %d rounds, at most %.1f\n", setup.rows, setup.rounds, kAllowed);
  std::printf("%-21s %-10s %-8s %11s %8s %11s %8s %12s\n", "machine", "path", "to", "plain/row", "ratio",
              "quartiles", "by clock", "peak memory");
  bool allowed = true;
  for (const char* const kind : {"shipped", "scattered"}) {
    for (const Machine& machine : kMachines) {
      const bool shipped = std::strcmp(kind, "shipped") == 0;
      const std::string path = setup.folder + "/path.csv";
      const std::string moved = setup.folder + "/moved.csv";
      write_text(path, shipped ? shipped_path(setup, machine) : scattered_path(setup, machine));
      const bool there = measure(setup, machine, kind, "machine", path, moved);
      const std::string back = setup.folder + "/back.csv";
      const bool and_back = measure(setup, machine, std::string(kind) + "-17", "part", moved, back);
      write_text(path, rounded(moved));
      const bool rounded_back = measure(setup, machine, kind, "part", path, back);
      allowed = allowed && there && and_back && rounded_back;
    }
  }
  for (const char* name : {"path", "moved", "back", "copied"})
    std::remove((setup.folder + "/" + name + ".csv").c_str());
  if (!allowed) std::printf("slower than allowed\n");
  return allowed ? 0 : 1;
}

void read_option(const std::string& option, Setup& setup) {
  const std::size_t value = option.find('=') + 1;
  const std::string name = option.substr(0, value);
  const int count = value == 0 ? 0 : std::atoi(option.c_str() + value);
  if (count < 1 || (name != "--rows=" && name != "--rounds="))
    throw std::runtime_error(option + ": give --rows=N or --rounds=N, N from 1 on");
  (name == "--rows=" ? setup.rows : setup.rounds) = count;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 3 && std::strcmp(argv[1], "--plain") == 0) return bench::plain_copy(argv[2]);
  try {
    if (argc < 4) throw std::runtime_error("TOOL, EXAMPLES and FOLDER are missing");
    Setup setup;
    setup.self = argv[0];
    setup.tool = argv[1];
    setup.examples = argv[2];
    setup.folder = argv[3];
    for (int i = 4; i < argc; ++i) read_option(argv[i], setup);
    return run(setup);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "k5ax_path_speed: %s\n", error.what());
    return 2;
  }
}
