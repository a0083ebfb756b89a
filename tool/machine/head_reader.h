// An angled head from its text.
#ifndef K5AX_TOOL_MACHINE_HEAD_READER_H
#define K5AX_TOOL_MACHINE_HEAD_READER_H

#include "tool/machine/json_view.h"
#include "tool/machine/machine_record.h"
#include "tool/machine/machine_words.h"

namespace tool {

/// What is left out follows from the angles and the lengths, and those are zero when left out.
/// @param known  the keys that a head has here
HeadRecord read_head(const JsonView& view, const Keys& known);

}  // namespace tool

#endif
