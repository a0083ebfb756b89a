// Node, AxisNode, ToolNode and NodeState: the trees of a machine.
#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "arrays.h"
#include "bindings.h"
#include "node_handle.h"

namespace k5ax_python {

namespace {

using NodeClass = py::class_<NodeHandle, std::shared_ptr<NodeHandle>>;
using AxisNodeClass = py::class_<AxisNodeHandle, NodeHandle, std::shared_ptr<AxisNodeHandle>>;
using ToolNodeClass = py::class_<ToolNodeHandle, NodeHandle, std::shared_ptr<ToolNodeHandle>>;

NodeHandle make_node(int id, const py::object& transform) {
  const NodeHandle made{new_node(), nullptr};
  made.node->id(id);
  if (!transform.is_none()) made.node->transform(to_matrix(transform, "transform"));
  return made;
}

AxisNodeHandle make_axis_node(const md::CAxis2& axis, int id, bool driven, bool wins, double value) {
  const auto node = new_axis_node(axis);
  node->id(id);
  node->flags(k5axSgNode_calc_flags(driven ? 1 : 0, wins ? 1 : 0));
  md::NodeAxis_transform_set(0, *node, value);
  AxisNodeHandle made;
  made.node = node;
  return made;
}

ToolNodeHandle make_tool_node(const angled_head* head, int id, const py::object& tool_point) {
  angled_head straight;
  k5ax_angled_head_initialise(&straight);
  ToolNodeHandle made;
  made.node = new_tool_node(head != nullptr ? *head : straight);
  made.node->id(id);
  k5axSgToolNodeMatrixSet(made.node, to_point(tool_point, "tool_point"));
  return made;
}

// ---- the tree ----

void refuse_machines(const NodeHandle& handle) {
  if (handle.machine)
    throw py::value_error(
        "the node belongs to a machine, whose trees are set as a whole: work on node.copy()");
}

py::object add_child(const NodeHandle& self, const py::object& child) {
  if (!py::isinstance<NodeHandle>(child)) throw py::type_error("child: not a node");
  const NodeHandle& handle = child.cast<const NodeHandle&>();
  refuse_machines(self);
  refuse_machines(handle);
  self.node->add_child(handle.node);
  return child;
}

void remove_child(const NodeHandle& self, const NodeHandle& child) {
  refuse_machines(self);
  const std::vector<NodePtr>& children = self.node->child_list();
  if (std::find(children.begin(), children.end(), child.node) == children.end())
    throw py::value_error("not a child of this node");
  self.node->remove_child(child.node);
}

py::array transform_stack(const NodeHandle& self) {
  std::vector<Geometry::Matrix> stack;
  md::sg::node::transform_stack(self.node, stack);
  py::array_t<double> result({static_cast<py::ssize_t>(stack.size()), py::ssize_t{4}, py::ssize_t{4}});
  for (std::size_t i = 0; i < stack.size(); ++i) result[py::int_(i)] = from_matrix(stack[i]);
  return std::move(result);
}

Geometry::Matrix node_to_root(const NodeHandle& self) {
  std::vector<Geometry::Matrix> stack;
  md::sg::node::transform_stack(self.node, stack);
  Geometry::Matrix product;
  for (const Geometry::Matrix& matrix : stack) product *= matrix;
  return product;
}

const char* kind_of(const NodeHandle& self) {
  if (md::sg::axis_node(self.node.get()) != nullptr) return "axis";
  return md::sg::tool_node(self.node.get()) != nullptr ? "tool" : "plain";
}

node_state state_of(const NodeHandle& self) {
  node_state state;
  k5axSgNode_state_get_(self.node.get(), &state);
  return state;
}

void set_state(const AxisNodeHandle& self, const node_state& state) {
  if (!md::node_state_set(*self.node, state))
    throw py::value_error("a state of id " + std::to_string(state.id) + "; the node's is " +
                          std::to_string(self.node->id()));
}

std::string node_repr(const NodeHandle& self) {
  return py::str("<k5ax node of kind {}, id {}, value {:g}, {} children>")
      .format(kind_of(self), self.node->id(), self.node->value(), self.node->child_list().size());
}

py::object free_copy(const NodeHandle& self) { return node_object(copy_tree(self.node), nullptr); }

// ---- the classes ----

void bind_state(py::module_& m) {
  py::class_<node_state>(m, "NodeState", R"(What an axis node stands at: id, flags and value.

NodeState(id, flags=0, value=0.0))")
      .def(py::init([](int id, unsigned int flags, double value) {
             return node_state{id, flags, value};
           }),
           py::arg("id"), py::arg("flags") = 0U, py::arg("value") = 0.0,
           "__init__(self, id, flags=0, value=0.0)\n--\n\nMakes a state; see the class.")
      .def_readwrite("id", &node_state::id, "The node's id.")
      .def_readwrite("flags", &node_state::flags, "The node's flags word.")
      .def_readwrite("value", &node_state::value, "Radians for a rotary axis, length units for a linear one.")
      .def(
          "__eq__",
          [](const node_state& a, const node_state& b) {
            return a.id == b.id && a.flags == b.flags && a.value == b.value;
          },
          py::is_operator(), py::arg("other"), "__eq__(self, other)\n--\n\nAll three are equal.")
      .def(
          "__repr__",
          [](const node_state& self) {
            return py::str("NodeState(id={}, flags={}, value={!r})").format(self.id, self.flags, self.value);
          },
          "__repr__(self)\n--\n\nAs it is made.")
      .def(py::pickle([](const node_state& self) { return py::make_tuple(self.id, self.flags, self.value); },
                      [](const py::tuple& fields) {
                        return node_state{fields[0].cast<int>(), fields[1].cast<unsigned int>(),
                                          fields[2].cast<double>()};
                      }));
}

void add_node_fields(NodeClass& node) {
  node.def_property(
          "id", [](const NodeHandle& self) { return self.node->id(); },
          [](const NodeHandle& self, int id) { self.node->id(id); },
          "The id; ids need not differ. -999 is for nodes that initialise leaves alone: fixed offsets.")
      .def_property(
          "flags", [](const NodeHandle& self) { return self.node->flags(); },
          [](const NodeHandle& self, unsigned int flags) { self.node->flags(flags); },
          "The flags word. Of an axis node, value 1: driven by poses; value 2: wins among parallel slides.")
      .def_property(
          "value", [](const NodeHandle& self) { return self.node->value(); },
          [](const NodeHandle& self, double value) { self.node->value(value); },
          R"(The value: radians of a rotary axis, length units of a linear one.

Assigning stores it and leaves the transform; AxisNode.set_value sets both.)")
      .def_property(
          "transform", [](const NodeHandle& self) { return from_matrix(self.node->transform()); },
          [](const NodeHandle& self, const py::object& transform) {
            self.node->transform(to_matrix(transform, "transform"));
          },
          R"(The matrix from this node's frame to its parent's, shape (4, 4).

Points are rows: p @ M. The first three rows are the images of X, Y, Z, the fourth translates, the last
column is 0, 0, 0, 1. What is read is a copy that cannot be written to. Assigning takes (4, 4) or, without
the last column, (4, 3), and leaves the value; ValueError for another shape or another last column.)")
      .def_property_readonly("kind", &kind_of, "'plain', 'axis' or 'tool'.")
      .def_property_readonly(
          "parent", [](const NodeHandle& self) { return node_object(self.node->parent(), self.machine); },
          "The parent; None for a root, and where the parent is gone.")
      .def_property_readonly(
          "children",
          [](const NodeHandle& self) { return node_objects(self.node->child_list(), self.machine); },
          "The children as a new list, in the order in which they came.")
      .def_property_readonly("state", &state_of, "Id, flags and value as a NodeState.");
}

void add_tree_methods(NodeClass& node) {
  node.def(
          "walk",
          [](const NodeHandle& self) {
            return node_objects(md::sg::node::all_nodes(self.node), self.machine);
          },
          R"(walk(self)
--

The node and all below it as a list, depth first, a node before its children.)")
      .def("transform_stack", &transform_stack, R"(transform_stack(self)
--

The transforms from this node (first) to the root (last), shape (K, 4, 4).)")
      .def(
          "node_to_root", [](const NodeHandle& self) { return from_matrix(node_to_root(self)); },
          R"(node_to_root(self)
--

The matrix from this node's frame to the root's, shape (4, 4): the product of transform_stack(), in its
order.)")
      .def("add_child", &add_child, py::arg("child"), R"(add_child(self, child)
--

Makes the child this node's last one, takes it from its former parent, and returns it.

ValueError for the node itself, one above it, and where either belongs to a machine.)")
      .def("remove_child", &remove_child, py::arg("child"), R"(remove_child(self, child)
--

Takes the child out of this node's children.

ValueError when it is none of them, and where the node belongs to a machine.)")
      .def(
          "initialise", [](const NodeHandle& self, bool recursive) { self.node->initialise(recursive); },
          py::arg("recursive") = false, R"(initialise(self, recursive=False)
--

The identity and value 0, unless the id is -999; recursive, the same for every node below.

For a rotary axis off the origin this is not its pose at 0: see AxisNode.set_value.)")
      .def(
          "scale_node",
          [](const NodeHandle& self, double factor, bool recursive) {
            self.node->scale_node(factor, recursive);
          },
          py::arg("factor"), py::arg("recursive") = false, R"(scale_node(self, factor, recursive=False)
--

Scales what the node carries: an axis node's axis and value (an angle too), nothing of a plain node; a tool
node applies its rule anew. Recursive, the same for every node below.)")
      .def("copy", &free_copy, R"(copy(self)
--

A copy of this node and all below it that belongs to no machine and hangs nowhere.)")
      .def(
          "__deepcopy__", [](const NodeHandle& self, const py::dict&) { return free_copy(self); },
          py::arg("memo"), "__deepcopy__(self, memo)\n--\n\nAs copy().")
      .def(
          "__eq__", [](const NodeHandle& a, const NodeHandle& b) { return a.node == b.node; },
          py::is_operator(), py::arg("other"), "__eq__(self, other)\n--\n\nTrue when both are the same node.")
      .def(
          "__hash__", [](const NodeHandle& self) { return std::hash<const void*>()(self.node.get()); },
          "__hash__(self)\n--\n\nEqual for the same node.")
      .def("__repr__", &node_repr,
           "__repr__(self)\n--\n\nThe kind, the id, the value and the number of children.");
}

void bind_axis_node(py::module_& m) {
  AxisNodeClass node(m, "AxisNode", R"(A node that carries an axis, whose value makes its transform.

AxisNode(axis, id=0, driven=True, wins=False, value=0.0)

A slide translates by its value along its direction. A rotary axis translates by minus its base point and
then turns about its direction; the way back, a translation by the base point, is the business of a plain
node above it. driven: poses move it. wins: of parallel slides it is the one that moves. Copies the axis.
Ids of axis nodes are best positive and differ, since states are told apart by them.)");
  node.def(py::init(&make_axis_node), py::arg("axis"), py::arg("id") = 0, py::arg("driven") = true,
           py::arg("wins") = false, py::arg("value") = 0.0,
           "__init__(self, axis, id=0, driven=True, wins=False, value=0.0)\n--\n\nMakes a node; see the "
           "class.")
      .def_property_readonly(
          "axis",
          [](const AxisNodeHandle& self) {
            return part_of(std::make_pair(self.machine, self.node), &axis_in(self).payload());
          },
          R"(The axis that the node carries.

Changing it changes the node's, but not its transform: call set_value then.)")
      .def(
          "set_value",
          [](const AxisNodeHandle& self, double value) {
            md::NodeAxis_transform_set(0, axis_in(self), value);
          },
          py::arg("value"), R"(set_value(self, value)
--

Sets the value, radians or length units, and the transform that belongs to it. Limits are not looked at.)")
      .def(
          "transform_at",
          [](const AxisNodeHandle& self, double value) {
            return from_matrix(md::NodeAxis_transform_calc(0, axis_in(self), value));
          },
          py::arg("value"), R"(transform_at(self, value)
--

The transform that the node has at a value, shape (4, 4). Changes nothing.)")
      .def("set_state", &set_state, py::arg("state"), R"(set_state(self, state)
--

Takes flags and value of a NodeState, and sets the transform. ValueError when its id is not the node's.)");
}

void bind_tool_node(py::module_& m) {
  ToolNodeClass node(m, "ToolNode", R"(The node that carries the tool: its origin is the tool point.

ToolNode(head=None, id=0, tool_point=(0, 0, 0))

Without a head it has a straight one. Copies the head. tool_point leads from the tool point to the head's
tool reference point, length unit.)");
  node.def(py::init(&make_tool_node), py::arg("head") = py::none(), py::arg("id") = 0,
           py::arg("tool_point") = py::make_tuple(0, 0, 0),
           "__init__(self, head=None, id=0, tool_point=(0, 0, 0))\n--\n\nMakes a node; see the class.")
      .def_property_readonly(
          "head",
          [](const ToolNodeHandle& self) {
            return part_of(std::make_pair(self.machine, self.node), &tool_in(self).payload());
          },
          "The head that the node carries. Changing it leaves the transform; see set_tool_point.")
      .def(
          "set_tool_point",
          [](const ToolNodeHandle& self, const py::object& tool_point) {
            k5axSgToolNodeMatrixSet(self.node, to_point(tool_point, "tool_point"));
          },
          py::arg("tool_point"), R"(set_tool_point(self, tool_point)
--

Stores the tool point as the head's offset and places the node for it and for the head. ValueError unless
the shape is (3,).)");
}

}  // namespace

py::object node_object(const NodePtr& node, const MachinePtr& machine) {
  if (!node) return py::none();
  if (md::sg::axis_node(node.get()) != nullptr) return py::cast(AxisNodeHandle{{node, machine}});
  if (md::sg::tool_node(node.get()) != nullptr) return py::cast(ToolNodeHandle{{node, machine}});
  return py::cast(NodeHandle{node, machine});
}

py::list node_objects(const std::vector<NodePtr>& nodes, const MachinePtr& machine) {
  py::list objects;
  for (const NodePtr& node : nodes) objects.append(node_object(node, machine));
  return objects;
}

void bind_nodes(py::module_& m) {
  bind_state(m);
  NodeClass node(
      m, "Node",
      R"(A node of a tree: a transform to its parent, an id, a value, flags, and its place in the tree.

Node(id=0, transform=None)

Without a transform it is the identity. A tree that Python builds lives as long as its root: where that is
gone, parent is None. Machine.set_trees copies trees into a machine. A node that comes from a machine keeps
the machine alive; its values can be changed, its children cannot.)");
  node.def(py::init(&make_node), py::arg("id") = 0, py::arg("transform") = py::none(),
           "__init__(self, id=0, transform=None)\n--\n\nMakes a node; see the class.");
  add_node_fields(node);
  add_tree_methods(node);
  bind_axis_node(m);
  bind_tool_node(m);
}

}  // namespace k5ax_python
