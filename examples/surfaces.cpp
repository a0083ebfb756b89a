// The two surfaces that the example tool paths finish, a dome and the flank of a blade, in closed formulas.
#include "surfaces.h"

#include <cmath>

namespace examples {
namespace {

constexpr int kRounds = 14;
constexpr int kPlacesPerRound = 101;
constexpr int kPasses = 5;
constexpr int kPlacesPerPass = 201;

Point direction(double theta, double phi) {
  return Point(std::sin(theta) * std::cos(phi), std::sin(theta) * std::sin(phi), std::cos(theta));
}

Point cross(const Point& a, const Point& b) {
  return Point(a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x);
}

Point unit(const Point& v) { return v * (1 / std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z)); }

// How far along its line place `i` of `count` is, from 0 to 1; odd lines run back.
double progress(int line, int i, int count) {
  const double forth = static_cast<double>(i) / (count - 1);
  return line % 2 == 0 ? forth : 1 - forth;
}

// One ruling of the blade: its foot, the way up to its head, and the derivatives of both by s.
struct Ruling {
  Point p_foot;
  Point up;
  Point d_foot;
  Point d_up;
};

Ruling ruling_at(double s) {
  return {Point(55 + 8 * (1 - s * s), 45 * s, 5), Point(24 + 10 * s, -9 * s, 60), Point(-16 * s, 45, 0),
          Point(10, -9, 0)};
}

}  // namespace

std::vector<Cut> dome_cuts(const Part& part) {
  const double from_theta = 10 * math::D2R;
  const double to_theta = 75 * math::D2R;
  const double from_phi = -160 * math::D2R;

  std::vector<Cut> cuts;
  for (int round = 0; round < kRounds; ++round) {
    const double theta = from_theta + (to_theta - from_theta) * round / (kRounds - 1);
    const double tau = 6 * math::D2R + 0.7 * theta;
    for (int i = 0; i < kPlacesPerRound; ++i) {
      const double phi = from_phi + math::m_2pi * progress(round, i, kPlacesPerRound);
      const Point u_normal = direction(theta, phi);
      cuts.push_back({part.p_dome_centre() + u_normal * part.dome_radius(), u_normal, direction(tau, phi)});
    }
  }
  return cuts;
}

std::vector<Cut> blade_cuts(const Part& part) {
  std::vector<Cut> cuts;
  for (int pass = 0; pass < kPasses; ++pass) {
    const double h = 0.8 - 0.2 * pass;
    for (int i = 0; i < kPlacesPerPass; ++i) {
      const Ruling at = ruling_at(-1 + 2 * progress(pass, i, kPlacesPerPass));
      const Point along_half_way_up = at.d_foot + at.d_up * 0.5;
      cuts.push_back({part.p_datum + (at.p_foot + at.up * h) * part.size,
                      unit(cross(at.up, along_half_way_up)), unit(at.up)});
    }
  }
  return cuts;
}

Point p_tip(const Part& part, const Cut& cut) {
  return cut.p_contact + (cut.u_normal - cut.u_tool) * part.ball_radius();
}

}  // namespace examples
