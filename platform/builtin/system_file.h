// A file of the operating system: every system call that the file streams make stands behind this class.
//
// There is one implementation per system, system_file_posix.cpp being the first; another system gets a file
// of its own beside it and a line in CMakeLists.txt.
#ifndef K5AX_PLATFORM_BUILTIN_SYSTEM_FILE_H
#define K5AX_PLATFORM_BUILTIN_SYSTEM_FILE_H

#include <cstddef>
#include <memory>
#include <string>

namespace IIO {

// Open from its making to its end. Unbuffered. Every failure is a FileError with the path and the system's
// reason.
class SystemFile {
 public:
  static SystemFile open_for_reading(const char* path);

  // A regular file, or none yet: writes go to a new file in the same folder, until commit() gives it the
  // path's name. Anything else that can be written is opened itself.
  static SystemFile open_for_writing(const char* path);

  SystemFile(SystemFile&& other) noexcept;
  SystemFile& operator=(SystemFile&& other) noexcept;

  // Closes. Without a commit the new file is removed and the old one is as it was.
  ~SystemFile();

  // What the file begins with, up to `size` bytes, as the system has them at hand; 0 also where only waiting
  // could tell, as with a pipe. To be called once, right after opening for reading: a folder opens like a
  // file, and is refused here.
  std::size_t read_start(void* data, std::size_t size);

  // As many further bytes as the system has at hand, up to `size`; 0 at the end of the file only.
  std::size_t read_some(void* data, std::size_t size);

  void write_all(const void* data, std::size_t size);

  // Flushes a new file to disk, closes it and puts it in place. To be called once, as the last thing.
  void commit();

  [[noreturn]] void fail(const std::string& reason) const;

 private:
  struct State;
  explicit SystemFile(std::unique_ptr<State> state) noexcept;

  std::unique_ptr<State> m_state;
};

}  // namespace IIO

#endif
