// Lines out of pieces, wherever the pieces and the buffer end.
#include <gtest/gtest.h>

#include <istream>
#include <string>
#include <vector>

#include "tool/errors.h"
#include "tool/path/pieces.h"
#include "tool/toolpath/input.h"
#include "tool/toolpath/line_reader.h"

namespace {

using tool::Input;
using tool::Line;
using tool::LineReader;
using tool_test::Pieces;

// Each line as "number:text|end".
std::vector<std::string> lines_of(const std::string& text, std::size_t piece, std::size_t capacity) {
  Pieces pieces(text, piece);
  std::istream stream(&pieces);
  Input input("-", stream);
  LineReader reader(input, capacity);
  std::vector<std::string> lines;
  Line line;
  while (reader.read_more())
    while (reader.next(line))
      lines.push_back(std::to_string(line.number) + ":" + std::string(line.text) + "|" +
                      std::string(line.end));
  EXPECT_EQ(reader.bytes_read(), text.size());
  return lines;
}

std::string failure_of(const std::string& text, std::size_t capacity) {
  try {
    lines_of(text, 1000, capacity);
  } catch (const tool::InputError& error) {
    return error.what();
  }
  return "no failure";
}

TEST(CsvLines, AreTheSameWhereverPiecesAndBufferEnd) {
  const std::string text = "ab\r\n\n\r\ncdefg\nh\ri\n\r\r\nlast";
  const std::vector<std::string> wanted = {"1:ab|\r\n", "2:|\n",     "3:|\r\n", "4:cdefg|\n",
                                           "5:h\ri|\n", "6:\r|\r\n", "7:last|"};
  int tried = 0;
  for (std::size_t piece = 1; piece <= text.size() + 1; ++piece) {
    for (std::size_t capacity = 6; capacity <= text.size() + 1; ++capacity) {  // "cdefg\n" has to fit
      ASSERT_EQ(lines_of(text, piece, capacity), wanted)
          << "pieces of " << piece << ", buffer of " << capacity;
      ++tried;
    }
  }
  EXPECT_GT(tried, 300);
}

TEST(CsvLines, OfNothingAreNone) { EXPECT_TRUE(lines_of("", 1, 8).empty()); }

TEST(CsvLines, EndInTheVeryLastByte) {
  EXPECT_EQ(lines_of("a\n", 1, 8), (std::vector<std::string>{"1:a|\n"}));
}

// Whoever reads a number reads on until something else comes. In the buffer stands the text of before.
TEST(CsvLines, HaveAControlCharacterBehindThemEvenAtTheVeryEnd) {
  Pieces pieces("a,b\n1234567\n12", 4);
  std::istream stream(&pieces);
  Input input("-", stream);
  LineReader reader(input, 8);
  std::string behind;
  Line line;
  while (reader.read_more())
    while (reader.next(line)) behind += line.text.data()[line.text.size()];
  EXPECT_EQ(behind, std::string("\n\n\0", 3));
}

TEST(CsvLines, AsLongAsTheBufferAreRead) {
  EXPECT_EQ(lines_of("a\n1234567\n", 3, 8), (std::vector<std::string>{"1:a|\n", "2:1234567|\n"}));
}

TEST(CsvLines, LongerThanTheBufferAreRefusedWithTheirNumber) {
  EXPECT_EQ(failure_of("a\n12345678\n", 8),
            "-:2: a line of more than 8 bytes; give a text of short lines, one position in each");
}

TEST(CsvLines, LastOneWithoutEndMayNotBeLongerEither) {
  EXPECT_EQ(failure_of("123456789", 8),
            "-:1: a line of more than 8 bytes; give a text of short lines, one position in each");
}

}  // namespace
