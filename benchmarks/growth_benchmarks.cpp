// How the cost of whole-tree operations grows with the number of nodes.
#include <stdexcept>

#include "benchmarks.h"

namespace bench {

namespace {

// As a host draws a tree: depth first, with the children asked for one by one.
void walk(md::sg::node* root, md::sg::node** room) {
  std::size_t waiting = 0;
  room[waiting++] = root;
  while (waiting > 0) {
    const md::sg::node* const n = room[--waiting];
    Geometry::Matrix node_to_parent = n->transform();
    benchmark::DoNotOptimize(node_to_parent);
    for (int child = k5axSgNode_child_count(n) - 1; child >= 0; --child)
      room[waiting++] = k5axSgNode_child(n, child);
  }
}

void walk_list(md::sg::node* root, md::sg::node** room) {
  const int count = k5axSgNode_all_nodes(root, room);
  for (int i = 0; i < count; ++i) {
    Geometry::Matrix node_to_parent = room[i]->transform();
    benchmark::DoNotOptimize(node_to_parent);
  }
}

Grown make(Shape shape, int count, const ScratchFolder& scratch) {
  Grown grown;
  grown.label = std::string(shape == Shape::wide ? "wide, " : "deep, ") + std::to_string(count) + " nodes";
  grown.machine = make_grown(shape, count);
  grown.copy = Machine(new md::CMachDef);
  grown.path = scratch.file(grown.label + ".k5m");
  grown.roots = {k5axCMachDef_SG(grown.machine.get(), 0), k5axCMachDef_SG(grown.machine.get(), 1)};
  grown.room.resize(static_cast<std::size_t>(count));
  if (MachdefSave(grown.machine.get(), grown.path.c_str()) != 1)
    throw std::runtime_error(grown.path + ": cannot be saved");
  return grown;
}

}  // namespace

std::vector<Grown> make_grown_machines(const ScratchFolder& scratch) {
  std::vector<Grown> grown;
  for (const Shape shape : {Shape::wide, Shape::deep})
    for (const int count : kNodeCounts) grown.push_back(make(shape, count, scratch));
  return grown;
}

void register_growth(std::vector<Grown>& all_grown) {
  const Position* const all = positions().data();
  for (Grown& each : all_grown) {
    Grown* const grown = &each;
    const std::string of = " (" + grown->label + ")";
    md::CMachDef* const machine = grown->machine.get();
    md::CMachDef* const copy = grown->copy.get();

    measure_positions("growth: update" + of, [machine, all](std::size_t i) {
      bool reached = md::UpdateNodeAxes_(machine, all[i].xyz, all[i].abc);
      benchmark::DoNotOptimize(reached);
    });
    measure("growth: walk" + of, [grown] {
      for (md::sg::node* const root : grown->roots) walk(root, grown->room.data());
    });
    measure("growth: walk by list" + of, [grown] {
      for (md::sg::node* const root : grown->roots) walk_list(root, grown->room.data());
    });
    measure("growth: clone" + of, [machine, copy] {
      k5axCMachDef_clone(copy, machine);
      benchmark::DoNotOptimize(copy);
    });
    measure("growth: load" + of, [copy, grown] {
      copy->reset();
      int loaded = MachdefLoad(copy, grown->path.c_str());
      benchmark::DoNotOptimize(loaded);
    });
    measure("growth: save" + of, [machine, grown] {
      int saved = MachdefSave(machine, grown->path.c_str());
      benchmark::DoNotOptimize(saved);
    })->UseRealTime();
  }
}

}  // namespace bench
