// The same machine as a scene graph written without a thought for cost: shared pointers go by value, kinds
// are asked by dynamic casts, every call builds its lists and maps, and everything is a product of 4x4
// matrices. It stands here to show what k5ax leaves out.
#ifndef K5AX_BENCHMARKS_NAIVE_SCENE_H
#define K5AX_BENCHMARKS_NAIVE_SCENE_H

#include <array>
#include <map>
#include <memory>
#include <vector>

#include "machines.h"

namespace bench {
namespace naive {

// Rows are the images of X, Y, Z and of the origin, each with its fourth coordinate.
using Matrix4 = std::array<std::array<double, 4>, 4>;

struct Axis {
  AXIS_TYPE letter;
  AXIS_LOCATION location;
  AXIS_MODE mode;
  Point p_base;
  Point u_direction;
};

class Node : public std::enable_shared_from_this<Node> {
 public:
  virtual ~Node() = default;
  virtual std::shared_ptr<Node> copy() const;

  std::vector<std::shared_ptr<Node>> children;
  std::weak_ptr<Node> parent;
  Matrix4 node_to_parent;
  int id = 0;
  unsigned int flags = 0;
};

class AxisNode : public Node {
 public:
  std::shared_ptr<Node> copy() const override;

  std::shared_ptr<Axis> axis;
  double value = 0;
};

class ToolNode : public Node {
 public:
  std::shared_ptr<Node> copy() const override;
};

struct State {
  unsigned int flags;
  double value;
};

class Scene {
 public:
  // A copy of a k5ax machine's axes and trees, as they stand.
  explicit Scene(const md::CMachDef& machine);
  Scene(const Scene& other);
  Scene& operator=(const Scene&) = delete;

  Point part_to_mach(const Position& position) const;

  // What the update does on a machine with one slide for each of X, Y and Z. False where the target is out of
  // reach.
  bool update(const Position& position);
  // Every rotary node of the table to its angle 0.
  void zero_table();
  // X, Y, Z, A, B, C.
  std::array<double, 6> read_back() const;

  std::map<int, State> states() const;
  void set_states(std::map<int, State> states);

  // What the axis of this letter stands at.
  double value_of(AXIS_TYPE letter) const;

 private:
  std::array<std::shared_ptr<Node>, 2> m_roots;
  std::map<AXIS_TYPE, std::shared_ptr<Axis>> m_rotary_axes;
};

}  // namespace naive
}  // namespace bench

#endif
