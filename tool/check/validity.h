// Why a machine is not valid.
#ifndef K5AX_TOOL_CHECK_VALIDITY_H
#define K5AX_TOOL_CHECK_VALIDITY_H

#include "tool/check/finding.h"

#include <vector>

#include <k5ax/machdef.h>

namespace tool {

/// Every rule of `CMachDef::is_valid` that the machine breaks, with the value that breaks it; empty exactly
/// when the machine is valid. The library stops at the first; this goes on, so that all can be put right at
/// once. What cannot be judged because of something named already is left out.
std::vector<Finding> reasons_not_valid(const md::CMachDef& machine);

}  // namespace tool

#endif
