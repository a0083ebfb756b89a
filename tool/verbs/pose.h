// k5ax pose: where every node of a machine goes.
#ifndef K5AX_TOOL_VERBS_POSE_H
#define K5AX_TOOL_VERBS_POSE_H

#include "tool/context.h"

namespace CLI {
class App;
}  // namespace CLI

namespace tool {

/// Adds the verb.
void add_pose(CLI::App& app, Context& context);

}  // namespace tool

#endif
