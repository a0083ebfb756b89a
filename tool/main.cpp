// k5ax, the command-line tool: reads the command line, runs one verb, and turns what went wrong into one line
// and an exit code. The only place where it does.
#include "tool/context.h"
#include "tool/errors.h"
#include "tool/verbs.h"

#include <CLI/CLI.hpp>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <iostream>
#include <new>
#include <string>

#include <unistd.h>

namespace {

// no-color.org: any text that is not empty switches colours off.
bool wants_colour() {
  const char* no_colour = std::getenv("NO_COLOR");
  const char* terminal = std::getenv("TERM");
  return isatty(STDOUT_FILENO) == 1 && (no_colour == nullptr || *no_colour == '\0') && terminal != nullptr &&
         std::strcmp(terminal, "dumb") != 0;
}

int complain(tool::Context& context, const std::string& message, int exit_code) {
  context.out.flush();
  context.err << "k5ax: " << tool::printable(message) << std::endl;
  return exit_code;
}

// The parser's own message, with the verb that it is about and where to read on.
std::string usage_message(const CLI::App& app, const CLI::ParseError& error) {
  std::string command;
  for (const CLI::App* verb : app.get_subcommands()) command += " " + verb->get_name();
  std::string what = error.what();
  while (!what.empty() && (what.back() == '.' || what.back() == '\n')) what.pop_back();
  return (command.empty() ? "" : command.substr(1) + ": ") + what + "; see k5ax" + command + " --help";
}

int run(int argc, char** argv, tool::Context& context) {
  CLI::App app("k5ax: looks at, checks, converts and works with definitions of five-axis machines", "k5ax");
  tool::add_verbs(app, context);

  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& wish) {  // --help and --version
    return app.exit(wish, context.out, context.err);
  } catch (const CLI::ParseError& error) {
    return complain(context, usage_message(app, error), tool::kUsage);
  } catch (const tool::UsageError& error) {
    return complain(context, error.what(), tool::kUsage);
  } catch (const tool::InputError& error) {
    return complain(context, error.what(), tool::kBadInput);
  } catch (const std::bad_alloc&) {
    return complain(context, "out of memory; give it a smaller file", tool::kBadInput);
  } catch (const std::exception& error) {
    return complain(context, error.what(), tool::kBadInput);
  }
  return context.exit_code;
}

}  // namespace

int main(int argc, char** argv) {
  // A reader that has seen enough closes the pipe, and the tool ends as every filter does, without a word. A
  // parent may have left the signal ignored.
  std::signal(SIGPIPE, SIG_DFL);
  std::ios::sync_with_stdio(false);
  std::cin.tie(nullptr);

  tool::Context context{std::cin, std::cout, std::cerr};
  context.colour = wants_colour();
  context.progress = isatty(STDERR_FILENO) == 1;

  const int exit_code = run(argc, argv, context);
  errno = 0;
  std::cout.flush();
  if (!std::cout) {
    const std::string reason = errno != 0 ? std::strerror(errno) : "write error";
    return complain(context, "standard output: " + reason + "; make room or write elsewhere",
                    tool::kBadInput);
  }
  return exit_code;
}
