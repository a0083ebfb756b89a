// Machines with both trees, put together by the rules of docs/scene-graph.md, and what must come out of them,
// worked out with plain vectors.
#ifndef K5AX_TESTS_SYSTEM_TREE_SUPPORT_H
#define K5AX_TESTS_SYSTEM_TREE_SUPPORT_H

#include <memory>
#include <vector>

#include <k5ax/kinematics.h>

#include "support/random_machine.h"
#include "support/scene_machine.h"
#include "support/vector_form.h"

namespace k5ax_test {

// Ids of the nodes of the machines below.
enum : int {
  kXId = 1,
  kYId = 2,
  kZId = 3,
  kPrimaryId = 4,
  kSecondaryId = 5,
  kToolId = 6,
  kMachineFrameId = 10,
  kPartFrameId = 11,
  kLeafId = 12
};

// A machine with trees, in words: what vector_form says of its rotary axes, and the rest of its chain.
struct TreePlan {
  vector_form::Machine rotary;
  bool slide_on_table[3] = {false, false, false};  // X, Y, Z
  vector_form::Vec nose;                           // fixed offset between the last head axis and the tool
  vector_form::Vec tool_point;
  double head_tilt = 0;  // radians
  double head_turn = 0;  // radians
  double head_length1 = 0;
  double head_length2 = 0;
};

inline NodePtr chain_of(const std::vector<NodePtr>& root_to_leaf) {
  for (std::size_t i = 1; i < root_to_leaf.size(); ++i) root_to_leaf[i - 1]->add_child(root_to_leaf[i]);
  return root_to_leaf.front();
}

inline NodePtr slide_node(int which, bool on_table) {
  static const Point directions[] = {Point(1, 0, 0), Point(0, 1, 0), Point(0, 0, 1)};
  return axis_node(kXId + which, static_cast<AXIS_TYPE>(AXIS_X + which), on_table ? TABLE : HEAD, LINEAR,
                   Point(), directions[which], kDriven);
}

// The way back and the node of a rotary axis, onto the chain; the node, or empty where there is no such axis
// there.
inline NodePtr push_rotary(std::vector<NodePtr>& chain, int id, const vector_form::Axis& axis,
                           AXIS_LOCATION location) {
  if (!axis.present || axis.location != location) return NodePtr();
  chain.push_back(shift_node(kFixedId, vector_form::point(axis.base)));
  chain.push_back(rotary_node(id, axis.letter, location, vector_form::point(axis.direction),
                              vector_form::point(axis.base)));
  return chain.back();
}

// The machine of a plan, ready to be posed, with its axes as well as its trees.
inline std::unique_ptr<SceneMachine> build(const TreePlan& plan) {
  std::vector<NodePtr> tree0 = {plain_node(kMachineFrameId)};
  for (int i = 0; i < 3; ++i)
    if (!plan.slide_on_table[i]) tree0.push_back(slide_node(i, false));
  const NodePtr head_primary = push_rotary(tree0, kPrimaryId, plan.rotary.primary, HEAD);
  const NodePtr head_secondary = push_rotary(tree0, kSecondaryId, plan.rotary.secondary, HEAD);
  tree0.push_back(shift_node(kFixedId, vector_form::point(plan.nose)));
  angled_head head = angled_head();
  head.b_angle = plan.head_tilt;
  head.c_angle = plan.head_turn;
  head.length1 = plan.head_length1;
  head.length2 = plan.head_length2;
  tree0.push_back(tool_node(kToolId, vector_form::point(plan.tool_point), head));

  std::vector<NodePtr> tree1 = {plain_node(kPartFrameId)};
  const NodePtr table_secondary = push_rotary(tree1, kSecondaryId, plan.rotary.secondary, TABLE);
  const NodePtr table_primary = push_rotary(tree1, kPrimaryId, plan.rotary.primary, TABLE);
  for (int i = 0; i < 3; ++i)
    if (plan.slide_on_table[i]) tree1.push_back(slide_node(i, true));
  tree1.push_back(plain_node(kLeafId));

  std::unique_ptr<SceneMachine> machine(new SceneMachine(chain_of(tree0), chain_of(tree1),
                                                         head_primary ? head_primary : table_primary,
                                                         head_secondary ? head_secondary : table_secondary));
  machine->machdef().setMachType(plan.rotary.type);
  machine->machdef().setPrimary(make_axis(plan.rotary.primary));
  machine->machdef().setSecondary(make_axis(plan.rotary.secondary));
  return machine;
}

// Any of the three types, with one rotary axis missing now and then, skew lines anywhere, slides on either
// side, and a straight or an angled head.
inline TreePlan random_plan(Random& random) {
  static const AXIS_LOCATION locations[3][2] = {{TABLE, TABLE}, {TABLE, HEAD}, {HEAD, HEAD}};
  TreePlan plan;
  const int type = random.below(3);
  plan.rotary.type = static_cast<MACHINE_TYPE>(type);
  vector_form::Axis* const axes[] = {&plan.rotary.primary, &plan.rotary.secondary};
  const int first_letter = random.below(3);
  for (int i = 0; i < 2; ++i) {
    axes[i]->present = !random.one_in(8);
    axes[i]->letter = static_cast<AXIS_TYPE>((first_letter + i) % 3);
    axes[i]->location = locations[type][i];
    axes[i]->base = random.position(kRandomSize);
    axes[i]->direction = random.machine_direction();
  }
  for (bool& on_table : plan.slide_on_table) on_table = random.one_in(2);
  plan.nose = random.position(kRandomSize);
  plan.tool_point = random.position(kRandomSize);
  if (random.one_in(2)) {
    plan.head_tilt = random.angle();
    plan.head_turn = random.angle();
    plan.head_length1 = random.between(0, kRandomSize);
    plan.head_length2 = random.between(0, kRandomSize);
  }
  return plan;
}

// Where the tool point is in machine coordinates with the slides at 0: out of the angled head, off the nose,
// and turned about the head's own lines, the secondary's first, since the primary carries it.
inline vector_form::Vec tool_at_rest(const TreePlan& plan, const vector_form::Vec& abc) {
  using vector_form::Vec;
  const Vec lower = vector_form::turned(Vec{0, 0, -plan.head_length2}, {0, 1, 0}, plan.head_tilt);
  const Vec head = vector_form::turned(lower + Vec{0, 0, -plan.head_length1}, {0, 0, 1}, plan.head_turn);
  Vec p = head - plan.tool_point + plan.nose;
  for (const vector_form::Axis& axis : {plan.rotary.secondary, plan.rotary.primary})
    if (vector_form::on_head(axis))
      p = vector_form::turned_about_line(p, axis, vector_form::angle_of(axis, abc));
  return p;
}

// The product of a node's stack.
inline Geometry::Matrix node_to_root(const NodePtr& node) {
  std::vector<Geometry::Matrix> stack;
  md::sg::node::transform_stack(node, stack);
  Geometry::Matrix product;
  for (const Geometry::Matrix& m : stack) product *= m;
  return product;
}

// The leaf that is reached by always taking the first child.
inline NodePtr first_leaf(const md::CMachDef& machdef) {
  NodePtr node = machdef.SG()[1];
  while (!node->child_list().empty()) node = node->child_list().front();
  return node;
}

// The tool point, carried through both trees.
inline Point tool_on_part(md::CMachDef& machdef) {
  return Point() * node_to_root(machdef.tool_node()) * node_to_root(first_leaf(machdef));
}

// What a host does before each update.
inline void zero_table(md::CMachDef& machdef) {
  for (const NodePtr& rotary : machdef.SG_RotAxs()) {
    const auto* axis = md::sg::axis_node(rotary.get());
    if (axis != nullptr && axis->GetAxisLocation() == TABLE)
      k5axSgNode_value_set2(machdef.flags(), rotary.get(), 0);
  }
}

// Sets every rotary node to its angle out of `abc`, and every slide to 0, without an update.
inline void turn_axes(md::CMachDef& machdef, const vector_form::Vec& abc) {
  for (const NodePtr& root : machdef.SG()) {
    for (const NodePtr& node : md::sg::node::all_nodes(root)) {
      const auto* axis = md::sg::axis_node(node.get());
      if (axis != nullptr)
        k5axSgNode_value_set2(0, node.get(),
                              axis->mode() == ROTARY ? axis->GetAngle(abc.x, abc.y, abc.z) : 0);
    }
  }
}

// The first node of that id in tree 0, then in tree 1; empty when there is none.
inline NodePtr node_with_id(const md::CMachDef& machdef, int id) {
  for (const NodePtr& root : machdef.SG())
    for (const NodePtr& node : md::sg::node::all_nodes(root))
      if (node->id() == id) return node;
  return NodePtr();
}

// Lengths of random machines add up to some 300 * sqrt(3) * 8 = 4200 along both trees, in at most 12 products
// of 3 terms: 12 * 4 * eps * 4200 = 4.5e-11.
constexpr double kTreeTolerance = 4.5e-11;

}  // namespace k5ax_test

#endif
