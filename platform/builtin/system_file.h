// A file of the operating system: every system call that the file streams make stands behind this class.
//
// There is one implementation per system, system_file_posix.cpp and system_file_windows.cpp; another system
// gets a file of its own beside them and a line in CMakeLists.txt.
#ifndef K5AX_PLATFORM_BUILTIN_SYSTEM_FILE_H
#define K5AX_PLATFORM_BUILTIN_SYSTEM_FILE_H

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

namespace IIO {

// Unbuffered, and opened at most once. Every failure is a FileError with the path and the system's reason.
class SystemFile {
 public:
  explicit SystemFile(const char* path);
  SystemFile(const SystemFile&) = delete;
  SystemFile& operator=(const SystemFile&) = delete;

  // Closes. Without a commit the new file is removed and the old one is as it was.
  ~SystemFile();

  void open_for_reading();

  // A regular file, or none yet: writes go to a new file in the same folder, until commit() gives it the
  // path's name. Anything else that can be written is opened itself.
  void open_for_writing();

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
  struct Replacement;                                     // a save that is under way
  using SystemPath = std::filesystem::path::string_type;  // as the system's calls take it

  [[noreturn]] void fail(const char* what, int code) const;
  SystemPath system_path(const char* what) const;
  void open_beside(const SystemPath& target, bool is_there);
  bool create_temporary(unsigned int permissions);
  bool close();

  const std::string m_path;       // as the caller gave it, for messages
  std::intptr_t m_file = -1;      // the system's number or handle; -1 when it is not open
  std::size_t m_taken_ahead = 0;  // bytes that read_start has taken and the system does not count yet
  std::unique_ptr<Replacement> m_replacement;
};

}  // namespace IIO

#endif
