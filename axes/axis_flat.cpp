// The flat functions on axis records.
#include <k5ax/axes.h>

#include <cstddef>

#include "axes/axis_letter.h"

extern "C" TAxis* axis_clone(const TAxis* axis) { return axis != nullptr ? new TAxis(*axis) : nullptr; }

extern "C" int axis_copy(TAxis* to, const TAxis* from) {
  if (to != nullptr && from != nullptr) *to = *from;
  return 1;
}

extern "C" int axis_free(TAxis** axis) {
  if (axis == nullptr) return 1;
  delete *axis;
  *axis = nullptr;
  return 1;
}

extern "C" AXIS_LOCATION axis_location(const TAxis* axis) {
  return axis != nullptr ? axis->location : AXIS_LOCATION_INVALID_LOWEST;
}

extern "C" double* axis_limits(TAxis* axis) {
  // The second double of the pair.
  static_assert(offsetof(TAxis, max) == offsetof(TAxis, min) + sizeof(double), "max follows min");
  return axis != nullptr ? &axis->min : nullptr;
}

extern "C" double axis_get_value(const TAxis* axis, double x, double y, double z) {
  return axis != nullptr ? value_of(axis->type, x, y, z) : 0.0;
}

extern "C" int axis_set_value(const TAxis* axis, double value, double* x, double* y, double* z) {
  if (axis != nullptr) set_value_of(axis->type, value, x, y, z);
  return 1;
}
