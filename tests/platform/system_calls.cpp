// Replaces a few system calls for the whole program. The library's calls arrive here too: it finds the
// program's functions before those of the C library.

#include "system_calls.h"

#include <sys/random.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace {

k5ax_test::SystemCalls* active = nullptr;

int failed(int code) {
  errno = code;
  return -1;
}

}  // namespace

k5ax_test::SystemCalls::SystemCalls() { active = this; }
k5ax_test::SystemCalls::~SystemCalls() { active = nullptr; }

int fsync(int number) {
  if (active != nullptr) {
    ++active->flushes;
    if (active->on_flush) active->on_flush();
    if (active->flush_error != 0) return failed(active->flush_error);
  }
  return static_cast<int>(::syscall(SYS_fsync, number));
}

int close(int number) {
  const long result = ::syscall(SYS_close, number);
  if (active != nullptr && active->close_error != 0) return failed(active->close_error);
  return static_cast<int>(result);
}

off_t lseek(int number, off_t place, int whence) noexcept {
  if (active != nullptr && active->seek_error != 0) return failed(active->seek_error);
  return ::syscall(SYS_lseek, number, place, whence);
}

ssize_t readlink(const char* path, char* text, size_t size) noexcept {
  if (active != nullptr && active->endless_links) {
    std::memcpy(text, "link", 4);
    return 4;
  }
  return ::syscall(SYS_readlink, path, text, size);
}

int getentropy(void* bytes, size_t size) {
  if (active != nullptr && active->random_error != 0) return failed(active->random_error);
  if (active != nullptr && active->zeros_for_random_calls > 0) {
    --active->zeros_for_random_calls;
    std::memset(bytes, 0, size);
    return 0;
  }
  return ::syscall(SYS_getrandom, bytes, size, 0) == static_cast<long>(size) ? 0 : -1;
}
