// A machine with trees in another unit: what `scale` does to them, and what the recipe of docs/scene-graph.md
// puts right.
#include <string>

#include <gtest/gtest.h>

#include "examples/machine_units.h"
#include "support/near.h"
#include "system/tree_support.h"

namespace {

using namespace k5ax_test;
using vector_form::Vec;

constexpr double kInch = 25.4;

// Millimetres within 1700 along both trees: 12 * 4 * eps * 1700 = 1.9e-11, and twice that for the change
// itself.
constexpr double kUnitTolerance = 4e-11;

const Point kXyzInch(3, -2, -22);
const Point kAbcInch(-0.4, 0, 0.7);

class InchMachine : public testing::Test {
 protected:
  void SetUp() override {
    const std::string path = std::string(K5AX_EXAMPLES_FOLDER) + "/machines/head_table_inch.k5m";
    ASSERT_EQ(MachdefLoad(&machdef, path.c_str()), 1);
    pose(1);
    p_tool_inch = tool_on_part(machdef);
    for (const auto& entry : md::CMachDef_IdAxisState_get(machdef))
      value_inch[entry.first] = entry.second.value;
  }

  void pose(double unit) {
    zero_table(machdef);
    ASSERT_TRUE(md::UpdateNodeAxes_(&machdef, kXyzInch * unit, kAbcInch));
  }
  double value(int id) { return node_with_id(machdef, id)->value(); }

  md::CMachDef machdef;
  Point p_tool_inch;
  std::map<int, double> value_inch;
};

// Deliberate: the tool node keeps its lengths and the ways back theirs, while the axes' base points change.
TEST_F(InchMachine, ScaledDoesNotFitItsAxes) {
  machdef.scale(true);
  pose(kInch);
  // The inches of head and tool, 4.25 + 2.875 + 3 and more, were taken for millimetres.
  EXPECT_GT(std::abs(value(kZId) - value_inch[kZId] * kInch), 100);
}

// Deliberate: the value of every axis node, an angle too.
TEST_F(InchMachine, ScaledHasItsAnglesMultiplied) {
  machdef.scale(true);
  EXPECT_NEAR(value(kPrimaryId), value_inch[kPrimaryId] * kInch, 1e-14);
}

TEST_F(InchMachine, WithUnitsChangedStandsWhereItStood) {
  examples::change_units(machdef, true);
  EXPECT_NEAR_POINT(tool_on_part(machdef), p_tool_inch * kInch, kUnitTolerance);
}

TEST_F(InchMachine, WithUnitsChangedKeepsItsAngles) {
  examples::change_units(machdef, true);
  EXPECT_EQ(value(kPrimaryId), value_inch[kPrimaryId]);
  EXPECT_EQ(value(kSecondaryId), value_inch[kSecondaryId]);
}

TEST_F(InchMachine, WithUnitsChangedIsPosedWithTheSameSlides) {
  examples::change_units(machdef, true);
  pose(kInch);
  for (const int id : {kXId, kYId, kZId})
    EXPECT_NEAR(value(id), value_inch[id] * kInch, kUnitTolerance) << id;
  EXPECT_NEAR_POINT(tool_on_part(machdef), p_tool_inch * kInch, kUnitTolerance);
}

TEST_F(InchMachine, WithUnitsChangedHasWorkZeroAndLoadingVectorInTheNewUnit) {
  examples::change_units(machdef, true);
  EXPECT_TRUE(machdef.isMetric());
  EXPECT_NEAR_POINT(machdef.mwZeroPos(), Point(0, 0, -26 * kInch), 0);
  EXPECT_NEAR_POINT(machdef.loading_vector(), Point(0, 0, 8 * kInch), 0);
}

TEST_F(InchMachine, WithUnitsChangedTwiceIsItselfAgain) {
  examples::change_units(machdef, true);
  examples::change_units(machdef, false);
  EXPECT_FALSE(machdef.isMetric());
  pose(1);
  for (const int id : {kXId, kYId, kZId}) EXPECT_NEAR(value(id), value_inch[id], kUnitTolerance) << id;
}

TEST_F(InchMachine, WithItsOwnUnitChangesNothing) {
  examples::change_units(machdef, false);
  EXPECT_EQ(value(kZId), value_inch[kZId]);
  EXPECT_EQ(machdef.mwZeroPos(), Point(0, 0, -26));
}

}  // namespace
