// A node of the trees in words.
#include "tool/node_text.h"

#include "tool/text.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace tool {
namespace {

constexpr int kFixedId = -999;
constexpr double kRounding = 1e-9;  // of a rotation's numbers

bool is_identity(const Geometry::Matrix& matrix) { return difference(matrix, Geometry::Matrix()) == 0; }

void append(std::string& words, const std::string& more) { words += (words.empty() ? "" : ", ") + more; }

}  // namespace

std::string node_kind(const SceneNode& entry) {
  if (entry.axis != nullptr) return "axis";
  if (entry.tool != nullptr) return "tool";
  if (entry.node->id() == kFixedId) return "fixed";
  return is_identity(entry.node->transform()) ? "frame" : "plain";
}

std::string node_name(const SceneNode& entry) {
  const std::string kind = node_kind(entry);
  return kind == "axis" ? letter_name(entry.axis->GetAxis()) + " axis" : kind;
}

std::string node_words(md::CMachDef& machine, const SceneNode& entry) {
  std::string words;
  const int role = rotary_role(machine, entry.node);
  if (role >= 0) append(words, role == 0 ? "primary" : "secondary");
  if (entry.tool != nullptr && machine.tool_node().get() == entry.node) append(words, "the tool node");

  unsigned int unnamed = entry.node->flags();
  if (entry.axis != nullptr) {
    append(words, is_driven(machine, entry) ? "driven" : "not driven");
    if ((unnamed & 2U) != 0) append(words, "wins");
    unnamed &= ~3U;
  }
  if (unnamed != 0) {
    char text[32];
    std::snprintf(text, sizeof text, "flags 0x%x", unnamed);
    append(words, text);
  }
  return words;
}

std::string transform_words(const Geometry::Matrix& matrix, int digits) {
  if (is_identity(matrix)) return {};
  const MatrixNumbers numbers = numbers_of(matrix);
  const double* const m = numbers.values;
  std::string words;

  // Rows are the images of X, Y, Z. For a turn by t about u the trace is 1 + 2 cos t, and what is skew about
  // it is 2 u sin t.
  const Point skew(m[5] - m[7], m[6] - m[2], m[1] - m[3]);
  const double sine = math::length(skew) / 2;
  const double cosine = (m[0] + m[4] + m[8] - 1) / 2;
  const double angle = std::atan2(sine, cosine);
  Point along = sine > 0 ? skew * (0.5 / sine) : CUtility::pt_z;
  // Near half a turn next to nothing is skew. What is not skew is 2 u u', less 1 along the diagonal: there
  // the longest row shows u, and what is left of the skew part tells its sense.
  if (cosine < 0 && sine < 1e-6) {
    const std::size_t i = m[0] >= m[4] && m[0] >= m[8] ? 0 : m[4] >= m[8] ? 1 : 2;
    const double row[3] = {m[3 * i] + m[i], m[3 * i + 1] + m[3 + i], m[3 * i + 2] + m[6 + i]};
    along =
        Point(row[0] / 2 + (i == 0 ? 1 : 0), row[1] / 2 + (i == 1 ? 1 : 0), row[2] / 2 + (i == 2 ? 1 : 0));
    if (math::dot(along, skew) < 0) along = -along;
  }
  const Point shift(m[9], m[10], m[11]);
  const Geometry::Matrix again = Geometry::RotateAboutAxis(along, angle) * Geometry::Translate(shift);
  if (!(difference(again, matrix) <= kRounding)) {
    for (int i = 0; i < 12; ++i) words += (i == 0 ? "" : i % 3 == 0 ? " | " : " ") + number(m[i], digits);
    return words;
  }
  if (angle > kRounding) {
    append(words, "turn " + number(angle * math::R2D, digits) + " deg about " +
                      triple(math::safe_normal(along), digits));
  }
  if (shift != Point()) append(words, "shift " + triple(shift, digits));
  return words;
}

}  // namespace tool
