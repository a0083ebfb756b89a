// Part and machine coordinates against Orocos KDL, on random machines of all three types.
#include <k5ax/machdef.h>

#include <gtest/gtest.h>

#include "peer/kdl_machine.h"
#include "support/hand_machine.h"
#include "support/near.h"
#include "support/random_machine.h"

namespace {

using k5ax_test::kRandomSize;
using k5ax_test::make_machdef;
using k5ax_test::Point;
using k5ax_test::Random;
using peer::from_kdl;
using peer::to_kdl;
using vector_form::Axis;
using vector_form::Machine;
using vector_form::point;
using vector_form::Vec;

constexpr int kMachines = 4000;

// Vectors below 2 * 520 + 2 * 2 * 520 (a point and two base points, there and back), two turns on either side
// and 30 roundings each: 120 * 3120 * eps / 2.
constexpr double kLength = 4.2e-11;
constexpr double kDirection = 120 * 1.2e-16;

// A machine of that type, now and then with one axis missing. Each axis sits where it may: on the side of its
// type, or, one time in four, on the other one, which the transforms take as it comes.
Machine machine_of_type(Random& random, MACHINE_TYPE type) {
  Machine m;
  m.type = type;
  m.primary.location = type == MC_HH ? HEAD : TABLE;
  m.secondary.location = type == MC_TT ? TABLE : HEAD;
  Axis* const axes[] = {&m.primary, &m.secondary};
  for (Axis* const axis : axes) {
    axis->present = true;
    axis->letter = static_cast<AXIS_TYPE>(random.below(3));
    axis->base = random.position(kRandomSize);
    axis->direction = random.machine_direction();
    if (random.one_in(8)) axis->direction = axis->direction * random.between(0.2, 5);
    if (random.one_in(4)) axis->location = axis->location == HEAD ? TABLE : HEAD;
  }
  // KDL has no opinion on a machine without any axis.
  if (random.one_in(8)) axes[random.below(2)]->present = false;
  m.tool_dir = random.machine_direction();
  return m;
}

class AgainstKdl : public testing::TestWithParam<MACHINE_TYPE> {
 protected:
  Random random{static_cast<std::uint64_t>(40 + GetParam())};
};

TEST_P(AgainstKdl, MachineToPartIsTheChainOfTheTablesAxes) {
  int turned = 0;
  for (int i = 0; i < kMachines; ++i) {
    const Machine m = machine_of_type(random, GetParam());
    const Vec p = random.position(kRandomSize);
    const Vec abc = random.angles();
    Point p_part;
    Point d_tool_part;
    make_machdef(m)->Mach2PartCoords(point(p), point(abc), p_part, d_tool_part);
    const Vec expected = from_kdl(peer::machine_to_part(m, abc) * to_kdl(p));
    ASSERT_NEAR_POINT(p_part, point(expected), kLength) << i << m << "\np " << p << " abc " << abc;
    turned += length(expected - p) > 1 ? 1 : 0;
  }
  EXPECT_GT(turned, GetParam() == MC_HH ? kMachines / 6 : kMachines / 3);
}

TEST_P(AgainstKdl, PartToMachineIsTheInverseOfThatChain) {
  int turned = 0;
  for (int i = 0; i < kMachines; ++i) {
    const Machine m = machine_of_type(random, GetParam());
    const Vec p = random.position(kRandomSize);
    const Vec abc = random.angles();
    const auto machdef = make_machdef(m);
    const Vec expected = from_kdl(peer::machine_to_part(m, abc).Inverse() * to_kdl(p));
    ASSERT_NEAR_POINT(machdef->Part2MachCoords(point(p), point(abc)), point(expected), kLength)
        << i << m << "\np " << p << " abc " << abc;
    ASSERT_NEAR_POINT(point(p) * machdef->Part2MachTransform(point(abc)), point(expected), kLength) << i << m;
    turned += length(expected - p) > 1 ? 1 : 0;
  }
  EXPECT_GT(turned, GetParam() == MC_HH ? kMachines / 6 : kMachines / 3);
}

TEST_P(AgainstKdl, TheToolDirectionIsTurnedByBothAxesSecondaryFirst) {
  for (int i = 0; i < kMachines; ++i) {
    const Machine m = machine_of_type(random, GetParam());
    const Vec abc = random.angles();
    Point p_part;
    Point d_tool_part;
    make_machdef(m)->Mach2PartCoords(Point(), point(abc), p_part, d_tool_part);
    const Vec expected = from_kdl(peer::tool_to_part(m, abc) * to_kdl(m.tool_dir));
    ASSERT_NEAR_POINT(d_tool_part, point(expected), kDirection) << i << m << "\nabc " << abc;
  }
}

const char* name_of(const testing::TestParamInfo<MACHINE_TYPE>& type) {
  return type.param == MC_TT ? "TableTable" : type.param == MC_HT ? "HeadTable" : "HeadHead";
}

INSTANTIATE_TEST_SUITE_P(Machines, AgainstKdl, testing::Values(MC_TT, MC_HT, MC_HH), name_of);

}  // namespace
