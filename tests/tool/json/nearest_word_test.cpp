// The word that somebody probably meant.
#include "tool/machine/nearest_word.h"

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace {

using tool::nearest_word;

const std::vector<std::string_view> kWords = {"letter", "location", "motion", "point", "direction", "limits"};

TEST(NearestWord, FindsALetterTooMany) { EXPECT_EQ(nearest_word("limitss", kWords), "limits"); }
TEST(NearestWord, FindsAMissingLetter) { EXPECT_EQ(nearest_word("limts", kWords), "limits"); }
TEST(NearestWord, FindsAWrongLetter) { EXPECT_EQ(nearest_word("lokation", kWords), "location"); }
// Two changes for an ordinary distance, and "point" has five letters, of which one may change.
TEST(NearestWord, CountsTwoSwappedLettersOnce) { EXPECT_EQ(nearest_word("piont", kWords), "point"); }
TEST(NearestWord, TakesCapitalsForSmallLetters) { EXPECT_EQ(nearest_word("LIMITS", kWords), "limits"); }
TEST(NearestWord, TakesTheNearerOfTwo) {
  // "locmotion" is two changes from "location" and three from "motion".
  EXPECT_EQ(nearest_word("locmotion", kWords), "location");
}
TEST(NearestWord, FindsNoneForAnotherWord) { EXPECT_EQ(nearest_word("colour", kWords), ""); }
TEST(NearestWord, FindsNoneForNothing) { EXPECT_EQ(nearest_word("", kWords), ""); }
TEST(NearestWord, IsQuickWithLongNonsense) {
  EXPECT_EQ(nearest_word(std::string(10000000, 'l'), kWords), "");
}

}  // namespace
