// k5ax convert, as a process.
#include <filesystem>
#include <string>
#include <system_error>

#include <gtest/gtest.h>

#include "tool/process.h"
#include "tool/shipped.h"

namespace {

using tool_test::Ended;
using tool_test::in_tree;
using tool_test::kShipped;
using tool_test::make_folder;
using tool_test::read_file;
using tool_test::run_tool;
using tool_test::write_file;

std::string shipped(const std::string& name) { return in_tree("examples/machines/" + name); }

TEST(Convert, GoesFromBinaryToTextAndBack) {
  const std::string folder = make_folder("there_and_back");
  for (const std::string name : kShipped) {
    const std::string text = folder + "/" + name + ".json";
    const std::string back = folder + "/" + name + ".k5m";
    const Ended there = run_tool({"convert", shipped(name + ".k5m"), text});
    EXPECT_EQ(there.exit_code, 0) << there;
    EXPECT_EQ(there.out + there.err, "");
    EXPECT_EQ(run_tool({"convert", text, back}).exit_code, 0);
    EXPECT_TRUE(read_file(back) == read_file(shipped(name + ".k5m"))) << name;
  }
}

TEST(Convert, WritesTextThatAPersonCanRead) {
  const Ended ended = run_tool({"convert", shipped("table_table_trunnion.k5m"), "-"});
  EXPECT_EQ(ended.exit_code, 0) << ended;
  tool_test::expect_golden("convert_trunnion.json", ended.out);
}

TEST(Convert, TakesAnEndingInCapitals) {
  const std::string folder = make_folder("capitals");
  EXPECT_EQ(run_tool({"convert", shipped("head_head_fork.k5m"), folder + "/FORK.JSON"}).exit_code, 0);
  EXPECT_EQ(read_file(folder + "/FORK.JSON").substr(0, 1), "{");
}

TEST(Convert, RefusesAnEndingThatDoesNotSayWhatToWrite) {
  const std::string folder = make_folder("endings");
  for (const std::string name : {"m.txt", "m", "json", "m.json.bak", "m.k5", "m.k5m~"}) {
    const Ended ended = run_tool({"convert", shipped("head_head_fork.json"), name}, {"", folder});
    EXPECT_EQ(ended.exit_code, 2) << ended;
    EXPECT_EQ(ended.err,
              "k5ax: OUT: " + name +
                  " ends neither in .json nor in .k5m; name it .json for text or .k5m for binary\n");
    EXPECT_FALSE(std::filesystem::exists(folder + "/" + name)) << name;
  }
  EXPECT_EQ(run_tool({"convert", shipped("head_head_fork.json"), folder + "/FORK.K5M"}).exit_code, 0);
  EXPECT_TRUE(read_file(folder + "/FORK.K5M") == read_file(shipped("head_head_fork.k5m")));
}

TEST(Convert, SaysWhatItConvertedToInches) {
  const std::string folder = make_folder("inches");
  const Ended ended =
      run_tool({"convert", shipped("head_head_fork.json"), "inch.json", "--units", "inch"}, {"", folder});
  EXPECT_EQ(ended.exit_code, 0) << ended;
  EXPECT_EQ(ended.out, "");
  // Five axes; nine nodes lead to the tool, two to the part.
  EXPECT_EQ(ended.err, shipped("head_head_fork.json") +
                           ": converted from millimetres to inches: 5 axes, the head, work zero, loading "
                           "vector, 11 nodes; angles and directions stay\n");
  // 25.4 and 254 millimetres are 1 and 10 inches; the fork's work zero is (240, -180, -950).
  EXPECT_NE(read_file(folder + "/inch.json").find("\"units\": \"inch\""), std::string::npos);
  EXPECT_NE(read_file(folder + "/inch.json").find("\"work_zero\": [9.448818897637796, "), std::string::npos);
}

TEST(Convert, SaysThatNothingChangedInTheSameUnit) {
  const std::string folder = make_folder("same_unit");
  const Ended ended =
      run_tool({"convert", shipped("head_table_inch.k5m"), "same.k5m", "--units", "inch"}, {"", folder});
  EXPECT_EQ(ended.exit_code, 0) << ended;
  EXPECT_EQ(ended.err, shipped("head_table_inch.k5m") + ": in inches already; no length was converted\n");
  EXPECT_TRUE(read_file(folder + "/same.k5m") == read_file(shipped("head_table_inch.k5m")));
}

TEST(Convert, RefusesAnotherUnit) {
  const Ended ended = run_tool({"convert", shipped("head_table_inch.k5m"), "-", "--units", "cm"});
  EXPECT_EQ(ended.exit_code, 2) << ended;
}

TEST(Convert, NamesAMissingFile) {
  const Ended text = run_tool({"convert", "no_such.json", "-"});
  EXPECT_EQ(text.exit_code, 3);
  EXPECT_EQ(
      text.err,
      "k5ax: no_such.json: cannot open: No such file or directory; give a machine definition that is there "
      "and may be read\n");
  const Ended binary = run_tool({"convert", "no_such.k5m", "-"});
  EXPECT_EQ(binary.exit_code, 3);
  const std::string reason = std::error_code(2, std::system_category()).message();  // 2 on every system
  EXPECT_EQ(binary.err.rfind("k5ax: no_such.k5m: cannot open for reading: " + reason + "; ", 0), 0U)
      << binary;
}

TEST(Convert, NamesADamagedFile) {
  const std::string folder = make_folder("damaged");
  write_file(folder + "/cut.k5m", read_file(shipped("head_head_fork.k5m")).substr(0, 1000));
  const Ended ended = run_tool({"convert", "cut.k5m", "-"}, {"", folder});
  EXPECT_EQ(ended.exit_code, 3);
  EXPECT_EQ(ended.err,
            "k5ax: cut.k5m: cannot read: unexpected end of file; give a machine definition that is there and "
            "whole, .k5m or .json\n");
}

TEST(Convert, LeavesTheOldFileWhenTheInputIsBad) {
  const std::string folder = make_folder("old_file");
  write_file(folder + "/bad.json", "{");
  write_file(folder + "/out.k5m", "precious");
  EXPECT_EQ(run_tool({"convert", "bad.json", "out.k5m"}, {"", folder}).exit_code, 3);
  EXPECT_EQ(read_file(folder + "/out.k5m"), "precious");
}

TEST(Convert, NamesAFolderThatIsNotThere) {
  const Ended ended = run_tool({"convert", shipped("head_head_fork.k5m"), "/no/such/folder/out.json"});
  EXPECT_EQ(ended.exit_code, 3);
  EXPECT_EQ(ended.err.rfind("k5ax: /no/such/folder/out.json: ", 0), 0U) << ended;
}

TEST(Convert, NamesTheLineOfASyntaxError) {
  const std::string folder = make_folder("syntax");
  write_file(folder + "/m.json", "{\n  \"units\": \"mm\",\n  \"type\": \"head-head\",,\n}\n");
  const Ended ended = run_tool({"convert", "m.json", "-"}, {"", folder});
  EXPECT_EQ(ended.exit_code, 3);
  // Two spaces, seven characters of the key, a space, eleven of the value, and the comma that is right.
  EXPECT_EQ(ended.err.rfind("k5ax: m.json:3:23: ", 0), 0U) << ended;
}

}  // namespace
