// The extension module k5ax._core; the package k5ax hands out what is in it.
#include "bindings.h"

PYBIND11_MODULE(_core, m) {
  using namespace k5ax_python;

  // The signatures stand in the texts, where Python's own tools look for them.
  pybind11::options options;
  options.disable_function_signatures();

  m.doc() = "The compiled part of the package k5ax.";
  m.attr("__version__") = K5AX_PYTHON_VERSION;
  bind_constants(m);
  bind_diagnostics(m);
  bind_axis(m);
  bind_head(m);
  bind_nodes(m);
  bind_machine(m);
}
