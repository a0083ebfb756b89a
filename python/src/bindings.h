// The parts of the module, each in a file of its own, and what they share.
#ifndef K5AX_PYTHON_BINDINGS_H
#define K5AX_PYTHON_BINDINGS_H

#include <pybind11/pybind11.h>

#include <memory>
#include <utility>

#include "pools.h"

namespace k5ax_python {

namespace py = pybind11;
using MachineClass = py::class_<md::CMachDef, MachinePtr>;

void bind_constants(py::module_& m);
void bind_diagnostics(py::module_& m);
void bind_axis(py::module_& m);
void bind_head(py::module_& m);
void bind_nodes(py::module_& m);
void bind_machine(py::module_& m);

// Each adds some of the methods of Machine.
void add_files(MachineClass& machine);
void add_transforms(MachineClass& machine);
void add_trees(MachineClass& machine);
void add_poses(MachineClass& machine);

// The name of an enumerator, as in AxisType.C.
template <class Enum>
py::object enumerator(Enum value) {
  return py::cast(value).attr("name");
}

// A pointer to what is inside of its owner, and keeps that alive.
template <class T, class Owner>
std::shared_ptr<T> part_of(Owner owner, T* part) {
  if (part == nullptr) return nullptr;
  return std::shared_ptr<T>(std::make_shared<Owner>(std::move(owner)), part);
}

// The axis of a machine, which stays alive as long as the axis is held.
inline std::shared_ptr<md::CAxis2> axis_of(const MachinePtr& machine, const AxisPtr& axis) {
  return part_of(std::make_pair(machine, axis), axis.get());
}

}  // namespace k5ax_python

#endif
