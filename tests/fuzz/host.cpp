#include "fuzz/host.h"

#include <vector>

#include "fuzz/require.h"

namespace k5ax_fuzz {

namespace {

constexpr std::size_t kEndless = 200000;

}  // namespace

std::size_t tree_size(const md::sg::node* root) {
  std::size_t count = 0;
  std::vector<const md::sg::node*> open;
  if (root != nullptr) open.push_back(root);
  while (!open.empty()) {
    const md::sg::node* const n = open.back();
    open.pop_back();
    require(++count < kEndless, "a tree without an end");
    for (const NodePtr& child : n->child_list()) open.push_back(child.get());
  }
  return count;
}

md::CMachDef* any_machine(Host& host, Draw& draw) {
  return host.machines[draw.below(host.machines.size())].get();
}

md::sg::node* any_node(Host& host, Draw& draw) {
  if (draw.yes()) return host.nodes[draw.below(host.nodes.size())].get();
  md::sg::node* n = k5axCMachDef_SG(any_machine(host, draw), static_cast<int>(draw.below(2)));
  for (std::size_t steps = draw.below(8); steps > 0; --steps) {
    const int count = k5axSgNode_child_count(n);
    if (count == 0) break;
    n = k5axSgNode_child(n, static_cast<int>(draw.below(static_cast<std::size_t>(count))));
  }
  return n;
}

md::CAxis2* any_axis(Host& host, Draw& draw) {
  switch (draw.below(4)) {
    case 0:
      return host.axes[draw.below(host.axes.size())].get();
    case 1:
      return k5axCMachDef_axis(static_cast<int>(draw.below(3)), any_machine(host, draw));
    case 2:
      return k5axCMachDef_rotary_axis(any_machine(host, draw));
    default: {
      k5ax_axis_node* const n = k5axSgNode_NodeAxis_cast(any_node(host, draw));
      return n != nullptr ? &n->payload() : nullptr;
    }
  }
}

}  // namespace k5ax_fuzz
