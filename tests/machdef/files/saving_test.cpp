// MachdefSave and MachdefLoad: what they answer, and what stands on the disk and in the machine afterwards.

#include <cstring>

#include <gtest/gtest.h>

#include "machdef/files/memory_stream.h"
#include "machdef/files/rich_machine.h"
#include "platform/scratch.h"

using namespace k5ax_test;
using md::CMachDef;

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
