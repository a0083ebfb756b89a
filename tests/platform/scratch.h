// A folder of its own for a test, and short ways to look at files.
#ifndef K5AX_TESTS_PLATFORM_SCRATCH_H
#define K5AX_TESTS_PLATFORM_SCRATCH_H

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include <k5ax/platform/stream.h>

namespace k5ax_test {

namespace fs = std::filesystem;

// Empty when made, gone with everything in it at the end.
class ScratchFolder {
 public:
  ScratchFolder() {
    std::random_device random;
    do {
      m_path = fs::temp_directory_path() / ("k5ax-" + std::to_string(random()));
    } while (!fs::create_directory(m_path));
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder() {
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
  }

  std::string path() const { return m_path.u8string(); }
  std::string operator/(const std::string& name) const { return (m_path / fs::u8path(name)).u8string(); }

  // The names in the folder, hidden ones included, sorted.
  std::vector<std::string> names() const {
    std::vector<std::string> found;
    for (const fs::directory_entry& entry : fs::directory_iterator(m_path))
      found.push_back(entry.path().filename().u8string());
    std::sort(found.begin(), found.end());
    return found;
  }

 private:
  fs::path m_path;
};

using Names = std::vector<std::string>;

// The files are read and made here without the streams under test.
inline std::string contents(const std::string& path) {
  std::ifstream file(fs::u8path(path), std::ios::binary);
  if (!file) return "(no file)";
  return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

inline void make_file(const std::string& path, const std::string& text) {
  std::ofstream file(fs::u8path(path), std::ios::binary);
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

}  // namespace k5ax_test

#endif
