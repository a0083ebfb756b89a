/// @file
/// Byte streams: the abstract stream that definitions are written to and read from, and the stream over a
/// file.
///
/// Typed values are little-endian on every host: int and unsigned int as 4 bytes, double as the 8 bytes of
/// its IEEE form, so a file written on one machine is read on any other.
///
/// These are declarations: the embedded implementation stands in platform/builtin, and another one can take
/// its place when the library is configured.
#ifndef K5AX_PLATFORM_STREAM_H
#define K5AX_PLATFORM_STREAM_H

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>

#include <k5ax/platform/export.h>

/// Byte streams, and the stream over a file.
namespace IIO {

/// Which way a stream goes. A stream goes one way for its whole life.
enum FILE_MODE : int {
  FILE_READ = 0,  ///< bytes come out of the stream
  FILE_WRITE = 1  ///< bytes go into the stream
};

/// A file that could not be opened, read, written or put in place. what() names the path and the system's
/// reason.
class K5AX_API FileError : public std::runtime_error {
 public:
  /// An error with its text.
  /// @param message  what `what()` gives: the path and the system's reason
  explicit FileError(const std::string& message);

  /// Copies the text, without asking for memory.
  FileError(const FileError&) noexcept = default;

  /// Takes another error's text, without asking for memory.
  /// @return this error
  FileError& operator=(const FileError&) noexcept = default;

  /// Errors may be deleted through std::exception.
  ~FileError() noexcept override;
};

/// A sequence of bytes that is either written or read. Hosts may derive their own, over memory for example.
class K5AX_API Stream {
 public:
  /// Nothing to set up.
  Stream() = default;

  /// There is none: two would go on from the same place.
  Stream(const Stream&) = delete;

  /// There is none, for the same reason.
  Stream& operator=(const Stream&) = delete;

  /// May throw: a stream that buffers learns only when it closes whether its bytes have arrived.
  virtual ~Stream() noexcept(false);

  /// Which way the stream goes.
  /// @return reading or writing, the same at every call
  virtual FILE_MODE Mode() const = 0;

  /// Writes bytes as they stand. A stream says by an exception that it could not.
  /// @param data  the first of them; may be null when `size` is 0
  /// @param size  their number
  virtual void Write(const void* data, std::size_t size) = 0;

  /// Reads bytes. A stream says by an exception that it could not.
  /// @param[out] data  room for them; may be null when `size` is 0
  /// @param size       their number
  virtual void Read(void* data, std::size_t size) = 0;

  /// Writes a value little-endian through Write, in a single call: 4 bytes.
  /// @param value  any value
  /// @return this stream
  Stream& operator<<(int value);

  /// Writes a value little-endian through Write, in a single call: 4 bytes.
  /// @param value  any value
  /// @return this stream
  Stream& operator<<(unsigned int value);

  /// Writes a value little-endian through Write, in a single call: the 8 bytes of its IEEE form.
  /// @param value  any bits, infinities and NaN included
  /// @return this stream
  Stream& operator<<(double value);

  /// Reads a value little-endian through Read, in a single call: 4 bytes.
  ///
  /// Bytes that Read does not deliver keep what the value held, so a value set beforehand is its own default
  /// when a stream comes short without throwing. When Read throws the value is untouched.
  /// @param[in,out] value  what was read
  /// @return this stream
  Stream& operator>>(int& value);

  /// The same for an unsigned value: 4 bytes.
  /// @param[in,out] value  what was read
  /// @return this stream
  Stream& operator>>(unsigned int& value);

  /// The same for a double: 8 bytes.
  /// @param[in,out] value  what was read
  /// @return this stream
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
/// - A symbolic link stays, and the file that it leads to is replaced or made. (On Windows a link that leads
///   to nothing is refused.)
/// - Other hard links to the old file keep the old contents.
/// - A device, a pipe or anything else that is not a regular file is written directly, and not flushed to
///   disk.
class K5AX_API FileStream : public Stream {
 public:
  /// Opens a file for reading or writing. FILE_WRITE needs no old file; FILE_READ does.
  ///
  /// @param path bytes as the system takes them, on Windows UTF-8, relative to the working directory of this
  ///             moment; null, empty or a folder is refused with a FileError
  /// @param mode a value that is neither of the two is refused with a FileError
  FileStream(const char* path, FILE_MODE mode);

  /// Closes. When writing, this is where the save succeeds or fails: a FileError says that the old file is
  /// still there. So hold a stream for writing by value; a smart pointer lets no exception out, and ends
  /// the program.
  ///
  /// Throws nothing, and leaves the old file, when the stream is destroyed because an exception is on its
  /// way, or when a Write has failed and said so.
  ~FileStream() noexcept(false) override;

  /// Which way the stream goes.
  /// @return as it was opened
  FILE_MODE Mode() const override;

  /// Writes bytes. A FileError is thrown when they cannot be written, and when the stream is for reading.
  /// They are buffered, so a failure may come later, in another Write or in the destructor. After a failure
  /// every Write fails.
  /// @param data  the first of them; may be null when `size` is 0
  /// @param size  their number
  void Write(const void* data, std::size_t size) override;

  /// Reads bytes. Takes no memory beyond `data` and the stream's fixed buffer, however large `size` is. A
  /// FileError is thrown when the file ends before ("unexpected end of file"), when it cannot be read, and
  /// when the stream is for writing; how much of `data` has been written then is not said.
  /// @param[out] data  room for them; may be null when `size` is 0
  /// @param size       their number
  void Read(void* data, std::size_t size) override;

 private:
  class Buffered;
  std::unique_ptr<Buffered> m_file;
};

}  // namespace IIO

#endif
