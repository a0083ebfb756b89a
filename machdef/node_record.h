// One node of a scene graph in a stream.
#ifndef K5AX_MACHDEF_NODE_RECORD_H
#define K5AX_MACHDEF_NODE_RECORD_H

#include <k5ax/scenegraph.h>

namespace md {

// Writes the node: kind, `parent` (its index), id, flags, value, transform, payload.
void write_node_record(IIO::Stream& stream, sg::node& n, int parent);

// Reads a node of the kind that the record names, with neither children nor a parent. A kind that there is
// not is std::runtime_error.
boost::shared_ptr<sg::node> read_node_record(IIO::Stream& stream, int& parent);

}  // namespace md

#endif
