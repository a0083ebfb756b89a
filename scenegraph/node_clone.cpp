// md::sg::node: deep copies.
#include <k5ax/scenegraph.h>

#include <boost/container/small_vector.hpp>
#include <typeinfo>
#include <utility>

namespace md {
namespace sg {

namespace {

constexpr std::size_t kUsualCount = 32;  // nodes waiting in a walk, without asking for memory

// False for a node of a host's own class, which may copy in its own way and keep what it is handed.
bool is_ours(const node& n) { return typeid(n) == typeid(node); }

}  // namespace

boost::shared_ptr<node> node::shallow_clone() {
  boost::shared_ptr<node> self;  // between nodes of ours no reference is counted
  if (!is_ours(*this)) self = shared_from_this();
  boost::shared_ptr<node> copy = create();
  copy->start_anew();
  if (!self && is_ours(*copy))
    copy->copy_node_part(*this);
  else
    copy->shallow_copy(self ? std::move(self) : shared_from_this());
  copy->m_children.reserve(m_children.size());
  return copy;
}

boost::shared_ptr<node> node::node_clone(boost::shared_ptr<node> n) {
  if (!n) return {};
  return _node_clone(*n, nullptr);
}

// Appends the copies to `listed`, unless that is null, in the order of all_nodes.
boost::shared_ptr<node> node::_node_clone(node& n, std::vector<boost::shared_ptr<node>>* listed) {
  struct Step {
    node* source;
    node* parent_copy;
  };

  boost::shared_ptr<node> root = n.shallow_clone();
  boost::container::small_vector<Step, kUsualCount> steps;  // the next one at the end
  const auto clone_children_later = [&steps](const node& source, node* copy) {
    for (auto child = source.m_children.rbegin(); child != source.m_children.rend(); ++child)
      steps.push_back({child->get(), copy});
  };

  clone_children_later(n, root.get());
  if (listed != nullptr) listed->push_back(root);
  while (!steps.empty()) {
    const Step step = steps.back();
    steps.pop_back();
    boost::shared_ptr<node> copy = step.source->shallow_clone();
    copy->link_to(step.parent_copy);
    clone_children_later(*step.source, copy.get());
    if (listed != nullptr) listed->push_back(copy);
    step.parent_copy->append_child(std::move(copy));
  }

  // Deliberate: the copy hangs where its source hangs, as a sibling. It is hung there last, when nothing can
  // fail any more, and when a parent that was parked and taken for the copy is a parent no more.
  if (const boost::shared_ptr<node> parent = n.parent()) {
    parent->append_child(root);
    root->link_to(parent.get());
  }
  return root;
}

}  // namespace sg
}  // namespace md
