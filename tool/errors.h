// What can go wrong with what a person gave the tool, as one line that says where, what and what to do.
#ifndef K5AX_TOOL_ERRORS_H
#define K5AX_TOOL_ERRORS_H

#include <exception>
#include <stdexcept>
#include <string>

namespace tool {

/// The tool's exit codes; scripts build on them.
enum ExitCode : int {
  kDone = 0,      ///< done, or the answer is yes
  kNo = 1,        ///< done, and the answer is no
  kUsage = 2,     ///< the command line cannot be understood
  kBadInput = 3,  ///< a file or a value in it cannot be used, or a file cannot be written
};

/// A file, or something in it, that cannot be used. Ends the tool with `kBadInput`.
struct InputError : std::runtime_error {
  /// One line, "file: place: value; remedy". Parts may be empty and are left out then.
  ///
  /// @param file    as the person named it, "-" for standard input
  /// @param place   where in the file: "12:5", "/axes/0/limits", "row 7, column a"; several as they read best
  /// @param value   what stands there and why it cannot be used
  /// @param remedy  what to do, an imperative
  InputError(const std::string& file, const std::string& place, const std::string& value,
             const std::string& remedy);
};

/// A command line that cannot be understood. Ends the tool with `kUsage`.
struct UsageError : std::runtime_error {
  /// One line: what was given and why it does not fit, and what to give instead.
  UsageError(const std::string& value, const std::string& remedy);
};

/// The text with every control character written as an escape (\n, \t, \x1b), so that a message stays on one
/// line and no file name or file content reaches the terminal as a command to it.
std::string printable(const std::string& text);

/// What an error of the library's streams says after it has named the file, which an `InputError` begins with
/// anyway.
std::string reason_of(const std::exception& error, const std::string& path);

}  // namespace tool

#endif
