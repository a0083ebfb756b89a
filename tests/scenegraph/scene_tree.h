// What the tests of this folder build with: clean nodes, a host's own kind of node that keeps a log of its
// calls, deep and wide trees.
#ifndef K5AX_TESTS_SCENEGRAPH_SCENE_TREE_H
#define K5AX_TESTS_SCENEGRAPH_SCENE_TREE_H

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <boost/shared_ptr.hpp>
#include <boost/weak_ptr.hpp>

#include <k5ax/scenegraph.h>

#include "scenegraph/small_stack.h"
#include "support/near.h"
#include "support/pools.h"

namespace k5ax_test {

using Geometry::Matrix;
using Geometry::TPoint;
using NodePtr = boost::shared_ptr<md::sg::node>;
using AxisNodePtr = boost::shared_ptr<md::sg::tnode<md::CAxis2>>;
using ToolNodePtr = boost::shared_ptr<md::sg::tnode<angled_head>>;

// A node with this id and nothing else, wherever it came from.
inline NodePtr make_node(int id) {
  NodePtr n = md::sg::node::create();
  n->reset();
  n->id(id);
  return n;
}

// An axis node with this id, and the axis record set whole; no owner.
inline AxisNodePtr make_axis_node(int id, AXIS_TYPE type, AXIS_MODE mode, const TPoint<double>& base,
                                  const TPoint<double>& vector) {
  AxisNodePtr n = md::NodeAxis_Create();
  n->reset();
  n->id(id);
  n->SetAxis(type);
  n->mode(mode);
  n->SetAxisLocation(HEAD);
  n->SetBaseVector(base);
  n->SetAxisVector(vector);
  n->SetMin(-1);
  n->SetMax(1);
  n->machdef(nullptr);
  return n;
}

// A tool node with this id and a head of zeros.
inline ToolNodePtr make_tool_node(int id) {
  ToolNodePtr n = md::TOOL_NODE_Create();
  n->reset();
  n->id(id);
  n->payload() = angled_head();
  return n;
}

// Twelve different values; no rotation, since nodes keep any twelve.
inline Matrix numbered_matrix(double first) {
  Matrix m;
  m.SetMatrix(first, first + 1, first + 2, first + 3, first + 4, first + 5, first + 6, first + 7, first + 8,
              first + 9, first + 10, first + 11);
  return m;
}

inline std::vector<int> ids(const std::vector<NodePtr>& nodes) {
  std::vector<int> result;
  for (const NodePtr& n : nodes) result.push_back(n->id());
  return result;
}

// The root R = 1 with the children A = 2 and B = 4; A has the child A1 = 3.
struct SmallTree {
  NodePtr r = make_node(1);
  NodePtr a = make_node(2);
  NodePtr a1 = make_node(3);
  NodePtr b = make_node(4);

  SmallTree() {
    r->add_child(a);
    a->add_child(a1);
    r->add_child(b);
  }
};

// A call as a host's node saw it: which operation, on which node, with recursion on or off.
struct Call {
  std::string what;
  int id;
  bool recursive;

  bool operator==(const Call& other) const {
    return what == other.what && id == other.id && recursive == other.recursive;
  }
};

inline std::ostream& operator<<(std::ostream& out, const Call& call) {
  return out << call.what << '(' << call.id << (call.recursive ? ", recursive)" : ", alone)");
}

// A host's own kind of node: logs each virtual call, then does what a plain node does. Public construction
// and destruction, which the library's node keeps to itself.
class HostNode : public md::sg::node {
 public:
  HostNode(int id, std::vector<Call>* log) : m_log(log) { this->id(id); }
  HostNode(const HostNode& other) = default;
  ~HostNode() override {
    if (m_log != nullptr) m_log->push_back({"destroy", m_id_at_birth, false});
  }

  static boost::shared_ptr<HostNode> create(int id, std::vector<Call>* log) {
    boost::shared_ptr<HostNode> n(new HostNode(id, log));
    n->m_id_at_birth = id;
    return n;
  }

  void shallow_copy(boost::shared_ptr<const md::sg::node> from) override {
    note("shallow_copy", false);
    node::shallow_copy(from);
  }
  NodePtr shallow_clone() override {
    note("shallow_clone", false);
    return node::shallow_clone();
  }
  void initialise(bool recursive) override {
    note("initialise", recursive);
    node::initialise(recursive);
  }
  void scale_node(double factor, bool recursive) override {
    note("scale_node", recursive);
    last_factor = factor;
    node::scale_node(factor, recursive);
  }

  double last_factor = 0;

 private:
  void note(const char* what, bool recursive) {
    if (m_log != nullptr) m_log->push_back({what, id(), recursive});
  }

  std::vector<Call>* m_log;
  int m_id_at_birth = 0;
};

// The small tree, of a host's nodes. The log may be read after the tree is gone.
struct HostTree {
  std::vector<Call> log;
  NodePtr r = HostNode::create(1, &log);
  NodePtr a = HostNode::create(2, &log);
  NodePtr a1 = HostNode::create(3, &log);
  NodePtr b = HostNode::create(4, &log);

  HostTree() {
    r->add_child(a);
    a->add_child(a1);
    r->add_child(b);
  }
  HostTree(const HostTree&) = delete;
  HostTree& operator=(const HostTree&) = delete;
};

constexpr int kDepth = 200000;

// A chain of `depth` nodes with the ids 0 (root) to depth - 1, built from the leaf up; every third one an
// axis node, every third one a tool node. With `leaf` set, that address is given the lowest node.
inline NodePtr make_chain(int depth, NodePtr* leaf = nullptr) {
  NodePtr below;
  for (int id = depth - 1; id >= 0; --id) {
    NodePtr n;
    if (id % 3 == 0) n = make_node(id);
    if (id % 3 == 1) n = make_axis_node(id, AXIS_X, LINEAR, {1, 2, 3}, {1, 0, 0});
    if (id % 3 == 2) n = make_tool_node(id);
    if (below) n->add_child(below);
    if (leaf != nullptr && id == depth - 1) *leaf = n;
    below = n;
  }
  return below;
}

// A root of id 0 with `width` children of the ids 1 to width, of the three kinds in turn.
inline NodePtr make_fan(int width) {
  NodePtr root = make_node(0);
  for (int id = 1; id <= width; ++id) {
    NodePtr n;
    if (id % 3 == 0) n = make_node(id);
    if (id % 3 == 1) n = make_axis_node(id, AXIS_X, LINEAR, {1, 2, 3}, {1, 0, 0});
    if (id % 3 == 2) n = make_tool_node(id);
    root->add_child(n);
  }
  return root;
}

}  // namespace k5ax_test

#endif
