// The figures that the host gathers on its way along a path, and the table that it prints of them.
#ifndef K5AX_EXAMPLES_HOST_FIGURES_H
#define K5AX_EXAMPLES_HOST_FIGURES_H

#include <string>
#include <vector>

#include <k5ax/k5ax.h>

namespace host {

// The largest of many deviations, and the line of the path that it belongs to. Something that is no number is
// larger than everything.
class Worst {
 public:
  void take(double deviation, int line);

  double value() const { return m_value; }
  int line() const { return m_line; }  // 0 while every deviation was 0
  bool within(double tolerance) const { return m_value <= tolerance; }

 private:
  double m_value = 0;
  int m_line = 0;
};

// How far one axis went, against what it has.
class Travel {
 public:
  explicit Travel(const md::CAxis2& axis);

  void take(double value, int line);

  AXIS_TYPE letter() const { return m_letter; }
  bool is_rotary() const { return m_is_rotary; }
  double limit_min() const { return m_limit_min; }
  double limit_max() const { return m_limit_max; }
  double used_min() const { return m_used_min; }
  double used_max() const { return m_used_max; }
  int positions_outside() const { return m_positions_outside; }
  int first_line_outside() const { return m_first_line_outside; }

 private:
  AXIS_TYPE m_letter;
  bool m_is_rotary;
  double m_limit_min;
  double m_limit_max;
  double m_used_min;
  double m_used_max;
  int m_positions_outside = 0;
  int m_first_line_outside = 0;
};

// Everything that the host found out about one path on one machine. Lengths in the machine's unit, angles in
// radians.
struct Figures {
  std::size_t positions = 0;
  double length_scale = 1;  // the largest coordinate that takes part

  Worst part_mach_part;  // length: part to machine and back
  Worst tool_on_part;    // length: the tool point through both trees, against the programmed one
  Worst read_back_xyz;   // length: machine coordinates out of the trees, against those put in
  Worst read_back_abc;   // angle
  Worst states;          // of any element of a transform: after the axis states were taken and restored
  Worst wrap;            // length: wrapped about the rotary axis, against its place in the half-plane
  Worst wrap_back;       // length: wrapped, and turned back by the rotary value
  int not_wrapped = 0;   // positions on the very reference, where rounding leaves no angle
  bool has_rotary_axis = false;

  int unreachable = 0;  // positions that the update could not place
  int first_line_unreachable = 0;
  std::vector<Travel> travels;
  std::string reload_difference;  // empty: saved, loaded again and found equal

  double converted_per_second = 0;  // part to machine and back
  double posed_per_second = 0;      // update, walk and read-back
};

// Prints the table. `tolerance` is relative to the length scale.
void print_figures(const Figures& figures, const char* length_unit, double tolerance);

// True when every round trip is within the tolerance, every position is reached within the travels and the
// reloaded machine is equal. Says on standard error what is not, a line each, beginning with `what`.
bool all_is_well(const Figures& figures, const char* length_unit, double tolerance, const std::string& what);

}  // namespace host

#endif
