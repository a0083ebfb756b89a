// k5ax new, as a process.
#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "tool/machine/machine_reader.h"
#include "tool/machine/machine_record.h"
#include "tool/process.h"

namespace {

using tool_test::Ended;
using tool_test::make_folder;
using tool_test::read_file;
using tool_test::run_tool;
using tool_test::write_file;

struct Start {
  const char* type;
  MACHINE_TYPE number;
};
const Start kStarts[] = {{"table-table", MC_TT}, {"head-table", MC_HT}, {"head-head", MC_HH}};

TEST(New, PrintsAMachineThatTheLibraryFindsValid) {
  for (const Start& start : kStarts) {
    const Ended ended = run_tool({"new", start.type});
    EXPECT_EQ(ended.exit_code, 0) << ended;
    const std::unique_ptr<md::CMachDef> machine =
        tool::machine_of(tool::read_machine_text(ended.out, start.type));
    EXPECT_EQ(machine->getMachType(), start.number);
    EXPECT_TRUE(machine->is_valid()) << start.type;
    EXPECT_TRUE(machine->mw_valid()) << start.type;
    EXPECT_TRUE(machine->tool_node() && machine->SG()[0] && machine->SG()[1]) << start.type;
  }
}

TEST(New, PrintsComments) {
  for (const Start& start : kStarts) {
    const std::string text = run_tool({"new", start.type}).out;
    EXPECT_EQ(text.rfind(std::string("// A ") + start.type + " machine: ", 0), 0U);
    EXPECT_NE(text.find("k5ax check FILE"), std::string::npos);
  }
}

TEST(New, IsShortEnoughToOverlook) {
  for (const Start& start : kStarts) {
    const std::string text = run_tool({"new", start.type}).out;
    EXPECT_LE(std::count(text.begin(), text.end(), '\n'), 40) << start.type;
  }
}

TEST(New, WritesToAFile) {
  const std::string folder = make_folder("new_file");
  const Ended ended = run_tool({"new", "head-head", "-o", "mine.json"}, {"", folder});
  EXPECT_EQ(ended.exit_code, 0) << ended;
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(ended.err, "wrote mine.json; put in your machine's figures, then: k5ax check mine.json\n");
  EXPECT_EQ(read_file(folder + "/mine.json"), run_tool({"new", "head-head"}).out);
}

TEST(New, WritesABinaryFileByItsEnding) {
  const std::string folder = make_folder("new_binary");
  EXPECT_EQ(run_tool({"new", "head-table", "-o", "mine.k5m"}, {"", folder}).exit_code, 0);
  md::CMachDef machine;
  EXPECT_EQ(MachdefLoad(&machine, (folder + "/mine.k5m").c_str()), 1);
  EXPECT_TRUE(machine.is_valid());
}

TEST(New, RefusesAnEndingThatDoesNotSayWhatToWrite) {
  const std::string folder = make_folder("new_ending");
  const Ended ended = run_tool({"new", "head-table", "-o", "mine.txt"}, {"", folder});
  EXPECT_EQ(ended.exit_code, 2);
  EXPECT_EQ(
      ended.err,
      "k5ax: -o: mine.txt ends neither in .json nor in .k5m; name it .json for text or .k5m for binary\n");
  EXPECT_FALSE(std::filesystem::exists(folder + "/mine.txt"));
}

TEST(New, TakesADashForStandardOutput) {
  EXPECT_EQ(run_tool({"new", "head-head", "-o", "-"}).out, run_tool({"new", "head-head"}).out);
}

TEST(New, DoesNotReplaceAFile) {
  const std::string folder = make_folder("new_again");
  write_file(folder + "/mine.json", "precious");
  const Ended ended = run_tool({"new", "head-head", "-o", "mine.json"}, {"", folder});
  EXPECT_EQ(ended.exit_code, 3);
  EXPECT_EQ(ended.err, "k5ax: mine.json: is there already; give another name, or --force to replace it\n");
  EXPECT_EQ(read_file(folder + "/mine.json"), "precious");
}

TEST(New, ReplacesAFileWhenForced) {
  const std::string folder = make_folder("new_forced");
  write_file(folder + "/mine.json", "worthless");
  EXPECT_EQ(run_tool({"new", "head-head", "-o", "mine.json", "--force"}, {"", folder}).exit_code, 0);
  EXPECT_EQ(read_file(folder + "/mine.json"), run_tool({"new", "head-head"}).out);
}

TEST(New, DoesNotWriteThroughALinkThatLeadsNowhere) {
  const std::string folder = make_folder("new_link");
  std::filesystem::create_symlink("elsewhere.json", folder + "/mine.json");
  EXPECT_EQ(run_tool({"new", "head-head", "-o", "mine.json"}, {"", folder}).exit_code, 3);
  EXPECT_FALSE(std::filesystem::exists(folder + "/elsewhere.json"));
}

TEST(New, KnowsTheThreeTypesOnly) {
  EXPECT_EQ(run_tool({"new", "table-head"}).exit_code, 2);
  EXPECT_EQ(run_tool({"new"}).exit_code, 2);
}

}  // namespace
