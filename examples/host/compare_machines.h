// Compares two machine definitions field by field.
#ifndef K5AX_EXAMPLES_HOST_COMPARE_MACHINES_H
#define K5AX_EXAMPLES_HOST_COMPARE_MACHINES_H

#include <string>

#include <k5ax/k5ax.h>

namespace host {

// The first field that differs in any bit that counts, such as "tree 1, node 3: transform"; empty when none
// does. The order and the links of the nodes are compared, the owners of the axes are not.
std::string first_difference(const md::CMachDef& one, const md::CMachDef& other);

}  // namespace host

#endif
