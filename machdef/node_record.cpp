// One node of a scene graph in a stream.
#include "machdef/node_record.h"

#include <stdexcept>

namespace md {

namespace {

enum NodeKind : int { kPlainNode = 0, kAxisNode = 1, kToolNode = 2 };

// The twelve values in memory order, as a raw block.
void write_matrix(IIO::Stream& stream, const Geometry::Matrix& matrix) {
  double m[12];
  matrix.GetMatrix(m[0], m[1], m[2], m[3], m[4], m[5], m[6], m[7], m[8], m[9], m[10], m[11]);
  stream.Write(m, sizeof m);
}

Geometry::Matrix read_matrix(IIO::Stream& stream) {
  double m[12] = {};
  stream.Read(m, sizeof m);
  Geometry::Matrix matrix;
  matrix.SetMatrix(m[0], m[1], m[2], m[3], m[4], m[5], m[6], m[7], m[8], m[9], m[10], m[11]);
  return matrix;
}

boost::shared_ptr<sg::node> create_node(int kind) {
  switch (kind) {
    case kPlainNode:
      return sg::node::create();
    case kAxisNode:
      return NodeAxis_Create();
    case kToolNode:
      return TOOL_NODE_Create();
    default:
      throw std::runtime_error("machine definition: unknown kind of node");
  }
}

}  // namespace

void write_node_record(IIO::Stream& stream, sg::node& n, int parent) {
  sg::tnode<CAxis2>* const axis_node = sg::axis_node(&n);
  sg::tnode<angled_head>* const tool_node = sg::tool_node(&n);

  stream << static_cast<int>(axis_node != nullptr   ? kAxisNode
                             : tool_node != nullptr ? kToolNode
                                                    : kPlainNode);
  stream << parent << n.id() << n.flags() << n.value();
  write_matrix(stream, n.transform());
  if (axis_node != nullptr) axis_node->payload().serialize(stream);
  if (tool_node != nullptr) stream.Write(&tool_node->payload(), sizeof(angled_head));
}

boost::shared_ptr<sg::node> read_node_record(IIO::Stream& stream, int& parent) {
  int kind = -1;
  stream >> kind;
  boost::shared_ptr<sg::node> n = create_node(kind);
  n->reset();  // one from the pool still has the links it was parked with

  int id = -1;
  unsigned int flags = 0;
  double value = 0.0;
  stream >> parent >> id >> flags >> value;
  n->id(id);
  n->flags(flags);
  n->value(value);
  n->transform(read_matrix(stream));
  if (kind == kAxisNode) sg::axis_node(n.get())->payload().serialize(stream);
  if (kind == kToolNode) stream.Read(&sg::tool_node(n.get())->payload(), sizeof(angled_head));
  return n;
}

}  // namespace md
