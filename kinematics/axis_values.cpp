// Which component of a triple, or of a pair of triples, belongs to an axis.
#include <k5ax/kinematics.h>

namespace md {

double CMachDef::getAngle(boost::shared_ptr<CAxis2> axis, double x, double y, double z) const {
  return axis ? axis->GetAngle(x, y, z) : 0.0;
}

// Deliberate: unlike CAxis2::SetValue, a linear letter names no angle.
void CMachDef::getABCAngles(boost::shared_ptr<CAxis2> axis, double value, double& a, double& b,
                            double& c) const {
  switch (GetAxis(axis)) {
    case AXIS_A:
      a = value;
      break;
    case AXIS_B:
      b = value;
      break;
    case AXIS_C:
      c = value;
      break;
    default:
      break;
  }
}

}  // namespace md

extern "C" double* AXIS_TYPE_val_get(AXIS_TYPE type, double* x, double* y, double* z, double* a, double* b,
                                     double* c) {
  switch (type) {
    case AXIS_A:
      return a;
    case AXIS_B:
      return b;
    case AXIS_C:
      return c;
    case AXIS_X:
      return x;
    case AXIS_Y:
      return y;
    case AXIS_Z:
      return z;
    default:
      return nullptr;
  }
}

double* AXIS_TYPE_val_get(AXIS_TYPE type, Geometry::TPoint<double>& xyz, Geometry::TPoint<double>& abc) {
  return AXIS_TYPE_val_get(type, &xyz.x, &xyz.y, &xyz.z, &abc.x, &abc.y, &abc.z);
}
