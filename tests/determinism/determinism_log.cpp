// determinism_log FOLDER: writes down what the library answers over the machines and tool paths of the folder
// and over random machines. Two builds that answer the same write the same.
//
// Nothing that is asked about comes out of sines or cosines of this program's own, and no order of evaluation
// is left to the compiler: where a call takes two random numbers, they are drawn before.
#include <cstdint>
#include <exception>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "determinism/log.h"
#include "host/toolpath_csv.h"
#include "support/random_machine.h"
#include "support/random_scene.h"
#include "support/use_machine.h"

namespace {

using determinism::Line;
using k5ax_test::bytes_of;
using k5ax_test::kRandomSize;
using k5ax_test::NodePtr;
using k5ax_test::Point;
using k5ax_test::Random;
using vector_form::point;

const char* const kMachines[] = {"table_table_trunnion", "head_table_swivel", "head_table_inch",
                                 "head_head_fork"};
constexpr int kRandomMachines = 4000;
constexpr int kRandomScenes = 1500;

void log_transforms(const md::CMachDef& machdef, const Point& p, const Point& abc) {
  Point p_part;
  Point d_tool_part;
  machdef.Mach2PartCoords(p, abc, p_part, d_tool_part);
  Line("to part") << p_part << d_tool_part;
  Line("to machine") << machdef.Part2MachCoords(p, abc) << machdef.Part2MachTransform(abc);
  Geometry::Matrix primary;
  Geometry::Matrix secondary;
  machdef.Mach2PartTransform(p, abc, primary, secondary);
  Line("axes") << primary << secondary << machdef.Mach2PartTransform(p, abc);
  Point p_ctrl;
  machdef.Tool2CtrlPt(p_ctrl, p);
  Line("control point") << p_ctrl << machdef.IsToolAxial(abc.x, abc.y, abc.z)
                        << machdef.IsToolRadial(abc.x, abc.y, abc.z);
}

void log_wrapping(const md::CMachDef& machdef, const Point& p, const Point& abc) {
  for (int ref_axis = 0; ref_axis < 3; ++ref_axis) {
    for (const int ref_sign : {1, -1}) {
      Point p_out;
      Point rotary;
      double radius = 0;
      md::Cartesian2AxialRotaryVals(&machdef, p, abc, ref_axis, ref_sign, p_out, rotary, radius);
      Line("wrapped") << p_out << rotary << radius;
    }
  }
}

void log_machine(const md::CMachDef& machdef) {
  Line line("machine");
  for (const auto& axis : {machdef.getPrimary(), machdef.getSecondary()})
    if (axis) line << axis->GetBaseVector() << axis->GetAxisVector();
  line << machdef.head().tool_dir << machdef.head().ref_dir << machdef.head().tip << machdef.loading_vector();
}

void zero_table(md::CMachDef& machdef) {
  for (const NodePtr& rotary : machdef.SG_RotAxs()) {
    const auto* const axis = md::sg::axis_node(rotary.get());
    if (axis != nullptr && axis->GetAxisLocation() == TABLE)
      k5axSgNode_value_set2(machdef.flags(), rotary.get(), 0);
  }
}

// The update from where the table stands, every node after it, and what is read back.
void log_pose(md::CMachDef& machdef, const Point& xyz, const Point& abc, bool with_transforms) {
  const bool reached = md::UpdateNodeAxes_(&machdef, xyz, abc);
  Point xyz_back;
  Point abc_back;
  md::CMachDef_SG2MachCoords(machdef, xyz_back, abc_back);
  Line("pose") << reached << xyz_back << abc_back;
  {
    Line states("states");
    for (const auto& entry : md::CMachDef_IdAxisState_get(machdef))
      states << entry.first << entry.second.value;
  }
  if (!with_transforms) return;
  for (const NodePtr& root : machdef.SG())
    for (const NodePtr& n : md::sg::node::all_nodes(root)) Line("node") << n->id() << n->transform();
}

void log_units(const md::CMachDef& machdef) {
  md::CMachDef other;
  other.clone(machdef, 3);
  Line("clone") << bytes_of(other);
  other.scale(!other.isMetric());
  Line("other unit") << bytes_of(other);
  other.scale(!other.isMetric());
  Line("and back") << bytes_of(other);
}

void log_shipped_machine(const std::string& folder, const std::string& name) {
  md::CMachDef machdef;
  if (MachdefLoad(&machdef, (folder + "/machines/" + name + ".k5m").c_str()) != 1)
    throw std::runtime_error(name + " cannot be loaded");
  Line("file") << bytes_of(machdef);
  Line("valid") << machdef.is_valid() << machdef.mw_valid() << machdef.is_orthogonal();
  log_units(machdef);

  std::size_t row = 0;
  for (const host::Position& position : host::read_toolpath(folder + "/toolpaths/" + name + ".csv")) {
    log_transforms(machdef, position.p_part, position.abc);
    zero_table(machdef);
    const Point xyz = machdef.Part2MachCoords(position.p_part, position.abc);
    log_pose(machdef, xyz, position.abc, row % 20 == 0);
    if (row++ % 20 == 0) log_wrapping(machdef, position.p_part, position.abc);
  }

  for (const double angle : {0.3, -1.1, 2.7}) {
    md::CMachDef turned;
    turned.clone(machdef, 1);
    Line("turned") << turned.orientate(angle, -angle / 3);
    log_machine(turned);
  }
}

void log_random_machine(Random& random) {
  const vector_form::Machine m = k5ax_test::random_machine(random);
  const auto machdef = k5ax_test::make_machdef(m);
  const Point p = point(random.position(kRandomSize));
  const Point abc = point(random.angles());
  log_transforms(*machdef, p, abc);
  log_wrapping(*machdef, p, abc);
  log_units(*machdef);
  Line("turned") << machdef->orientate(abc.x, abc.y);
  log_machine(*machdef);
}

void log_random_scene(const vector_form::Scene& scene, Random& random) {
  const k5ax_test::BuiltScene built = k5ax_test::build(scene);
  Line("built") << bytes_of(built.machdef());
  for (int pose = 0; pose < 3; ++pose) {
    const Point xyz = point(random.position(kRandomSize));
    const Point abc = point(random.angles());
    log_pose(built.machdef(), xyz, abc, true);
  }
  CMachDef_ToolNode_matrix_Set(&built.machdef(), point(random.position(kRandomSize)));
  Line("posed") << bytes_of(built.machdef());
}

void log_heads_and_angles(Random& random) {
  angled_head head;
  k5ax_angled_head_initialise(&head);
  const double tilt_deg = random.between(-360, 360);
  const double turn_deg = random.between(-360, 360);
  const double first_length = random.between(0, kRandomSize);
  const double lengths[] = {first_length, random.between(0, kRandomSize)};
  k5ax_angled_head_set(turn_deg, tilt_deg, lengths, random.between(-50, 50), &head);
  Line("head") << head.b_angle << head.c_angle << head.tool_dir << head.ref_dir << head.tip;
  const double angle = random.between(-1000, 1000);
  Line("angle") << k5ax_normalise_angle(angle, 0) << k5ax_normalise_angle(angle, 1);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: determinism_log FOLDER (with machines/ and toolpaths/)\n";
    return 2;
  }
  try {
    for (const char* const name : kMachines) log_shipped_machine(argv[1], name);
    Random random(20261121);
    for (int i = 0; i < kRandomMachines; ++i) log_random_machine(random);
    for (int i = 0; i < kRandomScenes; ++i) {
      log_random_scene(k5ax_test::random_machine_scene(random).scene, random);
      log_random_scene(k5ax_test::random_scene(random), random);
    }
    for (int i = 0; i < 1000; ++i) log_heads_and_angles(random);
  } catch (const std::exception& error) {
    std::cerr << "determinism_log: " << error.what() << '\n';
    return 1;
  }
  return 0;
}
