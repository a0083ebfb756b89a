// Empties the pools, which the whole program shares, so that what is created next is fresh.
#ifndef K5AX_TESTS_SUPPORT_POOLS_H
#define K5AX_TESTS_SUPPORT_POOLS_H

#include <cstddef>
#include <vector>

#include <boost/shared_ptr.hpp>

#include <k5ax/scenegraph.h>

#include "support/memory_shortage.h"

namespace k5ax_test {

// Takes axes and nodes of every kind out of their pools and destroys them, so many at a time, until that
// frees nothing any more.
inline void empty_pools(int at_a_time = 100) {
  std::size_t before = 0;
  do {
    before = bytes_in_use();
    std::vector<boost::shared_ptr<md::CAxis2>> axes;
    std::vector<boost::shared_ptr<md::sg::node>> nodes;
    for (int i = 0; i < at_a_time; ++i) {
      axes.push_back(md::CAxis2::create());
      nodes.push_back(md::sg::node::create());
      nodes.push_back(md::NodeAxis_Create());
      nodes.push_back(md::TOOL_NODE_Create());
    }
    axes.clear();
    nodes.clear();
    axes.shrink_to_fit();
    nodes.shrink_to_fit();
  } while (bytes_in_use() < before);
}

// What is in use beside the pools.
inline std::size_t bytes_without_pools() {
  empty_pools();
  return bytes_in_use();
}

}  // namespace k5ax_test

#endif
