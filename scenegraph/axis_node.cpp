// The axis node: an axis in the scene graph, and its transform at a value.
#include <k5ax/foundation.h>

#include "scenegraph/angle_convention.h"
#include "scenegraph/typed_node.h"

// The flags word of an axis's owner. The definition of the machine stands above this room; a node knows of
// its owner no more than this.
extern "C" unsigned int k5axCMachDef_flags_get(const md::CMachDef* machdef);

namespace md {
namespace sg {

bool _angle_convention = false;

namespace {

constexpr unsigned int kConventionBit = 4;

double rotation_angle(unsigned int selector, const CAxis2& axis, double value) {
  if (!_angle_convention || (selector & kConventionBit) == 0) return value;
  if (axis.GetAxis() == AXIS_B) return -value;
  if (axis.GetAxis() == AXIS_C) return value + math::m_pi;
  return value;
}

}  // namespace

void clear_payload(CAxis2& axis) { static_cast<void>(axis); }

// The owner stays: it is the machine's business.
void copy_payload(CAxis2& to, const CAxis2& from) { axis_copy(&to, &from); }

void scale_payload(tnode<CAxis2>& n, double factor) {
  CAxis2::scale(boost::shared_ptr<CAxis2>(boost::shared_ptr<void>(), &n.payload()), factor);

  // The owner may be gone, so it is asked only when its answer counts.
  const unsigned int selector = _angle_convention ? k5axCMachDef_flags_get(n.machdef()) : 0;
  // Deliberate: the angle of a rotary axis is multiplied too.
  NodeAxis_transform_set(selector, n, n.value() * factor);
}

void node::Transform::set_axis(unsigned int selector, const CAxis2& axis, double value) {
  if (axis.mode() == LINEAR)
    set_translation(axis.GetAxisVector() * value);
  else if (axis.mode() == ROTARY)
    set_rotation_at(axis.GetBaseVector(),
                    Geometry::RotateAboutAxis(axis.GetAxisVector(), rotation_angle(selector, axis, value)));
  else
    Identity();
}

template class tnode<CAxis2>;

}  // namespace sg

Geometry::Matrix NodeAxis_transform_calc(unsigned int selector, const sg::tnode<CAxis2>& n, double value) {
  sg::node::Transform transform;
  transform.set_axis(selector, n.payload(), value);
  return transform.matrix();
}

Geometry::Matrix NodeAxis_transform_calc(unsigned int selector, boost::shared_ptr<sg::tnode<CAxis2>> n,
                                         double value) {
  return n ? NodeAxis_transform_calc(selector, *n, value) : Geometry::Matrix();
}

void NodeAxis_transform_set(unsigned int selector, sg::tnode<CAxis2>& n, double value) {
  n.m_transform.set_axis(selector, n.payload(), value);
  n.m_value = value;
}

void NodeAxis_transform_set(unsigned int selector, boost::shared_ptr<sg::tnode<CAxis2>> n, double value) {
  if (n) NodeAxis_transform_set(selector, *n, value);
}

}  // namespace md
