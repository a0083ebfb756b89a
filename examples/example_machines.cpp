// The four machines of examples/machines, as programs build them.
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

// The machine frame is the spindle's nose with every axis at 0, which is high above the centre of the table:
// this is how a control counts, and why Z is negative where the part is.
void build_head_table_swivel(md::CMachDef& machine) {
  Axes axes;
  axes.x = linear_axis(AXIS_X, HEAD, -700, 700);
  axes.y = linear_axis(AXIS_Y, TABLE, -450, 450);
  axes.z = linear_axis(AXIS_Z, HEAD, -800, 0);
  axes.primary = rotary_axis(AXIS_C, TABLE, Point(0, 0, -820), -3600, 3600);
  axes.secondary = rotary_axis(AXIS_B, HEAD, Point(-0.038, 0, 180.015), -30, 110);

  Trees trees;
  trees.machine_frame = hang_frame(Node(), kMachineFrame);
  const Node x_node = hang_axis(trees.machine_frame, kXNode, *axes.x);
  const Node z_node = hang_axis(x_node, kZNode, *axes.z);
  trees.secondary = hang_rotary(z_node, kSecondaryNode, *axes.secondary);
  trees.tool = hang_tool(trees.secondary, kToolNode, machine.head(), Point(0, 0, 150));

  trees.part_frame = hang_frame(Node(), kPartFrame);
  trees.primary = hang_rotary(trees.part_frame, kPrimaryNode, *axes.primary);
  const Node y_node = hang_axis(trees.primary, kYNode, *axes.y);
  hang_frame(y_node, kMachineLeaf);

  assemble(machine, MC_HT, axes, trees);
  machine.mwZeroPos(Point(0, 0, -650));
  machine.loading_vector(Point(0, 0, 250));
}

// The machine frame is again the spindle's nose with every axis at 0, over the middle of the bed. C's line
// passes through it; A's line crosses that one 220 higher, but for the little that was measured.
void build_head_head_fork(md::CMachDef& machine) {
  Axes axes;
  axes.x = linear_axis(AXIS_X, HEAD, -1500, 1500);
  axes.y = linear_axis(AXIS_Y, HEAD, -1000, 1000);
  axes.z = linear_axis(AXIS_Z, HEAD, -1000, 0);
  axes.primary = rotary_axis(AXIS_C, HEAD, Point(0, 0, 0), -360, 360);
  axes.secondary = rotary_axis(AXIS_A, HEAD, Point(0, 0.016, 219.993), -110, 110);

  Trees trees;
  trees.machine_frame = hang_frame(Node(), kMachineFrame);
  const Node x_node = hang_axis(trees.machine_frame, kXNode, *axes.x);
  const Node y_node = hang_axis(x_node, kYNode, *axes.y);
  const Node z_node = hang_axis(y_node, kZNode, *axes.z);
  trees.primary = hang_rotary(z_node, kPrimaryNode, *axes.primary);
  trees.secondary = hang_rotary(trees.primary, kSecondaryNode, *axes.secondary);
  trees.tool = hang_tool(trees.secondary, kToolNode, machine.head(), Point(0, 0, 185));

  // Nothing moves the part, so its frame is the machine's.
  trees.part_frame = hang_frame(Node(), kPartFrame);
  hang_frame(trees.part_frame, kMachineLeaf);

  assemble(machine, MC_HH, axes, trees);
  machine.mwZeroPos(Point(240, -180, -950));
  machine.loading_vector(Point(0, 0, 400));
}

// The machine frame is the face on which the angled head is mounted, with every axis at 0. The head is tilted
// by 30 degrees and turned so that at A 0 its spindle leans to +Y. A stands it upright at 30 degrees and lays
// it down at -60.
void build_head_table_inch(md::CMachDef& machine) {
  const double lengths[2] = {4.25, 2.875};
  k5ax_angled_head_set(90, 30, lengths, 0, &machine.head());

  Axes axes;
  axes.x = linear_axis(AXIS_X, TABLE, -20, 20);
  axes.y = linear_axis(AXIS_Y, TABLE, -12, 20);
  axes.z = linear_axis(AXIS_Z, HEAD, -25, 0);
  axes.primary = rotary_axis(AXIS_C, TABLE, Point(0, 0, -31.5), -3600, 3600);
  axes.secondary = rotary_axis(AXIS_A, HEAD, Point(0, -0.0012, 6.5005), -75, 45);

  Trees trees;
  trees.machine_frame = hang_frame(Node(), kMachineFrame);
  const Node z_node = hang_axis(trees.machine_frame, kZNode, *axes.z);
  trees.secondary = hang_rotary(z_node, kSecondaryNode, *axes.secondary);
  // The tool is 3 long and points along the head's spindle.
  trees.tool = hang_tool(trees.secondary, kToolNode, machine.head(), machine.head().tool_dir * 3);

  trees.part_frame = hang_frame(Node(), kPartFrame);
  trees.primary = hang_rotary(trees.part_frame, kPrimaryNode, *axes.primary);
  const Node x_node = hang_axis(trees.primary, kXNode, *axes.x);
  const Node y_node = hang_axis(x_node, kYNode, *axes.y);
  hang_frame(y_node, kMachineLeaf);

  assemble(machine, MC_HT, axes, trees);
  machine.setMetric(false);
  machine.mwZeroPos(Point(0, 0, -26));
  machine.loading_vector(Point(0, 0, 8));
}

const std::vector<ExampleMachine>& example_machines() {
  static const std::vector<ExampleMachine> machines = {{"table_table_trunnion", build_table_table_trunnion},
                                                       {"head_table_swivel", build_head_table_swivel},
                                                       {"head_head_fork", build_head_head_fork},
                                                       {"head_table_inch", build_head_table_inch}};
  return machines;
}

}  // namespace examples
