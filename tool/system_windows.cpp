// The tool on Windows: UTF-8 inside, UTF-16 where the system is called.
#include "tool/system.h"

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <system_error>

namespace tool {
namespace {

constexpr std::size_t kLargestTransfer = std::size_t(1) << 30;

std::string to_utf8(const wchar_t* wide) {
  const int size = ::WideCharToMultiByte(CP_UTF8, 0, wide, -1, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(std::max(size, 1)), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, wide, -1, text.data(), size, nullptr, nullptr);
  text.pop_back();  // the zero behind it
  return text;
}

// Empty, which no file is called, for what is not UTF-8.
std::wstring to_wide(const std::string& text) {
  const int size = ::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.c_str(), -1, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(std::max(size, 1)), L'\0');
  ::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.c_str(), -1, wide.data(), size);
  wide.pop_back();
  return wide;
}

// What the C library would call an error of the system.
int errno_of(DWORD code) {
  const std::error_condition condition =
      std::system_category().default_error_condition(static_cast<int>(code));
  return condition.category() == std::generic_category() ? condition.value() : EIO;
}

bool is_folder(const std::wstring& path) {
  const DWORD attributes = ::GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// The code page that the console had; the window may be used by others afterwards.
UINT code_page_before = 0;

}  // namespace

void prepare_process() {
  for (const StandardStream stream : {StandardStream::input, StandardStream::output, StandardStream::error})
    ::_setmode(static_cast<int>(stream), _O_BINARY);
  code_page_before = ::GetConsoleOutputCP();
  if (code_page_before == 0 || code_page_before == CP_UTF8) return;  // 0: there is no console
  ::SetConsoleOutputCP(CP_UTF8);
  std::atexit([] { ::SetConsoleOutputCP(code_page_before); });
}

std::vector<std::string> arguments_of(int argc, char** argv) {
  int count = 0;
  wchar_t** const wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  if (wide == nullptr) return {argv, argv + argc};
  std::vector<std::string> arguments;
  for (int i = 0; i < count; ++i) arguments.push_back(to_utf8(wide[i]));
  ::LocalFree(wide);
  return arguments;
}

bool is_terminal(StandardStream stream) {
  const HANDLE console = reinterpret_cast<HANDLE>(::_get_osfhandle(static_cast<int>(stream)));
  DWORD mode = 0;
  if (::GetConsoleMode(console, &mode) == 0) return false;
  return ::SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

std::FILE* open_stream(const std::string& path) { return ::_wfopen(to_wide(path).c_str(), L"rb"); }

// Shared for deletion, which _wopen does not do: the output may be about to take the place of this file.
int open_file(const std::string& path) {
  const std::wstring wide = to_wide(path);
  const HANDLE file =
      ::CreateFileW(wide.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    const int reason = errno_of(::GetLastError());
    errno = is_folder(wide) ? EISDIR : reason;
    return -1;
  }
  const int number = ::_open_osfhandle(reinterpret_cast<std::intptr_t>(file), _O_RDONLY | _O_BINARY);
  if (number < 0) ::CloseHandle(file);
  return number;
}

void close_file(int file) { ::_close(file); }

std::uint64_t size_of_file(int file) {
  struct _stat64 status {};
  const bool is_regular = ::_fstat64(file, &status) == 0 && (status.st_mode & _S_IFMT) == _S_IFREG;
  return is_regular ? static_cast<std::uint64_t>(status.st_size) : 0;
}

std::ptrdiff_t read_file(int file, char* data, std::size_t size) {
  return ::_read(file, data, static_cast<unsigned int>(std::min(size, kLargestTransfer)));
}

}  // namespace tool
