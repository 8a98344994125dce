// SPDX-License-Identifier: GPL-3.0-or-later
// RELOAD, LOAD, UNLOAD, EDIT and SAVE: the scripts of a session and their files.
#include "session_commands_fixture.h"

namespace corvid::test {

TEST_F(SessionCommandsTest, ReloadReadsTheCharactersFilesAgain) {
  PutCharacter("bob");
  Run("#OFFLINE bob");
  const OwnerId owner = script.SocketOwner[LastChannel];
  AddAlias("gone", "x", owner);
  AddAlias("stays", "x", 0);
  EXPECT_EQ(Run("#RELOAD"), "");
  EXPECT_EQ(symbols.FindAlias("gone", owner, true), 0);
  EXPECT_NE(symbols.FindAlias("stays", owner, true), 0);
  EXPECT_EQ(Run("#RELOAD zork"), "Character zork not found");
  AddAlias("gone", "x", owner);
  EXPECT_EQ(Run("#RELOAD bob"), "");
  EXPECT_EQ(symbols.FindAlias("gone", owner, true), 0);
}

TEST_F(SessionCommandsTest, ReloadWithoutACharacterKeepsWhatIsForEverybody) {
  AddAlias("stays", "x", 0);
  EXPECT_EQ(Run("#RELOAD"), "");
  EXPECT_NE(symbols.FindAlias("stays", 0, true), 0);
}

TEST_F(SessionCommandsTest, LoadRunsAFile) {
  PutFile("a.set", "#CONFIGURE Explicit on\r\n");
  EXPECT_EQ(Run("#LOAD a.set"), "");
  EXPECT_TRUE(options.Explicit);
  EXPECT_NE(scriptFiles.GetBufferNumber("/data/a.set"), 0);
}

TEST_F(SessionCommandsTest, LoadLooksInTheFolderOfTheGame) {
  MakeSession(0, "bob", true);
  sessions.MudFolder[0] = "/data/Avalon/";
  PutFile("Avalon/b.set", "#CONFIGURE Explicit on\r\n");
  EXPECT_EQ(Run("#LOAD B.SET"), "");
  EXPECT_TRUE(options.Explicit);
  EXPECT_EQ(Run("#LOAD none.set"), "Error finding file /data/none.set or /data/Avalon/none.set");
}

TEST_F(SessionCommandsTest, LoadTakesPathsWithBothSeparators) {
  PutFile("sub/c.set", "#CONFIGURE Explicit on\r\n");
  EXPECT_EQ(Run("#LOAD sub\\c.set"), "");
  EXPECT_TRUE(options.Explicit);
  EXPECT_EQ(Run("#LOAD /data/sub/c.set"), "");
  EXPECT_EQ(Run("#LOAD /none/c.set"), "Error finding file /none/c.set");
  EXPECT_EQ(Run("#LOAD none.set"), "Error finding file /data/none.set");
}

TEST_F(SessionCommandsTest, LoadWithNoExecuteOnlyChecks) {
  PutFile("a.set", "#CONFIGURE Explicit on\r\n");
  EXPECT_EQ(Run("#LOAD a.set NoExecute"), "");
  EXPECT_FALSE(options.Explicit);
  EXPECT_NE(scriptFiles.GetBufferNumber("/data/a.set"), 0);
}

TEST_F(SessionCommandsTest, LoadRemovesWhatTheFileDefinedUnlessToldNot) {
  PutFile("a.set", "#CONFIGURE Explicit on\r\n");
  Run("#LOAD a.set");
  const int16 number = scriptFiles.GetBufferNumber("/data/a.set");
  AddAlias("mine", "x", 0, number);
  EXPECT_EQ(Run("#LOAD a.set noremove"), "");
  EXPECT_NE(symbols.FindAlias("mine", 0, true), 0);
  EXPECT_EQ(Run("#LOAD a.set"), "");
  EXPECT_EQ(symbols.FindAlias("mine", 0, true), 0);
}

TEST_F(SessionCommandsTest, LoadRefusesOtherKeywords) {
  PutFile("a.set", "#CONFIGURE Explicit on\r\n");
  EXPECT_EQ(Run("#LOAD a.set NoExecute|fast"), "Third parameter must be NoExecute or NoRemove if included");
  EXPECT_FALSE(options.Explicit);
}

TEST_F(SessionCommandsTest, LoadKeepsTheBufferThatDefinitionsBelongTo) {
  PutFile("a.set", "#CONFIGURE Explicit on\r\n");
  script.DefiningBuffer = 7;
  Run("#LOAD a.set");
  EXPECT_EQ(script.DefiningBuffer, 7);
}

TEST_F(SessionCommandsTest, AFailedCheckKeepsItsTextWithoutAReport) {
  EXPECT_EQ(Run("#LOAD none.set NoExecute"), "Error finding file /data/none.set");
  EXPECT_EQ(Effects(), Lines{});
}

TEST_F(SessionCommandsTest, UnloadForgetsAFileAndItsDefinitions) {
  PutFile("a.set", "#CONFIGURE Explicit on\r\n");
  Run("#LOAD a.set");
  AddAlias("mine", "x", 0, scriptFiles.GetBufferNumber("/data/a.set"));
  EXPECT_EQ(Run("#UNLOAD a.set"), "");
  EXPECT_EQ(scriptFiles.GetBufferNumber("/data/a.set"), 0);
  EXPECT_EQ(symbols.FindAlias("mine", 0, true), 0);
  EXPECT_EQ(Run("#UNLOAD none.set"), "Error finding file /data/none.set");
}

TEST_F(SessionCommandsTest, EditStartsTheEditor) {
  PutFile("a.set", "");
  EXPECT_EQ(Run("#EDIT a.set"), "");
  EXPECT_EQ(Effects(), (Lines{"program Notepad.exe |/data/a.set"}));
  EXPECT_EQ(Run("#EDIT none.set"), "Error finding file /data/none.set");
}

TEST_F(SessionCommandsTest, SaveWritesTheChangedScripts) {
  PutFile("a.set", "#CONFIGURE Explicit on\r\n");
  Run("#LOAD a.set");
  const int16 number = scriptFiles.GetBufferNumber("/data/a.set");
  scriptFiles.SetBufferText(number, "#CONFIGURE Explicit off\r\n");
  EXPECT_EQ(Run("#SAVE"), "");
  EXPECT_EQ(memory.files.ReadWhole("/data/a.set"), "#CONFIGURE Explicit off\r\n");
}

TEST_F(SessionCommandsTest, SaveLeavesUnchangedScriptsAloneAndTakesWhatIsBeingEdited) {
  for (const char* name : {"a.set", "b.set", "c.set"}) {
    PutFile(name, "#CONFIGURE Explicit on\r\n");
    Run("#LOAD " + std::string(name));
  }
  scriptFiles.SetBufferText(4, "#CONFIGURE Explicit off\r\n");
  scriptFiles.MoveBuffers(6);
  buffers.EntryBox.SetText("#BELL\r\n");
  memory.files.Put("/data/b.set", "changed outside");
  EXPECT_EQ(Run("#SAVE"), "");
  EXPECT_EQ(memory.files.ReadWhole("/data/a.set"), "#CONFIGURE Explicit off\r\n");
  EXPECT_EQ(memory.files.ReadWhole("/data/b.set"), "changed outside");
  EXPECT_EQ(memory.files.ReadWhole("/data/c.set"), "#BELL\r\n");
}

TEST_F(SessionCommandsTest, SaveHasThreeWordsThatDoNothing) {
  for (const char* word : {"variables", "Character", "FULL", "character x.txt"})
    EXPECT_EQ(Run(std::string("#SAVE ") + word), "") << word;
  EXPECT_EQ(Run("#SAVE variables x.txt"), "Filename not allowed with the \"Variables\" parameter.");
  EXPECT_EQ(Run("#SAVE all"), "Save's parameter can only be Variables, Character or Full");
}

}  // namespace corvid::test
