// The files of a POSIX system.

#include "system_file.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <system_error>
#include <utility>

#include <k5ax/platform/stream.h>

namespace IIO {
namespace {

// Systems transfer less than 2 GiB at a time; a larger request is cut up here, not there.
constexpr std::size_t kLargestTransfer = std::size_t{1} << 30;
constexpr int kMostLinks = 40;   // links followed one after the other; Linux gives up at the same number
constexpr int kMostNames = 100;  // names tried for the new file; a taken one is one in 2^64
constexpr mode_t kPermissions = 07777;

#ifdef O_PATH
constexpr int kFolderFlags =
    O_PATH | O_DIRECTORY | O_CLOEXEC;  // a folder may be searched without being readable
#else
constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
#endif

// Repeats a call for as long as a signal interrupts it.
template <class Call>
auto uninterrupted(Call call) {
  auto result = call();
  while (result == -1 && errno == EINTR) result = call();
  return result;
}

// Lets a write into a broken pipe or past a size limit come back as an error. The system also raises a
// signal for these, which would end the host; it is held back for this thread, and taken away again if it
// came.
class HeldSignals {
 public:
  HeldSignals() {
    sigemptyset(&m_held);
    sigaddset(&m_held, SIGPIPE);
    sigaddset(&m_held, SIGXFSZ);
    sigpending(&m_pending_before);
    pthread_sigmask(SIG_BLOCK, &m_held, &m_mask_before);
  }
  HeldSignals(const HeldSignals&) = delete;
  HeldSignals& operator=(const HeldSignals&) = delete;

  ~HeldSignals() {
    for (const int signal : {SIGPIPE, SIGXFSZ}) take_away(signal);
    pthread_sigmask(SIG_SETMASK, &m_mask_before, nullptr);
  }

 private:
  void take_away(int signal) const {
    sigset_t pending;
    sigpending(&pending);
    // One that was there before is the host's own business.
    if (sigismember(&pending, signal) != 1 || sigismember(&m_pending_before, signal) == 1) return;

    sigset_t only;
    sigemptyset(&only);
    sigaddset(&only, signal);
    int taken = 0;
    sigwait(&only, &taken);
  }

  sigset_t m_held;
  sigset_t m_pending_before;
  sigset_t m_mask_before;
};

int number(std::intptr_t file) { return static_cast<int>(file); }

// "folder/" of "folder/name", with the slash; empty without a slash.
std::string folder_part(const std::string& path) { return path.substr(0, path.rfind('/') + 1); }

// Where a path leads when its last part is a symbolic link, and that link's last part, and so on. A link
// that leads to nothing is followed all the same. Empty when there are too many links.
std::string follow_links(std::string path) {
  for (int links = 0; links <= kMostLinks; ++links) {
    std::array<char, 4096> text;
    const ssize_t length = ::readlink(path.c_str(), text.data(), text.size());
    // Not a link, nothing there, or out of reach: whoever opens the path next learns which.
    if (length <= 0) return path;

    const std::string target(text.data(), static_cast<std::size_t>(length));
    path = target.front() == '/' ? target : folder_part(path) + target;
  }
  return std::string();
}

// A name that nobody else uses or expects. It does not contain the target's name, which may be as long as a
// name can be. Empty with errno set when the system has no random numbers.
std::string unpredictable_name() {
  std::array<unsigned char, 8> random;
  if (::getentropy(random.data(), random.size()) != 0) return std::string();

  std::string name = ".k5ax-";
  for (const unsigned int byte : random) {
    name += "0123456789abcdef"[byte >> 4];
    name += "0123456789abcdef"[byte & 15];
  }
  return name + ".tmp";
}

}  // namespace

// The folder, the name that the new file has in it and the one that it will get. The folder is held open so
// that it stays the same one whatever the host's working directory does.
struct SystemFile::Replacement {
  Replacement() = default;
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;
  ~Replacement() {
    if (!temporary_name.empty()) ::unlinkat(folder, temporary_name.c_str(), 0);
    if (folder != -1) ::close(folder);
  }

  int folder = -1;
  std::string temporary_name;
  std::string final_name;
};

SystemFile::SystemFile(const char* path) : m_path(path) {}

SystemFile::~SystemFile() { close(); }

void SystemFile::fail(const std::string& reason) const { throw FileError('"' + m_path + "\": " + reason); }

void SystemFile::fail(const char* what, int code) const {
  fail(what + (": " + std::system_category().message(code)));
}

// False with errno set when the system reports a failure; the file is closed in any case.
bool SystemFile::close() {
  if (m_file == -1) return true;

  // Not repeated when interrupted: the number may be another file's by then. What was written is on disk
  // already.
  return ::close(number(std::exchange(m_file, -1))) == 0 || errno == EINTR;
}

void SystemFile::open_for_reading() {
  m_file = uninterrupted([&] { return ::open(m_path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY); });
  if (m_file == -1) fail("cannot open for reading", errno);
}

void SystemFile::open_for_writing() {
  struct stat found;
  const bool is_there = ::stat(m_path.c_str(), &found) == 0;
  if (!is_there && (errno != ENOENT || m_path.empty())) fail("cannot open for writing", errno);

  if (!is_there || S_ISREG(found.st_mode)) {
    const std::string target = follow_links(m_path);
    if (target.empty()) fail("cannot open for writing", ELOOP);
    open_beside(target, is_there);
    return;
  }

  // A folder comes this way too, and the system refuses it.
  m_file = uninterrupted([&] { return ::open(m_path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY); });
  if (m_file == -1) fail("cannot open for writing", errno);
}

// Opens the new file in the folder of `target`. Whether `target` is there already is what the path said;
// the answer under its own name has to agree.
void SystemFile::open_beside(const std::string& target, bool is_there) {
  const std::string folder_path = folder_part(target);
  m_replacement = std::make_unique<Replacement>();
  m_replacement->final_name = target.substr(folder_path.size());
  const char* const name = m_replacement->final_name.c_str();
  if (*name == '\0') fail("cannot open for writing", EISDIR);
  const char* const folder_name = folder_path.empty() ? "." : folder_path.c_str();
  const int folder = uninterrupted([&] { return ::open(folder_name, kFolderFlags); });
  if (folder == -1) fail("cannot open the folder for writing", errno);
  m_replacement->folder = folder;

  struct stat old;
  if (::fstatat(folder, name, &old, AT_SYMLINK_NOFOLLOW) != 0) {
    if (errno != ENOENT) fail("cannot open for writing", errno);
    // The links of open files that the system shows lead to files without a name, which nothing can replace.
    if (is_there) fail("cannot open for writing: the file that it leads to has no name any more");
    if (!create_temporary(0666)) fail("cannot create a file in its folder", errno);
    return;
  }
  if (!S_ISREG(old.st_mode)) fail("cannot open for writing: it stopped being a regular file");
  // Replacing needs no right to the old file itself, only to its folder; but who protects a file means its
  // contents.
  if (::faccessat(folder, name, W_OK, AT_EACCESS) != 0) {
    fail("cannot open for writing", errno);
  }

  // Private until it has the old file's owner and permissions. The owner comes first: changing it may clear
  // bits of the permissions. Only some may give a file away; the group alone is the next best.
  if (!create_temporary(0600)) fail("cannot create a file in its folder", errno);
  if (::fchown(number(m_file), old.st_uid, old.st_gid) != 0) {
    static_cast<void>(::fchown(number(m_file), static_cast<uid_t>(-1), old.st_gid) == 0);
  }
  struct stat now;
  if (::fstat(number(m_file), &now) != 0) fail("cannot open for writing", errno);
  // Set only where it differs: some file systems have one fixed answer and refuse even that.
  const bool same_permissions = (now.st_mode & kPermissions) == (old.st_mode & kPermissions);
  if (!same_permissions && ::fchmod(number(m_file), old.st_mode & kPermissions) != 0) {
    fail("cannot keep the permissions", errno);
  }
}

// False with errno set when no file could be made.
bool SystemFile::create_temporary(unsigned int permissions) {
  for (int attempt = 0; attempt < kMostNames; ++attempt) {
    std::string name = unpredictable_name();
    if (name.empty()) return false;
    const auto create = [&] {
      return ::openat(m_replacement->folder, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                      permissions);
    };
    m_file = uninterrupted(create);
    if (m_file != -1) {
      m_replacement->temporary_name = std::move(name);
      return true;
    }
    if (errno != EEXIST) return false;
  }
  return false;
}

// Read at a place of its own: what has no places, a pipe or a terminal, then says so instead of waiting for
// bytes that the host may be about to send.
std::size_t SystemFile::read_start(void* data, std::size_t size) {
  const std::size_t request = std::min(size, kLargestTransfer);
  const ssize_t count = uninterrupted([&] { return ::pread(number(m_file), data, request, 0); });
  if (count == -1 && errno == ESPIPE) return 0;
  if (count == -1 && errno == EISDIR) fail("cannot open for reading", EISDIR);
  if (count == -1) fail("cannot read", errno);
  m_taken_ahead = static_cast<std::size_t>(count);
  return static_cast<std::size_t>(count);
}

std::size_t SystemFile::read_some(void* data, std::size_t size) {
  if (const std::size_t start = std::exchange(m_taken_ahead, 0)) {
    if (::lseek(number(m_file), static_cast<off_t>(start), SEEK_SET) == -1) fail("cannot read", errno);
  }
  const std::size_t request = std::min(size, kLargestTransfer);
  const ssize_t count = uninterrupted([&] { return ::read(number(m_file), data, request); });
  if (count == -1) fail("cannot read", errno);
  return static_cast<std::size_t>(count);
}

void SystemFile::write_all(const void* data, std::size_t size) {
  const char* next = static_cast<const char*>(data);
  while (size > 0) {
    ssize_t count = 0;
    int code = EIO;  // for a system that takes nothing and gives no reason
    {
      const HeldSignals held;
      const std::size_t request = std::min(size, kLargestTransfer);
      count = uninterrupted([&] { return ::write(number(m_file), next, request); });
      if (count == -1) code = errno;
    }
    if (count <= 0) fail("cannot write", code);
    next += count;
    size -= static_cast<std::size_t>(count);
  }
}

void SystemFile::commit() {
  // What is not a regular file has nothing to flush, and may refuse to.
  if (m_replacement && uninterrupted([&] { return ::fsync(number(m_file)); }) != 0) {
    fail("cannot flush to disk", errno);
  }
  if (!close()) fail("cannot close", errno);
  if (!m_replacement) return;

  Replacement& save = *m_replacement;
  if (::renameat(save.folder, save.temporary_name.c_str(), save.folder, save.final_name.c_str()) != 0) {
    fail("cannot put the new file in place", errno);
  }
  save.temporary_name.clear();
}

}  // namespace IIO
