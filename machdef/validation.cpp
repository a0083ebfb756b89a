// md::CMachDef: whether the definition is a machine that the kinematics can work with.
#include <k5ax/machdef.h>

#include <cmath>

namespace md {

namespace {

constexpr double kThroughOrigin =
    0.001;  // length unit, per coordinate; a line this far off misses the origin

bool passes_origin(const CAxis2& axis) {
  const Geometry::TPoint<double> base = axis.GetBaseVector();
  const Geometry::TPoint<double> nearest =
      Geometry::NearestPointOnLine(CUtility::pt_o, base, base + axis.GetAxisVector());
  return std::abs(nearest.x) < kThroughOrigin && std::abs(nearest.y) < kThroughOrigin &&
         std::abs(nearest.z) < kThroughOrigin;
}

void complain(const char* text) {
  if (CUtility::developer() || CUtility::regression()) CUtility::feedback(text);
}

bool has_travel(const CAxis2& axis) { return axis.GetMax() - axis.GetMin() > 0.0; }

bool table_then_head(const CAxis2& primary, const CAxis2& secondary) {
  return primary.GetAxisLocation() == TABLE && secondary.GetAxisLocation() == HEAD;
}

// The letters differ, and so do the directions: by any amount, for parallel axes of opposite sense are two
// axes.
bool distinct(const CAxis2& primary, const CAxis2& secondary) {
  return primary.GetAxis() != secondary.GetAxis() && primary.GetAxisVector() != secondary.GetAxisVector();
}

}  // namespace

bool CMachDef::is_valid() const {
  const CAxis2* const primary = m_primary.get();
  const CAxis2* const secondary = m_secondary.get();
  if (primary != nullptr && !primary->is_valid()) return false;
  if (secondary != nullptr && !secondary->is_valid()) return false;
  if (math::length(getToolDir()) == 0.0) return false;
  if (m_machType != MC_TT && m_machType != MC_HT && m_machType != MC_HH) return false;
  if (m_machType == MC_HT && primary == nullptr) return false;

  if (secondary != nullptr) {
    if (primary == nullptr || !distinct(*primary, *secondary)) return false;
    if (m_machType == MC_HT && !table_then_head(*primary, *secondary)) return false;
    if (m_machType == MC_HH && (primary->GetAxisLocation() != HEAD || secondary->GetAxisLocation() != HEAD))
      return false;
  }

  // The part turns about this line, and its coordinates count from it. Head axes may lie anywhere.
  if (m_machType == MC_HH) return true;
  if (!part_axis() || passes_origin(*part_axis())) return true;
  // Deliberate: the words say secondary for a primary that is alone, too; hosts compare them.
  complain(m_machType == MC_TT ? "MC_TT secondary axis location not valid"
                               : "MC_HT primary axis location not valid");
  return false;
}

bool CMachDef::mw_valid() const {
  const bool valid = is_valid();
  if (!m_primary) return valid;
  if (!m_secondary || m_machType == MC_HT) return valid && has_travel(*m_primary);
  if (m_machType == MC_TT) return valid && has_travel(*m_secondary);
  return valid;
}

bool CMachDef::is_orthogonal() const {
  return (!m_primary || m_primary->is_orthogonal()) && (!m_secondary || m_secondary->is_orthogonal());
}

}  // namespace md
