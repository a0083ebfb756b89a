// k5ax new: a commented machine definition to start from.
#ifndef K5AX_TOOL_VERBS_NEW_H
#define K5AX_TOOL_VERBS_NEW_H

#include "tool/context.h"

namespace CLI {
class App;
}  // namespace CLI

namespace tool {

/// Adds the verb.
void add_new(CLI::App& app, Context& context);

}  // namespace tool

#endif
