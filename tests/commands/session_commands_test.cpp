// SPDX-License-Identifier: GPL-3.0-or-later
#include "session_commands_fixture.h"

namespace corvid::test {

TEST_F(SessionCommandsTest, ConnectOpensTheSessionAndLoadsItsScripts) {
  PutCharacter("bob");
  PutFile("Avalon/bob.set", "#Char bob\r\n");
  EXPECT_EQ(Run("#CONNECT bob"), "");
  EXPECT_EQ(script.CurrentSocket, 1);
  EXPECT_EQ(LastChannel, 1);
  EXPECT_TRUE(memory.sockets.Connected(1));
  EXPECT_EQ(memory.sockets.Host(1), "bob.example");
  EXPECT_EQ(sessions.ScriptsLoaded[1], 1);
  EXPECT_TRUE(memory.files.FileExists("/data/Avalon/bob-Char.set"));
}

TEST_F(SessionCommandsTest, ConnectToACharacterThatIsConnectedBringsItForward) {
  PutCharacter("bob");
  Run("#CONNECT BOB");
  script.CurrentSocket = 0;
  Effects();
  EXPECT_EQ(Run("#CONNECT bob"), "");
  EXPECT_EQ(Of("box"), Lines{});
  EXPECT_EQ(script.CurrentSocket, 1);
  EXPECT_EQ(sessions.SessionHigh, 1);
}

TEST_F(SessionCommandsTest, ConnectWithoutACharacterSaysSo) {
  EXPECT_EQ(Run("#CONNECT"), "No current character -- reconnect aborted.");
  EXPECT_EQ(Run("#CONNECT zork"), "Character reference not found in list");
  EXPECT_EQ(Effects(), (Lines{"speech 1 error", "beep", "speech 1 error", "beep"}));
}

TEST_F(SessionCommandsTest, ReconnectKeepsTheSession) {
  PutCharacter("bob");
  Run("#CONNECT bob");
  EXPECT_EQ(Run("#CONNECT"), "BOB already connected.");
  memory.sockets.CloseByPeer(1);
  AddAlias("mine", "look", script.SocketOwner[1]);
  EXPECT_EQ(Run("#CONNECT"), "");
  EXPECT_TRUE(memory.sockets.Connected(1));
  EXPECT_NE(symbols.FindAlias("mine", script.SocketOwner[1], true), 0);
}

TEST_F(SessionCommandsTest, ConnectWaitsThreeSecondsAndNoLonger) {
  PutCharacter("bob");
  memory.sockets.ConnectDelay = 5000;
  const std::int64_t start = memory.clock.MonotonicMilliseconds();
  EXPECT_EQ(Run("#CONNECT bob"), "");
  EXPECT_EQ(memory.clock.MonotonicMilliseconds() - start, 3000);
  EXPECT_FALSE(memory.sockets.Connected(1));
  EXPECT_EQ(sessions.ScriptsLoaded[1], 0);
  memory.loop.Pass(2500);
  EXPECT_TRUE(memory.sockets.Connected(1));
  EXPECT_EQ(sessions.ScriptsLoaded[1], 1);
}

TEST_F(SessionCommandsTest, ConnectGivesUpWaitingForAServerThatRefuses) {
  PutCharacter("bob");
  memory.sockets.OnConnectAnswer = MemorySockets::Answer::Refuse;
  const std::int64_t start = memory.clock.MonotonicMilliseconds();
  EXPECT_EQ(Run("#CONNECT bob"), "");
  EXPECT_LT(memory.clock.MonotonicMilliseconds() - start, 3000);
  EXPECT_EQ(Of("box"), (Lines{"Corvid|Unable to connect to bob.example"}));
}

TEST_F(SessionCommandsTest, AYesToTheQuestionConnectsAndSends) {
  PutCharacter("bob");
  Run("#CONNECT bob");
  memory.sockets.CloseByPeer(1);
  memory.sockets.TakeWritten(1);
  prompter.Answers = {box::ResultYes};
  EXPECT_EQ(Run("look"), "");
  EXPECT_TRUE(memory.sockets.Connected(1));
  EXPECT_EQ(memory.sockets.TakeWritten(1), "look\r\n");
}

TEST_F(SessionCommandsTest, AYesThatCannotConnectEndsTheLine) {
  MakeSession(0, "bob", false);
  sessions.CharacterRef[1] = "renamed";
  prompter.Answers = {box::ResultYes};
  EXPECT_EQ(Run("look;north"), "Character reference not found in list");
  EXPECT_EQ(memory.sockets.TakeWritten(0), "");
  EXPECT_EQ(Of("box"), (Lines{"Connect|Would you like to connect bob?"}));
  EXPECT_EQ(ErrorLog().find("traced back"), std::string::npos) << "it leaves at once";
}

// What the scripts of the player hear of a connection, in their order.
TEST_F(SessionCommandsTest, ConnectTellsTheScripts) {
  MakeSession(0, "anna", true);
  PutCharacter("bob");
  sessions.CharFlags[2] = charflag::AutoLogin;
  for (const char* name : {"OnConnect", "login", "SessionOff", "SessionOn"}) AddAlias(name, "say " + std::string(name));
  EXPECT_EQ(Run("#CONNECT bob"), "");
  EXPECT_EQ(memory.sockets.TakeWritten(1), "say OnConnect\r\nsay login\r\nsay SessionOn\r\n");
  EXPECT_EQ(memory.sockets.TakeWritten(0), "say SessionOff\r\n");
  memory.sockets.CloseByPeer(1);
  sessions.CharFlags[2] = 0;
  EXPECT_EQ(Run("#CONNECT"), "");
  EXPECT_EQ(memory.sockets.TakeWritten(1), "say OnConnect\r\n") << "no change of session, no login";
}

TEST_F(SessionCommandsTest, ConnectSpeaksTheReferenceAndTakesTheRestOfTheLineAlong) {
  PutCharacter("bob");
  EXPECT_EQ(Run("#CONNECT BOB;look"), "");
  EXPECT_EQ(memory.sockets.TakeWritten(1), "look\r\n");
  const Lines heard = Of("speech");
  EXPECT_NE(std::find(heard.begin(), heard.end(), "5 bob"), heard.end());
}

TEST_F(SessionCommandsTest, NothingHappensInCheckMode) {
  MakeSession(0, "anna", true);
  PutFile("a.set", "#CONFIGURE Explicit on\r\n");
  AddVariable("x", "1");
  AddVariable("x", "2");
  for (const char* line : {"#CONNECT zork", "#CHARACTER zork", "#OFFLINE zork bad", "#MUD a b c d e f", "#RELOAD zork",
                           "#LOAD none.set", "#LOAD a.set bad", "#UNLOAD none.set", "#SAVE bad", "#RESET bad",
                           "#RESET all", "#QUIT", "#EDIT none.set", "#KILLALL", "#KILLALL anna"})
    EXPECT_EQ(Run(line, option::CheckOnly), "") << line;
  EXPECT_EQ(Effects(), Lines{});
  EXPECT_EQ(sessions.CharacterCount, 1);
  EXPECT_EQ(Variable("x"), "2");
  EXPECT_TRUE(memory.sockets.Connected(0));
  EXPECT_EQ(Run("#QUIT now", option::CheckOnly), "Wrong number of parameters");
}

TEST_F(SessionCommandsTest, CharacterSwitches) {
  MakeSession(0, "anna", true);
  MakeSession(1, "bob", false);
  EXPECT_EQ(Run("#CHARACTER bo"), "");
  EXPECT_EQ(script.CurrentSocket, 1);
  EXPECT_EQ(LastChannel, 1);
  EXPECT_EQ(Run("#CHARACTER"), "");
  EXPECT_EQ(script.CurrentSocket, 0);
  EXPECT_EQ(Run("#CHARACTER zork"), "Character zork not found");
  EXPECT_EQ(LastChannel, 0);
}

TEST_F(SessionCommandsTest, TheRestOfTheLineRunsInTheSessionThatWasChosen) {
  MakeSession(0, "anna", true);
  MakeSession(1, "bob", true);
  EXPECT_EQ(Run("#CHARACTER bob;look"), "");
  EXPECT_EQ(memory.sockets.TakeWritten(0), "");
  EXPECT_EQ(memory.sockets.TakeWritten(1), "look\r\n");
}

TEST_F(SessionCommandsTest, OfflineLoadsWithoutAConnection) {
  PutCharacter("bob");
  EXPECT_EQ(Run("#OFFLINE bob"), "");
  EXPECT_FALSE(memory.sockets.Connected(LastChannel));
  EXPECT_EQ(sessions.SessionRef[LastChannel], "bob");
  EXPECT_TRUE(memory.files.FileExists("/data/Avalon/bob-Char.set"));
}

TEST_F(SessionCommandsTest, OfflineNoLoadReadsNoFile) {
  PutCharacter("bob");
  EXPECT_EQ(Run("#OFFLINE bob noload"), "");
  EXPECT_EQ(sessions.SessionRef[LastChannel], "bob");
  EXPECT_FALSE(memory.files.FileExists("/data/Avalon/bob-Char.set"));
}

TEST_F(SessionCommandsTest, OfflineRefusesWhatItCannotDo) {
  PutCharacter("bob");
  EXPECT_EQ(Run("#OFFLINE bob nosuch"), "Invalid parameter after char-reference.");
  EXPECT_EQ(Run("#OFFLINE zork"), "Character reference not found in list");
  Run("#CONNECT bob");
  EXPECT_EQ(Run("#OFFLINE bob"), "You must disconnect character before you can work offline with it");
}

TEST_F(SessionCommandsTest, MudAddsARow) {
  EXPECT_EQ(Run("#MUD bob Avalon avalon.example 4000 Bob {my secret}"), "");
  ASSERT_EQ(sessions.CharacterCount, 1);
  EXPECT_EQ(sessions.CharacterRef[1], "bob");
  EXPECT_EQ(sessions.MudName[1], "Avalon");
  EXPECT_EQ(sessions.HostName[1], "avalon.example");
  EXPECT_EQ(sessions.Port[1], "4000");
  EXPECT_EQ(sessions.CharacterName[1], "Bob");
  EXPECT_EQ(sessions.Password[1], "my secret");
}

TEST_F(SessionCommandsTest, MudReplacesTheFieldsOfAKnownReference) {
  PutCharacter("bob");
  sessions.Notes[1] = "old";
  sessions.CharFlags[1] = 3;
  EXPECT_EQ(Run("#MUD BOB M h 1 C p"), "");
  ASSERT_EQ(sessions.CharacterCount, 1);
  EXPECT_EQ(sessions.HostName[1], "h");
  EXPECT_EQ(sessions.Notes[1], "old");
  EXPECT_EQ(sessions.CharFlags[1], 3);
}

TEST_F(SessionCommandsTest, AnAbortOnTheWayEndsTheLine) {
  MakeSession(0, "anna", true);
  MakeSession(1, "bob", true);
  AddAlias("mine", "x", script.SocketOwner[1]);
  EXPECT_EQ(Run("#CHARACTER bob;look", option::AbortAll), "");
  EXPECT_EQ(script.CurrentSocket, 1);
  EXPECT_EQ(Run("#RELOAD bob;look", option::AbortAll), "");
  EXPECT_EQ(LastOptions, option::AbortAll) << "for the levels above";
  EXPECT_EQ(Run("#RELOAD bob;look", option::AbortBlock), "");
  EXPECT_EQ(LastOptions, 0) << "for this level alone";
  EXPECT_NE(symbols.FindAlias("mine", script.SocketOwner[1], true), 0) << "nothing was reloaded";
  EXPECT_EQ(memory.sockets.TakeWritten(0) + memory.sockets.TakeWritten(1), "");
}

TEST_F(SessionCommandsTest, ResetGivesVariablesTheirDefaults) {
  MakeSession(0, "bob", true);
  const OwnerId owner = script.SocketOwner[0];
  EXPECT_EQ(Run("#RESET bogus"), "");
  AddVariable("mine", "1", owner);
  AddVariable("all", "1", 0);
  AddVariable("mine", "2", owner);
  AddVariable("all", "2", 0);
  EXPECT_EQ(Run("#RESET bogus"), "Reset's parameter can only be blank or \"All\"");
  EXPECT_EQ(Run("#RESET"), "");
  EXPECT_EQ(Variable("mine", owner), "1");
  EXPECT_EQ(Variable("all"), "2");
  EXPECT_EQ(Run("#RESET all"), "");
  EXPECT_EQ(Variable("all"), "1");
}

TEST_F(SessionCommandsTest, QuitAsks) {
  EXPECT_EQ(Run("#QUIT"), "");
  EXPECT_EQ(Effects(), (Lines{"quit asked"}));
}

TEST_F(SessionCommandsTest, KillAllEndsEverySession) {
  MakeSession(0, "anna", true);
  MakeSession(1, "bob", true);
  logs.OpenLog(1);
  Run("look");
  AddAlias("a", "b");
  AddVariable("x", "1");
  std::string problem;
  symbols.Addmacro(65, 0, "x", 0, "", 0, "x", problem);
  symbols.CheckAndAddClass("war", 0);
  script.TriggerCount = script.AbbreviationCount = script.TabWordCount = 3;
  Effects();
  EXPECT_EQ(Run("#KILLALL"), "");
  EXPECT_EQ(Effects(), (Lines{"disconnect 0", "disconnect 1", "screen configs"}));
  EXPECT_EQ(sessions.SessionRef[0] + sessions.SessionRef[1], "");
  EXPECT_EQ(sessions.OutputWindow(0).Text(), "");
  EXPECT_EQ(sessions.LogOpen[1], 0);
  EXPECT_EQ(script.AliasCount + script.VariableCount + script.MacroCount + script.ClassCount, 0);
  EXPECT_EQ(script.TriggerCount + script.AbbreviationCount + script.TabWordCount, 0);
}

TEST_F(SessionCommandsTest, KillAllTellsThatNothingIsConnectedAnyMore) {
  MakeSession(0, "anna", true);
  MakeSession(1, "bob", false);
  script.SystemValues[sysvar::CONNECTED] = "1";
  memory.effects.Clear();
  Run("#KILLALL");
  EXPECT_EQ(script.SystemValues[sysvar::CONNECTED], "0");
  EXPECT_EQ(memory.effects.Of("session"), (Lines{"0 closed"}));
}

TEST_F(SessionCommandsTest, NoPartOfTheWordKillAllWillDo) {
  MakeSession(0, "anna", true);
  EXPECT_EQ(Run("#KILLAL"), "Bad command #KILLAL");
  EXPECT_TRUE(memory.sockets.Connected(0));
}

TEST_F(SessionCommandsTest, KillAllOfOneCharacterForgetsItsDefinitions) {
  MakeSession(0, "anna", true);
  MakeSession(1, "bob", true);
  AddAlias("hers", "x", script.SocketOwner[0]);
  AddAlias("his", "x", script.SocketOwner[1]);
  EXPECT_EQ(Run("#KILLALL zork"), "");
  EXPECT_EQ(script.AliasCount, 2);
  EXPECT_EQ(Run("#KILLALL BOB"), "");
  EXPECT_EQ(script.AliasCount, 1);
  EXPECT_NE(symbols.FindAlias("hers", script.SocketOwner[0], true), 0);
}

}  // namespace corvid::test
