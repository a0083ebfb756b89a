// Points and directions between part and machine, the axial test, and wrapping.
#include "benchmarks.h"

namespace bench {

namespace {

void register_wrapping(const std::string& name, const md::CMachDef* machine) {
  const Position* const all = positions().data();
  measure_positions(name, [machine, all](std::size_t i) {
    const Position& position = all[i];
    const double p[] = {position.xyz.x, position.xyz.y, position.xyz.z};
    const double abc[] = {position.abc.x, position.abc.y, position.abc.z};
    double out_point[3];
    double out_rotary[3];
    double radius = 0;
    Cartesian2AxialRotaryVals_c(machine, p, abc, 0, 1, out_point, out_rotary, &radius);
    benchmark::DoNotOptimize(out_point);
    benchmark::DoNotOptimize(out_rotary);
    benchmark::DoNotOptimize(radius);
  });
}

}  // namespace

void register_points(Sides& sides) {
  const Position* const all = positions().data();
  const md::CMachDef* const machine = sides.axes_only.get();
  const TableLines* const lines = &sides.lines;
  KdlTable* const kdl = &sides.kdl_table;
  const naive::Scene* const naive = &sides.nine.naive;

  measure_positions("part to machine/L", [lines, all](std::size_t i) {
    Point p_mach = limit_part_to_mach(*lines, all[i]);
    benchmark::DoNotOptimize(p_mach);
  });
  measure_positions("part to machine/k5ax", [machine, all](std::size_t i) {
    Point p_mach = machine->Part2MachCoords(all[i].xyz, all[i].abc);
    benchmark::DoNotOptimize(p_mach);
  });
  measure_positions("machine to part/k5ax", [machine, all](std::size_t i) {
    Point p_part;
    Point d_tool_part;
    machine->Mach2PartCoords(all[i].xyz, all[i].abc, p_part, d_tool_part);
    benchmark::DoNotOptimize(p_part);
    benchmark::DoNotOptimize(d_tool_part);
  });
  measure_positions("machine to part/L with tool", [lines, all](std::size_t i) {
    Point d_tool_part = CUtility::pt_z;
    Point p_part = limit_mach_to_part(*lines, all[i], d_tool_part);
    benchmark::DoNotOptimize(p_part);
    benchmark::DoNotOptimize(d_tool_part);
  });
  measure_positions("tool axial/k5ax", [machine, all](std::size_t i) {
    bool axial = machine->IsToolAxial(all[i].abc.x, all[i].abc.y, all[i].abc.z);
    benchmark::DoNotOptimize(axial);
  });
  measure_positions("part to machine/KDL", [kdl, all](std::size_t i) {
    KDL::Vector p_mach = kdl->part_to_mach(all[i]);
    benchmark::DoNotOptimize(p_mach);
  });
  measure_positions("part to machine/naive", [naive, all](std::size_t i) {
    Point p_mach = naive->part_to_mach(all[i]);
    benchmark::DoNotOptimize(p_mach);
  });

  register_wrapping("wrapping (no trees)/k5ax", machine);
  register_wrapping("wrapping (9 nodes)/k5ax", sides.nine.k5ax.get());
}

}  // namespace bench
