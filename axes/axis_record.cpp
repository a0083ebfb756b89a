// md::CAxis2: the axis record in a stream.
#include <k5ax/axes.h>

namespace md {

const int CAxis2::_version = 1;

// The limits come before the three enums, other than in memory.
void CAxis2::serialize(IIO::Stream& stream) {
  if (stream.Mode() == IIO::FILE_WRITE) {
    stream << _version << m_base << m_vector << m_min << m_max;
    stream << static_cast<int>(m_type) << static_cast<int>(m_location) << static_cast<int>(m_mode);
    return;
  }

  // There is one layout, whatever the version says. What a stream that comes short without an exception
  // leaves out reads as -1 and 0.
  int version = -1;
  Geometry::TPoint<double> base;
  Geometry::TPoint<double> vector;
  double min = 0.0;
  double max = 0.0;
  int type = -1;
  int location = -1;
  int mode = -1;
  stream >> version >> base >> vector >> min >> max >> type >> location >> mode;

  m_base = base;
  m_vector = vector;
  m_min = min;
  m_max = max;
  m_type = static_cast<AXIS_TYPE>(type);
  m_location = static_cast<AXIS_LOCATION>(location);
  m_mode = static_cast<AXIS_MODE>(mode);
}

}  // namespace md
