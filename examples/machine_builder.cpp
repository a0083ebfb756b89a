// The pieces that a machine definition is put together from: axes, and the nodes of its two trees.
#include "machine_builder.h"

namespace examples {
namespace {

Point positive_direction(AXIS_TYPE letter) {
  switch (letter) {
    case AXIS_A:
    case AXIS_X:
      return CUtility::pt_x;
    case AXIS_B:
    case AXIS_Y:
      return CUtility::pt_y;
    default:
      return CUtility::pt_z;
  }
}

}  // namespace

double deg(double angle_deg) { return angle_deg * math::D2R; }

Axis linear_axis(AXIS_TYPE letter, AXIS_LOCATION location, double min, double max) {
  return md::CAxis2::create(letter, location, CUtility::pt_o, positive_direction(letter), min, max, LINEAR);
}

Axis rotary_axis(AXIS_TYPE letter, AXIS_LOCATION location, const Point& p_base, double min_deg,
                 double max_deg) {
  return md::CAxis2::create(letter, location, p_base, positive_direction(letter), deg(min_deg), deg(max_deg),
                            ROTARY);
}

// [snippet nodes]
Node hang_frame(const Node& parent, int id) {
  const Node node = md::sg::node::create();
  node->reset();  // one from the pool comes as it was given back
  node->id(id);
  if (parent) parent->add_child(node);
  return node;
}

Node hang_fixed(const Node& parent, const Point& offset) {
  const Node node = hang_frame(parent, kFixed);
  node->transform(Geometry::Translate(offset));
  return node;
}

Node hang_axis(const Node& parent, int id, const md::CAxis2& axis) {
  const boost::shared_ptr<md::sg::tnode<md::CAxis2>> node = md::NodeAxis_Create();
  node->reset();
  node->payload() = axis;
  node->id(id);
  node->flags(
      k5axSgNode_calc_flags(1, 0));        // driven; no axis parallel to it, over which it would have to win
  md::NodeAxis_transform_set(0, node, 0);  // for a rotary axis this is not the identity
  parent->add_child(node);
  return node;
}

Node hang_rotary(const Node& parent, int id, const md::CAxis2& axis) {
  // The node itself does Translate(-base), then the rotation; the way back to the line is its parent's.
  return hang_axis(hang_fixed(parent, axis.GetBaseVector()), id, axis);
}

boost::shared_ptr<md::sg::tnode<angled_head>> hang_tool(const Node& parent, int id, const angled_head& head,
                                                        const Point& p_tool) {
  const boost::shared_ptr<md::sg::tnode<angled_head>> node = md::TOOL_NODE_Create();
  node->reset();
  node->payload() = head;
  node->id(id);
  k5axSgToolNodeMatrixSet(node, p_tool);
  parent->add_child(node);
  return node;
}
// [end]

}  // namespace examples
