// Parked nodes of one kind, and the list cells that are left over when one is taken.
#ifndef K5AX_SCENEGRAPH_POOL_H
#define K5AX_SCENEGRAPH_POOL_H

#include <boost/shared_ptr.hpp>

#include <iterator>
#include <list>
#include <utility>

namespace md {
namespace sg {

template <class T>
using Parked = std::list<boost::shared_ptr<T>>;

// The node parked last; empty where none is. Its cell waits among `spare_cells` for the next one that is
// parked, so that giving back and taking in turn, as cloning does, asks for no memory. Cells never outnumber
// the nodes that were parked at one time, and when the pool runs dry the spare ones go.
template <class T>
boost::shared_ptr<T> take_last(Parked<T>& parked, Parked<T>& spare_cells) {
  if (parked.empty()) {
    spare_cells.clear();
    return {};
  }
  boost::shared_ptr<T> n = std::move(parked.back());
  spare_cells.splice(spare_cells.end(), parked, std::prev(parked.end()));
  return n;
}

// Parks the node and empties the pointer; an empty one is left alone. Where memory runs out for its place,
// the pointer is as it was.
template <class T>
void park(boost::shared_ptr<T>& n, Parked<T>& parked, Parked<T>& spare_cells) {
  if (!n) return;
  if (spare_cells.empty()) spare_cells.emplace_back();
  parked.splice(parked.end(), spare_cells, std::prev(spare_cells.end()));
  parked.back().swap(n);
}

}  // namespace sg
}  // namespace md

#endif
