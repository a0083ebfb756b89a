// scene_graph_tour: builds the trunnion, poses it once, and reads everything back. The samples of
// docs/scene-graph.md that are no part of another program are pieces of this one.
#include <cstdio>
#include <map>
#include <vector>

#include "example_machines.h"
#include "machine_builder.h"

namespace {

void print(const char* what, const examples::Point& p) {
  std::printf("%-24s (%.3f, %.3f, %.3f)\n", what, p.x, p.y, p.z);
}

// The product of a node's stack: its own transform first, the root's last.
Geometry::Matrix node_to_root(const examples::Node& node) {
  std::vector<Geometry::Matrix> stack;
  md::sg::node::transform_stack(node, stack);
  Geometry::Matrix product;
  for (const Geometry::Matrix& m : stack) product *= m;
  return product;
}

}  // namespace

int main() {
  using examples::Point;

  // [snippet lists]
  md::CMachDef built;
  examples::build_table_table_trunnion(built);

  md::CMachDef machine;
  machine.clone(built, 3);  // 1, the machine, and 2, the trees
  // [end]

  // [snippet first_leaf]
  std::vector<examples::Node> leaves;
  md::sg::node::no_children(md::sg::node::all_nodes(machine.SG()[1]), leaves);
  const examples::Node leaf = leaves.front();
  // [end]

  const Point p_part(30, 20, 50);
  const Point abc(-40 * math::D2R, 0, 90 * math::D2R);
  const Point p_mach = machine.Part2MachCoords(p_part, abc);

  // [snippet zero_and_update]
  for (const examples::Node& rotary : machine.SG_RotAxs())  // on this machine both are the table's
    k5axSgNode_value_set2(machine.flags(), rotary.get(), 0);
  const bool reached = UpdateNodeAxes_2(&machine, p_mach.x, p_mach.y, p_mach.z, abc.x, abc.y, abc.z);
  // [end]
  std::printf("%s\n", reached ? "reached" : "not reached");

  // [snippet carry]
  const Point p_tool_mach = CUtility::pt_o * node_to_root(machine.tool_node());
  const Point p_tool_part = p_tool_mach * node_to_root(leaf);
  // [end]
  print("tool point on the part", p_tool_part);

  // [snippet read_back]
  Point xyz;
  Point angles;
  md::CMachDef_SG2MachCoords(machine, xyz, angles);
  // [end]
  print("machine coordinates", xyz);
  print("angles in degrees", angles * math::R2D);

  // [snippet states]
  const std::map<int, node_state> states = md::CMachDef_IdAxisState_get(machine);
  k5axSgNode_initialise(machine.SG()[0].get(), 1);
  k5axSgNode_initialise(machine.SG()[1].get(), 1);
  md::CMachDef_IdAxisState_set(machine, states);
  k5axSgToolNodeMatrixSet(machine.tool_node(), machine.tool_node()->offset);
  // [end]
  print("the same, after states", CUtility::pt_o * node_to_root(machine.tool_node()) * node_to_root(leaf));
  return 0;
}
