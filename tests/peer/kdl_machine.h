// A machine and its trees in Orocos KDL, made from what the tests write down and not from what the library
// holds.
//
// KDL's points are columns: `A * B` does B first, and a frame leads from its own to its parent's coordinates.
#ifndef K5AX_TESTS_PEER_KDL_MACHINE_H
#define K5AX_TESTS_PEER_KDL_MACHINE_H

#include <map>
#include <string>
#include <vector>

#include <kdl/chain.hpp>
#include <kdl/frames.hpp>
#include <kdl/tree.hpp>

#include "support/scene_form.h"
#include "support/vector_form.h"

namespace peer {

KDL::Vector to_kdl(const vector_form::Vec& v);
vector_form::Vec from_kdl(const KDL::Vector& v);

// A chain of rotary axes about their own lines, posed by a forward solver. The axis that is added last turns
// a point first.
class KdlLines {
 public:
  void add(const vector_form::Axis& axis);
  KDL::Frame pose(const vector_form::Vec& abc) const;

 private:
  KDL::Chain m_chain;
  std::vector<vector_form::Axis> m_axes;
};

// What the axes on the table do to a machine point: the primary's line first, then the secondary's.
KDL::Frame machine_to_part(const vector_form::Machine& m, const vector_form::Vec& abc);

// What both axes do to the tool direction, wherever they sit: the secondary first, then the primary.
KDL::Rotation tool_to_part(const vector_form::Machine& m, const vector_form::Vec& abc);

// One of a scene's two trees as a KDL::Tree: a node is a segment, and an axis node one with a joint.
class KdlTree {
 public:
  explicit KdlTree(const std::vector<vector_form::Node>& nodes);

  // The frame of the node at that place of the list, in the root's parent, at these values of the axis nodes
  // (by place).
  KDL::Frame node_to_root(std::size_t place, const std::map<std::size_t, double>& values) const;

 private:
  KDL::Tree m_tree;
};

}  // namespace peer

#endif
