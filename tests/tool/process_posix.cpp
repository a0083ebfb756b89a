// Starting the tool on a POSIX system.
#include "tool/process.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tool_test {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kLongest{60};

[[noreturn]] void give_up(const std::string& what) {
  throw std::runtime_error(what + ": " + std::strerror(errno));
}

// Ends of pipes; closing one twice is harmless.
struct Pipe {
  int read_end = -1;
  int write_end = -1;

  Pipe() = default;
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;
  ~Pipe() {
    close_read();
    close_write();
  }

  void open() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) give_up("pipe");
    read_end = ends[0];
    write_end = ends[1];
  }
  void close_read() { close_end(read_end); }
  void close_write() { close_end(write_end); }

 private:
  static void close_end(int& end) {
    if (end >= 0) ::close(end);
    end = -1;
  }
};

// In the child: nothing here may return.
[[noreturn]] void become(const std::string& program, const std::vector<std::string>& arguments,
                         const How& how) {
  for (const auto& [name, value] : how.variables) setenv(name.c_str(), value.c_str(), 1);
  if (!how.folder.empty() && chdir(how.folder.c_str()) != 0) _exit(126);

  std::vector<char*> argv;
  std::string name = program;
  std::vector<std::string> copies = arguments;
  argv.push_back(name.data());
  for (std::string& copy : copies) argv.push_back(copy.data());
  argv.push_back(nullptr);
  execv(program.c_str(), argv.data());
  _exit(127);
}

// Feeds the input and collects both outputs as they come, so that no pipe fills up while nobody reads it.
void exchange(pid_t child, Pipe& in, Pipe& out, Pipe& err, const std::string& input, Ended& ended) {
  const Clock::time_point end = Clock::now() + kLongest;
  std::size_t fed = 0;
  if (input.empty()) in.close_write();

  while (out.read_end >= 0 || err.read_end >= 0) {
    pollfd waiting[3] = {{in.write_end, POLLOUT, 0}, {out.read_end, POLLIN, 0}, {err.read_end, POLLIN, 0}};
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
    const int ready = left > 0 ? poll(waiting, 3, static_cast<int>(left)) : 0;
    if (ready < 0 && errno == EINTR) continue;
    if (ready < 0) give_up("poll");
    if (ready == 0) {
      ADD_FAILURE() << "the tool was still running after a minute";
      kill(child, SIGKILL);
      return;
    }

    if (waiting[0].revents != 0) {
      const ssize_t count = write(in.write_end, input.data() + fed, input.size() - fed);
      fed += count > 0 ? static_cast<std::size_t>(count) : 0;
      if ((count < 0 && errno != EAGAIN && errno != EINTR) || fed == input.size()) in.close_write();
    }
    char buffer[65536];
    if (waiting[1].revents != 0) {
      const ssize_t count = read(out.read_end, buffer, sizeof buffer);
      if (count > 0) ended.out.append(buffer, static_cast<std::size_t>(count));
      if (count <= 0) out.close_read();  // a terminal without a writer left answers with an error
    }
    if (waiting[2].revents != 0) {
      const ssize_t count = read(err.read_end, buffer, sizeof buffer);
      if (count > 0) ended.err.append(buffer, static_cast<std::size_t>(count));
      if (count <= 0) err.close_read();
    }
  }
}

Ended run(const std::string& program, const std::vector<std::string>& arguments, const How& how) {
  Pipe in;
  Pipe out;
  Pipe err;
  in.open();
  if (how.terminal) {
    winsize size{};
    size.ws_row = 24;
    size.ws_col = 80;
    if (openpty(&out.read_end, &out.write_end, nullptr, nullptr, &size) != 0) give_up("openpty");
    fcntl(out.read_end, F_SETFD, FD_CLOEXEC);
  } else {
    out.open();
    err.open();
  }
  // Writing to a tool that has ended is answered by an error, not by the end of the test.
  std::signal(SIGPIPE, SIG_IGN);
  fcntl(in.write_end, F_SETFL, O_NONBLOCK);
  if (how.reader_gone) out.close_read();  // before there is anything to write

  const pid_t child = fork();
  if (child < 0) give_up("fork");
  if (child == 0) {
    const int to = how.output_to.empty() ? out.write_end : open(how.output_to.c_str(), O_WRONLY | O_CLOEXEC);
    if (to < 0 || dup2(in.read_end, STDIN_FILENO) < 0 || dup2(to, STDOUT_FILENO) < 0 ||
        dup2(how.terminal ? out.write_end : err.write_end, STDERR_FILENO) < 0) {
      _exit(125);
    }
    become(program, arguments, how);
  }

  in.close_read();
  out.close_write();
  err.close_write();
  Ended ended;
  exchange(child, in, out, err, how.input, ended);

  int status = 0;
  rusage usage{};
  while (wait4(child, &status, 0, &usage) < 0) {
    if (errno != EINTR) give_up("wait4");
  }
  ended.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  ended.peak_kib = usage.ru_maxrss;
  return ended;
}

}  // namespace

Ended run_tool(const std::vector<std::string>& arguments, const How& how) {
  return run(K5AX_TOOL, arguments, how);
}

Ended run_shell(const std::string& command_line, const How& how) {
  const char* const path = std::getenv("PATH");
  How with_path = how;
  with_path.variables["PATH"] = std::filesystem::path(K5AX_TOOL).parent_path().string() + ":" +
                                (path != nullptr ? path : "/usr/bin:/bin");
  return run("/bin/bash", {"-c", command_line}, with_path);
}

}  // namespace tool_test
