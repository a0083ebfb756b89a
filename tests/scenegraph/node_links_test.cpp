// Children and parents: what links, what cuts, and what is refused.

#include <algorithm>
#include <stdexcept>

#include <boost/smart_ptr/bad_weak_ptr.hpp>

#include "scenegraph/scene_tree.h"

using namespace k5ax_test;
using md::sg::node;

namespace {

// Parent P = 1 with the children K = 2, L = 3, M = 4.
struct Family {
  NodePtr p = make_node(1);
  NodePtr k = make_node(2);
  NodePtr l = make_node(3);
  NodePtr m = make_node(4);

  Family() {
    p->add_child(k);
    p->add_child(l);
    p->add_child(m);
  }
};

}  // namespace

TEST(AddChild, PutsTheChildAtTheEnd) {
  Family f;
  f.p->add_child(make_node(5));
  EXPECT_EQ(ids(f.p->children()), (std::vector<int>{2, 3, 4, 5}));
}

TEST(AddChild, MakesThisTheParent) {
  const NodePtr p = make_node(1);
  const NodePtr k = make_node(2);
  p->add_child(k);
  EXPECT_EQ(k->parent(), p);
}

TEST(AddChild, TakesTheChildOutOfItsFormerParentsList) {
  Family f;
  const NodePtr q = make_node(9);
  q->add_child(f.l);
  EXPECT_EQ(ids(f.p->children()), (std::vector<int>{2, 4}));
  EXPECT_EQ(ids(q->children()), (std::vector<int>{3}));
  EXPECT_EQ(f.l->parent(), q);
}

TEST(AddChild, PutsAChildFromElsewhereAtTheEnd) {
  Family f;
  Family other;
  f.p->add_child(other.k);
  EXPECT_EQ(f.p->children().back(), other.k);
  EXPECT_EQ(f.p->children().size(), 4u);
}

TEST(AddChild, TwiceLeavesOneEntryInItsPlace) {
  Family f;
  f.p->add_child(f.k);
  EXPECT_EQ(ids(f.p->children()), (std::vector<int>{2, 3, 4}));
  EXPECT_EQ(f.k->parent(), f.p);
}

TEST(AddChild, EmptyPointerDoesNothing) {
  Family f;
  f.p->add_child(NodePtr());
  EXPECT_EQ(ids(f.p->children()), (std::vector<int>{2, 3, 4}));
}

TEST(AddChild, KeepsTheChildAlive) {
  const NodePtr p = make_node(1);
  NodePtr k = make_node(2);
  const boost::weak_ptr<node> watch = k;
  p->add_child(k);
  k.reset();
  EXPECT_FALSE(watch.expired());
}

TEST(AddChild, DoesNotKeepTheParentAlive) {
  NodePtr p = make_node(1);
  const NodePtr k = make_node(2);
  p->add_child(k);
  const boost::weak_ptr<node> watch = p;
  p.reset();
  EXPECT_TRUE(watch.expired());
}

// A child whose parent link was cut from elsewhere still stands in the list: the link comes back, the place
// stays.
TEST(AddChild, OfAChildWhoseLinkWasCutKeepsItsPlace) {
  Family f;
  make_node(9)->remove_child(f.k);
  ASSERT_FALSE(f.k->parent());
  f.p->add_child(f.k);
  EXPECT_EQ(ids(f.p->children()), (std::vector<int>{2, 3, 4}));
  EXPECT_EQ(f.k->parent(), f.p);
}

TEST(AddChild, TakesTypedNodes) {
  const NodePtr p = make_node(1);
  const AxisNodePtr axis = make_axis_node(2, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  const ToolNodePtr tool = make_tool_node(3);
  p->add_child(axis);
  axis->add_child(tool);
  EXPECT_EQ(tool->parent(), axis);
  EXPECT_EQ(ids(node::all_nodes(p)), (std::vector<int>{1, 2, 3}));
}

TEST(AddChild, NodeItselfIsRefused) {
  Family f;
  EXPECT_THROW(f.p->add_child(f.p), std::invalid_argument);
}

TEST(AddChild, ParentIsRefused) {
  Family f;
  EXPECT_THROW(f.k->add_child(f.p), std::invalid_argument);
}

TEST(AddChild, AncestorFurtherUpIsRefused) {
  SmallTree t;
  EXPECT_THROW(t.a1->add_child(t.r), std::invalid_argument);
}

TEST(AddChild, AncestorOfAnotherKindIsRefused) {
  const AxisNodePtr top = make_axis_node(1, AXIS_X, LINEAR, {0, 0, 0}, {1, 0, 0});
  const ToolNodePtr middle = make_tool_node(2);
  const NodePtr bottom = make_node(3);
  top->add_child(middle);
  middle->add_child(bottom);
  EXPECT_THROW(bottom->add_child(top), std::invalid_argument);
}

TEST(AddChild, RefusalChangesNothing) {
  SmallTree t;
  EXPECT_THROW(t.a1->add_child(t.a), std::invalid_argument);
  EXPECT_EQ(t.a->parent(), t.r);
  EXPECT_EQ(t.a1->parent(), t.a);
  EXPECT_EQ(ids(node::all_nodes(t.r)), (std::vector<int>{1, 2, 3, 4}));
  EXPECT_TRUE(t.a1->children().empty());
}

TEST(AddChild, RefusalOfItselfChangesNothing) {
  SmallTree t;
  EXPECT_THROW(t.a->add_child(t.a), std::invalid_argument);
  EXPECT_EQ(t.a->parent(), t.r);
  EXPECT_EQ(ids(node::all_nodes(t.r)), (std::vector<int>{1, 2, 3, 4}));
}

// A reset node has given up its children, but their links still lead to it: it is above them, and a walk up
// from them would never end.
TEST(AddChild, ResetNodeToWhichAFormerChildStillLeadsIsRefused) {
  SmallTree t;
  t.a->reset();
  ASSERT_EQ(t.a1->parent(), t.a);
  EXPECT_THROW(t.a1->add_child(t.a), std::invalid_argument);
  EXPECT_FALSE(t.a->parent());
  EXPECT_TRUE(t.a1->children().empty());
}

TEST(AddChild, ResetNodeIsTakenOnceItsFormerChildIsCutLoose) {
  SmallTree t;
  t.a->reset();
  t.a1->parent(NodePtr());
  t.a1->add_child(t.a);
  EXPECT_EQ(t.a->parent(), t.a1);
}

// Those that hold a node in their lists while its link is cut or leads elsewhere are above it all the same: a
// walk down from them comes by.
TEST(AddChild, HolderOfANodeThatWasResetIsRefused) {
  SmallTree t;
  t.a1->reset();
  ASSERT_EQ(t.a->children(), std::vector<NodePtr>{t.a1});
  EXPECT_THROW(t.a1->add_child(t.a), std::invalid_argument);
  EXPECT_THROW(t.a1->add_child(t.r), std::invalid_argument);
  EXPECT_TRUE(t.a1->children().empty());
  EXPECT_EQ(t.a->parent(), t.r);
  EXPECT_FALSE(t.r->parent());
}

TEST(AddChild, HolderFurtherUpOfAnAncestorWhoseLinkWasCutIsRefused) {
  SmallTree t;
  make_node(9)->remove_child(t.a);
  EXPECT_THROW(t.a1->add_child(t.r), std::invalid_argument);
  EXPECT_TRUE(t.a1->children().empty());
}

TEST(AddChild, HolderOfANodeWhoseLinkLeadsElsewhereIsRefused) {
  SmallTree t;
  const NodePtr elsewhere = make_node(9);
  t.a1->reset();
  elsewhere->add_child(t.a1);
  elsewhere->reset();  // lets go of the node and keeps its link
  ASSERT_EQ(t.a1->parent(), elsewhere);
  ASSERT_EQ(t.a->children(), std::vector<NodePtr>{t.a1});
  EXPECT_THROW(t.a1->add_child(t.a), std::invalid_argument);
  EXPECT_TRUE(t.a1->children().empty());
}

TEST(AddChild, OneOfTwoHoldersIsRefused) {
  SmallTree t;
  t.a1->reset();
  t.b->add_child(t.a1);  // now in two lists
  EXPECT_THROW(t.a1->add_child(t.a), std::invalid_argument);
  EXPECT_THROW(t.a1->add_child(t.b), std::invalid_argument);
  t.a1->add_child(make_node(9));
  EXPECT_EQ(ids(t.a1->children()), std::vector<int>{9});
}

TEST(AddChild, BranchFromElsewhereIsTakenByANodeWhoseLinkWasCut) {
  SmallTree t;
  SmallTree other;
  t.a1->reset();
  t.a1->add_child(other.a);
  EXPECT_EQ(other.a->parent(), t.a1);
  EXPECT_EQ(t.a1->children(), std::vector<NodePtr>{other.a});
}

TEST(AddChild, NodeFromBesideAnAncestorIsTaken) {
  SmallTree t;
  t.a1->add_child(t.b);
  EXPECT_EQ(ids(node::all_nodes(t.r)), (std::vector<int>{1, 2, 3, 4}));
  EXPECT_EQ(t.b->parent(), t.a1);
}

TEST(AddChild, GrandchildMayBecomeAChild) {
  SmallTree t;
  t.r->add_child(t.a1);
  EXPECT_EQ(ids(t.r->children()), (std::vector<int>{2, 4, 3}));
  EXPECT_TRUE(t.a->children().empty());
}

TEST(AddChild, OfANodeThatNothingOwnsThrowsBadWeakPtr) {
  HostNode unowned(1, nullptr);
  const NodePtr k = make_node(2);
  EXPECT_THROW(unowned.add_child(k), boost::bad_weak_ptr);
}

TEST(AddChild, OfANodeThatNothingOwnsLeavesTheChildWhereItWas) {
  HostNode unowned(1, nullptr);
  Family f;
  EXPECT_THROW(unowned.add_child(f.k), boost::bad_weak_ptr);
  EXPECT_EQ(f.k->parent(), f.p);
  EXPECT_EQ(ids(f.p->children()), (std::vector<int>{2, 3, 4}));
}

TEST(RemoveChild, TakesTheChildOutAndKeepsTheOrderOfTheRest) {
  Family f;
  f.p->remove_child(f.l);
  EXPECT_EQ(ids(f.p->children()), (std::vector<int>{2, 4}));
}

TEST(RemoveChild, EmptiesTheParentLink) {
  Family f;
  f.p->remove_child(f.l);
  EXPECT_FALSE(f.l->parent());
}

// Deliberate: the link is emptied before anybody looks whether the node is a child here. Hosts cut a node
// loose through any node they have at hand.
TEST(RemoveChild, CutsTheParentLinkOfANodeThatIsNoChild) {
  Family f;
  const NodePtr stranger = make_node(9);
  stranger->remove_child(f.l);
  EXPECT_FALSE(f.l->parent());
  EXPECT_EQ(ids(f.p->children()), (std::vector<int>{2, 3, 4}));
}

TEST(RemoveChild, LeavesItsOwnListAloneForANodeThatIsNoChild) {
  Family f;
  Family other;
  f.p->remove_child(other.k);
  EXPECT_EQ(ids(f.p->children()), (std::vector<int>{2, 3, 4}));
}

TEST(RemoveChild, GoesByThePointerAndNotByTheId) {
  Family f;
  f.p->remove_child(make_node(3));
  EXPECT_EQ(ids(f.p->children()), (std::vector<int>{2, 3, 4}));
}

TEST(RemoveChild, DestroysAChildThatNobodyElseHolds) {
  const NodePtr p = make_node(1);
  p->add_child(make_node(2));
  const boost::weak_ptr<node> watch = p->children()[0];
  p->remove_child(p->children()[0]);
  EXPECT_TRUE(watch.expired());
}

// The argument may be the very entry of the list that goes away.
TEST(RemoveChild, TakesAReferenceIntoTheListItself) {
  Family f;
  f.p->remove_child(f.p->child_list()[0]);
  EXPECT_EQ(ids(f.p->children()), (std::vector<int>{3, 4}));
}

TEST(RemoveChild, LeavesTheSubtreeBelowTheChildWhole) {
  SmallTree t;
  t.r->remove_child(t.a);
  EXPECT_EQ(ids(node::all_nodes(t.a)), (std::vector<int>{2, 3}));
}

TEST(RemoveChild, RemovesEveryEntryOfTheChild) {
  // One node stands twice in the list: cloned under a parent, a node that clones into itself is appended
  // unchecked.
  struct SelfCloner : HostNode {
    SelfCloner() : HostNode(2, nullptr) {}
    NodePtr shallow_clone() override { return shared_from_this(); }
  };
  const NodePtr p = make_node(1);
  const boost::shared_ptr<SelfCloner> k(new SelfCloner);
  p->add_child(k);
  node::node_clone(k);
  ASSERT_EQ(ids(p->children()), (std::vector<int>{2, 2}));

  p->remove_child(k);

  EXPECT_TRUE(p->children().empty());
}

TEST(SetParent, HangsTheNodeAtTheEndOfTheParentsList) {
  Family f;
  const NodePtr n = make_node(5);
  n->parent(f.p);
  EXPECT_EQ(ids(f.p->children()), (std::vector<int>{2, 3, 4, 5}));
  EXPECT_EQ(n->parent(), f.p);
}

TEST(SetParent, TakesTheNodeOutOfItsFormerParentsList) {
  Family f;
  const NodePtr q = make_node(9);
  f.l->parent(q);
  EXPECT_EQ(ids(f.p->children()), (std::vector<int>{2, 4}));
  EXPECT_EQ(ids(q->children()), (std::vector<int>{3}));
}

// Deliberate: setting the parent that a node has already moves it to the last place; hosts reorder children
// this way, and add_child is there for those who want the place kept.
TEST(SetParent, SameParentAgainMovesTheNodeToTheLastPlace) {
  Family f;
  f.k->parent(f.p);
  EXPECT_EQ(ids(f.p->children()), (std::vector<int>{3, 4, 2}));
  EXPECT_EQ(f.k->parent(), f.p);
}

TEST(SetParent, SameParentAgainKeepsAnOnlyChild) {
  NodePtr p = make_node(1);
  NodePtr k = make_node(2);
  p->add_child(k);
  k->parent(p);
  EXPECT_EQ(ids(p->children()), (std::vector<int>{2}));
}

TEST(SetParent, EmptyPointerDetachesTheNode) {
  Family f;
  f.l->parent(NodePtr());
  EXPECT_FALSE(f.l->parent());
  EXPECT_EQ(ids(f.p->children()), (std::vector<int>{2, 4}));
}

TEST(SetParent, EmptyPointerLeavesARootARoot) {
  const NodePtr n = make_node(1);
  n->parent(NodePtr());
  EXPECT_FALSE(n->parent());
}

TEST(SetParent, NodeHeldByItsParentAloneSurvivesTheMove) {
  const NodePtr p = make_node(1);
  const NodePtr q = make_node(2);
  p->add_child(make_node(3));
  p->child_list()[0]->parent(q);
  EXPECT_EQ(ids(q->children()), (std::vector<int>{3}));
  EXPECT_TRUE(p->children().empty());
}

TEST(SetParent, NodeItselfIsRefused) {
  SmallTree t;
  EXPECT_THROW(t.a->parent(t.a), std::invalid_argument);
}

TEST(SetParent, ChildIsRefused) {
  SmallTree t;
  EXPECT_THROW(t.a->parent(t.a1), std::invalid_argument);
}

TEST(SetParent, DescendantFurtherDownIsRefused) {
  SmallTree t;
  EXPECT_THROW(t.r->parent(t.a1), std::invalid_argument);
}

TEST(SetParent, RefusalChangesNothing) {
  SmallTree t;
  EXPECT_THROW(t.a->parent(t.a1), std::invalid_argument);
  EXPECT_EQ(t.a->parent(), t.r);
  EXPECT_EQ(ids(t.r->children()), (std::vector<int>{2, 4}));
  EXPECT_TRUE(t.a1->children().empty());
  EXPECT_EQ(t.a1->parent(), t.a);
}

TEST(SetParent, DescendantThatWasResetIsRefused) {
  SmallTree t;
  t.a1->reset();
  EXPECT_THROW(t.r->parent(t.a1), std::invalid_argument);
  EXPECT_FALSE(t.r->parent());
  EXPECT_TRUE(t.a1->children().empty());
}

TEST(SetParent, FormerChildThatStillLeadsHereIsRefused) {
  SmallTree t;
  t.a->reset();
  EXPECT_THROW(t.a->parent(t.a1), std::invalid_argument);
  EXPECT_FALSE(t.a->parent());
}

// A reset node has lost its link but not its place in the list, so there is nothing to move it out of.
TEST(SetParent, NodeStillInTheListWithoutALinkKeepsItsPlace) {
  Family f;
  f.k->reset();
  f.k->id(2);
  f.k->parent(f.p);
  EXPECT_EQ(ids(f.p->children()), (std::vector<int>{2, 3, 4}));
  EXPECT_EQ(f.k->parent(), f.p);
}

TEST(SetParent, SiblingIsTaken) {
  SmallTree t;
  t.a->parent(t.b);
  EXPECT_EQ(ids(node::all_nodes(t.r)), (std::vector<int>{1, 4, 2, 3}));
}

TEST(SetParent, OfANodeThatNothingOwnsThrowsBadWeakPtr) {
  HostNode unowned(1, nullptr);
  const NodePtr p = make_node(2);
  EXPECT_THROW(unowned.parent(p), boost::bad_weak_ptr);
  EXPECT_TRUE(p->children().empty());
}

TEST(Parent, OfARootIsEmpty) { EXPECT_FALSE(make_node(1)->parent()); }

TEST(Parent, IsEmptyOnceTheParentIsGone) {
  NodePtr p = make_node(1);
  const NodePtr k = make_node(2);
  p->add_child(k);
  p.reset();
  EXPECT_FALSE(k->parent());
}

TEST(ParentPtr, IsTheParentsAddress) {
  SmallTree t;
  EXPECT_EQ(t.a1->parent_ptr(), t.a.get());
}

TEST(ParentPtr, OfARootIsNull) { EXPECT_EQ(make_node(1)->parent_ptr(), nullptr); }

TEST(ParentPtr, IsNullOnceTheParentIsGone) {
  NodePtr p = make_node(1);
  const NodePtr k = make_node(2);
  p->add_child(k);
  p.reset();
  EXPECT_EQ(k->parent_ptr(), nullptr);
}

// Each of the three is once the one that goes first, so each place among the parent's links is left once.
TEST(ParentPtr, IsNullForEveryNodeOnceTheParentIsGoneWhicheverWasDetachedBefore) {
  for (std::size_t detached = 0; detached < 3; ++detached) {
    NodePtr parent = make_node(1);
    const NodePtr other = make_node(2);
    const std::vector<NodePtr> children = {make_node(10), make_node(11), make_node(12)};
    for (const NodePtr& child : children) parent->add_child(child);
    other->add_child(children[detached]);
    for (std::size_t i = 0; i < 3; ++i)
      EXPECT_EQ(children[i]->parent_ptr(), i == detached ? other.get() : parent.get()) << detached << i;
    parent.reset();
    for (std::size_t i = 0; i < 3; ++i)
      EXPECT_EQ(children[i]->parent_ptr(), i == detached ? other.get() : nullptr) << detached << i;
    EXPECT_EQ(children[detached]->parent(), other);
  }
}

TEST(ParentPtr, FollowsEveryWayToSetTheParent) {
  const NodePtr p = make_node(1);
  const NodePtr q = make_node(2);
  const NodePtr k = make_node(3);
  p->add_child(k);
  EXPECT_EQ(k->parent_ptr(), p.get());
  k->parent(q);
  EXPECT_EQ(k->parent_ptr(), q.get());
  EXPECT_EQ(node::node_clone(k)->parent_ptr(), q.get());
  q->remove_child(k);
  EXPECT_EQ(k->parent_ptr(), nullptr);
  k->parent(p);
  k->reset();
  EXPECT_EQ(k->parent_ptr(), nullptr);
}

TEST(Children, IsACopyThatLaterChangesDoNotTouch) {
  Family f;
  const std::vector<NodePtr> before = f.p->children();
  f.p->remove_child(f.k);
  EXPECT_EQ(ids(before), (std::vector<int>{2, 3, 4}));
}

TEST(Children, ChangesToTheCopyDoNotTouchTheNode) {
  Family f;
  std::vector<NodePtr> copy = f.p->children();
  copy.clear();
  EXPECT_EQ(f.p->children().size(), 3u);
}

TEST(Children, AreReadThroughAConstNodeToo) {
  Family f;
  const boost::shared_ptr<const node> p = f.p;
  EXPECT_EQ(ids(p->children()), (std::vector<int>{2, 3, 4}));
}

TEST(ChildList, ShowsTheListAsItStands) {
  Family f;
  const std::vector<NodePtr>& list = f.p->child_list();
  EXPECT_EQ(ids(list), (std::vector<int>{2, 3, 4}));
  f.p->remove_child(f.l);
  EXPECT_EQ(ids(list), (std::vector<int>{2, 4}));
}

TEST(Release, OfTheRootReleasesTheWholeTree) {
  std::vector<boost::weak_ptr<node>> watch;
  {
    SmallTree t;
    for (const NodePtr& n : node::all_nodes(t.r)) watch.emplace_back(n);
  }
  ASSERT_EQ(watch.size(), 4u);
  for (const boost::weak_ptr<node>& n : watch) EXPECT_TRUE(n.expired());
}

TEST(Release, OfTheRootKeepsASubtreeThatSomebodyHolds) {
  NodePtr kept;
  {
    SmallTree t;
    kept = t.a;
  }
  EXPECT_FALSE(kept->parent());
  EXPECT_EQ(ids(node::all_nodes(kept)), (std::vector<int>{2, 3}));
}

TEST(Release, DestroysEachNodeOnce) {
  std::vector<Call> log;
  {
    NodePtr root = HostNode::create(1, &log);
    const NodePtr child = HostNode::create(2, &log);
    root->add_child(child);
    child->add_child(HostNode::create(3, &log));
    root->add_child(HostNode::create(4, &log));
  }
  std::vector<int> destroyed;
  for (const Call& call : log) {
    if (call.what == "destroy") destroyed.push_back(call.id);
  }
  std::sort(destroyed.begin(), destroyed.end());
  EXPECT_EQ(destroyed, (std::vector<int>{1, 2, 3, 4}));
}
