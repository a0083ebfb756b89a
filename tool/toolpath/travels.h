// How far each axis of a machine goes on a tool path, against the travel that it has.
#ifndef K5AX_TOOL_TOOLPATH_TRAVELS_H
#define K5AX_TOOL_TOOLPATH_TRAVELS_H

#include <k5ax/k5ax.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tool {

/// One axis. Lengths in the machine's unit, angles in degrees.
struct Travel {
  std::string axis;  ///< its letter
  bool rotary = false;
  double limit_min = 0;
  double limit_max = 0;
  double used_min = 0;  ///< with used_max: nothing while no row was taken
  double used_max = 0;
  std::uint64_t rows_out = 0;
  std::uint64_t first_line_out = 0;  ///< 0 while there is none
};

/// One value beyond a travel. A row that the slides cannot reach at all has no axis.
struct OutOfTravel {
  static constexpr std::size_t kNoAxis = static_cast<std::size_t>(-1);

  std::uint64_t line = 0;
  std::size_t axis = kNoAxis;  ///< its place among the travels
  double value = 0;
};

/// Watches the axes of one machine. Takes the same memory however many rows are out of travel.
class Travels {
 public:
  /// Of so many rows it is kept which axis was where; the others are counted.
  static constexpr std::size_t kRowsKept = 10;

  /// Adds an axis, by its record, behind those that are there.
  void add(const md::CAxis2& axis, bool rotary);

  /// Takes the values of a row, one for every axis in the order of their places, degrees for a rotary one.
  void take(std::uint64_t line, const double* values) {
    ++m_rows;
    bool any_out = false;
    for (std::size_t i = 0; i < m_ranges.size(); ++i) {
      Range& range = m_ranges[i];
      range.used_min = values[i] < range.used_min ? values[i] : range.used_min;
      range.used_max = values[i] > range.used_max ? values[i] : range.used_max;
      any_out |= !range.allows(values[i]);
    }
    if (any_out) take_out(line, values);
  }

  /// Takes a row that the slides cannot reach.
  void take_unreached(std::uint64_t line);

  /// The axes, in the order of their places.
  std::vector<Travel> all() const;

  const std::vector<OutOfTravel>& kept() const { return m_kept; }
  std::uint64_t rows() const { return m_rows; }          ///< taken, those not reached among them
  std::uint64_t rows_out() const { return m_rows_out; }  ///< those not reached among them
  std::uint64_t rows_unreached() const { return m_rows_unreached; }

 private:
  // What every row is held against.
  struct Range {
    double least;  // the limits, with some slack
    double most;
    double used_min;
    double used_max;

    bool allows(double value) const { return value >= least && value <= most; }
  };

  void take_out(std::uint64_t line, const double* values);

  std::vector<Travel> m_travels;  // without what they have used
  std::vector<Range> m_ranges;
  std::vector<OutOfTravel> m_kept;
  std::uint64_t m_rows = 0;
  std::uint64_t m_rows_out = 0;
  std::uint64_t m_rows_unreached = 0;
};

}  // namespace tool

#endif
