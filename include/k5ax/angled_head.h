/// @file
/// The angled head: a tool holder whose spindle is tilted and turned against the machine's Z axis.
#ifndef K5AX_ANGLED_HEAD_H
#define K5AX_ANGLED_HEAD_H

#include <k5ax/foundation.h>

#ifdef __cplusplus
/// A record whose type information hosts may link to.
#define K5AX_RECORD struct K5AX_API
#else
#define K5AX_RECORD struct
#endif

/// The record of an angled head. 136 bytes, copied bytewise and stored in files as a raw block.
///
/// Lengths are in the definition's unit, angles in radians, directions in the frame of the mounting point,
/// which is parallel to the machine's. At home the spindle points along +Z.
typedef K5AX_RECORD angled_head {
  double b_angle;       ///< tilt, a rotation about Y
  double c_angle;       ///< turn of the tilted spindle, a rotation about Z
  double length1;       ///< from the mounting point to the tilt joint, along the untilted spindle
  double length2;       ///< from the tilt joint to the tool reference point, along the tilted spindle
  k5ax_point tip;       ///< tool reference point relative to the mounting point, as the tool direction counts
  k5ax_point tool_dir;  ///< direction of the tilted spindle; (0, 0, 1) for a straight head
  k5ax_point ref_dir;   ///< the head's X direction after tilt and turn; (1, 0, 0) for a straight head
  k5ax_point offset;    ///< in a tool node: the tool point applied last; else zero unless the host sets it
  unsigned int
      flags;  ///< in a machine's head: the machine's flags word. Value 1 set and value 2 clear: the tool is
              ///< vertical, and `tool_dir` is ignored
}
angled_head;

K5AX_FLAT_BEGIN

/// Makes a straight head: every byte zero, then `tool_dir` (0, 0, 1) and `ref_dir` (1, 0, 0).
/// @param[out] head  the record. Null is not tested
K5AX_API void k5ax_angled_head_initialise(angled_head* head);

/// Copies all 136 bytes. Null is not tested.
/// @param[out] dst  the copy
/// @param src       what is copied
K5AX_API void k5ax_angled_head_copy(angled_head* dst, const angled_head* src);

/// The head's flags word.
/// @param head  the record. Null is not tested
/// @return the word; see `angled_head::flags`
K5AX_API unsigned int k5ax_angled_head_flags_get(const angled_head* head);

/// Replaces the head's flags word.
/// @param head   the record. Null is not tested
/// @param flags  the whole word
K5AX_API void k5ax_angled_head_flags_set(angled_head* head, unsigned int flags);

/// Computes the head's geometry from its angles and lengths; offset and flags stay.
///
/// @param c_degrees    turn about Z, in degrees: +90 takes +X to +Y. Mind the order: turn first, tilt second
/// @param b_degrees    tilt about Y, in degrees: +90 takes +Z to +X
/// @param lengths      two lengths: mounting point to tilt joint, tilt joint to tool reference point
/// @param side_offset  length along Y of the tilted frame; it shows in `tip` alone and is not stored
/// @param[out] head    the record. Null is not tested
/// With rows as points, and My and Mz the two rotations:
///   tip = (0, 0, lengths[0]) Mz + (0, side_offset, lengths[1]) My Mz,  tool_dir = (0, 0, 1) My Mz,
///   ref_dir = (1, 0, 0) My Mz
K5AX_API void k5ax_angled_head_set(double c_degrees, double b_degrees, const double lengths[2],
                                   double side_offset, angled_head* head);

/// Whether the head is angled: tilted by more than 0.001 radians either way, or its tip away from the
/// mounting point at all.
/// @param head  the record
/// @return 1 when it is angled, 0 when it is straight, which a head that is only turned is too, -1 for null
K5AX_API int k5ax_is_angled_head(const angled_head* head);

/// Multiplies both lengths, the tip and the offset by `factor`; angles, directions and flags stay.
/// @param head    the record; null does nothing
/// @param factor  any number; 25.4 brings inches to millimetres
K5AX_API void k5ax_angled_head_scale(angled_head* head, double factor);

K5AX_FLAT_END

#endif
