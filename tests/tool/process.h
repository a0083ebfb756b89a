// Starting the tool as a person or a script does, and what came of it.
#ifndef K5AX_TESTS_TOOL_PROCESS_H
#define K5AX_TESTS_TOOL_PROCESS_H

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

namespace tool_test {

/// What a process left behind.
struct Ended {
  int exit_code = -1;  ///< or 128 plus the signal that ended it, as a shell says it
  std::string out;     ///< standard output; with a terminal, standard output and error
  std::string err;     ///< standard error
  long peak_kib = 0;   ///< the most memory it held at a time, in KiB
};

/// For the message of a failing test.
std::ostream& operator<<(std::ostream& stream, const Ended& ended);

/// How to start it.
struct How {
  std::string input = {};                          ///< its standard input
  std::string folder = {};                         ///< its working folder; empty for the test's own
  std::map<std::string, std::string> variables{};  ///< set in its environment
  std::string output_to = {};                      ///< a file or device for standard output, as in /dev/full
  bool terminal = false;                           ///< a pseudo-terminal for output and error
  bool reader_gone = false;                        ///< nobody reads its standard output
};

/// Starts the built tool with the arguments (its own name not among them) and waits for its end. A process
/// that runs for a minute is ended and fails the test.
Ended run_tool(const std::vector<std::string>& arguments, const How& how = {});

/// Starts a shell with one command line, in which the name k5ax is the built tool.
Ended run_shell(const std::string& command_line, const How& how = {});

/// The lines of a text.
std::vector<std::string> lines_of(const std::string& text);

/// A file of the source tree, "examples/machines/head_head_fork.k5m".
std::string in_tree(const std::string& path);

/// The whole content of a file; fails the test when it cannot be read.
std::string read_file(const std::string& path);

/// Writes a whole file; fails the test when it cannot.
void write_file(const std::string& path, const std::string& content);

/// A new empty folder below the test's own, removed when the test program ends; the name is for people.
std::string make_folder(const std::string& name);

/// Expects `text` to be what tests/tool/golden/NAME holds, and shows the first line that differs. Golden
/// files are checked by hand or by another computation before they are committed; nothing here writes one.
void expect_golden(const std::string& name, const std::string& text);

}  // namespace tool_test

#endif
