// Names and paths on Windows: UTF-8 in the interface, and longer than its own functions take them.

#include "windows_scratch.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <k5ax/machdef.h>

namespace {

using k5ax_test::contents;
using k5ax_test::error_of;
using k5ax_test::Names;
using k5ax_test::save;
using k5ax_test::ScratchFolder;
using k5ax_test::system_reason;
using k5ax_test::wide;
using testing::EndsWith;

// Latin, Cyrillic, Chinese, and a letter that takes two units of UTF-16.
const std::string kName = "Fr\u00e4se \u0441\u0442\u0430\u043d\u043e\u043a \u6a5f\u68b0 \U0001f6e0.k5m";

std::string read_text(const std::string& path, std::size_t size) {
  IIO::FileStream stream(path.c_str(), IIO::FILE_READ);
  std::string text(size, '?');
  stream.Read(text.data(), size);
  return text;
}

TEST(WindowsPath, IsUtf8) {
  const ScratchFolder folder;
  save(folder / kName, "new");
  save(folder / kName, "newer");
  EXPECT_EQ(folder.names(), Names{kName});
  EXPECT_EQ(contents(folder / kName), "newer");
  EXPECT_EQ(read_text(folder / kName, 5), "newer");
}

TEST(WindowsPath, IsUtf8OfTheFlatFunctionsToo) {
  const ScratchFolder folder;
  md::CMachDef machine;
  machine.setMachType(MC_HH);
  EXPECT_EQ(MachdefSave(&machine, (folder / kName).c_str()), 1);
  EXPECT_EQ(folder.names(), Names{kName});
  md::CMachDef loaded;
  EXPECT_EQ(MachdefLoad(&loaded, (folder / kName).c_str()), 1);
  EXPECT_EQ(loaded.getMachType(), MC_HH);
}

TEST(WindowsPath, StandsInMessagesAsItWasGiven) {
  const ScratchFolder folder;
  EXPECT_EQ(error_of([&] { read_text(folder / kName, 1); }),
            '"' + (folder / kName) + "\": cannot open for reading: " + system_reason(ERROR_FILE_NOT_FOUND));
}

TEST(WindowsPath, ThatIsNotUtf8IsRefused) {
  const ScratchFolder folder;
  const std::string path = folder.path() + "\\machine\xff";
  EXPECT_THAT(error_of([&] { save(path, "new"); }),
              EndsWith("cannot open for writing: the path is not UTF-8"));
  EXPECT_THAT(error_of([&] { read_text(path, 1); }),
              EndsWith("cannot open for reading: the path is not UTF-8"));
  EXPECT_TRUE(folder.names().empty());
}

TEST(WindowsPath, ThatIsEmptyIsRefused) {
  EXPECT_THAT(error_of([] { save("", "new"); }), EndsWith(system_reason(ERROR_FILE_NOT_FOUND)));
  EXPECT_THAT(error_of([] { read_text("", 1); }), EndsWith(system_reason(ERROR_FILE_NOT_FOUND)));
}

TEST(WindowsPath, TakesSlashesOfBothKinds) {
  const ScratchFolder folder;
  k5ax_test::fs::create_directory(folder / "deep");
  save(folder.path() + "/deep\\machine", "new");
  EXPECT_EQ(read_text(folder.path() + "\\deep/machine", 3), "new");
}

// The system's own functions take 260 characters, where a program does not ask for more.
TEST(WindowsPath, MayBeLongerThan260Characters) {
  const ScratchFolder folder;
  const std::string name(100, 'm');
  std::string deep = folder.path();
  const auto long_form = [](const std::string& path) { return L"\\\\?\\" + wide(path); };
  for (int i = 0; i < 4; ++i) {
    deep += "\\" + name;
    ASSERT_NE(::CreateDirectoryW(long_form(deep).c_str(), nullptr), 0);
  }
  const std::string path = deep + "\\machine";
  ASSERT_GT(path.size(), 400u);

  save(path, "new");
  save(path, "newer");
  EXPECT_EQ(read_text(path, 5), "newer");
  EXPECT_THAT(error_of([&] { save(deep + "\\none\\machine", "new"); }),
              EndsWith(system_reason(ERROR_PATH_NOT_FOUND)));

  // The folder is removed from its end on: the standard library does not get there.
  EXPECT_NE(::DeleteFileW(long_form(path).c_str()), 0);
  for (; deep.size() > folder.path().size(); deep.resize(deep.size() - name.size() - 1)) {
    EXPECT_NE(::RemoveDirectoryW(long_form(deep).c_str()), 0) << "something stayed in " << deep;
  }
}

TEST(WindowsPath, MayBeInTheLongFormAlready) {
  const ScratchFolder folder;
  save("\\\\?\\" + (folder / "machine"), "new");
  EXPECT_EQ(contents(folder / "machine"), "new");
}

}  // namespace
