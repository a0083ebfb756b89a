// MachdefSave on a POSIX system: full disks and devices, rights, links.

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "machdef/files/memory_stream.h"
#include "machdef/files/rich_machine.h"
#include "platform/scratch.h"
#include "platform/scratch_process.h"

using namespace k5ax_test;
using md::CMachDef;

namespace {

// A machine whose file is larger than any buffer on the way: 1000 plain nodes of 120 bytes.
MachineRecord long_record() {
  MachineRecord record;
  for (int i = 0; i < 1000; ++i) record.nodes.push_back(node_record(kPlain, i - 1, i, 0, 0, numbers_from(1)));
  record.roots[0] = 0;
  return record;
}

}  // namespace

TEST(Save, ReplacesTheFileBehindASymbolicLinkAndKeepsTheLink) {
  const ScratchFolder folder;
  make_file(folder / "target", "old");
  ASSERT_EQ(::symlink("target", (folder / "link").c_str()), 0);
  Rich machine;
  EXPECT_EQ(MachdefSave(&machine, (folder / "link").c_str()), 1);
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_SAME_BYTES(contents(folder / "target"), pack(rich_record()));
  EXPECT_EQ(folder.names(), (Names{"link", "target"}));
}

TEST(FailedMachineSave, OnAFullDiskAnswersZeroAndKeepsTheOldFile) {
  const ScratchFolder folder;
  const std::string path = folder / "machine";
  make_file(path, "old");
  EXPECT_TRUE(in_a_process([&] {
    Rich machine;
    fill_the_disk_at(1000);
    return MachdefSave(&machine, path.c_str()) == 0;
  }));
  EXPECT_EQ(contents(path), "old");
  EXPECT_EQ(folder.names(), Names{"machine"});
}

TEST(FailedMachineSave, OnADiskThatFillsUpHalfwayAnswersZeroAndKeepsTheOldFile) {
  const ScratchFolder folder;
  const std::string path = folder / "machine";
  make_file(path, "old");
  EXPECT_TRUE(in_a_process([&] {
    CMachDef machine;
    load(machine, long_record());
    fill_the_disk_at(100000);
    return MachdefSave(&machine, path.c_str()) == 0;
  }));
  EXPECT_EQ(contents(path), "old");
  EXPECT_EQ(folder.names(), Names{"machine"});
}

TEST(FailedMachineSave, OnAFullDiskLeavesNoNewFileEither) {
  const ScratchFolder folder;
  const std::string path = folder / "machine";
  EXPECT_TRUE(in_a_process([&] {
    Rich machine;
    fill_the_disk_at(1000);
    return MachdefSave(&machine, path.c_str()) == 0;
  }));
  EXPECT_EQ(folder.names(), Names{});
}

// The control for the three above: one byte more of room, and the save succeeds.
TEST(FailedMachineSave, IsNoneWhereTheDiskHasJustEnoughRoom) {
  const ScratchFolder folder;
  const std::string path = folder / "machine";
  EXPECT_TRUE(in_a_process([&] {
    Rich machine;
    fill_the_disk_at(2264);
    return MachdefSave(&machine, path.c_str()) == 1;
  }));
  EXPECT_TRUE(in_a_process([&] {
    Rich machine;
    fill_the_disk_at(2263);
    return MachdefSave(&machine, path.c_str()) == 0;
  }));
  EXPECT_SAME_BYTES(contents(path), pack(rich_record()));
}

TEST(FailedMachineSave, ToADeviceThatIsFullAnswersZero) {
  ASSERT_EQ(::access("/dev/full", W_OK), 0);
  Rich machine;
  EXPECT_EQ(MachdefSave(&machine, "/dev/full"), 0);
}

TEST(FailedMachineSave, InAFolderThatMayNotBeWrittenAnswersZeroAndKeepsTheOldFile) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  ASSERT_EQ(::chmod((folder / "machine").c_str(), 0666), 0);
  ASSERT_EQ(::chmod(folder.path().c_str(), 0555), 0);
  EXPECT_TRUE(in_a_process([&] {
    Rich machine;
    if (::chdir(folder.path().c_str()) != 0) return false;
    become_anybody();
    return MachdefSave(&machine, "machine") == 0;
  }));
  ASSERT_EQ(::chmod(folder.path().c_str(), 0777), 0);
  EXPECT_EQ(contents(folder / "machine"), "old");
  EXPECT_EQ(folder.names(), Names{"machine"});
  // The control: what changed is the folder alone.
  EXPECT_TRUE(in_a_process([&] {
    Rich machine;
    if (::chdir(folder.path().c_str()) != 0) return false;
    become_anybody();
    return MachdefSave(&machine, "machine") == 1;
  }));
}

TEST(FailedMachineSave, LeavesTheMachineAsItWas) {
  Rich machine;
  ASSERT_EQ(MachdefSave(&machine, "/dev/full"), 0);
  EXPECT_SAME_BYTES(saved(machine), pack(rich_record()));
}

TEST(FailedMachineSave, LeavesNoFileOpen) {
  Rich machine;
  const std::vector<int> before = open_files();
  ASSERT_EQ(MachdefSave(&machine, "/dev/full"), 0);
  EXPECT_EQ(open_files(), before);
}

TEST(FailedMachineLoad, LeavesNoFileOpen) {
  const ScratchFolder folder;
  make_file(folder / "machine", pack(rich_record()).substr(0, 300));
  CMachDef machine;
  const std::vector<int> before = open_files();
  ASSERT_EQ(MachdefLoad(&machine, (folder / "machine").c_str()), 0);
  EXPECT_EQ(open_files(), before);
}

TEST(Load, LeavesNoFileOpen) {
  const ScratchFolder folder;
  make_file(folder / "machine", pack(rich_record()));
  const std::vector<int> before = open_files();
  CMachDef machine;
  ASSERT_EQ(MachdefLoad(&machine, (folder / "machine").c_str()), 1);
  EXPECT_EQ(open_files(), before);
}

TEST(Load, TakesAFileThatMayOnlyBeRead) {
  const ScratchFolder folder;
  make_file(folder / "machine", pack(rich_record()));
  ASSERT_EQ(::chmod((folder / "machine").c_str(), 0444), 0);
  EXPECT_TRUE(in_a_process([&] {
    CMachDef machine;
    if (::chmod(folder.path().c_str(), 0555) != 0 || ::chdir(folder.path().c_str()) != 0) return false;
    become_anybody();
    return MachdefLoad(&machine, "machine") == 1;
  }));
}
