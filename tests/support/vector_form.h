// The kinematics of a machine in a second formulation, for the tests to compare the library with: plain
// vectors of three numbers and Rodrigues' formula. No matrices, and nothing of the library but the names of
// its enums.
#ifndef K5AX_TESTS_SUPPORT_VECTOR_FORM_H
#define K5AX_TESTS_SUPPORT_VECTOR_FORM_H

#include <array>
#include <cmath>
#include <cstddef>
#include <ostream>

#include <k5ax/machdef.h>

namespace vector_form {

struct Vec {
  double x = 0;
  double y = 0;
  double z = 0;
};

inline Vec operator+(const Vec& a, const Vec& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline Vec operator-(const Vec& a, const Vec& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline Vec operator-(const Vec& a) { return {-a.x, -a.y, -a.z}; }
inline Vec operator*(const Vec& a, double factor) { return {a.x * factor, a.y * factor, a.z * factor}; }
inline double dot(const Vec& a, const Vec& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline Vec cross(const Vec& a, const Vec& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double length(const Vec& a) { return std::sqrt(dot(a, a)); }

inline Vec vec(const Geometry::TPoint<double>& p) { return {p.x, p.y, p.z}; }
inline Geometry::TPoint<double> point(const Vec& v) { return Geometry::TPoint<double>(v.x, v.y, v.z); }
inline std::ostream& operator<<(std::ostream& out, const Vec& v) {
  return out << '(' << v.x << ", " << v.y << ", " << v.z << ')';
}

constexpr double kShortest = 5e-9;  // length unit; a shorter direction points nowhere

// A direction of length 1; one that is too short to have a direction becomes Z.
inline Vec safe_unit(const Vec& d) {
  const double size = length(d);
  return size < kShortest ? Vec{0, 0, 1} : d * (1 / size);
}

// `p` turned by `angle` about the line through the origin along `axis`, right-handed. With u = axis / |axis|:
//   p cos(angle) + (u x p) sin(angle) + u (u . p) (1 - cos(angle))
inline Vec turned(const Vec& p, const Vec& axis, double angle) {
  const double size = length(axis);
  if (size < kShortest) return p;
  const Vec u = axis * (1 / size);
  return p * std::cos(angle) + cross(u, p) * std::sin(angle) + u * (dot(u, p) * (1 - std::cos(angle)));
}

struct Axis {
  bool present = false;
  AXIS_TYPE letter = AXIS_TYPE_INVALID_LOWEST;
  AXIS_LOCATION location = AXIS_LOCATION_INVALID_LOWEST;
  Vec base;
  Vec direction;
};

// The machine, as far as the rotary mathematics looks at it.
struct Machine {
  MACHINE_TYPE type = MC_UNDEFINED;
  Axis primary;
  Axis secondary;
  unsigned int flags = 0;
  Vec tool_dir{0, 0, 1};
  Vec ref_dir{1, 0, 0};
  Vec tip;
  Vec loading;
};

// The rotary coordinate that the axis takes out of (a, b, c).
inline double angle_of(const Axis& axis, const Vec& abc) {
  if (!axis.present) return 0;
  switch (axis.letter) {
    case AXIS_A:
    case AXIS_X:
      return abc.x;
    case AXIS_B:
    case AXIS_Y:
      return abc.y;
    case AXIS_C:
    case AXIS_Z:
      return abc.z;
    default:
      return 0;
  }
}

inline bool has_known_type(const Machine& m) { return m.type == MC_TT || m.type == MC_HT || m.type == MC_HH; }
inline bool on_table(const Axis& axis) { return axis.present && axis.location == TABLE; }
inline bool on_head(const Axis& axis) { return axis.present && axis.location == HEAD; }
inline bool tool_is_vertical(const Machine& m) { return (m.flags & 1u) != 0 && (m.flags & 2u) == 0; }
inline Vec tool_direction(const Machine& m) { return tool_is_vertical(m) ? Vec{0, 0, 1} : m.tool_dir; }

// `p` turned about the axis's own line; a missing axis turns nothing.
inline Vec turned_about_line(const Vec& p, const Axis& axis, double angle) {
  return axis.present ? axis.base + turned(p - axis.base, axis.direction, angle) : p;
}
inline Vec turned_direction(const Vec& d, const Axis& axis, double angle) {
  return axis.present ? turned(d, axis.direction, angle) : d;
}

// A machine point in part coordinates: the table axes turn it, the primary first.
inline Vec machine_to_part(const Machine& m, Vec p, const Vec& abc) {
  if (!has_known_type(m)) return p;
  if (on_table(m.primary)) p = turned_about_line(p, m.primary, angle_of(m.primary, abc));
  if (on_table(m.secondary)) p = turned_about_line(p, m.secondary, angle_of(m.secondary, abc));
  return p;
}

// The tool direction in part coordinates: both axes turn it wherever they sit, the secondary first.
inline Vec tool_in_part(const Machine& m, const Vec& abc) {
  const Vec d = tool_direction(m);
  if (!has_known_type(m)) return d;
  return turned_direction(turned_direction(d, m.secondary, angle_of(m.secondary, abc)), m.primary,
                          angle_of(m.primary, abc));
}

// A part point in machine coordinates: the table axes the other way, the secondary first; the type is not
// looked at.
inline Vec part_to_machine(const Machine& m, Vec p, const Vec& abc) {
  if (!m.primary.present && !m.secondary.present) {
    p = turned(p, {0, 0, 1}, -abc.z);
    return m.type == MC_TT ? turned(p, {0, 1, 0}, -abc.y) : p;
  }
  if (on_table(m.secondary)) p = turned_about_line(p, m.secondary, -angle_of(m.secondary, abc));
  if (on_table(m.primary)) p = turned_about_line(p, m.primary, -angle_of(m.primary, abc));
  return p;
}

inline Vec control_point(const Machine& m, const Vec& tool_point) {
  Vec p = tool_point + m.tip;
  if (on_head(m.primary)) p = p + m.primary.base;
  if (on_head(m.secondary)) p = p + m.secondary.base;
  return p;
}

// The machine in the pose at two angles. Every turn is about a line through the origin, of points too.
inline Machine oriented(Machine m, double angle1, double angle2) {
  const bool vertical = tool_is_vertical(m);
  m.tool_dir = tool_direction(m);

  // What the head carries: its two directions always, what is a place only when asked to.
  const auto turn_head = [&m](const Vec& axis, double angle, bool with_places) {
    m.tool_dir = turned(m.tool_dir, axis, angle);
    m.ref_dir = turned(m.ref_dir, axis, angle);
    if (!with_places) return;
    m.tip = turned(m.tip, axis, angle);
    m.loading = turned(m.loading, axis, angle);
    m.secondary.base = turned(m.secondary.base, axis, angle);
  };

  if (m.type == MC_TT && m.primary.present)
    m.secondary.direction = turned(m.secondary.direction, m.primary.direction, -angle1);
  if (m.type == MC_HT && m.secondary.present) turn_head(m.secondary.direction, angle2, !vertical);
  if (m.type == MC_HH && m.primary.present) {
    turn_head(m.primary.direction, angle1, true);
    m.primary.base = turned(m.primary.base, m.primary.direction, angle1);
    m.secondary.direction = turned(m.secondary.direction, m.primary.direction, angle1);
  }
  if (m.type == MC_HH && m.secondary.present) turn_head(m.secondary.direction, angle2, true);
  return m;
}

// The tool and the part's rotary axis at these angles, as unit vectors; false where the machine has no such
// pair.
inline bool tool_and_part_axis(const Machine& m, const Vec& abc, Vec& u_tool, Vec& u_part_axis) {
  if (!m.primary.present) return false;
  if (m.type == MC_TT) {
    u_tool = safe_unit(tool_direction(m));
    u_part_axis = safe_unit(
        m.secondary.present ? turned(m.secondary.direction, m.primary.direction, -angle_of(m.primary, abc))
                            : m.primary.direction);
    return true;
  }
  if (m.type == MC_HT && m.secondary.present) {
    u_tool = safe_unit(turned(tool_direction(m), m.secondary.direction, angle_of(m.secondary, abc)));
    u_part_axis = safe_unit(m.primary.direction);
    return true;
  }
  return false;
}

// The axis that the part turns about.
inline Axis part_axis(const Machine& m) {
  if (m.type == MC_TT) return m.secondary.present ? m.secondary : m.primary;
  return m.type == MC_HT || m.type == MC_HH ? m.primary : Axis();
}

// The direction of that axis at the pose abc. The pose is taken on a copy of the machine, and copying an axis
// makes its direction one of length 1.
inline Vec wrapping_axis(Machine m, const Vec& abc) {
  m.primary.direction = safe_unit(m.primary.direction);
  m.secondary.direction = safe_unit(m.secondary.direction);
  return part_axis(oriented(m, angle_of(m.primary, abc), angle_of(m.secondary, abc))).direction;
}

struct Wrapped {
  Vec point;
  Vec rotary;
  double radius = 0;
};

// `p` turned about the part's axis towards a unit reference direction, by the unsigned angle between the
// radial direction u and the reference, signed by the side of the axis on which u x ref lies.
inline Wrapped wrapped(const Machine& m, const Vec& p, const Vec& abc, const Vec& u_ref) {
  Wrapped result{p, abc, 0};
  if (!part_axis(m).present) return result;

  const Vec d = wrapping_axis(m, abc);
  const Vec radial = p - d * dot(p, d);
  result.radius = length(radial);
  if (result.radius < kShortest) return result;

  const Vec u = radial * (1 / result.radius);
  const Vec normal = cross(u, u_ref);
  // Not by the arc cosine: near 0 and pi that loses half of the digits.
  double angle = std::atan2(length(normal), dot(u, u_ref));
  if (dot(safe_unit(normal), d) < 0) angle = -angle;

  result.point = turned(p, d, angle);
  switch (part_axis(m).letter) {
    case AXIS_A:
    case AXIS_X:
      result.rotary.x = -angle;
      break;
    case AXIS_B:
    case AXIS_Y:
      result.rotary.y = -angle;
      break;
    case AXIS_C:
    case AXIS_Z:
      result.rotary.z = -angle;
      break;
    default:
      break;
  }
  return result;
}

// Every number of the machine, three by three: base and direction of both axes (zero for a missing one),
// tool, reference, tip, loading vector.
inline std::array<double, 24> numbers(const Machine& m) {
  const Axis primary = m.primary.present ? m.primary : Axis();
  const Axis secondary = m.secondary.present ? m.secondary : Axis();
  const Vec vectors[] = {primary.base, primary.direction, secondary.base, secondary.direction,
                         m.tool_dir,   m.ref_dir,         m.tip,          m.loading};
  std::array<double, 24> all{};
  std::size_t i = 0;
  for (const Vec& v : vectors) {
    all[i++] = v.x;
    all[i++] = v.y;
    all[i++] = v.z;
  }
  return all;
}

inline std::ostream& operator<<(std::ostream& out, const Axis& axis) {
  if (!axis.present) return out << "none";
  return out << AXIS_TYPE2String(axis.letter) << ' ' << AXIS_LOCATION2String(axis.location) << " base "
             << axis.base << " direction " << axis.direction;
}

inline std::ostream& operator<<(std::ostream& out, const Machine& m) {
  const std::streamsize digits = out.precision(17);
  out << "\ntype " << m.type << " flags " << m.flags << "\nprimary " << m.primary << "\nsecondary "
      << m.secondary << "\ntool " << m.tool_dir << " ref " << m.ref_dir << " tip " << m.tip << " loading "
      << m.loading;
  out.precision(digits);
  return out;
}

}  // namespace vector_form

#endif
