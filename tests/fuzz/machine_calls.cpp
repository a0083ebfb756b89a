// Calls about machines as wholes: made, filled, copied, converted, saved and loaded.
#include <cstdio>
#include <stdexcept>

#include "fuzz/host.h"
#include "fuzz/require.h"
#include "support/use_machine.h"

namespace k5ax_fuzz {

namespace {

using md::CMachDef;
using md::sg::node;

bool is_large(const CMachDef& machine) {
  return tree_size(machine.SG()[0].get()) + tree_size(machine.SG()[1].get()) > kLargeTree;
}

// An axis moves from the host into the machine, which will give it back.
AxisPtr taken(Host& host, Draw& draw) { return std::move(host.axes[draw.below(host.axes.size())]); }

NodePtr any_own_node(Host& host, Draw& draw) { return host.nodes[draw.below(host.nodes.size())]; }

// A use of a machine whatever it holds; nothing where the place is empty.
template <void (*call)(Host& host, Draw& draw, CMachDef& machine)>
void on_machine(Host& host, Draw& draw) {
  CMachDef* const machine = any_machine(host, draw);
  if (machine != nullptr) call(host, draw, *machine);
}

void give_axis(Host& host, Draw& draw, CMachDef& machine) {
  switch (draw.below(3)) {
    case 0:
      return machine.setPrimary(taken(host, draw));
    case 1:
      return machine.setSecondary(taken(host, draw));
    default:
      machine.xyz_axes()[draw.below(3)] = taken(host, draw);
  }
}

void give_tree(Host& host, Draw& draw, CMachDef& machine) {
  const NodePtr n = any_own_node(host, draw);
  switch (draw.below(4)) {
    case 0:
    case 1:
      machine.SG()[draw.below(2)] = n;
      return;
    case 2:
      machine.SG_RotAxs()[draw.below(2)] = n;
      return;
    default:
      machine.tool_node(boost::dynamic_pointer_cast<k5ax_tool_node>(n));
  }
}

void set_field(Host&, Draw& draw, CMachDef& machine) {
  switch (draw.below(10)) {
    case 0:
      return machine.setToolDir(draw.direction());
    case 1:
      return machine.mwZeroPos(draw.point());
    case 2:
      return machine.loading_vector(draw.point());
    case 3:
      return machine.setMetric(draw.yes());
    case 4:
      return machine.set_mode(static_cast<MACHINE_MODE>(draw.whole()));
    case 5:
      return machine.discipline(static_cast<K5AX_DISCIPLINE>(draw.whole()));
    case 6:
      return k5axCMachDef_flags_set(&machine, draw.flags());
    case 7:
      return machine.initialise_head();
    default:
      return machine.setMachType(draw.machine_type());
  }
}

void ask(Host&, Draw& draw, CMachDef& machine) {
  machine.is_valid();
  machine.mw_valid();
  require(machine.is_orthogonal() == k5axCMachDef_orthogonal(&machine), "orthogonal by one face alone");
  AxisPtr first;
  AxisPtr second;
  machine.getMWRotAxes(first, second);
  double a = 0;
  double b = 0;
  double c = 0;
  machine.getABCAngles(first, draw.number(), a, b, c);
  machine.getAngle(second, a, b, c);
  require(k5axCMachDef_rotary_axis_const(&machine) == machine.rotary_axis().get(), "two rotary axes");
  require(k5axCMachDef_type(&machine) == machine.getMachType(), "two types");
  require(k5axCMachDef_mode(&machine) == machine.get_mode(), "two modes");
  require(k5axCMachDef_discipline(&machine) == machine.discipline(), "two disciplines");
  require(k5axCMachDef_flags_get(&machine) == machine.flags(), "two flags words");
  require(k5axCMachDef_Tool(&machine) == machine.tool_node().get(), "two tools");
}

void copy_values(Host& host, Draw& draw, CMachDef& machine) {
  const CMachDef* const other = any_machine(host, draw);
  if (other != nullptr) machine.copy(*other);
}

void clone(Host& host, Draw& draw, CMachDef& machine) {
  const CMachDef* const other = any_machine(host, draw);
  if (other == nullptr || is_large(*other)) return;
  if (draw.yes())
    k5axCMachDef_clone(&machine, other);
  else
    k5axCMachDef_clone_ex(&machine, other, draw.flags());
}

void scale(Host&, Draw& draw, CMachDef& machine) { machine.scale(draw.yes()); }

void reset(Host&, Draw&, CMachDef& machine) { machine.reset(); }

void save_bytes(Host& host, Draw&, CMachDef& machine) {
  if (!is_large(machine)) host.bytes = k5ax_test::bytes_of(machine);
}

void load_bytes(Host& host, Draw& draw, CMachDef& machine) {
  std::string bytes = host.bytes;
  if (draw.below(4) == 0) bytes.resize(draw.below(bytes.size() + 1));
  try {
    k5ax_test::read_bytes(machine, bytes);
  } catch (const std::runtime_error&) {
  }
}

void save_file(Host& host, Draw& draw, CMachDef& machine) {
  if (is_large(machine)) return;
  const char* const paths[] = {host.path.c_str(), "/dev/null", "/no/such/folder/machine", "", nullptr};
  MachdefSave(&machine, paths[draw.below(5)]);
}

void load_file(Host& host, Draw& draw, CMachDef& machine) {
  const char* const paths[] = {host.path.c_str(), "/dev/null", "/no/such/folder/machine", "", nullptr};
  MachdefLoad(&machine, paths[draw.below(5)]);
}

// Makes what random calls seldom make: a machine whose trees stand.
void fill(Host&, Draw& draw, CMachDef& machine) {
  const auto axis = [&draw](AXIS_TYPE letter) {
    const boost::shared_ptr<k5ax_axis_node> n = md::NodeAxis_Create();
    n->node::reset();
    n->id(draw.id());
    n->node::flags(draw.flags());
    n->SetAxis(letter);
    n->mode(letter >= AXIS_X ? LINEAR : ROTARY);
    n->SetAxisLocation(draw.location());
    n->SetAxisVector(draw.direction());
    n->SetBaseVector(draw.point());
    n->machdef(nullptr);
    md::NodeAxis_transform_set(0, *n, 0);
    return n;
  };
  CMachDef source;
  source.setMachType(draw.machine_type());
  source.setPrimary(
      md::CAxis2::create(AXIS_C, draw.location(), draw.point(), draw.direction(), -7, 7, ROTARY));
  source.setSecondary(
      md::CAxis2::create(AXIS_B, draw.location(), draw.point(), draw.direction(), -7, 7, ROTARY));
  const boost::shared_ptr<k5ax_tool_node> tool = md::TOOL_NODE_Create();
  tool->reset();
  const NodePtr roots[] = {axis(AXIS_X), axis(AXIS_C)};
  NodePtr below[] = {roots[0], roots[1]};
  for (const AXIS_TYPE letter : {AXIS_Y, AXIS_Z, AXIS_B}) {
    const NodePtr n = axis(letter);
    NodePtr& leaf = below[draw.below(2)];
    leaf->add_child(n);
    leaf = n;
    if (letter == AXIS_B) source.SG_RotAxs()[1] = n;
  }
  below[0]->add_child(tool);
  source.SG()[0] = roots[0];
  source.SG()[1] = roots[1];
  source.SG_RotAxs()[0] = roots[1];
  source.tool_node(tool);
  machine.clone(source, 3);
}

constexpr Call kCalls[] = {
    [](Host& host, Draw& draw) {
      std::unique_ptr<CMachDef>& place = host.machines[draw.below(host.machines.size())];
      place.reset(draw.yes() ? k5axCMachDef_create() : new CMachDef(static_cast<MACHINE_MODE>(draw.whole())));
    },
    [](Host& host, Draw& draw) {
      CMachDef* machine = host.machines[draw.below(host.machines.size())].release();
      k5axCMachDef_free(&machine);
    },
    on_machine<give_axis>,
    on_machine<give_tree>,
    on_machine<set_field>,
    on_machine<ask>,
    on_machine<copy_values>,
    on_machine<clone>,
    on_machine<scale>,
    on_machine<reset>,
    on_machine<fill>,
};

constexpr Call kFileCalls[] = {
    on_machine<save_bytes>,
    on_machine<load_bytes>,
    on_machine<save_file>,
    on_machine<load_file>,
};

}  // namespace

Calls machine_calls() { return {kCalls, sizeof kCalls / sizeof *kCalls}; }
Calls file_calls() { return {kFileCalls, sizeof kFileCalls / sizeof *kFileCalls}; }

}  // namespace k5ax_fuzz
