// SPDX-License-Identifier: GPL-3.0-or-later
// Whole scripts, statement by statement.
#include <gtest/gtest.h>

#include "fakes.h"
#include "script/scanner.h"

namespace corvid {
namespace {

using testing_script::RanCommand;
using testing_script::Script;
using testing_script::Texts;

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
