/// @file
/// The machine definition: one object that describes one five-axis machine tool, and its flat face.
#ifndef K5AX_MACHDEF_H
#define K5AX_MACHDEF_H

#include <k5ax/scenegraph.h>

#ifdef __cplusplus
#include <boost/array.hpp>
#endif

// clang-format off
/// Where the two rotary axes sit.
K5AX_ENUM_BEGIN(MACHINE_TYPE)
  MC_UNDEFINED = -1,  ///< not yet set
  MC_TT = 0,          ///< both on the table
  MC_HT = 1,          ///< the primary on the table, the secondary on the head
  MC_HH = 2           ///< both on the head
K5AX_ENUM_END(MACHINE_TYPE);
// clang-format on

#ifdef __cplusplus
/// A mode of the machine that the host defines; kept, copied and saved, never looked at.
enum MACHINE_MODE : int {};

/// A machining discipline that the host defines; kept, copied and saved, never looked at.
enum K5AX_DISCIPLINE : int {};
#else
typedef int MACHINE_MODE;
typedef int K5AX_DISCIPLINE;
#endif

#ifdef __cplusplus

namespace md {

class CMachDef;

/// An operation on a machine definition that the host supplies. The library never calls it.
class K5AX_API IMachDefVisitor {
 public:
  /// Has nothing to set up.
  IMachDefVisitor() = default;

  /// Has nothing to copy.
  IMachDefVisitor(const IMachDefVisitor&) = default;

  /// Has nothing to assign.
  /// @return this visitor
  IMachDefVisitor& operator=(const IMachDefVisitor&) = default;

  /// Visitors may be deleted through this class.
  virtual ~IMachDefVisitor();

  /// What the host does with one definition.
  /// @param machdef  the definition
  virtual void visit(CMachDef& machdef) = 0;
};

/// One five-axis machine tool: its axes, its angled head, its work zero and units, and the two scene-graph
/// trees that show it moving. Everything the library computes, it computes of such an object.
///
/// Frames: the machine's, in which axes, head and work zero stand, and the part's, which coincides with it
/// when every rotary table axis stands at 0. Lengths are in the definition's unit (millimetres when
/// `isMetric()`, else inches), angles in radians. An (a, b, c) triple of angles gives each rotary axis the
/// component of its letter.
///
/// The definition owns its axes and trees and gives them back to their pools in `reset` and when it dies. One
/// thread uses a definition at a time; constant operations may run side by side while nobody changes it.
/// Memory running out is std::bad_alloc.
class K5AX_API CMachDef {
 public:
  /// An empty machine: no axes, no trees, type -1, mode -1, discipline 0, millimetres, loading vector and
  /// work zero at the origin, a straight head.
  CMachDef();

  /// The same with the host's mode.
  /// @param mode  any value is kept
  explicit CMachDef(MACHINE_MODE mode);
  /// There is none: a member-wise copy would share axes and nodes. See `copy` and `clone`.
  CMachDef(const CMachDef&) = delete;

  /// There is none, for the same reason.
  CMachDef& operator=(const CMachDef&) = delete;

  /// As `reset`: axes and nodes go back to their pools, or are destroyed where the memory for that is
  /// missing.
  ~CMachDef();

  /// Copies values into the axes and nodes that are already here, so that pointers held elsewhere stay good;
  /// creates nothing. An axis that is missing on either side is passed over. Where this machine has a tree,
  /// its nodes take the node part (transform, value, id, flags) of the nodes at the same positions in
  /// `other`, whose trees must have the same shape; that is not checked, except that nodes without a partner
  /// stay as they are. The rotary axes get this machine as their owner.
  /// @param other  the machine whose values they are
  void copy(const CMachDef& other);

  /// Resets this machine, then makes independent copies of parts of another one. A root that itself hangs
  /// below another node is cloned as its sibling there; see `sg::node::node_clone`.
  /// @param other  the machine to copy; cloning a machine into itself changes nothing
  /// @param flags  bit value 1: the machine (axes, head, type, mode, discipline, units, loading vector, work
  ///               zero); bit value 2: the scene graph. Other bits are ignored; 0 only resets
  void clone(const CMachDef& other, unsigned int flags);

  /// Gives back all axes and nodes; type -1, a straight head, loading vector zero. Work zero, mode,
  /// discipline and units stay: they belong to the host's setting, not to one machine. Where memory runs out
  /// for a place in a pool, calling again goes on from there; at most one node is destroyed instead of
  /// parked.
  void reset();

  /// A straight head as `k5ax_angled_head_initialise` makes it (flags 0), and the loading vector zero.
  void initialise_head();

  /// Converts the lengths to millimetres or inches; nothing when that is the unit already.
  ///
  /// Converted: the base points of the axes, the limits of linear axes, the head's lengths, and in the trees
  /// what each node's `scale_node` converts (the axis of an axis node; its value times the factor, for rotary
  /// axes too). Left as they are: work zero and loading vector, which the host keeps in its own unit; the
  /// transforms of plain nodes; and the head and tool point that the tool node carries. The trees of a scaled
  /// machine therefore no longer fit its axes. A host that goes on posing it scales the translations of the
  /// plain nodes and the tool node's head (`k5ax_angled_head_scale`) itself, applies the tool node rule
  /// (`CMachDef_ToolNode_matrix_Set`) at the scaled tool point, and sets every axis node anew
  /// (`k5axSgNode_value_set2`).
  /// @param metric  true: millimetres; false: inches
  void scale(bool metric);

  /// Writes the definition to a writing stream, else reads one from it; docs/file-format.md has the fields.
  ///
  /// Reading replaces field by field what was there, without a reset: read into a new or reset machine. Axes
  /// read keep the owner that `CAxis2::create` gave them. The version read is ignored. A node kind other than
  /// 0, 1, 2 and parent links that form a cycle are refused with std::runtime_error; the stream's exceptions
  /// pass through. After either the machine holds what had been read before.
  /// @param stream  at the first byte of the record; afterwards at the first one behind it
  void serialize(IIO::Stream& stream);

  /// Sets the primary rotary axis. The axis gets no owner by this, and the one before is only dropped.
  /// @param axis  empty for none
  void setPrimary(boost::shared_ptr<CAxis2> axis);

  /// Sets the secondary rotary axis in the same way.
  /// @param axis  empty for none
  void setSecondary(boost::shared_ptr<CAxis2> axis);

  /// The primary rotary axis.
  /// @return a shared pointer to it; empty when there is none
  const boost::shared_ptr<CAxis2> getPrimary() const { return m_primary; }

  /// The secondary rotary axis.
  /// @return a shared pointer to it; empty when there is none
  const boost::shared_ptr<CAxis2> getSecondary() const { return m_secondary; }

  /// The linear axes, to read and to set.
  /// @return X, Y, Z in this order; each may be empty. Lives as long as the machine
  boost::array<boost::shared_ptr<CAxis2>, 3>& xyz_axes() { return m_xyz_axes; }

  /// The linear axes, to read.
  /// @return X, Y, Z in this order; each may be empty. Lives as long as the machine
  const boost::array<boost::shared_ptr<CAxis2>, 3>& xyz_axes() const { return m_xyz_axes; }

  /// The tool direction in force.
  /// @return machine frame: (0, 0, 1) while the flags have value 1 set and value 2 clear (the vertical-tool
  ///         condition), else the head's, as it stands (not normalised)
  Geometry::TPoint<double> getToolDir() const;

  /// The head's tool direction, whatever the flags say.
  /// @return machine frame, as it stands (not normalised)
  Geometry::TPoint<double> getToolDirEx() const { return m_head.tool_dir; }

  /// Sets the head's tool direction, and nothing else of the head.
  /// @param tool_dir  machine frame; stored as it is
  void setToolDir(const Geometry::TPoint<double>& tool_dir) { m_head.tool_dir = tool_dir; }

  /// Work zero, which the host keeps and the library only copies and saves.
  /// @return in the host's own unit; lives as long as the machine
  const Geometry::TPoint<double>& mwZeroPos() const { return m_mwZeroPos; }

  /// Sets work zero.
  /// @param zero  in the host's own unit
  void mwZeroPos(const Geometry::TPoint<double>& zero) { m_mwZeroPos = zero; }

  /// The loading vector, which the host sets and `orientate` turns.
  /// @return a vector, in the host's own unit; lives as long as the machine
  const Geometry::TPoint<double>& loading_vector() const { return m_loading_vector; }

  /// Sets the loading vector.
  /// @param loading_vector  in the host's own unit
  void loading_vector(const Geometry::TPoint<double>& loading_vector) { m_loading_vector = loading_vector; }

  /// The unit of the lengths.
  /// @return true: millimetres; false: inches
  bool isMetric() const { return m_metric; }

  /// Sets the unit's name only; `scale` converts.
  /// @param metric  true: millimetres; false: inches
  void setMetric(bool metric) { m_metric = metric; }

  /// Where the rotary axes sit.
  /// @return as it was set; -1 in a new machine
  MACHINE_TYPE getMachType() const { return m_machType; }

  /// Sets where the rotary axes sit; the axes are not looked at, see `is_valid`.
  /// @param type  any value is kept
  void setMachType(MACHINE_TYPE type) { m_machType = type; }

  /// The host's mode.
  /// @return as it was set; -1 in a new machine
  MACHINE_MODE get_mode() const { return m_mode; }

  /// Sets the host's mode.
  /// @param mode  any value is kept
  void set_mode(MACHINE_MODE mode) { m_mode = mode; }

  /// The host's discipline.
  /// @return as it was set; 0 in a new machine
  K5AX_DISCIPLINE discipline() const { return m_discipline; }

  /// Sets the host's discipline.
  /// @param discipline  any value is kept
  void discipline(K5AX_DISCIPLINE discipline) { m_discipline = discipline; }

  /// The head's flags word; the machine has no other.
  /// @return the whole word; see `angled_head::flags`
  unsigned int flags() const { return m_head.flags; }

  /// Replaces that word.
  /// @param flags  the whole word; see `angled_head::flags`
  void flags(unsigned int flags) { m_head.flags = flags; }

  /// The angled head, to read and write.
  /// @return borrowed; lives as long as the machine
  angled_head& head() { return m_head; }

  /// The angled head, to read.
  /// @return borrowed; lives as long as the machine
  const angled_head& head() const { return m_head; }

  /// The node in the trees that carries the tool.
  /// @return a shared pointer to it; empty when there is none
  boost::shared_ptr<sg::tnode<angled_head>> tool_node() { return m_tool_node; }

  /// The same, to read.
  /// @return a shared pointer to it; empty when there is none
  boost::shared_ptr<const sg::tnode<angled_head>> tool_node() const { return m_tool_node; }

  /// Sets that node.
  /// @param node  empty for none; whether it stands in a tree is not checked
  void tool_node(boost::shared_ptr<sg::tnode<angled_head>> node);

  /// The roots of the two trees, to read and to set: 0 leads from the machine frame down to the tool, 1 from
  /// the part to the machine frame; see docs/scene-graph.md.
  ///
  /// The update walks flat lists of the trees' nodes, which are made by reading and by `clone` alone: after
  /// setting roots here, clone the machine (or save and load it) and pose the clone.
  /// @return two roots, each may be empty. Lives as long as the machine
  boost::array<boost::shared_ptr<sg::node>, 2>& SG() { return m_SG; }

  /// The roots of the two trees, to read.
  /// @return two roots, each may be empty. Lives as long as the machine
  const boost::array<boost::shared_ptr<sg::node>, 2>& SG() const { return m_SG; }

  /// The axis nodes in the trees that stand for the rotary axes, to read and to set.
  /// @return that of the primary, then that of the secondary; each may be empty. Lives as long as the machine
  boost::array<boost::shared_ptr<sg::node>, 2>& SG_RotAxs() { return m_SG_RotAxs; }

  /// The same, to read.
  /// @return that of the primary, then that of the secondary; each may be empty. Lives as long as the machine
  const boost::array<boost::shared_ptr<sg::node>, 2>& SG_RotAxs() const { return m_SG_RotAxs; }

  /// Whether this is a machine that the kinematics can work with. All of:
  /// - each rotary axis present is valid (`CAxis2::is_valid`); the tool direction in force is not exactly
  ///   zero; the type is `MC_TT`, `MC_HT` or `MC_HH`; an `MC_HT` has a primary axis;
  /// - with a secondary axis: there is a primary, of another letter and with a direction that is not exactly
  ///   equal (the opposite one passes); an `MC_HT` has the primary on the table and the secondary on the
  ///   head; an `MC_HH` both on the head;
  /// - the line of the table axis next to the part (`MC_TT`: the secondary, or the primary where it is alone;
  ///   `MC_HT`: the primary) passes the machine origin closer than 0.001 length units in each coordinate.
  ///
  /// With the developer or regression flag set, a failure of the last rule sends "MC_TT secondary axis
  /// location not valid" (for a primary that is alone too) or "MC_HT primary axis location not valid" to the
  /// feedback sink.
  /// @return true when all of them hold
  bool is_valid() const;

  /// `is_valid`, and room to turn: an `MC_HT` or a machine with the primary alone needs a positive travel of
  /// the primary (max - min > 0), an `MC_TT` with both axes one of the secondary. An `MC_HT` with both also
  /// needs the primary on the table and the secondary on the head.
  /// @return true when all of it holds
  bool mw_valid() const;

  /// Whether every rotary axis present is orthogonal (`CAxis2::is_orthogonal`).
  /// @return true when each is; true without any
  bool is_orthogonal() const;

  /// The rotary axis that turns the part.
  /// @return `MC_TT`: the secondary, or the primary where it is alone; `MC_HT` and `MC_HH` (where none turns
  ///         the part): the primary; another type: empty
  boost::shared_ptr<CAxis2> rotary_axis() const;

  /// The two rotary axes in machine-work order. `MC_TT`: the secondary (or the primary where it is alone),
  /// then the primary; `MC_HT` and `MC_HH`: primary, secondary; another type leaves both arguments as they
  /// are.
  /// @param[out] first   the first of them; may come out empty
  /// @param[out] second  the second of them; may come out empty
  void getMWRotAxes(boost::shared_ptr<CAxis2>& first, boost::shared_ptr<CAxis2>& second) const;

  /// The component of a triple that an axis's letter names; see `CAxis2::GetAngle`.
  /// @param axis  the axis
  /// @param x     the angle of A and X, radians
  /// @param y     the angle of B and Y, radians
  /// @param z     the angle of C and Z, radians
  /// @return one of the three; 0.0 for an empty pointer and any other letter
  double getAngle(boost::shared_ptr<CAxis2> axis, double x, double y, double z) const;

  /// Stores a value into a, b or c by an axis's letter. Any letter but A, B, C, the linear ones included,
  /// stores nothing.
  /// @param axis       the axis; empty stores nothing
  /// @param value      radians, as it is
  /// @param[in,out] a  the angle of A
  /// @param[in,out] b  the angle of B
  /// @param[in,out] c  the angle of C
  void getABCAngles(boost::shared_ptr<CAxis2> axis, double value, double& a, double& b, double& c) const;

  /// Turns the definition itself into the pose at two angles.
  ///
  /// `MC_TT`: the secondary's direction by -angle1 about the primary's. `MC_HT`: tool and reference direction
  /// by angle2 about the secondary's direction, and, unless the tool is vertical by the flags, the
  /// secondary's base point, the loading vector and the head's tip too. `MC_HH`: everything by angle1 about
  /// the primary, then tool and reference direction, tip, loading vector and the secondary's base point by
  /// angle2 about the secondary as turned.
  ///
  /// Every rotation is about a line through the origin, also of points. Nothing is normalised, and limits are
  /// not looked at. The tool direction in force is always written back to the head, so under the
  /// vertical-tool condition the head's own is lost, even when the answer is false. Calls compose; axis
  /// objects shared with others turn too.
  /// @param angle1  the primary's, radians
  /// @param angle2  the secondary's, radians
  /// @return false for a type other than `MC_TT`, `MC_HT`, `MC_HH`; nothing is turned then
  bool orientate(double angle1, double angle2);

  /// Whether the tool at these angles is perpendicular to the part's rotary axis, either way.
  /// @param a  the angle of A, radians
  /// @param b  the angle of B, radians
  /// @param c  the angle of C, radians
  /// @return true when |T . W| < 1e-5 of the unit vectors T of the tool and W of the axis. False for `MC_HH`
  ///         and unknown types, for `MC_TT` without a primary and for `MC_HT` without both axes
  bool IsToolRadial(double a, double b, double c) const;

  /// Whether the tool at these angles points along the part's rotary axis, in the same sense. The opposite
  /// sense is not axial, since the tool would then come from inside the part.
  /// @param a  the angle of A, radians
  /// @param b  the angle of B, radians
  /// @param c  the angle of C, radians
  /// @return true when |T . W - 1| < 1e-5, as in `IsToolRadial`; false where that is false by type or missing
  ///         axes
  bool IsToolAxial(double a, double b, double c) const;

  /// The rotation of each rotary axis about its own line, T(-base) Rot(direction, angle) T(base), at its
  /// angle, whatever its location; the identity for a missing axis and for an unknown type.
  /// @param xyz             not used
  /// @param abc             a, b, c in radians
  /// @param[out] primary    the primary's
  /// @param[out] secondary  the secondary's
  void Mach2PartTransform(const Geometry::TPoint<double>& xyz, const Geometry::TPoint<double>& abc,
                          Geometry::Matrix& primary, Geometry::Matrix& secondary) const;

  /// Those two as secondary * primary.
  /// @param xyz  not used
  /// @param abc  a, b, c in radians
  /// @return the secondary's rotation, then the primary's
  const Geometry::Matrix Mach2PartTransform(const Geometry::TPoint<double>& xyz,
                                            const Geometry::TPoint<double>& abc) const;

  /// A machine position and the tool direction in force, in part coordinates.
  ///
  /// The point is turned by the table axes, primary first; head axes do not move the part. The tool direction
  /// is turned by both rotary axes wherever they sit, secondary first, without their translations, and is not
  /// normalised. The difference is meant. An unknown type turns nothing. (Where two table axes stand away
  /// from zero, the direction that the posed trees show is that of primary * secondary, see
  /// `Mach2PartTransform`.)
  /// @param xyz               machine coordinates, length unit
  /// @param abc               a, b, c in radians; any finite value, limits are not looked at
  /// @param[out] partPoint    part coordinates; may be `xyz`
  /// @param[out] partToolDir  part coordinates
  void Mach2PartCoords(const Geometry::TPoint<double>& xyz, const Geometry::TPoint<double>& abc,
                       Geometry::TPoint<double>& partPoint, Geometry::TPoint<double>& partToolDir) const;

  /// The transform from part to machine coordinates: by the table axes at their negated angles, secondary
  /// first.
  /// @param abc  a, b, c in radians; any finite value, limits are not looked at
  /// @return the inverse of the point transform of `Mach2PartCoords`, but for two things: the type is not
  ///         looked at, and a machine without any rotary axis turns by -c about Z and, as an `MC_TT`, then by
  ///         -b about Y
  const Geometry::Matrix Part2MachTransform(const Geometry::TPoint<double>& abc) const;

  /// A point on the part in machine coordinates.
  /// @param xyz  part coordinates, length unit
  /// @param abc  a, b, c in radians; any finite value, limits are not looked at
  /// @return `xyz` carried by `Part2MachTransform(abc)`
  Geometry::TPoint<double> Part2MachCoords(Geometry::TPoint<double> xyz,
                                           const Geometry::TPoint<double>& abc) const;

  /// The control point of a tool point, in the head's home pose: no angle enters.
  /// @param[out] ctrl  `toolPoint` + the head's tip + the base point of each rotary axis on the head; may be
  ///                   `toolPoint`
  /// @param toolPoint  machine coordinates, length unit
  void Tool2CtrlPt(Geometry::TPoint<double>& ctrl, const Geometry::TPoint<double>& toolPoint) const;

 private:
  // Lets the scene update read the lists below without copying a pointer.
  friend struct MachineView;

  void remove_axes();
  boost::shared_ptr<CAxis2> clone_axis(const boost::shared_ptr<CAxis2>& axis);
  void clone_machine(const CMachDef& other);
  void clone_scene_graph(const CMachDef& other);
  void list_nodes();
  void make_room_for_update();
  void write(IIO::Stream& stream) const;
  void read(IIO::Stream& stream);
  void read_trees(IIO::Stream& stream);
  const boost::shared_ptr<CAxis2>& part_axis() const;
  bool tool_is_vertical() const;
  bool has_known_type() const;
  bool tool_and_part_axis(double a, double b, double c, Geometry::TPoint<double>& u_tool,
                          Geometry::TPoint<double>& u_part_axis) const;

  static const int _version;

  std::vector<boost::shared_ptr<sg::node>> m_nodes[2];  // every node of each tree, as all_nodes lists them
  boost::shared_ptr<CAxis2> m_primary;
  boost::shared_ptr<CAxis2> m_secondary;
  boost::array<boost::shared_ptr<CAxis2>, 3> m_xyz_axes;
  MACHINE_TYPE m_machType;
  MACHINE_MODE m_mode;
  K5AX_DISCIPLINE m_discipline;
  bool m_metric;
  Geometry::TPoint<double> m_loading_vector;
  Geometry::TPoint<double> m_mwZeroPos;
  angled_head m_head;
  boost::array<boost::shared_ptr<sg::node>, 2> m_SG;
  boost::array<boost::shared_ptr<sg::node>, 2> m_SG_RotAxs;
  boost::shared_ptr<sg::tnode<angled_head>> m_tool_node;

  // Room for the update to work in: a place for each listed node's id, where more than a few are listed.
  static constexpr std::size_t kFewNodes = 32;
  std::vector<int> m_driven_ids;
};

}  // namespace md

/// A machine definition as the flat functions take it; in C it is opaque.
typedef md::CMachDef k5ax_machdef;

#else
typedef struct k5ax_machdef k5ax_machdef;
#endif  // __cplusplus

// Axes, nodes and heads handed out here are borrowed from the machine: valid until it drops or replaces them
// (reset, clone, loading, freeing). Never free them.
K5AX_FLAT_BEGIN

/// A new, empty machine definition. Memory running out is std::bad_alloc.
/// @return the machine; give it back with `k5axCMachDef_free`
K5AX_API k5ax_machdef* k5axCMachDef_create(void);

/// Destroys a machine.
/// @param machdef  the address of the pointer to it, not null; nothing when the pointer is null. The pointer
///                 keeps the old address: forget it
K5AX_API void k5axCMachDef_free(k5ax_machdef** machdef);

/// Makes a machine an independent copy of another one, machine and scene graph, as `md::CMachDef::clone`.
/// @param dst  the copy; null does nothing
/// @param src  the machine to copy; null is not tested
K5AX_API void k5axCMachDef_clone(k5ax_machdef* dst, const k5ax_machdef* src);

/// The same for some parts; the rest of `dst` is reset.
/// @param dst    the copy; null does nothing
/// @param src    the machine to copy; null is not tested
/// @param flags  bit value 1 the machine, 2 the scene graph
K5AX_API void k5axCMachDef_clone_ex(k5ax_machdef* dst, const k5ax_machdef* src, unsigned int flags);

/// The flags word, which is the head's.
/// @param machdef  the machine
/// @return the whole word; 0 for null
K5AX_API unsigned int k5axCMachDef_flags_get(const k5ax_machdef* machdef);

/// Replaces the flags word.
/// @param machdef  the machine; null does nothing
/// @param flags    the whole word
K5AX_API void k5axCMachDef_flags_set(k5ax_machdef* machdef, unsigned int flags);

/// The host's mode.
/// @param machdef  the machine
/// @return as it was set; -1 for null
K5AX_API MACHINE_MODE k5axCMachDef_mode(const k5ax_machdef* machdef);

/// The machine type.
/// @param machdef  the machine
/// @return as it was set; -1 for null
K5AX_API MACHINE_TYPE k5axCMachDef_type(const k5ax_machdef* machdef);

/// The host's discipline.
/// @param machdef  the machine. The one getter that does not test for null
/// @return as it was set
K5AX_API K5AX_DISCIPLINE k5axCMachDef_discipline(const k5ax_machdef* machdef);

/// The machine's angled head, to read and write.
/// @param machdef  the machine
/// @return borrowed; null for null
K5AX_API angled_head* k5axCMachDef_head(k5ax_machdef* machdef);

/// The machine's angled head, to read.
/// @param machdef  the machine
/// @return borrowed; null for null
K5AX_API const angled_head* k5axCMachDef_head_const(const k5ax_machdef* machdef);

/// One of the rotary axes. Mind the order: the index comes first.
/// @param which    0 the primary, 1 the secondary
/// @param machdef  the machine
/// @return borrowed; null when the axis is missing, for any other `which` and for null
K5AX_API k5ax_axis* k5axCMachDef_axis(int which, k5ax_machdef* machdef);

/// The rotary axis that turns the part, as `md::CMachDef::rotary_axis`.
/// @param machdef  the machine
/// @return borrowed; null when there is none and for null
K5AX_API k5ax_axis* k5axCMachDef_rotary_axis(k5ax_machdef* machdef);

/// The same, to read.
/// @param machdef  the machine
/// @return borrowed; null when there is none and for null
K5AX_API const k5ax_axis* k5axCMachDef_rotary_axis_const(const k5ax_machdef* machdef);

/// Whether every rotary axis present is orthogonal, as `md::CMachDef::is_orthogonal`.
/// @param machdef  the machine
/// @return true when each is, or there is none; false for null
K5AX_API bool k5axCMachDef_orthogonal(const k5ax_machdef* machdef);

/// Turns the definition into the pose for two angles, as `md::CMachDef::orientate`.
/// @param machdef  the machine
/// @param angle1   the primary's, radians
/// @param angle2   the secondary's, radians
/// @return false for an unknown machine type and for null
K5AX_API bool k5axCMachDef_orientate(k5ax_machdef* machdef, double angle1, double angle2);

/// The root of a scene-graph tree.
/// @param machdef  the machine
/// @param i        0 the tree of the tool, 1 the tree of the part; not checked
/// @return borrowed; null for an empty tree and for null
K5AX_API k5ax_node* k5axCMachDef_SG(k5ax_machdef* machdef, int i);

/// The tool node.
/// @param machdef  the machine
/// @return borrowed; null when there is none and for null
K5AX_API k5ax_tool_node* k5axCMachDef_Tool(k5ax_machdef* machdef);

/// Saves a definition. What stood at `path` is replaced only when everything is on the disk, and stays byte
/// for byte otherwise.
/// @param machdef  the machine. Null is not tested
/// @param path     bytes as `IIO::FileStream` takes them
/// @return 1 when done, 0 on any failure, which is not reported otherwise
K5AX_API int MachdefSave(k5ax_machdef* machdef, const char* path);

/// Loads a definition into a new or reset machine. Axes read have no owner.
/// @param machdef  the machine. Null is not tested
/// @param path     bytes as `IIO::FileStream` takes them
/// @return 1 when done; 0 for a file that cannot be opened (the machine stays as it was) and for a damaged
///         one (the machine holds what was read before the damage)
K5AX_API int MachdefLoad(k5ax_machdef* machdef, const char* path);

K5AX_FLAT_END

#endif
