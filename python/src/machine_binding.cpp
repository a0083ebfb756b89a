// Machine: its fields, what is valid, and how it is turned.
#include <array>
#include <string>

#include "arrays.h"
#include "bindings.h"
#include "node_handle.h"

namespace k5ax_python {

namespace {

using SharedAxis = std::shared_ptr<md::CAxis2>;

// One of the five places of a machine where an axis may stand.
struct AxisPlace {
  const char* name;
  AxisPtr (*get)(const md::CMachDef&);
  void (*set)(md::CMachDef&, const AxisPtr&);
  const char* doc;
};

template <std::size_t i>
AxisPtr linear(const md::CMachDef& machine) {
  return machine.xyz_axes()[i];
}

template <std::size_t i>
void set_linear(md::CMachDef& machine, const AxisPtr& axis) {
  machine.xyz_axes()[i] = axis;
}

const std::array<AxisPlace, 5> kAxisPlaces = {{
    {"primary", [](const md::CMachDef& machine) -> AxisPtr { return machine.getPrimary(); },
     [](md::CMachDef& machine, const AxisPtr& axis) { machine.setPrimary(axis); },
     "The primary rotary axis, or None. Assigning copies the axis."},
    {"secondary", [](const md::CMachDef& machine) -> AxisPtr { return machine.getSecondary(); },
     [](md::CMachDef& machine, const AxisPtr& axis) { machine.setSecondary(axis); },
     "The secondary rotary axis, or None. Assigning copies the axis."},
    {"x_axis", &linear<0>, &set_linear<0>, "The slide of X, or None. Assigning copies the axis."},
    {"y_axis", &linear<1>, &set_linear<1>, "The slide of Y, or None. Assigning copies the axis."},
    {"z_axis", &linear<2>, &set_linear<2>, "The slide of Z, or None. Assigning copies the axis."},
}};

MachinePtr make_machine(MACHINE_TYPE type, const md::CAxis2* primary, const md::CAxis2* secondary,
                        const md::CAxis2* x_axis, const md::CAxis2* y_axis, const md::CAxis2* z_axis) {
  MachinePtr machine = new_machine();
  machine->setMachType(type);
  const md::CAxis2* const given[] = {primary, secondary, x_axis, y_axis, z_axis};
  for (std::size_t i = 0; i < kAxisPlaces.size(); ++i)
    kAxisPlaces[i].set(*machine, adopt_axis(*machine, given[i]));
  return machine;
}

void turn(md::CMachDef& machine, double angle1, double angle2) {
  if (!machine.orientate(angle1, angle2))
    throw py::value_error("the machine's type is none of TT, HT, HH; nothing was turned");
}

py::tuple mw_rotary_axes(const MachinePtr& self) {
  AxisPtr first;
  AxisPtr second;
  self->getMWRotAxes(first, second);
  return py::make_tuple(axis_of(self, first), axis_of(self, second));
}

std::string short_text(const AxisPtr& axis) {
  if (!axis) return "none";
  return py::str("{} on {}").format(enumerator(axis->GetAxis()), enumerator(axis->GetAxisLocation()));
}

std::string machine_repr(const md::CMachDef& machine) {
  std::size_t nodes = 0;
  for (const NodePtr& root : machine.SG()) nodes += md::sg::node::all_nodes(root).size();
  return py::str("<k5ax.Machine {}, {}, primary {}, secondary {}, {} nodes>")
      .format(enumerator(machine.getMachType()), machine.isMetric() ? "mm" : "inch",
              short_text(machine.getPrimary()), short_text(machine.getSecondary()), nodes);
}

void add_axes(MachineClass& machine) {
  for (const AxisPlace& place : kAxisPlaces)
    machine.def_property(
        place.name, [get = place.get](const MachinePtr& self) { return axis_of(self, get(*self)); },
        [set = place.set](md::CMachDef& self, const md::CAxis2* axis) { set(self, adopt_axis(self, axis)); },
        place.doc);
  machine
      .def_property_readonly(
          "rotary_axis", [](const MachinePtr& self) { return axis_of(self, self->rotary_axis()); },
          R"(The rotary axis that turns the part, or None.

TT: the secondary, or the primary where it is alone; HT and HH (where none turns the part): the primary;
another type: None.)")
      .def("mw_rotary_axes", &mw_rotary_axes, R"(mw_rotary_axes(self)
--

The two rotary axes in machine-work order, each may be None. TT: the secondary (or the primary where it is
alone), then the primary; HT and HH: primary, secondary; another type: two None.)");
}

void add_settings(MachineClass& machine) {
  machine
      .def_property("type", &md::CMachDef::getMachType, &md::CMachDef::setMachType,
                    "Where the rotary axes sit, a MachineType.")
      .def_property(
          "mode", [](const md::CMachDef& self) { return static_cast<int>(self.get_mode()); },
          [](md::CMachDef& self, int mode) { self.set_mode(static_cast<MACHINE_MODE>(mode)); },
          "A number of the host's: kept, copied and saved, never looked at. -1 at first.")
      .def_property(
          "discipline", [](const md::CMachDef& self) { return static_cast<int>(self.discipline()); },
          [](md::CMachDef& self, int discipline) {
            self.discipline(static_cast<K5AX_DISCIPLINE>(discipline));
          },
          "A number of the host's: kept, copied and saved, never looked at. 0 at first.")
      .def_property("metric", &md::CMachDef::isMetric, &md::CMachDef::setMetric,
                    "True: lengths are millimetres; False: inches. Assigning names the unit; scale converts.")
      .def_property(
          "flags", [](const md::CMachDef& self) { return self.flags(); },
          [](md::CMachDef& self, unsigned int flags) { self.flags(flags); },
          "The flags word, which is the head's. Value 1 set and value 2 clear: the tool is vertical.")
      .def_property(
          "tool_dir", [](const md::CMachDef& self) { return from_point(self.getToolDir()); },
          [](md::CMachDef& self, const py::object& tool_dir) {
            self.setToolDir(to_point(tool_dir, "tool_dir"));
          },
          R"(The tool direction in force, machine frame, shape (3,): (0, 0, 1) while the tool is vertical by
the flags, else the head's.

Assigning sets the head's, as it is, whatever the flags say. What is read is a copy that cannot be written
to.)")
      .def_property(
          "work_zero", [](const md::CMachDef& self) { return from_point(self.mwZeroPos()); },
          [](md::CMachDef& self, const py::object& zero) { self.mwZeroPos(to_point(zero, "work_zero")); },
          "Work zero, shape (3,), in the host's unit: scale leaves it. A copy that cannot be written to.")
      .def_property(
          "loading_vector", [](const md::CMachDef& self) { return from_point(self.loading_vector()); },
          [](md::CMachDef& self, const py::object& vector) {
            self.loading_vector(to_point(vector, "loading_vector"));
          },
          "The loading vector, shape (3,), in the host's unit: scale leaves it. A copy that cannot be "
          "written to.")
      .def_property(
          "head", [](const MachinePtr& self) { return part_of(self, &self->head()); },
          [](md::CMachDef& self, const angled_head& head) { self.head() = head; },
          "The angled head. Assigning copies it, its flags included, which are the machine's.");
}

void add_operations(MachineClass& machine) {
  machine
      .def("scale", &md::CMachDef::scale, py::arg("metric"), R"(scale(self, metric)
--

Converts the lengths to millimetres (True) or inches (False); nothing when that is the unit already.

Base points, limits of linear axes, the head, and of the trees the axis nodes are converted; work zero,
loading vector, plain nodes and the tool node are not, so the trees no longer fit the axes: see
docs/scene-graph.md.)")
      .def("initialise_head", &md::CMachDef::initialise_head, R"(initialise_head(self)
--

A straight head with flags 0, and a loading vector of zero.)")
      .def("is_valid", &md::CMachDef::is_valid, R"(is_valid(self)
--

True when this is a machine that the kinematics can work with: a known type, rotary axes that are valid and
fit the type, a tool direction, and a part axis whose line passes the origin. set_feedback hears the last
one's reason.)")
      .def("mw_valid", &md::CMachDef::mw_valid, R"(mw_valid(self)
--

True when is_valid(), and the axis that machining needs has room to turn (max > min).)")
      .def("is_orthogonal", &md::CMachDef::is_orthogonal, R"(is_orthogonal(self)
--

True when every rotary axis that is there points along its letter.)")
      .def("orientate", &turn, py::arg("angle1"), py::arg("angle2"), R"(orientate(self, angle1, angle2)
--

Turns the machine itself into the pose at angle1 of the primary and angle2 of the secondary axis, radians.

TT: the secondary's direction, by -angle1 about the primary's. HT: the head, by angle2 about the
secondary's. HH: both. Calls compose, nothing remembers the angles, and limits are not looked at: work on a
copy() where the machine is still needed as it is. ValueError for a type other than TT, HT, HH.)")
      .def(
          "copy_from", [](md::CMachDef& self, const md::CMachDef& other) { self.copy(other); },
          py::arg("other"), R"(copy_from(self, other)
--

Copies values into the axes and nodes that are here already; adds none and takes none away. Trees are taken
to have the same shape.)")
      .def("__repr__", &machine_repr,
           "__repr__(self)\n--\n\nThe type, the unit, the rotary axes, the number of nodes.");
}

}  // namespace

void bind_machine(py::module_& m) {
  MachineClass machine(
      m, "Machine",
      R"(A five-axis machine tool: its axes, its head, its work zero and unit, and its two trees.

Machine(type=MachineType.UNDEFINED, primary=None, secondary=None, x_axis=None, y_axis=None, z_axis=None)

Machine.load(path) reads one from a file. Axes are copied. Lengths are in the machine's unit (metric),
angles in radians. The machine frame is the one in which axes, head and work zero stand; the part frame
coincides with it when every rotary axis of the table stands at 0. a, b, c are the angles of the rotary axes
by letter: an axis A takes a, whatever its direction.

What takes points and angles takes one of them, shape (3,), or many, shape (N, 3), or one of the one and
many of the other; anything that numpy makes an array of doubles will do. Many are answered as arrays, by a
loop that works on the machine as it stands at the call, while other Python threads run. ValueError for
another shape, or for numbers of rows that differ.)");
  machine.def(py::init(&make_machine), py::arg("type") = MC_UNDEFINED, py::arg("primary") = py::none(),
              py::arg("secondary") = py::none(), py::arg("x_axis") = py::none(),
              py::arg("y_axis") = py::none(), py::arg("z_axis") = py::none(),
              "Makes a machine; see the class.");
  add_axes(machine);
  add_settings(machine);
  add_operations(machine);
  add_files(machine);
  add_transforms(machine);
  add_trees(machine);
  add_poses(machine);
}

}  // namespace k5ax_python
