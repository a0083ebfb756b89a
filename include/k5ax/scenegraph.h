/// @file
/// The scene graph: a tree of nodes with transforms, the nodes that carry an axis or the tool, and their live
/// state.
#ifndef K5AX_SCENEGRAPH_H
#define K5AX_SCENEGRAPH_H

#include <k5ax/angled_head.h>
#include <k5ax/axes.h>

#ifdef __cplusplus
#include <boost/enable_shared_from_this.hpp>
#include <boost/shared_ptr.hpp>
#include <boost/weak_ptr.hpp>

#include <cstddef>
#include <list>
#include <vector>
#endif

/// The live state of one axis node. 16 bytes, copied by value.
typedef K5AX_RECORD node_state {
  int id;              ///< the node's id
  unsigned int flags;  ///< the node's flags word
  double value;        ///< the node's value: radians for a rotary axis, length units for a linear one
}
node_state;

#ifdef __cplusplus

namespace md {

class CMachDef;

/// The nodes of the scene graph.
namespace sg {

class node;
template <class T>
class tnode;

/// The node as an axis node. Touches no reference count.
/// @param n  a node of any kind
/// @return borrowed, as `n` is; null for another kind and for null
K5AX_API_FRIEND tnode<CAxis2>* axis_node(node* n);

/// The node as a tool node. Touches no reference count.
/// @param n  a node of any kind
/// @return borrowed, as `n` is; null for another kind and for null
K5AX_API_FRIEND tnode<angled_head>* tool_node(node* n);

}  // namespace sg

/// Takes an axis node out of its pool, or makes one.
/// @return the one parked last, as it was when it was freed, or a fresh one (node part as `sg::node::create`
///         gives it; axis of type, location and mode -1, the rest zero)
K5AX_API_FRIEND boost::shared_ptr<sg::tnode<CAxis2>> NodeAxis_Create();

/// Parks an axis node in its own pool; nothing is reset or checked.
/// @param[in,out] n  the node; empty afterwards
K5AX_API_FRIEND void NodeAxis_Free(boost::shared_ptr<sg::tnode<CAxis2>>& n);

/// Takes a tool node out of its pool, or makes one.
/// @return the one parked last, as it was when it was freed, or a fresh one. All bytes of a fresh one's head
///         are zero, its directions included, unlike those of `k5ax_angled_head_initialise`
K5AX_API_FRIEND boost::shared_ptr<sg::tnode<angled_head>> TOOL_NODE_Create();

/// Parks a tool node in its own pool; nothing is reset or checked.
/// @param[in,out] n  the node; empty afterwards
K5AX_API_FRIEND void TOOL_NODE_Free(boost::shared_ptr<sg::tnode<angled_head>>& n);

// Explained below, beside the forms that take a shared pointer.
K5AX_API_FRIEND Geometry::Matrix NodeAxis_transform_calc(unsigned int selector, const sg::tnode<CAxis2>& n,
                                                         double value);
K5AX_API_FRIEND void NodeAxis_transform_set(unsigned int selector, sg::tnode<CAxis2>& n, double value);

namespace sg {

/// One node of the scene graph: a transform relative to its parent, an id, a value, a flags word, and its
/// place in a tree.
///
/// Points are rows: p * M. A node's world transform is the product of the transforms from the node up to its
/// root, the node's own first. Children are owned, the parent is not, so a tree lives as long as its root.
///
/// Nodes are handed out as boost::shared_ptr by `create` and given back with `free`, which parks them in a
/// pool. Every walk, clone, `initialise`, `scale_node` and the release of a tree works for any depth without
/// using the call stack for it. One thread at a time, the pool included. Memory running out is
/// std::bad_alloc.
class K5AX_API node : public boost::enable_shared_from_this<node> {
 public:
  /// Takes a plain node out of its pool, or makes one.
  /// @return the node parked last, exactly as it was when it was freed (children and parent included), or a
  ///         fresh one: no children, no parent, identity, id 0, value 0, flags 0
  static boost::shared_ptr<node> create();

  /// Parks a node. Nothing is reset, and nothing is checked: a node freed twice is handed out twice. A typed
  /// node belongs in its own pool instead; see `md::NodeAxis_Free`.
  /// @param[in,out] n  the node; empty afterwards. An empty pointer is left alone
  static void free(boost::shared_ptr<node>& n);

  /// Makes a deep copy of a subtree, of each node's `shallow_clone`. The copy hangs where its source hangs,
  /// as that parent's new last child: cloning a node that has a parent makes a sibling.
  /// @param n  the subtree's root
  /// @return the copy's root; empty for an empty pointer
  static boost::shared_ptr<node> node_clone(boost::shared_ptr<node> n);

  /// `to->shallow_copy(from)`; nothing when either is empty.
  /// @param to    the node that changes
  /// @param from  the node whose part it is
  static void shallow_copy(boost::shared_ptr<node> to, boost::shared_ptr<const node> from);

  /// Lists a subtree, depth first: a node before its children, an earlier child's descendants before the next
  /// child.
  /// @param n  the subtree's root
  /// @return `n` and everything below it; empty for an empty pointer
  static std::vector<boost::shared_ptr<node>> all_nodes(boost::shared_ptr<node> n);

  /// Lists the transforms on the way up. Multiplied in that order they take the node's frame to the root's.
  /// @param n         the node; empty leaves `out` empty
  /// @param[out] out  cleared, then the transforms from `n` (first) up to the root (last)
  static void transform_stack(boost::shared_ptr<node> n, std::vector<Geometry::Matrix>& out);

  /// Appends, in order, every node that has no children.
  /// @param in           nodes; empty pointers are passed over
  /// @param[in,out] out  is not cleared
  static void no_children(const std::vector<boost::shared_ptr<node>>& in,
                          std::vector<boost::shared_ptr<node>>& out);

  /// Makes a node a child of this one: out of its present parent's list if that is another node, and at the
  /// end of this node's list unless it is there already. A node that no shared pointer owns throws
  /// boost::bad_weak_ptr.
  /// @param child  empty does nothing. This node itself or one of its ancestors, by parent links or lists of
  ///               children, is refused with std::invalid_argument, and nothing changes
  void add_child(boost::shared_ptr<node> child);

  /// Empties a node's parent link, whether or not it is a child of this node, then removes it from this
  /// node's list.
  /// @param child  must not be empty
  void remove_child(boost::shared_ptr<node> child);

  /// The parent.
  /// @return a shared pointer to it; empty for a root and where the parent is gone
  boost::shared_ptr<node> parent() const;

  /// Moves this node to the end of the children of another one; setting the same parent again does that too.
  /// @param p  the new parent; empty detaches the node. This node itself or one of its descendants is refused
  ///           as in `add_child`
  void parent(boost::shared_ptr<node> p);

  /// A copy of the list of children. For a look without a copy see `child_list`.
  /// @return the children, in the order in which they came
  std::vector<boost::shared_ptr<node>> children() { return m_children; }

  /// The same.
  /// @return the children, in the order in which they came
  std::vector<boost::shared_ptr<node>> children() const { return m_children; }

  /// The parent, without touching a reference count.
  /// @return a borrowed pointer; null for a root and where the parent is gone
  node* parent_ptr() const { return m_parent; }

  /// The children, without touching a reference count.
  /// @return borrowed: valid until the list changes
  const std::vector<boost::shared_ptr<node>>& child_list() const { return m_children; }

  /// The host's number for the node; -999 is reserved for nodes that `initialise` leaves alone.
  /// @return as it was set; 0 in a fresh node
  int id() const { return m_id; }

  /// Sets the id.
  /// @param id  ids need not differ
  void id(int id) { m_id = id; }

  /// The flags word; see `md::UpdateNodeAxes_` for bit values 1 and 2.
  /// @return the whole word
  unsigned int flags() const { return m_flags; }

  /// Replaces the flags word.
  /// @param flags  the whole word; the other bits are the host's
  void flags(unsigned int flags) { m_flags = flags; }

  /// What an axis node stands at.
  /// @return in an axis node radians or length units
  double value() const { return m_value; }

  /// Sets the value only; the transform stays (see `md::NodeAxis_transform_set`).
  /// @param value  in an axis node radians or length units; any value is kept
  void value(double value) { m_value = value; }

  /// The transform from this node's frame to its parent's.
  /// @return as it was set last; lives as long as the node
  const Geometry::Matrix& transform() const { return m_transform.matrix(); }

  /// Sets the transform only; the value stays.
  /// @param transform  from this node's frame to its parent's
  void transform(const Geometry::Matrix& transform) { m_transform.set(transform); }

  /// A point of this node's frame in the frame of its parent.
  /// @param p  in this node's frame
  /// @return `p * transform()`
  Geometry::TPoint<double> point_to_parent(const Geometry::TPoint<double>& p) const {
    return m_transform.carry_point(p);
  }

  /// A direction of this node's frame in the frame of its parent.
  /// @param d  in this node's frame
  /// @return `transform().TransformDirection(d)`
  Geometry::TPoint<double> direction_to_parent(const Geometry::TPoint<double>& d) const {
    return m_transform.carry_direction(d);
  }

  /// Drops the children (whose own parent links stay as they are) and the parent link (this node stays in
  /// that parent's list); value 0, flags 0, identity. The id becomes -1, not the 0 of a fresh node: hosts
  /// tell a node that was given up from a new one by it.
  void reset();

  /// Copies transform, value, id and flags of another node; children, parent and the payload of a typed node
  /// stay.
  /// @param from  must not be empty
  virtual void shallow_copy(boost::shared_ptr<const node> from);

  /// Makes a node of the same kind, from the pool where it holds one.
  /// @return the copy, with the same transform, value, id, flags and payload, without children and without a
  ///         parent
  virtual boost::shared_ptr<node> shallow_clone();

  /// Identity and value 0, unless the id is -999; id and flags stay. (For a rotary axis node this is not the
  /// pose at value 0: see `md::NodeAxis_transform_calc`.)
  /// @param recursive  the same for every node below, those below a node of id -999 included
  virtual void initialise(bool recursive);

  /// Converts the lengths that a node carries. A plain node has nothing to scale.
  /// @param factor     any number; 25.4 brings inches to millimetres
  /// @param recursive  every node below is scaled too, by its own `scale_node`
  virtual void scale_node(double factor, bool recursive);

 protected:
  struct deleter;

  /// What the node carries; answers what a dynamic cast would, without one.
  enum class Kind : unsigned char { plain, axis, tool };

  /// Made by `create` alone.
  node();

  /// For a typed node.
  /// @param kind  what the node carries
  explicit node(Kind kind);

  /// Makes a fresh node; content is copied by `shallow_copy` alone.
  /// @param other  ignored
  node(const node& other);

  /// There is none; see `shallow_copy`.
  node& operator=(const node& other) = delete;

  /// The children go with the node, unless somebody else holds them.
  virtual ~node();

 private:
  friend class md::CMachDef;
  template <class T>
  friend class tnode;
  friend tnode<CAxis2>* axis_node(node* n);
  friend tnode<angled_head>* tool_node(node* n);
  friend Geometry::Matrix md::NodeAxis_transform_calc(unsigned int selector, const sg::tnode<CAxis2>& n,
                                                      double value);
  friend void md::NodeAxis_transform_set(unsigned int selector, sg::tnode<CAxis2>& n, double value);

  // A transform that knows whether it turns anything. Most nodes of a machine do not, and three sums carry a
  // point through one of them.
  class Transform {
   public:
    Transform() : m_only_translates(true) {}

    const Geometry::Matrix& matrix() const { return m_matrix; }
    Geometry::TPoint<double> carry_point(const Geometry::TPoint<double>& p) const;
    Geometry::TPoint<double> carry_direction(const Geometry::TPoint<double>& d) const;

    void Identity() { *this = Transform(); }
    K5AX_API void set(const Geometry::Matrix& matrix);
    // See md::NodeAxis_transform_calc.
    void set_axis(unsigned int selector, const CAxis2& axis, double value);

   private:
    void set_translation(const Geometry::TPoint<double>& offset);
    void set_rotation_at(const Geometry::TPoint<double>& p_base, const Geometry::Matrix& rotation);

    Geometry::Matrix m_matrix;
    bool m_only_translates;  // the first three rows are the identity's
  };

  static std::list<boost::shared_ptr<node>>& get_pool();
  static boost::shared_ptr<node> _node_clone(node& n, std::vector<boost::shared_ptr<node>>* listed);
  static void list_nodes(const boost::shared_ptr<node>& n, std::vector<boost::shared_ptr<node>>& out);
  static void list_below(const node& n, std::vector<boost::shared_ptr<node>>& out);
  void copy_node_part(const node& from);
  void link_to(node* parent);
  void unlink();
  void take_links_away();
  void append_child(boost::shared_ptr<node> child);
  void hold(const boost::shared_ptr<node>& child);
  void release_children();
  void clear_links();
  void start_anew();
  bool is_linked_to_all_above() const;
  void refuse_cycle(const node& child) const;

  static const int _version;

  std::vector<boost::shared_ptr<node>> m_children;
  Transform m_transform;
  int m_id;
  double m_value;
  unsigned int m_flags;

  Kind m_kind;
  bool m_listed;          // set only while a machine gives its nodes back, so that each is given back once
  node* m_parent;         // null for a root; a node that ends takes the links to it away
  node* m_first_linked;   // the nodes whose parent link is here, each leading to the next one
  node* m_next_linked;    // the next one that has this node's parent
  node** m_linked_from;   // where the pointer to this node stands among them
  std::size_t m_held_by;  // how many places in lists of children are this node's
};

// The products of the geometry, once more and inline: on the way up a tree there is one at every node, and as
// a call it would cost more than its arithmetic.

inline Geometry::TPoint<double> node::Transform::carry_direction(const Geometry::TPoint<double>& d) const {
  if (m_only_translates) return d;
  double xx, xy, xz, yx, yy, yz, zx, zy, zz, tx, ty, tz;
  m_matrix.GetMatrix(xx, xy, xz, yx, yy, yz, zx, zy, zz, tx, ty, tz);
  return Geometry::TPoint<double>(d.x * xx + (d.y * yx + d.z * zx),  //
                                  d.x * xy + (d.y * yy + d.z * zy),  //
                                  d.x * xz + (d.y * yz + d.z * zz));
}

inline Geometry::TPoint<double> node::Transform::carry_point(const Geometry::TPoint<double>& p) const {
  double xx, xy, xz, yx, yy, yz, zx, zy, zz, tx, ty, tz;
  m_matrix.GetMatrix(xx, xy, xz, yx, yy, yz, zx, zy, zz, tx, ty, tz);
  return carry_direction(p) + Geometry::TPoint<double>(tx, ty, tz);
}

/// A node that carries a payload by value: `tnode<md::CAxis2>`, the axis node, is at once a node and an axis;
/// `tnode<angled_head>`, the tool node, is at once a node and an angled-head record. There are no other
/// instances.
///
/// Names that both bases have mean the node's; `payload()` gives the rest. Made by `md::NodeAxis_Create` and
/// `md::TOOL_NODE_Create`. A shallow copy between typed nodes copies the node part alone.
template <class T>
class K5AX_API tnode : public node, public T {
 public:
  using node::create;
  using node::flags;
  using node::free;

  // Both are every host's own: a library of Windows has no inline members of templates to give.

  /// The axis or the head that the node carries, to read and write.
  /// @return lives as long as the node
  [[gnu::always_inline]] T& payload() { return *this; }

  /// The axis or the head that the node carries, to read.
  /// @return lives as long as the node
  [[gnu::always_inline]] const T& payload() const { return *this; }

  /// As `node::shallow_clone`, the payload included: the whole head record, or the seven fields of the axis
  /// record. An axis keeps the owner that its new node had.
  /// @return the copy
  boost::shared_ptr<node> shallow_clone() override;

  /// Axis node: scales the axis (`CAxis2::scale`), then sets the node to its value times `factor`. That holds
  /// for the angle of a rotary axis too: hosts set the pose anew after a change of unit. Tool node: only
  /// applies the tool node rule again (`k5axSgToolNodeMatrixSet`) at the offset stored in the head.
  /// @param factor     any number; 25.4 brings inches to millimetres
  /// @param recursive  every node below is scaled too, by its own `scale_node`
  void scale_node(double factor, bool recursive) override;

 protected:
  struct deleter;

  /// Made by `md::NodeAxis_Create` and `md::TOOL_NODE_Create` alone.
  tnode();

  /// There is none; see `shallow_clone`.
  tnode(const tnode&) = delete;

  /// There is none; see `shallow_copy`.
  tnode& operator=(const tnode&) = delete;

  /// What the node carries goes with it.
  ~tnode() override;

  /// The nodes of this kind that were given back.
  static std::list<boost::shared_ptr<tnode>> _pool;

 private:
  friend boost::shared_ptr<tnode<CAxis2>> md::NodeAxis_Create();
  friend void md::NodeAxis_Free(boost::shared_ptr<tnode<CAxis2>>& n);
  friend boost::shared_ptr<tnode<angled_head>> md::TOOL_NODE_Create();
  friend void md::TOOL_NODE_Free(boost::shared_ptr<tnode<angled_head>>& n);

  static boost::shared_ptr<tnode> take();
  static void give_back(boost::shared_ptr<tnode>& n);
};

extern template class K5AX_API tnode<CAxis2>;
extern template class K5AX_API tnode<angled_head>;

}  // namespace sg

/// The transform that an axis node has at a value; changes nothing.
///
/// Linear: the translation by value times the axis direction. Rotary: the translation by minus the base
/// point, then the rotation about the direction by `value` radians. There is no translation back in it: a
/// fixed node on the root side holds that, so at value 0 a rotary node off the origin is not the identity.
/// Any other mode: the identity.
/// @param selector  the owning machine's flags word by convention; has no effect at present
/// @param n         the axis node; empty gives the identity
/// @param value     radians or length units by mode
/// @return from the node's frame to its parent's
K5AX_API Geometry::Matrix NodeAxis_transform_calc(unsigned int selector,
                                                  boost::shared_ptr<sg::tnode<CAxis2>> n, double value);

/// The same for a node that the caller holds anyway; touches no reference count.
/// @param selector  the owning machine's flags word by convention; has no effect at present
/// @param n         the axis node
/// @param value     radians or length units by mode
/// @return from the node's frame to its parent's
K5AX_API_FRIEND Geometry::Matrix NodeAxis_transform_calc(unsigned int selector, const sg::tnode<CAxis2>& n,
                                                         double value);

/// Stores that transform and the value in the node.
/// @param selector  the owning machine's flags word by convention; has no effect at present
/// @param n         the axis node; empty does nothing
/// @param value     radians or length units by mode
K5AX_API void NodeAxis_transform_set(unsigned int selector, boost::shared_ptr<sg::tnode<CAxis2>> n,
                                     double value);

/// The same for a node that the caller holds anyway; touches no reference count.
/// @param selector  the owning machine's flags word by convention; has no effect at present
/// @param n         the axis node
/// @param value     radians or length units by mode
K5AX_API_FRIEND void NodeAxis_transform_set(unsigned int selector, sg::tnode<CAxis2>& n, double value);

/// Reads the state of an axis node.
/// @param n       a node of any kind
/// @param[out] s  the state; stays as it was when the answer is false
/// @return false for another kind of node and an empty pointer
K5AX_API bool node_state_get(boost::shared_ptr<sg::node> n, node_state& s);

/// The same for a node that the caller holds anyway; touches no reference count.
/// @param n       a node of any kind
/// @param[out] s  the state; stays as it was when the answer is false
/// @return false for another kind of node
K5AX_API bool node_state_get(sg::node& n, node_state& s);

/// Gives an axis node the flags and the value of a state and rebuilds its transform. A state never moves to
/// another node.
/// @param n  a node of any kind
/// @param s  the state
/// @return false, and nothing changes, for another kind of node, an empty pointer, or an id other than the
///         node's
K5AX_API bool node_state_set(boost::shared_ptr<sg::node> n, const node_state& s);

/// The same for a node that the caller holds anyway; touches no reference count.
/// @param n  a node of any kind
/// @param s  the state
/// @return false, and nothing changes, for another kind of node or an id other than the node's
K5AX_API bool node_state_set(sg::node& n, const node_state& s);

}  // namespace md

/// A node as the flat functions take it; in C it is opaque.
typedef md::sg::node k5ax_node;

/// An axis node as the flat functions take it; in C it is opaque.
typedef md::sg::tnode<md::CAxis2> k5ax_axis_node;

/// A tool node as the flat functions take it; in C it is opaque.
typedef md::sg::tnode<angled_head> k5ax_tool_node;

/// Fills a state from a node of any kind; nothing when either is null. Does not say whether it did.
/// @param n           the node
/// @param[out] state  its id, flags and value
K5AX_API void k5axSgNode_state_get(boost::shared_ptr<const md::sg::node> n, node_state* state);

#else
typedef struct k5ax_node k5ax_node;
typedef struct k5ax_axis_node k5ax_axis_node;
typedef struct k5ax_tool_node k5ax_tool_node;
#endif  // __cplusplus

// Node pointers are borrowed from the tree that holds them: valid until the tree drops the node.
K5AX_FLAT_BEGIN

#ifdef __cplusplus
/// Places the tool node for a tool point: stores it in its head's `offset`, then sets the node's transform to
/// ((((E D) C) B) A), where E is the translation by -length2 along Z, D the rotation about Y by the tilt, C
/// the translation by -length1 along Z, B the rotation about Z by the turn, and A the translation by -p. The
/// side offset of `k5ax_angled_head_set` is in the head's `tip` alone and not in this transform.
/// @param n  the tool node, whose value and flags stay; another kind of node and an empty pointer do nothing
/// @param p  the tool point: from the tool's point to the head's tool reference point, length unit
K5AX_API void k5axSgToolNodeMatrixSet(boost::shared_ptr<md::sg::node> n, const Geometry::TPoint<double>& p);
#endif

/// The number of children.
/// @param node  the node
/// @return 0 or more; 0 for null
K5AX_API int k5axSgNode_child_count(const k5ax_node* node);

/// One of the children.
/// @param node   the node
/// @param index  0 to count - 1, in the order in which they came; not checked
/// @return borrowed; null for a null node
K5AX_API k5ax_node* k5axSgNode_child(const k5ax_node* node, int index);

/// The parent.
/// @param node  the node
/// @return borrowed; null for a root, where the parent is gone, and for null
K5AX_API k5ax_node* k5axSgNode_parent(const k5ax_node* node);

/// Lists a subtree, depth first, a node before its children. A node that no shared pointer owns throws
/// boost::bad_weak_ptr.
/// @param node         the subtree's root
/// @param[out] buffer  the node and everything below it; room for the whole subtree: neither its size nor
///                     null is checked, and no call gives the number alone; a host sums child counts on the
///                     way down, or knows the tree
/// @return the number of nodes; 0 for null
K5AX_API int k5axSgNode_all_nodes(k5ax_node* node, k5ax_node** buffer);

/// The id.
/// @param node  the node
/// @return as it was set; 0 for null
K5AX_API int k5axSgNode_id(const k5ax_node* node);

/// The value.
/// @param node  the node
/// @return radians or length units by kind of axis; 0.0 for null
K5AX_API double k5axSgNode_value_get(const k5ax_node* node);

/// Stores the value only; the transform stays. `k5axSgNode_value_set2` also rebuilds the transform.
/// @param node   the node; null does nothing
/// @param value  radians or length units by kind of axis
K5AX_API void k5axSgNode_value_set(k5ax_node* node, double value);

/// The flags word.
/// @param node  the node
/// @return the whole word; 0 for null
K5AX_API unsigned int k5axSgNode_flags_get(const k5ax_node* node);

/// Replaces the flags word.
/// @param node   the node; null does nothing
/// @param flags  the whole word; `k5axSgNode_calc_flags` makes one
K5AX_API void k5axSgNode_flags_set(k5ax_node* node, unsigned int flags);

/// Identity and value 0 unless the id is -999. Not the zero pose of a rotary axis: see
/// `k5axSgNode_value_set2`.
/// @param node       the node; null does nothing
/// @param recursive  not 0: the same for every node below
K5AX_API void k5axSgNode_initialise(k5ax_node* node, int recursive);

/// Builds the flags word of an axis node.
/// @param first   not 0: the update drives the node (value 1)
/// @param second  not 0: it is the linear axis that wins among parallel ones (value 2)
/// @return the sum of the two values
K5AX_API unsigned int k5axSgNode_calc_flags(int first, int second);

/// Fills a state from a node of any kind; nothing when either is null.
/// @param node        the node
/// @param[out] state  its id, flags and value
K5AX_API void k5axSgNode_state_get_(const k5ax_node* node, node_state* state);

/// The node as an axis node, by a checked cast.
/// @param node  a node of any kind
/// @return borrowed, as `node` is; null for another kind and for null
K5AX_API k5ax_axis_node* k5axSgNode_NodeAxis_cast(k5ax_node* node);

K5AX_FLAT_END

#endif
