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

class Buffer : public testing::Test, protected Script {
 protected:
  int32 Run(const std::string& text, int16 flags = 0) {
    int16 channel = -2;
    return scanner.ExecuteBuffer(text, flags, channel);
  }
};

TEST_F(Buffer, RunsStatementByStatement) {
  state.CommandDepth = 7;
  runner.OnRun = [&](const std::string&, Parameters&) {
    EXPECT_EQ(state.CommandDepth, 0);
    state.CommandDepth = 3;
  };
  EXPECT_EQ(Run("#a\r\n\r\n#b c  \r\nnorth"), 0);
  EXPECT_EQ(runner.Ran, (std::vector<RanCommand>{{"#a", 8, -2}, {"#b c", 8, -2}, {"north", 8, -2}}));
  EXPECT_EQ(runner.Sorts, 1);
  EXPECT_FALSE(runner.HadParameters);
  EXPECT_TRUE(errors.Reports.empty());
}

TEST_F(Buffer, EachStatementGetsFreshParameters) {
  runner.OnRun = [&](const std::string&, Parameters& rvar) { rvar.Set(1, "changed"); };
  EXPECT_EQ(Run("#a\r\n#b"), 0);
  EXPECT_EQ(runner.Ran.size(), 2U);
  EXPECT_FALSE(runner.HadParameters);
}

TEST_F(Buffer, JoinsLinesUntilBracesBalance) {
  EXPECT_EQ(Run("#alias x {\r\n\tsay hi  \r\n  say there\r\n}\r\n#b"), 0);
  EXPECT_EQ(runner.Texts(), (Texts{"#alias x {\r\n say hi\r\n  say there\r\n}", "#b"}));
}

TEST_F(Buffer, TabsAreBlanksUnlessEscaped) {
  EXPECT_EQ(Run("\t#a\tb {\tc}\r\n#d ~\te"), 0);
  EXPECT_EQ(runner.Texts(), (Texts{" #a b { c}", "#d ~\te"}));
}

TEST_F(Buffer, ACommentInTheFirstColumnIsLoggedAndReadsAsEmpty) {
  EXPECT_EQ(Run("// all\r\n#a {\r\n// in between }\r\n}"), 0);
  EXPECT_EQ(runner.Texts(), Texts{"#a {\r\n\r\n}"});
  EXPECT_EQ(errors.Unknown.size(), 2U);
}

TEST_F(Buffer, CommentsDisturbNoStatement) {
  EXPECT_EQ(Run("; first {\r\n#alias x {\r\n  ; inner }\r\nsay hi // and {\r\n}\r\n  ; last"), 0);
  EXPECT_EQ(runner.Texts(), (Texts{"#alias x {\r\nsay hi\r\n}"}));
}

TEST_F(Buffer, EscapedBracesDoNotCount) {
  EXPECT_EQ(Run("#a ~{\r\n#b ~}\r\n#c {~}}"), 0);
  EXPECT_EQ(runner.Texts(), (Texts{"#a ~{", "#b ~}", "#c {~}}"}));
}

TEST_F(Buffer, QuotedBracesCount) {
  EXPECT_EQ(Run("#a \"{\"\r\n#b}"), 0);
  EXPECT_EQ(runner.Texts(), (Texts{"#a \"{\"\r\n#b}"}));
}

TEST_F(Buffer, CheckOnlyPassesItOn) {
  EXPECT_EQ(Run("#a", bufferoption::CheckOnly), 0);
  EXPECT_EQ(runner.Ran, (std::vector<RanCommand>{{"#a", 12, -2}}));
}

TEST_F(Buffer, StrictTextIsCommandsOnly) {
  EXPECT_EQ(Run("#a\r\nnorth\r\n#b", bufferoption::Strict), 4);
  EXPECT_EQ(runner.Texts(), (Texts{"#a"}));
  EXPECT_EQ(errors.Reports, (Texts{"Invalid text found on line. | north | 0 | 8"}));
  EXPECT_EQ(runner.Sorts, 0);
  errors.Reports.clear();
  EXPECT_EQ(Run("  #a", bufferoption::Strict), 0);
  EXPECT_TRUE(errors.Reports.empty());
}

TEST_F(Buffer, VariablesCanBeLeftAlone) {
  EXPECT_EQ(Run("#var x 1\r\n #VARIABLE y 2\r\n#va z 3\r\nvar q\r\n#variety", bufferoption::SkipVariables), 0);
  EXPECT_EQ(runner.Texts(), (Texts{"#va z 3", "var q"}));
}

TEST_F(Buffer, StopsAtTheFirstErrorWithItsPlace) {
  runner.Failures["#bad"] = "no good";
  EXPECT_EQ(Run("#a\r\n#b\r\n#bad\r\n#c"), 8);
  EXPECT_EQ(runner.Texts(), (Texts{"#a", "#b", "#bad"}));
  EXPECT_TRUE(errors.Reports.empty());  // the runner has reported it
  EXPECT_EQ(runner.Sorts, 0);
}

TEST_F(Buffer, ClosingTooMuchStopsThere) {
  EXPECT_EQ(Run("#a\r\n#b\r\n#c }\r\n#d"), 8);
  EXPECT_EQ(runner.Texts(), (Texts{"#a", "#b"}));
  EXPECT_EQ(errors.Reports, (Texts{"Unbalanced braces. | #c } | 0 | 8"}));
}

TEST_F(Buffer, LeavingOpenIsReportedAtTheStatement) {
  EXPECT_EQ(Run("#a\r\n#b {\r\n#c"), 2);
  EXPECT_EQ(runner.Texts(), (Texts{"#a"}));
  EXPECT_EQ(errors.Reports, (Texts{"Unbalanced braces. | #b {\r\n#c | 0 | 8"}));
  EXPECT_EQ(runner.Sorts, 1);
}

TEST_F(Buffer, EmptyTextsDoNothing) {
  EXPECT_EQ(Run(""), 0);
  EXPECT_EQ(Run("\r\n   \r\n\t\r\n"), 0);
  EXPECT_TRUE(runner.Ran.empty());
  EXPECT_EQ(runner.Sorts, 2);
}

TEST_F(Buffer, AFaultEndsItWithAnError) {
  runner.OnRun = [](const std::string&, Parameters&) { throw Fault(FaultKind::Index, "row"); };
  EXPECT_EQ(Run("\r\n#a"), 2);
  EXPECT_EQ(errors.Reports, (Texts{"Unidentified error when executing line or buffer | #a | 0 | 8"}));
}

TEST_F(Buffer, PlacesBeyond16Bits) {
  std::string text;
  while (text.size() < 70000) text += "#aaaaaaaaaaaaaaaa\r\n";
  const auto place = static_cast<int32>(text.size());
  runner.Failures["#bad"] = "no good";
  EXPECT_EQ(Run(text + "#bad"), place);
}

TEST_F(Buffer, TheTextMayChangeWhileItRuns) {
  std::string text = "#a\r\n#b";
  runner.OnRun = [&](const std::string&, Parameters&) { text.assign(1000, 'x'); };
  int16 channel = 3;
  EXPECT_EQ(scanner.ExecuteBuffer(text, 0, channel), 0);
  EXPECT_EQ(runner.Texts(), (Texts{"#a", "#b"}));
}

class Events : public testing::Test, protected Script {};

TEST_F(Events, RunTheOriginalTextOfTheAlias) {
  std::string error;
  symbols.AddAlias("OnConnect", "expanded", 0, "", 4, "#say original", error);
  symbols.AddAlias("login", "x", 0, "off", 4, "y", error);
  state.CommandDepth = 5;
  runner.OnRun = [&](const std::string&, Parameters&) { EXPECT_EQ(state.CommandDepth, 0); };
  scanner.ExecuteAlias("onconnect", 3, 7);
  scanner.ExecuteAlias("login", 3, 7);
  scanner.ExecuteAlias("nothing", 3, 7);
  EXPECT_EQ(runner.Ran, (std::vector<RanCommand>{{"#say original", 0, 3}}));
  EXPECT_FALSE(runner.HadParameters);
}

}  // namespace
}  // namespace corvid
