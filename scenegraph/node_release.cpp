// md::sg::node: the release of a tree.
#include <k5ax/scenegraph.h>

#include <utility>

namespace md {
namespace sg {

node::~node() {
  take_links_away();
  clear_links();
}

// Lets go of everything below this node, whatever the depth, without recursion and without memory: a
// destructor has neither to spare. On the way down, the place that held the child holds the way back up
// instead.
//
// H. Schorr and W. M. Waite, "An efficient machine-independent procedure for garbage collection in various
// list structures", Communications of the ACM 10 (1967) 501-506.
void node::release_children() {
  boost::shared_ptr<node> current;  // the node whose children are being released; empty for this one
  boost::shared_ptr<node> above;    // the one it was reached from; empty for this one
  for (;;) {
    node& n = current ? *current : *this;
    if (!n.m_children.empty()) {
      boost::shared_ptr<node> child = std::move(n.m_children.back());
      --child->m_held_by;
      const bool ends_here = child.use_count() == 1;
      if (ends_here && !child->m_children.empty()) {
        n.m_children.back() = std::move(above);
        above = std::move(current);
        current = std::move(child);
      } else {
        n.m_children.pop_back();
      }
    } else if (current) {
      current = std::move(above);
      node& back_at = current ? *current : *this;
      above = std::move(back_at.m_children.back());
      back_at.m_children.pop_back();
    } else {
      return;
    }
  }
}

}  // namespace sg
}  // namespace md
