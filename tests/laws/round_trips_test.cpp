// Round trips by the million. K5AX_ROUND_TRIPS is how many; scripts/laws runs a billion.
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "laws/generators.h"
#include "laws/round_trip.h"

namespace {

using k5ax_test::Random;
using vector_form::point;
using vector_form::Vec;

// RapidCheck makes the machines and a seed for each. The points come from an engine that is a hundred times
// as fast, so that the library is what the time goes into.
constexpr std::int64_t kTripsOfAMachine = 4096;

std::int64_t trips_asked_for() {
  const char* const text = std::getenv("K5AX_ROUND_TRIPS");
  return text != nullptr ? std::atoll(text) : 400'000;
}

// In units of the last place, and where that was.
struct Worst {
  double ulps = 0;
  Vec p;
  Vec abc;

  void take(double its_ulps, const Vec& its_p, const Vec& its_abc) {
    // Not `>`: what is not a number is the worst of all, and stays it.
    if (its_ulps <= ulps || ulps != ulps) return;
    ulps = its_ulps;
    p = its_p;
    abc = its_abc;
  }
};

Worst worst_of_a_machine(const vector_form::Machine& m, double size, std::uint64_t seed) {
  const laws::RoundTrips trips(m);
  Random random(seed);
  Worst worst;
  for (std::int64_t i = 0; i < kTripsOfAMachine / 2; ++i) {
    const Vec p = random.position(size);
    const Vec abc = random.angles();
    worst.take(trips.from_machine(point(p), point(abc)), p, abc);
    worst.take(trips.from_part(point(p), point(abc)), p, abc);
  }
  return worst;
}

TEST(RoundTrips, ComeBackToWhereTheyStarted) {
  const std::int64_t machines = (trips_asked_for() + kTripsOfAMachine - 1) / kTripsOfAMachine;
  ASSERT_GT(machines, 0) << "K5AX_ROUND_TRIPS is not a number of trips";
  const char* const seed = std::getenv("K5AX_SEED");
  const std::string parameters =
      "max_success=" + std::to_string(machines) + " seed=" + (seed != nullptr ? seed : "20261121");
  // What is given is what a failure is seen again with, and that may be one machine.
  const bool is_repeated = std::getenv("RC_PARAMS") != nullptr;
  setenv("RC_PARAMS", parameters.c_str(), 0);

  std::int64_t done = 0;
  Worst worst;
  rc::detail::checkGTest([&](std::uint64_t points_seed) {
    const double size = *laws::machine_size();
    const vector_form::Machine m = *laws::machine(size);
    const Worst its_worst = worst_of_a_machine(m, size, points_seed);
    done += kTripsOfAMachine;
    worst.take(its_worst.ulps, its_worst.p, its_worst.abc);
    RC_LOG() << "the worst of its trips: " << its_worst.p << " at the angles " << its_worst.abc << ", "
             << its_worst.ulps << " units of the last place\n";
    RC_ASSERT(its_worst.ulps <= laws::kRoundTripUlps);
  });
  std::cout << "round trips: " << done << ", worst deviation " << worst.ulps
            << " units of the last place of the length scale, allowed " << laws::kRoundTripUlps << '\n';
  EXPECT_GE(done, is_repeated ? kTripsOfAMachine : trips_asked_for());
  EXPECT_GT(worst.ulps, 0.5) << "nothing was turned";
}

}  // namespace
