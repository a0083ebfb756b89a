// The positions that every side is checked and measured with.
#include "inputs.h"

#include <cstdint>
#include <random>

#include <k5ax/foundation.h>

namespace bench {

namespace {

constexpr std::uint64_t kSeed = 20240229;

// 53 random bits make a fraction in [0, 1). The standard library's own distributions differ between systems.
double between(std::mt19937_64& engine, double low, double high) {
  return low + (high - low) * (static_cast<double>(engine() >> 11) * 0x1p-53);
}

// A part of 400 by 400 by 200 on a trunnion that tilts from -120 to 30 degrees, with C over two turns.
std::vector<Position> make_positions() {
  std::mt19937_64 engine(kSeed);
  std::vector<Position> made(kPositionCount);
  for (Position& position : made) {
    position.xyz.x = between(engine, -200, 200);
    position.xyz.y = between(engine, -200, 200);
    position.xyz.z = between(engine, 0, 200);
    position.abc.x = between(engine, -120, 30) * math::D2R;
    position.abc.y = between(engine, -90, 90) * math::D2R;
    position.abc.z = between(engine, -360, 360) * math::D2R;
  }
  return made;
}

}  // namespace

const std::vector<Position>& positions() {
  static const std::vector<Position> made = make_positions();
  return made;
}

}  // namespace bench
