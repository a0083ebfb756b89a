// k5ax pose, as a process.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <cmath>
#include <string>
#include <vector>

#include <k5ax/kinematics.h>

#include "tool/process.h"
#include "tool/shipped.h"

namespace {

using nlohmann::json;
using tool_test::Ended;
using tool_test::expect_golden;
using tool_test::kFork;
using tool_test::kInch;
using tool_test::kShipped;
using tool_test::kSwivel;
using tool_test::kTrunnion;
using tool_test::make_folder;
using tool_test::node_of;
using tool_test::run_tool;
using tool_test::shipped;
using tool_test::shipped_path;

Ended pose(const std::string& machine, std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), {"pose", machine + ".k5m"});
  tool_test::How how;
  how.folder = tool_test::in_tree("examples/machines");
  return run_tool(arguments, how);
}

const json& node_with(const json& document, int id) {
  for (const json& node : document["nodes"]) {
    if (node["id"] == id) return node;
  }
  throw std::runtime_error("no node " + std::to_string(id));
}

void expect_numbers(const json& given, const std::vector<double>& wanted, double tolerance) {
  ASSERT_EQ(given.size(), wanted.size()) << given;
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    EXPECT_NEAR(given[i].get<double>(), wanted[i], tolerance) << "at " << i << " of " << given;
  }
}

// Worked by hand. The table at 0: the tool point is X, Y, Z. The part then turns about A's line, through
// y = 0.024 and z = 62.481, by -40, and about C by 90. Of (10, 20, 30) that line is at y' = 19.976 and
// z' = -32.481; with cos = 0.76604444 and sin = -0.64278761
//   y = 0.024 + 19.976 cos - (-32.481) sin = 0.024 + 15.30250 - 20.87838 = -5.55188
//   z = 62.481 + 19.976 sin + (-32.481) cos = 62.481 - 12.84033 - 24.88189 = 24.75879
// and C takes (10, y) to (-y, 10) = (5.55188, 10). The tool (0, 0, 1) goes to (0, -sin, cos) by A, and by C
// to (sin, 0, cos). Z's slide has to come from 520 - 160 to 30: -330.
TEST(Pose, ShowsWhereEveryNodeOfATrunnionGoes) {
  const Ended ended = pose(kTrunnion, {"10", "20", "30", "-40", "0", "90"});
  EXPECT_EQ(ended.exit_code, 0) << ended;
  EXPECT_EQ(ended.err, "");
  expect_golden("pose_trunnion.txt", ended.out);
}

TEST(Pose, SaysTheSameAsJson) {
  const Ended ended = pose(kTrunnion, {"10", "20", "30", "-40", "0", "90", "--json"});
  EXPECT_EQ(ended.exit_code, 0) << ended;
  const json document = json::parse(ended.out);
  EXPECT_EQ(document["reached"], true);
  EXPECT_EQ(document["unit"], "mm");
  // The figures above, to as many places.
  expect_numbers(document["tool_on_part"]["point"], {5.55188, 10, 24.75879}, 1e-5);
  expect_numbers(document["tool_on_part"]["direction"], {-0.64279, 0, 0.76604}, 1e-5);
  expect_numbers(document["machine_coordinates"], {10, 20, 30}, 0);
  expect_numbers(document["angles_deg"], {-40, 0, 90}, 1e-13);
  EXPECT_NEAR(node_with(document, 3)["value"].get<double>(), -330, 1e-12);
  EXPECT_NEAR(node_with(document, 4)["value_deg"].get<double>(), -40, 1e-13);
  EXPECT_EQ(node_with(document, 3)["within_travel"], true);
  expect_numbers(node_with(document, 6)["to_root"], {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 20, 30}, 1e-12);
}

// Whatever the machine: told a point on the part, the tool comes to that point of it. Each function by itself
// knows nothing of the other. The bound is rounding: a dozen products of lengths below 2000.
TEST(Pose, OfAPointOnThePartBringsTheToolThere) {
  for (const char* machine : kShipped) {
    const Ended ended = pose(machine, {"1.5", "-2.25", "3", "-12.5", "21", "77", "--part", "--json"});
    EXPECT_EQ(ended.exit_code, 0) << ended;
    expect_numbers(json::parse(ended.out)["tool_on_part"]["point"], {1.5, -2.25, 3}, 1e-11);
  }
}

TEST(Pose, TakesNegativeNumbersForValues) {
  const Ended ended = pose(kTrunnion, {"-1", "-.5", "-1e1", "-0", "+0", "-2.5e-1", "--json"});
  EXPECT_EQ(ended.exit_code, 0) << ended;
  const json document = json::parse(ended.out);
  expect_numbers(document["machine_coordinates"], {-1, -0.5, -10}, 0);
  expect_numbers(document["angles_deg"], {0, 0, -0.25}, 1e-15);
}

// The head's A is the machine's, and C; B is nobody's.
TEST(Pose, SaysThatAnAngleTurnsNothing) {
  const Ended with = pose(kFork, {"0", "0", "0", "10", "15", "20"});
  const Ended without = pose(kFork, {"0", "0", "0", "10", "0", "20"});
  EXPECT_EQ(with.exit_code, 0) << with;
  EXPECT_EQ(with.err, "k5ax: note: the machine has no rotary axis B, so 15 deg of it turn nothing\n");
  EXPECT_EQ(with.out, without.out);
  EXPECT_EQ(without.err, "");
}

// B's letter is that of the swivel, and A's is nobody's.
TEST(Pose, TakesTheAnglesByTheMachinesLetters) {
  const Ended ended = pose(kSwivel, {"0", "0", "0", "0", "30", "0", "--json"});
  // The tool (0, 0, 1) turned by 30 degrees about Y.
  expect_numbers(json::parse(ended.out)["tool_on_part"]["direction"], {0.5, 0, std::sqrt(0.75)}, 1e-12);
}

// The spindle of the trunnion has its nose 520 over the table with Z at 0, and 160 of tool: Z 360 is its
// highest place. 500 is 140 more.
TEST(Pose, SaysHowFarASlideIsOutOfItsTravel) {
  const Ended ended = pose(kTrunnion, {"0", "0", "500", "0", "0", "0"});
  EXPECT_EQ(ended.exit_code, 0) << ended;
  EXPECT_NE(ended.out.find("\nout of travel: Z axis (id 3) stands 140 mm above 0 mm\n"), std::string::npos)
      << ended;
}

TEST(Pose, EndsWithOneWhenThePointIsNotReached) {
  const auto machine = shipped(kTrunnion);
  node_of(*machine, 3)->flags(0);  // Z stays where it is
  tool_test::How how;
  how.folder = make_folder("pose");
  ASSERT_EQ(MachdefSave(machine.get(), (how.folder + "/m.k5m").c_str()), 1);
  const Ended ended = run_tool({"pose", "m.k5m", "0", "0", "10", "0", "0", "0"}, how);
  EXPECT_EQ(ended.exit_code, 1) << ended;
  EXPECT_NE(ended.out.find("\nreached: no; the slides stand at 0\n"), std::string::npos) << ended;
  const Ended as_json = run_tool({"pose", "m.k5m", "0", "0", "10", "0", "0", "0", "--json"}, how);
  EXPECT_EQ(as_json.exit_code, 1);
  EXPECT_EQ(json::parse(as_json.out)["reached"], false);
}

// As a file may have the table standing anywhere, and the update measures before it turns.
TEST(Pose, DoesNotDependOnThePoseThatTheFileHas) {
  const auto machine = shipped(kTrunnion);
  UpdateNodeAxes_2(machine.get(), 1, 2, 3, -1, 0, 2);
  tool_test::How how;
  how.folder = make_folder("pose");
  ASSERT_EQ(MachdefSave(machine.get(), (how.folder + "/table_table_trunnion.k5m").c_str()), 1);
  const Ended ended = run_tool({"pose", "table_table_trunnion.k5m", "10", "20", "30", "-40", "0", "90"}, how);
  EXPECT_EQ(ended.out, pose(kTrunnion, {"10", "20", "30", "-40", "0", "90"}).out);
}

TEST(Pose, SaysThatThereIsNothingToPose) {
  const auto machine = shipped(kTrunnion);
  md::CMachDef without;
  without.clone(*machine, 1);
  tool_test::How how;
  how.folder = make_folder("pose");
  ASSERT_EQ(MachdefSave(&without, (how.folder + "/m.k5m").c_str()), 1);
  const Ended ended = run_tool({"pose", "m.k5m", "0", "0", "0", "0", "0", "0"}, how);
  EXPECT_EQ(ended.exit_code, 3) << ended;
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(
      ended.err,
      "k5ax: m.k5m: has no trees, so there is nothing to pose; add them; a .json definition without trees "
      "gets both from its axes\n");
}

TEST(Pose, SaysWhichCoordinateIsNoNumber) {
  for (const char* text : {"abc", "1,5", "1.5mm", "", "nan", "inf", "1e999", "0x10", "+-1"}) {
    const Ended ended = pose(kTrunnion, {"0", text, "0", "0", "0", "0"});
    EXPECT_EQ(ended.exit_code, 2) << ended;
    EXPECT_EQ(ended.out, "");
    EXPECT_EQ(ended.err,
              std::string("k5ax: pose: Y: \"") + text +
                  "\" is not a number; give six numbers, X Y Z A B C, the last three in degrees\n");
  }
}

TEST(Pose, SaysThatACoordinateIsMissing) {
  const Ended ended = pose(kTrunnion, {"0", "1", "2"});
  EXPECT_EQ(ended.exit_code, 2) << ended;
  EXPECT_EQ(ended.err, "k5ax: pose: A is required; see k5ax pose --help\n");
}

TEST(Pose, KeepsToEightyColumns) {
  int lines = 0;
  for (const char* machine : kShipped) {
    const Ended ended = pose(machine, {"123.456", "-78.9", "-45.678", "-12.345", "33.3", "123.456"});
    std::istringstream text(ended.out);
    for (std::string line; std::getline(text, line); ++lines) EXPECT_LE(line.size(), 80U) << line;
  }
  EXPECT_GT(lines, 60);
}

}  // namespace
