// Which rotary axis turns the part, and the order of the two for machine work.
#include <memory>

#include <gtest/gtest.h>

#include <k5ax/machdef.h>

#include "axes/axis_support.h"
#include "machdef/machine_support.h"

namespace {

using k5ax_test::AxisPtr;
using md::CMachDef;

constexpr int kTypes[] = {0, 1, 2};
constexpr int kNoTypes[] = {-2, -1, 3, 100};

// Any two axes, since roles go by type and presence alone; each machine has its own, for it gives them back.
std::unique_ptr<CMachDef> machine(int type, bool with_primary, bool with_secondary) {
  std::unique_ptr<CMachDef> machdef(new CMachDef);
  machdef->setMachType(static_cast<MACHINE_TYPE>(type));
  if (with_primary) machdef->setPrimary(k5ax_test::rotary_b_on_head());
  if (with_secondary) machdef->setSecondary(k5ax_test::linear_x_on_table());
  return machdef;
}

TEST(AxisOfThePart, OfTableTableIsTheSecondary) {
  const auto machdef = machine(MC_TT, true, true);
  EXPECT_EQ(machdef->rotary_axis(), machdef->getSecondary());
}

TEST(AxisOfThePart, OfTableTableIsThePrimaryWhereItIsAlone) {
  const auto machdef = machine(MC_TT, true, false);
  EXPECT_EQ(machdef->rotary_axis(), machdef->getPrimary());
}

TEST(AxisOfThePart, OfTableTableIsASecondaryThatIsAlone) {
  const auto machdef = machine(MC_TT, false, true);
  EXPECT_EQ(machdef->rotary_axis(), machdef->getSecondary());
}

TEST(AxisOfThePart, OfHeadTableIsThePrimary) {
  const auto machdef = machine(MC_HT, true, true);
  EXPECT_EQ(machdef->rotary_axis(), machdef->getPrimary());
  EXPECT_FALSE(machine(MC_HT, false, true)->rotary_axis());
}

// Deliberate: no axis turns the part of a head-head machine, and the primary is given all the same.
TEST(AxisOfThePart, OfHeadHeadIsThePrimary) {
  const auto machdef = machine(MC_HH, true, true);
  EXPECT_EQ(machdef->rotary_axis(), machdef->getPrimary());
  EXPECT_FALSE(machine(MC_HH, false, true)->rotary_axis());
}

TEST(AxisOfThePart, IsEmptyWithoutAxes) {
  int types = 0;
  for (const int type : kTypes) {
    EXPECT_FALSE(machine(type, false, false)->rotary_axis()) << "type " << type;
    ++types;
  }
  EXPECT_EQ(types, 3);
}

TEST(AxisOfThePart, IsEmptyForATypeThatIsNone) {
  int types = 0;
  for (const int type : kNoTypes) {
    EXPECT_FALSE(machine(type, true, true)->rotary_axis()) << "type " << type;
    ++types;
  }
  EXPECT_EQ(types, 4);
}

class MachineWorkAxes : public testing::Test {
 protected:
  // Something else in both places beforehand, so that a place that is not written shows.
  AxisPtr first = md::CAxis2::create();
  AxisPtr second = md::CAxis2::create();
  const AxisPtr first_before = first;
  const AxisPtr second_before = second;
};

// Deliberate: against the definition's own naming. The axis next to the part comes first.
TEST_F(MachineWorkAxes, OfTableTableAreSecondaryThenPrimary) {
  const auto machdef = machine(MC_TT, true, true);
  machdef->getMWRotAxes(first, second);
  EXPECT_EQ(first, machdef->getSecondary());
  EXPECT_EQ(second, machdef->getPrimary());
}

TEST_F(MachineWorkAxes, OfTableTableAreThePrimaryTwiceWhereItIsAlone) {
  const auto machdef = machine(MC_TT, true, false);
  machdef->getMWRotAxes(first, second);
  EXPECT_EQ(first, machdef->getPrimary());
  EXPECT_EQ(second, machdef->getPrimary());
}

TEST_F(MachineWorkAxes, OfTableTableWithASecondaryAloneAreItAndNone) {
  const auto machdef = machine(MC_TT, false, true);
  machdef->getMWRotAxes(first, second);
  EXPECT_EQ(first, machdef->getSecondary());
  EXPECT_FALSE(second);
}

TEST_F(MachineWorkAxes, OfHeadTableArePrimaryThenSecondary) {
  const auto machdef = machine(MC_HT, true, true);
  machdef->getMWRotAxes(first, second);
  EXPECT_EQ(first, machdef->getPrimary());
  EXPECT_EQ(second, machdef->getSecondary());
}

TEST_F(MachineWorkAxes, OfHeadHeadArePrimaryThenSecondary) {
  const auto machdef = machine(MC_HH, true, true);
  machdef->getMWRotAxes(first, second);
  EXPECT_EQ(first, machdef->getPrimary());
  EXPECT_EQ(second, machdef->getSecondary());
}

TEST_F(MachineWorkAxes, AreEmptiedWhereAMachineHasNone) {
  int types = 0;
  for (const int type : kTypes) {
    first = first_before;
    second = second_before;
    machine(type, false, false)->getMWRotAxes(first, second);
    EXPECT_FALSE(first) << "type " << type;
    EXPECT_FALSE(second) << "type " << type;
    ++types;
  }
  EXPECT_EQ(types, 3);
}

TEST_F(MachineWorkAxes, OfHeadTableWithAPrimaryAloneAreItAndNone) {
  const auto machdef = machine(MC_HT, true, false);
  machdef->getMWRotAxes(first, second);
  EXPECT_EQ(first, machdef->getPrimary());
  EXPECT_FALSE(second);
}

// Deliberate: where there is no answer the host's values stay.
TEST_F(MachineWorkAxes, StayUntouchedForATypeThatIsNone) {
  int types = 0;
  for (const int type : kNoTypes) {
    machine(type, true, true)->getMWRotAxes(first, second);
    EXPECT_EQ(first, first_before) << "type " << type;
    EXPECT_EQ(second, second_before) << "type " << type;
    ++types;
  }
  EXPECT_EQ(types, 4);
}

}  // namespace
