// Machine definitions in files, by the file name's ending.
#include "tool/machine/machine_file.h"

#include "tool/errors.h"
#include "tool/machine/machine_reader.h"
#include "tool/machine/machine_writer.h"
#include "tool/machine/memory_stream.h"
#include "tool/system.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

namespace tool {
namespace {

// Of any kind of file, pipes too, so the size is not asked for.
std::string read_text(const std::string& path) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(open_stream(path), std::fclose);
  const std::string remedy = "give a machine definition that is there and may be read";
  if (!file) throw InputError(path, "", std::string("cannot open: ") + std::strerror(errno), remedy);
  std::string text;
  std::array<char, 65536> part;
  for (;;) {
    const std::size_t count = std::fread(part.data(), 1, part.size(), file.get());
    text.append(part.data(), count);
    if (count < part.size()) break;
  }
  if (std::ferror(file.get()) != 0)
    throw InputError(path, "", std::string("cannot read: ") + std::strerror(errno), remedy);
  return text;
}

bool ends_in(const std::string& path, const std::string& small, const std::string& capital) {
  const std::string ending = path.size() < small.size() ? "" : path.substr(path.size() - small.size());
  return ending == small || ending == capital;
}

struct LoadedMachine {
  std::unique_ptr<md::CMachDef> machine;
  std::string bytes;  // what was read for it
};

// Not MachdefLoad: the exceptions say why.
LoadedMachine load(const std::string& path) {
  LoadedMachine loaded;
  loaded.machine = std::make_unique<md::CMachDef>();
  try {
    IIO::FileStream file(path.c_str(), IIO::FILE_READ);
    ListeningReader stream(file);
    loaded.machine->serialize(stream);
    loaded.bytes = stream.bytes();
  } catch (const IIO::FileError& error) {
    throw InputError(path, "", reason_of(error, path),
                     "give a machine definition that is there and whole, .k5m or .json");
  } catch (const std::runtime_error& error) {
    throw InputError(path, "", error.what(), "give a machine definition, .k5m or .json");
  }
  return loaded;
}

}  // namespace

bool is_text_file(const std::string& path) { return ends_in(path, ".json", ".JSON"); }

void require_machine_ending(const std::string& argument, const std::string& path) {
  if (is_text_file(path) || ends_in(path, ".k5m", ".K5M")) return;
  throw UsageError(argument + ": " + path + " ends neither in .json nor in .k5m",
                   "name it .json for text or .k5m for binary");
}

std::unique_ptr<md::CMachDef> read_machine(const std::string& path) {
  return is_text_file(path) ? machine_of(read_record(path)) : load(path).machine;
}

void write_machine(md::CMachDef& machine, const std::string& path) {
  write_record(record_of(machine), path, path);
}

MachineRecord read_record(const std::string& path) {
  return is_text_file(path) ? read_machine_text(read_text(path), path) : record_of(load(path).bytes);
}

void write_record(const MachineRecord& record, const std::string& path, const std::string& source) {
  write_bytes(is_text_file(path) ? write_machine_text(record, source) : bytes_of(record), path);
}

void write_bytes(const std::string& bytes, const std::string& path) {
  try {
    IIO::FileStream stream(path.c_str(), IIO::FILE_WRITE);
    stream.Write(bytes.data(), bytes.size());
  } catch (const IIO::FileError& error) {
    throw InputError(path, "", reason_of(error, path), "make room there, or give another place");
  }
}

}  // namespace tool
