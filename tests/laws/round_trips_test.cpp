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

using laws::kTripsOfAMachine;

std::int64_t trips_asked_for() {
  const char* const text = std::getenv("K5AX_ROUND_TRIPS");
  return text != nullptr ? std::atoll(text) : 400'000;
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
  laws::WorstTrip worst;
  rc::detail::checkGTest([&](std::uint64_t points_seed) {
    const double size = *laws::machine_size();
    const vector_form::Machine m = *laws::machine(size);
    const laws::WorstTrip its_worst = laws::worst_trip(m, size, points_seed);
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
