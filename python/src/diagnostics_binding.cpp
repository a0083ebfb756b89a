// The library's channel for text, and the switch that opens it.
#include <memory>

#include "bindings.h"

namespace k5ax_python {

namespace {

// What set_feedback was given. The library itself always calls the same function, since a callback of the
// library's must not replace itself, and Python's may.
std::shared_ptr<py::object> s_callback;

void call_back(const char* text) {
  const std::shared_ptr<py::object> callback = s_callback;
  if (callback) (*callback)(text);
}

void set_feedback(const py::object& callback) {
  if (!callback.is_none() && PyCallable_Check(callback.ptr()) == 0)
    throw py::type_error("callback: cannot be called, and is not None");
  s_callback = callback.is_none() ? nullptr : std::make_shared<py::object>(callback);
}

}  // namespace

void bind_diagnostics(py::module_& m) {
  m.def("set_feedback", &set_feedback, py::arg("callback"), R"(set_feedback(callback)
--

Calls callback(text) with what the library says; None ends that. For the whole process.

While developer() is on, Machine.is_valid and Machine.mw_valid say when the line of the table's axis misses
the origin. What the callback raises is raised by them. TypeError for what cannot be called.)");
  m.def(
      "developer", [] { return CUtility::developer(); }, R"(developer()
--

True while the library's developer switch is on; off at the start.)");
  m.def(
      "set_developer", [](bool on) { CUtility::developer(on); }, py::arg("on"), R"(set_developer(on)
--

Sets the library's developer switch, for the whole process; see set_feedback.)");

  CUtility::set_feedback_cbk(&call_back);
  // What Python made must not outlive the interpreter.
  py::module_::import("atexit").attr("register")(py::cpp_function([] { s_callback = nullptr; }));
}

}  // namespace k5ax_python
