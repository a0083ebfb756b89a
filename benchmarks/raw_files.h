// What the operating system alone takes for reading and for safely replacing a file: no buffers, no checks of
// what stands at the path.
#ifndef K5AX_BENCHMARKS_RAW_FILES_H
#define K5AX_BENCHMARKS_RAW_FILES_H

#include <cstddef>
#include <string>
#include <vector>

namespace bench {

// Open, read, close: `buffer` is as large as the file. All failures are std::runtime_error.
void read_raw(const std::string& path, std::vector<unsigned char>& buffer);

// Write to a temporary file beside it, flush to disk, rename.
void replace_raw(const std::string& path, const std::string& temporary_path,
                 const std::vector<unsigned char>& bytes);

// A file's bytes.
std::vector<unsigned char> file_bytes(const std::string& path);

// A folder of one's own below `parent`, removed with everything in it at the end.
class ScratchFolder {
 public:
  explicit ScratchFolder(const std::string& parent);
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder();

  std::string file(const std::string& name) const { return m_path + "/" + name; }

 private:
  std::string m_path;
};

}  // namespace bench

#endif
