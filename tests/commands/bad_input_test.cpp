// SPDX-License-Identifier: GPL-3.0-or-later
// What nobody writes on purpose: texts of a megabyte, lists of a million items, scripts without end.
#include "commands/fixture.h"

namespace corvid::test {

class BadInputTest : public CommandTest {
 protected:
  BadInputTest() {
    MakeSession(0, "bob", true);
    owner = script.CurrentOwner = script.SocketOwner[0];
  }
  std::string X(const std::string& line) {
    EXPECT_EQ(Run(line), "");
    return Variable("x", owner);
  }
  static std::string Times(std::size_t count, const std::string& text) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i) all += text;
    return all;
  }
  static std::string Numbers(int count) {
    std::string list = "1";
    for (int i = 2; i <= count; ++i) list += "|" + std::to_string(i);
    return list;
  }
  OwnerId owner = 0;
};

TEST_F(BadInputTest, AHundredThousandStatementsOnOneLine) {
  EXPECT_EQ(Run(Times(100000, "#OK;") + "say done"), "");
  EXPECT_EQ(memory.sockets.TakeWritten(0), "say done\r\n");
  EXPECT_EQ(Run("{" + Times(100000, "#OK;") + "say done}"), "");
  EXPECT_EQ(memory.sockets.TakeWritten(0), "say done\r\n");
}

TEST_F(BadInputTest, AMegabyteOfOneThing) {
  const std::string million(1000000, 'x');
  EXPECT_EQ(Run("#" + million), "Bad command #" + million);
  EXPECT_EQ(Run("#IF " + million + " {a}").substr(0, 55), "Undefined variable or unknown symbol in expression [XXX");
  EXPECT_TRUE(Run(Times(500000, "x ")).starts_with("Bad parsing error - ")) << "more parts than a statement has";
  EXPECT_EQ(Run("#FILE 1 " + million), "Missing file type");
  EXPECT_EQ(Run("#CLASS {" + million + "} " + million), "Bad Class parameter 2");
  EXPECT_EQ(Run("#VAR x {" + std::string(1000000, '@') + "}"), "");
  EXPECT_EQ(Run("#VAR x {" + std::string(1000000, '%') + "}"), "");
  EXPECT_EQ(Run("#MATH x {" + std::string(1000000, '(') + "}").substr(0, 16), "Bad expression (");
  EXPECT_LT(ErrorLog().size(), std::size_t{3000000}) << "the log keeps its end only";
}

TEST_F(BadInputTest, ListsOfAMillionItems) {
  AddVariable("m", Numbers(1000000), owner);
  EXPECT_EQ(X("#VAR x %NUMWORDS(@m,|)"), "1000000");
  EXPECT_EQ(X("#VAR x %WORD(@m,|,2000000)"), "1000000");
  EXPECT_EQ(X("#VAR x %POP(m)"), "1");
  EXPECT_TRUE(Variable("m", owner).starts_with("2|3|4|"));
  constexpr int count = 100000;
  AddVariable("l", Numbers(count), owner);
  EXPECT_EQ(X("#VAR x %WORD(@l,|,99999)"), "99999");
  EXPECT_EQ(X("#VAR x %IFWORD(50000,@l,|)"), "1");
  EXPECT_EQ(X("#VAR x %DELITEM(@l,100000)"), Numbers(count - 1));
  EXPECT_EQ(X("#VAR x %DELNITEM(@l,100000)"), Numbers(count - 1));
  EXPECT_EQ(X("#VAR x %WORD(%REVERSELIST(@l),|,2)"), "99999");
  EXPECT_EQ(X("#VAR x %WORD(%SORT(@l,0),|,3)"), "100");
}

TEST_F(BadInputTest, AListGrowsAndShrinksItemByItem) {
  EXPECT_EQ(Run("#20000 {#ADDITEM l %i}"), "");
  EXPECT_EQ(Variable("l", owner), Numbers(20000));
  EXPECT_EQ(Run("#19999 {#VAR x %POP(l)}"), "");
  EXPECT_EQ(Variable("x", owner), "19999");
  EXPECT_EQ(Variable("l", owner), "20000");
}

TEST_F(BadInputTest, AThousandLevels) {
  // Functions in functions, brackets in brackets, lines in lines: each is a result or an error that says so.
  EXPECT_EQ(X("#VAR x " + Times(200, "%LEFT(") + "abc" + Times(200, ",2)")), "ab");
  EXPECT_EQ(Run("#VAR x " + Times(1000, "%LEFT(@") + "abc" + Times(1000, ",2)")),
            "Variables and function calls are nested too deeply");
  EXPECT_EQ(Run("#VAR x {" + Times(1000, "@{") + "abc" + Times(1000, "}") + "}"),
            "Variables and function calls are nested too deeply");
  EXPECT_TRUE(Run("#MATH x " + Times(1000, "(") + "1" + Times(1000, ")")).starts_with("Bad expression "));
  AddAlias("me", "me");
  EXPECT_EQ(Run("me"), "recursive check - probable infinite loop detected");
  AddAlias("ping", "pong");
  AddAlias("pong", "#IF 1 {ping}");
  EXPECT_EQ(Run("ping"), "recursive check - probable infinite loop detected");
}

TEST_F(BadInputTest, TheErrorLogTellsFileAndChain) {
  memory.files.Put("/data/a.set", "#GALIAS inner {#IF 1 {#xyz}}\r\n#GALIAS outer {inner;say no}\r\n");
  ASSERT_EQ(Run("#LOAD a.set"), "");
  ClearErrorLog();
  EXPECT_EQ(Run("outer"), "Bad command #xyz");
  EXPECT_EQ(ErrorLog(),
            "\r\nBad command #xyz in command: #xyz"
            "\r\ntraced back to line: #IF 1 {#xyz}"
            "-- Error found in file /data/a.set\r\n==============="
            "\r\ntraced back to line: inner;say no"
            "-- Error found in file /data/a.set\r\n==============="
            "\r\ntraced back to line: outer");
}

TEST_F(BadInputTest, ALineOfTheGameIsDataWhereverItGoes) {
  const std::string hostile = "|#QUIT;{x}@y%1~\"(";
  AddVariable("line", hostile, owner);
  EXPECT_EQ(X("#VAR x @line"), hostile);
  EXPECT_EQ(X("#VAR x;#ADDITEM x @line"), hostile);
  EXPECT_EQ(Run("say @line"), "");
  EXPECT_EQ(memory.sockets.TakeWritten(0), "say " + hostile + "\r\n");
  EXPECT_EQ(Run("#FORALL @line {#VAR x %i}"), "");
  EXPECT_EQ(Variable("x", owner), hostile.substr(1));
  EXPECT_EQ(Run("#IF {@line=\"a\"} {say no}"), "");
  EXPECT_EQ(Of("quit"), Lines{});
}

}  // namespace corvid::test
