// Everything of the module that takes from the library's pools or gives back to them.
#include "pools.h"

#include <utility>
#include <vector>

#include "pool_lock.h"
#include "record_streams.h"

namespace k5ax_python {

namespace {

void give_back(md::CMachDef* machine) {
  const PoolLock lock;
  delete machine;
}

}  // namespace

MachinePtr new_machine() { return MachinePtr(new md::CMachDef, give_back); }

MachinePtr copy_machine(md::CMachDef& machine) {
  const std::string bytes = record_of(machine);
  RecordReader reader(bytes);
  MachinePtr copy = new_machine();
  read_record(*copy, reader);
  return copy;
}

std::string record_of(md::CMachDef& machine) {
  RecordWriter writer;
  machine.serialize(writer);
  return writer.bytes();
}

void read_record(md::CMachDef& machine, IIO::Stream& stream) {
  const PoolLock lock;
  machine.serialize(stream);
}

AxisPtr adopt_axis(md::CMachDef& machine, const md::CAxis2* from) {
  if (from == nullptr) return AxisPtr();
  const PoolLock lock;
  const AxisPtr axis = md::CAxis2::create();
  *axis = *from;
  axis->machdef(&machine);
  return axis;
}

AxisPtr new_axis(AXIS_TYPE type, AXIS_LOCATION location, const Point& base, const Point& vector, double min,
                 double max, AXIS_MODE mode) {
  const PoolLock lock;
  const AxisPtr axis = md::CAxis2::create(type, location, base, vector, min, max, mode);
  axis->machdef(nullptr);  // one from the pool keeps its former owner
  return axis;
}

NodePtr new_node() {
  const PoolLock lock;
  const NodePtr node = md::sg::node::create();
  node->reset();
  node->id(0);
  return node;
}

boost::shared_ptr<md::sg::tnode<md::CAxis2>> new_axis_node(const md::CAxis2& axis) {
  const PoolLock lock;
  const auto node = md::NodeAxis_Create();
  node->reset();
  node->id(0);
  node->payload() = axis;
  node->machdef(nullptr);
  return node;
}

boost::shared_ptr<md::sg::tnode<angled_head>> new_tool_node(const angled_head& head) {
  const PoolLock lock;
  const auto node = md::TOOL_NODE_Create();
  node->reset();
  node->id(0);
  node->payload() = head;
  return node;
}

NodePtr copy_tree(const NodePtr& root) {
  const PoolLock lock;
  const NodePtr copy_of_root = root->shallow_clone();
  std::vector<std::pair<md::sg::node*, NodePtr>> to_visit = {{root.get(), copy_of_root}};
  while (!to_visit.empty()) {
    const auto [original, copy] = to_visit.back();
    to_visit.pop_back();
    for (const NodePtr& child : original->child_list()) {
      const NodePtr copy_of_child = child->shallow_clone();
      copy->add_child(copy_of_child);
      to_visit.emplace_back(child.get(), copy_of_child);
    }
  }
  return copy_of_root;
}

}  // namespace k5ax_python
