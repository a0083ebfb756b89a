// k5ax info, as a process.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <sstream>
#include <string>

#include "support/random_machine.h"
#include "tool/process.h"
#include "tool/shipped.h"

namespace {

using nlohmann::json;
using tool_test::Ended;
using tool_test::expect_golden;
using tool_test::kInch;
using tool_test::kShipped;
using tool_test::kTrunnion;
using tool_test::make_folder;
using tool_test::node_of;
using tool_test::run_tool;
using tool_test::shipped;
using tool_test::shipped_path;

Ended info(const std::string& machine, const std::vector<std::string>& options = {}) {
  std::vector<std::string> arguments = {"info", machine + ".k5m"};
  arguments.insert(arguments.end(), options.begin(), options.end());
  tool_test::How how;
  how.folder = tool_test::in_tree("examples/machines");
  return run_tool(arguments, how);
}

// Compared by hand with examples/example_machines.cpp, which has these axes, offsets and ids.
TEST(Info, ShowsATrunnionOnOneScreen) {
  const Ended ended = info(kTrunnion);
  EXPECT_EQ(ended.exit_code, 0) << ended;
  EXPECT_EQ(ended.err, "");
  expect_golden("info_trunnion.txt", ended.out);
}

// Likewise. Tilt 30 and turn 90 make the tool direction (0, sin 30, cos 30); of the lengths 4.25 and 2.875
// the tip is (0, 2.875 sin 30, 4.25 + 2.875 cos 30) = (0, 1.4375, 6.739823), and the tool point is 3 of the
// tool direction.
TEST(Info, ShowsAMachineInInchesWithAnAngledHead) {
  const Ended ended = info(kInch);
  EXPECT_EQ(ended.exit_code, 0) << ended;
  expect_golden("info_inch.txt", ended.out);
}

TEST(Info, KeepsToEightyColumnsAndAScreensLines) {
  for (const char* machine : kShipped) {
    std::istringstream text(info(machine).out);
    int lines = 0;
    for (std::string line; std::getline(text, line); ++lines) EXPECT_LE(line.size(), 80U) << line;
    EXPECT_GT(lines, 20);
    EXPECT_LT(lines, 32);
  }
}

// Six numbers of eight digits a line do not fit beside the rest.
TEST(Info, MakesTwoTablesWhereTheScreenHasNoRoomForOne) {
  const auto machine = shipped(kTrunnion);
  k5ax_test::Random random(1);
  for (const auto& axis : {machine->getPrimary(), machine->getSecondary(), machine->xyz_axes()[0]}) {
    axis->SetBaseVector(vector_form::point(random.vector(3000)));
    axis->SetAxisVector(vector_form::point(random.direction()));
  }
  tool_test::How how;
  how.folder = make_folder("info");
  ASSERT_EQ(MachdefSave(machine.get(), (how.folder + "/m.k5m").c_str()), 1);
  const Ended ended = run_tool({"info", "m.k5m"}, how);
  std::istringstream text(ended.out);
  for (std::string line; std::getline(text, line);) EXPECT_LE(line.size(), 80U) << line;
  EXPECT_NE(ended.out.find("\naxis  role       on     travel\n"), std::string::npos) << ended;
  EXPECT_NE(ended.out.find("\naxis  base point "), std::string::npos) << ended;
  EXPECT_NE(ended.out.find("\nC     secondary  table  -3600 to 3600 deg\n"), std::string::npos) << ended;
}

TEST(Info, SaysTheSameAsJson) {
  const Ended ended = info(kInch, {"--json"});
  EXPECT_EQ(ended.exit_code, 0) << ended;
  const json document = json::parse(ended.out);
  EXPECT_EQ(document["type"], "head-table");
  EXPECT_EQ(document["unit"], "inch");
  EXPECT_EQ(document["valid"], true);
  EXPECT_EQ(document["work_zero"], json::parse("[0.0, 0.0, -26.0]"));
  EXPECT_EQ(document["loading_vector"], json::parse("[0.0, 0.0, 8.0]"));
  ASSERT_EQ(document["axes"].size(), 5U);
  const json& a = document["axes"][4];
  EXPECT_EQ(a["letter"], "A");
  EXPECT_EQ(a["role"], "secondary");
  EXPECT_EQ(a["location"], "head");
  EXPECT_EQ(a["base"], json::parse("[0.0, -0.0012, 6.5005]"));
  // -75 degrees in radians and back: two roundings of a number below 128.
  EXPECT_NEAR(a["min_deg"].get<double>(), -75, 3e-14);
  EXPECT_NEAR(document["head"]["tilt_deg"].get<double>(), 30, 1e-14);
  EXPECT_EQ(document["head"]["lengths"], json::parse("[4.25, 2.875]"));

  ASSERT_EQ(document["trees"][0].size(), 5U);
  ASSERT_EQ(document["trees"][1].size(), 6U);
  EXPECT_EQ(document["trees"][0][0]["parent"], nullptr);
  EXPECT_EQ(document["trees"][1][0]["parent"], nullptr);
  EXPECT_EQ(document["trees"][1][5]["parent"], 4);
  EXPECT_EQ(document["trees"][0][3]["letter"], "A");
  EXPECT_EQ(document["trees"][0][3]["role"], "secondary");
  EXPECT_EQ(document["trees"][0][4]["tool_node"], true);
  EXPECT_EQ(document["trees"][1][1]["transform"],
            json::parse("[1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, -31.5]"));
}

// Branches: the last child of a node ends its line.
TEST(Info, DrawsBranches) {
  const auto machine = shipped(kTrunnion);
  const auto hang = [](const boost::shared_ptr<md::sg::node>& parent, int id) {
    const auto node = md::sg::node::create();
    node->reset();
    node->id(id);
    parent->add_child(node);
    return node;
  };
  const auto guard = hang(machine->SG()[0], 20);
  hang(guard, 21);
  hang(guard, 22);
  hang(node_of(*machine, 2), 23)->flags(0x40);
  tool_test::How how;
  how.folder = make_folder("info");
  ASSERT_EQ(MachdefSave(machine.get(), (how.folder + "/m.k5m").c_str()), 1);
  const Ended ended = run_tool({"info", "m.k5m"}, how);
  EXPECT_NE(ended.out.find("\n  frame (id 10)\n"
                           "  +- Y axis (id 2): driven, at 0 mm\n"
                           "  |  +- Z axis (id 3): driven, at 0 mm\n"
                           "  |  |  +- fixed (id -999): shift 0 0 520\n"
                           "  |  |     +- tool (id 6): the tool node, tool point 0 0 160\n"
                           "  |  +- frame (id 23): flags 0x40\n"
                           "  +- frame (id 20)\n"
                           "     +- frame (id 21)\n"
                           "     +- frame (id 22)\n"),
            std::string::npos)
      << ended;
}

TEST(Info, CountsTheNodesThatItDoesNotShow) {
  const auto machine = shipped(kTrunnion);
  auto at = machine->SG()[0];
  for (int i = 0; i < 100; ++i) {
    const auto child = md::sg::node::create();
    child->reset();
    child->id(-999);
    at->add_child(child);
    at = child;
  }
  tool_test::How how;
  how.folder = make_folder("info");
  ASSERT_EQ(MachdefSave(machine.get(), (how.folder + "/m.k5m").c_str()), 1);
  // 5 of its own and 100 more, of which 40 are shown.
  const Ended some = run_tool({"info", "m.k5m"}, how);
  EXPECT_NE(some.out.find("\n  and 65 more nodes; --all shows them\n"), std::string::npos) << some;
  const Ended all = run_tool({"info", "m.k5m", "--all"}, how);
  EXPECT_EQ(all.out.find("more node"), std::string::npos) << all;
  EXPECT_NE(all.out.find("(100 down) fixed (id -999)\n"), std::string::npos) << all;
  // A line says what 65 lines would.
  EXPECT_EQ(tool_test::lines_of(some.out).size() + 64, tool_test::lines_of(all.out).size());
}

TEST(Info, SaysThatAMachineIsNotValidAndEndsWithNoughtAllTheSame) {
  const auto machine = shipped(kTrunnion);
  machine->setMachType(MC_UNDEFINED);
  tool_test::How how;
  how.folder = make_folder("info");
  ASSERT_EQ(MachdefSave(machine.get(), (how.folder + "/m.k5m").c_str()), 1);
  const Ended ended = run_tool({"info", "m.k5m"}, how);
  EXPECT_EQ(ended.exit_code, 0) << ended;
  EXPECT_EQ(ended.out.rfind("m.k5m: unset, millimetres, not valid (see k5ax check)\n", 0), 0U) << ended;
}

TEST(Info, ShowsAMachineWithoutAnything) {
  md::CMachDef machine;
  tool_test::How how;
  how.folder = make_folder("info");
  ASSERT_EQ(MachdefSave(&machine, (how.folder + "/m.k5m").c_str()), 1);
  const Ended ended = run_tool({"info", "m.k5m"}, how);
  EXPECT_EQ(ended.exit_code, 0) << ended;
  EXPECT_EQ(ended.out,
            "m.k5m: unset, millimetres, not valid (see k5ax check)\n"
            "\n"
            "no axes\n"
            "\n"
            "head            straight\n"
            "tool direction  0 0 1\n"
            "work zero       0 0 0\n"
            "loading vector  0 0 0\n"
            "\n"
            "tree 0, from the machine frame down to the tool\n"
            "  none\n"
            "\n"
            "tree 1, from the part down to the machine frame\n"
            "  none\n");
}

}  // namespace
