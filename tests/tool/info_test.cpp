// k5ax info, as a process.
#include "tool/process.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using tool_test::Ended;
using tool_test::in_tree;
using tool_test::run_tool;

TEST(Info, EndsWithThreeWhenTheFileIsMissing) {
  const Ended ended = run_tool({"info", "no_such.k5m"});
  EXPECT_EQ(ended.exit_code, 3) << ended;
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(ended.err.rfind("k5ax: no_such.k5m: ", 0), 0U) << ended;
}

TEST(Info, ShowsAShippedMachine) {
  const Ended ended = run_tool({"info", in_tree("examples/machines/head_head_fork.k5m")});
  EXPECT_EQ(ended.exit_code, 0) << ended;
  EXPECT_NE(ended.out, "");
  EXPECT_EQ(ended.err, "");
}

}  // namespace
