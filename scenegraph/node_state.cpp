// The live state of axis nodes.
#include <k5ax/scenegraph.h>

namespace md {

namespace {

node_state state_of(const sg::node& n) { return {n.id(), n.flags(), n.value()}; }

}  // namespace

bool node_state_get(sg::node& n, node_state& s) {
  if (sg::axis_node(&n) == nullptr) return false;
  s = state_of(n);
  return true;
}

bool node_state_get(boost::shared_ptr<sg::node> n, node_state& s) { return n && node_state_get(*n, s); }

bool node_state_set(sg::node& n, const node_state& s) {
  sg::tnode<CAxis2>* const axis_node = sg::axis_node(&n);
  if (axis_node == nullptr || axis_node->id() != s.id) return false;
  axis_node->flags(s.flags);
  NodeAxis_transform_set(0, *axis_node, s.value);
  return true;
}

bool node_state_set(boost::shared_ptr<sg::node> n, const node_state& s) { return n && node_state_set(*n, s); }

}  // namespace md

void k5axSgNode_state_get(boost::shared_ptr<const md::sg::node> n, node_state* state) {
  k5axSgNode_state_get_(n.get(), state);
}

extern "C" void k5axSgNode_state_get_(const md::sg::node* node, node_state* state) {
  if (node != nullptr && state != nullptr) *state = md::state_of(*node);
}
