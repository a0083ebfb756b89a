// Arguments for calls, drawn from an input of the fuzzer: special values first of all.
#ifndef K5AX_TESTS_FUZZ_DRAW_H
#define K5AX_TESTS_FUZZ_DRAW_H

#include <FuzzedDataProvider.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

#include <k5ax/kinematics.h>

namespace k5ax_fuzz {

class Draw {
 public:
  Draw(const std::uint8_t* data, std::size_t size) : m_input(data, size) {}

  bool is_over() { return m_input.remaining_bytes() == 0; }
  bool yes() { return m_input.ConsumeBool(); }
  std::size_t below(std::size_t count) { return m_input.ConsumeIntegralInRange<std::size_t>(0, count - 1); }

  int whole() {
    static constexpr int kSpecial[] = {-999, 2147483647, -2147483647 - 1, 1000000007,
                                       -2,   100,        0x7fff,          0x10000};
    const int choice = m_input.ConsumeIntegral<std::int8_t>();
    if (choice >= -1 && choice < 100) return choice;
    return choice < -100 ? m_input.ConsumeIntegral<int>() : kSpecial[static_cast<std::size_t>(choice & 7)];
  }
  unsigned int flags() {
    return yes() ? static_cast<unsigned int>(below(8)) : static_cast<unsigned int>(whole());
  }
  // Small, so that nodes meet states and each other.
  int id() { return yes() ? static_cast<int>(below(6)) : whole(); }

  double number() {
    using Limits = std::numeric_limits<double>;
    static constexpr double kSpecial[] = {0.0,
                                          -0.0,
                                          1.0,
                                          -1.0,
                                          5e-9,
                                          -1e-300,
                                          0.001,
                                          1.5707963267948966,
                                          3.141592653589793,
                                          -6.283185307179586,
                                          25.4,
                                          1e17,
                                          -1e200,
                                          Limits::max(),
                                          Limits::lowest(),
                                          Limits::min(),
                                          Limits::denorm_min(),
                                          Limits::infinity(),
                                          -Limits::infinity(),
                                          Limits::quiet_NaN()};
    constexpr std::size_t kCount = sizeof kSpecial / sizeof *kSpecial;
    const std::size_t choice = m_input.ConsumeIntegral<std::uint8_t>();
    if (choice < kCount) return kSpecial[choice];
    if (choice < 128) return (static_cast<double>(choice) - 74) / 8;
    if (choice < 224) return (static_cast<double>(choice) - 176) * 12.5;
    const std::uint64_t bits = m_input.ConsumeIntegral<std::uint64_t>();
    double number;
    std::memcpy(&number, &bits, sizeof number);
    return number;
  }
  Geometry::TPoint<double> point() {
    const double x = number();
    const double y = number();
    return {x, y, number()};
  }
  // One of the six directions along the machine's axes, or any triple.
  Geometry::TPoint<double> direction() {
    if (yes()) return point();
    const Geometry::TPoint<double> along[] = {CUtility::pt_x, CUtility::pt_y, CUtility::pt_z};
    const Geometry::TPoint<double> d = along[below(3)];
    return yes() ? d : -d;
  }
  Geometry::Matrix transform() {
    switch (below(3)) {
      case 0:
        return Geometry::Translate(point());
      case 1: {
        const Geometry::TPoint<double> d = direction();
        return Geometry::RotateAboutAxis(d, number());
      }
      default: {
        double m[12];
        for (double& entry : m) entry = number();
        Geometry::Matrix matrix;
        matrix.SetMatrix(m[0], m[1], m[2], m[3], m[4], m[5], m[6], m[7], m[8], m[9], m[10], m[11]);
        return matrix;
      }
    }
  }

  AXIS_TYPE letter() { return static_cast<AXIS_TYPE>(yes() ? static_cast<int>(below(6)) : whole()); }
  AXIS_MODE mode() { return static_cast<AXIS_MODE>(yes() ? static_cast<int>(below(2)) : whole()); }
  AXIS_LOCATION location() {
    return static_cast<AXIS_LOCATION>(yes() ? static_cast<int>(below(2)) : whole());
  }
  MACHINE_TYPE machine_type() {
    return static_cast<MACHINE_TYPE>(yes() ? static_cast<int>(below(3)) : whole());
  }

 private:
  FuzzedDataProvider m_input;
};

}  // namespace k5ax_fuzz

#endif
