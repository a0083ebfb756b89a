// The posing of a scene graph in a second formulation: every node is a turn about a line and a shift, points
// are carried through them one by one, and no matrix is formed.
#ifndef K5AX_TESTS_SUPPORT_SCENE_FORM_H
#define K5AX_TESTS_SUPPORT_SCENE_FORM_H

#include <cmath>
#include <cstddef>
#include <map>
#include <ostream>
#include <set>
#include <utility>
#include <vector>

#include "support/vector_form.h"

namespace vector_form {

enum class Kind { plain, axis, tool };

struct Node {
  Kind kind = Kind::plain;
  int id = 0;
  unsigned int flags = 0;
  int parent = -1;  // place in the same tree; a parent stands before its children

  // Of an axis node.
  AXIS_TYPE letter = AXIS_TYPE_INVALID_LOWEST;
  AXIS_LOCATION location = AXIS_LOCATION_INVALID_LOWEST;
  AXIS_MODE mode = AXIS_MODE_INVALID_LOWEST;
  Vec base;
  Vec direction;
  double value = 0;

  // Of a plain node: a turn about a line through the origin, then a shift.
  Vec turn_axis{0, 0, 1};
  double turn = 0;
  Vec shift;

  // Of a tool node.
  double tilt = 0;
  double swivel = 0;
  double length1 = 0;
  double length2 = 0;
  Vec tool_point;
};

// Where a place within the trees is: the tree and the place in it; none when the tree is -1.
struct Place {
  int tree = -1;
  std::size_t node = 0;
};

// Trees as lists in the order of the walk, which is depth first, and a node before its children.
struct Scene {
  std::vector<Node> trees[2];
  Place rotaries[2];  // primary, secondary
  Place tool;

  Node& at(const Place& place) { return trees[place.tree][place.node]; }
  const Node& at(const Place& place) const { return trees[place.tree][place.node]; }
};

inline Vec turned_by_node(const Node& n, const Vec& d) {
  switch (n.kind) {
    case Kind::axis:
      return n.mode == ROTARY ? turned(d, n.direction, n.value) : d;
    case Kind::tool:
      return turned(turned(d, {0, 1, 0}, n.tilt), {0, 0, 1}, n.swivel);
    default:
      return turned(d, n.turn_axis, n.turn);
  }
}

inline Vec carried_by_node(const Node& n, const Vec& p) {
  switch (n.kind) {
    case Kind::axis:
      if (n.mode == LINEAR) return p + n.direction * n.value;
      return n.mode == ROTARY ? turned(p - n.base, n.direction, n.value) : p;
    case Kind::tool: {
      const Vec at_joint = turned(p - Vec{0, 0, n.length2}, {0, 1, 0}, n.tilt);
      return turned(at_joint - Vec{0, 0, n.length1}, {0, 0, 1}, n.swivel) - n.tool_point;
    }
    default:
      return turned(p, n.turn_axis, n.turn) + n.shift;
  }
}

inline Vec carried_to_root(const Scene& scene, const Place& from, Vec p) {
  if (from.tree < 0) return p;
  const std::vector<Node>& tree = scene.trees[from.tree];
  for (int i = static_cast<int>(from.node); i >= 0; i = tree[static_cast<std::size_t>(i)].parent)
    p = carried_by_node(tree[static_cast<std::size_t>(i)], p);
  return p;
}

inline Vec turned_to_root(const Scene& scene, const Place& from, Vec d) {
  const std::vector<Node>& tree = scene.trees[from.tree];
  for (int i = static_cast<int>(from.node); i >= 0; i = tree[static_cast<std::size_t>(i)].parent)
    d = turned_by_node(tree[static_cast<std::size_t>(i)], d);
  return d;
}

// The first node of the tree without children.
inline Place first_leaf(const Scene& scene, int tree) {
  std::set<int> parents;
  for (const Node& n : scene.trees[tree]) parents.insert(n.parent);
  for (std::size_t i = 0; i < scene.trees[tree].size(); ++i)
    if (parents.count(static_cast<int>(i)) == 0) return {tree, i};
  return Place();
}

// The coordinate that belongs to the letter of an axis node; none for a letter that is none.
inline bool coordinate(AXIS_TYPE letter, const Vec& xyz, const Vec& abc, double& value) {
  const double all[] = {abc.x, abc.y, abc.z, xyz.x, xyz.y, xyz.z};
  if (letter < AXIS_A || letter > AXIS_Z) return false;
  value = all[letter];
  return true;
}

// The tool point, as the trees stand now, carried through both.
inline Vec tool_point(const Scene& scene) {
  return carried_to_root(scene, first_leaf(scene, 1), carried_to_root(scene, scene.tool, Vec()));
}

inline void set_rotaries(Scene& scene, AXIS_LOCATION location, const Vec& xyz, const Vec& abc) {
  for (const Place& place : scene.rotaries) {
    if (place.tree < 0 || scene.at(place).kind != Kind::axis) continue;
    Node& n = scene.at(place);
    if (n.location == location) coordinate(n.letter, xyz, abc, n.value);
  }
}

// What a solve started from.
struct Measured {
  Vec tool_point;
  double z_slope = 0;            // the sine of the angle between Z and the X-Y plane; 0 without a driven Z
  bool cannot_change_z = false;  // two perpendicular Z nodes, so the special solve was used
  bool has_pair = false;         // two driven linear axes were parallel
};

// Poses the scene for machine coordinates; see md::UpdateNodeAxes_ for the rules that this says in other
// words. On request also tells what was measured on the way.
inline bool pose(Scene& scene, const Vec& xyz, const Vec& abc, Measured* measured = nullptr) {
  set_rotaries(scene, HEAD, xyz, abc);

  std::vector<Place> axes;
  for (int tree = 0; tree < 2; ++tree)
    for (std::size_t i = 0; i < scene.trees[tree].size(); ++i)
      if (scene.trees[tree][i].kind == Kind::axis) axes.push_back({tree, i});
  if (scene.trees[0].empty() && scene.trees[1].empty()) return true;

  std::set<int> driven_ids;
  std::map<int, Place> driven;  // by letter; of two nodes of a letter the last
  std::vector<Place> z_nodes;
  for (const Place& place : axes) {
    const Node& n = scene.at(place);
    if ((n.flags & 1u) != 0) driven_ids.insert(n.id);
    if ((n.flags & 1u) != 0 && n.mode == LINEAR) driven[n.letter] = place;
    if (n.letter == AXIS_Z) z_nodes.insert((n.flags & 2u) != 0 ? z_nodes.begin() : z_nodes.end(), place);
  }

  // X, Y, Z as 0, 1, 2.
  Vec directions[3];
  bool marked[3] = {};
  Place last;
  for (int i = 0; i < 3; ++i) {
    if (driven.count(AXIS_X + i) == 0) continue;
    last = driven[AXIS_X + i];
    directions[i] = turned_to_root(scene, last, scene.at(last).direction);
    marked[i] = (scene.at(last).flags & 2u) != 0;
  }

  bool cannot_change_z = false;
  if ((marked[0] || marked[1] || marked[2]) && z_nodes.size() >= 2) {
    const Vec direction = scene.at(last).direction;
    const double cosine =
        dot(turned_to_root(scene, z_nodes[0], direction), turned_to_root(scene, z_nodes[1], direction));
    cannot_change_z = std::abs(cosine) <= 0.001;
  }

  bool active[3] = {true, true, true};
  bool has_pair = false;
  for (int i = 0; i < 3; ++i) {
    for (int j = i + 1; j < 3 && active[i] && active[j]; ++j) {
      if (std::abs(std::abs(dot(directions[i], directions[j])) - 1) > 0.001) continue;
      has_pair = true;
      active[i] = marked[i];
      active[j] = marked[j];
      const int dropped = AXIS_X + (active[i] ? j : i);
      if (driven.count(dropped) == 0) continue;
      driven_ids.erase(scene.at(driven[dropped]).id);
      driven.erase(dropped);
    }
  }

  for (const Place& place : axes) {
    Node& n = scene.at(place);
    if (n.mode == LINEAR && driven_ids.count(n.id) != 0) n.value = 0;
  }

  const Vec p = tool_point(scene);
  if (measured != nullptr) {
    measured->tool_point = p;
    measured->cannot_change_z = cannot_change_z;
    measured->has_pair = has_pair;
    measured->z_slope = length(directions[2]) > 0 ? directions[2].z / length(directions[2]) : 0;
  }
  double values[3] = {};
  bool reached = true;
  if (!cannot_change_z) {
    const Vec d = directions[2];
    if (std::abs(d.z) > 1e-9 * length(d)) {
      // Along d by `ways` times its length to the height of the target.
      const double ways = (xyz.z - p.z) / d.z;
      values[0] = xyz.x - p.x - ways * d.x;
      values[1] = xyz.y - p.y - ways * d.y;
      values[2] = ways * dot(d, d);
    } else if (std::abs(xyz.z - p.z) <= 1e-6) {
      values[0] = xyz.x - p.x;
      values[1] = xyz.y - p.y;
    } else {
      reached = false;
    }
  } else if (std::abs(xyz.z - p.z) > 0.001) {
    reached = false;
  } else if (has_pair) {
    // The signed distance from the tool point to the plane through the target across the axis.
    for (int i = 0; i < 3; ++i)
      if (active[i] && length(directions[i]) > 0)
        values[i] = dot(xyz - p, directions[i]) / length(directions[i]);
  }

  if (reached)
    for (int i = 0; i < 3; ++i)
      if (driven.count(AXIS_X + i) != 0) scene.at(driven[AXIS_X + i]).value = values[i];

  set_rotaries(scene, TABLE, xyz, abc);
  return reached;
}

// Machine coordinates out of the trees as they stand: those of abc that no rotary axis has stay as they are.
inline void read_back(const Scene& scene, Vec& xyz, Vec& abc) {
  xyz = carried_to_root(scene, scene.tool, Vec());
  const Place leaf = first_leaf(scene, 1);
  const std::vector<Node>& tree = scene.trees[1];
  for (int i = leaf.tree < 0 ? -1 : static_cast<int>(leaf.node); i >= 0;
       i = tree[static_cast<std::size_t>(i)].parent) {
    const Node& n = tree[static_cast<std::size_t>(i)];
    const bool counts = n.kind == Kind::axis ? n.mode == LINEAR : n.id >= 1;
    if (counts) xyz = carried_by_node(n, xyz);
  }

  for (const Place& place : scene.rotaries) {
    if (place.tree < 0 || scene.at(place).kind != Kind::axis) continue;
    const Node& n = scene.at(place);
    if (n.letter == AXIS_A) abc.x = n.value;
    if (n.letter == AXIS_B) abc.y = n.value;
    if (n.letter == AXIS_C) abc.z = n.value;
  }
}

inline std::ostream& operator<<(std::ostream& out, const Scene& scene) {
  const std::streamsize digits = out.precision(17);
  for (int tree = 0; tree < 2; ++tree) {
    out << "\ntree " << tree;
    for (const Node& n : scene.trees[tree]) {
      out << "\n  under " << n.parent << " id " << n.id << " flags " << n.flags;
      if (n.kind == Kind::axis)
        out << " axis " << AXIS_TYPE2String(n.letter) << ' ' << AXIS_MODE2String(n.mode) << ' '
            << AXIS_LOCATION2String(n.location) << " base " << n.base << " direction " << n.direction
            << " value " << n.value;
      else if (n.kind == Kind::tool)
        out << " tool tilt " << n.tilt << " swivel " << n.swivel << " lengths " << n.length1 << ", "
            << n.length2 << " point " << n.tool_point;
      else
        out << " plain turn " << n.turn << " about " << n.turn_axis << " shift " << n.shift;
    }
  }
  for (const Place& place : scene.rotaries) out << "\nrotary in tree " << place.tree << " at " << place.node;
  out << "\ntool in tree " << scene.tool.tree << " at " << scene.tool.node;
  out.precision(digits);
  return out;
}

}  // namespace vector_form

#endif
