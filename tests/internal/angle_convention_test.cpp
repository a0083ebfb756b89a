// The second convention for the angles of rotary nodes: off in every library that is built, and kept working
// for the day on which it is switched on.
#include <k5ax/machdef.h>

#include <gtest/gtest.h>

#include "scenegraph/angle_convention.h"
#include "support/near.h"

namespace {

using Geometry::Matrix;
using Geometry::TPoint;

constexpr unsigned int kConventionBit = 4;
constexpr double kAngle = 0.3;
constexpr double kRounding = 4e-16;  // a few roundings of numbers up to 1

class AngleConvention : public testing::Test {
 protected:
  AngleConvention() { md::sg::_angle_convention = true; }
  ~AngleConvention() override { md::sg::_angle_convention = false; }

  static boost::shared_ptr<md::sg::tnode<md::CAxis2>> rotary_node(AXIS_TYPE type,
                                                                  const TPoint<double>& direction) {
    const auto n = md::NodeAxis_Create();
    n->SetAxis(type);
    n->mode(ROTARY);
    n->SetBaseVector(CUtility::pt_o);
    n->SetAxisVector(direction);
    return n;
  }
};

TEST_F(AngleConvention, TurnsABAxisTheOtherWay) {
  const auto n = rotary_node(AXIS_B, CUtility::pt_y);
  EXPECT_NEAR_MATRIX(md::NodeAxis_transform_calc(kConventionBit, n, kAngle),
                     Geometry::RotateAboutAxis(CUtility::pt_y, -kAngle), kRounding);
}

TEST_F(AngleConvention, TurnsACAxisHalfATurnFurther) {
  const auto n = rotary_node(AXIS_C, CUtility::pt_z);
  EXPECT_NEAR_MATRIX(md::NodeAxis_transform_calc(kConventionBit, n, kAngle),
                     Geometry::RotateAboutAxis(CUtility::pt_z, kAngle + math::m_pi), kRounding);
}

TEST_F(AngleConvention, LeavesAnAAxisAlone) {
  const auto n = rotary_node(AXIS_A, CUtility::pt_x);
  EXPECT_NEAR_MATRIX(md::NodeAxis_transform_calc(kConventionBit, n, kAngle),
                     Geometry::RotateAboutAxis(CUtility::pt_x, kAngle), kRounding);
}

TEST_F(AngleConvention, ActsOnlyWhereTheSelectorAsksForIt) {
  const auto n = rotary_node(AXIS_B, CUtility::pt_y);
  EXPECT_NEAR_MATRIX(md::NodeAxis_transform_calc(~kConventionBit, n, kAngle),
                     Geometry::RotateAboutAxis(CUtility::pt_y, kAngle), kRounding);
}

TEST_F(AngleConvention, StoresTheValueAsItWasGiven) {
  const auto n = rotary_node(AXIS_C, CUtility::pt_z);
  md::NodeAxis_transform_set(kConventionBit, n, kAngle);
  EXPECT_EQ(n->value(), kAngle);
}

TEST_F(AngleConvention, ScalingANodeAsksItsOwnerForTheSelector) {
  md::CMachDef owner;
  owner.flags(kConventionBit);
  const auto n = rotary_node(AXIS_B, CUtility::pt_y);
  n->machdef(&owner);
  md::NodeAxis_transform_set(kConventionBit, n, kAngle);
  n->scale_node(2.0, false);
  EXPECT_NEAR_MATRIX(n->transform(), Geometry::RotateAboutAxis(CUtility::pt_y, -2.0 * kAngle), kRounding);
}

TEST_F(AngleConvention, ScalingANodeWithoutAnOwnerTakesTheSelectorAsZero) {
  const auto n = rotary_node(AXIS_B, CUtility::pt_y);
  n->machdef(nullptr);
  n->scale_node(2.0, false);
  md::NodeAxis_transform_set(kConventionBit, n, kAngle);
  n->scale_node(2.0, false);
  EXPECT_NEAR_MATRIX(n->transform(), Geometry::RotateAboutAxis(CUtility::pt_y, 2.0 * kAngle), kRounding);
}

TEST(NoAngleConvention, IsInForceAtTheStart) { EXPECT_FALSE(md::sg::_angle_convention); }

// A node may outlive the machine that held it; with the convention off nothing is read through the pointer,
// which leads to nowhere here.
TEST(NoAngleConvention, ScalingDoesNotLookAtTheOwner) {
  const auto n = md::NodeAxis_Create();
  n->SetAxis(AXIS_B);
  n->mode(ROTARY);
  n->SetBaseVector(CUtility::pt_o);
  n->SetAxisVector(CUtility::pt_y);
  n->machdef(reinterpret_cast<md::CMachDef*>(16));
  md::NodeAxis_transform_set(0, n, kAngle);
  n->scale_node(2.0, false);
  EXPECT_EQ(n->value(), 2.0 * kAngle);
  n->machdef(nullptr);
}

}  // namespace
