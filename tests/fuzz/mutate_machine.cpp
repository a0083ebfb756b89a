// Changes the bytes of a machine's file as their fields are: a node more or less, another parent, a special
// number. Bytes that are no whole record are changed as bytes.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>

#include "machdef/files/record_bytes.h"

namespace {

using k5ax_test::MachineRecord;
using k5ax_test::NodeRecord;

class Mutation {
 public:
  Mutation(MachineRecord& record, unsigned int seed) : m_record(record), m_random(seed) {}

  void change_once() {
    switch (below(10)) {
      case 0:
        return add_node();
      case 1:
        return remove_node();
      case 2:
      case 3:
        return change_links();
      case 4:
        return change_words();
      case 5:
        return change_axis(m_record.axes[below(5)].axis);
      case 6:
        m_record.axes[below(5)].present ^= 1;
        return;
      case 7:
        return change_head(m_record.head);
      default:
        return change_node();
    }
  }

 private:
  std::size_t below(std::size_t count) { return m_random() % count; }

  int word() {
    static const int words[] = {-1, 0, 1, 2, 3, 4, 5, 6, 7, -2, -999, 2147483647, -2147483647 - 1};
    return words[below(sizeof words / sizeof *words)];
  }
  // The place of a node, one beside them now and then.
  int place() { return static_cast<int>(below(m_record.nodes.size() + 2)) - 1; }
  double number() {
    static const double numbers[] = {0.0,
                                     -0.0,
                                     1.0,
                                     -1.0,
                                     1e-9,
                                     0.001,
                                     0.00099,
                                     1.5707963267948966,
                                     1e17,
                                     1e200,
                                     std::numeric_limits<double>::max(),
                                     std::numeric_limits<double>::denorm_min(),
                                     std::numeric_limits<double>::infinity(),
                                     std::numeric_limits<double>::quiet_NaN()};
    if (below(3) == 0) return std::ldexp(static_cast<double>(m_random()), static_cast<int>(below(80)) - 40);
    return numbers[below(sizeof numbers / sizeof *numbers)];
  }
  template <std::size_t count>
  void change(std::array<double, count>& numbers) {
    numbers[below(count)] = number();
  }
  // A direction along an axis of the machine, so that lines are parallel or at right angles.
  void align(std::array<double, 3>& direction) {
    direction = {};
    direction[below(3)] = below(4) == 0 ? -1 : 1;
  }

  NodeRecord* any_node() {
    return m_record.nodes.empty() ? nullptr : &m_record.nodes[below(m_record.nodes.size())];
  }

  void add_node() {
    NodeRecord n;
    if (const NodeRecord* const like = any_node()) n = *like;
    n.parent = place();
    n.kind = static_cast<int>(below(3));
    m_record.nodes.insert(
        m_record.nodes.begin() + static_cast<std::ptrdiff_t>(below(m_record.nodes.size() + 1)), n);
  }
  void remove_node() {
    if (m_record.nodes.empty()) return;
    m_record.nodes.erase(m_record.nodes.begin() + static_cast<std::ptrdiff_t>(below(m_record.nodes.size())));
  }
  void change_links() {
    NodeRecord* const n = any_node();
    switch (below(5)) {
      case 0:
        m_record.roots[below(2)] = place();
        return;
      case 1:
        m_record.rotary_nodes[below(2)] = place();
        return;
      case 2:
        m_record.tool_node = place();
        return;
      default:
        if (n != nullptr) n->parent = place();
    }
  }
  void change_words() {
    int* const words[] = {&m_record.version, &m_record.type, &m_record.mode, &m_record.metric,
                          &m_record.discipline};
    *words[below(5)] = word();
  }
  void change_node() {
    NodeRecord* const n = any_node();
    if (n == nullptr) return;
    switch (below(8)) {
      case 0:
        n->kind = word();
        return;
      case 1:
        n->id = word();
        return;
      case 2:
        n->flags = static_cast<unsigned int>(below(4));
        return;
      case 3:
        n->value = number();
        return;
      case 4:
        return change(n->transform);
      case 5:
        return change_head(n->head);
      default:
        return change_axis(n->axis);
    }
  }
  void change_axis(k5ax_test::AxisRecord& axis) {
    switch (below(7)) {
      case 0:
        axis.type = word();
        return;
      case 1:
        axis.location = word();
        return;
      case 2:
        axis.mode = static_cast<int>(below(4)) - 1;
        return;
      case 3:
        return change(axis.base);
      case 4:
        return change(axis.vector);
      case 5:
        return align(axis.vector);
      default:
        (below(2) == 0 ? axis.min : axis.max) = number();
    }
  }
  void change_head(k5ax_test::HeadRecord& head) {
    double* const numbers[] = {&head.b_angle, &head.c_angle, &head.length1, &head.length2};
    switch (below(6)) {
      case 0:
        head.flags = static_cast<unsigned int>(word());
        return;
      case 1:
        return change(head.tip);
      case 2:
        return change(head.tool_dir);
      case 3:
        return align(head.tool_dir);
      case 4:
        return change(head.offset);
      default:
        *numbers[below(4)] = number();
    }
  }

  MachineRecord& m_record;
  std::minstd_rand m_random;
};

}  // namespace

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size);
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t max_size,
                                               unsigned int seed);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t max_size,
                                               unsigned int seed) {
  if (seed % 4 == 0) return LLVMFuzzerMutate(data, size, max_size);
  MachineRecord record;
  try {
    record = k5ax_test::unpack_machine(std::string(reinterpret_cast<const char*>(data), size));
  } catch (const std::runtime_error&) {
    return LLVMFuzzerMutate(data, size, max_size);
  }

  Mutation mutation(record, seed);
  for (unsigned int i = 0; i <= seed % 3; ++i) mutation.change_once();
  const std::string bytes = k5ax_test::pack(record);
  if (bytes.size() > max_size) return LLVMFuzzerMutate(data, size, max_size);
  std::memcpy(data, bytes.data(), bytes.size());
  return bytes.size();
}
