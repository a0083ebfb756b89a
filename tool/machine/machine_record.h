// A machine definition as plain data: what a file holds, field by field. docs/file-format.md has the fields.
//
// A machine of the library drops what cannot be part of its trees. A record keeps it, so that what goes
// through text comes back byte for byte.
#ifndef K5AX_TOOL_MACHINE_MACHINE_RECORD_H
#define K5AX_TOOL_MACHINE_MACHINE_RECORD_H

#include <k5ax/machdef.h>

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tool {

using Point = Geometry::TPoint<double>;

/// The twelve values of a transform: where X, Y and Z go, then the translation.
using Transform = std::array<double, 12>;
constexpr Transform kIdentity = {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};

struct AxisRecord {
  Point base;
  Point direction;
  double min = 0;  ///< length unit or radians, by `motion`
  double max = 0;
  int letter = AXIS_TYPE_INVALID_LOWEST;
  int location = AXIS_LOCATION_INVALID_LOWEST;
  int motion = AXIS_MODE_INVALID_LOWEST;
};

/// An angled head in the layout of the library's record, with a name for the padding.
struct HeadRecord {
  double tilt = 0;
  double turn = 0;
  double lengths[2] = {0, 0};
  Point tip;
  Point direction;
  Point reference;
  Point offset;
  unsigned int flags = 0;
  unsigned int padding = 0;
};

enum NodeKind : int { kPlainNode = 0, kAxisNode = 1, kToolNode = 2 };

struct NodeRecord {
  int kind = kPlainNode;
  int parent = -1;  ///< a position in the list of nodes; any other number for none
  int id = 0;
  unsigned int flags = 0;
  double value = 0;
  Transform transform = kIdentity;
  AxisRecord axis;  ///< of an axis node
  HeadRecord head;  ///< of a tool node
};

/// The places for axes, in the order of the file.
enum AxisSlot : int { kPrimary = 0, kSecondary = 1, kX = 2, kY = 3, kZ = 4 };
constexpr int kSlotCount = 5;

struct MachineRecord {
  int type = MC_UNDEFINED;
  int mode = -1;
  bool is_metric = true;
  Point loading_vector;
  Point work_zero;
  HeadRecord head;  ///< zero throughout; see `straight_head`
  std::array<std::optional<AxisRecord>, kSlotCount> axes;
  std::vector<NodeRecord> nodes;
  std::array<int, 2> roots = {-1, -1};         ///< of tree 0 and tree 1, positions in `nodes`
  std::array<int, 2> rotary_nodes = {-1, -1};  ///< primary, secondary
  int tool_node = -1;
  int discipline = 0;
};

/// A head that is not angled.
HeadRecord straight_head();

/// Zeros of either sign differ, and so do NaNs with other bits.
bool same_bits(double a, double b);
bool same_bits(const Point& a, const Point& b);
bool same_bits(const Transform& a, const Transform& b);
bool same_bits(const AxisRecord& a, const AxisRecord& b);
bool same_bits(const HeadRecord& a, const HeadRecord& b);
/// The kind decides which payload counts.
bool same_bits(const NodeRecord& a, const NodeRecord& b);
bool same_bits(const MachineRecord& a, const MachineRecord& b);

bool is_rotary(const AxisRecord& axis);
bool is_linear(const AxisRecord& axis);

/// Reads the record that stands in the bytes; what follows it is left. Throws std::runtime_error where the
/// library refuses them too.
MachineRecord record_of(const std::string& bytes);
/// The bytes that a file has.
std::string bytes_of(const MachineRecord& record);

/// What the library writes for the machine.
MachineRecord record_of(md::CMachDef& machine);
/// What the library makes of the record, ready to be posed.
std::unique_ptr<md::CMachDef> machine_of(const MachineRecord& record);

}  // namespace tool

#endif
