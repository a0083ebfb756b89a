// A scene graph written without a thought for cost.
#include "naive_scene.h"

#include <cmath>

namespace bench {
namespace naive {

namespace {

using Nodes = std::vector<std::shared_ptr<Node>>;

Matrix4 identity() { return {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}}; }

Matrix4 translation(Point by) {
  Matrix4 m = identity();
  m[3] = {by.x, by.y, by.z, 1};
  return m;
}

// The rotation that Rodrigues' formula makes of the three unit directions.
Matrix4 rotation(Point v, double angle) {
  Matrix4 m = identity();
  const Point images[] = {turned_direction(CUtility::pt_x, v, std::sin(angle), std::cos(angle)),
                          turned_direction(CUtility::pt_y, v, std::sin(angle), std::cos(angle)),
                          turned_direction(CUtility::pt_z, v, std::sin(angle), std::cos(angle))};
  for (std::size_t row = 0; row < 3; ++row) m[row] = {images[row].x, images[row].y, images[row].z, 0};
  return m;
}

Matrix4 product(Matrix4 first, Matrix4 next) {
  Matrix4 m{};
  for (std::size_t row = 0; row < 4; ++row)
    for (std::size_t column = 0; column < 4; ++column)
      for (std::size_t k = 0; k < 4; ++k) m[row][column] += first[row][k] * next[k][column];
  return m;
}

Point carried(Point p, Matrix4 m) {
  return Point(p.x * m[0][0] + p.y * m[1][0] + p.z * m[2][0] + m[3][0],
               p.x * m[0][1] + p.y * m[1][1] + p.z * m[2][1] + m[3][1],
               p.x * m[0][2] + p.y * m[1][2] + p.z * m[2][2] + m[3][2]);
}

Point carried_direction(Point d, Matrix4 m) { return carried(d, m) - carried(Point(), m); }

Nodes all_nodes(std::shared_ptr<Node> node) {
  Nodes all = {node};
  for (std::shared_ptr<Node> child : node->children)
    for (std::shared_ptr<Node> below : all_nodes(child)) all.push_back(below);
  return all;
}

Nodes all_nodes(std::array<std::shared_ptr<Node>, 2> roots) {
  Nodes all = all_nodes(roots[0]);
  for (std::shared_ptr<Node> node : all_nodes(roots[1])) all.push_back(node);
  return all;
}

std::shared_ptr<Node> first_leaf(std::shared_ptr<Node> root) {
  for (std::shared_ptr<Node> node : all_nodes(root))
    if (node->children.empty()) return node;
  return nullptr;
}

std::shared_ptr<Node> find_tool(std::shared_ptr<Node> root) {
  for (std::shared_ptr<Node> node : all_nodes(root))
    if (std::dynamic_pointer_cast<ToolNode>(node)) return node;
  return nullptr;
}

Matrix4 node_to_root(std::shared_ptr<Node> node) {
  std::vector<Matrix4> stack;
  for (std::shared_ptr<Node> n = node; n; n = n->parent.lock()) stack.push_back(n->node_to_parent);
  Matrix4 m = identity();
  for (Matrix4 transform : stack) m = product(m, transform);
  return m;
}

Matrix4 axis_transform(std::shared_ptr<Axis> axis, double value) {
  if (axis->mode == LINEAR) return translation(axis->u_direction * value);
  return product(translation(-axis->p_base), rotation(axis->u_direction, value));
}

void set_value(std::shared_ptr<AxisNode> node, double value) {
  node->node_to_parent = axis_transform(node->axis, value);
  node->value = value;
}

std::map<AXIS_TYPE, double> values_by_letter(Position position) {
  return {{AXIS_X, position.xyz.x}, {AXIS_Y, position.xyz.y}, {AXIS_Z, position.xyz.z},
          {AXIS_A, position.abc.x}, {AXIS_B, position.abc.y}, {AXIS_C, position.abc.z}};
}

std::shared_ptr<Axis> copy_axis(const md::CAxis2& axis) {
  return std::make_shared<Axis>(
      Axis{axis.GetAxis(), axis.GetAxisLocation(), axis.mode(), axis.GetBaseVector(), axis.GetAxisVector()});
}

Matrix4 copy_matrix(const Geometry::Matrix& matrix) {
  Matrix4 m = identity();
  matrix.GetMatrix(m[0][0], m[0][1], m[0][2], m[1][0], m[1][1], m[1][2], m[2][0], m[2][1], m[2][2], m[3][0],
                   m[3][1], m[3][2]);
  return m;
}

std::shared_ptr<Node> copy_tree(md::sg::node* n) {
  std::shared_ptr<Node> node;
  if (const md::sg::tnode<md::CAxis2>* const axis = md::sg::axis_node(n)) {
    const std::shared_ptr<AxisNode> axis_node = std::make_shared<AxisNode>();
    axis_node->axis = copy_axis(*axis);
    axis_node->value = n->value();
    node = axis_node;
  } else if (md::sg::tool_node(n) != nullptr) {
    node = std::make_shared<ToolNode>();
  } else {
    node = std::make_shared<Node>();
  }
  node->node_to_parent = copy_matrix(n->transform());
  node->id = n->id();
  node->flags = n->flags();
  for (const boost::shared_ptr<md::sg::node>& child : n->child_list()) {
    node->children.push_back(copy_tree(child.get()));
    node->children.back()->parent = node;
  }
  return node;
}

std::shared_ptr<Node> copy_tree(std::shared_ptr<Node> n) {
  std::shared_ptr<Node> node = n->copy();
  for (std::shared_ptr<Node> child : n->children) {
    node->children.push_back(copy_tree(child));
    node->children.back()->parent = node;
  }
  return node;
}

template <class Kind>
std::shared_ptr<Kind> copy_without_links(const Kind& from) {
  std::shared_ptr<Kind> node = std::make_shared<Kind>();
  node->node_to_parent = from.node_to_parent;
  node->id = from.id;
  node->flags = from.flags;
  return node;
}

}  // namespace

std::shared_ptr<Node> Node::copy() const { return copy_without_links(*this); }

std::shared_ptr<Node> ToolNode::copy() const { return copy_without_links(*this); }

std::shared_ptr<Node> AxisNode::copy() const {
  std::shared_ptr<AxisNode> node = copy_without_links(*this);
  node->axis = std::make_shared<Axis>(*axis);
  node->value = value;
  return node;
}

Scene::Scene(const md::CMachDef& machine)
    : m_roots{copy_tree(machine.SG()[0].get()), copy_tree(machine.SG()[1].get())} {
  for (const boost::shared_ptr<md::CAxis2>& axis : {machine.getPrimary(), machine.getSecondary()})
    m_rotary_axes[axis->GetAxis()] = copy_axis(*axis);
}

Scene::Scene(const Scene& other) : m_roots{copy_tree(other.m_roots[0]), copy_tree(other.m_roots[1])} {
  for (std::pair<AXIS_TYPE, std::shared_ptr<Axis>> axis : other.m_rotary_axes)
    m_rotary_axes[axis.first] = std::make_shared<Axis>(*axis.second);
}

Point Scene::part_to_mach(const Position& position) const {
  std::map<AXIS_TYPE, double> values = values_by_letter(position);
  std::map<AXIS_TYPE, std::shared_ptr<Axis>> axes = m_rotary_axes;
  Matrix4 part_to_mach = identity();
  for (AXIS_TYPE letter : {AXIS_C, AXIS_A}) {
    std::shared_ptr<Axis> axis = axes[letter];
    part_to_mach = product(part_to_mach, translation(-axis->p_base));
    part_to_mach = product(part_to_mach, rotation(axis->u_direction, -values[letter]));
    part_to_mach = product(part_to_mach, translation(axis->p_base));
  }
  return carried(position.xyz, part_to_mach);
}

bool Scene::update(const Position& position) {
  std::map<AXIS_TYPE, double> values = values_by_letter(position);
  std::map<int, std::shared_ptr<AxisNode>> driven_by_id;
  std::map<AXIS_TYPE, std::shared_ptr<AxisNode>> by_letter;
  for (std::shared_ptr<Node> node : all_nodes(m_roots))
    if (std::shared_ptr<AxisNode> axis_node = std::dynamic_pointer_cast<AxisNode>(node))
      if ((axis_node->flags & 1) != 0) {
        driven_by_id[axis_node->id] = axis_node;
        by_letter[axis_node->axis->letter] = axis_node;
      }

  for (std::pair<AXIS_TYPE, std::shared_ptr<AxisNode>> found : by_letter)
    if (found.second->axis->mode == ROTARY && found.second->axis->location == HEAD)
      set_value(found.second, values[found.first]);

  std::map<AXIS_TYPE, Point> d_world;
  for (AXIS_TYPE letter : {AXIS_X, AXIS_Y, AXIS_Z})
    d_world[letter] =
        carried_direction(by_letter[letter]->axis->u_direction, node_to_root(by_letter[letter]));

  // With the table as the last position left it, X may run along Y: of two parallel slides one stays where it
  // is.
  std::map<AXIS_TYPE, bool> active = {{AXIS_X, true}, {AXIS_Y, true}, {AXIS_Z, true}};
  for (std::pair<AXIS_TYPE, Point> first : d_world)
    for (std::pair<AXIS_TYPE, Point> second : d_world) {
      if (second.first <= first.first) continue;
      if (!active[first.first] || !active[second.first]) break;
      if (std::abs(std::abs(math::dot(first.second, second.second)) - 1) > 0.001) continue;
      active[first.first] = (by_letter[first.first]->flags & 2) != 0;
      active[second.first] = (by_letter[second.first]->flags & 2) != 0;
      AXIS_TYPE dropped = active[first.first] ? second.first : first.first;
      driven_by_id.erase(by_letter[dropped]->id);
      by_letter.erase(dropped);
    }

  for (std::shared_ptr<Node> node : all_nodes(m_roots))
    if (std::shared_ptr<AxisNode> axis_node = std::dynamic_pointer_cast<AxisNode>(node))
      if (axis_node->axis->mode == LINEAR && driven_by_id.count(axis_node->id) != 0) set_value(axis_node, 0);

  // The line from the tool point p along Z's direction d meets the target's height at p + t d.
  const Point p =
      carried(carried(Point(), node_to_root(find_tool(m_roots[0]))), node_to_root(first_leaf(m_roots[1])));
  const Point d = d_world[AXIS_Z];
  if (std::abs(d.z) <= 1e-9) return false;
  const Point along = d * ((position.xyz.z - p.z) / d.z);
  const Point met = p + along;
  std::map<AXIS_TYPE, double> solved = {
      {AXIS_X, position.xyz.x - met.x}, {AXIS_Y, position.xyz.y - met.y}, {AXIS_Z, math::dot(d, along)}};
  for (std::pair<AXIS_TYPE, double> value : solved)
    if (by_letter.count(value.first) != 0) set_value(by_letter[value.first], value.second);

  for (std::pair<AXIS_TYPE, std::shared_ptr<AxisNode>> found : by_letter)
    if (found.second->axis->mode == ROTARY && found.second->axis->location == TABLE)
      set_value(found.second, values[found.first]);
  return true;
}

void Scene::zero_table() {
  for (std::shared_ptr<Node> node : all_nodes(m_roots))
    if (std::shared_ptr<AxisNode> axis_node = std::dynamic_pointer_cast<AxisNode>(node))
      if (axis_node->axis->mode == ROTARY && axis_node->axis->location == TABLE) set_value(axis_node, 0);
}

std::array<double, 6> Scene::read_back() const {
  Point p = carried(Point(), node_to_root(find_tool(m_roots[0])));
  std::vector<Matrix4> stack;
  for (std::shared_ptr<Node> n = first_leaf(m_roots[1]); n; n = n->parent.lock()) {
    std::shared_ptr<AxisNode> axis_node = std::dynamic_pointer_cast<AxisNode>(n);
    if (axis_node ? axis_node->axis->mode == LINEAR : n->id >= 1) stack.push_back(n->node_to_parent);
  }
  Matrix4 m = identity();
  for (Matrix4 transform : stack) m = product(m, transform);
  p = carried(p, m);

  std::map<AXIS_TYPE, double> angles;
  for (std::shared_ptr<Node> node : all_nodes(m_roots))
    if (std::shared_ptr<AxisNode> axis_node = std::dynamic_pointer_cast<AxisNode>(node))
      if (axis_node->axis->mode == ROTARY) angles[axis_node->axis->letter] = axis_node->value;
  return {p.x, p.y, p.z, angles[AXIS_A], angles[AXIS_B], angles[AXIS_C]};
}

std::map<int, State> Scene::states() const {
  std::map<int, State> states;
  for (std::shared_ptr<Node> node : all_nodes(m_roots))
    if (std::shared_ptr<AxisNode> axis_node = std::dynamic_pointer_cast<AxisNode>(node))
      states[axis_node->id] = {axis_node->flags, axis_node->value};
  return states;
}

void Scene::set_states(std::map<int, State> states) {
  for (std::shared_ptr<Node> node : all_nodes(m_roots))
    if (std::shared_ptr<AxisNode> axis_node = std::dynamic_pointer_cast<AxisNode>(node))
      if (states.count(axis_node->id) != 0) {
        axis_node->flags = states[axis_node->id].flags;
        set_value(axis_node, states[axis_node->id].value);
      }
}

double Scene::value_of(AXIS_TYPE letter) const {
  for (std::shared_ptr<Node> node : all_nodes(m_roots))
    if (std::shared_ptr<AxisNode> axis_node = std::dynamic_pointer_cast<AxisNode>(node))
      if (axis_node->axis->letter == letter) return axis_node->value;
  return 0;
}

}  // namespace naive
}  // namespace bench
