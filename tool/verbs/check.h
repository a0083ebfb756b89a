// k5ax check: is the machine valid, why not, and what looks wrong.
#ifndef K5AX_TOOL_VERBS_CHECK_H
#define K5AX_TOOL_VERBS_CHECK_H

#include "tool/context.h"

namespace CLI {
class App;
}  // namespace CLI

namespace tool {

/// Adds the verb.
void add_check(CLI::App& app, Context& context);

}  // namespace tool

#endif
