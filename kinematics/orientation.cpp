// md::CMachDef: turning the definition itself into the pose for two rotary values.
#include <k5ax/kinematics.h>

namespace md {

namespace {

using Geometry::Matrix;
using Geometry::TPoint;

void turn(TPoint<double>& v, const Matrix& rotation) { v = v * rotation; }

}  // namespace

// Works on copies that are written back at the end, so that one axis object in both roles is turned by the
// secondary's rule alone. Every rotation is about a line through the origin, also of the base points and the
// other lengths.
bool CMachDef::orientate(double angle1, double angle2) {
  TPoint<double> p_primary = m_primary ? m_primary->m_base : TPoint<double>();
  TPoint<double> p_secondary = m_secondary ? m_secondary->m_base : TPoint<double>();
  TPoint<double> d_secondary = m_secondary ? m_secondary->m_vector : TPoint<double>();
  TPoint<double> d_tool = getToolDir();
  TPoint<double> d_ref = m_head.ref_dir;
  TPoint<double> p_tip = m_head.tip;
  TPoint<double> loading_vector = m_loading_vector;

  switch (m_machType) {
    case MC_TT:
      // The primary table carries the secondary; its angle turns the part, so the axis goes the other way.
      if (m_primary) turn(d_secondary, Geometry::RotateAboutAxis(m_primary->m_vector, -angle1));
      break;

    case MC_HT:
      if (m_secondary) {
        const Matrix rotation = Geometry::RotateAboutAxis(d_secondary, angle2);
        for (TPoint<double>* const v : {&d_tool, &d_ref}) turn(*v, rotation);
        if (!tool_is_vertical())
          for (TPoint<double>* const v : {&p_secondary, &loading_vector, &p_tip}) turn(*v, rotation);
      }
      break;

    case MC_HH:
      if (m_primary) {
        const Matrix rotation = Geometry::RotateAboutAxis(m_primary->m_vector, angle1);
        for (TPoint<double>* const v :
             {&p_primary, &p_secondary, &d_secondary, &d_tool, &d_ref, &p_tip, &loading_vector})
          turn(*v, rotation);
      }
      if (m_secondary) {
        const Matrix rotation =
            Geometry::RotateAboutAxis(d_secondary, angle2);  // as the primary has turned it
        for (TPoint<double>* const v : {&d_tool, &d_ref, &p_tip, &p_secondary, &loading_vector})
          turn(*v, rotation);
      }
      break;

    default:
      break;
  }

  // Deliberate: the direction in force replaces the head's own, also where nothing was turned and the answer
  // is false.
  m_head.tool_dir = d_tool;
  m_head.ref_dir = d_ref;
  m_head.tip = p_tip;
  m_loading_vector = loading_vector;
  if (m_primary) m_primary->m_base = p_primary;
  if (m_secondary) {
    m_secondary->m_vector = d_secondary;
    m_secondary->m_base = p_secondary;
  }
  return has_known_type();
}

}  // namespace md

extern "C" bool k5axCMachDef_orientate(md::CMachDef* machdef, double angle1, double angle2) {
  return machdef != nullptr && machdef->orientate(angle1, angle2);
}
