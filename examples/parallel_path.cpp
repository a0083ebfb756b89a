// parallel_path MACHINE: several threads take one path through a machine at once, and each gets what a single
// thread gets. The samples of docs/threading.md are pieces of this program.
#include <k5ax/k5ax.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <limits>
#include <memory>
#include <thread>
#include <vector>

namespace {

using Point = Geometry::TPoint<double>;

constexpr std::size_t kThreads = 4;
constexpr std::size_t kPositions = 4000;

struct Position {
  Point p_part;
  Point abc;
};

// Twenty rounds of a spiral on a part, with the angles going to and fro; every machine takes from them the
// letters that it has.
std::vector<Position> make_path() {
  std::vector<Position> path;
  for (std::size_t i = 0; i < kPositions; ++i) {
    const double t = static_cast<double>(i) / kPositions;
    const double turn = 20 * math::m_2pi * t;
    path.push_back({Point(40 * t * std::cos(turn), 40 * t * std::sin(turn), 30 + 10 * t),
                    Point(-0.5 * t, 0.4 * t, std::sin(turn))});
  }
  return path;
}

// [snippet convert]
// Every kThreads-th position is this thread's. Nothing here changes the machine, so all may ask it at once.
void convert(const md::CMachDef& machine, const std::vector<Position>& path, std::size_t first,
             std::vector<Point>& p_mach) {
  for (std::size_t i = first; i < path.size(); i += kThreads)
    p_mach[i] = machine.Part2MachCoords(path[i].p_part, path[i].abc);
}
// [end]

// The table's rotary nodes to their zero pose, then the update.
bool pose(md::CMachDef& machine, const Point& p_mach, const Point& abc) {
  for (const auto& rotary : machine.SG_RotAxs()) {
    const md::sg::tnode<md::CAxis2>* const axis = k5axSgNode_NodeAxis_cast(rotary.get());
    if (axis != nullptr && axis->GetAxisLocation() == TABLE)
      k5axSgNode_value_set2(machine.flags(), rotary.get(), 0);
  }
  return md::UpdateNodeAxes_(&machine, p_mach, abc);
}

// How far the machine coordinates that are read back are off at worst; infinite where one is not reached.
double pose_all(md::CMachDef& machine, const std::vector<Position>& path, const std::vector<Point>& p_mach,
                std::size_t first) {
  double worst = 0;
  for (std::size_t i = first; i < path.size(); i += kThreads) {
    if (!pose(machine, p_mach[i], path[i].abc)) return std::numeric_limits<double>::infinity();
    Point xyz;
    Point abc = path[i].abc;
    md::CMachDef_SG2MachCoords(machine, xyz, abc);
    worst = std::max(worst, math::length(xyz - p_mach[i]));
  }
  return worst;
}

std::vector<Point> convert_together(const md::CMachDef& machine, const std::vector<Position>& path) {
  // [snippet ask_together]
  std::vector<Point> p_mach(path.size());
  std::vector<std::thread> threads;
  for (std::size_t first = 0; first < kThreads; ++first)
    threads.emplace_back([&machine, &path, &p_mach, first] { convert(machine, path, first, p_mach); });
  for (std::thread& thread : threads) thread.join();
  // [end]
  return p_mach;
}

double pose_together(const md::CMachDef& machine, const std::vector<Position>& path,
                     const std::vector<Point>& p_mach) {
  // [snippet pose_together]
  // A clone for each thread, made before they start and gone after they have ended: both use the pools.
  std::vector<std::unique_ptr<md::CMachDef>> clones;
  for (std::size_t i = 0; i < kThreads; ++i) {
    clones.push_back(std::make_unique<md::CMachDef>());
    clones.back()->clone(machine, 3);
  }

  std::vector<double> off(kThreads);
  std::vector<std::thread> threads;
  for (std::size_t first = 0; first < kThreads; ++first)
    threads.emplace_back([&, first] { off[first] = pose_all(*clones[first], path, p_mach, first); });
  for (std::thread& thread : threads) thread.join();
  // [end]
  return *std::max_element(off.begin(), off.end());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: parallel_path MACHINE\n");
    return 2;
  }
  md::CMachDef machine;
  if (MachdefLoad(&machine, argv[1]) == 0 || !machine.is_valid()) {
    std::fprintf(stderr, "%s: not a machine to work with\n", argv[1]);
    return 1;
  }
  const std::vector<Position> path = make_path();

  const std::vector<Point> p_mach = convert_together(machine, path);
  std::size_t same = 0;
  for (std::size_t i = 0; i < path.size(); ++i)
    if (p_mach[i] == machine.Part2MachCoords(path[i].p_part, path[i].abc)) ++same;
  std::printf("%zu of %zu positions as one thread has them\n", same, path.size());

  // Lengths are up to 1,000 and a pose takes some hundred roundings: 1e-9 is a hundred times that.
  const bool all_there = pose_together(machine, path, p_mach) <= 1e-9;
  std::printf("posed by %zu threads: %s\n", kThreads,
              all_there ? "every position read back" : "some are off");
  return same == path.size() && all_there ? 0 : 1;
}
