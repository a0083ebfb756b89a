// The trees of a machine and its transforms say the same: where the table takes a point, where the tool point
// is after an update, and where the slides are for it.
#include <gtest/gtest.h>

#include "support/near.h"
#include "system/tree_support.h"

namespace {

using namespace k5ax_test;
using vector_form::Vec;

// C on A, A's line at y = 20, z = 50; the nose 500 up, the tool 100 long; X on the table.
TreePlan trunnion() {
  TreePlan plan;
  plan.rotary.type = MC_TT;
  plan.rotary.primary = {true, AXIS_A, TABLE, {-300, 20, 50}, {1, 0, 0}};
  plan.rotary.secondary = {true, AXIS_C, TABLE, {0, 0, -80}, {0, 0, 1}};
  plan.slide_on_table[0] = true;
  plan.nose = {0, 0, 500};
  plan.tool_point = {0, 0, 100};
  return plan;
}

// B on the head, 180 over the machine's origin, C on the table; the tool 150 long; Y on the table.
TreePlan swivel_head() {
  TreePlan plan;
  plan.rotary.type = MC_HT;
  plan.rotary.primary = {true, AXIS_C, TABLE, {0, 0, -800}, {0, 0, 1}};
  plan.rotary.secondary = {true, AXIS_B, HEAD, {0, 0, 180}, {0, 1, 0}};
  plan.slide_on_table[1] = true;
  plan.tool_point = {0, 0, 150};
  return plan;
}

// A in C on the head, A's line 200 over the machine's origin, the tool 100 long.
TreePlan fork_head() {
  TreePlan plan;
  plan.rotary.type = MC_HH;
  plan.rotary.primary = {true, AXIS_C, HEAD, {0, 0, 0}, {0, 0, 1}};
  plan.rotary.secondary = {true, AXIS_A, HEAD, {0, 0, 200}, {1, 0, 0}};
  plan.tool_point = {0, 0, 100};
  return plan;
}

// Lengths within 1000, up to 10 products of 3 terms with quarter turns: 10 * 4 * eps * 1000 = 9e-12.
constexpr double kHandTreeTolerance = 9e-12;

// ---- worked by hand ----

// A quarter turn of A: from A's line, (-18, -47) in y and z goes to (47, -18).
TEST(LeafStack, OfATrunnionTurnsAPointAboutA) {
  const auto m = build(trunnion());
  turn_axes(m->machdef(), {math::m_pi2, 0, 0});
  EXPECT_NEAR_POINT(Point(1, 2, 3) * node_to_root(first_leaf(m->machdef())), Point(1, 67, 32),
                    kHandTreeTolerance);
}

// A takes the point to (1, 67, 32) as before, and then C, which A carries, to (-67, 1, 32).
TEST(LeafStack, OfATrunnionTurnsAboutAFirstAndThenAboutC) {
  const auto m = build(trunnion());
  turn_axes(m->machdef(), {math::m_pi2, 0, math::m_pi2});
  EXPECT_NEAR_POINT(Point(1, 2, 3) * node_to_root(first_leaf(m->machdef())), Point(-67, 1, 32),
                    kHandTreeTolerance);
}

TEST(LeafStack, IsTheIdentityWithEveryAxisAtZero) {
  const auto m = build(trunnion());
  turn_axes(m->machdef(), {});
  EXPECT_NEAR_MATRIX(node_to_root(first_leaf(m->machdef())), Geometry::Matrix(), 0);
}

// The part frame is the machine frame moved by the slide: a tool 10 further along X is 10 further along X on
// the part.
TEST(LeafStack, MovesByTheTableSlideBeforeItTurns) {
  const auto m = build(trunnion());
  turn_axes(m->machdef(), {0, 0, math::m_pi2});
  k5axSgNode_value_set2(0, node_with_id(m->machdef(), kXId).get(), 10);
  EXPECT_NEAR_POINT(Point(1, 2, 3) * node_to_root(first_leaf(m->machdef())), Point(-2, 11, 3),
                    kHandTreeTolerance);
}

TEST(Trunnion, ToolPointLandsOnXyzTurnedByTheTable) {
  const auto m = build(trunnion());
  zero_table(m->machdef());
  ASSERT_TRUE(m->update(Point(1, 2, 3), Point(math::m_pi2, 0, math::m_pi2)));
  EXPECT_NEAR_POINT(tool_on_part(m->machdef()), Point(-67, 1, 32), kHandTreeTolerance);
}

// At rest the tool point is 500 - 100 over the origin, whatever the table does: Z = 3 - 400.
TEST(Trunnion, SlidesDoNotDependOnTheTable) {
  const auto m = build(trunnion());
  zero_table(m->machdef());
  ASSERT_TRUE(m->update(Point(1, 2, 3), Point(math::m_pi2, 0, math::m_pi2)));
  EXPECT_NEAR(node_with_id(m->machdef(), kXId)->value(), 1, kHandTreeTolerance);
  EXPECT_NEAR(node_with_id(m->machdef(), kYId)->value(), 2, kHandTreeTolerance);
  EXPECT_NEAR(node_with_id(m->machdef(), kZId)->value(), -397, kHandTreeTolerance);
}

// B = 90 takes the tool point, 330 under B's line, to 330 beside it towards -X, at the line's height of 180.
TEST(SwivelHead, SlidesMakeUpForTheHead) {
  const auto m = build(swivel_head());
  zero_table(m->machdef());
  ASSERT_TRUE(m->update(Point(10, 20, 30), Point(0, math::m_pi2, 0)));
  EXPECT_NEAR(node_with_id(m->machdef(), kXId)->value(), 10 + 330, kHandTreeTolerance);
  EXPECT_NEAR(node_with_id(m->machdef(), kYId)->value(), 20, kHandTreeTolerance);
  EXPECT_NEAR(node_with_id(m->machdef(), kZId)->value(), 30 - 180, kHandTreeTolerance);
}

// The head does not move the point: C = 90 alone takes (10, 20, 30) to (-20, 10, 30).
TEST(SwivelHead, ToolPointLandsOnXyzTurnedByTheTable) {
  const auto m = build(swivel_head());
  zero_table(m->machdef());
  ASSERT_TRUE(m->update(Point(10, 20, 30), Point(0, math::m_pi2, math::m_pi2)));
  EXPECT_NEAR_POINT(tool_on_part(m->machdef()), Point(-20, 10, 30), kHandTreeTolerance);
}

// A = 90 takes the tool point, 300 under A's line, to +Y of it (about +X, -Z goes to +Y); C = 90, which
// carries A, takes that to -X.
TEST(ForkHead, PrimaryCarriesTheSecondary) {
  const auto m = build(fork_head());
  ASSERT_TRUE(m->update(Point(10, 20, 30), Point(math::m_pi2, 0, math::m_pi2)));
  EXPECT_NEAR(node_with_id(m->machdef(), kXId)->value(), 10 + 300, kHandTreeTolerance);
  EXPECT_NEAR(node_with_id(m->machdef(), kYId)->value(), 20, kHandTreeTolerance);
  EXPECT_NEAR(node_with_id(m->machdef(), kZId)->value(), 30 - 200, kHandTreeTolerance);
}

TEST(ForkHead, ToolPointLandsOnXyz) {
  const auto m = build(fork_head());
  ASSERT_TRUE(m->update(Point(10, 20, 30), Point(math::m_pi2, 0, math::m_pi2)));
  EXPECT_NEAR_POINT(tool_on_part(m->machdef()), Point(10, 20, 30), kHandTreeTolerance);
}

// ---- against plain vectors, on machines of every kind ----

// The leaf is where a table slide would stand, so at slides 0 the stack is the table's rotation alone.
TEST(RandomMachines, LeafStackIsThePointTransformOfMach2PartCoords) {
  Random random(71);
  int turned = 0;
  for (int i = 0; i < 1000; ++i) {
    const TreePlan plan = random_plan(random);
    const auto m = build(plan);
    const Vec abc = random.angles();
    const Vec p = random.position(kRandomSize);
    turn_axes(m->machdef(), abc);

    const Point p_by_trees = vector_form::point(p) * node_to_root(first_leaf(m->machdef()));
    Point p_by_transform;
    Point d_tool;
    m->machdef().Mach2PartCoords(vector_form::point(p), vector_form::point(abc), p_by_transform, d_tool);
    const Vec p_by_vectors = vector_form::machine_to_part(plan.rotary, p, abc);

    ASSERT_NEAR_POINT(p_by_trees, p_by_transform, kTreeTolerance) << i << plan.rotary;
    ASSERT_NEAR_POINT(p_by_trees, vector_form::point(p_by_vectors), kTreeTolerance) << i << plan.rotary;
    turned += vector_form::length(p_by_vectors - p) > 1;
  }
  EXPECT_GT(turned, 300);
}

TEST(RandomMachines, ToolPointLandsOnXyzTurnedByTheTable) {
  Random random(72);
  int turned = 0;
  for (int i = 0; i < 1000; ++i) {
    const TreePlan plan = random_plan(random);
    const auto m = build(plan);
    // Two poses, so that the second finds the machine where the first has left it.
    for (int pose = 0; pose < 2; ++pose) {
      const Vec abc = random.angles();
      const Vec xyz = random.position(kRandomSize);
      zero_table(m->machdef());
      ASSERT_TRUE(m->update(vector_form::point(xyz), vector_form::point(abc))) << i << plan.rotary;

      const Vec expected = vector_form::machine_to_part(plan.rotary, xyz, abc);
      ASSERT_NEAR_POINT(tool_on_part(m->machdef()), vector_form::point(expected), kTreeTolerance)
          << i << plan.rotary;
      turned += vector_form::length(expected - xyz) > 1;
    }
  }
  EXPECT_GT(turned, 600);
}

TEST(RandomMachines, SlidesBringTheToolFromWhereTheHeadHoldsIt) {
  Random random(73);
  for (int i = 0; i < 1000; ++i) {
    const TreePlan plan = random_plan(random);
    const auto m = build(plan);
    const Vec abc = random.angles();
    const Vec xyz = random.position(kRandomSize);
    zero_table(m->machdef());
    ASSERT_TRUE(m->update(vector_form::point(xyz), vector_form::point(abc)));

    const Point slides(node_with_id(m->machdef(), kXId)->value(), node_with_id(m->machdef(), kYId)->value(),
                       node_with_id(m->machdef(), kZId)->value());
    ASSERT_NEAR_POINT(slides, vector_form::point(xyz - tool_at_rest(plan, abc)), kTreeTolerance)
        << i << plan.rotary;
  }
}

TEST(RandomMachines, ReadBackGivesWhatWasCommanded) {
  Random random(74);
  for (int i = 0; i < 1000; ++i) {
    const TreePlan plan = random_plan(random);
    const auto m = build(plan);
    const Vec abc = random.angles();
    const Vec xyz = random.position(kRandomSize);
    zero_table(m->machdef());
    ASSERT_TRUE(m->update(vector_form::point(xyz), vector_form::point(abc)));

    Point xyz_back;
    Point abc_back = vector_form::point(abc);  // a component without an axis keeps this
    md::CMachDef_SG2MachCoords(m->machdef(), xyz_back, abc_back);
    ASSERT_NEAR_POINT(xyz_back, vector_form::point(xyz), kTreeTolerance) << i << plan.rotary;
    ASSERT_EQ(abc_back, vector_form::point(abc)) << i << plan.rotary;
  }
}

}  // namespace
