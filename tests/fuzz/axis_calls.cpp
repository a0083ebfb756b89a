// Calls about angles, switches, heads and axes.
#include <cmath>

#include "fuzz/host.h"
#include "fuzz/require.h"

namespace k5ax_fuzz {

namespace {

using md::CAxis2;

AxisPtr& any_place(Host& host, Draw& draw) { return host.axes[draw.below(host.axes.size())]; }

// A pointer that says nothing of who owns the axis.
AxisPtr borrowed(CAxis2* axis) { return AxisPtr(axis, CUtility::null_deleter()); }

angled_head* any_head(Host& host, Draw& draw) {
  if (draw.yes()) return k5axCMachDef_head(any_machine(host, draw));
  k5ax_tool_node* const tool = md::sg::tool_node(any_node(host, draw));
  return tool != nullptr ? &tool->payload() : nullptr;
}

constexpr Call kFoundationCalls[] = {
    [](Host&, Draw& draw) {
      const double angle = draw.number();
      const double positive = k5ax_normalise_angle(angle, 1);
      const double symmetric = k5ax_normalise_angle(angle, 2);
      k5ax_normalise_angle(angle, draw.whole());
      if (!(std::abs(angle) < 1e15)) return;
      require(positive >= 0 && positive < math::m_2pi, "an angle outside [0, 2 pi)");
      require(std::abs(symmetric) <= math::m_pi, "an angle outside [-pi, pi]");
    },
    [](Host&, Draw& draw) {
      md_flags_set(draw.flags());
      md_flags_get();
      md_regression();
      CUtility::developer(draw.yes());
      CUtility::regression(draw.yes());
    },
    [](Host&, Draw& draw) {
      const Geometry::TPoint<double> normal = draw.direction();
      const Geometry::TPoint<double> at = draw.point();
      const Geometry::TPoint<double> a = draw.point();
      const Geometry::TPoint<double> b = draw.point();
      const Geometry::Plane plane(normal, at);
      Geometry::TPoint<double> met;
      if (plane.Intersect(a, b, met))
        require(std::isfinite(met.x) && std::isfinite(met.y) && std::isfinite(met.z), "met nowhere");
      plane.PointLiesInPlane(a);
      Geometry::NearestPointOnLine(at, a, b);
      Geometry::FindNearestPointOnLine(a, b, at);
      math::safe_normal(b);
    },
    [](Host& host, Draw& draw) {
      angled_head* const head = any_head(host, draw);
      k5ax_is_angled_head(head);
      const double factor = draw.number();
      k5ax_angled_head_scale(head, factor);
      if (head == nullptr) return;
      const double lengths[] = {draw.number(), draw.number()};
      const double turn = draw.number();
      const double tilt = draw.number();
      k5ax_angled_head_set(turn, tilt, lengths, draw.number(), head);
      k5ax_angled_head_flags_set(head, draw.flags());
      k5ax_angled_head_flags_get(head);
    },
    [](Host& host, Draw& draw) {
      angled_head* const to = any_head(host, draw);
      const angled_head* const from = any_head(host, draw);
      if (to == nullptr) return;
      if (from != nullptr)
        k5ax_angled_head_copy(to, from);
      else
        k5ax_angled_head_initialise(to);
    },
};

constexpr Call kAxisCalls[] = {
    [](Host& host, Draw& draw) { any_place(host, draw) = CAxis2::create(); },
    [](Host& host, Draw& draw) {
      const AXIS_TYPE letter = draw.letter();
      const AXIS_LOCATION location = draw.location();
      const Geometry::TPoint<double> base = draw.point();
      const Geometry::TPoint<double> vector = draw.direction();
      const double min = draw.number();
      const double max = draw.number();
      any_place(host, draw) = CAxis2::create(letter, location, base, vector, min, max, draw.mode());
    },
    [](Host& host, Draw& draw) {
      CAxis2* const from = any_axis(host, draw);
      any_place(host, draw) = CAxis2::clone(from != nullptr ? borrowed(from) : AxisPtr());
    },
    [](Host& host, Draw& draw) { CAxis2::free(any_place(host, draw)); },
    [](Host& host, Draw& draw) { any_place(host, draw).reset(); },
    [](Host& host, Draw& draw) {
      CAxis2* const to = any_axis(host, draw);
      CAxis2* const from = any_axis(host, draw);
      CAxis2::copy(to != nullptr ? borrowed(to) : AxisPtr(), from != nullptr ? borrowed(from) : AxisPtr());
      axis_copy(to, from);
      if (to != nullptr && from != nullptr) *to = *from;
      if (to != nullptr) to->machdef(nullptr);
    },
    [](Host& host, Draw& draw) {
      CAxis2* const axis = any_axis(host, draw);
      if (axis == nullptr) return;
      switch (draw.below(7)) {
        case 0:
          return axis->SetAxis(draw.letter());
        case 1:
          return axis->SetAxisLocation(draw.location());
        case 2:
          return axis->SetBaseVector(draw.point());
        case 3:
          return axis->SetAxisVector(draw.direction());
        case 4:
          return axis->SetMin(draw.number());
        case 5:
          return axis->SetMax(draw.number());
        default:
          return axis->mode(draw.mode());
      }
    },
    [](Host& host, Draw& draw) {
      CAxis2* const axis = any_axis(host, draw);
      const AxisPtr shared = axis != nullptr ? borrowed(axis) : AxisPtr();
      md::GetAxis(shared);
      const Geometry::TPoint<double> p = draw.point();
      CAxis2::GetValue(shared, p.x, p.y, p.z);
      CAxis2::GetAngle(shared, p.x, p.y, p.z);
      axis_get_value(axis, p.x, p.y, p.z);
      axis_location(axis);
      CAxis2::scale(shared, draw.number());
      if (axis == nullptr) return;
      axis->is_valid();
      axis->is_orthogonal();
      double values[3] = {p.x, p.y, p.z};
      axis->SetValue(draw.number(), values[0], values[1], values[2]);
      axis_set_value(axis, draw.number(), &values[0], &values[1], &values[2]);
      double* const limits = axis_limits(axis);
      limits[draw.below(2)] = draw.number();
    },
    [](Host& host, Draw& draw) {
      TAxis*& record = host.records[draw.below(host.records.size())];
      axis_free(&record);
      record = axis_clone(any_axis(host, draw));
    },
    [](Host& host, Draw& draw) {
      TAxis*& record = host.records[draw.below(host.records.size())];
      axis_copy(any_axis(host, draw), record);
      axis_copy(record, any_axis(host, draw));
      axis_location(record);
      axis_get_value(record, 1, 2, 3);
      if (axis_limits(record) != nullptr) *axis_limits(record) = draw.number();
    },
    [](Host&, Draw& draw) {
      AXIS_TYPE2String(draw.letter());
      AXIS_MODE2String(draw.mode());
      AXIS_LOCATION2String(draw.location());
    },
};

}  // namespace

Calls foundation_calls() { return {kFoundationCalls, sizeof kFoundationCalls / sizeof *kFoundationCalls}; }
Calls axis_calls() { return {kAxisCalls, sizeof kAxisCalls / sizeof *kAxisCalls}; }

}  // namespace k5ax_fuzz
