// What a verb works with: the streams, how to print, and what the process will end with.
#ifndef K5AX_TOOL_CONTEXT_H
#define K5AX_TOOL_CONTEXT_H

#include <iosfwd>

namespace tool {

/// Borrowed streams and the choices of the command line; one for the whole run, and alive as long as the
/// CLI::App that the verbs were added to.
struct Context {
  std::istream& in;
  std::ostream& out;  ///< what was asked for, and nothing else
  std::ostream& err;  ///< messages, progress, summaries

  bool json = false;      ///< --json: print for programs
  bool colour = false;    ///< `out` is a terminal that wants colours
  bool progress = false;  ///< `err` is a terminal: progress may be drawn there
  int exit_code = 0;      ///< a verb sets `kNo` when the answer is no
};

}  // namespace tool

#endif
