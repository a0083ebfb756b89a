/* Numbers as text: six decimals and a point, a space before each. */
#ifndef K5AX_BINDINGS_NUMBERS_H
#define K5AX_BINDINGS_NUMBERS_H

#include <math.h>
#include <stdio.h>

/* A number that six decimals show as zero has no sign. */
static inline void print_numbers(const double* values, int count) {
  for (int i = 0; i < count; ++i) printf(" %.6f", fabs(values[i]) < 0.5e-6 ? 0.0 : values[i]);
}

#endif
