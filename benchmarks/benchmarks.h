// What is measured. Each function registers its measurements; they are named "operation/side", or
// "operation (machine)/side", and report.cpp knows them by these names.
#ifndef K5AX_BENCHMARKS_BENCHMARKS_H
#define K5AX_BENCHMARKS_BENCHMARKS_H

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "raw_files.h"
#include "sides.h"

namespace bench {

// Calls `operation` with the index of one position after the other. What it computes it must hand to
// benchmark::DoNotOptimize, which also keeps the compiler from carrying anything over to the next call.
template <class Operation>
void measure_positions(const std::string& name, Operation operation) {
  benchmark::RegisterBenchmark(name.c_str(), [operation](benchmark::State& state) mutable {
    std::size_t i = 0;
    for (auto _ : state) {
      operation(i);
      i = (i + 1) % kPositionCount;
    }
  });
}

// One call like the other. Saving is then told to use the clock, since waiting for the disk is what it costs;
// all else is measured in processor time, the system's part included, so that other programs' turns do not
// count.
template <class Operation>
benchmark::internal::Benchmark* measure(const std::string& name, Operation operation) {
  return benchmark::RegisterBenchmark(name.c_str(), [operation](benchmark::State& state) mutable {
    for (auto _ : state) operation();
  });
}

// One call like the other, each into a machine that is empty while the pools are warm. Emptying is not part
// of the time, so it happens to several machines at once: stopping the clock costs more than what is timed.
template <class Operation>
void measure_into_empty(const std::string& name, Operation operation) {
  constexpr std::size_t kMachines = 16;
  const auto machines = std::make_shared<std::array<md::CMachDef, kMachines>>();
  benchmark::RegisterBenchmark(name.c_str(), [operation, machines](benchmark::State& state) {
    std::size_t next = 0;
    for (auto _ : state) {
      if (next == kMachines) {
        state.PauseTiming();
        for (md::CMachDef& machine : *machines) machine.reset();
        next = 0;
        state.ResumeTiming();
      }
      operation((*machines)[next++]);
    }
    for (md::CMachDef& machine : *machines) machine.reset();
  });
}

// A machine with a number of nodes, and its file.
struct Grown {
  std::string label;  // "wide, 90 nodes"
  Machine machine;
  Machine copy;  // what is cloned and loaded into
  std::string path;
  std::vector<md::sg::node*> roots;
  std::vector<md::sg::node*> room;  // for walks: a place for every node
};

constexpr int kNodeCounts[] = {9, 90, 900, 9000};

std::vector<Grown> make_grown_machines(const ScratchFolder& scratch);

// The arguments outlive the measuring.
void register_points(Sides& sides);
void register_scenes(PosedMachine& posed);
void register_files(PosedMachine& posed, const ScratchFolder& scratch);
void register_growth(std::vector<Grown>& grown);

// One line for each operation that should not allocate.
struct AllocationCount {
  std::string operation;
  std::size_t calls;
  std::size_t allocations;
  bool required;  // none is what is required; the other lines are for comparison
};

std::vector<AllocationCount> count_allocations(Sides& sides);

}  // namespace bench

#endif
