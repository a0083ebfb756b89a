// Saving over what is there: when the new file takes its place.

#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include <k5ax/platform/stream.h>

#include "scratch.h"

namespace {

namespace fs = std::filesystem;
using IIO::FILE_WRITE;
using IIO::FileStream;
using k5ax_test::contents;
using k5ax_test::make_file;
using k5ax_test::Names;
using k5ax_test::save;
using k5ax_test::ScratchFolder;

TEST(Saving, NewFileIsThereAtTheEnd) {
  const ScratchFolder folder;
  save(folder / "machine", "new");
  EXPECT_EQ(contents(folder / "machine"), "new");
  EXPECT_EQ(folder.names(), Names{"machine"});
}

TEST(Saving, NewFileIsNotThereBeforeTheEnd) {
  const ScratchFolder folder;
  {
    FileStream stream((folder / "machine").c_str(), FILE_WRITE);
    stream.Write("new", 3);
    EXPECT_FALSE(fs::exists(folder / "machine"));
  }
  EXPECT_TRUE(fs::exists(folder / "machine"));
}

TEST(Saving, OldFileStandsUntilTheEnd) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  const std::string more_than_a_buffer(200000, 'n');
  {
    FileStream stream((folder / "machine").c_str(), FILE_WRITE);
    EXPECT_EQ(contents(folder / "machine"), "old");
    stream.Write(more_than_a_buffer.data(), more_than_a_buffer.size());
    EXPECT_EQ(contents(folder / "machine"), "old");
  }
  EXPECT_TRUE(contents(folder / "machine") == more_than_a_buffer);
  EXPECT_EQ(folder.names(), Names{"machine"});
}

TEST(Saving, ShorterFileLeavesNothingOfALongerOne) {
  const ScratchFolder folder;
  make_file(folder / "machine", "a long old text");
  save(folder / "machine", "new");
  EXPECT_EQ(contents(folder / "machine"), "new");
}

TEST(Saving, NewFileHasANameThatNobodyExpects) {
  const ScratchFolder folder;
  const FileStream one((folder / "machine").c_str(), FILE_WRITE);
  const Names first = folder.names();
  const FileStream two((folder / "machine").c_str(), FILE_WRITE);
  const Names both = folder.names();
  ASSERT_EQ(first.size(), 1u);
  ASSERT_EQ(both.size(), 2u);
  EXPECT_NE(both[0], both[1]);
  // Hidden, and 16 digits of chance.
  ASSERT_EQ(first[0].size(), std::string(".k5ax-0123456789abcdef.tmp").size());
  EXPECT_EQ(first[0].substr(0, 6), ".k5ax-");
  EXPECT_EQ(first[0].substr(6, 16).find_first_not_of("0123456789abcdef"), std::string::npos) << first[0];
  EXPECT_EQ(first[0].substr(22), ".tmp");
}

TEST(Saving, LastOfTwoSavesToOneFileWins) {
  const ScratchFolder folder;
  {
    FileStream outer((folder / "machine").c_str(), FILE_WRITE);
    outer.Write("outer", 5);
    {
      FileStream inner((folder / "machine").c_str(), FILE_WRITE);
      inner.Write("inner", 5);
    }
    EXPECT_EQ(contents(folder / "machine"), "inner");
  }
  EXPECT_EQ(contents(folder / "machine"), "outer");
  EXPECT_EQ(folder.names(), Names{"machine"});
}

// File systems take names of 255 bytes.
TEST(Saving, NameMayBeAsLongAsNamesCanBe) {
  const ScratchFolder folder;
  const std::string name(255, 'm');
  save(folder / name, "new");
  save(folder / name, "newer");
  EXPECT_EQ(contents(folder / name), "newer");
}

TEST(Saving, RelativePathMeansTheFolderOfTheStart) {
  const ScratchFolder folder;
  fs::create_directory(folder / "here");
  fs::create_directory(folder / "there");
  const fs::path before = fs::current_path();
  fs::current_path(folder / "here");
  {
    FileStream stream("machine", FILE_WRITE);
    stream.Write("new", 3);
    fs::current_path(folder / "there");
  }
  fs::current_path(before);
  EXPECT_EQ(contents(folder / "here/machine"), "new");
  EXPECT_TRUE(fs::is_empty(folder / "there"));
}

// A save may well be made while an error is being dealt with, in a destructor on its way out. It is a save
// like any.
TEST(Saving, SucceedsWhileAnExceptionIsOnItsWay) {
  const ScratchFolder folder;
  struct SavesAtTheEnd {
    std::string path;
    ~SavesAtTheEnd() { save(path, "new"); }
  };
  try {
    const SavesAtTheEnd saves{folder / "machine"};
    throw std::runtime_error("on its way");
  } catch (const std::runtime_error&) {
  }
  EXPECT_EQ(contents(folder / "machine"), "new");
}

}  // namespace
