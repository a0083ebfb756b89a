// The word that somebody probably meant.
#ifndef K5AX_TOOL_MACHINE_NEAREST_WORD_H
#define K5AX_TOOL_MACHINE_NEAREST_WORD_H

#include <string_view>
#include <vector>

namespace tool {

/// The known word that the fewest changes of a letter lead to (one left out, added, replaced, or two
/// neighbours swapped; capitals count as small letters). Empty when none is near: more than a third of the
/// letters would have to change.
std::string_view nearest_word(std::string_view word, const std::vector<std::string_view>& known);

}  // namespace tool

#endif
