// Random machines, positions and angles: the same ones on every system, and rich in the special values among
// which faults live.
#ifndef K5AX_TESTS_SUPPORT_RANDOM_MACHINE_H
#define K5AX_TESTS_SUPPORT_RANDOM_MACHINE_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <random>

#include <k5ax/machdef.h>

#include "support/vector_form.h"

namespace k5ax_test {

// The engine is fixed by the language, the distributions of the standard library are not: the mapping to
// ranges is ours.
class Random {
 public:
  explicit Random(std::uint64_t seed) : m_engine(seed) {}

  // 53 random bits make a fraction in [0, 1).
  double between(double low, double high) {
    return low + (high - low) * (static_cast<double>(m_engine() >> 11) * 0x1p-53);
  }
  int below(int count) { return static_cast<int>(m_engine() % static_cast<std::uint64_t>(count)); }
  bool one_in(int count) { return below(count) == 0; }

  template <class T, std::size_t N>
  T of(const T (&choices)[N]) {
    return choices[below(static_cast<int>(N))];
  }

  // Each coordinate within +-size.
  vector_form::Vec vector(double size) {
    const double x = between(-size, size);
    const double y = between(-size, size);
    return {x, y, between(-size, size)};
  }

  // A unit vector, every direction as likely as any other.
  vector_form::Vec direction() {
    for (;;) {
      const vector_form::Vec v = vector(1);
      const double size = vector_form::length(v);
      if (size <= 1 && size >= 0.1) return v * (1 / size);
    }
  }

  // One of six directions along the machine's axes, or a skew one.
  vector_form::Vec machine_direction() {
    static const vector_form::Vec along[] = {{1, 0, 0},  {0, 1, 0},  {0, 0, 1},
                                             {-1, 0, 0}, {0, -1, 0}, {0, 0, -1}};
    return one_in(2) ? of(along) : direction();
  }

  // Neutral, tiny or generic.
  vector_form::Vec position(double size) {
    switch (below(6)) {
      case 0:
        return {};
      case 1:
        return vector(1e-8);
      default:
        return vector(size);
    }
  }

  // Hard, tiny or generic: beyond a whole turn in both senses.
  double angle() {
    static const double hard[] = {0, math::m_pi2, -math::m_pi2, math::m_pi, -math::m_pi, math::m_2pi};
    switch (below(6)) {
      case 0:
      case 1:
        return of(hard);
      case 2:
        return between(-1e-8, 1e-8);
      default:
        return between(-7, 7);
    }
  }
  vector_form::Vec angles() {
    const double a = angle();
    const double b = angle();
    return {a, b, angle()};
  }

 private:
  std::mt19937_64 m_engine;
};

// Lengths of the random machines stay within this in every coordinate, so that tolerances can be stated.
constexpr double kRandomSize = 300;

// Any letter and any place that the record can hold, the ones that mean nothing included; a direction that is
// usually of length 1, as it is unless a host stores another one.
inline vector_form::Axis random_axis(Random& random) {
  static const AXIS_LOCATION locations[] = {
      HEAD, HEAD, HEAD, TABLE, TABLE, TABLE, AXIS_LOCATION_INVALID_LOWEST};
  vector_form::Axis axis;
  axis.present = !random.one_in(5);
  axis.letter = static_cast<AXIS_TYPE>(random.one_in(4) ? random.below(9) - 1 : random.below(3));
  axis.location = random.of(locations);
  axis.base = random.position(kRandomSize);
  axis.direction = random.machine_direction();
  if (random.one_in(8)) axis.direction = axis.direction * random.between(0.2, 5);
  // Too short to be a direction, or none at all.
  if (random.one_in(20)) axis.direction = axis.direction * (random.one_in(2) ? 1e-9 : 0);
  return axis;
}

// All types, unknown ones included, with any combination of axes, any flags, any head.
inline vector_form::Machine random_machine(Random& random) {
  static const MACHINE_TYPE types[] = {MC_TT,
                                       MC_TT,
                                       MC_TT,
                                       MC_HT,
                                       MC_HT,
                                       MC_HT,
                                       MC_HH,
                                       MC_HH,
                                       MC_HH,
                                       MC_UNDEFINED,
                                       static_cast<MACHINE_TYPE>(3),
                                       static_cast<MACHINE_TYPE>(-7)};
  vector_form::Machine m;
  m.type = random.of(types);
  m.primary = random_axis(random);
  m.secondary = random_axis(random);
  m.flags = static_cast<unsigned int>(random.below(8));
  m.tool_dir = random.machine_direction();
  if (random.one_in(6)) m.tool_dir = m.tool_dir * random.between(0.2, 5);
  m.ref_dir = random.machine_direction();
  m.tip = random.position(kRandomSize);
  m.loading = random.position(kRandomSize);
  return m;
}

inline boost::shared_ptr<md::CAxis2> make_axis(const vector_form::Axis& axis) {
  if (!axis.present) return boost::shared_ptr<md::CAxis2>();
  const boost::shared_ptr<md::CAxis2> made =
      md::CAxis2::create(axis.letter, axis.location, vector_form::point(axis.base),
                         vector_form::point(axis.direction), -1, 1, ROTARY);
  // Making an axis normalises its direction; the setter keeps another length.
  made->SetAxisVector(vector_form::point(axis.direction));
  return made;
}

inline std::unique_ptr<md::CMachDef> make_machdef(const vector_form::Machine& m) {
  std::unique_ptr<md::CMachDef> machdef(new md::CMachDef);
  machdef->setMachType(m.type);
  machdef->setPrimary(make_axis(m.primary));
  machdef->setSecondary(make_axis(m.secondary));
  machdef->flags(m.flags);
  machdef->setToolDir(vector_form::point(m.tool_dir));
  machdef->head().ref_dir = vector_form::point(m.ref_dir);
  machdef->head().tip = vector_form::point(m.tip);
  machdef->loading_vector(vector_form::point(m.loading));
  return machdef;
}

inline vector_form::Axis axis_form(const boost::shared_ptr<md::CAxis2>& axis) {
  if (!axis) return vector_form::Axis();
  return {true, axis->GetAxis(), axis->GetAxisLocation(), vector_form::vec(axis->GetBaseVector()),
          vector_form::vec(axis->GetAxisVector())};
}

// What the machine holds now, in the form that the second formulation reads.
inline vector_form::Machine machine_form(const md::CMachDef& machdef) {
  vector_form::Machine m;
  m.type = machdef.getMachType();
  m.primary = axis_form(machdef.getPrimary());
  m.secondary = axis_form(machdef.getSecondary());
  m.flags = machdef.flags();
  m.tool_dir = vector_form::vec(machdef.getToolDirEx());
  m.ref_dir = vector_form::vec(machdef.head().ref_dir);
  m.tip = vector_form::vec(machdef.head().tip);
  m.loading = vector_form::vec(machdef.loading_vector());
  return m;
}

}  // namespace k5ax_test

#endif
