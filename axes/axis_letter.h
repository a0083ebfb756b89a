// What the letter of an axis says: which component of a triple is its own.
#ifndef K5AX_AXES_AXIS_LETTER_H
#define K5AX_AXES_AXIS_LETTER_H

#include <k5ax/axes.h>

// 0, 1, 2 for x, y, z; -1 where the type is no letter.
inline int component_of(AXIS_TYPE type) {
  if (type < AXIS_A || type > AXIS_Z) return -1;
  return type < AXIS_X ? type - AXIS_A : type - AXIS_X;
}

inline double value_of(AXIS_TYPE type, double x, double y, double z) {
  switch (component_of(type)) {
    case 0:
      return x;
    case 1:
      return y;
    case 2:
      return z;
    default:
      return 0.0;
  }
}

inline void set_value_of(AXIS_TYPE type, double value, double* x, double* y, double* z) {
  switch (component_of(type)) {
    case 0:
      *x = value;
      break;
    case 1:
      *y = value;
      break;
    case 2:
      *z = value;
      break;
    default:
      break;
  }
}

#endif
