// A folder of its own for a test, and short ways to look at files.
#ifndef K5AX_TESTS_PLATFORM_SCRATCH_H
#define K5AX_TESTS_PLATFORM_SCRATCH_H

#include <fcntl.h>
#include <grp.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include <gtest/gtest.h>

#include <k5ax/platform/stream.h>

namespace k5ax_test {

namespace fs = std::filesystem;

// Empty when made, gone with everything in it at the end.
class ScratchFolder {
 public:
  ScratchFolder() {
    std::string pattern = (fs::temp_directory_path() / "k5ax-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no scratch folder at " + pattern);
    m_path = pattern;
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder() {
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
  }

  std::string path() const { return m_path.string(); }
  std::string operator/(const std::string& name) const { return (m_path / name).string(); }

  // The names in the folder, hidden ones included, sorted.
  std::vector<std::string> names() const {
    std::vector<std::string> found;
    for (const fs::directory_entry& entry : fs::directory_iterator(m_path))
      found.push_back(entry.path().filename());
    std::sort(found.begin(), found.end());
    return found;
  }

 private:
  fs::path m_path;
};

using Names = std::vector<std::string>;

// The files are read and made here without the streams under test.
inline std::string contents(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return "(no file)";
  return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

inline void make_file(const std::string& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary);
  file << text;
  if (!file.flush()) throw std::runtime_error("cannot make " + path);
}

// Saves `text` with the stream under test.
inline void save(const std::string& path, const std::string& text) {
  IIO::FileStream stream(path.c_str(), IIO::FILE_WRITE);
  stream.Write(text.data(), text.size());
}

// The text of the FileError that `action` ends with; says so when there is none.
inline std::string error_of(const std::function<void()>& action) {
  try {
    action();
  } catch (const IIO::FileError& error) {
    return error.what();
  }
  return "(no FileError)";
}

// What the system calls an error number, as messages end with it.
inline std::string reason(int code) { return std::system_category().message(code); }

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
