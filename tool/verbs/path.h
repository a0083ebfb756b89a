// k5ax path: a whole tool path between part and machine coordinates.
#ifndef K5AX_TOOL_VERBS_PATH_H
#define K5AX_TOOL_VERBS_PATH_H

#include "tool/context.h"

namespace CLI {
class App;
}  // namespace CLI

namespace tool {

/// Adds the verb.
void add_path(CLI::App& app, Context& context);

}  // namespace tool

#endif
