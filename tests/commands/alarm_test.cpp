// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/fixture.h"

namespace corvid::test {

class AlarmTest : public CommandTest {
 protected:
  AlarmTest() {
    MakeSession(0, "bob", true);
    owner = script.SocketOwner[0];
  }
  std::string Sent() { return Replace(memory.sockets.TakeWritten(0), "\r\n", "/"); }
  OwnerId owner = 0;
};

TEST_F(AlarmTest, RunsOnceAfterItsTime) {
  EXPECT_EQ(Run("#ALARM 5 {say hi}"), "");
  memory.loop.Pass(4900);
  EXPECT_EQ(Sent(), "");
  memory.loop.Pass(300);
  EXPECT_EQ(Sent(), "say hi/");
  memory.loop.Pass(20000);
  EXPECT_EQ(Sent(), "");
  EXPECT_FALSE(alarms.Running());
}

TEST_F(AlarmTest, ANegativeTimeRepeats) {
  Run("#ALARM -2 {say hi}");
  memory.loop.Pass(1900);
  EXPECT_EQ(Sent(), "");
  memory.loop.Pass(5000);
  EXPECT_EQ(Sent(), "say hi/say hi/say hi/");
  EXPECT_EQ(Run("#UNALARM -1"), "");
  memory.loop.Pass(5000);
  EXPECT_EQ(Sent(), "");
}

TEST_F(AlarmTest, TwoOfThemTakeTwoSlots) {
  Run("#ALARM 5 {say a};#ALARM 5 {say b}");
  EXPECT_EQ(alarms.Highest(), 2);
  memory.loop.Pass(5200);
  EXPECT_EQ(Sent(), "say a/say b/");
  Run("#ALARM 5 {say c}");
  EXPECT_EQ(alarms.Highest(), 2);
}

TEST_F(AlarmTest, ANamedAlarmKeepsItsSlotWhileItWaits) {
  Run("#ALARM t 5 {say a}");
  EXPECT_EQ(Variable("t", owner), "1");
  Run("#ALARM t 9 {say b}");
  EXPECT_EQ(alarms.Highest(), 1);
  memory.loop.Pass(6000);
  EXPECT_EQ(Sent(), "");
  Run("#ALARM t 1");  // the same line, sooner
  memory.loop.Pass(1200);
  EXPECT_EQ(Sent(), "say b/");
  Run("#ALARM t 5 {say c}");
  EXPECT_EQ(Variable("t", owner), "1");
}

TEST_F(AlarmTest, ANameWithoutALineTakesTheLineOfItsSlot) {
  Run("#ALARM 1 {say a}");
  memory.loop.Pass(1200);
  EXPECT_EQ(Sent(), "say a/");
  Run("#ALARM t 1");
  memory.loop.Pass(1200);
  EXPECT_EQ(Sent(), "say a/") << "the line that the slot had before";
}

TEST_F(AlarmTest, AnAlarmBelongsToTheSessionThatSetItLast) {
  MakeSession(1, "anna", true);
  Run("#GALARM t 5 {say a}");
  Run("#EXECUTE {#ALARM t 1} anna");
  EXPECT_EQ(alarms.Highest(), 1);
  memory.loop.Pass(1200);
  EXPECT_EQ(Sent(), "");
  EXPECT_EQ(memory.sockets.TakeWritten(1), "say a\r\n");
}

TEST_F(AlarmTest, AnAlarmIsACallOfItsOwn) {
  AddAlias("set", "#ALARM 1 {say [%0][%1]}");
  Run("set x");
  script.CommandDepth = 12;
  memory.loop.Pass(1200);
  EXPECT_EQ(Sent(), "say [][]/");
  EXPECT_EQ(ErrorLog(), "");
}

TEST_F(AlarmTest, TheFormIsToldBeforeAnyExpansion) {
  AddVariable("n", "5");
  EXPECT_EQ(Run("#ALARM @n {say hi}"), "");
  EXPECT_EQ(Run("#ALARM soon {say hi}"), "Time period in alarm must be numeric");
  EXPECT_EQ(Run("#ALARM {} {say hi}"), "Time period in alarm must be numeric");
}

TEST_F(AlarmTest, CheckModeOnlyParsesTheBody) {
  EXPECT_EQ(Run("#ALARM 5 {#xyz}", option::CheckOnly), "");
  EXPECT_EQ(Run("#ALARM zork {#xyz }", option::CheckOnly), "");
  EXPECT_EQ(alarms.Highest(), 1);
  EXPECT_FALSE(alarms.Running());
}

TEST_F(AlarmTest, ASessionThatIsDownMissesItsAlarm) {
  Run("#ALARM -2 {say hi}");
  memory.sockets.Disconnect(0);
  memory.loop.Pass(3000);
  Connect(0);
  EXPECT_EQ(Sent(), "");
  memory.loop.Pass(2000);
  EXPECT_EQ(Sent(), "say hi/");
}

TEST_F(AlarmTest, AnErrorIsReportedAndTheRestGoesOn) {
  Run("#ALARM 1 {#xyz};#ALARM 1 {say hi}");
  Effects();
  memory.loop.Pass(1200);
  EXPECT_EQ(Sent(), "say hi/");
  EXPECT_EQ(Of("speech"), (Lines{"1 error"}));
  EXPECT_EQ(ErrorLog(), "\r\nBad command #xyz in command: #xyz") << "an alarm belongs to no script";
}

TEST_F(AlarmTest, AnAlarmMayCancelThemAll) {
  Run("#ALARM 1 {#UNALARM -1;say bye};#ALARM 1 {say no};#ALARM -1 {say never}");
  memory.loop.Pass(5000);
  EXPECT_EQ(Sent(), "say bye/");
  EXPECT_EQ(alarms.Highest(), 1);
}

TEST_F(AlarmTest, AnAlarmSetByAnAlarmWaitsForTheNextTick) {
  Run("#ALARM 1 {#ALARM 0 {say later};say now}");
  memory.loop.Pass(1100);
  EXPECT_EQ(Sent(), "say now/");
  memory.loop.Pass(200);
  EXPECT_EQ(Sent(), "say later/");
}

TEST_F(AlarmTest, AnAlarmPastMidnightComes) {
  memory.clock.SetNow({2026, 1, 15, 23, 59, 58});
  Run("#ALARM 5 {say hi}");
  memory.loop.Pass(4500);
  EXPECT_EQ(Sent(), "");
  memory.loop.Pass(1000);
  EXPECT_EQ(Sent(), "say hi/");
}

TEST_F(AlarmTest, ARepeatingAlarmGoesOnOverMidnight) {
  memory.clock.SetNow({2026, 1, 15, 23, 59, 55});
  Run("#ALARM -2 {say hi}");
  memory.loop.Pass(13000);
  EXPECT_EQ(Sent(), "say hi/say hi/say hi/say hi/say hi/say hi/");
}

TEST_F(AlarmTest, AnAlarmOfTwoDaysComesOnTheThird) {
  memory.clock.SetNow({2026, 1, 15, 23, 59, 50});
  Run("#ALARM 86420 {say hi}");  // past the midnight after the next
  memory.loop.Pass(20000);
  EXPECT_FLOAT_EQ(control.AlarmNext[1], 86410);
  EXPECT_EQ(Sent(), "");
}

TEST_F(AlarmTest, AnAlarmThatWaitsOverMidnightLosesNoOther) {
  memory.clock.SetNow({2026, 1, 15, 23, 59, 57});
  Run("#ALARM -1 {say tick};#ALARM 1 {#WAIT 1;say waited};#ALARM 2 {say late}");
  memory.loop.Pass(8000);
  const std::string sent = Sent();
  EXPECT_NE(sent.find("say waited/"), std::string::npos) << sent;
  EXPECT_NE(sent.find("say late/"), std::string::npos) << sent;
  EXPECT_TRUE(sent.ends_with("say tick/")) << sent;
}

TEST_F(AlarmTest, WhatWasDueInTheLastSecondsOfTheDayComesWithTheNewDay) {
  memory.clock.SetNow({2026, 1, 15, 23, 57, 40});  // second 86260
  Run("#ALARM 60 {say late};#ALARM 35 {say early}");
  memory.loop.Pass(200);
  memory.clock.SetNow({2026, 1, 16, 0, 0, 5});
  memory.loop.Pass(200);
  EXPECT_EQ(Sent(), "say late/");
  EXPECT_FLOAT_EQ(control.AlarmNext[2], 86295) << "before 86300: it waits for the evening";
}

TEST_F(AlarmTest, TimesFarAwayCountAsFreeAndAsNotInUse) {
  memory.clock.SetNow({2026, 1, 15, 1, 0, 0});  // second 3600
  Run("#ALARM t 150000 {say a}");
  EXPECT_FLOAT_EQ(control.AlarmNext[1], 153600);
  Run("#ALARM t 5 {say b}");
  EXPECT_EQ(Variable("t", owner), "2") << "no slot that is in use, and none that is free";
  Run("#ALARM 895000 {say c};#ALARM 900000 {say d}");
  EXPECT_EQ(alarms.Highest(), 4);
  EXPECT_TRUE(alarms.Running());
  Run("#UNALARM 1;#UNALARM 2;#UNALARM 3");
  EXPECT_TRUE(alarms.Running()) << "the fourth has a time";
  Run("#ALARM 5 {say e};#ALARM 5 {say f};#ALARM 5 {say g};#ALARM 5 {say h}");
  EXPECT_EQ(control.AlarmCommand[4], "say h") << "behind 900000 a slot is given away";
}

TEST_F(AlarmTest, ABackgroundSessionsAlarmsGoOn) {
  Run("#ALARM -1 {look}");
  MakeSession(1, "amy", true);
  script.CurrentSocket = 1;
  memory.loop.Pass(2500);
  EXPECT_EQ(Sent(), "look/look/");
  EXPECT_EQ(memory.sockets.TakeWritten(1), "");
}

TEST_F(AlarmTest, AnAlarmBeginsAtTheTopWithNothingOfWhoSetIt) {
  AddAlias("later", "#ALARM 1 {say [%1]}", owner);
  Run("later loot");
  script.CommandDepth = 12;  // a script waits, nested as deep as it may
  memory.loop.Pass(1200);
  EXPECT_EQ(Sent(), "say []/");
}

TEST_F(AlarmTest, AnAlarmRunsInItsSessionWhateverIsInFront) {
  MakeSession(1, "amy", true);
  AddAlias("hi", "say I am bob", owner);
  Run("#ALARM 1 {hi;#CHARACTER amy;look}");
  script.CurrentSocket = 1;
  memory.loop.Pass(1200);
  EXPECT_EQ(Sent(), "say I am bob/");
  EXPECT_EQ(memory.sockets.TakeWritten(1), "look\r\n");
}

TEST_F(AlarmTest, UnAlarmTakesNumbersNamesAndVariables) {
  Run("#ALARM t 5 {say a};#ALARM 5 {say b};#ALARM 5 {say c}");
  EXPECT_EQ(Run("#UNALARM t"), "");
  EXPECT_EQ(Run("#UNALARM 3"), "");
  memory.loop.Pass(6000);
  EXPECT_EQ(Sent(), "say b/");
  Run("#ALARM t 5 {say a}");
  EXPECT_EQ(Run("#UNALARM @t"), "");
  memory.loop.Pass(6000);
  EXPECT_EQ(Sent(), "");
  EXPECT_EQ(Run("#UNALARM 9"), "Parameter 1 is not an active alarm");
  EXPECT_EQ(Run("#UNALARM 0"), "Parameter 1 is not an active alarm");
}

TEST_F(AlarmTest, ABadIdLeavesItsTextForTheCaller) {
  Effects();
  EXPECT_EQ(Run("#UNALARM zork"), "parameter 1 (ID) must be numeric or hold a numeirc value");
  EXPECT_EQ(Effects(), Lines{});
  EXPECT_EQ(ErrorLog(), "");
}

TEST_F(AlarmTest, ABadIdEndsTheLine) {
  Run("#UNALARM zork;say no");
  EXPECT_EQ(Sent(), "");
}

TEST_F(AlarmTest, TheTimerRestsWhenNothingIsDue) {
  Run("#ALARM 5 {say a};#ALARM t 7 {say b}");
  Run("#UNALARM 1");
  EXPECT_TRUE(alarms.Running());
  Run("#UNALARM t");
  EXPECT_FALSE(alarms.Running());
  Run("#ALARM 1E6 {say never}");
  EXPECT_FALSE(alarms.Running()) << "a time that counts as free";
}

TEST_F(AlarmTest, ThePrefixNamesAnAlarmForEverybody) {
  Run("#GALARM t 5 {say a}");
  EXPECT_EQ(Variable("t"), "1");
  EXPECT_EQ(script.VariableOwners[1], 0);
  AddVariable("u", "own", owner);
  Run("#GALARM u 5 {say b};#GALARM u 9 {say c}");
  EXPECT_EQ(alarms.Highest(), 2) << "the number of the first is in the variable of all";
  EXPECT_EQ(Variable("u", owner), "own");
}

TEST_F(AlarmTest, KillAllLeavesAlarmsInPlace) {
  Run("#ALARM 5 {say a};#KILLALL");
  EXPECT_TRUE(alarms.Active(1));
  EXPECT_TRUE(alarms.Running());
}

TEST_F(AlarmTest, AVariableThatNamesNoSlotIsNoFault) {
  AddVariable("t", "70000", owner);
  EXPECT_EQ(Run("#ALARM t 5 {say hi}"), "");
  EXPECT_EQ(Variable("t", owner), "1");
}

TEST_F(AlarmTest, AnAlarmThatWaitsForItsSuccessorIsStopped) {
  AddAlias("again", "#ALARM 0 again;#WAIT 600");
  EXPECT_EQ(Run("again"), "");
  EXPECT_NE(ErrorLog().find("recursive check - probable infinite loop detected"), std::string::npos);
}

TEST_F(AlarmTest, AFaultInATickIsLoggedAndTheOthersGoOn) {
  Run("#ALARM 1 {say one};#ALARM 1 {say two}");
  struct FaultInOne : CommandRunner {
    explicit FaultInOne(CommandRunner& real) : Real(real) {}
    void ProcessCommand(const std::string& line, int16& flags, std::string& problem, Parameters& values,
                        int16& channel) override {
      if (line == "say one") throw Fault(FaultKind::Internal, "out of order");
      Real.ProcessCommand(line, flags, problem, values, channel);
    }
    void SortTriggers() override { Real.SortTriggers(); }
    CommandRunner& Real;
  } faulty(dispatcher);
  runner.Real = &faulty;
  Effects();
  memory.loop.Pass(1200);
  EXPECT_EQ(Sent(), "say two/");
  EXPECT_EQ(Of("speech"), (Lines{"1 Error logged."}));
  EXPECT_NE(memory.files.ReadWhole("/data/error.log").find("Procedure: alarm_timer\r\n"), std::string::npos);
}

TEST_F(AlarmTest, AnAlarmOfNoSessionIsMissed) {
  Run("#ALARM 1 {say one};#ALARM 1 {say two}");
  control.AlarmChannel[1] = 99;  // no session has that number
  Effects();
  memory.loop.Pass(1200);
  EXPECT_EQ(Sent(), "say two/");
  EXPECT_EQ(Of("speech"), Lines());
}

TEST_F(AlarmTest, ATimeBeyondNumbersIsAParsingError) {
  EXPECT_TRUE(Run("#ALARM 1E300 {say hi}").starts_with("Bad parsing error - "));
  EXPECT_TRUE(Run("#WAIT 1E300").starts_with("Bad parsing error - "));
}

}  // namespace corvid::test
