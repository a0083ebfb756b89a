// Any text as a machine definition: it is refused with a reason, or it is a machine that comes back from text
// bit for bit and that the library loads.
#include "fuzz/require.h"
#include "tool/errors.h"
#include "tool/machine/machine_reader.h"
#include "tool/machine/machine_record.h"
#include "tool/machine/machine_writer.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

using k5ax_fuzz::require;

bool is_one_line(const std::string& message) { return message.find('\n') == std::string::npos; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  tool::MachineRecord machine;
  try {
    machine = tool::read_machine_text(text, "fuzz.json");
  } catch (const tool::InputError& error) {
    require(is_one_line(error.what()), "a message of several lines");
    return 0;
  }

  const std::string bytes = tool::bytes_of(machine);
  std::string written;
  try {
    written = tool::write_machine_text(machine, "fuzz.json");
  } catch (const tool::InputError&) {
    return 0;  // finite numbers may have a product that is not
  }
  require(tool::bytes_of(tool::read_machine_text(written, "written.json")) == bytes, "text lost something");
  tool::machine_of(machine);
  return 0;
}
