// What the library makes of an axis, a head and a value: the transforms of nodes, and the geometry of a head.
#ifndef K5AX_TOOL_MACHINE_NODE_GEOMETRY_H
#define K5AX_TOOL_MACHINE_NODE_GEOMETRY_H

#include "tool/machine/machine_record.h"

namespace tool {

Transform values_of(const Geometry::Matrix& matrix);

/// The transform of a node that carries the axis, at the value.
Transform axis_transform(const AxisRecord& axis, double value);
/// The transform of a tool node with the head, whose offset is the tool point.
Transform tool_transform(const HeadRecord& head);
/// The transform that a node of the kind has by what it carries; the identity of a plain one.
Transform computed_transform(const NodeRecord& node);

/// A head of these angles and lengths, its tip and directions computed; offset, flags and padding zero.
/// @param turn_deg     degrees
/// @param tilt_deg     degrees
/// @param side_offset  length
HeadRecord head_of(double turn_deg, double tilt_deg, const double (&lengths)[2], double side_offset);

}  // namespace tool

#endif
