// The least that converting a tool path costs: reading its numbers and writing them.
#ifndef K5AX_BENCHMARKS_PATH_PLAIN_COPY_H
#define K5AX_BENCHMARKS_PATH_PLAIN_COPY_H

namespace bench {

/// Reads a table of six numbers a row from the file, parses all six, and writes every row to standard output,
/// its first three numbers printed and the others copied, which is what the conversion of a path has to do.
/// The header is copied. Nothing is computed and nothing is checked that could be left unchecked.
///
/// @return the exit code of the process: 0, or 1 when something could not be read or written
int plain_copy(const char* path);

}  // namespace bench

#endif
