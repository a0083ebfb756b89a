// What a test does to a process, which is this one or one of its own.
#ifndef K5AX_TESTS_PLATFORM_SCRATCH_PROCESS_H
#define K5AX_TESTS_PLATFORM_SCRATCH_PROCESS_H

#include <fcntl.h>
#include <grp.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <vector>

#include <gtest/gtest.h>

namespace k5ax_test {

// From here on no file of this process may grow beyond `size` bytes: a disk that is full there.
inline void fill_the_disk_at(rlim_t size) {
  rlimit limit;
  if (::getrlimit(RLIMIT_FSIZE, &limit) != 0) throw std::runtime_error("no limit");
  limit.rlim_cur = size;
  if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) throw std::runtime_error("no limit");
}

// From here on this process may do only what anybody may, run by root or not.
inline void become_anybody() {
  if (::geteuid() != 0) return;
  const bool done = ::setgroups(0, nullptr) == 0 && ::setgid(65534) == 0 && ::setuid(65534) == 0;
  if (!done) throw std::runtime_error("still root");
}

// There in a build that counts what is reached, and absent from others.
extern "C" int __llvm_profile_write_file() __attribute__((weak));

// Ends this process at once. Where it is counted what is reached, the program and the library write that down
// at an ordinary end, for which files may be large again.
[[noreturn]] inline void leave(int code) {
  if (&__llvm_profile_write_file == nullptr) ::_exit(code);

  rlimit limit;
  if (::getrlimit(RLIMIT_FSIZE, &limit) == 0) {
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  std::exit(code);
}

// Runs `action` in a process of its own, for what would change this one for good (limits, user, signals) or
// end it. Success means that it came to its end and answered true.
inline testing::AssertionResult in_a_process(const std::function<bool()>& action) {
  const pid_t child = ::fork();
  if (child == -1) return testing::AssertionFailure() << "cannot fork";
  if (child == 0) {
    int code = 2;
    try {
      code = action() ? 0 : 1;
    } catch (...) {
      code = 3;
    }
    leave(code);
  }
  int status = 0;
  if (::waitpid(child, &status, 0) != child) return testing::AssertionFailure() << "cannot wait";
  if (WIFSIGNALED(status)) return testing::AssertionFailure() << "ended by signal " << WTERMSIG(status);
  if (WEXITSTATUS(status) == 1) return testing::AssertionFailure() << "answered false";
  if (WEXITSTATUS(status) == 3) return testing::AssertionFailure() << "an exception came out";
  if (WEXITSTATUS(status) != 0) return testing::AssertionFailure() << "exit code " << WEXITSTATUS(status);
  return testing::AssertionSuccess();
}

// The numbers of the files that this process has open.
inline std::vector<int> open_files() {
  std::vector<int> numbers;
  for (int number = 0; number < 1024; ++number) {
    if (::fcntl(number, F_GETFD) != -1) numbers.push_back(number);
  }
  return numbers;
}

}  // namespace k5ax_test

#endif
