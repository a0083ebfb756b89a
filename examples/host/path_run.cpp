// Runs a tool path on a machine, one question at a time, and gathers the figures.
#include "host/path_run.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <map>
#include <utility>

namespace host {
namespace {

double largest_component(const Point& p) { return std::max({std::abs(p.x), std::abs(p.y), std::abs(p.z)}); }

// Not by std::max over differences: that would lose a NaN.
double distance(const Point& p, const Point& q) {
  const Point d = p - q;
  return std::sqrt(d.x * d.x + d.y * d.y + d.z * d.z);
}

double dot(const Point& p, const Point& q) { return p.x * q.x + p.y * q.y + p.z * q.z; }

double largest_difference(const Geometry::Matrix& one, const Geometry::Matrix& other) {
  std::array<double, 12> a = {};
  std::array<double, 12> b = {};
  one.GetMatrix(a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7], a[8], a[9], a[10], a[11]);
  other.GetMatrix(b[0], b[1], b[2], b[3], b[4], b[5], b[6], b[7], b[8], b[9], b[10], b[11]);
  double largest = 0;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (!(std::abs(a[i] - b[i]) <= largest)) largest = std::abs(a[i] - b[i]);
  return largest;
}

// Runs `work` over and over for at least a tenth of a second, and says how many times per second it ran.
template <class Work>
double times_per_second(const Work& work) {
  using Clock = std::chrono::steady_clock;
  constexpr std::chrono::duration<double> kLongEnough(0.1);
  const Clock::time_point start = Clock::now();
  int runs = 0;
  std::chrono::duration<double> taken(0);
  do {
    work();
    ++runs;
    taken = Clock::now() - start;
  } while (taken < kLongEnough);
  return runs / taken.count();
}

}  // namespace

std::vector<Point> convert_path(const md::CMachDef& machine, const std::vector<Position>& path,
                                Figures& figures) {
  std::vector<Point> machine_points;
  for (const Position& position : path) {
    const Point p_mach = machine.Part2MachCoords(position.p_part, position.abc);
    Point p_part;
    Point d_tool_part;
    machine.Mach2PartCoords(p_mach, position.abc, p_part, d_tool_part);

    machine_points.push_back(p_mach);
    figures.part_mach_part.take(distance(p_part, position.p_part), position.line);
    figures.length_scale =
        std::max({figures.length_scale, largest_component(position.p_part), largest_component(p_mach)});
  }
  figures.positions = path.size();
  return machine_points;
}

void drive_scene(md::CMachDef& machine, Scene& scene, const std::vector<Position>& path,
                 const std::vector<Point>& machine_points, Figures& figures) {
  for (const AxisNode* axis : scene.axes()) figures.travels.emplace_back(axis->payload());

  for (std::size_t i = 0; i < path.size(); ++i) {
    const Position& position = path[i];
    if (!scene.pose(machine_points[i], position.abc) && figures.unreachable++ == 0)
      figures.first_line_unreachable = position.line;

    scene.read_transforms();
    figures.tool_on_part.take(distance(scene.p_tool_part(), position.p_part), position.line);

    // A component without an axis stays as it is put in, so it compares equal.
    Point xyz;
    Point abc = position.abc;
    md::CMachDef_SG2MachCoords(machine, xyz, abc);
    figures.read_back_xyz.take(distance(xyz, machine_points[i]), position.line);
    figures.read_back_abc.take(distance(abc, position.abc), position.line);

    for (std::size_t k = 0; k < scene.axes().size(); ++k)
      figures.travels[k].take(scene.axes()[k]->value(), position.line);
  }

  // As people name them: X, Y, Z, A, B, C.
  const auto by_name = [](const Travel& one, const Travel& other) {
    return std::make_pair(one.is_rotary(), one.letter()) < std::make_pair(other.is_rotary(), other.letter());
  };
  std::stable_sort(figures.travels.begin(), figures.travels.end(), by_name);
}

void exchange_states(md::CMachDef& machine, Scene& scene, const std::vector<Position>& path,
                     const std::vector<Point>& machine_points, Figures& figures) {
  const std::size_t count = path.size();
  for (std::size_t i = 0; i < count; ++i) {
    scene.pose(machine_points[i], path[i].abc);
    scene.read_transforms();
    const std::vector<SceneNode> before[2] = {scene.nodes(0), scene.nodes(1)};
    const std::map<int, node_state> states = md::CMachDef_IdAxisState_get(machine);

    const std::size_t elsewhere = (i + count / 2) % count;
    scene.pose(machine_points[elsewhere], path[elsewhere].abc);
    md::CMachDef_IdAxisState_set(machine, states);
    scene.read_transforms();

    for (int tree = 0; tree < 2; ++tree)
      for (std::size_t k = 0; k < before[tree].size(); ++k)
        figures.states.take(
            largest_difference(before[tree][k].node_to_root, scene.nodes(tree)[k].node_to_root),
            path[i].line);
  }
}

void wrap_path(const md::CMachDef& machine, const std::vector<Position>& path, Figures& figures) {
  const boost::shared_ptr<md::CAxis2> axis = machine.rotary_axis();
  figures.has_rotary_axis = axis != nullptr;
  if (!axis) return;

  // The half-plane of +X; of +Y where X is the axis itself. Only a reference across the axis is met exactly.
  const Point u_axis = axis->GetAxisVector();
  const int ref_axis = axis->GetAxis() == AXIS_A ? 1 : 0;
  const Point u_ref = ref_axis == 1 ? CUtility::pt_y : CUtility::pt_x;

  for (const Position& position : path) {
    // The part's own frame is the machine's frame at rotary values 0.
    Point p_wrapped;
    Point abc;
    double radius = 0;
    md::Cartesian2AxialRotaryVals(&machine, position.p_part, Point(), ref_axis, 1, p_wrapped, abc, radius);

    const Point p_foot = u_axis * dot(position.p_part, u_axis);
    const Point radial = position.p_part - p_foot;
    const double angle = md::CAxis2::GetAngle(axis, abc.x, abc.y, abc.z);
    if (std::isnan(angle) && std::abs(dot(radial, u_ref)) >= (1 - 1e-14) * radius) {
      ++figures.not_wrapped;  // rounding takes the cosine past 1 there, and leaves no angle
      continue;
    }
    const Point p_back = p_wrapped * Geometry::RotateAboutAxis(u_axis, angle);
    figures.wrap_back.take(distance(p_back, position.p_part), position.line);
    if (axis->is_orthogonal())
      figures.wrap.take(distance(p_wrapped, p_foot + u_ref * distance(radial, Point())), position.line);
  }
}

void measure_speed(md::CMachDef& machine, Scene& scene, const std::vector<Position>& path,
                   const std::vector<Point>& machine_points, Figures& figures) {
  const double count = static_cast<double>(path.size());

  Point p_sum;  // keeps the work from being dropped as unused
  figures.converted_per_second =
      count * times_per_second([&] {
        for (const Position& position : path) {
          Point p_part;
          Point d_tool_part;
          machine.Mach2PartCoords(machine.Part2MachCoords(position.p_part, position.abc), position.abc,
                                  p_part, d_tool_part);
          p_sum = p_sum + p_part;
        }
      });

  figures.posed_per_second = count * times_per_second([&] {
                               for (std::size_t i = 0; i < path.size(); ++i) {
                                 scene.pose(machine_points[i], path[i].abc);
                                 scene.read_transforms();
                                 Point xyz;
                                 Point abc;
                                 md::CMachDef_SG2MachCoords(machine, xyz, abc);
                               }
                             });
}

}  // namespace host
