// JSON texts that know where everything stands.
#include "tool/machine/json_document.h"

#include "tool/errors.h"
#include "tool/machine/json_view.h"

#include <cmath>
#include <cstddef>
#include <string>

#include <gtest/gtest.h>

namespace {

using tool::JsonDocument;
using tool::JsonKind;
using tool::JsonView;

// The complaint about a text; empty when there is none.
std::string error_of(const std::string& text) {
  try {
    const JsonDocument document(text, "m.json");
    return std::string();
  } catch (const tool::InputError& error) {
    return error.what();
  }
}

// "line:column" of the value under the key.
std::string place_of(const std::string& text, const std::string& key) {
  const JsonDocument document(text, "m.json");
  const auto value = JsonView(document).find(key);
  return value ? document.file_at(document.value(value->at()).offset).substr(7) : std::string();
}

// ---- places, counted by hand ----

TEST(JsonDocument, KnowsWhereAValueBegins) {
  EXPECT_EQ(place_of("{\"a\": 1, \"b\": 2}", "b"), "1:15");
  EXPECT_EQ(place_of("{\n  \"a\": [1, {\"x\": null}],\n  \"b\"\n:\n true}", "b"), "5:2");
  EXPECT_EQ(place_of("{\"a\": \"q\\\"}\\\\\", \"b\": -1.5e+3}", "b"), "1:22");
}

TEST(JsonDocument, PassesOverCommentsWhenItCounts) {
  EXPECT_EQ(place_of("// {\"b\": 1}\n{\"a\": /* , \" */ 1, // x\n\"b\": /* y\n*/ 2}", "b"), "4:4");
  EXPECT_EQ(place_of("/***/ {\"b\": /* \" **/ 2} // end", "b"), "1:22");
}

// The parser ends such a comment there too; found by the fuzzer, which made the places go round in circles.
TEST(JsonDocument, EndsALineCommentAtACarriageReturn) {
  EXPECT_EQ(place_of("//\r{ \"a\": 1,// x /* \r \"b\": 2}", "b"), "1:28");
  EXPECT_NE(error_of("//\r{//\r\"a\"/* x"), "");
  const std::string with_null("{// x\0 \"b\": 12}", 15);
  EXPECT_EQ(place_of(with_null, "b"), "1:13");
}

// An umlaut is two bytes and one column.
TEST(JsonDocument, CountsCharactersNotBytes) {
  EXPECT_EQ(place_of("{\"\xc3\xbc\": \"\xc3\xbc\", \"b\": 1}", "b"), "1:17");
}

TEST(JsonDocument, PassesOverAByteOrderMark) { EXPECT_EQ(place_of("\xef\xbb\xbf{\"b\": 1}", "b"), "1:8"); }

TEST(JsonDocument, WritesPointers) {
  const JsonDocument document("{\"a\": [1, {\"x/y~z\": null}]}", "m.json");
  EXPECT_EQ(document.pointer(0), "");
  const JsonView list = *JsonView(document).find("a");
  EXPECT_EQ(document.pointer(list.entries()[1].at()), "/a/1");
  EXPECT_EQ(document.pointer(list.entries()[1].find("x/y~z")->at()), "/a/1/x~1y~0z");
}

// ---- values ----

TEST(JsonDocument, KeepsTheSignOfZero) {
  const JsonDocument document("[-0, 0, -0.0]", "m.json");
  const auto zeros = JsonView(document).entries();
  EXPECT_TRUE(std::signbit(zeros[0].number()));
  EXPECT_FALSE(std::signbit(zeros[1].number()));
  EXPECT_TRUE(std::signbit(zeros[2].number()));
}

TEST(JsonDocument, TellsWholeNumbersFromOthers) {
  const JsonDocument document("[7, 7.0, -2147483648, 18446744073709551615]", "m.json");
  const auto numbers = JsonView(document).entries();
  EXPECT_EQ(numbers[0].whole(), 7);
  EXPECT_THROW(numbers[1].whole(), tool::InputError);
  EXPECT_EQ(numbers[2].whole(), -2147483647 - 1);
  EXPECT_THROW(numbers[3].whole(), tool::InputError);
  EXPECT_EQ(numbers[3].number(), 18446744073709551616.0);
}

TEST(JsonDocument, ReadsEscapes) {
  const JsonDocument document("[\"\\u00fc\\n\\\"\"]", "m.json");
  EXPECT_EQ(JsonView(document).entries()[0].text(), "\xc3\xbc\n\"");
}

// ---- what is no JSON ----

TEST(JsonDocument, NamesWhereTheTextGoesWrong) {
  EXPECT_EQ(error_of("{\n  \"a\": 1,\n}"), "m.json:3:1: unexpected '}'; remove the comma before it");
  EXPECT_EQ(error_of("[1, 2,]"), "m.json:1:7: unexpected ']'; remove the comma before it");
  EXPECT_EQ(error_of("{\"a\": 1 \"b\": 2}"), "m.json:1:9: unexpected string literal; put a comma before it");
  EXPECT_EQ(error_of("[10 200]"), "m.json:1:5: unexpected number literal; put a comma before it");
  EXPECT_EQ(error_of("{\"a\" 1}"), "m.json:1:6: unexpected number literal; expected ':'");
  EXPECT_EQ(error_of("{3: 1}"), "m.json:1:2: unexpected number literal; write a key in quotes");
  EXPECT_EQ(
      error_of("{\"a\": mm}"),
      "m.json:1:7: invalid literal; write a number, a text in quotes, true, false or null; there is no NaN "
      "and no infinity");
  EXPECT_EQ(error_of("[1,, 2]"), "m.json:1:4: unexpected ','; expected '[', '{', or a literal");
  EXPECT_EQ(error_of("{\"a\": 1} {"), "m.json:1:10: unexpected '{'; expected end of input");
}

TEST(JsonDocument, NamesAnEndThatComesTooSoon) {
  EXPECT_EQ(error_of("{\"a\": [1, 2").rfind("m.json:1:12: unexpected end of input; ", 0), 0U)
      << error_of("{\"a\": [1, 2");
  EXPECT_EQ(error_of("").rfind("m.json:1:1: ", 0), 0U) << error_of("");
}

TEST(JsonDocument, RefusesWhatIsNoNumber) {
  for (const char* text : {"[NaN]", "[Infinity]", "[-inf]", "[0x10]", "[01]", "[1.]", "[.5]", "[+1]"})
    EXPECT_NE(error_of(text), "") << text;
}

TEST(JsonDocument, RefusesANumberThatIsTooLarge) {
  EXPECT_EQ(
      error_of("[1e999]"),
      "m.json:1:2: number overflow parsing '1e999'; give a number that a double can hold, up to 1.7e308");
}

TEST(JsonDocument, RefusesAKeyThatStandsTwice) {
  EXPECT_EQ(error_of("{\"a\": {\"x\": 1, \"y\": 2, \"x\": 3}}"),
            "m.json:1:29: /a/x: the key stands twice in this object; keep one of the two");
  // The same key, written in two ways.
  EXPECT_NE(error_of("{\"x\": 1, \"\\u0078\": 2}"), "");
}

TEST(JsonDocument, TakesTheSameKeyInTwoObjects) { EXPECT_EQ(error_of("[{\"x\": 1}, {\"x\": 1}]"), ""); }

TEST(JsonDocument, StaysOnOneLineWhateverStandsThere) {
  for (const char* text : {"{\"a\n\": 1}", "[\"\x01\"]", "[tru\x1b[31m]", "{\"\\n\": 1, \"\\n\": 2}"}) {
    const std::string said = error_of(text);
    EXPECT_NE(said, "") << text;
    for (const char c : said) EXPECT_GE(static_cast<unsigned char>(c), 0x20) << said;
  }
}

TEST(JsonDocument, ShortensWhatIsLong) {
  EXPECT_LT(error_of("[" + std::string(100000, 'q') + "]").size(), 400U);
  EXPECT_LT(error_of("{\"a\": \"" + std::string(100000, 'q')).size(), 400U);
}

// ---- depth and size ----

TEST(JsonDocument, NestsAsDeepAsItLikes) {
  constexpr int kDepth = 1000000;
  EXPECT_EQ(error_of(std::string(kDepth, '[') + std::string(kDepth, ']')), "");
  EXPECT_EQ(error_of(std::string(kDepth, '[')).rfind("m.json:1:1000001: ", 0), 0U);
}

TEST(JsonDocument, IsQuickWithManyKeys) {
  std::string text = "{\"k\": 0";
  for (int i = 0; i < 200000; ++i) text += ", \"k" + std::to_string(i) + "\": 0";
  EXPECT_EQ(error_of(text + "}"), "");
  EXPECT_NE(error_of(text + ", \"k\": 1}"), "");
}

}  // namespace
