// A host's own static objects may use the library before main: what such an object sees there.
#include <string>

#include <gtest/gtest.h>

#include <k5ax/foundation.h>

namespace {

using Geometry::TPoint;

// Made while the static objects of this program are made, in no particular order with those of other files.
struct SeenBeforeMain {
  TPoint<double> pt_o = CUtility::pt_o;
  TPoint<double> pt_x = CUtility::pt_x;
  TPoint<double> pt_y = CUtility::pt_y;
  TPoint<double> pt_z = CUtility::pt_z;
  double pi = math::m_pi;
  double half_pi = math::m_pi2;
  double two_pi = math::m_2pi;
  double degree = math::D2R;
  double radian_deg = math::R2D;
  unsigned int flags = CUtility::flags();
  int regression = md_regression();
  double wrapped = k5ax_normalise_angle(-1.0, 1);
  int heard = 0;

  SeenBeforeMain() {
    CUtility::feedback("nobody listens yet");
    CUtility::error("nobody listens yet", 1);
    CUtility::assertion_failed("nobody", "listens", "yet", 1);

    CUtility::set_feedback_cbk([this](const char*) { ++heard; });
    CUtility::feedback("one");
    CUtility::set_feedback_cbk(boost::function<void(const char*)>());
  }
};

const SeenBeforeMain seen;

TEST(BeforeMain, ConstantPointsHoldTheirValues) {
  EXPECT_TRUE(seen.pt_o == TPoint<double>(0, 0, 0));
  EXPECT_TRUE(seen.pt_x == TPoint<double>(1, 0, 0));
  EXPECT_TRUE(seen.pt_y == TPoint<double>(0, 1, 0));
  EXPECT_TRUE(seen.pt_z == TPoint<double>(0, 0, 1));
}

TEST(BeforeMain, AngleConstantsHoldTheirValues) {
  EXPECT_EQ(seen.pi, 3.141592653589793);
  EXPECT_EQ(seen.half_pi, 1.5707963267948966);
  EXPECT_EQ(seen.two_pi, 6.283185307179586);
  EXPECT_EQ(seen.degree, 0.017453292519943295);
  EXPECT_EQ(seen.radian_deg, 57.29577951308232);
}

TEST(BeforeMain, FlagsWordStartsAtZero) {
  EXPECT_EQ(seen.flags, 0u);
  EXPECT_EQ(seen.regression, 0);
}

TEST(BeforeMain, AnglesAreNormalised) {
  EXPECT_EQ(seen.wrapped, 6.283185307179586 - 1.0);  // the one addition that the rule makes
}

TEST(BeforeMain, CallbacksStartEmptyAndCanBeInstalled) { EXPECT_EQ(seen.heard, 1); }

}  // namespace
