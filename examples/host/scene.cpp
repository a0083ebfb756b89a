// The scene graph of one machine as a host uses it: posed, walked, and read.
#include "host/scene.h"

namespace host {

Scene::Scene(md::CMachDef& machine) : m_machine(machine), m_tool(0), m_leaf(0) {
  for (int tree = 0; tree < 2; ++tree) walk(tree);

  for (const auto& rotary : machine.SG_RotAxs()) {
    const AxisNode* axis = k5axSgNode_NodeAxis_cast(rotary.get());
    if (axis != nullptr && axis->GetAxisLocation() == TABLE) m_table_rotaries.push_back(rotary.get());
  }

  while (m_tool + 1 < m_trees[0].size() && m_trees[0][m_tool].node != machine.tool_node().get()) ++m_tool;
  while (k5axSgNode_child_count(m_trees[1][m_leaf].node) > 0) ++m_leaf;
}

// [snippet walk]
void Scene::walk(int tree) {
  // With a list of its own instead of recursion, so that no tree is too deep.
  std::vector<SceneNode> to_visit = {{k5axCMachDef_SG(&m_machine, tree), -1, Geometry::Matrix()}};
  while (!to_visit.empty()) {
    const SceneNode entry = to_visit.back();
    to_visit.pop_back();
    const int place = static_cast<int>(m_trees[tree].size());
    m_trees[tree].push_back(entry);
    if (AxisNode* axis = k5axSgNode_NodeAxis_cast(entry.node)) m_axes.push_back(axis);

    // The first child is visited next, so it is put down last.
    for (int i = k5axSgNode_child_count(entry.node) - 1; i >= 0; --i)
      to_visit.push_back({k5axSgNode_child(entry.node, i), place, Geometry::Matrix()});
  }
}

void Scene::read_transforms() {
  for (std::vector<SceneNode>& tree : m_trees) {
    for (SceneNode& entry : tree) {
      const Geometry::Matrix& node_to_parent = entry.node->transform();
      entry.node_to_root = entry.parent < 0
                               ? node_to_parent
                               : node_to_parent * tree[static_cast<std::size_t>(entry.parent)].node_to_root;
    }
  }
}
// [end]

// [snippet pose]
bool Scene::pose(const Point& p_mach, const Point& abc) {
  // The update measures the tool point before it turns the table, so the table has to be at its zero pose.
  const unsigned int selector = k5axCMachDef_flags_get(&m_machine);
  for (md::sg::node* rotary : m_table_rotaries) k5axSgNode_value_set2(selector, rotary, 0);

  return UpdateNodeAxes_2(&m_machine, p_mach.x, p_mach.y, p_mach.z, abc.x, abc.y, abc.z);
}
// [end]

// [snippet tool_on_part]
Point Scene::p_tool_part() const {
  const Geometry::Matrix& tool_to_mach = m_trees[0][m_tool].node_to_root;
  const Geometry::Matrix& mach_to_part = m_trees[1][m_leaf].node_to_root;
  return CUtility::pt_o * tool_to_mach * mach_to_part;
}
// [end]

}  // namespace host
