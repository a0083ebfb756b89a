// A machine definition as it is made, and the fields that it keeps for its host.
#include <type_traits>

#include <boost/weak_ptr.hpp>

#include <gtest/gtest.h>

#include <k5ax/machdef.h>

#include "axes/axis_support.h"
#include "machdef/machine_support.h"

namespace {

using Geometry::TPoint;
using k5ax_test::expect_head;
using k5ax_test::straight_head;
using md::CMachDef;

void expect_empty(const CMachDef& machdef) {
  for (const auto& axis : k5ax_test::axes_of(machdef)) EXPECT_FALSE(axis);
  for (std::size_t i = 0; i < 2; ++i) {
    EXPECT_FALSE(machdef.SG()[i]);
    EXPECT_FALSE(machdef.SG_RotAxs()[i]);
  }
  EXPECT_FALSE(machdef.tool_node());
}

TEST(NewMachine, HasNoAxesAndNoScene) { expect_empty(CMachDef()); }

TEST(NewMachine, HasNoType) {
  EXPECT_EQ(CMachDef().getMachType(), MC_UNDEFINED);
  EXPECT_EQ(static_cast<int>(CMachDef().getMachType()), -1);
}

TEST(NewMachine, HasModeMinusOne) { EXPECT_EQ(static_cast<int>(CMachDef().get_mode()), -1); }

TEST(NewMachine, HasDisciplineZero) { EXPECT_EQ(static_cast<int>(CMachDef().discipline()), 0); }

TEST(NewMachine, IsMetric) { EXPECT_TRUE(CMachDef().isMetric()); }

TEST(NewMachine, HasItsWorkZeroAndLoadingVectorAtTheOrigin) {
  const CMachDef machdef;
  EXPECT_NEAR_POINT(machdef.mwZeroPos(), (TPoint<double>(0, 0, 0)), 0.0);
  EXPECT_NEAR_POINT(machdef.loading_vector(), (TPoint<double>(0, 0, 0)), 0.0);
}

TEST(NewMachine, HasAStraightHead) {
  const CMachDef machdef;
  expect_head(machdef.head(), straight_head());
  EXPECT_EQ(machdef.flags(), 0u);
  EXPECT_NEAR_POINT(machdef.getToolDirEx(), (TPoint<double>(0, 0, 1)), 0.0);
}

TEST(NewMachineWithMode, HasThatModeAndIsElseLikeAnyNewOne) {
  const CMachDef machdef(static_cast<MACHINE_MODE>(4711));
  EXPECT_EQ(static_cast<int>(machdef.get_mode()), 4711);
  expect_empty(machdef);
  EXPECT_EQ(machdef.getMachType(), MC_UNDEFINED);
  EXPECT_EQ(static_cast<int>(machdef.discipline()), 0);
  EXPECT_TRUE(machdef.isMetric());
  EXPECT_NEAR_POINT(machdef.mwZeroPos(), (TPoint<double>(0, 0, 0)), 0.0);
  EXPECT_NEAR_POINT(machdef.loading_vector(), (TPoint<double>(0, 0, 0)), 0.0);
  expect_head(machdef.head(), straight_head());
}

// A member-wise copy would share axes and nodes between two owners that both give them back.
TEST(MachineObject, IsNeitherCopiedNorAssigned) {
  EXPECT_FALSE(std::is_copy_constructible<CMachDef>::value);
  EXPECT_FALSE(std::is_copy_assignable<CMachDef>::value);
}

TEST(MachineObject, HasNoVirtualTable) { EXPECT_FALSE(std::is_polymorphic<CMachDef>::value); }

TEST(MachineType, HasItsNumbers) {
  EXPECT_EQ(static_cast<int>(MC_UNDEFINED), -1);
  EXPECT_EQ(static_cast<int>(MC_TT), 0);
  EXPECT_EQ(static_cast<int>(MC_HT), 1);
  EXPECT_EQ(static_cast<int>(MC_HH), 2);
}

TEST(MachineAccessors, ReturnWhatWasSet) {
  CMachDef machdef;
  machdef.setMachType(MC_HH);
  machdef.set_mode(static_cast<MACHINE_MODE>(7));
  machdef.discipline(static_cast<K5AX_DISCIPLINE>(-8));
  machdef.setMetric(false);
  machdef.mwZeroPos({1, 2, 3});
  machdef.loading_vector({4, 5, 6});

  EXPECT_EQ(machdef.getMachType(), MC_HH);
  EXPECT_EQ(static_cast<int>(machdef.get_mode()), 7);
  EXPECT_EQ(static_cast<int>(machdef.discipline()), -8);
  EXPECT_FALSE(machdef.isMetric());
  EXPECT_NEAR_POINT(machdef.mwZeroPos(), (TPoint<double>(1, 2, 3)), 0.0);
  EXPECT_NEAR_POINT(machdef.loading_vector(), (TPoint<double>(4, 5, 6)), 0.0);
}

TEST(MachineAccessors, StoreAnyType) {
  CMachDef machdef;
  machdef.setMachType(static_cast<MACHINE_TYPE>(99));
  EXPECT_EQ(static_cast<int>(machdef.getMachType()), 99);
}

// Deliberate: the unit's name alone; `scale` is what converts.
TEST(MachineAccessors, SetTheUnitWithoutConverting) {
  CMachDef machdef;
  k5ax_test::give_axes(machdef);
  machdef.head().length1 = 10;
  machdef.setMetric(false);
  EXPECT_EQ(machdef.xyz_axes()[0]->GetMax(), 150);
  EXPECT_EQ(machdef.head().length1, 10);
}

TEST(MachineAccessors, HandOutTheHeadItself) {
  CMachDef machdef;
  machdef.head().length1 = 12;
  const CMachDef& constant = machdef;
  EXPECT_EQ(constant.head().length1, 12);
  EXPECT_EQ(&constant.head(), &machdef.head());
}

TEST(MachineFlags, AreTheHeadsFlags) {
  CMachDef machdef;
  machdef.flags(0xF00Du);
  EXPECT_EQ(machdef.head().flags, 0xF00Du);
  machdef.head().flags = 0xBEEFu;
  EXPECT_EQ(machdef.flags(), 0xBEEFu);
}

TEST(MachineAxes, ArePutInAsTheyAre) {
  CMachDef machdef;
  const auto primary = k5ax_test::rotary_b_on_head();
  const auto secondary = k5ax_test::linear_x_on_table();
  machdef.setPrimary(primary);
  machdef.setSecondary(secondary);
  EXPECT_EQ(machdef.getPrimary(), primary);
  EXPECT_EQ(machdef.getSecondary(), secondary);
}

// Deliberate: a setter stores a pointer. The host sets the owner; `clone` and `copy` set it themselves.
TEST(MachineAxes, GetNoOwnerByBeingSet) {
  CMachDef machdef;
  const auto primary = k5ax_test::rotary_b_on_head();
  const auto secondary = k5ax_test::rotary_b_on_head();
  primary->machdef(nullptr);
  secondary->machdef(nullptr);
  machdef.setPrimary(primary);
  machdef.setSecondary(secondary);
  EXPECT_EQ(primary->machdef(), nullptr);
  EXPECT_EQ(secondary->machdef(), nullptr);
}

TEST(MachineAxes, ThatAreReplacedAreDroppedAndNotParked) {
  k5ax_test::AxisPool::drain();
  CMachDef machdef;
  machdef.setPrimary(k5ax_test::rotary_b_on_head());
  machdef.setSecondary(k5ax_test::rotary_b_on_head());
  const boost::weak_ptr<md::CAxis2> primary = machdef.getPrimary();
  const boost::weak_ptr<md::CAxis2> secondary = machdef.getSecondary();

  machdef.setPrimary(boost::shared_ptr<md::CAxis2>());
  machdef.setSecondary(boost::shared_ptr<md::CAxis2>());

  EXPECT_TRUE(primary.expired());
  EXPECT_TRUE(secondary.expired());
  EXPECT_EQ(k5ax_test::AxisPool::size(), 0u);
}

TEST(MachineAxes, StandInTheOrderXYZ) {
  CMachDef machdef;
  k5ax_test::give_axes(machdef);
  const CMachDef& constant = machdef;
  ASSERT_EQ(constant.xyz_axes().size(), 3u);
  EXPECT_EQ(constant.xyz_axes()[0]->GetAxis(), AXIS_X);
  EXPECT_EQ(constant.xyz_axes()[1]->GetAxis(), AXIS_Y);
  EXPECT_EQ(constant.xyz_axes()[2]->GetAxis(), AXIS_Z);
}

TEST(MachineScene, IsKeptAsItWasSet) {
  CMachDef machdef;
  const auto root = k5ax_test::plain_node(1);
  const auto axis = k5ax_test::axis_node(2, AXIS_A, TABLE, {0, 0, 0}, {1, 0, 0}, -1, 1, ROTARY);
  const auto tool = k5ax_test::tool_node(3);
  machdef.SG()[1] = root;
  machdef.SG_RotAxs()[1] = axis;
  machdef.tool_node(tool);

  const CMachDef& constant = machdef;
  EXPECT_FALSE(constant.SG()[0]);
  EXPECT_EQ(constant.SG()[1], root);
  EXPECT_FALSE(constant.SG_RotAxs()[0]);
  EXPECT_EQ(constant.SG_RotAxs()[1], axis);
  EXPECT_EQ(machdef.tool_node(), tool);
  EXPECT_EQ(constant.tool_node(), tool);
}

// The tool direction in force: vertical while the flags have value 1 and not value 2.
TPoint<double> tool_direction_at(unsigned int flags) {
  CMachDef machdef;
  machdef.setToolDir({0.6, 0, 0.8});
  machdef.flags(flags);
  return machdef.getToolDir();
}

TEST(ToolDirection, IsTheHeadsWithoutFlags) {
  EXPECT_NEAR_POINT(tool_direction_at(0), (TPoint<double>(0.6, 0, 0.8)), 0.0);
}

TEST(ToolDirection, IsVerticalAtFlagOne) {
  EXPECT_NEAR_POINT(tool_direction_at(1), (TPoint<double>(0, 0, 1)), 0.0);
}

TEST(ToolDirection, IsTheHeadsAtFlagTwo) {
  EXPECT_NEAR_POINT(tool_direction_at(2), (TPoint<double>(0.6, 0, 0.8)), 0.0);
}

TEST(ToolDirection, IsTheHeadsAtFlagsOneAndTwo) {
  EXPECT_NEAR_POINT(tool_direction_at(3), (TPoint<double>(0.6, 0, 0.8)), 0.0);
}

TEST(ToolDirection, DependsOnNoOtherFlag) {
  EXPECT_NEAR_POINT(tool_direction_at(0xFFFFFFFDu), (TPoint<double>(0, 0, 1)), 0.0);
  EXPECT_NEAR_POINT(tool_direction_at(0xFFFFFFFCu), (TPoint<double>(0.6, 0, 0.8)), 0.0);
}

TEST(ToolDirection, OfTheHeadIsGivenWhateverTheFlags) {
  CMachDef machdef;
  machdef.setToolDir({0.6, 0, 0.8});
  machdef.flags(1);
  EXPECT_NEAR_POINT(machdef.getToolDirEx(), (TPoint<double>(0.6, 0, 0.8)), 0.0);
}

TEST(ToolDirection, IsStoredInTheHeadWithoutNormalisingIt) {
  CMachDef machdef;
  machdef.setToolDir({3, -4, 12});
  EXPECT_NEAR_POINT(machdef.head().tool_dir, (TPoint<double>(3, -4, 12)), 0.0);
  EXPECT_NEAR_POINT(machdef.getToolDir(), (TPoint<double>(3, -4, 12)), 0.0);
}

// A host's visitor: the library only declares the interface.
class TypeSetter : public md::IMachDefVisitor {
 public:
  explicit TypeSetter(bool* destroyed) : m_destroyed(destroyed) {}
  TypeSetter(const TypeSetter&) = default;
  TypeSetter& operator=(const TypeSetter&) = default;
  ~TypeSetter() override { *m_destroyed = true; }
  void visit(CMachDef& machdef) override { machdef.setMachType(MC_HT); }

 private:
  bool* m_destroyed;
};

TEST(MachineVisitor, ReachesTheMachineThroughTheInterface) {
  bool destroyed = false;
  TypeSetter setter(&destroyed);
  md::IMachDefVisitor& visitor = setter;
  CMachDef machdef;
  visitor.visit(machdef);
  EXPECT_EQ(machdef.getMachType(), MC_HT);
}

TEST(MachineVisitor, IsDestroyedThroughTheInterface) {
  bool destroyed = false;
  std::unique_ptr<md::IMachDefVisitor> visitor(new TypeSetter(&destroyed));
  visitor.reset();
  EXPECT_TRUE(destroyed);
}

TEST(MachineVisitor, MayBeCopied) {
  EXPECT_TRUE(std::is_abstract<md::IMachDefVisitor>::value);
  EXPECT_TRUE(std::is_copy_constructible<TypeSetter>::value);
  EXPECT_TRUE(std::is_copy_assignable<TypeSetter>::value);
}

}  // namespace
