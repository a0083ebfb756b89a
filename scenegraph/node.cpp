// md::sg::node: how a node is made, given back, reset and copied.
#include <k5ax/scenegraph.h>

#include <utility>

#include "scenegraph/pool.h"

namespace md {
namespace sg {

namespace {

// Made when the library is loaded, not on first use, so that it outlives the static objects of hosts.
Parked<node> node_pool;
Parked<node> spare_node_cells;

}  // namespace

const int node::_version = 1;

struct node::deleter {
  void operator()(node* n) const { delete n; }
};

node::node() : node(Kind::plain) {}

node::node(Kind kind)
    : m_id(0),
      m_value(0.0),
      m_flags(0),
      m_kind(kind),
      m_listed(false),
      m_parent(nullptr),
      m_first_linked(nullptr),
      m_next_linked(nullptr),
      m_linked_from(nullptr),
      m_held_by(0) {}

// Deliberate: what a node is made from says nothing of its place in a tree, so a node made by copying starts
// fresh.
node::node(const node&) : node() {}

std::list<boost::shared_ptr<node>>& node::get_pool() { return node_pool; }

boost::shared_ptr<node> node::create() {
  boost::shared_ptr<node> n = take_last(get_pool(), spare_node_cells);
  if (!n) n.reset(new node, deleter());
  return n;
}

void node::free(boost::shared_ptr<node>& n) { park(n, get_pool(), spare_node_cells); }

void node::reset() {
  clear_links();
  m_id = -1;  // deliberate: not the 0 of a fresh node
  m_value = 0.0;
  m_flags = 0;
  m_transform.Identity();
}

void node::copy_node_part(const node& from) {
  m_transform = from.m_transform;
  m_value = from.m_value;
  m_id = from.m_id;
  m_flags = from.m_flags;
}

void node::shallow_copy(boost::shared_ptr<const node> from) { copy_node_part(*from); }

void node::shallow_copy(boost::shared_ptr<node> to, boost::shared_ptr<const node> from) {
  if (to && from) to->shallow_copy(std::move(from));
}

}  // namespace sg
}  // namespace md
