// k5ax path, as a process: what it refuses, and how it ends.
#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "tool/path/path_machines.h"
#include "tool/process.h"
#include "tool/shipped.h"

namespace {

using tool_test::Ended;
using tool_test::How;
using tool_test::in_tree;
using tool_test::kTrunnion;
using tool_test::make_folder;
using tool_test::read_file;
using tool_test::run_tool;
using tool_test::save_machine;
using tool_test::shipped_path;
using tool_test::write_file;

Ended convert(const std::string& text, const std::vector<std::string>& further = {}) {
  std::vector<std::string> arguments = {"path", shipped_path(kTrunnion), "-", "--to", "machine"};
  arguments.insert(arguments.end(), further.begin(), further.end());
  How how;
  how.input = text;
  return run_tool(arguments, how);
}

std::string many_rows(int rows) {
  std::string text = "x,y,z,a,c\n";
  for (int i = 0; i < rows; ++i) text += "1,2,3,-10,20\n";
  return text;
}

TEST(PathErrors, DirectionIsRequired) {
  const Ended ended = run_tool({"path", shipped_path(kTrunnion), "-"});
  EXPECT_EQ(ended.exit_code, 2);
  EXPECT_NE(ended.err.find("--to"), std::string::npos) << ended;
}

TEST(PathErrors, DirectionIsMachineOrPart) {
  const Ended ended = run_tool({"path", shipped_path(kTrunnion), "-", "--to", "tool"});
  EXPECT_EQ(ended.exit_code, 2);
  EXPECT_NE(ended.err.find("--to"), std::string::npos) << ended;
}

TEST(PathErrors, MachineIsMissing) {
  const Ended ended = run_tool({"path", "no_such.k5m", "-", "--to", "machine"});
  EXPECT_EQ(ended.exit_code, 3);
  EXPECT_EQ(ended.err.rfind("k5ax: no_such.k5m: ", 0), 0U) << ended;
}

TEST(PathErrors, MachineIsNotValid) {
  const std::string machine = make_folder("path") + "/bad.k5m";
  save_machine(machine, MC_UNDEFINED, nullptr, nullptr);
  const Ended ended = run_tool({"path", machine, "-", "--to", "machine"});
  EXPECT_EQ(ended.exit_code, 3);
  EXPECT_EQ(ended.err, "k5ax: " + machine +
                           ": not a valid machine; see what is wrong with k5ax check, and put it right\n");
}

TEST(PathErrors, PathIsMissing) {
  const Ended ended = run_tool({"path", shipped_path(kTrunnion), "no_such.csv", "--to", "machine"});
  EXPECT_EQ(ended.exit_code, 3);
  EXPECT_EQ(ended.err,
            "k5ax: no_such.csv: cannot be read: No such file or directory; give a tool path that is there "
            "and may be "
            "read\n");
}

TEST(PathErrors, PathIsAFolder) {
  const Ended ended = run_tool({"path", shipped_path(kTrunnion), in_tree("examples"), "--to", "machine"});
  EXPECT_EQ(ended.exit_code, 3);
  EXPECT_NE(ended.err.find("Is a directory"), std::string::npos) << ended;
}

TEST(PathErrors, BadRowIsNamedAfterTheRowsBeforeIt) {
  const Ended ended = convert("x,y,z,a,c\n1,2,3,0,0\n1,2,abc,0,0\n1,2,3,0,0\n");
  EXPECT_EQ(ended.exit_code, 3);
  EXPECT_EQ(ended.err, "k5ax: -:3:5: column z: 'abc' is not a number; write one such as -12.5\n");
}

TEST(PathErrors, BadRowLeavesTheOldOutputFile) {
  const std::string folder = make_folder("path");
  write_file(folder + "/m.csv", "old");
  const Ended ended = convert(many_rows(50000) + "1,2,abc,0,0\n", {"-o", folder + "/m.csv"});
  EXPECT_EQ(ended.exit_code, 3) << ended.err;
  EXPECT_EQ(read_file(folder + "/m.csv"), "old");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
}

TEST(PathErrors, ControlCharactersDoNotReachTheTerminal) {
  const Ended ended = convert("x,y,z,a,c\n1,2,\x1b[31m,0,0\n");
  EXPECT_EQ(ended.err, "k5ax: -:2:5: column z: '\\x1b[31m' is not a number; write one such as -12.5\n");
}

TEST(PathErrors, OutputFolderIsMissing) {
  const Ended ended = convert("x,y,z,a,c\n", {"-o", "no_such_folder/m.csv"});
  EXPECT_EQ(ended.exit_code, 3);
  EXPECT_EQ(ended.err.rfind("k5ax: no_such_folder/m.csv: ", 0), 0U) << ended;
}

TEST(PathErrors, FullDiskEndsTheRun) {
  How how;
  how.input = many_rows(50000);
  how.output_to = "/dev/full";
  const Ended ended = run_tool({"path", shipped_path(kTrunnion), "-", "--to", "machine"}, how);
  EXPECT_EQ(ended.exit_code, 3);
  EXPECT_EQ(ended.err, "k5ax: standard output: No space left on device; make room or write elsewhere\n");
}

TEST(PathErrors, FullDiskIsNoticedForTheOutputFileToo) {
  const Ended ended = convert(many_rows(50000), {"-o", "/dev/full"});
  EXPECT_EQ(ended.exit_code, 3);
  EXPECT_EQ(ended.err.rfind("k5ax: /dev/full: ", 0), 0U) << ended;
  EXPECT_NE(ended.err.find("No space left on device"), std::string::npos) << ended;
}

TEST(PathErrors, ReaderThatLeavesEndsTheRunWithoutAWord) {
  How how;
  how.input = many_rows(50000);
  how.reader_gone = true;
  const Ended ended = run_tool({"path", shipped_path(kTrunnion), "-", "--to", "machine"}, how);
  EXPECT_EQ(ended.exit_code, 128 + 13) << ended;  // SIGPIPE, as every filter ends
  EXPECT_EQ(ended.err, "");
}

}  // namespace
