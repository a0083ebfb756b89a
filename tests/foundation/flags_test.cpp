// The process-wide flags word: two named bits, and the rest kept for the host.
#include <gtest/gtest.h>

#include <k5ax/foundation.h>

#include "foundation/utility_guard.h"

namespace {

class FlagsWord : public testing::Test {
  k5ax_test::UtilityGuard m_guard;
};

TEST_F(FlagsWord, DeveloperAndRegressionAreTwoAndFour) {
  CUtility::developer(true);
  CUtility::regression(true);
  EXPECT_EQ(CUtility::flags(), 6u);

  CUtility::developer(false);
  EXPECT_EQ(CUtility::flags(), 4u);
  EXPECT_EQ(md_regression(), 1);
}

TEST_F(FlagsWord, DeveloperAloneIsTwo) {
  CUtility::developer(true);
  EXPECT_EQ(CUtility::flags(), 2u);
  EXPECT_TRUE(CUtility::developer());
  EXPECT_FALSE(CUtility::regression());
}

TEST_F(FlagsWord, RegressionAloneIsFour) {
  CUtility::regression(true);
  EXPECT_EQ(CUtility::flags(), 4u);
  EXPECT_TRUE(CUtility::regression());
  EXPECT_FALSE(CUtility::developer());
}

TEST_F(FlagsWord, OfOneIsNeitherDeveloperNorRegression) {
  CUtility::flags(1);
  EXPECT_FALSE(CUtility::developer());
  EXPECT_FALSE(CUtility::regression());
}

TEST_F(FlagsWord, KeepsBitsThatTheLibraryDoesNotKnow) {
  CUtility::flags(0x80000001u);
  EXPECT_EQ(CUtility::flags(), 0x80000001u);
}

TEST_F(FlagsWord, IsReplacedAsAWhole) {
  CUtility::flags(0xF0u);
  CUtility::flags(2u);
  EXPECT_EQ(CUtility::flags(), 2u);
}

TEST_F(FlagsWord, KeepsItsOtherBitsWhenDeveloperIsSet) {
  CUtility::flags(0x80000005u);
  CUtility::developer(true);
  EXPECT_EQ(CUtility::flags(), 0x80000007u);
}

TEST_F(FlagsWord, KeepsItsOtherBitsWhenDeveloperIsCleared) {
  CUtility::flags(0xFFFFFFFFu);
  CUtility::developer(false);
  EXPECT_EQ(CUtility::flags(), 0xFFFFFFFDu);
}

TEST_F(FlagsWord, KeepsItsOtherBitsWhenRegressionIsSet) {
  CUtility::flags(0x80000003u);
  CUtility::regression(true);
  EXPECT_EQ(CUtility::flags(), 0x80000007u);
}

TEST_F(FlagsWord, KeepsItsOtherBitsWhenRegressionIsCleared) {
  CUtility::flags(0xFFFFFFFFu);
  CUtility::regression(false);
  EXPECT_EQ(CUtility::flags(), 0xFFFFFFFBu);
}

TEST_F(FlagsWord, StaysWhenAClearBitIsClearedAgain) {
  CUtility::flags(8u);
  CUtility::developer(false);
  CUtility::regression(false);
  EXPECT_EQ(CUtility::flags(), 8u);
}

TEST_F(FlagsWord, IsTheSameThroughTheFlatFunctions) {
  md_flags_set(0xABCD0123u);
  EXPECT_EQ(CUtility::flags(), 0xABCD0123u);

  CUtility::flags(0x76543210u);
  EXPECT_EQ(md_flags_get(), 0x76543210u);
}

TEST_F(FlagsWord, WithoutTheRegressionBitAnswersFlatZero) {
  CUtility::flags(0xFFFFFFFBu);
  EXPECT_EQ(md_regression(), 0);
}

TEST_F(FlagsWord, WithTheRegressionBitAnswersFlatOneNotTheBit) {
  CUtility::flags(4u);
  EXPECT_EQ(md_regression(), 1);
}

}  // namespace
