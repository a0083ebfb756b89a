// md::CAxis2: reading and writing the axis's own component of a triple.
#include <k5ax/axes.h>

#include "axes/axis_letter.h"

namespace md {

double CAxis2::GetValue(double x, double y, double z) const { return value_of(m_type, x, y, z); }

double CAxis2::GetAngle(double x, double y, double z) const { return GetValue(x, y, z); }

double CAxis2::GetValue(boost::shared_ptr<CAxis2> axis, double x, double y, double z) {
  return axis ? axis->GetValue(x, y, z) : 0.0;
}

double CAxis2::GetAngle(boost::shared_ptr<CAxis2> axis, double x, double y, double z) {
  return GetValue(axis, x, y, z);
}

void CAxis2::SetValue(double value, double& x, double& y, double& z) {
  set_value_of(m_type, value, &x, &y, &z);
}

}  // namespace md
