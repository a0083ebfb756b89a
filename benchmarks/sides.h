// The machines in the form that each side has them.
#ifndef K5AX_BENCHMARKS_SIDES_H
#define K5AX_BENCHMARKS_SIDES_H

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "kdl_sides.h"
#include "machines.h"
#include "naive_scene.h"

namespace bench {

// A machine with trees.
struct PosedMachine {
  // `label` tells its measurements from those of other machines.
  PosedMachine(std::string label, Machine machine);

  std::string label;
  Machine k5ax;
  KdlPose kdl;
  naive::Scene naive;
  std::vector<md::sg::node*> nodes;
  std::vector<md::sg::node*> axis_nodes;

  // Of every position: the axis values that reach it from a table at its zero pose, and the states of the
  // axis nodes then. KDL is given the values, and restoring the states starts from them.
  std::vector<JointValues> joints;
  std::vector<std::vector<node_state>> states;
  std::vector<std::map<int, node_state>> state_maps;
  std::vector<std::map<int, naive::State>> naive_states;
};

struct Sides {
  // `example` is the path of a machine file to measure beside the nine-node machine; empty for none.
  explicit Sides(const std::string& example_path);

  Machine axes_only;
  TableLines lines;  // of axes_only
  KdlTable kdl_table;
  PosedMachine nine;
  std::unique_ptr<PosedMachine> example;
};

// What a host does so that a pose stands for itself: every rotary node of the table to its pose at 0.
void zero_table(md::CMachDef& machine);

// Poses the machine from a table at zero; throws std::runtime_error when the position is out of reach.
void pose(md::CMachDef& machine, const Position& position);

// What the axis nodes stand at. KDL's form of a pose.
JointValues joint_values(const std::vector<md::sg::node*>& axis_nodes);

}  // namespace bench

#endif
