// Posing the scene graph for machine coordinates.
#include <algorithm>
#include <array>
#include <cmath>

#include "kinematics/machine_view.h"

namespace md {

namespace {

using AxisNode = sg::tnode<CAxis2>;
using Geometry::TPoint;

constexpr unsigned int kDriven = 1;  // node flag: the update drives the axis node
constexpr unsigned int kPreferred =
    2;  // node flag: wins among parallel linear axes, and comes first among Z nodes

// The one tolerance of the solve, absolute: of a cosine, or in the length unit.
constexpr double kTolerance = 0.001;

// What the update knows of X, Y or Z.
struct LinearAxis {
  AxisNode* node =
      nullptr;  // null where the machine has no such axis, or where it was dropped for a parallel one
  TPoint<double> d_world;  // its direction; zero where there is no node
  bool preferred = false;
  bool active = true;
};

// The first two Z nodes in the order of preference. Walking in order, a preferred node goes to the very front
// and any other to the back, so the first two are the preferred node met last and the one before it, filled
// up with the others met first.
class ZNodes {
 public:
  void add(const AxisNode& n) {
    if ((n.flags() & kPreferred) != 0) {
      m_before_last_preferred = m_last_preferred;
      m_last_preferred = &n;
    } else if (m_first_other == nullptr) {
      m_first_other = &n;
    } else if (m_second_other == nullptr) {
      m_second_other = &n;
    }
  }

  const AxisNode* first() const { return m_last_preferred != nullptr ? m_last_preferred : m_first_other; }
  const AxisNode* second() const {
    if (m_last_preferred == nullptr) return m_second_other;
    return m_before_last_preferred != nullptr ? m_before_last_preferred : m_first_other;
  }

 private:
  const AxisNode* m_last_preferred = nullptr;
  const AxisNode* m_before_last_preferred = nullptr;
  const AxisNode* m_first_other = nullptr;
  const AxisNode* m_second_other = nullptr;
};

class SceneUpdate {
 public:
  SceneUpdate(CMachDef& machdef, const TPoint<double>& xyz, const TPoint<double>& abc)
      : m_machdef(machdef), m_selector(machdef.flags()), m_xyz(xyz), m_abc(abc) {}

  bool run() {
    find_axes();
    pose_rotaries(HEAD);
    measure_directions();
    const bool z_is_fixed = has_crossed_z_axes();
    drop_parallel_axes();
    zero_linear_axes();
    if (!has_nodes()) return true;

    std::array<double, 3> values{};
    const bool reached = z_is_fixed ? solve_without_z(values) : solve(values);
    if (reached)
      for (std::size_t i = 0; i < m_linear.size(); ++i)
        if (m_linear[i].node != nullptr) NodeAxis_transform_set(m_selector, *m_linear[i].node, values[i]);
    pose_rotaries(TABLE);
    return reached;
  }

 private:
  const std::vector<boost::shared_ptr<sg::node>>& nodes(std::size_t tree) const {
    return MachineView::nodes(m_machdef, tree);
  }

  bool has_nodes() const { return !nodes(0).empty() || !nodes(1).empty(); }

  template <class Visit>
  void for_each_axis_node(Visit visit) const {
    for (std::size_t tree = 0; tree < 2; ++tree)
      for (const boost::shared_ptr<sg::node>& n : nodes(tree))
        if (AxisNode* const axis_node = sg::axis_node(n.get())) visit(*axis_node);
  }

  void find_axes() {
    for_each_axis_node([this](AxisNode& n) {
      if (n.GetAxis() == AXIS_Z) m_z_nodes.add(n);
      if (n.mode() != LINEAR) return;
      ++m_linear_node_count;
      if ((n.flags() & kDriven) == 0 || n.GetAxis() < AXIS_X || n.GetAxis() > AXIS_Z) return;
      m_linear[static_cast<std::size_t>(n.GetAxis() - AXIS_X)].node = &n;
    });
  }

  void pose_rotaries(AXIS_LOCATION location) {
    for (const boost::shared_ptr<sg::node>& rotary : m_machdef.SG_RotAxs()) {
      AxisNode* const axis_node = sg::axis_node(rotary.get());
      if (axis_node == nullptr || axis_node->GetAxisLocation() != location) continue;
      if (const double* const value = AXIS_TYPE_val_get(axis_node->GetAxis(), m_xyz, m_abc))
        NodeAxis_transform_set(m_selector, *axis_node, *value);
    }
  }

  void measure_directions() {
    for (LinearAxis& axis : m_linear) {
      if (axis.node == nullptr) continue;
      axis.d_world = direction_to_root(axis.node->GetAxisVector(), axis.node);
      axis.preferred = (axis.node->flags() & kPreferred) != 0;
    }
  }

  // Whether the first two Z nodes stand at right angles. Both are measured with the direction of the last
  // linear axis. It only counts where one of the linear axes is preferred.
  bool has_crossed_z_axes() const {
    const AxisNode* last_linear = nullptr;
    bool any_preferred = false;
    for (const LinearAxis& axis : m_linear) {
      if (axis.node == nullptr) continue;
      last_linear = axis.node;
      any_preferred = any_preferred || axis.preferred;
    }
    if (last_linear == nullptr || !any_preferred) return false;
    if (m_z_nodes.first() == nullptr || m_z_nodes.second() == nullptr) return false;

    const TPoint<double> d_first = direction_to_root(last_linear->GetAxisVector(), m_z_nodes.first());
    const TPoint<double> d_second = direction_to_root(last_linear->GetAxisVector(), m_z_nodes.second());
    return std::abs(math::dot(d_first, d_second)) <= kTolerance;
  }

  // Of two parallel axes one is dropped: it is neither zeroed nor written, and keeps its value.
  void drop_parallel_axes() {
    for (std::size_t i = 0; i < 3; ++i)
      for (std::size_t j = i + 1; j < 3; ++j) {
        LinearAxis& first = m_linear[i];
        LinearAxis& second = m_linear[j];
        if (!first.active || !second.active) break;
        if (std::abs(std::abs(math::dot(first.d_world, second.d_world)) - 1) > kTolerance) continue;

        first.active = first.preferred;
        second.active = second.preferred;
        LinearAxis& dropped = first.active ? second : first;
        if (dropped.node != nullptr) {
          m_dropped_ids[m_dropped_count++] = dropped.node->id();
          dropped.node = nullptr;
        }
        m_found_parallel = true;
      }
  }

  // Every linear axis node that has the id of a driven node, driven itself or not, unless an axis of that id
  // was dropped.
  void zero_linear_axes() {
    if (has_one_node_per_linear_axis()) {
      for (const LinearAxis& axis : m_linear)
        if (axis.node != nullptr && !was_dropped(axis.node->id()))
          NodeAxis_transform_set(m_selector, *axis.node, 0.0);
      return;
    }
    MachineView::FewIds few;
    int* const driven_ids = MachineView::room_for_ids(m_machdef, few);
    int* driven_ids_end = nullptr;  // they are listed when first asked for
    for_each_axis_node([&](AxisNode& n) {
      if (n.mode() != LINEAR || was_dropped(n.id())) return;
      if ((n.flags() & kDriven) == 0) {
        if (driven_ids_end == nullptr) driven_ids_end = list_driven_ids(driven_ids);
        if (!std::binary_search(driven_ids, driven_ids_end, n.id())) return;
      }
      NodeAxis_transform_set(m_selector, n, 0.0);
    });
  }

  // The usual machine: the driven X, Y and Z are all the linear axis nodes there are.
  bool has_one_node_per_linear_axis() const {
    std::size_t count = m_dropped_count;
    for (const LinearAxis& axis : m_linear) count += axis.node != nullptr;
    return count == m_linear_node_count;
  }

  bool was_dropped(int id) const {
    for (std::size_t i = 0; i < m_dropped_count; ++i)
      if (m_dropped_ids[i] == id) return true;
    return false;
  }

  // Writes them in ascending order from `ids` on, and returns their end.
  int* list_driven_ids(int* ids) const {
    int* end = ids;
    for_each_axis_node([&end](const AxisNode& n) {
      if ((n.flags() & kDriven) != 0) *end++ = n.id();
    });
    std::sort(ids, end);
    return end;
  }

  // Where the tool point lies with the linear axes at zero and the table as it was before the call.
  TPoint<double> measure_tool_point() const {
    const TPoint<double> p_mach = point_to_root(CUtility::pt_o, MachineView::tool_node(m_machdef));
    for (const boost::shared_ptr<sg::node>& n : nodes(1))
      if (n->child_list().empty()) return point_to_root(p_mach, n.get());
    return p_mach;
  }

  // X and Y are free, and Z runs along its own direction d up to the target's height: with I on P + t d,
  //   vX = T.x - I.x,  vY = T.y - I.y,  vZ = d . (I - P)
  bool solve(std::array<double, 3>& values) const {
    const TPoint<double> p_tool = measure_tool_point();
    const TPoint<double> d_z = m_linear[2].d_world;
    const Geometry::Plane target_height(CUtility::pt_z, m_xyz);
    TPoint<double> p_met;
    if (target_height.Intersect(p_tool, p_tool + d_z, p_met)) {
      values = {m_xyz.x - p_met.x, m_xyz.y - p_met.y, math::dot(d_z, p_met - p_tool)};
      return true;
    }
    if (!target_height.PointLiesInPlane(p_tool)) return false;
    values = {m_xyz.x - p_tool.x, m_xyz.y - p_tool.y, 0.0};
    return true;
  }

  // With two Z axes at right angles the height cannot change; each active axis goes as far along its
  // direction as the plane through the target lies across it.
  bool solve_without_z(std::array<double, 3>& values) const {
    const TPoint<double> p_tool = measure_tool_point();
    if (!(std::abs(m_xyz.z - p_tool.z) <= kTolerance)) return false;
    if (!m_found_parallel) return true;

    for (std::size_t i = 0; i < m_linear.size(); ++i) {
      if (!m_linear[i].active) continue;
      const TPoint<double> d = m_linear[i].d_world;
      TPoint<double> p_met;
      if (!Geometry::Plane(d, m_xyz).Intersect(p_tool, p_tool + d, p_met)) continue;
      const double distance = math::length(p_met - p_tool);
      values[i] = math::dot(p_met - p_tool, d) < 0 ? -distance : distance;
    }
    return true;
  }

  CMachDef& m_machdef;
  const unsigned int m_selector;
  TPoint<double> m_xyz;
  TPoint<double> m_abc;
  std::array<LinearAxis, 3> m_linear;  // X, Y, Z
  ZNodes m_z_nodes;
  std::size_t m_linear_node_count = 0;  // linear axis nodes of both trees, driven or not
  bool m_found_parallel = false;
  std::array<int, 3> m_dropped_ids{};
  std::size_t m_dropped_count = 0;
};

}  // namespace

bool UpdateNodeAxes_(CMachDef* md, Geometry::TPoint<double> xyz, Geometry::TPoint<double> abc) {
  return md != nullptr && SceneUpdate(*md, xyz, abc).run();
}

bool CMachDef_MachCoords2SG(CMachDef& md, const Geometry::TPoint<double>& xyz,
                            const Geometry::TPoint<double>& abc) {
  return UpdateNodeAxes_(&md, xyz, abc);
}

}  // namespace md

extern "C" int k5axCMachDef_MachCoords2SG(md::CMachDef* machdef, const double* v) {
  if (machdef == nullptr || v == nullptr) return 0;
  return md::UpdateNodeAxes_(machdef, {v[0], v[1], v[2]}, {v[3], v[4], v[5]}) ? 1 : 0;
}

extern "C" bool UpdateNodeAxes_2(md::CMachDef* machdef, double x, double y, double z, double a, double b,
                                 double c) {
  return md::UpdateNodeAxes_(machdef, {x, y, z}, {a, b, c});
}
