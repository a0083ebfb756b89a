// Everything of the module that takes from the library's pools or gives back to them, but for wrapping, which
// works on clones of its own.
#ifndef K5AX_PYTHON_POOLS_H
#define K5AX_PYTHON_POOLS_H

#include <k5ax/k5ax.h>

#include <boost/shared_ptr.hpp>

#include <memory>
#include <string>
#include <vector>

namespace k5ax_python {

using Point = Geometry::TPoint<double>;
using AxisPtr = boost::shared_ptr<md::CAxis2>;
using NodePtr = boost::shared_ptr<md::sg::node>;
using MachinePtr = std::shared_ptr<md::CMachDef>;

// An empty machine, which gives its axes and nodes back under the lock when it dies.
MachinePtr new_machine();
// A machine of the same record: exact, while a clone normalises directions and finds rotary nodes by id.
MachinePtr copy_machine(md::CMachDef& machine);
std::string record_of(md::CMachDef& machine);
// Replaces what is there and drops it, so that who holds an axis or a node keeps it.
void read_record(md::CMachDef& machine, IIO::Stream& stream);

// An axis of the machine's own, with the same record; empty for null.
AxisPtr adopt_axis(md::CMachDef& machine, const md::CAxis2* from);
AxisPtr new_axis(AXIS_TYPE type, AXIS_LOCATION location, const Point& base, const Point& vector, double min,
                 double max, AXIS_MODE mode);

// Nodes without children and parent, id 0.
NodePtr new_node();
boost::shared_ptr<md::sg::tnode<md::CAxis2>> new_axis_node(const md::CAxis2& axis);
boost::shared_ptr<md::sg::tnode<angled_head>> new_tool_node(const angled_head& head);
// A copy of the node and all below it, which hangs nowhere. (`node_clone` would hang it beside the original.)
NodePtr copy_tree(const NodePtr& root);

}  // namespace k5ax_python

#endif
