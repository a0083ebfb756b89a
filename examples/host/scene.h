// The scene graph of one machine as a host uses it: posed, walked, and read.
#ifndef K5AX_EXAMPLES_HOST_SCENE_H
#define K5AX_EXAMPLES_HOST_SCENE_H

#include <vector>

#include <k5ax/k5ax.h>

namespace host {

using Point = Geometry::TPoint<double>;
using AxisNode = md::sg::tnode<md::CAxis2>;

// One node of a walk. Parents come before their children.
struct SceneNode {
  md::sg::node* node;
  int parent;  // its place in the walk, -1 for the root
  Geometry::Matrix node_to_root;
};

// The two trees of a machine that has both and a tool node. Everything is borrowed from the machine, which
// must neither change its trees nor go away meanwhile.
class Scene {
 public:
  explicit Scene(md::CMachDef& machine);

  // Poses the trees for machine coordinates, each pose standing for itself. False when the point cannot be
  // reached.
  bool pose(const Point& p_mach, const Point& abc);

  // Walks both trees and reads where every node is now.
  void read_transforms();

  // As read last: the nodes of tree 0 or 1, and the tool point carried through both trees into the part's
  // frame.
  const std::vector<SceneNode>& nodes(int tree) const { return m_trees[tree]; }
  Point p_tool_part() const;

  // The axis nodes, in the order of the walk.
  const std::vector<AxisNode*>& axes() const { return m_axes; }

 private:
  void walk(int tree);

  md::CMachDef& m_machine;
  std::vector<SceneNode> m_trees[2];
  std::vector<AxisNode*> m_axes;
  std::vector<md::sg::node*> m_table_rotaries;
  std::size_t m_tool;  // in tree 0
  std::size_t m_leaf;  // in tree 1
};

}  // namespace host

#endif
