// Commented definitions to start from.
#ifndef K5AX_TOOL_MACHINE_STARTING_POINT_H
#define K5AX_TOOL_MACHINE_STARTING_POINT_H

#include <string_view>

namespace tool {

/// The text of a whole machine of the type, "table-table", "head-table" or "head-head", with realistic
/// dimensions in millimetres; empty for another word. It reads as a machine that the library finds valid.
std::string_view starting_point(std::string_view type);

}  // namespace tool

#endif
