// How far each axis of a machine goes on a tool path, against the travel that it has.
#ifndef K5AX_TOOL_TOOLPATH_TRAVELS_H
#define K5AX_TOOL_TOOLPATH_TRAVELS_H

#include <k5ax/k5ax.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace tool {

/// One axis. Lengths in the machine's unit, angles in degrees.
struct Travel {
  std::string axis;  ///< its letter
  bool rotary = false;
  double limit_min = 0;
  double limit_max = 0;
  double used_min = std::numeric_limits<double>::infinity();  ///< beyond used_max while no row was taken
  double used_max = -std::numeric_limits<double>::infinity();
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
    bool all_known = true;
    for (std::size_t i = 0; i < m_ranges.size(); ++i)
      all_known &= values[i] >= m_ranges[i].known_min && values[i] <= m_ranges[i].known_max;
    if (!all_known) take_new(line, values);
  }

  /// Takes a row that the slides cannot reach.
  void take_unreached(std::uint64_t line);

  /// The axes, in the order of their places.
  const std::vector<Travel>& all() const { return m_travels; }

  const std::vector<OutOfTravel>& kept() const { return m_kept; }
  std::uint64_t rows() const { return m_rows; }          ///< taken, those not reached among them
  std::uint64_t rows_out() const { return m_rows_out; }  ///< those not reached among them
  std::uint64_t rows_unreached() const { return m_rows_unreached; }

 private:
  // Between the known values a row changes nothing: they are used, and within the limits.
  struct Range {
    double known_min;
    double known_max;
  };

  void take_new(std::uint64_t line, const double* values);

  std::vector<Travel> m_travels;
  std::vector<Range> m_ranges;
  std::vector<OutOfTravel> m_kept;
  std::uint64_t m_rows = 0;
  std::uint64_t m_rows_out = 0;
  std::uint64_t m_rows_unreached = 0;
};

}  // namespace tool

#endif
