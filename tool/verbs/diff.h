// k5ax diff: what differs between two machine definitions.
#ifndef K5AX_TOOL_VERBS_DIFF_H
#define K5AX_TOOL_VERBS_DIFF_H

#include "tool/context.h"

namespace CLI {
class App;
}  // namespace CLI

namespace tool {

/// Adds the verb.
void add_diff(CLI::App& app, Context& context);

}  // namespace tool

#endif
