// A whole machine in the other unit of length.
#include "tool/machine/convert_units.h"

#include "tool/machine/node_geometry.h"

#include <cassert>

namespace tool {
namespace {

constexpr double kMillimetresPerInch = 25.4;

// Divides for the way back rather than multiply with a rounded 1 / 25.4: there and back is then off by the
// rounding of two operations, which is one unit in the last place.
class Scale {
 public:
  explicit Scale(bool to_metric) : m_to_metric(to_metric) {}

  void convert(double& length) const {
    length = m_to_metric ? length * kMillimetresPerInch : length / kMillimetresPerInch;
  }
  void convert(Point& p) const {
    convert(p.x);
    convert(p.y);
    convert(p.z);
  }
  void convert(AxisRecord& axis) const {
    convert(axis.base);
    if (!is_linear(axis)) return;
    convert(axis.min);
    convert(axis.max);
  }
  void convert(HeadRecord& head) const {
    convert(head.lengths[0]);
    convert(head.lengths[1]);
    convert(head.tip);
    convert(head.offset);
  }
  void convert(NodeRecord& node) const {
    const bool is_computed = node.kind != kPlainNode && same_bits(node.transform, computed_transform(node));
    if (node.kind == kAxisNode) {
      if (is_linear(node.axis)) convert(node.value);
      convert(node.axis);
    }
    if (node.kind == kToolNode) convert(node.head);
    if (is_computed) {
      node.transform = computed_transform(node);
    } else {
      for (std::size_t i = 9; i < node.transform.size(); ++i) convert(node.transform[i]);
    }
  }

 private:
  bool m_to_metric;
};

}  // namespace

ConvertedLengths convert_units(MachineRecord& machine, bool to_metric) {
  assert(machine.is_metric != to_metric);
  const Scale scale(to_metric);
  ConvertedLengths converted;
  for (std::optional<AxisRecord>& axis : machine.axes) {
    if (!axis) continue;
    scale.convert(*axis);
    ++converted.axes;
  }
  scale.convert(machine.head);
  scale.convert(machine.work_zero);
  scale.convert(machine.loading_vector);
  for (NodeRecord& node : machine.nodes) {
    scale.convert(node);
    ++converted.nodes;
  }
  machine.is_metric = to_metric;
  return converted;
}

}  // namespace tool
