// Machine definitions in files, by the file name's ending.
#include "tool/machine/machine_file.h"

#include "tool/errors.h"

namespace tool {
namespace {

// What the stream says after it has named the file, which every message of ours begins with anyway.
std::string reason(const IIO::FileError& error, const std::string& path) {
  const std::string what = error.what();
  const std::string name = '"' + path + "\": ";
  return what.rfind(name, 0) == 0 ? what.substr(name.size()) : what;
}

}  // namespace

std::unique_ptr<md::CMachDef> read_machine(const std::string& path) {
  auto machine = std::make_unique<md::CMachDef>();
  // Not MachdefLoad: the exceptions say why.
  try {
    IIO::FileStream stream(path.c_str(), IIO::FILE_READ);
    machine->serialize(stream);
  } catch (const IIO::FileError& error) {
    throw InputError(path, "", reason(error, path), "give a machine definition that is there and whole");
  } catch (const std::runtime_error& error) {
    throw InputError(path, "", error.what(), "save the machine again");
  }
  return machine;
}

void write_machine(md::CMachDef& machine, const std::string& path) {
  try {
    IIO::FileStream stream(path.c_str(), IIO::FILE_WRITE);
    machine.serialize(stream);
  } catch (const IIO::FileError& error) {
    throw InputError(path, "", reason(error, path), "make room there, or give another place");
  }
}

}  // namespace tool
