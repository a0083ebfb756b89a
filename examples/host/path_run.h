// Runs a tool path on a machine, one question at a time, and gathers the figures.
#ifndef K5AX_EXAMPLES_HOST_PATH_RUN_H
#define K5AX_EXAMPLES_HOST_PATH_RUN_H

#include <vector>

#include "host/figures.h"
#include "host/scene.h"
#include "host/toolpath_csv.h"

namespace host {

// Each position in machine coordinates: the part turned by the table. On the way each is also turned back.
std::vector<Point> convert_path(const md::CMachDef& machine, const std::vector<Position>& path,
                                Figures& figures);

// Poses the scene for each position, walks both trees, and compares three things with what was asked for: the
// tool point on the part, the machine coordinates that the trees give back, and each axis's value with its
// travel.
void drive_scene(md::CMachDef& machine, Scene& scene, const std::vector<Position>& path,
                 const std::vector<Point>& machine_points, Figures& figures);

// At each position: takes the states of all axes, poses the scene elsewhere, restores the states, and
// compares every transform with what it was.
void exchange_states(md::CMachDef& machine, Scene& scene, const std::vector<Position>& path,
                     const std::vector<Point>& machine_points, Figures& figures);

// Wraps each position about the machine's rotary axis into a half-plane, compares it with where its distance
// from the axis puts it there, and turns it back by the rotary value that came out.
void wrap_path(const md::CMachDef& machine, const std::vector<Position>& path, Figures& figures);

// Does the work of a position again and again, without comparing anything, and takes the time.
void measure_speed(md::CMachDef& machine, Scene& scene, const std::vector<Position>& path,
                   const std::vector<Point>& machine_points, Figures& figures);

}  // namespace host

#endif
