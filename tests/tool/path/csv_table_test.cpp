// Tables: what comes out of what goes in, and what is refused.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <istream>
#include <ostream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "tool/errors.h"
#include "tool/path/pieces.h"
#include "tool/toolpath/row_stream.h"

namespace {

using tool::ColumnUse;
using tool::PathRow;
using tool::TablePlan;
using tool_test::Pieces;

// x, y, z and c are there, a may be, the machine has no B. x, y, z get new numbers.
TablePlan plan() {
  TablePlan plan;
  plan.use = {ColumnUse::kRequired, ColumnUse::kRequired, ColumnUse::kRequired,
              ColumnUse::kOptional, ColumnUse::kZero,     ColumnUse::kRequired};
  plan.rewritten = {true, true, true, false, false, false};
  return plan;
}

constexpr std::size_t kWhole = 100000;

template <class Convert>
std::string stream(const std::string& text, const TablePlan& table_plan, Convert convert,
                   std::size_t piece = kWhole, std::size_t capacity = tool::LineReader::kCapacity) {
  Pieces pieces(text, piece);
  std::istream in(&pieces);
  std::ostringstream terminal;
  std::ostringstream result;
  tool::Input input("-", in);
  tool::Progress progress(terminal, false, 0);
  tool::with_output("-", result, [&](tool::Output& output) {
    tool::stream_rows(input, table_plan, output, progress, convert, capacity);
  });
  return result.str();
}

// Adds 1 to x, 2 to y and 3 to z.
void move(PathRow& row) {
  for (std::size_t i = 0; i < 3; ++i) row.values[i] += static_cast<double>(i) + 1;
}

std::string moved(const std::string& text) { return stream(text, plan(), move); }

std::string failure_of(const std::string& text, const TablePlan& table_plan = plan()) {
  try {
    stream(text, table_plan, move);
  } catch (const tool::InputError& error) {
    return error.what();
  }
  return "no failure";
}

TEST(CsvTable, GivesNewNumbersAndKeepsEverythingElse) {
  EXPECT_EQ(moved("x,y,z,a,b,c\n1,2,3,4.50,0.000,6e1\n"), "x,y,z,a,b,c\n2,4,6,4.50,0.000,6e1\n");
}

TEST(CsvTable, TakesColumnsInAnyOrderAndCase) {
  EXPECT_EQ(moved("C,z,Y,x\n90,3,2,1\n"), "C,z,Y,x\n90,6,4,2\n");
}

TEST(CsvTable, PassesFurtherColumnsOn) {
  EXPECT_EQ(moved("n,x,feed,y,z,c,note\n10,1,F800,2,3,0,\"a, \"\"b\"\"\"\n"),
            "n,x,feed,y,z,c,note\n10,2,F800,4,6,0,\"a, \"\"b\"\"\"\n");
}

TEST(CsvTable, KeepsEndsOfLinesBlankLinesAndAMissingLastEnd) {
  EXPECT_EQ(moved("\r\n \nx,y,z,c\r\n1,2,3,0\n\n\t\r\n1,2,3,0\r\n1,2,3,0"),
            "\r\n \nx,y,z,c\r\n2,4,6,0\n\n\t\r\n2,4,6,0\r\n2,4,6,0");
}

TEST(CsvTable, KeepsBlanksAroundNumbersAndNames) {
  EXPECT_EQ(moved(" x ,\ty, z,c \n 1 ,\t2,  3 , 0\t\n"), " x ,\ty, z,c \n 2 ,\t4,  6 , 0\t\n");
}

TEST(CsvTable, TakesNumbersInQuotesAndWithAPlus) {
  EXPECT_EQ(moved("\"x\",\"y\",z,c\n\"1\",+2,\" +3 \",\"0\"\n"), "\"x\",\"y\",z,c\n2,4,6,\"0\"\n");
}

TEST(CsvTable, DropsAByteOrderMark) {
  EXPECT_EQ(moved("\xef\xbb\xbfx,y,z,c\n1,2,3,0\n"), "x,y,z,c\n2,4,6,0\n");
}

TEST(CsvTable, OfAHeaderAloneIsAHeader) { EXPECT_EQ(moved("x,y,z,c"), "x,y,z,c"); }

TEST(CsvTable, IsTheSameWhereverPiecesAndBufferEnd) {
  const std::string text = "x,y,z,note,c\r\n-1.25,2,3,\"a,b\",90\n\n-1.25,+2, 3,,90\r\n1e2,22,3,t,9";
  const std::string wanted = "x,y,z,note,c\r\n-0.25,4,6,\"a,b\",90\n\n-0.25,4, 6,,90\r\n101,24,6,t,9";
  int tried = 0;
  for (std::size_t piece = 1; piece <= text.size(); ++piece) {
    for (std::size_t capacity = 24; capacity <= text.size() + 1; ++capacity) {  // the longest line has 23
      ASSERT_EQ(stream(text, plan(), move, piece, capacity), wanted)
          << "pieces of " << piece << ", buffer of " << capacity;
      ++tried;
    }
  }
  EXPECT_GT(tried, 1000);
}

// A field that reads as in the row before is not parsed again: these nearly do.
TEST(CsvTable, TellsFieldsApartThatBeginAlike) {
  const std::vector<std::string> fields = {"12345678", "123456789", "12345678",   "12345679",   "1",
                                           "12",       "1",         "1.0",        "1",          "1 ",
                                           "12345678", "12345678 ", "12345678.5", "12345678.25"};
  std::string text = "x,y,z,c";
  std::string wanted = "x,y,z,c,i";
  for (const std::string& field : fields) {
    text += "\n0,0,0," + field;
    const double value = std::strtod(field.c_str(), nullptr);
    char shown[40];
    std::snprintf(shown, sizeof shown, "%.10g", value);
    wanted += "\n0,0,0," + field + "," + shown;
  }
  TablePlan table_plan = plan();
  table_plan.appended = {"i"};
  EXPECT_EQ(stream(text, table_plan, [](PathRow& row) { row.appended[0] = row.values[5]; }), wanted);
}

// Each row comes as a piece of its own and lands where the row before stood.
TEST(CsvTable, ParsesFieldsAnewWhenTheLineBeforeIsGone) {
  std::vector<double> angles;
  stream(
      "x,y,z,c\n0,0,0,1\n0,0,0,2\n0,0,0,3\n", plan(),
      [&angles](PathRow& row) { angles.push_back(row.values[5]); }, 8);
  EXPECT_EQ(angles, (std::vector<double>{1, 2, 3}));
}

TEST(CsvTable, KeepsTheTextOfANumberThatStaysWhatItIs) {
  EXPECT_EQ(stream("x,y,z,c\n1.500,+2,\"3\",0\n", plan(), [](PathRow& row) { row.values[1] = 7; }),
            "x,y,z,c\n1.500,7,\"3\",0\n");
}

TEST(CsvTable, AppendsColumns) {
  TablePlan table_plan = plan();
  table_plan.appended_if_missing[3] = true;
  table_plan.appended = {"i", "j"};
  const auto convert = [](PathRow& row) {
    row.values[3] = 30;
    row.appended = {0.5, -0.25, 0};
  };
  EXPECT_EQ(stream("x,y,z,c\r\n1,2,3,4\r\n", table_plan, convert),
            "x,y,z,c,a,i,j\r\n1,2,3,4,30,0.5,-0.25\r\n");
}

TEST(CsvTable, AppendsNoColumnThatIsThere) {
  TablePlan table_plan = plan();
  table_plan.rewritten[3] = true;
  table_plan.appended_if_missing[3] = true;
  EXPECT_EQ(stream("x,y,a,z,c\n1,2,3,4,5\n", table_plan, [](PathRow& row) { row.values[3] = 30; }),
            "x,y,a,z,c\n1,2,30,4,5\n");
}

TEST(CsvTable, CountsLinesAsAnEditorDoes) {
  std::vector<std::uint64_t> lines;
  stream("\nx,y,z,c\n\n1,2,3,0\n1,2,3,0", plan(), [&lines](PathRow& row) { lines.push_back(row.line); });
  EXPECT_EQ(lines, (std::vector<std::uint64_t>{4, 5}));
}

TEST(CsvTable, ReadsAZeroWhereAnOptionalColumnIsMissing) {
  double a = 5;
  stream("x,y,z,c\n1,2,3,4", plan(), [&a](PathRow& row) { a = row.values[3]; });
  EXPECT_EQ(a, 0);
}

TEST(CsvTable, RefusesWhatIsNoNumberWithItsPlace) {
  EXPECT_EQ(failure_of("x,y,z,c\n1,2,3,0\n1, two,3,0\n"),
            "-:3:4: column y: 'two' is not a number; write one such as -12.5");
  EXPECT_EQ(failure_of("x,y,z,c\n1,2,3,0x10\n"),
            "-:2:7: column c: '0x10' is not a number; write one such as -12.5");
  EXPECT_EQ(failure_of("x,y,z,c\n1,2 3,3,0\n"),
            "-:2:3: column y: '2 3' is not a number; write one such as -12.5");
  EXPECT_EQ(failure_of("x,y,z,c\nnan,2,3,0\n"),
            "-:2:1: column x: 'nan' is not a number; write one such as -12.5");
  EXPECT_EQ(failure_of("x,y,z,c\n1,-inf,3,0\n"),
            "-:2:3: column y: '-inf' is not a number; write one such as -12.5");
  EXPECT_EQ(failure_of("x,y,z,c\n1,+-2,3,0\n"),
            "-:2:3: column y: '+-2' is not a number; write one such as -12.5");
  EXPECT_EQ(failure_of("x,y,z,c\n1,++2,3,0\n"),
            "-:2:3: column y: '++2' is not a number; write one such as -12.5");
}

TEST(CsvTable, ShowsOnlyTheBeginningOfALongField) {
  EXPECT_EQ(failure_of("x,y,z,c\n1,2," + std::string(100, 'q') + ",0\n"),
            "-:2:5: column z: '" + std::string(30, 'q') + "...' is not a number; write one such as -12.5");
}

TEST(CsvTable, RefusesAnEmptyNumber) {
  const std::string remedy = "empty; write a number, 0 where the axis stays";
  EXPECT_EQ(failure_of("x,y,z,c\n1,,3,0\n"), "-:2:3: column y: " + remedy);
  EXPECT_EQ(failure_of("x,y,z,c\n1,2,3, \n"), "-:2:7: column c: " + remedy);
  EXPECT_EQ(failure_of("x,y,z,c\n1,2,3,\"\"\n"), "-:2:7: column c: " + remedy);
}

TEST(CsvTable, RefusesWhatNoDoubleHolds) {
  const std::string remedy =
      " is beyond what a double holds; write a number of usual size, 0 where it is next to "
      "nothing";
  EXPECT_EQ(failure_of("x,y,z,c\n1e400,2,3,0\n"), "-:2:1: column x: '1e400'" + remedy);
  EXPECT_EQ(failure_of("x,y,z,c\n1,2,3,-1e-400\n"), "-:2:7: column c: '-1e-400'" + remedy);
}

TEST(CsvTable, RefusesRowsOfAnotherLength) {
  EXPECT_EQ(failure_of("x,y,z,c\n1,2,3\n"),
            "-:2:6: 3 values where the header has 4 columns; write one value for every column");
  EXPECT_EQ(failure_of("x,y,z,c\n1,2,3,4,5\n"),
            "-:2:10: 5 values where the header has 4 columns; write one value for every column");
  EXPECT_EQ(failure_of("x,y,z,c\n1,2,3,4,\n"),
            "-:2:9: 5 values where the header has 4 columns; write one value for every column");
  EXPECT_EQ(failure_of("x,y,z,c,note\n1,2,3,4\n"),
            "-:2:8: 4 values where the header has 5 columns; write one value for every column");
  EXPECT_EQ(failure_of("x,y,z,c\n1\n"),
            "-:2:2: 1 value where the header has 4 columns; write one value for every column");
}

TEST(CsvTable, RefusesAnAngleOfAnAxisThatTheMachineLacks) {
  EXPECT_EQ(failure_of("x,y,z,b,c\n1,2,3,-0.0,0\n1,2,3, 12.5,0\n"),
            "-:3:8: column b: '12.5' where the machine has no B axis; take the path that was made for this "
            "machine");
}

TEST(CsvTable, RefusesAHeaderWithoutARequiredColumn) {
  EXPECT_EQ(failure_of("x,y,c\n1,2,0\n"), "-:1:1: no column z; begin with a line such as x,y,z,c");
  EXPECT_EQ(failure_of("\nx,a\n"), "-:2:1: no columns y, z, c; begin with a line such as x,y,z,c");
}

TEST(CsvTable, RefusesAHeaderOfNumbers) {
  EXPECT_EQ(failure_of("1,2,3,4\n"),
            "-:1:1: '1' is a number and no name of a column; begin with a line such as x,y,z,c");
}

TEST(CsvTable, RefusesOtherSeparatorsByName) {
  const std::string remedy = "; separate columns by commas, and write numbers with a point";
  EXPECT_EQ(failure_of("x;y;z;c\n"), "-:1:1: no columns x, y, z, c, and semicolons" + remedy);
  EXPECT_EQ(failure_of("x\ty\tz\tc\n"), "-:1:1: no columns x, y, z, c, and tabs" + remedy);
}

TEST(CsvTable, RefusesAColumnThatIsThereTwice) {
  EXPECT_EQ(failure_of("x,y,z,c,X\n"), "-:1:9: 'X' is there twice; name every column once");
}

TEST(CsvTable, RefusesAColumnThatItIsToAppend) {
  TablePlan table_plan = plan();
  table_plan.appended = {"radius"};
  EXPECT_EQ(failure_of("x,y,z,c,Radius\n", table_plan),
            "-:1:9: there is a column radius already; rename it, so that a new one can be added");
}

TEST(CsvTable, RefusesQuotesThatDoNotClose) {
  EXPECT_EQ(failure_of("x,y,z,c,note\n1,2,3,0,\"a\"\"\n"),
            "-:2:9: a quote that nothing closes on its line; close it, or leave it out");
  EXPECT_EQ(failure_of("x,y,z,c,note\n1,2,3,0,\"a\"b\n"),
            "-:2:12: text behind a closing quote; write a quote inside quotes twice");
}

TEST(CsvTable, RefusesATextWithoutAHeader) {
  EXPECT_EQ(failure_of(""), "-: no header and no rows; give a tool path");
  EXPECT_EQ(failure_of("\n \n"), "-: no header and no rows; give a tool path");
}

TEST(CsvTable, RefusesAResultThatIsNoNumber) {
  try {
    stream("x,y,z,c\n1,2,3,0\n", plan(), [](PathRow& row) { row.values[1] = std::nan(""); });
    FAIL() << "no failure";
  } catch (const tool::InputError& error) {
    EXPECT_STREQ(
        error.what(),
        "-:2: the numbers are so large that the result is beyond what a double holds; write numbers of "
        "usual size");
  }
}

// Whatever stands in a file: nothing but an InputError may come of it.
TEST(CsvTable, SurvivesAnyBytes) {
  std::mt19937_64 random(7);
  const std::string alphabet = "xyzabc,,,,\"\"\n\n\r 0123456789.-+e\t;\xff";
  int refused = 0;
  int taken = 0;
  for (int round = 0; round < 4000; ++round) {
    std::string text = round % 2 == 0 ? "x,y,z,c\n1,2,3,0\n" : "x,y,z,c,n\n";
    const std::size_t length = random() % 40;
    for (std::size_t i = 0; i < length; ++i) text += alphabet[random() % alphabet.size()];
    const std::size_t piece = 1 + random() % 9;
    try {
      stream(text, plan(), move, piece, 64);
      ++taken;
    } catch (const tool::InputError&) {
      ++refused;
    }
  }
  EXPECT_GT(refused, 1000);
  EXPECT_GT(taken, 10);
}

}  // namespace
