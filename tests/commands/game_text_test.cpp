// SPDX-License-Identifier: GPL-3.0-or-later
#include "game_text_fixture.h"

namespace corvid::test {

TEST_F(GameTextTest, TextIsShownAndSent) {
  MakeSession(0, "bob", true);
  EXPECT_EQ(Run("say hello   there"), "");
  EXPECT_EQ(Effects(), (Lines{"display 0 say hello there\r\n", "wire 0 say hello there\r\n"}));
}

TEST_F(GameTextTest, AFaceIsToldWhatIsSentWithoutTheLineEnd) {
  MakeSession(0, "bob", true);
  Run("look");
  EXPECT_EQ(Of("send"), (Lines{"0 look"}));
}

TEST_F(GameTextTest, AnEmptyLineIsSentButNotShown) {
  MakeSession(0, "bob", true);
  Run("");
  EXPECT_EQ(Effects(), (Lines{"wire 0 \r\n"}));
  Run("a;;b");
  EXPECT_EQ(Written(0), "\r\na\r\n\r\nb\r\n");
}

TEST_F(GameTextTest, NothingIsShownWhenTheOptionIsOff) {
  MakeSession(0, "bob", true);
  options.DisplayCommandsInOutput = false;
  Run("look");
  EXPECT_EQ(Effects(), (Lines{"wire 0 look\r\n"}));
}

TEST_F(GameTextTest, TheLineTerminatorIsTheOption) {
  MakeSession(0, "bob", true);
  options.LineTerminator = "\n";
  Run("look");
  EXPECT_EQ(Written(0), "look\n");
}

TEST_F(GameTextTest, TextIsExpandedAndTrimmedOnTheLeft) {
  MakeSession(0, "bob", true);
  AddVariable("x", "5");
  AddVariable("blank", "");
  Run("@blank say @x ~@x");
  EXPECT_EQ(Written(0), "say 5 @x\r\n");
}

TEST_F(GameTextTest, AnExpansionErrorIsReportedAndNothingIsSent) {
  MakeSession(0, "bob", true);
  EXPECT_EQ(Run("say @~{x"), "inappropriate use of braces with variables");
  EXPECT_EQ(Effects(), (Lines{"speech 1 error", "beep"}));
}

TEST_F(GameTextTest, TypedCharactersGoOutAsSingleBytes) {
  MakeSession(0, "bob", true);
  Run("say \xC3\xA9\xE2\x82\xAC");
  EXPECT_EQ(Written(0), "say \xE9\xE2\x82\xAC\r\n");
  sessions.Utf8Seen[0] = 1;
  Run("say \xC3\xA9\xE2\x82\xAC");
  EXPECT_EQ(Written(0), "say \xC3\xA9\xE2\x82\xAC\r\n");
}

TEST_F(GameTextTest, TheSessionPrefixSwitches) {
  ThreeSessions();
  EXPECT_EQ(Run("b:hello"), "");
  EXPECT_EQ(Written(1), "hello\r\n");
  EXPECT_EQ(script.CurrentSocket, 1);
  EXPECT_EQ(LastChannel, 1);
}

TEST_F(GameTextTest, TheDoubledPrefixSendsAndStays) {
  ThreeSessions();
  EXPECT_EQ(Run("BE::hello"), "");
  EXPECT_EQ(Written(2), "hello\r\n");
  EXPECT_EQ(script.CurrentSocket, 0);
}

TEST_F(GameTextTest, TheLastSeparatorCounts) {
  ThreeSessions();
  EXPECT_EQ(Run("say:b:hello"), "Character Reference say:b not found or not connected");
}

TEST_F(GameTextTest, TheStarSendsToAll) {
  ThreeSessions();
  memory.sockets.Disconnect(1);
  Effects();
  EXPECT_EQ(Run("*::hello"), "");
  EXPECT_EQ(Written(0) + Written(2), "hello\r\nhello\r\n");
  EXPECT_EQ(Run("*:hello"), "");
  EXPECT_EQ(Written(0), "hello\r\n");
  EXPECT_EQ(Written(1), "");
  EXPECT_EQ(Written(2), "hello\r\n");
  EXPECT_EQ(Of("box"), Lines{});
  EXPECT_EQ(ErrorLog(), "");
  EXPECT_EQ(script.CurrentSocket, 0);
}

TEST_F(GameTextTest, AnUnknownReferenceIsAnError) {
  ThreeSessions();
  EXPECT_EQ(Run("zork:hello"), "Character Reference zork not found or not connected");
  EXPECT_EQ(Effects(), (Lines{"speech 1 error", "beep"}));
  memory.sockets.Disconnect(1);
  memory.sockets.Disconnect(2);
  EXPECT_EQ(Run("b:hello"), "Character Reference b not found or not connected");
}

TEST_F(GameTextTest, AnotherSwitchTextIsHonoured) {
  ThreeSessions();
  options.SwitchSession = "=>";
  Run("bob=>hello");
  EXPECT_EQ(Written(1), "hello\r\n");
  script.CurrentSocket = 0;
  Run("bert=>=>a:b");
  EXPECT_EQ(Written(2), "a:b\r\n");
}

TEST_F(GameTextTest, WithoutAConnectionAndANameTheTextIsKept) {
  EXPECT_EQ(Run("look"), "");
  EXPECT_EQ(Effects(), (Lines{"display 0 look\r\n", "speech 1 Not connected.", "beep"}));
  EXPECT_EQ(ErrorLog(), "\r\nText entered when not connected:  look");
  ClearErrorLog();
  Run("");
  EXPECT_EQ(Effects(), (Lines{"speech 1 Not connected.", "beep"}));
  EXPECT_EQ(ErrorLog(), "");
}

TEST_F(GameTextTest, TextThatGoesNowhereIsKeptInALogOfBoundedSize) {
  const std::string entry = "\r\nText entered when not connected:  look";
  std::string& log = buffers.BufferText[buffer::ErrorLog];
  log = std::string(30000, 'a');
  buffers.BufferFlags[buffer::ErrorLog] = 0;
  Run("look");
  EXPECT_EQ(log, std::string(30000, 'a') + entry);
  EXPECT_EQ(buffers.BufferCaret[buffer::ErrorLog], 30000);
  EXPECT_EQ(buffers.BufferFlags[buffer::ErrorLog], buffer::News);
  log = std::string(10001, 'a') + std::string(20000, 'b');
  Run("look");
  EXPECT_EQ(log, std::string(20000, 'b') + entry);
  EXPECT_EQ(buffers.BufferCaret[buffer::ErrorLog], 20000);
}

TEST_F(GameTextTest, ACharacterIsAskedWhetherToConnect) {
  MakeSession(0, "bob", false);
  EXPECT_EQ(Run("look"), "");
  EXPECT_EQ(Of("box"), (Lines{"Connect|Would you like to connect bob?"}));
  EXPECT_EQ(prompter.LastFlags, box::YesNo);
  EXPECT_EQ(Written(0), "");
}

TEST_F(GameTextTest, AYesConnectsAndThenSends) {
  MakeSession(1, "bob", false);
  script.CurrentSocket = 1;
  script.CurrentOwner = script.SocketOwner[1];
  prompter.Answers = {box::ResultYes};
  EXPECT_EQ(Run("look"), "");
  EXPECT_EQ(Of("box"), (Lines{"Connect|Would you like to connect bob?"}));
  EXPECT_TRUE(memory.sockets.Connected(1));
  EXPECT_EQ(Written(1), "look\r\n");
}

TEST_F(GameTextTest, TheSessionInFrontIsTheOneThatConnects) {
  MakeSession(1, "bob", false);
  MakeSession(2, "amy", false);
  script.CurrentSocket = 1;
  script.CurrentOwner = script.SocketOwner[1];
  prompter.Answers = {box::ResultYes};
  EXPECT_EQ(Run("#EXECUTE look amy"), "");
  EXPECT_EQ(Of("box"), (Lines{"Connect|Would you like to connect amy?"}));
  EXPECT_TRUE(memory.sockets.Connected(1));
  EXPECT_FALSE(memory.sockets.Connected(2));
}

TEST_F(GameTextTest, AConnectionThatCannotBeMadeEndsTheLine) {
  MakeSession(1, "bob", false);
  script.CurrentSocket = 1;
  sessions.CharacterRef[script.SocketOwner[1]] = "gone";
  prompter.Answers = {box::ResultYes};
  EXPECT_EQ(Run("look;#VAR x 1"), "Character reference not found in list");
  EXPECT_EQ(Variable("x", script.SocketOwner[1]), "(none)");
  EXPECT_EQ(Of("speech"), (Lines{"1 error"})) << "told once";
}

TEST_F(GameTextTest, AVerbatimLineMeetsTheSameQuestions) {
  EXPECT_EQ(Run(">look;x"), "");
  EXPECT_EQ(Effects(), (Lines{"display 0 look;x\r\n", "speech 1 Not connected.", "beep"}));
  EXPECT_EQ(ErrorLog(), "\r\nText entered when not connected:  look;x");
  MakeSession(0, "bob", false);
  Run(">look");
  EXPECT_EQ(Of("box"), (Lines{"Connect|Would you like to connect bob?"}));
}

TEST_F(GameTextTest, TheNoteOfTextThatWentNowhereTrimsTheLog) {
  buffers.BufferText[buffer::ErrorLog] = std::string(30000, 'x');
  Run("look");
  EXPECT_EQ(buffers.BufferCaret[buffer::ErrorLog], 30000) << "at the limit all is kept";
  buffers.BufferText[buffer::ErrorLog] = std::string(30001, 'x');
  buffers.BufferFlags[buffer::ErrorLog] = 0;
  Run("look");
  EXPECT_EQ(ErrorLog(), std::string(20000, 'x') + "\r\nText entered when not connected:  look");
  EXPECT_EQ(buffers.BufferCaret[buffer::ErrorLog], 20000);
  EXPECT_NE(buffers.BufferFlags[buffer::ErrorLog] & 0x800, 0);
}

TEST_F(GameTextTest, SentTextIsLoggedBeforeAnything) {
  MakeSession(0, "bob", true);
  logs.OpenLog(0);
  Run("password secret");
  logs.Flush(0);
  ASSERT_EQ(memory.files.FileNames("/data/logs").size(), 1u);
  const std::string name = memory.files.FileNames("/data/logs").front();
  EXPECT_EQ(memory.files.ReadWhole("/data/logs/" + name), "password secret\r\n");
  sessions.LogEntriesEnabled[0] = 0;
  Run("quiet");
  logs.Flush(0);
  EXPECT_EQ(memory.files.ReadWhole("/data/logs/" + name), "password secret\r\n");
}

TEST_F(GameTextTest, ALogThatFailsGoesOffAndTheLineGoesOn) {
  MakeSession(0, "bob", true);
  logs.OpenLog(0);
  memory.files.Fail = [](const std::string&, const std::string&) { return "disk full"; };
  EXPECT_EQ(Run("look;north"), "");
  EXPECT_FALSE(options.OutputLog);
  EXPECT_EQ(Written(0), "look\r\nnorth\r\n");
  EXPECT_TRUE(ErrorLog().starts_with("\r\nError opening the Output Log "));
  EXPECT_TRUE(ErrorLog().ends_with(" in command: look;north"));
  EXPECT_EQ(Of("speech"), (Lines{"1 error"}));
  for (const auto& [line, shown] : {std::pair{"#OK;look", "look - part of command #OK;look"}, {">look;x", ">look;x"}}) {
    options.OutputLog = true;
    EXPECT_EQ(Run(line), "");
    EXPECT_TRUE(ErrorLog().ends_with(std::string(" in command: ") + shown)) << ErrorLog();
  }
}

TEST_F(GameTextTest, ALineThatTheDiskRefusesLateIsToldAtOnce) {
  MakeSession(0, "bob", true);
  logs.OpenLog(0);
  memory.files.Fail = [](const std::string& operation, const std::string&) {
    return operation == "flush" ? std::string("No space left on device") : std::string();
  };
  EXPECT_EQ(Run("look"), "");
  EXPECT_FALSE(options.OutputLog);
  EXPECT_TRUE(ErrorLog().starts_with("\r\nError opening the Output Log ")) << ErrorLog();
  EXPECT_EQ(Written(0), "look\r\n");
}

TEST_F(GameTextTest, ACommandWaitsBehindASelectionInTheWindow) {
  MakeSession(0, "bob", true);
  sessions.OutputWindow(0).SetText("text");
  sessions.OutputWindow(0).Select(0, 4);
  Run("look");
  EXPECT_EQ(sessions.OutputWindow(0).Text(), "text");
  EXPECT_EQ(sessions.OutputBuffer[0], "look\r\n");
  sessions.OutputWindow(0).SetSelStart(0);
  Run("north");
  EXPECT_EQ(sessions.OutputWindow(0).Text(), "textlook\r\nnorth\r\n");
}

TEST_F(GameTextTest, NoSecondBoxOpensWhileAWriteErrorIsTold) {
  MakeSession(0, "bob", true);
  Run("#ALARM -1 {say again}");
  memory.sockets.FailWrites = true;
  script.SystemValues[sysvar::CONNECTED] = "1";
  prompter.OnBox = [&] { memory.loop.Pass(5000); };
  EXPECT_EQ(Run("look"), "");
  EXPECT_EQ(Of("box").size(), 1U);
  EXPECT_EQ(script.SystemValues[sysvar::CONNECTED], "0");
}

TEST_F(GameTextTest, AConnectionMadeWhileAWriteErrorIsToldStays) {
  MakeSession(0, "bob", true);
  memory.sockets.FailWrites = true;
  prompter.OnBox = [&] { Connect(0); };
  Run("look");
  EXPECT_TRUE(memory.sockets.Connected(0));
}

TEST_F(GameTextTest, AWriteErrorIsToldAndEndsTheConnection) {
  MakeSession(0, "bob", true);
  memory.sockets.FailWrites = true;
  EXPECT_EQ(Run("look"), "");
  EXPECT_EQ(Of("box"), (Lines{"Corvid|An error occurred during the transmission to the Mud.  Error = 32"}));
  EXPECT_FALSE(memory.sockets.Connected(0));
}

TEST_F(GameTextTest, ARecordingTakesWhatIsSent) {
  MakeSession(0, "bob", true);
  sessions.WalkState[0] = 2;
  Run("n;s");
  EXPECT_EQ(sessions.WalkBuffer[0], "n;s;");
  sessions.WalkState[0] = 6;  // paused
  Run("e");
  EXPECT_EQ(sessions.WalkBuffer[0], "n;s;");
  sessions.WalkState[0] = 2;
  sessions.WalkBuffer[0] = std::string(10000, 'n');
  Effects();
  Run("e");
  EXPECT_EQ(Of("speech"), Lines{}) << "not before there are more";
  sessions.WalkBuffer[0] = std::string(10001, 'n');
  Run("e");
  EXPECT_EQ(Of("speech"), (Lines{"1 Record buffer filling"}));
  EXPECT_TRUE(sessions.WalkBuffer[0].ends_with("ne;"));
  options.LineTerminator = "\n";
  Run("w;e");
  EXPECT_EQ(Of("speech"), (Lines{"1 Record buffer filling", "1 Record buffer filling"})) << "at each further line";
  EXPECT_TRUE(sessions.WalkBuffer[0].ends_with("ne;w;e;")) << "without the line's end";
}

TEST_F(GameTextTest, TextCanBePlacedInTheEntryLine) {
  MakeSession(0, "bob", true);
  Run("say hi", option::PlaceInEntry | option::DoNotSend);
  EXPECT_EQ(buffers.EntryBox.Text(), "say hi");
  EXPECT_EQ(buffers.EntryBox.SelStart(), 0);
  EXPECT_EQ(Effects(), Lines{});
  Run("say ho", option::PlaceInEntry);
  EXPECT_EQ(buffers.EntryBox.Text(), "say ho");
  EXPECT_EQ(Effects(), (Lines{"screen enter", "display 0 say ho\r\n", "wire 0 say ho\r\n"}));
}

TEST_F(GameTextTest, TextIsPlacedInTheEntryLineBehindAScriptThatIsShown) {
  MakeSession(0, "bob", true);
  scriptFiles.ResizeBuffers(4);
  buffers.BufferFile[4] = "/data/a.set";
  buffers.BufferFlags[4] = buffer::Script;
  scriptFiles.MoveBuffers(4);
  buffers.EntryBox.SetText("#bell");
  Run("say hi", option::PlaceInEntry | option::DoNotSend);
  EXPECT_EQ(buffers.EntryBox.Text(), "#bell");
  scriptFiles.MoveBuffers(1);
  EXPECT_EQ(buffers.EntryBox.Text(), "say hi");
  EXPECT_EQ(buffers.EntryBox.SelStart(), 0);
}

TEST_F(GameTextTest, AnEmptyReferenceIsTheFirstConnectedSession) {
  ThreeSessions();
  memory.sockets.Disconnect(0);
  Run(":smile");
  EXPECT_EQ(Written(1), "smile\r\n");
}

}  // namespace corvid::test
