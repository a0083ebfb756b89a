// Calls that compute: orientation, transforms, wrapping, poses and states. The machine may be null wherever
// the interface takes that.
#include <vector>

#include "fuzz/host.h"
#include "fuzz/require.h"

namespace k5ax_fuzz {

namespace {

using Point = Geometry::TPoint<double>;
using md::CMachDef;

std::vector<node_state> any_states(Draw& draw) {
  std::vector<node_state> states(draw.below(40));
  for (node_state& state : states) state = {draw.id(), draw.flags(), draw.number()};
  return states;
}

constexpr Call kCalls[] = {
    [](Host& host, Draw& draw) {
      CMachDef* const machine = any_machine(host, draw);
      const double angle1 = draw.number();
      k5axCMachDef_orientate(machine, angle1, draw.number());
    },
    [](Host& host, Draw& draw) {
      const CMachDef* const machine = any_machine(host, draw);
      if (machine == nullptr) return;
      Point p = draw.point();
      const Point abc = draw.point();
      machine->IsToolAxial(abc.x, abc.y, abc.z);
      machine->IsToolRadial(abc.x, abc.y, abc.z);
      Point d_tool;
      machine->Mach2PartCoords(p, abc, p, d_tool);
      machine->Part2MachCoords(p, abc);
      Geometry::Matrix primary;
      Geometry::Matrix secondary;
      machine->Mach2PartTransform(p, abc, primary, secondary);
      machine->Tool2CtrlPt(p, d_tool);
    },
    [](Host& host, Draw& draw) {
      const CMachDef* const machine = any_machine(host, draw);
      if (machine != nullptr &&
          tree_size(machine->SG()[0].get()) + tree_size(machine->SG()[1].get()) > kLargeTree)
        return;
      double point[3] = {draw.number(), draw.number(), draw.number()};
      double rotary[3] = {draw.number(), draw.number(), draw.number()};
      double radius = -1;
      Cartesian2AxialRotaryVals_c(machine, point, rotary, draw.whole(), draw.whole(), point, rotary,
                                  draw.below(8) == 0 ? nullptr : &radius);
      require(radius == -1 || !(radius < 0), "a radius below 0");
    },
    [](Host& host, Draw& draw) {
      CMachDef* const machine = any_machine(host, draw);
      const Point xyz = draw.point();
      const Point abc = draw.point();
      UpdateNodeAxes_2(machine, xyz.x, xyz.y, xyz.z, abc.x, abc.y, abc.z);
      double v[6];
      k5axCMachDef_SG2MachCoords(machine, v);
      if (machine == nullptr) return;
      k5axCMachDef_MachCoords2SG(machine, draw.below(8) == 0 ? nullptr : v);
      Point xyz_back;
      Point abc_back;
      md::CMachDef_SG2MachCoords(*machine, xyz_back, abc_back);
      md::CMachDef_MachCoords2SG(*machine, xyz_back, abc_back);
    },
    [](Host& host, Draw& draw) {
      CMachDef* const machine = any_machine(host, draw);
      const std::vector<node_state> states = any_states(draw);
      const int count = static_cast<int>(states.size());
      CMachDef_IdAxisState_set2(machine, states.data(), draw.below(8) == 0 ? -1 - count : count);
      CMachDef_Axis_Position_Get(machine, draw.id());
    },
    [](Host& host, Draw& draw) {
      CMachDef* const from = any_machine(host, draw);
      CMachDef* const to = any_machine(host, draw);
      if (from != nullptr && to != nullptr)
        md::CMachDef_IdAxisState_set(*to, md::CMachDef_IdAxisState_get(*from));
    },
    [](Host& host, Draw& draw) {
      CMachDef* const machine = any_machine(host, draw);
      CMachDef_ToolNode_matrix_Set(machine, draw.point());
      const Point p = draw.point();
      CMachDef_ToolNode_matrix_SetXYZ(machine, p.x, p.y, p.z);
    },
    [](Host&, Draw& draw) {
      double v[6] = {};
      Point xyz;
      Point abc;
      const AXIS_TYPE letter = draw.letter();
      double* const flat = AXIS_TYPE_val_get(letter, &v[0], &v[1], &v[2], &v[3], &v[4], &v[5]);
      require((flat == nullptr) == (AXIS_TYPE_val_get(letter, xyz, abc) == nullptr),
              "a letter of one face alone");
    },
};

}  // namespace

Calls pose_calls() { return {kCalls, sizeof kCalls / sizeof *kCalls}; }

}  // namespace k5ax_fuzz
