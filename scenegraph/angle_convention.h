// A second convention for the angles of rotary axis nodes, which is off.
#ifndef K5AX_SCENEGRAPH_ANGLE_CONVENTION_H
#define K5AX_SCENEGRAPH_ANGLE_CONVENTION_H

namespace md {
namespace sg {

// While it is on, selector bit value 4 turns a B axis the other way and a C axis half a turn further. Nothing
// in the library switches it on.
extern bool _angle_convention;

}  // namespace sg
}  // namespace md

#endif
