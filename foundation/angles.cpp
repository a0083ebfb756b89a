// The angle constants, and the flat functions that convert and normalise angles.
#include <k5ax/foundation.h>

namespace math {

const double m_pi = 3.141592653589793;
const double m_pi2 = 1.5707963267948966;
const double m_2pi = 6.283185307179586;
const double D2R = 0.017453292519943295;
const double R2D = 57.29577951308232;

}  // namespace math

namespace {

// One turn up or down; false once a turn is lost in rounding, where a loop of turns would have no end.
bool turn(double& angle, double by) {
  const double turned = angle + by;
  const bool moved = turned != angle;
  angle = turned;
  return moved;
}

}  // namespace

extern "C" double k5ax_R2D(void) { return math::R2D; }

extern "C" double k5ax_D2R(void) { return math::D2R; }

// Whole turns one at a time, not a remainder: the sum of the steps is what hosts have on file for their
// angles.
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
