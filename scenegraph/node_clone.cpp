// md::sg::node: deep copies.
#include <k5ax/scenegraph.h>

#include <utility>

namespace md {
namespace sg {

boost::shared_ptr<node> node::shallow_clone() {
  boost::shared_ptr<node> self = shared_from_this();
  boost::shared_ptr<node> copy = create();
  copy->clear_links();  // one from the pool still has the links it was parked with
  copy->shallow_copy(std::move(self));
  copy->m_children.reserve(m_children.size());
  return copy;
}

boost::shared_ptr<node> node::node_clone(boost::shared_ptr<node> n) {
  if (!n) return {};
  return _node_clone(n, n->parent());
}

boost::shared_ptr<node> node::_node_clone(boost::shared_ptr<node> n, boost::shared_ptr<node> parent) {
  struct Step {
    boost::shared_ptr<node> source;
    node* parent_copy;
  };

  const boost::shared_ptr<node> root = n->shallow_clone();
  std::vector<Step> steps;  // the next one at the end
  const auto push_children = [&steps](const node& source, node* copy) {
    for (auto child = source.m_children.rbegin(); child != source.m_children.rend(); ++child)
      steps.push_back({*child, copy});
  };
  push_children(*n, root.get());
  while (!steps.empty()) {
    const Step step = std::move(steps.back());
    steps.pop_back();
    const boost::shared_ptr<node> copy = step.source->shallow_clone();
    step.parent_copy->append_child(copy);
    copy->link_to(step.parent_copy->shared_from_this());
    push_children(*step.source, copy.get());
  }

  // Deliberate: the copy hangs where its source hangs, as a sibling. It is hung there last, when nothing can
  // fail any more.
  if (parent) {
    parent->append_child(root);
    root->link_to(parent);
  }
  return root;
}

}  // namespace sg
}  // namespace md
