// The figures that the host gathers on its way along a path, and the table that it prints of them.
#include "host/figures.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

namespace host {
namespace {

// One line of the table: what was compared, how far it was off, and in which unit.
struct RoundTrip {
  const char* name;
  const Worst& worst;
  const char* unit;
  double tolerance;
};

// Angles and the elements of transforms are held to what an angle moves at the length scale: a length over
// it.
std::vector<RoundTrip> round_trips(const Figures& f, const char* length_unit, double tolerance) {
  const double length_tolerance = tolerance * f.length_scale;
  std::vector<RoundTrip> trips = {
      {"part to machine and back", f.part_mach_part, length_unit, length_tolerance},
      {"tool point through both trees", f.tool_on_part, length_unit, length_tolerance},
      {"X, Y, Z read back", f.read_back_xyz, length_unit, length_tolerance},
      {"A, B, C read back", f.read_back_abc, "rad", tolerance},
      {"axis states restored", f.states, length_unit, length_tolerance}};
  if (f.has_rotary_axis) {
    trips.push_back({"wrapped into the half-plane", f.wrap, length_unit, length_tolerance});
    trips.push_back({"wrapped and turned back", f.wrap_back, length_unit, length_tolerance});
  }
  return trips;
}

double shown(const Travel& travel, double value) { return travel.is_rotary() ? value * math::R2D : value; }

}  // namespace

void Worst::take(double deviation, int line) {
  const double size = std::isnan(deviation) ? std::numeric_limits<double>::infinity() : std::abs(deviation);
  if (size <= m_value) return;
  m_value = size;
  m_line = line;
}

Travel::Travel(const md::CAxis2& axis)
    : m_letter(axis.GetAxis()),
      m_is_rotary(axis.mode() == ROTARY),
      m_limit_min(axis.GetMin()),
      m_limit_max(axis.GetMax()),
      m_used_min(std::numeric_limits<double>::infinity()),
      m_used_max(-std::numeric_limits<double>::infinity()) {}

void Travel::take(double value, int line) {
  m_used_min = std::min(m_used_min, value);
  m_used_max = std::max(m_used_max, value);
  if (value >= m_limit_min && value <= m_limit_max) return;
  if (m_positions_outside++ == 0) m_first_line_outside = line;
}

void print_figures(const Figures& f, const char* length_unit, double tolerance) {
  std::printf("positions  %zu\n\n", f.positions);

  std::printf("%-31s %15s %15s %6s\n", "round trip", "worst deviation", "allowed", "line");
  for (const RoundTrip& trip : round_trips(f, length_unit, tolerance)) {
    std::printf("%-31s %12.3g %-2s %12.3g %-2s %6d\n", trip.name, trip.worst.value(), trip.unit,
                trip.tolerance, trip.unit, trip.worst.line());
  }
  std::printf("%-31s %s\n", "saved and loaded again",
              f.reload_difference.empty() ? "equal" : f.reload_difference.c_str());
  if (f.not_wrapped > 0) std::printf("%-31s %d\n", "on the reference, not wrapped", f.not_wrapped);

  std::printf("\n%-8s %12s %12s %14s %12s\n", "travel", "used from", "to", "limits from", "to");
  for (const Travel& t : f.travels) {
    std::printf("%s %-6s %12.3f %12.3f %14.3f %12.3f%s\n", AXIS_TYPE2String(t.letter()).c_str(),
                t.is_rotary() ? "deg" : length_unit, shown(t, t.used_min()), shown(t, t.used_max()),
                shown(t, t.limit_min()), shown(t, t.limit_max()),
                t.positions_outside() > 0 ? "  OUTSIDE" : "");
  }

  std::printf("\n%-31s %12.0f positions/s\n", "part to machine and back", f.converted_per_second);
  std::printf("%-31s %12.0f positions/s\n", "posed, walked and read back", f.posed_per_second);
}

bool all_is_well(const Figures& f, const char* length_unit, double tolerance, const std::string& what) {
  bool well = true;
  const char* const where = what.c_str();
  for (const RoundTrip& trip : round_trips(f, length_unit, tolerance)) {
    if (trip.worst.within(trip.tolerance)) continue;
    std::fprintf(stderr, "%s:%d: %s: off by %.3g %s, allowed is %.3g; do the machine's trees fit its axes?\n",
                 where, trip.worst.line(), trip.name, trip.worst.value(), trip.unit, trip.tolerance);
    well = false;
  }
  for (const Travel& t : f.travels) {
    if (t.positions_outside() == 0) continue;
    std::fprintf(
        stderr,
        "%s:%d: %s leaves its travel here and at %d positions in all: used %.3f to %.3f, limits %.3f to "
        "%.3f; move the part\n",
        where, t.first_line_outside(), AXIS_TYPE2String(t.letter()).c_str(), t.positions_outside(),
        shown(t, t.used_min()), shown(t, t.used_max()), shown(t, t.limit_min()), shown(t, t.limit_max()));
    well = false;
  }
  if (f.unreachable > 0) {
    std::fprintf(stderr,
                 "%s:%d: cannot be reached, like %d positions in all; can the machine move along Z?\n", where,
                 f.first_line_unreachable, f.unreachable);
    well = false;
  }
  if (!f.reload_difference.empty()) {
    std::fprintf(stderr, "%s: the machine saved and loaded again differs: %s; is the disk sound?\n", where,
                 f.reload_difference.c_str());
    well = false;
  }
  return well;
}

}  // namespace host
