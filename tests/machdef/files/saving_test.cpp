// MachdefSave and MachdefLoad: what they answer, and what stands on the disk and in the machine afterwards.

#include <sys/stat.h>
#include <unistd.h>

#include <cstring>

#include <gtest/gtest.h>

#include "machdef/files/memory_stream.h"
#include "machdef/files/rich_machine.h"
#include "platform/scratch.h"

using namespace k5ax_test;
using md::CMachDef;

namespace {

struct Rich : CMachDef {
  Rich() { make_rich(*this); }
};

// A machine whose file is larger than any buffer on the way: 1000 plain nodes of 120 bytes.
MachineRecord long_record() {
  MachineRecord record;
  for (int i = 0; i < 1000; ++i) record.nodes.push_back(node_record(kPlain, i - 1, i, 0, 0, numbers_from(1)));
  record.roots[0] = 0;
  return record;
}

}  // namespace

TEST(Save, MakesAFileOfOneRecordAndNothingElse) {
  const ScratchFolder folder;
  Rich machine;
  EXPECT_EQ(MachdefSave(&machine, (folder / "machine").c_str()), 1);
  EXPECT_SAME_BYTES(contents(folder / "machine"), pack(rich_record()));
  EXPECT_EQ(folder.names(), Names{"machine"});
}

TEST(Save, OfAFreshMachineIs248Bytes) {
  const ScratchFolder folder;
  CMachDef machine;
  EXPECT_EQ(MachdefSave(&machine, (folder / "machine").c_str()), 1);
  EXPECT_SAME_BYTES(contents(folder / "machine"), pack(MachineRecord()));
  EXPECT_EQ(contents(folder / "machine").size(), 248u);
}

TEST(Save, ReplacesALongerFile) {
  const ScratchFolder folder;
  make_file(folder / "machine", std::string(100000, 'x'));
  Rich machine;
  EXPECT_EQ(MachdefSave(&machine, (folder / "machine").c_str()), 1);
  EXPECT_SAME_BYTES(contents(folder / "machine"), pack(rich_record()));
  EXPECT_EQ(folder.names(), Names{"machine"});
}

TEST(Save, ThenLoadGivesAnEqualMachine) {
  const ScratchFolder folder;
  Rich machine;
  ASSERT_EQ(MachdefSave(&machine, (folder / "machine").c_str()), 1);
  CMachDef loaded;
  EXPECT_EQ(MachdefLoad(&loaded, (folder / "machine").c_str()), 1);
  EXPECT_SAME_BYTES(saved(loaded), pack(rich_record()));
}

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

TEST(Save, ToTheFileThatWasLoadedWorks) {
  const ScratchFolder folder;
  const std::string path = folder / "machine";
  make_file(path, pack(rich_record()));
  CMachDef machine;
  ASSERT_EQ(MachdefLoad(&machine, path.c_str()), 1);
  machine.set_mode(static_cast<MACHINE_MODE>(78));
  EXPECT_EQ(MachdefSave(&machine, path.c_str()), 1);
  MachineRecord expected = rich_record();
  expected.mode = 78;
  EXPECT_SAME_BYTES(contents(path), pack(expected));
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

TEST(FailedMachineSave, IntoAMissingFolderAnswersZero) {
  const ScratchFolder folder;
  Rich machine;
  EXPECT_EQ(MachdefSave(&machine, (folder / "missing/machine").c_str()), 0);
  EXPECT_EQ(folder.names(), Names{});
}

TEST(FailedMachineSave, BelowAFileAnswersZeroAndKeepsTheFile) {
  const ScratchFolder folder;
  make_file(folder / "file", "old");
  Rich machine;
  EXPECT_EQ(MachdefSave(&machine, (folder / "file/machine").c_str()), 0);
  EXPECT_EQ(contents(folder / "file"), "old");
  EXPECT_EQ(folder.names(), Names{"file"});
}

TEST(FailedMachineSave, OverAFolderAnswersZeroAndKeepsTheFolder) {
  const ScratchFolder folder;
  ASSERT_TRUE(fs::create_directory(folder / "inner"));
  make_file(folder / "inner/file", "old");
  Rich machine;
  EXPECT_EQ(MachdefSave(&machine, (folder / "inner").c_str()), 0);
  EXPECT_EQ(MachdefSave(&machine, (folder / "inner/").c_str()), 0);
  EXPECT_EQ(contents(folder / "inner/file"), "old");
  EXPECT_EQ(folder.names(), Names{"inner"});
}

TEST(FailedMachineSave, WithoutAPathAnswersZero) {
  Rich machine;
  EXPECT_EQ(MachdefSave(&machine, nullptr), 0);
  EXPECT_EQ(MachdefSave(&machine, ""), 0);
}

TEST(FailedMachineSave, WithAPathTooLongAnswersZero) {
  Rich machine;
  EXPECT_EQ(MachdefSave(&machine, std::string(5000, 'x').c_str()), 0);
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

TEST(FailedMachineLoad, OfAMissingFileAnswersZeroAndLeavesTheMachine) {
  const ScratchFolder folder;
  Rich machine;
  const auto root = machine.SG()[0];
  EXPECT_EQ(MachdefLoad(&machine, (folder / "missing").c_str()), 0);
  EXPECT_SAME_BYTES(saved(machine), pack(rich_record()));
  EXPECT_EQ(machine.SG()[0], root);
  EXPECT_EQ(folder.names(), Names{});
}

TEST(FailedMachineLoad, OfAFolderAnswersZeroAndLeavesTheMachine) {
  const ScratchFolder folder;
  Rich machine;
  EXPECT_EQ(MachdefLoad(&machine, folder.path().c_str()), 0);
  EXPECT_SAME_BYTES(saved(machine), pack(rich_record()));
}

TEST(FailedMachineLoad, WithoutAPathAnswersZeroAndLeavesTheMachine) {
  Rich machine;
  EXPECT_EQ(MachdefLoad(&machine, nullptr), 0);
  EXPECT_EQ(MachdefLoad(&machine, ""), 0);
  EXPECT_SAME_BYTES(saved(machine), pack(rich_record()));
}

TEST(FailedMachineLoad, OfAnEmptyFileAnswersZeroAndLeavesTheMachine) {
  const ScratchFolder folder;
  make_file(folder / "machine", "");
  Rich machine;
  EXPECT_EQ(MachdefLoad(&machine, (folder / "machine").c_str()), 0);
  EXPECT_SAME_BYTES(saved(machine), pack(rich_record()));
}

TEST(FailedMachineLoad, BelowAFileAnswersZero) {
  const ScratchFolder folder;
  make_file(folder / "file", pack(rich_record()));
  CMachDef machine;
  EXPECT_EQ(MachdefLoad(&machine, (folder / "file/machine").c_str()), 0);
}

TEST(FailedMachineLoad, HasWhatWasReadBeforeTheDamage) {
  const ScratchFolder folder;
  make_file(folder / "machine", pack(rich_record()).substr(0, 300));
  CMachDef machine;
  EXPECT_EQ(MachdefLoad(&machine, (folder / "machine").c_str()), 0);
  EXPECT_EQ(machine.getMachType(), MC_HT);
  EXPECT_TRUE(machine.getPrimary());
  EXPECT_FALSE(machine.getSecondary());
}

TEST(FailedMachineLoad, LeavesNoFileOpen) {
  const ScratchFolder folder;
  make_file(folder / "machine", pack(rich_record()).substr(0, 300));
  CMachDef machine;
  const std::vector<int> before = open_files();
  ASSERT_EQ(MachdefLoad(&machine, (folder / "machine").c_str()), 0);
  EXPECT_EQ(open_files(), before);
}

TEST(FailedMachineLoad, LeavesTheFileAsItWas) {
  const ScratchFolder folder;
  const Bytes bytes = pack(rich_record()).substr(0, 300);
  make_file(folder / "machine", bytes);
  CMachDef machine;
  MachdefLoad(&machine, (folder / "machine").c_str());
  EXPECT_SAME_BYTES(contents(folder / "machine"), bytes);
  EXPECT_EQ(folder.names(), Names{"machine"});
}

TEST(Load, IgnoresTrailingBytes) {
  const ScratchFolder folder;
  make_file(folder / "machine", pack(rich_record()) + "what follows");
  CMachDef machine;
  EXPECT_EQ(MachdefLoad(&machine, (folder / "machine").c_str()), 1);
  EXPECT_SAME_BYTES(saved(machine), pack(rich_record()));
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
