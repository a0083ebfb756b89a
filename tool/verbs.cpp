// All verbs of the tool. One line each to include it and one to add it.
#include "tool/verbs.h"

#include "tool/verb.h"
#include "tool/verbs/check.h"
#include "tool/verbs/convert.h"
#include "tool/verbs/diff.h"
#include "tool/verbs/info.h"
#include "tool/verbs/new.h"
#include "tool/verbs/path.h"
#include "tool/verbs/pose.h"
#include "tool/verbs/wrap.h"

#include <CLI/CLI.hpp>

namespace tool {

void add_verbs(CLI::App& app, Context& context) {
  set_help_format(app);
  app.set_version_flag("--version", "k5ax " K5AX_TOOL_VERSION, "Print the version and end");
  app.set_help_flag("-h,--help", "Print this help and end");
  app.require_subcommand(1);

  // In the order in which a person meets them.
  add_new(app, context);
  add_info(app, context);
  add_check(app, context);
  add_pose(app, context);
  add_diff(app, context);
  add_convert(app, context);
  add_path(app, context);
  add_wrap(app, context);

  app.footer(
      "k5ax VERB --help says more about a verb.\n"
      "Exit codes: 0 done, 1 the answer is no, 2 the command line is wrong,\n"
      "3 an input cannot be used or an output cannot be written.");
}

}  // namespace tool
