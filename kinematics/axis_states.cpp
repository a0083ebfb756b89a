// Taking and restoring the live states of a machine's axis nodes, and placing its tool node.
#include <k5ax/kinematics.h>

#include <algorithm>
#include <boost/container/small_vector.hpp>
#include <cstddef>
#include <functional>
#include <iterator>

namespace md {

namespace {

constexpr std::size_t kUsualCount =
    32;  // nodes waiting in a walk, and records in a call, without asking for memory

// Visits the axis nodes of both trees, in the order of all_nodes, until a visit answers true.
template <class Visit>
void visit_axis_nodes(const CMachDef& machdef, Visit visit) {
  for (const boost::shared_ptr<sg::node>& root : machdef.SG()) {
    boost::container::small_vector<sg::node*, kUsualCount> to_visit;
    for (sg::node* n = root.get(); n != nullptr;) {
      if (sg::axis_node(n) != nullptr && visit(*n)) return;
      const std::vector<boost::shared_ptr<sg::node>>& children = n->child_list();
      for (auto child = children.rbegin(); child != children.rend(); ++child)
        to_visit.push_back(child->get());
      n = nullptr;
      if (to_visit.empty()) continue;
      n = to_visit.back();
      to_visit.pop_back();
    }
  }
}

// The records of one call, looked up by id. Of records with the same id the last one counts, and none has the
// id 0. (Deliberate: 0 is what hosts' unused records carry.)
class Records {
 public:
  Records(const node_state* states, int count) : m_begin(states), m_end(states + std::max(count, 0)) {
    if (are_few()) return;
    for (const node_state* state = m_begin; state != m_end; ++state) m_sorted.push_back(state);
    std::sort(m_sorted.begin(), m_sorted.end(), comes_before);
  }

  // Null when there is none.
  const node_state* find(int id) const {
    if (id == 0) return nullptr;
    return are_few() ? search(id) : look_up(id);
  }

 private:
  // So few that searching them for every axis costs less than putting them in order.
  static constexpr std::ptrdiff_t kFew = 16;

  bool are_few() const { return m_end - m_begin <= kFew; }

  const node_state* search(int id) const {
    for (const node_state* state = m_end; state != m_begin;)
      if ((--state)->id == id) return state;
    return nullptr;
  }

  // By id, and records of the same id in the order in which they came. The order of std::less, since it is
  // asked of pointers.
  static bool comes_before(const node_state* a, const node_state* b) {
    return a->id != b->id ? a->id < b->id : std::less<const node_state*>()(a, b);
  }

  const node_state* look_up(int id) const {
    const auto after = std::upper_bound(m_sorted.begin(), m_sorted.end(), id,
                                        [](int key, const node_state* state) { return key < state->id; });
    if (after == m_sorted.begin() || (*std::prev(after))->id != id) return nullptr;
    return *std::prev(after);
  }

  const node_state* m_begin;
  const node_state* m_end;
  boost::container::small_vector<const node_state*, kUsualCount> m_sorted;  // empty while they are few
};

}  // namespace

std::map<int, node_state> CMachDef_IdAxisState_get(const CMachDef& md) {
  std::map<int, node_state> states;
  visit_axis_nodes(md, [&states](sg::node& n) {
    node_state state;
    k5axSgNode_state_get_(&n, &state);
    states.emplace(state.id, state);
    return false;
  });
  return states;
}

void CMachDef_IdAxisState_set(CMachDef& md, const std::map<int, node_state>& states) {
  visit_axis_nodes(md, [&states](sg::node& n) {
    const auto found = states.find(n.id());
    if (found != states.end()) node_state_set(n, found->second);
    return false;
  });
}

}  // namespace md

extern "C" int CMachDef_IdAxisState_set2(md::CMachDef* machdef, const node_state* states, int count) {
  if (count == 0 || machdef == nullptr || (states == nullptr && count > 0)) return 0;

  const md::Records records(states, count);
  md::visit_axis_nodes(*machdef, [&records](md::sg::node& n) {
    if (const node_state* const state = records.find(n.id())) md::node_state_set(n, *state);
    return false;
  });
  return 1;
}

extern "C" double CMachDef_Axis_Position_Get(md::CMachDef* machdef, int id) {
  if (machdef == nullptr) return 0.0;
  double position = 0.0;
  md::visit_axis_nodes(*machdef, [id, &position](const md::sg::node& n) {
    if (n.id() != id) return false;
    position = n.value();
    return true;
  });
  return position;
}

extern "C" void k5axSgNode_value_set2(unsigned int selector, md::sg::node* n, double value) {
  if (k5ax_axis_node* const axis_node = md::sg::axis_node(n))
    md::NodeAxis_transform_set(selector, *axis_node, value);
}

extern "C" void CMachDef_ToolNode_matrix_Set(md::CMachDef* machdef, const Geometry::TPoint<double>& p) {
  if (machdef != nullptr) k5axSgToolNodeMatrixSet(machdef->tool_node(), p);
}

extern "C" void CMachDef_ToolNode_matrix_SetXYZ(md::CMachDef* machdef, double x, double y, double z) {
  CMachDef_ToolNode_matrix_Set(machdef, {x, y, z});
}
