// What the verbs' command lines have in common, so that all of them read alike.
#include "tool/verb.h"

#include <sstream>

namespace tool {
namespace {

constexpr std::size_t kScreen = 80;  // columns
constexpr std::size_t kColumn = 30;  // where descriptions begin

std::string wrapped(const std::string& text, std::size_t width) {
  std::istringstream words(text);
  std::string lines;
  std::size_t used = 0;
  for (std::string word; words >> word; used += word.size()) {
    if (used > 0 && used + 1 + word.size() > width) {
      lines += "\n";
      used = 0;
    } else if (used > 0) {
      lines += " ";
      ++used;
    }
    lines += word;
  }
  return lines;
}

class HelpFormatter : public CLI::Formatter {
 public:
  HelpFormatter() { column_width(kColumn); }

  std::string make_option_desc(const CLI::Option* option) const override {
    return wrapped(CLI::Formatter::make_option_desc(option), kScreen - kColumn);
  }
  std::string make_subcommand(const CLI::App* verb) const override {
    const std::string description = verb->get_description();
    std::stringstream out;
    CLI::detail::format_help(out, verb->get_name(),
                             wrapped(description.substr(0, description.find('\n')), kScreen - kColumn),
                             kColumn);
    return out.str();
  }
};

}  // namespace

std::shared_ptr<CLI::Formatter> help_formatter() { return std::make_shared<HelpFormatter>(); }

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
