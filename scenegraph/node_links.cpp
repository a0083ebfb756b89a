// md::sg::node: parents and children.
//
// A node's parent link and its places in lists of children usually agree, but need not: removing a node from
// a list that it is not in cuts its link, a reset node stays in its parent's list, and its children keep
// their links to it. So each node knows both kinds of reference to itself: the places in lists by their
// number, the links one by one, so that it can take them away when it ends. Weak pointers would do that too,
// at the cost of two locked counts for every link that is made and dropped.
#include <k5ax/scenegraph.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace md {
namespace sg {

void node::link_to(node* parent) {
  unlink();
  if (parent == nullptr) return;
  m_parent = parent;
  m_next_linked = parent->m_first_linked;
  m_linked_from = &parent->m_first_linked;
  if (m_next_linked != nullptr) m_next_linked->m_linked_from = &m_next_linked;
  parent->m_first_linked = this;
}

void node::unlink() {
  if (m_parent == nullptr) return;
  *m_linked_from = m_next_linked;
  if (m_next_linked != nullptr) m_next_linked->m_linked_from = m_linked_from;
  m_parent = nullptr;
}

void node::take_links_away() {
  while (m_first_linked != nullptr) m_first_linked->unlink();
}

void node::append_child(boost::shared_ptr<node> child) {
  m_children.push_back(std::move(child));
  ++m_children.back()->m_held_by;
}

void node::clear_links() {
  if (!m_children.empty()) release_children();  // most nodes that are cleared come from a pool, and have none
  unlink();
}

boost::shared_ptr<node> node::parent() const {
  return m_parent != nullptr ? m_parent->weak_from_this().lock() : boost::shared_ptr<node>();
}

// Throws when `child` is this node or one of its ancestors.
void node::refuse_cycle(const node& child) const {
  const bool may_be_above = !child.m_children.empty() || child.m_first_linked != nullptr;
  for (const node* n = this; n != nullptr; n = may_be_above ? n->parent_ptr() : nullptr)
    if (n == &child)
      throw std::invalid_argument("scene graph: a node cannot be a child of itself or of its descendant");
}

void node::add_child(boost::shared_ptr<node> child) {
  if (!child) return;
  refuse_cycle(*child);

  const boost::shared_ptr<node> self = shared_from_this();
  const boost::shared_ptr<node> old_parent = child->parent();
  const bool held =
      child->m_held_by != 0 && std::find(m_children.begin(), m_children.end(), child) != m_children.end();
  if (!held) append_child(child);
  if (old_parent && old_parent != self) old_parent->remove_child(child);
  child->link_to(this);
}

void node::remove_child(boost::shared_ptr<node> child) {
  // Deliberate: the link goes even where the node is no child of this one; hosts detach nodes by it.
  child->unlink();
  if (child->m_held_by == 0) return;
  const auto kept_end = std::remove(m_children.begin(), m_children.end(), child);
  child->m_held_by -= static_cast<std::size_t>(m_children.end() - kept_end);
  m_children.erase(kept_end, m_children.end());
}

void node::parent(boost::shared_ptr<node> p) {
  const boost::shared_ptr<node> self = shared_from_this();
  if (p) {
    p->refuse_cycle(*this);
    // What can fail comes before the node leaves its old parent.
    if (p->m_children.size() == p->m_children.capacity()) p->m_children.reserve(2 * p->m_children.size() + 1);
  }

  if (const boost::shared_ptr<node> old_parent = parent()) old_parent->remove_child(self);
  link_to(p.get());
  if (p) p->add_child(self);
}

}  // namespace sg
}  // namespace md
