// Reads a tool path from a CSV file.
#ifndef K5AX_EXAMPLES_HOST_TOOLPATH_CSV_H
#define K5AX_EXAMPLES_HOST_TOOLPATH_CSV_H

#include <string>
#include <vector>

#include <k5ax/k5ax.h>

namespace host {

using Point = Geometry::TPoint<double>;

// One row of the path.
struct Position {
  Point p_part;  // the tool point, part coordinates, the machine's length unit
  Point abc;     // rotary angles, radians
  int line;      // of the file, the header is line 1
};

// Reads a whole path. The first line is `x,y,z,a,b,c`; every other one has six numbers, the last three in
// degrees. Numbers are decimal with a point, whatever the system's language; nothing is skipped, guessed or
// filled in. Throws InputError for a file that is not there or not like that.
std::vector<Position> read_toolpath(const std::string& path);

}  // namespace host

#endif
