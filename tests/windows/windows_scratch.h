// What the tests of files on Windows look at beside the files' contents.
#ifndef K5AX_TESTS_WINDOWS_WINDOWS_SCRATCH_H
#define K5AX_TESTS_WINDOWS_WINDOWS_SCRATCH_H

#include <windows.h>

#include <sddl.h>

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/scratch.h"

namespace k5ax_test {

inline std::wstring wide(const std::string& path) { return fs::u8path(path).wstring(); }

// What the system calls an error, as messages end with it. English, as in every Wine without a language.
inline std::string system_reason(DWORD code) {
  char text[256];
  const DWORD length = ::FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        code, 0, text, sizeof text, nullptr);
  std::string reason(text, length);
  while (!reason.empty() &&
         (reason.back() == '\n' || reason.back() == '\r' || reason.back() == '.' || reason.back() == ' ')) {
    reason.pop_back();
  }
  EXPECT_FALSE(reason.empty()) << code;
  return reason;
}

inline DWORD attributes(const std::string& path) { return ::GetFileAttributesW(wide(path).c_str()); }

inline void set_attributes(const std::string& path, DWORD attributes) {
  ASSERT_NE(::SetFileAttributesW(wide(path).c_str(), attributes), 0);
}

// Who may do what with a file, as text.
inline std::string access_list(const std::string& path) {
  DWORD size = 0;
  ::GetFileSecurityW(wide(path).c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
  std::vector<unsigned char> rights(size);
  char* text = nullptr;
  if (::GetFileSecurityW(wide(path).c_str(), DACL_SECURITY_INFORMATION, rights.data(), size, &size) == 0 ||
      ::ConvertSecurityDescriptorToStringSecurityDescriptorA(
          rights.data(), SDDL_REVISION_1, DACL_SECURITY_INFORMATION, &text, nullptr) == 0) {
    ADD_FAILURE() << "error " << ::GetLastError() << " of " << path;
    return std::string();
  }
  const std::string list = text;
  ::LocalFree(text);
  return list;
}

inline void set_access_list(const std::string& path, const char* list) {
  void* rights = nullptr;
  ASSERT_NE(::ConvertStringSecurityDescriptorToSecurityDescriptorA(list, SDDL_REVISION_1, &rights, nullptr),
            0);
  EXPECT_NE(::SetFileSecurityW(wide(path).c_str(), DACL_SECURITY_INFORMATION, rights), 0);
  ::LocalFree(rights);
}

// Holds a file open as another program might, letting others do with it what `sharing` says.
class HeldOpen {
 public:
  HeldOpen(const std::string& path, DWORD sharing)
      : m_file(::CreateFileW(wide(path).c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING,
                             FILE_ATTRIBUTE_NORMAL, nullptr)) {
    EXPECT_NE(m_file, INVALID_HANDLE_VALUE) << path;
  }
  HeldOpen(const HeldOpen&) = delete;
  HeldOpen& operator=(const HeldOpen&) = delete;
  ~HeldOpen() { ::CloseHandle(m_file); }

 private:
  HANDLE m_file;
};

inline DWORD open_handles() {
  DWORD count = 0;
  EXPECT_NE(::GetProcessHandleCount(::GetCurrentProcess(), &count), 0);
  return count;
}

}  // namespace k5ax_test

#endif
