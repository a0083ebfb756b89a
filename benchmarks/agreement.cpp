// Whether all sides compute the same numbers.
#include "agreement.h"

#include <array>
#include <cmath>
#include <iomanip>
#include <limits>
#include <sstream>

namespace bench {

namespace {

// Chains of some twenty products and sums of lengths up to 1,000: 20 * 1000 * 2.2e-16 is 5e-12. What is
// really computed otherwise is off by millimetres, or by the 1e-5 of a tilt.
constexpr double kSame = 1e-9;

// 1 - cos of the angle between tool and rotary axis below which the tool is axial; the library's own figure.
constexpr double kAxial = 1e-5;

class Check {
 public:
  explicit Check(Agreement& agreement) : m_agreement(agreement) {}

  void begin(std::string what, std::size_t position) {
    m_what = std::move(what);
    m_position = position;
  }

  void near(const char* name, double expected, double found) {
    ++m_agreement.numbers_compared;
    const double difference = std::abs(expected - found);
    // Not `>`: what is not a number agrees with nothing.
    if (!(difference <= kSame)) fail(name, expected, found);
    m_agreement.worst_difference = std::max(m_agreement.worst_difference, difference);
  }

  void near(const Point& expected, const Point& found) {
    near("x", expected.x, found.x);
    near("y", expected.y, found.y);
    near("z", expected.z, found.z);
  }

  void near(const KDL::Vector& expected, const Point& found) {
    near(Point(expected.x(), expected.y(), expected.z()), found);
  }

  void near(const JointValues& expected, const JointValues& found) {
    static const char* const names[] = {"X", "Y", "Z", "A", "B", "C"};
    for (std::size_t i = 0; i < expected.size(); ++i) near(names[i], expected[i], found[i]);
  }

  void same(bool expected, bool found) { near("the answer", expected ? 1 : 0, found ? 1 : 0); }

 private:
  [[noreturn]] void fail(const char* name, double expected, double found) const {
    std::ostringstream text;
    text << std::setprecision(std::numeric_limits<double>::max_digits10)
         << "the sides do not compute the same: " << m_what << ", position " << m_position << ", " << name
         << ": " << expected << " against " << found << ", difference " << expected - found
         << " (allowed: " << kSame << ")";
    throw Disagreement(text.str());
  }

  Agreement& m_agreement;
  std::string m_what;
  std::size_t m_position = 0;
};

Point turned_by(const Point& d, const Point& v, double angle) {
  return turned_direction(d, v, std::sin(angle), std::cos(angle));
}

// The part's rotary axis: the secondary, as the primary has turned it.
Point part_axis(const TableLines& lines, const Position& position) {
  return turned_by(lines.secondary.u_direction, lines.primary.u_direction, -position.abc.x);
}

void check_transforms(Check& check, Sides& sides) {
  const md::CMachDef& machine = *sides.axes_only;
  for (std::size_t i = 0; i < kPositionCount; ++i) {
    const Position& position = positions()[i];
    const Point p_mach = limit_part_to_mach(sides.lines, position);
    check.begin("Part2MachCoords, L and k5ax", i);
    check.near(p_mach, machine.Part2MachCoords(position.xyz, position.abc));
    check.begin("part to machine, KDL and L", i);
    check.near(sides.kdl_table.part_to_mach(position), p_mach);
    check.begin("part to machine, naive and L", i);
    check.near(sides.nine.naive.part_to_mach(position), p_mach);

    // Back again, and the tool: (0, 0, 1) turned by C, then by A.
    const Point d_tool =
        turned_by(turned_by(CUtility::pt_z, sides.lines.secondary.u_direction, position.abc.z),
                  sides.lines.primary.u_direction, position.abc.x);
    Point p_part;
    Point d_tool_part;
    machine.Mach2PartCoords(p_mach, position.abc, p_part, d_tool_part);
    check.begin("Mach2PartCoords, L and k5ax, point", i);
    check.near(position.xyz, p_part);
    check.begin("Mach2PartCoords, L and k5ax, tool direction", i);
    check.near(d_tool, d_tool_part);
    check.begin("machine to part, L's two", i);
    Point d_limit = CUtility::pt_z;
    check.near(position.xyz, limit_mach_to_part(sides.lines, {p_mach, position.abc}, d_limit));
    check.near(d_tool, d_limit);
  }
}

void check_axial(Check& check, const Sides& sides) {
  const md::CMachDef& machine = *sides.axes_only;
  int axial = 0;
  for (std::size_t i = 0; i < 2 * kPositionCount; ++i) {
    // Every second time with A next to 0, where the answer changes: 1 - cos of 4.5e-3 is 1e-5.
    Position position = positions()[i / 2];
    if (i % 2 != 0) position.abc.x *= 5e-3;
    const bool expected = std::abs(part_axis(sides.lines, position).z - 1) < kAxial;
    axial += expected ? 1 : 0;
    check.begin("IsToolAxial, vectors and k5ax", i / 2);
    check.same(expected, machine.IsToolAxial(position.abc.x, position.abc.y, position.abc.z));
  }
  if (axial == 0 || axial == 2 * static_cast<int>(kPositionCount))
    throw Disagreement("IsToolAxial was only asked where the answer is the same");
}

// The cosine's angle about the axis d brings the point over +X; C is minus that.
void check_wrapping(Check& check, const md::CMachDef& machine, const TableLines& lines) {
  for (std::size_t i = 0; i < kPositionCount; ++i) {
    const Position& position = positions()[i];
    const Point d = part_axis(lines, position);
    const Point radial = position.xyz - d * math::dot(position.xyz, d);
    const double r = math::length(radial);
    double angle = std::acos(radial.x / r);
    if (math::dot(math::cross(radial, CUtility::pt_x), d) < 0) angle = -angle;

    const double p[] = {position.xyz.x, position.xyz.y, position.xyz.z};
    const double abc[] = {position.abc.x, position.abc.y, position.abc.z};
    double out_point[3];
    double out_rotary[3];
    double radius = 0;
    Cartesian2AxialRotaryVals_c(&machine, p, abc, 0, 1, out_point, out_rotary, &radius);
    check.begin("Cartesian2AxialRotaryVals_c, vectors and k5ax", i);
    check.near("radius", r, radius);
    check.near("C", -angle, out_rotary[2]);
    check.near(turned_by(position.xyz, d, angle), Point(out_point[0], out_point[1], out_point[2]));
  }
}

Geometry::Matrix node_to_root(const md::sg::node* n) {
  Geometry::Matrix m;
  for (; n != nullptr; n = n->parent_ptr()) m *= n->transform();
  return m;
}

void check_frame(Check& check, const KDL::Frame& frame, const md::sg::node* n) {
  const Geometry::Matrix m = node_to_root(n);
  check.near(frame * KDL::Vector(0, 0, 0), Point() * m);
  check.near(frame * KDL::Vector(100, 0, 0), Point(100, 0, 0) * m);
  check.near(frame * KDL::Vector(0, 100, 0), Point(0, 100, 0) * m);
}

JointValues values_of(const naive::Scene& scene) {
  return {scene.value_of(AXIS_X), scene.value_of(AXIS_Y), scene.value_of(AXIS_Z), scene.value_of(AXIS_A), 0,
          scene.value_of(AXIS_C)};
}

// Where the tool point is with every axis at 0: no axis is turned or moved, so the fixed offsets of the first
// tree simply add up, and those of the second cancel.
Point tool_point_at_zero(const md::CMachDef& machine) {
  Point p;
  for (const boost::shared_ptr<md::sg::node>& n : md::sg::node::all_nodes(machine.SG()[0])) {
    if (md::sg::axis_node(n.get()) != nullptr) continue;
    p = p + CUtility::pt_o * n->transform();
  }
  return p;
}

void check_poses(Check& check, PosedMachine& posed) {
  const Point p_tool = tool_point_at_zero(*posed.k5ax);
  const boost::array<boost::shared_ptr<md::CAxis2>, 3>& slides = posed.k5ax->xyz_axes();
  for (std::size_t i = 0; i < kPositionCount; ++i) {
    const Position& position = positions()[i];
    const std::string where = " (" + posed.label + ")";

    // The values that the slides came out with carry the tool point to the target.
    pose(*posed.k5ax, position);
    const JointValues values = joint_values(posed.axis_nodes);
    check.begin("UpdateNodeAxes_2, target and k5ax" + where, i);
    check.near(position.xyz, p_tool + slides[0]->GetAxisVector() * values[0] +
                                 slides[1]->GetAxisVector() * values[1] +
                                 slides[2]->GetAxisVector() * values[2]);
    check.near("A", position.abc.x, values[3]);
    check.near("C", position.abc.z, values[5]);
    check.begin("the values that KDL is given" + where, i);
    check.near(values, posed.joints[i]);

    posed.kdl.solve(posed.joints[i]);
    for (const KdlPose::Branch& branch : posed.kdl.branches())
      for (std::size_t segment = 0; segment < branch.frames.size(); ++segment) {
        check.begin("frame of segment " + std::to_string(segment) + ", KDL and k5ax" + where, i);
        check_frame(check, branch.frames[segment], branch.reached[segment]);
      }

    posed.naive.zero_table();
    check.begin("update, naive and k5ax" + where, i);
    check.same(true, posed.naive.update(position));
    check.near(values_of(posed.naive), values);

    JointValues read{};
    k5axCMachDef_SG2MachCoords(posed.k5ax.get(), read.data());
    check.begin("k5axCMachDef_SG2MachCoords, target and k5ax" + where, i);
    check.near({position.xyz.x, position.xyz.y, position.xyz.z, position.abc.x, 0, position.abc.z}, read);
    check.begin("read back, naive and k5ax" + where, i);
    check.near(posed.naive.read_back(), read);
  }

  // What is timed: one position after the other, the tool point measured from the table as the last one left
  // it.
  for (std::size_t i = 0; i < kPositionCount; ++i) {
    const Position& position = positions()[i];
    check.begin("update after update, naive and k5ax (" + posed.label + ")", i);
    check.same(true, md::UpdateNodeAxes_(posed.k5ax.get(), position.xyz, position.abc));
    check.same(true, posed.naive.update(position));
    check.near(values_of(posed.naive), joint_values(posed.axis_nodes));
  }
}

void check_same_pose(Check& check, const std::vector<Geometry::Matrix>& expected,
                     const std::vector<md::sg::node*>& nodes) {
  if (expected.size() != nodes.size()) throw Disagreement("a copy of a machine has another number of nodes");
  for (std::size_t n = 0; n < nodes.size(); ++n) {
    check.near(Point() * expected[n], Point() * nodes[n]->transform());
    check.near(Point(100, 0, 0) * expected[n], Point(100, 0, 0) * nodes[n]->transform());
    check.near(Point(0, 100, 0) * expected[n], Point(0, 100, 0) * nodes[n]->transform());
  }
}

std::vector<Geometry::Matrix> transforms_of(const std::vector<md::sg::node*>& nodes) {
  std::vector<Geometry::Matrix> transforms;
  for (const md::sg::node* const n : nodes) transforms.push_back(n->transform());
  return transforms;
}

void check_states(Check& check, PosedMachine& posed) {
  md::CMachDef& machine = *posed.k5ax;
  for (std::size_t i = 0; i < kPositionCount; ++i) {
    pose(machine, positions()[i]);
    const std::vector<Geometry::Matrix> expected = transforms_of(posed.nodes);

    const Position& elsewhere = positions()[(i + 1) % kPositionCount];
    pose(machine, elsewhere);
    CMachDef_IdAxisState_set2(&machine, posed.states[i].data(), static_cast<int>(posed.states[i].size()));
    check.begin("CMachDef_IdAxisState_set2, before and after", i);
    check_same_pose(check, expected, posed.nodes);

    pose(machine, elsewhere);
    md::CMachDef_IdAxisState_set(machine, posed.state_maps[i]);
    check.begin("CMachDef_IdAxisState_set, before and after", i);
    check_same_pose(check, expected, posed.nodes);

    posed.naive.set_states(posed.naive_states[i]);
    check.begin("states, naive and k5ax", i);
    check.near(values_of(posed.naive), joint_values(posed.axis_nodes));
  }
}

// A clone and what comes back from a file move as the original does.
void check_copies(Check& check, PosedMachine& posed, const ScratchFolder& scratch) {
  const std::string path = scratch.file("agreement.k5m");
  const std::string again = scratch.file("again.k5m");
  md::CMachDef cloned;
  md::CMachDef loaded;
  k5axCMachDef_clone(&cloned, posed.k5ax.get());
  if (MachdefSave(posed.k5ax.get(), path.c_str()) != 1) throw Disagreement(path + ": cannot be saved");
  if (MachdefLoad(&loaded, path.c_str()) != 1) throw Disagreement(path + ": cannot be loaded");
  if (MachdefSave(&loaded, again.c_str()) != 1) throw Disagreement(again + ": cannot be saved");
  const std::vector<unsigned char> bytes = file_bytes(path);
  if (bytes != file_bytes(again)) throw Disagreement("a machine loaded and saved again is another file");

  std::vector<unsigned char> read(bytes.size());
  read_raw(path, read);
  replace_raw(again, scratch.file("again.tmp"), read);
  if (bytes != file_bytes(again)) throw Disagreement("raw reading and writing gives another file");

  for (std::size_t i = 0; i < kPositionCount; ++i) {
    pose(*posed.k5ax, positions()[i]);
    pose(cloned, positions()[i]);
    pose(loaded, positions()[i]);
    const std::vector<Geometry::Matrix> expected = transforms_of(posed.nodes);
    check.begin("a clone and its original (" + posed.label + ")", i);
    check_same_pose(check, expected, list_nodes(cloned));
    check.begin("a machine from a file and its original (" + posed.label + ")", i);
    check_same_pose(check, expected, list_nodes(loaded));
  }
}

}  // namespace

Agreement check_agreement(Sides& sides, const ScratchFolder& scratch) {
  Agreement agreement;
  Check check(agreement);
  check_transforms(check, sides);
  check_axial(check, sides);
  check_wrapping(check, *sides.axes_only, sides.lines);
  check_wrapping(check, *sides.nine.k5ax, sides.lines);
  for (PosedMachine* const posed : {&sides.nine, sides.example.get()}) {
    if (posed == nullptr) continue;
    check_poses(check, *posed);
    check_states(check, *posed);
    check_copies(check, *posed, scratch);
  }
  return agreement;
}

}  // namespace bench
