// Machine: its two trees.
#include <algorithm>
#include <string>
#include <vector>

#include "arrays.h"
#include "bindings.h"
#include "node_handle.h"
#include "record_streams.h"

namespace k5ax_python {

namespace {

using Roots = boost::array<NodePtr, 2>;

NodePtr node_of(const NodeHandle* handle) { return handle != nullptr ? handle->node : NodePtr(); }

void refuse_strangers(const Roots& roots, const NodeHandle* given, const char* name) {
  if (given == nullptr) return;
  for (const NodePtr& root : roots) {
    const std::vector<NodePtr> nodes = md::sg::node::all_nodes(root);
    if (std::find(nodes.begin(), nodes.end(), given->node) != nodes.end()) return;
  }
  throw py::value_error(std::string(name) + ": stands in neither tree");
}

// A machine's nodes and which of them have a part of their own.
class TreeParts {
 public:
  explicit TreeParts(md::CMachDef& machine)
      : m_machine(machine),
        m_roots(machine.SG()),
        m_rotaries(machine.SG_RotAxs()),
        m_tool(machine.tool_node()) {}
  ~TreeParts() {
    m_machine.SG() = m_roots;
    m_machine.SG_RotAxs() = m_rotaries;
    m_machine.tool_node(m_tool);
  }
  TreeParts(const TreeParts&) = delete;
  TreeParts& operator=(const TreeParts&) = delete;

 private:
  md::CMachDef& m_machine;
  Roots m_roots;
  Roots m_rotaries;
  boost::shared_ptr<md::sg::tnode<angled_head>> m_tool;
};

// The record that the machine would have with these trees; the machine stays as it is.
std::string record_with(md::CMachDef& machine, const Roots& roots, const Roots& rotaries,
                        const ToolNodeHandle* tool) {
  const TreeParts as_they_are(machine);
  machine.SG() = roots;
  machine.SG_RotAxs() = rotaries;
  machine.tool_node(boost::static_pointer_cast<md::sg::tnode<angled_head>>(node_of(tool)));
  return record_of(machine);
}

// The library lists a machine's nodes when it reads a record, and poses by those lists. So the trees come in
// as a record, which also copies them. The axes would be replaced as well; they stay who they are.
void set_trees(md::CMachDef& machine, const NodeHandle* machine_frame, const NodeHandle* part_frame,
               const AxisNodeHandle* primary, const AxisNodeHandle* secondary, const ToolNodeHandle* tool) {
  const Roots roots = {{node_of(machine_frame), node_of(part_frame)}};
  refuse_strangers(roots, primary, "primary");
  refuse_strangers(roots, secondary, "secondary");
  refuse_strangers(roots, tool, "tool");

  const std::string record = record_with(machine, roots, {{node_of(primary), node_of(secondary)}}, tool);
  const AxisPtr primary_axis = machine.getPrimary();
  const AxisPtr secondary_axis = machine.getSecondary();
  const boost::array<AxisPtr, 3> xyz_axes = machine.xyz_axes();
  RecordReader reader(record);
  read_record(machine, reader);
  machine.setPrimary(primary_axis);
  machine.setSecondary(secondary_axis);
  machine.xyz_axes() = xyz_axes;
}

py::tuple pair_of(const Roots& nodes, const MachinePtr& machine) {
  return py::make_tuple(node_object(nodes[0], machine), node_object(nodes[1], machine));
}

py::dict states_of(const md::CMachDef& machine) {
  py::dict states;
  for (const auto& [id, state] : md::CMachDef_IdAxisState_get(machine)) states[py::int_(id)] = state;
  return states;
}

void set_states(md::CMachDef& machine, const py::dict& given) {
  std::map<int, node_state> states;
  for (const auto& [id, state] : given) {
    if (!py::isinstance<py::int_>(id) || !py::isinstance<node_state>(state))
      throw py::type_error("states: not a dict of NodeState by id");
    const node_state taken = state.cast<node_state>();
    if (id.cast<int>() != taken.id)
      throw py::value_error("a state of id " + std::to_string(taken.id) + " under the key " +
                            std::string(py::str(id)));
    states[taken.id] = taken;
  }
  md::CMachDef_IdAxisState_set(machine, states);
}

double axis_position(md::CMachDef& machine, int id) {
  const std::map<int, node_state> states = md::CMachDef_IdAxisState_get(machine);
  if (states.count(id) == 0) throw py::key_error("no axis node has the id " + std::to_string(id));
  return CMachDef_Axis_Position_Get(&machine, id);
}

void set_tool_point(md::CMachDef& machine, const py::object& tool_point) {
  const Point p = to_point(tool_point, "tool_point");
  if (!machine.tool_node()) throw py::value_error("the machine has no tool node");
  CMachDef_ToolNode_matrix_Set(&machine, p);
}

}  // namespace

void add_trees(MachineClass& machine) {
  machine
      .def_property_readonly(
          "trees", [](const MachinePtr& self) { return pair_of(self->SG(), self); },
          R"(The roots of the two trees, each a Node or None.

The first leads from the machine frame down to the tool, the second from the part to the machine frame.)")
      .def_property_readonly(
          "rotary_nodes", [](const MachinePtr& self) { return pair_of(self->SG_RotAxs(), self); },
          "The nodes that stand for the primary and for the secondary axis, each may be None.")
      .def_property_readonly(
          "tool_node", [](const MachinePtr& self) { return node_object(self->tool_node(), self); },
          "The node that carries the tool, a ToolNode, or None.")
      .def("set_trees", &set_trees, py::arg("machine_frame"), py::arg("part_frame"),
           py::arg("primary") = py::none(), py::arg("secondary") = py::none(), py::arg("tool") = py::none(),
           R"(set_trees(self, machine_frame, part_frame, primary=None, secondary=None, tool=None)
--

Gives the machine copies of two trees, and says which of their nodes stand for the rotary axes and for the
tool.

machine_frame is the root of the tree down to the tool, part_frame the root of the one from the part to the
machine frame; None for no tree. The nodes given stay their owner's: the machine's are those of trees. Nodes
that were taken from the machine before are no longer its own. ValueError for a primary, secondary or tool
that stands in neither tree.)")
      .def("axis_states", &states_of, R"(axis_states(self)
--

What all axis nodes stand at: a dict of NodeState by id; of two nodes with the same id, the first one's.)")
      .def("set_axis_states", &set_states, py::arg("states"), R"(set_axis_states(self, states)
--

Gives every axis node whose id is in the dict that state, and the transform that belongs to it.

Ids without a node and nodes without a state are left alone. ValueError for a state under another id than
its own; nothing is changed then.)")
      .def("axis_position", &axis_position, py::arg("id"), R"(axis_position(self, id)
--

The value of the axis node with this id: radians or length units. KeyError when there is none.)")
      .def("set_tool_point", &set_tool_point, py::arg("tool_point"), R"(set_tool_point(self, tool_point)
--

Places the tool node for a tool point; see ToolNode. ValueError without a tool node.)");
}

}  // namespace k5ax_python
