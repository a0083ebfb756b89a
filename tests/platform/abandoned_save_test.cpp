// Saves that the host gives up: an exception goes past the stream, and nothing is saved.

#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include <k5ax/platform/stream.h>

#include "scratch.h"

namespace {

using IIO::FILE_WRITE;
using IIO::FileStream;
using k5ax_test::contents;
using k5ax_test::make_file;
using k5ax_test::Names;
using k5ax_test::ScratchFolder;

TEST(AbandonedSave, ExceptionWhileWritingLeavesTheOldFile) {
  const ScratchFolder folder;
  make_file(folder / "machine", "old");
  const std::string large(200000, 'n');
  EXPECT_THROW(
      {
        FileStream stream((folder / "machine").c_str(), FILE_WRITE);
        stream.Write(large.data(), large.size());
        throw std::logic_error("the machine cannot be written");
      },
      std::logic_error);
  EXPECT_EQ(contents(folder / "machine"), "old");
  EXPECT_EQ(folder.names(), Names{"machine"});
}

TEST(AbandonedSave, ExceptionWhileWritingLeavesNoNewFile) {
  const ScratchFolder folder;
  EXPECT_THROW(
      {
        FileStream stream((folder / "machine").c_str(), FILE_WRITE);
        stream << 1;
        throw std::logic_error("the machine cannot be written");
      },
      std::logic_error);
  EXPECT_TRUE(folder.names().empty());
}

}  // namespace
