// Numbers that tests name.
#ifndef K5AX_TESTS_SUPPORT_NUMBERS_H
#define K5AX_TESTS_SUPPORT_NUMBERS_H

#include <limits>

namespace k5ax_test {

constexpr double kEps = std::numeric_limits<double>::epsilon();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr int kIntMax = std::numeric_limits<int>::max();
constexpr int kIntMin = std::numeric_limits<int>::min();

}  // namespace k5ax_test

#endif
