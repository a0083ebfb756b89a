// How far each axis of a machine goes on a tool path, against the travel that it has.
#include "tool/toolpath/travels.h"

#include <algorithm>

namespace tool {
namespace {

// Length unit or degrees. A limit of 110 degrees is kept in radians and comes back some 1e-14 off, and a
// slide that stands at its end is the sum of coordinates of 1e4 at most, some 1e-11 off: at a limit is within
// it. No control resolves as little as this.
constexpr double kSlack = 1e-9;

bool allows(const Travel& travel, double value) {
  return value >= travel.limit_min - kSlack && value <= travel.limit_max + kSlack;
}

}  // namespace

void Travels::add(const md::CAxis2& axis, bool rotary) {
  const double factor = rotary ? math::R2D : 1;
  Travel travel;
  travel.axis = AXIS_TYPE2String(axis.GetAxis());
  travel.rotary = rotary;
  travel.limit_min = axis.GetMin() * factor;
  travel.limit_max = axis.GetMax() * factor;
  m_travels.push_back(travel);
  m_ranges.push_back({travel.used_min, travel.used_max});
}

void Travels::take_new(std::uint64_t line, const double* values) {
  bool any_out = false;
  for (std::size_t i = 0; i < m_travels.size(); ++i) {
    Travel& travel = m_travels[i];
    const double value = values[i];
    travel.used_min = value < travel.used_min ? value : travel.used_min;
    travel.used_max = value > travel.used_max ? value : travel.used_max;
    if (allows(travel, value)) {
      m_ranges[i].known_min = std::min(m_ranges[i].known_min, value);
      m_ranges[i].known_max = std::max(m_ranges[i].known_max, value);
      continue;
    }
    any_out = true;
    if (travel.rows_out++ == 0) travel.first_line_out = line;
    if (m_rows_out < kRowsKept) m_kept.push_back({line, i, value});
  }
  if (any_out) ++m_rows_out;
}

void Travels::take_unreached(std::uint64_t line) {
  ++m_rows;
  ++m_rows_unreached;
  if (m_rows_out++ < kRowsKept) m_kept.push_back({line, OutOfTravel::kNoAxis, 0});
}

}  // namespace tool
