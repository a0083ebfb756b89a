// k5ax path, as a process, on a long path: memory, progress, order.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "tool/process.h"
#include "tool/shipped.h"

namespace {

using tool_test::Ended;
using tool_test::How;
using tool_test::kTrunnion;
using tool_test::make_folder;
using tool_test::run_shell;
using tool_test::run_tool;
using tool_test::shipped_path;
using tool_test::write_file;

// Sanitizers take ten times the time, and memory of their own.
#ifdef __SANITIZE_ADDRESS__
constexpr int kRows = 50000;
constexpr bool kCountsMemory = false;
#else
constexpr int kRows = 1000000;
constexpr bool kCountsMemory = true;
#endif

// The rows would be 40 MB and more. What the program holds without any row is some 5 MB, half of it shared
// libraries; under Wine the whole is 39 MB with few rows as with many.
#ifdef _WIN32
constexpr long kMostKib = 60 * 1024;
#else
constexpr long kMostKib = 16 * 1024;
#endif

// Neither this nor the count below holds the rows: a process counts what its parent held when it was forked.
void write_long_path(const std::string& path) {
  std::ofstream file(path, std::ios::binary);
  file << "x,y,z,a,c,n\n";
  for (int i = 0; i < kRows; ++i) file << "12.345678,-23.456789,34.567891,0,180," << i << '\n';
  file.close();
  ASSERT_TRUE(file);
}

// A folder that goes with the test: the rows are some hundred megabytes.
struct Folder {
  Folder() : path(make_folder("long")) {}
  ~Folder() { std::filesystem::remove_all(path); }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  const std::string path;
};

// How many lines, and the last one.
struct Lines {
  int count = 0;
  std::string last;
};

Lines lines_of(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  Lines lines;
  for (std::string line; std::getline(file, line); ++lines.count) lines.last = line;
  return lines;
}

// Half a turn of the table: -12.3..., 23.4..., and the last row is the last one that went in.
void expect_all_rows(const std::string& path) {
  const Lines lines = lines_of(path);
  EXPECT_EQ(lines.count, kRows + 1);
  EXPECT_EQ(lines.last.rfind("-12.34567", 0), 0U) << lines.last;
  EXPECT_EQ(lines.last.substr(lines.last.rfind(',') + 1), std::to_string(kRows - 1));
}

TEST(LongPath, OfAMillionRowsTakesNoMemory) {
  const Folder long_folder;
  const std::string& folder = long_folder.path;
  write_long_path(folder + "/p.csv");
  const Ended ended = run_tool(
      {"path", shipped_path(kTrunnion), folder + "/p.csv", "--to", "machine", "-o", folder + "/m.csv"});
  ASSERT_EQ(ended.exit_code, 0) << ended.err;
  EXPECT_NE(ended.err.find(": " + std::to_string(kRows) + " rows, 0 out of travel"), std::string::npos)
      << ended.err;
  EXPECT_GT(ended.peak_kib, 0);
  if (kCountsMemory) {
    EXPECT_LT(ended.peak_kib, kMostKib);
  }

  expect_all_rows(folder + "/m.csv");
}

TEST(LongPath, OfAMillionRowsByStandardInputTakesNoMemoryEither) {
  How how;
  const Folder long_folder;
  how.folder = long_folder.path;
  write_long_path(how.folder + "/p.csv");
  const Ended ended =
      run_shell("k5ax path " + shipped_path(kTrunnion) + " - --to machine < p.csv > m.csv", how);
  ASSERT_EQ(ended.exit_code, 0) << ended.err;
  expect_all_rows(how.folder + "/m.csv");
  if (kCountsMemory) {
    EXPECT_LT(ended.peak_kib, kMostKib);
  }
}

TEST(LongPath, ShowsItsProgressOnATerminal) {
  const Folder long_folder;
  const std::string& folder = long_folder.path;
  write_long_path(folder + "/p.csv");
  How how;
  how.terminal = true;
  const Ended ended = run_tool(
      {"path", shipped_path(kTrunnion), folder + "/p.csv", "--to", "machine", "-o", folder + "/m.csv"}, how);
  ASSERT_EQ(ended.exit_code, 0) << ended;
  EXPECT_EQ(ended.out.rfind("\r[", 0), 0U) << ended;
  EXPECT_NE(ended.out.find("%  "), std::string::npos) << ended;
  // Gone before the summary.
  EXPECT_NE(ended.out.find("\r\x1b[K" + folder), std::string::npos) << ended;
}

TEST(LongPath, DrawsNothingAmongRowsOnATerminal) {
  const Folder long_folder;
  const std::string& folder = long_folder.path;
  write_file(folder + "/p.csv", "x,y,z,a,c\n0,0,100,0,0\n");
  How how;
  how.terminal = true;
  const Ended ended = run_tool({"path", shipped_path(kTrunnion), folder + "/p.csv", "--to", "machine"}, how);
  ASSERT_EQ(ended.exit_code, 0) << ended;
  EXPECT_EQ(ended.out.find('\x1b'), std::string::npos) << ended;
}

TEST(LongPath, DrawsNothingIntoAFile) {
  const Folder long_folder;
  const std::string& folder = long_folder.path;
  write_long_path(folder + "/p.csv");
  const Ended ended = run_tool(
      {"path", shipped_path(kTrunnion), folder + "/p.csv", "--to", "machine", "-o", folder + "/m.csv"});
  EXPECT_EQ(ended.err.find('\r'), std::string::npos) << ended;
}

}  // namespace
