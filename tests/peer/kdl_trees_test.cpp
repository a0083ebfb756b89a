// The posed trees against Orocos KDL, on random machines of all three types: where every node stands, and
// where the tool point comes out.
#include <k5ax/kinematics.h>

#include <cstddef>
#include <map>
#include <vector>

#include <gtest/gtest.h>

#include "peer/kdl_machine.h"
#include "support/near.h"
#include "support/random_scene.h"

namespace {

using k5ax_test::build;
using k5ax_test::BuiltScene;
using k5ax_test::kRandomSize;
using k5ax_test::NodePtr;
using k5ax_test::Point;
using k5ax_test::Random;
using k5ax_test::random_machine_scene;
using k5ax_test::SceneOfMachine;
using peer::from_kdl;
using peer::KdlTree;
using vector_form::Node;
using vector_form::point;
using vector_form::Scene;
using vector_form::Vec;

constexpr int kPosedMachines = 600;
constexpr int kPoses = 3;

// Fifteen nodes, lengths below 1e4: 15 * 10 roundings of eps / 2 of that on either side. A Z that leans has a
// slope that is good to 2e-12, and a length of 1e4 at most.
constexpr double kPosedLength = 2 * 15 * 10 * 1.2e-16 * 1e4 + 2e-12 * 1e4;

using Values = std::map<std::size_t, double>;

// The values that the axis nodes are at: rotary ones by the command, slides as the library has solved them.
Values values_of(const std::vector<Node>& tree, const std::vector<NodePtr>& nodes, const Vec& abc) {
  Values values;
  for (std::size_t i = 0; i < tree.size(); ++i) {
    if (tree[i].kind != vector_form::Kind::axis) continue;
    values[i] = nodes[i]->value();
    if (tree[i].mode == ROTARY) vector_form::coordinate(tree[i].letter, Vec(), abc, values[i]);
  }
  return values;
}

void zero_table(const Scene& scene, const BuiltScene& built) {
  for (const vector_form::Place& place : scene.rotaries)
    if (scene.at(place).location == TABLE)
      k5axSgNode_value_set2(0, built.nodes[place.tree][place.node].get(), 0);
}

Point carried(const NodePtr& from, Point p) {
  std::vector<Geometry::Matrix> stack;
  md::sg::node::transform_stack(from, stack);
  for (const Geometry::Matrix& node_to_parent : stack) p = p * node_to_parent;
  return p;
}

// Calls `check(scene, built, xyz, abc, values)` for random machines at random poses; counts those of each
// type.
template <class Check>
void for_posed_machines(std::uint64_t seed, Check check) {
  Random random(seed);
  std::map<MACHINE_TYPE, int> posed;
  for (int i = 0; i < kPosedMachines; ++i) {
    const SceneOfMachine s = random_machine_scene(random);
    const BuiltScene built = build(s.scene);
    for (int n = 0; n < kPoses; ++n) {
      const Vec xyz = random.position(kRandomSize);
      const Vec abc = random.angles();
      zero_table(s.scene, built);
      ASSERT_TRUE(md::UpdateNodeAxes_(&built.machdef(), point(xyz), point(abc))) << s.scene;
      const Values values[2] = {values_of(s.scene.trees[0], built.nodes[0], abc),
                                values_of(s.scene.trees[1], built.nodes[1], abc)};
      SCOPED_TRACE(testing::Message() << i << s.machine << s.scene << "\nxyz " << xyz << " abc " << abc);
      check(s, built, xyz, abc, values);
      if (testing::Test::HasFatalFailure()) return;
      ++posed[s.machine.type];
    }
  }
  for (const MACHINE_TYPE type : {MC_TT, MC_HT, MC_HH})
    EXPECT_GT(posed[type], kPosedMachines * kPoses / 4) << type;
}

TEST(TreesAgainstKdl, EveryNodeStandsWhereItDoesInKdlsTree) {
  for_posed_machines(51, [](const SceneOfMachine& s, const BuiltScene& built, const Vec&, const Vec&,
                            const Values values[2]) {
    for (std::size_t tree = 0; tree < 2; ++tree) {
      const KdlTree kdl(s.scene.trees[tree]);
      for (std::size_t i = 0; i < s.scene.trees[tree].size(); ++i) {
        const KDL::Frame node_to_root = kdl.node_to_root(i, values[tree]);
        for (const Vec& p : {Vec{0, 0, 0}, Vec{300, 0, 0}, Vec{0, 300, 0}, Vec{0, 0, 300}})
          ASSERT_NEAR_POINT(carried(built.nodes[tree][i], point(p)),
                            point(from_kdl(node_to_root * peer::to_kdl(p))), kPosedLength)
              << "tree " << tree << " node " << i;
      }
    }
  });
}

// KDL alone says where the tool point lies on the part: up its first tree, and up its second one.
TEST(TreesAgainstKdl, TheToolPointOfThePoseLiesOnThePartWhereKdlsTableHasTheCommand) {
  for_posed_machines(52, [](const SceneOfMachine& s, const BuiltScene&, const Vec& xyz, const Vec& abc,
                            const Values values[2]) {
    const KDL::Frame tool_to_mach = KdlTree(s.scene.trees[0]).node_to_root(s.scene.tool.node, values[0]);
    const KDL::Frame mach_to_part =
        KdlTree(s.scene.trees[1]).node_to_root(s.scene.trees[1].size() - 1, values[1]);
    const Vec by_trees = from_kdl(mach_to_part * tool_to_mach * KDL::Vector::Zero());
    const Vec by_lines = from_kdl(peer::machine_to_part(s.machine, abc) * peer::to_kdl(xyz));
    ASSERT_NEAR_POINT(point(by_trees), point(by_lines), kPosedLength);
  });
}

}  // namespace
