// Machine definitions in files, by the name's ending: .json is text, anything else that is read is binary.
#ifndef K5AX_TOOL_MACHINE_MACHINE_FILE_H
#define K5AX_TOOL_MACHINE_MACHINE_FILE_H

#include "tool/machine/machine_record.h"

#include <memory>
#include <string>

namespace tool {

/// True for a name that ends in .json, in small or capital letters.
bool is_text_file(const std::string& path);

/// Throws UsageError for a name that does not say what to write: .json, or .k5m for binary, in small or
/// capital letters. With a slip in it, it would become a binary file that nobody asked for.
///
/// @param argument  what the command line calls it
void require_machine_ending(const std::string& argument, const std::string& path);

/// The machine in the file, its lists of nodes made, so that it can be posed. Throws InputError for a file
/// that cannot be read and for one that holds no machine definition.
std::unique_ptr<md::CMachDef> read_machine(const std::string& path);

/// Writes the machine to the file. What stood there is replaced only when everything is on the disk. Throws
/// InputError where that fails, and where the machine has a number that text cannot hold.
void write_machine(md::CMachDef& machine, const std::string& path);

/// The same for every field of the file, those included that a machine of the library has no place for. What
/// the library refuses to load is refused here too.
MachineRecord read_record(const std::string& path);
/// @param source  where the record comes from, for a message about what stands in it
void write_record(const MachineRecord& record, const std::string& path, const std::string& source);

/// Any bytes, in the same careful way.
void write_bytes(const std::string& bytes, const std::string& path);

}  // namespace tool

#endif
