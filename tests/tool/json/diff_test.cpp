// k5ax diff, as a process.
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tool/process.h"

namespace {

using tool_test::Ended;
using tool_test::in_tree;
using tool_test::make_folder;
using tool_test::read_file;
using tool_test::run_tool;
using tool_test::write_file;

// The fork's text, with one piece of it replaced.
std::string fork_with(const std::string& folder, const std::string& from, const std::string& to) {
  std::string text = read_file(in_tree("examples/machines/head_head_fork.json"));
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  text.replace(at, from.size(), to);
  write_file(folder + "/changed.json", text);
  return folder + "/changed.json";
}

std::string fork() { return in_tree("examples/machines/head_head_fork.k5m"); }

struct Change {
  const char* from;
  const char* to;
  const char* said;
};

TEST(Diff, EndsWithZeroWhereNothingDiffers) {
  const Ended ended = run_tool({"diff", fork(), in_tree("examples/machines/head_head_fork.json")});
  EXPECT_EQ(ended.exit_code, 0) << ended;
  EXPECT_EQ(ended.out, "no differences\n");
  EXPECT_EQ(ended.err, "");
}

TEST(Diff, SaysWhatDiffersWithValuesAndUnits) {
  const std::string folder = make_folder("changes");
  const Change changes[] = {
      {"[-1500, 1500]", "[-1500, 1200]", "x axis, upper limit: 1500 mm -> 1200 mm\n"},
      {"[-110, 110]", "[-95.5, 110]", "secondary axis, lower limit: -110 deg -> -95.5 deg\n"},
      {"[240, -180, -950]", "[240, -180, -900]", "work zero: (240, -180, -950) mm -> (240, -180, -900) mm\n"},
      {"\"units\": \"mm\",", "\"units\": \"mm\", \"mode\": 4,", "mode: -1 -> 4\n"},
      {"\"axes\"", "\"head\": {\"flags\": 1}, \"axes\"", "head, flags: 0 -> 1\n"},
      {"\"y\": {\"location\": \"head\", \"limits\": [-1000, 1000]},", "", "y axis: there -> missing\n"},
      {"\"tool_point\": [0, 0, 185]", "\"tool_point\": [0, 0, 180]",
       "tool tree, tool node 6, tool point: (0, 0, 185) mm -> (0, 0, 180) mm\n"},
      {"\"id\": 3, \"axis\": \"z\"", "\"id\": 3, \"axis\": \"z\", \"flags\": 3",
       "tool tree, axis node 3 (Z), flags: 1 -> 3\n"},
      {"{\"kind\": \"plain\", \"id\": 12}", "{\"kind\": \"plain\", \"id\": 12, \"value\": 2}",
       "part tree, plain node 12, value: 0 -> 2\n"},
      {"{\"kind\": \"plain\", \"id\": 12}", "{\"kind\": \"plain\", \"id\": 13}",
       "part tree, plain node 12: there -> missing\npart tree, plain node 13: missing -> there\n"},
      {"\"part\": {\"kind\"", "\"primary_node\": 7, \"part\": {\"kind\"",
       "node of the primary axis: axis node 4 (C) -> axis node 5 (A)\n"},
  };
  int checked = 0;
  for (const Change& change : changes) {
    // An axis that is gone cannot be referred to: the node gets one of its own.
    std::string path = fork_with(folder, change.from, change.to);
    if (std::string(change.to).empty()) {
      std::string text = read_file(path);
      text.replace(text.find("\"axis\": \"y\""), 11,
                   "\"axis\": {\"letter\": \"Y\", \"location\": \"head\", \"limits\": [-1000, 1000]}");
      write_file(path, text);
    }
    const Ended ended = run_tool({"diff", fork(), path});
    EXPECT_EQ(ended.exit_code, 1) << ended;
    EXPECT_EQ(ended.err, "");
    EXPECT_EQ(ended.out, change.said);
    ++checked;
  }
  EXPECT_EQ(checked, 11);
}

TEST(Diff, NamesATypeAndWhatIsNone) {
  const std::string folder = make_folder("types");
  const std::string rest = ", \"units\": \"mm\", \"axes\": {}, \"trees\": {}}";
  write_file(folder + "/a.json", "{\"type\": \"head-table\"" + rest);
  write_file(folder + "/b.json", "{\"type\": 7" + rest);
  EXPECT_EQ(run_tool({"diff", "a.json", "b.json"}, {"", folder}).out, "type: head-table -> number 7\n");
}

TEST(Diff, FollowsANodeThatHangsElsewhere) {
  const std::string folder = make_folder("moved");
  // The leaf of the part's tree gets a frame between itself and the root.
  const std::string path =
      fork_with(folder, "{\"kind\": \"plain\", \"id\": 12}",
                "{\"kind\": \"plain\", \"id\": 20, \"children\": [{\"kind\": \"plain\", \"id\": 12}]}");
  EXPECT_EQ(run_tool({"diff", fork(), path}).out,
            "part tree, plain node 20: missing -> there\n"
            "part tree, plain node 12, hangs below: plain node 11 -> plain node 20\n");
}

TEST(Diff, SeesTheOrderOfChildren) {
  const std::string folder = make_folder("order");
  const std::string leaf = "{\"kind\": \"plain\", \"id\": 12}";
  const std::string extra = "{\"kind\": \"plain\", \"id\": 13}";
  const std::string first = folder + "/first.json";
  write_file(first, read_file(fork_with(folder, leaf, leaf + ", " + extra)));
  const std::string second = fork_with(folder, leaf, extra + ", " + leaf);
  EXPECT_EQ(
      run_tool({"diff", first, second}).out,
      "part tree, plain node 11, order of its children: plain node 12, plain node 13 -> plain node 13, plain "
      "node 12\n");
}

TEST(Diff, ComparesLengthsOfAnotherUnitInTheFirst) {
  const std::string folder = make_folder("units");
  const std::string inch = folder + "/inch.json";
  ASSERT_EQ(run_tool({"convert", fork(), inch, "--units", "inch"}).exit_code, 0);
  const Ended ended = run_tool({"diff", fork(), inch});
  EXPECT_EQ(ended.exit_code, 1);
  EXPECT_EQ(ended.out, "units: mm -> inch\n");
}

TEST(Diff, PrintsJson) {
  const std::string folder = make_folder("as_json");
  const Ended ended =
      run_tool({"diff", fork(), fork_with(folder, "[-1500, 1500]", "[-1500, 1200]"), "--json"});
  EXPECT_EQ(ended.exit_code, 1);
  EXPECT_EQ(nlohmann::json::parse(ended.out), nlohmann::json::parse(R"({"same": false, "differences": [
      {"what": "x axis, upper limit", "first": "1500 mm", "second": "1200 mm"}]})"));
}

TEST(Diff, PrintsJsonWhereNothingDiffers) {
  const Ended ended = run_tool({"diff", fork(), fork(), "--json"});
  EXPECT_EQ(ended.exit_code, 0);
  EXPECT_EQ(nlohmann::json::parse(ended.out), nlohmann::json::parse(R"({"same": true, "differences": []})"));
}

TEST(Diff, EndsWithThreeWhereAFileCannotBeRead) {
  EXPECT_EQ(run_tool({"diff", fork(), "no_such.json"}).exit_code, 3);
  EXPECT_EQ(run_tool({"diff", "no_such.k5m", fork()}).exit_code, 3);
  EXPECT_EQ(run_tool({"diff", fork()}).exit_code, 2);
}

}  // namespace
