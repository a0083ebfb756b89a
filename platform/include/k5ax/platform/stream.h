// Byte streams: the abstract stream that definitions are written to and read from, and the stream over a
// file.
//
// Typed values are little-endian on every host: int and unsigned int as 4 bytes, double as the 8 bytes of
// its IEEE form, so a file written on one machine is read on any other.
//
// These are declarations: the embedded implementation stands in platform/builtin, and another one can take
// its place when the library is configured.
#ifndef K5AX_PLATFORM_STREAM_H
#define K5AX_PLATFORM_STREAM_H

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>

#include <k5ax/platform/export.h>

namespace IIO {

/// Which way a stream goes. A stream goes one way for its whole life.
enum FILE_MODE : int { FILE_READ = 0, FILE_WRITE = 1 };

/// A file that could not be opened, read, written or put in place. what() names the path and the system's
/// reason.
class K5AX_API FileError : public std::runtime_error {
 public:
  explicit FileError(const std::string& message);
  FileError(const FileError&) noexcept = default;
  FileError& operator=(const FileError&) noexcept = default;
  ~FileError() noexcept override;
};

/// A sequence of bytes that is either written or read. Hosts may derive their own, over memory for example.
class K5AX_API Stream {
 public:
  Stream() = default;
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;

  /// May throw: a stream that buffers learns only when it closes whether its bytes have arrived.
  virtual ~Stream() noexcept(false);

  virtual FILE_MODE Mode() const = 0;

  /// Writes `size` bytes as they stand. Null `data` is allowed when `size` is 0.
  virtual void Write(const void* data, std::size_t size) = 0;

  /// Reads `size` bytes to `data`. Null `data` is allowed when `size` is 0.
  virtual void Read(void* data, std::size_t size) = 0;

  /// Writes the value little-endian through Write, in a single call: 4, 4 and 8 bytes.
  Stream& operator<<(int value);
  Stream& operator<<(unsigned int value);
  Stream& operator<<(double value);

  /// Reads the value little-endian through Read, in a single call: 4, 4 and 8 bytes.
  ///
  /// Bytes that Read does not deliver keep what the value held, so a value set beforehand is its own
  /// default when a stream comes short without throwing. When Read throws the value is untouched.
  Stream& operator>>(int& value);
  Stream& operator>>(unsigned int& value);
  Stream& operator>>(double& value);
};

/// A stream over a file, buffered. Every failure is a FileError.
///
/// Saving never harms what was there. A regular file is written to a new file beside it, and that takes the
/// old one's place in the destructor, once everything has been written and flushed to disk; until then, and
/// for good when anything fails, the old file stays byte for byte and nothing else stays in its folder. In
/// particular:
/// - The old file's permissions are kept, its owner and group where the system lets us. A new file gets the
///   usual permissions of the process. A file that may not be written is not replaced either.
/// - A symbolic link stays, and the file that it leads to is replaced or made.
/// - Other hard links to the old file keep the old contents.
/// - A device, a pipe or anything else that is not a regular file is written directly, and not flushed to
///   disk.
class K5AX_API FileStream : public Stream {
 public:
  /// Opens a file for reading or writing. FILE_WRITE needs no old file; FILE_READ does.
  ///
  /// @param path bytes as the system takes them, relative to the working directory of this moment; null,
  ///             empty or a folder is refused with a FileError
  /// @param mode a value that is neither of the two is refused with a FileError
  FileStream(const char* path, FILE_MODE mode);

  /// Closes. When writing, this is where the save succeeds or fails: a FileError says that the old file is
  /// still there. So hold a stream for writing by value; a smart pointer lets no exception out, and ends
  /// the program.
  ///
  /// Throws nothing, and leaves the old file, when the stream is destroyed because an exception is on its
  /// way, or when a Write has failed and said so.
  ~FileStream() noexcept(false) override;

  FILE_MODE Mode() const override;

  /// Throws a FileError when the bytes cannot be written, and when the stream is for reading. Bytes are
  /// buffered, so a failure may come later, in another Write or in the destructor. After a failure every
  /// Write fails.
  void Write(const void* data, std::size_t size) override;

  /// Throws a FileError when the file ends before `size` bytes ("unexpected end of file"), when it cannot
  /// be read, and when the stream is for writing; how much of `data` has been written then is not said.
  /// Takes no memory beyond `data` and the stream's fixed buffer, however large `size` is.
  void Read(void* data, std::size_t size) override;

 private:
  class Buffered;
  std::unique_ptr<Buffered> m_file;
};

}  // namespace IIO

#endif
