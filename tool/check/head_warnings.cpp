// What the head, work zero and loading vector make one wonder about.
#include "tool/check/warnings.h"

#include "tool/text.h"

#include <cmath>
#include <string>

namespace tool {
namespace {

constexpr double kDirection = 1e-7;  // of unit vectors: further apart than rounding and decimals typed
constexpr double kLength = 1e-6;     // length unit, and of the lengths themselves

using Findings = std::vector<Finding>;

bool is_finite(const angled_head& head) {
  return std::isfinite(head.b_angle) && std::isfinite(head.c_angle) && std::isfinite(head.length1) &&
         std::isfinite(head.length2) && tool::is_finite(head.tip) && tool::is_finite(head.tool_dir) &&
         tool::is_finite(head.ref_dir) && tool::is_finite(head.offset);
}

// The directions and the tip as the angles and lengths give them.
void compare_with_angles(const angled_head& head, Findings& findings) {
  angled_head wanted = head;
  const double lengths[2] = {head.length1, head.length2};
  k5ax_angled_head_set(head.c_angle * math::R2D, head.b_angle * math::R2D, lengths, 0, &wanted);

  const std::string angles =
      "tilt " + degrees(head.b_angle) + " deg and turn " + degrees(head.c_angle) + " deg";
  const std::string remedy = "set the head anew from its angles and lengths";
  if (math::length(head.tool_dir - wanted.tool_dir) > kDirection) {
    findings.push_back(
        {"head-angles", "head",
         "tool direction " + triple(head.tool_dir) + " where " + angles + " give " + triple(wanted.tool_dir),
         remedy});
  }
  if (math::length(head.ref_dir - wanted.ref_dir) > kDirection) {
    findings.push_back({"head-angles", "head",
                        "reference direction " + triple(head.ref_dir) + " where " + angles + " give " +
                            triple(wanted.ref_dir),
                        remedy});
  }

  // A side offset, which the head does not keep, moves the tip along Y as tilted and turned.
  const Point u_side = CUtility::pt_y * Geometry::RotateAboutAxis(CUtility::pt_z, head.c_angle);
  const Point off = head.tip - wanted.tip;
  const Point left_over = off - u_side * math::dot(off, u_side);
  if (math::length(left_over) > kLength * (1 + math::length(wanted.tip))) {
    findings.push_back({"head-tip", "head",
                        "tip " + triple(head.tip) + " where its angles and lengths give " +
                            triple(wanted.tip) + " and a side offset along " + triple(u_side),
                        remedy});
  }
}

}  // namespace

std::vector<Finding> head_warnings(const md::CMachDef& machine) {
  Findings findings;
  const angled_head& head = machine.head();
  if (!is_finite(head)) {
    findings.push_back({"not-finite", "head", "holds a number that is not finite",
                        "give it finite angles, lengths and directions"});
  } else {
    const double length = math::length(machine.getToolDir());
    if (length > 0 && std::abs(length - 1) > kDirection) {
      findings.push_back(
          {"not-unit", "head",
           "tool direction " + triple(machine.getToolDir()) + " has the length " + number(length) + ", not 1",
           "divide it by its length"});
    }
    compare_with_angles(head, findings);
    const bool vertical = (head.flags & 3U) == 1U;
    if (vertical && math::length(head.tool_dir - CUtility::pt_z) > kDirection) {
      findings.push_back(
          {"vertical-tool", "head",
           "the flags say that the tool is vertical, and the head leans to " + triple(head.tool_dir),
           "clear flag 1 to use the head's own direction"});
    }
  }
  if (!tool::is_finite(machine.mwZeroPos())) {
    findings.push_back(
        {"not-finite", "work zero", triple(machine.mwZeroPos()), "give it three finite numbers"});
  }
  if (!tool::is_finite(machine.loading_vector())) {
    findings.push_back(
        {"not-finite", "loading vector", triple(machine.loading_vector()), "give it three finite numbers"});
  }
  return findings;
}

}  // namespace tool
