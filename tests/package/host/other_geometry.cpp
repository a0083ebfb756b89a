// A geometry of the host's own, marked so that the host can tell that it is in use.
#include <platform/builtin/geometry.cpp>

extern "C" K5AX_API int other_geometry_mark();

int other_geometry_mark() { return 4711; }
