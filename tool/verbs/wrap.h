// k5ax wrap: a tool path about the rotary axis, as axial position, radius and rotary value.
#ifndef K5AX_TOOL_VERBS_WRAP_H
#define K5AX_TOOL_VERBS_WRAP_H

#include "tool/context.h"

namespace CLI {
class App;
}  // namespace CLI

namespace tool {

/// Adds the verb.
void add_wrap(CLI::App& app, Context& context);

}  // namespace tool

#endif
