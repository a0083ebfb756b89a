// One node of a scene graph in a stream.
#include "machdef/node_record.h"

#include <k5ax/platform/block.h>

#include <array>
#include <stdexcept>

namespace md {

namespace {

enum NodeKind : int { kPlainNode = 0, kAxisNode = 1, kToolNode = 2 };

// A transform's values in memory order.
using MatrixEntries = std::array<double, 12>;

void write_matrix(IIO::Stream& stream, const Geometry::Matrix& matrix) {
  MatrixEntries m;
  matrix.GetMatrix(m[0], m[1], m[2], m[3], m[4], m[5], m[6], m[7], m[8], m[9], m[10], m[11]);
  stream.Write(m.data(), sizeof m);
}

// What all kinds of node have: kind, parent, id, flags, value, transform.
constexpr std::size_t kCommonPart = 3 * 4 + 4 + 8 + sizeof(MatrixEntries);

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
  // What a stream that comes short without an exception leaves out reads as -1 and 0.
  IIO::Block<kCommonPart> common;
  MatrixEntries m{};
  common << -1 << -1 << -1 << 0U << 0.0;
  for (const double entry : m) common << entry;
  common.read(stream);

  int kind;
  int id;
  unsigned int flags;
  double value;
  common >> kind >> parent >> id >> flags >> value;
  for (double& entry : m) common >> entry;

  boost::shared_ptr<sg::node> n = create_node(kind);
  n->reset();  // one from the pool still has the links it was parked with
  n->id(id);
  n->flags(flags);
  n->value(value);
  Geometry::Matrix transform;
  transform.SetMatrix(m[0], m[1], m[2], m[3], m[4], m[5], m[6], m[7], m[8], m[9], m[10], m[11]);
  n->transform(transform);
  if (kind == kAxisNode) sg::axis_node(n.get())->payload().serialize(stream);
  if (kind == kToolNode) stream.Read(&sg::tool_node(n.get())->payload(), sizeof(angled_head));
  return n;
}

}  // namespace md
