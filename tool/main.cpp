// k5ax, the command-line tool: reads the command line, runs one verb, and turns what went wrong into one line
// and an exit code. The only place where it does.
#include "tool/context.h"
#include "tool/errors.h"
#include "tool/machine/nearest_word.h"
#include "tool/system.h"
#include "tool/verbs.h"

#include <CLI/CLI.hpp>

#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <string_view>
#include <vector>

namespace {

// no-color.org: any text that is not empty switches colours off.
bool wants_colour() {
  const char* no_colour = std::getenv("NO_COLOR");
  const char* terminal = std::getenv("TERM");
  return tool::is_terminal(tool::StandardStream::output) && (no_colour == nullptr || *no_colour == '\0') &&
         terminal != nullptr && std::strcmp(terminal, "dumb") != 0;
}

int complain(tool::Context& context, const std::string& message, int exit_code) {
  context.out.flush();
  context.err << "k5ax: " << tool::printable(message) << std::endl;
  return exit_code;
}

// The parser takes -5 for a value and -.5 for an option; a person means a number by both.
std::vector<std::string> readable(const std::vector<std::string>& given) {
  std::vector<std::string> arguments;
  for (std::size_t i = given.size() - 1; i > 0; --i) {  // the parser wants the last one first
    std::string argument = given[i];
    if (argument.size() > 2 && argument[0] == '-' && argument[1] == '.' &&
        std::isdigit(static_cast<unsigned char>(argument[2])) != 0)
      argument.insert(1, "0");
    arguments.push_back(argument);
  }
  return arguments;
}

std::string suggestion(const std::string& word, const std::vector<std::string>& known) {
  const std::vector<std::string_view> views(known.begin(), known.end());
  const std::string_view nearest = tool::nearest_word(word, views);
  return nearest.empty() ? "" : " (did you mean " + std::string(nearest) + "?)";
}

// The word that the parser could not place, and the one that may have been meant: a verb where there is none
// yet, else one of the verb's options.
std::string misplaced_word(const CLI::App& app, const std::vector<std::string>& arguments) {
  if (app.get_subcommands().empty()) {
    if (arguments.empty()) return "give a verb";
    std::vector<std::string> verbs;
    for (const CLI::App* verb : app.get_subcommands({})) verbs.push_back(verb->get_name());
    const std::string& word = arguments.back();
    return (word[0] == '-' ? "no option \"" : "no verb \"") + word + "\"" + suggestion(word, verbs);
  }

  const CLI::App* const verb = app.get_subcommands().front();
  std::vector<std::string> options;
  for (const CLI::Option* option : verb->get_options()) {
    for (const std::string& name : option->get_lnames()) options.push_back("--" + name);
  }
  for (const std::string& word : verb->remaining()) {
    if (word.size() < 2 || word[0] != '-') return "\"" + word + "\" is one argument too many";
    return "no option \"" + word + "\"" + suggestion(word.substr(0, word.find('=')), options);
  }
  return {};
}

// The parser's own message, with the verb that it is about and where to read on.
std::string usage_message(const CLI::App& app, const std::vector<std::string>& arguments,
                          const CLI::ParseError& error) {
  std::string command;
  for (const CLI::App* verb : app.get_subcommands()) command += " " + verb->get_name();
  std::string what = error.what();
  const bool unplaced =
      app.get_subcommands().empty() || error.get_exit_code() == static_cast<int>(CLI::ExitCodes::ExtrasError);
  const std::string misplaced = unplaced ? misplaced_word(app, arguments) : std::string();
  if (!misplaced.empty()) what = misplaced;
  while (!what.empty() && (what.back() == '.' || what.back() == '\n')) what.pop_back();
  return (command.empty() ? "" : command.substr(1) + ": ") + what + "; see k5ax" + command + " --help";
}

int run(const std::vector<std::string>& given, tool::Context& context) {
  CLI::App app("k5ax looks at, checks and converts definitions of five-axis machines", "k5ax");
  app.allow_windows_style_options(false);  // the same arguments on every system
  tool::add_verbs(app, context);

  const std::vector<std::string> arguments = readable(given);
  try {
    std::vector<std::string> to_parse = arguments;
    app.parse(to_parse);
  } catch (const CLI::Success& wish) {  // --help and --version
    return app.exit(wish, context.out, context.err);
  } catch (const CLI::ParseError& error) {
    return complain(context, usage_message(app, arguments, error), tool::kUsage);
  } catch (const tool::UsageError& error) {
    return complain(context, error.what(), tool::kUsage);
  } catch (const tool::InputError& error) {
    return complain(context, error.what(), tool::kBadInput);
  } catch (const std::ios_base::failure&) {
    throw;  // standard output's, see main
  } catch (const std::bad_alloc&) {
    return complain(context, "out of memory; give it a smaller file", tool::kBadInput);
  } catch (const std::exception& error) {
    return complain(context, error.what(), tool::kBadInput);
  }
  return context.exit_code;
}

}  // namespace

int main(int argc, char** argv) {
  tool::prepare_process();
  std::ios::sync_with_stdio(false);
  std::cin.tie(nullptr);

  tool::Context context{std::cin, std::cout, std::cerr};
  context.colour = wants_colour();
  context.progress = tool::is_terminal(tool::StandardStream::error);

  // A write that fails is met where it fails, while the system's reason is known.
  std::cout.exceptions(std::ios::badbit);
  try {
    const int exit_code = run(tool::arguments_of(argc, argv), context);
    errno = 0;
    std::cout.flush();
    return exit_code;
  } catch (const std::ios_base::failure&) {
    const std::string reason = errno != 0 ? std::strerror(errno) : "write error";
    std::cout.exceptions(std::ios::goodbit);
    return complain(context, "standard output: " + reason + "; make room or write elsewhere",
                    tool::kBadInput);
  }
}
