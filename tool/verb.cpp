// What the verbs' command lines have in common, so that all of them read alike.
#include "tool/verb.h"

namespace tool {

void add_json_flag(CLI::App& verb, Context& context) {
  verb.add_flag("--json", context.json, "Print JSON, for programs");
}

CLI::Option* add_file(CLI::App& verb, const std::string& name, std::string& path,
                      const std::string& description) {
  return verb.add_option(name, path, description)->required()->type_name("FILE")->option_text(" ");
}

void set_examples(CLI::App& verb, std::initializer_list<const char*> command_lines) {
  std::string text = command_lines.size() == 1 ? "Example:" : "Examples:";
  for (const char* line : command_lines) text += std::string("\n  ") + line;
  verb.footer(text);
}

}  // namespace tool
