// All verbs of the tool.
#ifndef K5AX_TOOL_VERBS_H
#define K5AX_TOOL_VERBS_H

#include "tool/context.h"

namespace CLI {
class App;
}  // namespace CLI

namespace tool {

/// Gives the app its verbs and its own options. The app and the context must outlive parsing, in which the
/// verb's work is done.
void add_verbs(CLI::App& app, Context& context);

}  // namespace tool

#endif
