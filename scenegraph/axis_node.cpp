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

template class tnode<CAxis2>;

}  // namespace sg

namespace {

Geometry::Matrix translation(const Geometry::TPoint<double>& offset) {
  Geometry::Matrix transform;
  transform.SetTranslation(offset.x, offset.y, offset.z);
  return transform;
}

// Translate(-base) * RotateAboutAxis(direction, angle); the product's translation is -base turned.
// Deliberate: there is no translation back. A fixed node on the root side holds it.
Geometry::Matrix rotation_at_base(const CAxis2& axis, double angle) {
  Geometry::Matrix transform = Geometry::RotateAboutAxis(axis.GetAxisVector(), angle);
  const Geometry::TPoint<double> offset = transform.TransformDirection(-axis.GetBaseVector());
  transform.SetTranslation(offset.x, offset.y, offset.z);
  return transform;
}

}  // namespace

Geometry::Matrix NodeAxis_transform_calc(unsigned int selector, const sg::tnode<CAxis2>& n, double value) {
  const CAxis2& axis = n.payload();
  if (axis.mode() == LINEAR) return translation(axis.GetAxisVector() * value);
  if (axis.mode() == ROTARY) return rotation_at_base(axis, sg::rotation_angle(selector, axis, value));
  return Geometry::Matrix();
}

Geometry::Matrix NodeAxis_transform_calc(unsigned int selector, boost::shared_ptr<sg::tnode<CAxis2>> n,
                                         double value) {
  return n ? NodeAxis_transform_calc(selector, *n, value) : Geometry::Matrix();
}

void NodeAxis_transform_set(unsigned int selector, sg::tnode<CAxis2>& n, double value) {
  n.transform(NodeAxis_transform_calc(selector, n, value));
  n.value(value);
}

void NodeAxis_transform_set(unsigned int selector, boost::shared_ptr<sg::tnode<CAxis2>> n, double value) {
  if (n) NodeAxis_transform_set(selector, *n, value);
}

}  // namespace md
