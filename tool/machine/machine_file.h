// Machine definitions in files, by the file name's ending: .json is text, anything else is binary.
#ifndef K5AX_TOOL_MACHINE_MACHINE_FILE_H
#define K5AX_TOOL_MACHINE_MACHINE_FILE_H

#include <memory>
#include <string>

#include <k5ax/machdef.h>

namespace tool {

/// The machine in the file, its lists of nodes made, so that it can be posed. Throws InputError for a file
/// that cannot be read and for one that holds no machine definition.
std::unique_ptr<md::CMachDef> read_machine(const std::string& path);

/// Writes the machine to the file. What stood there is replaced only when everything is on the disk. Throws
/// InputError where that fails.
void write_machine(md::CMachDef& machine, const std::string& path);

}  // namespace tool

#endif
