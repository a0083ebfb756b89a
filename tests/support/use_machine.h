// Everything that a host does with a machine that it has just loaded, whatever came of the load.
#ifndef K5AX_TESTS_SUPPORT_USE_MACHINE_H
#define K5AX_TESTS_SUPPORT_USE_MACHINE_H

#include <algorithm>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include <k5ax/kinematics.h>

#include "support/hand_machine.h"

namespace k5ax_test {

// A stream of a host's own, over memory, that keeps no log.
class BytesStream : public IIO::Stream {
 public:
  BytesStream() : m_mode(IIO::FILE_WRITE) {}
  explicit BytesStream(std::string bytes) : m_mode(IIO::FILE_READ), m_bytes(std::move(bytes)) {}

  IIO::FILE_MODE Mode() const override { return m_mode; }
  void Write(const void* data, std::size_t size) override {
    m_bytes.append(static_cast<const char*>(data), size);
  }
  void Read(void* data, std::size_t size) override {
    if (m_bytes.size() - m_at < size) throw IIO::FileError("the bytes end here");
    std::memcpy(data, m_bytes.data() + m_at, size);
    m_at += size;
  }

  const std::string& bytes() const { return m_bytes; }

 private:
  IIO::FILE_MODE m_mode;
  std::string m_bytes;
  std::size_t m_at = 0;
};

inline std::string bytes_of(md::CMachDef& machine) {
  BytesStream stream;
  machine.serialize(stream);
  return stream.bytes();
}

inline void read_bytes(md::CMachDef& machine, const std::string& bytes) {
  BytesStream stream(bytes);
  machine.serialize(stream);
}

inline std::string loaded_and_saved(const std::string& bytes) {
  md::CMachDef machine;
  read_bytes(machine, bytes);
  return bytes_of(machine);
}

// Whether some node stands in the trees twice.
inline bool has_twins(const md::CMachDef& machine) {
  std::multiset<const md::sg::node*> all;
  for (const boost::shared_ptr<md::sg::node>& root : machine.SG())
    for (const boost::shared_ptr<md::sg::node>& n : md::sg::node::all_nodes(root)) all.insert(n.get());
  return std::set<const md::sg::node*>(all.begin(), all.end()).size() != all.size();
}

// Whether some node is listed by one that is not its parent, as after a reset where it hung.
inline bool has_strays(const md::CMachDef& machine) {
  for (const boost::shared_ptr<md::sg::node>& root : machine.SG())
    for (const boost::shared_ptr<md::sg::node>& n : md::sg::node::all_nodes(root))
      for (const boost::shared_ptr<md::sg::node>& child : n->children())
        if (child->parent() != n) return true;
  return false;
}

// Walks a tree from one end to the other through the flat face, on a path of its own, and counts the nodes.
inline int count_nodes(k5ax_node* root) {
  int count = 0;
  std::vector<k5ax_node*> open;
  if (root != nullptr) open.push_back(root);
  while (!open.empty()) {
    k5ax_node* const n = open.back();
    open.pop_back();
    ++count;
    node_state state;
    k5axSgNode_state_get_(n, &state);
    for (int i = 0; i < k5axSgNode_child_count(n); ++i) open.push_back(k5axSgNode_child(n, i));
  }
  return count;
}

// Answers what was wrong; empty when nothing was.
inline std::string use_machine(md::CMachDef& machine) {
  // Ask.
  machine.is_valid();
  machine.mw_valid();
  machine.IsToolRadial(0.1, 0.2, 0.3);
  machine.IsToolAxial(0.1, 0.2, 0.3);
  for (int which = 0; which < 6; ++which) k5axCMachDef_axis(which, &machine);
  for (int tree = 0; tree < 2; ++tree) {
    k5ax_node* const root = k5axCMachDef_SG(&machine, tree);
    const int counted = count_nodes(root);
    std::vector<k5ax_node*> listed(static_cast<std::size_t>(counted));
    if (root != nullptr && k5axSgNode_all_nodes(root, listed.data()) != counted)
      return "two walks over one tree count differently";
  }

  // Turn and move.
  Point part;
  Point direction;
  machine.Mach2PartCoords(Point(1, 2, 3), Point(0.1, 0.2, 0.3), part, direction);
  machine.Part2MachCoords(Point(1, 2, 3), Point(0.1, 0.2, 0.3));
  Point wrapped;
  Point rotary;
  double radius = 0;
  md::Cartesian2AxialRotaryVals(&machine, Point(1, 2, 3), Point(0.1, 0.2, 0.3), 0, 1, wrapped, rotary,
                                radius);

  // Pose, read back, restore.
  UpdateNodeAxes_2(&machine, 1, 2, 3, 0.1, 0.2, 0.3);
  double coordinates[6] = {};
  k5axCMachDef_SG2MachCoords(&machine, coordinates);
  md::CMachDef_IdAxisState_set(machine, md::CMachDef_IdAxisState_get(machine));
  CMachDef_ToolNode_matrix_SetXYZ(&machine, 1, 2, 3);

  // Copy, convert, turn for good.
  md::CMachDef clone;
  clone.clone(machine, 3);
  clone.scale(!clone.isMetric());
  clone.orientate(0.1, 0.2);
  bytes_of(clone);

  // What was saved and loaded once is saved into the same ever after. (The first time, a pointer to a node in
  // neither tree is written as an index that nothing has, and is lost; and a node in both trees is written
  // twice. A stray is loaded into neither tree, and what points to it is lost the next time.)
  if (has_twins(machine)) return "";
  std::string once_saved = loaded_and_saved(bytes_of(machine));
  if (has_strays(machine)) once_saved = loaded_and_saved(once_saved);
  if (loaded_and_saved(once_saved) != once_saved)
    return "saved and loaded again, the machine is saved as other bytes";
  return "";
}

}  // namespace k5ax_test

#endif
