// What the tool asks of the operating system beyond the standard library. There is one file per system.
//
// Text is UTF-8 on every one of them: arguments, file names, and what is printed.
#ifndef K5AX_TOOL_SYSTEM_H
#define K5AX_TOOL_SYSTEM_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace tool {

/// Called once, before anything is read or written: the standard streams carry bytes as they stand.
void prepare_process();

/// What main() was called with, the program's name first.
std::vector<std::string> arguments_of(int argc, char** argv);

enum class StandardStream : int { input = 0, output = 1, error = 2 };

/// True for a terminal that understands escape sequences.
bool is_terminal(StandardStream stream);

/// A stream over the file's bytes; null with errno set when it cannot be opened.
std::FILE* open_stream(const std::string& path);

/// The number of the opened file; -1 with errno set.
int open_file(const std::string& path);
void close_file(int file);

/// How many bytes it has; 0 when nobody knows, as for a pipe.
std::uint64_t size_of_file(int file);

/// Reads what is there, at most `size` bytes, and waits for it where it has to. 0 is the end; -1 with errno
/// set.
std::ptrdiff_t read_file(int file, char* data, std::size_t size);

}  // namespace tool

#endif
