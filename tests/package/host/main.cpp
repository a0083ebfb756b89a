// The class face as a host uses it: a machine with one table axis turns a point and keeps it through a file.
#include <k5ax/k5ax.h>

#include <cmath>
#include <cstdio>

namespace {

bool near_point(const Geometry::TPoint<double>& p, double x, double y, double z) {
  return std::abs(p.x - x) < 1e-12 && std::abs(p.y - y) < 1e-12 && std::abs(p.z - z) < 1e-12;
}

int refuse(const char* why) {
  std::puts(why);
  return 1;
}

}  // namespace

int main() {
  const Geometry::TPoint<double> p_base(10, 0, 0);
  const Geometry::TPoint<double> abc(0, 0, math::m_pi2);

  md::CMachDef machine;
  machine.setMachType(MC_TT);
  machine.setPrimary(md::CAxis2::create(AXIS_C, TABLE, p_base, CUtility::pt_z, -7, 7, ROTARY));

  // A quarter turn about +Z takes +X to +Y: one beyond the axis in X becomes one beyond it in Y.
  Geometry::TPoint<double> p_part, u_tool_part;
  machine.Mach2PartCoords(Geometry::TPoint<double>(11, 0, 5), abc, p_part, u_tool_part);
  if (!near_point(p_part, 10, 1, 5)) return refuse("the table does not turn the point");
  if (!near_point(machine.Part2MachCoords(p_part, abc), 11, 0, 5)) return refuse("no way back");

  if (MachdefSave(&machine, "host_cxx.k5m") != 1) return refuse("not saved");
  md::CMachDef loaded;
  if (MachdefLoad(&loaded, "host_cxx.k5m") != 1) return refuse("not loaded");
  std::remove("host_cxx.k5m");
  if (!loaded.getPrimary() || !near_point(loaded.getPrimary()->GetBaseVector(), 10, 0, 0)) {
    return refuse("loaded another machine than was saved");
  }
  if (MachdefLoad(&loaded, "no/such/file.k5m") != 0) return refuse("loaded what is not there");

  std::puts("the C++ host is content");
  return 0;
}
