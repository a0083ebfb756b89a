// A machine definition as text; docs/machine-json.md has the format.
#ifndef K5AX_TOOL_MACHINE_MACHINE_WRITER_H
#define K5AX_TOOL_MACHINE_MACHINE_WRITER_H

#include "tool/machine/machine_record.h"

#include <string>

namespace tool {

/// The text from which the reader makes the same record, bit for bit. What follows from the rest is left out
/// where it follows without rounding, so that the text means the same wherever it is read.
///
/// Throws InputError, naming the place, for a number that is not finite: text has none.
/// @param file  where the record comes from, for messages
std::string write_machine_text(const MachineRecord& machine, const std::string& file);

}  // namespace tool

#endif
