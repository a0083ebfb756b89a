// Repetitions in rounds, and what comes of them.
#ifndef K5AX_BENCHMARKS_MEASUREMENTS_H
#define K5AX_BENCHMARKS_MEASUREMENTS_H

#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace bench {

// Three of the five numbers that describe a sample.
struct Quartiles {
  double lower = 0;
  double median = 0;
  double upper = 0;
};

Quartiles quartiles(std::vector<double> sample);

// Nanoseconds per call of everything that was measured: one value a round.
class Measurements : public benchmark::BenchmarkReporter {
 public:
  // Every registered measurement once, in the order of registration, `rounds` times over. Noise that lasts
  // longer than one measurement so hits all sides alike, and a ratio is made of values that were taken next
  // to each other. A first round is for warming up and is thrown away. Throws std::runtime_error when nothing
  // is registered.
  void run(int rounds);

  // Empty when there is none, which happens when the command line filters.
  const std::vector<double>& nanoseconds(const std::string& name) const;
  const std::map<std::string, std::vector<double>>& all() const { return m_nanoseconds; }

  // Of the values of one round each; both must be there.
  Quartiles ratio(const std::string& name, const std::string& reference) const;

  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;

 private:
  std::map<std::string, std::vector<double>> m_nanoseconds;
};

}  // namespace bench

#endif
