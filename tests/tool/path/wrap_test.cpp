// k5ax wrap, as a process.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <cmath>
#include <string>
#include <vector>

#include "tool/path/path_machines.h"
#include "tool/process.h"
#include "tool/shipped.h"

namespace {

using nlohmann::json;
using tool_test::Ended;
using tool_test::How;
using tool_test::in_tree;
using tool_test::kShipped;
using tool_test::kTrunnion;
using tool_test::make_folder;
using tool_test::numbers_of;
using tool_test::read_file;
using tool_test::run_tool;
using tool_test::save_machine;
using tool_test::shipped_path;
using tool_test::through_origin;

Ended wrap(const std::string& machine, const std::string& text,
           const std::vector<std::string>& further = {}) {
  std::vector<std::string> arguments = {"wrap", machine, "-"};
  arguments.insert(arguments.end(), further.begin(), further.end());
  How how;
  how.input = text;
  return run_tool(arguments, how);
}

// 1e-12: some roundings of numbers below 200, and angles of that size in degrees.
void expect_rows(const std::string& table, const std::vector<std::vector<double>>& wanted) {
  const std::vector<std::vector<double>> rows = numbers_of(table);
  ASSERT_EQ(rows.size(), wanted.size()) << table;
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    ASSERT_EQ(rows[i].size(), wanted[i].size()) << table;
    for (std::size_t k = 0; k < wanted[i].size(); ++k)
      EXPECT_NEAR(rows[i][k], wanted[i][k], 1e-12) << "row " << i << " value " << k;
  }
}

// About Z: (3, 4, 7) is 5 from the axis at atan2(4, 3); turned into the half-plane of +X it is (5, 0, 7).
TEST(WrapVerb, BringsPointsToTheHalfPlaneOfX) {
  const Ended ended = wrap(shipped_path(kTrunnion), "x,y,z\n3,4,7\n0,-2,1\n");
  ASSERT_EQ(ended.exit_code, 0) << ended;
  EXPECT_EQ(ended.out.substr(0, ended.out.find('\n')), "x,y,z,c,radius");
  const double angle = std::atan2(4, 3) * math::R2D;
  expect_rows(ended.out, {{5, 0, 7, angle, 5}, {2, 0, 1, -90, 2}});
}

TEST(WrapVerb, BringsPointsToAnotherHalfPlane) {
  expect_rows(wrap(shipped_path(kTrunnion), "x,y,z\n0,2,1\n", {"--onto", "-x"}).out, {{-2, 0, 1, -90, 2}});
  expect_rows(wrap(shipped_path(kTrunnion), "x,y,z\n2,0,1\n", {"--onto", "+y"}).out, {{0, 2, 1, -90, 2}});
  expect_rows(wrap(shipped_path(kTrunnion), "x,y,z\n2,0,1\n", {"--onto", "y"}).out, {{0, 2, 1, -90, 2}});
}

// About X: (5, 0, 3) is 3 from the axis, and +90 degrees about X take (5, 3, 0) to it.
TEST(WrapVerb, BringsPointsToTheHalfPlaneOfYAboutA) {
  const std::string machine = make_folder("wrap") + "/a.k5m";
  save_machine(machine, MC_TT, through_origin(AXIS_A, TABLE), nullptr);
  expect_rows(wrap(machine, "x,y,z\n5,0,3\n").out, {{5, 3, 0, 90, 3}});
}

TEST(WrapVerb, WritesTheRotaryValueIntoItsColumn) {
  const Ended ended = wrap(shipped_path(kTrunnion), "c,x,y,z,a,f\n33,0,2,1,0,F5\n");
  EXPECT_EQ(ended.out.substr(0, ended.out.find('\n')), "c,x,y,z,a,f,radius");
  EXPECT_EQ(ended.out.substr(ended.out.find(",0,F5")), ",0,F5,2\n") << ended.out;
  EXPECT_EQ(ended.out.substr(ended.out.find('\n') + 1, 3), "90,") << ended.out;
}

TEST(WrapVerb, LeavesAPointOnTheAxisAsItIs) {
  EXPECT_EQ(wrap(shipped_path(kTrunnion), "x,y,z,c\n0,0,7.50,33.3\n").out,
            "x,y,z,c,radius\n0,0,7.50,33.3,0\n");
}

// At A 90 the table's C, carried by A against the tool's sense, lies along +Y: of (3, 7, 4) the axial part is
// 7 and the radius 5. About +Y the angle from +X to -Z is positive, so (3, 4) in (x, z) stands at
// -atan2(4, 3).
TEST(WrapVerb, TakesTheAxisAsItIsPosed) {
  const Ended ended = wrap(shipped_path(kTrunnion), "x,y,z,a\n3,7,4,90\n");
  expect_rows(ended.out, {{5, 7, 0, 90, -std::atan2(4, 3) * math::R2D, 5}});
}

// Every point of the shipped paths: the radius by Pythagoras, and turned back by the rotary value the point
// is where it was.
TEST(WrapVerb, WrapsShippedPathsSoThatTheyTurnBack) {
  int checked = 0;
  for (const std::string name : kShipped) {
    const std::string given_text = read_file(in_tree("examples/toolpaths/" + name + ".csv"));
    // At the zero pose, where every machine's C runs along Z.
    std::string text = "x,y,z\n";
    const std::vector<std::vector<double>> given = numbers_of(given_text);
    for (const std::vector<double>& row : given)
      text += std::to_string(row[0]) + "," + std::to_string(row[1]) + "," + std::to_string(row[2]) + "\n";
    const std::vector<std::vector<double>> wrapped = numbers_of(wrap(shipped_path(name), text).out);
    ASSERT_EQ(wrapped.size(), given.size());
    for (std::size_t i = 0; i < given.size(); ++i) {
      const double radius = std::hypot(given[i][0], given[i][1]);
      const double angle = wrapped[i][3] * math::D2R;
      // acos loses half of the digits next to 0 and 180 degrees: 1000 * sqrt(2 * 1.1e-16) = 1.5e-5.
      ASSERT_NEAR(wrapped[i][0] * std::cos(angle) - wrapped[i][1] * std::sin(angle), given[i][0], 2e-5)
          << name;
      ASSERT_NEAR(wrapped[i][0] * std::sin(angle) + wrapped[i][1] * std::cos(angle), given[i][1], 2e-5)
          << name;
      ASSERT_NEAR(wrapped[i][0], radius, 1e-9);
      ASSERT_NEAR(wrapped[i][4], radius, 1e-11);
      ++checked;
    }
  }
  EXPECT_GT(checked, 9000);
}

TEST(WrapVerb, SumsUp) {
  const Ended ended = wrap(shipped_path(kTrunnion), "x,y,z\n3,4,7\n0,-2,1\n0,3,1\n");
  EXPECT_EQ(ended.err, "-: 3 rows\nradius 2 to 5 mm\nC -90 to 90 deg\n");
}

TEST(WrapVerb, SumsUpAsJson) {
  const std::string folder = make_folder("wrap");
  const Ended ended =
      wrap(shipped_path(kTrunnion), "x,y,z\n0,-2,1\n0,3,1\n", {"--json", "-o", folder + "/w.csv"});
  const json summary = json::parse(ended.out);
  EXPECT_EQ(summary["rows"], 2);
  EXPECT_EQ(summary["axis"], "C");
  EXPECT_EQ(summary["radius"], json({2, 3}));
  EXPECT_EQ(summary["angle_deg"], json({-90, 90}));
  EXPECT_EQ(numbers_of(read_file(folder + "/w.csv")).size(), 2U);
}

TEST(WrapVerb, SumsUpNoRows) {
  EXPECT_EQ(wrap(shipped_path(kTrunnion), "x,y,z\n").err, "-: 0 rows\n");
  EXPECT_EQ(json::parse(wrap(shipped_path(kTrunnion), "x,y,z\n", {"--json"}).err)["radius"], nullptr);
}

TEST(WrapVerb, RefusesAMachineWithoutARotaryAxis) {
  const std::string machine = make_folder("wrap") + "/bare.k5m";
  save_machine(machine, MC_TT, nullptr, nullptr);
  const Ended ended = wrap(machine, "x,y,z\n1,2,3\n");
  EXPECT_EQ(ended.exit_code, 3);
  EXPECT_EQ(ended.err, "k5ax: " + machine +
                           ": the machine has no rotary axis to wrap about; take a machine that has one\n");
}

TEST(WrapVerb, RefusesAnAngleOfAnAxisThatTheMachineLacks) {
  const Ended ended = wrap(shipped_path(kTrunnion), "x,y,z,b\n1,2,3,4\n");
  EXPECT_EQ(ended.exit_code, 3);
  EXPECT_NE(ended.err.find("no B axis"), std::string::npos) << ended;
}

TEST(WrapVerb, RefusesToWrapTwice) {
  const Ended once = wrap(shipped_path(kTrunnion), "x,y,z\n1,2,3\n");
  const Ended twice = wrap(shipped_path(kTrunnion), once.out);
  EXPECT_EQ(twice.exit_code, 3);
  EXPECT_NE(twice.err.find("there is a column radius already"), std::string::npos) << twice;
}

TEST(WrapVerb, RefusesAnotherDirection) {
  EXPECT_EQ(wrap(shipped_path(kTrunnion), "x,y,z\n", {"--onto", "up"}).exit_code, 2);
}

}  // namespace
