// md::CMachDef: positions and tool directions between part and machine coordinates.
//
// An axis turns about its own line, base point b and direction v. As a matrix that is
//
//     T(-b) Rot(v, angle) T(b)  =  the rotation Rot(v, angle) with the translation b - b Rot(v, angle)
//
// and of a point p it makes (p - b) Rot(v, angle) + b, which saves the product of matrices. Where a single
// vector is to be turned, the matrix is left out as well; see AxisRotation.
#include <k5ax/kinematics.h>

#include "kinematics/axis_rotation.h"

namespace md {

namespace {

using Geometry::Matrix;
using Geometry::TPoint;

double angle_of(const CAxis2& axis, const TPoint<double>& abc) { return axis.GetAngle(abc.x, abc.y, abc.z); }

Matrix rotation_about_line(const CAxis2& axis, double angle) {
  Matrix rotation = Geometry::RotateAboutAxis(axis.GetAxisVector(), angle);
  const TPoint<double> offset = axis.GetBaseVector() - rotation.TransformDirection(axis.GetBaseVector());
  rotation.SetTranslation(offset.x, offset.y, offset.z);
  return rotation;
}

// An axis that is missing turns nothing.
AxisRotation rotation_of(const CAxis2* axis, const TPoint<double>& abc) {
  return axis != nullptr ? AxisRotation(*axis, angle_of(*axis, abc)) : AxisRotation();
}

bool on_table(const CAxis2* axis) { return axis != nullptr && axis->GetAxisLocation() == TABLE; }

bool on_head(const CAxis2* axis) { return axis != nullptr && axis->GetAxisLocation() == HEAD; }

// A machine without rotary axes: C about Z and, on a table-table machine, then B about Y.
Matrix fixed_part_to_mach(MACHINE_TYPE type, const TPoint<double>& abc) {
  Matrix part_to_mach = Geometry::RotateAboutAxis(0, 0, 1, -abc.z);
  if (type == MC_TT) part_to_mach *= Geometry::RotateAboutAxis(0, 1, 0, -abc.y);
  return part_to_mach;
}

}  // namespace

bool CMachDef::has_known_type() const { return m_machType >= MC_TT && m_machType <= MC_HH; }

void CMachDef::Mach2PartTransform(const TPoint<double>& xyz, const TPoint<double>& abc, Matrix& primary,
                                  Matrix& secondary) const {
  static_cast<void>(xyz);
  const TPoint<double> angles = abc;
  primary.Identity();
  secondary.Identity();
  if (!has_known_type()) return;
  if (m_secondary) secondary = rotation_about_line(*m_secondary, angle_of(*m_secondary, angles));
  if (m_primary) primary = rotation_about_line(*m_primary, angle_of(*m_primary, angles));
}

const Matrix CMachDef::Mach2PartTransform(const TPoint<double>& xyz, const TPoint<double>& abc) const {
  Matrix primary;
  Matrix secondary;
  Mach2PartTransform(xyz, abc, primary, secondary);
  return secondary * primary;
}

void CMachDef::Mach2PartCoords(const TPoint<double>& xyz, const TPoint<double>& abc,
                               TPoint<double>& partPoint, TPoint<double>& partToolDir) const {
  TPoint<double> p_part = xyz;
  TPoint<double> d_tool_part = getToolDir();
  if (has_known_type()) {
    const AxisRotation primary = rotation_of(m_primary.get(), abc);
    const AxisRotation secondary = rotation_of(m_secondary.get(), abc);
    // Deliberate: the point goes with the table axes alone, primary first; the tool direction goes with both
    // axes wherever they sit, secondary first.
    if (on_table(m_primary.get())) p_part = primary.turn_point(p_part);
    if (on_table(m_secondary.get())) p_part = secondary.turn_point(p_part);
    for (const AxisRotation* const rotation : {&secondary, &primary})
      d_tool_part = rotation->turn_direction(d_tool_part);
  }
  partPoint = p_part;
  partToolDir = d_tool_part;
}

const Matrix CMachDef::Part2MachTransform(const TPoint<double>& abc) const {
  if (!m_primary && !m_secondary) return fixed_part_to_mach(m_machType, abc);

  Matrix part_to_mach;
  if (on_table(m_secondary.get()))
    part_to_mach *= rotation_about_line(*m_secondary, -angle_of(*m_secondary, abc));
  if (on_table(m_primary.get())) part_to_mach *= rotation_about_line(*m_primary, -angle_of(*m_primary, abc));
  return part_to_mach;
}

TPoint<double> CMachDef::Part2MachCoords(TPoint<double> xyz, const TPoint<double>& abc) const {
  if (!m_primary && !m_secondary) return xyz * fixed_part_to_mach(m_machType, abc);

  TPoint<double> p_mach = xyz;
  for (const CAxis2* const axis : {m_secondary.get(), m_primary.get()})
    if (on_table(axis)) p_mach = AxisRotation(*axis, angle_of(*axis, abc)).inverse().turn_point(p_mach);
  return p_mach;
}

void CMachDef::Tool2CtrlPt(TPoint<double>& ctrl, const TPoint<double>& toolPoint) const {
  TPoint<double> p_ctrl = toolPoint + m_head.tip;
  if (on_head(m_primary.get())) p_ctrl = p_ctrl + m_primary->m_base;
  if (on_head(m_secondary.get())) p_ctrl = p_ctrl + m_secondary->m_base;
  ctrl = p_ctrl;
}

}  // namespace md
