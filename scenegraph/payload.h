// What a typed node does with what it carries, by the kind of payload.
#ifndef K5AX_SCENEGRAPH_PAYLOAD_H
#define K5AX_SCENEGRAPH_PAYLOAD_H

#include <k5ax/scenegraph.h>

namespace md {
namespace sg {

// The state of a fresh node's payload, beyond what its constructor gives.
void clear_payload(CAxis2& axis);
void clear_payload(angled_head& head);

void copy_payload(CAxis2& to, const CAxis2& from);
void copy_payload(angled_head& to, const angled_head& from);

// What a change of the length unit does to the node itself.
void scale_payload(tnode<CAxis2>& n, double factor);
void scale_payload(tnode<angled_head>& n, double factor);

}  // namespace sg
}  // namespace md

#endif
