// When a definition is a machine that the kinematics can work with, and what is said when it is not.
#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <k5ax/machdef.h>

#include "foundation/utility_guard.h"
#include "machdef/machine_support.h"

namespace {

using Geometry::TPoint;
using k5ax_test::AxisPtr;
using md::CAxis2;
using md::CMachDef;
using MachinePtr = std::unique_ptr<CMachDef>;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr MACHINE_TYPE kNoType = static_cast<MACHINE_TYPE>(3);
const TPoint<double> kOrigin(0, 0, 0);
const TPoint<double> kX(1, 0, 0);
const TPoint<double> kZ(0, 0, 1);

AxisPtr rotary(AXIS_TYPE letter, AXIS_LOCATION location, const TPoint<double>& direction,
               const TPoint<double>& base = kOrigin, double min = -1, double max = 1) {
  return CAxis2::create(letter, location, base, direction, min, max, ROTARY);
}

MachinePtr machine(MACHINE_TYPE type, const AxisPtr& primary, const AxisPtr& secondary) {
  MachinePtr machdef(new CMachDef);
  machdef->setMachType(type);
  machdef->setPrimary(primary);
  machdef->setSecondary(secondary);
  return machdef;
}

// A valid machine of each type, with both axes through the origin.
MachinePtr valid_tt() { return machine(MC_TT, rotary(AXIS_C, TABLE, kZ), rotary(AXIS_A, TABLE, kX)); }
MachinePtr valid_ht() { return machine(MC_HT, rotary(AXIS_C, TABLE, kZ), rotary(AXIS_A, HEAD, kX)); }
MachinePtr valid_hh() { return machine(MC_HH, rotary(AXIS_C, HEAD, kZ), rotary(AXIS_A, HEAD, kX)); }

std::vector<MachinePtr> valid_machines() {
  std::vector<MachinePtr> machines;
  machines.push_back(valid_tt());
  machines.push_back(valid_ht());
  machines.push_back(valid_hh());
  return machines;
}

TEST(Validity, HoldsForEachTypeWithBothAxes) {
  EXPECT_TRUE(valid_tt()->is_valid());
  EXPECT_TRUE(valid_ht()->is_valid());
  EXPECT_TRUE(valid_hh()->is_valid());
}

TEST(Validity, HoldsWithoutRotaryAxesForTableTable) {
  EXPECT_TRUE(machine(MC_TT, nullptr, nullptr)->is_valid());
}

TEST(Validity, HoldsWithoutRotaryAxesForHeadHead) {
  EXPECT_TRUE(machine(MC_HH, nullptr, nullptr)->is_valid());
}

TEST(Validity, FailsForAFreshMachine) { EXPECT_FALSE(CMachDef().is_valid()); }

TEST(Validity, FailsForATypeThatIsNone) {
  int types = 0;
  for (const int type : {-2, -1, 3, 4, 100}) {
    const MachinePtr machdef = valid_tt();
    machdef->setMachType(static_cast<MACHINE_TYPE>(type));
    EXPECT_FALSE(machdef->is_valid()) << "type " << type;
    ++types;
  }
  EXPECT_EQ(types, 5);
}

TEST(Validity, FailsForAPrimaryThatIsNotValid) {
  int machines = 0;
  for (const MachinePtr& machdef : valid_machines()) {
    machdef->getPrimary()->SetMax(-2);
    EXPECT_FALSE(machdef->is_valid()) << "type " << machdef->getMachType();
    ++machines;
  }
  EXPECT_EQ(machines, 3);
}

TEST(Validity, FailsForASecondaryThatIsNotValid) {
  int machines = 0;
  for (const MachinePtr& machdef : valid_machines()) {
    machdef->getSecondary()->SetMax(-2);
    EXPECT_FALSE(machdef->is_valid()) << "type " << machdef->getMachType();
    ++machines;
  }
  EXPECT_EQ(machines, 3);
}

TEST(Validity, DoesNotLookAtLinearAxes) {
  const MachinePtr machdef = valid_tt();
  machdef->xyz_axes()[0] =
      CAxis2::create(AXIS_DUMMY, AXIS_LOCATION_INVALID_LOWEST, kOrigin, kX, 1, -1, LINEAR);
  EXPECT_TRUE(machdef->is_valid());
}

TEST(Validity, FailsWithoutAToolDirection) {
  const MachinePtr machdef = machine(MC_TT, nullptr, nullptr);
  machdef->setToolDir({0, 0, 0});
  EXPECT_FALSE(machdef->is_valid());
}

TEST(Validity, TakesAToolDirectionOfAnyLengthAboveZero) {
  const MachinePtr machdef = machine(MC_TT, nullptr, nullptr);
  machdef->setToolDir({0, -1e-100, 0});
  EXPECT_TRUE(machdef->is_valid());
  machdef->setToolDir({300, 0, 0});
  EXPECT_TRUE(machdef->is_valid());
}

TEST(Validity, AsksForTheToolDirectionInForce) {
  // With the tool vertical by the flags, the head's own direction does not count.
  const MachinePtr machdef = machine(MC_TT, nullptr, nullptr);
  machdef->setToolDir({0, 0, 0});
  machdef->flags(1);
  EXPECT_TRUE(machdef->is_valid());
  machdef->flags(3);
  EXPECT_FALSE(machdef->is_valid());
}

TEST(Validity, NeedsAPrimaryForHeadTable) {
  EXPECT_FALSE(machine(MC_HT, nullptr, nullptr)->is_valid());
  EXPECT_FALSE(machine(MC_HT, nullptr, rotary(AXIS_A, HEAD, kX))->is_valid());
}

TEST(Validity, FailsForASecondaryWithoutPrimaryWhateverTheType) {
  EXPECT_FALSE(machine(MC_TT, nullptr, rotary(AXIS_A, TABLE, kX))->is_valid());
  EXPECT_FALSE(machine(MC_HT, nullptr, rotary(AXIS_A, HEAD, kX))->is_valid());
  EXPECT_FALSE(machine(MC_HH, nullptr, rotary(AXIS_A, HEAD, kX))->is_valid());
}

TEST(Validity, HoldsForAPrimaryAloneOfEachType) {
  EXPECT_TRUE(machine(MC_TT, rotary(AXIS_C, TABLE, kZ), nullptr)->is_valid());
  EXPECT_TRUE(machine(MC_HT, rotary(AXIS_C, TABLE, kZ), nullptr)->is_valid());
  EXPECT_TRUE(machine(MC_HH, rotary(AXIS_C, HEAD, kZ), nullptr)->is_valid());
}

TEST(Validity, FailsForTwoAxesOfOneLetter) {
  int machines = 0;
  for (const MachinePtr& machdef : valid_machines()) {
    machdef->getSecondary()->SetAxis(AXIS_C);
    EXPECT_FALSE(machdef->is_valid()) << "type " << machdef->getMachType();
    ++machines;
  }
  EXPECT_EQ(machines, 3);
}

TEST(Validity, FailsForTwoAxesOfOneDirection) {
  int machines = 0;
  for (const MachinePtr& machdef : valid_machines()) {
    machdef->getSecondary()->SetAxisVector(kZ);
    EXPECT_FALSE(machdef->is_valid()) << "type " << machdef->getMachType();
    ++machines;
  }
  EXPECT_EQ(machines, 3);
}

// Deliberate: directions are compared exactly and not for parallelism. The opposite direction, another length
// and the smallest difference in any component make another axis; whether it is a useful one is the host's
// business.
TEST(Validity, TakesOppositeDirections) {
  const MachinePtr machdef = valid_hh();
  machdef->getSecondary()->SetAxisVector({0, 0, -1});
  EXPECT_TRUE(machdef->is_valid());
}

TEST(Validity, TakesDirectionsThatDifferInOneComponentByTheLeastBit) {
  const double least = std::numeric_limits<double>::denorm_min();
  int directions = 0;
  for (const TPoint<double>& direction : {TPoint<double>(least, 0, 1), TPoint<double>(0, least, 1),
                                          TPoint<double>(0, 0, std::nextafter(1, 2))}) {
    const MachinePtr machdef = valid_hh();
    machdef->getSecondary()->SetAxisVector(direction);
    EXPECT_TRUE(machdef->is_valid()) << "direction " << directions;
    ++directions;
  }
  EXPECT_EQ(directions, 3);
}

// Locations.
bool valid_at(MACHINE_TYPE type, AXIS_LOCATION primary, AXIS_LOCATION secondary) {
  return machine(type, rotary(AXIS_C, primary, kZ), rotary(AXIS_A, secondary, kX))->is_valid();
}

TEST(ValidityOfLocations, OfHeadTableIsTableThenHead) {
  EXPECT_TRUE(valid_at(MC_HT, TABLE, HEAD));
  EXPECT_FALSE(valid_at(MC_HT, HEAD, TABLE));
  EXPECT_FALSE(valid_at(MC_HT, TABLE, TABLE));
  EXPECT_FALSE(valid_at(MC_HT, HEAD, HEAD));
}

TEST(ValidityOfLocations, OfHeadHeadIsHeadForBoth) {
  EXPECT_TRUE(valid_at(MC_HH, HEAD, HEAD));
  EXPECT_FALSE(valid_at(MC_HH, TABLE, HEAD));
  EXPECT_FALSE(valid_at(MC_HH, HEAD, TABLE));
  EXPECT_FALSE(valid_at(MC_HH, TABLE, TABLE));
}

// Deliberate: a table-table machine is told by its type alone.
TEST(ValidityOfLocations, OfTableTableIsAny) {
  EXPECT_TRUE(valid_at(MC_TT, TABLE, TABLE));
  EXPECT_TRUE(valid_at(MC_TT, HEAD, TABLE));
  EXPECT_TRUE(valid_at(MC_TT, TABLE, HEAD));
  EXPECT_TRUE(valid_at(MC_TT, HEAD, HEAD));
}

// Deliberate: a location says how two axes share the work; a primary that is alone may stand anywhere.
TEST(ValidityOfLocations, OfAPrimaryAloneIsAny) {
  EXPECT_TRUE(machine(MC_HH, rotary(AXIS_C, TABLE, kZ), nullptr)->is_valid());
  EXPECT_TRUE(machine(MC_HT, rotary(AXIS_C, HEAD, kZ), nullptr)->is_valid());
  EXPECT_TRUE(machine(MC_TT, rotary(AXIS_C, HEAD, kZ), nullptr)->is_valid());
}

// The line of the table axis next to the part passes the origin within 0.001 in each coordinate.
bool valid_tt_with_line(const TPoint<double>& base, const TPoint<double>& direction) {
  return machine(MC_TT, rotary(AXIS_B, TABLE, {0, 1, 0}), rotary(AXIS_A, TABLE, direction, base))->is_valid();
}

TEST(ValidityOfTheTableLine, HoldsForALineNearTheOrigin) {
  EXPECT_TRUE(valid_tt_with_line({0, 0.0005, 0}, kX));
}

TEST(ValidityOfTheTableLine, FailsForALineOffTheOrigin) {
  EXPECT_FALSE(valid_tt_with_line({0, 0.002, 0}, kX));
}

TEST(ValidityOfTheTableLine, HoldsForABaseFarAlongALineThroughTheOrigin) {
  EXPECT_TRUE(valid_tt_with_line({5000, 0, 0}, kX));
  EXPECT_TRUE(valid_tt_with_line({-30, 0, -40}, {0.6, 0, 0.8}));
}

TEST(ValidityOfTheTableLine, FailsOffTheOriginWhereverTheBaseLiesAlongIt) {
  // The point of the line nearest to the origin is (0, 0.002, 0).
  EXPECT_FALSE(valid_tt_with_line({0, 0.002, 5}, kZ));
  EXPECT_FALSE(valid_tt_with_line({0, 0.002, -5000}, kZ));
}

// Exactly 0.001 is too far, and the next smaller double is not: the coordinates across the line are those of
// the base.
TEST(ValidityOfTheTableLine, AllowsLessThanTheLimitInEachCoordinate) {
  const double inside = std::nextafter(0.001, 0);
  EXPECT_TRUE(valid_tt_with_line({inside, 0, 0}, kZ));
  EXPECT_TRUE(valid_tt_with_line({-inside, 0, 0}, kZ));
  EXPECT_TRUE(valid_tt_with_line({0, inside, 0}, kZ));
  EXPECT_TRUE(valid_tt_with_line({0, -inside, 0}, kZ));
  EXPECT_TRUE(valid_tt_with_line({0, 0, inside}, kX));
  EXPECT_TRUE(valid_tt_with_line({0, 0, -inside}, kX));
}

TEST(ValidityOfTheTableLine, FailsExactlyAtTheLimitInEachCoordinate) {
  EXPECT_FALSE(valid_tt_with_line({0.001, 0, 0}, kZ));
  EXPECT_FALSE(valid_tt_with_line({-0.001, 0, 0}, kZ));
  EXPECT_FALSE(valid_tt_with_line({0, 0.001, 0}, kZ));
  EXPECT_FALSE(valid_tt_with_line({0, -0.001, 0}, kZ));
  EXPECT_FALSE(valid_tt_with_line({0, 0, 0.001}, kX));
  EXPECT_FALSE(valid_tt_with_line({0, 0, -0.001}, kX));
}

TEST(ValidityOfTheTableLine, IsPerCoordinateAndNotADistance) {
  // 0.0009 in each of two coordinates is 0.00127 away.
  EXPECT_TRUE(valid_tt_with_line({0.0009, -0.0009, 0}, kZ));
}

TEST(ValidityOfTheTableLine, HoldsForADirectionOfAnyLength) {
  const MachinePtr machdef = valid_tt();
  machdef->getSecondary()->SetAxisVector({200, 0, 0});
  machdef->getSecondary()->SetBaseVector({70, 0.0005, 0});
  EXPECT_TRUE(machdef->is_valid());
  machdef->getSecondary()->SetBaseVector({70, 0.002, 0});
  EXPECT_FALSE(machdef->is_valid());
}

TEST(ValidityOfTheTableLine, FailsForABaseThatIsNoNumber) {
  EXPECT_FALSE(valid_tt_with_line({kNan, 0, 0}, kZ));
  EXPECT_FALSE(valid_tt_with_line({0, kNan, 0}, kX));
}

TEST(ValidityOfTheTableLine, OfTableTableIsTheSecondarys) {
  const TPoint<double> off(0, 0, 77);
  EXPECT_TRUE(machine(MC_TT, rotary(AXIS_A, TABLE, kX, off), rotary(AXIS_C, TABLE, kZ))->is_valid());
  EXPECT_FALSE(machine(MC_TT, rotary(AXIS_C, TABLE, kZ), rotary(AXIS_A, TABLE, kX, off))->is_valid());
}

TEST(ValidityOfTheTableLine, OfTableTableIsThePrimarysWhereItIsAlone) {
  EXPECT_FALSE(machine(MC_TT, rotary(AXIS_A, TABLE, kX, {0, 0, 77}), nullptr)->is_valid());
}

TEST(ValidityOfTheTableLine, OfHeadTableIsThePrimarys) {
  const TPoint<double> off(0, 0, 77);
  EXPECT_TRUE(machine(MC_HT, rotary(AXIS_C, TABLE, kZ), rotary(AXIS_A, HEAD, kX, off))->is_valid());
  EXPECT_FALSE(machine(MC_HT, rotary(AXIS_A, TABLE, kX, off), rotary(AXIS_C, HEAD, kZ))->is_valid());
  EXPECT_FALSE(machine(MC_HT, rotary(AXIS_A, TABLE, kX, off), nullptr)->is_valid());
}

TEST(ValidityOfTheTableLine, DoesNotConcernHeadHead) {
  const TPoint<double> off(0, 0, 77);
  EXPECT_TRUE(
      machine(MC_HH, rotary(AXIS_A, HEAD, kX, off), rotary(AXIS_B, HEAD, {0, 1, 0}, off))->is_valid());
  EXPECT_TRUE(machine(MC_HH, rotary(AXIS_A, HEAD, kX, off), nullptr)->is_valid());
}

// What is said. Only a line off the origin is named, and only to a developer or in regression runs.
class ValidityMessage : public testing::Test {
 protected:
  ValidityMessage() {
    CUtility::set_feedback_cbk([this](const char* text) { m_heard.push_back(text); });
  }

  std::vector<std::string> heard_of(const CMachDef& machdef) {
    m_heard.clear();
    EXPECT_FALSE(machdef.is_valid());
    return m_heard;
  }

  const std::vector<std::string> m_nothing;

 private:
  k5ax_test::UtilityGuard m_guard;
  std::vector<std::string> m_heard;
};

constexpr char kSecondaryOff[] = "MC_TT secondary axis location not valid";
constexpr char kPrimaryOff[] = "MC_HT primary axis location not valid";

MachinePtr tt_off_the_origin() {
  return machine(MC_TT, rotary(AXIS_C, TABLE, kZ), rotary(AXIS_A, TABLE, kX, {0, 0.002, 0}));
}

MachinePtr ht_off_the_origin() {
  return machine(MC_HT, rotary(AXIS_C, TABLE, kZ, {0.002, 0, 0}), rotary(AXIS_A, HEAD, kX));
}

TEST_F(ValidityMessage, NamesTheSecondaryOfTableTableToADeveloper) {
  CUtility::developer(true);
  EXPECT_EQ(heard_of(*tt_off_the_origin()), std::vector<std::string>{kSecondaryOff});
}

TEST_F(ValidityMessage, NamesThePrimaryOfHeadTableToADeveloper) {
  CUtility::developer(true);
  EXPECT_EQ(heard_of(*ht_off_the_origin()), std::vector<std::string>{kPrimaryOff});
}

TEST_F(ValidityMessage, IsSentInRegressionModeToo) {
  CUtility::regression(true);
  EXPECT_EQ(heard_of(*tt_off_the_origin()), std::vector<std::string>{kSecondaryOff});
  EXPECT_EQ(heard_of(*ht_off_the_origin()), std::vector<std::string>{kPrimaryOff});
}

TEST_F(ValidityMessage, IsSentOnceInBothModes) {
  CUtility::flags(6);
  EXPECT_EQ(heard_of(*tt_off_the_origin()), std::vector<std::string>{kSecondaryOff});
}

// Deliberate: the words name the secondary even where the primary is alone and tested in its place. Hosts
// compare the text.
TEST_F(ValidityMessage, SaysSecondaryOfAPrimaryThatIsAlone) {
  CUtility::developer(true);
  EXPECT_EQ(heard_of(*machine(MC_TT, rotary(AXIS_A, TABLE, kX, {0, 0, 77}), nullptr)),
            std::vector<std::string>{kSecondaryOff});
}

TEST_F(ValidityMessage, IsNotSentWithoutEitherMode) {
  CUtility::flags(~6u);
  EXPECT_EQ(heard_of(*tt_off_the_origin()), m_nothing);
  EXPECT_EQ(heard_of(*ht_off_the_origin()), m_nothing);
}

TEST_F(ValidityMessage, IsNotSentForAnyOtherRule) {
  CUtility::flags(6);
  EXPECT_EQ(heard_of(*machine(kNoType, nullptr, nullptr)), m_nothing);
  EXPECT_EQ(heard_of(*machine(MC_HT, nullptr, nullptr)), m_nothing);
  EXPECT_EQ(heard_of(*machine(MC_HH, rotary(AXIS_C, TABLE, kZ), rotary(AXIS_A, HEAD, kX))), m_nothing);
  EXPECT_EQ(heard_of(*machine(MC_TT, rotary(AXIS_C, TABLE, kZ, kOrigin, 1, -1), nullptr)), m_nothing);
}

// The line is looked at last, while the machine is still good: what is wrong already is not named twice.
TEST_F(ValidityMessage, IsNotSentWhereAnEarlierRuleFails) {
  CUtility::flags(6);

  const MachinePtr without_tool = tt_off_the_origin();
  without_tool->setToolDir({0, 0, 0});
  EXPECT_EQ(heard_of(*without_tool), m_nothing);

  const MachinePtr same_letters = tt_off_the_origin();
  same_letters->getPrimary()->SetAxis(AXIS_A);
  EXPECT_EQ(heard_of(*same_letters), m_nothing);

  const MachinePtr same_directions = tt_off_the_origin();
  same_directions->getPrimary()->SetAxisVector(kX);
  EXPECT_EQ(heard_of(*same_directions), m_nothing);

  const MachinePtr invalid_axis = tt_off_the_origin();
  invalid_axis->getSecondary()->SetMax(-2);
  EXPECT_EQ(heard_of(*invalid_axis), m_nothing);

  const MachinePtr wrong_locations = ht_off_the_origin();
  wrong_locations->getSecondary()->SetAxisLocation(TABLE);
  EXPECT_EQ(heard_of(*wrong_locations), m_nothing);

  EXPECT_EQ(heard_of(*machine(MC_TT, nullptr, rotary(AXIS_A, TABLE, kX, {0, 9, 0}))), m_nothing);
}

TEST_F(ValidityMessage, IsNotSentForAValidMachine) {
  CUtility::flags(6);
  int calls = 0;
  CUtility::set_feedback_cbk([&calls](const char*) { ++calls; });
  EXPECT_TRUE(valid_tt()->is_valid());
  EXPECT_TRUE(valid_ht()->is_valid());
  EXPECT_EQ(calls, 0);
}

TEST_F(ValidityMessage, WithoutASinkIsDropped) {
  CUtility::set_feedback_cbk(boost::function<void(const char*)>());
  CUtility::developer(true);
  EXPECT_FALSE(tt_off_the_origin()->is_valid());
}

TEST_F(ValidityMessage, GoesNeitherToTheErrorNorToTheAssertionChannel) {
  CUtility::flags(6);
  int calls = 0;
  CUtility::set_error_cbk([&calls](const char*, short) { ++calls; });
  CUtility::set_assertion_handler_cbk([&calls](const char*, const char*, const char*, long) { ++calls; });
  EXPECT_EQ(heard_of(*tt_off_the_origin()).size(), 1u);
  EXPECT_EQ(calls, 0);
}

TEST_F(ValidityMessage, LetsTheSinkThrow) {
  struct SinkFailure {};
  CUtility::developer(true);
  CUtility::set_feedback_cbk([](const char*) { throw SinkFailure(); });
  EXPECT_THROW(tt_off_the_origin()->is_valid(), SinkFailure);
}

TEST_F(ValidityMessage, IsSentByTheMachineWorkRuleToo) {
  CUtility::developer(true);
  std::vector<std::string> heard;
  CUtility::set_feedback_cbk([&heard](const char* text) { heard.push_back(text); });
  EXPECT_FALSE(tt_off_the_origin()->mw_valid());
  EXPECT_EQ(heard, std::vector<std::string>{kSecondaryOff});
}

// Room to turn, for machine work.
MachinePtr with_ranges(MachinePtr machdef, double primary_max, double secondary_max) {
  machdef->getPrimary()->SetMin(0);
  machdef->getPrimary()->SetMax(primary_max);
  if (machdef->getSecondary()) {
    machdef->getSecondary()->SetMin(0);
    machdef->getSecondary()->SetMax(secondary_max);
  }
  return machdef;
}

TEST(MachineWorkValidity, HoldsForEachTypeWithRoomToTurn) {
  EXPECT_TRUE(valid_tt()->mw_valid());
  EXPECT_TRUE(valid_ht()->mw_valid());
  EXPECT_TRUE(valid_hh()->mw_valid());
}

TEST(MachineWorkValidity, FailsForAMachineThatIsNotValid) {
  int machines = 0;
  for (const MachinePtr& machdef : valid_machines()) {
    machdef->setToolDir({0, 0, 0});
    EXPECT_FALSE(machdef->mw_valid()) << "type " << machdef->getMachType();
    ++machines;
  }
  EXPECT_EQ(machines, 3);
}

TEST(MachineWorkValidity, WithoutRotaryAxesIsValidity) {
  EXPECT_TRUE(machine(MC_TT, nullptr, nullptr)->mw_valid());
  EXPECT_FALSE(machine(MC_HT, nullptr, nullptr)->mw_valid());
}

TEST(MachineWorkValidity, OfASecondaryAloneIsValidity) {
  EXPECT_FALSE(machine(MC_TT, nullptr, rotary(AXIS_A, TABLE, kX))->mw_valid());
}

TEST(MachineWorkValidity, OfAPrimaryAloneNeedsRoomWhateverTheType) {
  int types = 0;
  for (const MACHINE_TYPE type : {MC_TT, MC_HT, MC_HH}) {
    EXPECT_FALSE(with_ranges(machine(type, rotary(AXIS_C, TABLE, kZ), nullptr), 0, 0)->mw_valid())
        << "type " << type;
    EXPECT_TRUE(with_ranges(machine(type, rotary(AXIS_C, TABLE, kZ), nullptr), 1e-12, 0)->mw_valid())
        << "type " << type;
    ++types;
  }
  EXPECT_EQ(types, 3);
}

TEST(MachineWorkValidity, OfAPrimaryAloneStillNeedsAValidMachine) {
  EXPECT_FALSE(machine(MC_TT, rotary(AXIS_C, TABLE, kZ, {5, 0, 0}), nullptr)->mw_valid());
}

TEST(MachineWorkValidity, OfHeadTableNeedsRoomOfThePrimaryAlone) {
  EXPECT_FALSE(with_ranges(valid_ht(), 0, 1)->mw_valid());
  EXPECT_TRUE(with_ranges(valid_ht(), 1, 0)->mw_valid());
}

TEST(MachineWorkValidity, OfHeadTableNeedsTableThenHead) {
  EXPECT_FALSE(machine(MC_HT, rotary(AXIS_C, HEAD, kZ), rotary(AXIS_A, TABLE, kX))->mw_valid());
}

// Deliberate: the primary's travel is not looked at; the secondary carries the part.
TEST(MachineWorkValidity, OfTableTableNeedsRoomOfTheSecondaryAlone) {
  EXPECT_FALSE(with_ranges(valid_tt(), 1, 0)->mw_valid());
  EXPECT_TRUE(with_ranges(valid_tt(), 0, 1)->mw_valid());
}

TEST(MachineWorkValidity, OfHeadHeadWithBothAxesNeedsNoRoom) {
  EXPECT_TRUE(with_ranges(valid_hh(), 0, 0)->mw_valid());
}

// Orthogonality of the machine.
TEST(MachineOrthogonality, HoldsWithoutRotaryAxes) { EXPECT_TRUE(CMachDef().is_orthogonal()); }

TEST(MachineOrthogonality, HoldsForTwoOrthogonalAxes) { EXPECT_TRUE(valid_tt()->is_orthogonal()); }

TEST(MachineOrthogonality, FailsForAPrimaryThatIsNotOrthogonal) {
  EXPECT_FALSE(machine(MC_TT, rotary(AXIS_C, TABLE, {0, 0, -1}), rotary(AXIS_A, TABLE, kX))->is_orthogonal());
  EXPECT_FALSE(machine(MC_TT, rotary(AXIS_C, TABLE, kX), nullptr)->is_orthogonal());
}

TEST(MachineOrthogonality, FailsForASecondaryThatIsNotOrthogonal) {
  EXPECT_FALSE(machine(MC_TT, rotary(AXIS_C, TABLE, kZ), rotary(AXIS_A, TABLE, kZ))->is_orthogonal());
  EXPECT_FALSE(machine(MC_TT, nullptr, rotary(AXIS_A, TABLE, kZ))->is_orthogonal());
}

TEST(MachineOrthogonality, HoldsForOneOrthogonalAxisAlone) {
  EXPECT_TRUE(machine(MC_TT, rotary(AXIS_C, TABLE, kZ), nullptr)->is_orthogonal());
  EXPECT_TRUE(machine(MC_TT, nullptr, rotary(AXIS_A, TABLE, kX))->is_orthogonal());
}

TEST(MachineOrthogonality, DoesNotLookAtTypeOrLinearAxes) {
  const MachinePtr machdef = machine(kNoType, rotary(AXIS_C, TABLE, kZ), nullptr);
  machdef->xyz_axes()[0] = CAxis2::create(AXIS_X, TABLE, kOrigin, kZ, -1, 1, LINEAR);
  EXPECT_TRUE(machdef->is_orthogonal());
}

}  // namespace
