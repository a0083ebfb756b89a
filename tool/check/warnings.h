// What looks wrong about a machine and is no matter of validity.
#ifndef K5AX_TOOL_CHECK_WARNINGS_H
#define K5AX_TOOL_CHECK_WARNINGS_H

#include "tool/check/finding.h"

#include <vector>

#include <k5ax/machdef.h>

namespace tool {

/// What the axes by themselves and beside each other make one wonder about.
std::vector<Finding> axis_warnings(const md::CMachDef& machine);

/// What the head, work zero and loading vector make one wonder about.
std::vector<Finding> head_warnings(const md::CMachDef& machine);

/// What the trees hold that does not fit the axes, or that the update passes over.
std::vector<Finding> tree_warnings(md::CMachDef& machine);

/// Moves a valid machine and looks where its tool and its part get to: the trees and the axes must agree. The
/// machine's pose is as before when this returns. Empty where something is missing for it, which the others
/// say.
std::vector<Finding> motion_warnings(md::CMachDef& machine);

/// All of these, in this order.
std::vector<Finding> all_warnings(md::CMachDef& machine);

}  // namespace tool

#endif
