// The words of a machine definition as text.
#include "tool/machine/machine_words.h"

namespace tool {

const Keys kMachineKeys = {"$schema", "format", "units", "type",      "mode",           "discipline",
                           "axes",    "head",   "tool",  "work_zero", "loading_vector", "trees"};
const Keys kAxesKeys = {"x", "y", "z", "primary", "secondary"};
const Keys kAxisKeys = {"letter", "location", "motion", "point", "direction", "limits"};
const Keys kHeadKeys = {"tilt",      "turn",      "lengths", "side_offset", "tip",
                        "direction", "reference", "offset",  "flags",       "padding"};
const Keys kToolKeys = {"mount", "length", "point"};
const Keys kTreesKeys = {"tool",      "part",         "nodes",          "tool_root",
                         "part_root", "primary_node", "secondary_node", "tool_node"};
const Keys kPlainNodeKeys = {"kind", "id", "parent", "flags", "value", "translation", "rotation", "children"};
const Keys kAxisNodeKeys = {"kind",  "id",          "axis",     "parent",  "flags",
                            "value", "translation", "rotation", "children"};
const Keys kToolNodeKeys = {"kind",  "id",    "tool_point",  "head",     "parent",
                            "flags", "value", "translation", "rotation", "children"};
const Keys kToolNodeHeadKeys = {"tilt",      "turn",      "lengths", "side_offset", "tip",
                                "direction", "reference", "flags",   "padding"};

const std::vector<Word> kUnits = {{"mm", 1}, {"inch", 0}};
const std::vector<Word> kTypes = {{"table-table", MC_TT}, {"head-table", MC_HT}, {"head-head", MC_HH}};
const std::vector<Word> kLetters = {{"A", AXIS_A}, {"B", AXIS_B}, {"C", AXIS_C},
                                    {"X", AXIS_X}, {"Y", AXIS_Y}, {"Z", AXIS_Z}};
const std::vector<Word> kLocations = {{"head", HEAD}, {"table", TABLE}};
const std::vector<Word> kMotions = {{"rotary", ROTARY}, {"linear", LINEAR}};
const std::vector<Word> kKinds = {{"plain", kPlainNode}, {"axis", kAxisNode}, {"tool", kToolNode}};
const std::vector<Word> kSlots = {
    {"x", kX}, {"y", kY}, {"z", kZ}, {"primary", kPrimary}, {"secondary", kSecondary}};

std::string_view word_for(const std::vector<Word>& words, int number) {
  for (const Word& word : words)
    if (word.number == number) return word.text;
  return {};
}

int letter_of_slot(int slot) {
  return slot == kX ? AXIS_X : slot == kY ? AXIS_Y : slot == kZ ? AXIS_Z : AXIS_TYPE_INVALID_LOWEST;
}

int motion_of_letter(int letter) {
  if (letter >= AXIS_A && letter <= AXIS_C) return ROTARY;
  return letter >= AXIS_X && letter <= AXIS_Z ? LINEAR : AXIS_MODE_INVALID_LOWEST;
}

Point direction_of_letter(int letter) {
  switch (letter) {
    case AXIS_A:
    case AXIS_X:
      return CUtility::pt_x;
    case AXIS_B:
    case AXIS_Y:
      return CUtility::pt_y;
    case AXIS_C:
    case AXIS_Z:
      return CUtility::pt_z;
    default:
      return CUtility::pt_o;
  }
}

}  // namespace tool
