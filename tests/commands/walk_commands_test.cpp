// SPDX-License-Identifier: GPL-3.0-or-later
// Walks: recorded, kept, walked, walked back, and walked slowly.
#include "fixture.h"

namespace corvid::test {

class WalkTest : public CommandTest {
 protected:
  WalkTest() {
    MakeSession(1, "bob", true);
    script.CurrentSocket = 1;
    script.CurrentOwner = script.SocketOwner[1];
    options.DisplayCommandsInOutput = false;
    for (const char* pair : {"n s", "s n", "e w", "w e"}) EXPECT_EQ(Run(std::string("#DIRECTION ") + pair), "");
    Effects();
  }
  OwnerId Owner() const { return script.SocketOwner[1]; }
  std::string Sent() {
    std::string all;
    for (const std::string& line : memory.effects.Of("wire")) all += line.substr(line.find(' ') + 1);
    return all;
  }
  // Lines that went to the game since the last call, joined by blanks.
  std::string Steps() {
    std::string all;
    for (const std::string& line : memory.effects.Of("send")) all += (all.empty() ? "" : " ") + line.substr(2);
    memory.effects.Clear();
    return all;
  }
  std::string Walk(const std::string& name) {
    const int16 row = symbols.FindAlias(name, Owner(), false);
    return row == 0 ? "(none)" : script.AliasValues[row];
  }
  bool ClassOn(const std::string& name) { return symbols.InClass(name, Owner()); }
  std::string NewLines() const { return buffers.BufferText[buffer::NewLines]; }
  int16& State() { return sessions.WalkState[1]; }
  std::string& Buffer() { return sessions.WalkBuffer[1]; }
  void Define(const std::string& name, const std::string& body) { AddAlias(name, body, Owner()); }
  // A loaded script that definitions belong to.
  void WorkIn(const std::string& path, const std::string& text) {
    scriptFiles.ResizeBuffers(4);
    buffers.BufferFile[4] = path;
    buffers.BufferFlags[4] = buffer::Script;
    buffers.BufferText[4] = text;
    script.DefiningBuffer = 4;
  }
};

TEST_F(WalkTest, ARecordingIsAnnouncedAndSwitchesItsClassOn) {
  EXPECT_EQ(Run("#RECORD"), "");
  EXPECT_EQ(Effects(), Lines{"speech 1 Recording"});
  EXPECT_EQ(State(), 2);
  EXPECT_TRUE(ClassOn("Recording"));
  Run("n;e");
  EXPECT_EQ(Buffer(), "n;e;");
  Run("#RECORD");
  EXPECT_EQ(Buffer(), "") << "it begins anew";
}

TEST_F(WalkTest, WhatWasRecordedBecomesAnAlias) {
  Run("#RECORD;n;look;e");
  symbols.CheckAndAddClass("playback", Owner());
  Effects();
  EXPECT_EQ(Run("#ENDRECORD home"), "");
  EXPECT_FALSE(ClassOn("playback"));
  EXPECT_EQ(Walk(".home"), "N;look;E");
  EXPECT_EQ(NewLines(), "#alias {.home} {N;look;E}\r\n");
  EXPECT_EQ(Effects(), (Lines{"display 1 \r\nRecorded commands  saved in New Lines window.",
                              "speech 5 Recorded commands saved in New Lines window.\r\n"}));
  EXPECT_EQ(State(), 0);
  EXPECT_EQ(Buffer(), "");
  EXPECT_FALSE(ClassOn("Recording"));
}

TEST_F(WalkTest, TheKeywordsOfTheEnd) {
  struct Row {
    const char* keywords;
    const char* steps;
  };
  for (const Row& row : {Row{"direction", "N;S;E"}, Row{"COMPRESS", "get all;E"}, Row{"Compress|Direction", "E"},
                         Row{"save", "get all;N;S;E"}}) {
    Run("#RECORD;get all;n;s;e");
    EXPECT_EQ(Run(std::string("#ENDRECORD x ") + row.keywords), "") << row.keywords;
    EXPECT_EQ(Walk(".x"), row.steps) << row.keywords;
  }
}

TEST_F(WalkTest, AnyOtherKeywordIsRefusedAndTheRecordingGoesOn) {
  const std::string problem = "If included, EndRecord options must be one or more of TEMP, COMPRESS, and Direction";
  Run("#RECORD;n");
  for (const char* word : {"TEMP", "DIRECTIONS", "SAVE|x"})
    EXPECT_EQ(Run(std::string("#ENDRECORD x ") + word), problem);
  EXPECT_EQ(State(), 2);
  EXPECT_EQ(Buffer(), "n;");
  EXPECT_FALSE(ClassOn("Recording")) << "the class goes first";
}

TEST_F(WalkTest, AnEmptyRecordingFailsAndStaysOn) {
  Run("#RECORD");
  EXPECT_EQ(Run("#ENDRECORD x"), "Wrong number of parameters");
  EXPECT_EQ(State(), 2);
  EXPECT_EQ(Walk(".x"), "(none)");
  EXPECT_NE(ErrorLog().find("traced back to line: #ENDRECORD x"), std::string::npos);
  Run("look");
  EXPECT_EQ(Run("#ENDRECORD x DIRECTION"), "Wrong number of parameters");
  EXPECT_EQ(Buffer(), "look;") << "nothing is lost";
}

TEST_F(WalkTest, ANameMayBeginWithItsDotAndHoldAVariable) {
  AddVariable("place", "inn", Owner());
  Run("#RECORD;n");
  Run("#ENDRECORD .@place");
  EXPECT_EQ(Walk(".inn"), "N");
}

TEST_F(WalkTest, TheGlobalFormMakesAWalkForEverybody) {
  Run("#RECORD;n");
  Run("#GENDRECORD x");
  EXPECT_EQ(NewLines(), "#Galias {.x} {N}\r\n");
  const int16 row = symbols.FindAlias(".x", 0, false);
  ASSERT_NE(row, 0);
  EXPECT_EQ(script.AliasOwners[row], 0);
  EXPECT_FALSE(ClassOn("Recording"));
}

TEST_F(WalkTest, ASavedWalkGoesIntoTheScriptThatIsWorkedOn) {
  WorkIn("/data/hills.set", "#alias {hi} {wave}\r\n#alias {.x} {s}\r\n#alias {.y} {w}\r\n");
  Run("#RECORD;n;e");
  Effects();
  EXPECT_EQ(Run("#ENDRECORD x SAVE"), "");
  EXPECT_EQ(buffers.BufferText[4], "#alias {hi} {wave}\r\n#alias {.x} {N;E}\r\n#alias {.y} {w}\r\n");
  EXPECT_EQ(Effects(), (Lines{"display 1 Recorded commands have been saved in hills.set\r\n",
                              "speech 5 Recorded commands have been saved in hills.set\r\n"}));
  EXPECT_EQ(NewLines(), "");
  Run("#RECORD;n");
  EXPECT_EQ(Run("#GENDRECORD z SAVE"), "");
  EXPECT_TRUE(buffers.BufferText[4].ends_with("#alias {.y} {w}\r\n#Galias {.z} {N}\r\n")) << buffers.BufferText[4];
}

TEST_F(WalkTest, AGlobalWalkIsSavedInThePlaceOfTheCharactersOwn) {
  WorkIn("/data/hills.set", "#Galias {.x} {s}\r\n#alias {.x} {w}\r\n#alias {.y} {w}\r\n");
  Run("#RECORD;n");
  EXPECT_EQ(Run("#GENDRECORD x SAVE"), "");
  EXPECT_EQ(buffers.BufferText[4], "#Galias {.x} {s}\r\n#Galias {.x} {N}\r\n#alias {.y} {w}\r\n");
}

TEST_F(WalkTest, SavingWithoutAScriptKeepsTheWalkInNewLines) {
  Run("#RECORD;n");
  EXPECT_EQ(Run("#ENDRECORD x SAVE"), "");
  EXPECT_EQ(NewLines(), "#alias {.x} {N}\r\n");
}

TEST_F(WalkTest, AnotherCommandCharacterIsUsedInTheDefinition) {
  options.CommandChar = '!';
  Run("!RECORD;n");
  EXPECT_EQ(Run("!ENDRECORD x"), "");
  EXPECT_EQ(NewLines(), "!alias {.x} {N}\r\n");
}

TEST_F(WalkTest, CheckingCarriesOutNothing) {
  Run("#RECORD;n");
  Effects();
  for (const char* line :
       {"#RECORD", "#ENDRECORD x", "#ENDRECORD x nonsense", "#ERASE", "#STOP", "#PAUSE", "#OK", "#DIRECTION up down"})
    EXPECT_EQ(Run(line, option::CheckOnly), "") << line;
  EXPECT_EQ(Effects(), Lines{});
  EXPECT_EQ(State(), 2);
  EXPECT_EQ(Buffer(), "n;");
  EXPECT_EQ(script.AbbreviationCount, 4);
}

TEST_F(WalkTest, WrongCountsAreRefused) {
  for (const char* line : {"#RECORD x", "#ENDRECORD", "#ENDRECORD a b c", "#STOP x", "#PAUSE x", "#UNPAUSE x", "#OK x",
                           "#DIRECTION", "#DIRECTION a b c"})
    EXPECT_EQ(Run(line), "Wrong number of parameters") << line;
}

TEST_F(WalkTest, TheLastStepIsErased) {
  Run("#RECORD;n;open gate;e");
  Effects();
  struct Row {
    const char* spoken;
    const char* left;
  };
  Buffer() += ";";  // an empty line was sent
  for (const Row& row : {Row{"erasing ", "n;open gate;e;"}, Row{"erasing e", "n;open gate;"},
                         Row{"erasing open gate", "n;"}, Row{"erasing n;", ""}}) {
    EXPECT_EQ(Run("#ERASE"), "");
    EXPECT_EQ(Of("speech"), Lines{std::string("1 ") + row.spoken});
    EXPECT_EQ(Buffer(), row.left);
  }
  Run("#ERASE");
  EXPECT_EQ(Effects(), Lines{}) << "nothing left to erase, nothing said";
  Buffer() = "x";
  Run("#ERASE");
  EXPECT_EQ(Effects(), Lines{});
  EXPECT_EQ(Buffer(), "");
}

TEST_F(WalkTest, ErasingTakesNoParameterAndDoesNothingOutsideARecording) {
  Buffer() = "n;e;";
  EXPECT_EQ(Run("#ERASE"), "");
  EXPECT_EQ(Buffer(), "n;e;");
  EXPECT_EQ(Effects(), Lines{});
  EXPECT_EQ(Run("#ERASE x"), "");
  EXPECT_EQ(Effects(), (Lines{"speech 1 error", "beep"}));
  EXPECT_TRUE(ErrorLog().ends_with(" in command: #ERASE x"));
  Run("#ERASE x", option::CheckOnly);
  EXPECT_EQ(Effects(), (Lines{"speech 1 error", "beep"})) << "a script that is checked hears of it too";
  State() = 1;
  EXPECT_EQ(Run("#ERASE"), "");
  EXPECT_EQ(Buffer(), "n;e;") << "the steps of a walk under way stay";
}

TEST_F(WalkTest, TheMenuFinishesARecordingIntoNewLinesOrAScript) {
  WorkIn("/data/hills.set", "#alias {hi} {wave}\r\n");
  script.DefiningBuffer = 0;
  Run("#RECORD;n;s;look;e");
  memory.face.Will({"OK", {{1, "old mill"}}, {{5, 1}}, {{2, 1}, {3, 1}}});
  menus.MenuRoutine("AUTOWALK//FI");
  EXPECT_EQ(buffers.BufferText[4], "#alias {hi} {wave}\r\n#alias {.old mill} {E}\r\n");
  EXPECT_EQ(NewLines(), "");
  EXPECT_EQ(State(), 0);
  Run("#RECORD;n");
  memory.face.Will({"OK", {{1, ".inn"}}, {}, {}});
  menus.MenuRoutine("AUTOWALK//FI");
  EXPECT_EQ(Walk(".inn"), "N");
  EXPECT_EQ(NewLines(), "#alias {.inn} {N}\r\n");
}

TEST_F(WalkTest, TheMenuOffersOnlyScriptsThatAreLoaded) {
  WorkIn("", "");
  scriptFiles.ResizeBuffers(5);
  buffers.BufferFile[5] = "/data/mill.set";
  buffers.BufferFlags[5] = buffer::Script;
  script.DefiningBuffer = 0;
  Run("#RECORD;n");
  memory.face.Will({"OK", {{1, "mill"}}, {{5, 1}}, {}});
  menus.MenuRoutine("AUTOWALK//FI");
  EXPECT_EQ(buffers.BufferText[5], "#alias {.mill} {N}\r\n") << "the first script of the list";
}

TEST_F(WalkTest, TheMenuFinishesNoRecordingWithoutAStep) {
  Run("#RECORD");
  Effects();
  menus.MenuRoutine("AUTOWALK//FI");
  EXPECT_EQ(Effects(), (Lines{"beep", "speech 1 Nothing is recorded yet"}));
  EXPECT_EQ(State(), 2);
  Run("look");
  memory.face.Will({"OK", {{1, "x"}}, {}, {{2, 1}}});
  menus.MenuRoutine("AUTOWALK//FI");
  EXPECT_EQ(State(), 2) << "no step of it is a direction";
  EXPECT_EQ(Walk(".x"), "(none)");
  EXPECT_NE(ErrorLog().find("Wrong number of parameters"), std::string::npos) << ErrorLog();
}

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

TEST_F(WalkTest, ARecordingThatWasPausedTakesNoSteps) {
  Run("#RECORD;n;#PAUSE;look;#UNPAUSE;e");
  EXPECT_EQ(Buffer(), "n;e;");
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
