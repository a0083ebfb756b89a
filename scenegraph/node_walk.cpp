// md::sg::node: walks over a subtree and up to the root.
#include <k5ax/scenegraph.h>

#include <utility>

namespace md {
namespace sg {

namespace {

constexpr int kFixedId = -999;  // what a host puts into such a node stays through `initialise`

}  // namespace

// Depth first, a node before its children.
std::vector<boost::shared_ptr<node>> node::nodes_below(const node& n) {
  std::vector<boost::shared_ptr<node>> below;
  std::vector<boost::shared_ptr<node>> to_visit(n.m_children.rbegin(), n.m_children.rend());
  while (!to_visit.empty()) {
    below.push_back(std::move(to_visit.back()));
    to_visit.pop_back();
    const std::vector<boost::shared_ptr<node>>& children = below.back()->m_children;
    to_visit.insert(to_visit.end(), children.rbegin(), children.rend());
  }
  return below;
}

std::vector<boost::shared_ptr<node>> node::all_nodes(boost::shared_ptr<node> n) {
  if (!n) return {};
  std::vector<boost::shared_ptr<node>> all = nodes_below(*n);
  all.insert(all.begin(), n);
  return all;
}

void node::transform_stack(boost::shared_ptr<node> n, std::vector<Geometry::Matrix>& out) {
  out.clear();
  for (const node* up = n.get(); up != nullptr; up = up->parent_ptr()) out.push_back(up->m_transform);
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
  if (recursive) below = nodes_below(*this);

  if (m_id != kFixedId) {
    m_transform.Identity();
    m_value = 0.0;
  }
  for (const boost::shared_ptr<node>& n : below) n->initialise(false);
}

void node::scale_node(double factor, bool recursive) {
  if (!recursive) return;
  for (const boost::shared_ptr<node>& n : nodes_below(*this)) n->scale_node(factor, false);
}

}  // namespace sg
}  // namespace md
