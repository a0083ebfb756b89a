// The same machine in Orocos KDL.
#include "kdl_sides.h"

#include <stdexcept>

namespace bench {

namespace {

constexpr double kSame = 1e-12;  // millimetres, and components of rotations

KDL::Vector to_kdl(const Point& p) { return KDL::Vector(p.x, p.y, p.z); }

// Our rows are the images of X, Y, Z; in KDL they are columns.
KDL::Frame to_kdl(const Geometry::Matrix& m) {
  double v[12];
  m.GetMatrix(v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8], v[9], v[10], v[11]);
  return KDL::Frame(KDL::Rotation(v[0], v[3], v[6], v[1], v[4], v[7], v[2], v[5], v[8]),
                    KDL::Vector(v[9], v[10], v[11]));
}

std::size_t place_of(AXIS_TYPE letter) {
  return letter >= AXIS_X ? static_cast<std::size_t>(letter - AXIS_X) : static_cast<std::size_t>(letter) + 3;
}

// A segment before it is final: offsets that follow it go into its tip.
struct Piece {
  KDL::Joint joint;
  KDL::Frame tip;
  const md::sg::node* reached;
};

class Pieces {
 public:
  void add(md::sg::node* n) {
    const md::sg::tnode<md::CAxis2>* const axis = md::sg::axis_node(n);
    if (axis == nullptr) {
      m_offset = m_offset * to_kdl(n->transform());
      m_offset_reached = n;
      if (md::sg::tool_node(n) != nullptr) end_offset(true);
    } else if (axis->mode() == LINEAR) {
      end_offset(false);
      m_pieces.push_back(
          {KDL::Joint("", KDL::Vector::Zero(), to_kdl(axis->GetAxisVector()), KDL::Joint::TransAxis),
           KDL::Frame::Identity(), n});
    } else {
      // The joint goes to its line and back by itself, so the fixed node before it has nothing left to do.
      const KDL::Vector base = to_kdl(axis->GetBaseVector());
      if (!KDL::Equal(m_offset, KDL::Frame(base), kSame))
        throw std::runtime_error("a rotary node's parent does not hold the translation back to its line");
      m_offset = KDL::Frame::Identity();
      m_offset_reached = nullptr;
      m_pieces.push_back({KDL::Joint("", base, to_kdl(axis->GetAxisVector()), KDL::Joint::RotAxis),
                          KDL::Frame::Identity(), n});
    }
  }

  // An offset is part of the segment before it, or, the tool and what has none before it, a segment of its
  // own.
  void end_offset(bool of_tool) {
    if (m_offset_reached == nullptr) return;
    const bool does_nothing = KDL::Equal(m_offset, KDL::Frame::Identity(), kSame);
    if (of_tool || (m_pieces.empty() && !does_nothing)) {
      m_pieces.push_back({KDL::Joint(KDL::Joint::Fixed), m_offset, m_offset_reached});
    } else if (!m_pieces.empty()) {
      m_pieces.back().tip = m_pieces.back().tip * m_offset;
      m_pieces.back().reached = m_offset_reached;
    }
    m_offset = KDL::Frame::Identity();
    m_offset_reached = nullptr;
  }

  const std::vector<Piece>& pieces() const { return m_pieces; }

 private:
  std::vector<Piece> m_pieces;
  KDL::Frame m_offset = KDL::Frame::Identity();
  const md::sg::node* m_offset_reached = nullptr;
};

KdlPose::Branch make_branch(md::sg::node* end) {
  Pieces pieces;
  KdlPose::Branch branch;
  for (md::sg::node* const n : path_from_root(end)) {
    pieces.add(n);
    if (const md::sg::tnode<md::CAxis2>* const axis = md::sg::axis_node(n))
      branch.letters.push_back(place_of(axis->GetAxis()));
  }
  pieces.end_offset(false);

  for (const Piece& piece : pieces.pieces()) {
    branch.chain.addSegment(KDL::Segment(piece.joint, piece.tip));
    branch.reached.push_back(piece.reached);
  }
  branch.joints.resize(branch.chain.getNrOfJoints());
  branch.frames.resize(branch.chain.getNrOfSegments());
  return branch;
}

KDL::Segment turning_segment(const md::CAxis2& axis) {
  return KDL::Segment(
      KDL::Joint("", to_kdl(axis.GetBaseVector()), to_kdl(axis.GetAxisVector()), KDL::Joint::RotAxis),
      KDL::Frame::Identity());
}

}  // namespace

KdlTable::KdlTable(const md::CMachDef& machine) : m_joints(2) {
  m_chain.addSegment(turning_segment(*machine.getPrimary()));
  m_chain.addSegment(turning_segment(*machine.getSecondary()));
  m_solver = std::make_unique<KDL::ChainFkSolverPos_recursive>(m_chain);
}

KdlPose::KdlPose(const md::CMachDef& machine) {
  for (md::sg::node* const n : list_nodes(machine))
    if (md::sg::tool_node(n) != nullptr) m_branches[0] = make_branch(n);
  m_branches[1] = make_branch(first_leaf(machine));
  for (Branch& branch : m_branches)
    branch.solver = std::make_unique<KDL::ChainFkSolverPos_recursive>(branch.chain);
}

}  // namespace bench
