// k5ax convert: a machine definition in another form or unit.
#ifndef K5AX_TOOL_VERBS_CONVERT_H
#define K5AX_TOOL_VERBS_CONVERT_H

#include "tool/context.h"

namespace CLI {
class App;
}  // namespace CLI

namespace tool {

/// Adds the verb.
void add_convert(CLI::App& app, Context& context);

}  // namespace tool

#endif
