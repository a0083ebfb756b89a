// The four machines of examples/machines: that they keep the rules, and that what follows from these holds on
// them.
#include <map>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "support/near.h"
#include "system/tree_support.h"

namespace {

using namespace k5ax_test;
using vector_form::Vec;

struct Shipped {
  const char* name;
  MACHINE_TYPE type;
  bool is_metric;
  bool has_angled_head;
  AXIS_TYPE primary;
  AXIS_TYPE secondary;
};

void PrintTo(const Shipped& shipped, std::ostream* out) { *out << shipped.name; }

vector_form::Axis vector_axis(const boost::shared_ptr<md::CAxis2>& axis) {
  return {true, axis->GetAxis(), axis->GetAxisLocation(), vector_form::vec(axis->GetBaseVector()),
          vector_form::vec(axis->GetAxisVector())};
}

// Lengths within 1700 millimetres along both trees, in at most 12 products of 3 terms: 12 * 4 * eps * 1700 =
// 1.9e-11.
constexpr double kShippedTolerance = 1.9e-11;

class ShippedMachine : public testing::TestWithParam<Shipped> {
 protected:
  void SetUp() override {
    const std::string path = std::string(K5AX_EXAMPLES_FOLDER) + "/machines/" + GetParam().name + ".k5m";
    ASSERT_EQ(MachdefLoad(&machdef, path.c_str()), 1) << path;
    ASSERT_TRUE(machdef.getPrimary() && machdef.getSecondary() && machdef.SG()[0] && machdef.SG()[1] &&
                machdef.tool_node());
    rotary.type = machdef.getMachType();
    rotary.primary = vector_axis(machdef.getPrimary());
    rotary.secondary = vector_axis(machdef.getSecondary());
    rotary.tool_dir = vector_form::vec(machdef.getToolDir());
  }

  // Angles within the travels, and a position around the work zero.
  Vec angles(Random& random) const {
    Vec abc;
    for (const auto& axis : {machdef.getPrimary(), machdef.getSecondary()}) {
      const double value = random.between(axis->GetMin(), axis->GetMax());
      axis->SetValue(value, abc.x, abc.y, abc.z);
    }
    return abc;
  }
  Vec position(Random& random) const {
    return vector_form::vec(machdef.mwZeroPos()) + random.vector(machdef.isMetric() ? 200 : 8);
  }

  std::vector<NodePtr> nodes() const {
    std::vector<NodePtr> all = md::sg::node::all_nodes(machdef.SG()[0]);
    const std::vector<NodePtr> more = md::sg::node::all_nodes(machdef.SG()[1]);
    all.insert(all.end(), more.begin(), more.end());
    return all;
  }

  md::CMachDef machdef;
  vector_form::Machine rotary;
};

// ---- what they are ----

TEST_P(ShippedMachine, IsOfTheKindThatItsNameSays) {
  EXPECT_EQ(machdef.getMachType(), GetParam().type);
  EXPECT_EQ(machdef.isMetric(), GetParam().is_metric);
  EXPECT_EQ(k5ax_is_angled_head(&machdef.head()), GetParam().has_angled_head ? 1 : 0);
  EXPECT_EQ(machdef.getPrimary()->GetAxis(), GetParam().primary);
  EXPECT_EQ(machdef.getSecondary()->GetAxis(), GetParam().secondary);
}

TEST_P(ShippedMachine, IsValidAndHasRoomToTurn) {
  EXPECT_TRUE(machdef.is_valid());
  EXPECT_TRUE(machdef.mw_valid());
}

// ---- the rules ----

TEST_P(ShippedMachine, HasAxisNodesThatAreItsAxes) {
  std::map<AXIS_TYPE, boost::shared_ptr<md::CAxis2>> axes;
  for (const auto& axis : machdef.xyz_axes()) axes[axis->GetAxis()] = axis;
  for (const auto& axis : {machdef.getPrimary(), machdef.getSecondary()}) axes[axis->GetAxis()] = axis;
  ASSERT_EQ(axes.size(), 5u);

  int axis_nodes = 0;
  for (const NodePtr& node : nodes()) {
    const auto* in_tree = md::sg::axis_node(node.get());
    if (in_tree == nullptr) continue;
    ++axis_nodes;
    ASSERT_EQ(axes.count(in_tree->GetAxis()), 1u);
    const md::CAxis2& axis = *axes[in_tree->GetAxis()];
    EXPECT_EQ(in_tree->GetAxisLocation(), axis.GetAxisLocation());
    EXPECT_EQ(in_tree->mode(), axis.mode());
    EXPECT_EQ(in_tree->GetBaseVector(), axis.GetBaseVector());
    EXPECT_EQ(in_tree->GetAxisVector(), axis.GetAxisVector());
    EXPECT_EQ(in_tree->GetMin(), axis.GetMin());
    EXPECT_EQ(in_tree->GetMax(), axis.GetMax());
  }
  EXPECT_EQ(axis_nodes, 5);
}

TEST_P(ShippedMachine, HasHeadAxesInTreeZeroAndTableAxesInTreeOne) {
  const AXIS_LOCATION locations[] = {HEAD, TABLE};
  int seen = 0;
  for (std::size_t tree = 0; tree < 2; ++tree) {
    for (const NodePtr& node : md::sg::node::all_nodes(machdef.SG()[tree])) {
      const auto* axis = md::sg::axis_node(node.get());
      if (axis == nullptr) continue;
      ++seen;
      EXPECT_EQ(axis->GetAxisLocation(), locations[tree]) << AXIS_TYPE2String(axis->GetAxis());
    }
  }
  EXPECT_EQ(seen, 5);
}

TEST_P(ShippedMachine, HasPositiveIdsOfTheirOwnOnTheAxes) {
  std::set<int> ids;
  for (const NodePtr& node : nodes()) {
    if (md::sg::axis_node(node.get()) == nullptr) continue;
    EXPECT_GT(node->id(), 0);
    EXPECT_TRUE(ids.insert(node->id()).second) << node->id();
  }
  EXPECT_EQ(ids.size(), 5u);
}

TEST_P(ShippedMachine, HasDrivenAxesAndNoWinnerAmongParallelOnes) {
  int seen = 0;
  for (const NodePtr& node : nodes()) {
    if (md::sg::axis_node(node.get()) == nullptr) continue;
    ++seen;
    EXPECT_EQ(node->flags(), 1u) << node->id();
  }
  EXPECT_EQ(seen, 5);
}

TEST_P(ShippedMachine, HasEveryOffsetInAPlainNodeOfTheReservedId) {
  int seen = 0;
  for (const NodePtr& node : nodes()) {
    if (md::sg::axis_node(node.get()) != nullptr || md::sg::tool_node(node.get()) != nullptr) continue;
    ++seen;
    if (node->id() == kFixedId) continue;
    EXPECT_NEAR_MATRIX(node->transform(), Geometry::Matrix(), 0) << node->id();
  }
  EXPECT_GE(seen, 3);
}

TEST_P(ShippedMachine, HasTheWayBackOfEachRotaryAxisInItsParent) {
  for (const NodePtr& node : machdef.SG_RotAxs()) {
    const auto* axis = md::sg::axis_node(node.get());
    ASSERT_NE(axis, nullptr);
    ASSERT_TRUE(node->parent());
    EXPECT_EQ(node->parent()->id(), kFixedId);
    EXPECT_NEAR_MATRIX(node->parent()->transform(), Geometry::Translate(axis->GetBaseVector()), 0);
  }
}

TEST_P(ShippedMachine, HasTheTwoRotaryAxesAsItsRotaryNodes) {
  EXPECT_EQ(md::sg::axis_node(machdef.SG_RotAxs()[0].get())->GetAxis(), GetParam().primary);
  EXPECT_EQ(md::sg::axis_node(machdef.SG_RotAxs()[1].get())->GetAxis(), GetParam().secondary);
}

TEST_P(ShippedMachine, StandsWithEveryAxisAtZeroInTheFile) {
  for (const NodePtr& node : nodes()) {
    if (md::sg::axis_node(node.get()) == nullptr) continue;
    EXPECT_EQ(node->value(), 0) << node->id();
  }
  EXPECT_NEAR_MATRIX(node_to_root(first_leaf(machdef)), Geometry::Matrix(), 0);
}

// The tool node's place and the machine's own head must tell the same story.
TEST_P(ShippedMachine, HasItsHeadInTheToolNode) {
  const angled_head& in_tree = machdef.tool_node()->payload();
  const angled_head& head = machdef.head();
  EXPECT_EQ(in_tree.b_angle, head.b_angle);
  EXPECT_EQ(in_tree.c_angle, head.c_angle);
  EXPECT_EQ(in_tree.length1, head.length1);
  EXPECT_EQ(in_tree.length2, head.length2);
  EXPECT_EQ(in_tree.tool_dir, head.tool_dir);
  EXPECT_FALSE(in_tree.offset == Point());  // the tool has a length
}

// ---- what follows ----

TEST_P(ShippedMachine, LeafStackIsThePointTransformOfMach2PartCoords) {
  Random random(91);
  for (int i = 0; i < 300; ++i) {
    const Vec abc = angles(random);
    const Vec p = position(random);
    turn_axes(machdef, abc);

    const Point p_by_trees = vector_form::point(p) * node_to_root(first_leaf(machdef));
    Point p_by_transform;
    Point d_tool;
    machdef.Mach2PartCoords(vector_form::point(p), vector_form::point(abc), p_by_transform, d_tool);
    ASSERT_NEAR_POINT(p_by_trees, p_by_transform, kShippedTolerance) << i;
    ASSERT_NEAR_POINT(p_by_trees, vector_form::point(vector_form::machine_to_part(rotary, p, abc)),
                      kShippedTolerance)
        << i;
  }
}

TEST_P(ShippedMachine, ToolPointLandsOnXyzTurnedByTheTable) {
  Random random(92);
  for (int i = 0; i < 300; ++i) {
    const Vec abc = angles(random);
    const Vec xyz = position(random);
    zero_table(machdef);
    ASSERT_TRUE(md::UpdateNodeAxes_(&machdef, vector_form::point(xyz), vector_form::point(abc))) << i;
    ASSERT_NEAR_POINT(tool_on_part(machdef),
                      vector_form::point(vector_form::machine_to_part(rotary, xyz, abc)), kShippedTolerance)
        << i;
  }
}

TEST_P(ShippedMachine, ReadBackGivesWhatWasCommanded) {
  Random random(93);
  for (int i = 0; i < 300; ++i) {
    const Vec abc = angles(random);
    const Vec xyz = position(random);
    zero_table(machdef);
    ASSERT_TRUE(md::UpdateNodeAxes_(&machdef, vector_form::point(xyz), vector_form::point(abc))) << i;

    Point xyz_back;
    Point abc_back;
    md::CMachDef_SG2MachCoords(machdef, xyz_back, abc_back);
    ASSERT_NEAR_POINT(xyz_back, vector_form::point(xyz), kShippedTolerance) << i;
    ASSERT_EQ(abc_back, vector_form::point(abc)) << i;
  }
}

// The direction is turned as the points are: out of the head by the secondary and then the primary, into the
// part by the primary and then the secondary.
TEST_P(ShippedMachine, ToolDirectionTurnsThroughBothTrees) {
  Random random(94);
  for (int i = 0; i < 300; ++i) {
    const Vec abc = angles(random);
    turn_axes(machdef, abc);
    const Point d_by_trees =
        node_to_root(first_leaf(machdef))
            .TransformDirection(node_to_root(machdef.tool_node()).TransformDirection(CUtility::pt_z));

    Vec d = rotary.tool_dir;
    const auto turn = [&](const vector_form::Axis& axis, bool turns) {
      if (turns) d = vector_form::turned_direction(d, axis, vector_form::angle_of(axis, abc));
    };
    turn(rotary.secondary, vector_form::on_head(rotary.secondary));
    turn(rotary.primary, vector_form::on_head(rotary.primary));
    turn(rotary.primary, vector_form::on_table(rotary.primary));
    turn(rotary.secondary, vector_form::on_table(rotary.secondary));
    // A unit vector through 10 products: 10 * 4 * eps = 9e-15.
    ASSERT_NEAR_POINT(d_by_trees, vector_form::point(d), 9e-15) << i;
  }
}

// Where the table turns the part by one axis at most, that is the direction of Mach2PartCoords too. With two
// table axes it is not, since that turns a direction by the secondary first.
TEST_P(ShippedMachine, ToolDirectionIsThatOfMach2PartCoordsUnlessBothAxesAreOnTheTable) {
  Random random(95);
  double largest = 0;
  for (int i = 0; i < 300; ++i) {
    const Vec abc = angles(random);
    turn_axes(machdef, abc);
    const Point d_by_trees =
        node_to_root(first_leaf(machdef))
            .TransformDirection(node_to_root(machdef.tool_node()).TransformDirection(CUtility::pt_z));
    Point p;
    Point d_by_transform;
    machdef.Mach2PartCoords(Point(), vector_form::point(abc), p, d_by_transform);
    largest = std::max(largest, vector_form::length(vector_form::vec(d_by_trees - d_by_transform)));
  }
  if (GetParam().type == MC_TT) {
    EXPECT_GT(largest, 0.5);
  } else {
    EXPECT_LE(largest, 9e-15 * 2);  // as above, three components
  }
}

TEST_P(ShippedMachine, IsReadyAgainAfterInitialiseZeroPoseAndToolPoint) {
  Random random(96);
  const Point tool_point = machdef.tool_node()->offset;
  for (const NodePtr& root : machdef.SG()) k5axSgNode_initialise(root.get(), 1);
  zero_table(machdef);
  CMachDef_ToolNode_matrix_Set(&machdef, tool_point);

  const Vec abc = angles(random);
  const Vec xyz = position(random);
  ASSERT_TRUE(md::UpdateNodeAxes_(&machdef, vector_form::point(xyz), vector_form::point(abc)));
  EXPECT_NEAR_POINT(tool_on_part(machdef), vector_form::point(vector_form::machine_to_part(rotary, xyz, abc)),
                    kShippedTolerance);
}

INSTANTIATE_TEST_SUITE_P(Examples, ShippedMachine,
                         testing::Values(Shipped{"table_table_trunnion", MC_TT, true, false, AXIS_A, AXIS_C},
                                         Shipped{"head_table_swivel", MC_HT, true, false, AXIS_C, AXIS_B},
                                         Shipped{"head_head_fork", MC_HH, true, false, AXIS_C, AXIS_A},
                                         Shipped{"head_table_inch", MC_HT, false, true, AXIS_C, AXIS_A}),
                         [](const auto& shown) { return std::string(shown.param.name); });

}  // namespace
