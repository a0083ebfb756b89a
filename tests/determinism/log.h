// Lines of text in which every double is there to its last bit.
#ifndef K5AX_TESTS_DETERMINISM_LOG_H
#define K5AX_TESTS_DETERMINISM_LOG_H

#include <string>

#include <k5ax/k5ax.h>

namespace determinism {

// Begins a line with what it is about; the line ends with the object.
class Line {
 public:
  explicit Line(const char* what);
  Line(const Line&) = delete;
  Line& operator=(const Line&) = delete;
  ~Line();

  Line& operator<<(double value);
  Line& operator<<(int value);
  Line& operator<<(bool value);
  Line& operator<<(const Geometry::TPoint<double>& p);
  Line& operator<<(const Geometry::Matrix& m);
  // As hexadecimal digits, two a byte.
  Line& operator<<(const std::string& bytes);
};

}  // namespace determinism

#endif
