// Lets a test make the system calls fail that no folder or device at hand makes fail.
#ifndef K5AX_TESTS_PLATFORM_SYSTEM_CALLS_H
#define K5AX_TESTS_PLATFORM_SYSTEM_CALLS_H

#include <functional>

namespace k5ax_test {

// What happens to the calls of this program while one of these lives; no two at a time.
struct SystemCalls {
  SystemCalls();
  SystemCalls(const SystemCalls&) = delete;
  SystemCalls& operator=(const SystemCalls&) = delete;
  ~SystemCalls();

  int flushes = 0;                 // calls of fsync so far
  std::function<void()> on_flush;  // run at each of them
  int flush_error = 0;             // when not 0, every fsync fails with it
  int close_error = 0;             // when not 0, every close closes and then fails with it
  int seek_error = 0;              // when not 0, every lseek fails with it
  bool endless_links = false;      // everything is a symbolic link to "link" beside it
  int random_error = 0;            // when not 0, there are no random numbers, for this reason
  int zeros_for_random_calls = 0;  // so many calls for random numbers get zeros
};

}  // namespace k5ax_test

#endif
