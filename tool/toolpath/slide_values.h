// Where a machine's slides stand when its tool point is at X, Y, Z.
//
// X, Y, Z of a machine position say where the tool point is; what a slide stands at, which is what its travel
// limits are about, is the value of its node once the scene graph has been posed. Posing it takes about as
// long as reading and writing a row. So what the poses come to is found out once:
//
//     values  =  xyz G  +  sum over i, j of  f_i(angle1) f_j(angle2) K_ij,      f = 1, cos, sin
//
// since rotary axes move the tool point by sums of products of sines and cosines, and the slides move it
// along straight lines. Whether a machine is like that is tried out, not assumed: one that is not, such as
// one with a slide that turns with the head, is posed for every row.
#ifndef K5AX_TOOL_TOOLPATH_SLIDE_VALUES_H
#define K5AX_TOOL_TOOLPATH_SLIDE_VALUES_H

#include <k5ax/k5ax.h>

#include <array>
#include <cstddef>
#include <vector>

namespace tool {

class SlideValues {
 public:
  using Point = Geometry::TPoint<double>;

  /// Poses the machine's trees, some hundred times. The machine must outlive this and stay as it is.
  explicit SlideValues(md::CMachDef& machine);

  /// The axis that stands for X, Y or Z (0, 1, 2): its letter, its travel; null when the trees have no such
  /// slide, and so its value is 0.
  const md::CAxis2* axis(std::size_t slide) const;

  /// Where X, Y, Z stand, in the machine's length unit.
  ///
  /// @param xyz  machine coordinates
  /// @param abc  radians
  /// @return false when the slides cannot bring the tool point there; `values` is then all zeros
  bool at(const Point& xyz, const Point& abc, std::array<double, 3>& values);

  /// True when the formula holds and the trees are not posed any more.
  bool has_formula() const { return m_has_formula; }

 private:
  using Values = std::array<double, 3>;

  bool pose(const Point& xyz, const Point& abc, Values& values);
  Point angles(double primary, double secondary) const;
  bool find_formula();
  bool is_proved();
  void by_formula(const Point& xyz, const Point& abc, Values& values);
  void turn(double primary, double secondary);

  md::CMachDef& m_machine;
  std::array<md::sg::tnode<md::CAxis2>*, 3> m_slides{};
  std::vector<md::sg::node*> m_table_rotaries;

  bool m_has_formula = false;
  std::array<Values, 3> m_gain{};                  // G, by X, Y, Z of the tool point
  std::array<std::array<Values, 3>, 3> m_terms{};  // K, by f of the primary, then of the secondary
  std::array<std::size_t, 2>
      m_angle_of{};                       // the component of (a, b, c) that turns the primary, the secondary
  std::array<bool, 2> m_turns{};          // whether the primary, the secondary moves a slide at all
  std::array<double, 2> m_last_angles{};  // for which m_offset is
  Values m_offset{};                      // the sum over K
};

}  // namespace tool

#endif
