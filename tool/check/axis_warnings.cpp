// What the axes by themselves and beside each other make one wonder about.
#include "tool/check/warnings.h"

#include "tool/text.h"

#include <cmath>
#include <string>

namespace tool {
namespace {

constexpr double kUnitLength = 1e-7;  // a direction this far from length 1 moves a slide wrong by it
constexpr double kParallel = 0.999;   // the update takes directions for parallel from this dot product on
constexpr double kSameLine = 1e-9;    // of unit vectors: along a machine direction but for rounding

using Findings = std::vector<Finding>;

struct Slot {
  std::string name;  // "primary axis", "X axis"
  const md::CAxis2* axis;
  bool linear;       // what the slot is for
  AXIS_TYPE letter;  // of a linear slot
};

std::vector<Slot> slots_of(const md::CMachDef& machine) {
  return {{"primary axis", machine.getPrimary().get(), false, AXIS_DUMMY},
          {"secondary axis", machine.getSecondary().get(), false, AXIS_DUMMY},
          {"X axis", machine.xyz_axes()[0].get(), true, AXIS_X},
          {"Y axis", machine.xyz_axes()[1].get(), true, AXIS_Y},
          {"Z axis", machine.xyz_axes()[2].get(), true, AXIS_Z}};
}

std::string place_of(const Slot& slot) {
  return slot.linear ? slot.name : slot.name + " " + letter_name(slot.axis->GetAxis());
}

bool is_letter(AXIS_TYPE type) { return type >= AXIS_A && type <= AXIS_Z; }

bool is_whole(double value) { return std::isfinite(value) && value == std::round(value); }

void look_at_kind(const Slot& slot, Findings& findings) {
  const md::CAxis2& axis = *slot.axis;
  const AXIS_TYPE letter = axis.GetAxis();
  if (slot.linear && letter != slot.letter) {
    findings.push_back({"slot-letter", place_of(slot), "has the letter " + letter_name(letter),
                        "give it the letter " + letter_name(slot.letter)});
  }
  if (!slot.linear && is_letter(letter) && letter > AXIS_C) {
    findings.push_back({"slot-letter", place_of(slot), "has the letter of a linear axis",
                        "give it A, B or C, so that it takes its angle and not a length"});
  }
  const AXIS_MODE wanted = slot.linear ? LINEAR : ROTARY;
  if (axis.mode() != wanted) {
    findings.push_back({"slot-mode", place_of(slot), "has the mode " + mode_name(axis.mode()),
                        "make it " + mode_name(wanted)});
  }
  // Of a rotary axis validity has said it.
  if (slot.linear && axis.GetAxisLocation() != HEAD && axis.GetAxisLocation() != TABLE) {
    findings.push_back(
        {"linear-location", place_of(slot),
         "sits neither on the head (0) nor on the table (1), but at " + location_name(axis.GetAxisLocation()),
         "give it one of the two"});
  }
}

void look_at_limits(const Slot& slot, const char* unit, Findings& findings) {
  const md::CAxis2& axis = *slot.axis;
  const double min = axis.GetMin();
  const double max = axis.GetMax();
  const std::string limit = axis_value(axis, min, unit);
  if (!std::isfinite(min) || !std::isfinite(max)) {
    findings.push_back({"not-finite", place_of(slot), "travel from " + exact(min) + " to " + exact(max),
                        "give it two finite numbers"});
  } else if (min == max) {
    findings.push_back({"zero-travel", place_of(slot), "travel is zero, from " + limit + " to " + limit,
                        "widen its limits"});
  } else if (slot.linear && max < min) {
    findings.push_back({"linear-limits", place_of(slot),
                        "travel from " + limit + " to " + axis_value(axis, max, unit) + " runs backwards",
                        "swap min and max"});
  } else if (axis.mode() == ROTARY && is_whole(min) && is_whole(max) && max - min >= 10) {
    // Angles that a person has chosen are whole numbers of degrees, hardly ever of radians.
    findings.push_back({"limits-in-degrees", place_of(slot),
                        "limits " + exact(min) + " and " + exact(max) + " radians are whole numbers",
                        "if they were meant as degrees, divide them by 57.29577951308232"});
  } else if (axis.mode() == ROTARY && max > min && max - min <= math::m_2pi * math::D2R) {
    // In degrees no more than a turn has radians: too little for machining.
    findings.push_back({"limits-in-radians", place_of(slot),
                        "travel is only from " + limit + " to " + axis_value(axis, max, unit),
                        "if the limits were meant as radians, multiply them by 57.29577951308232"});
  }
}

void look_at_line(const Slot& slot, Findings& findings) {
  const md::CAxis2& axis = *slot.axis;
  const Point direction = axis.GetAxisVector();
  const double length = math::length(direction);
  if (!is_finite(axis.GetBaseVector())) {
    findings.push_back({"not-finite", place_of(slot), "base point " + triple(axis.GetBaseVector()),
                        "give it three finite numbers"});
  }
  if (!is_finite(direction)) {
    findings.push_back(
        {"not-finite", place_of(slot), "direction " + triple(direction), "give it three finite numbers"});
    return;
  }
  // Of a rotary axis validity has said it.
  if (length == 0.0) {
    if (slot.linear) {
      findings.push_back({"linear-direction", place_of(slot),
                          "direction " + exact_triple(direction) + " has no length", "give it a direction"});
    }
    return;
  }
  if (std::abs(length - 1) > kUnitLength) {
    findings.push_back({"not-unit", place_of(slot),
                        "direction " + triple(direction) + " has the length " + number(length) + ", not 1",
                        "divide it by its length"});
  }
  if (!is_letter(axis.GetAxis())) return;

  // Along X, Y or Z, and the letter says another one.
  const double along[3] = {direction.x / length, direction.y / length, direction.z / length};
  for (int i = 0; i < 3; ++i) {
    if (std::abs(std::abs(along[i]) - 1) > kSameLine || axis.GetAxis() % 3 == i) continue;
    const AXIS_TYPE fitting = static_cast<AXIS_TYPE>(slot.linear ? i + 3 : i);
    findings.push_back({"letter-direction", place_of(slot),
                        "has the letter " + letter_name(axis.GetAxis()) + " and the direction " +
                            triple(direction) + ", which is " + letter_name(fitting) + "'s",
                        "change the letter or the direction"});
  }
}

void look_at_pair(const Slot& one, const Slot& other, Findings& findings) {
  if (one.axis == nullptr || other.axis == nullptr || one.linear != other.linear) return;
  const Point d_one = one.axis->GetAxisVector();
  const Point d_other = other.axis->GetAxisVector();
  if (!one.linear && d_one == d_other) return;  // validity has said it
  const double lengths = math::length(d_one) * math::length(d_other);
  if (!(lengths > 0.0) || !std::isfinite(lengths)) return;
  const double cosine = math::dot(d_one, d_other) / lengths;
  if (std::abs(cosine) < kParallel) return;
  findings.push_back({"parallel", place_of(one) + ", " + place_of(other),
                      "directions " + triple(d_one) + " and " + triple(d_other) + " are " +
                          (std::abs(cosine) > 1 - kSameLine ? "parallel" : "nearly parallel"),
                      "check which of them is meant"});
}

// What the type leads one to expect and validity lets pass.
void look_at_type(const md::CMachDef& machine, Findings& findings) {
  const md::CAxis2* const primary = machine.getPrimary().get();
  const md::CAxis2* const secondary = machine.getSecondary().get();
  if (primary == nullptr && secondary == nullptr) {
    findings.push_back(
        {"rotary-missing", "rotary axes", "there is none", "give the machine its rotary axes"});
    return;
  }
  const MACHINE_TYPE type = machine.getMachType();
  for (const md::CAxis2* axis : {primary, secondary}) {
    if (axis == nullptr) continue;
    const std::string place =
        (axis == primary ? "primary axis " : "secondary axis ") + letter_name(axis->GetAxis());
    if (type == MC_TT && axis->GetAxisLocation() == HEAD) {
      findings.push_back({"type-location", place, "sits on the head of a table-table machine",
                          "put it on the table, or change the type"});
    }
    // With both axes there validity looks at it.
    if (secondary == nullptr && ((type == MC_HH && axis->GetAxisLocation() == TABLE) ||
                                 (type == MC_HT && axis->GetAxisLocation() == HEAD))) {
      findings.push_back({"type-location", place,
                          "sits on the " + location_name(axis->GetAxisLocation()) + " of a " +
                              type_name(type) + " machine without a secondary axis",
                          "put it on the other side, or change the type"});
    }
  }
  if (machine.is_valid() && !machine.mw_valid()) {
    findings.push_back({"wrapping-travel", "rotary axes",
                        "the axis that turns the part has no travel, so nothing can be wrapped about it",
                        "widen its limits"});
  }
}

}  // namespace

std::vector<Finding> axis_warnings(const md::CMachDef& machine) {
  Findings findings;
  const std::vector<Slot> slots = slots_of(machine);
  for (const Slot& slot : slots) {
    if (slot.axis == nullptr) {
      if (slot.linear) {
        findings.push_back({"linear-missing", slot.name, "is missing", "give the machine one"});
      }
      continue;
    }
    look_at_kind(slot, findings);
    look_at_limits(slot, unit_name(machine), findings);
    look_at_line(slot, findings);
  }
  for (std::size_t i = 0; i < slots.size(); ++i) {
    for (std::size_t j = i + 1; j < slots.size(); ++j) look_at_pair(slots[i], slots[j], findings);
  }
  look_at_type(machine, findings);
  return findings;
}

}  // namespace tool
