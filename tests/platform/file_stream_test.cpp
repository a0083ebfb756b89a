// Reading and writing files through the stream: bytes, buffers, refusals.

#include <algorithm>
#include <cerrno>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <k5ax/platform/stream.h>

#include "allocation_meter.h"
#include "plain_vectors.h"
#include "scratch.h"
#include "stream_bytes.h"

namespace {

using IIO::FILE_READ;
using IIO::FILE_WRITE;
using IIO::FileError;
using IIO::FileStream;
using k5ax_test::contents;
using k5ax_test::error_of;
using k5ax_test::kBuffer;
using k5ax_test::kSmallBuffer;
using k5ax_test::long_text;
using k5ax_test::make_file;
using k5ax_test::read_bytes;
using k5ax_test::reason;
using k5ax_test::save;
using k5ax_test::ScratchFolder;
using testing::EndsWith;
using testing::HasSubstr;

TEST(FileStream, KnowsItsMode) {
  const ScratchFolder folder;
  {
    const FileStream stream((folder / "file").c_str(), FILE_WRITE);
    EXPECT_EQ(stream.Mode(), FILE_WRITE);
  }
  const FileStream stream((folder / "file").c_str(), FILE_READ);
  EXPECT_EQ(stream.Mode(), FILE_READ);
}

TEST(FileStream, FileHoldsTheBytesAndNothingElse) {
  const ScratchFolder folder;
  {
    FileStream stream((folder / "file").c_str(), FILE_WRITE);
    stream << 1 << 0x80000002u;
    stream.Write("raw", 3);
    stream << 1.0;
  }
  const std::string expected("\x01\0\0\0\x02\0\0\x80raw\0\0\0\0\0\0\xf0\x3f", 19);
  EXPECT_EQ(contents(folder / "file"), expected);
}

TEST(FileStream, ReadsWhatTheFileHolds) {
  const ScratchFolder folder;
  make_file(folder / "file", std::string("\x07\0\0\0raw\0\0\0\0\0\0\xe0\xbf", 15));
  FileStream stream((folder / "file").c_str(), FILE_READ);
  int number = 0;
  std::string raw(3, '?');
  double half = 0;
  stream >> number;
  stream.Read(raw.data(), raw.size());
  stream >> half;
  EXPECT_EQ(number, 7);
  EXPECT_EQ(raw, "raw");
  EXPECT_EQ(half, -0.5);
}

TEST(FileStream, FileMayBeEmpty) {
  const ScratchFolder folder;
  save(folder / "file", "");
  EXPECT_EQ(contents(folder / "file"), "");
  EXPECT_EQ(read_bytes(folder / "file", 0), "");
}

TEST(FileStream, NothingMayBeTransferredFromNowhere) {
  const ScratchFolder folder;
  {
    FileStream stream((folder / "file").c_str(), FILE_WRITE);
    stream.Write(nullptr, 0);
    stream << 3;
    stream.Write(nullptr, 0);
  }
  FileStream stream((folder / "file").c_str(), FILE_READ);
  stream.Read(nullptr, 0);
  int number = 0;
  stream >> number;
  stream.Read(nullptr, 0);
  EXPECT_EQ(number, 3);
}

TEST(FileStream, FilesOfAboutABufferComeBackWhole) {
  const ScratchFolder folder;
  int checked = 0;
  for (const std::size_t size : {kSmallBuffer - 1, kSmallBuffer, kSmallBuffer + 1, kBuffer - 1, kBuffer,
                                 kBuffer + 1, 2 * kBuffer, 5 * kBuffer + 7}) {
    const std::string text = long_text(size);
    save(folder / "file", text);
    EXPECT_TRUE(contents(folder / "file") == text) << size;
    EXPECT_TRUE(read_bytes(folder / "file", size) == text) << size;
    ++checked;
  }
  EXPECT_EQ(checked, 8);
}

// Pieces smaller and larger than the buffer in every order, and other pieces back.
TEST(FileStream, PiecesOfAnySizeJoinWithoutAGap) {
  const ScratchFolder folder;
  k5ax_test::Numbers random(20266);
  const std::string text = long_text(3'000'000);
  const auto next_piece = [&](std::size_t done) {
    const std::size_t most = random.below(3) == 0 ? 3 * kBuffer : 100;
    return std::min(static_cast<std::size_t>(random.below(most)), text.size() - done);
  };
  {
    FileStream stream((folder / "file").c_str(), FILE_WRITE);
    for (std::size_t done = 0; done < text.size();) {
      const std::size_t piece = next_piece(done);
      stream.Write(text.data() + done, piece);
      done += piece;
    }
  }
  EXPECT_TRUE(contents(folder / "file") == text);

  std::string back(text.size(), '?');
  FileStream stream((folder / "file").c_str(), FILE_READ);
  for (std::size_t done = 0; done < text.size();) {
    const std::size_t piece = next_piece(done);
    stream.Read(back.data() + done, piece);
    done += piece;
  }
  EXPECT_TRUE(back == text);
}

// From the small buffer over to the large one and on.
TEST(FileStream, SingleBytesJoinWithoutAGap) {
  const ScratchFolder folder;
  const std::string text = long_text(2 * kBuffer + 1);
  {
    FileStream stream((folder / "file").c_str(), FILE_WRITE);
    for (const char& c : text) stream.Write(&c, 1);
  }
  EXPECT_TRUE(contents(folder / "file") == text);

  std::string back(text.size(), '?');
  FileStream stream((folder / "file").c_str(), FILE_READ);
  for (char& c : back) stream.Read(&c, 1);
  EXPECT_TRUE(back == text);
  char more = 0;
  EXPECT_THROW(stream.Read(&more, 1), FileError);
}

// The first bytes are read when the file is opened, the end is looked for when it is reached.
TEST(FileStream, ReadsWhatCameToTheFileAfterOpening) {
  const ScratchFolder folder;
  make_file(folder / "file", "first");
  FileStream stream((folder / "file").c_str(), FILE_READ);
  std::ofstream((folder / "file"), std::ios::app) << "second";
  std::string back(11, '?');
  stream.Read(back.data(), back.size());
  EXPECT_EQ(back, "firstsecond");
}

TEST(FileStream, ReadingPastTheEndNamesThePath) {
  const ScratchFolder folder;
  make_file(folder / "file", "1234567");
  FileStream stream((folder / "file").c_str(), FILE_READ);
  int number = 0;
  stream >> number;
  const std::string message = error_of([&] { stream >> number; });
  EXPECT_THAT(message, HasSubstr(folder / "file"));
  EXPECT_THAT(message, EndsWith("unexpected end of file"));
}

TEST(FileStream, ReadingPastTheEndIsRefusedAgainAndAgain) {
  const ScratchFolder folder;
  make_file(folder / "file", "1234");
  FileStream stream((folder / "file").c_str(), FILE_READ);
  int number = 0;
  stream >> number;
  EXPECT_THROW(stream >> number, FileError);
  EXPECT_THROW(stream >> number, FileError);
}

TEST(FileStream, BlockLargerThanTheFileIsRefused) {
  const ScratchFolder folder;
  make_file(folder / "file", std::string(3 * kBuffer, 'x'));
  EXPECT_THAT(error_of([&] { read_bytes(folder / "file", 3 * kBuffer + 1); }),
              EndsWith("unexpected end of file"));
}

// What a damaged file claims must not decide how much memory is taken.
TEST(FileStream, MemoryDoesNotGrowWithTheBlock) {
  const ScratchFolder folder;
  const std::string text = long_text(20 * kBuffer);
  std::string back(text.size(), '?');
  const std::string path = folder / "file";
  const std::size_t before = k5ax_test::bytes_allocated();
  {
    FileStream stream(path.c_str(), FILE_WRITE);
    stream.Write(text.data(), text.size());
  }
  {
    FileStream stream(path.c_str(), FILE_READ);
    stream.Read(back.data(), back.size());
  }
  const std::size_t after = k5ax_test::bytes_allocated();
  EXPECT_TRUE(back == text);
  // Two streams with a small buffer each, and names.
  EXPECT_GT(after - before, 2 * kSmallBuffer);
  EXPECT_LT(after - before, 2 * kSmallBuffer + 8192);
}

TEST(FileStream, ReadingAStreamForWritingIsRefusedAndDoesNoHarm) {
  const ScratchFolder folder;
  {
    FileStream stream((folder / "file").c_str(), FILE_WRITE);
    int number = 5;
    EXPECT_THAT(error_of([&] { stream >> number; }), HasSubstr("opened for writing"));
    EXPECT_EQ(number, 5);
    stream.Write("kept", 4);
  }
  EXPECT_EQ(contents(folder / "file"), "kept");
}

TEST(FileStream, WritingAStreamForReadingIsRefusedAndDoesNoHarm) {
  const ScratchFolder folder;
  make_file(folder / "file", "kept");
  {
    FileStream stream((folder / "file").c_str(), FILE_READ);
    EXPECT_THAT(error_of([&] { stream << 1; }), HasSubstr("opened for reading"));
  }
  EXPECT_EQ(contents(folder / "file"), "kept");
}

TEST(FileStream, MissingFileCannotBeRead) {
  const ScratchFolder folder;
  const std::string message = error_of([&] { read_bytes(folder / "none", 0); });
  EXPECT_THAT(message, HasSubstr(folder / "none"));
  EXPECT_THAT(message, EndsWith(reason(ENOENT)));
}

TEST(FileStream, NullPathIsRefused) {
  EXPECT_THAT(error_of([] { FileStream(nullptr, FILE_READ); }), HasSubstr("null"));
  EXPECT_THAT(error_of([] { FileStream(nullptr, FILE_WRITE); }), HasSubstr("null"));
}

TEST(FileStream, EmptyPathIsRefused) {
  EXPECT_THAT(error_of([] { FileStream("", FILE_READ); }), EndsWith(reason(ENOENT)));
  EXPECT_THAT(error_of([] { FileStream("", FILE_WRITE); }), EndsWith(reason(ENOENT)));
}

TEST(FileStream, UnknownModeIsRefused) {
  const ScratchFolder folder;
  const std::string path = folder / "file";
  EXPECT_THAT(error_of([&] { FileStream(path.c_str(), static_cast<IIO::FILE_MODE>(7)); }),
              HasSubstr("mode 7"));
  EXPECT_TRUE(folder.names().empty());
}

}  // namespace
