// Where the slides stand: by the formula, by posing, and by hand.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

#include <k5ax/k5ax.h>

#include "support/near.h"
#include "tool/shipped.h"
#include "tool/toolpath/slide_values.h"

namespace {

using Geometry::TPoint;
using k5ax_test::deg;
using tool::SlideValues;
using tool_test::kFork;
using tool_test::kShipped;
using tool_test::kSwivel;
using tool_test::kTrunnion;
using tool_test::node_of;
using tool_test::shipped;

constexpr int kXNode = 1;
constexpr int kYNode = 2;
constexpr int kZNode = 3;
constexpr int kPrimaryNode = 4;
constexpr int kSecondaryNode = 5;

// Poses the trees, each pose from the table's zero pose, and reads the three slides.
std::array<double, 3> posed(md::CMachDef& machine, const TPoint<double>& xyz, const TPoint<double>& abc) {
  for (const int id : {kPrimaryNode, kSecondaryNode}) {
    md::sg::node* const rotary = node_of(machine, id).get();
    if (md::sg::axis_node(rotary)->GetAxisLocation() == TABLE) k5axSgNode_value_set2(0, rotary, 0);
  }
  EXPECT_TRUE(UpdateNodeAxes_2(&machine, xyz.x, xyz.y, xyz.z, abc.x, abc.y, abc.z));
  return {node_of(machine, kXNode)->value(), node_of(machine, kYNode)->value(),
          node_of(machine, kZNode)->value()};
}

TEST(PathSlides, OfAllShippedMachinesFollowTheFormula) {
  for (const char* name : kShipped) {
    const auto machine = shipped(name);
    EXPECT_TRUE(SlideValues(*machine).has_formula()) << name;
  }
}

TEST(PathSlides, StandWhereThePosedTreesSay) {
  std::mt19937_64 random(21);
  const auto between = [&random](double from, double to) {
    return from + (to - from) * (static_cast<double>(random() >> 11) / 9007199254740992.0);  // 2^53
  };
  int compared = 0;
  for (const char* name : kShipped) {
    const auto machine = shipped(name);
    const auto other = shipped(name);
    SlideValues slides(*machine);
    for (int i = 0; i < 500; ++i) {
      const TPoint<double> xyz(between(-900, 900), between(-900, 900), between(-900, 900));
      TPoint<double> abc;
      for (const auto& axis : {other->getPrimary(), other->getSecondary()})
        axis->SetValue(between(-7, 7), abc.x, abc.y, abc.z);
      std::array<double, 3> given{};
      ASSERT_TRUE(slides.at(xyz, abc, given));
      const std::array<double, 3> wanted = posed(*other, xyz, abc);
      // Numbers below 2000 that pass some thirty sums and products: 30 * 2000 * 1.1e-16 = 7e-12.
      for (std::size_t k = 0; k < 3; ++k) ASSERT_NEAR(given[k], wanted[k], 1e-11) << name << " slide " << k;
      ++compared;
    }
  }
  EXPECT_EQ(compared, 2000);
}

// By hand. The nose stands 520 over the table with the slides at 0 and the tool is 160 long, so its point is
// at 360; nothing on the head turns.
TEST(PathSlides, OfATrunnionAreThePointLessTheTool) {
  const auto machine = shipped(kTrunnion);
  SlideValues slides(*machine);
  std::array<double, 3> values{};
  ASSERT_TRUE(slides.at({10, -20, 30}, {deg(-40), 0, deg(90)}, values));
  EXPECT_NEAR(values[0], 10, 1e-12);
  EXPECT_NEAR(values[1], -20, 1e-12);
  EXPECT_NEAR(values[2], -330, 1e-12);
}

// By hand. B's line runs through (-0.038, 180.015); the tool's point lies 150 below the nose at z = 0, which
// is (0.038, -330.015) from that line. +90 degrees about Y take (x, z) to (z, -x), so the point comes to
// (-0.038 - 330.015, 180.015 - 0.038) = (-330.053, 179.977). X and Z make up the difference to the target.
TEST(PathSlides, OfASwivelHeadFollowTheHead) {
  const auto machine = shipped(kSwivel);
  SlideValues slides(*machine);
  std::array<double, 3> values{};
  ASSERT_TRUE(slides.at({10, 20, -30}, {0, deg(90), deg(33)}, values));
  EXPECT_NEAR(values[0], 340.053, 1e-12);
  EXPECT_NEAR(values[1], 20, 1e-12);
  EXPECT_NEAR(values[2], -209.977, 1e-12);
}

// By hand. A's line runs through (y, z) = (0.016, 219.993), the tool's point lies 185 below the nose, so
// (-0.016, -404.993) from that line; +90 degrees about X take (y, z) to (-z, y), which is (404.993, -0.016)
// and the point (405.009, 219.977). C then turns by 90 about Z, which takes (0, 405.009) to (-405.009, 0).
TEST(PathSlides, OfAForkFollowBothAxes) {
  const auto machine = shipped(kFork);
  SlideValues slides(*machine);
  std::array<double, 3> values{};
  ASSERT_TRUE(slides.at({1, 2, 3}, {deg(90), 0, deg(90)}, values));
  EXPECT_NEAR(values[0], 406.009, 1e-12);
  EXPECT_NEAR(values[1], 2, 1e-12);
  EXPECT_NEAR(values[2], 3 - 219.977, 1e-12);
}

// The offset is kept from row to row as long as no angle changes.
TEST(PathSlides, FollowEitherAngleAlone) {
  const auto machine = shipped(kFork);
  const auto other = shipped(kFork);
  SlideValues slides(*machine);
  const TPoint<double> xyz(1, 2, 3);
  for (const TPoint<double>& abc_deg : {TPoint<double>(20, 0, 30), TPoint<double>(20, 0, 50),
                                        TPoint<double>(40, 0, 50), TPoint<double>(40, 0, 50)}) {
    const TPoint<double> abc = abc_deg * math::D2R;
    std::array<double, 3> given{};
    ASSERT_TRUE(slides.at(xyz, abc, given));
    const std::array<double, 3> wanted = posed(*other, xyz, abc);
    for (std::size_t k = 0; k < 3; ++k) EXPECT_NEAR(given[k], wanted[k], 1e-11) << "slide " << k;
  }
}

TEST(PathSlides, OfAMachineWithoutTreesAreNone) {
  const auto machine = shipped(kTrunnion);
  md::CMachDef bare;
  bare.clone(*machine, 1);
  SlideValues slides(bare);
  for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(slides.axis(i), nullptr);
}

TEST(PathSlides, HaveTheTravelOfTheDefinition) {
  const auto machine = shipped(kTrunnion);
  machine->xyz_axes()[0]->SetMax(123);
  EXPECT_EQ(SlideValues(*machine).axis(0)->GetMax(), 123);
}

TEST(PathSlides, HaveTheTravelOfTheirNodeWhereTheDefinitionHasNone) {
  const auto machine = shipped(kTrunnion);
  machine->xyz_axes()[0].reset();
  ASSERT_NE(SlideValues(*machine).axis(0), nullptr);
  EXPECT_EQ(SlideValues(*machine).axis(0)->GetMax(), 250);
}

// A swivel head with Z as a quill below B: how far the quill has to come out depends on B and Z together,
// which is no sum of sines and cosines.
std::unique_ptr<md::CMachDef> quill_machine() {
  auto machine = shipped(kSwivel);
  const auto x_node = node_of(*machine, kXNode);
  const auto z_node = node_of(*machine, kZNode);
  const auto b_node = node_of(*machine, kSecondaryNode);
  // X, Z, (fixed, B), tool becomes X, (fixed, B), Z, tool.
  const boost::shared_ptr<md::sg::node> below_z = z_node->children().at(0);
  const boost::shared_ptr<md::sg::node> tool = machine->tool_node();
  below_z->parent(x_node);
  z_node->parent(tool->parent());
  tool->parent(z_node);
  auto made = std::make_unique<md::CMachDef>();
  made->clone(*machine, 3);  // makes the lists that poses go by
  return made;
}

TEST(PathSlides, OfAQuillThatTurnsWithTheHeadArePosed) {
  const auto machine = quill_machine();
  const auto other = quill_machine();
  SlideValues slides(*machine);
  EXPECT_FALSE(slides.has_formula());
  for (const double b_deg : {-20.0, 0.0, 35.0, 70.0}) {
    const TPoint<double> xyz(10, 20, -300);
    std::array<double, 3> given{};
    ASSERT_TRUE(slides.at(xyz, {0, deg(b_deg), deg(80)}, given));
    EXPECT_EQ(given, posed(*other, xyz, {0, deg(b_deg), deg(80)})) << b_deg;
  }
}

// One that is inclined by 45 degrees reaches every height at the quarter turns that the formula is found
// from, so only the trials tell.
TEST(PathSlides, OfAnInclinedQuillArePosedToo) {
  const auto machine = quill_machine();
  const auto other = quill_machine();
  for (md::CMachDef* const inclined : {machine.get(), other.get()})
    tool_test::axis_of(*inclined, kZNode).SetAxisVector({std::sqrt(0.5), 0, std::sqrt(0.5)});
  SlideValues slides(*machine);
  EXPECT_FALSE(slides.has_formula());
  const TPoint<double> abc(0, deg(35), deg(80));
  std::array<double, 3> given{};
  ASSERT_TRUE(slides.at({10, 20, -300}, abc, given));
  EXPECT_EQ(given, posed(*other, {10, 20, -300}, abc));
}

// At 90 degrees the quill lies flat and cannot change the height.
TEST(PathSlides, OfAQuillThatLiesFlatReachNoOtherHeight) {
  const auto machine = quill_machine();
  SlideValues slides(*machine);
  std::array<double, 3> values = {1, 2, 3};
  EXPECT_FALSE(slides.at({0, 0, -300}, {0, deg(90), 0}, values));
  EXPECT_EQ(values, (std::array<double, 3>{0, 0, 0}));
}

}  // namespace
