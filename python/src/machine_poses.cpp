// Machine: posing the trees for machine coordinates, and reading those back.
#include <vector>

#include "arrays.h"
#include "bindings.h"
#include "node_handle.h"

namespace k5ax_python {

namespace {

using AxisNode = md::sg::tnode<md::CAxis2>;

std::vector<NodePtr> axis_nodes_of(const md::CMachDef& machine) {
  std::vector<NodePtr> axis_nodes;
  for (const NodePtr& root : machine.SG())
    for (const NodePtr& node : md::sg::node::all_nodes(root))
      if (md::sg::axis_node(node.get()) != nullptr) axis_nodes.push_back(node);
  return axis_nodes;
}

void refuse_bare(const md::CMachDef& machine) {
  if (!machine.SG()[0] && !machine.SG()[1])
    throw py::value_error("the machine has no trees to pose; give it some with set_trees()");
}

// The update measures the tool point before it turns the table. So for a pose that stands for itself the
// table goes to its zero pose first.
bool pose_anew(md::CMachDef& machine, const Point& xyz, const Point& abc) {
  for (const NodePtr& rotary : machine.SG_RotAxs()) {
    AxisNode* const axis_node = md::sg::axis_node(rotary.get());
    if (axis_node != nullptr && axis_node->GetAxisLocation() == TABLE)
      md::NodeAxis_transform_set(machine.flags(), *axis_node, 0.0);
  }
  return md::UpdateNodeAxes_(&machine, xyz, abc);
}

bool pose(md::CMachDef& machine, const py::object& xyz, const py::object& abc) {
  refuse_bare(machine);
  return pose_anew(machine, to_point(xyz, "xyz"), to_point(abc, "abc"));
}

bool update(md::CMachDef& machine, const py::object& xyz, const py::object& abc) {
  refuse_bare(machine);
  return md::UpdateNodeAxes_(&machine, to_point(xyz, "xyz"), to_point(abc, "abc"));
}

py::tuple axis_values(md::CMachDef& self, const py::object& xyz, const py::object& abc) {
  refuse_bare(self);
  const Rows p_mach(xyz, "xyz");
  const Rows angles(abc, "abc");
  const Batch batch(p_mach, angles);
  ScalarResult<bool> reached(batch);

  const MachinePtr posed = copy_machine(self);
  const std::vector<NodePtr> axis_nodes = axis_nodes_of(*posed);
  py::array_t<double> values(batch.shape({static_cast<py::ssize_t>(axis_nodes.size())}));
  double* value = values.mutable_data();
  {
    const py::gil_scoped_release release;
    for (py::ssize_t i = 0; i < batch.count(); ++i) {
      reached.set(i, pose_anew(*posed, p_mach[i], angles[i]));
      for (const NodePtr& node : axis_nodes) *value++ = node->value();
    }
  }
  return py::make_tuple(values, reached.get());
}

py::tuple read_back_present(md::CMachDef& machine) {
  Point xyz;
  Point abc;
  md::CMachDef_SG2MachCoords(machine, xyz, abc);
  return py::make_tuple(from_point(xyz), from_point(abc));
}

py::tuple read_back(md::CMachDef& self, const py::object& given) {
  if (given.is_none()) return read_back_present(self);

  const MachinePtr posed = copy_machine(self);
  const std::vector<NodePtr> axis_nodes = axis_nodes_of(*posed);
  const Doubles values = doubles(given);
  const py::ssize_t dimensions = values.ndim();
  if (dimensions < 1 || dimensions > 2 ||
      values.shape(dimensions - 1) != static_cast<py::ssize_t>(axis_nodes.size()))
    throw py::value_error("values: expected a column for each of the " + std::to_string(axis_nodes.size()) +
                          " axis nodes, (K,) or (N, K)");

  const Batch batch(dimensions == 1 ? 1 : values.shape(0), dimensions == 1);
  PointResult xyz(batch);
  PointResult abc(batch);
  const double* value = values.data();
  {
    const py::gil_scoped_release release;
    for (py::ssize_t i = 0; i < batch.count(); ++i) {
      for (const NodePtr& node : axis_nodes)
        md::NodeAxis_transform_set(posed->flags(), *md::sg::axis_node(node.get()), *value++);
      Point p;
      Point angles;
      md::CMachDef_SG2MachCoords(*posed, p, angles);
      xyz.set(i, p);
      abc.set(i, angles);
    }
  }
  return py::make_tuple(xyz.get(), abc.get());
}

}  // namespace

void add_poses(MachineClass& machine) {
  machine
      .def("pose", &pose, py::arg("xyz"), py::arg("abc"), R"(pose(self, xyz, abc)
--

Poses the trees for machine coordinates xyz (3,), length unit, and abc (3,), radians, whatever pose they
had.

Sets the table's rotary nodes to 0 and does update_node_axes. True when the tool point is where it should
be, False when the slides cannot bring it there: the driven ones are at 0 then. Limits are not looked at.
ValueError for other shapes and for a machine without trees.)")
      .def("update_node_axes", &update, py::arg("xyz"), py::arg("abc"), R"(update_node_axes(self, xyz, abc)
--

As pose, but measures the tool point with the table as it stands, and so goes on from the last pose.)")
      .def_property_readonly(
          "axis_nodes", [](const MachinePtr& self) { return node_objects(axis_nodes_of(*self), self); },
          "The axis nodes of both trees, in the order of walk: the columns of axis_values.")
      .def("axis_values", &axis_values, py::arg("xyz"), py::arg("abc"), R"(axis_values(self, xyz, abc)
--

Where every axis stands for machine coordinates: (values, reached). The machine itself stays as it is posed.

xyz (3,) or (N, 3) length unit, abc (3,) or (N, 3) radians; each row is a pose of its own, as pose makes it.
values is (K,) or (N, K), a column for each of axis_nodes; reached a bool or (N,). ValueError for other
shapes and for a machine without trees.)")
      .def("read_back", &read_back, py::arg("values") = py::none(), R"(read_back(self, values=None)
--

The machine coordinates that the trees show: (xyz, abc), each (3,), length unit and radians.

With values, (K,) or (N, K) as axis_values gives them, the coordinates that the trees would show at those,
each (3,) or (N, 3); the machine itself stays as it is. An angle without an axis is 0. ValueError for
another number of columns.)");
}

}  // namespace k5ax_python
