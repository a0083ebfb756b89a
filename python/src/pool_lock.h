// Held around every use of the library's pools, which are the process's and not synchronised.
#ifndef K5AX_PYTHON_POOL_LOCK_H
#define K5AX_PYTHON_POOL_LOCK_H

#include <mutex>

namespace k5ax_python {

// Holding the interpreter's lock is not enough, since wrapping takes from the pools without it. Whoever has
// this lock must not ask for the interpreter's, nor touch a Python object: the two are always taken in one
// order.
class PoolLock {
 public:
  // A thread that comes back at once queues behind those that wait: they hold the turn.
  PoolLock() {
    const std::lock_guard<std::mutex> my_turn(s_turn);
    s_pools.lock();
  }
  ~PoolLock() { s_pools.unlock(); }
  PoolLock(const PoolLock&) = delete;
  PoolLock& operator=(const PoolLock&) = delete;

 private:
  static inline std::mutex s_turn;
  static inline std::mutex s_pools;
};

}  // namespace k5ax_python

#endif
