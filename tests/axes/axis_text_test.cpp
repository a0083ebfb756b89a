// The texts of the three axis enums.
#include <gtest/gtest.h>

#include <k5ax/axes.h>

namespace {

AXIS_TYPE type_of(int value) { return static_cast<AXIS_TYPE>(value); }
AXIS_MODE mode_of(int value) { return static_cast<AXIS_MODE>(value); }
AXIS_LOCATION location_of(int value) { return static_cast<AXIS_LOCATION>(value); }

TEST(AxisTypeText, OfALetterIsTheLetterAlone) {
  EXPECT_EQ(AXIS_TYPE2String(AXIS_A), "A");
  EXPECT_EQ(AXIS_TYPE2String(AXIS_B), "B");
  EXPECT_EQ(AXIS_TYPE2String(AXIS_C), "C");
  EXPECT_EQ(AXIS_TYPE2String(AXIS_X), "X");
  EXPECT_EQ(AXIS_TYPE2String(AXIS_Y), "Y");
  EXPECT_EQ(AXIS_TYPE2String(AXIS_Z), "Z");
}

TEST(AxisTypeText, OfTheOthersIsTheEnumeratorsName) {
  EXPECT_EQ(AXIS_TYPE2String(AXIS_TYPE_INVALID_LOWEST), "AXIS_TYPE_INVALID_LOWEST");
  EXPECT_EQ(AXIS_TYPE2String(AXIS_DUMMY), "AXIS_DUMMY");
  EXPECT_EQ(AXIS_TYPE2String(AXIS_TYPE_INVALID_HIGHEST), "AXIS_TYPE_INVALID_HIGHEST");
}

// The three fallback texts are spelled differently on purpose: two end in "UNKNOW", one in "UNKNOWN". Hosts
// have compared them letter by letter since they were first written.
TEST(AxisTypeText, OfAnyOtherValueIsUnknowWithoutItsN) {
  EXPECT_EQ(AXIS_TYPE2String(type_of(8)), "AXIS_TYPE_UNKNOW");
  EXPECT_EQ(AXIS_TYPE2String(type_of(-2)), "AXIS_TYPE_UNKNOW");
}

TEST(AxisModeText, IsTheEnumeratorsName) {
  EXPECT_EQ(AXIS_MODE2String(AXIS_MODE_INVALID_LOWEST), "AXIS_MODE_INVALID_LOWEST");
  EXPECT_EQ(AXIS_MODE2String(ROTARY), "ROTARY");
  EXPECT_EQ(AXIS_MODE2String(LINEAR), "LINEAR");
  EXPECT_EQ(AXIS_MODE2String(AXIS_MODE_INVALID_HIGHEST), "AXIS_MODE_INVALID_HIGHEST");
}

// Deliberate: see the fallback of the type's text.
TEST(AxisModeText, OfAnyOtherValueIsUnknownInFull) {
  EXPECT_EQ(AXIS_MODE2String(mode_of(3)), "AXIS_MODE_UNKNOWN");
  EXPECT_EQ(AXIS_MODE2String(mode_of(-2)), "AXIS_MODE_UNKNOWN");
}

TEST(AxisLocationText, IsTheEnumeratorsName) {
  EXPECT_EQ(AXIS_LOCATION2String(AXIS_LOCATION_INVALID_LOWEST), "AXIS_LOCATION_INVALID_LOWEST");
  EXPECT_EQ(AXIS_LOCATION2String(HEAD), "HEAD");
  EXPECT_EQ(AXIS_LOCATION2String(TABLE), "TABLE");
  EXPECT_EQ(AXIS_LOCATION2String(AXIS_LOCATION_INVALID_HIGHEST), "AXIS_LOCATION_INVALID_HIGHEST");
}

// Deliberate: see the fallback of the type's text.
TEST(AxisLocationText, OfAnyOtherValueIsUnknowWithoutItsN) {
  EXPECT_EQ(AXIS_LOCATION2String(location_of(3)), "AXIS_LOCATION_UNKNOW");
  EXPECT_EQ(AXIS_LOCATION2String(location_of(-2)), "AXIS_LOCATION_UNKNOW");
}

// Hosts store and exchange the numbers.
TEST(AxisEnums, HaveTheirNumbers) {
  EXPECT_EQ(static_cast<int>(AXIS_TYPE_INVALID_LOWEST), -1);
  EXPECT_EQ(static_cast<int>(AXIS_A), 0);
  EXPECT_EQ(static_cast<int>(AXIS_B), 1);
  EXPECT_EQ(static_cast<int>(AXIS_C), 2);
  EXPECT_EQ(static_cast<int>(AXIS_X), 3);
  EXPECT_EQ(static_cast<int>(AXIS_Y), 4);
  EXPECT_EQ(static_cast<int>(AXIS_Z), 5);
  EXPECT_EQ(static_cast<int>(AXIS_DUMMY), 6);
  EXPECT_EQ(static_cast<int>(AXIS_TYPE_INVALID_HIGHEST), 7);
  EXPECT_EQ(static_cast<int>(AXIS_MODE_INVALID_LOWEST), -1);
  EXPECT_EQ(static_cast<int>(ROTARY), 0);
  EXPECT_EQ(static_cast<int>(LINEAR), 1);
  EXPECT_EQ(static_cast<int>(AXIS_MODE_INVALID_HIGHEST), 2);
  EXPECT_EQ(static_cast<int>(AXIS_LOCATION_INVALID_LOWEST), -1);
  EXPECT_EQ(static_cast<int>(HEAD), 0);
  EXPECT_EQ(static_cast<int>(TABLE), 1);
  EXPECT_EQ(static_cast<int>(AXIS_LOCATION_INVALID_HIGHEST), 2);
}

}  // namespace
