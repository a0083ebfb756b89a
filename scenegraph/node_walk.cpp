// md::sg::node: walks over a subtree and up to the root.
#include <k5ax/scenegraph.h>

#include <boost/container/small_vector.hpp>

namespace md {
namespace sg {

namespace {

constexpr std::size_t kUsualCount = 32;  // places waiting in a walk, without asking for memory

constexpr int kFixedId = -999;  // what a host puts into such a node stays through `initialise`

}  // namespace

// Appends what is below `n`, depth first, a node before its children. The walk remembers places in lists of
// children, not nodes, so that a reference is counted only where it goes into `out`.
void node::list_below(const node& n, std::vector<boost::shared_ptr<node>>& out) {
  boost::container::small_vector<const boost::shared_ptr<node>*, kUsualCount> to_visit;
  const auto visit_children = [&to_visit](const node& parent) {
    for (auto child = parent.m_children.rbegin(); child != parent.m_children.rend(); ++child)
      to_visit.push_back(&*child);
  };

  visit_children(n);
  while (!to_visit.empty()) {
    const boost::shared_ptr<node>& next = *to_visit.back();
    to_visit.pop_back();
    out.push_back(next);
    visit_children(*next);
  }
}

void node::list_nodes(const boost::shared_ptr<node>& n, std::vector<boost::shared_ptr<node>>& out) {
  if (!n) return;
  out.push_back(n);
  list_below(*n, out);
}

std::vector<boost::shared_ptr<node>> node::all_nodes(boost::shared_ptr<node> n) {
  std::vector<boost::shared_ptr<node>> all;
  list_nodes(n, all);
  return all;
}

void node::transform_stack(boost::shared_ptr<node> n, std::vector<Geometry::Matrix>& out) {
  out.clear();
  for (const node* up = n.get(); up != nullptr; up = up->parent_ptr()) out.push_back(up->transform());
}

void node::no_children(const std::vector<boost::shared_ptr<node>>& in,
                       std::vector<boost::shared_ptr<node>>& out) {
  for (const boost::shared_ptr<node>& n : in)
    if (n && n->m_children.empty()) out.push_back(n);
}

// The subtree is listed before anything changes, so that memory running out leaves it as it was, and each
// node's own operation is called for itself alone, so that depth costs no stack.

void node::initialise(bool recursive) {
  std::vector<boost::shared_ptr<node>> below;
  if (recursive) list_below(*this, below);

  if (m_id != kFixedId) {
    m_transform.Identity();
    m_value = 0.0;
  }
  for (const boost::shared_ptr<node>& n : below) n->initialise(false);
}

void node::scale_node(double factor, bool recursive) {
  if (!recursive) return;
  std::vector<boost::shared_ptr<node>> below;
  list_below(*this, below);
  for (const boost::shared_ptr<node>& n : below) n->scale_node(factor, false);
}

}  // namespace sg
}  // namespace md
