// The tool node: the angled head in the scene graph, and its transform for a tool point.
#include <cstring>

#include "scenegraph/typed_node.h"

namespace md {
namespace sg {

namespace {

// ((((E D) C) B) A): back along the tilted spindle, untilt, back along the straight one, unturn, back to the
// tool point.
Geometry::Matrix tool_transform(const angled_head& head, const Geometry::TPoint<double>& p) {
  Geometry::Matrix transform = Geometry::Translate(CUtility::pt_z * -head.length2);
  transform *= Geometry::RotateAboutAxis(CUtility::pt_y, head.b_angle);
  transform *= Geometry::Translate(CUtility::pt_z * -head.length1);
  transform *= Geometry::RotateAboutAxis(CUtility::pt_z, head.c_angle);
  transform *= Geometry::Translate(-p);
  return transform;
}

void place_tool(tnode<angled_head>& n, const Geometry::TPoint<double>& p) {
  const Geometry::Matrix transform = tool_transform(n.payload(), p);
  n.payload().offset = p;
  n.transform(transform);
}

}  // namespace

// To the last byte: files carry the record as a raw block, its padding included.
void clear_payload(angled_head& head) { std::memset(static_cast<void*>(&head), 0, sizeof head); }

void copy_payload(angled_head& to, const angled_head& from) {
  std::memcpy(static_cast<void*>(&to), &from, sizeof to);
}

// Deliberate: the head's lengths stay, and only the transform is made anew.
void scale_payload(tnode<angled_head>& n, double factor) {
  static_cast<void>(factor);
  place_tool(n, Geometry::TPoint<double>(n.payload().offset));
}

template class tnode<angled_head>;

}  // namespace sg
}  // namespace md

extern "C" void k5axSgToolNodeMatrixSet(boost::shared_ptr<md::sg::node> n,
                                        const Geometry::TPoint<double>& p) {
  if (md::sg::tnode<angled_head>* const tool = md::sg::tool_node(n.get())) md::sg::place_tool(*tool, p);
}
