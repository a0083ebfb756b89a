// Posing the trees, reading them back, their states, and copies of the machine.
#include "benchmarks.h"

namespace bench {

void register_scenes(PosedMachine& posed) {
  const Position* const all = positions().data();
  md::CMachDef* const machine = posed.k5ax.get();
  KdlPose* const kdl = &posed.kdl;
  naive::Scene* const naive = &posed.naive;
  const JointValues* const joints = posed.joints.data();
  const std::string of = " (" + posed.label + ")";

  measure_positions("pose" + of + "/KDL", [kdl, joints](std::size_t i) {
    kdl->solve(joints[i]);
    benchmark::DoNotOptimize(kdl->branches()[0].frames.data());
    benchmark::DoNotOptimize(kdl->branches()[1].frames.data());
  });
  measure_positions("update" + of + "/k5ax", [machine, all](std::size_t i) {
    const Position& p = all[i];
    bool reached = UpdateNodeAxes_2(machine, p.xyz.x, p.xyz.y, p.xyz.z, p.abc.x, p.abc.y, p.abc.z);
    benchmark::DoNotOptimize(reached);
  });
  measure_positions("zeroed table and update" + of + "/k5ax", [machine, all](std::size_t i) {
    const Position& p = all[i];
    zero_table(*machine);
    bool reached = UpdateNodeAxes_2(machine, p.xyz.x, p.xyz.y, p.xyz.z, p.abc.x, p.abc.y, p.abc.z);
    benchmark::DoNotOptimize(reached);
  });
  measure_positions("update" + of + "/naive", [naive, all](std::size_t i) {
    bool reached = naive->update(all[i]);
    benchmark::DoNotOptimize(reached);
  });

  measure_positions("read back" + of + "/k5ax", [machine](std::size_t) {
    double v[6];
    k5axCMachDef_SG2MachCoords(machine, v);
    benchmark::DoNotOptimize(v);
  });
  measure_positions("read back" + of + "/naive", [naive](std::size_t) {
    JointValues v = naive->read_back();
    benchmark::DoNotOptimize(v);
  });

  // Taken are the states that the last call restored, and restored those of the next position.
  const std::vector<node_state>* const states = posed.states.data();
  const std::vector<md::sg::node*>* const axis_nodes = &posed.axis_nodes;
  measure_positions("states, flat" + of + "/k5ax", [machine, states, axis_nodes,
                                                    taken = posed.states.front()](std::size_t i) mutable {
    for (std::size_t n = 0; n < taken.size(); ++n) k5axSgNode_state_get_((*axis_nodes)[n], &taken[n]);
    benchmark::DoNotOptimize(taken.data());
    CMachDef_IdAxisState_set2(machine, states[i].data(), static_cast<int>(states[i].size()));
    benchmark::ClobberMemory();
  });
  const std::map<int, node_state>* const state_maps = posed.state_maps.data();
  measure_positions("states, class" + of + "/k5ax", [machine, state_maps](std::size_t i) {
    std::map<int, node_state> taken = md::CMachDef_IdAxisState_get(*machine);
    benchmark::DoNotOptimize(taken);
    md::CMachDef_IdAxisState_set(*machine, state_maps[i]);
    benchmark::ClobberMemory();
  });
  const std::map<int, naive::State>* const naive_states = posed.naive_states.data();
  measure_positions("states" + of + "/naive", [naive, naive_states](std::size_t i) {
    std::map<int, naive::State> taken = naive->states();
    benchmark::DoNotOptimize(taken);
    naive->set_states(naive_states[i]);
    benchmark::ClobberMemory();
  });

  // Into a machine that holds a former clone, which it gives back first: the pools are warm.
  measure("clone" + of + "/k5ax", [machine, copy = std::make_shared<md::CMachDef>()] {
    k5axCMachDef_clone(copy.get(), machine);
    benchmark::DoNotOptimize(copy.get());
  });
  measure_into_empty("clone into an empty machine" + of + "/k5ax", [machine](md::CMachDef& into) {
    k5axCMachDef_clone(&into, machine);
    benchmark::DoNotOptimize(&into);
  });
  measure("clone" + of + "/naive", [naive] {
    const naive::Scene copy(*naive);
    benchmark::DoNotOptimize(&copy);
  });
}

}  // namespace bench
