// A thread with a small stack.
#ifndef K5AX_TESTS_SCENEGRAPH_SMALL_STACK_H
#define K5AX_TESTS_SCENEGRAPH_SMALL_STACK_H

#include <pthread.h>

#include <functional>

#include <gtest/gtest.h>

namespace k5ax_test {

// Runs the work on a thread whose whole stack is 256 KiB, 1.3 bytes for each node of a chain: a walk that
// used the call stack for its depth would not get far.
inline void on_small_stack(std::function<void()> work) {
  pthread_attr_t attributes;
  ASSERT_EQ(pthread_attr_init(&attributes), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, 256 * 1024), 0);
  pthread_t thread;
  const int error = pthread_create(
      &thread, &attributes,
      [](void* argument) -> void* {
        (*static_cast<std::function<void()>*>(argument))();
        return nullptr;
      },
      &work);
  pthread_attr_destroy(&attributes);
  ASSERT_EQ(error, 0);
  ASSERT_EQ(pthread_join(thread, nullptr), 0);
}

}  // namespace k5ax_test

#endif
