// What the laws are tried on.
#include "laws/generators.h"

#include <cstddef>
#include <cstdint>
#include <ostream>

namespace laws {

namespace {

using vector_form::Axis;
using vector_form::Machine;
using vector_form::Vec;

// A fraction in (-1, 1), all of its bits in use. RapidCheck makes integers smaller towards 0, so fractions
// too.
rc::Gen<double> fraction() {
  return rc::gen::map(rc::gen::resize(rc::kNominalSize, rc::gen::arbitrary<std::int64_t>()),
                      [](std::int64_t n) { return static_cast<double>(n / 1024) * 0x1p-53; });
}

rc::Gen<Vec> vector(double size) {
  return rc::gen::apply(
      [size](double x, double y, double z) {
        return Vec{x * size, y * size, z * size};
      },
      fraction(), fraction(), fraction());
}

rc::Gen<AXIS_TYPE> letter() { return rc::gen::element(AXIS_A, AXIS_B, AXIS_C); }

// The length that the direction has been given: nearly always 1. A direction shorter than 5e-9 turns nothing.
rc::Gen<double> stored_length() {
  return rc::gen::weightedOneOf<double>(
      {{16, rc::gen::just(1.0)}, {2, rc::gen::element(0.2, 3.0, 5.0)}, {1, rc::gen::just(1e-9)}});
}

rc::Gen<Axis> axis(AXIS_LOCATION location, double size) {
  return rc::gen::apply(
      [location](bool missing, AXIS_TYPE its_letter, const Vec& base, const Vec& direction, double length) {
        Axis made;
        made.present = !missing;
        made.letter = its_letter;
        made.location = location;
        made.base = base;
        made.direction = direction * length;
        return made;
      },
      rc::gen::weightedElement<bool>({{9, false}, {1, true}}), letter(), position(size), unit_direction(),
      stored_length());
}

struct Places {
  MACHINE_TYPE type;
  AXIS_LOCATION primary;
  AXIS_LOCATION secondary;
};

std::shared_ptr<WholeMachine> make_whole(std::uint64_t seed) {
  k5ax_test::Random random(seed);
  const auto made = std::make_shared<WholeMachine>();
  made->written = k5ax_test::random_machine_scene(random);
  Machine& m = made->written.machine;
  m.flags = static_cast<unsigned int>(random.below(8));
  m.tool_dir = random.machine_direction();
  m.ref_dir = random.machine_direction();
  m.tip = random.position(k5ax_test::kRandomSize);
  m.loading = random.position(k5ax_test::kRandomSize);
  made->scene = k5ax_test::build(made->written.scene);

  md::CMachDef& machdef = made->machdef();
  machdef.setMachType(m.type);
  machdef.setPrimary(k5ax_test::make_axis(m.primary));
  machdef.setSecondary(k5ax_test::make_axis(m.secondary));
  for (int i = 0; i < 3; ++i) {
    const double travel = random.between(0, k5ax_test::kRandomSize);
    Vec along;
    (i == 0 ? along.x : i == 1 ? along.y : along.z) = 1;
    machdef.xyz_axes()[static_cast<std::size_t>(i)] =
        md::CAxis2::create(static_cast<AXIS_TYPE>(AXIS_X + i), random.one_in(2) ? HEAD : TABLE,
                           vector_form::point(random.position(k5ax_test::kRandomSize)),
                           vector_form::point(along), -travel, travel, LINEAR);
  }
  machdef.flags(m.flags);
  machdef.setToolDir(vector_form::point(m.tool_dir));
  machdef.head().ref_dir = vector_form::point(m.ref_dir);
  machdef.head().tip = vector_form::point(m.tip);
  machdef.head().length1 = random.between(0, k5ax_test::kRandomSize);
  machdef.loading_vector(vector_form::point(m.loading));
  machdef.mwZeroPos(vector_form::point(random.position(k5ax_test::kRandomSize)));
  machdef.setMetric(random.one_in(2));
  return made;
}

}  // namespace

rc::Gen<Vec> position(double size) {
  return rc::gen::weightedOneOf<Vec>({{1, rc::gen::just(Vec())}, {1, vector(1e-8)}, {6, vector(size)}});
}

rc::Gen<Vec> unit_direction() {
  const auto skew = rc::gen::map(vector(1), [](const Vec& v) {
    const double length = vector_form::length(v);
    return length < 0.01 ? Vec{0, 0, 1} : v * (1 / length);
  });
  const auto along =
      rc::gen::element(Vec{0, 0, 1}, Vec{0, 1, 0}, Vec{1, 0, 0}, Vec{0, 0, -1}, Vec{0, -1, 0}, Vec{-1, 0, 0});
  return rc::gen::oneOf(along, skew);
}

rc::Gen<double> angle() {
  const auto times = [](double size) {
    return rc::gen::map(fraction(), [size](double part) { return part * size; });
  };
  return rc::gen::weightedOneOf<double>(
      {{2, rc::gen::element(0.0, math::m_pi2, -math::m_pi2, math::m_pi, -math::m_pi, math::m_2pi)},
       {1, times(1e-8)},
       {4, times(7)}});
}

rc::Gen<Vec> angles() {
  return rc::gen::apply([](double a, double b, double c) { return Vec{a, b, c}; }, angle(), angle(), angle());
}

rc::Gen<double> machine_size() { return rc::gen::element(1e2, 1e3, 1e4, 1e5, 1e1, 1e0, 1e-1, 1e-2); }

rc::Gen<Machine> machine(double size) {
  const auto places =
      rc::gen::element(Places{MC_TT, TABLE, TABLE}, Places{MC_HT, TABLE, HEAD}, Places{MC_HH, HEAD, HEAD});
  return rc::gen::mapcat(places, [size](const Places& where) {
    return rc::gen::apply(
        [where](const Axis& primary, const Axis& secondary, const Vec& tool_dir) {
          Machine m;
          m.type = where.type;
          m.primary = primary;
          m.secondary = secondary;
          // Without any axis the library turns by a default, which has no way back: not a machine to try.
          m.primary.present = primary.present || !secondary.present;
          m.tool_dir = tool_dir;
          return m;
        },
        axis(where.primary, size), axis(where.secondary, size), unit_direction());
  });
}

rc::Gen<Machine> machine_of_one_axis(double size) {
  return rc::gen::map(axis(TABLE, size), [](const Axis& primary) {
    Machine m;
    m.type = MC_TT;
    m.primary = primary;
    m.primary.present = true;
    return m;
  });
}

rc::Gen<std::shared_ptr<WholeMachine>> whole_machine() {
  return rc::gen::map(
      rc::gen::noShrink(rc::gen::resize(rc::kNominalSize, rc::gen::arbitrary<std::uint64_t>())), make_whole);
}

void showValue(const std::shared_ptr<WholeMachine>& machine, std::ostream& out) {
  out << machine->written.machine << machine->written.scene;
}

}  // namespace laws
