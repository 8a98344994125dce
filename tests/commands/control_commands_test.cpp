// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/fixture.h"

namespace corvid::test {

class ControlTest : public CommandTest {
 protected:
  ControlTest() { MakeSession(0, "bob", true); }
  // Runs a line and returns what was sent, lines joined by "/".
  std::string Sent(const std::string& line, int16 session = 0) {
    EXPECT_EQ(Run(line), "");
    std::string text = memory.sockets.TakeWritten(session);
    return Replace(text, "\r\n", "/");
  }
  std::string Sent() { return Replace(memory.sockets.TakeWritten(0), "\r\n", "/"); }
};

TEST_F(ControlTest, IfChoosesItsBody) {
  EXPECT_EQ(Sent("#IF (1) {a} {b}"), "a/");
  EXPECT_EQ(Sent("#IF {0} {a} {b};c"), "b/c/");
  EXPECT_EQ(Sent("#IF 0 {a}"), "");
  EXPECT_EQ(Sent("#IF (1) {}"), "");
  EXPECT_EQ(Sent("#VAR n bob;#IF {@n=\"BOB\"} {a} {b}"), "a/");
  EXPECT_EQ(Sent("#IF {@n=\"x\"} {a} {b} {c} {d}"), "b/");
  Effects();
  EXPECT_TRUE(Run("#IF").starts_with("Bad expression"));
  EXPECT_EQ(Effects(), (Lines{"speech 1 error", "beep"}));
}

TEST_F(ControlTest, IfChecksBothBodies) {
  EXPECT_EQ(Run("#IF nonsense {a} {#xyz}", option::CheckOnly), "Bad command #xyz");
  EXPECT_EQ(Run("#IF nonsense {#xyz} {a}", option::CheckOnly), "Bad command #xyz");
  EXPECT_EQ(Run("#IF nonsense {#quit} {a}", option::CheckOnly), "");
}

TEST_F(ControlTest, WhileSeesTheValuesOfTheMoment) {
  EXPECT_EQ(Sent("#VAR i 0;#WHILE {@i<3} {#MATH i {@i+1};say @i}"), "say 1/say 2/say 3/");
  EXPECT_EQ(script.CommandDepth, 1);
  EXPECT_EQ(Run("#WHILE {@i<3} {}"), "Wrong number of parameters");
  EXPECT_EQ(Run("#WHILE {zork} {a}").substr(0, 18), "Undefined variable");
  EXPECT_EQ(Run("#WHILE {zork} {#xyz}", option::CheckOnly), "Bad command #xyz");
}

TEST_F(ControlTest, UntilRunsAtLeastOnce) {
  EXPECT_EQ(Sent("#VAR i 5;#UNTIL {@i>3} {#MATH i {@i+1};say @i}"), "say 6/");
  EXPECT_EQ(Sent("#VAR i 1;#UNTIL {@i>3} {#MATH i {@i+1};say @i}"), "say 2/say 3/say 4/");
  EXPECT_EQ(Run("#UNTIL {1} {#xyz}", option::CheckOnly), "Bad command #xyz");
}

TEST_F(ControlTest, ALoopEndsWithTheProgram) {
  memory.loop.End(0);
  EXPECT_EQ(Run("#WHILE {1} {#VAR x 1}"), "");
  EXPECT_EQ(Run("#UNTIL {0} {#VAR x 1}"), "");
  EXPECT_EQ(Run("#WAIT 100000"), "");
}

TEST_F(ControlTest, AnErrorInABodyStopsTheLoopAndTheLine) {
  EXPECT_EQ(Run("#3 {say %i;#xyz};say no"), "Bad command #xyz");
  EXPECT_EQ(Sent(), "say 1/");
  EXPECT_EQ(ErrorLog(),
            "\r\nBad command #xyz in command: #xyz - part of command say %i;#xyz"
            "\r\ntraced back to line: #3 {say %i;#xyz};say no");
}

TEST_F(ControlTest, EachRoundLetsTheProgramBreatheOnce) {
  int pumps = 0;
  memory.loop.BeforePump = [&] { ++pumps; };
  Run("#VAR n 0;#WHILE {@n<3} {#MATH n {@n+1}}");
  EXPECT_EQ(pumps, 3);
  Run("#VAR n 0;#UNTIL {@n>3} {#MATH n {@n+1}}");
  EXPECT_EQ(pumps, 7);
  Run("#3 {#VAR x %i};#FORALL a|b {#VAR x %i};#IF 1 {#VAR x 1}");
  EXPECT_EQ(pumps, 7) << "these run through";
  memory.loop.BeforePump = nullptr;
}

TEST_F(ControlTest, WhatCannotBeExpandedRunsNothing) {
  for (const char* line :
       {"#IF {%NOFUN(1)} {a} {b}", "#WHILE {%NOFUN(1)} {a}", "#FORALL {%NOFUN(1)} {a}", "#MATH x {%NOFUN(1)}",
        "#EXECUTE {%NOFUN(1)}", "#EXECUTE a {%NOFUN(1)}", "#ABORT {%NOFUN(1)}", "#WAIT {%NOFUN(1)}",
        "#ALARM {%NOFUN(1)} {a}", "#UNALARM {%NOFUN(1)}", "#IGNORE {%NOFUN(1)} on"})
    EXPECT_EQ(Run(std::string(line) + ";say no").substr(0, 22), "Unknown function NOFUN") << line;
  EXPECT_EQ(Run("#UNTIL {%NOFUN(1)} {a}"), "Unknown function NOFUN");
  EXPECT_EQ(Sent(), "a/");
}

TEST_F(ControlTest, LoopsInLoopsHaveOneItem) {
  EXPECT_EQ(Sent("#FORALL a|b {#FORALL 1|2 {say %i};say %i}"), "say 1/say 2/say 2/say 1/say 2/say 2/");
  EXPECT_EQ(Sent("#2 {#3 {#OK};say %i %repeatnum}"), "say 3 3/say 3 3/");
  EXPECT_EQ(Sent("#1.5 {say %i};#2.5 {say %i}"), "say 1/say 1/say 2/");
  EXPECT_EQ(Run("#-1 {say no}"), "Bad command #-1");
}

TEST_F(ControlTest, ForAllWalksAList) {
  AddVariable("l", "rat|big cat||dog");
  EXPECT_EQ(Sent("#FORALL @l {kill %i}"), "kill rat/kill big cat/kill /kill dog/");
  EXPECT_EQ(Sent("#FORALL {@nothing} {kill %i}"), "");
  EXPECT_EQ(Run("#FORALL x {#xyz}", option::CheckOnly), "Bad command #xyz");
}

TEST_F(ControlTest, TheRepeatCountCanBeReadButNotSet) {
  EXPECT_EQ(Sent("#3 {say %i %REPEATNUM;#VAR repeatnum 0}"), "say 1 1/say 2 2/say 3 3/");
  EXPECT_EQ(Sent("#0 {x}"), "");
  EXPECT_EQ(Sent("#2"), "//");
}

TEST_F(ControlTest, ACountOfZeroEndsTheRepetitionAndTheLine) {
  memory.loop.BeforePump = [this] {
    if (script.SystemValues[sysvar::I] == "2") script.SystemValues[sysvar::REPEATNUM] = "0";
  };
  EXPECT_EQ(Sent("#5 {#WAIT 0;say %i};say no"), "say 1/say 2/");
  memory.loop.BeforePump = nullptr;
}

TEST_F(ControlTest, AbortLeavesTheBlockAndTheOneAroundIt) {
  EXPECT_EQ(Sent("#3 {say %i;#ABORT;say no};say also no"), "say 1/");
  EXPECT_EQ(LastOptions & option::AbortBlock, 0);
  EXPECT_EQ(Sent("#IF 1 {#ABORT};say no"), "");
  AddAlias("a", "#IF 1 {#ABORT};say no");
  EXPECT_EQ(Sent("a;say on"), "say on/");
}

TEST_F(ControlTest, AbortWithAParameterLeavesEverything) {
  AddAlias("a", "#IF 1 {#ABORT all};say no");
  EXPECT_EQ(Sent("a;say no"), "");
  EXPECT_NE(LastOptions & option::AbortAll, 0);
  EXPECT_EQ(Sent("#ABORT @nothing;say no"), "");
  EXPECT_EQ(LastOptions & option::AbortAll, 0);
  EXPECT_EQ(Run("#ABORT", option::CheckOnly), "");
  EXPECT_EQ(LastOptions, option::CheckOnly);
}

TEST_F(ControlTest, ALevelThatAbortLeftKeepsItsCount) {
  EXPECT_EQ(Run("#10 {#IF (1) {#ABORT}}"), "");
  EXPECT_EQ(Run("#11 {#IF (1) {#ABORT}}"), "recursive check - probable infinite loop detected");
}

TEST_F(ControlTest, SomeCommandsGiveTheLevelOfAnAbortBackAndSomeDoNot) {
  AddAlias("a", "#ABORT");
  const std::pair<const char*, int> rows[] = {
      {"#IF 1 {#ABORT}", 2},
      {"#WHILE 1 {#ABORT}", 2},
      {"#UNTIL 1 {#ABORT}", 2},
      {"#FORALL x {#ABORT}", 1},
      {"#3 {#ABORT}", 1},
      {"#EXECUTE {#ABORT}", 1},
      {"a", 1},
  };
  for (const auto& [line, depth] : rows) {
    EXPECT_EQ(Run(line), "") << line;
    EXPECT_EQ(script.CommandDepth, depth) << line;
  }
}

TEST_F(ControlTest, AnElseThatIsNotThereIsNotChecked) {
  std::string line = "#IF 1 {a}";
  for (int i = 1; i < 11; ++i) line += ";#IF 1 {a}";
  EXPECT_EQ(Run(line, option::CheckOnly), "");
  EXPECT_EQ(Run(line + ";#IF 1 {a}", option::CheckOnly), "recursive check - probable infinite loop detected");
}

TEST_F(ControlTest, ExecuteRunsALineElsewhere) {
  MakeSession(1, "anna", true);
  MakeSession(2, "carl", false);
  EXPECT_EQ(Sent("#EXECUTE {say hi} ANNA", 1), "say hi/");
  EXPECT_EQ(LastChannel, 0);
  EXPECT_EQ(Run("#EXECUTE {say hi} an"), "Parameter 2 has invalid Character reference an");
  EXPECT_EQ(Sent("#EXECUTE {say ho} all", 1), "say ho/");
  EXPECT_EQ(Sent(), "say ho/");
  EXPECT_EQ(script.CommandDepth, 1);
}

TEST_F(ControlTest, ExecuteExpandsItsLineWithoutATarget) {
  MakeSession(1, "anna", true);
  AddVariable("x", "7", script.SocketOwner[1]);
  Run("#VAR c {say 1~;say 2};#GVAR x 5");
  EXPECT_EQ(Sent("#EXECUTE {@c}"), "say 1/say 2/");
  EXPECT_EQ(Sent("#EXECUTE {say @x} anna", 1), "say 7/");
  EXPECT_EQ(Sent("#EXECUTE {say @x %EXPAND(@x)} anna", 1), "say 5 5/");
  EXPECT_EQ(Sent("#EXECUTE {say @x %expand(@x)} ALL", 1), "say 5 5/");
  Sent();
}

TEST_F(ControlTest, ExecutePassesArgumentsAndAborts) {
  MakeSession(1, "anna", true);
  AddAlias("tell", "#EXECUTE {say %1} anna");
  EXPECT_EQ(Sent("tell hello", 1), "say hello/");
  EXPECT_EQ(Sent("#EXECUTE {say a;#ABORT all} ALL;say no"), "say a/");
  EXPECT_EQ(memory.sockets.TakeWritten(1), "") << "the second session is not reached";
  EXPECT_EQ(Run("#EXECUTE {#xyz} all;say no"), "Bad command #xyz");
  EXPECT_EQ(Sent("#EXECUTE {say @x} @nothing"), "say /") << "an empty target is this session";
}

TEST_F(ControlTest, ABodyMayDisconnectItsOwnSession) {
  EXPECT_EQ(Run("#3 {#KILLALL;#VAR n %i}"), "");
  EXPECT_FALSE(memory.sockets.Connected(0));
}

TEST_F(ControlTest, MathStoresWholeNumbers) {
  EXPECT_EQ(Run("#MATH x {1+2*3}"), "");
  EXPECT_EQ(Variable("x", script.SocketOwner[0]), "7");
  EXPECT_EQ(Run("#GMATH y 7/2"), "");
  EXPECT_EQ(Variable("y"), "4");
  EXPECT_TRUE(Run("#MATH x zork").starts_with("Undefined variable"));
  EXPECT_EQ(Effects(), (Lines{"speech 1 error", "beep"}));
}

TEST_F(ControlTest, BreakWithoutADebuggerDoesNothing) {
  EXPECT_EQ(Run("#BREAK"), "");
  EXPECT_EQ(Effects(), Lines{});
}

TEST_F(ControlTest, HugeTextsPass) {
  const std::string million(1000000, 'x');
  EXPECT_EQ(Run("#VAR big {" + million + "}"), "");
  EXPECT_EQ(Variable("big", script.SocketOwner[0]).size(), million.size());
  std::string list = "0";
  for (int i = 1; i < 100000; ++i) list += "|" + std::to_string(i);
  AddVariable("l", list);
  EXPECT_EQ(Run("#FORALL @l {#VAR last %i}"), "");
  EXPECT_EQ(Variable("last", script.SocketOwner[0]), "99999");
}

TEST_F(ControlTest, DeepBracesAreAnErrorOrAResult) {
  std::string deep = "say hi";
  for (int i = 0; i < 1000; ++i) deep = "#IF 1 {" + deep + "}";
  EXPECT_EQ(Run(deep), "recursive check - probable infinite loop detected");
  EXPECT_EQ(Run("say " + std::string(1000, '{') + std::string(1000, '}')), "");
}

class WaitTest : public ControlTest {
 protected:
  std::int64_t Milliseconds(const std::string& line) {
    const std::int64_t start = memory.clock.MonotonicMilliseconds();
    EXPECT_EQ(Run(line), "");
    return memory.clock.MonotonicMilliseconds() - start;
  }
  int pumps = 0;
};

TEST_F(WaitTest, TimePassesAndEventsRun) {
  auto timer = memory.loop.Create([this] { ++pumps; });
  timer->SetInterval(1000);
  timer->SetEnabled(true);
  EXPECT_NEAR(static_cast<double>(Milliseconds("#WAIT 5")), 5000, 10);
  EXPECT_GE(pumps, 4);
}

TEST_F(WaitTest, ZeroPumpsOnce) {
  memory.loop.BeforePump = [this] { ++pumps; };
  EXPECT_EQ(Milliseconds("#WAIT 0"), 0);
  EXPECT_EQ(pumps, 1);
  memory.loop.BeforePump = nullptr;
}

TEST_F(WaitTest, NoEventsFreezesTheProgram) {
  memory.loop.BeforePump = [this] { ++pumps; };
  EXPECT_NEAR(static_cast<double>(Milliseconds("#WAIT 5 noevents")), 5000, 10);
  EXPECT_EQ(pumps, 0);
  memory.loop.BeforePump = nullptr;
}

TEST_F(WaitTest, OkEndsAWaitForIt) {
  auto timer = memory.loop.Create([this] {
    control.OkFlag[0] = true;
    ++pumps;
  });
  timer->SetInterval(2000);
  timer->SetEnabled(true);
  control.OkFlag[0] = true;  // one from before does not count
  EXPECT_NEAR(static_cast<double>(Milliseconds("#WAIT 60 OK")), 2000, 10);
  EXPECT_FALSE(control.OkFlag[0]);
  timer->SetEnabled(false);
  EXPECT_EQ(Run("#OK"), "");
  EXPECT_TRUE(control.OkFlag[0]);
}

TEST_F(WaitTest, ALineEndsAWaitForText) {
  auto timer = memory.loop.Create([this] { sessions.TextArrived[0] = 1; });
  timer->SetInterval(2000);
  timer->SetEnabled(true);
  sessions.TextArrived[0] = 1;
  EXPECT_NEAR(static_cast<double>(Milliseconds("#WAIT 60 text")), 2000, 10);
  EXPECT_EQ(sessions.TextArrived[0], 0);
}

TEST_F(WaitTest, AnotherSessionsOkAndLinesEndNothing) {
  MakeSession(1, "anna", true);
  auto timer = memory.loop.Create([this] {
    Run("#EXECUTE #OK anna");
    memory.sockets.Receive(1, "hello\r\n");
  });
  timer->SetInterval(1000);
  timer->SetEnabled(true);
  EXPECT_NEAR(static_cast<double>(Milliseconds("#WAIT 3 OK")), 3000, 10);
  EXPECT_NEAR(static_cast<double>(Milliseconds("#WAIT 3 TEXT")), 3000, 10);
  EXPECT_TRUE(control.OkFlag[1]);
}

TEST_F(WaitTest, AnOkOrALineOfTheSessionEndsItsWait) {
  auto timer = memory.loop.Create([this] {
    Run("#OK");
    memory.sockets.Receive(0, "hello\r\n");
  });
  timer->SetInterval(1000);
  timer->SetEnabled(true);
  EXPECT_NEAR(static_cast<double>(Milliseconds("#WAIT 3 ok")), 1000, 10);
  EXPECT_NEAR(static_cast<double>(Milliseconds("#WAIT 3 Text")), 1000, 10);
}

TEST_F(WaitTest, BadParametersAreRefused) {
  sessions.TextArrived[0] = 1;
  EXPECT_EQ(Run("#WAIT soon"), "Bad wait timer value");
  EXPECT_EQ(Run("#WAIT 5 BOGUS"), "If included, parameter 2 must be NoEVENTS, OK, or TEXT");
  EXPECT_EQ(sessions.TextArrived[0], 1);
}

TEST_F(WaitTest, AnOddKeywordThatIsAPieceOfTheListPasses) {
  EXPECT_NEAR(static_cast<double>(Milliseconds("#WAIT 1 OK-NOEVENTS")), 1000, 10);
}

TEST_F(WaitTest, ADeadlinePastMidnightNeverComes) {
  memory.clock.SetNow({2026, 1, 15, 23, 59, 58});
  auto timer = memory.loop.Create([this] { memory.loop.End(0); });
  timer->SetInterval(20000);
  timer->SetEnabled(true);
  EXPECT_GE(Milliseconds("#WAIT 5"), 20000);
}

TEST_F(WaitTest, WhatRunsInsideAWaitMayChangeEverything) {
  auto timer = memory.loop.Create([this] { Run("#UNALIAS a;#KILLALL"); });
  timer->SetInterval(500);
  timer->SetEnabled(true);
  Run("#ALIAS a {#WAIT 1;#VAR seen %1}");
  EXPECT_EQ(Run("a yes"), "");
  EXPECT_EQ(Variable("seen", script.SocketOwner[0]), "yes");
}

}  // namespace corvid::test
