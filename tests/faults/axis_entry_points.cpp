// Axes, texts and callbacks.
#include "faults/entry_points.h"

namespace k5ax_test {

using md::CAxis2;

std::vector<EntryPoint> axis_entry_points() {
  return {
      {"AxisCreate",
       {"md::CAxis2::create"},
       WithoutMemory::throws,
       [](AllocationStage& stage) {
         const AxisPtr made = CAxis2::create();
         made->copy(stage.source.getPrimary());
         stage.axis = made;
       }},
      {"AxisCreateOfValues",
       {"md::CAxis2::create"},
       WithoutMemory::throws,
       [](AllocationStage& stage) {
         stage.axis = CAxis2::create(AXIS_A, HEAD, {4, 5, 6}, {1, 0, 0}, -1, 1, ROTARY);
       }},
      {"AxisClone",
       {"md::CAxis2::clone"},
       WithoutMemory::throws,
       [](AllocationStage& stage) { stage.axis = CAxis2::clone(stage.source.getSecondary()); }},
      {"AxisFree",
       {"md::CAxis2::free"},
       WithoutMemory::throws,
       [](AllocationStage& stage) { CAxis2::free(stage.axis); }},
      {"AxisCloneOfARecord",
       {"axis_clone"},
       WithoutMemory::throws,
       [](AllocationStage& stage) {
         TAxis* const clone = axis_clone(stage.axis.get());
         axis_free(&stage.record);
         stage.record = clone;
       }},
      {"Texts",
       {"AXIS_TYPE2String", "AXIS_MODE2String", "AXIS_LOCATION2String"},
       WithoutMemory::throws,
       [](AllocationStage& stage) {
         // Longer than what a string holds without asking.
         const std::string type = AXIS_TYPE2String(AXIS_TYPE_INVALID_LOWEST);
         const std::string mode = AXIS_MODE2String(AXIS_MODE_INVALID_LOWEST);
         const std::string location = AXIS_LOCATION2String(AXIS_LOCATION_INVALID_LOWEST);
         stage.answer = type + mode + location;
       }},
  };
}

}  // namespace k5ax_test
