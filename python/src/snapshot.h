// What the transforms need of a machine, as it stood at one moment.
#ifndef K5AX_PYTHON_SNAPSHOT_H
#define K5AX_PYTHON_SNAPSHOT_H

#include <boost/make_shared.hpp>

#include "pools.h"

namespace k5ax_python {

// A loop that lets other threads run must not read a machine that they may change. This one has the type, the
// head and the rotary axes, each field for field; it takes nothing from the pools and gives nothing back.
class Snapshot {
 public:
  explicit Snapshot(const md::CMachDef& machine) {
    m_machine.setMachType(machine.getMachType());
    m_machine.head() = machine.head();
    m_machine.setPrimary(copy(machine.getPrimary()));
    m_machine.setSecondary(copy(machine.getSecondary()));
  }
  ~Snapshot() {
    m_machine.setPrimary(AxisPtr());
    m_machine.setSecondary(AxisPtr());
  }
  Snapshot(const Snapshot&) = delete;
  Snapshot& operator=(const Snapshot&) = delete;

  const md::CMachDef& machine() const { return m_machine; }

 private:
  static AxisPtr copy(const AxisPtr& axis) {
    return axis ? boost::make_shared<md::CAxis2>(*axis) : AxisPtr();
  }

  md::CMachDef m_machine;
};

}  // namespace k5ax_python

#endif
