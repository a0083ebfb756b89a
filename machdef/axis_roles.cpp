// md::CMachDef: which rotary axis plays which role.
#include <k5ax/machdef.h>

namespace md {

const boost::shared_ptr<CAxis2>& CMachDef::part_axis() const {
  static const boost::shared_ptr<CAxis2> none;
  switch (m_machType) {
    case MC_TT:
      return m_secondary ? m_secondary : m_primary;
    case MC_HT:
      return m_primary;
    case MC_HH:
      return m_primary;  // none turns the part, and hosts expect the primary all the same
    default:
      return none;
  }
}

boost::shared_ptr<CAxis2> CMachDef::rotary_axis() const { return part_axis(); }

void CMachDef::getMWRotAxes(boost::shared_ptr<CAxis2>& first, boost::shared_ptr<CAxis2>& second) const {
  switch (m_machType) {
    case MC_TT:
      first = part_axis();
      second = m_primary;
      break;
    case MC_HT:
    case MC_HH:
      first = m_primary;
      second = m_secondary;
      break;
    default:
      break;
  }
}

}  // namespace md
