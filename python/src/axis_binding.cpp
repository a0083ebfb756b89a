// Axis: one axis of a machine.
#include <pybind11/stl.h>

#include <optional>
#include <string>

#include "arrays.h"
#include "bindings.h"
#include "pools.h"

namespace k5ax_python {

namespace {

using SharedAxis = std::shared_ptr<md::CAxis2>;

bool is_linear_letter(AXIS_TYPE type) { return type >= AXIS_X && type <= AXIS_Z; }

// The direction that a letter stands for; without a letter, what the library takes for no direction.
Point direction_of(AXIS_TYPE type) {
  switch (type) {
    case AXIS_A:
    case AXIS_X:
      return CUtility::pt_x;
    case AXIS_B:
    case AXIS_Y:
      return CUtility::pt_y;
    default:
      return CUtility::pt_z;
  }
}

SharedAxis make_axis(AXIS_TYPE type, AXIS_LOCATION location, const py::object& base, const py::object& vector,
                     double min, double max, std::optional<AXIS_MODE> mode) {
  const Point p_base = to_point(base, "base");
  const Point d_axis = vector.is_none() ? direction_of(type) : to_point(vector, "vector");
  const AXIS_MODE moves = mode.value_or(is_linear_letter(type) ? LINEAR : ROTARY);
  return std::make_shared<md::CAxis2>(*new_axis(type, location, p_base, d_axis, min, max, moves));
}

// The triple with the letter's component replaced; another letter leaves it.
py::object with_value(md::CAxis2& axis, double value, const py::object& triple) {
  Point changed = to_point(triple, "triple");
  axis.SetValue(value, changed.x, changed.y, changed.z);
  return from_point(changed);
}

double value_of(const md::CAxis2& axis, const py::object& triple) {
  const Point p = to_point(triple, "triple");
  return axis.GetValue(p.x, p.y, p.z);
}

std::string axis_repr(const md::CAxis2& axis) {
  return py::str("<k5ax.Axis {} on the {}, {}, {:g} to {:g}>")
      .format(enumerator(axis.GetAxis()), enumerator(axis.GetAxisLocation()), enumerator(axis.mode()),
              axis.GetMin(), axis.GetMax());
}

py::tuple axis_fields(const md::CAxis2& axis) {
  return py::make_tuple(axis.GetAxis(), axis.GetAxisLocation(), from_point(axis.GetBaseVector()),
                        from_point(axis.GetAxisVector()), axis.GetMin(), axis.GetMax(), axis.mode());
}

SharedAxis axis_from_fields(const py::tuple& fields) {
  const auto axis =
      make_axis(fields[0].cast<AXIS_TYPE>(), fields[1].cast<AXIS_LOCATION>(), fields[2], fields[3],
                fields[4].cast<double>(), fields[5].cast<double>(), fields[6].cast<AXIS_MODE>());
  axis->SetAxisVector(to_point(fields[3], "vector"));  // as it was, normalised or not
  return axis;
}

void add_fields(py::class_<md::CAxis2, SharedAxis>& axis) {
  axis.def_property("type", &md::CAxis2::GetAxis, &md::CAxis2::SetAxis, "The letter, an AxisType.")
      .def_property("location", &md::CAxis2::GetAxisLocation, &md::CAxis2::SetAxisLocation,
                    "What the axis carries, an AxisLocation.")
      .def_property(
          "base", [](const md::CAxis2& self) { return from_point(self.GetBaseVector()); },
          [](md::CAxis2& self, const py::object& base) { self.SetBaseVector(to_point(base, "base")); },
          R"(A point on the axis line, shape (3,), machine coordinates, length unit.

What is read is a copy that cannot be written to; assign a whole point.)")
      .def_property(
          "vector", [](const md::CAxis2& self) { return from_point(self.GetAxisVector()); },
          [](md::CAxis2& self, const py::object& vector) { self.SetAxisVector(to_point(vector, "vector")); },
          R"(The direction, shape (3,), machine coordinates.

Assigning stores it as it is; only Axis(...) makes it a unit vector. What is read is a copy that cannot be
written to.)")
      .def_property("min", &md::CAxis2::GetMin, &md::CAxis2::SetMin,
                    "The lower limit of travel: length unit or radians, by mode.")
      .def_property("max", &md::CAxis2::GetMax, &md::CAxis2::SetMax,
                    "The upper limit of travel: length unit or radians, by mode.")
      .def_property(
          "mode", [](const md::CAxis2& self) { return self.mode(); },
          [](md::CAxis2& self, AXIS_MODE mode) { self.mode(mode); }, "How the axis moves, an AxisMode.");
}

}  // namespace

void bind_axis(py::module_& m) {
  py::class_<md::CAxis2, SharedAxis> axis(m, "Axis",
                                          R"(One axis of a machine: a slide X, Y, Z or a rotary axis A, B,
C.

Axis(type, location, base=(0, 0, 0), vector=None, min=0.0, max=0.0, mode=None)

Lengths are in the machine's unit, angles in radians, in the machine's frame. The direction is made a unit
vector; one shorter than 5e-9 becomes (0, 0, 1). Without one it is the positive direction of the letter;
without a mode, X, Y and Z are linear and all else is rotary. No value is refused: is_valid() says what is
usable.

An axis that comes from a machine or from a node is theirs: changing it changes them, and it keeps them
alive. Giving an axis to a machine or to a node copies it.)");
  axis.def(py::init(&make_axis), py::arg("type"), py::arg("location"),
           py::arg("base") = py::make_tuple(0, 0, 0), py::arg("vector") = py::none(), py::arg("min") = 0.0,
           py::arg("max") = 0.0, py::arg("mode") = py::none(),
           "__init__(self, type, location, base=(0, 0, 0), vector=None, min=0.0, max=0.0, mode=None)\n--\n\n"
           "Makes an axis; see the class.");
  add_fields(axis);
  axis.def("is_valid", &md::CAxis2::is_valid, R"(is_valid(self)
--

True when the location is head or table, the direction is longer than 0, the letter is one of A, B, C, X, Y,
Z and max >= min. The mode is not looked at.)")
      .def("is_orthogonal", &md::CAxis2::is_orthogonal, R"(is_orthogonal(self)
--

True when the direction is the positive unit vector of the letter, each component closer than 5e-9.)")
      .def("get_value", &value_of, py::arg("triple"), R"(get_value(self, triple)
--

The component of x, y, z or of a, b, c that the letter names: A and X the first, B and Y the second, C and Z
the third. 0.0 for another letter. ValueError unless the shape is (3,).)")
      .def("set_value", &with_value, py::arg("value"), py::arg("triple"), R"(set_value(self, value, triple)
--

The triple with the component that the letter names replaced by the value, shape (3,). Another letter
replaces nothing. The argument stays as it is. ValueError unless its shape is (3,).)")
      .def(
          "scale",
          [](md::CAxis2& self, double factor) {
            md::CAxis2::scale(AxisPtr(&self, CUtility::null_deleter()), factor);
          },
          py::arg("factor"), R"(scale(self, factor)
--

Multiplies the base point, and where the mode is linear the limits, by the factor.)")
      .def("__repr__", &axis_repr, "__repr__(self)\n--\n\nThe letter, the location, the mode and the limits.")
      .def(
          "__copy__", [](const md::CAxis2& self) { return std::make_shared<md::CAxis2>(self); },
          "__copy__(self)\n--\n\nAn axis with the same values that belongs to nothing.")
      .def(
          "__deepcopy__",
          [](const md::CAxis2& self, const py::dict&) { return std::make_shared<md::CAxis2>(self); },
          py::arg("memo"),
          "__deepcopy__(self, memo)\n--\n\nAn axis with the same values that belongs to nothing.")
      .def(py::pickle(&axis_fields, &axis_from_fields));
}

}  // namespace k5ax_python
