// md::sg::tnode: what the axis node and the tool node have in common.
#include "scenegraph/typed_node.h"

namespace md {

boost::shared_ptr<sg::tnode<CAxis2>> NodeAxis_Create() { return sg::tnode<CAxis2>::take(); }

void NodeAxis_Free(boost::shared_ptr<sg::tnode<CAxis2>>& n) { sg::tnode<CAxis2>::give_back(n); }

boost::shared_ptr<sg::tnode<angled_head>> TOOL_NODE_Create() { return sg::tnode<angled_head>::take(); }

void TOOL_NODE_Free(boost::shared_ptr<sg::tnode<angled_head>>& n) { sg::tnode<angled_head>::give_back(n); }

namespace sg {

tnode<CAxis2>* axis_node(node* n) {
  return n != nullptr && n->m_kind == node::Kind::axis ? static_cast<tnode<CAxis2>*>(n) : nullptr;
}

tnode<angled_head>* tool_node(node* n) {
  return n != nullptr && n->m_kind == node::Kind::tool ? static_cast<tnode<angled_head>*>(n) : nullptr;
}

}  // namespace sg
}  // namespace md
