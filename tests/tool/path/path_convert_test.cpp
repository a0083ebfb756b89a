// k5ax path, as a process: what it makes of paths.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "support/near.h"
#include "tool/path/path_machines.h"
#include "tool/process.h"
#include "tool/shipped.h"

namespace {

using k5ax_test::deg;
using nlohmann::json;
using tool_test::Ended;
using tool_test::expect_golden;
using tool_test::How;
using tool_test::in_tree;
using tool_test::kFork;
using tool_test::kInch;
using tool_test::kShipped;
using tool_test::kSwivel;
using tool_test::kTrunnion;
using tool_test::make_folder;
using tool_test::numbers_of;
using tool_test::read_file;
using tool_test::run_tool;
using tool_test::save_machine;
using tool_test::shipped_path;
using tool_test::through_origin;
using tool_test::write_file;

std::string shipped_csv(const std::string& name) { return in_tree("examples/toolpaths/" + name + ".csv"); }

// Converts text that comes by standard input.
Ended convert(const std::string& machine, const std::string& to, const std::string& text,
              const std::vector<std::string>& further = {}) {
  std::vector<std::string> arguments = {"path", machine, "-", "--to", to};
  arguments.insert(arguments.end(), further.begin(), further.end());
  How how;
  how.input = text;
  return run_tool(arguments, how);
}

struct Xyz {
  double x, y, z;
};

// Worked out here, without the library: the part turns with the table, against the sense of the tool. C turns
// by -c about Z through the origin, A by -a about X through (y0, z0).
Xyz turned_by_c(const Xyz& p, double c) {
  return {p.x * std::cos(c) + p.y * std::sin(c), -p.x * std::sin(c) + p.y * std::cos(c), p.z};
}

Xyz turned_by_a(const Xyz& p, double a, double y0, double z0) {
  const double y = p.y - y0;
  const double z = p.z - z0;
  return {p.x, y0 + y * std::cos(a) + z * std::sin(a), z0 - y * std::sin(a) + z * std::cos(a)};
}

// Columns x, y, z, a, b, c.
Xyz machine_point(const std::string& name, const std::vector<double>& row) {
  const Xyz p = {row[0], row[1], row[2]};
  if (name == kFork) return p;  // nothing turns the part
  const Xyz on_table = turned_by_c(p, deg(row[5]));
  return name == kTrunnion ? turned_by_a(on_table, deg(row[3]), 0.024, 62.481) : on_table;
}

TEST(PathVerb, BringsShippedPathsWhereTheTableTurnsThem) {
  for (const std::string name : kShipped) {
    const Ended ended = run_tool({"path", shipped_path(name), shipped_csv(name), "--to", "machine"});
    ASSERT_EQ(ended.exit_code, 0) << ended.err;
    const std::vector<std::vector<double>> given = numbers_of(read_file(shipped_csv(name)));
    const std::vector<std::vector<double>> converted = numbers_of(ended.out);
    ASSERT_EQ(converted.size(), given.size()) << name;
    ASSERT_GT(given.size(), 2000U);
    for (std::size_t i = 0; i < given.size(); ++i) {
      const Xyz wanted = machine_point(name, given[i]);
      // Two rotations of coordinates below 1000, some eight roundings each: 16 * 1000 * 1.1e-16 = 2e-12.
      ASSERT_NEAR(converted[i][0], wanted.x, 4e-12) << name << " row " << i;
      ASSERT_NEAR(converted[i][1], wanted.y, 4e-12) << name << " row " << i;
      ASSERT_NEAR(converted[i][2], wanted.z, 4e-12) << name << " row " << i;
      for (std::size_t k = 3; k < 6; ++k) ASSERT_EQ(converted[i][k], given[i][k]) << name << " row " << i;
    }
  }
}

TEST(PathVerb, BringsShippedPathsThereAndBack) {
  for (const std::string name : kShipped) {
    const Ended there = run_tool({"path", shipped_path(name), shipped_csv(name), "--to", "machine"});
    const Ended back = convert(shipped_path(name), "part", there.out);
    ASSERT_EQ(back.exit_code, 0) << back.err;
    const std::vector<std::vector<double>> given = numbers_of(read_file(shipped_csv(name)));
    const std::vector<std::vector<double>> returned = numbers_of(back.out);
    ASSERT_EQ(returned.size(), given.size());
    for (std::size_t i = 0; i < given.size(); ++i)
      for (std::size_t k = 0; k < 6; ++k)  // twice the roundings of one way
        ASSERT_NEAR(returned[i][k], given[i][k], 8e-12) << name << " row " << i;
  }
}

TEST(PathVerb, LeavesAPathAsItIsWhereOnlyTheHeadTurns) {
  const Ended ended = run_tool({"path", shipped_path(kFork), shipped_csv(kFork), "--to", "machine"});
  EXPECT_EQ(ended.out, read_file(shipped_csv(kFork)));
}

// A quarter turn of C takes the table's (30, 20) to (20, -30), and of A, on its line at y = 0.024 and
// z = 62.481, nothing moves. 1e-13 is some roundings of numbers below 100.
TEST(PathVerb, TurnsThePartAgainstTheTool) {
  const Ended ended =
      convert(shipped_path(kTrunnion), "machine", "x,y,z,a,c\n30,20,50,0,90\n5,0.024,62.481,-40,0\n");
  const std::vector<std::vector<double>> rows = numbers_of(ended.out);
  ASSERT_EQ(rows.size(), 2U) << ended;
  const std::vector<std::vector<double>> wanted = {{20, -30, 50, 0, 90}, {5, 0.024, 62.481, -40, 0}};
  for (std::size_t i = 0; i < 2; ++i)
    for (std::size_t k = 0; k < 5; ++k) EXPECT_NEAR(rows[i][k], wanted[i][k], 1e-13) << i << " " << k;
}

// Golden, by hand: with the table at 0 machine and part coordinates are the same, and the points at A's angle
// lie on A's line. X and Y stand at the point's coordinates, Z at 360 less than its own.
constexpr char kOutOfTravel[] =
    "x,y,z,a,c\n0,0,100,0,-90\n251,0,100,0,0\n0,0.024,62.481,31,0\n0,300,0,0,0\n-300,0,-50,0,0\n";

TEST(PathVerb, SaysWhichRowsAreOutOfTravel) {
  How how;
  how.folder = make_folder("path");
  write_file(how.folder + "/p.csv", kOutOfTravel);
  const Ended ended =
      run_tool({"path", shipped_path(kTrunnion), "p.csv", "--to", "machine", "-o", "m.csv"}, how);
  EXPECT_EQ(ended.exit_code, 1) << ended;
  EXPECT_EQ(ended.out, "");
  expect_golden("path_out_of_travel.txt", ended.err);
  EXPECT_EQ(numbers_of(read_file(how.folder + "/m.csv")).size(), 5U);  // written all the same
}

TEST(PathVerb, LooksAtTravelsOnTheWayToThePartToo) {
  How how;
  how.folder = make_folder("path");
  // In machine coordinates; a turn of the table changes nothing of where the slides stand.
  write_file(how.folder + "/p.csv", kOutOfTravel);
  const Ended ended =
      run_tool({"path", shipped_path(kTrunnion), "p.csv", "--to", "part", "-o", "m.csv"}, how);
  EXPECT_EQ(ended.exit_code, 1) << ended;
  expect_golden("path_out_of_travel.txt", ended.err);
}

TEST(PathVerb, ListsTheFirstRowsOutOfTravelAndCountsTheOthers) {
  std::string text = "x,y,z,a,c\n";
  for (int i = 0; i < 500; ++i) text += "251,0,100,0,0\n";
  const Ended ended = convert(shipped_path(kTrunnion), "machine", text);
  EXPECT_EQ(ended.exit_code, 1);
  EXPECT_NE(ended.err.find("-:11: out of travel: X 251 mm"), std::string::npos) << ended.err;
  EXPECT_EQ(ended.err.find("-:12:"), std::string::npos) << ended.err;
  EXPECT_NE(ended.err.find("-: and 490 more rows out of travel\n"), std::string::npos) << ended.err;
  EXPECT_NE(ended.err.find("-: 500 rows, 500 out of travel\n"), std::string::npos) << ended.err;
}

TEST(PathVerb, LooksAtNoTravelWhenToldSo) {
  const Ended ended = convert(shipped_path(kTrunnion), "machine", kOutOfTravel, {"--no-travel"});
  EXPECT_EQ(ended.exit_code, 0) << ended;
  EXPECT_EQ(ended.err, "-: 5 rows\n");
}

TEST(PathVerb, PrintsTheSummaryAsJson) {
  How how;
  how.folder = make_folder("path");
  write_file(how.folder + "/p.csv", kOutOfTravel);
  const Ended ended =
      run_tool({"path", shipped_path(kTrunnion), "p.csv", "--to", "machine", "-o", "m.csv", "--json"}, how);
  EXPECT_EQ(ended.exit_code, 1);
  EXPECT_EQ(ended.err, "");
  const json summary = json::parse(ended.out);
  EXPECT_EQ(summary["path"], "p.csv");
  EXPECT_EQ(summary["rows"], 5);
  EXPECT_EQ(summary["unit"], "mm");
  EXPECT_EQ(summary["rows_out"], 4);
  EXPECT_EQ(summary["rows_not_reached"], 0);
  ASSERT_EQ(summary["axes"].size(), 5U);
  EXPECT_EQ(summary["axes"][0]["axis"], "X");
  EXPECT_EQ(summary["axes"][0]["from"], -300);
  EXPECT_EQ(summary["axes"][0]["to"], 251);
  EXPECT_EQ(summary["axes"][0]["travel"], json({-250, 250}));
  EXPECT_EQ(summary["axes"][0]["rows_out"], 2);
  EXPECT_EQ(summary["axes"][0]["first_line_out"], 3);
  EXPECT_EQ(summary["axes"][3]["axis"], "A");
  EXPECT_EQ(summary["axes"][3]["to_deg"], 31);
  EXPECT_EQ(summary["axes"][4]["first_line_out"], nullptr);
  ASSERT_EQ(summary["first_rows_out"].size(), 5U);
  EXPECT_EQ(summary["first_rows_out"][1], json({{"line", 4}, {"axis", "A"}, {"value_deg", 31}}));
}

TEST(PathVerb, PutsTheJsonBesideRowsOnStandardOutput) {
  const Ended ended = convert(shipped_path(kTrunnion), "machine", "x,y,z,a,c\n0,0,100,0,0\n", {"--json"});
  EXPECT_EQ(ended.out, "x,y,z,a,c\n0,0,100,0,0\n");
  EXPECT_EQ(json::parse(ended.err)["rows"], 1);
}

TEST(PathVerb, CountsInInchesWhereTheMachineDoes) {
  const Ended ended = convert(shipped_path(kInch), "machine", "x,y,z,a,c\n21,0,-20,0,0\n");
  EXPECT_EQ(ended.exit_code, 1);
  EXPECT_NE(ended.err.find("X inch"), std::string::npos) << ended.err;
}

TEST(PathVerb, TakesAPathWithoutRows) {
  const Ended ended = convert(shipped_path(kTrunnion), "machine", "x,y,z,a,c\n");
  EXPECT_EQ(ended.exit_code, 0) << ended;
  EXPECT_EQ(ended.out, "x,y,z,a,c\n");
  EXPECT_EQ(ended.err.rfind("-: 0 rows, 0 out of travel\n", 0), 0U) << ended;
}

TEST(PathVerb, ReadsAndWritesTheSameFile) {
  How how;
  how.folder = make_folder("path");
  write_file(how.folder + "/p.csv", "x,y,z,a,c\n30,20,100,0,180\n");
  const Ended ended =
      run_tool({"path", shipped_path(kTrunnion), "p.csv", "--to", "machine", "-o", "p.csv"}, how);
  EXPECT_EQ(ended.exit_code, 0) << ended;
  const std::vector<std::vector<double>> rows = numbers_of(read_file(how.folder + "/p.csv"));
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_NEAR(rows[0][0], -30, 1e-13);
  EXPECT_NEAR(rows[0][1], -20, 1e-13);
}

TEST(PathVerb, NeedsTheColumnsOfTheMachinesAxesAlone) {
  EXPECT_EQ(convert(shipped_path(kSwivel), "machine", "x,y,z,b,c\n0,0,-600,0,0\n").exit_code, 0);
  const Ended ended = convert(shipped_path(kSwivel), "machine", "x,y,z,a,c\n0,0,-600,0,0\n");
  EXPECT_EQ(ended.exit_code, 3);
  EXPECT_EQ(ended.err, "k5ax: -:1:1: no column b; begin with a line such as x,y,z,b,c\n");
}

TEST(PathVerb, SaysThatNoTreeTellsWhereTheSlidesStand) {
  const std::string machine = make_folder("path") + "/bare.k5m";
  save_machine(machine, MC_TT, through_origin(AXIS_C, TABLE), nullptr);
  const Ended ended = convert(machine, "machine", "x,y,z,c\n1e6,0,0,0\n0,0,0,201\n");
  EXPECT_EQ(ended.exit_code, 1);
  EXPECT_NE(ended.err.find("-:3: out of travel: C 201 deg"), std::string::npos) << ended.err;
  EXPECT_EQ(ended.err.find("-:2:"), std::string::npos) << ended.err;
  EXPECT_NE(ended.err.find("X, Y, Z: not looked at"), std::string::npos) << ended.err;
}

// A machine without rotary axes turns by C about Z and, being table-table, then by B about Y, both against
// the sense of the tool: (1, 2, 3) goes by C 90 to (2, -1, 3) and by B 90 to (-3, -1, 2).
TEST(PathVerb, TurnsByCAndBWhereATableTableMachineHasNoRotaryAxis) {
  const std::string machine = make_folder("path") + "/bare.k5m";
  save_machine(machine, MC_TT, nullptr, nullptr);
  const std::vector<std::vector<double>> rows =
      numbers_of(convert(machine, "machine", "x,y,z,b,c\n1,2,3,90,90\n").out);
  ASSERT_EQ(rows.size(), 1U);
  const double wanted[] = {-3, -1, 2};
  for (std::size_t k = 0; k < 3; ++k) EXPECT_NEAR(rows[0][k], wanted[k], 1e-14);
  EXPECT_EQ(convert(machine, "machine", "x,y,z\n1,2,3\n").out, "x,y,z\n1,2,3\n");
}

TEST(PathVerb, TurnsNothingBackWithoutARotaryAxis) {
  const std::string machine = make_folder("path") + "/bare.k5m";
  save_machine(machine, MC_TT, nullptr, nullptr);
  EXPECT_EQ(convert(machine, "part", "x,y,z,c\n1,2,3,90\n").exit_code, 3);
  EXPECT_EQ(convert(machine, "part", "x,y,z,c\n1,2,3,0\n").out, "x,y,z,c\n1,2,3,0\n");
}

}  // namespace
