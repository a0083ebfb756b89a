// Points, directions, angles and matrices between numpy's arrays and the library.
#include "arrays.h"

#include <algorithm>
#include <string>

namespace k5ax_python {

namespace {

std::string shape_text(const Doubles& array) { return py::str(array.attr("shape")); }

[[noreturn]] void refuse_shape(const Doubles& array, const char* name, const char* expected) {
  throw py::value_error(std::string(name) + ": shape " + shape_text(array) + "; expected " + expected);
}

void write_matrix(const Geometry::Matrix& matrix, double* to) {
  matrix.GetMatrix(to[0], to[1], to[2], to[4], to[5], to[6], to[8], to[9], to[10], to[12], to[13], to[14]);
  to[3] = to[7] = to[11] = 0.0;
  to[15] = 1.0;
}

void make_read_only(py::array& array) {
  py::detail::array_proxy(array.ptr())->flags &= ~py::detail::npy_api::NPY_ARRAY_WRITEABLE_;
}

}  // namespace

Doubles doubles(const py::object& given) { return Doubles(given); }

Rows::Rows(const py::object& given, const char* name) : m_array(doubles(given)), m_name(name) {
  const py::ssize_t dimensions = m_array.ndim();
  if (dimensions < 1 || dimensions > 2 || m_array.shape(dimensions - 1) != 3)
    refuse_shape(m_array, name, "(3,) or (N, 3)");
  m_data = m_array.data();
  m_count = dimensions == 1 ? 1 : m_array.shape(0);
  m_step = m_count == 1 ? 0 : 3;
}

Batch::Batch(const Rows& a, const Rows& b)
    : m_count(a.count() == 1 ? b.count() : a.count()), m_single(a.single() && b.single()) {
  if (a.count() == b.count() || a.count() == 1 || b.count() == 1) return;
  throw py::value_error(std::string(a.name()) + " has " + std::to_string(a.count()) + " rows, and " +
                        b.name() + " has " + std::to_string(b.count()) + "; give as many, or one");
}

std::vector<py::ssize_t> Batch::shape(std::initializer_list<py::ssize_t> of_one) const {
  std::vector<py::ssize_t> shape;
  if (!m_single) shape.push_back(m_count);
  shape.insert(shape.end(), of_one);
  return shape;
}

PointResult::PointResult(const Batch& batch) : m_array(batch.shape({3})), m_data(m_array.mutable_data()) {}

MatrixResult::MatrixResult(const Batch& batch)
    : m_array(batch.shape({4, 4})), m_data(m_array.mutable_data()) {}

void MatrixResult::set(py::ssize_t i, const Geometry::Matrix& matrix) {
  write_matrix(matrix, m_data + 16 * i);
}

Point to_point(const py::object& given, const char* name) {
  const Doubles array = doubles(given);
  if (array.ndim() != 1 || array.shape(0) != 3) refuse_shape(array, name, "(3,)");
  const double* const p = array.data();
  return Point(p[0], p[1], p[2]);
}

py::object from_point(const Point& p) {
  const double values[] = {p.x, p.y, p.z};
  py::array_t<double> array(3, values);
  make_read_only(array);
  return std::move(array);
}

Geometry::Matrix to_matrix(const py::object& given, const char* name) {
  const Doubles array = doubles(given);
  const bool has_last_column = array.ndim() == 2 && array.shape(1) == 4;
  if (array.ndim() != 2 || array.shape(0) != 4 || (array.shape(1) != 3 && !has_last_column))
    refuse_shape(array, name, "(4, 4) or (4, 3)");

  const auto at = array.unchecked<2>();
  if (has_last_column && (at(0, 3) != 0 || at(1, 3) != 0 || at(2, 3) != 0 || at(3, 3) != 1))
    throw py::value_error(
        std::string(name) +
        ": the last column is not 0, 0, 0, 1; points are rows, and the last row translates");
  Geometry::Matrix matrix;
  matrix.SetMatrix(at(0, 0), at(0, 1), at(0, 2), at(1, 0), at(1, 1), at(1, 2), at(2, 0), at(2, 1), at(2, 2),
                   at(3, 0), at(3, 1), at(3, 2));
  return matrix;
}

py::object from_matrix(const Geometry::Matrix& matrix) {
  py::array_t<double> array({4, 4});
  write_matrix(matrix, array.mutable_data());
  make_read_only(array);
  return std::move(array);
}

}  // namespace k5ax_python
