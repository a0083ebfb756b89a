// The one line in which the tool says what is wrong.
#include "tool/errors.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(InputError, SaysFilePlaceValueAndRemedyInThisOrder) {
  const tool::InputError error("m.json", "12:5", "\"abc\" is no number", "give a number");
  EXPECT_STREQ(error.what(), "m.json: 12:5: \"abc\" is no number; give a number");
}

TEST(InputError, LeavesOutWhatIsEmpty) {
  EXPECT_STREQ(tool::InputError("m.json", "", "no such file", "").what(), "m.json: no such file");
  EXPECT_STREQ(tool::InputError("", "", "", "give a file").what(), "give a file");
}

// A file name may hold anything but a slash and a null.
TEST(InputError, KeepsToOneLineWhateverTheFileIsCalled) {
  const tool::InputError error("a\nb\x1b[2J.json", "", "no such file", "");
  EXPECT_STREQ(error.what(), "a\\nb\\x1b[2J.json: no such file");
}

TEST(UsageError, SaysValueAndRemedy) {
  EXPECT_STREQ(tool::UsageError("--to: \"side\"", "give machine or part").what(),
               "--to: \"side\"; give machine or part");
}

TEST(Printable, LeavesOtherAlphabetsAlone) { EXPECT_EQ(tool::printable("Fräse µ"), "Fräse µ"); }

}  // namespace
