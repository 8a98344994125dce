// SPDX-License-Identifier: GPL-3.0-or-later
// Triggers whose actions change the table that is being walked.
#include "trigger_fixture.h"

namespace corvid::test {

TEST_F(TriggerTest, ATriggerMayRemoveItself) {
  Do("#TRIGGER {*} {say low};#TRIGGER {x} {#UNTRIGGER {x};say once};#TRIGGER {*x} {say high}");
  EXPECT_EQ(Answer("x"), "say high;say once;say low");
  EXPECT_EQ(Answer("x"), "say high;say low");
}

TEST_F(TriggerTest, TheWalkGoesOnByRowNumber) {
  Do("#TRIGGER {x*} {say low};#TRIGGER {x} {say mid};#TRIGGER {*x} {#UNTRIGGER {x*};say high}");
  EXPECT_EQ(Answer("x"), "say high;say high;say mid") << "a row below goes: the trigger itself comes to the next row";
}

TEST_F(TriggerTest, AClassMayGoWithTheTriggerThatEndsIt) {
  Do("#CLASS k ENABLE;#TRIGGER {x*} {no} {k};#TRIGGER {x} {say low};#TRIGGER {x?} {no} {k};"
     "#TRIGGER {*x} {#DELCLASS k;say end} {k}");
  EXPECT_EQ(Answer("x"), "say end;say low");
  EXPECT_EQ(ErrorFile(), "");
  EXPECT_EQ(Answer("x"), "say low");
}

TEST_F(TriggerTest, ARowBehindTheEndIsAFaultAndTheLineGoesOn) {
  Do("#TRIGGER {x*} {say low};#TRIGGER {x} {say mid};#TRIGGER {x?} {say no};#TRIGGER {*x} "
     "{#UNTRIGGER {x};#UNTRIGGER {x*};#UNTRIGGER {x?};say high}");
  EXPECT_EQ(Answer("x"), "say high");
  EXPECT_NE(ErrorFile().find("Procedure: SockTelnet_OnRead"), std::string::npos);
  EXPECT_EQ(Screen(), "say high\r\nx\r\n");
}

TEST_F(TriggerTest, ANewTriggerDoesNotSeeTheLineThatMadeIt) {
  Do("#TRIGGER {x} {#TRIGGER {x*} {say new};say made}");
  EXPECT_EQ(Answer("x"), "say made");
  EXPECT_EQ(Answer("x"), "say new;say made");
}

TEST_F(TriggerTest, ASortUnderTheWalkMovesRows) {
  // The new one sorts to the bottom and everything else a row up: the one below the firing one is passed by.
  AddAlias("make", "#TRIGGER {y} {#SUB z}");
  Do("#TRIGGER {x*} {say low};#TRIGGER {x} {say mid};#TRIGGER {*x} {make;#UNTRIGGER {w};say high};#TRIGGER {w} {no}");
  EXPECT_EQ(Answer("x"), "say high;say low");
}

TEST_F(TriggerTest, ClassesSwitchedByACommandCountAtOnce) {
  Do("#TRIGGER {x*} {low} {k};#TRIGGER {x} {#CLASS k ENABLE;mid};#TRIGGER {*x} {never} {k}");
  EXPECT_EQ(Answer("x"), "mid;low");
}

TEST_F(TriggerTest, VariablesSetByACommandCountAtOnce) {
  script.CurrentOwner = Bob();
  Do("#TRIGGER {@p} {low};#TRIGGER {x} {#VAR p x;mid}");
  EXPECT_EQ(Answer("x"), "mid;low");
}

TEST_F(TriggerTest, ATriggerMayEndItsOwnSession) {
  Do("#TRIGGER {x*} {say late};#TRIGGER {x} {#KILLALL}");
  Mud("x");
  EXPECT_FALSE(memory.sockets.Connected(1));
  EXPECT_EQ(script.TriggerCount, 0);
  EXPECT_NE(ErrorFile().find("Procedure: SockTelnet_OnRead"), std::string::npos) << "the walk met the end of the table";
  Do("#TRIGGER {y} {look}");
  EXPECT_EQ(Searches(), Lines{"y"});
}

TEST_F(TriggerTest, ATriggerMayForgetItsOwnCharacter) {
  sessions.MudFolder[1] = "/data/";
  Do("#TRIGGER {x*} {say late};#TRIGGER {x} {#KILLALL bob;say bye}");
  EXPECT_EQ(Answer("x"), "say bye");
  EXPECT_EQ(script.TriggerCount, 0);
  EXPECT_EQ(Screen(), "say bye\r\nx\r\n");
}

TEST_F(TriggerTest, ATriggerMayLoadTheFileThatMadeIt) {
  memory.files.Put("/data/t.set", "#TRIGGER {x} {#LOAD t.set;say loaded}\r\n#TRIGGER {x*} {say other}\r\n");
  int16 channel = 1;
  scriptFiles.LoadSet("t.set", 0, channel);
  const std::string first = Answer("x");
  EXPECT_NE(first.find("say loaded"), std::string::npos) << first;
  EXPECT_EQ(Searches(), (Lines{"x", "x*"}));
  EXPECT_NE(Answer("x").find("say other;"), std::string::npos);
}

TEST_F(TriggerTest, ALineMayComeWhileATriggerWaits) {
  Do("#TRIGGER {*} {#VAR seen {@seen%1,}};#TRIGGER {slow} {#WAIT 200;say done}");
  script.CurrentOwner = Bob();
  memory.sockets.Receive(1, "slow\r\n");
  memory.sockets.Receive(1, "quick\r\n");
  memory.loop.Pass(500);
  EXPECT_NE(Get("seen").find("slow"), std::string::npos);
  EXPECT_NE(Get("seen").find("quick"), std::string::npos);
}

// The lines that come during the wait change the table so often that all that was known of it is thrown away.
TEST_F(TriggerTest, LinesThatComeDuringAWaitMayTurnTheTableOver) {
  Do("#TRIGGER {*slow} {say low};#TRIGGER {slow} {#WAIT 100;say done};"
     "#TRIGGER {redo *} {#TRIGGER {tmp*} {y};#UNTRIGGER {tmp*}};#TRIGGER {slo*} {say "
     "high}");
  for (int i = 0; i < 40; ++i)
    memory.loop.Post([this, i] {
      for (int k = 0; k < 10; ++k) memory.sockets.Receive(1, "redo " + std::to_string(10 * i + k) + "\r\n");
    });
  EXPECT_EQ(Answer("slow"), "say high;say done;say low");
  EXPECT_EQ(ErrorFile(), "");
  EXPECT_EQ(script.TriggerCount, 4);
}

TEST_F(TriggerTest, ClassesOfBeforeKillallAreOff) {
  Do("#CLASS k ENABLE;#TRIGGER {x} {look} {k}");
  EXPECT_EQ(Answer("x"), "look");
  Do("#KILLALL");
  MakeSession(1, "bob", true);
  Do("#TRIGGER {x} {look} {k};#TRIGGER {x*} {wave}");
  EXPECT_EQ(Answer("x"), "wave");
  Do("#CLASS k ENABLE");
  EXPECT_EQ(Answer("x"), "wave;look");
}

TEST_F(TriggerTest, AnotherCommandCharacterMarksSubstitutions) {
  Do("#CONFIGURE CommandChar $");
  ASSERT_EQ(options.CommandChar, '$');
  Do("$TRIGGER {x} {$IF (0) {$su y}};$TRIGGER {y} {say #SUB}");
  EXPECT_EQ(Row(1).SortKey[0], '0');
  EXPECT_EQ(Row(2).SortKey[0], '1');
}

TEST_F(TriggerTest, AnotherEscapeCharacterCountsForWhatIsDefinedLater) {
  Do("#TRIGGER {a~*b*} {say one [%1]}");
  options.EscapeChar = '!';
  Do("#TRIGGER {*a!*b*} {say two [%1]}");
  EXPECT_EQ(Answer("a*bc"), "say two [c];say one [c]");
}

TEST_F(TriggerTest, RowsThatAClassHasLeftAreClosedUpWhereNoActionRuns) {
  const auto fill = [&] {
    for (int i = 0; i < 1100; ++i) Do("#TRIGGER {t" + std::to_string(i) + "} {x} {tmp}", 0);
  };
  Do("#TRIGGER {say*} {wave}");
  fill();
  EXPECT_EQ(Do("#DELCLASS tmp"), "");
  EXPECT_EQ(script.TriggerCount, 1101) << "the command itself moves nothing";
  EXPECT_EQ(Answer("say"), "wave");
  EXPECT_EQ(script.TriggerCount, 1);

  Do("#TRIGGER {go} {#WAIT 1;done}");
  int16 inside = 0;
  memory.loop.Post([&] {
    fill();
    Do("#DELCLASS tmp");
    memory.sockets.Receive(1, "say\r\n");
    inside = script.TriggerCount;
  });
  EXPECT_EQ(Answer("go"), "wave;done");
  EXPECT_EQ(inside, 1102) << "an action waits, and its walk goes on";
  EXPECT_EQ(Answer("say"), "wave");
  EXPECT_EQ(Searches(), (Lines{"say*", "go"}));
  EXPECT_EQ(script.TriggerCount, 2);
}

TEST_F(TriggerTest, AFullTableOfTriggersStaysAsItIs) {
  for (int i = 0; i < 1100; ++i) Do("#TRIGGER {t" + std::to_string(i) + "} {x} {" + (i % 3 == 0 ? "tmp" : "") + "}", 0);
  Do("#DELCLASS tmp");
  EXPECT_EQ(Answer("t1"), "x");
  EXPECT_EQ(script.TriggerCount, 1100) << "a third of the rows is not worth it";
}

TEST_F(TriggerTest, AnEmptyLineHasNoColour) {
  options.CompressOutput = false;
  Do("#TRIGGER {Red} {never} {} {Color};#TRIGGER {*} {say empty[%1]}");
  EXPECT_EQ(Answer(""), "say empty[]");
}

TEST_F(TriggerTest, AMegabyteOfSearchStringIsDefinedAtOnce) {
  std::string search;
  while (search.size() < std::size_t{1} << 20) search += "[x]";
  EXPECT_EQ(Do("#TRIGGER {" + search + "} {look};#TRIGGER {x} {wave}"), "");
  EXPECT_EQ(Answer("x"), "wave");
}

}  // namespace corvid::test
