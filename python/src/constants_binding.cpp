// The enumerations, and angles brought into a range.
#include <pybind11/numpy.h>

#include "arrays.h"
#include "bindings.h"

namespace k5ax_python {

namespace {

constexpr int kFromZero = 1;  // [0, 2 pi)
constexpr int kSigned = 2;    // [-pi, pi]

py::object normalise(const py::object& angle, bool is_signed) {
  const Doubles given = doubles(angle);
  py::array_t<double> result(std::vector<py::ssize_t>(given.shape(), given.shape() + given.ndim()));
  const double* const from = given.data();
  double* const to = result.mutable_data();
  const int range = is_signed ? kSigned : kFromZero;
  {
    const py::gil_scoped_release release;
    for (py::ssize_t i = 0; i < given.size(); ++i) to[i] = k5ax_normalise_angle(from[i], range);
  }
  if (given.ndim() == 0) return py::float_(*to);
  return std::move(result);
}

}  // namespace

void bind_constants(py::module_& m) {
  py::enum_<AXIS_TYPE>(m, "AxisType", "The letter of an axis.")
      .value("INVALID", AXIS_TYPE_INVALID_LOWEST, "none yet")
      .value("A", AXIS_A, "rotary, about X")
      .value("B", AXIS_B, "rotary, about Y")
      .value("C", AXIS_C, "rotary, about Z")
      .value("X", AXIS_X, "linear")
      .value("Y", AXIS_Y, "linear")
      .value("Z", AXIS_Z, "linear")
      .value("DUMMY", AXIS_DUMMY, "no axis");
  py::enum_<AXIS_MODE>(m, "AxisMode", "How an axis moves.")
      .value("INVALID", AXIS_MODE_INVALID_LOWEST, "not set yet")
      .value("ROTARY", ROTARY, "values and limits are radians")
      .value("LINEAR", LINEAR, "values and limits are lengths");
  py::enum_<AXIS_LOCATION>(m, "AxisLocation", "What an axis carries.")
      .value("INVALID", AXIS_LOCATION_INVALID_LOWEST, "not set yet")
      .value("HEAD", HEAD, "the axis moves the tool")
      .value("TABLE", TABLE, "the axis moves the part");
  py::enum_<MACHINE_TYPE>(m, "MachineType", "Where the two rotary axes sit.")
      .value("UNDEFINED", MC_UNDEFINED, "not set yet")
      .value("TT", MC_TT, "both on the table")
      .value("HT", MC_HT, "the primary on the table, the secondary on the head")
      .value("HH", MC_HH, "both on the head");

  m.def("normalise_angle", &normalise, py::arg("angle"), py::arg("signed") = false,
        R"(normalise_angle(angle, signed=False)
--

Brings angles, in radians, into [0, 2 pi), or signed into [-pi, pi], by whole turns.

An array of any shape gives an array of that shape, a number a float. An angle that is NaN, infinite or so
large that a turn no longer changes it comes back as it is.)");
}

}  // namespace k5ax_python
