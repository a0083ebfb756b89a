// What the verbs' command lines have in common, so that all of them read alike.
#include "tool/verb.h"

#include <CLI/CLI.hpp>

#include <memory>
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

CLI::Option& add_shown(CLI::App& app, const std::string& names, const std::string& shown, std::string& value,
                       const std::string& description) {
  return *app.add_option(names, value, description)->type_name(shown)->option_text(shown);
}

}  // namespace

Verb::Verb(CLI::App& app, const std::string& name, const std::string& description)
    : m_app(*app.add_subcommand(name, description)) {}

void Verb::say_more(const std::string& lines) { m_app.description(m_app.get_description() + ".\n" + lines); }

void Verb::add_argument(const std::string& name, std::string& value, const std::string& description) {
  m_app.add_option(name, value, description)->required()->type_name("FILE")->option_text(" ");
}

void Verb::add_argument(const std::string& name, std::string& value, const std::vector<std::string>& words,
                        const std::string& description) {
  m_app.add_option(name, value, description)->required()->check(CLI::IsMember(words))->option_text(" ");
}

void Verb::add_option(const std::string& names, const std::string& shown, std::string& value,
                      const std::string& description) {
  add_shown(m_app, names, shown, value, description);
}

void Verb::add_option(const std::string& names, const std::string& shown, std::string& value,
                      const std::vector<std::string>& words, const std::string& description) {
  add_shown(m_app, names, shown, value, description).check(CLI::IsMember(words));
}

void Verb::add_required_option(const std::string& names, const std::string& shown, std::string& value,
                               const std::vector<std::string>& words, const std::string& description) {
  add_shown(m_app, names, shown, value, description).check(CLI::IsMember(words))->required();
}

void Verb::add_flag(const std::string& names, bool& value, const std::string& description) {
  m_app.add_flag(names, value, description);
}

void Verb::add_json_flag(Context& context) { add_flag("--json", context.json, "Print JSON, for programs"); }

void Verb::set_examples(std::initializer_list<const char*> command_lines) {
  std::string text = command_lines.size() == 1 ? "Example:" : "Examples:";
  for (const char* line : command_lines) text += std::string("\n  ") + line;
  m_app.footer(text);
}

void Verb::set_work(const std::function<void()>& work) { m_app.callback(work); }

void set_help_format(CLI::App& app) { app.formatter(std::make_shared<HelpFormatter>()); }

}  // namespace tool
