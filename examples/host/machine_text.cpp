// Prints what a machine definition says.
#include "host/machine_text.h"

#include <cmath>
#include <cstdio>
#include <string>

namespace host {
namespace {

using Axis = boost::shared_ptr<md::CAxis2>;
using Point = Geometry::TPoint<double>;

const char* type_text(MACHINE_TYPE type) {
  switch (type) {
    case MC_TT:
      return "table-table";
    case MC_HT:
      return "head-table";
    case MC_HH:
      return "head-head";
    default:
      return "unknown";
  }
}

// Six digits, and what is only the rounding of a zero as 0.
std::string number(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.6g", std::abs(value) < 1e-12 ? 0 : value);
  return text;
}

std::string text(const Point& p) { return "(" + number(p.x) + ", " + number(p.y) + ", " + number(p.z) + ")"; }

// What the axis is for: its name in the definition, its place in machine-work order, and whether it turns the
// part.
std::string roles_of(const Axis& axis, const md::CMachDef& machine) {
  if (axis->mode() == LINEAR) return "slide";
  std::string roles = axis == machine.getPrimary() ? "primary" : "secondary";

  Axis first;
  Axis second;
  machine.getMWRotAxes(first, second);
  roles += axis == first ? ", works first" : axis == second ? ", works second" : "";
  if (axis == machine.rotary_axis() && axis->GetAxisLocation() == TABLE) roles += ", turns the part";
  return roles;
}

void print_axis(const Axis& axis, const md::CMachDef& machine) {
  if (!axis) return;
  const bool is_rotary = axis->mode() == ROTARY;
  const double shown = is_rotary ? math::R2D : 1;
  std::printf("  %s  %-5s  through %-22s along %s  %9.2f to %8.2f %-3s  %s\n",
              AXIS_TYPE2String(axis->GetAxis()).c_str(), axis->GetAxisLocation() == TABLE ? "table" : "head",
              text(axis->GetBaseVector()).c_str(), text(axis->GetAxisVector()).c_str(),
              axis->GetMin() * shown, axis->GetMax() * shown, is_rotary ? "deg" : length_unit(machine),
              roles_of(axis, machine).c_str());
}

}  // namespace

const char* length_unit(const md::CMachDef& machine) { return machine.isMetric() ? "mm" : "in"; }

void print_machine(const md::CMachDef& machine) {
  const angled_head& head = machine.head();
  std::printf("type       %s, in %s\n", type_text(machine.getMachType()),
              machine.isMetric() ? "millimetres" : "inches");
  std::printf("tool       along %s, %s head\n", text(machine.getToolDir()).c_str(),
              k5ax_is_angled_head(&head) == 1 ? "angled" : "straight");
  std::printf("work zero  %s\n", text(machine.mwZeroPos()).c_str());
  std::printf("axes\n");
  for (const Axis& axis : machine.xyz_axes()) print_axis(axis, machine);
  print_axis(machine.getPrimary(), machine);
  print_axis(machine.getSecondary(), machine);
}

}  // namespace host
