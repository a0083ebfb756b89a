// A machine definition as plain data, to and from the bytes of a file.
#include "tool/machine/machine_record.h"

#include "tool/machine/memory_stream.h"

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <type_traits>

namespace tool {
namespace {

constexpr int kVersion = 1;

// The library writes a head and a transform as they stand in memory, and so do these.
static_assert(sizeof(HeadRecord) == sizeof(angled_head) && sizeof(angled_head) == 136,
              "a head is a raw block of 136 bytes");
static_assert(std::is_trivially_copyable<HeadRecord>::value && sizeof(Transform) == 96,
              "raw blocks are copied bytewise");

// Its bytes, eight at a time.
template <class Block>
std::array<std::uint64_t, sizeof(Block) / 8> bits_of(const Block& block) {
  static_assert(sizeof(Block) % 8 == 0 && std::is_trivially_copyable<Block>::value, "a block of eights");
  std::array<std::uint64_t, sizeof(Block) / 8> bits;
  std::memcpy(bits.data(), &block, sizeof block);
  return bits;
}

int read_int(IIO::Stream& stream) {
  int value = 0;
  stream >> value;
  return value;
}

AxisRecord read_axis(IIO::Stream& stream) {
  read_int(stream);  // there is one layout, whatever the version says
  AxisRecord axis;
  stream >> axis.base >> axis.direction >> axis.min >> axis.max;
  stream >> axis.letter >> axis.location >> axis.motion;
  return axis;
}

void write_axis(IIO::Stream& stream, const AxisRecord& axis) {
  stream << kVersion << axis.base << axis.direction << axis.min << axis.max;
  stream << axis.letter << axis.location << axis.motion;
}

NodeRecord read_node(IIO::Stream& stream) {
  NodeRecord node;
  stream >> node.kind;
  if (node.kind != kPlainNode && node.kind != kAxisNode && node.kind != kToolNode)
    throw std::runtime_error("machine definition: unknown kind of node");
  stream >> node.parent >> node.id >> node.flags >> node.value;
  stream.Read(node.transform.data(), sizeof node.transform);
  if (node.kind == kAxisNode) node.axis = read_axis(stream);
  if (node.kind == kToolNode) stream.Read(&node.head, sizeof node.head);
  return node;
}

void write_node(IIO::Stream& stream, const NodeRecord& node) {
  stream << node.kind << node.parent << node.id << node.flags << node.value;
  stream.Write(node.transform.data(), sizeof node.transform);
  if (node.kind == kAxisNode) write_axis(stream, node.axis);
  if (node.kind == kToolNode) stream.Write(&node.head, sizeof node.head);
}

MachineRecord read_record(IIO::Stream& stream) {
  MachineRecord record;
  read_int(stream);
  record.type = read_int(stream);
  record.mode = read_int(stream);
  record.is_metric = read_int(stream) != 0;
  stream >> record.loading_vector >> record.work_zero;
  stream.Read(&record.head, sizeof record.head);
  for (std::optional<AxisRecord>& slot : record.axes)
    if (read_int(stream) != 0) slot = read_axis(stream);

  // The count is a claim: memory is taken as nodes come.
  const int count = read_int(stream);
  for (int i = 0; i < count; ++i) record.nodes.push_back(read_node(stream));

  for (int& root : record.roots) root = read_int(stream);
  for (int& rotary : record.rotary_nodes) rotary = read_int(stream);
  record.tool_node = read_int(stream);
  record.discipline = read_int(stream);
  return record;
}

void write_record(IIO::Stream& stream, const MachineRecord& record) {
  stream << kVersion << record.type << record.mode << (record.is_metric ? 1 : 0);
  stream << record.loading_vector << record.work_zero;
  stream.Write(&record.head, sizeof record.head);
  for (const std::optional<AxisRecord>& slot : record.axes) {
    stream << (slot ? 1 : 0);
    if (slot) write_axis(stream, *slot);
  }
  stream << static_cast<int>(record.nodes.size());
  for (const NodeRecord& node : record.nodes) write_node(stream, node);
  for (const int root : record.roots) stream << root;
  for (const int rotary : record.rotary_nodes) stream << rotary;
  stream << record.tool_node << record.discipline;
}

}  // namespace

HeadRecord straight_head() {
  HeadRecord head;
  head.direction = CUtility::pt_z;
  head.reference = CUtility::pt_x;
  return head;
}

bool same_bits(double a, double b) { return bits_of(a) == bits_of(b); }

bool same_bits(const Point& a, const Point& b) {
  return same_bits(a.x, b.x) && same_bits(a.y, b.y) && same_bits(a.z, b.z);
}

bool same_bits(const Transform& a, const Transform& b) { return bits_of(a) == bits_of(b); }

bool same_bits(const AxisRecord& a, const AxisRecord& b) {
  return same_bits(a.base, b.base) && same_bits(a.direction, b.direction) && same_bits(a.min, b.min) &&
         same_bits(a.max, b.max) && a.letter == b.letter && a.location == b.location && a.motion == b.motion;
}

bool same_bits(const HeadRecord& a, const HeadRecord& b) { return bits_of(a) == bits_of(b); }

bool same_bits(const NodeRecord& a, const NodeRecord& b) {
  if (a.kind != b.kind || a.parent != b.parent || a.id != b.id || a.flags != b.flags) return false;
  if (!same_bits(a.value, b.value) || !same_bits(a.transform, b.transform)) return false;
  if (a.kind == kAxisNode) return same_bits(a.axis, b.axis);
  return a.kind != kToolNode || same_bits(a.head, b.head);
}

bool same_bits(const MachineRecord& a, const MachineRecord& b) { return bytes_of(a) == bytes_of(b); }

bool is_rotary(const AxisRecord& axis) { return axis.motion == ROTARY; }
bool is_linear(const AxisRecord& axis) { return axis.motion == LINEAR; }

MachineRecord record_of(const std::string& bytes) {
  ByteReader stream(bytes);
  return read_record(stream);
}

std::string bytes_of(const MachineRecord& record) {
  ByteWriter stream;
  write_record(stream, record);
  return stream.bytes();
}

MachineRecord record_of(md::CMachDef& machine) {
  ByteWriter stream;
  machine.serialize(stream);
  return record_of(stream.bytes());
}

std::unique_ptr<md::CMachDef> machine_of(const MachineRecord& record) {
  const std::string bytes = bytes_of(record);
  ByteReader stream(bytes);
  auto machine = std::make_unique<md::CMachDef>();
  machine->serialize(stream);
  return machine;
}

}  // namespace tool
