// Walks over a tree: every node of it, the transforms up to its root, its leaves.

#include "scenegraph/scene_tree.h"

using namespace k5ax_test;
using md::sg::node;

TEST(AllNodes, GivesANodeBeforeItsChildrenAndAnEarlierBranchBeforeTheNext) {
  SmallTree t;
  EXPECT_EQ(node::all_nodes(t.r), (std::vector<NodePtr>{t.r, t.a, t.a1, t.b}));
}

TEST(AllNodes, OfAnEmptyPointerIsEmpty) { EXPECT_TRUE(node::all_nodes(NodePtr()).empty()); }

TEST(AllNodes, OfALeafIsTheLeafAlone) {
  SmallTree t;
  EXPECT_EQ(node::all_nodes(t.b), (std::vector<NodePtr>{t.b}));
}

TEST(AllNodes, OfAnInnerNodeStaysBelowIt) {
  SmallTree t;
  EXPECT_EQ(node::all_nodes(t.a), (std::vector<NodePtr>{t.a, t.a1}));
}

TEST(AllNodes, GivesTypedNodesLikeAnyOther) {
  const NodePtr r = make_node(1);
  const AxisNodePtr axis = make_axis_node(2, AXIS_A, ROTARY, {0, 0, 0}, {1, 0, 0});
  const ToolNodePtr tool = make_tool_node(3);
  r->add_child(axis);
  axis->add_child(tool);
  r->add_child(make_node(4));
  EXPECT_EQ(ids(node::all_nodes(r)), (std::vector<int>{1, 2, 3, 4}));
}

// A bush of three levels with two children each, numbered by hand in the order in which they must come.
TEST(AllNodes, FinishesEachBranchDownToItsLastLeaf) {
  std::vector<NodePtr> n;
  for (int id = 0; id < 7; ++id) n.push_back(make_node(id));
  n[0]->add_child(n[1]);
  n[0]->add_child(n[4]);
  n[4]->add_child(n[5]);
  n[1]->add_child(n[2]);
  n[4]->add_child(n[6]);
  n[1]->add_child(n[3]);
  EXPECT_EQ(ids(node::all_nodes(n[0])), (std::vector<int>{0, 1, 2, 3, 4, 5, 6}));
}

TEST(TransformStack, LeadsFromTheNodeUpToTheRoot) {
  SmallTree t;
  t.a1->transform(numbered_matrix(100));
  t.a->transform(numbered_matrix(200));
  t.r->transform(numbered_matrix(300));
  std::vector<Matrix> stack;
  node::transform_stack(t.a1, stack);
  ASSERT_EQ(stack.size(), 3u);
  EXPECT_EQ(components(stack[0]), components(numbered_matrix(100)));
  EXPECT_EQ(components(stack[1]), components(numbered_matrix(200)));
  EXPECT_EQ(components(stack[2]), components(numbered_matrix(300)));
}

TEST(TransformStack, ClearsWhatTheVectorHeld) {
  SmallTree t;
  std::vector<Matrix> stack(5, numbered_matrix(1));
  node::transform_stack(t.b, stack);
  ASSERT_EQ(stack.size(), 2u);
  EXPECT_EQ(components(stack[0]), components(Matrix()));
}

TEST(TransformStack, OfAnEmptyPointerLeavesTheVectorEmpty) {
  std::vector<Matrix> stack(5, numbered_matrix(1));
  node::transform_stack(NodePtr(), stack);
  EXPECT_TRUE(stack.empty());
}

TEST(TransformStack, OfARootIsItsOwnTransform) {
  const NodePtr r = make_node(1);
  r->transform(numbered_matrix(7));
  std::vector<Matrix> stack;
  node::transform_stack(r, stack);
  ASSERT_EQ(stack.size(), 1u);
  EXPECT_EQ(components(stack[0]), components(numbered_matrix(7)));
}

TEST(TransformStack, EndsWhereTheParentIsGone) {
  NodePtr p = make_node(1);
  const NodePtr k = make_node(2);
  p->add_child(k);
  p.reset();
  std::vector<Matrix> stack;
  node::transform_stack(k, stack);
  EXPECT_EQ(stack.size(), 1u);
}

// Worked by hand: from the node, shift by (1, 0, 0); a quarter turn about Z takes (1, 0, 0) to (0, 1, 0);
// then shift by (0, 0, 5).
TEST(TransformStack, MultipliedInOrderTakesTheNodesFrameToTheRoots) {
  SmallTree t;
  t.a1->transform(Geometry::Translate({1, 0, 0}));
  t.a->transform(Geometry::RotateAboutAxis(0, 0, 1, deg(90)));
  t.r->transform(Geometry::Translate({0, 0, 5}));
  std::vector<Matrix> stack;
  node::transform_stack(t.a1, stack);
  Matrix node_to_root;
  for (const Matrix& m : stack) node_to_root *= m;
  // cos(pi/2) comes out as 6e-17; coordinates up to 5.
  EXPECT_NEAR_POINT((TPoint<double>(0, 0, 0) * node_to_root), (TPoint<double>(0, 1, 5)), 1e-15);
}

TEST(NoChildren, GivesTheLeavesInOrder) {
  SmallTree t;
  std::vector<NodePtr> leaves;
  node::no_children(node::all_nodes(t.r), leaves);
  EXPECT_EQ(leaves, (std::vector<NodePtr>{t.a1, t.b}));
}

TEST(NoChildren, KeepsTheOrderOfItsInput) {
  SmallTree t;
  std::vector<NodePtr> leaves;
  node::no_children({t.b, t.r, t.a1, t.a}, leaves);
  EXPECT_EQ(leaves, (std::vector<NodePtr>{t.b, t.a1}));
}

TEST(NoChildren, PassesOverEmptyPointers) {
  SmallTree t;
  std::vector<NodePtr> leaves;
  node::no_children({NodePtr(), t.b, NodePtr()}, leaves);
  EXPECT_EQ(leaves, (std::vector<NodePtr>{t.b}));
}

TEST(NoChildren, AppendsToWhatIsThere) {
  SmallTree t;
  std::vector<NodePtr> leaves{t.r};
  node::no_children({t.b}, leaves);
  EXPECT_EQ(leaves, (std::vector<NodePtr>{t.r, t.b}));
}

TEST(NoChildren, GivesANodeAsOftenAsItStandsInTheInput) {
  SmallTree t;
  std::vector<NodePtr> leaves;
  node::no_children({t.b, t.b}, leaves);
  EXPECT_EQ(leaves, (std::vector<NodePtr>{t.b, t.b}));
}
