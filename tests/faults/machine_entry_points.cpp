// Machines: made, copied, converted, saved, loaded, posed.
#include "faults/entry_points.h"

#include "support/use_machine.h"

namespace k5ax_test {

using md::CMachDef;

std::vector<EntryPoint> machine_entry_points() {
  return {
      {"MachineCreate",
       {"k5axCMachDef_create", "md::CMachDef::CMachDef"},
       WithoutMemory::throws,
       [](AllocationStage&) {
         CMachDef* machine = k5axCMachDef_create();
         k5axCMachDef_free(&machine);
       }},
      {"MachineFree",
       {"k5axCMachDef_free", "md::CMachDef::~CMachDef"},
       WithoutMemory::goes_on,
       [](AllocationStage& stage) {
         k5axCMachDef_free(&stage.flat);
         stage.flat = nullptr;
       }},
      {"MachineClone",
       {"md::CMachDef::clone", "k5axCMachDef_clone", "k5axCMachDef_clone_ex"},
       WithoutMemory::throws,
       [](AllocationStage& stage) { k5axCMachDef_clone(stage.target.get(), &stage.source); }},
      {"MachineCloneOfTheTreesAlone",
       {"k5axCMachDef_clone_ex"},
       WithoutMemory::throws,
       [](AllocationStage& stage) { k5axCMachDef_clone_ex(stage.target.get(), &stage.source, 2); }},
      {"MachineReset",
       {"md::CMachDef::reset"},
       WithoutMemory::throws,
       [](AllocationStage& stage) { stage.target->reset(); }},
      {"MachineScale",
       {"md::CMachDef::scale"},
       WithoutMemory::throws,
       [](AllocationStage& stage) { stage.target->scale(!stage.target->isMetric()); }},
      {"MachineSerialize",
       {"md::CMachDef::serialize", "md::CAxis2::serialize"},
       WithoutMemory::throws,
       [](AllocationStage& stage) {
         const std::string bytes = bytes_of(stage.source);
         read_bytes(*stage.target, bytes);
       }},
      {"MachineLoadFromAStreamOverAnother",
       {"md::CMachDef::serialize"},
       WithoutMemory::throws,
       [](AllocationStage& stage) {
         BytesStream stream(contents(stage.file()));
         stage.target->serialize(stream);
       }},
      {"Load",
       {"MachdefLoad"},
       WithoutMemory::answers_zero,
       [](AllocationStage& stage) {
         stage.answer = MachdefLoad(stage.target.get(), stage.file()) == 1 ? "1" : "0";
       }},
      {"Save",
       {"MachdefSave"},
       WithoutMemory::answers_zero,
       [](AllocationStage& stage) {
         stage.answer = MachdefSave(&stage.source, stage.saved_file()) == 1 ? "1" : "0";
       }},
      {"FileStream",
       {"IIO::FileStream::FileStream"},
       WithoutMemory::throws,
       [](AllocationStage& stage) {
         IIO::FileStream in(stage.file(), IIO::FILE_READ);
         stage.target->serialize(in);
         IIO::FileStream out(stage.saved_file(), IIO::FILE_WRITE);
         stage.source.serialize(out);
       }},
      {"FileErrors",
       {"IIO::FileError::FileError"},
       WithoutMemory::throws,
       [](AllocationStage& stage) {
         try {
           IIO::FileStream in("/no/such/folder/with/a/long/name", IIO::FILE_READ);
         } catch (const IIO::FileError& error) {
           stage.answer = error.what();
         }
       }},
      {"Wrapping",
       {"md::Cartesian2AxialRotaryVals", "Cartesian2AxialRotaryVals_c"},
       WithoutMemory::throws_or_goes_on,
       [](AllocationStage& stage) {
         const double point[] = {1, 2, 3};
         const double rotary[] = {0.1, 0.2, 0.3};
         double out_point[3];
         double out_rotary[3];
         double radius = 0;
         Cartesian2AxialRotaryVals_c(&stage.source, point, rotary, 0, 1, out_point, out_rotary, &radius);
         stage.numbers[0] = out_point[0];
         stage.numbers[1] = out_rotary[0];
         stage.numbers[2] = radius;
       }},
      {"StateExchange",
       {"md::CMachDef_IdAxisState_get", "md::CMachDef_IdAxisState_set"},
       WithoutMemory::throws,
       [](AllocationStage& stage) {
         const std::map<int, node_state> states = md::CMachDef_IdAxisState_get(*stage.target);
         md::CMachDef_IdAxisState_set(*stage.target, states);
         stage.numbers[0] = static_cast<double>(states.size());
       }},
      {"FlatStateExchange",
       {"CMachDef_IdAxisState_set2", "CMachDef_Axis_Position_Get"},
       WithoutMemory::throws,
       [](AllocationStage& stage) {
         node_state states[2 * kManyPlaces];
         for (int i = 0; i < 2 * kManyPlaces; ++i) states[i] = {1000 + i, 0, 0.5};
         CMachDef_IdAxisState_set2(stage.target.get(), states, 2 * kManyPlaces);
         stage.numbers[0] = CMachDef_Axis_Position_Get(stage.target.get(), 100 + kManyPlaces);
       }},
      {"FeedbackOfValidation",
       {"md::CMachDef::is_valid", "md::CMachDef::mw_valid", "CUtility::feedback"},
       WithoutMemory::throws,
       [](AllocationStage& stage) {
         // Says that the table's line misses the origin.
         const struct Regression {
           Regression() { CUtility::regression(true); }
           ~Regression() { CUtility::regression(false); }
         } regression;
         CMachDef& machine = *stage.target;
         machine.setMachType(MC_TT);
         machine.getPrimary()->SetBaseVector({5, 5, 5});
         machine.setSecondary(AxisPtr());
         stage.answer = machine.is_valid() || machine.mw_valid() ? "valid" : "not valid";
       }},
  };
}

}  // namespace k5ax_test
