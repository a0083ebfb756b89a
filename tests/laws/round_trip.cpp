// From the machine to the part and back, and the other way round.
#include "laws/round_trip.h"

#include <algorithm>

#include "laws/ulps.h"
#include "support/random_machine.h"

namespace laws {

using Geometry::TPoint;
using vector_form::length;
using vector_form::vec;
using vector_form::Vec;

namespace {

TPoint<double> to_part(const md::CMachDef& machdef, const TPoint<double>& p_mach, const TPoint<double>& abc) {
  TPoint<double> p_part;
  TPoint<double> d_tool_part;
  machdef.Mach2PartCoords(p_mach, abc, p_part, d_tool_part);
  return p_part;
}

}  // namespace

RoundTrips::RoundTrips(const vector_form::Machine& m)
    : m_machdef(k5ax_test::make_machdef(m)), m_primary(m.primary), m_secondary(m.secondary) {}

double RoundTrips::from_machine(const TPoint<double>& p_mach, const TPoint<double>& abc) const {
  const TPoint<double> p_part = to_part(*m_machdef, p_mach, abc);
  const TPoint<double> p_back = m_machdef->Part2MachCoords(p_part, abc);
  return deviation_in_ulps(vec(p_back), vec(p_mach), length_scale(vec(p_mach), vec(p_part)));
}

double RoundTrips::from_part(const TPoint<double>& p_part, const TPoint<double>& abc) const {
  const TPoint<double> p_mach = m_machdef->Part2MachCoords(p_part, abc);
  const TPoint<double> p_back = to_part(*m_machdef, p_mach, abc);
  return deviation_in_ulps(vec(p_back), vec(p_part), length_scale(vec(p_mach), vec(p_part)));
}

// The primary turns the machine point, the secondary what becomes the part point.
double RoundTrips::length_scale(const Vec& p_mach, const Vec& p_part) const {
  double longest = std::max(length(p_mach), length(p_part));
  if (on_table(m_primary))
    longest = std::max({longest, length(m_primary.base), length(p_mach - m_primary.base)});
  if (on_table(m_secondary))
    longest = std::max({longest, length(m_secondary.base), length(p_part - m_secondary.base)});
  return longest;
}

void WorstTrip::take(double its_ulps, const Vec& its_p, const Vec& its_abc) {
  // Not `>`: what is not a number is the worst of all, and stays it.
  if (its_ulps <= ulps || ulps != ulps) return;
  ulps = its_ulps;
  p = its_p;
  abc = its_abc;
}

WorstTrip worst_trip(const vector_form::Machine& m, double size, std::uint64_t seed) {
  const RoundTrips trips(m);
  k5ax_test::Random random(seed);
  WorstTrip worst;
  for (std::int64_t i = 0; i < kTripsOfAMachine / 2; ++i) {
    const Vec p = random.position(size);
    const Vec abc = random.angles();
    worst.take(trips.from_machine(vector_form::point(p), vector_form::point(abc)), p, abc);
    worst.take(trips.from_part(vector_form::point(p), vector_form::point(abc)), p, abc);
  }
  return worst;
}

}  // namespace laws
