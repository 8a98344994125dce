// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/command_table.h"
#include "commands/fixture.h"
#include "commands/handlers.h"

namespace corvid::test {

class DispatcherTest : public CommandTest {};

namespace {

std::string LineOf(const CommandRow& row, int count) {
  std::string text = "#" + std::string(row.Keyword);
  for (int i = 0; i < count; ++i) text += " x";
  return text;
}

}  // namespace

TEST_F(DispatcherTest, EveryCommandRefusesTooFewAndTooManyParameters) {
  for (const CommandRow& row : CommandTable::Rows()) {
    if (row.Keyword.empty()) continue;
    // In check mode nothing is carried out, but the count is looked at all the same.
    if (row.Min > 0) {
      EXPECT_EQ(Run(LineOf(row, row.Min - 1), option::CheckOnly), "Wrong number of parameters") << row.Keyword;
    }
    if (row.Max < AnyCount) {
      EXPECT_EQ(Run(LineOf(row, row.Max + 1), option::CheckOnly), "Wrong number of parameters") << row.Keyword;
      EXPECT_EQ(Run(LineOf(row, row.Max + 1)), "Wrong number of parameters") << row.Keyword;
    }
    if (row.Handler == handler::SysKey) continue;  // it looks closer, and has tests
    EXPECT_EQ(Run(LineOf(row, row.Min), option::CheckOnly), "") << row.Keyword;
  }
}

TEST_F(DispatcherTest, WhatIsNoCommandIsABadCommand) {
  for (const char* line : {"#", "#G", "#?BORT", "#H", "#XYZ", "#*", "#-5", "#G5", "#5x", "#\xC3\x84"}) {
    EXPECT_EQ(Run(line), std::string("Bad command ") + line);
    EXPECT_EQ(Effects(), (Lines{"speech 1 error", "beep"})) << line;
  }
}

TEST_F(DispatcherTest, ABadPatternIsAParsingError) {
  EXPECT_TRUE(Run("#A[B").starts_with("Bad parsing error - "));
  EXPECT_EQ(Effects(), (Lines{"speech 1 error", "beep"}));
}

TEST_F(DispatcherTest, TooManyPartsAreAParsingError) {
  std::string line = "#ABORT";
  for (int i = 0; i < 1001; ++i) line += " x";
  EXPECT_TRUE(Run(line).starts_with("Bad parsing error - "));
  EXPECT_EQ(Run("#QUIT"), "");
}

TEST_F(DispatcherTest, TheErrorNamesThePartOfTheLine) {
  Run("#xyz");
  EXPECT_EQ(ErrorLog(), "\r\nBad command #xyz in command: #xyz");
  ClearErrorLog();
  Run("#save variables;#xyz 1");
  EXPECT_EQ(ErrorLog(), "\r\nBad command #xyz in command: #xyz 1 - part of command #save variables;#xyz 1");
}

TEST_F(DispatcherTest, AFailureEndsTheLine) {
  EXPECT_EQ(Run("#xyz;#quit"), "Bad command #xyz");
  EXPECT_EQ(Effects(), (Lines{"speech 1 error", "beep"}));
}

TEST_F(DispatcherTest, AParserErrorIsReportedOnce) {
  EXPECT_EQ(Run("#save }"), "Unbalance braces");
  EXPECT_EQ(Effects(), (Lines{"speech 1 error", "beep"}));
}

TEST_F(DispatcherTest, AnInteractiveErrorIsABox) {
  Box("#xyz");
  EXPECT_EQ(Effects(), (Lines{"box Error! |Bad command #xyz in command: #xyz"}));
}

TEST_F(DispatcherTest, TheCurrentSessionIsPutInForItsMark) {
  MakeSession(1, "bob", true);
  script.CurrentSocket = 1;
  Run("look");
  EXPECT_EQ(LastChannel, 1);
  EXPECT_EQ(memory.sockets.TakeWritten(1), "look\r\n");
}

TEST_F(DispatcherTest, TheThirteenthLevelIsRefused) {
  MakeSession(0, "bob", true);
  for (int i = 1; i < 12; ++i) AddAlias("a" + std::to_string(i), "a" + std::to_string(i + 1));
  AddAlias("a12", "look");
  EXPECT_EQ(Run("a2"), "");  // the typed line and eleven bodies
  EXPECT_EQ(memory.sockets.TakeWritten(0), "look\r\n");
  EXPECT_EQ(script.CommandDepth, 1);
  EXPECT_EQ(Run("a1"), "recursive check - probable infinite loop detected");
  EXPECT_EQ(memory.sockets.TakeWritten(0), "");
}

TEST_F(DispatcherTest, AnAliasThatCallsItselfEndsWithATrail) {
  AddAlias("loop", "loop");
  EXPECT_EQ(Run("loop"), "recursive check - probable infinite loop detected");
  const std::string log = ErrorLog();
  EXPECT_TRUE(log.starts_with("\r\nrecursive check - probable infinite loop detected in command: loop"));
  const std::string trail = "traced back to line: loop";
  std::size_t trails = 0;
  for (std::size_t at = log.find(trail); at != std::string::npos; at = log.find(trail, at + 1)) ++trails;
  EXPECT_EQ(trails, 12u);
}

TEST_F(DispatcherTest, AnErrorInAnAliasNamesItsFileAndEachLevel) {
  scriptFiles.ResizeBuffers(4);
  buffers.BufferFile[4] = "/data/fight.set";
  AddAlias("outer", "inner 1", 0, 4);
  AddAlias("inner", "#xyz %1", 0, 4);
  EXPECT_EQ(Run("outer"), "Bad command #xyz");
  EXPECT_EQ(ErrorLog(),
            "\r\nBad command #xyz in command: #xyz %1"
            "-- Error found in file /data/fight.set\r\n==============="
            "\r\ntraced back to line: inner 1"
            "-- Error found in file /data/fight.set\r\n==============="
            "\r\ntraced back to line: outer");
  EXPECT_EQ(Effects(), (Lines{"speech 1 error", "beep"}));
}

TEST_F(DispatcherTest, AnInteractiveLineLeavesNoTrail) {
  AddAlias("outer", "#xyz");
  Box("outer");
  EXPECT_EQ(ErrorLog().find("traced back"), std::string::npos);
}

TEST_F(DispatcherTest, CheckModeCarriesNothingOut) {
  MakeSession(0, "bob", true);
  AddAlias("hi", "#quit");
  for (const char* line : {"look", "hi", "#quit", ">raw", "zork:look", "", "#killall", "#mud a b c d e f", "#save"}) {
    EXPECT_EQ(Run(line, option::CheckOnly), "") << line;
    EXPECT_EQ(Effects(), Lines{}) << line;
  }
  EXPECT_EQ(sessions.CharacterCount, 1);
  EXPECT_EQ(Run("#xyz", option::CheckOnly), "Bad command #xyz");
}

TEST_F(DispatcherTest, AnErrorTextFromOutsideStopsTheLineAfterItsParse) {
  std::string problem = "ErrorDescription";
  int16 channel = CurrentSession;
  int16 flags = option::CheckOnly;
  Parameters rvar;
  dispatcher.ProcessCommand("#xyz", flags, problem, rvar, channel);
  EXPECT_EQ(problem, "ErrorDescription");
  EXPECT_EQ(Effects(), Lines{});
}

TEST_F(DispatcherTest, AVerbatimLineIsNeitherExpandedNorCut) {
  MakeSession(0, "bob", true);
  AddAlias("a", "b");
  EXPECT_EQ(Run(">say @x;%1 {a} "), "");
  EXPECT_EQ(memory.sockets.TakeWritten(0), "say @x;%1 {a} \r\n");
  keyboard.EchoPrefix = true;
  Effects();
  Run(">a");
  EXPECT_EQ(Effects(), (Lines{"beep", "display 0 a\r\n", "wire 0 a\r\n"}));
}

TEST_F(DispatcherTest, TheSoundOfVerbatimTypingIsPlayedWhereThereIsOne) {
  MakeSession(0, "bob", true);
  memory.PutSound("/data/Sounds/ding.wav", 100);
  Run(">a");
  EXPECT_EQ(Of("sound"), Lines{}) << "a single line by its character";
  keyboard.EchoPrefix = true;
  Run(">a");
  const Lines heard = Of("sound");
  ASSERT_EQ(heard.size(), 1u);
  EXPECT_NE(heard[0].find("ding.wav"), std::string::npos);
}

TEST_F(DispatcherTest, AVerbatimLineNeedsTheCharacterInFront) {
  MakeSession(0, "bob", true);
  Run(" >a;b");
  EXPECT_EQ(memory.sockets.TakeWritten(0), ">a\r\nb\r\n");
}

TEST_F(DispatcherTest, AnAssignmentMakesAVariable) {
  EXPECT_EQ(Run("@x = 5"), "");
  EXPECT_EQ(Variable("x"), "5");
  EXPECT_EQ(Run("@x = {a b}"), "");
  EXPECT_EQ(Variable("x"), "a b");
}

TEST_F(DispatcherTest, AnAssignmentWithAnotherCommandCharacterGoesToTheGame) {
  MakeSession(0, "bob", true);
  options.CommandChar = '!';
  Run("@x = 5");
  EXPECT_EQ(memory.sockets.TakeWritten(0), "#VAR x 5\r\n");
}

TEST_F(DispatcherTest, SeveralCommandsOfALineRunInOneLevel) {
  MakeSession(0, "bob", true);
  std::string line = "look";
  for (int i = 0; i < 30; ++i) line += ";look";
  EXPECT_EQ(Run(line), "");
  EXPECT_EQ(script.CommandDepth, 1);
}

TEST_F(DispatcherTest, AnAliasMayRemoveItselfWhileItRuns) {
  AddAlias("once", "#killall;#reset");
  EXPECT_EQ(Run("once"), "");
  EXPECT_EQ(script.AliasCount, 0);
}

TEST_F(DispatcherTest, EraseRefusesAParameterWithoutWords) {
  EXPECT_EQ(Run("#ERASE x"), "");
  EXPECT_EQ(ErrorLog(), "\r\n in command: #ERASE x");
  EXPECT_EQ(Effects(), (Lines{"speech 1 error", "beep"}));
}

TEST_F(DispatcherTest, TheNumberFormComesLast) {
  MakeSession(0, "bob", true);
  EXPECT_EQ(Run("#3 {say %I}"), "");
  EXPECT_EQ(memory.sockets.TakeWritten(0), "say 1\r\nsay 2\r\nsay 3\r\n");
  EXPECT_EQ(Run("#3 say hi"), "Wrong number of parameters");
  EXPECT_EQ(Run("#3", option::CheckOnly), "");
}

}  // namespace corvid::test
