// The machine files that are handed out, damaged in every way that one cut or one wrong byte can: each is
// refused or read as it stands, soon, in bounded memory, and what was read can be used.

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <stdexcept>

#include <gtest/gtest.h>

#include "machdef/files/memory_stream.h"
#include "platform/scratch.h"
#include "support/memory_shortage.h"
#include "support/pools.h"
#include "support/use_machine.h"

using namespace k5ax_test;
using md::CMachDef;

namespace {

constexpr double kMostSeconds = 2;
constexpr std::size_t kMostBytesPerByte = 64;
constexpr std::size_t kMostBytesBeside = std::size_t{16} << 20;

// Every how many-th byte is changed: 1 for all of them.
std::size_t stride() {
  const char* const text = std::getenv("K5AX_DAMAGE_STRIDE");
  const long given = text == nullptr ? 0 : std::strtol(text, nullptr, 10);
  return given > 0 ? static_cast<std::size_t>(given) : K5AX_DAMAGE_STRIDE;
}

// Every how many-th word is set to its extremes: words are a tenth as many cases as bytes.
std::size_t word_stride() { return 1 + stride() / 32; }

std::vector<std::string> machine_files() {
  std::vector<std::string> files;
  for (const fs::directory_entry& entry : fs::directory_iterator(K5AX_MACHINES_FOLDER))
    if (entry.path().extension() == ".k5m") files.push_back(entry.path().string());
  std::sort(files.begin(), files.end());
  return files;
}

bool reads(CMachDef& machine, const Bytes& bytes) {
  try {
    read_bytes(machine, bytes);
  } catch (const std::runtime_error&) {
    return false;
  }
  return true;
}

// Reads the bytes, uses what came of it, and holds time and memory against the bounds. Answers whether they
// were read.
bool read_and_use(const Bytes& bytes) {
  forget_peak();
  const std::size_t before = bytes_in_use();
  const auto start = std::chrono::steady_clock::now();
  CMachDef machine;
  const bool is_read = reads(machine, bytes);
  const std::size_t peak = peak_bytes_in_use() - before;
  EXPECT_EQ(use_machine(machine), "");
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
  EXPECT_LT(time.count(), kMostSeconds);
  EXPECT_LT(peak, kMostBytesPerByte * bytes.size() + kMostBytesBeside);
  return is_read;
}

class MachineFile : public testing::TestWithParam<std::string> {
 protected:
  void SetUp() override {
    m_bytes = contents(GetParam());
    CMachDef machine;
    ASSERT_TRUE(reads(machine, m_bytes)) << GetParam();
  }

  void report(int read, int refused) {
    RecordProperty("read", read);
    RecordProperty("refused", refused);
    std::cout << "damaged files: " << read + refused << ", read " << read << ", refused " << refused << '\n';
  }

  Bytes m_bytes;
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Shipped, MachineFile, testing::ValuesIn(machine_files()),
                         [](const testing::TestParamInfo<std::string>& path) {
                           return fs::path(path.param).stem().string();
                         });

TEST_P(MachineFile, IsRefusedAtEveryLengthButItsOwn) {
  const ScratchFolder folder;
  const std::string path = folder / "machine";
  make_file(path, m_bytes);
  int refused = 0;
  for (std::size_t length = m_bytes.size(); length-- > 0;) {
    fs::resize_file(path, length);
    CMachDef machine;
    ASSERT_EQ(MachdefLoad(&machine, path.c_str()), 0) << length << " bytes";
    ASSERT_EQ(use_machine(machine), "") << length << " bytes";
    ++refused;
  }
  EXPECT_EQ(static_cast<std::size_t>(refused), m_bytes.size());
  report(0, refused);
}

TEST_P(MachineFile, IsReadOrRefusedWithAnyByteChangedToAnyOther) {
  int read = 0;
  int refused = 0;
  // The first bytes of the places differ from file to file, so that even a sample meets every field.
  const std::size_t first = GetParam().size() % stride();
  for (std::size_t at = first; at < m_bytes.size(); at += stride()) {
    for (int change = 1; change < 256; ++change) {
      Bytes bytes = m_bytes;
      bytes[at] = static_cast<char>(bytes[at] ^ change);
      (read_and_use(bytes) ? read : refused) += 1;
      ASSERT_FALSE(HasFailure()) << "byte " << at << " with the bits " << change << " turned over";
    }
  }
  const std::size_t places = (m_bytes.size() - first + stride() - 1) / stride();
  EXPECT_EQ(static_cast<std::size_t>(read + refused), places * 255);
  EXPECT_GT(read, refused);  // most bytes are of numbers, which are taken as they stand
  report(read, refused);
}

TEST(MachineFiles, AreThere) { EXPECT_GE(machine_files().size(), 4u); }

// Every enum, count, index and kind is a word, and so is half of every number.
TEST_P(MachineFile, IsReadOrRefusedWithAnyWordAtItsExtremes) {
  int read = 0;
  int refused = 0;
  for (std::size_t at = 0; at + 4 <= m_bytes.size(); at += 4 * word_stride()) {
    for (const int value : {0, 1, 2, 3, 4, 8, 9, 10, -1, -2, -999, 2147483647, -2147483647 - 1}) {
      Bytes bytes = m_bytes;
      bytes.replace(at, 4, pack(value));
      (read_and_use(bytes) ? read : refused) += 1;
      ASSERT_FALSE(HasFailure()) << "word at " << at << " set to " << value;
    }
  }
  EXPECT_GT(read, refused);
  if (word_stride() == 1) {
    EXPECT_GT(refused, 30);
  }  // at least the kinds of the nodes, and their count
  report(read, refused);
}
