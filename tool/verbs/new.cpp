// k5ax new: a commented machine definition to start from.
#include "tool/verbs/new.h"

#include "tool/errors.h"
#include "tool/machine/machine_file.h"
#include "tool/machine/machine_reader.h"
#include "tool/machine/starting_point.h"
#include "tool/verb.h"

#include <filesystem>
#include <memory>
#include <ostream>
#include <string>

namespace tool {
namespace {

struct Options {
  std::string type;
  std::string path;  // empty: standard output
  bool replace = false;
};

void start(const Options& options, Context& context) {
  const std::string text(starting_point(options.type));
  if (options.path.empty() || options.path == "-") {
    context.out << text;
    return;
  }
  require_machine_ending("-o", options.path);
  // Not by what the path leads to: a link that leads nowhere is somebody's too.
  std::error_code ignored;
  const std::filesystem::path path = std::filesystem::u8path(options.path);
  const bool is_there = std::filesystem::exists(std::filesystem::symlink_status(path, ignored));
  if (is_there && !options.replace)
    throw InputError(options.path, "", "is there already", "give another name, or --force to replace it");
  if (is_text_file(options.path))
    write_bytes(text, options.path);
  else
    write_record(read_machine_text(text, options.type), options.path, options.type);
  context.err << "wrote " << printable(options.path) << "; put in your machine's figures, then: k5ax check "
              << printable(options.path) << "\n";
}

}  // namespace

void add_new(CLI::App& app, Context& context) {
  Verb verb(app, "new", "Start a machine definition");
  auto options = std::make_shared<Options>();
  verb.add_argument("TYPE", options->type, {"table-table", "head-table", "head-head"},
                    "table-table, head-table or head-head");
  verb.add_option("-o,--output", "FILE", options->path,
                  "Write to this file, .json or .k5m, not to standard output");
  verb.add_flag("--force", options->replace, "Replace the file if it is there");
  verb.set_examples({"k5ax new table-table", "k5ax new head-head -o my_machine.json"});

  verb.set_work([options, &context] { start(*options, context); });
}

}  // namespace tool
