// Points, directions, angles and matrices between numpy's arrays and the library.
#ifndef K5AX_PYTHON_ARRAYS_H
#define K5AX_PYTHON_ARRAYS_H

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include <k5ax/k5ax.h>

#include <initializer_list>
#include <utility>
#include <vector>

namespace k5ax_python {

namespace py = pybind11;
using Point = Geometry::TPoint<double>;

// Doubles of this machine, in C order and aligned: what is not so already is converted, where no value can be
// lost by that.
using Doubles = py::array_t<double, int(py::array::c_style) | py::detail::npy_api::NPY_ARRAY_ALIGNED_>;

// An argument as doubles. What it holds that is no number is numpy's TypeError or ValueError.
Doubles doubles(const py::object& given);

// An argument of shape (3,) or (N, 3). Any other shape is a ValueError that names the argument.
class Rows {
 public:
  Rows(const py::object& given, const char* name);

  bool single() const { return m_array.ndim() == 1; }
  py::ssize_t count() const { return m_count; }
  const char* name() const { return m_name; }
  // A single row, and the only one of an array, stands for as many as there are elsewhere.
  Point operator[](py::ssize_t i) const {
    const double* const row = m_data + i * m_step;
    return Point(row[0], row[1], row[2]);
  }

 private:
  Doubles m_array;
  const char* m_name;
  const double* m_data;
  py::ssize_t m_count;
  py::ssize_t m_step;
};

// How many rows a call answers, and whether as an array or as a single answer.
class Batch {
 public:
  explicit Batch(const Rows& rows) : m_count(rows.count()), m_single(rows.single()) {}
  Batch(py::ssize_t count, bool single) : m_count(count), m_single(single) {}
  // A ValueError where the two do not fit together.
  Batch(const Rows& a, const Rows& b);

  bool single() const { return m_single; }
  py::ssize_t count() const { return m_count; }
  // The shape of one answer, with N in front of it where there are many.
  std::vector<py::ssize_t> shape(std::initializer_list<py::ssize_t> of_one) const;

 private:
  py::ssize_t m_count;
  bool m_single;
};

// A result of shape (3,) or (N, 3).
class PointResult {
 public:
  explicit PointResult(const Batch& batch);
  void set(py::ssize_t i, const Point& p) {
    double* const row = m_data + 3 * i;
    row[0] = p.x;
    row[1] = p.y;
    row[2] = p.z;
  }
  py::object get() const { return m_array; }

 private:
  py::array_t<double> m_array;
  double* m_data;
};

// A result of shape (4, 4) or (N, 4, 4); the last column is (0, 0, 0, 1).
class MatrixResult {
 public:
  explicit MatrixResult(const Batch& batch);
  void set(py::ssize_t i, const Geometry::Matrix& matrix);
  py::object get() const { return m_array; }

 private:
  py::array_t<double> m_array;
  double* m_data;
};

// A result that is one scalar, or an array of shape (N,).
template <class T>
class ScalarResult {
 public:
  explicit ScalarResult(const Batch& batch)
      : m_single(batch.single()), m_array(batch.count()), m_data(m_array.mutable_data()) {}
  void set(py::ssize_t i, T value) { m_data[i] = value; }
  py::object get() const { return m_single ? py::cast(m_data[0]) : py::object(m_array); }

 private:
  bool m_single;
  py::array_t<T> m_array;
  T* m_data;
};

// Three numbers, for what is one point or one direction.
Point to_point(const py::object& given, const char* name);
// As an array that cannot be written to: it is a copy, and writing to it would change nothing.
py::object from_point(const Point& p);

// A matrix of shape (4, 4) whose last column is (0, 0, 0, 1), or of (4, 3) without that column.
Geometry::Matrix to_matrix(const py::object& given, const char* name);
// Of shape (4, 4), and not to be written to.
py::object from_matrix(const Geometry::Matrix& matrix);

}  // namespace k5ax_python

#endif
