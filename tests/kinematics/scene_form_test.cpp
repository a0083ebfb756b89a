// The posing of the scene graph against a second formulation without matrices, over random machines and
// random trees.
#include <k5ax/kinematics.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

#include <gtest/gtest.h>

#include "memory_stream.h"
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
using k5ax_test::random_scene;
using k5ax_test::SceneOfMachine;
using vector_form::Node;
using vector_form::point;
using vector_form::Scene;
using vector_form::vec;
using vector_form::Vec;

// A Z axis that leans towards the plane has no well-defined value: the tests stay away from a sine between
// noise and this.
constexpr double kFlattest = 0.02;

// Values of linear axes. The tool point is a sum of up to twenty vectors of length below 520, good to 20 *
// 10^4 eps / 2 = 2e-11. The line along Z goes through two points 1 apart, each rounded by 10^4 eps / 2, so
// its slope, 0.02 or more, is off by 2e-12 / 0.02 of itself at worst, and with it the values that depend on
// it.
double value_tolerance(const Scene& scene) {
  double largest = 0;
  for (const auto& tree : scene.trees)
    for (const Node& n : tree) largest = std::max(largest, std::abs(n.value));
  return 1e-10 * (1 + largest);
}

bool is_flat(const vector_form::Measured& measured) {
  const double sine = std::abs(measured.z_slope);
  return sine > 1e-12 && sine < kFlattest;
}

testing::AssertionResult same_pose(const Scene& expected, const BuiltScene& built) {
  const double tolerance = value_tolerance(expected);
  for (int tree = 0; tree < 2; ++tree) {
    if (built.nodes[tree].size() != expected.trees[tree].size())
      return testing::AssertionFailure() << "tree " << tree << " has another size";
    for (std::size_t i = 0; i < built.nodes[tree].size(); ++i) {
      const Node& n = expected.trees[tree][i];
      const md::sg::node& now = *built.nodes[tree][i];
      const auto fault = [&] {
        return testing::AssertionFailure() << "tree " << tree << " node " << i << ": ";
      };
      if (!(std::abs(now.value() - n.value) <= tolerance))
        return fault() << "value " << now.value() << " against " << n.value << ", off by "
                       << now.value() - n.value;
      if (now.id() != n.id || now.flags() != n.flags) return fault() << "id or flags changed";

      for (const Vec& p :
           {Vec{0, 0, 0}, Vec{kRandomSize, 0, 0}, Vec{0, kRandomSize, 0}, Vec{0, 0, kRandomSize}}) {
        const Vec carried = vec(point(p) * now.transform());
        const Vec expected_carried = carried_by_node(n, p);
        if (!(length(carried - expected_carried) <= tolerance))
          return fault() << p << " is carried to " << carried << " against " << expected_carried;
      }
    }
  }
  return testing::AssertionSuccess();
}

// What the library holds from here on, so that roundings of one call do not add up to those of the next.
void take_values(Scene& scene, const BuiltScene& built) {
  for (int tree = 0; tree < 2; ++tree)
    for (std::size_t i = 0; i < scene.trees[tree].size(); ++i)
      if (scene.trees[tree][i].kind == vector_form::Kind::axis)
        scene.trees[tree][i].value = built.nodes[tree][i]->value();
}

TEST(SceneForm, BuiltScenesStandAsTheyWereWritten) {
  Random random(5300);
  for (int i = 0; i < 500; ++i) {
    const Scene scene = random_scene(random);
    ASSERT_TRUE(same_pose(scene, build(scene))) << scene;
  }
}

TEST(SceneForm, TheUpdateOfMachinesAgrees) {
  Random random(5301);
  int updates = 0;
  for (int i = 0; i < 1200; ++i) {
    Scene scene = random_machine_scene(random).scene;
    const BuiltScene built = build(scene);
    // The table is where the call before has left it.
    for (int call = 0; call < 4; ++call) {
      const Vec xyz = random.position(kRandomSize);
      const Vec abc = random.angles();
      Scene after = scene;
      vector_form::Measured measured;
      const bool expected = pose(after, xyz, abc, &measured);
      if (is_flat(measured)) continue;

      ASSERT_EQ(md::UpdateNodeAxes_(&built.machdef(), point(xyz), point(abc)), expected)
          << i << scene << "\nxyz " << xyz << " abc " << abc;
      ASSERT_TRUE(same_pose(after, built)) << i << scene << "\nxyz " << xyz << " abc " << abc;
      scene = after;
      take_values(scene, built);
      updates += expected ? 1 : 0;
    }
  }
  EXPECT_GT(updates, 3500);
}

TEST(SceneForm, TheUpdateOfAnyTreesAgrees) {
  Random random(5302);
  int reached = 0;
  int failed = 0;
  int pairs = 0;
  int specials = 0;
  int specials_with_a_pair_reached = 0;
  // Around the height of the tool point, on both sides of the 1e-6 of a plane and the 0.001 of the special
  // solve.
  static const double heights[] = {0, 5e-7, -5e-7, 2e-6, -2e-6, 0.0009, -0.0009, 0.0011, -0.0011};
  for (int i = 0; i < 6000; ++i) {
    Scene scene = random_scene(random);
    const BuiltScene built = build(scene);
    built.machdef().flags(static_cast<unsigned int>(random.below(8)));
    for (int call = 0; call < 3; ++call) {
      Vec xyz = random.position(kRandomSize);
      const Vec abc = random.angles();
      Scene after = scene;
      vector_form::Measured measured;
      bool expected = pose(after, xyz, abc, &measured);
      if (random.one_in(2)) {
        xyz.z = measured.tool_point.z + random.of(heights);
        after = scene;
        expected = pose(after, xyz, abc, &measured);
      }
      if (is_flat(measured)) continue;

      ASSERT_EQ(md::UpdateNodeAxes_(&built.machdef(), point(xyz), point(abc)), expected)
          << i << scene << "\nxyz " << xyz << " abc " << abc;
      ASSERT_TRUE(same_pose(after, built)) << i << scene << "\nxyz " << xyz << " abc " << abc;
      scene = after;
      take_values(scene, built);
      ++(expected ? reached : failed);
      pairs += measured.has_pair ? 1 : 0;
      specials += measured.cannot_change_z ? 1 : 0;
      specials_with_a_pair_reached += measured.has_pair && measured.cannot_change_z && expected ? 1 : 0;
    }
  }
  EXPECT_GT(reached, 10000);
  EXPECT_GT(failed, 3500);
  EXPECT_GT(pairs, 1200);
  EXPECT_GT(specials, 250);
  EXPECT_GT(specials_with_a_pair_reached, 20);
}

TEST(SceneForm, TheReadBackOfAnyTreesAgrees) {
  Random random(5303);
  int moved = 0;
  for (int i = 0; i < 3000; ++i) {
    const Scene scene = random_scene(random);
    const BuiltScene built = build(scene);
    Vec expected_xyz;
    Vec expected_abc{101, 102, 103};
    read_back(scene, expected_xyz, expected_abc);
    Point xyz;
    Point abc(101, 102, 103);
    md::CMachDef_SG2MachCoords(built.machdef(), xyz, abc);
    ASSERT_NEAR_POINT(xyz, point(expected_xyz), 1e-10) << i << scene;
    ASSERT_NEAR_POINT(abc, point(expected_abc), 0) << i << scene;
    moved += length(expected_xyz) > 1 ? 1 : 0;
  }
  EXPECT_GT(moved, 1500);
}

// Every table rotary to its zero pose, as a host does before an update.
void zero_table(Scene& scene, const BuiltScene& built) {
  for (const vector_form::Place& place : scene.rotaries) {
    if (scene.at(place).location != TABLE) continue;
    k5axSgNode_value_set2(0, built.nodes[place.tree][place.node].get(), 0);
    scene.at(place).value = 0;
  }
}

// The way of a point from a node to its root, by the library's own transforms.
Point carried(const NodePtr& from, Point p) {
  std::vector<Geometry::Matrix> stack;
  md::sg::node::transform_stack(from, stack);
  for (const Geometry::Matrix& to_parent : stack) p = p * to_parent;
  return p;
}

// Fifteen nodes, lengths below 5000: 15 * 10 roundings of eps / 2 of that.
constexpr double kCarried = 1e-10;

TEST(SceneLaws, AfterAnUpdateFromAZeroedTableTheReadBackAnswersWhatWasCommanded) {
  Random random(5311);
  for (int i = 0; i < 600; ++i) {
    SceneOfMachine s = random_machine_scene(random);
    const BuiltScene built = build(s.scene);
    for (int call = 0; call < 3; ++call) {
      const Vec xyz = random.position(kRandomSize);
      const Vec abc = random.angles();
      zero_table(s.scene, built);
      ASSERT_TRUE(md::UpdateNodeAxes_(&built.machdef(), point(xyz), point(abc))) << s.scene;
      Point xyz_back;
      Point abc_back = point(abc);
      md::CMachDef_SG2MachCoords(built.machdef(), xyz_back, abc_back);
      ASSERT_NEAR_POINT(xyz_back, point(xyz), kCarried) << i << s.scene << "\nxyz " << xyz << " abc " << abc;
      ASSERT_NEAR_POINT(abc_back, point(abc), 0) << i;
    }
  }
}

// The trees and the transforms tell the same story: the tool point carried through both trees is where the
// commanded machine position goes in part coordinates.
TEST(SceneLaws, AfterAnUpdateFromAZeroedTableTheToolPointIsTheCommandedPositionInPartCoordinates) {
  Random random(5312);
  for (int i = 0; i < 600; ++i) {
    SceneOfMachine s = random_machine_scene(random);
    const BuiltScene built = build(s.scene);
    const auto machdef = k5ax_test::make_machdef(s.machine);
    for (int call = 0; call < 3; ++call) {
      const Vec xyz = random.position(kRandomSize);
      const Vec abc = random.angles();
      zero_table(s.scene, built);
      ASSERT_TRUE(md::UpdateNodeAxes_(&built.machdef(), point(xyz), point(abc))) << s.scene;

      const Point p_mach = carried(built.machdef().tool_node(), Point());
      const Point p_part = carried(built.nodes[1].back(), p_mach);
      Point p_expected;
      Point d_tool_part;
      machdef->Mach2PartCoords(point(xyz), point(abc), p_expected, d_tool_part);
      ASSERT_NEAR_POINT(p_part, p_expected, kCarried) << i << s.scene << "\nxyz " << xyz << " abc " << abc;
      ASSERT_NEAR_POINT(p_part, point(machine_to_part(s.machine, xyz, abc)), kCarried) << i << s.scene;
    }
  }
}

TEST(SceneLaws, WithTheLinearAxesAtZeroTheSecondTreeIsThePointTransformToThePart) {
  Random random(5313);
  for (int i = 0; i < 600; ++i) {
    SceneOfMachine s = random_machine_scene(random);
    const Vec abc = random.angles();
    for (Node& n : s.scene.trees[1]) {
      if (n.kind != vector_form::Kind::axis) continue;
      n.value = 0;
      if (n.mode == ROTARY) vector_form::coordinate(n.letter, Vec(), abc, n.value);
    }
    const BuiltScene built = build(s.scene);
    const auto machdef = k5ax_test::make_machdef(s.machine);
    const Point p = point(random.vector(kRandomSize));
    Point p_part;
    Point d_tool_part;
    machdef->Mach2PartCoords(p, point(abc), p_part, d_tool_part);
    ASSERT_NEAR_POINT(carried(built.nodes[1].back(), p), p_part, kCarried) << i << s.scene;
  }
}

TEST(SceneLaws, FromAZeroedTableTheSameCommandGivesTheSamePose) {
  Random random(5314);
  for (int i = 0; i < 500; ++i) {
    SceneOfMachine s = random_machine_scene(random);
    const BuiltScene built = build(s.scene);
    const Point xyz = point(random.position(kRandomSize));
    const Point abc = point(random.angles());
    zero_table(s.scene, built);
    md::UpdateNodeAxes_(&built.machdef(), xyz, abc);
    const std::map<int, node_state> first = md::CMachDef_IdAxisState_get(built.machdef());
    md::UpdateNodeAxes_(&built.machdef(), point(random.position(kRandomSize)), point(random.angles()));
    zero_table(s.scene, built);
    md::UpdateNodeAxes_(&built.machdef(), xyz, abc);
    const std::map<int, node_state> again = md::CMachDef_IdAxisState_get(built.machdef());
    ASSERT_EQ(first.size(), 5u);
    for (const auto& entry : first)
      ASSERT_EQ(again.at(entry.first).value, entry.second.value) << i << s.scene;
  }
}

TEST(SceneLaws, StatesThatWereTakenRestoreTheWholePose) {
  Random random(5401);
  for (int i = 0; i < 500; ++i) {
    SceneOfMachine s = random_machine_scene(random);
    const BuiltScene built = build(s.scene);
    md::UpdateNodeAxes_(&built.machdef(), point(random.position(kRandomSize)), point(random.angles()));
    take_values(s.scene, built);
    const std::map<int, node_state> taken = md::CMachDef_IdAxisState_get(built.machdef());
    std::vector<Geometry::Matrix> transforms;
    for (const auto& nodes : built.nodes)
      for (const NodePtr& n : nodes) transforms.push_back(n->transform());

    for (int call = 0; call < 2; ++call)
      md::UpdateNodeAxes_(&built.machdef(), point(random.position(kRandomSize)), point(random.angles()));
    if (random.one_in(2)) {
      md::CMachDef_IdAxisState_set(built.machdef(), taken);
    } else {
      std::vector<node_state> records;
      for (const auto& entry : taken) records.push_back(entry.second);
      ASSERT_EQ(CMachDef_IdAxisState_set2(&built.machdef(), records.data(), static_cast<int>(records.size())),
                1);
    }
    std::size_t k = 0;
    for (const auto& nodes : built.nodes)
      for (const NodePtr& n : nodes) ASSERT_NEAR_MATRIX(n->transform(), transforms[k++], 0) << i << s.scene;
    ASSERT_TRUE(same_pose(s.scene, built)) << i << s.scene;
  }
}

// A machine of its own that was made from the one built, by cloning it or by saving and loading it.
void expect_poses_as_the_original(std::uint64_t seed, void (*make)(md::CMachDef& from, md::CMachDef& to)) {
  Random random(seed);
  for (int i = 0; i < 400; ++i) {
    const Scene scene = random_machine_scene(random).scene;
    const BuiltScene built = build(scene);
    md::UpdateNodeAxes_(&built.machdef(), point(random.position(kRandomSize)), point(random.angles()));
    md::CMachDef made;
    make(built.machdef(), made);
    const Point xyz = point(random.position(kRandomSize));
    const Point abc = point(random.angles());
    ASSERT_EQ(md::UpdateNodeAxes_(&made, xyz, abc), md::UpdateNodeAxes_(&built.machdef(), xyz, abc))
        << i << scene;
    for (std::size_t tree = 0; tree < 2; ++tree) {
      const std::vector<NodePtr> nodes = md::sg::node::all_nodes(made.SG()[tree]);
      ASSERT_EQ(nodes.size(), built.nodes[tree].size());
      for (std::size_t k = 0; k < nodes.size(); ++k)
        ASSERT_NEAR_MATRIX(nodes[k]->transform(), built.nodes[tree][k]->transform(), 0) << i << scene;
    }
  }
}

TEST(SceneLaws, ACloneOfAPosedMachinePosesAsItsOriginalToTheLastBit) {
  expect_poses_as_the_original(5315, [](md::CMachDef& from, md::CMachDef& to) { to.clone(from, 3); });
}

TEST(SceneLaws, ALoadedMachinePosesAsTheSavedOneToTheLastBit) {
  expect_poses_as_the_original(
      5316, [](md::CMachDef& from, md::CMachDef& to) { k5ax_test::save_and_load(from, to); });
}

}  // namespace
