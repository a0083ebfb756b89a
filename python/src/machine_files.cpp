// Machine: files, bytes, copies.
#include <k5ax/platform/stream.h>

#include <cerrno>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

#include "bindings.h"
#include "record_streams.h"

namespace k5ax_python {

namespace {

// The path as the system takes it.
std::string system_path(const py::object& path) {
  const std::string bytes = py::bytes(py::module_::import("os").attr("fsencode")(path));
  if (bytes.find('\0') != std::string::npos) throw py::value_error("path: holds a null byte");
  return bytes;
}

bool ends_with(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

// The library's errors carry the path and the system's reason; Python keeps the path and the system's number
// apart. `system_error` is what the number was when the call failed; where it is not what the text speaks of,
// the contents are at fault.
[[noreturn]] void raise_os_error(const std::exception& error, int system_error, const std::string& path_bytes,
                                 const py::object& path) {
  std::string text = error.what();
  const std::string start = '"' + path_bytes + "\": ";
  if (text.compare(0, start.size(), start) == 0) text.erase(0, start.size());
  const bool from_system = system_error != 0 && ends_with(text, std::system_category().message(system_error));
  const py::object reason = py::reinterpret_steal<py::object>(
      PyUnicode_DecodeFSDefaultAndSize(text.data(), static_cast<py::ssize_t>(text.size())));
  const py::tuple arguments = py::make_tuple(from_system ? system_error : EINVAL, reason, path);
  PyErr_SetObject(PyExc_OSError, arguments.ptr());
  throw py::error_already_set();
}

MachinePtr load_machine(const py::object& path) {
  const std::string path_bytes = system_path(path);
  const MachinePtr machine = new_machine();
  errno = 0;
  try {
    IIO::FileStream stream(path_bytes.c_str(), IIO::FILE_READ);
    read_record(*machine, stream);
  } catch (const std::runtime_error& error) {
    raise_os_error(error, errno, path_bytes, path);
  }
  return machine;
}

void write_file(const std::string& path, const std::string& bytes) {
  const py::gil_scoped_release release;
  IIO::FileStream stream(path.c_str(), IIO::FILE_WRITE);
  stream.Write(bytes.data(), bytes.size());
}

void save_machine(md::CMachDef& machine, const py::object& path) {
  const std::string path_bytes = system_path(path);
  const std::string record = record_of(machine);
  errno = 0;
  try {
    write_file(path_bytes, record);
  } catch (const IIO::FileError& error) {
    raise_os_error(error, errno, path_bytes, path);
  }
}

MachinePtr machine_from_bytes(const py::bytes& data) {
  const std::string bytes = data;
  RecordReader reader(bytes);
  const MachinePtr machine = new_machine();
  try {
    read_record(*machine, reader);
  } catch (const std::runtime_error& error) {
    throw py::value_error(error.what());
  }
  return machine;
}

py::bytes machine_bytes(md::CMachDef& machine) { return py::bytes(record_of(machine)); }

}  // namespace

void add_files(MachineClass& machine) {
  machine
      .def_static("load", &load_machine, py::arg("path"), R"(load(path)
--

The machine of a file; path is a str, bytes or os.PathLike. What follows the record is not read.

OSError with the path (FileNotFoundError and its like where the system said so) when the file cannot be read
or is damaged. A file that loads may still hold a machine that is not valid: ask is_valid().)")
      .def("save", &save_machine, py::arg("path"), R"(save(self, path)
--

Writes the machine to a file, while other Python threads run. What stood there is replaced only when
everything is on the disk. OSError with the path when it fails; the old file is as it was then.)")
      .def_static("from_bytes", &machine_from_bytes, py::arg("data"), R"(from_bytes(data)
--

The machine of a record in memory, as to_bytes() gives it and files hold it. ValueError when it is
damaged.)")
      .def("to_bytes", &machine_bytes, R"(to_bytes(self)
--

The machine's record: what save() writes.)")
      .def(
          "copy", [](md::CMachDef& self) { return copy_machine(self); }, R"(copy(self)
--

An independent machine of the same record, its trees included.)")
      .def(
          "__copy__", [](md::CMachDef& self) { return copy_machine(self); },
          "__copy__(self)\n--\n\nAs copy(): a machine owns its parts.")
      .def(
          "__deepcopy__", [](md::CMachDef& self, const py::dict&) { return copy_machine(self); },
          py::arg("memo"), "__deepcopy__(self, memo)\n--\n\nAs copy().")
      .def(py::pickle(&machine_bytes, &machine_from_bytes));
}

}  // namespace k5ax_python
