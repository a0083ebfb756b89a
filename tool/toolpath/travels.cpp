// How far each axis of a machine goes on a tool path, against the travel that it has.
#include "tool/toolpath/travels.h"

#include <limits>

namespace tool {
namespace {

// Length unit or degrees. A limit of 110 degrees is kept in radians and comes back some 1e-14 off, and a
// slide that stands at its end is the sum of coordinates of 1e4 at most, some 1e-11 off: at a limit is within
// it. No control resolves as little as this.
constexpr double kSlack = 1e-9;

}  // namespace

void Travels::add(const md::CAxis2& axis, bool rotary) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const double factor = rotary ? math::R2D : 1;
  Travel travel;
  travel.axis = AXIS_TYPE2String(axis.GetAxis());
  travel.rotary = rotary;
  travel.limit_min = axis.GetMin() * factor;
  travel.limit_max = axis.GetMax() * factor;
  m_travels.push_back(travel);
  m_ranges.push_back({travel.limit_min - kSlack, travel.limit_max + kSlack, kInfinity, -kInfinity});
}

std::vector<Travel> Travels::all() const {
  std::vector<Travel> travels = m_travels;
  for (std::size_t i = 0; i < travels.size(); ++i) {
    travels[i].used_min = m_ranges[i].used_min;
    travels[i].used_max = m_ranges[i].used_max;
  }
  return travels;
}

void Travels::take_out(std::uint64_t line, const double* values) {
  const bool keep = m_rows_out++ < kRowsKept;
  for (std::size_t i = 0; i < m_travels.size(); ++i) {
    Travel& travel = m_travels[i];
    if (m_ranges[i].allows(values[i])) continue;
    if (travel.rows_out++ == 0) travel.first_line_out = line;
    if (keep) m_kept.push_back({line, i, values[i]});
  }
}

void Travels::take_unreached(std::uint64_t line) {
  ++m_rows;
  ++m_rows_unreached;
  if (m_rows_out++ < kRowsKept) m_kept.push_back({line, OutOfTravel::kNoAxis, 0});
}

}  // namespace tool
