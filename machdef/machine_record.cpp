// md::CMachDef: the machine record in a stream. docs/file-format.md has its fields.
#include <k5ax/machdef.h>

#include <boost/container/small_vector.hpp>

#include <stdexcept>
#include <unordered_map>

#include "machdef/node_record.h"

namespace md {

namespace {

using Nodes = std::vector<boost::shared_ptr<sg::node>>;

int read_int(IIO::Stream& stream) {
  int value = -1;  // what a stream that comes short without an exception leaves
  stream >> value;
  return value;
}

Geometry::TPoint<double> read_point(IIO::Stream& stream) {
  Geometry::TPoint<double> p;
  stream >> p;
  return p;
}

void write_axis_slot(IIO::Stream& stream, const boost::shared_ptr<CAxis2>& axis) {
  stream << (axis ? 1 : 0);
  if (axis) axis->serialize(stream);
}

void read_axis_slot(IIO::Stream& stream, boost::shared_ptr<CAxis2>& slot) {
  boost::shared_ptr<CAxis2> axis;
  if (read_int(stream) != 0) {
    axis = CAxis2::create();
    axis->serialize(stream);
  }
  slot = std::move(axis);
}

// The nodes of a record, and where each stands among them.
class NodeIndex {
 public:
  explicit NodeIndex(Nodes nodes) : m_nodes(std::move(nodes)) {
    for (std::size_t i = 0; i < m_nodes.size(); ++i)
      m_positions.emplace(m_nodes[i].get(), static_cast<int>(i));
  }

  const Nodes& nodes() const { return m_nodes; }
  int count() const { return static_cast<int>(m_nodes.size()); }

  // -1 for null; the count for a node that is not among them.
  int index_of(const sg::node* n) const {
    if (n == nullptr) return -1;
    const auto found = m_positions.find(n);
    return found != m_positions.end() ? found->second : count();
  }

 private:
  Nodes m_nodes;
  std::unordered_map<const sg::node*, int> m_positions;  // the first position of each
};

NodeIndex index_trees(const boost::array<boost::shared_ptr<sg::node>, 2>& roots) {
  Nodes nodes = sg::node::all_nodes(roots[0]);
  const Nodes second = sg::node::all_nodes(roots[1]);
  nodes.insert(nodes.end(), second.begin(), second.end());
  return NodeIndex(std::move(nodes));
}

// A node as it was read. It is held here until it is hung under its parent, and is known by its address then:
// no reference is counted on the way.
struct ReadNode {
  boost::shared_ptr<sg::node> held;
  sg::node* address;
  int parent;
};

constexpr std::size_t kUsualCount = 32;  // nodes of a machine that is read without memory for their list
using ReadNodes = boost::container::small_vector<ReadNode, kUsualCount>;

// Null where there is no such node.
sg::node* look_up(const ReadNodes& nodes, int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= nodes.size()) return nullptr;
  return nodes[static_cast<std::size_t>(index)].address;
}

boost::shared_ptr<sg::node> share(sg::node* n) {
  return n != nullptr ? n->shared_from_this() : boost::shared_ptr<sg::node>();
}

// A node above itself would keep every later walk going for ever.
void refuse_cycles(const ReadNodes& nodes) {
  const int count = static_cast<int>(nodes.size());
  // Where every parent stands before its children, as we save them, there is none.
  int in_order = 0;
  while (in_order < count && nodes[static_cast<std::size_t>(in_order)].parent < in_order) ++in_order;
  if (in_order == count) return;

  std::vector<int> walked_from(nodes.size(), -1);  // the start of the walk that first met the node
  for (int start = 0; start < count; ++start)
    for (int i = start; i >= 0 && i < count; i = nodes[static_cast<std::size_t>(i)].parent) {
      int& walk = walked_from[static_cast<std::size_t>(i)];
      if (walk == start) throw std::runtime_error("machine definition: a node is its own ancestor");
      if (walk >= 0) break;
      walk = start;
    }
}

}  // namespace

const int CMachDef::_version = 1;

void CMachDef::serialize(IIO::Stream& stream) {
  if (stream.Mode() == IIO::FILE_WRITE)
    write(stream);
  else
    read(stream);
}

void CMachDef::write(IIO::Stream& stream) const {
  stream << _version << static_cast<int>(m_machType) << static_cast<int>(m_mode) << (m_metric ? 1 : 0);
  stream << m_loading_vector << m_mwZeroPos;
  stream.Write(&m_head, sizeof m_head);
  write_axis_slot(stream, m_primary);
  write_axis_slot(stream, m_secondary);
  for (const boost::shared_ptr<CAxis2>& axis : m_xyz_axes) write_axis_slot(stream, axis);

  const NodeIndex index = index_trees(m_SG);
  stream << index.count();
  for (const boost::shared_ptr<sg::node>& n : index.nodes())
    write_node_record(stream, *n, index.index_of(n->parent_ptr()));

  stream << index.index_of(m_SG[0].get()) << index.index_of(m_SG[1].get());
  stream << index.index_of(m_SG_RotAxs[0].get()) << index.index_of(m_SG_RotAxs[1].get());
  stream << index.index_of(m_tool_node.get());
  stream << static_cast<int>(m_discipline);
}

// Every field is replaced as soon as it is read; what fails leaves the machine as far as it came.
void CMachDef::read(IIO::Stream& stream) {
  read_int(stream);  // there is one layout, whatever the version says
  m_machType = static_cast<MACHINE_TYPE>(read_int(stream));
  m_mode = static_cast<MACHINE_MODE>(read_int(stream));
  m_metric = read_int(stream) != 0;
  m_loading_vector = read_point(stream);
  m_mwZeroPos = read_point(stream);
  stream.Read(&m_head, sizeof m_head);
  read_axis_slot(stream, m_primary);
  read_axis_slot(stream, m_secondary);
  for (boost::shared_ptr<CAxis2>& axis : m_xyz_axes) read_axis_slot(stream, axis);
  read_trees(stream);
  m_discipline = static_cast<K5AX_DISCIPLINE>(read_int(stream));
  list_nodes();
}

void CMachDef::read_trees(IIO::Stream& stream) {
  const int count = read_int(stream);
  ReadNodes nodes;  // grows as records come: the count itself may be anything
  for (int i = 0; i < count; ++i) {
    int parent = -1;
    boost::shared_ptr<sg::node> n = read_node_record(stream, parent);
    sg::node* const address = n.get();
    nodes.push_back({std::move(n), address, parent});
  }

  refuse_cycles(nodes);
  for (Nodes& list : m_nodes) list.reserve(nodes.size());  // in one piece, for list_nodes
  for (ReadNode& n : nodes)
    if (sg::node* const parent = look_up(nodes, n.parent)) {
      n.address->link_to(parent);
      parent->append_child(std::move(n.held));
    }

  m_SG[0] = share(look_up(nodes, read_int(stream)));
  m_SG[1] = share(look_up(nodes, read_int(stream)));
  m_SG_RotAxs[0] = share(look_up(nodes, read_int(stream)));
  m_SG_RotAxs[1] = share(look_up(nodes, read_int(stream)));
  sg::node* const tool = look_up(nodes, read_int(stream));
  m_tool_node.reset();
  if (sg::tool_node(tool) != nullptr)
    m_tool_node = boost::static_pointer_cast<sg::tnode<angled_head>>(share(tool));
}

}  // namespace md
