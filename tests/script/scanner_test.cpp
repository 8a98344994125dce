// SPDX-License-Identifier: GPL-3.0-or-later
#include "script/scanner.h"

#include <gtest/gtest.h>

#include "fakes.h"

namespace corvid {
namespace {

using testing_script::RanCommand;
using testing_script::Script;
using testing_script::Texts;

TEST(ReadNextLine, FindsTheEndWhereverItStandsAndWhateverIsInFrontOfIt) {
  for (const char code : {'x', '\0', '\t', '\x0B', '\x0C', '\x0E', '\x7F', '\x80', '\x8A', '\x8D', '\xFF'}) {
    for (std::size_t length = 1; length <= 40; ++length) {
      for (const char end : {'\r', '\n'}) {
        const std::string line(length, code);
        const std::string text = line + end + line;
        int32 pointer = 0;
        EXPECT_EQ(ReadNextLine(text, pointer), line);
        EXPECT_EQ(pointer, static_cast<int32>(length));
        EXPECT_EQ(ReadNextLine(text, pointer), line);
        EXPECT_EQ(pointer, -1);
      }
    }
  }
}

TEST(ReadNextLine, StepsFromLineToLine) {
  struct Row {
    std::string_view text;
    Texts lines;  // as they come until the pointer is -1
    std::vector<int32> pointers;
  };
  for (const Row& row : {
           Row{"", {""}, {-1}},
           Row{"a", {"a"}, {-1}},
           Row{"a\r\n", {"a", ""}, {1, -1}},
           Row{"ab\r\nc\r\n", {"ab", "c", ""}, {2, 5, -1}},
           Row{"a\r\n\r\nb", {"a", "", "b"}, {1, 4, -1}},
           Row{"a\nb", {"a", "b"}, {1, -1}},
           Row{"a\n\n\nb", {"a", "b"}, {1, -1}},
           Row{"a\rb", {"a", "b"}, {1, -1}},
           Row{"a\r\rb", {"a", "", "b"}, {1, 3, -1}},
           Row{"\r\nx", {"x"}, {-1}},
           Row{"\r\n\r\n\r\nx", {"", "x"}, {3, -1}},
           Row{"\n", {""}, {-1}},
       }) {
    Texts lines;
    std::vector<int32> pointers;
    int32 pointer = 0;
    do {
      lines.emplace_back(ReadNextLine(row.text, pointer));
      pointers.push_back(pointer);
    } while (pointer > 0 && lines.size() < 20);
    EXPECT_EQ(lines, row.lines) << testing::PrintToString(row.text);
    EXPECT_EQ(pointers, row.pointers) << testing::PrintToString(row.text);
  }
  int32 behind = 5;
  EXPECT_EQ(ReadNextLine("abc", behind), "");
  EXPECT_EQ(behind, -1);
}

TEST(StatementText, Words) {
  EXPECT_EQ(SplitLine("a b"), (Texts{"a", "b"}));
  EXPECT_EQ(SplitLine("a   b, c!"), (Texts{"a", "b", "c"}));
  EXPECT_EQ(SplitLine("word?! x: \"y\""), (Texts{"word?", "x", "\"y"}));
  EXPECT_EQ(SplitLine("  a "), (Texts{"", "a", ""}));
  EXPECT_EQ(SplitLine("a; b."), (Texts{"a", "b"}));
  EXPECT_EQ(SplitLine(", ,,"), (Texts{"", ","}));
  EXPECT_EQ(SplitLine(""), Texts{});
}

TEST(StatementText, BracesQuotesAndBlanks) {
  EXPECT_EQ(AddBraces("a"), "{a}");
  EXPECT_EQ(AddBraces("{a}"), "{a}");
  EXPECT_EQ(AddBraces("{a} {b}"), "{a} {b}");
  EXPECT_EQ(AddBraces("{a} b"), "{{a} b}");
  EXPECT_EQ(AddBraces(""), "{}");
  EXPECT_EQ(AddBraces("{"), "{{}");
  EXPECT_EQ(RemoveQuotes("\"a\""), "a");
  EXPECT_EQ(RemoveQuotes("  \"a b\" "), "a b");
  EXPECT_EQ(RemoveQuotes("\"a\"b\""), "a\"b");
  EXPECT_EQ(RemoveQuotes(" a "), " a ");
  EXPECT_EQ(RemoveQuotes("\""), "\"");
  EXPECT_EQ(RemoveQuotes("\"\""), "");
  EXPECT_EQ(RemoveQuotes("\"a"), "\"a");
  EXPECT_TRUE(IsWhiteSpace(""));
  EXPECT_TRUE(IsWhiteSpace(" \t\r\n"));
  EXPECT_FALSE(IsWhiteSpace(" . "));
  EXPECT_FALSE(IsWhiteSpace("\xA0"));
}

TEST(StatementText, EscapeCodingGoesBack) {
  EXPECT_EQ(RemoveEscapeCoding("a\x7F\xAA"
                               "b"),
            "a*b");
  EXPECT_EQ(RemoveEscapeCoding("\x7F\xBF\x7F\xA3"), "?#");
  EXPECT_EQ(RemoveEscapeCoding("\x7F"
                               "A"),
            "A");
  EXPECT_EQ(RemoveEscapeCoding("abc\xE9"), "abc\xE9");
  EXPECT_EQ(RemoveEscapeCoding("a\x7F"), "a");
  EXPECT_EQ(RemoveEscapeCoding("\x7F\xFF\xAA"), "*");  // the character that comes out counts as a code again
  EXPECT_EQ(RemoveEscapeCoding(""), "");
}

class Parse : public testing::Test, protected Script {
 protected:
  // "a|b|c" for the parts, then " ;; rest" where there is one; "!! text" for a failure.
  std::string Cut(const std::string& text, int16 flags = 0) {
    ParsedCommand parser;
    parser[1] = "left over";
    parser[30] = "left over";
    std::string error;
    std::string rest = "left over";
    int16 count = 99;
    scanner.ParseCommand(text, count, parser, error, rest, flags);
    if (!error.empty()) {
      EXPECT_EQ(errors.Reports.size(), 1U);
      if (!errors.Reports.empty()) {
        EXPECT_EQ(errors.Reports.back(), error + " | " + text + " | 0 | " + std::to_string(flags));
      }
      errors.Reports.clear();
      return "!! " + error;
    }
    EXPECT_EQ(parser[30], "");
    std::string joined;
    for (int16 i = 1; i <= count; ++i) joined += (i > 1 ? "|" : "") + parser[i];
    EXPECT_EQ(parser[count + 1], "");
    return joined + (rest.empty() ? "" : " ;; " + rest);
  }
};

TEST_F(Parse, Table) {
  struct Row {
    const char* text;
    const char* parts;
  };
  for (const Row& row : {
           Row{"", ""},
           Row{"   ", ""},
           Row{"{}", ""},
           Row{";", ""},
           Row{"a", "a"},
           Row{"  a   b  ", "a|b"},
           Row{"{a   b}", "a|b"},
           Row{"x {a   b}", "x|a   b"},
           Row{"x {a} {b}", "x|a|b"},
           Row{"x{y}", "x{y}"},
           Row{"x {y}z", "x|yz"},
           Row{"x {}", "x"},
           Row{"x {} y", "x||y"},
           Row{"x {} {}", "x|"},
           Row{"x {{a} b}", "x|{a} b"},
           Row{"a{b{c}d}", "a{b{c}d"},
           Row{"a{b}{c}", "a{b}{c}"},
           Row{"#if (@a > 1) {say {hi; there}}", "#if|(@a|>|1)|say {hi; there}"},
           Row{"a;b", "a ;; b"},
           Row{"a ; b ", "a ;;  b"},
           Row{"a;;b", "a ;; ;b"},
           Row{";b", " ;; b"},
           Row{"x {a;b};c", "x|a;b ;; c"},
           Row{"{a;b}", "a ;; b"},
           Row{"a~;b", "a;b"},
           Row{"a~ b", "a b"},
           Row{"a~{b~}", "a{b}"},
           Row{"a~x", "a~x"},
           Row{"a~~;b", "a~;b"},
           Row{"a~", "a~"},
           Row{"x {a~}b}", "x|a~}b"},
           Row{"x {a~;b}", "x|a~;b"},
           Row{"~{{b}", "{b"},  // an escaped character leaves the start of a part where it is
           Row{"~ {a b}", " a b"},
           Row{"say \"a b\"", "say|\"a|b\""},
           Row{"a\tb\r\nc", "abc"},
           Row{"a \r\n  b", "a|b"},
           Row{"x {a\r\n\tb}", "x|a\r\n\tb"},
           Row{"a\x7F\xE9 b", "a\x7F\xE9|b"},
           Row{"{a} {b}", "!! Unbalance braces"},
           Row{"a } b", "!! Unbalance braces"},
           Row{"a}", "!! Unbalance braces"},
           Row{"{a", "!! Expect trailing right brace (})"},
           Row{"{y}x", "!! Expect trailing right brace (})"},
           Row{"{", "!! Expect trailing right brace (})"},
           Row{"x {a", "!! Unbalanced braces"},
           Row{"x{", "!! Unbalanced braces"},
           Row{"x {a {b}", "!! Unbalanced braces"},
       })
    EXPECT_EQ(Cut(row.text), row.parts) << row.text;
}

TEST_F(Parse, FailuresCarryTheCallersFlags) {
  EXPECT_EQ(Cut("a}", 12), "!! Unbalance braces");
}

TEST_F(Parse, ConfiguredCharacters) {
  options.CommandSeparator = "|";
  options.EscapeChar = '!';
  EXPECT_EQ(Cut("a;b|c"), "a;b ;; c");
  EXPECT_EQ(Cut("a!;b!|c"), "a;b! ;; c");
  options.CommandSeparator = "&&";
  EXPECT_EQ(Cut("a&&b"), "a&&b");
  options.CommandSeparator = "";
  EXPECT_EQ(Cut("a;b"), "a;b");
}

TEST_F(Parse, TheRestMayGoWhereTheTextCameFrom) {
  std::string line = "a b;c d;e";
  ParsedCommand parser;
  std::string error;
  int16 count = 0;
  scanner.ParseCommand(line, count, parser, error, line, 0);
  EXPECT_EQ(line, "c d;e");
  scanner.ParseCommand(line, count, parser, error, line, 0);
  EXPECT_EQ(parser[1], "c");
  EXPECT_EQ(line, "e");
}

TEST_F(Parse, AThousandPartsAndNoMore) {
  std::string text = "x";
  for (int i = 2; i <= 1000; ++i) text += " " + std::to_string(i);
  ParsedCommand parser;
  std::string error;
  std::string rest;
  int16 count = 0;
  scanner.ParseCommand(text, count, parser, error, rest, 0);
  EXPECT_EQ(count, 1000);
  EXPECT_EQ(parser[1000], "1000");
  try {
    scanner.ParseCommand(text + " y", count, parser, error, rest, 0);
    ADD_FAILURE() << "no fault";
  } catch (const Fault& fault) {
    EXPECT_EQ(fault.Kind, FaultKind::Index);
  }
}

TEST(ParsedCommandTest, PartsStayWhereTheyAre) {
  ParsedCommand parser;
  std::string& second = parser[2];
  std::string& far = parser[20];
  parser[900] = "z";
  second = "b";
  far = "t";
  EXPECT_EQ(parser[2], "b");
  EXPECT_EQ(parser[20], "t");
  const ParsedCommand& view = parser;
  EXPECT_EQ(view[900], "z");
  EXPECT_EQ(view[901], "");
  EXPECT_THROW(parser[1001], Fault);
  EXPECT_THROW(view[-1], Fault);
  parser.Clear();
  EXPECT_EQ(view[2], "");
  EXPECT_EQ(view[900], "");
}

class Comments : public testing::Test, protected Script {};

TEST_F(Comments, OnlyTheFirstMarkerCounts) {
  EXPECT_EQ(scanner.RemoveComments("#say a // b"), "#say a ");
  EXPECT_EQ(scanner.RemoveComments("#say a"), "#say a");
  EXPECT_EQ(scanner.RemoveComments("#say a / b"), "#say a / b");
  EXPECT_EQ(scanner.RemoveComments("http:~//x // y"), "http:~//x // y");
  EXPECT_EQ(scanner.RemoveComments("{\"a // b\"}"), "{\"a ");
  EXPECT_TRUE(errors.Unknown.empty());
}

TEST_F(Comments, InTheFirstColumnIsLoggedOnceAndReadsAsEmpty) {
  EXPECT_EQ(scanner.RemoveComments("// all"), "");
  EXPECT_EQ(errors.Unknown, (Texts{"RemoveComments: // all"}));
}

TEST_F(Comments, MarkerIsAnOption) {
  options.EndOfLineCommentChar = "--";
  EXPECT_EQ(scanner.RemoveComments("a // b -- c"), "a // b ");
}

}  // namespace
}  // namespace corvid
