// Machine: between part and machine coordinates, the tool's directions, and wrapping, for one point or many.
#include <algorithm>
#include <utility>

#include "arrays.h"
#include "bindings.h"
#include "pool_lock.h"
#include "snapshot.h"

namespace k5ax_python {

namespace {

// Calls answer(machine, i) for every row. Many rows go by without the interpreter's lock, on a snapshot.
template <class Answer>
void for_each_row(const md::CMachDef& machine, const Batch& batch, Answer answer) {
  if (batch.single()) {
    answer(machine, 0);
    return;
  }
  const Snapshot snapshot(machine);
  const md::CMachDef& as_it_stands = snapshot.machine();
  const py::gil_scoped_release release;
  for (py::ssize_t i = 0; i < batch.count(); ++i) answer(as_it_stands, i);
}

py::object part_to_machine(const md::CMachDef& self, const py::object& xyz, const py::object& abc) {
  const Rows p_part(xyz, "xyz");
  const Rows angles(abc, "abc");
  const Batch batch(p_part, angles);
  PointResult p_mach(batch);
  for_each_row(self, batch, [&](const md::CMachDef& machine, py::ssize_t i) {
    p_mach.set(i, machine.Part2MachCoords(p_part[i], angles[i]));
  });
  return p_mach.get();
}

py::tuple machine_to_part(const md::CMachDef& self, const py::object& xyz, const py::object& abc) {
  const Rows p_mach(xyz, "xyz");
  const Rows angles(abc, "abc");
  const Batch batch(p_mach, angles);
  PointResult p_part(batch);
  PointResult d_tool_part(batch);
  for_each_row(self, batch, [&](const md::CMachDef& machine, py::ssize_t i) {
    Point p;
    Point d;
    machine.Mach2PartCoords(p_mach[i], angles[i], p, d);
    p_part.set(i, p);
    d_tool_part.set(i, d);
  });
  return py::make_tuple(p_part.get(), d_tool_part.get());
}

py::object part_to_machine_transform(const md::CMachDef& self, const py::object& abc) {
  const Rows angles(abc, "abc");
  const Batch batch(angles);
  MatrixResult part_to_mach(batch);
  for_each_row(self, batch, [&](const md::CMachDef& machine, py::ssize_t i) {
    part_to_mach.set(i, machine.Part2MachTransform(angles[i]));
  });
  return part_to_mach.get();
}

py::object machine_to_part_transform(const md::CMachDef& self, const py::object& abc) {
  const Rows angles(abc, "abc");
  const Batch batch(angles);
  MatrixResult product(batch);
  for_each_row(self, batch, [&](const md::CMachDef& machine, py::ssize_t i) {
    product.set(i, machine.Mach2PartTransform(Point(), angles[i]));
  });
  return product.get();
}

py::tuple rotary_transforms(const md::CMachDef& self, const py::object& abc) {
  const Rows angles(abc, "abc");
  const Batch batch(angles);
  MatrixResult primary(batch);
  MatrixResult secondary(batch);
  for_each_row(self, batch, [&](const md::CMachDef& machine, py::ssize_t i) {
    Geometry::Matrix of_primary;
    Geometry::Matrix of_secondary;
    machine.Mach2PartTransform(Point(), angles[i], of_primary, of_secondary);
    primary.set(i, of_primary);
    secondary.set(i, of_secondary);
  });
  return py::make_tuple(primary.get(), secondary.get());
}

py::object tool_to_control_point(const md::CMachDef& self, const py::object& tool_point) {
  const Rows p_tool(tool_point, "tool_point");
  const Batch batch(p_tool);
  PointResult p_control(batch);
  for_each_row(self, batch, [&](const md::CMachDef& machine, py::ssize_t i) {
    Point p;
    machine.Tool2CtrlPt(p, p_tool[i]);
    p_control.set(i, p);
  });
  return p_control.get();
}

using ToolTest = bool (md::CMachDef::*)(double a, double b, double c) const;

py::object ask_of_tool(const md::CMachDef& self, const py::object& abc, ToolTest test) {
  const Rows angles(abc, "abc");
  const Batch batch(angles);
  ScalarResult<bool> answers(batch);
  for_each_row(self, batch, [&](const md::CMachDef& machine, py::ssize_t i) {
    const Point at = angles[i];
    answers.set(i, (machine.*test)(at.x, at.y, at.z));
  });
  return answers.get();
}

// ---- wrapping ----

// The library wraps a point on a clone of the machine, which it takes from the pools. Others may wait for
// those, so they are given up every so many points: a tenth of a millisecond.
constexpr py::ssize_t kBlock = 256;

py::tuple wrap(const md::CMachDef& self, const py::object& points, const py::object& rotary, int ref_axis,
               int ref_sign) {
  if (ref_axis < 0 || ref_axis > 2) throw py::value_error("ref_axis: 0, 1 and 2 are +X, +Y and +Z");
  const Rows p_mach(points, "points");
  const Rows angles(rotary, "rotary");
  const Batch batch(p_mach, angles);
  PointResult p_wrapped(batch);
  PointResult wrapped_angles(batch);
  ScalarResult<double> radii(batch);
  {
    // Without the trees, which wrapping does not look at, a clone costs half as much.
    const Snapshot snapshot(self);
    const py::gil_scoped_release release;
    for (py::ssize_t begin = 0; begin < batch.count(); begin += kBlock) {
      const PoolLock lock;
      for (py::ssize_t i = begin; i < std::min(begin + kBlock, batch.count()); ++i) {
        Point p;
        Point abc;
        double radius = 0.0;
        md::Cartesian2AxialRotaryVals(&snapshot.machine(), p_mach[i], angles[i], ref_axis, ref_sign, p, abc,
                                      radius);
        p_wrapped.set(i, p);
        wrapped_angles.set(i, abc);
        radii.set(i, radius);
      }
    }
  }
  return py::make_tuple(p_wrapped.get(), wrapped_angles.get(), radii.get());
}

}  // namespace

void add_transforms(MachineClass& machine) {
  machine
      .def("part_to_machine", &part_to_machine, py::arg("xyz"), py::arg("abc"),
           R"(part_to_machine(self, xyz, abc)
--

Part points in machine coordinates: turned by the table's axes at minus their angles, secondary first.

xyz (3,) or (N, 3) length unit, abc (3,) or (N, 3) radians, any finite value; the result is (3,) or (N, 3).
Without any rotary axis it turns by -c about Z and, on a TT, then by -b about Y. ValueError for other
shapes.)")
      .def("machine_to_part", &machine_to_part, py::arg("xyz"), py::arg("abc"),
           R"(machine_to_part(self, xyz, abc)
--

Machine points and the tool direction in force in part coordinates, as a pair of arrays.

xyz (3,) or (N, 3) length unit, abc (3,) or (N, 3) radians; both results are (3,) or (N, 3). Points are
turned by the table's axes, primary first; the tool direction by both axes wherever they sit, secondary
first, and is not normalised. An unknown type turns nothing. ValueError for other shapes.)")
      .def("part_to_machine_transform", &part_to_machine_transform, py::arg("abc"),
           R"(part_to_machine_transform(self, abc)
--

The matrices of part_to_machine: (4, 4) for abc of (3,), (N, 4, 4) for (N, 3), radians. Points are rows: p @
M.)")
      .def("machine_to_part_transform", &machine_to_part_transform, py::arg("abc"),
           R"(machine_to_part_transform(self, abc)
--

The rotations of both rotary axes about their lines, wherever they sit, as secondary @ primary: (4, 4) for
abc of (3,), (N, 4, 4) for (N, 3), radians. See rotary_transforms for the two apart.)")
      .def("rotary_transforms", &rotary_transforms, py::arg("abc"), R"(rotary_transforms(self, abc)
--

The rotation of the primary and that of the secondary axis about their own lines at abc, a pair of matrices,
each (4, 4) for abc of (3,), (N, 4, 4) for (N, 3), radians. The identity for an axis that is missing.)")
      .def("tool_to_control_point", &tool_to_control_point, py::arg("tool_point"),
           R"(tool_to_control_point(self, tool_point)
--

The control points of tool points, (3,) or (N, 3), length unit: plus the head's tip, plus the base point of
each rotary axis on the head. The head's home pose: no angle enters.)")
      .def(
          "is_tool_axial",
          [](const md::CMachDef& self, const py::object& abc) {
            return ask_of_tool(self, abc, &md::CMachDef::IsToolAxial);
          },
          py::arg("abc"), R"(is_tool_axial(self, abc)
--

Whether the tool points along the part's rotary axis, in the same sense (cosine within 1e-5 of 1), at abc,
radians: a bool for (3,), an array of bool (N,) for (N, 3). False for HH, for unknown types and where axes
are missing.)")
      .def(
          "is_tool_radial",
          [](const md::CMachDef& self, const py::object& abc) {
            return ask_of_tool(self, abc, &md::CMachDef::IsToolRadial);
          },
          py::arg("abc"), R"(is_tool_radial(self, abc)
--

Whether the tool is perpendicular to the part's rotary axis, either way (cosine below 1e-5), at abc,
radians: a bool for (3,), an array of bool (N,) for (N, 3). False for HH, for unknown types and where axes
are missing.)")
      .def("cartesian_to_axial_rotary", &wrap, py::arg("points"), py::arg("rotary"), py::arg("ref_axis") = 0,
           py::arg("ref_sign") = 1, R"(cartesian_to_axial_rotary(self, points, rotary, ref_axis=0, ref_sign=1)
--

Turns points about the part's rotary axis into a reference half-plane, and says by which angle.

points (3,) or (N, 3), machine coordinates at the pose rotary, a, b, c (3,) or (N, 3) radians. The
half-plane is that of +X, +Y or +Z for ref_axis 0, 1 or 2, of the opposite for a negative ref_sign. Returns
the turned points, the angles with the rotary axis's replaced by minus the angle turned, in [-pi, pi], both
(3,) or (N, 3), and the distances from the axis, a float or (N,). A point on the axis stays; without a
rotary axis all do, at distance 0. ValueError for other shapes and for another ref_axis.)");
}

}  // namespace k5ax_python
