// Which tool direction is in force, and when the head's own is passed over.
#include <k5ax/machdef.h>

#include <gtest/gtest.h>

#include "support/hand_machine.h"
#include "support/near.h"

namespace {

using k5ax_test::Point;

Point direction_in_force(unsigned int flags) {
  md::CMachDef machdef;
  machdef.setToolDir(Point(0.6, 0, 0.8));
  machdef.flags(flags);
  return machdef.getToolDir();
}

TEST(ToolDirection, IsTheHeadsWithoutFlags) {
  EXPECT_NEAR_POINT(direction_in_force(0), Point(0.6, 0, 0.8), 0);
}

TEST(ToolDirection, IsVerticalWithValue1Alone) {
  EXPECT_NEAR_POINT(direction_in_force(1), Point(0, 0, 1), 0);
}

TEST(ToolDirection, IsTheHeadsWithValue2Alone) {
  EXPECT_NEAR_POINT(direction_in_force(2), Point(0.6, 0, 0.8), 0);
}

TEST(ToolDirection, IsTheHeadsWhenValue2StandsBesideValue1) {
  EXPECT_NEAR_POINT(direction_in_force(3), Point(0.6, 0, 0.8), 0);
}

TEST(ToolDirection, OtherFlagsHaveNoSayInIt) {
  EXPECT_NEAR_POINT(direction_in_force(0xfffffffdu), Point(0, 0, 1), 0);
  EXPECT_NEAR_POINT(direction_in_force(0xfffffffcu), Point(0.6, 0, 0.8), 0);
}

TEST(ToolDirection, IsNotNormalised) {
  md::CMachDef machdef;
  machdef.setToolDir(Point(0, 3, 4));
  EXPECT_NEAR_POINT(machdef.getToolDir(), Point(0, 3, 4), 0);
}

TEST(ToolDirection, OfTheHeadIsAnsweredWhateverTheFlags) {
  md::CMachDef machdef;
  machdef.setToolDir(Point(0.6, 0, 0.8));
  for (const unsigned int flags : {0u, 1u, 2u, 3u}) {
    machdef.flags(flags);
    EXPECT_NEAR_POINT(machdef.getToolDirEx(), Point(0.6, 0, 0.8), 0) << flags;
  }
}

}  // namespace
