// Repetitions in rounds, and what comes of them.
#include "measurements.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <stdexcept>

namespace bench {

namespace {

// Between two values that have the place between them, in proportion.
double at_fraction(const std::vector<double>& sorted, double fraction) {
  const double place = fraction * static_cast<double>(sorted.size() - 1);
  const std::size_t below = static_cast<std::size_t>(place);
  const std::size_t above = std::min(below + 1, sorted.size() - 1);
  return sorted[below] + (sorted[above] - sorted[below]) * (place - std::floor(place));
}

}  // namespace

Quartiles quartiles(std::vector<double> sample) {
  std::sort(sample.begin(), sample.end());
  return {at_fraction(sample, 0.25), at_fraction(sample, 0.5), at_fraction(sample, 0.75)};
}

void Measurements::run(int rounds) {
  const bool watched = ::isatty(STDERR_FILENO) == 1;
  for (int round = 0; round <= rounds; ++round) {
    if (watched) std::cerr << "\rround " << round << " of " << rounds << std::flush;
    if (benchmark::RunSpecifiedBenchmarks(this) == 0)
      throw std::runtime_error("no measurement has such a name");
    if (round == 0) m_nanoseconds.clear();
  }
  if (watched) std::cerr << "\r                                \r" << std::flush;
}

const std::vector<double>& Measurements::nanoseconds(const std::string& name) const {
  static const std::vector<double> none;
  const auto found = m_nanoseconds.find(name);
  return found != m_nanoseconds.end() ? found->second : none;
}

Quartiles Measurements::ratio(const std::string& name, const std::string& reference) const {
  std::vector<double> ratios = nanoseconds(name);
  const std::vector<double>& references = nanoseconds(reference);
  for (std::size_t round = 0; round < ratios.size(); ++round) ratios[round] /= references.at(round);
  return quartiles(ratios);
}

bool Measurements::ReportContext(const Context&) { return true; }

void Measurements::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.run_type != Run::RT_Iteration) continue;
    const bool by_the_clock = !run.run_name.time_type.empty();
    const double seconds = by_the_clock ? run.real_accumulated_time : run.cpu_accumulated_time;
    m_nanoseconds[run.run_name.function_name].push_back(1e9 * seconds / static_cast<double>(run.iterations));
  }
}

}  // namespace bench
