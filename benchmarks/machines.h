// The machines that are measured: table-table, A carrying C, lines off the origin and slightly tilted.
#ifndef K5AX_BENCHMARKS_MACHINES_H
#define K5AX_BENCHMARKS_MACHINES_H

#include <memory>
#include <string>
#include <vector>

#include <k5ax/k5ax.h>

#include "limit.h"

namespace bench {

using Machine = std::unique_ptr<md::CMachDef>;

// Axes and head, no trees.
Machine make_axes_only();

// Two trees of nine nodes in all: Y, Z and the tool under a frame; C and A, each with the fixed node that
// takes it back to its line, and X.
Machine make_nine_nodes();

// Where the nodes beyond the first nine hang.
enum class Shape {
  wide,  // all under the first tree's root, beside what the update drives
  deep   // one under the other, between the first tree's root and what the update drives
};

// `count` nodes, nine at least. Of the further nodes every other is plain, the rest are axis nodes that the
// update does not drive.
Machine make_grown(Shape shape, int count);

// A machine of this file's kind (primary A and secondary C, both on the table, with trees) from a file;
// throws std::runtime_error when it is something else.
Machine load_machine(const std::string& path);

TableLines table_lines(const md::CMachDef& machine);

// Every node of both trees, first tree first, in the order of a walk; borrowed.
std::vector<md::sg::node*> list_nodes(const md::CMachDef& machine);

// Those of them that carry an axis.
std::vector<md::sg::node*> list_axis_nodes(const md::CMachDef& machine);

// The nodes from the root down to `n`.
std::vector<md::sg::node*> path_from_root(md::sg::node* n);

// The end of the second tree's first branch: the machine frame, as seen from the part.
md::sg::node* first_leaf(const md::CMachDef& machine);

}  // namespace bench

#endif
