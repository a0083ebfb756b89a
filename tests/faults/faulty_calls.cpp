// Replaces the system calls for the whole program. The library's calls arrive here too: it finds the
// program's functions before those of the C library.

#include "faults/faulty_calls.h"

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace {

using k5ax_test::Call;
using k5ax_test::Fault;
using k5ax_test::FaultyCalls;

FaultyCalls* active = nullptr;

constexpr std::size_t kNever = static_cast<std::size_t>(-1);

// The fault of a call that can only do its work or fail. Without one, errno is untouched.
bool fails(Call call) {
  const Fault* const fault = FaultyCalls::next(call);
  if (fault == nullptr) return false;
  errno = fault->kind == Fault::kInterrupted ? EINTR : fault->code;
  return true;
}

Call opening(int flags) {
  if ((flags & O_CREAT) != 0) return Call::create;
  return (flags & O_DIRECTORY) != 0 ? Call::open_folder : Call::open_reading;
}

long open_at(int folder, const char* path, int flags, mode_t permissions) {
  if (fails(opening(flags))) return -1;
  return ::syscall(SYS_openat, folder, path, flags, permissions);
}

bool is_written_to(int number) {
  const int flags = ::fcntl(number, F_GETFL);
  return flags != -1 && (flags & O_ACCMODE) != O_RDONLY && (flags & O_PATH) == 0;
}

}  // namespace

namespace k5ax_test {

const char* name_of(Call call) {
  switch (call) {
    case Call::open_reading:
      return "open for reading";
    case Call::open_folder:
      return "open the folder";
    case Call::create:
      return "create";
    case Call::read:
      return "read";
    case Call::write:
      return "write";
    case Call::flush:
      return "flush";
    case Call::close_reading:
      return "close what was read";
    case Call::close_writing:
      return "close what was written";
    case Call::rename:
      return "rename";
    case Call::remove:
      return "remove";
    case Call::look:
      return "stat";
    case Call::may_write:
      return "access";
    case Call::give_away:
      return "chown";
    case Call::permit:
      return "chmod";
    case Call::follow:
      return "readlink";
    case Call::random:
      return "random";
  }
  return "?";
}

FaultyCalls::FaultyCalls() : FaultyCalls(kNever, Fault()) {}

FaultyCalls::FaultyCalls(std::size_t at, const Fault& fault) : m_at(at), m_fault(fault) {
  m_calls.reserve(std::size_t{1} << 20);
  active = this;
}

FaultyCalls::~FaultyCalls() { active = nullptr; }

void FaultyCalls::note(const Ownership& ownership) {
  if (active != nullptr) active->m_given_away.push_back(ownership);
}

const Fault* FaultyCalls::next(Call call) {
  if (active == nullptr) return nullptr;
  FaultyCalls& self = *active;
  if (self.m_calls.size() == self.m_calls.capacity()) {
    std::fputs("more system calls than a machine definition can need\n", stderr);
    std::abort();
  }
  self.m_calls.push_back(call);
  const bool is_here = self.m_calls.size() - 1 == self.m_at;
  const bool still_fails = self.m_struck && self.m_fault.lasting && call == self.m_calls[self.m_at];
  if (!is_here && !still_fails) return nullptr;
  self.m_struck = true;
  return &self.m_fault;
}

}  // namespace k5ax_test

// --- The replaced functions -------------------------------------------------------------------------------

int open(const char* path, int flags, ...) {
  mode_t permissions = 0;
  if ((flags & O_CREAT) != 0) {
    va_list rest;
    va_start(rest, flags);
    permissions = va_arg(rest, mode_t);
    va_end(rest);
  }
  return static_cast<int>(open_at(AT_FDCWD, path, flags, permissions));
}

int openat(int folder, const char* path, int flags, ...) {
  mode_t permissions = 0;
  if ((flags & O_CREAT) != 0) {
    va_list rest;
    va_start(rest, flags);
    permissions = va_arg(rest, mode_t);
    va_end(rest);
  }
  return static_cast<int>(open_at(folder, path, flags, permissions));
}

ssize_t read(int number, void* data, size_t size) {
  const Fault* const fault = FaultyCalls::next(Call::read);
  if (fault == nullptr) return ::syscall(SYS_read, number, data, size);
  if (fault->kind == Fault::kNothing) return 0;
  if (fault->kind == Fault::kOneByte) return ::syscall(SYS_read, number, data, std::min<size_t>(size, 1));
  errno = fault->kind == Fault::kInterrupted ? EINTR : fault->code;
  return -1;
}

ssize_t pread(int number, void* data, size_t size, off_t place) {
  const Fault* const fault = FaultyCalls::next(Call::read);
  if (fault == nullptr) return ::syscall(SYS_pread64, number, data, size, place);
  if (fault->kind == Fault::kNothing) return 0;
  if (fault->kind == Fault::kOneByte)
    return ::syscall(SYS_pread64, number, data, std::min<size_t>(size, 1), place);
  errno = fault->kind == Fault::kInterrupted ? EINTR : fault->code;
  return -1;
}

ssize_t write(int number, const void* data, size_t size) {
  const Fault* const fault = FaultyCalls::next(Call::write);
  if (fault == nullptr) return ::syscall(SYS_write, number, data, size);
  if (fault->kind == Fault::kNothing) return 0;
  if (fault->kind == Fault::kOneByte) return ::syscall(SYS_write, number, data, std::min<size_t>(size, 1));
  errno = fault->kind == Fault::kInterrupted ? EINTR : fault->code;
  return -1;
}

int fsync(int number) { return fails(Call::flush) ? -1 : static_cast<int>(::syscall(SYS_fsync, number)); }

// A close that reports a failure has closed all the same.
int close(int number) {
  const Call call = active != nullptr && is_written_to(number) ? Call::close_writing : Call::close_reading;
  const long result = ::syscall(SYS_close, number);
  return fails(call) ? -1 : static_cast<int>(result);
}

int rename(const char* from, const char* to) noexcept {
  return fails(Call::rename) ? -1 : static_cast<int>(::syscall(SYS_rename, from, to));
}

int renameat(int from_folder, const char* from, int to_folder, const char* to) noexcept {
  if (fails(Call::rename)) return -1;
  return static_cast<int>(::syscall(SYS_renameat, from_folder, from, to_folder, to));
}

int unlink(const char* path) noexcept {
  return fails(Call::remove) ? -1 : static_cast<int>(::syscall(SYS_unlink, path));
}

int unlinkat(int folder, const char* name, int flags) noexcept {
  return fails(Call::remove) ? -1 : static_cast<int>(::syscall(SYS_unlinkat, folder, name, flags));
}

int stat(const char* path, struct stat* found) noexcept {
  if (fails(Call::look)) return -1;
  return static_cast<int>(::syscall(SYS_newfstatat, AT_FDCWD, path, found, 0));
}

int fstat(int number, struct stat* found) noexcept {
  return fails(Call::look) ? -1 : static_cast<int>(::syscall(SYS_fstat, number, found));
}

int fstatat(int folder, const char* name, struct stat* found, int flags) noexcept {
  if (fails(Call::look)) return -1;
  return static_cast<int>(::syscall(SYS_newfstatat, folder, name, found, flags));
}

int faccessat(int folder, const char* name, int mode, int) noexcept {
  // The effective user is the real one here, so the flag that tells them apart is not needed.
  return fails(Call::may_write) ? -1 : static_cast<int>(::syscall(SYS_faccessat, folder, name, mode));
}

int fchown(int number, uid_t owner, gid_t group) noexcept {
  FaultyCalls::note({owner, group});
  return fails(Call::give_away) ? -1 : static_cast<int>(::syscall(SYS_fchown, number, owner, group));
}

int fchmod(int number, mode_t permissions) noexcept {
  return fails(Call::permit) ? -1 : static_cast<int>(::syscall(SYS_fchmod, number, permissions));
}

ssize_t readlink(const char* path, char* text, size_t size) noexcept {
  return fails(Call::follow) ? -1 : ::syscall(SYS_readlink, path, text, size);
}

int getentropy(void* bytes, size_t size) {
  if (fails(Call::random)) return -1;
  return ::syscall(SYS_getrandom, bytes, size, 0) == static_cast<long>(size) ? 0 : -1;
}
