// md::sg::node: parents and children.
//
// A node's parent link and its places in lists of children usually agree, but need not: removing a node from
// a list that it is not in cuts its link, a reset node stays in its parent's list, and its children keep
// their links to it. So each node knows both kinds of reference to itself: the places in lists by their
// number, the links one by one, so that it can take them away when it ends. Weak pointers would do that too,
// at the cost of two locked counts for every link that is made and dropped.
#include <k5ax/scenegraph.h>

#include <algorithm>
#include <boost/container/small_vector.hpp>
#include <stdexcept>
#include <utility>

namespace md {
namespace sg {

namespace {

constexpr std::size_t kUsualCount = 32;  // nodes waiting in a walk, without asking for memory

bool is_listed(const node& n, const std::vector<boost::shared_ptr<node>>& children) {
  return std::any_of(children.begin(), children.end(),
                     [&n](const boost::shared_ptr<node>& child) { return child.get() == &n; });
}

bool stands_below(const node& n, const node& top) {
  boost::container::small_vector<const node*, kUsualCount> to_visit(1, &top);
  while (!to_visit.empty()) {
    const node* const next = to_visit.back();
    to_visit.pop_back();
    for (const boost::shared_ptr<node>& child : next->child_list()) {
      if (child.get() == &n) return true;
      if (!child->child_list().empty()) to_visit.push_back(child.get());
    }
  }
  return false;
}

}  // namespace

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

// In the place that the child has already, if it has one.
void node::hold(const boost::shared_ptr<node>& child) {
  if (child->m_held_by == 0 || !is_listed(*child, m_children)) append_child(child);
}

void node::clear_links() {
  if (!m_children.empty()) release_children();  // most nodes that are cleared come from a pool, and have none
  unlink();
}

boost::shared_ptr<node> node::parent() const {
  return m_parent != nullptr ? m_parent->weak_from_this().lock() : boost::shared_ptr<node>();
}

// Whether the parent links lead to every node that this one stands below.
bool node::is_linked_to_all_above() const {
  for (const node* n = this; n->m_held_by != 0; n = n->m_parent)
    if (n->m_held_by > 1 || n->m_parent == nullptr || !is_listed(*n, n->m_parent->m_children)) return false;
  return true;
}

// For a node that may come from a pool, with the links it was parked with. Those of others to it go too: who
// was its child once is not the new node's.
void node::start_anew() {
  take_links_away();
  clear_links();
}

// Throws when `child` is this node or one of its ancestors, by links or by lists.
void node::refuse_cycle(const node& child) const {
  const bool may_be_above = !child.m_children.empty() || child.m_first_linked != nullptr;
  bool is_above = false;
  for (const node* n = this; n != nullptr && !is_above; n = may_be_above ? n->parent_ptr() : nullptr)
    is_above = n == &child;
  if (!is_above && !child.m_children.empty() && !is_linked_to_all_above())
    is_above = stands_below(*this, child);
  if (is_above)
    throw std::invalid_argument("scene graph: a node cannot be a child of itself or of its descendant");
}

void node::add_child(boost::shared_ptr<node> child) {
  if (!child) return;
  refuse_cycle(*child);

  const boost::shared_ptr<node> self = shared_from_this();
  const boost::shared_ptr<node> old_parent = child->parent();
  hold(child);
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
  if (p) p->hold(self);
}

}  // namespace sg
}  // namespace md
