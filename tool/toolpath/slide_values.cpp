// Where a machine's slides stand when its tool point is at X, Y, Z.
#include "tool/toolpath/slide_values.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace tool {
namespace {

using Point = Geometry::TPoint<double>;

constexpr unsigned int kDriven = 1;  // flag of an axis node: the update drives it

// How far the tool point is sent for the gains: of the size of machines, and a power of two, so that what a
// slide does comes back without a rounding of its own.
constexpr double kReach = 1024;

// Of the largest number that takes part. Poses differ from the formula by some roundings, 1e-15 each; what is
// not like the formula is off by much more than this somewhere among the trials.
constexpr double kTolerance = 1e-11;

constexpr int kTrials = 64;

// Every node below the root, which a machine need not have.
void list_nodes(const boost::shared_ptr<md::sg::node>& root, std::vector<md::sg::node*>& nodes) {
  if (!root) return;
  for (const auto& n : md::sg::node::all_nodes(root)) nodes.push_back(n.get());
}

}  // namespace

SlideValues::SlideValues(md::CMachDef& machine) : m_machine(machine) {
  std::vector<md::sg::node*> nodes;
  for (const auto& root : machine.SG()) list_nodes(root, nodes);

  // As in the update: of several driven nodes of a letter the last one counts.
  for (md::sg::node* const n : nodes) {
    md::sg::tnode<md::CAxis2>* const axis_node = md::sg::axis_node(n);
    if (axis_node == nullptr || (axis_node->flags() & kDriven) == 0 || axis_node->mode() != LINEAR) continue;
    if (axis_node->GetAxis() < AXIS_X || axis_node->GetAxis() > AXIS_Z) continue;
    m_slides[static_cast<std::size_t>(axis_node->GetAxis() - AXIS_X)] = axis_node;
  }
  for (const auto& rotary : machine.SG_RotAxs()) {
    const md::sg::tnode<md::CAxis2>* const axis_node = md::sg::axis_node(rotary.get());
    if (axis_node != nullptr && axis_node->GetAxisLocation() == TABLE)
      m_table_rotaries.push_back(rotary.get());
  }
  const std::array<boost::shared_ptr<md::CAxis2>, 2> rotaries = {machine.getPrimary(),
                                                                 machine.getSecondary()};
  for (std::size_t i = 0; i < rotaries.size(); ++i)
    if (rotaries[i]) m_angle_of[i] = static_cast<std::size_t>(rotaries[i]->GetAxis()) % 3;
  m_has_formula = find_formula() && is_proved();
}

const md::CAxis2* SlideValues::axis(std::size_t slide) const {
  if (m_slides[slide] == nullptr) return nullptr;
  const boost::shared_ptr<md::CAxis2>& defined = m_machine.xyz_axes()[slide];
  return defined ? defined.get() : &m_slides[slide]->payload();
}

bool SlideValues::at(const Point& xyz, const Point& abc, Values& values) {
  if (!m_has_formula) return pose(xyz, abc, values);
  by_formula(xyz, abc, values);
  return true;
}

// The update measures the tool point before it turns the table, so the table has to be at its zero pose.
bool SlideValues::pose(const Point& xyz, const Point& abc, Values& values) {
  for (md::sg::node* const rotary : m_table_rotaries) k5axSgNode_value_set2(m_machine.flags(), rotary, 0);
  const bool reached = md::UpdateNodeAxes_(&m_machine, xyz, abc);
  for (std::size_t i = 0; i < values.size(); ++i)
    values[i] = reached && m_slides[i] != nullptr ? m_slides[i]->value() : 0;
  return reached;
}

Point SlideValues::angles(double primary, double secondary) const {
  Point abc;
  if (m_machine.getPrimary()) m_machine.getPrimary()->SetValue(primary, abc.x, abc.y, abc.z);
  if (m_machine.getSecondary()) m_machine.getSecondary()->SetValue(secondary, abc.x, abc.y, abc.z);
  return abc;
}

// Along an angle, k0 + k1 cos + k2 sin is at 0, pi and pi / 2:  k0 + k1,  k0 - k1,  k0 + k2.
bool SlideValues::find_formula() {
  const std::array<double, 3> places = {0, math::m_pi, math::m_pi / 2};
  std::array<std::array<Values, 3>, 3> met{};
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t j = 0; j < 3; ++j)
      if (!pose(Point(), angles(places[i], places[j]), met[i][j])) return false;

  const auto split = [](double at_0, double at_pi, double at_half_pi) {
    const double k0 = (at_0 + at_pi) / 2;
    return std::array<double, 3>{k0, (at_0 - at_pi) / 2, at_half_pi - k0};
  };
  for (std::size_t slide = 0; slide < 3; ++slide) {
    std::array<std::array<double, 3>, 3> rows{};
    for (std::size_t i = 0; i < 3; ++i) rows[i] = split(met[i][0][slide], met[i][1][slide], met[i][2][slide]);
    for (std::size_t j = 0; j < 3; ++j) {
      const std::array<double, 3> column = split(rows[0][j], rows[1][j], rows[2][j]);
      for (std::size_t i = 0; i < 3; ++i) {
        m_terms[i][j][slide] = column[i];
        if (i > 0 && column[i] != 0) m_turns[0] = true;
        if (j > 0 && column[i] != 0) m_turns[1] = true;
      }
    }
  }

  const std::array<Point, 3> sent = {Point(kReach, 0, 0), Point(0, kReach, 0), Point(0, 0, kReach)};
  for (std::size_t i = 0; i < 3; ++i) {
    Values there{};
    Values opposite{};
    if (!pose(sent[i], Point(), there) || !pose(-sent[i], Point(), opposite)) return false;
    for (std::size_t slide = 0; slide < 3; ++slide)
      m_gain[i][slide] = (there[slide] - opposite[slide]) / (2 * kReach);
  }

  m_last_angles = {0, 0};
  turn(0, 0);
  return true;
}

// At poses all over the place, and at many lengths.
bool SlideValues::is_proved() {
  std::mt19937_64 random(1);
  const auto between = [&random](double from, double to) {
    return from + (to - from) * (static_cast<double>(random() >> 11) / 9007199254740992.0);  // 2^53
  };
  for (int trial = 0; trial < kTrials; ++trial) {
    const double reach = trial % 2 == 0 ? kReach : kReach / 64;
    const Point xyz(between(-reach, reach), between(-reach, reach), between(-reach, reach));
    const Point abc = angles(between(-4, 4), between(-4, 4));
    Values wanted{};
    Values given{};
    if (!pose(xyz, abc, wanted)) return false;
    by_formula(xyz, abc, given);
    double scale = reach;
    for (const double value : wanted) scale = std::max(scale, std::abs(value));
    for (std::size_t i = 0; i < 3; ++i)
      if (!(std::abs(given[i] - wanted[i]) <= kTolerance * scale)) return false;
  }
  return true;
}

void SlideValues::by_formula(const Point& xyz, const Point& abc, Values& values) {
  const std::array<double, 3> angles = {abc.x, abc.y, abc.z};
  const double primary = m_turns[0] ? angles[m_angle_of[0]] : 0;
  const double secondary = m_turns[1] ? angles[m_angle_of[1]] : 0;
  if (primary != m_last_angles[0] || secondary != m_last_angles[1]) turn(primary, secondary);
  for (std::size_t i = 0; i < values.size(); ++i)
    values[i] = m_offset[i] + xyz.x * m_gain[0][i] + xyz.y * m_gain[1][i] + xyz.z * m_gain[2][i];
}

// Only what turns is computed: of a machine with one head axis, three of the nine terms.
void SlideValues::turn(double primary, double secondary) {
  std::array<Values, 3> by_secondary = m_terms[0];
  if (m_turns[0]) {
    const double cosine = std::cos(primary);
    const double sine = std::sin(primary);
    for (std::size_t j = 0; j < (m_turns[1] ? 3U : 1U); ++j)
      for (std::size_t slide = 0; slide < 3; ++slide)
        by_secondary[j][slide] += cosine * m_terms[1][j][slide] + sine * m_terms[2][j][slide];
  }
  m_offset = by_secondary[0];
  if (m_turns[1]) {
    const double cosine = std::cos(secondary);
    const double sine = std::sin(secondary);
    for (std::size_t slide = 0; slide < 3; ++slide)
      m_offset[slide] += cosine * by_secondary[1][slide] + sine * by_secondary[2][slide];
  }
  m_last_angles = {primary, secondary};
}

}  // namespace tool
