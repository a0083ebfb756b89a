// The nodes of a machine's two trees in one list, with what a listing or a check wants to know of each.
#ifndef K5AX_TOOL_SCENE_NODES_H
#define K5AX_TOOL_SCENE_NODES_H

#include <string>
#include <vector>

#include <k5ax/machdef.h>

namespace tool {

/// One node, borrowed from the machine.
struct SceneNode {
  md::sg::node* node;
  md::sg::tnode<md::CAxis2>* axis;   ///< the same node where it carries an axis, else null
  md::sg::tnode<angled_head>* tool;  ///< the same node where it carries a tool, else null
  int tree;                          ///< 0 or 1
  int parent;                        ///< place of the parent in the list, -1 for a root
  int depth;                         ///< 0 for a root
  bool last_child;                   ///< no brother comes after it
  bool in_first_line;                ///< reached from the root by always taking the first child
};

/// All nodes of both trees, tree 0 first, each before its children. A tree of any depth; no recursion.
std::vector<SceneNode> scene_nodes(md::CMachDef& machine);

/// The transform of every node of the list to the root of its tree, as the nodes stand now.
std::vector<Geometry::Matrix> to_roots(const std::vector<SceneNode>& nodes);

/// 0 or 1 where the node is the machine's primary or secondary rotary node, else -1.
int rotary_role(md::CMachDef& machine, const md::sg::node* node);

/// Whether the update writes the axis node's value: a slide by its flag bit 1, a rotary node by being the
/// machine's primary or secondary.
bool is_driven(md::CMachDef& machine, const SceneNode& entry);

/// Brings each rotary node of the table to its zero pose, as a host does before each update: the update
/// measures the tool point before it turns the table.
void table_to_zero(md::CMachDef& machine);

/// Where the transform takes the origin.
Geometry::TPoint<double> shift_of(const Geometry::Matrix& matrix);

/// The twelve numbers: images of X, Y and Z, then the shift.
struct MatrixNumbers {
  double values[12];
};
MatrixNumbers numbers_of(const Geometry::Matrix& matrix);

/// The largest difference between the numbers of two transforms; infinite where one is not finite.
double difference(const Geometry::Matrix& a, const Geometry::Matrix& b);

}  // namespace tool

#endif
