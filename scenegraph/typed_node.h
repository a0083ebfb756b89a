// md::sg::tnode: the definitions that both instances share. Included where each instance is made.
#ifndef K5AX_SCENEGRAPH_TYPED_NODE_H
#define K5AX_SCENEGRAPH_TYPED_NODE_H

#include <k5ax/scenegraph.h>

#include <type_traits>
#include <utility>

#include "scenegraph/payload.h"
#include "scenegraph/pool.h"

namespace md {
namespace sg {

template <class T>
Parked<tnode<T>> tnode<T>::_pool;

template <class T>
Parked<tnode<T>> spare_cells;

template <class T>
struct tnode<T>::deleter {
  void operator()(tnode* n) const { delete n; }
};

template <class T>
tnode<T>::tnode()
    : node([] {
        if constexpr (std::is_same_v<T, CAxis2>)
          return Kind::axis;
        else
          return Kind::tool;
      }()),
      T() {
  clear_payload(payload());
}

template <class T>
tnode<T>::~tnode() = default;

template <class T>
boost::shared_ptr<tnode<T>> tnode<T>::take() {
  boost::shared_ptr<tnode> n = take_last(_pool, spare_cells<T>);
  if (!n) n.reset(new tnode, deleter());
  return n;
}

template <class T>
void tnode<T>::give_back(boost::shared_ptr<tnode>& n) {
  park(n, _pool, spare_cells<T>);
}

template <class T>
boost::shared_ptr<node> tnode<T>::shallow_clone() {
  boost::shared_ptr<tnode> copy = take();
  copy->start_anew();
  copy->m_children.reserve(m_children.size());
  copy->copy_node_part(*this);
  copy_payload(copy->payload(), payload());
  return copy;
}

template <class T>
void tnode<T>::scale_node(double factor, bool recursive) {
  std::vector<boost::shared_ptr<node>> below;
  if (recursive) list_below(*this, below);

  scale_payload(*this, factor);
  for (const boost::shared_ptr<node>& n : below) n->scale_node(factor, false);
}

}  // namespace sg
}  // namespace md

#endif
