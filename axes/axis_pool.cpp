// md::CAxis2: how an axis is taken from the pool and given back.
#include <k5ax/axes.h>

#include <iterator>
#include <utility>

namespace md {

namespace {

// The list cells of axes that were taken from the pool, for the next ones that are parked, so that giving
// back and taking in turn, as cloning does, asks for no memory. They never outnumber the axes that were
// parked at one time, and when the pool runs dry they go.
std::list<boost::shared_ptr<CAxis2>> spare_cells;

}  // namespace

std::list<boost::shared_ptr<CAxis2>> CAxis2::_axis_pool;

struct CAxis2::deleter {
  void operator()(CAxis2* axis) const { delete axis; }
};

boost::shared_ptr<CAxis2> CAxis2::create() {
  if (_axis_pool.empty()) {
    spare_cells.clear();
    return boost::shared_ptr<CAxis2>(new CAxis2, deleter());
  }
  boost::shared_ptr<CAxis2> axis = std::move(_axis_pool.back());
  spare_cells.splice(spare_cells.end(), _axis_pool, std::prev(_axis_pool.end()));
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
  // Where memory runs out for its place, the pointer is as it was.
  if (spare_cells.empty()) spare_cells.emplace_back();
  _axis_pool.splice(_axis_pool.end(), spare_cells, std::prev(spare_cells.end()));
  _axis_pool.back().swap(axis);
}

}  // namespace md
