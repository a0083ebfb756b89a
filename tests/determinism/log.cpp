// Lines of text in which every double is there to its last bit.
#include "determinism/log.h"

#include <cstdio>

namespace determinism {

Line::Line(const char* what) { std::fputs(what, stdout); }

Line::~Line() { std::putchar('\n'); }

Line& Line::operator<<(double value) {
  std::printf(" %a", value);
  return *this;
}

Line& Line::operator<<(int value) {
  std::printf(" %d", value);
  return *this;
}

Line& Line::operator<<(bool value) { return *this << (value ? 1 : 0); }

Line& Line::operator<<(const Geometry::TPoint<double>& p) { return *this << p.x << p.y << p.z; }

Line& Line::operator<<(const Geometry::Matrix& m) {
  double c[12];
  m.GetMatrix(c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7], c[8], c[9], c[10], c[11]);
  for (const double component : c) *this << component;
  return *this;
}

Line& Line::operator<<(const std::string& bytes) {
  std::putchar(' ');
  for (const char byte : bytes)
    std::printf("%02x", static_cast<unsigned int>(static_cast<unsigned char>(byte)));
  return *this;
}

}  // namespace determinism
