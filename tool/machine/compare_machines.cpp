// What differs between two machine definitions: the machine, its axes and its head. Nodes have a file of
// their own.
#include "tool/machine/compare_machines.h"

#include "tool/machine/compare_nodes.h"
#include "tool/machine/convert_units.h"
#include "tool/machine/machine_words.h"

namespace tool {
namespace {

void compare_axes(Comparison& comparison, const MachineRecord& first, const MachineRecord& second) {
  for (const Word& slot : kSlots) {
    const auto& a = first.axes[static_cast<std::size_t>(slot.number)];
    const auto& b = second.axes[static_cast<std::size_t>(slot.number)];
    const std::string what = std::string(slot.text) + " axis";
    if (a && b)
      comparison.compare_axis(what, *a, *b);
    else if (a || b)
      comparison.add(what, a ? "there" : "missing", b ? "there" : "missing");
  }
}

}  // namespace

std::vector<Difference> compare_machines(const MachineRecord& first, const MachineRecord& second) {
  const bool is_in_other_unit = first.is_metric != second.is_metric;
  Comparison comparison(first.is_metric, is_in_other_unit);
  MachineRecord other = second;
  if (is_in_other_unit) {
    comparison.add("units", first.is_metric ? "mm" : "inch", second.is_metric ? "mm" : "inch");
    convert_units(other, first.is_metric);
  }
  comparison.compare_word("type", kTypes, first.type, other.type);
  comparison.compare_whole("mode", first.mode, other.mode);
  comparison.compare_whole("discipline", first.discipline, other.discipline);
  compare_axes(comparison, first, other);
  comparison.compare_head("head", first.head, other.head);
  comparison.compare_length("head, offset", first.head.offset, other.head.offset);
  comparison.compare_length("work zero", first.work_zero, other.work_zero);
  comparison.compare_length("loading vector", first.loading_vector, other.loading_vector);
  compare_nodes(comparison, first, other);
  return comparison.take();
}

}  // namespace tool
