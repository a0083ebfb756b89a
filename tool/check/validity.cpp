// Why a machine is not valid. The rules are those of CMachDef::is_valid, which answers yes or no and nothing
// else; a test holds the two together on thousands of random machines.
#include "tool/check/validity.h"

#include "tool/text.h"

#include <cmath>
#include <string>

namespace tool {
namespace {

constexpr double kThroughOrigin = 0.001;  // length unit, per coordinate; the library's own tolerance

using Findings = std::vector<Finding>;

std::string axis_place(const char* role, const md::CAxis2& axis) {
  return std::string(role) + " axis " + letter_name(axis.GetAxis());
}

// The axis by itself. Of the direction it is the length as computed that counts: one so short that its square
// vanishes has none.
void judge_axis(const char* role, const md::CAxis2& axis, Findings& findings) {
  const std::string place = axis_place(role, axis);
  if (axis.GetAxisLocation() != HEAD && axis.GetAxisLocation() != TABLE) {
    findings.push_back(
        {"axis-location", place,
         "sits neither on the head (0) nor on the table (1), but at " + location_name(axis.GetAxisLocation()),
         "give it one of the two"});
  }
  if (!(math::length(axis.GetAxisVector()) > 0.0)) {
    findings.push_back({"axis-direction", place,
                        "direction " + exact_triple(axis.GetAxisVector()) + " has the length " +
                            exact(math::length(axis.GetAxisVector())),
                        "give it a direction"});
  }
  if (axis.GetAxis() < AXIS_A || axis.GetAxis() > AXIS_Z) {
    findings.push_back(
        {"axis-letter", place, "is none of A, B, C, X, Y, Z", "give it the letter that the machine has"});
  }
  if (!(axis.GetMax() >= axis.GetMin())) {
    const bool known = !std::isnan(axis.GetMin()) && !std::isnan(axis.GetMax());
    findings.push_back({"axis-limits", place,
                        "travel from " + degrees(axis.GetMin()) + " to " + degrees(axis.GetMax()) + " deg " +
                            (known ? "runs backwards" : "is no travel"),
                        known ? "swap min and max" : "give it two numbers"});
  }
}

// The two rotary axes beside each other, and where the type wants them.
void judge_pair(const md::CMachDef& machine, const md::CAxis2& primary, const md::CAxis2& secondary,
                Findings& findings) {
  const std::string place = axis_place("primary", primary) + ", " + axis_place("secondary", secondary);
  if (primary.GetAxis() == secondary.GetAxis()) {
    findings.push_back({"same-letter", place, "both have the letter " + letter_name(primary.GetAxis()),
                        "give each a letter of its own"});
  }
  if (primary.GetAxisVector() == secondary.GetAxisVector()) {
    findings.push_back({"same-direction", place,
                        "both have the direction " + exact_triple(primary.GetAxisVector()),
                        "give each a direction of its own"});
  }
  if (machine.getMachType() == MC_HT && primary.GetAxisLocation() != TABLE) {
    findings.push_back({"type-location", axis_place("primary", primary),
                        "sits on the " + location_name(primary.GetAxisLocation()) +
                            ", and on a head-table machine the primary axis is the table's",
                        "put it on the table, or change the type or the order of the axes"});
  }
  if (machine.getMachType() == MC_HT && secondary.GetAxisLocation() != HEAD) {
    findings.push_back({"type-location", axis_place("secondary", secondary),
                        "sits on the " + location_name(secondary.GetAxisLocation()) +
                            ", and on a head-table machine the secondary axis is the head's",
                        "put it on the head, or change the type or the order of the axes"});
  }
  if (machine.getMachType() == MC_HH) {
    for (const md::CAxis2* axis : {&primary, &secondary}) {
      if (axis->GetAxisLocation() == HEAD) continue;
      findings.push_back({"type-location", axis_place(axis == &primary ? "primary" : "secondary", *axis),
                          "sits on the " + location_name(axis->GetAxisLocation()) +
                              ", and on a head-head machine both rotary axes are the head's",
                          "put it on the head, or change the type"});
    }
  }
}

// The line of the axis next to the part passes the machine's origin.
void judge_line(const char* role, const md::CAxis2& axis, Findings& findings) {
  const Point base = axis.GetBaseVector();
  const Point nearest = Geometry::NearestPointOnLine(CUtility::pt_o, base, base + axis.GetAxisVector());
  if (std::abs(nearest.x) < kThroughOrigin && std::abs(nearest.y) < kThroughOrigin &&
      std::abs(nearest.z) < kThroughOrigin) {
    return;
  }
  findings.push_back({"axis-line", axis_place(role, axis),
                      "its line through " + exact_triple(base) + " along " +
                          exact_triple(axis.GetAxisVector()) + " passes the machine's origin at " +
                          exact_triple(nearest) + ", and each of the three must be less than 0.001",
                      "move its base point so that the line goes through 0 0 0"});
}

}  // namespace

std::vector<Finding> reasons_not_valid(const md::CMachDef& machine) {
  Findings findings;
  const MACHINE_TYPE type = machine.getMachType();
  const md::CAxis2* const primary = machine.getPrimary().get();
  const md::CAxis2* const secondary = machine.getSecondary().get();

  if (type != MC_TT && type != MC_HT && type != MC_HH) {
    findings.push_back({"machine-type", "machine type",
                        "is " + (type == MC_UNDEFINED ? "not set (-1)" : std::to_string(type)),
                        "give it table-table (0), head-table (1) or head-head (2)"});
  }
  if (math::length(machine.getToolDir()) == 0.0) {
    findings.push_back({"tool-direction", "head",
                        "the tool direction " + exact_triple(machine.getToolDir()) + " has the length 0",
                        "give it a direction, 0 0 1 for a straight tool"});
  }
  if (primary != nullptr) judge_axis("primary", *primary, findings);
  if (secondary != nullptr) judge_axis("secondary", *secondary, findings);

  if (secondary != nullptr && primary == nullptr) {
    findings.push_back({"primary-missing", axis_place("secondary", *secondary),
                        "stands alone, without a primary axis",
                        "make it the primary axis, or give the machine one"});
  } else if (type == MC_HT && primary == nullptr) {
    findings.push_back({"primary-missing", "primary axis",
                        "is missing, and a head-table machine turns the part with it",
                        "give the machine its table axis as the primary"});
  }
  if (primary != nullptr && secondary != nullptr) judge_pair(machine, *primary, *secondary, findings);

  // A line without a direction is none; that has been said above.
  const bool by_secondary = type == MC_TT && secondary != nullptr;
  const md::CAxis2* const next_to_part = by_secondary                     ? secondary
                                         : type == MC_TT || type == MC_HT ? primary
                                                                          : nullptr;
  if (next_to_part != nullptr && math::length(next_to_part->GetAxisVector()) > 0.0) {
    judge_line(by_secondary ? "secondary" : "primary", *next_to_part, findings);
  }
  return findings;
}

}  // namespace tool
