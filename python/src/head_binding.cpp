// AngledHead: a holder whose spindle is tilted and turned.
#include <string>

#include "arrays.h"
#include "bindings.h"

namespace k5ax_python {

namespace {

using SharedHead = std::shared_ptr<angled_head>;
using HeadClass = py::class_<angled_head, SharedHead>;

void set_head(angled_head& head, double c_degrees, double b_degrees, const std::pair<double, double>& lengths,
              double side_offset) {
  const double both[] = {lengths.first, lengths.second};
  k5ax_angled_head_set(c_degrees, b_degrees, both, side_offset, &head);
}

SharedHead make_straight() {
  const SharedHead head = std::make_shared<angled_head>();
  k5ax_angled_head_initialise(head.get());
  return head;
}

void add_point(HeadClass& head, const char* name, k5ax_point angled_head::*field, const char* doc) {
  head.def_property(
      name, [field](const angled_head& self) { return from_point(self.*field); },
      [field, name](angled_head& self, const py::object& given) { self.*field = to_point(given, name); },
      doc);
}

std::string head_repr(const angled_head& head) {
  return py::str("<k5ax.AngledHead turned by {:g}, tilted by {:g} radians>")
      .format(head.c_angle, head.b_angle);
}

py::bytes head_bytes(const angled_head& head) {
  return py::bytes(reinterpret_cast<const char*>(&head), sizeof head);
}

SharedHead head_from_bytes(const py::bytes& given) {
  const std::string bytes = given;
  if (bytes.size() != sizeof(angled_head)) throw py::value_error("not the state of an AngledHead");
  const SharedHead head = std::make_shared<angled_head>();
  bytes.copy(reinterpret_cast<char*>(head.get()), bytes.size());
  return head;
}

}  // namespace

void bind_head(py::module_& m) {
  HeadClass head(
      m, "AngledHead",
      R"(An angled head: a tool holder whose spindle is tilted and turned against the machine's Z axis.

AngledHead() is straight: tool_dir (0, 0, 1), ref_dir (1, 0, 0), all else zero. Lengths are in the machine's
unit, angles in radians (but for the arguments of set), directions in the frame of the mounting point, which
is parallel to the machine's. Points are read as copies that cannot be written to; assign a whole point.

A head that comes from a machine or from a tool node is theirs: changing it changes them, and it keeps them
alive. Giving a head to a machine or to a node copies it.)");
  head.def(py::init(&make_straight), "__init__(self)\n--\n\nMakes a straight head.");
  head.def_readwrite("b_angle", &angled_head::b_angle, "The tilt, a rotation about Y, radians.")
      .def_readwrite("c_angle", &angled_head::c_angle, "The turn of the tilted spindle about Z, radians.")
      .def_readwrite("length1", &angled_head::length1, "From the mounting point to the tilt joint.")
      .def_readwrite("length2", &angled_head::length2, "From the tilt joint to the tool reference point.")
      .def_readwrite("flags", &angled_head::flags,
                     "The flags word; a machine's head has the machine's. Value 1 set and value 2 clear: the "
                     "tool is vertical, whatever tool_dir says.");
  add_point(head, "tip", &angled_head::tip, "The tool reference point from the mounting point, shape (3,).");
  add_point(head, "tool_dir", &angled_head::tool_dir, "The direction of the tilted spindle, shape (3,).");
  add_point(head, "ref_dir", &angled_head::ref_dir,
            "The head's X direction after tilt and turn, shape (3,).");
  add_point(head, "offset", &angled_head::offset,
            "In a tool node the tool point applied last, else zero, shape (3,).");

  head.def("set", &set_head, py::arg("c_degrees"), py::arg("b_degrees"),
           py::arg("lengths") = std::make_pair(0., 0.), py::arg("side_offset") = 0.0,
           R"(set(self, c_degrees, b_degrees, lengths=(0.0, 0.0), side_offset=0.0)
--

Computes the head from its turn about Z and its tilt about Y, both in DEGREES, its two lengths and a side
offset along the tilted Y. The offset shows in tip alone. The fields offset and flags stay.)")
      .def(
          "is_angled", [](const angled_head& self) { return k5ax_is_angled_head(&self) == 1; },
          R"(is_angled(self)
--

True when the head is tilted by more than 0.001 radians either way, or its tip is away from the mounting
point.)")
      .def(
          "scale", [](angled_head& self, double factor) { k5ax_angled_head_scale(&self, factor); },
          py::arg("factor"), R"(scale(self, factor)
--

Multiplies both lengths, the tip and the offset by the factor.)")
      .def("__repr__", &head_repr, "__repr__(self)\n--\n\nThe two angles.")
      .def(
          "__copy__", [](const angled_head& self) { return std::make_shared<angled_head>(self); },
          "__copy__(self)\n--\n\nA head with the same values that belongs to nothing.")
      .def(
          "__deepcopy__",
          [](const angled_head& self, const py::dict&) { return std::make_shared<angled_head>(self); },
          py::arg("memo"),
          "__deepcopy__(self, memo)\n--\n\nA head with the same values that belongs to nothing.")
      .def(py::pickle(&head_bytes, &head_from_bytes));
}

}  // namespace k5ax_python
