// md::CAxis2: how an axis is taken from the pool and given back.
#include <k5ax/axes.h>

#include <utility>

namespace md {

std::list<boost::shared_ptr<CAxis2>> CAxis2::_axis_pool;

struct CAxis2::deleter {
  void operator()(CAxis2* axis) const { delete axis; }
};

boost::shared_ptr<CAxis2> CAxis2::create() {
  if (_axis_pool.empty()) return boost::shared_ptr<CAxis2>(new CAxis2, deleter());

  boost::shared_ptr<CAxis2> axis = std::move(_axis_pool.back());
  _axis_pool.pop_back();
  return axis;
}

boost::shared_ptr<CAxis2> CAxis2::create(AXIS_TYPE type, AXIS_LOCATION location,
                                         const Geometry::TPoint<double>& base,
                                         Geometry::TPoint<double> vector, double min, double max,
                                         AXIS_MODE mode) {
  CAxis2 record(type, location, base, vector, min, max);
  record.m_mode = mode;
  boost::shared_ptr<CAxis2> axis = create();
  axis->copy_record(record);
  return axis;
}

boost::shared_ptr<CAxis2> CAxis2::clone() const {
  return create(m_type, m_location, m_base, m_vector, m_min, m_max, m_mode);
}

boost::shared_ptr<CAxis2> CAxis2::clone(boost::shared_ptr<CAxis2> axis) {
  return axis ? axis->clone() : boost::shared_ptr<CAxis2>();
}

void CAxis2::free(boost::shared_ptr<CAxis2>& axis) {
  if (!axis) return;
  _axis_pool.emplace_back();  // where memory runs out for its place, the pointer is as it was
  _axis_pool.back().swap(axis);
}

}  // namespace md
