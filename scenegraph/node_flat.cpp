// The flat functions on nodes.
#include <k5ax/scenegraph.h>

using md::sg::node;

extern "C" int k5axSgNode_child_count(const node* n) {
  return n != nullptr ? static_cast<int>(n->child_list().size()) : 0;
}

extern "C" node* k5axSgNode_child(const node* n, int index) {
  return n != nullptr ? n->child_list()[static_cast<std::size_t>(index)].get() : nullptr;
}

extern "C" node* k5axSgNode_parent(const node* n) { return n != nullptr ? n->parent_ptr() : nullptr; }

extern "C" int k5axSgNode_all_nodes(node* n, node** buffer) {
  if (n == nullptr) return 0;
  const std::vector<boost::shared_ptr<node>> nodes = node::all_nodes(n->shared_from_this());
  for (const boost::shared_ptr<node>& listed : nodes) *buffer++ = listed.get();
  return static_cast<int>(nodes.size());
}

extern "C" int k5axSgNode_id(const node* n) { return n != nullptr ? n->id() : 0; }

extern "C" double k5axSgNode_value_get(const node* n) { return n != nullptr ? n->value() : 0.0; }

extern "C" void k5axSgNode_value_set(node* n, double value) {
  if (n != nullptr) n->value(value);
}

extern "C" unsigned int k5axSgNode_flags_get(const node* n) { return n != nullptr ? n->flags() : 0; }

extern "C" void k5axSgNode_flags_set(node* n, unsigned int flags) {
  if (n != nullptr) n->flags(flags);
}

extern "C" void k5axSgNode_initialise(node* n, int recursive) {
  if (n != nullptr) n->initialise(recursive != 0);
}

extern "C" unsigned int k5axSgNode_calc_flags(int first, int second) {
  return (first != 0 ? 1U : 0U) + (second != 0 ? 2U : 0U);
}

extern "C" k5ax_axis_node* k5axSgNode_NodeAxis_cast(node* n) { return md::sg::axis_node(n); }
