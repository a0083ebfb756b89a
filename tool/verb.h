// What the verbs' command lines have in common, so that all of them read alike.
#ifndef K5AX_TOOL_VERB_H
#define K5AX_TOOL_VERB_H

#include "tool/context.h"

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

namespace CLI {
class App;
}  // namespace CLI

namespace tool {

/// A verb of the app and what its command line may hold. The app and every value named here must outlive
/// parsing. (CLI11 takes seconds to compile, so the verbs do not see it.)
class Verb {
 public:
  /// `description` is one line, which stands for the verb in the list of verbs.
  Verb(CLI::App& app, const std::string& name, const std::string& description);

  /// Further lines of the verb's own help, of at most 80 columns.
  void say_more(const std::string& lines);

  /// A required argument, shown as NAME in the help.
  void add_argument(const std::string& name, std::string& value, const std::string& description);

  /// The same for one of a few words.
  void add_argument(const std::string& name, std::string& value, const std::vector<std::string>& words,
                    const std::string& description);

  /// An option with a value: "-o,--output" with "FILE".
  void add_option(const std::string& names, const std::string& shown, std::string& value,
                  const std::string& description);

  /// The same for one of a few words.
  void add_option(const std::string& names, const std::string& shown, std::string& value,
                  const std::vector<std::string>& words, const std::string& description);

  /// The same for one that has to be given.
  void add_required_option(const std::string& names, const std::string& shown, std::string& value,
                           const std::vector<std::string>& words, const std::string& description);

  void add_flag(const std::string& names, bool& value, const std::string& description);

  /// --json, kept in `context.json`.
  void add_json_flag(Context& context);

  /// The examples at the end of the help: whole command lines, "k5ax info machine.k5m". A test runs each of
  /// them, in a folder with machine.json, machine.k5m, path.csv and cartesian.csv.
  void set_examples(std::initializer_list<const char*> command_lines);

  /// What the verb does, once the command line has been understood.
  void set_work(const std::function<void()>& work);

 private:
  CLI::App& m_app;
};

/// Gives the app help of at most 80 columns. To be called before its verbs are added.
void set_help_format(CLI::App& app);

}  // namespace tool

#endif
