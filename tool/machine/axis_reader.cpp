// Axes from their text.
#include "tool/machine/axis_reader.h"

#include "tool/machine/machine_words.h"

namespace tool {
namespace {

// What follows from the place of an axis; -1 for nothing.
struct Defaults {
  int letter = -1;
  int location = -1;
};

int location_by_type(int type, int slot) {
  if (slot != kPrimary && slot != kSecondary) return -1;
  switch (type) {
    case MC_TT:
      return TABLE;
    case MC_HT:
      return slot == kPrimary ? TABLE : HEAD;
    case MC_HH:
      return HEAD;
    default:
      return -1;
  }
}

// A direction is taken as it stands, of any length; {"along": [...]} is brought to length 1.
Point read_direction(const JsonView& view) {
  if (!view.is_object()) return view.point();
  view.require_keys("a direction", {"along"});
  const JsonView along = view.require("along", "write [x, y, z], or {\"along\": [x, y, z]}");
  const Point direction = along.point();
  const double length = math::length(direction);
  if (!(length > 1e-6 && length < 1e6))
    along.fail_value("is too short or too long to point somewhere", "give numbers around 1");
  return math::safe_normal(direction);
}

AxisRecord read_axis_with(const JsonView& view, const Defaults& defaults) {
  view.require_keys("an axis", kAxisKeys);
  AxisRecord axis;
  const auto letter = view.find("letter");
  if (!letter && defaults.letter < 0) view.require("letter", "write \"letter\": " + choice(kLetters));
  axis.letter = letter ? letter->word_or_number(kLetters) : defaults.letter;

  const auto location = view.find("location");
  if (!location && defaults.location < 0)
    view.require("location", "write \"location\": " + choice(kLocations));
  axis.location = location ? location->word_or_number(kLocations) : defaults.location;

  const int usual_motion = motion_of_letter(axis.letter);
  const auto motion = view.find("motion");
  if (!motion && usual_motion < 0) view.require("motion", "write \"motion\": " + choice(kMotions));
  axis.motion = motion ? motion->word_or_number(kMotions) : usual_motion;

  // Where a slide runs does not matter; where a rotary axis does is what the machine is about.
  const auto point = view.find("point");
  if (!point && is_rotary(axis)) view.require("point", "write \"point\": [x, y, z], a point on the axis");
  if (point) axis.base = point->point();

  const auto direction = view.find("direction");
  const bool has_usual_direction = direction_of_letter(axis.letter) != CUtility::pt_o;
  if (!direction && !has_usual_direction) view.require("direction", "write \"direction\": [x, y, z]");
  axis.direction = direction ? read_direction(*direction) : direction_of_letter(axis.letter);

  const std::string unit = is_rotary(axis) ? "degrees" : is_linear(axis) ? "the machine's unit" : "numbers";
  const std::string remedy = "write \"limits\": [lower, upper], in " + unit;
  const JsonView limits = view.require("limits", remedy);
  const std::vector<JsonView> both = limits.entries();
  if (!limits.is_list() || both.size() != 2) limits.fail_value("is not a pair of limits", remedy);
  axis.min = is_rotary(axis) ? both[0].angle() : both[0].number();
  axis.max = is_rotary(axis) ? both[1].angle() : both[1].number();
  return axis;
}

}  // namespace

void read_axes(const JsonView& view, MachineRecord& machine) {
  view.require_keys("the axes", kAxesKeys);
  for (const Word& slot : kSlots) {
    const auto axis = view.find(slot.text);
    if (!axis || axis->kind() == JsonKind::null) continue;
    machine.axes[static_cast<std::size_t>(slot.number)] =
        read_axis_with(*axis, {letter_of_slot(slot.number), location_by_type(machine.type, slot.number)});
  }
}

AxisRecord read_axis(const JsonView& view) { return read_axis_with(view, {}); }

}  // namespace tool
