// md::CMachDef: independent copies.
#include <k5ax/machdef.h>

#include <utility>

namespace md {

namespace {

constexpr unsigned int kCloneMachine = 1;
constexpr unsigned int kCloneSceneGraph = 2;

}  // namespace

void CMachDef::clone(const CMachDef& other, unsigned int flags) {
  if (&other == this) return;  // the reset would destroy what is to be copied
  reset();
  if ((flags & kCloneMachine) != 0) clone_machine(other);
  if ((flags & kCloneSceneGraph) != 0) clone_scene_graph(other);
}

boost::shared_ptr<CAxis2> CMachDef::clone_axis(const boost::shared_ptr<CAxis2>& axis) {
  if (!axis) return {};
  boost::shared_ptr<CAxis2> copy = axis->clone();
  copy->m_machdef = this;
  return copy;
}

void CMachDef::clone_machine(const CMachDef& other) {
  m_machType = other.m_machType;
  m_metric = other.m_metric;
  m_mode = other.m_mode;
  m_loading_vector = other.m_loading_vector;
  m_mwZeroPos = other.m_mwZeroPos;
  m_primary = clone_axis(other.m_primary);
  m_secondary = clone_axis(other.m_secondary);
  for (std::size_t i = 0; i < m_xyz_axes.size(); ++i) m_xyz_axes[i] = clone_axis(other.m_xyz_axes[i]);
  m_discipline = other.m_discipline;
  k5ax_angled_head_copy(&m_head, &other.m_head);
}

void CMachDef::clone_scene_graph(const CMachDef& other) {
  for (std::size_t i = 0; i < m_SG.size(); ++i) {
    sg::node* const root = other.m_SG[i].get();
    if (root == nullptr) continue;
    std::vector<boost::shared_ptr<sg::node>> listed = std::move(m_nodes[i]);  // where cloning fails, none
    listed.reserve(other.m_nodes[i].size());
    m_SG[i] = sg::node::_node_clone(*root, &listed);
    m_nodes[i] = std::move(listed);
  }
  make_room_for_update();

  // The rotary nodes are found by id, the tool node by its kind; the first one counts.
  for (const std::vector<boost::shared_ptr<sg::node>>& nodes : m_nodes)
    for (const boost::shared_ptr<sg::node>& n : nodes) {
      if (sg::tnode<CAxis2>* const axis_node = sg::axis_node(n.get())) {
        axis_node->machdef(this);
        for (std::size_t i = 0; i < m_SG_RotAxs.size(); ++i)
          if (!m_SG_RotAxs[i] && other.m_SG_RotAxs[i] && other.m_SG_RotAxs[i]->id() == n->id())
            m_SG_RotAxs[i] = n;
      } else if (sg::tool_node(n.get()) != nullptr && !m_tool_node && other.m_tool_node) {
        m_tool_node = boost::static_pointer_cast<sg::tnode<angled_head>>(n);
      }
    }
}

}  // namespace md
