// md::CMachDef: whether the tool points along the part's rotary axis or across it.
#include <k5ax/kinematics.h>

#include <cmath>

#include "kinematics/axis_rotation.h"

namespace md {

namespace {

constexpr double kAligned = 1e-5;  // of the cosine between unit vectors

}  // namespace

// The unit directions of the tool and of the part's rotary axis at the given angles; false where the machine
// has no such pair.
bool CMachDef::tool_and_part_axis(double a, double b, double c, Geometry::TPoint<double>& u_tool,
                                  Geometry::TPoint<double>& u_part_axis) const {
  const CAxis2* const primary = m_primary.get();
  const CAxis2* const secondary = m_secondary.get();
  if (primary == nullptr) return false;

  Geometry::TPoint<double> d_tool = getToolDir();
  Geometry::TPoint<double> d_part_axis = primary->m_vector;
  if (m_machType == MC_TT) {
    if (secondary != nullptr)
      d_part_axis =
          AxisRotation(*primary, primary->GetAngle(a, b, c)).inverse().turn_direction(secondary->m_vector);
  } else if (m_machType == MC_HT) {
    if (secondary == nullptr) return false;
    d_tool = AxisRotation(*secondary, secondary->GetAngle(a, b, c)).turn_direction(d_tool);
  } else {
    return false;
  }

  u_tool = math::safe_normal(d_tool);
  u_part_axis = math::safe_normal(d_part_axis);
  return true;
}

bool CMachDef::IsToolRadial(double a, double b, double c) const {
  Geometry::TPoint<double> u_tool;
  Geometry::TPoint<double> u_part_axis;
  return tool_and_part_axis(a, b, c, u_tool, u_part_axis) &&
         std::abs(math::dot(u_tool, u_part_axis)) < kAligned;
}

bool CMachDef::IsToolAxial(double a, double b, double c) const {
  Geometry::TPoint<double> u_tool;
  Geometry::TPoint<double> u_part_axis;
  // Deliberate: no absolute value around the cosine. Against the axis is not along it.
  return tool_and_part_axis(a, b, c, u_tool, u_part_axis) &&
         std::abs(math::dot(u_tool, u_part_axis) - 1) < kAligned;
}

}  // namespace md
