// Loops over arrays of positions, in C++ and without Python: what array_speed.py calls beside the package.
//
// Every function takes a machine and `count` rows of xyz and abc, and writes rows to `out`.
#include <k5ax/k5ax.h>

#include <cstddef>
#include <vector>

namespace {

using Point = Geometry::TPoint<double>;

Point row(const double* rows, std::size_t i) { return Point(rows[3 * i], rows[3 * i + 1], rows[3 * i + 2]); }

void set_row(double* rows, std::size_t i, const Point& p) {
  rows[3 * i] = p.x;
  rows[3 * i + 1] = p.y;
  rows[3 * i + 2] = p.z;
}

}  // namespace

extern "C" {

K5AX_API void loop_part_to_machine(const md::CMachDef* machine, const double* xyz, const double* abc,
                                   std::size_t count, double* out);
K5AX_API void loop_machine_to_part(const md::CMachDef* machine, const double* xyz, const double* abc,
                                   std::size_t count, double* out, double* out_dir);
K5AX_API void loop_is_tool_axial(const md::CMachDef* machine, const double* abc, std::size_t count,
                                 bool* out);
K5AX_API void loop_wrap(const md::CMachDef* machine, const double* points, const double* abc,
                        std::size_t count, double* out, double* out_abc, double* out_radius);
K5AX_API void loop_update(md::CMachDef* machine, const double* xyz, const double* abc, std::size_t count,
                          double* out, bool* out_reached);
}

void loop_part_to_machine(const md::CMachDef* machine, const double* xyz, const double* abc,
                          std::size_t count, double* out) {
  for (std::size_t i = 0; i < count; ++i) set_row(out, i, machine->Part2MachCoords(row(xyz, i), row(abc, i)));
}

void loop_machine_to_part(const md::CMachDef* machine, const double* xyz, const double* abc,
                          std::size_t count, double* out, double* out_dir) {
  for (std::size_t i = 0; i < count; ++i) {
    Point p;
    Point d;
    machine->Mach2PartCoords(row(xyz, i), row(abc, i), p, d);
    set_row(out, i, p);
    set_row(out_dir, i, d);
  }
}

void loop_is_tool_axial(const md::CMachDef* machine, const double* abc, std::size_t count, bool* out) {
  for (std::size_t i = 0; i < count; ++i)
    out[i] = machine->IsToolAxial(abc[3 * i], abc[3 * i + 1], abc[3 * i + 2]);
}

void loop_wrap(const md::CMachDef* machine, const double* points, const double* abc, std::size_t count,
               double* out, double* out_abc, double* out_radius) {
  for (std::size_t i = 0; i < count; ++i)
    Cartesian2AxialRotaryVals_c(machine, points + 3 * i, abc + 3 * i, 0, 1, out + 3 * i, out_abc + 3 * i,
                                out_radius + i);
}

// The table to zero, the update, and the value of every axis.
void loop_update(md::CMachDef* machine, const double* xyz, const double* abc, std::size_t count, double* out,
                 bool* out_reached) {
  std::vector<md::sg::node*> axes;
  for (const auto& root : machine->SG())
    for (const auto& node : md::sg::node::all_nodes(root))
      if (md::sg::axis_node(node.get()) != nullptr) axes.push_back(node.get());

  for (std::size_t i = 0; i < count; ++i) {
    for (const auto& rotary : machine->SG_RotAxs())
      if (md::sg::axis_node(rotary.get())->GetAxisLocation() == TABLE)
        k5axSgNode_value_set2(0, rotary.get(), 0);
    out_reached[i] = md::UpdateNodeAxes_(machine, row(xyz, i), row(abc, i));
    for (const md::sg::node* axis : axes) *out++ = axis->value();
  }
}
