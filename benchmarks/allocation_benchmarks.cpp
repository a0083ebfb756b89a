// How often the operations that run per position ask for memory.
#include "allocations.h"
#include "benchmarks.h"

namespace bench {

namespace {

template <class Operation>
AllocationCount count(const std::string& name, bool required, Operation operation) {
  for (std::size_t i = 0; i < kPositionCount; ++i) operation(i);  // what is made once is made here
  const std::size_t before = allocation_count();
  for (std::size_t i = 0; i < kPositionCount; ++i) operation(i);
  const std::size_t allocations = allocation_count() - before;
  return {name, kPositionCount, allocations, required};
}

}  // namespace

std::vector<AllocationCount> count_allocations(Sides& sides) {
  const std::vector<Position>& all = positions();
  const md::CMachDef& transforming = *sides.axes_only;
  PosedMachine& posed = sides.nine;
  md::CMachDef* const machine = posed.k5ax.get();

  std::vector<AllocationCount> counts;
  counts.push_back(count("Part2MachCoords", true, [&](std::size_t i) {
    benchmark::DoNotOptimize(transforming.Part2MachCoords(all[i].xyz, all[i].abc));
  }));
  counts.push_back(count("Mach2PartCoords", true, [&](std::size_t i) {
    Point p_part;
    Point d_tool_part;
    transforming.Mach2PartCoords(all[i].xyz, all[i].abc, p_part, d_tool_part);
    benchmark::DoNotOptimize(p_part);
  }));
  counts.push_back(count("IsToolAxial", true, [&](std::size_t i) {
    benchmark::DoNotOptimize(transforming.IsToolAxial(all[i].abc.x, all[i].abc.y, all[i].abc.z));
  }));
  counts.push_back(count("UpdateNodeAxes_2", true, [&](std::size_t i) {
    const Position& p = all[i];
    benchmark::DoNotOptimize(UpdateNodeAxes_2(machine, p.xyz.x, p.xyz.y, p.xyz.z, p.abc.x, p.abc.y, p.abc.z));
  }));
  counts.push_back(count("k5axCMachDef_SG2MachCoords", true, [&](std::size_t) {
    double v[6];
    k5axCMachDef_SG2MachCoords(machine, v);
    benchmark::DoNotOptimize(v);
  }));
  counts.push_back(count("CMachDef_IdAxisState_set2", false, [&](std::size_t i) {
    CMachDef_IdAxisState_set2(machine, posed.states[i].data(), static_cast<int>(posed.states[i].size()));
  }));
  counts.push_back(count("CMachDef_IdAxisState_get", false, [&](std::size_t) {
    const std::map<int, node_state> states = md::CMachDef_IdAxisState_get(*machine);
    benchmark::DoNotOptimize(&states);
  }));
  counts.push_back(
      count("k5axCMachDef_clone", false, [&, copy = std::make_shared<md::CMachDef>()](std::size_t) {
        k5axCMachDef_clone(copy.get(), machine);
      }));
  counts.push_back(
      count("KDL's two chains", false, [&](std::size_t i) { posed.kdl.solve(posed.joints[i]); }));
  counts.push_back(count("naive update", false, [&](std::size_t i) { posed.naive.update(all[i]); }));
  return counts;
}

}  // namespace bench
