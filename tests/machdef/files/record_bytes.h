// The file format a second time, from docs/file-format.md alone: plain records, a writer that packs them byte
// by byte and a reader that takes them apart. Nothing of the library is used here.
#ifndef K5AX_TESTS_MACHDEF_FILES_RECORD_BYTES_H
#define K5AX_TESTS_MACHDEF_FILES_RECORD_BYTES_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace k5ax_test {

using Bytes = std::string;

struct AxisRecord {
  int version = 1;
  std::array<double, 3> base = {};
  std::array<double, 3> vector = {};
  double min = 0;
  double max = 0;
  int type = -1;
  int location = -1;
  int mode = -1;
};

struct AxisSlot {
  int present = 0;
  AxisRecord axis;  // in the file only when present is not 0
};

struct HeadRecord {
  double b_angle = 0;
  double c_angle = 0;
  double length1 = 0;
  double length2 = 0;
  std::array<double, 3> tip = {};
  std::array<double, 3> tool_dir = {0, 0, 1};
  std::array<double, 3> ref_dir = {1, 0, 0};
  std::array<double, 3> offset = {};
  unsigned int flags = 0;
  std::array<unsigned char, 4> padding = {};
};

constexpr int kPlain = 0;
constexpr int kAxis = 1;
constexpr int kTool = 2;

struct NodeRecord {
  int kind = kPlain;
  int parent = -1;
  int id = 0;
  unsigned int flags = 0;
  double value = 0;
  std::array<double, 12> transform = {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};
  AxisRecord axis;  // in the file only for kind 1
  HeadRecord head;  // in the file only for kind 2
};

// As a fresh machine is written.
struct MachineRecord {
  int version = 1;
  int type = -1;
  int mode = -1;
  int metric = 1;
  std::array<double, 3> loading_vector = {};
  std::array<double, 3> work_zero = {};
  HeadRecord head;
  std::array<AxisSlot, 5> axes;  // primary, secondary, X, Y, Z
  std::vector<NodeRecord> nodes;
  std::array<int, 2> roots = {-1, -1};
  std::array<int, 2> rotary_nodes = {-1, -1};
  int tool_node = -1;
  int discipline = 0;
};

// Appends values to a block of bytes, low byte first.
class Packer {
 public:
  void put_bits(std::uint64_t bits, int size) {
    for (int i = 0; i < size; ++i)
      m_bytes.push_back(static_cast<char>(static_cast<unsigned char>(bits >> (8 * i))));
  }
  void put(int value) { put_bits(static_cast<std::uint32_t>(value), 4); }
  void put(unsigned int value) { put_bits(value, 4); }
  void put(double value) {
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    put_bits(bits, 8);
  }
  template <std::size_t count>
  void put(const std::array<double, count>& values) {
    for (const double value : values) put(value);
  }
  template <std::size_t count>
  void put(const std::array<unsigned char, count>& values) {
    for (const unsigned char value : values) put_bits(value, 1);
  }

  void put(const AxisRecord& axis) {
    put(axis.version);
    put(axis.base);
    put(axis.vector);
    put(axis.min);
    put(axis.max);
    put(axis.type);
    put(axis.location);
    put(axis.mode);
  }
  void put(const AxisSlot& slot) {
    put(slot.present);
    if (slot.present != 0) put(slot.axis);
  }
  void put(const HeadRecord& head) {
    put(head.b_angle);
    put(head.c_angle);
    put(head.length1);
    put(head.length2);
    put(head.tip);
    put(head.tool_dir);
    put(head.ref_dir);
    put(head.offset);
    put(head.flags);
    put(head.padding);
  }
  void put(const NodeRecord& n) {
    put(n.kind);
    put(n.parent);
    put(n.id);
    put(n.flags);
    put(n.value);
    put(n.transform);
    if (n.kind == kAxis) put(n.axis);
    if (n.kind == kTool) put(n.head);
  }
  void put(const MachineRecord& m) {
    put_up_to_nodes(m);
    for (const NodeRecord& n : m.nodes) put(n);
    put(m.roots[0]);
    put(m.roots[1]);
    put(m.rotary_nodes[0]);
    put(m.rotary_nodes[1]);
    put(m.tool_node);
    put(m.discipline);
  }
  void put_up_to_nodes(const MachineRecord& m) {
    put(m.version);
    put(m.type);
    put(m.mode);
    put(m.metric);
    put(m.loading_vector);
    put(m.work_zero);
    put(m.head);
    for (const AxisSlot& slot : m.axes) put(slot);
    put(static_cast<int>(m.nodes.size()));
  }

  Bytes take() { return std::move(m_bytes); }

 private:
  Bytes m_bytes;
};

template <class Record>
Bytes pack(const Record& record) {
  Packer packer;
  packer.put(record);
  return packer.take();
}

// Takes values off a block of bytes. Throws when the block ends too soon.
class Unpacker {
 public:
  explicit Unpacker(const Bytes& bytes) : m_bytes(bytes) {}

  std::uint64_t take_bits(int size) {
    if (m_bytes.size() - m_at < static_cast<std::size_t>(size))
      throw std::runtime_error("the bytes end too soon");
    std::uint64_t bits = 0;
    for (int i = 0; i < size; ++i)
      bits |= std::uint64_t{static_cast<unsigned char>(m_bytes[m_at++])} << (8 * i);
    return bits;
  }
  void get(int& value) { value = static_cast<int>(static_cast<std::uint32_t>(take_bits(4))); }
  void get(unsigned int& value) { value = static_cast<std::uint32_t>(take_bits(4)); }
  void get(double& value) {
    const std::uint64_t bits = take_bits(8);
    std::memcpy(&value, &bits, sizeof value);
  }
  template <std::size_t count>
  void get(std::array<double, count>& values) {
    for (double& value : values) get(value);
  }
  template <std::size_t count>
  void get(std::array<unsigned char, count>& values) {
    for (unsigned char& value : values) value = static_cast<unsigned char>(take_bits(1));
  }

  void get(AxisRecord& axis) {
    get(axis.version);
    get(axis.base);
    get(axis.vector);
    get(axis.min);
    get(axis.max);
    get(axis.type);
    get(axis.location);
    get(axis.mode);
  }
  void get(HeadRecord& head) {
    get(head.b_angle);
    get(head.c_angle);
    get(head.length1);
    get(head.length2);
    get(head.tip);
    get(head.tool_dir);
    get(head.ref_dir);
    get(head.offset);
    get(head.flags);
    get(head.padding);
  }
  void get(MachineRecord& m) {
    get(m.version);
    get(m.type);
    get(m.mode);
    get(m.metric);
    get(m.loading_vector);
    get(m.work_zero);
    get(m.head);
    for (AxisSlot& slot : m.axes) {
      get(slot.present);
      if (slot.present != 0) get(slot.axis);
    }
    int count = 0;
    get(count);
    m.nodes.clear();
    for (int i = 0; i < count; ++i) {
      NodeRecord n;
      get(n.kind);
      get(n.parent);
      get(n.id);
      get(n.flags);
      get(n.value);
      get(n.transform);
      if (n.kind == kAxis) get(n.axis);
      if (n.kind == kTool) get(n.head);
      m.nodes.push_back(n);
    }
    get(m.roots[0]);
    get(m.roots[1]);
    get(m.rotary_nodes[0]);
    get(m.rotary_nodes[1]);
    get(m.tool_node);
    get(m.discipline);
  }

  bool at_end() const { return m_at == m_bytes.size(); }

 private:
  const Bytes& m_bytes;
  std::size_t m_at = 0;
};

// The record in the bytes, which must hold it and nothing else.
inline MachineRecord unpack_machine(const Bytes& bytes) {
  Unpacker unpacker(bytes);
  MachineRecord record;
  unpacker.get(record);
  if (!unpacker.at_end()) throw std::runtime_error("there are bytes after the record");
  return record;
}

}  // namespace k5ax_test

#endif
