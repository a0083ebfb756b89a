// Short ways to write down the small machines whose answers the tests work out by hand.
#ifndef K5AX_TESTS_SUPPORT_HAND_MACHINE_H
#define K5AX_TESTS_SUPPORT_HAND_MACHINE_H

#include <memory>

#include <k5ax/machdef.h>

namespace k5ax_test {

using Point = Geometry::TPoint<double>;

inline boost::shared_ptr<md::CAxis2> rotary_axis(AXIS_TYPE letter, AXIS_LOCATION location,
                                                 const Point& direction, const Point& base = Point()) {
  return md::CAxis2::create(letter, location, base, direction, -math::m_pi, math::m_pi, ROTARY);
}

inline boost::shared_ptr<md::CAxis2> no_axis() { return boost::shared_ptr<md::CAxis2>(); }

inline std::unique_ptr<md::CMachDef> make_machine(MACHINE_TYPE type,
                                                  const boost::shared_ptr<md::CAxis2>& primary,
                                                  const boost::shared_ptr<md::CAxis2>& secondary) {
  std::unique_ptr<md::CMachDef> machdef(new md::CMachDef);
  machdef->setMachType(type);
  machdef->setPrimary(primary);
  machdef->setSecondary(secondary);
  return machdef;
}

// A value that no enumerator of the machine's type has.
constexpr MACHINE_TYPE kUnknownType = static_cast<MACHINE_TYPE>(3);

// The tool is vertical by the flags word: value 1 set, value 2 clear.
constexpr unsigned int kVerticalTool = 1;

// The coordinates of the hand-worked tests stay within 100 and pass at most four quarter turns, whose cosines
// are 6e-17 instead of 0: 4 * 2 * 100 * 1.2e-16 is below 1e-13.
constexpr double kHandTolerance = 1e-13;

}  // namespace k5ax_test

#endif
