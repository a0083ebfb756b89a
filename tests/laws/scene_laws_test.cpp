// Laws of the posed trees.
#include <k5ax/kinematics.h>

#include <cmath>
#include <map>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "laws/generators.h"
#include "laws/ulps.h"
#include "support/near.h"

namespace {

using k5ax_test::NodePtr;
using k5ax_test::Point;
using laws::require_near;
using vector_form::point;
using vector_form::vec;
using vector_form::Vec;

// Both trees together have fifteen nodes of vectors below 520 at most, so lengths stay below 1e4; each node
// is a product of three terms, and the solve adds the sums of two differences: 15 * 10 roundings, twice.
constexpr double kLongest = 1e4;
constexpr double kCarried = 300;

// Transforms and values of every node of both trees.
std::vector<double> pose_of(const md::CMachDef& machdef) {
  std::vector<double> all;
  for (const auto& root : machdef.SG()) {
    for (const NodePtr& n : md::sg::node::all_nodes(root)) {
      all.push_back(n->value());
      for (const double component : k5ax_test::components(n->transform())) all.push_back(component);
    }
  }
  return all;
}

void zero_table(md::CMachDef& machdef) {
  for (const NodePtr& rotary : machdef.SG_RotAxs())
    if (md::sg::axis_node(rotary.get())->GetAxisLocation() == TABLE)
      k5axSgNode_value_set2(machdef.flags(), rotary.get(), 0);
}

bool pose(md::CMachDef& machdef, const Vec& xyz, const Vec& abc) {
  zero_table(machdef);
  return md::UpdateNodeAxes_(&machdef, point(xyz), point(abc));
}

Point carried(const NodePtr& from, Point p) {
  std::vector<Geometry::Matrix> stack;
  md::sg::node::transform_stack(from, stack);
  for (const Geometry::Matrix& node_to_parent : stack) p = p * node_to_parent;
  return p;
}

RC_GTEST_PROP(SceneLaws, StatesThatWereTakenBringThePoseBackToTheBit, ()) {
  const auto whole = *laws::whole_machine();
  md::CMachDef& machdef = whole->machdef();
  RC_ASSERT(pose(machdef, *laws::position(k5ax_test::kRandomSize), *laws::angles()));
  const std::vector<double> before = pose_of(machdef);
  const std::map<int, node_state> states = md::CMachDef_IdAxisState_get(machdef);
  RC_ASSERT(states.size() == 5u);

  // Away from that pose, by another one or by taking every transform away; the tool is no axis.
  if (*rc::gen::arbitrary<bool>()) {
    RC_ASSERT(pose(machdef, *laws::position(k5ax_test::kRandomSize), *laws::angles()));
  } else {
    const Point tool_point = machdef.tool_node()->offset;
    for (const auto& root : machdef.SG()) k5axSgNode_initialise(root.get(), 1);
    CMachDef_ToolNode_matrix_Set(&machdef, tool_point);
  }
  md::CMachDef_IdAxisState_set(machdef, states);
  RC_ASSERT(pose_of(machdef) == before);
}

RC_GTEST_PROP(SceneLaws, ThePoseDoesNotDependOnThePoseBefore, ()) {
  const auto whole = *laws::whole_machine();
  md::CMachDef& machdef = whole->machdef();
  const Vec xyz = *laws::position(k5ax_test::kRandomSize);
  const Vec abc = *laws::angles();
  RC_ASSERT(pose(machdef, xyz, abc));
  const std::vector<double> at_once = pose_of(machdef);
  RC_ASSERT(pose(machdef, *laws::position(k5ax_test::kRandomSize), *laws::angles()));
  RC_ASSERT(pose(machdef, xyz, abc));
  RC_ASSERT(pose_of(machdef) == at_once);
}

RC_GTEST_PROP(SceneLaws, WhatIsReadBackIsWhatWasCommanded, ()) {
  const auto whole = *laws::whole_machine();
  md::CMachDef& machdef = whole->machdef();
  const Vec xyz = *laws::position(k5ax_test::kRandomSize);
  const Vec abc = *laws::angles();
  RC_ASSERT(pose(machdef, xyz, abc));
  Point xyz_back;
  Point abc_back = point(abc);
  md::CMachDef_SG2MachCoords(machdef, xyz_back, abc_back);
  require_near(vec(xyz_back), xyz, kCarried, kLongest);
  RC_ASSERT(abc_back == point(abc));
}

RC_GTEST_PROP(SceneLaws, TheToolPointLandsOnThePartWhereTheTransformsSay, ()) {
  const auto whole = *laws::whole_machine();
  md::CMachDef& machdef = whole->machdef();
  const Vec xyz = *laws::position(k5ax_test::kRandomSize);
  const Vec abc = *laws::angles();
  RC_ASSERT(pose(machdef, xyz, abc));

  Point p_part;
  Point d_tool_part;
  machdef.Mach2PartCoords(point(xyz), point(abc), p_part, d_tool_part);
  const Point p_mach = carried(machdef.tool_node(), Point());
  require_near(vec(carried(whole->scene.nodes[1].back(), p_mach)), vec(p_part), kCarried, kLongest);
}

}  // namespace
