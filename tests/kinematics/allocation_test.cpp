// What runs once per position neither allocates nor copies a shared pointer.
#include <k5ax/kinematics.h>

#include <unistd.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "memory_stream.h"
#include "support/scene_machine.h"
#include "watched_memory.h"

namespace {

using k5ax_test::allocations;
using k5ax_test::axis_node;
using k5ax_test::chain;
using k5ax_test::CountsOnOwnPages;
using k5ax_test::kDriven;
using k5ax_test::kDrivenAndMarked;
using k5ax_test::kFixedId;
using k5ax_test::kX;
using k5ax_test::kY;
using k5ax_test::kZ;
using k5ax_test::linear_node;
using k5ax_test::NodePtr;
using k5ax_test::plain_node;
using k5ax_test::Point;
using k5ax_test::rotary_axis;
using k5ax_test::rotary_node;
using k5ax_test::shift_node;
using k5ax_test::tool_node;

// A head-table machine: axes for the transforms, and trees of at least `nodes` nodes. What fills them up is
// plain nodes, linear axes that are not driven, and others that are, in branches and on the tool's way.
void fill(md::CMachDef& machdef, int nodes) {
  machdef.setMachType(MC_HT);
  machdef.setPrimary(rotary_axis(AXIS_C, TABLE, kZ, Point(20, 0, 0)));
  machdef.setSecondary(rotary_axis(AXIS_B, HEAD, kY, Point(0, 0, 100)));

  const NodePtr x = linear_node(1, AXIS_X, kX, kDrivenAndMarked);
  const NodePtr z = linear_node(3, AXIS_Z, kZ);
  const NodePtr b = rotary_node(4, AXIS_B, HEAD, kY, Point(0, 0, 100));
  const NodePtr c = rotary_node(5, AXIS_C, TABLE, kZ, Point(20, 0, 0));
  const NodePtr tool = tool_node(6, Point(1, 2, 3));
  const NodePtr part = plain_node(0);
  const NodePtr y = linear_node(2, AXIS_Y, kY);

  NodePtr on_the_way = chain({x, z, shift_node(kFixedId, Point(0, 0, 100)), b});
  on_the_way = b;
  chain({part, shift_node(kFixedId, Point(20, 0, 0)), c, y});
  for (int made = 10; made < nodes; ++made) {
    NodePtr n;
    switch (made % 4) {
      case 0:
        n = plain_node(made, Geometry::Translate(Point(0.001, 0, 0)));
        break;
      case 1:
        n = linear_node(made, AXIS_Y, kY, 0, 0.002);
        break;
      case 2:
        n = linear_node(made, AXIS_Z, kX, 0, 0.003);
        break;
      default:
        n = axis_node(made, AXIS_DUMMY, HEAD, LINEAR, Point(), kX, kDriven, 0.004);
        break;
    }
    if (made % 3 == 0) {
      part->add_child(n);
    } else {
      on_the_way->add_child(n);
      if (made % 3 == 1) on_the_way = n;
    }
  }
  on_the_way->add_child(tool);

  machdef.SG()[0] = x;
  machdef.SG()[1] = part;
  machdef.SG_RotAxs()[0] = c;
  machdef.SG_RotAxs()[1] = b;
  machdef.tool_node(boost::dynamic_pointer_cast<md::sg::tnode<angled_head>>(tool));
}

std::unique_ptr<md::CMachDef> loaded(int nodes) {
  md::CMachDef source;
  fill(source, nodes);
  // The lists that saving writes are made by cloning.
  md::CMachDef listed;
  listed.clone(source, 3);
  std::unique_ptr<md::CMachDef> machdef(new md::CMachDef);
  k5ax_test::save_and_load(listed, *machdef);
  return machdef;
}

std::unique_ptr<md::CMachDef> cloned(int nodes) {
  md::CMachDef source;
  fill(source, nodes);
  std::unique_ptr<md::CMachDef> machdef(new md::CMachDef);
  machdef->clone(source, 3);
  return machdef;
}

constexpr int kFew = 20;  // so few that no room is made for them
constexpr int kSmall = 40;
constexpr int kLarge = 1000;

struct Work {
  const char* name;
  void (*run)(md::CMachDef& machdef, double t);
};

std::ostream& operator<<(std::ostream& out, const Work& work) { return out << work.name; }

Point xyz(double t) { return Point(10 + t, 20 - t, 30 + 2 * t); }
Point abc(double t) { return Point(0.1 + t, 0.2 - t, 0.3 + 2 * t); }

const Work kWork[] = {
    {"Part2MachCoords", [](md::CMachDef& m, double t) { m.Part2MachCoords(xyz(t), abc(t)); }},
    {"Part2MachTransform", [](md::CMachDef& m, double t) { m.Part2MachTransform(abc(t)); }},
    {"Mach2PartCoords",
     [](md::CMachDef& m, double t) {
       Point p_part;
       Point d_tool_part;
       m.Mach2PartCoords(xyz(t), abc(t), p_part, d_tool_part);
     }},
    {"Mach2PartTransform", [](md::CMachDef& m, double t) { m.Mach2PartTransform(xyz(t), abc(t)); }},
    {"Mach2PartTransformPerAxis",
     [](md::CMachDef& m, double t) {
       Geometry::Matrix primary;
       Geometry::Matrix secondary;
       m.Mach2PartTransform(xyz(t), abc(t), primary, secondary);
     }},
    {"Tool2CtrlPt",
     [](md::CMachDef& m, double t) {
       Point ctrl;
       m.Tool2CtrlPt(ctrl, xyz(t));
     }},
    {"IsToolAxial", [](md::CMachDef& m, double t) { m.IsToolAxial(t, t, t); }},
    {"IsToolRadial", [](md::CMachDef& m, double t) { m.IsToolRadial(t, t, t); }},
    {"UpdateNodeAxes", [](md::CMachDef& m, double t) { md::UpdateNodeAxes_(&m, xyz(t), abc(t)); }},
    {"UpdateNodeAxes2", [](md::CMachDef& m, double t) { UpdateNodeAxes_2(&m, t, t, t, t, t, t); }},
    {"MachCoords2SG", [](md::CMachDef& m, double t) { md::CMachDef_MachCoords2SG(m, xyz(t), abc(t)); }},
    {"MachCoords2SGFlat",
     [](md::CMachDef& m, double t) {
       const double v[] = {t, t, t, t, t, t};
       k5axCMachDef_MachCoords2SG(&m, v);
     }},
    {"SG2MachCoords",
     [](md::CMachDef& m, double) {
       Point xyz_back;
       Point abc_back;
       md::CMachDef_SG2MachCoords(m, xyz_back, abc_back);
     }},
    {"SG2MachCoordsFlat",
     [](md::CMachDef& m, double) {
       double v[6];
       k5axCMachDef_SG2MachCoords(&m, v);
     }},
};

class PerPosition : public testing::TestWithParam<Work> {
 protected:
  // From the first call on: nothing may be put off until then either.
  static std::size_t allocations_of(const Work& work, md::CMachDef& machdef) {
    const std::size_t before = allocations();
    for (int i = 0; i < 20; ++i) work.run(machdef, 0.01 * i);
    return allocations() - before;
  }
};

TEST_P(PerPosition, AllocatesNothingOnASmallMachine) {
  const auto machdef = cloned(kSmall);
  EXPECT_EQ(allocations_of(GetParam(), *machdef), 0u);
}

TEST_P(PerPosition, AllocatesNothingOnAMachineOfFewNodes) {
  const auto machdef = cloned(kFew);
  EXPECT_EQ(allocations_of(GetParam(), *machdef), 0u);
}

TEST_P(PerPosition, AllocatesNothingOnALargeMachine) {
  const auto machdef = cloned(kLarge);
  EXPECT_EQ(allocations_of(GetParam(), *machdef), 0u);
}

TEST_P(PerPosition, AllocatesNothingAfterLoading) {
  const auto machdef = loaded(kSmall);
  EXPECT_EQ(allocations_of(GetParam(), *machdef), 0u);
  const auto large = loaded(kLarge);
  EXPECT_EQ(allocations_of(GetParam(), *large), 0u);
}

TEST_P(PerPosition, AllocatesNothingOnAMachineWithoutAxesAndTrees) {
  md::CMachDef machdef;
  machdef.setMachType(MC_TT);
  EXPECT_EQ(allocations_of(GetParam(), machdef), 0u);
}

TEST_P(PerPosition, AllocatesNothingWhenThePlaceIsNotReached) {
  const auto machdef = cloned(kSmall);
  for (const NodePtr& n : md::sg::node::all_nodes(machdef->SG()[0]))
    if (n->id() == 3) n->flags(0);
  ASSERT_FALSE(md::UpdateNodeAxes_(machdef.get(), xyz(0), abc(0)));
  EXPECT_EQ(allocations_of(GetParam(), *machdef), 0u);
}

TEST_P(PerPosition, LeavesEveryReferenceCountAsItWas) {
  const auto machdef = cloned(kSmall);
  std::vector<NodePtr> nodes = md::sg::node::all_nodes(machdef->SG()[0]);
  const std::vector<NodePtr> more = md::sg::node::all_nodes(machdef->SG()[1]);
  nodes.insert(nodes.end(), more.begin(), more.end());
  const boost::shared_ptr<md::CAxis2> primary = machdef->getPrimary();
  std::vector<long> before;
  for (const NodePtr& n : nodes) before.push_back(n.use_count());
  const long before_primary = primary.use_count();

  GetParam().run(*machdef, 0.5);
  for (std::size_t i = 0; i < nodes.size(); ++i) EXPECT_EQ(nodes[i].use_count(), before[i]) << i;
  EXPECT_EQ(primary.use_count(), before_primary);
}

// Not even for a moment: with the counts on read-only pages the work must still come to its end.
class PerPositionDeathTest : public PerPosition {};

TEST_P(PerPositionDeathTest, CopiesNoSharedPointer) {
  const auto run_with_fixed_counts = [](int nodes) {
    std::unique_ptr<md::CMachDef> machdef;
    const std::size_t used_before = CountsOnOwnPages::used();
    {
      CountsOnOwnPages own_pages;
      // The pools may hold nodes with counts elsewhere: held here, they are out of the way.
      std::vector<NodePtr> parked;
      for (int i = 0; i < 3 * kLarge; ++i) {
        parked.push_back(md::sg::node::create());
        parked.push_back(md::NodeAxis_Create());
        parked.push_back(md::TOOL_NODE_Create());
      }
      std::vector<boost::shared_ptr<md::CAxis2>> parked_axes;
      for (int i = 0; i < 100; ++i) parked_axes.push_back(md::CAxis2::create());
      machdef = cloned(nodes);
      if (CountsOnOwnPages::used() - used_before < static_cast<std::size_t>(nodes)) _exit(3);
      CountsOnOwnPages::make_read_only();
      for (int i = 0; i < 20; ++i) GetParam().run(*machdef, 0.01 * i);
      _exit(0);
    }
  };
  EXPECT_EXIT(run_with_fixed_counts(kSmall), testing::ExitedWithCode(0), "");
  EXPECT_EXIT(run_with_fixed_counts(kLarge), testing::ExitedWithCode(0), "");
}

INSTANTIATE_TEST_SUITE_P(Each, PerPosition, testing::ValuesIn(kWork), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Each, PerPositionDeathTest, testing::ValuesIn(kWork),
                         testing::PrintToStringParamName());

// The watch itself: it sees what it is there to see.
TEST(WatchedMemory, CountsTheLibrarysAllocations) {
  const auto machdef = cloned(kSmall);
  const std::size_t before = allocations();
  Point out_point;
  Point out_rotary;
  double radius = 0;
  // Works on a clone of the machine.
  md::Cartesian2AxialRotaryVals(machdef.get(), xyz(0), abc(0), 0, 1, out_point, out_rotary, radius);
  EXPECT_GT(allocations(), before);
}

TEST(WatchedMemoryDeathTest, NoticesACopyOfAPointerToAnAxis) {
  const auto copy_with_fixed_counts = [] {
    CountsOnOwnPages own_pages;
    std::vector<boost::shared_ptr<md::CAxis2>> parked_axes;
    for (int i = 0; i < 100; ++i) parked_axes.push_back(md::CAxis2::create());
    const auto machdef = cloned(kSmall);
    CountsOnOwnPages::make_read_only();
    const boost::shared_ptr<md::CAxis2> copy = machdef->getPrimary();
    _exit(0);
  };
  EXPECT_EXIT(
      copy_with_fixed_counts(), [](int status) { return status != 0; }, "");
}

TEST(WatchedMemoryDeathTest, NoticesALookAtTheParentThroughAPointerOfItsOwn) {
  const auto look_with_fixed_counts = [] {
    CountsOnOwnPages own_pages;
    std::vector<NodePtr> parked;
    for (int i = 0; i < 3 * kLarge; ++i) {
      parked.push_back(md::sg::node::create());
      parked.push_back(md::NodeAxis_Create());
    }
    const auto machdef = cloned(kSmall);
    const md::sg::node* const child = machdef->SG()[0]->child_list().front().get();
    CountsOnOwnPages::make_read_only();
    child->parent();
    _exit(0);
  };
  EXPECT_EXIT(
      look_with_fixed_counts(), [](int status) { return status != 0; }, "");
}

}  // namespace
