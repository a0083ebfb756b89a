// Loads a machine definition, makes sure that it can be worked with, and saves it.
#include "host/machine_file.h"

#include <filesystem>
#include <fstream>
#include <random>

#include "host/compare_machines.h"
#include "host/input_error.h"

namespace host {
namespace {

// A file name of our own in the system's folder for such files; the file goes away with this object.
class TemporaryFile {
 public:
  TemporaryFile() {
    std::random_device random;
    const std::string name = "k5ax-" + std::to_string(random()) + "-" + std::to_string(random()) + ".k5m";
    m_path = (std::filesystem::temp_directory_path() / name).string();
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    std::error_code ignored;
    std::filesystem::remove(m_path, ignored);
  }

  const std::string& path() const { return m_path; }

 private:
  std::string m_path;
};

// Keeps what the library says while it validates. It speaks in developer mode only.
class Listener {
 public:
  Listener() : m_flags_before(CUtility::flags()) {
    CUtility::developer(true);
    CUtility::set_feedback_cbk([this](const char* text) { m_heard = text; });
  }
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;
  ~Listener() {
    CUtility::set_feedback_cbk(boost::function<void(const char*)>());
    CUtility::flags(m_flags_before);
  }

  const std::string& heard() const { return m_heard; }

 private:
  unsigned int m_flags_before;
  std::string m_heard;
};

std::string why_invalid(const md::CAxis2& axis, const std::string& role) {
  if (axis.is_valid()) return std::string();
  return role + " axis: letter " + AXIS_TYPE2String(axis.GetAxis()) + ", location " +
         AXIS_LOCATION2String(axis.GetAxisLocation()) +
         "; give it a letter, head or table, a direction, and limits with min <= max";
}

// The library says why only when an axis misses the machine's origin. The other rules are few enough to go
// through.
std::string why_invalid(const md::CMachDef& machine) {
  const auto primary = machine.getPrimary();
  const auto secondary = machine.getSecondary();
  const MACHINE_TYPE type = machine.getMachType();

  if (type != MC_TT && type != MC_HT && type != MC_HH)
    return "machine type " + std::to_string(type) + "; set table-table, head-table or head-head";
  if (machine.getToolDir() == CUtility::pt_o) return "tool direction of length 0; give it a direction";
  if (primary && !primary->is_valid()) return why_invalid(*primary, "primary");
  if (secondary && !secondary->is_valid()) return why_invalid(*secondary, "secondary");
  if (!primary) return "no primary rotary axis; set one";
  if (!secondary) return "the primary rotary axis does not suit the machine type";
  if (primary->GetAxis() == secondary->GetAxis()) return "both rotary axes have the same letter; change one";
  if (primary->GetAxisVector() == secondary->GetAxisVector())
    return "both rotary axes have the same direction; change one";
  return "the rotary axes sit on the wrong side for the machine type; set head or table to suit it";
}

}  // namespace

MachinePtr load_machine(const std::string& path) {
  if (!std::ifstream(path))
    throw InputError(path + ": cannot be opened; give a machine that is there and may be read");

  MachinePtr machine(k5axCMachDef_create());
  if (MachdefLoad(machine.get(), path.c_str()) == 0)
    throw InputError(path + ": damaged, or no machine definition; save the machine again");
  return machine;
}

void require_valid(const md::CMachDef& machine, const std::string& path) {
  const Listener listener;
  if (!machine.is_valid()) {
    throw InputError(
        path + ": not a valid machine: " +
        (listener.heard().empty()
             ? why_invalid(machine)
             : listener.heard() + "; move the axis's base point so that its line passes the origin"));
  }
  if (!machine.mw_valid())
    throw InputError(path +
                     ": not a valid machine: the axis that turns the part has no travel; widen its limits");
  if (!machine.SG()[0] || !machine.SG()[1] || !machine.tool_node())
    throw InputError(path + ": no scene graph; save the machine with both trees and a tool node");
}

std::string save_load_compare(md::CMachDef& machine) {
  const TemporaryFile file;
  if (MachdefSave(&machine, file.path().c_str()) == 0)
    throw InputError(file.path() + ": cannot be written; make room there or set TMPDIR to another folder");
  const MachinePtr loaded = load_machine(file.path());
  return first_difference(machine, *loaded);
}

}  // namespace host
