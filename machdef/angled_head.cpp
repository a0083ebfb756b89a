// The angled head's flat functions.
#include <k5ax/angled_head.h>

#include <cmath>
#include <cstddef>
#include <cstring>

namespace {

constexpr double kTilted = 0.001;  // radians; a smaller tilt is within what a straight head is adjusted to

static_assert(sizeof(angled_head) == 136 && offsetof(angled_head, flags) == 128,
              "files carry the head as a raw block of 16 doubles, the flags word and 4 bytes of padding");

}  // namespace

extern "C" void k5ax_angled_head_initialise(angled_head* head) {
  std::memset(static_cast<void*>(head), 0, sizeof *head);
  head->tool_dir.z = 1.0;
  head->ref_dir.x = 1.0;
}

extern "C" void k5ax_angled_head_copy(angled_head* dst, const angled_head* src) {
  // The padding too: it goes to files. The two may be one.
  std::memmove(static_cast<void*>(dst), src, sizeof *dst);
}

extern "C" unsigned int k5ax_angled_head_flags_get(const angled_head* head) { return head->flags; }

extern "C" void k5ax_angled_head_flags_set(angled_head* head, unsigned int flags) { head->flags = flags; }

extern "C" void k5ax_angled_head_set(double c_degrees, double b_degrees, const double lengths[2],
                                     double side_offset, angled_head* head) {
  using Geometry::TPoint;

  head->c_angle = math::D2R * c_degrees;
  head->b_angle = math::D2R * b_degrees;
  head->length1 = lengths[0];
  head->length2 = lengths[1];

  const Geometry::Matrix turn = Geometry::RotateAboutAxis(0, 0, 1, head->c_angle);
  const Geometry::Matrix tilt = Geometry::RotateAboutAxis(0, 1, 0, head->b_angle);
  const TPoint<double> upper = TPoint<double>(0, 0, lengths[0]) * turn;
  const TPoint<double> lower = TPoint<double>(0, side_offset, lengths[1]) * tilt * turn;
  head->tip = upper + lower;
  head->tool_dir = TPoint<double>(0, 0, 1) * tilt * turn;
  head->ref_dir = TPoint<double>(1, 0, 0) * tilt * turn;
}

extern "C" int k5ax_is_angled_head(const angled_head* head) {
  if (head == nullptr) return -1;
  if (std::abs(head->b_angle) > kTilted) return 1;
  return math::dot(head->tip, head->tip) > 0 ? 1 : 0;
}

extern "C" void k5ax_angled_head_scale(angled_head* head, double factor) {
  if (head == nullptr) return;
  head->length1 *= factor;
  head->length2 *= factor;
  head->tip = head->tip * factor;
  head->offset = head->offset * factor;
}
