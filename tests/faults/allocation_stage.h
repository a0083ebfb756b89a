// What exists before memory runs out: machines, trees and axes of every kind, and how they look when nothing
// is wrong with them.
#ifndef K5AX_TESTS_FAULTS_ALLOCATION_STAGE_H
#define K5AX_TESTS_FAULTS_ALLOCATION_STAGE_H

#include <memory>
#include <string>

#include <k5ax/kinematics.h>

#include "platform/scratch.h"
#include "support/pools.h"

namespace k5ax_test {

using AxisPtr = boost::shared_ptr<md::CAxis2>;
using NodePtr = boost::shared_ptr<md::sg::node>;

// A node from a pool as if it were new, under its own id.
inline NodePtr named(NodePtr n, int id) {
  n->reset();
  n->id(id);
  return n;
}

// Whether the pools have something to hand out.
enum class Pools { cold, warm };

class AllocationStage {
 public:
  AllocationStage(Pools pools, const ScratchFolder& folder);
  AllocationStage(const AllocationStage&) = delete;
  AllocationStage& operator=(const AllocationStage&) = delete;
  ~AllocationStage();

  // Everything that the stage holds, as bytes.
  std::string look();

  // What a host would notice; each is empty when all is well.

  // Saves, clones, poses what no entry point changes.
  std::string fault_of_source();
  // Uses the machines that entry points change, and walks the trees.
  std::string fault_of_the_rest();
  // Looks for litter, and for a file that is neither the old nor the new one.
  std::string fault_of_files() const;
  // Takes everything out of the pools: each of it has to be whole, there once, and in nobody's hands.
  std::string fault_of_pools() const;

  const char* file() const { return m_file.c_str(); }              // holds the source
  const char* saved_file() const { return m_saved_file.c_str(); }  // says "old" until it is written

  md::CMachDef source;
  std::unique_ptr<md::CMachDef> target;  // as the source at first
  md::CMachDef* flat;                    // the same, from k5axCMachDef_create
  NodePtr tree;                          // an axis node, a root
  NodePtr branch;  // hangs under it, and has many children, the last of them a tool node
  NodePtr loose;   // hangs nowhere
  AxisPtr axis;
  TAxis* record;  // from axis_clone; null at first
  // What the entry point said.
  std::string answer;
  double numbers[3];

 private:
  const ScratchFolder& m_folder;
  std::string m_file;
  std::string m_saved_file;
  std::string m_source_bytes;
  double m_pose[6];
};

// More than this are in a list that a walk, a pose or an exchange needs memory for.
constexpr int kManyPlaces = 40;

}  // namespace k5ax_test

#endif
