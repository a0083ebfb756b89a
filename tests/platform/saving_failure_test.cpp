// Saves that a POSIX system lets fail: what is said, and that the old file stays byte for byte with nothing
// left beside it.

#include <fcntl.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <k5ax/platform/stream.h>

#include "scratch.h"
#include "scratch_process.h"
#include "system_calls.h"

namespace {

namespace fs = std::filesystem;
using IIO::FILE_WRITE;
using IIO::FileError;
using IIO::FileStream;
using k5ax_test::become_anybody;
using k5ax_test::contents;
using k5ax_test::error_of;
using k5ax_test::fill_the_disk_at;
using k5ax_test::in_a_process;
using k5ax_test::make_file;
using k5ax_test::Names;
using k5ax_test::reason;
using k5ax_test::save;
using k5ax_test::ScratchFolder;
using testing::EndsWith;
using testing::HasSubstr;

TEST(FailedSave, FullDiskLeavesTheOldFile) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  const std::string path = folder / "machine";
  EXPECT_TRUE(in_a_process([&] {
    fill_the_disk_at(100000);
    const std::string message = error_of([&] { save(path, std::string(300000, 'n')); });
    return message == '"' + path + "\": cannot write: " + reason(EFBIG);
  }));
  EXPECT_EQ(contents(path), "old");
  EXPECT_EQ(folder.names(), Names{"machine"});
}

// So few bytes wait in the buffer, and only the destructor meets the full disk.
TEST(FailedSave, FullDiskAtTheEndLeavesTheOldFile) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  const std::string path = folder / "machine";
  EXPECT_TRUE(in_a_process([&] {
    fill_the_disk_at(10);
    auto* const stream = new FileStream(path.c_str(), FILE_WRITE);
    stream->Write("more than ten bytes", 19);
    return error_of([&] { delete stream; }) == '"' + path + "\": cannot write: " + reason(EFBIG);
  }));
  EXPECT_EQ(contents(path), "old");
  EXPECT_EQ(folder.names(), Names{"machine"});
}

TEST(FailedSave, FullDiskLeavesNoNewFile) {
  const ScratchFolder folder;
  const std::string path = folder / "machine";
  EXPECT_TRUE(in_a_process([&] {
    fill_the_disk_at(10);
    return error_of([&] { save(path, "more than ten bytes"); }) != "(no FileError)";
  }));
  EXPECT_TRUE(folder.names().empty());
}

// Somebody ties the links to a circle after the system was asked whether the file is there.
TEST(FailedSave, LinksThatBecomeACircleAreRefused) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  const std::string path = folder / "machine";
  std::string message;
  {
    k5ax_test::SystemCalls calls;
    calls.endless_links = true;
    message = error_of([&] { save(path, "new"); });
  }
  EXPECT_EQ(message, '"' + path + "\": cannot open for writing: " + reason(ELOOP));
  EXPECT_EQ(contents(path), "old");
  EXPECT_EQ(folder.names(), Names{"machine"});
}

TEST(FailedSave, WritingAfterAFailedWriteFailsToo) {
  const std::string more_than_any_buffer(200000, 'n');
  FileStream stream("/dev/full", FILE_WRITE);
  EXPECT_EQ(error_of([&] { stream.Write(more_than_any_buffer.data(), more_than_any_buffer.size()); }),
            "\"/dev/full\": cannot write: " + reason(ENOSPC));
  EXPECT_EQ(error_of([&] { stream.Write("n", 1); }), "\"/dev/full\": cannot write: an earlier write failed");
}

TEST(FailedSave, FullDeviceSaysSo) {
  EXPECT_EQ(error_of([] { save("/dev/full", "new"); }), "\"/dev/full\": cannot write: " + reason(ENOSPC));
}

TEST(FailedSave, FailingFlushToDiskLeavesTheOldFile) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  {
    k5ax_test::SystemCalls calls;
    calls.flush_error = EIO;
    EXPECT_THAT(error_of([&] { save(folder / "machine", "new"); }),
                EndsWith("cannot flush to disk: " + reason(EIO)));
  }
  EXPECT_EQ(contents(folder / "machine"), "old");
  EXPECT_EQ(folder.names(), Names{"machine"});
}

TEST(FailedSave, FailingCloseLeavesTheOldFile) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  {
    k5ax_test::SystemCalls calls;
    calls.close_error = EDQUOT;
    EXPECT_THAT(error_of([&] { save(folder / "machine", "new"); }),
                EndsWith("cannot close: " + reason(EDQUOT)));
  }
  EXPECT_EQ(contents(folder / "machine"), "old");
  EXPECT_EQ(folder.names(), Names{"machine"});
}

TEST(FailedSave, FailingCloseOfADeviceIsReported) {
  k5ax_test::SystemCalls calls;
  calls.close_error = EIO;
  EXPECT_EQ(error_of([] { save("/dev/null", "new"); }), "\"/dev/null\": cannot close: " + reason(EIO));
}

TEST(FailedSave, SystemWithoutRandomNumbersIsRefused) {
  const ScratchFolder folder;
  k5ax_test::SystemCalls calls;
  calls.random_error = ENOSYS;
  EXPECT_THAT(error_of([&] { save(folder / "machine", "new"); }), EndsWith(reason(ENOSYS)));
}

// Somebody who holds the name for ever stops the save, and neither hangs it nor loses his file.
TEST(FailedSave, NameThatStaysTakenIsRefused) {
  const ScratchFolder folder;
  const std::string taken = folder / ".k5ax-0000000000000000.tmp";
  make_file(taken, "somebody else's");
  {
    k5ax_test::SystemCalls calls;
    calls.zeros_for_random_calls = 1'000'000;
    EXPECT_THAT(error_of([&] { save(folder / "machine", "new"); }), EndsWith(reason(EEXIST)));
  }
  EXPECT_EQ(contents(taken), "somebody else's");
  EXPECT_EQ(folder.names().size(), 1u);
}

TEST(FailedSave, FailedWriteIsNotForgottenWhenItWasCaught) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  const std::string path = folder / "machine";
  EXPECT_TRUE(in_a_process([&] {
    fill_the_disk_at(100000);
    const std::string large(300000, 'n');
    FileStream stream(path.c_str(), FILE_WRITE);
    const std::string first = error_of([&] { stream.Write(large.data(), large.size()); });
    // What follows would fit, and would follow a gap.
    const std::string second = error_of([&] { stream << 1; });
    return first != "(no FileError)" && second.find("earlier write failed") != std::string::npos;
  }));
  EXPECT_EQ(contents(path), "old");
  EXPECT_EQ(folder.names(), Names{"machine"});
}

// The failure was reported once, by Write.
TEST(FailedSave, DestructorAfterAFailedWriteIsSilent) {
  auto* const stream = new FileStream("/dev/full", FILE_WRITE);
  const std::string large(300000, 'n');
  EXPECT_THROW(stream->Write(large.data(), large.size()), FileError);
  EXPECT_NO_THROW(delete stream);
}

TEST(FailedSave, MissingFolderIsRefused) {
  const ScratchFolder folder;
  const std::string message = error_of([&] { save(folder / "none/machine", "new"); });
  EXPECT_THAT(message, HasSubstr(folder / "none/machine"));
  EXPECT_THAT(message, EndsWith(reason(ENOENT)));
  EXPECT_TRUE(folder.names().empty());
}

TEST(FailedSave, PathBelowARegularFileIsRefused) {
  const ScratchFolder folder;
  make_file(folder / "file", "old");
  EXPECT_THAT(error_of([&] { save(folder / "file/machine", "new"); }), EndsWith(reason(ENOTDIR)));
  EXPECT_EQ(contents(folder / "file"), "old");
}

TEST(FailedSave, FolderIsNotReplaced) {
  const ScratchFolder folder;
  fs::create_directory(folder / "machine");
  EXPECT_THAT(error_of([&] { save(folder / "machine", "new"); }), EndsWith(reason(EISDIR)));
  EXPECT_TRUE(fs::is_directory(folder / "machine"));
  EXPECT_EQ(folder.names(), Names{"machine"});
}

TEST(FailedSave, PathThatEndsLikeAFolderIsRefused) {
  const ScratchFolder folder;
  EXPECT_THAT(error_of([&] { save(folder / "machine/", "new"); }), EndsWith(reason(EISDIR)));
  EXPECT_TRUE(folder.names().empty());
}

// A folder that takes no files even from root.
TEST(FailedSave, FolderOfTheSystemIsRefused) {
  if (!fs::exists("/proc/self")) GTEST_SKIP() << "this system has no /proc";
  EXPECT_THAT(error_of([] { save("/proc/k5ax-machine", "new"); }), HasSubstr("/proc/k5ax-machine"));
}

TEST(FailedSave, ReadOnlyFolderIsRefused) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  ASSERT_EQ(::chmod((folder / "machine").c_str(), 0666), 0);
  ASSERT_EQ(::chmod(folder.path().c_str(), 0555), 0);
  EXPECT_TRUE(in_a_process([&] {
    // From inside, since the folders above may be closed to anybody.
    fs::current_path(folder.path());
    become_anybody();
    const std::string new_file = error_of([] { save("other", "new"); });
    const std::string old_file = error_of([] { save("machine", "new"); });
    return new_file == "\"other\": cannot create a file in its folder: " + reason(EACCES) &&
           old_file == "\"machine\": cannot create a file in its folder: " + reason(EACCES);
  }));
  ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
  EXPECT_EQ(contents(folder / "machine"), "old");
  EXPECT_EQ(folder.names(), Names{"machine"});
}

// Its folder would let it be replaced. Who protects a file means its contents, not its name.
TEST(FailedSave, ProtectedFileIsNotReplaced) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  ASSERT_EQ(::chmod((folder / "machine").c_str(), 0444), 0);
  ASSERT_EQ(::chmod(folder.path().c_str(), 0777), 0);
  EXPECT_TRUE(in_a_process([&] {
    fs::current_path(folder.path());
    become_anybody();
    return error_of([] { save("machine", "new"); }) ==
           "\"machine\": cannot open for writing: " + reason(EACCES);
  }));
  EXPECT_EQ(contents(folder / "machine"), "old");
  EXPECT_EQ(folder.names(), Names{"machine"});
}

// Anybody may replace a file of another owner that is open to all, and cannot give the new one away.
TEST(FailedSave, OwnerThatCannotBeKeptIsNoFailure) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can make a file of another owner";
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  ASSERT_EQ(::chmod((folder / "machine").c_str(), 0666), 0);
  ASSERT_EQ(::chmod(folder.path().c_str(), 0777), 0);
  EXPECT_TRUE(in_a_process([&] {
    fs::current_path(folder.path());
    become_anybody();
    save("machine", "new");
    return true;
  }));
  EXPECT_EQ(contents(folder / "machine"), "new");
  struct stat info;
  ASSERT_EQ(::stat((folder / "machine").c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 07777, 0666u);
}

TEST(FailedSave, VanishedFolderIsReported) {
  const ScratchFolder folder;
  fs::create_directory(folder / "deep");
  auto* const stream = new FileStream((folder / "deep/machine").c_str(), FILE_WRITE);
  stream->Write("new", 3);
  fs::remove_all(folder / "deep");
  EXPECT_THAT(error_of([&] { delete stream; }),
              EndsWith("cannot put the new file in place: " + reason(ENOENT)));
  EXPECT_TRUE(folder.names().empty());
}

TEST(FailedSave, FolderThatAppearsAtThePathStays) {
  const ScratchFolder folder;
  auto* const stream = new FileStream((folder / "machine").c_str(), FILE_WRITE);
  stream->Write("new", 3);
  fs::create_directory(folder / "machine");
  EXPECT_THAT(error_of([&] { delete stream; }),
              EndsWith("cannot put the new file in place: " + reason(EISDIR)));
  EXPECT_TRUE(fs::is_directory(folder / "machine"));
  EXPECT_EQ(folder.names(), Names{"machine"});
}

// The system shows open files as links, also those that have no name left. There is nothing to replace
// then, and what the link says is not a path.
TEST(FailedSave, FileWithoutANameIsRefused) {
  const ScratchFolder folder;
  if (!fs::exists("/proc/self/fd")) GTEST_SKIP() << "this system has no /proc";
  const int nameless = ::open((folder / "file").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  ASSERT_NE(nameless, -1);
  fs::remove(folder / "file");
  EXPECT_THAT(error_of([&] { save("/proc/self/fd/" + std::to_string(nameless), "new"); }),
              HasSubstr("no name"));
  ::close(nameless);
  EXPECT_TRUE(folder.names().empty());
}

TEST(FailedSave, SocketIsRefused) {
  const ScratchFolder folder;
  const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  ASSERT_NE(socket, -1);
  // The name of a socket may have 107 bytes only, fewer than the folder's may have.
  const fs::path before = fs::current_path();
  fs::current_path(folder.path());
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  address.sun_path[0] = 's';
  const int bound = ::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address);
  fs::current_path(before);
  ASSERT_EQ(bound, 0);
  EXPECT_THAT(error_of([&] { save(folder / "s", "new"); }), EndsWith(reason(ENXIO)));
  ::close(socket);
  EXPECT_EQ(folder.names(), Names{"s"});
}

// Without help from the signal's default, which would end the host.
TEST(FailedSave, BrokenPipeIsAnErrorAndNoSignal) {
  const ScratchFolder folder;
  const std::string path = folder / "pipe";
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  EXPECT_TRUE(in_a_process([&] {
    const int reader = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    auto* const stream = new FileStream(path.c_str(), FILE_WRITE);
    stream->Write("new", 3);
    ::close(reader);
    return error_of([&] { delete stream; }) == '"' + path + "\": cannot write: " + reason(EPIPE);
  }));
}

TEST(FailedSave, SignalOfTheHostsOwnIsLeftToIt) {
  const ScratchFolder folder;
  const std::string path = folder / "pipe";
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  EXPECT_TRUE(in_a_process([&] {
    sigset_t pipe_signal;
    sigemptyset(&pipe_signal);
    sigaddset(&pipe_signal, SIGPIPE);
    ::pthread_sigmask(SIG_BLOCK, &pipe_signal, nullptr);
    ::raise(SIGPIPE);
    const int reader = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    auto* const stream = new FileStream(path.c_str(), FILE_WRITE);
    stream->Write("new", 3);
    ::close(reader);
    if (error_of([&] { delete stream; }) == "(no FileError)") return false;

    sigset_t pending;
    sigpending(&pending);
    sigset_t mask;
    ::pthread_sigmask(SIG_BLOCK, nullptr, &mask);
    return sigismember(&pending, SIGPIPE) == 1 && sigismember(&mask, SIGPIPE) == 1;
  }));
}

TEST(FailedSave, SignalsAreReceivedAgainAfterwards) {
  const ScratchFolder folder;
  save(folder / "machine", "new");
  sigset_t mask;
  ASSERT_EQ(::pthread_sigmask(SIG_BLOCK, nullptr, &mask), 0);
  EXPECT_EQ(sigismember(&mask, SIGPIPE), 0);
  EXPECT_EQ(sigismember(&mask, SIGXFSZ), 0);
}

// A second exception would end the program here.
TEST(AbandonedSave, FailureWhileAnExceptionIsOnItsWayIsNotReported) {
  EXPECT_THROW(
      {
        FileStream stream("/dev/full", FILE_WRITE);
        stream << 1;
        throw std::logic_error("the machine cannot be written");
      },
      std::logic_error);
}

TEST(FailedSave, DestructorReportsWhenNothingElseIsOnItsWay) {
  EXPECT_THROW(
      {
        FileStream stream("/dev/full", FILE_WRITE);
        stream << 1;
      },
      FileError);
}

// The destructor of the object compares with the exceptions of its start: it was made during one and fails
// during the same one, so its failure is news, and is caught where it belongs.
TEST(FailedSave, FailureOfASaveMadeWhileAnExceptionIsOnItsWayIsReported) {
  std::string message;
  struct SavesAtTheEnd {
    std::string& message;
    ~SavesAtTheEnd() {
      message = error_of([] { save("/dev/full", "new"); });
    }
  };
  try {
    const SavesAtTheEnd saves{message};
    throw std::runtime_error("on its way");
  } catch (const std::runtime_error&) {
  }
  EXPECT_THAT(message, EndsWith(reason(ENOSPC)));
}

}  // namespace
