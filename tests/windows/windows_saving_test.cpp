// Saving on Windows: what is refused, what a new file takes over from the old one, and every call that fails.

#include "windows_scratch.h"

#include <cstring>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <k5ax/platform/stream.h>

#include "redirected_call.h"

namespace {

namespace fs = std::filesystem;
using IIO::FILE_READ;
using IIO::FILE_WRITE;
using IIO::FileError;
using IIO::FileStream;
using k5ax_test::access_list;
using k5ax_test::attributes;
using k5ax_test::contents;
using k5ax_test::error_of;
using k5ax_test::HeldOpen;
using k5ax_test::make_file;
using k5ax_test::Names;
using k5ax_test::open_handles;
using k5ax_test::RedirectedCall;
using k5ax_test::save;
using k5ax_test::ScratchFolder;
using k5ax_test::set_access_list;
using k5ax_test::set_attributes;
using k5ax_test::system_reason;
using testing::EndsWith;

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

TEST(WindowsSave, FolderIsNotReplaced) {
  const ScratchFolder folder;
  fs::create_directory(folder / "machine");
  EXPECT_THAT(error_of([&] { save(folder / "machine", "new"); }),
              EndsWith("cannot open for writing: it is a folder"));
  EXPECT_TRUE(fs::is_directory(folder / "machine"));
  EXPECT_EQ(folder.names(), Names{"machine"});
}

TEST(WindowsSave, PathThatEndsLikeAFolderIsRefused) {
  const ScratchFolder folder;
  EXPECT_THAT(error_of([&] { save(folder / "machine/", "new"); }), EndsWith("it is a folder"));
  EXPECT_TRUE(folder.names().empty());
}

TEST(WindowsSave, FolderIsNotRead) {
  const ScratchFolder folder;
  EXPECT_THAT(error_of([&] { FileStream(folder.path().c_str(), FILE_READ); }),
              EndsWith("cannot open for reading: it is a folder"));
}

TEST(WindowsSave, MissingFolderIsRefused) {
  const ScratchFolder folder;
  EXPECT_THAT(error_of([&] { save(folder / "none/machine", "new"); }),
              EndsWith(system_reason(ERROR_PATH_NOT_FOUND)));
  EXPECT_TRUE(folder.names().empty());
}

TEST(WindowsSave, PathBelowAFileIsRefused) {
  const ScratchFolder folder;
  make_file(folder / "file", "old");
  EXPECT_NE(error_of([&] { save(folder / "file/machine", "new"); }), "(no FileError)");
  EXPECT_EQ(contents(folder / "file"), "old");
  EXPECT_EQ(folder.names(), Names{"file"});
}

TEST(WindowsSave, ReadOnlyFileIsNotReplaced) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  set_attributes(folder / "machine", FILE_ATTRIBUTE_READONLY);
  EXPECT_THAT(error_of([&] { save(folder / "machine", "new"); }),
              EndsWith("cannot open for writing: it is read-only"));
  EXPECT_EQ(contents(folder / "machine"), "old");
  EXPECT_EQ(folder.names(), Names{"machine"});
  set_attributes(folder / "machine", FILE_ATTRIBUTE_NORMAL);
}

TEST(WindowsSave, FileThatAnotherProgramKeepsToItselfIsNotReplaced) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  {
    const HeldOpen held(folder / "machine", FILE_SHARE_READ);
    EXPECT_THAT(error_of([&] { save(folder / "machine", "new"); }),
                EndsWith("cannot open for writing: " + system_reason(ERROR_SHARING_VIOLATION)));
  }
  EXPECT_EQ(contents(folder / "machine"), "old");
  EXPECT_EQ(folder.names(), Names{"machine"});
}

TEST(WindowsSave, FileThatAnotherProgramTakesMeanwhileIsNotReplaced) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  auto* const stream = new FileStream((folder / "machine").c_str(), FILE_WRITE);
  stream->Write("new", 3);
  {
    const HeldOpen held(folder / "machine", FILE_SHARE_READ);
    EXPECT_THAT(error_of([&] { delete stream; }), testing::HasSubstr("cannot put the new file in place: "));
  }
  EXPECT_EQ(contents(folder / "machine"), "old");
  EXPECT_EQ(folder.names(), Names{"machine"});
}

TEST(WindowsSave, FileThatAnotherProgramReadsAndSharesIsRead) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  const HeldOpen held(folder / "machine", kShareAll);
  FileStream stream((folder / "machine").c_str(), FILE_READ);
  std::string text(3, '?');
  stream.Read(text.data(), text.size());
  EXPECT_EQ(text, "old");
}

TEST(WindowsSave, HiddenFileStaysHidden) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  set_attributes(folder / "machine", FILE_ATTRIBUTE_HIDDEN);
  save(folder / "machine", "new");
  EXPECT_EQ(contents(folder / "machine"), "new");
  EXPECT_NE(attributes(folder / "machine") & FILE_ATTRIBUTE_HIDDEN, 0u);
}

// SDDL: protected from what the folder hands down; the owner of the file may do everything, nobody else
// anything. The control is a file that has what the folder hands down.
TEST(WindowsSave, AccessRightsOfTheOldFileAreKept) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  const std::string usual = access_list(folder / "machine");
  set_access_list(folder / "machine", "D:P(A;;FA;;;BA)(A;;FA;;;SY)");
  const std::string before = access_list(folder / "machine");
  ASSERT_NE(before, usual);
  save(folder / "machine", "new");
  EXPECT_EQ(contents(folder / "machine"), "new");
  EXPECT_EQ(access_list(folder / "machine"), before);
}

TEST(WindowsSave, SymbolicLinkStaysAndItsFileIsReplaced) {
  const ScratchFolder folder;
  fs::create_directory(folder / "deep");
  make_file(folder / "deep/machine", "old");
  ::CreateSymbolicLinkW(k5ax_test::wide(folder / "link").c_str(), L"deep\\machine",
                        SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE);
  if (attributes(folder / "link") == INVALID_FILE_ATTRIBUTES)
    GTEST_SKIP() << "no symbolic links for this user or in this Wine";
  save(folder / "link", "new");
  EXPECT_NE(attributes(folder / "link") & FILE_ATTRIBUTE_REPARSE_POINT, 0u);
  EXPECT_EQ(contents(folder / "deep/machine"), "new");
}

TEST(WindowsSave, NullDeviceTakesEverythingAndHasNothing) {
  EXPECT_EQ(error_of([] { save("NUL", std::string(300000, 'n')); }), "(no FileError)");
  FileStream stream("NUL", FILE_READ);
  char byte = 0;
  EXPECT_THAT(error_of([&] { stream.Read(&byte, 1); }), EndsWith("unexpected end of file"));
}

TEST(WindowsSave, ClosesItsFiles) {
  const ScratchFolder folder;
  const std::string path = folder / "machine";
  const auto work = [&] {
    save(path, "new");
    save(path, "newer");
    FileStream(path.c_str(), FILE_READ);
    EXPECT_THROW(save(folder / "none/machine", "new"), FileError);
    EXPECT_THROW(save(folder.path(), "new"), FileError);
    EXPECT_THROW(FileStream(folder.path().c_str(), FILE_READ), FileError);
  };
  work();  // once for nothing: the system opens something for itself
  const DWORD before = open_handles();
  work();
  EXPECT_EQ(open_handles(), before);
}

// ---- calls that fail, one after the other ----

std::vector<std::string> calls;  // those of the library, in their order

BOOL WINAPI disk_is_full(HANDLE, const void*, DWORD, DWORD*, OVERLAPPED*) {
  ::SetLastError(ERROR_DISK_FULL);
  return FALSE;
}
BOOL WINAPI takes_nothing(HANDLE, const void*, DWORD, DWORD* count, OVERLAPPED*) {
  *count = 0;
  return TRUE;
}
BOOL WINAPI takes_one_byte(HANDLE file, const void* data, DWORD, DWORD* count, OVERLAPPED*) {
  return ::WriteFile(file, data, 1, count, nullptr);
}
BOOL WINAPI flush_fails(HANDLE) {
  ::SetLastError(ERROR_IO_DEVICE);
  return FALSE;
}
BOOL WINAPI close_fails(HANDLE file) {
  ::CloseHandle(file);
  ::SetLastError(ERROR_IO_DEVICE);
  return FALSE;
}
BOOL WINAPI move_fails(const wchar_t*, const wchar_t*, DWORD) {
  ::SetLastError(ERROR_ACCESS_DENIED);
  return FALSE;
}
BOOL WINAPI read_fails(HANDLE, void*, DWORD, DWORD*, OVERLAPPED*) {
  ::SetLastError(ERROR_CRC);
  return FALSE;
}
BOOL WINAPI noted_flush(HANDLE file) {
  calls.push_back("flush");
  return ::FlushFileBuffers(file);
}
BOOL WINAPI noted_move(const wchar_t* from, const wchar_t* to, DWORD flags) {
  calls.push_back("move");
  return ::MoveFileExW(from, to, flags);
}
int zero_names = 0;  // so many random names to come are zeros
LONG WINAPI zeros_then_ones(void*, unsigned char* bytes, ULONG size, ULONG) {
  std::memset(bytes, zero_names-- > 0 ? 0 : 0x11, size);
  return 0;
}
LONG WINAPI no_numbers(void*, unsigned char*, ULONG, ULONG) { return -1; }

template <class Function>
k5ax_test::AnyFunction any(Function function) {
  return reinterpret_cast<k5ax_test::AnyFunction>(function);
}

// Saves over an old file while a call fails: what is said, and that nothing has changed.
void expect_failed_save(const char* call, k5ax_test::AnyFunction failing, const std::string& message) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  {
    const RedirectedCall redirected(call, failing);
    EXPECT_EQ(error_of([&] { save(folder / "machine", "new"); }),
              '"' + (folder / "machine") + "\": " + message);
  }
  EXPECT_EQ(contents(folder / "machine"), "old");
  EXPECT_EQ(folder.names(), Names{"machine"});
}

TEST(WindowsFailedSave, FullDiskLeavesTheOldFile) {
  expect_failed_save("WriteFile", any(disk_is_full), "cannot write: " + system_reason(ERROR_DISK_FULL));
}

TEST(WindowsFailedSave, DiskThatTakesNothingLeavesTheOldFile) {
  expect_failed_save("WriteFile", any(takes_nothing), "cannot write: " + system_reason(ERROR_WRITE_FAULT));
}

TEST(WindowsFailedSave, FailingFlushToDiskLeavesTheOldFile) {
  expect_failed_save("FlushFileBuffers", any(flush_fails),
                     "cannot flush to disk: " + system_reason(ERROR_IO_DEVICE));
}

TEST(WindowsFailedSave, FailingCloseLeavesTheOldFile) {
  expect_failed_save("CloseHandle", any(close_fails), "cannot close: " + system_reason(ERROR_IO_DEVICE));
}

TEST(WindowsFailedSave, FailingRenameLeavesTheOldFile) {
  expect_failed_save("MoveFileExW", any(move_fails),
                     "cannot put the new file in place: " + system_reason(ERROR_ACCESS_DENIED));
}

TEST(WindowsFailedSave, SystemWithoutRandomNumbersIsRefused) {
  const ScratchFolder folder;
  const RedirectedCall redirected("BCryptGenRandom", any(no_numbers));
  EXPECT_THAT(error_of([&] { save(folder / "machine", "new"); }),
              EndsWith("cannot create a file in its folder: " + system_reason(ERROR_GEN_FAILURE)));
  EXPECT_TRUE(folder.names().empty());
}

TEST(WindowsFailedSave, FailingReadTellsTheSystemsReason) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  const RedirectedCall redirected("ReadFile", any(read_fails));
  EXPECT_THAT(error_of([&] { FileStream((folder / "machine").c_str(), FILE_READ); }),
              EndsWith("cannot read: " + system_reason(ERROR_CRC)));
}

TEST(WindowsSave, GoesOnWhenTheDiskTakesOneByteAtATime) {
  const ScratchFolder folder;
  {
    const RedirectedCall redirected("WriteFile", any(takes_one_byte));
    save(folder / "machine", "in pieces");
  }
  EXPECT_EQ(contents(folder / "machine"), "in pieces");
}

// A machine that loses its power keeps the old file or the new one, never half a file.
TEST(WindowsSave, NewFileIsFlushedToDiskBeforeItTakesItsPlace) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  calls.clear();
  const RedirectedCall flush("FlushFileBuffers", any(noted_flush));
  const RedirectedCall move("MoveFileExW", any(noted_move));
  save(folder / "machine", "new");
  EXPECT_EQ(calls, (std::vector<std::string>{"flush", "move"}));
  EXPECT_EQ(contents(folder / "machine"), "new");
}

TEST(WindowsSave, NameThatIsTakenIsPassedOver) {
  const ScratchFolder folder;
  const std::string taken = folder / ".k5ax-0000000000000000.tmp";
  make_file(taken, "somebody else's");
  {
    const RedirectedCall redirected("BCryptGenRandom", any(zeros_then_ones));
    zero_names = 2;
    save(folder / "machine", "new");
    EXPECT_EQ(zero_names, -1);
  }
  EXPECT_EQ(contents(folder / "machine"), "new");
  EXPECT_EQ(contents(taken), "somebody else's");
  EXPECT_EQ(folder.names().size(), 2u);
}

TEST(WindowsFailedSave, NameThatStaysTakenIsRefused) {
  const ScratchFolder folder;
  make_file(folder / ".k5ax-0000000000000000.tmp", "somebody else's");
  const RedirectedCall redirected("BCryptGenRandom", any(zeros_then_ones));
  zero_names = 1000000;
  EXPECT_THAT(error_of([&] { save(folder / "machine", "new"); }),
              EndsWith("cannot create a file in its folder: " + system_reason(ERROR_FILE_EXISTS)));
  EXPECT_EQ(folder.names().size(), 1u);
}

}  // namespace
