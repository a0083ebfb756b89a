/// @file
/// Wrapping about the rotary axis, posing the scene graph from machine coordinates, and the states of the
/// axis nodes. (Orientation and the part and machine transforms are members of md::CMachDef.)
#ifndef K5AX_KINEMATICS_H
#define K5AX_KINEMATICS_H

#include <k5ax/machdef.h>

#ifdef __cplusplus

#include <map>

namespace md {

/// Turns a Cartesian point about the part's rotary axis into a reference half-plane, and says by which angle.
///
/// @param machdef    the machine; null, or a machine without `rotary_axis()`, gives `outPoint` = `point`,
///                   `outRotary` = `rotary` and `radius` = 0
/// @param point      length unit, machine coordinates at the pose `rotary`
/// @param rotary     a, b, c in radians: the pose (`CMachDef::orientate`) for which the axis direction d is
///                   taken
/// @param refAxis    0, 1, 2: the half-plane is that of +X, +Y, +Z; any other value is taken as 0
/// @param refSign    negative: the half-plane is that of the opposite direction
/// @param[out] outPoint   `point` turned about the line through the origin along d
/// @param[out] outRotary  `rotary`, with the component of the rotary axis's letter (of a linear one too)
///                        replaced by minus the angle turned, in [-pi, pi]
/// @param[out] radius     distance of `point` from that line. Below 5e-9 the point is on the axis: it is not
///                        turned and `outRotary` = `rotary`
/// The cosine of the angle is not clamped: a component of the point divided by the length of its radial part
/// is never beyond 1. A point that is not finite gives results that are not.
/// Cost: works on a clone of the machine, made at every call.
K5AX_API void Cartesian2AxialRotaryVals(const CMachDef* machdef, const Geometry::TPoint<double>& point,
                                        const Geometry::TPoint<double>& rotary, int refAxis, int refSign,
                                        Geometry::TPoint<double>& outPoint,
                                        Geometry::TPoint<double>& outRotary, double& radius);

/// Poses the scene graph for machine coordinates: writes every axis node's value and transform, and places
/// the linear axes so that the tool point lands on X, Y, Z.
///
/// The axis nodes it drives are those with flag bit value 1, and the two of `SG_RotAxs`. In this order: head
/// rotaries are set; linear axes are zeroed; the tool point is measured, carried through the tool node's
/// stack and the first leaf of tree 1; the linear values that bring it to X, Y, Z are solved and written;
/// table rotaries are set.
///
/// The tool point is therefore measured while the table's rotary nodes still hold what they held before the
/// call. A host that wants each pose to stand for itself first brings every table rotary node to its zero
/// pose with `k5axSgNode_value_set2(selector, node, 0)`. (`k5axSgNode_initialise` is not that: it sets the
/// identity, while a rotary node at value 0 holds the translation by minus its base point.)
///
/// Of two parallel linear axes (directions within 0.001 by their dot product) one is dropped and keeps its
/// value; flag bit value 2 marks the one that stays. Two `AXIS_Z` nodes at right angles, with a node marked
/// by bit value 2, make a machine that cannot change Z: the placement then only succeeds where the tool point
/// is at Z already.
///
/// @param md   the machine, posed through the lists that loading and cloning make; null answers false. A
///             missing tool node, or a second tree without nodes, counts as the identity
/// @param xyz  X, Y, Z, length unit; the part's frame at the table's zero pose
/// @param abc  A, B, C, radians, written as they are; limits are not looked at
/// @return false when the point cannot be reached: the driven linear axes are then at zero, and the rotary
///         axes are set all the same
/// Allocates nothing.
K5AX_API bool UpdateNodeAxes_(CMachDef* md, Geometry::TPoint<double> xyz, Geometry::TPoint<double> abc);

/// `UpdateNodeAxes_` on a reference.
/// @param md   the machine
/// @param xyz  X, Y, Z, length unit
/// @param abc  A, B, C, radians
/// @return as `UpdateNodeAxes_`
K5AX_API bool CMachDef_MachCoords2SG(CMachDef& md, const Geometry::TPoint<double>& xyz,
                                     const Geometry::TPoint<double>& abc);

/// Reads machine coordinates back out of the scene graph. Allocates nothing.
/// @param md           the machine, as it was posed; nothing in it changes
/// @param[out] xyz     the origin carried through the tool node's stack, then through the linear axis nodes
///                     and the plain nodes of id 1 or more between the first leaf of tree 1 and its root, so
///                     that the table's rotation does not enter. Fixed offsets that belong to the rotation
///                     are left out by the reserved id -999
/// @param[in,out] abc  the values of the two nodes of `SG_RotAxs`, by letter; a component that none writes
///                     stays as it was
K5AX_API void CMachDef_SG2MachCoords(CMachDef& md, Geometry::TPoint<double>& xyz,
                                     Geometry::TPoint<double>& abc);

/// The states of all axis nodes of both trees.
/// @param md  the machine
/// @return states by node id; of two nodes with the same id the first wins, tree 0 before tree 1
K5AX_API std::map<int, node_state> CMachDef_IdAxisState_get(const CMachDef& md);

/// Gives every axis node of both trees whose id is in `states` those flags and that value, and rebuilds its
/// transform. Ids without a node and nodes without an entry are left alone.
/// @param md      the machine
/// @param states  states by node id
K5AX_API void CMachDef_IdAxisState_set(CMachDef& md, const std::map<int, node_state>& states);

}  // namespace md

/// The component that belongs to a letter.
/// @param type  the letter
/// @param xyz   where X, Y, Z have theirs
/// @param abc   where A, B, C have theirs
/// @return the address in `xyz` or `abc`; null for any other type
K5AX_API double* AXIS_TYPE_val_get(AXIS_TYPE type, Geometry::TPoint<double>& xyz,
                                   Geometry::TPoint<double>& abc);

#endif  // __cplusplus

K5AX_FLAT_BEGIN

/// The pointer that belongs to a letter. The pointers are not looked at.
/// @param type  the letter
/// @param x     what X gives
/// @param y     what Y gives
/// @param z     what Z gives
/// @param a     what A gives
/// @param b     what B gives
/// @param c     what C gives
/// @return one of the six; null for any other type
K5AX_API double* AXIS_TYPE_val_get(AXIS_TYPE type, double* x, double* y, double* z, double* a, double* b,
                                   double* c);

/// `md::Cartesian2AxialRotaryVals` on triples of doubles. Writes nothing when any pointer is null. Outputs
/// may be the inputs.
/// @param machdef         the machine
/// @param point           x, y, z, length unit
/// @param rotary          a, b, c, radians
/// @param refAxis         0, 1, 2: the half-plane of X, Y, Z
/// @param refSign         negative: that of the opposite direction
/// @param[out] outPoint   x, y, z: the point in the half-plane
/// @param[out] outRotary  a, b, c: the angles that go with it
/// @param[out] radius     one double: the distance from the axis
K5AX_API void Cartesian2AxialRotaryVals_c(const k5ax_machdef* machdef, const double* point,
                                          const double* rotary, int refAxis, int refSign, double* outPoint,
                                          double* outRotary, double* radius);

/// Poses the scene graph, as `md::UpdateNodeAxes_`.
/// @param machdef  the machine
/// @param x        X, length unit
/// @param y        Y, length unit
/// @param z        Z, length unit
/// @param a        A, radians
/// @param b        B, radians
/// @param c        C, radians
/// @return true when the point is reached; false for null
K5AX_API bool UpdateNodeAxes_2(k5ax_machdef* machdef, double x, double y, double z, double a, double b,
                               double c);

/// Poses the scene graph, as `md::UpdateNodeAxes_`.
/// @param machdef  the machine
/// @param v        six doubles X, Y, Z (length unit), A, B, C (radians)
/// @return 1 when reached, 0 when not; 0, and nothing changes, when either pointer is null
K5AX_API int k5axCMachDef_MachCoords2SG(k5ax_machdef* machdef, const double* v);

/// Reads machine coordinates back, as `md::CMachDef_SG2MachCoords`. Nothing when either pointer is null.
/// @param machdef  the machine
/// @param[out] v   six doubles X, Y, Z (length unit), A, B, C (radians); an angle without an axis comes out 0
K5AX_API void k5axCMachDef_SG2MachCoords(k5ax_machdef* machdef, double* v);

/// Gives axis nodes the states of some records. A later record of the same id wins, and a record of id 0 is
/// passed over, since 0 is what a host's unused records carry.
/// @param machdef  the machine
/// @param states   the records, in any order
/// @param count    their number; a negative one gives 1 and changes nothing
/// @return 0, and nothing changes, for a count of 0, a null machine, or null records with a positive count;
///         else 1
K5AX_API int CMachDef_IdAxisState_set2(k5ax_machdef* machdef, const node_state* states, int count);

/// The value of an axis node.
/// @param machdef  the machine
/// @param id       the node's; where several have it, the first met counts
/// @return radians or length units by kind of axis; 0.0 when there is no such axis node and for null
K5AX_API double CMachDef_Axis_Position_Get(k5ax_machdef* machdef, int id);

/// Sets an axis node to a value and rebuilds its transform, while `k5axSgNode_value_set` stores the value
/// only.
/// @param selector  the machine's flags word by convention; has no effect at present
/// @param n         the node; another kind of node and null do nothing
/// @param value     radians or length units by kind of axis
K5AX_API void k5axSgNode_value_set2(unsigned int selector, k5ax_node* n, double value);

#ifdef __cplusplus
/// Applies the tool node rule (`k5axSgToolNodeMatrixSet`) to the machine's tool node.
/// @param machdef  the machine; null, or one without a tool node, does nothing
/// @param p        the tool point, length unit
K5AX_API void CMachDef_ToolNode_matrix_Set(k5ax_machdef* machdef, const Geometry::TPoint<double>& p);
#endif

/// Applies the tool node rule, as `CMachDef_ToolNode_matrix_Set`.
/// @param machdef  the machine; null, or one without a tool node, does nothing
/// @param x        the tool point's x, length unit
/// @param y        its y
/// @param z        its z
K5AX_API void CMachDef_ToolNode_matrix_SetXYZ(k5ax_machdef* machdef, double x, double y, double z);

K5AX_FLAT_END

#endif
