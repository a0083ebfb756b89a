// Nodes and trees.
#include "faults/entry_points.h"

namespace k5ax_test {

using md::sg::node;

namespace {

// Deep, so that what is made and dropped again on the way is more than a few.
constexpr int kDeep = 60;

std::string count_of(std::size_t count) { return std::to_string(count); }

}  // namespace

std::vector<EntryPoint> node_entry_points() {
  return {
      {"NodeCreate",
       {"md::sg::node::create"},
       WithoutMemory::throws,
       [](AllocationStage& stage) { stage.loose = named(node::create(), 7); }},
      {"AxisNodeCreate",
       {"md::NodeAxis_Create"},
       WithoutMemory::throws,
       [](AllocationStage& stage) { stage.loose = named(md::NodeAxis_Create(), 7); }},
      {"ToolNodeCreate",
       {"md::TOOL_NODE_Create"},
       WithoutMemory::throws,
       [](AllocationStage& stage) { stage.loose = named(md::TOOL_NODE_Create(), 7); }},
      {"NodeFree",
       {"md::sg::node::free"},
       WithoutMemory::throws,
       [](AllocationStage&) {
         NodePtr n = named(node::create(), 7);
         node::free(n);
       }},
      {"AxisNodeFree",
       {"md::NodeAxis_Free"},
       WithoutMemory::throws,
       [](AllocationStage&) {
         boost::shared_ptr<k5ax_axis_node> n = md::NodeAxis_Create();
         n->reset();
         md::NodeAxis_Free(n);
       }},
      {"ToolNodeFree",
       {"md::TOOL_NODE_Free"},
       WithoutMemory::throws,
       [](AllocationStage&) {
         boost::shared_ptr<k5ax_tool_node> n = md::TOOL_NODE_Create();
         n->reset();
         md::TOOL_NODE_Free(n);
       }},
      {"NodeClone",
       {"md::sg::node::node_clone"},
       WithoutMemory::throws,
       [](AllocationStage& stage) { node::node_clone(stage.branch)->id(77); }},
      {"NodeCloneOfADeepTree",
       {"md::sg::node::node_clone"},
       WithoutMemory::throws,
       [](AllocationStage& stage) {
         const NodePtr top = named(node::create(), 7);
         NodePtr leaf = top;
         for (int i = 0; i < kDeep; ++i) {
           const NodePtr next = named(i % 3 == 0 ? NodePtr(md::NodeAxis_Create()) : node::create(), 100 + i);
           leaf->add_child(next);
           leaf = next;
         }
         stage.loose = node::node_clone(top);
       }},
      {"ShallowClones",
       {"md::sg::node::shallow_clone", "md::sg::tnode<md::CAxis2>::shallow_clone",
        "md::sg::tnode<angled_head>::shallow_clone"},
       WithoutMemory::throws,
       [](AllocationStage& stage) {
         const NodePtr axis = stage.tree->shallow_clone();
         const NodePtr plain = stage.branch->shallow_clone();
         stage.loose = stage.branch->child_list().back()->shallow_clone();
         stage.answer = count_of(axis->child_list().size() + plain->child_list().size());
       }},
      {"AllNodes",
       {"md::sg::node::all_nodes", "k5axSgNode_all_nodes"},
       WithoutMemory::throws,
       [](AllocationStage& stage) {
         std::vector<node*> flat(2 * kManyPlaces);
         const int count = k5axSgNode_all_nodes(stage.tree.get(), flat.data());
         stage.answer = count_of(node::all_nodes(stage.tree).size() + static_cast<std::size_t>(count));
       }},
      {"TransformStack",
       {"md::sg::node::transform_stack"},
       WithoutMemory::throws,
       [](AllocationStage& stage) {
         std::vector<Geometry::Matrix> stack;
         node::transform_stack(stage.branch->child_list().back(), stack);
         stage.answer = count_of(stack.size());
       }},
      {"NoChildren",
       {"md::sg::node::no_children"},
       WithoutMemory::throws,
       [](AllocationStage& stage) {
         std::vector<NodePtr> leaves;
         node::no_children(stage.branch->child_list(), leaves);
         stage.answer = count_of(leaves.size());
       }},
      {"AddChild",
       {"md::sg::node::add_child"},
       WithoutMemory::throws,
       [](AllocationStage& stage) { stage.loose->add_child(stage.branch); }},
      {"AddChildToANodeThatWasReset",
       {"md::sg::node::add_child"},
       WithoutMemory::throws,
       [](AllocationStage& stage) {
         // Its holders are not all known, so it is looked for below the child.
         const NodePtr leaf = stage.branch->child_list().front();
         leaf->reset();
         for (int i = static_cast<int>(stage.loose->child_list().size()); i < kManyPlaces; ++i) {
           const NodePtr child = named(node::create(), 200 + i);
           child->add_child(named(node::create(), 300 + i));
           stage.loose->add_child(child);
         }
         leaf->add_child(stage.loose);
       }},
      {"SetParent",
       {"md::sg::node::parent"},
       WithoutMemory::throws,
       [](AllocationStage& stage) { stage.branch->parent(stage.loose); }},
      {"Children",
       {},
       WithoutMemory::throws,
       [](AllocationStage& stage) { stage.answer = count_of(stage.branch->children().size()); }},
      {"Initialise",
       {"md::sg::node::initialise", "k5axSgNode_initialise"},
       WithoutMemory::throws,
       [](AllocationStage& stage) {
         k5axSgNode_initialise(stage.tree.get(), 1);
         stage.tree->initialise(true);
       }},
      {"ScaleOfATreeBelowAPlainNode",
       {"md::sg::node::scale_node"},
       WithoutMemory::throws,
       [](AllocationStage& stage) { stage.branch->scale_node(2, true); }},
      {"ScaleOfATreeBelowAToolNode",
       {"md::sg::tnode<angled_head>::scale_node"},
       WithoutMemory::throws,
       [](AllocationStage& stage) {
         stage.loose->add_child(stage.branch);
         stage.loose->scale_node(2, true);
       }},
      {"ScaleOfATreeBelowAnAxisNode",
       {"md::sg::tnode<md::CAxis2>::scale_node"},
       WithoutMemory::throws,
       [](AllocationStage& stage) { stage.tree->scale_node(2, true); }},
  };
}

}  // namespace k5ax_test
