// What the docs show of the tool is what it prints.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tool/process.h"

namespace {

using tool_test::Ended;
using tool_test::How;
using tool_test::in_tree;
using tool_test::lines_of;
using tool_test::make_folder;
using tool_test::read_file;
using tool_test::run_shell;

struct Sample {
  int line;
  std::string command;
  std::string output;
};

// In blocks marked ```console: "$ k5ax ..." and below it what that prints, up to the next command.
std::vector<Sample> samples_of(const std::string& page) {
  std::vector<Sample> samples;
  bool inside = false;
  int number = 0;
  for (const std::string& line : lines_of(read_file(in_tree(page)))) {
    ++number;
    if (line == "```console") {
      inside = true;
    } else if (line == "```") {
      inside = false;
    } else if (inside && line.rfind("$ ", 0) == 0) {
      samples.push_back({number, line.substr(2), ""});
    } else if (inside) {
      samples.back().output += line + "\n";
    }
  }
  return samples;
}

// The samples of a page one after the other, in a folder with the example machines and their tool paths.
int check_page(const std::string& page) {
  How how;
  how.folder = make_folder("samples");
  for (const char* folder : {"examples/machines", "examples/toolpaths"}) {
    std::filesystem::copy(in_tree(folder), how.folder);
  }
  const std::vector<Sample> samples = samples_of(page);
  for (const Sample& sample : samples) {
    const Ended ended = run_shell(sample.command + " 2>&1", how);
    EXPECT_EQ(ended.out, sample.output) << page << ":" << sample.line << ": " << sample.command;
  }
  return static_cast<int>(samples.size());
}

TEST(Samples, OfTheToolsPageAreWhatItPrints) { EXPECT_GE(check_page("docs/tool.md"), 3); }

TEST(Samples, OfTheFirstPageAreWhatItPrints) { EXPECT_GE(check_page("README.md"), 1); }

}  // namespace
