// SPDX-License-Identifier: GPL-3.0-or-later
// Walks that are walked: at once, back, and slowly.
#include "walk_fixture.h"

namespace corvid::test {

TEST_F(WalkTest, TheMenuCarriesOutTheCommandsOfWalks) {
  menus.MenuRoutine("AUTOWALK//BE");
  EXPECT_EQ(State(), 2);
  Run("n;e");
  menus.MenuRoutine("AUTOWALK//IG");
  EXPECT_EQ(Buffer(), "n;");
  menus.MenuRoutine("AUTOWALK//PA");
  EXPECT_EQ(State(), 6);
  menus.MenuRoutine("AUTOWALK//UN");
  EXPECT_EQ(State(), 2);
  menus.MenuRoutine("AUTOWALK//ST");
  EXPECT_EQ(State(), 0);
  EXPECT_EQ(Buffer(), "");
}

TEST_F(WalkTest, DirectionsAreKeptInUpperCaseTwiceIfToldTwice) {
  AddVariable("way", "up");
  Run("#DIRECTION @way down");
  Run("#DIRECTION enter");
  Run("#DIRECTION enter");
  ASSERT_EQ(script.AbbreviationCount, 7);
  EXPECT_EQ(script.Directions[5], "UP");
  EXPECT_EQ(script.OppositeDirections[5], "DOWN");
  EXPECT_EQ(script.Directions[7], "ENTER");
  EXPECT_EQ(script.OppositeDirections[7], "");
}

TEST_F(WalkTest, OnlyTheEndOfEverythingTakesDirectionsAway) {
  script.DefiningBuffer = 5;
  Run("#DIRECTION up down");
  script.DefiningBuffer = 0;
  symbols.RemoveCommands(5);
  symbols.RemoveCharacter(Owner());
  symbols.CompressCommand(windowtype::All);
  EXPECT_EQ(script.AbbreviationCount, 5);
  EXPECT_EQ(script.Directions[5], "UP");
  Run("#KILLALL");
  EXPECT_EQ(script.AbbreviationCount, 0);
}

TEST_F(WalkTest, AWalkIsWalkedAtOnceForwardsAndBack) {
  Define(".x", "N;look;E");
  EXPECT_EQ(Run(".x"), "");
  EXPECT_EQ(Steps(), "N look E");
  EXPECT_EQ(Run("..x"), "");
  EXPECT_EQ(Steps(), "W look S");
  EXPECT_EQ(State(), 0);
  EXPECT_EQ(Buffer(), "");
}

TEST_F(WalkTest, AWalkEndsARecording) {
  Define(".x", "N");
  Run("#RECORD;n");
  symbols.CheckAndAddClass("playback", Owner());
  Run(".x");
  EXPECT_EQ(State(), 0);
  EXPECT_EQ(Buffer(), "");
  EXPECT_FALSE(ClassOn("Recording"));
  EXPECT_FALSE(ClassOn("playback"));
}

TEST_F(WalkTest, ASlowWalkTakesTheBufferOfARecordingAndLeavesItsClassOn) {
  options.SlowWalk = true;
  Define(".x", "N;E");
  Run("#RECORD;look");
  Run(".x");
  EXPECT_EQ(State(), 1);
  EXPECT_EQ(Buffer(), "E");
  EXPECT_TRUE(ClassOn("Recording"));
}

TEST_F(WalkTest, ARecordingThatAWalkBeginsIsKept) {
  Define(".x", "#RECORD;N;E");
  Run(".x");
  EXPECT_EQ(State(), 2);
  EXPECT_EQ(Buffer(), "N;E;");
}

TEST_F(WalkTest, AnErrorInAWalkIsTracedWithItsFile) {
  WorkIn("/data/hills.set", "");
  AddAlias(".x", "N;#nosuch;E", Owner(), 4);
  EXPECT_EQ(Run(".x"), "Bad command #nosuch");
  EXPECT_EQ(Steps(), "N");
  EXPECT_NE(ErrorLog().find("-- Error found in file /data/hills.set"), std::string::npos) << ErrorLog();
  EXPECT_NE(ErrorLog().find("traced back to line: .x"), std::string::npos);
}

TEST_F(WalkTest, ASlowWalkTakesAStepForEachOk) {
  options.SlowWalk = true;
  Define(".x", "N;look;E");
  Run(".x");
  EXPECT_EQ(Steps(), "N");
  EXPECT_EQ(State(), 1);
  EXPECT_EQ(Buffer(), "look;E");
  EXPECT_TRUE(ClassOn("playback"));
  Run("#OK");
  EXPECT_EQ(Steps(), "look");
  Run("#OK");
  EXPECT_EQ(Steps(), "E");
  EXPECT_EQ(State(), 0);
  EXPECT_EQ(Buffer(), "");
  EXPECT_FALSE(ClassOn("playback"));
  Run("#OK");
  EXPECT_EQ(Steps(), "") << "the walk is over";
}

TEST_F(WalkTest, ASlowWalkOfOneStepIsOverWithIt) {
  options.SlowWalk = true;
  Define(".x", "N");
  Run(".x");
  EXPECT_EQ(Steps(), "N");
  EXPECT_EQ(State(), 0);
  EXPECT_FALSE(ClassOn("playback"));
}

TEST_F(WalkTest, ASlowWalkGoesBackToo) {
  options.SlowWalk = true;
  Define(".x", "N;E");
  Run("..x");
  Run("#OK");
  EXPECT_EQ(Steps(), "W S");
}

TEST_F(WalkTest, CommandsInASlowWalkPassByThemselves) {
  options.SlowWalk = true;
  Define(".x", "#MATH a 1;N; #MATH b 2;#MATH c 3;E;S");
  Run(".x");
  EXPECT_EQ(Variable("a", Owner()), "1");
  EXPECT_EQ(Steps(), "N") << "the command that comes first, and the step behind it";
  EXPECT_EQ(Variable("b", Owner()), "(none)") << "what is to happen in the next room waits for it";
  Run("#OK");
  EXPECT_EQ(Variable("b", Owner()) + Variable("c", Owner()), "23");
  EXPECT_EQ(Steps(), "E") << "commands run together with the step behind them";
  Run("#OK");
  EXPECT_EQ(Steps(), "S");
  EXPECT_EQ(State(), 0);
}

TEST_F(WalkTest, AFirstCommandBehindABlankWaitsForItsOk) {
  options.SlowWalk = true;
  Define(".x", " #MATH a 1;N;E");
  Run(".x");
  EXPECT_EQ(Variable("a", Owner()), "1");
  EXPECT_EQ(Steps(), "");
  Run("#OK");
  EXPECT_EQ(Steps(), "N");
}

TEST_F(WalkTest, EachOkReleasesOneStepWhateverCommandsStandBetween) {
  options.SlowWalk = true;
  Define(".x", "N;E;#MATH a 1;S;#MATH a 2;W;#MATH a 3");
  Run(".x");
  std::string seen = Steps();
  for (int i = 0; i < 4; ++i) {
    Run("#OK");
    seen += "|" + Steps() + " " + Variable("a", Owner());
  }
  EXPECT_EQ(seen, "N|E (none)|S 1|W 2| 3");
  EXPECT_EQ(State(), 0);
}

TEST_F(WalkTest, AnAbortInAStepEndsTheLineAndTheWalkGoesOnWithTheNextOk) {
  options.SlowWalk = true;
  Define(".x", "N;#ABORT;E");
  Run(".x");
  EXPECT_EQ(Run("#OK;#MATH after 1"), "");
  EXPECT_EQ(Variable("after", Owner()), "(none)");
  EXPECT_EQ(Steps(), "N");
  EXPECT_EQ(Buffer(), "E");
  EXPECT_EQ(script.CommandDepth, 1) << "a step that was left gives its depth back all the same";
  Run("#OK");
  EXPECT_EQ(Steps(), "E");
}

TEST_F(WalkTest, AWalkThatEndsInTheMiddleOfALineGivesItsDepthBack) {
  Define(".x", "N;E");
  Run("#RECORD;n;#ENDRECORD y;.x;..y");
  EXPECT_EQ(script.CommandDepth, 1);
  options.SlowWalk = true;
  Run(".x;#OK");
  EXPECT_EQ(script.CommandDepth, 1);
}

TEST_F(WalkTest, AWalkThatIsLeftGivesItsDepthBack) {
  Define(".x", "N;#ABORT;E");
  Run(".x");
  EXPECT_EQ(Steps(), "N");
  EXPECT_EQ(script.CommandDepth, 1);
}

TEST_F(WalkTest, ManyCommandsInARowAreNoDeepNest) {
  options.SlowWalk = true;
  std::string body = "N";
  for (int i = 0; i < 50; ++i) body += ";#MATH a {@a+1}";
  AddVariable("a", "0", Owner());
  Define(".x", body + ";E;S");
  Run(".x");
  EXPECT_EQ(Run("#OK"), "");
  EXPECT_EQ(Variable("a", Owner()), "50");
  EXPECT_EQ(Steps(), "N E");
}

TEST_F(WalkTest, ACommandThatPausesTheWalkStopsItThere) {
  options.SlowWalk = true;
  Define(".x", "N;#PAUSE;E");
  Run(".x");
  Run("#OK");
  Run("#OK");
  EXPECT_EQ(Steps(), "N");
  Run("#UNPAUSE;#OK");
  EXPECT_EQ(Steps(), "E");
}

TEST_F(WalkTest, APausedWalkWaits) {
  options.SlowWalk = true;
  Define(".x", "N;E;S");
  Run(".x;#PAUSE");
  EXPECT_EQ(State(), 5);
  Run("#OK");
  EXPECT_EQ(Steps(), "N");
  Run("#UNPAUSE");
  EXPECT_EQ(State(), 1);
  Run("#OK");
  EXPECT_EQ(Steps(), "E");
}

TEST_F(WalkTest, StopEndsWhateverIsUnderWay) {
  options.SlowWalk = true;
  Define(".x", "N;E");
  Run(".x;#STOP;#OK");
  EXPECT_EQ(Steps(), "N");
  EXPECT_EQ(State(), 0);
  EXPECT_EQ(Buffer(), "");
  EXPECT_FALSE(ClassOn("playback"));
  Run("#RECORD;n;#STOP");
  EXPECT_EQ(State(), 0);
  EXPECT_EQ(Buffer(), "");
  EXPECT_FALSE(ClassOn("Recording"));
}

TEST_F(WalkTest, AnErrorInASlowStepLeavesTheOthers) {
  options.SlowWalk = true;
  Define(".x", "N;#nosuch;E");
  Run(".x");
  EXPECT_EQ(Run("#OK"), "Bad command #nosuch");
  EXPECT_EQ(Buffer(), "E");
  EXPECT_EQ(Run("#OK"), "");
  EXPECT_EQ(Steps(), "N E");
}

TEST_F(WalkTest, AnOkOutsideAWalkIsOnlyHeard) {
  Run("#OK");
  EXPECT_TRUE(control.OkFlag[1]);
  EXPECT_EQ(Effects(), Lines{});
}

TEST_F(WalkTest, AWalkThatWalksItselfIsStopped) {
  Define(".x", "N;.x");
  EXPECT_EQ(Run(".x"), "recursive check - probable infinite loop detected");
  options.SlowWalk = true;
  Define(".y", "#MATH a 1;.y");
  EXPECT_EQ(Run(".y"), "recursive check - probable infinite loop detected");
}

TEST_F(WalkTest, BehindATrailingSeparatorIsOneMoreStepThatIsEmpty) {
  options.SlowWalk = true;
  Define(".x", "N;");
  Run(".x");
  EXPECT_EQ(Steps(), "N");
  EXPECT_EQ(State(), 1);
  Run("#OK");
  EXPECT_EQ(Of("send"), Lines{"1 "});
  EXPECT_EQ(State(), 0);
  EXPECT_FALSE(ClassOn("playback"));
}

}  // namespace corvid::test
