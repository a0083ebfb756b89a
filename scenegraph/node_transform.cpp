// md::sg::node::Transform: the transform of a node, and whether it turns anything.
//
// Everything is written in place and value by value. A matrix that is copied as soon as it was computed is
// read in pairs of doubles that were written one by one, and the processor has to wait for them.
#include <k5ax/scenegraph.h>

namespace md {
namespace sg {

void node::Transform::set(const Geometry::Matrix& matrix) {
  double xx, xy, xz, yx, yy, yz, zx, zy, zz, tx, ty, tz;
  matrix.GetMatrix(xx, xy, xz, yx, yy, yz, zx, zy, zz, tx, ty, tz);
  m_matrix.SetMatrix(xx, xy, xz, yx, yy, yz, zx, zy, zz, tx, ty, tz);
  m_only_translates = xx == 1 && xy == 0 && xz == 0 &&  //
                      yx == 0 && yy == 1 && yz == 0 &&  //
                      zx == 0 && zy == 0 && zz == 1;
}

void node::Transform::set_translation(const Geometry::TPoint<double>& offset) {
  if (!m_only_translates) Identity();
  m_matrix.SetTranslation(offset.x, offset.y, offset.z);
}

// Translate(-base) * rotation; the product's translation is -base turned.
// Deliberate: there is no translation back. A fixed node on the root side holds it.
void node::Transform::set_rotation_at(const Geometry::TPoint<double>& p_base,
                                      const Geometry::Matrix& rotation) {
  double xx, xy, xz, yx, yy, yz, zx, zy, zz, tx, ty, tz;
  rotation.GetMatrix(xx, xy, xz, yx, yy, yz, zx, zy, zz, tx, ty, tz);
  m_matrix.SetMatrix(xx, xy, xz, yx, yy, yz, zx, zy, zz, 0, 0, 0);
  m_only_translates = false;
  const Geometry::TPoint<double> offset = carry_direction(-p_base);
  m_matrix.SetTranslation(offset.x, offset.y, offset.z);
}

}  // namespace sg
}  // namespace md
