// An angled head from its text.
#include "tool/machine/head_reader.h"

#include "tool/machine/node_geometry.h"

namespace tool {
namespace {

struct HeadAngle {
  double radians = 0;
  double degrees = 0;
};

HeadAngle read_angle(const std::optional<JsonView>& view) {
  if (!view) return {};
  const double radians = view->angle();
  return {radians, view->kind() == JsonKind::number ? view->number() : radians * math::R2D};
}

}  // namespace

HeadRecord read_head(const JsonView& view, const Keys& known) {
  view.require_keys("a head", known);
  const HeadAngle tilt = read_angle(view.find("tilt"));
  const HeadAngle turn = read_angle(view.find("turn"));
  double lengths[2] = {0, 0};
  if (const auto list = view.find("lengths")) {
    const std::vector<JsonView> entries = list->entries();
    if (!list->is_list() || entries.size() != 2)
      list->fail_value("is not the head's two lengths",
                       "write two numbers: mounting point to tilt joint, tilt joint to tool reference point");
    lengths[0] = entries[0].number();
    lengths[1] = entries[1].number();
  }
  double side_offset = 0;
  if (const auto side = view.find("side_offset")) side_offset = side->number();

  HeadRecord head = head_of(turn.degrees, tilt.degrees, lengths, side_offset);
  // Radians that are no exact number of degrees.
  head.turn = turn.radians;
  head.tilt = tilt.radians;
  if (const auto tip = view.find("tip")) head.tip = tip->point();
  if (const auto direction = view.find("direction")) head.direction = direction->point();
  if (const auto reference = view.find("reference")) head.reference = reference->point();
  if (const auto offset = view.find("offset")) head.offset = offset->point();
  if (const auto flags = view.find("flags")) head.flags = flags->bits();
  if (const auto padding = view.find("padding")) head.padding = padding->bits();
  return head;
}

}  // namespace tool
