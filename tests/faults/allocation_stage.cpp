#include "faults/allocation_stage.h"

#include <cstring>
#include <set>
#include <sstream>
#include <vector>

#include "machdef/files/rich_machine.h"
#include "support/use_machine.h"

namespace k5ax_test {

namespace {

// So many of each kind are parked where the pools are warm: more than a clone takes of one kind, less than it
// takes of another.
constexpr int kParked = 20;
constexpr int kParkedChild = 990;
// More than is parked at any time here.
constexpr int kMostParked = 200;

// A machine with so many nodes, side by side, that walks and poses ask for memory.
void make_wide(md::CMachDef& machine) {
  md::CMachDef small;
  make_rich(small);
  small.setMetric(true);
  for (int i = 0; i < kManyPlaces; ++i) {
    NodePtr n = i % 4 == 0 ? NodePtr(md::NodeAxis_Create()) : md::sg::node::create();
    n = named(n, 100 + i);
    if (k5ax_axis_node* const axis = md::sg::axis_node(n.get())) {
      axis->SetAxis(AXIS_X);
      axis->SetAxisLocation(TABLE);
      axis->mode(LINEAR);
      axis->SetBaseVector({1, 2, 3});
      axis->SetAxisVector({1, 0, 0});
      axis->SetMin(-1);
      axis->SetMax(1);
      axis->machdef(nullptr);
    }
    small.SG()[static_cast<std::size_t>(i % 2)]->add_child(n);
  }
  machine.clone(small, 3);
}

void park_used_ones() {
  std::vector<AxisPtr> axes;
  std::vector<NodePtr> nodes;
  std::vector<boost::shared_ptr<k5ax_axis_node>> axis_nodes;
  std::vector<boost::shared_ptr<k5ax_tool_node>> tool_nodes;
  for (int i = 0; i < kParked; ++i) {
    axes.push_back(md::CAxis2::create(AXIS_B, TABLE, {1, 2, 3}, {0, 1, 0}, -1, 1, LINEAR));
    nodes.push_back(named(md::sg::node::create(), 900 + i));
    axis_nodes.push_back(md::NodeAxis_Create());
    tool_nodes.push_back(md::TOOL_NODE_Create());
    named(axis_nodes.back(), 930 + i)->value(3);
    named(tool_nodes.back(), 960 + i)->value(4);
    // Parked with what it holds.
    nodes.back()->add_child(named(md::sg::node::create(), kParkedChild));
  }
  for (AxisPtr& axis : axes) md::CAxis2::free(axis);
  for (NodePtr& n : nodes) md::sg::node::free(n);
  for (auto& n : axis_nodes) md::NodeAxis_Free(n);
  for (auto& n : tool_nodes) md::TOOL_NODE_Free(n);
}

// Poses a clone, and reads it back.
void pose_of(const md::CMachDef& machine, double* coordinates) {
  md::CMachDef posed;
  posed.clone(machine, 3);
  UpdateNodeAxes_2(&posed, 10, 20, 30, 0.1, 0.2, 0.3);
  for (int i = 0; i < 6; ++i) coordinates[i] = 0;
  k5axCMachDef_SG2MachCoords(&posed, coordinates);
}

std::string record_of(const TAxis& axis) {
  std::ostringstream text;
  text << axis.type << ' ' << axis.location << ' ' << axis.mode << ' ' << axis.min << ' ' << axis.max << ' '
       << axis.base.x << ' ' << axis.vector.x << '\n';
  return text.str();
}

std::string tree_of(const NodePtr& root) {
  std::ostringstream text;
  for (const NodePtr& n : md::sg::node::all_nodes(root))
    text << n->id() << '<' << k5axSgNode_id(n->parent_ptr()) << ' ' << n->value() << ' '
         << (Geometry::TPoint<double>(1, 2, 3) * n->transform()).x << '\n';
  return text.str();
}

}  // namespace

AllocationStage::AllocationStage(Pools pools, const ScratchFolder& folder)
    : target(new md::CMachDef),
      flat(k5axCMachDef_create()),
      record(nullptr),
      numbers(),
      m_folder(folder),
      m_file(folder / "source"),
      m_saved_file(folder / "saved") {
  make_wide(source);
  target->clone(source, 3);
  flat->clone(source, 3);
  tree = named(md::NodeAxis_Create(), 1);
  branch = named(md::sg::node::create(), 2);
  loose = named(md::TOOL_NODE_Create(), 3);
  tree->add_child(branch);
  for (int i = 0; i < kManyPlaces; ++i) branch->add_child(named(md::sg::node::create(), 10 + i));
  branch->add_child(named(md::TOOL_NODE_Create(), 4));
  for (const NodePtr& n : md::sg::node::all_nodes(tree)) n->value(5);
  axis = md::CAxis2::create(AXIS_C, TABLE, {1, 2, 3}, {0, 0, 1}, -2, 2, ROTARY);

  m_source_bytes = bytes_of(source);
  make_file(m_file, m_source_bytes);
  make_file(m_saved_file, "old");
  pose_of(source, m_pose);
  empty_pools();
  if (pools == Pools::warm) park_used_ones();
}

AllocationStage::~AllocationStage() {
  k5axCMachDef_free(&flat);
  axis_free(&record);
}

std::string AllocationStage::look() {
  std::string all = bytes_of(source) + bytes_of(*target) + tree_of(tree) + tree_of(loose) + answer;
  all.append(reinterpret_cast<const char*>(numbers), sizeof numbers);
  if (flat != nullptr) all += bytes_of(*flat);
  if (axis) all += record_of(*k5ax_detail::record(axis.get()));
  if (record != nullptr) all += record_of(*record);
  return all + contents(m_file) + contents(m_saved_file);
}

std::string AllocationStage::fault_of_source() {
  if (bytes_of(source) != m_source_bytes) return "the source is saved as other bytes";
  md::CMachDef clone;
  clone.clone(source, 3);
  if (bytes_of(clone) != m_source_bytes) return "a clone of the source is saved as other bytes";
  double pose[6];
  pose_of(source, pose);
  if (std::memcmp(pose, m_pose, sizeof pose) != 0) return "a clone of the source has another pose";
  return "";
}

std::string AllocationStage::fault_of_the_rest() {
  std::string fault = use_machine(*target);
  tree->initialise(true);
  if (md::sg::node::node_clone(tree)->child_list().size() != tree->child_list().size())
    fault += "the tree has another clone";
  return fault;
}

std::string AllocationStage::fault_of_files() const {
  if (m_folder.names() != Names{"saved", "source"}) return "there is another file";
  if (contents(m_file) != m_source_bytes) return "the file that was read has changed";
  const std::string saved = contents(m_saved_file);
  return saved == "old" || saved == m_source_bytes ? "" : "a file is neither the old nor the new one";
}

std::string AllocationStage::fault_of_pools() const {
  std::set<const void*> living;
  std::set<const void*> living_axes = {axis.get()};
  const auto add_tree = [&living](const NodePtr& root) {
    for (const NodePtr& n : md::sg::node::all_nodes(root)) living.insert(n.get());
  };
  const auto add_machine = [&](const md::CMachDef& machine) {
    for (const NodePtr& root : machine.SG()) add_tree(root);
    for (const AxisPtr& a : machine.xyz_axes()) living_axes.insert(a.get());
    living_axes.insert(machine.getPrimary().get());
    living_axes.insert(machine.getSecondary().get());
  };
  add_machine(source);
  add_machine(*target);
  if (flat != nullptr) add_machine(*flat);
  add_tree(tree);
  add_tree(loose);

  std::vector<AxisPtr> axes;
  std::vector<NodePtr> nodes[3];  // plain, axis, tool
  for (int i = 0; i < kMostParked; ++i) {
    axes.push_back(md::CAxis2::create());
    nodes[0].push_back(md::sg::node::create());
    nodes[1].push_back(md::NodeAxis_Create());
    nodes[2].push_back(md::TOOL_NODE_Create());
  }
  for (const AxisPtr& a : axes) {
    if (!a) return "an empty pointer was parked among the axes";
    if (!living_axes.insert(a.get()).second) return "an axis was parked that is in use, or twice";
    md::CAxis2::scale(a, 2);
  }
  for (int kind = 0; kind < 3; ++kind)
    for (const NodePtr& n : nodes[kind]) {
      if (!n) return "an empty pointer was parked among the nodes";
      if (!living.insert(n.get()).second) return "a node was parked that is in use, or twice";
      if ((md::sg::axis_node(n.get()) != nullptr) != (kind == 1) ||
          (md::sg::tool_node(n.get()) != nullptr) != (kind == 2))
        return "a node is in the pool of another kind";
      if (n->parent_ptr() != nullptr) return "a parked node has a parent";
      for (const NodePtr& child : n->child_list())
        if (child->id() != kParkedChild) return "a parked node holds another's child";
      n->scale_node(2, true);
    }
  return "";
}

}  // namespace k5ax_test
