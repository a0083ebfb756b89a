// The file stream and a POSIX system: pipes, interruptions, descriptors, and how often it is called.

#include <fcntl.h>
#include <pthread.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <k5ax/platform/stream.h>

#include "scratch.h"
#include "scratch_process.h"
#include "stream_bytes.h"
#include "system_calls.h"

namespace {

using IIO::FILE_READ;
using IIO::FILE_WRITE;
using IIO::FileError;
using IIO::FileStream;
using k5ax_test::contents;
using k5ax_test::error_of;
using k5ax_test::kSmallBuffer;
using k5ax_test::long_text;
using k5ax_test::make_file;
using k5ax_test::read_bytes;
using k5ax_test::reason;
using k5ax_test::save;
using k5ax_test::ScratchFolder;
using testing::EndsWith;
using testing::HasSubstr;

// The beginning was read without moving on in the file; what follows is read from there.
TEST(FileStream, FailingSeekIsReported) {
  const ScratchFolder folder;
  make_file(folder / "file", std::string(kSmallBuffer + 1, 'x'));
  const std::string path = folder / "file";
  std::string message;
  {
    k5ax_test::SystemCalls calls;
    calls.seek_error = EIO;
    message = error_of([&] { read_bytes(path, kSmallBuffer + 1); });
  }
  EXPECT_EQ(message, '"' + path + "\": cannot read: " + reason(EIO));
}

// How often this process has asked the system to read and to write; empty where the system does not count.
std::vector<long> transfers() {
  std::ifstream counts("/proc/self/io");
  std::vector<long> result(2, -1);
  std::string name;
  long value = 0;
  while (counts >> name >> value) {
    if (name == "syscr:") result[0] = value;
    if (name == "syscw:") result[1] = value;
  }
  return result[0] < 0 || result[1] < 0 ? std::vector<long>() : result;
}

TEST(FileStream, SmallFileIsOneReadAndOneWrite) {
  const ScratchFolder folder;
  const std::string path = folder / "file";
  const auto save_numbers = [&] {
    FileStream stream(path.c_str(), FILE_WRITE);
    for (int i = 0; i < 1000; ++i) stream << i << 0.5;
  };
  const auto load_numbers = [&] {
    FileStream stream(path.c_str(), FILE_READ);
    int number = 0;
    double half = 0;
    for (int i = 0; i < 1000; ++i) stream >> number >> half;
    return number;
  };
  // Once for nothing: a sanitizer writes something when it meets a class for the first time.
  save_numbers();
  EXPECT_EQ(load_numbers(), 999);

  const std::vector<long> start = transfers();
  if (start.empty()) GTEST_SKIP() << "this system does not count system calls";
  const std::vector<long> counted = transfers();  // counting reads too
  save_numbers();
  const std::vector<long> saved = transfers();
  load_numbers();
  const std::vector<long> loaded = transfers();
  const long reads_of_counting = counted[0] - start[0];
  EXPECT_EQ(saved[1] - counted[1], 1);
  EXPECT_EQ(loaded[0] - saved[0] - reads_of_counting, 1);
}

TEST(FileStream, FolderCannotBeRead) {
  const ScratchFolder folder;
  const std::string message = error_of([&] { read_bytes(folder.path(), 0); });
  EXPECT_THAT(message, HasSubstr(folder.path()));
  EXPECT_THAT(message, EndsWith("cannot open for reading: " + reason(EISDIR)));
}

// The start of this process's memory opens for reading and then has nothing mapped at its first byte.
TEST(FileStream, FailingReadTellsTheSystemsReason) {
  const std::string path = "/proc/self/mem";
  if (!std::ifstream(path)) GTEST_SKIP() << "this system has no " << path;
  EXPECT_THAT(error_of([&] { read_bytes(path, 1); }), EndsWith(reason(EIO)));
}

TEST(FileStream, ClosesItsFiles) {
  const ScratchFolder folder;
  const std::vector<int> before = k5ax_test::open_files();
  save(folder / "file", "text");
  save(folder / "file", "text");
  read_bytes(folder / "file", 4);
  EXPECT_THROW(read_bytes(folder / "file", 5), FileError);
  EXPECT_THROW(read_bytes(folder.path(), 1), FileError);
  EXPECT_THROW(save(folder / "none/file", "text"), FileError);
  EXPECT_THROW(save("/dev/full", "text"), FileError);
  EXPECT_EQ(k5ax_test::open_files(), before);
}

// A host may start other programs at any time.
TEST(FileStream, FilesAreNotHandedToOtherPrograms) {
  const ScratchFolder folder;
  make_file(folder / "old", "text");
  const std::vector<int> before = k5ax_test::open_files();
  FileStream in((folder / "old").c_str(), FILE_READ);
  FileStream out((folder / "new").c_str(), FILE_WRITE);
  FileStream device("/dev/null", FILE_WRITE);
  int checked = 0;
  for (const int number : k5ax_test::open_files()) {
    if (std::find(before.begin(), before.end(), number) != before.end()) continue;
    EXPECT_NE(::fcntl(number, F_GETFD) & FD_CLOEXEC, 0) << "file " << number;
    ++checked;
  }
  EXPECT_GE(checked, 3);
}

// Blocks that go through the buffer, and blocks that pass it by.
TEST(FileStream, ReadsOnWhenAPipeDeliversInPieces) {
  const ScratchFolder folder;
  const std::string path = folder / "pipe";
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  for (const std::size_t size : {10'000U, 200'000U}) {
    const std::string text = long_text(size);
    std::thread writer([&] {
      const int pipe = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
      for (std::size_t done = 0; done < text.size(); done += 1000) {
        if (::write(pipe, text.data() + done, 1000) != 1000) break;
        if (done % 10'000 == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
      }
      ::close(pipe);
    });
    const std::string back = read_bytes(path, text.size());
    writer.join();
    EXPECT_TRUE(back == text) << size;
  }
}

// One thread may open a pipe for reading first and fill it afterwards.
TEST(FileStream, OpeningAPipeDoesNotWaitForBytes) {
  const ScratchFolder folder;
  const std::string path = folder / "pipe";
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  const int pipe = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
  ASSERT_NE(pipe, -1);
  ::alarm(60);  // ends the program where the opening waits for ever
  FileStream stream(path.c_str(), FILE_READ);
  ::alarm(0);
  EXPECT_EQ(::write(pipe, "text", 4), 4);
  std::string back(4, '?');
  stream.Read(back.data(), back.size());
  EXPECT_EQ(back, "text");
  ::close(pipe);
}

TEST(FileStream, PipeGetsWhatIsWritten) {
  const ScratchFolder folder;
  const std::string path = folder / "pipe";
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  std::string back;
  std::thread reader([&] { back = contents(path); });
  save(path, "through the pipe");
  reader.join();
  EXPECT_EQ(back, "through the pipe");
  EXPECT_EQ(folder.names(), k5ax_test::Names{"pipe"});
  struct stat info;
  ASSERT_EQ(::stat(path.c_str(), &info), 0);
  EXPECT_TRUE(S_ISFIFO(info.st_mode));
}

std::atomic<int> interruptions{0};

// For as long as it lives SIGUSR1 interrupts system calls and does not have them start again.
class Interruptions {
 public:
  Interruptions() {
    interruptions = 0;
    struct sigaction action = {};
    action.sa_handler = [](int) { ++interruptions; };
    ::sigaction(SIGUSR1, &action, &m_before);
  }
  Interruptions(const Interruptions&) = delete;
  Interruptions& operator=(const Interruptions&) = delete;
  ~Interruptions() { ::sigaction(SIGUSR1, &m_before, nullptr); }

  // While `thread` waits in a system call, for it waits until this returns.
  static void send_some(pthread_t thread) {
    for (int i = 0; i < 20; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
      ::pthread_kill(thread, SIGUSR1);
    }
  }

 private:
  struct sigaction m_before;
};

TEST(FileStream, InterruptedReadGoesOn) {
  const ScratchFolder folder;
  const std::string path = folder / "pipe";
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  const Interruptions handled;
  const pthread_t reader = ::pthread_self();
  int interruptions_of_opening = 0;
  std::thread writer([&] {
    Interruptions::send_some(reader);  // waiting for the pipe to open
    interruptions_of_opening = interruptions;
    const int pipe = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
    Interruptions::send_some(reader);  // waiting for bytes
    EXPECT_EQ(::write(pipe, "text", 4), 4);
    ::close(pipe);
  });
  std::string back;
  EXPECT_NO_THROW(back = read_bytes(path, 4));
  writer.join();
  EXPECT_EQ(back, "text");
  EXPECT_GT(interruptions_of_opening, 0);
  EXPECT_GT(interruptions, interruptions_of_opening);
}

// A pipe holds 64 KiB, so a larger block waits, and is taken in parts.
TEST(FileStream, InterruptedWriteGoesOn) {
  const ScratchFolder folder;
  const std::string path = folder / "pipe";
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  const Interruptions handled;
  const std::string text = long_text(1'000'000);
  const pthread_t writer = ::pthread_self();
  int interruptions_of_opening = 0;
  std::string back;
  std::thread reader([&] {
    Interruptions::send_some(writer);  // waiting for the pipe to open
    interruptions_of_opening = interruptions;
    std::ifstream pipe(path, std::ios::binary);
    Interruptions::send_some(writer);  // waiting for room
    back.assign(std::istreambuf_iterator<char>(pipe), std::istreambuf_iterator<char>());
  });
  EXPECT_NO_THROW(save(path, text));
  reader.join();
  EXPECT_TRUE(back == text);
  EXPECT_GT(interruptions_of_opening, 0);
  EXPECT_GT(interruptions, interruptions_of_opening);
}

}  // namespace
