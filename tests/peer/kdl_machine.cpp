// A machine and its trees in Orocos KDL.
#include "peer/kdl_machine.h"

#include <stdexcept>

#include <kdl/chainfksolverpos_recursive.hpp>
#include <kdl/treefksolverpos_recursive.hpp>

namespace peer {

namespace {

using vector_form::Axis;
using vector_form::Kind;
using vector_form::Machine;
using vector_form::Node;
using vector_form::Vec;

KDL::Joint rotary_joint(const std::string& name, const Vec& base, const Vec& direction) {
  return KDL::Joint(name, to_kdl(base), to_kdl(direction), KDL::Joint::RotAxis);
}

// The name of the segment, and of its joint, for the node at that place.
std::string name_of(std::size_t place) { return "n" + std::to_string(place); }

KDL::Rotation about(const Vec& axis, double angle) { return KDL::Rotation::Rot(to_kdl(axis), angle); }

// The tool node leads from the tool point to the head's frame: back along the lower arm, tilt about Y, back
// along the upper arm, turn about Z, back by the tool point.
KDL::Frame tool_to_parent(const Node& n) {
  return KDL::Frame(to_kdl(-n.tool_point)) * KDL::Frame(KDL::Rotation::RotZ(n.swivel)) *
         KDL::Frame(KDL::Vector(0, 0, -n.length1)) * KDL::Frame(KDL::Rotation::RotY(n.tilt)) *
         KDL::Frame(KDL::Vector(0, 0, -n.length2));
}

KDL::Segment segment_of(const Node& n, const std::string& name) {
  switch (n.kind) {
    case Kind::axis:
      if (n.mode == LINEAR)
        return KDL::Segment(
            name, KDL::Joint(name, KDL::Vector::Zero(), to_kdl(n.direction), KDL::Joint::TransAxis));
      // It brings its line to the origin and turns; a node on the root side leads back.
      return KDL::Segment(name, rotary_joint(name, Vec(), n.direction), KDL::Frame(to_kdl(-n.base)));
    case Kind::tool:
      return KDL::Segment(name, KDL::Joint(name, KDL::Joint::Fixed), tool_to_parent(n));
    default:
      return KDL::Segment(name, KDL::Joint(name, KDL::Joint::Fixed),
                          KDL::Frame(about(n.turn_axis, n.turn), to_kdl(n.shift)));
  }
}

}  // namespace

KDL::Vector to_kdl(const Vec& v) { return KDL::Vector(v.x, v.y, v.z); }

Vec from_kdl(const KDL::Vector& v) { return {v.x(), v.y(), v.z()}; }

void KdlLines::add(const Axis& axis) {
  m_chain.addSegment(KDL::Segment(rotary_joint("", axis.base, axis.direction)));
  m_axes.push_back(axis);
}

KDL::Frame KdlLines::pose(const Vec& abc) const {
  KDL::JntArray joints(static_cast<unsigned int>(m_axes.size()));
  for (unsigned int i = 0; i < m_axes.size(); ++i) joints(i) = angle_of(m_axes[i], abc);
  KDL::ChainFkSolverPos_recursive solver(m_chain);
  KDL::Frame frame;
  if (solver.JntToCart(joints, frame) < 0) throw std::logic_error("KDL does not solve its chain");
  return frame;
}

KDL::Frame machine_to_part(const Machine& m, const Vec& abc) {
  KdlLines lines;
  for (const Axis& axis : {m.secondary, m.primary})
    if (on_table(axis)) lines.add(axis);
  return lines.pose(abc);
}

KDL::Rotation tool_to_part(const Machine& m, const Vec& abc) {
  KdlLines lines;
  for (const Axis& axis : {m.primary, m.secondary})
    if (axis.present) lines.add(axis);
  return lines.pose(abc).M;
}

KdlTree::KdlTree(const std::vector<Node>& nodes) : m_tree("root") {
  // KDL reads the first joint's value at every fixed segment too, so there has to be one.
  m_tree.addSegment(KDL::Segment("idle", KDL::Joint("idle", KDL::Joint::RotZ)), "root");
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const int parent = nodes[i].parent;
    const std::string hook = parent < 0 ? "root" : name_of(static_cast<std::size_t>(parent));
    if (!m_tree.addSegment(segment_of(nodes[i], name_of(i)), hook))
      throw std::logic_error("KDL does not take a segment");
  }
}

KDL::Frame KdlTree::node_to_root(std::size_t place, const std::map<std::size_t, double>& values) const {
  KDL::JntArray joints(m_tree.getNrOfJoints());
  for (const auto& entry : values)
    joints(m_tree.getSegment(name_of(entry.first))->second.q_nr) = entry.second;
  KDL::TreeFkSolverPos_recursive solver(m_tree);
  KDL::Frame frame;
  if (solver.JntToCart(joints, frame, name_of(place)) < 0)
    throw std::logic_error("KDL does not solve its tree");
  return frame;
}

}  // namespace peer
