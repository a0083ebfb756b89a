// Random scene graphs: well-formed machines of all three types, and trees that are merely trees. Both as the
// second formulation sees them and as the library does.
#ifndef K5AX_TESTS_SUPPORT_RANDOM_SCENE_H
#define K5AX_TESTS_SUPPORT_RANDOM_SCENE_H

#include <cstddef>
#include <memory>
#include <vector>

#include "support/random_machine.h"
#include "support/scene_form.h"
#include "support/scene_machine.h"

namespace k5ax_test {

inline NodePtr make_node(const vector_form::Node& n) {
  if (n.kind == vector_form::Kind::axis)
    return axis_node(n.id, n.letter, n.location, n.mode, vector_form::point(n.base),
                     vector_form::point(n.direction), n.flags, n.value);

  NodePtr made;
  if (n.kind == vector_form::Kind::tool) {
    angled_head head{};
    head.b_angle = n.tilt;
    head.c_angle = n.swivel;
    head.length1 = n.length1;
    head.length2 = n.length2;
    made = tool_node(n.id, vector_form::point(n.tool_point), head);
  } else {
    made = plain_node(n.id, Geometry::RotateAboutAxis(vector_form::point(n.turn_axis), n.turn) *
                                Geometry::Translate(vector_form::point(n.shift)));
  }
  made->flags(n.flags);
  return made;
}

// The library's machine for a scene. `nodes[t][i]` is the node that stands at place i of tree t.
struct BuiltScene {
  std::unique_ptr<SceneMachine> machine;
  std::vector<NodePtr> nodes[2];

  md::CMachDef& machdef() const { return machine->machdef(); }
};

inline BuiltScene build(const vector_form::Scene& scene) {
  std::vector<NodePtr> originals[2];
  for (int tree = 0; tree < 2; ++tree) {
    for (const vector_form::Node& n : scene.trees[tree]) {
      originals[tree].push_back(make_node(n));
      if (n.parent >= 0)
        originals[tree][static_cast<std::size_t>(n.parent)]->add_child(originals[tree].back());
    }
  }
  const auto original_at = [&originals](const vector_form::Place& place) {
    return place.tree < 0 ? NodePtr() : originals[place.tree][place.node];
  };
  const auto root = [&originals](int tree) {
    return originals[tree].empty() ? NodePtr() : originals[tree].front();
  };

  BuiltScene built;
  built.machine.reset(
      new SceneMachine(root(0), root(1), original_at(scene.rotaries[0]), original_at(scene.rotaries[1])));
  built.machdef().tool_node(
      boost::dynamic_pointer_cast<md::sg::tnode<angled_head>>(built.machine->twin(original_at(scene.tool))));
  for (int tree = 0; tree < 2; ++tree)
    built.nodes[tree] = md::sg::node::all_nodes(built.machdef().SG()[static_cast<std::size_t>(tree)]);
  return built;
}

// Hangs nodes one under another, from the root down.
class ChainWriter {
 public:
  explicit ChainWriter(std::vector<vector_form::Node>& tree) : m_tree(tree) {}

  // The place of the node.
  std::size_t add(vector_form::Node n) {
    n.parent = static_cast<int>(m_tree.size()) - 1;
    m_tree.push_back(n);
    return m_tree.size() - 1;
  }

 private:
  std::vector<vector_form::Node>& m_tree;
};

inline vector_form::Node shift_form(int id, const vector_form::Vec& shift) {
  vector_form::Node n;
  n.id = id;
  n.shift = shift;
  return n;
}

// A machine with two rotary axes, and the trees that show it: tree 0 from the machine frame down to the tool,
// tree 1 from the part to the machine frame, after every rotary axis a fixed node that takes its base point
// back.
struct SceneOfMachine {
  vector_form::Machine machine;
  vector_form::Scene scene;
};

inline SceneOfMachine random_machine_scene(Random& random) {
  using vector_form::Node;
  using vector_form::Vec;

  SceneOfMachine result;
  vector_form::Machine& m = result.machine;
  static const MACHINE_TYPE types[] = {MC_TT, MC_HT, MC_HH};
  m.type = random.of(types);
  const int letter = random.below(3);
  vector_form::Axis* const axes[] = {&m.primary, &m.secondary};
  for (int i = 0; i < 2; ++i) {
    axes[i]->present = true;
    axes[i]->letter = static_cast<AXIS_TYPE>((letter + i * (1 + random.below(2))) % 3);
    axes[i]->base = random.position(kRandomSize);
    axes[i]->direction = random.machine_direction();
  }
  m.primary.location = m.type == MC_HH ? HEAD : TABLE;
  m.secondary.location = m.type == MC_TT ? TABLE : HEAD;

  int next_id = 1;
  const auto rotary = [&next_id](const vector_form::Axis& axis) {
    Node n;
    n.kind = vector_form::Kind::axis;
    n.id = next_id++;
    n.letter = axis.letter;
    n.location = axis.location;
    n.mode = ROTARY;
    n.base = axis.base;
    n.direction = axis.direction;
    return n;
  };
  const auto linear = [&](int i) {
    Node n;
    n.kind = vector_form::Kind::axis;
    n.id = next_id++;
    n.flags = kDriven | (random.one_in(3) ? kMarked : 0);
    n.letter = static_cast<AXIS_TYPE>(AXIS_X + i);
    n.mode = LINEAR;
    n.location = HEAD;
    n.direction = i == 0 ? Vec{1, 0, 0} : i == 1 ? Vec{0, 1, 0} : Vec{0, 0, 1};
    // Z may lean: the solve makes up for it with X and Y.
    if (i == 2 && random.one_in(3))
      n.direction = vector_form::safe_unit(Vec{random.between(-1, 1), random.between(-1, 1), 1.5});
    n.value = random.between(-kRandomSize, kRandomSize);
    return n;
  };

  // The linear axes in random order, each on either side.
  int order[] = {0, 1, 2};
  for (int i = 2; i > 0; --i) std::swap(order[i], order[random.below(i + 1)]);
  std::vector<int> on_head;
  std::vector<int> on_table;
  for (const int i : order) (random.one_in(2) ? on_head : on_table).push_back(i);

  vector_form::Scene& scene = result.scene;
  ChainWriter head(scene.trees[0]);
  head.add(shift_form(kFixedId, random.position(kRandomSize)));
  for (const int i : on_head) head.add(linear(i));
  for (int i = 0; i < 2; ++i) {
    if (axes[i]->location != HEAD) continue;
    head.add(shift_form(kFixedId, axes[i]->base));
    scene.rotaries[i] = {0, head.add(rotary(*axes[i]))};
  }
  head.add(shift_form(kFixedId, random.position(kRandomSize)));
  Node tool;
  tool.kind = vector_form::Kind::tool;
  tool.id = next_id++;
  tool.tilt = random.angle();
  tool.swivel = random.angle();
  tool.length1 = random.between(0, kRandomSize);
  tool.length2 = random.between(0, kRandomSize);
  tool.tool_point = random.position(kRandomSize);
  scene.tool = {0, head.add(tool)};

  // Seen from the machine frame the primary comes first, so the secondary stands nearer to the root.
  ChainWriter table(scene.trees[1]);
  table.add(shift_form(0, Vec()));
  for (int i = 1; i >= 0; --i) {
    if (axes[i]->location != TABLE) continue;
    table.add(shift_form(kFixedId, axes[i]->base));
    scene.rotaries[i] = {1, table.add(rotary(*axes[i]))};
  }
  for (const int i : on_table) table.add(linear(i));
  return result;
}

// Any trees: branches, ids that are shared or reserved, linear axes of any letter, doubled or missing,
// parallel or skew, marked or not, axes of no mode, rotary slots that hold anything.
inline vector_form::Scene random_scene(Random& random) {
  using vector_form::Kind;
  using vector_form::Node;
  using vector_form::Place;
  using vector_form::Vec;

  static const Vec along[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  vector_form::Scene scene;
  std::vector<Place> rotaries;
  std::vector<Place> all;
  for (int tree = 0; tree < 2; ++tree) {
    const int count = tree == 0 ? 2 + random.below(12) : random.below(9);
    std::vector<int> path;  // from the root to the node made last: what comes next hangs under one of these
    for (int i = 0; i < count; ++i) {
      Node n;
      // Mostly chains.
      if (i > 0 && random.one_in(4))
        path.resize(1 + static_cast<std::size_t>(random.below(static_cast<int>(path.size()))));
      n.parent = path.empty() ? -1 : path.back();
      n.id = random.one_in(4) ? random.below(4) : random.one_in(6) ? kFixedId : 10 * (tree + 1) + i;
      n.flags = static_cast<unsigned int>(random.below(4)) | (random.one_in(2) ? kDriven : 0);
      switch (random.below(7)) {
        case 0:
          n.shift = random.position(kRandomSize);
          if (random.one_in(2)) break;
          n.turn_axis = random.machine_direction();
          n.turn = random.one_in(2) ? math::m_pi2 : random.angle();
          break;
        case 1:
          n.kind = Kind::tool;
          n.tilt = random.angle();
          n.swivel = random.angle();
          n.length1 = random.between(0, kRandomSize);
          n.length2 = random.between(0, kRandomSize);
          n.tool_point = random.position(kRandomSize);
          if (scene.tool.tree < 0) scene.tool = {tree, static_cast<std::size_t>(i)};
          break;
        case 2: {
          const vector_form::Axis axis = random_axis(random);
          n.kind = Kind::axis;
          n.mode = ROTARY;
          n.letter = axis.letter;
          n.location = axis.location;
          n.base = axis.base;
          n.direction = axis.direction;
          n.value = random.angle();
          rotaries.push_back({tree, static_cast<std::size_t>(i)});
          break;
        }
        default: {
          const int letter = random.below(3);
          n.kind = Kind::axis;
          n.mode = random.one_in(15) ? AXIS_MODE_INVALID_LOWEST : LINEAR;
          n.letter = random.one_in(15) ? static_cast<AXIS_TYPE>(random.below(9) - 1)
                                       : static_cast<AXIS_TYPE>(AXIS_X + letter);
          n.location = random.one_in(2) ? HEAD : TABLE;
          n.direction = random.one_in(4) ? random.machine_direction() : along[letter];
          n.value = random.between(-kRandomSize, kRandomSize);
          break;
        }
      }
      all.push_back({tree, static_cast<std::size_t>(i)});
      path.push_back(i);
      scene.trees[tree].push_back(n);
    }
  }

  for (Place& slot : scene.rotaries) {
    const std::vector<Place>& from = random.one_in(10) ? all : rotaries;
    if (!from.empty() && !random.one_in(6))
      slot = from[static_cast<std::size_t>(random.below(static_cast<int>(from.size())))];
  }
  return scene;
}

}  // namespace k5ax_test

#endif
