// What the verbs' command lines have in common, so that all of them read alike.
#ifndef K5AX_TOOL_VERB_H
#define K5AX_TOOL_VERB_H

#include "tool/context.h"

#include <CLI/CLI.hpp>

#include <initializer_list>
#include <memory>
#include <string>

namespace tool {

/// Help of at most 80 columns, in which a verb's first line stands for it in the list of verbs. Give it to
/// the app before its verbs are added.
std::shared_ptr<CLI::Formatter> help_formatter();

/// --json, kept in `context.json`.
void add_json_flag(CLI::App& verb, Context& context);

/// A required positional file name, shown as NAME in the help.
CLI::Option* add_file(CLI::App& verb, const std::string& name, std::string& path,
                      const std::string& description);

/// The examples at the end of the verb's help: whole command lines, "k5ax info machine.k5m". A test runs each
/// of them, in a folder with machine.json, machine.k5m, path.csv and cartesian.csv.
void set_examples(CLI::App& verb, std::initializer_list<const char*> command_lines);

}  // namespace tool

#endif
