// One of the machines of examples/machines, as a program builds it.
#include "example_machines.h"

#include "machine_builder.h"

namespace examples {

namespace {

// [snippet assemble]
struct Axes {
  Axis x, y, z, primary, secondary;
};

struct Trees {
  Node machine_frame;       // root of tree 0
  Node part_frame;          // root of tree 1
  Node primary, secondary;  // the nodes that stand for the two rotary axes
  boost::shared_ptr<md::sg::tnode<angled_head>> tool;
};

void assemble(md::CMachDef& machine, MACHINE_TYPE type, const Axes& axes, const Trees& trees) {
  machine.setMachType(type);
  machine.setPrimary(axes.primary);
  machine.setSecondary(axes.secondary);
  machine.xyz_axes()[0] = axes.x;
  machine.xyz_axes()[1] = axes.y;
  machine.xyz_axes()[2] = axes.z;

  machine.SG()[0] = trees.machine_frame;
  machine.SG()[1] = trees.part_frame;
  machine.SG_RotAxs()[0] = trees.primary;
  machine.SG_RotAxs()[1] = trees.secondary;
  machine.tool_node(trees.tool);
}
// [end]

}  // namespace

// The machine frame is the centre of the table's top with every axis at 0. There C's line runs straight up;
// A's line lies above the table and, as measured, a little behind the centre.
// [snippet trunnion]
void build_table_table_trunnion(md::CMachDef& machine) {
  Axes axes;
  axes.x = linear_axis(AXIS_X, TABLE, -250, 250);
  axes.y = linear_axis(AXIS_Y, HEAD, -225, 225);
  axes.z = linear_axis(AXIS_Z, HEAD, -400, 0);
  axes.primary = rotary_axis(AXIS_A, TABLE, Point(-310, 0.024, 62.481), -120, 30);
  axes.secondary = rotary_axis(AXIS_C, TABLE, Point(0, 0, -85), -3600, 3600);

  // Tree 0, from the machine frame down to the tool. With the slides at 0 the spindle's nose stands 520 over
  // the table; the tool is 160 long.
  Trees trees;
  trees.machine_frame = hang_frame(Node(), kMachineFrame);
  const Node y_node = hang_axis(trees.machine_frame, kYNode, *axes.y);
  const Node z_node = hang_axis(y_node, kZNode, *axes.z);
  const Node nose = hang_fixed(z_node, Point(0, 0, 520));
  trees.tool = hang_tool(nose, kToolNode, machine.head(), Point(0, 0, 160));

  // Tree 1, from the part to the machine frame: the axis next to the part comes first.
  trees.part_frame = hang_frame(Node(), kPartFrame);
  trees.secondary = hang_rotary(trees.part_frame, kSecondaryNode, *axes.secondary);
  trees.primary = hang_rotary(trees.secondary, kPrimaryNode, *axes.primary);
  const Node x_node = hang_axis(trees.primary, kXNode, *axes.x);
  hang_frame(x_node, kMachineLeaf);

  assemble(machine, MC_TT, axes, trees);
  machine.mwZeroPos(Point(0, 0, 40));        // the top of the fixture
  machine.loading_vector(Point(0, 0, 150));  // how far the spindle draws back for a new part
}
// [end]

}  // namespace examples
