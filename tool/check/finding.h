// What a check has to say about a machine.
#ifndef K5AX_TOOL_CHECK_FINDING_H
#define K5AX_TOOL_CHECK_FINDING_H

#include <string>

namespace tool {

/// One thing that is wrong or looks wrong.
struct Finding {
  std::string rule;    ///< a short name that stays the same, for programs: "axis-direction"
  std::string place;   ///< what it is about: "primary axis A"
  std::string value;   ///< what stands there and why it will not do
  std::string remedy;  ///< what to do about it, an imperative

  /// "place: value; remedy", a line.
  std::string line() const { return place + ": " + value + "; " + remedy; }
};

}  // namespace tool

#endif
