// The words of a machine definition as text: the keys of each object, and the names for numbers of the file
// format. The reader knows no others, the writer writes no others, and machine.schema.json lists the same.
#ifndef K5AX_TOOL_MACHINE_MACHINE_WORDS_H
#define K5AX_TOOL_MACHINE_MACHINE_WORDS_H

#include "tool/machine/json_view.h"

#include <string>
#include <string_view>
#include <vector>

namespace tool {

using Keys = std::vector<std::string_view>;

/// The format's number, which a file may carry; a change that an older tool would misread raises it.
constexpr int kTextFormat = 1;

extern const Keys kMachineKeys;
extern const Keys kAxesKeys;  ///< the places for axes
extern const Keys kAxisKeys;
extern const Keys kHeadKeys;
extern const Keys kToolKeys;  ///< the tool for trees that are derived
extern const Keys kTreesKeys;
extern const Keys kPlainNodeKeys;
extern const Keys kAxisNodeKeys;
extern const Keys kToolNodeKeys;
extern const Keys kToolNodeHeadKeys;

extern const std::vector<Word> kUnits;  ///< 1 millimetres, 0 inches
extern const std::vector<Word> kTypes;
extern const std::vector<Word> kLetters;
extern const std::vector<Word> kLocations;
extern const std::vector<Word> kMotions;
extern const std::vector<Word> kKinds;
extern const std::vector<Word> kSlots;  ///< x, y, z, primary, secondary

/// The word for the number; empty where there is none.
std::string_view word_for(const std::vector<Word>& words, int number);

/// The letter that an axis has in the place for it: X, Y, Z; -1 for a rotary axis, which may have any.
int letter_of_slot(int slot);
/// The motion that goes with the letter: A, B, C turn; X, Y, Z slide; -1 for no letter.
int motion_of_letter(int letter);
/// The positive direction of the letter; zero for no letter.
Point direction_of_letter(int letter);

}  // namespace tool

#endif
