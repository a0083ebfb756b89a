// Collects what differs, in words, with values and units.
#ifndef K5AX_TOOL_MACHINE_COMPARISON_H
#define K5AX_TOOL_MACHINE_COMPARISON_H

#include "tool/machine/compare_machines.h"
#include "tool/machine/json_view.h"

#include <string>
#include <utility>
#include <vector>

namespace tool {

class Comparison {
 public:
  /// @param is_metric     the unit of all lengths
  /// @param is_converted  those of the second machine were converted to it, and may have been rounded
  Comparison(bool is_metric, bool is_converted) : m_is_metric(is_metric), m_is_converted(is_converted) {}

  void add(const std::string& what, const std::string& first, const std::string& second);
  void compare_word(const std::string& what, const std::vector<Word>& words, int a, int b);
  void compare_whole(const std::string& what, int a, int b);
  void compare_flags(const std::string& what, unsigned int a, unsigned int b);
  void compare_number(const std::string& what, double a, double b);  ///< of no unit
  void compare_length(const std::string& what, double a, double b);
  void compare_length(const std::string& what, const Point& a, const Point& b);
  void compare_angle(const std::string& what, double a, double b);
  void compare_direction(const std::string& what, const Point& a, const Point& b);
  void compare_axis(const std::string& what, const AxisRecord& a, const AxisRecord& b);
  /// All but the offset.
  void compare_head(const std::string& what, const HeadRecord& a, const HeadRecord& b);
  void compare_transform(const std::string& what, const Transform& a, const Transform& b);

  std::vector<Difference> take() { return std::move(m_found); }

 private:
  bool same_length(double a, double b) const;
  std::string with_unit(const std::string& number) const;

  bool m_is_metric;
  bool m_is_converted;
  std::vector<Difference> m_found;
};

}  // namespace tool

#endif
