// Why a machine is not valid: every rule by itself, and all of them beside the library's own answer.
#include "tool/check/validity.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <string>

#include "support/numbers.h"
#include "support/random_machine.h"
#include "tool/shipped.h"

namespace {

using k5ax_test::kInfinity;
using k5ax_test::kNan;
using k5ax_test::Random;
using tool::reasons_not_valid;
using tool_test::kFork;
using tool_test::kShipped;
using tool_test::kSwivel;
using tool_test::kTrunnion;
using tool_test::shipped;
using Point = Geometry::TPoint<double>;

std::multiset<std::string> rules_broken(const md::CMachDef& machine) {
  std::multiset<std::string> rules;
  for (const tool::Finding& finding : reasons_not_valid(machine)) rules.insert(finding.rule);
  return rules;
}

using Rules = std::multiset<std::string>;

TEST(ReasonsNotValid, NoneForTheShippedMachines) {
  for (const char* name : kShipped) EXPECT_EQ(rules_broken(*shipped(name)), Rules()) << name;
}

TEST(ReasonsNotValid, NameAnAxisThatIsNeitherOnHeadNorTable) {
  const auto machine = shipped(kTrunnion);
  machine->getPrimary()->SetAxisLocation(static_cast<AXIS_LOCATION>(7));
  EXPECT_EQ(rules_broken(*machine), Rules({"axis-location"}));
}

TEST(ReasonsNotValid, NameADirectionWithoutLength) {
  const auto machine = shipped(kTrunnion);
  machine->getSecondary()->SetAxisVector(Point());
  EXPECT_EQ(rules_broken(*machine), Rules({"axis-direction"}));
}

// The square of 1e-200 is below the smallest number, so the length as computed is 0.
TEST(ReasonsNotValid, NameADirectionWhoseLengthVanishes) {
  const auto machine = shipped(kTrunnion);
  machine->getPrimary()->SetAxisVector(Point(1e-200, 0, 0));
  EXPECT_EQ(rules_broken(*machine), Rules({"axis-direction"}));
}

TEST(ReasonsNotValid, NameALetterThatIsNone) {
  const auto machine = shipped(kTrunnion);
  machine->getPrimary()->SetAxis(AXIS_DUMMY);
  EXPECT_EQ(rules_broken(*machine), Rules({"axis-letter"}));
}

TEST(ReasonsNotValid, NameLimitsThatRunBackwardsWithTheirDegrees) {
  const auto machine = shipped(kTrunnion);
  machine->getPrimary()->SetMin(30 * math::D2R);
  machine->getPrimary()->SetMax(-120 * math::D2R);
  const auto reasons = reasons_not_valid(*machine);
  ASSERT_EQ(reasons.size(), 1U);
  EXPECT_EQ(reasons[0].line(), "primary axis A: travel from 30 to -120 deg runs backwards; swap min and max");
}

TEST(ReasonsNotValid, NameLimitsThatAreNoNumbers) {
  const auto machine = shipped(kTrunnion);
  machine->getPrimary()->SetMax(kNan);
  EXPECT_EQ(rules_broken(*machine), Rules({"axis-limits"}));
}

TEST(ReasonsNotValid, NameAToolDirectionWithoutLength) {
  const auto machine = shipped(kTrunnion);
  machine->setToolDir(Point());
  EXPECT_EQ(rules_broken(*machine), Rules({"tool-direction"}));
}

// While the flags say that the tool is vertical, the head's own direction is not looked at.
TEST(ReasonsNotValid, LeaveOutTheHeadsDirectionOfAVerticalTool) {
  const auto machine = shipped(kTrunnion);
  machine->setToolDir(Point());
  machine->flags(1);
  EXPECT_EQ(rules_broken(*machine), Rules());
}

TEST(ReasonsNotValid, NameATypeThatIsNone) {
  const auto machine = shipped(kTrunnion);
  machine->setMachType(static_cast<MACHINE_TYPE>(3));
  EXPECT_EQ(rules_broken(*machine), Rules({"machine-type"}));
}

TEST(ReasonsNotValid, NameAHeadTableMachineWithoutItsTableAxis) {
  const auto machine = shipped(kSwivel);
  machine->setPrimary({});
  machine->setSecondary({});
  EXPECT_EQ(rules_broken(*machine), Rules({"primary-missing"}));
}

TEST(ReasonsNotValid, NameASecondaryThatStandsAlone) {
  const auto machine = shipped(kFork);
  machine->setPrimary({});
  EXPECT_EQ(rules_broken(*machine), Rules({"primary-missing"}));
}

TEST(ReasonsNotValid, NameALetterUsedTwice) {
  const auto machine = shipped(kFork);
  machine->getPrimary()->SetAxis(AXIS_A);
  EXPECT_EQ(rules_broken(*machine), Rules({"same-letter"}));
}

TEST(ReasonsNotValid, NameADirectionUsedTwice) {
  const auto machine = shipped(kFork);
  machine->getPrimary()->SetAxisVector(machine->getSecondary()->GetAxisVector());
  EXPECT_EQ(rules_broken(*machine), Rules({"same-direction"}));
}

TEST(ReasonsNotValid, LeaveOppositeDirectionsAlone) {
  const auto machine = shipped(kFork);
  machine->getPrimary()->SetAxisVector(-machine->getSecondary()->GetAxisVector());
  EXPECT_EQ(rules_broken(*machine), Rules());
}

TEST(ReasonsNotValid, NameBothAxesOfAHeadTableMachineThatAreSwapped) {
  const auto machine = shipped(kSwivel);
  machine->getPrimary()->SetAxisLocation(HEAD);
  machine->getSecondary()->SetAxisLocation(TABLE);
  EXPECT_EQ(rules_broken(*machine), Rules({"type-location", "type-location"}));
}

TEST(ReasonsNotValid, NameATableAxisOfAHeadHeadMachine) {
  const auto machine = shipped(kFork);
  machine->getSecondary()->SetAxisLocation(TABLE);
  EXPECT_EQ(rules_broken(*machine), Rules({"type-location"}));
}

// The line through (0, 0.002, -85) along Z comes nearest to the origin at (0, 0.002, 0).
TEST(ReasonsNotValid, NameALineThatMissesTheOriginAndWhereItPasses) {
  const auto machine = shipped(kTrunnion);
  machine->getSecondary()->SetBaseVector(Point(0, 0.002, -85));
  const auto reasons = reasons_not_valid(*machine);
  ASSERT_EQ(reasons.size(), 1U);
  EXPECT_EQ(
      reasons[0].line(),
      "secondary axis C: its line through 0 0.002 -85 along 0 0 1 passes the machine's origin at 0 0.002 0, "
      "and each of the three must be less than 0.001; move its base point so that the line goes through "
      "0 0 0");
}

TEST(ReasonsNotValid, JudgeThePrimarysLineWhereItIsAloneOnTheTable) {
  const auto machine = shipped(kTrunnion);
  machine->setSecondary({});
  const auto reasons = reasons_not_valid(*machine);
  ASSERT_EQ(reasons.size(), 1U);
  EXPECT_EQ(reasons[0].place, "primary axis A");
  EXPECT_EQ(reasons[0].rule, "axis-line");
}

TEST(ReasonsNotValid, NameEveryRuleThatIsBroken) {
  const auto machine = shipped(kTrunnion);
  machine->setMachType(MC_UNDEFINED);
  machine->setToolDir(Point());
  machine->getPrimary()->SetAxis(AXIS_C);
  machine->getSecondary()->SetMax(-100);
  EXPECT_EQ(rules_broken(*machine), Rules({"machine-type", "tool-direction", "same-letter", "axis-limits"}));
}

// A valid machine of one of the types, or nearly, and then up to three things that may break it.
std::unique_ptr<md::CMachDef> broken_machine(Random& random) {
  auto machine = std::make_unique<md::CMachDef>();
  const int type = random.below(3);
  machine->setMachType(static_cast<MACHINE_TYPE>(type));
  const AXIS_LOCATION locations[3][2] = {{TABLE, TABLE}, {TABLE, HEAD}, {HEAD, HEAD}};
  const auto axis = [&](int which) {
    const auto made =
        md::CAxis2::create(static_cast<AXIS_TYPE>((which + 1) % 3), locations[type][which], Point(),
                           which == 0 ? Point(0, 1, 0) : Point(0, 0, 1), -1, 1, ROTARY);
    if (type == MC_HH) made->SetBaseVector(vector_form::point(random.vector(100)));
    return made;
  };
  machine->setPrimary(axis(0));
  machine->setSecondary(axis(1));

  static const double odd[] = {0,      -0.0,   1e-200, 5e-324, 0.000999, 0.001,
                               0.0011, -0.001, 1e300,  kNan,   kInfinity};
  for (int i = random.below(4); i > 0; --i) {
    md::CAxis2* const victim = random.one_in(2) ? machine->getPrimary().get() : machine->getSecondary().get();
    switch (random.below(11)) {
      case 0:
        machine->setMachType(static_cast<MACHINE_TYPE>(random.below(6) - 2));
        break;
      case 1:
        machine->setToolDir(Point(random.of(odd), 0, random.of(odd)));
        break;
      case 2:
        machine->flags(static_cast<unsigned int>(random.below(4)));
        break;
      case 3:
        machine->setPrimary({});
        break;
      case 4:
        machine->setSecondary({});
        break;
      case 5:
        if (victim != nullptr) victim->SetAxis(static_cast<AXIS_TYPE>(random.below(9) - 1));
        break;
      case 6:
        if (victim != nullptr) victim->SetAxisLocation(static_cast<AXIS_LOCATION>(random.below(4) - 1));
        break;
      case 7:
        if (victim != nullptr) victim->SetAxisVector(Point(random.of(odd), random.of(odd), random.below(2)));
        break;
      case 8:
        if (victim != nullptr) victim->SetBaseVector(Point(random.of(odd), random.of(odd), random.of(odd)));
        break;
      case 9:
        if (victim != nullptr) victim->SetMin(random.one_in(2) ? 1 : random.of(odd));
        break;
      default:
        if (victim != nullptr) victim->SetMax(random.one_in(2) ? -1 : random.of(odd));
        break;
    }
  }
  return machine;
}

void expect_agreement(const md::CMachDef& machine, int seed, int counts[2]) {
  const bool valid = machine.is_valid();
  const auto reasons = reasons_not_valid(machine);
  EXPECT_EQ(valid, reasons.empty()) << "seed " << seed << ", the library says "
                                    << (valid ? "valid" : "not valid")
                                    << (reasons.empty() ? "" : ", and here is said: " + reasons[0].line());
  ++counts[valid ? 1 : 0];
}

TEST(ReasonsNotValid, AreThereExactlyWhenTheLibrarySaysNo) {
  int counts[2] = {0, 0};
  std::set<std::string> rules;
  for (int seed = 0; seed < 20000; ++seed) {
    Random random(static_cast<std::uint64_t>(seed));
    const auto machine = broken_machine(random);
    expect_agreement(*machine, seed, counts);
    for (const std::string& rule : rules_broken(*machine)) rules.insert(rule);
  }
  EXPECT_GT(counts[0], 5000);
  EXPECT_GT(counts[1], 5000);
  EXPECT_EQ(rules,
            (std::set<std::string>{"axis-direction", "axis-letter", "axis-limits", "axis-line",
                                   "axis-location", "machine-type", "primary-missing", "same-direction",
                                   "same-letter", "tool-direction", "type-location"}));
}

// Machines in which anything may stand anywhere; few of them are valid.
TEST(ReasonsNotValid, AreThereExactlyWhenTheLibrarySaysNoToAnyMachine) {
  int counts[2] = {0, 0};
  for (int seed = 0; seed < 20000; ++seed) {
    Random random(static_cast<std::uint64_t>(seed));
    expect_agreement(*k5ax_test::make_machdef(k5ax_test::random_machine(random)), seed, counts);
  }
  EXPECT_GT(counts[0], 5000);
  EXPECT_GT(counts[1], 100);
}

}  // namespace
