// From the machine to the part and back, and from the part to the machine and back: how far off is what comes
// back?
#ifndef K5AX_TESTS_LAWS_ROUND_TRIP_H
#define K5AX_TESTS_LAWS_ROUND_TRIP_H

#include <cstdint>
#include <memory>

#include <k5ax/machdef.h>

#include "support/vector_form.h"

namespace laws {

// The bound, in units of the last place of the length scale L of the trip. L is the longest of the vectors
// that are met on it: the points from the origin, the base points of the table's axes, and the points from
// these base points. (Between two axes the point is not seen. It is no longer than 2 L, being as far from the
// base point as before or after the turn.)
//
// With u = eps / 2, and d a vector of length L at most, one turn  d cos + (a x d) sin + a (a . d) (1 - cos):
//     d cos                                       1 u L
//     a x d: two products and a difference, sin   3.5 u L
//     a . d: 3, (1 - cos): 1, two products: 2,
//     all of it times 2 at most                   12 u L
//     two sums                                    2.5 u L
//     p - b                                       1 u L
//                                                 20 u L    four turns: 80 u L
//     + b: 2, 1, 2 and 1 u L, as the point between is up to 2 L: 6 u L
// What the same rotation there and back leaves undone:
//     sin and cos, each good to 2 u of itself: sin^2 + cos^2 is 1 + 4 u            4 u L for each axis
//     |a|^2 = 1 + 8 u: (s^2 + (1 - c)^2) 8 u, at most                             32 u L for each axis
// Together 80 + 6 + 2 * 36 = 158, and 2 for the products of two of these. u L is one unit of the last place
// of L at most.
constexpr double kRoundTripUlps = 160;

class RoundTrips {
 public:
  explicit RoundTrips(const vector_form::Machine& m);

  // Both answer how far off the point is that comes back, in units of the last place of the length scale.
  double from_machine(const Geometry::TPoint<double>& p_mach, const Geometry::TPoint<double>& abc) const;
  double from_part(const Geometry::TPoint<double>& p_part, const Geometry::TPoint<double>& abc) const;

 private:
  double length_scale(const vector_form::Vec& p_mach, const vector_form::Vec& p_part) const;

  std::unique_ptr<md::CMachDef> m_machdef;
  vector_form::Axis m_primary;
  vector_form::Axis m_secondary;
};

// The trip that came back farthest off, in units of the last place, and what it was.
struct WorstTrip {
  double ulps = 0;
  vector_form::Vec p;
  vector_form::Vec abc;

  void take(double its_ulps, const vector_form::Vec& its_p, const vector_form::Vec& its_abc);
};

// RapidCheck makes the machines and a seed for each. The points come from an engine that is a hundred times
// as fast, so that the library is what the time goes into.
constexpr std::int64_t kTripsOfAMachine = 4096;
WorstTrip worst_trip(const vector_form::Machine& m, double size, std::uint64_t seed);

}  // namespace laws

#endif
