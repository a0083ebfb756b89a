// Where the bytes of a tool path come from: a file, or standard input.
#ifndef K5AX_TOOL_TOOLPATH_INPUT_H
#define K5AX_TOOL_TOOLPATH_INPUT_H

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>

namespace tool {

/// Bytes in order, as they come.
class Input {
 public:
  /// Opens the file; "-" is `standard`, which must outlive this. Throws InputError.
  Input(const std::string& path, std::istream& standard);
  ~Input();
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;

  /// As the person named it, for messages.
  const std::string& name() const { return m_name; }

  /// How many bytes there are in all; 0 when nobody knows, as for a pipe.
  std::uint64_t size() const { return m_size; }

  /// Reads what is there, at least one byte and at most `size`, and waits for it where it has to. 0 is the
  /// end. Throws InputError.
  std::size_t read(char* data, std::size_t size);

 private:
  std::size_t read_stream(char* data, std::size_t size);

  std::string m_name;
  std::istream* m_stream = nullptr;  // null for a file
  int m_file = -1;
  std::uint64_t m_size = 0;
};

}  // namespace tool

#endif
