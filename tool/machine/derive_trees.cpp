// The two trees of a common machine, made from its axes.
#include "tool/machine/derive_trees.h"

#include "tool/machine/machine_words.h"
#include "tool/machine/node_geometry.h"

namespace tool {
namespace {

// Ids of the nodes. Axis nodes have positive ones of their own, since states are exchanged by id.
enum NodeId : int {
  kXNode = 1,
  kYNode = 2,
  kZNode = 3,
  kPrimaryNode = 4,
  kSecondaryNode = 5,
  kToolId = 6,
  kMachineFrame = 10,
  kPartFrame = 11,
  kMachineLeaf = 12,
  kFixed = -999  // what the library leaves alone when it brings a tree to its initial state
};

int id_of_slot(int slot) {
  switch (slot) {
    case kX:
      return kXNode;
    case kY:
      return kYNode;
    case kZ:
      return kZNode;
    case kPrimary:
      return kPrimaryNode;
    default:
      return kSecondaryNode;
  }
}

// Hangs one node under the other, from a root down.
class Chain {
 public:
  explicit Chain(MachineRecord& machine) : m_machine(machine) {}

  int hang(NodeRecord node) {
    node.parent = m_last;
    node.transform = node.kind == kPlainNode ? node.transform : computed_transform(node);
    m_machine.nodes.push_back(node);
    m_last = static_cast<int>(m_machine.nodes.size()) - 1;
    return m_last;
  }

  int hang_frame(int id) {
    NodeRecord node;
    node.id = id;
    return hang(node);
  }

  void hang_fixed(const Point& offset) {
    NodeRecord node;
    node.id = kFixed;
    node.transform = values_of(Geometry::Translate(offset));
    hang(node);
  }

  // Nothing where the machine has no such axis there.
  void hang_slides(int location) {
    for (const int slot : {kX, kY, kZ})
      if (is_at(slot, location)) hang_axis(slot);
  }

  void hang_rotary(int slot, int location) {
    if (!is_at(slot, location)) return;
    // The node itself leads from the line to the origin; the way back is its parent's.
    hang_fixed(m_machine.axes[static_cast<std::size_t>(slot)]->base);
    m_machine.rotary_nodes[static_cast<std::size_t>(slot)] = hang_axis(slot);
  }

 private:
  bool is_at(int slot, int location) const {
    const std::optional<AxisRecord>& axis = m_machine.axes[static_cast<std::size_t>(slot)];
    return axis && axis->location == location;
  }

  int hang_axis(int slot) {
    NodeRecord node;
    node.kind = kAxisNode;
    node.id = id_of_slot(slot);
    node.flags = k5axSgNode_calc_flags(1, 0);  // driven; no axis parallel to it, over which it has to win
    node.axis = *m_machine.axes[static_cast<std::size_t>(slot)];
    return hang(node);
  }

  MachineRecord& m_machine;
  int m_last = -1;
};

}  // namespace

DeriveObstacle derive_obstacle(const MachineRecord& machine) {
  const std::string_view type = word_for(kTypes, machine.type);
  if (type.empty())
    return {-1, "trees can be left out for the three types only",
            "write \"trees\", {} for none, or one of the types " + choice(kTypes)};

  for (const int slot : {kX, kY, kZ, kPrimary, kSecondary}) {
    const std::optional<AxisRecord>& axis = machine.axes[static_cast<std::size_t>(slot)];
    if (!axis) continue;
    if (axis->location != HEAD && axis->location != TABLE)
      return {slot, "neither on the head nor on the table, so it has no place in the trees",
              "give \"location\": \"head\" or \"table\", or write \"trees\""};
    const bool is_slide = slot == kX || slot == kY || slot == kZ;
    if (is_slide != is_linear(*axis))
      return {slot, is_slide ? "does not slide" : "does not turn",
              "give the motion that goes with the place, or write \"trees\""};
    if (is_slide) continue;
    const int wanted = machine.type == MC_TT                         ? TABLE
                       : machine.type == MC_HH || slot == kSecondary ? HEAD
                                                                     : TABLE;
    if (axis->location != wanted)
      return {slot,
              "on the " + std::string(word_for(kLocations, axis->location)) + ", where a " +
                  std::string(type) + " machine has none",
              "put it on the " + std::string(word_for(kLocations, wanted)) + ", or change \"type\""};
  }
  return {};
}

void derive_trees(MachineRecord& machine, const ToolPlace& place) {
  machine.nodes.clear();
  machine.rotary_nodes = {-1, -1};

  Chain to_tool(machine);
  machine.roots[0] = to_tool.hang_frame(kMachineFrame);
  to_tool.hang_slides(HEAD);
  to_tool.hang_rotary(kPrimary, HEAD);
  to_tool.hang_rotary(kSecondary, HEAD);
  if (place.mount) to_tool.hang_fixed(*place.mount);
  NodeRecord tool;
  tool.kind = kToolNode;
  tool.id = kToolId;
  tool.head = machine.head;
  tool.head.offset = place.tool_point;
  machine.tool_node = to_tool.hang(tool);

  Chain to_part(machine);
  machine.roots[1] = to_part.hang_frame(kPartFrame);
  to_part.hang_rotary(kSecondary, TABLE);
  to_part.hang_rotary(kPrimary, TABLE);
  to_part.hang_slides(TABLE);
  to_part.hang_frame(kMachineLeaf);
}

}  // namespace tool
