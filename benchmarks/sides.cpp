// The machines in the form that each side has them.
#include "sides.h"

#include <stdexcept>
#include <utility>

namespace bench {

PosedMachine::PosedMachine(std::string its_label, Machine machine)
    : label(std::move(its_label)),
      k5ax(std::move(machine)),
      kdl(*k5ax),
      naive(*k5ax),
      nodes(list_nodes(*k5ax)),
      axis_nodes(list_axis_nodes(*k5ax)) {
  for (const Position& position : positions()) {
    pose(*k5ax, position);
    joints.push_back(joint_values(axis_nodes));
    states.emplace_back();
    state_maps.emplace_back();
    naive_states.emplace_back();
    for (const md::sg::node* const n : axis_nodes) {
      node_state state;
      k5axSgNode_state_get_(n, &state);
      states.back().push_back(state);
      state_maps.back()[state.id] = state;
      naive_states.back()[state.id] = {state.flags, state.value};
    }
  }
}

Sides::Sides(const std::string& example_path)
    : axes_only(make_axes_only()),
      lines(table_lines(*axes_only)),
      kdl_table(*axes_only),
      nine("9 nodes", make_nine_nodes()) {
  if (example_path.empty()) return;
  Machine machine = load_machine(example_path);
  const std::string label = "shipped, " + std::to_string(list_nodes(*machine).size()) + " nodes";
  example = std::make_unique<PosedMachine>(label, std::move(machine));
}

void zero_table(md::CMachDef& machine) {
  for (const boost::shared_ptr<md::sg::node>& rotary : machine.SG_RotAxs()) {
    const md::sg::tnode<md::CAxis2>* const axis = md::sg::axis_node(rotary.get());
    if (axis != nullptr && axis->GetAxisLocation() == TABLE)
      k5axSgNode_value_set2(machine.flags(), rotary.get(), 0);
  }
}

void pose(md::CMachDef& machine, const Position& position) {
  zero_table(machine);
  if (!md::UpdateNodeAxes_(&machine, position.xyz, position.abc))
    throw std::runtime_error("a position is out of the machine's reach");
}

JointValues joint_values(const std::vector<md::sg::node*>& axis_nodes) {
  JointValues values{};
  for (md::sg::node* const n : axis_nodes) {
    const AXIS_TYPE letter = md::sg::axis_node(n)->GetAxis();
    values[letter >= AXIS_X ? static_cast<std::size_t>(letter - AXIS_X)
                            : static_cast<std::size_t>(letter) + 3] = n->value();
  }
  return values;
}

}  // namespace bench
