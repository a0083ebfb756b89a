// What a host of the fuzzer holds, and the calls that it makes.
//
// It keeps to what the headers ask of a host: an object goes back to its pool through its last holder, a
// pointer that is borrowed from a machine is not kept, an index is within its range, and what must not be
// null is not.
#ifndef K5AX_TESTS_FUZZ_HOST_H
#define K5AX_TESTS_FUZZ_HOST_H

#include <array>
#include <cstddef>
#include <memory>
#include <string>

#include <k5ax/kinematics.h>

#include "fuzz/draw.h"

namespace k5ax_fuzz {

using AxisPtr = boost::shared_ptr<md::CAxis2>;
using NodePtr = boost::shared_ptr<md::sg::node>;

struct Host {
  explicit Host(std::string scratch_path) : path(std::move(scratch_path)) {}
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;
  ~Host() {
    for (TAxis*& record : records) axis_free(&record);
  }

  std::array<std::unique_ptr<md::CMachDef>, 3> machines;
  std::array<AxisPtr, 4> axes;  // belong to no machine: where one takes an axis, its place here is emptied
  std::array<TAxis*, 2> records = {};  // from axis_clone
  std::array<NodePtr, 8> nodes;        // never from a machine's lists
  std::string bytes;                   // what was saved last
  std::string path;                    // of a file to save to
};

// Trees larger than this are not copied: copies of copies would fill the memory.
constexpr std::size_t kLargeTree = 300;

// Counts the node and what is below it by a walk of its own; a walk without an end ends the program.
std::size_t tree_size(const md::sg::node* root);

// One of the machines, null where its place is empty.
md::CMachDef* any_machine(Host& host, Draw& draw);
// One of the host's nodes or one in a machine's tree, borrowed; null now and then.
md::sg::node* any_node(Host& host, Draw& draw);
// One of the host's axes, a machine's or an axis node's, borrowed; null now and then.
md::CAxis2* any_axis(Host& host, Draw& draw);

using Call = void (*)(Host& host, Draw& draw);

struct Calls {
  const Call* first;
  std::size_t count;
};

Calls foundation_calls();
Calls axis_calls();
Calls node_calls();
Calls machine_calls();
Calls file_calls();
Calls pose_calls();

}  // namespace k5ax_fuzz

#endif
