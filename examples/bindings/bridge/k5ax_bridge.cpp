// The class face of k5ax behind plain C functions.
#define K5AX_BUILDING_BRIDGE
#include "k5ax_bridge.h"

#include <exception>

namespace {

using Point = Geometry::TPoint<double>;

Point read(const double* p) { return Point(p[0], p[1], p[2]); }

void write(const Point& p, double* out) {
  out[0] = p.x;
  out[1] = p.y;
  out[2] = p.z;
}

// The checked casts of the class face take a node that may be changed; nothing here changes one.
md::sg::node* to_cast(const k5ax_node* node) { return const_cast<md::sg::node*>(node); }

const char* text_or_empty(const char* text) { return text != nullptr ? text : ""; }

// Where there is no memory for a text or a sink, it is left out.
template <class Work>
void without_throwing(Work work) {
  try {
    work();
  } catch (const std::exception&) {
  }
}

}  // namespace

int k5ax_bridge_is_valid(const k5ax_machdef* machdef) {
  try {
    return machdef != nullptr && machdef->is_valid() ? 1 : 0;
  } catch (const std::exception&) {
    return -1;
  }
}

void k5ax_bridge_part_to_machine(const k5ax_machdef* machdef, const double* p_part, const double* abc,
                                 double* p_mach) {
  if (machdef == nullptr || p_part == nullptr || abc == nullptr || p_mach == nullptr) return;
  write(machdef->Part2MachCoords(read(p_part), read(abc)), p_mach);
}

void k5ax_bridge_machine_to_part(const k5ax_machdef* machdef, const double* p_mach, const double* abc,
                                 double* p_part, double* d_tool_part) {
  if (machdef == nullptr || p_mach == nullptr || abc == nullptr || p_part == nullptr ||
      d_tool_part == nullptr)
    return;
  Point point;
  Point direction;
  machdef->Mach2PartCoords(read(p_mach), read(abc), point, direction);
  write(point, p_part);
  write(direction, d_tool_part);
}

int k5ax_bridge_node_kind(const k5ax_node* node) {
  if (node == nullptr) return -1;
  if (md::sg::axis_node(to_cast(node)) != nullptr) return 1;
  return md::sg::tool_node(to_cast(node)) != nullptr ? 2 : 0;
}

void k5ax_bridge_node_matrix(const k5ax_node* node, double* node_to_parent) {
  if (node == nullptr || node_to_parent == nullptr) return;
  double* const m = node_to_parent;
  node->transform().GetMatrix(m[0], m[1], m[2], m[3], m[4], m[5], m[6], m[7], m[8], m[9], m[10], m[11]);
}

const TAxis* k5ax_bridge_node_axis(const k5ax_node* node) {
  // An axis begins with its record.
  md::CAxis2* const axis = md::sg::axis_node(to_cast(node));
  return reinterpret_cast<const TAxis*>(axis);
}

void k5ax_bridge_on_feedback(k5ax_bridge_text_sink sink, void* data) {
  without_throwing([&] {
    boost::function<void(const char*)> f;
    if (sink != nullptr) f = [sink, data](const char* text) { sink(text, data); };
    CUtility::set_feedback_cbk(f);
  });
}

void k5ax_bridge_on_error(k5ax_bridge_error_sink sink, void* data) {
  without_throwing([&] {
    boost::function<void(const char*, short)> f;
    if (sink != nullptr) f = [sink, data](const char* text, short code) { sink(text, code, data); };
    CUtility::set_error_cbk(f);
  });
}

void k5ax_bridge_on_assertion(k5ax_bridge_assertion_sink sink, void* data) {
  without_throwing([&] {
    boost::function<void(const char*, const char*, const char*, long)> f;
    if (sink != nullptr)
      f = [sink, data](const char* a, const char* b, const char* c, long line) {
        sink(a, b, c, static_cast<int>(line), data);
      };
    CUtility::set_assertion_handler_cbk(f);
  });
}

void k5ax_bridge_feedback(const char* text) {
  without_throwing([&] { CUtility::feedback(text_or_empty(text)); });
}

void k5ax_bridge_error(const char* text, int code) {
  without_throwing([&] { CUtility::error(text_or_empty(text), code); });
}

void k5ax_bridge_assertion_failed(const char* a, const char* b, const char* c, int line) {
  without_throwing(
      [&] { CUtility::assertion_failed(text_or_empty(a), text_or_empty(b), text_or_empty(c), line); });
}
