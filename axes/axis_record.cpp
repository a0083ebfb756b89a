// md::CAxis2: the axis record in a stream.
#include <k5ax/axes.h>

#include <k5ax/platform/block.h>

namespace md {

const int CAxis2::_version = 1;

// The limits come before the three enums, other than in memory.
void CAxis2::serialize(IIO::Stream& stream) {
  if (stream.Mode() == IIO::FILE_WRITE) {
    stream << _version << m_base << m_vector << m_min << m_max;
    stream << static_cast<int>(m_type) << static_cast<int>(m_location) << static_cast<int>(m_mode);
    return;
  }

  // What a stream that comes short without an exception leaves out reads as -1 and 0.
  IIO::Block<80> record;
  record << -1 << CUtility::pt_o << CUtility::pt_o << 0.0 << 0.0 << -1 << -1 << -1;
  record.read(stream);

  int version;  // there is one layout, whatever it says
  int type;
  int location;
  int mode;
  record >> version >> m_base >> m_vector >> m_min >> m_max >> type >> location >> mode;
  m_type = static_cast<AXIS_TYPE>(type);
  m_location = static_cast<AXIS_LOCATION>(location);
  m_mode = static_cast<AXIS_MODE>(mode);
}

}  // namespace md
