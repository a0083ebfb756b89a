// The tool on a POSIX system.
#include "tool/system.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace tool {

// A reader that has seen enough closes the pipe, and the tool ends as every filter does, without a word. A
// parent may have left the signal ignored.
void prepare_process() { std::signal(SIGPIPE, SIG_DFL); }

std::vector<std::string> arguments_of(int argc, char** argv) { return {argv, argv + argc}; }

bool is_terminal(StandardStream stream) { return ::isatty(static_cast<int>(stream)) == 1; }

std::FILE* open_stream(const std::string& path) { return std::fopen(path.c_str(), "rb"); }

int open_file(const std::string& path) { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC); }

void close_file(int file) { ::close(file); }

std::uint64_t size_of_file(int file) {
  struct stat status {};
  const bool is_regular = ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
  return is_regular ? static_cast<std::uint64_t>(status.st_size) : 0;
}

std::ptrdiff_t read_file(int file, char* data, std::size_t size) {
  for (;;) {
    const ssize_t count = ::read(file, data, size);
    if (count >= 0 || errno != EINTR) return count;
  }
}

}  // namespace tool
