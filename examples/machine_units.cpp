// Changes a whole machine between millimetres and inches, its trees included.
#include "machine_units.h"

namespace examples {

// [snippet change_units]
namespace {

void scale_translation(md::sg::node& node, double factor) {
  Geometry::Matrix m = node.transform();
  double rotation[9];
  Geometry::TPoint<double> shift;
  m.GetMatrix(rotation[0], rotation[1], rotation[2], rotation[3], rotation[4], rotation[5], rotation[6],
              rotation[7], rotation[8], shift.x, shift.y, shift.z);
  m.SetTranslation(shift.x * factor, shift.y * factor, shift.z * factor);
  node.transform(m);
}

}  // namespace

void change_units(md::CMachDef& machine, bool metric) {
  if (machine.isMetric() == metric) return;
  const double factor = metric ? 25.4 : 1 / 25.4;
  const std::map<int, node_state> states_before = md::CMachDef_IdAxisState_get(machine);

  machine.scale(metric);

  for (const auto& root : machine.SG()) {
    for (const auto& node : md::sg::node::all_nodes(root)) {
      if (auto* axis = md::sg::axis_node(node.get())) {
        // Scaled already, the angle of a rotary axis too: that one gets its value back.
        if (axis->mode() == ROTARY) md::node_state_set(node, states_before.at(axis->id()));
      } else if (auto* tool = md::sg::tool_node(node.get())) {
        k5ax_angled_head_scale(&tool->payload(), factor);
        k5axSgToolNodeMatrixSet(node, tool->offset);
      } else {
        scale_translation(*node, factor);
      }
    }
  }
  machine.mwZeroPos(machine.mwZeroPos() * factor);
  machine.loading_vector(machine.loading_vector() * factor);
}
// [end]

}  // namespace examples
