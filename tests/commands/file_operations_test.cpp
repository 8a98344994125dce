// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/file_operations.h"

#include "commands/fixture.h"

namespace corvid::test {

class FileOperationsTest : public CommandTest {
 protected:
  FileOperationsTest() {
    MakeSession(0, "bob", true);
    sessions.MudFolder[0] = "/data/Avalon/";
    memory.files.CreateFolder("/data/Avalon");
  }
  void Put(const std::string& name, const std::string& bytes) { memory.files.Put("/data/" + name, bytes); }
  // The error text.
  std::string Do(std::string_view OpType, const std::string& name, const std::string& param1 = "",
                 const std::string& param2 = "") {
    std::string problem;
    channel = CurrentSession;
    FileOperations(house).Run(OpType, name, problem, param1, param2, channel);
    return problem;
  }
  std::string Written() { return memory.sockets.TakeWritten(0); }
  int16 channel = 0;
};

TEST_F(FileOperationsTest, SendPassesEachLineUnchanged) {
  Put("a.txt", "hello @x;#QUIT\r\n\r\n~%1 {north\nlast");
  script.CommandDepth = 9;
  script.DefiningBuffer = 4;
  EXPECT_EQ(Do("DA", "a.txt"), "");
  EXPECT_EQ(Written(), "hello @x;#QUIT\r\n\r\n~%1 {north\r\nlast\r\n");
  EXPECT_EQ(script.CommandDepth, 1) << "each line counts from 0";
  EXPECT_EQ(script.DefiningBuffer, 0);
  EXPECT_EQ(channel, 0);
  EXPECT_EQ(Of("quit"), Lines{});
}

TEST_F(FileOperationsTest, SendPutsWordsAroundEachLine) {
  Put("Avalon/song.txt", "la\r\nli\r\n");
  EXPECT_EQ(Do("DA", "SONG.txt", "sing ", " @loud"), "");
  EXPECT_EQ(Written(), "sing la @loud\r\nsing li @loud\r\n");
  options.LineTerminator = "";
  EXPECT_EQ(Do("DA", "song.txt", "", "\r"), "");
  EXPECT_EQ(Written(), "la\rli\r");
}

TEST_F(FileOperationsTest, TheUserDataFolderComesBeforeTheFolderOfTheGame) {
  Put("song.txt", "here\r\n");
  Put("Avalon/song.txt", "there\r\n");
  EXPECT_EQ(Do("DA", "song.txt"), "");
  EXPECT_EQ(Written(), "here\r\n");
}

TEST_F(FileOperationsTest, ANameWithAPathIsTakenAsItIs) {
  memory.files.CreateFolder("/elsewhere");
  memory.files.Put("/elsewhere/song.txt", "away\r\n");
  Put("song.txt", "here\r\n");
  EXPECT_EQ(Do("DA", "/elsewhere/song.txt"), "");
  EXPECT_EQ(Do("DA", "\\elsewhere\\song.txt"), "");
  EXPECT_EQ(Written(), "away\r\naway\r\n");
  EXPECT_EQ(Do("NE", "/elsewhere/fresh.set"), "Error finding file /elsewhere/fresh.set");
  EXPECT_GE(scriptFiles.GetBufferNumber("/elsewhere/fresh.set"), buffer::FirstScript);
}

TEST_F(FileOperationsTest, TheFolderIsThatOfTheSessionThatWasNamed) {
  MakeSession(1, "anna", true);
  sessions.MudFolder[1] = "/data/Brume/";
  memory.files.CreateFolder("/data/Brume");
  Put("Brume/song.txt", "mist\r\n");
  std::string problem;
  int16 session = 1;
  FileOperations(house).Run("DA", "song.txt", problem, "", "", session);
  EXPECT_EQ(problem, "");
  EXPECT_EQ(memory.sockets.TakeWritten(1), "mist\r\n");
  EXPECT_EQ(Do("DA", "song.txt"), "Error finding file /data/song.txt or /data/Avalon/song.txt");
}

TEST_F(FileOperationsTest, NoRemoveKeepsTheFileWhateverIsAsked) {
  Put("a.set", "#GALIAS a one\r\n");
  Do("LO", "a.set");
  EXPECT_EQ(Do("UN", "a.set", "NoRemove"), "");
  EXPECT_EQ(script.AliasCount, 1);
  EXPECT_GE(scriptFiles.GetBufferNumber("/data/a.set"), buffer::FirstScript);
}

TEST_F(FileOperationsTest, SendStopsAtTheFirstError) {
  MakeSession(1, "anna", false);
  script.CurrentSocket = 1;
  sessions.CharacterRef[script.SocketOwner[1]] = "renamed";  // so that the answer Yes leads to an error
  prompter.Answers = {box::ResultYes};
  Put("a.txt", "one\r\ntwo\r\n");
  EXPECT_EQ(Do("DA", "a.txt"), "Character reference not found in list");
  EXPECT_EQ(Of("box"), (Lines{"Connect|Would you like to connect anna?"}));
}

TEST_F(FileOperationsTest, SendEndsWithTheProgram) {
  Put("a.txt", "one\r\ntwo\r\n");
  memory.loop.End(0);
  EXPECT_EQ(Do("DA", "a.txt"), "");
  EXPECT_EQ(Written(), "");
}

TEST_F(FileOperationsTest, AFailureOfTheDiskIsTold) {
  Put("a.txt", "one\r\n");
  memory.files.Fail = [](const std::string& operation, const std::string&) {
    return operation == "read" ? "Input/output error" : "";
  };
  EXPECT_EQ(Do("DA", "a.txt"),
            "General error in file operation using /data/a.txt with error /data/a.txt: Input/output error");
  EXPECT_EQ(Written(), "");
}

TEST_F(FileOperationsTest, WhatIsNotThereIsTold) {
  for (const char* code : {"DA", "ED", "LO", "UN", "NO"}) {
    EXPECT_EQ(Do(code, "none.txt"), "Error finding file /data/none.txt or /data/Avalon/none.txt") << code;
    EXPECT_EQ(Do(code, "\\elsewhere\\none.txt"), "Error finding file \\elsewhere\\none.txt") << code;
    EXPECT_EQ(Do(code, "C:none.txt"), "Error finding file C:none.txt") << code;
  }
  sessions.MudFolder[0].clear();
  EXPECT_EQ(Do("DA", "none.txt"), "Error finding file /data/none.txt");
  EXPECT_EQ(Do("DA", ""), "Error finding file /data/");
  EXPECT_EQ(Do("DA", "Avalon"), "Error finding file /data/Avalon") << "a folder is no file";
}

TEST_F(FileOperationsTest, NewShowsABufferForAFileThatIsNotThereAndTellsThatItIsNot) {
  EXPECT_EQ(Do("NE", "fresh.set"), "Error finding file /data/fresh.set or /data/Avalon/fresh.set");
  const int16 number = scriptFiles.GetBufferNumber("/data/fresh.set");
  ASSERT_GE(number, buffer::FirstScript);
  EXPECT_EQ(buffers.BufferFlags[number], buffer::Script | buffer::News);
  EXPECT_EQ(buffers.BufferText[number], "");
  EXPECT_EQ(buffers.CurrentBuffer, number);
  EXPECT_FALSE(memory.files.FileExists("/data/fresh.set")) << "only saving makes the file";
  EXPECT_TRUE(scriptFiles.SaveBuffer(number));
  EXPECT_TRUE(memory.files.FileExists("/data/fresh.set"));
}

TEST_F(FileOperationsTest, NewLeavesAFileThatIsThereAlone) {
  Put("old.set", "#ALIAS a b\r\n");
  EXPECT_EQ(Do("NE", "old.set"), "");
  EXPECT_EQ(scriptFiles.GetBufferNumber("/data/old.set"), 0);
  EXPECT_EQ(buffers.CurrentBuffer, buffer::EntryLine);
}

TEST_F(FileOperationsTest, NewIsContentWithAFileOfTheGame) {
  Put("Avalon/fresh.set", "");
  EXPECT_EQ(Do("NE", "fresh.set"), "");
  EXPECT_EQ(buffers.CurrentBuffer, scriptFiles.GetBufferNumber("/data/fresh.set"));
}

TEST_F(FileOperationsTest, NewKeepsAChangedBufferOfThatNameWhenThePlayerSaysSo) {
  Do("NE", "fresh.set");
  const int16 number = buffers.CurrentBuffer;
  buffers.EntryBox.SetText("#ALIAS a b\r\n");
  scriptFiles.MoveBuffers(buffer::EntryLine);
  prompter.Answers = {box::ResultCancel};
  Do("NE", "fresh.set");
  EXPECT_EQ(buffers.CurrentBuffer, buffer::EntryLine);
  EXPECT_EQ(buffers.BufferText[number], "#ALIAS a b\r\n");
}

TEST_F(FileOperationsTest, EditStartsTheEditor) {
  Put("a b.set", "");
  options.Editor = "Notepad.exe ";
  EXPECT_EQ(Do("ED", "a b.set"), "");
  EXPECT_EQ(Of("program"), (Lines{"Notepad.exe |/data/a b.set"}));
}

TEST_F(FileOperationsTest, LoadReplacesWhatTheFileDefined) {
  Put("a.set", "#GALIAS a one\r\n#GALIAS b two\r\n");
  EXPECT_EQ(Do("LO", "a.set"), "");
  Put("a.set", "#GALIAS a three\r\n");
  EXPECT_EQ(Do("LO", "A.SET"), "");
  EXPECT_EQ(script.AliasCount, 1);
  EXPECT_EQ(script.AliasValues[1], "three");
  Put("a.set", "#GALIAS c four\r\n");
  EXPECT_EQ(Do("LO", "a.set", "noremove"), "");
  EXPECT_EQ(script.AliasCount, 2);
}

TEST_F(FileOperationsTest, ARefusedCloseEndsLoadAndUnload) {
  Put("a.set", "#GALIAS a one\r\n");
  Do("LO", "a.set");
  const int16 number = scriptFiles.GetBufferNumber("/data/a.set");
  scriptFiles.SetBufferText(number, "#GALIAS mine kept\r\n");
  for (const char* code : {"LO", "UN", "NO"}) {
    prompter.Answers = {box::ResultCancel};
    EXPECT_EQ(Do(code, "a.set"), "") << code;
    EXPECT_EQ(buffers.BufferText[number], "#GALIAS mine kept\r\n") << code;
    EXPECT_EQ(buffers.BufferFile[number], "/data/a.set") << code;
    EXPECT_EQ(script.AliasCount, 1) << code;
  }
}

TEST_F(FileOperationsTest, UnloadForgetsTheFile) {
  Put("a.set", "#GALIAS a one\r\n");
  Do("LO", "a.set");
  const int16 number = scriptFiles.GetBufferNumber("/data/a.set");
  EXPECT_EQ(Do("UN", "a.set"), "");
  EXPECT_EQ(script.AliasCount, 0);
  EXPECT_EQ(buffers.BufferFile[number], "");
  EXPECT_EQ(Do("UN", "a.set"), "") << "a file that is not loaded";
}

TEST_F(FileOperationsTest, CheckRunsNothingAndComesBackToItsBuffer) {
  Put("a.set", "#GALIAS a one\r\n");
  Do("LO", "a.set");
  const int16 number = scriptFiles.GetBufferNumber("/data/a.set");
  scriptFiles.MoveBuffers(buffer::EntryLine);
  EXPECT_EQ(Do("NO", "a.set"), "");
  EXPECT_EQ(script.AliasCount, 0);
  EXPECT_EQ(buffers.CurrentBuffer, number);
  EXPECT_EQ(buffers.BufferText[number], "#GALIAS a one\r\n");
}

}  // namespace corvid::test
