// The example machines, for tests to break.
#ifndef K5AX_TESTS_TOOL_SHIPPED_H
#define K5AX_TESTS_TOOL_SHIPPED_H

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include <k5ax/machdef.h>

#include "tool/process.h"

namespace tool_test {

constexpr const char* kTrunnion = "table_table_trunnion";  // A and C on the table
constexpr const char* kSwivel = "head_table_swivel";       // C on the table, B on the head
constexpr const char* kFork = "head_head_fork";            // C and A on the head
constexpr const char* kInch = "head_table_inch";           // C on the table, A on the head, an angled head
constexpr const char* kShipped[] = {kTrunnion, kSwivel, kFork, kInch};

inline std::string shipped_path(const std::string& name) {
  return in_tree("examples/machines/" + name + ".k5m");
}

inline std::unique_ptr<md::CMachDef> shipped(const std::string& name) {
  auto machine = std::make_unique<md::CMachDef>();
  EXPECT_EQ(MachdefLoad(machine.get(), shipped_path(name).c_str()), 1) << name;
  return machine;
}

/// The first node with this id, of both trees.
inline boost::shared_ptr<md::sg::node> node_of(md::CMachDef& machine, int id) {
  for (const auto& root : machine.SG()) {
    for (const auto& node : md::sg::node::all_nodes(root)) {
      if (node->id() == id) return node;
    }
  }
  ADD_FAILURE() << "no node " << id;
  return {};
}

inline md::CAxis2& axis_of(md::CMachDef& machine, int id) {
  return md::sg::axis_node(node_of(machine, id).get())->payload();
}

}  // namespace tool_test

#endif
