// Saving on a POSIX system: permissions, owners, links, devices, and what the system is asked for.

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <k5ax/platform/stream.h>

#include "scratch.h"
#include "system_calls.h"

namespace {

namespace fs = std::filesystem;
using IIO::FILE_WRITE;
using IIO::FileStream;
using k5ax_test::contents;
using k5ax_test::error_of;
using k5ax_test::make_file;
using k5ax_test::Names;
using k5ax_test::reason;
using k5ax_test::save;
using k5ax_test::ScratchFolder;
using testing::EndsWith;

struct stat info_of(const std::string& path) {
  struct stat info = {};
  EXPECT_EQ(::lstat(path.c_str(), &info), 0) << path;
  return info;
}

mode_t permissions(const std::string& path) { return info_of(path).st_mode & 07777; }

// A machine that loses its power keeps the old file or the new one, never half a file.
TEST(Saving, NewFileIsFlushedToDiskBeforeItTakesItsPlace) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  k5ax_test::SystemCalls calls;
  std::string contents_at_flush;
  std::string new_contents_at_flush;
  calls.on_flush = [&] {
    contents_at_flush = contents(folder / "machine");
    for (const std::string& name : folder.names()) {
      if (name != "machine") new_contents_at_flush = contents(folder / name);
    }
  };
  save(folder / "machine", "new");
  EXPECT_EQ(calls.flushes, 1);
  EXPECT_EQ(contents_at_flush, "old");
  EXPECT_EQ(new_contents_at_flush, "new");
  EXPECT_EQ(contents(folder / "machine"), "new");
}

TEST(Saving, InterruptedCloseIsNoFailure) {
  const ScratchFolder folder;
  {
    k5ax_test::SystemCalls calls;
    calls.close_error = EINTR;
    save(folder / "machine", "new");
  }
  EXPECT_EQ(contents(folder / "machine"), "new");
}

TEST(Saving, NameThatIsTakenIsPassedOver) {
  const ScratchFolder folder;
  const std::string taken = folder / ".k5ax-0000000000000000.tmp";
  make_file(taken, "somebody else's");
  {
    k5ax_test::SystemCalls calls;
    calls.zeros_for_random_calls = 3;
    save(folder / "machine", "new");
    EXPECT_EQ(calls.zeros_for_random_calls, 0);
  }
  EXPECT_EQ(contents(folder / "machine"), "new");
  EXPECT_EQ(contents(taken), "somebody else's");
}

TEST(Saving, NewFileGetsTheUsualPermissions) {
  const ScratchFolder folder;
  const mode_t before = ::umask(027);
  save(folder / "machine", "new");
  ::umask(before);
  EXPECT_EQ(permissions(folder / "machine"), 0640u);
}

TEST(Saving, PermissionsOfTheOldFileAreKept) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  const mode_t before = ::umask(077);
  int checked = 0;
  for (const mode_t mode : {0600u, 0604u, 0640u, 0666u, 0755u, 0777u}) {
    ASSERT_EQ(::chmod((folder / "machine").c_str(), mode), 0);
    save(folder / "machine", "new");
    EXPECT_EQ(permissions(folder / "machine"), mode);
    ++checked;
  }
  ::umask(before);
  EXPECT_EQ(checked, 6);
}

TEST(Saving, OwnerAndGroupOfTheOldFileAreKept) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can give a file away";
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  ASSERT_EQ(::chown((folder / "machine").c_str(), 12345, 23456), 0);
  // Changing the owner may clear this bit, so that it shows in which order the two are restored.
  ASSERT_EQ(::chmod((folder / "machine").c_str(), 04750), 0);
  save(folder / "machine", "new");
  const struct stat info = info_of(folder / "machine");
  EXPECT_EQ(info.st_uid, 12345u);
  EXPECT_EQ(info.st_gid, 23456u);
  EXPECT_EQ(info.st_mode & 07777, 04750u);
}

// Nobody may read in the new file what the old one did not let them read.
TEST(Saving, NewFileIsAsPrivateAsTheOldOneFromTheStart) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  ASSERT_EQ(::chmod((folder / "machine").c_str(), 0600), 0);
  const mode_t before = ::umask(0);
  {
    const FileStream stream((folder / "machine").c_str(), FILE_WRITE);
    const Names names = folder.names();
    EXPECT_EQ(names.size(), 2u);
    for (const std::string& name : names) EXPECT_EQ(permissions(folder / name), 0600u) << name;
  }
  ::umask(before);
}

TEST(Saving, SymbolicLinkStaysAndItsFileIsReplaced) {
  const ScratchFolder folder;
  fs::create_directory(folder / "deep");
  make_file(folder / "deep/machine", "old");
  fs::create_symlink("deep/machine", folder / "link");
  save(folder / "link", "new");
  EXPECT_EQ(fs::read_symlink(folder / "link"), "deep/machine");
  EXPECT_FALSE(fs::is_symlink(folder / "deep/machine"));
  EXPECT_EQ(contents(folder / "deep/machine"), "new");
  EXPECT_EQ(folder.names(), (Names{"deep", "link"}));
}

TEST(Saving, LinkToALinkIsFollowedToTheEnd) {
  const ScratchFolder folder;
  fs::create_directory(folder / "deep");
  make_file(folder / "deep/machine", "old");
  fs::create_symlink("machine", folder / "deep/near");  // relative to its own folder
  fs::create_symlink(folder / "deep/near", folder / "far");
  save(folder / "far", "new");
  EXPECT_TRUE(fs::is_symlink(folder / "far"));
  EXPECT_TRUE(fs::is_symlink(folder / "deep/near"));
  EXPECT_EQ(contents(folder / "deep/machine"), "new");
}

TEST(Saving, PermissionsBehindALinkAreKept) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  ASSERT_EQ(::chmod((folder / "machine").c_str(), 0604), 0);
  fs::create_symlink("machine", folder / "link");
  save(folder / "link", "new");
  EXPECT_EQ(permissions(folder / "machine"), 0604u);
}

TEST(Saving, DanglingLinkStaysAndItsFileIsMade) {
  const ScratchFolder folder;
  fs::create_directory(folder / "deep");
  fs::create_symlink("deep/machine", folder / "link");
  save(folder / "link", "new");
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(contents(folder / "deep/machine"), "new");
  EXPECT_FALSE(fs::is_symlink(folder / "deep/machine"));
}

TEST(Saving, LinkIntoAMissingFolderIsRefused) {
  const ScratchFolder folder;
  fs::create_symlink("none/machine", folder / "link");
  EXPECT_THAT(error_of([&] { save(folder / "link", "new"); }), EndsWith(reason(ENOENT)));
  EXPECT_EQ(folder.names(), Names{"link"});
}

// Linux follows 40 links, and refuses one more itself.
TEST(Saving, FollowsAsManyLinksAsTheSystem) {
  const ScratchFolder folder;
  make_file(folder / "0", "old");
  for (int i = 1; i <= 40; ++i) fs::create_symlink(std::to_string(i - 1), folder / std::to_string(i));
  ASSERT_EQ(contents(folder / "40"), "old");
  save(folder / "40", "new");
  EXPECT_EQ(contents(folder / "0"), "new");
  EXPECT_FALSE(fs::is_symlink(folder / "0"));
  EXPECT_TRUE(fs::is_symlink(folder / "40"));
}

TEST(Saving, LinksInACircleAreRefused) {
  const ScratchFolder folder;
  fs::create_symlink("two", folder / "one");
  fs::create_symlink("one", folder / "two");
  EXPECT_THAT(error_of([&] { save(folder / "one", "new"); }), EndsWith(reason(ELOOP)));
  EXPECT_EQ(folder.names(), (Names{"one", "two"}));
}

TEST(Saving, LinkToAFolderIsRefused) {
  const ScratchFolder folder;
  fs::create_directory(folder / "deep");
  fs::create_symlink("deep", folder / "link");
  EXPECT_THAT(error_of([&] { save(folder / "link", "new"); }), EndsWith(reason(EISDIR)));
  EXPECT_EQ(folder.names(), (Names{"deep", "link"}));
}

// Replacing gives the name a new file; whoever holds the old one by another name keeps it.
TEST(Saving, OtherHardLinkKeepsTheOldContents) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  fs::create_hard_link(folder / "machine", folder / "other");
  save(folder / "machine", "new");
  EXPECT_EQ(contents(folder / "machine"), "new");
  EXPECT_EQ(contents(folder / "other"), "old");
}

TEST(Saving, DeviceIsWrittenAndStaysADevice) {
  EXPECT_NO_THROW(save("/dev/null", "new"));
  EXPECT_TRUE(S_ISCHR(info_of("/dev/null").st_mode));
}

TEST(Saving, DeviceIsNotFlushedToDisk) {
  const k5ax_test::SystemCalls calls;
  save("/dev/null", "new");
  EXPECT_EQ(calls.flushes, 0);
}

TEST(Saving, LinkToADeviceIsWrittenThrough) {
  const ScratchFolder folder;
  fs::create_symlink("/dev/null", folder / "link");
  EXPECT_NO_THROW(save(folder / "link", "new"));
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_TRUE(S_ISCHR(info_of("/dev/null").st_mode));
}

}  // namespace
