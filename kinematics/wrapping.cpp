// Wrapping: a Cartesian point to an axial position and a rotary value about the part's rotary axis.
#include <k5ax/kinematics.h>

#include <cmath>

#include "kinematics/machine_view.h"

namespace md {

namespace {

constexpr double kOnAxis = 5e-9;  // length unit; a point this close to the line has no radial direction

Geometry::TPoint<double> reference_direction(int axis, int sign) {
  const Geometry::TPoint<double> ref = axis == 1   ? CUtility::pt_y
                                       : axis == 2 ? CUtility::pt_z
                                                   : CUtility::pt_x;
  return sign < 0 ? -ref : ref;
}

double angle_of(const CAxis2* axis, const Geometry::TPoint<double>& rotary) {
  return axis != nullptr ? axis->GetAngle(rotary.x, rotary.y, rotary.z) : 0.0;
}

// The direction of the part's rotary axis at the pose `rotary`.
Geometry::TPoint<double> posed_axis_direction(const CMachDef& machdef,
                                              const Geometry::TPoint<double>& rotary) {
  CMachDef posed;
  posed.clone(machdef, 3);
  posed.orientate(angle_of(MachineView::primary(machdef), rotary),
                  angle_of(MachineView::secondary(machdef), rotary));
  return MachineView::part_axis(posed)->GetAxisVector();
}

}  // namespace

void Cartesian2AxialRotaryVals(const CMachDef* machdef, const Geometry::TPoint<double>& point,
                               const Geometry::TPoint<double>& rotary, int refAxis, int refSign,
                               Geometry::TPoint<double>& outPoint, Geometry::TPoint<double>& outRotary,
                               double& radius) {
  using Geometry::TPoint;

  const TPoint<double> p = point;
  TPoint<double> abc = rotary;
  CAxis2* const rotary_axis = machdef != nullptr ? MachineView::part_axis(*machdef) : nullptr;
  if (rotary_axis == nullptr) {
    outPoint = p;
    outRotary = abc;
    radius = 0.0;
    return;
  }

  const TPoint<double> d_axis = posed_axis_direction(*machdef, abc);
  const TPoint<double> foot = Geometry::FindNearestPointOnLine(CUtility::pt_o, d_axis, p);
  const TPoint<double> radial = p - foot;
  const double r = math::length(radial);
  radius = r;
  if (r < kOnAxis) {
    outPoint = p;
    outRotary = abc;
    return;
  }

  // The cosine goes to acos as computed. The reference is a coordinate axis, so it is a component over a
  // length, and both roundings keep it within 1.
  const TPoint<double> u_radial(radial.x / r, radial.y / r, radial.z / r);
  const TPoint<double> u_ref = reference_direction(refAxis, refSign);
  double angle = std::acos(math::dot(u_ref, u_radial));
  if (math::dot(math::safe_normal(math::cross(u_radial, u_ref)), d_axis) < 0.0) angle = -angle;

  rotary_axis->SetValue(-angle, abc.x, abc.y, abc.z);
  outPoint = p * Geometry::RotateAboutAxis(d_axis, angle);
  outRotary = abc;
}

}  // namespace md

extern "C" void Cartesian2AxialRotaryVals_c(const md::CMachDef* machdef, const double* point,
                                            const double* rotary, int refAxis, int refSign, double* outPoint,
                                            double* outRotary, double* radius) {
  if (machdef == nullptr || point == nullptr || rotary == nullptr) return;
  if (outPoint == nullptr || outRotary == nullptr || radius == nullptr) return;

  Geometry::TPoint<double> out_point;
  Geometry::TPoint<double> out_rotary;
  md::Cartesian2AxialRotaryVals(machdef, {point[0], point[1], point[2]}, {rotary[0], rotary[1], rotary[2]},
                                refAxis, refSign, out_point, out_rotary, *radius);
  outPoint[0] = out_point.x;
  outPoint[1] = out_point.y;
  outPoint[2] = out_point.z;
  outRotary[0] = out_rotary.x;
  outRotary[1] = out_rotary.y;
  outRotary[2] = out_rotary.z;
}
