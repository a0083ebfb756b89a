// The files of Windows. Paths are UTF-8 outside and UTF-16 where the system is called.

#include "system_file.h"

#include <windows.h>

#include <bcrypt.h>

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include <k5ax/platform/stream.h>

namespace IIO {
namespace {

// A write takes a count of 32 bits; a larger request is cut up here.
constexpr std::size_t kLargestTransfer = std::size_t{1} << 30;
constexpr int kMostNames = 100;  // names tried for the new file; a taken one is one in 2^64
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
// What a new file takes over from the old one beside its access rights.
constexpr DWORD kKeptAttributes =
    FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
constexpr char kIsFolder[] = ": it is a folder";

HANDLE handle(std::intptr_t file) { return reinterpret_cast<HANDLE>(file); }
std::intptr_t number(HANDLE file) { return reinterpret_cast<std::intptr_t>(file); }
int last_error() { return static_cast<int>(::GetLastError()); }

// Closes at the end of its scope.
struct Opened {
  explicit Opened(HANDLE given) : file(given) {}
  Opened(const Opened&) = delete;
  Opened& operator=(const Opened&) = delete;
  ~Opened() {
    if (is_open()) ::CloseHandle(file);
  }
  bool is_open() const { return file != INVALID_HANDLE_VALUE; }

  const HANDLE file;
};

HANDLE open_existing(const std::wstring& path, DWORD access, DWORD flags) {
  return ::CreateFileW(path.c_str(), access, kShareAll, nullptr, OPEN_EXISTING, flags, nullptr);
}

// Empty for what is not UTF-8.
std::wstring to_wide(const std::string& text) {
  const int size = static_cast<int>(text.size());
  const int length = ::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  ::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), size, wide.data(), length);
  return wide;
}

std::string to_utf8(const std::wstring& wide) {
  const int size = static_cast<int>(wide.size());
  const int length = ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(length), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, text.data(), length, nullptr, nullptr);
  return text;
}

// The system's words for an error, in the user's language, without the stop and the line end behind them.
std::string reason_of(int code) {
  wchar_t text[512];
  const DWORD length =
      ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                       static_cast<DWORD>(code), 0, text, static_cast<DWORD>(std::size(text)), nullptr);
  std::wstring reason(text, length);
  reason.erase(reason.find_last_not_of(L" .\r\n") + 1);
  return reason.empty() ? "error " + std::to_string(code) : to_utf8(reason);
}

bool starts_with(const std::wstring& text, const wchar_t* beginning) { return text.rfind(beginning, 0) == 0; }

// What goes to a driver and not to a file system: NUL, a port, a named pipe.
bool is_device(const std::wstring& full_path) { return starts_with(full_path, L"\\\\.\\"); }

// The path from the root on, so that it stays the same one whatever the host's working directory does, in the
// form that may be longer than 260 characters. Empty, with the system's error set, for what is no path.
std::wstring full_path(const std::wstring& path) {
  if (starts_with(path, L"\\\\?\\")) return path;

  const DWORD room = ::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
  if (room == 0) return std::wstring();
  std::wstring full(room, L'\0');
  full.resize(::GetFullPathNameW(path.c_str(), room, full.data(), nullptr));
  if (full.empty() || is_device(full)) return full;
  return starts_with(full, L"\\\\") ? L"\\\\?\\UNC" + full.substr(1) : L"\\\\?\\" + full;
}

// Where an open file really stands, all links followed. Empty where the file system cannot tell.
std::wstring final_path(HANDLE file) {
  const DWORD room = ::GetFinalPathNameByHandleW(file, nullptr, 0, FILE_NAME_NORMALIZED);
  if (room == 0) return std::wstring();
  std::wstring path(room, L'\0');
  path.resize(::GetFinalPathNameByHandleW(file, path.data(), room, FILE_NAME_NORMALIZED));
  return path;
}

bool is_folder(const std::wstring& path) {
  const DWORD attributes = ::GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// A name that nobody else uses or expects. Empty, with the system's error set, when there are no random
// numbers.
std::wstring unpredictable_name() {
  std::array<unsigned char, 8> random;
  constexpr ULONG kSize = static_cast<ULONG>(random.size());
  if (::BCryptGenRandom(nullptr, random.data(), kSize, BCRYPT_USE_SYSTEM_PREFERRED_RNG) != 0) {
    ::SetLastError(ERROR_GEN_FAILURE);
    return std::wstring();
  }

  std::wstring name = L".k5ax-";
  for (const unsigned int byte : random) {
    name += L"0123456789abcdef"[byte >> 4];
    name += L"0123456789abcdef"[byte & 15];
  }
  return name + L".tmp";
}

// Who may do what with a file, for CreateFileW. Empty where the file system does not say.
std::vector<unsigned char> access_rights(const std::wstring& path) {
  DWORD size = 0;
  ::GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
  std::vector<unsigned char> rights(size);
  if (::GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, rights.data(), size, &size) == 0)
    rights.clear();
  return rights;
}

}  // namespace

// The new file and the one whose place it takes, both from the root on.
struct SystemFile::Replacement {
  Replacement() = default;
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;
  ~Replacement() {
    if (!temporary.empty()) ::DeleteFileW(temporary.c_str());
  }

  std::wstring temporary;
  std::wstring target;
  std::vector<unsigned char> rights;  // the old file's, empty without one
};

SystemFile::SystemFile(const char* path) : m_path(path) {}

SystemFile::~SystemFile() { close(); }

void SystemFile::fail(const std::string& reason) const { throw FileError('"' + m_path + "\": " + reason); }

void SystemFile::fail(const char* what, int code) const { fail(what + (": " + reason_of(code))); }

// False with the system's error set when it reports a failure; the file is closed in any case.
bool SystemFile::close() {
  if (m_file == -1) return true;

  return ::CloseHandle(handle(std::exchange(m_file, -1))) != 0;
}

SystemFile::SystemPath SystemFile::system_path(const char* what) const {
  if (m_path.empty()) fail(what, ERROR_FILE_NOT_FOUND);
  const std::wstring wide = to_wide(m_path);
  if (wide.empty()) fail(what + std::string(": the path is not UTF-8"));
  SystemPath path = full_path(wide);
  if (path.empty()) fail(what, last_error());
  return path;
}

void SystemFile::open_for_reading() {
  const SystemPath path = system_path("cannot open for reading");
  m_file = number(open_existing(path, GENERIC_READ, FILE_ATTRIBUTE_NORMAL));
  if (m_file != -1) return;

  const int code = last_error();
  if (is_folder(path)) fail(std::string("cannot open for reading") + kIsFolder);
  fail("cannot open for reading", code);
}

void SystemFile::open_for_writing() {
  constexpr char kCannot[] = "cannot open for writing";
  const SystemPath path = system_path(kCannot);
  // Not looked at first: for a pipe, opening it is a connection already.
  if (!is_device(path)) {
    const Opened found(open_existing(path, FILE_READ_ATTRIBUTES, FILE_FLAG_BACKUP_SEMANTICS));
    const int code = last_error();
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    const bool has_name = attributes != INVALID_FILE_ATTRIBUTES;
    if (has_name && (attributes & FILE_ATTRIBUTE_READONLY) != 0 && !is_folder(path))
      fail(std::string(kCannot) + ": it is read-only");
    if (path.back() == L'\\' || is_folder(path)) fail(std::string(kCannot) + kIsFolder);
    if (!found.is_open() && code != ERROR_FILE_NOT_FOUND) fail(kCannot, code);
    if (!found.is_open() && has_name) fail(std::string(kCannot) + ": it is a link that leads to nothing");

    if (!found.is_open() || ::GetFileType(found.file) == FILE_TYPE_DISK) {
      const bool is_link = has_name && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
      const SystemPath target = is_link ? final_path(found.file) : path;
      if (target.empty()) fail(kCannot, last_error());
      open_beside(target, found.is_open());
      return;
    }
  }

  m_file = number(open_existing(path, GENERIC_WRITE, FILE_ATTRIBUTE_NORMAL));
  if (m_file == -1) fail(kCannot, last_error());
}

// Opens the new file in the folder of `target`.
void SystemFile::open_beside(const SystemPath& target, bool is_there) {
  m_replacement = std::make_unique<Replacement>();
  m_replacement->target = target;
  DWORD attributes = FILE_ATTRIBUTE_NORMAL;
  if (is_there) {
    // To write to it and to take its name away is what a save comes to. Who protects the file, or has it open
    // and does not share it, says so now and not at the end.
    const Opened old(open_existing(target, GENERIC_WRITE | DELETE, FILE_ATTRIBUTE_NORMAL));
    if (!old.is_open()) fail("cannot open for writing", last_error());
    const DWORD kept = ::GetFileAttributesW(target.c_str()) & kKeptAttributes;
    if (kept != 0) attributes = kept;
    m_replacement->rights = access_rights(target);
  }
  if (!create_temporary(attributes)) fail("cannot create a file in its folder", last_error());
}

// With the old file's access rights from the start. False with the system's error set when no file could be
// made.
bool SystemFile::create_temporary(unsigned int attributes) {
  const SystemPath& target = m_replacement->target;
  const SystemPath folder = target.substr(0, target.rfind(L'\\') + 1);
  SECURITY_ATTRIBUTES security = {sizeof security, m_replacement->rights.data(), FALSE};
  SECURITY_ATTRIBUTES* const given = m_replacement->rights.empty() ? nullptr : &security;
  for (int attempt = 0; attempt < kMostNames; ++attempt) {
    const SystemPath name = unpredictable_name();
    if (name.empty()) return false;
    SystemPath path = folder + name;
    m_file = number(
        ::CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, given, CREATE_NEW, attributes, nullptr));
    if (m_file != -1) {
      m_replacement->temporary = std::move(path);
      return true;
    }
    if (last_error() != ERROR_FILE_EXISTS) return false;
  }
  return false;
}

// A pipe or a console has no first bytes before somebody sends them.
std::size_t SystemFile::read_start(void* data, std::size_t size) {
  return ::GetFileType(handle(m_file)) == FILE_TYPE_DISK ? read_some(data, size) : 0;
}

std::size_t SystemFile::read_some(void* data, std::size_t size) {
  const DWORD request = static_cast<DWORD>(std::min(size, kLargestTransfer));
  DWORD count = 0;
  if (::ReadFile(handle(m_file), data, request, &count, nullptr) != 0) return count;
  // Whoever wrote into a pipe has closed it, which is its end.
  if (last_error() != ERROR_BROKEN_PIPE) fail("cannot read", last_error());
  return 0;
}

void SystemFile::write_all(const void* data, std::size_t size) {
  const char* next = static_cast<const char*>(data);
  while (size > 0) {
    const DWORD request = static_cast<DWORD>(std::min(size, kLargestTransfer));
    DWORD count = 0;
    if (::WriteFile(handle(m_file), next, request, &count, nullptr) == 0) fail("cannot write", last_error());
    if (count == 0) fail("cannot write", ERROR_WRITE_FAULT);
    next += count;
    size -= count;
  }
}

// ReplaceFileW is not used: it may fail with the old file gone. A rename is all or nothing.
void SystemFile::commit() {
  if (m_replacement && ::FlushFileBuffers(handle(m_file)) == 0) fail("cannot flush to disk", last_error());
  if (!close()) fail("cannot close", last_error());
  if (!m_replacement) return;

  Replacement& save = *m_replacement;
  constexpr DWORD kFlags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  if (::MoveFileExW(save.temporary.c_str(), save.target.c_str(), kFlags) == 0) {
    fail("cannot put the new file in place", last_error());
  }
  save.temporary.clear();
}

}  // namespace IIO
