// Numbers that text cannot hold.
#include "tool/machine/finite.h"

#include "tool/machine/machine_words.h"

#include <cmath>

namespace tool {
namespace {

// Looks at numbers until one is not finite; keeps the first.
class Search {
 public:
  void look(double number, const char* name, const std::string& where) {
    if (!m_found.place.empty() || std::isfinite(number)) return;
    m_found.place = where + name;
    m_found.number = number;
  }
  void look(const Point& p, const std::string& where) {
    look(p.x, "/0", where);
    look(p.y, "/1", where);
    look(p.z, "/2", where);
  }
  void look(const AxisRecord& axis, const std::string& where) {
    look(axis.base, where + "/point");
    look(axis.direction, where + "/direction");
    look(axis.min, "/limits/0", where);
    look(axis.max, "/limits/1", where);
  }
  void look(const HeadRecord& head, const std::string& where) {
    look(head.tilt, "/tilt", where);
    look(head.turn, "/turn", where);
    look(head.lengths[0], "/lengths/0", where);
    look(head.lengths[1], "/lengths/1", where);
    look(head.tip, where + "/tip");
    look(head.direction, where + "/direction");
    look(head.reference, where + "/reference");
    look(head.offset, where + "/offset");
  }
  void look(const NodeRecord& node, std::size_t place) {
    const std::string where = "node " + std::to_string(place) + " (id " + std::to_string(node.id) + ") ";
    look(node.value, "/value", where);
    for (std::size_t i = 0; i < node.transform.size(); ++i)
      look(node.transform[i], i < 9 ? "/rotation" : "/translation", where);
    if (node.kind == kAxisNode) look(node.axis, where + "/axis");
    if (node.kind == kToolNode) look(node.head, where + "/head");
  }

  bool is_over() const { return !m_found.place.empty(); }
  const NotFinite& found() const { return m_found; }

 private:
  NotFinite m_found;
};

}  // namespace

NotFinite find_not_finite(const MachineRecord& machine) {
  Search search;
  for (const Word& slot : kSlots)
    if (const auto& axis = machine.axes[static_cast<std::size_t>(slot.number)])
      search.look(*axis, "/axes/" + std::string(slot.text));
  search.look(machine.head, "/head");
  search.look(machine.work_zero, "/work_zero");
  search.look(machine.loading_vector, "/loading_vector");
  for (std::size_t i = 0; i < machine.nodes.size() && !search.is_over(); ++i)
    search.look(machine.nodes[i], i);
  return search.found();
}

}  // namespace tool
