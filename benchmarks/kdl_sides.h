// The same machine in Orocos KDL, used the way its users do: chains and solvers are made once, joint arrays
// and frames are kept, and the solving itself asks for no memory.
#ifndef K5AX_BENCHMARKS_KDL_SIDES_H
#define K5AX_BENCHMARKS_KDL_SIDES_H

#include <array>
#include <memory>
#include <vector>

#include <kdl/chain.hpp>
#include <kdl/chainfksolverpos_recursive.hpp>
#include <kdl/frames.hpp>
#include <kdl/jntarray.hpp>

#include "machines.h"

namespace bench {

// Values of the axes in the order of the letters: X, Y, Z, A, B, C.
using JointValues = std::array<double, 6>;

// The two joints of the table, applied to a point.
class KdlTable {
 public:
  explicit KdlTable(const md::CMachDef& machine);
  KdlTable(const KdlTable&) = delete;
  KdlTable& operator=(const KdlTable&) = delete;

  KDL::Vector part_to_mach(const Position& position) {
    m_joints(0) = -position.abc.x;
    m_joints(1) = -position.abc.z;
    m_solver->JntToCart(m_joints, m_part_to_mach);
    return m_part_to_mach * KDL::Vector(position.xyz.x, position.xyz.y, position.xyz.z);
  }

 private:
  KDL::Chain m_chain;
  std::unique_ptr<KDL::ChainFkSolverPos_recursive> m_solver;  // refers to the chain
  KDL::JntArray m_joints;
  KDL::Frame m_part_to_mach;
};

// Both trees as chains, from the root to the tool and from the part to the machine frame, with the frame
// after every segment. One segment does what a rotary node and its fixed node do together. The linear values
// are given: KDL has no counterpart to solving them.
class KdlPose {
 public:
  struct Branch {
    KDL::Chain chain;
    std::vector<std::size_t> letters;          // of the joints: where each finds its value
    std::vector<const md::sg::node*> reached;  // the k5ax node whose frame each segment's is
    std::unique_ptr<KDL::ChainFkSolverPos_recursive> solver;
    KDL::JntArray joints;
    std::vector<KDL::Frame> frames;
  };

  // Throws std::runtime_error for trees that are not slides, rotary axes with the fixed node of their line,
  // offsets and a tool.
  explicit KdlPose(const md::CMachDef& machine);

  void solve(const JointValues& values) {
    for (Branch& branch : m_branches) {
      for (unsigned int i = 0; i < branch.letters.size(); ++i) branch.joints(i) = values[branch.letters[i]];
      branch.solver->JntToCart(branch.joints, branch.frames);
    }
  }

  const std::array<Branch, 2>& branches() const { return m_branches; }

 private:
  std::array<Branch, 2> m_branches;
};

}  // namespace bench

#endif
