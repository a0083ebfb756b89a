// A machine definition from its text; docs/machine-json.md has the format.
#ifndef K5AX_TOOL_MACHINE_MACHINE_READER_H
#define K5AX_TOOL_MACHINE_MACHINE_READER_H

#include "tool/machine/machine_record.h"

#include <string>

namespace tool {

/// Throws InputError with line, column and place for what is not JSON and for what is no machine definition.
/// Whether the machine can be worked with is another question, the library's.
/// @param file  the name for messages
MachineRecord read_machine_text(std::string text, const std::string& file);

}  // namespace tool

#endif
