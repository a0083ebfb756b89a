// The pieces that a machine definition is put together from: axes, and the nodes of its two trees.
//
// docs/scene-graph.md says how the trees hang together and why; its samples come from machine_builder.cpp and
// example_machines.cpp.
#ifndef K5AX_EXAMPLES_MACHINE_BUILDER_H
#define K5AX_EXAMPLES_MACHINE_BUILDER_H

#include <boost/shared_ptr.hpp>

#include <k5ax/k5ax.h>

namespace examples {

using Point = Geometry::TPoint<double>;
using Axis = boost::shared_ptr<md::CAxis2>;
using Node = boost::shared_ptr<md::sg::node>;

// [snippet ids]
// Every axis node has an id of its own, and it is positive: states are exchanged by id, and the flat exchange
// passes over 0. A node that stands for a frame or for the tool has an id for the host's convenience.
enum NodeId : int {
  kXNode = 1,
  kYNode = 2,
  kZNode = 3,
  kPrimaryNode = 4,
  kSecondaryNode = 5,
  kToolNode = 6,
  kMachineFrame = 10,  // root of tree 0
  kPartFrame = 11,     // root of tree 1
  kMachineLeaf = 12,   // first leaf of tree 1: the machine frame again, seen from the part
  kFixed = -999        // every fixed offset
};
// [end]

// Degrees and turns are how people write a rotary axis's travel down; the library takes radians.
double deg(double angle_deg);

// A slide along the positive axis of its letter. Positive is where the tool goes as seen from the part, also
// for a slide of the table, which itself moves the other way.
Axis linear_axis(AXIS_TYPE letter, AXIS_LOCATION location, double min, double max);

// A rotary axis about the positive direction of its letter, through `p_base`. Positive is how the tool turns
// as seen from the part, also for an axis of the table.
Axis rotary_axis(AXIS_TYPE letter, AXIS_LOCATION location, const Point& p_base, double min_deg,
                 double max_deg);

// Each of these makes a node, hangs it under `parent` (an empty one makes a root) and returns it, so that a
// tree is written from its root down.

// A frame with a name to find it by: the identity, and it stays so.
Node hang_frame(const Node& parent, int id);
// A fixed offset: a plain node of the reserved id, which translates by `offset`.
Node hang_fixed(const Node& parent, const Point& offset);
// An axis at value 0, driven by the update.
Node hang_axis(const Node& parent, int id, const md::CAxis2& axis);
// A rotary axis at value 0, with the translation back to its line on its root side.
Node hang_rotary(const Node& parent, int id, const md::CAxis2& axis);
// The tool in a head; `p_tool` leads from the tool point to the head's tool reference point.
boost::shared_ptr<md::sg::tnode<angled_head>> hang_tool(const Node& parent, int id, const angled_head& head,
                                                        const Point& p_tool);

}  // namespace examples

#endif
