// md::CMachDef: how a machine is made, emptied, converted between units, and what it keeps for the host.
#include <k5ax/machdef.h>

#include <algorithm>
#include <new>
#include <typeinfo>
#include <utility>

namespace md {

namespace {

constexpr double kMillimetresPerInch = 25.4;
constexpr double kInchesPerMillimetre = 1.0 / 25.4;

constexpr unsigned int kToolIsVertical = 1;     // head flags: the tool direction is (0, 0, 1) ...
constexpr unsigned int kToolIsNotVertical = 2;  // ... unless this is set too

// False for a node of a host's own class, which may scale what is below it in its own way.
bool is_ours(const sg::node& n) {
  return typeid(n) == typeid(sg::node) || typeid(n) == typeid(sg::tnode<CAxis2>) ||
         typeid(n) == typeid(sg::tnode<angled_head>);
}

// Parks the node in the pool of its kind; without memory for that, the node ends with its last pointer.
void give_back(boost::shared_ptr<sg::node> n) {
  if (sg::axis_node(n.get()) != nullptr) {
    boost::shared_ptr<sg::tnode<CAxis2>> axis = boost::static_pointer_cast<sg::tnode<CAxis2>>(std::move(n));
    NodeAxis_Free(axis);
  } else if (sg::tool_node(n.get()) != nullptr) {
    boost::shared_ptr<sg::tnode<angled_head>> tool =
        boost::static_pointer_cast<sg::tnode<angled_head>>(std::move(n));
    TOOL_NODE_Free(tool);
  } else {
    sg::node::free(n);
  }
}

}  // namespace

IMachDefVisitor::~IMachDefVisitor() = default;

CMachDef::CMachDef() : CMachDef(static_cast<MACHINE_MODE>(-1)) {}

CMachDef::CMachDef(MACHINE_MODE mode)
    : m_machType(MC_UNDEFINED), m_mode(mode), m_discipline(static_cast<K5AX_DISCIPLINE>(0)), m_metric(true) {
  k5ax_angled_head_initialise(&m_head);
}

CMachDef::~CMachDef() {
  // Where the pools cannot take everything for want of memory, the rest is destroyed with its last pointer.
  try {
    remove_axes();
  } catch (const std::bad_alloc&) {
  }
}

void CMachDef::remove_axes() {
  CAxis2::free(m_primary);
  CAxis2::free(m_secondary);
  for (boost::shared_ptr<CAxis2>& axis : m_xyz_axes) CAxis2::free(axis);

  // A root may hang below a node of somebody else's, whose tree must not go on holding what is parked here.
  for (const std::vector<boost::shared_ptr<sg::node>>& nodes : m_nodes)
    if (!nodes.empty())
      if (sg::node* const above = nodes.front()->parent_ptr()) above->remove_child(nodes.front());

  m_SG[0].reset();
  m_SG[1].reset();
  m_SG_RotAxs[0].reset();
  m_SG_RotAxs[1].reset();
  m_tool_node.reset();

  // All are cut loose first, so that none is another's child when it is parked. A node that stands in both
  // lists is given back once.
  for (const std::vector<boost::shared_ptr<sg::node>>& nodes : m_nodes)
    for (const boost::shared_ptr<sg::node>& n : nodes) {
      n->reset();
      n->m_listed = true;
    }
  try {
    for (std::vector<boost::shared_ptr<sg::node>>& nodes : m_nodes)
      for (boost::shared_ptr<sg::node>& n : nodes)
        if (std::exchange(n->m_listed, false)) give_back(std::move(n));
  } catch (const std::bad_alloc&) {
    // What is parked, or lost on the way, leaves both lists: they are posed by, and given back another time.
    const auto is_gone = [](const boost::shared_ptr<sg::node>& n) { return !n || !n->m_listed; };
    for (std::vector<boost::shared_ptr<sg::node>>& nodes : m_nodes)
      nodes.erase(std::remove_if(nodes.begin(), nodes.end(), is_gone), nodes.end());
    throw;
  }
  for (std::vector<boost::shared_ptr<sg::node>>& nodes : m_nodes) nodes.clear();
}

// In the order of all_nodes, and with the room that the update needs.
void CMachDef::list_nodes() {
  for (std::size_t i = 0; i < m_SG.size(); ++i) {
    m_nodes[i].clear();
    sg::node::list_nodes(m_SG[i], m_nodes[i]);
  }
  make_room_for_update();
}

// So that the update of a machine with many nodes need not ask for memory.
void CMachDef::make_room_for_update() {
  const std::size_t count = m_nodes[0].size() + m_nodes[1].size();
  if (count > kFewNodes && count > m_driven_ids.size()) m_driven_ids.resize(count);
}

void CMachDef::reset() {
  remove_axes();
  m_machType = MC_UNDEFINED;
  initialise_head();
}

void CMachDef::initialise_head() {
  k5ax_angled_head_initialise(&m_head);
  m_loading_vector = CUtility::pt_o;
}

void CMachDef::copy(const CMachDef& other) {
  CAxis2::copy(m_primary, other.m_primary);
  CAxis2::copy(m_secondary, other.m_secondary);
  for (std::size_t i = 0; i < m_xyz_axes.size(); ++i) CAxis2::copy(m_xyz_axes[i], other.m_xyz_axes[i]);

  m_machType = other.m_machType;
  m_metric = other.m_metric;
  m_mode = other.m_mode;
  m_loading_vector = other.m_loading_vector;
  m_mwZeroPos = other.m_mwZeroPos;
  if (m_primary) m_primary->machdef(this);
  if (m_secondary) m_secondary->machdef(this);
  m_discipline = other.m_discipline;
  k5ax_angled_head_copy(&m_head, &other.m_head);

  if (!m_SG[0] && !m_SG[1]) return;
  // Both trees' lists count as one, so a node's partner may stand in the other list.
  const std::vector<boost::shared_ptr<sg::node>>* source = other.m_nodes;
  std::size_t next = 0;
  for (const std::vector<boost::shared_ptr<sg::node>>& nodes : m_nodes)
    for (const boost::shared_ptr<sg::node>& n : nodes) {
      if (next == source->size() && source == other.m_nodes) {
        ++source;
        next = 0;
      }
      if (next == source->size()) return;
      sg::node::shallow_copy(n, (*source)[next++]);
    }
}

void CMachDef::scale(bool metric) {
  if (metric == m_metric) return;

  // Listed before anything changes, so that memory running out leaves the machine as it was.
  std::vector<boost::shared_ptr<sg::node>> nodes;
  for (const boost::shared_ptr<sg::node>& root : m_SG)
    if (root && is_ours(*root)) sg::node::list_nodes(root, nodes);

  const double factor = metric ? kMillimetresPerInch : kInchesPerMillimetre;
  CAxis2::scale(m_primary, factor);
  CAxis2::scale(m_secondary, factor);
  for (const boost::shared_ptr<CAxis2>& axis : m_xyz_axes) CAxis2::scale(axis, factor);
  m_metric = metric;
  k5ax_angled_head_scale(&m_head, factor);
  // Deliberate: work zero and loading vector stay; the host keeps them in its own unit.
  for (const boost::shared_ptr<sg::node>& n : nodes) n->scale_node(factor, false);
  for (const boost::shared_ptr<sg::node>& root : m_SG)
    if (root && !is_ours(*root)) root->scale_node(factor, true);
}

void CMachDef::setPrimary(boost::shared_ptr<CAxis2> axis) { m_primary = std::move(axis); }

void CMachDef::setSecondary(boost::shared_ptr<CAxis2> axis) { m_secondary = std::move(axis); }

void CMachDef::tool_node(boost::shared_ptr<sg::tnode<angled_head>> node) { m_tool_node = std::move(node); }

bool CMachDef::tool_is_vertical() const {
  return (m_head.flags & kToolIsVertical) != 0 && (m_head.flags & kToolIsNotVertical) == 0;
}

Geometry::TPoint<double> CMachDef::getToolDir() const {
  return tool_is_vertical() ? CUtility::pt_z : m_head.tool_dir;
}

}  // namespace md
