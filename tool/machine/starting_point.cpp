// Commented definitions to start from.
#include "tool/machine/starting_point.h"

namespace tool {
namespace {

constexpr std::string_view kTableTable = R"(
// A table-table machine: the part sits on a rotary table (C) in a tilting cradle (A).
// Put in your machine's figures, then: k5ax check FILE
//
// Everything stands in the machine frame, seen with every axis at 0. Choose its origin on the line of the
// rotary axis next to the part (here C), for example the centre of the table's top: the kinematics needs it
// there. Lengths are in "units", angles in degrees.
{
  "format": 1,
  "units": "mm",                    // or "inch"
  "type": "table-table",

  "axes": {
    // Slides. "location" says what moves: "head" for the spindle, "table" for the part; "limits" is how far.
    "x": {"location": "table", "limits": [-300, 300]},
    "y": {"location": "head", "limits": [-250, 250]},
    "z": {"location": "head", "limits": [-450, 0]},
    // The axis that carries the other one. "point" is any point on its line, as measured.
    // "direction" may be added where it is not along the letter: {"along": [0, -1, 1]}.
    "primary": {"letter": "A", "point": [0, 0, 50], "limits": [-120, 30]},
    // The axis next to the part. Its line passes through the origin.
    "secondary": {"letter": "C", "point": [0, 0, 0], "limits": [-3600, 3600]}
  },

  // The spindle's nose with the slides at 0, and the length of the tool in it.
  "tool": {"mount": [0, 0, 500], "length": 150},

  "work_zero": [0, 0, 30],          // where the part stands: the top of the fixture
  "loading_vector": [0, 0, 200]     // how far the spindle draws back for a new part
}
)";

constexpr std::string_view kHeadTable = R"(
// A head-table machine: the part sits on a rotary table (C), the spindle swivels (B).
// Put in your machine's figures, then: k5ax check FILE
//
// Everything stands in the machine frame, seen with every axis at 0. Choose its origin on the line of the
// table's rotary axis (here C): the kinematics needs it there. Here it is the spindle's nose, high above the
// centre of the table. Lengths are in "units", angles in degrees.
{
  "format": 1,
  "units": "mm",                    // or "inch"
  "type": "head-table",

  "axes": {
    // Slides. "location" says what moves: "head" for the spindle, "table" for the part; "limits" is how far.
    "x": {"location": "head", "limits": [-600, 600]},
    "y": {"location": "table", "limits": [-400, 400]},
    "z": {"location": "head", "limits": [-700, 0]},
    // The axis of the table. "point" is any point on its line, as measured; the line passes the origin.
    "primary": {"letter": "C", "point": [0, 0, -800], "limits": [-3600, 3600]},
    // The axis of the head. Its line may lie anywhere.
    // "direction" may be added where it is not along the letter: {"along": [0, -1, 1]}.
    "secondary": {"letter": "B", "point": [0, 0, 200], "limits": [-30, 110]}
  },

  // The tool, from the spindle's nose: its length.
  "tool": {"length": 150},

  "work_zero": [0, 0, -650],        // where the part stands: the top of the fixture
  "loading_vector": [0, 0, 250]     // how far the spindle draws back for a new part
}
)";

constexpr std::string_view kHeadHead = R"(
// A head-head machine: the part stands still, a fork turns (C) and tilts (A) the spindle.
// Put in your machine's figures, then: k5ax check FILE
//
// Everything stands in the machine frame, seen with every axis at 0. Here its origin is the spindle's nose,
// over the middle of the bed. Lengths are in "units", angles in degrees.
{
  "format": 1,
  "units": "mm",                    // or "inch"
  "type": "head-head",

  "axes": {
    // Slides. "location" says what moves: "head" for the spindle, "table" for the part; "limits" is how far.
    "x": {"location": "head", "limits": [-1500, 1500]},
    "y": {"location": "head", "limits": [-1000, 1000]},
    "z": {"location": "head", "limits": [-900, 0]},
    // The axis that carries the other one. "point" is any point on its line, as measured.
    "primary": {"letter": "C", "point": [0, 0, 0], "limits": [-360, 360]},
    // The axis next to the tool.
    // "direction" may be added where it is not along the letter: {"along": [0, -1, 1]}.
    "secondary": {"letter": "A", "point": [0, 0, 220], "limits": [-110, 110]}
  },

  // The tool, from the spindle's nose: its length.
  "tool": {"length": 180},

  "work_zero": [0, 0, -850],        // where the part stands
  "loading_vector": [0, 0, 300]     // how far the spindle draws back for a new part
}
)";

}  // namespace

// The texts begin with the line's end that stands before their first line here.
std::string_view starting_point(std::string_view type) {
  if (type == "table-table") return kTableTable.substr(1);
  if (type == "head-table") return kHeadTable.substr(1);
  return type == "head-head" ? kHeadHead.substr(1) : std::string_view();
}

}  // namespace tool
