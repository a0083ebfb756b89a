// Numbers and names as the tool prints them.
#include "tool/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace tool {
namespace {

constexpr double kNoise = 1e-14;  // of the largest coordinate: what the sine of half a turn leaves

}  // namespace

std::string number(double value, int digits) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*g", digits, value);
  const std::string shown = text;
  return shown == "-0" ? "0" : shown;
}

std::string exact(double value) {
  char text[64];
  const std::to_chars_result end = std::to_chars(text, text + sizeof text, value);
  return {text, end.ptr};
}

std::string degrees(double angle) {
  const double shown = angle * math::R2D;
  for (int digits = 1; digits <= 17 && std::isfinite(angle); ++digits) {
    const std::string text = number(shown, digits);
    const double read_back = std::strtod(text.c_str(), nullptr);
    if (read_back * math::D2R == angle) return exact(read_back == 0 ? 0.0 : read_back);
  }
  return number(shown, 15);
}

std::string triple(const Point& p, int digits) {
  const double noise = kNoise * std::max({std::abs(p.x), std::abs(p.y), std::abs(p.z)});
  const auto shown = [&](double value) { return number(std::abs(value) < noise ? 0.0 : value, digits); };
  return shown(p.x) + " " + shown(p.y) + " " + shown(p.z);
}

std::string exact_triple(const Point& p) { return exact(p.x) + " " + exact(p.y) + " " + exact(p.z); }

std::string letter_name(AXIS_TYPE type) {
  if (type >= AXIS_A && type <= AXIS_Z) return AXIS_TYPE2String(type);
  return "letter " + std::to_string(type);
}

std::string location_name(AXIS_LOCATION location) {
  if (location == HEAD) return "head";
  if (location == TABLE) return "table";
  return "location " + std::to_string(location);
}

std::string mode_name(AXIS_MODE mode) {
  if (mode == ROTARY) return "rotary";
  if (mode == LINEAR) return "linear";
  return "mode " + std::to_string(mode);
}

std::string type_name(MACHINE_TYPE type) {
  switch (type) {
    case MC_TT:
      return "table-table";
    case MC_HT:
      return "head-table";
    case MC_HH:
      return "head-head";
    case MC_UNDEFINED:
      return "unset";
    default:
      return "type " + std::to_string(type);
  }
}

const char* unit_name(const md::CMachDef& machine) { return machine.isMetric() ? "mm" : "inch"; }

std::string counted(std::size_t count, const std::string& noun) {
  return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string axis_value(const md::CAxis2& axis, double value, const char* unit) {
  return axis.mode() == ROTARY ? degrees(value) + " deg" : number(value) + " " + unit;
}

bool is_finite(const Point& p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }

}  // namespace tool
