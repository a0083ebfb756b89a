// A machine with scene-graph trees, written down node by node.
#ifndef K5AX_TESTS_SUPPORT_SCENE_MACHINE_H
#define K5AX_TESTS_SUPPORT_SCENE_MACHINE_H

#include <cstddef>
#include <initializer_list>
#include <stdexcept>
#include <vector>

#include <k5ax/kinematics.h>

#include "support/hand_machine.h"

namespace k5ax_test {

using NodePtr = boost::shared_ptr<md::sg::node>;
using AxisNodePtr = boost::shared_ptr<md::sg::tnode<md::CAxis2>>;
using ToolNodePtr = boost::shared_ptr<md::sg::tnode<angled_head>>;

constexpr Point kX(1, 0, 0);
constexpr Point kY(0, 1, 0);
constexpr Point kZ(0, 0, 1);

// The id whose transform stays through `initialise`, and which the read-back leaves out: for fixed offsets.
constexpr int kFixedId = -999;

// Flags of a linear axis node: value 1, the update drives it; value 2, it wins among parallel ones.
constexpr unsigned int kDriven = 1;
constexpr unsigned int kMarked = 2;
constexpr unsigned int kDrivenAndMarked = kDriven | kMarked;

// Nodes come out of the pools as they went in, so everything is set.
inline NodePtr plain_node(int id, const Geometry::Matrix& transform = Geometry::Matrix()) {
  const NodePtr n = md::sg::node::create();
  n->reset();
  n->id(id);
  n->transform(transform);
  return n;
}

inline NodePtr shift_node(int id, const Point& shift) { return plain_node(id, Geometry::Translate(shift)); }

inline NodePtr axis_node(int id, AXIS_TYPE letter, AXIS_LOCATION location, AXIS_MODE mode, const Point& base,
                         const Point& direction, unsigned int flags, double value = 0) {
  const AxisNodePtr n = md::NodeAxis_Create();
  n->node::reset();
  n->id(id);
  n->flags(flags);
  n->SetAxis(letter);
  n->SetAxisLocation(location);
  n->SetBaseVector(base);
  n->SetAxisVector(direction);
  n->SetMin(-1);
  n->SetMax(1);
  n->mode(mode);
  n->machdef(nullptr);
  md::NodeAxis_transform_set(0, *n, value);
  return n;
}

inline NodePtr linear_node(int id, AXIS_TYPE letter, const Point& direction, unsigned int flags = kDriven,
                           double value = 0) {
  return axis_node(id, letter, HEAD, LINEAR, Point(), direction, flags, value);
}

// Unflagged: the two rotary axes of a machine are driven without.
inline NodePtr rotary_node(int id, AXIS_TYPE letter, AXIS_LOCATION location, const Point& direction,
                           const Point& base = Point(), double value = 0) {
  return axis_node(id, letter, location, ROTARY, base, direction, 0, value);
}

inline NodePtr tool_node(int id, const Point& tool_point = Point(), const angled_head& head = angled_head()) {
  const ToolNodePtr n = md::TOOL_NODE_Create();
  n->node::reset();
  n->id(id);
  n->payload() = head;
  k5axSgToolNodeMatrixSet(n, tool_point);
  return n;
}

// A chain from the first node, the root, to the last.
inline NodePtr chain(std::initializer_list<NodePtr> root_to_leaf) {
  NodePtr parent;
  for (const NodePtr& n : root_to_leaf) {
    if (parent) parent->add_child(n);
    parent = n;
  }
  return *root_to_leaf.begin();
}

// The lists that the update walks are made by cloning and loading alone: a machine is put together from the
// nodes that the test writes down, and cloned for use. Nodes of the clone are named by the ones they were
// made from.
class SceneMachine {
 public:
  explicit SceneMachine(const NodePtr& root0, const NodePtr& root1 = NodePtr(),
                        const NodePtr& primary = NodePtr(), const NodePtr& secondary = NodePtr()) {
    m_source.SG()[0] = root0;
    m_source.SG()[1] = root1;
    m_machdef.clone(m_source, 3);
    // Cloning finds the rotary and the tool nodes by id and by kind; where nodes share an id, that is not
    // what the test has written down.
    m_machdef.SG_RotAxs()[0] = twin(primary);
    m_machdef.SG_RotAxs()[1] = twin(secondary);
    for (const NodePtr& n : all(m_machdef)) {
      const ToolNodePtr tool = boost::dynamic_pointer_cast<md::sg::tnode<angled_head>>(n);
      if (tool && !m_machdef.tool_node()) m_machdef.tool_node(tool);
    }
  }
  SceneMachine(const SceneMachine&) = delete;
  SceneMachine& operator=(const SceneMachine&) = delete;

  md::CMachDef& machdef() { return m_machdef; }

  // The node of the machine that stands where `original` was written down.
  NodePtr twin(const NodePtr& original) const {
    if (!original) return NodePtr();
    const std::vector<NodePtr> originals = all(m_source);
    const std::vector<NodePtr> twins = all(m_machdef);
    for (std::size_t i = 0; i < originals.size(); ++i)
      if (originals[i] == original) return twins[i];
    throw std::logic_error("this node is in neither tree");
  }

  double value(const NodePtr& original) const { return twin(original)->value(); }
  const Geometry::Matrix& transform(const NodePtr& original) const { return twin(original)->transform(); }
  // Where the node takes its own origin.
  Point shift(const NodePtr& original) const { return Point() * transform(original); }

  bool update(const Point& xyz, const Point& abc = Point()) {
    return md::UpdateNodeAxes_(&m_machdef, xyz, abc);
  }

 private:
  static std::vector<NodePtr> all(const md::CMachDef& machdef) {
    std::vector<NodePtr> nodes = md::sg::node::all_nodes(machdef.SG()[0]);
    const std::vector<NodePtr> more = md::sg::node::all_nodes(machdef.SG()[1]);
    nodes.insert(nodes.end(), more.begin(), more.end());
    return nodes;
  }

  md::CMachDef m_source;
  md::CMachDef m_machdef;
};

}  // namespace k5ax_test

#endif
