// k5ax info: a machine on one screen.
#ifndef K5AX_TOOL_VERBS_INFO_H
#define K5AX_TOOL_VERBS_INFO_H

#include "tool/context.h"

namespace CLI {
class App;
}  // namespace CLI

namespace tool {

/// Adds the verb.
void add_info(CLI::App& app, Context& context);

}  // namespace tool

#endif
