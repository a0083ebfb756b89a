// The angle constants, and the flat functions that convert and normalise angles.
#include <k5ax/foundation.h>

#include <cmath>

namespace math {

const double m_pi = 3.141592653589793;
const double m_pi2 = 1.5707963267948966;
const double m_2pi = 6.283185307179586;
const double D2R = 0.017453292519943295;
const double R2D = 57.29577951308232;

}  // namespace math

namespace {

// From here on turns are taken many at once. Above 2^7 no step is halfway between two doubles, so that all
// steps between two powers of two are of one length.
constexpr double kManyTurns = 1024;

// As many steps as surely end above the power of two below the angle, with exactly the sum of taking them one
// at a time: up there the doubles stand equally far apart, and so each step rounds to the same length.
double turned_often(double angle, double step) {
  const double power_below = std::ldexp(1.0, std::ilogb(angle));
  const double steps = std::floor((std::fabs(angle) - power_below) / std::fabs(step)) - 2;
  return steps > 0 ? angle + steps * step : angle;
}

// One turn up or down, or many; false once a turn is lost in rounding, where a loop of turns would have no
// end.
bool turn(double& angle, double by) {
  const double turned = angle + by;
  if (turned == angle) return false;
  // An infinite angle does not come here: a turn does not change it.
  angle = std::fabs(turned) > kManyTurns ? turned_often(turned, turned - angle) : turned;
  return true;
}

}  // namespace

extern "C" double k5ax_R2D(void) { return math::R2D; }

extern "C" double k5ax_D2R(void) { return math::D2R; }

// The sum of whole turns, not a remainder: it is what hosts have on file for their angles.
extern "C" double k5ax_normalise_angle(double angle, int range) {
  if (range == 1) {
    while (angle < 0 && turn(angle, math::m_2pi)) {
    }
    while (angle >= math::m_2pi && turn(angle, -math::m_2pi)) {
    }
  } else if (range == 2) {
    while (angle > math::m_pi && turn(angle, -math::m_2pi)) {
    }
    while (angle < -math::m_pi && turn(angle, math::m_2pi)) {
    }
  }
  return angle;
}
