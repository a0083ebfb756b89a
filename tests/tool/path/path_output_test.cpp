// How numbers are written, and what becomes of files.
#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <limits>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <system_error>

#include "tool/errors.h"
#include "tool/process.h"
#include "tool/toolpath/output.h"

namespace {

using tool::Output;

std::string written(double value) {
  static std::string text;
  static Output output([](const char* data, std::size_t size) { text.assign(data, size); });
  output.reserve(Output::kNumberRoom);
  output.put_number(value);
  output.pass_on();
  return text;
}

TEST(PathOutput, WritesPlainDecimals) {
  EXPECT_EQ(written(0.1), "0.1");
  EXPECT_EQ(written(-12.5), "-12.5");
  EXPECT_EQ(written(1e5), "100000");
  EXPECT_EQ(written(1.5e-7), "0.00000015");
  EXPECT_EQ(written(1e22), "10000000000000000000000");
}

TEST(PathOutput, WritesNoMinusBeforeZero) { EXPECT_EQ(written(-0.0), "0"); }

// What std::to_chars takes for the shortest: of numbers with few decimals, of the doubles next to those, and
// of what is too large to be told by its millionths.
TEST(PathOutput, WritesTheShortestDecimals) {
  std::mt19937_64 random(19);
  int tried = 0;
  for (double power = 1; power <= 1e9; power *= 10) {
    for (int i = 0; i < 20000; ++i) {
      const auto digits = static_cast<std::int64_t>(random() >> (11 + random() % 50));  // below 2^53
      const double near = (i % 2 == 0 ? 1 : -1) * static_cast<double>(digits) / power;
      for (const double value : {near, std::nextafter(near, 0.0), std::nextafter(near, 1e300)}) {
        char shortest[400];
        char* const end =
            std::to_chars(shortest, shortest + sizeof shortest, value + 0.0, std::chars_format::fixed).ptr;
        ASSERT_EQ(written(value), std::string(shortest, end));
        ++tried;
      }
    }
  }
  EXPECT_EQ(tried, 10 * 20000 * 3);
}

TEST(PathOutput, HasRoomForEveryNumber) {
  for (const double value : {std::numeric_limits<double>::max(), std::numeric_limits<double>::denorm_min(),
                             2.2250738585072009e-308, 4.4501477170144023e-308}) {
    EXPECT_LE(written(-value).size(), Output::kNumberRoom);
    EXPECT_EQ(std::strtod(written(-value).c_str(), nullptr), -value);
  }
}

// Read by the C library, which is another reader than the one that wrote it.
TEST(PathOutput, WritesWhatReadsBackExactly) {
  std::mt19937_64 random(11);
  int tried = 0;
  while (tried < 100000) {
    const std::uint64_t bits = random();
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    if (!std::isfinite(value)) continue;
    ASSERT_EQ(std::strtod(written(value).c_str(), nullptr), value) << written(value);
    ++tried;
  }
}

TEST(PathOutput, WritesNoMoreDigitsThanItTakes) {
  std::mt19937_64 random(12);
  for (int i = 0; i < 10000; ++i) {
    const double value = static_cast<double>(random() % 2000000000) / 1e6;  // six decimals at most
    const std::string text = written(value);
    const std::size_t point = text.find('.');
    ASSERT_LE(point == std::string::npos ? 0 : text.size() - point - 1, 6U) << text;
  }
}

TEST(PathOutput, PassesOnWhatNoLongerFits) {
  std::string text;
  int pieces = 0;
  Output output([&](const char* data, std::size_t size) {
    text.append(data, size);
    ++pieces;
  });
  const std::string line = "0123456789\n";
  std::string wanted;
  while (wanted.size() < 2 * Output::kMostAtOnce) {
    output.reserve(line.size());
    output.put(line);
    wanted += line;
  }
  output.pass_on();
  EXPECT_EQ(text, wanted);
  EXPECT_EQ(pieces, 3);
}

TEST(PathOutput, LeavesTheOldFileWhenTheWorkFails) {
  const std::string folder = tool_test::make_folder("output");
  const std::string path = folder + "/rows.csv";
  tool_test::write_file(path, "old");
  std::ostringstream standard;
  EXPECT_THROW(tool::with_output(path, standard,
                                 [](Output& output) {
                                   output.reserve(3);
                                   output.put("new");
                                   output.pass_on();
                                   throw std::runtime_error("half way");
                                 }),
               std::runtime_error);
  EXPECT_EQ(tool_test::read_file(path), "old");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
}

TEST(PathOutput, ReplacesTheOldFileWhenTheWorkIsDone) {
  const std::string path = tool_test::make_folder("output") + "/rows.csv";
  tool_test::write_file(path, "old");
  std::ostringstream standard;
  tool::with_output(path, standard, [](Output& output) {
    output.reserve(3);
    output.put("new");
  });
  EXPECT_EQ(tool_test::read_file(path), "new");
  EXPECT_EQ(standard.str(), "");
}

// In the system's words, and up to the full stop that Windows ends them with.
#ifdef _WIN32
constexpr int kPathNotFound = 3;
const std::string system_words = std::system_category().message(kPathNotFound);
const std::string kNoSuchFolder = system_words.substr(0, system_words.find_last_not_of(" .\r\n") + 1);
#else
const std::string kNoSuchFolder = "No such file";
#endif

TEST(PathOutput, SaysWhyAFileCannotBeWritten) {
  std::ostringstream standard;
  const std::string path = tool_test::make_folder("output") + "/none/rows.csv";
  try {
    tool::with_output(path, standard, [](Output&) {});
    FAIL() << "no failure";
  } catch (const tool::InputError& error) {
    const std::string what = error.what();
    EXPECT_EQ(what.rfind(path + ": ", 0), 0U) << what;
    EXPECT_NE(what.find(kNoSuchFolder), std::string::npos) << what;
  }
}

}  // namespace
