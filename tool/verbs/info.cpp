// k5ax info: a machine on one screen.
#include "tool/verbs/info.h"

#include "tool/errors.h"
#include "tool/verb.h"

#include <k5ax/machdef.h>

#include <memory>
#include <ostream>
#include <string>

namespace tool {

void add_info(CLI::App& app, Context& context) {
  CLI::App* verb = app.add_subcommand("info", "Show a machine on one screen");
  auto path = std::make_shared<std::string>();
  add_file(*verb, "MACHINE", *path, "The machine definition, .k5m or .json");
  add_json_flag(*verb, context);
  set_examples(*verb, {"k5ax info machine.k5m", "k5ax info machine.json --json"});

  verb->callback([path, &context] {
    md::CMachDef machine;
    if (MachdefLoad(&machine, path->c_str()) == 0) {
      throw InputError(*path, "", "cannot be read as a machine", "give a file that holds one");
    }
    context.out << "valid: " << (machine.is_valid() ? "yes" : "no") << "\n";
  });
}

}  // namespace tool
