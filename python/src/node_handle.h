// A node as Python holds it.
#ifndef K5AX_PYTHON_NODE_HANDLE_H
#define K5AX_PYTHON_NODE_HANDLE_H

#include "bindings.h"

namespace k5ax_python {

// A node of a machine keeps the machine alive: when that dies it gives its nodes back to be used again, which
// must not happen to one that is still held. Nor may such a node change its tree, since the machine lists its
// nodes. A node that was made by Python belongs to no machine; a machine is given a copy of it.
struct NodeHandle {
  NodePtr node;
  MachinePtr machine;  // null for a node that belongs to none
};
struct AxisNodeHandle : NodeHandle {};
struct ToolNodeHandle : NodeHandle {};

inline md::sg::tnode<md::CAxis2>& axis_in(const AxisNodeHandle& handle) {
  return *md::sg::axis_node(handle.node.get());
}
inline md::sg::tnode<angled_head>& tool_in(const ToolNodeHandle& handle) {
  return *md::sg::tool_node(handle.node.get());
}

// As Node, AxisNode or ToolNode; None for an empty pointer.
py::object node_object(const NodePtr& node, const MachinePtr& machine);
py::list node_objects(const std::vector<NodePtr>& nodes, const MachinePtr& machine);

}  // namespace k5ax_python

#endif
