// md::CAxis2: how an axis is made, copied, judged and scaled.
#include <k5ax/axes.h>

#include <cmath>
#include <cstddef>
#include <type_traits>

#include "axes/axis_letter.h"

namespace {

constexpr double kOrthogonal = 5e-9;  // a unit vector's component this far off is another direction

}  // namespace

namespace md {

CAxis2::CAxis2()
    : m_base(CUtility::pt_o),
      m_type(AXIS_TYPE_INVALID_LOWEST),
      m_location(AXIS_LOCATION_INVALID_LOWEST),
      m_min(0.0),
      m_max(0.0),
      m_mode(AXIS_MODE_INVALID_LOWEST),
      m_machdef(nullptr) {
  // The flat functions take an axis for its record, so the record must be its leading part.
  static_assert(std::is_standard_layout<CAxis2>::value, "an axis starts with its first field");
  static_assert(offsetof(CAxis2, m_base) == offsetof(TAxis, base), "record layout");
  static_assert(offsetof(CAxis2, m_vector) == offsetof(TAxis, vector), "record layout");
  static_assert(offsetof(CAxis2, m_type) == offsetof(TAxis, type), "record layout");
  static_assert(offsetof(CAxis2, m_location) == offsetof(TAxis, location), "record layout");
  static_assert(offsetof(CAxis2, m_min) == offsetof(TAxis, min), "record layout");
  static_assert(offsetof(CAxis2, m_max) == offsetof(TAxis, max), "record layout");
  static_assert(offsetof(CAxis2, m_mode) == offsetof(TAxis, mode), "record layout");
  static_assert(sizeof(CAxis2) == sizeof(TAxis) + sizeof(void*), "an axis is its record and its owner");
}

CAxis2::CAxis2(AXIS_TYPE type, AXIS_LOCATION location, const Geometry::TPoint<double>& base,
               Geometry::TPoint<double> vector, double min, double max)
    : m_base(base),
      m_vector(math::safe_normal(vector)),
      m_type(type),
      m_location(location),
      m_min(min),
      m_max(max),
      m_mode(ROTARY),
      m_machdef(nullptr) {}

CAxis2::CAxis2(const CAxis2& other) : CAxis2() { copy_record(other); }

CAxis2& CAxis2::operator=(const CAxis2& other) = default;

CAxis2::~CAxis2() = default;

void CAxis2::copy_record(const CAxis2& from) {
  m_base = from.m_base;
  m_vector = from.m_vector;
  m_type = from.m_type;
  m_location = from.m_location;
  m_min = from.m_min;
  m_max = from.m_max;
  m_mode = from.m_mode;
}

CAxis2::operator TAxis() const { return {m_base, m_vector, m_type, m_location, m_min, m_max, m_mode}; }

void CAxis2::copy(boost::shared_ptr<const CAxis2> from) {
  if (from) copy_record(*from);
}

void CAxis2::copy(boost::shared_ptr<CAxis2> to, boost::shared_ptr<const CAxis2> from) {
  if (to && from) to->copy_record(*from);
}

bool CAxis2::is_valid() const {
  if (m_location != HEAD && m_location != TABLE) return false;
  if (!(math::length(m_vector) > 0.0)) return false;
  if (component_of(m_type) < 0) return false;
  return m_max >= m_min;
}

bool CAxis2::is_orthogonal() const {
  const int component = component_of(m_type);
  if (component < 0) return false;
  const Geometry::TPoint<double> nominal = component == 0   ? CUtility::pt_x
                                           : component == 1 ? CUtility::pt_y
                                                            : CUtility::pt_z;
  const Geometry::TPoint<double> off = m_vector - nominal;
  return std::abs(off.x) < kOrthogonal && std::abs(off.y) < kOrthogonal && std::abs(off.z) < kOrthogonal;
}

void CAxis2::scale(double factor) {
  m_base = m_base * factor;
  if (m_mode != LINEAR) return;
  m_min *= factor;
  m_max *= factor;
}

void CAxis2::scale(boost::shared_ptr<CAxis2> axis, double factor) {
  if (axis) axis->scale(factor);
}

AXIS_TYPE GetAxis(boost::shared_ptr<CAxis2> axis) { return axis ? axis->GetAxis() : AXIS_DUMMY; }

}  // namespace md
