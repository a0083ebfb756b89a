// A program run to its end, and what time it took.
#include "benchmarks/path/timed_process.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <stdexcept>

#include <fcntl.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {
namespace {

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
}

}  // namespace

Times run(const std::vector<std::string>& arguments, const std::string& output) {
  std::vector<std::string> copies = arguments;
  std::vector<char*> argv;
  argv.reserve(copies.size() + 1);
  for (std::string& copy : copies) argv.push_back(copy.data());
  argv.push_back(nullptr);

  // What the child holds before it becomes the program would count as the program's memory.
  malloc_trim(0);
  const auto start = std::chrono::steady_clock::now();
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error(std::string("fork: ") + std::strerror(errno));
  if (child == 0) {
    const int to = open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (to < 0 || dup2(to, STDOUT_FILENO) < 0 || dup2(nowhere, STDERR_FILENO) < 0) _exit(126);
    execv(argv[0], argv.data());
    _exit(127);
  }
  int status = 0;
  rusage usage{};
  while (wait4(child, &status, 0, &usage) < 0)
    if (errno != EINTR) throw std::runtime_error(std::string("wait4: ") + std::strerror(errno));
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
    throw std::runtime_error(arguments[0] + " did not end with 0");

  return {seconds(usage.ru_utime) + seconds(usage.ru_stime), taken.count(), usage.ru_maxrss};
}

}  // namespace bench
