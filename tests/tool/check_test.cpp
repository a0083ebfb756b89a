// k5ax check, as a process.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <string>

#include <k5ax/machdef.h>

#include "tool/process.h"
#include "tool/shipped.h"

namespace {

using nlohmann::json;
using tool_test::Ended;
using tool_test::kShipped;
using tool_test::kTrunnion;
using tool_test::make_folder;
using tool_test::run_tool;
using tool_test::shipped;
using tool_test::shipped_path;

// Saves what a test has made of the trunnion under a short name, in a folder of its own.
class Check : public testing::Test {
 protected:
  void SetUp() override {
    m_machine = shipped(kTrunnion);
    m_how.folder = make_folder("check");
  }
  Ended check(std::vector<std::string> options = {}) {
    EXPECT_EQ(MachdefSave(m_machine.get(), (m_how.folder + "/m.k5m").c_str()), 1);
    options.insert(options.begin(), {"check", "m.k5m"});
    return run_tool(options, m_how);
  }

  std::unique_ptr<md::CMachDef> m_machine;
  tool_test::How m_how;
};

TEST_F(Check, SaysThatTheShippedMachinesAreValidAndNothingElse) {
  for (const char* name : kShipped) {
    const Ended ended = run_tool({"check", shipped_path(name)});
    EXPECT_EQ(ended.exit_code, 0) << ended;
    EXPECT_EQ(ended.out, shipped_path(name) + ": valid\n");
    EXPECT_EQ(ended.err, "");
  }
}

TEST_F(Check, NamesEveryReasonAndWarningALine) {
  m_machine->setMachType(static_cast<MACHINE_TYPE>(3));
  m_machine->getPrimary()->SetAxisVector(Geometry::TPoint<double>());
  m_machine->xyz_axes()[1]->SetMax(-225);
  const Ended ended = check();
  EXPECT_EQ(ended.exit_code, 1) << ended;
  EXPECT_EQ(
      ended.out,
      "m.k5m: not valid, 2 reasons, 3 warnings\n"
      "  reason: machine type: is 3; give it table-table (0), head-table (1) or head-head (2)\n"
      "  reason: primary axis A: direction 0 0 0 has the length 0; give it a direction\n"
      "  warning: Y axis: travel is zero, from -225 mm to -225 mm; widen its limits\n"
      "  warning: tree 0, node 2 (axis Y): max 225 mm where the machine's axis has -225 mm; make the two "
      "agree\n"
      "  warning: tree 1, node 4 (axis A): direction 1 0 0 where the machine's axis has 0 0 0; make the two "
      "agree\n");
  EXPECT_EQ(ended.err, "");
}

TEST_F(Check, DoesNotEndWithOneForWarnings) {
  md::sg::node& y = *tool_test::node_of(*m_machine, 2);
  y.id(1);
  const Ended ended = check();
  EXPECT_EQ(ended.exit_code, 0) << ended;
  EXPECT_EQ(
      ended.out,
      "m.k5m: valid, 1 warning\n"
      "  warning: node id 1: stands for 2 nodes, of which only the first would be found; give each node an "
      "id of its own\n");
}

TEST_F(Check, EndsWithOneForWarningsWhenAskedTo) {
  tool_test::node_of(*m_machine, 2)->id(1);
  EXPECT_EQ(check({"--strict"}).exit_code, 1);
}

TEST_F(Check, EndsWithNoughtForAMachineWithoutWarningsWhenAskedToBeStrict) {
  EXPECT_EQ(check({"--strict"}).exit_code, 0);
}

TEST_F(Check, SaysTheSameAsJson) {
  m_machine->setMachType(static_cast<MACHINE_TYPE>(3));
  tool_test::node_of(*m_machine, 2)->id(1);
  const Ended ended = check({"--json"});
  EXPECT_EQ(ended.exit_code, 1) << ended;
  const json reason = {{"rule", "machine-type"},
                       {"place", "machine type"},
                       {"value", "is 3"},
                       {"remedy", "give it table-table (0), head-table (1) or head-head (2)"}};
  const json warning = {{"rule", "id-twice"},
                        {"place", "node id 1"},
                        {"value", "stands for 2 nodes, of which only the first would be found"},
                        {"remedy", "give each node an id of its own"}};
  const json wanted = {{"file", "m.k5m"},
                       {"valid", false},
                       {"reasons", json::array({reason})},
                       {"warnings", json::array({warning})}};
  EXPECT_EQ(json::parse(ended.out), wanted);
}

// A file that is no machine, or one gone wrong, may break a rule any number of times.
TEST_F(Check, CountsWhatItDoesNotShow) {
  for (int id = 100; id < 130; ++id) {
    for (int twice = 0; twice < 2; ++twice) {
      const auto node = md::sg::node::create();
      node->reset();
      node->id(id);
      m_machine->SG()[0]->add_child(node);
    }
  }
  const Ended ended = check();
  EXPECT_NE(ended.out.find("m.k5m: valid, 30 warnings\n"), std::string::npos) << ended;
  EXPECT_NE(ended.out.find("node id 109: "), std::string::npos) << ended;
  EXPECT_EQ(ended.out.find("node id 110: "), std::string::npos) << ended;
  EXPECT_NE(ended.out.find("  warning: 20 more of id-twice; --json has them all\n"), std::string::npos)
      << ended;
  EXPECT_EQ(json::parse(check({"--json"}).out)["warnings"].size(), 30U);
}

// As deep as a file may be: neither the walk nor the motion recurses.
TEST_F(Check, EndsForATreeOfAnyDepth) {
  const auto machine = std::make_unique<md::CMachDef>();
  machine->clone(*m_machine, 1);
  auto at = md::sg::node::create();
  at->reset();
  machine->SG()[0] = at;
  for (int i = 0; i < 20000; ++i) {
    const auto child = md::sg::node::create();
    child->reset();
    child->id(-999);
    at->add_child(child);
    at = child;
  }
  m_machine->clone(*machine, 3);
  const Ended ended = check();
  EXPECT_EQ(ended.exit_code, 0) << ended;
}

}  // namespace
