/// @file
/// The whole library.
#ifndef K5AX_K5AX_H
#define K5AX_K5AX_H

#include <k5ax/kinematics.h>

#endif
