// What the library makes of an axis, a head and a value.
#include "tool/machine/node_geometry.h"

#include <cstring>

namespace tool {

Transform values_of(const Geometry::Matrix& matrix) {
  Transform m;
  matrix.GetMatrix(m[0], m[1], m[2], m[3], m[4], m[5], m[6], m[7], m[8], m[9], m[10], m[11]);
  return m;
}

Transform axis_transform(const AxisRecord& axis, double value) {
  boost::shared_ptr<md::sg::tnode<md::CAxis2>> node = md::NodeAxis_Create();
  md::CAxis2& payload = node->payload();
  payload.SetBaseVector(axis.base);
  payload.SetAxisVector(axis.direction);
  payload.SetAxis(static_cast<AXIS_TYPE>(axis.letter));
  payload.mode(static_cast<AXIS_MODE>(axis.motion));
  const Transform transform = values_of(md::NodeAxis_transform_calc(0, *node, value));
  md::NodeAxis_Free(node);
  return transform;
}

Transform tool_transform(const HeadRecord& head) {
  boost::shared_ptr<md::sg::tnode<angled_head>> node = md::TOOL_NODE_Create();
  std::memcpy(static_cast<void*>(&node->payload()), &head, sizeof head);
  k5axSgToolNodeMatrixSet(node, head.offset);
  const Transform transform = values_of(node->transform());
  md::TOOL_NODE_Free(node);
  return transform;
}

Transform computed_transform(const NodeRecord& node) {
  if (node.kind == kAxisNode) return axis_transform(node.axis, node.value);
  if (node.kind == kToolNode) return tool_transform(node.head);
  return kIdentity;
}

HeadRecord head_of(double turn_deg, double tilt_deg, const double (&lengths)[2], double side_offset) {
  angled_head made;
  k5ax_angled_head_initialise(&made);
  k5ax_angled_head_set(turn_deg, tilt_deg, lengths, side_offset, &made);
  HeadRecord head;
  std::memcpy(static_cast<void*>(&head), &made, sizeof head);
  return head;
}

}  // namespace tool
