// SPDX-License-Identifier: GPL-3.0-or-later
// Walks that are recorded and kept, by commands and by the menu.
#include "walk_fixture.h"

namespace corvid::test {

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
  memory.face.Will({"OK", {{1, "mill"}}, {{5, 1}}, {{2, 1}, {3, 1}}});
  menus.MenuRoutine("AUTOWALK//FI");
  EXPECT_EQ(buffers.BufferText[4], "#alias {hi} {wave}\r\n#alias {.mill} {E}\r\n");
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

TEST_F(WalkTest, ARecordingThatWasPausedTakesNoSteps) {
  Run("#RECORD;n;#PAUSE;look;#UNPAUSE;e");
  EXPECT_EQ(Buffer(), "n;e;");
}

}  // namespace corvid::test
