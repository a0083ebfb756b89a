// Calls about nodes and trees.
#include <stdexcept>
#include <vector>

#include "fuzz/host.h"
#include "fuzz/require.h"

namespace k5ax_fuzz {

namespace {

using md::sg::node;

NodePtr& any_place(Host& host, Draw& draw) { return host.nodes[draw.below(host.nodes.size())]; }

// The node may be one of a machine's: the pointer is gone when the call is through.
NodePtr shared(node* n) { return n != nullptr ? n->shared_from_this() : NodePtr(); }

boost::shared_ptr<k5ax_axis_node> shared_axis_node(node* n) {
  return boost::dynamic_pointer_cast<k5ax_axis_node>(shared(n));
}

// Each kind goes back to its own pool, and only through its last holder.
void give_back(NodePtr& n) {
  if (!n || n.use_count() > 1) return;
  if (md::sg::axis_node(n.get()) != nullptr) {
    auto axis = boost::static_pointer_cast<k5ax_axis_node>(n);
    n.reset();
    md::NodeAxis_Free(axis);
  } else if (md::sg::tool_node(n.get()) != nullptr) {
    auto tool = boost::static_pointer_cast<k5ax_tool_node>(n);
    n.reset();
    md::TOOL_NODE_Free(tool);
  } else {
    node::free(n);
  }
}

// Refused where it would close a circle.
template <class Hang>
void hang(Hang hang_under) {
  try {
    hang_under();
  } catch (const std::invalid_argument&) {
  }
}

constexpr Call kCalls[] = {
    [](Host& host, Draw& draw) {
      NodePtr& place = any_place(host, draw);
      switch (draw.below(3)) {
        case 0:
          place = node::create();
          break;
        case 1:
          place = md::NodeAxis_Create();
          break;
        default:
          place = md::TOOL_NODE_Create();
      }
      if (draw.yes()) place->reset();
    },
    [](Host& host, Draw& draw) { give_back(any_place(host, draw)); },
    [](Host& host, Draw& draw) { any_place(host, draw).reset(); },
    [](Host& host, Draw& draw) {
      const NodePtr place = any_place(host, draw);
      if (place) place->reset();
    },
    [](Host& host, Draw& draw) {
      const NodePtr child = any_place(host, draw);
      node* const parent = any_node(host, draw);
      if (parent != nullptr) hang([&] { parent->add_child(child); });
    },
    [](Host& host, Draw& draw) {
      const NodePtr child = any_place(host, draw);
      const NodePtr parent = any_place(host, draw);
      if (child) hang([&] { child->parent(parent); });
    },
    [](Host& host, Draw& draw) {
      const NodePtr child = any_place(host, draw);
      node* const parent = any_node(host, draw);
      if (parent != nullptr && child) parent->remove_child(child);
    },
    [](Host& host, Draw& draw) {
      node* const source = any_node(host, draw);
      NodePtr& place = any_place(host, draw);
      if (tree_size(source) > kLargeTree) return;
      place = node::node_clone(shared(source));
    },
    [](Host& host, Draw& draw) {
      node* const source = any_node(host, draw);
      if (source != nullptr) any_place(host, draw) = source->shallow_clone();
    },
    [](Host& host, Draw& draw) {
      const NodePtr to = shared(any_node(host, draw));
      node::shallow_copy(to, shared(any_node(host, draw)));
    },
    [](Host& host, Draw& draw) {
      node* const n = any_node(host, draw);
      const std::size_t size = tree_size(n);
      require(node::all_nodes(shared(n)).size() == size, "two walks count differently");
      std::vector<node*> all(size);
      require(k5axSgNode_all_nodes(n, all.data()) == static_cast<int>(size),
              "the flat walk counts differently");
      for (node* const listed : all) require(listed != nullptr, "a walk lists no node");
    },
    [](Host& host, Draw& draw) {
      node* const n = any_node(host, draw);
      std::vector<Geometry::Matrix> stack;
      node::transform_stack(shared(n), stack);
      require(stack.empty() == (n == nullptr), "a stack of the wrong size");
      std::vector<NodePtr> leaves;
      node::no_children({shared(n), NodePtr(), any_place(host, draw)}, leaves);
      require(k5axSgNode_parent(n) == (n != nullptr ? n->parent().get() : nullptr), "two parents");
    },
    [](Host& host, Draw& draw) {
      node* const n = any_node(host, draw);
      k5axSgNode_flags_set(n, k5axSgNode_calc_flags(draw.whole(), draw.whole()));
      k5axSgNode_flags_get(n);
      if (n != nullptr) n->flags(draw.flags());
    },
    [](Host& host, Draw& draw) {
      node* const n = any_node(host, draw);
      if (n == nullptr) return;
      n->id(draw.id());
      require(k5axSgNode_id(n) == n->id(), "two ids");
    },
    [](Host& host, Draw& draw) {
      node* const n = any_node(host, draw);
      const double value = draw.number();
      if (draw.yes()) k5axSgNode_value_set(n, value);
      k5axSgNode_value_set2(draw.flags(), n, draw.number());
      k5axSgNode_value_get(n);
    },
    [](Host& host, Draw& draw) {
      node* const n = any_node(host, draw);
      if (n == nullptr) return;
      n->transform(draw.transform());
      n->point_to_parent(draw.point());
      n->direction_to_parent(draw.direction());
    },
    [](Host& host, Draw& draw) {
      node* const n = any_node(host, draw);
      k5axSgNode_initialise(n, draw.whole());
    },
    [](Host& host, Draw& draw) {
      node* const n = any_node(host, draw);
      if (n == nullptr) return;
      const double factor = draw.number();
      n->scale_node(factor, draw.yes());
    },
    [](Host& host, Draw& draw) {
      node* const n = any_node(host, draw);
      node_state state = {};
      const bool known = md::node_state_get(shared(n), state);
      require(known == (k5axSgNode_NodeAxis_cast(n) != nullptr), "a state of a node that has none");
      state.value = draw.number();
      if (draw.yes()) state.id = draw.id();
      md::node_state_set(shared(n), state);
      k5axSgNode_state_get(shared(n), &state);
      k5axSgNode_state_get_(n, draw.yes() ? &state : nullptr);
    },
    [](Host& host, Draw& draw) { k5axSgToolNodeMatrixSet(shared(any_node(host, draw)), draw.point()); },
    [](Host& host, Draw& draw) {
      node* const n = any_node(host, draw);
      const double value = draw.number();
      md::NodeAxis_transform_calc(draw.flags(), shared_axis_node(n), value);
      md::NodeAxis_transform_set(draw.flags(), shared_axis_node(n), value);
    },
};

}  // namespace

Calls node_calls() { return {kCalls, sizeof kCalls / sizeof *kCalls}; }

}  // namespace k5ax_fuzz
