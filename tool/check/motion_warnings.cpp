// Moves a machine and looks where its tool and its part get to. The trees are built by hand, and a way back
// that is missing, a wrong order or a wrong sign shows in no single node; it shows in where things end up.
#include "tool/check/warnings.h"

#include "tool/scene_nodes.h"
#include "tool/text.h"

#include <algorithm>
#include <cmath>
#include <string>

#include <k5ax/kinematics.h>

namespace tool {
namespace {

constexpr double kOff = 1e-6;  // of the machine's size: beyond rounding, and beyond decimals typed

// Angles at which no sine or cosine is like another one, or like that of a right angle.
constexpr double kFirstAngle_deg = 20;
constexpr double kSecondAngle_deg = 35;
const Point p_target(10, 20, 30);

using Findings = std::vector<Finding>;
using Geometry::Matrix;

// Puts every node back as it was.
class Poses {
 public:
  explicit Poses(const std::vector<SceneNode>& nodes) : m_nodes(nodes) {
    for (const SceneNode& entry : nodes) m_was.push_back({entry.node->transform(), entry.node->value()});
  }
  Poses(const Poses&) = delete;
  Poses& operator=(const Poses&) = delete;
  ~Poses() {
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
      m_nodes[i].node->transform(m_was[i].transform);
      m_nodes[i].node->value(m_was[i].value);
    }
  }

 private:
  struct Pose {
    Matrix transform;
    double value;
  };
  const std::vector<SceneNode>& m_nodes;
  std::vector<Pose> m_was;
};

class Motion {
 public:
  Motion(md::CMachDef& machine, const std::vector<SceneNode>& nodes) : m_machine(machine), m_nodes(nodes) {
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      if (nodes[i].node == machine.tool_node().get()) m_tool = i;
      if (nodes[i].tree == 1 && nodes[i].in_first_line) m_leaf = i;  // the last of them is the leaf
      m_size = std::max({m_size, math::length(shift_of(nodes[i].node->transform()))});
    }
  }

  double tolerance() const { return kOff * m_size; }

  // Everything that moves to 0.
  void rest() {
    for (const SceneNode& entry : m_nodes) {
      if (is_driven(m_machine, entry)) k5axSgNode_value_set2(m_machine.flags(), entry.node, 0);
    }
  }

  // The angles of a pose: the axes at `location` at two different angles, the others at 0.
  Point angles(AXIS_LOCATION location) const {
    Point xyz;
    Point abc;
    double angle_deg = kFirstAngle_deg;
    for (const md::CAxis2* axis : {m_machine.getPrimary().get(), m_machine.getSecondary().get()}) {
      if (axis != nullptr && axis->GetAxisLocation() == location) {
        double* const value = AXIS_TYPE_val_get(axis->GetAxis(), xyz, abc);
        if (value != nullptr) *value = angle_deg * math::D2R;
      }
      angle_deg = kSecondAngle_deg;
    }
    return abc;
  }

  Matrix leaf_to_part() const { return to_roots(m_nodes)[m_leaf]; }
  Matrix tool_to_part() const {
    const std::vector<Matrix> node_to_root = to_roots(m_nodes);
    return node_to_root[m_tool] * node_to_root[m_leaf];
  }

  md::CMachDef& machine() const { return m_machine; }

 private:
  md::CMachDef& m_machine;
  const std::vector<SceneNode>& m_nodes;
  std::size_t m_tool = 0;
  std::size_t m_leaf = 0;
  double m_size = 1;
};

std::string at_angles(const Motion& motion, const Point& abc) {
  std::string text;
  for (const md::CAxis2* axis :
       {motion.machine().getPrimary().get(), motion.machine().getSecondary().get()}) {
    if (axis == nullptr) continue;
    const double angle = axis->GetAngle(abc.x, abc.y, abc.z);
    text += (text.empty() ? "at " : " ") + letter_name(axis->GetAxis()) + " " + degrees(angle);
  }
  return text;
}

// With the whole table at 0 the part frame and the machine frame are one.
bool part_rests(Motion& motion, Findings& findings) {
  motion.rest();
  const Matrix leaf_to_part = motion.leaf_to_part();
  if (difference(leaf_to_part, Matrix()) <= motion.tolerance()) return true;

  const Point shift = shift_of(leaf_to_part);
  const bool turned = difference(leaf_to_part, Geometry::Translate(shift)) > motion.tolerance();
  findings.push_back({"part-at-rest", "tree 1",
                      "with all axes at 0 the machine frame stands at " + triple(shift) +
                          " of the part frame" + (turned ? ", and turned" : ""),
                      "check that the parent of each rotary node leads back by its base point"});
  return false;
}

// The part turns by the trees as it turns by the axes.
void part_turns(Motion& motion, Findings& findings) {
  const Point abc = motion.angles(TABLE);
  motion.rest();
  for (const auto& rotary : motion.machine().SG_RotAxs()) {
    const auto* axis = md::sg::axis_node(rotary.get());
    if (axis == nullptr || axis->GetAxisLocation() != TABLE) continue;
    const double angle = axis->payload().GetAngle(abc.x, abc.y, abc.z);
    k5axSgNode_value_set2(motion.machine().flags(), rotary.get(), angle);
  }

  const Matrix leaf_to_part = motion.leaf_to_part();
  double worst = 0;
  Point by_tree;
  Point by_axes;
  for (const Point& p_mach : {Point(0, 0, 0), Point(100, 0, 0), Point(0, 100, 0), Point(0, 0, 100)}) {
    Point p_part;
    Point d_part;
    motion.machine().Mach2PartCoords(p_mach, abc, p_part, d_part);
    const Point p_tree = p_mach * leaf_to_part;
    const double off = math::length(p_tree - p_part);
    if (!(off <= worst)) {
      worst = off;
      by_tree = p_tree;
      by_axes = p_part;
    }
  }
  if (worst <= 100 * motion.tolerance()) return;
  findings.push_back({"part-turns", "tree 1",
                      at_angles(motion, abc) + " it takes to " + triple(by_tree, 7) +
                          " what the axes take to " + triple(by_axes, 7),
                      "check order, base points and directions of its rotary nodes"});
}

// The update brings the tool point where it is told to.
void tool_arrives(Motion& motion, const Point& abc, Findings& findings) {
  motion.rest();
  const std::string target = "X 10 Y 20 Z 30 " + at_angles(motion, abc);
  if (!md::UpdateNodeAxes_(&motion.machine(), p_target, abc)) {
    findings.push_back({"not-reached", "trees", "no pose brings the tool to " + target + ", limits aside",
                        "check that a driven Z slide rises or falls"});
    return;
  }
  const Point p_tool = shift_of(motion.tool_to_part());
  if (math::length(p_tool - p_target) <= motion.tolerance()) return;
  findings.push_back({"missed", "trees",
                      "told to go to " + target + ", the tool comes to " + triple(p_tool, 7),
                      "check that the driven slides X, Y and Z are there, and that X and Y run along 1 0 0 "
                      "and 0 1 0"});
}

// The tool points where the head's axes and the angled head have it.
void tool_points(Motion& motion, const Point& abc, Findings& findings) {
  // The trees know nothing of the flag that says that the tool is vertical.
  if ((motion.machine().flags() & 3U) == 1U) return;
  motion.rest();
  md::UpdateNodeAxes_(&motion.machine(), p_target, abc);
  Point p_part;
  Point d_axes;
  motion.machine().Mach2PartCoords(CUtility::pt_o, abc, p_part, d_axes);
  const double length = math::length(d_axes);
  const Point u_tree = motion.tool_to_part().TransformDirection(CUtility::pt_z);
  if (length == 0 || math::length(u_tree - d_axes * (1 / length)) <= 100 * kOff) return;
  findings.push_back({"tool-points", "trees",
                      at_angles(motion, abc) + " the tool node points along " + triple(u_tree, 7) +
                          ", the axes and the head along " + triple(d_axes * (1 / length), 7),
                      "check the head's rotary nodes, and the tool node's angles"});
}

bool can_be_moved(md::CMachDef& machine) {
  return machine.is_valid() && machine.SG()[0] && machine.SG()[1] && machine.tool_node() != nullptr;
}

}  // namespace

std::vector<Finding> motion_warnings(md::CMachDef& machine) {
  Findings findings;
  const std::vector<SceneNode> nodes = scene_nodes(machine);
  if (!can_be_moved(machine)) return findings;
  for (const SceneNode& entry : nodes) {
    if (difference(entry.node->transform(), Matrix()) > 1e9) return findings;  // not finite, or no machine
  }

  const Poses poses(nodes);
  Motion motion(machine, nodes);
  if (part_rests(motion, findings)) part_turns(motion, findings);

  const std::size_t before = findings.size();
  tool_arrives(motion, Point(), findings);
  tool_points(motion, Point(), findings);
  const Point abc = motion.angles(HEAD);
  if (findings.size() == before && abc != Point()) {
    tool_arrives(motion, abc, findings);
    tool_points(motion, abc, findings);
  }
  return findings;
}

}  // namespace tool
