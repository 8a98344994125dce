// SPDX-License-Identifier: GPL-3.0-or-later
// The files of a character: what is loaded with its session, and what is asked when it goes.
#include "fixture.h"

namespace corvid {
namespace {

class SetsTest : public SessionTest {
 protected:
  SetsTest() {
    Row = Character("Aard", "Bob", "Bob");
    sessions.SetMud(0, Row);
  }
  std::string Read(const std::string& path) { return memory.files.ReadWhole("/data/" + path); }
  bool Exists(const std::string& path) { return memory.files.FileExists("/data/" + path); }
  int16 Row = 0;
};

TEST_F(SetsTest, MakesTheFilesOfANewCharacter) {
  sessions.LoadCharacterSets(0, 0);
  EXPECT_EQ(state.MudFolder[0], "/data/Aard/");
  EXPECT_EQ(memory.files.FileNames("/data/Aard"), (Texts{"Aard.set", "Bob-Char.set", "Bob.Tab", "Bob.set"}));
  EXPECT_EQ(Read("Aard/Bob-Char.set"), "#Char Bob\r\n");
  EXPECT_EQ(Read("Aard/Bob.set"), "#Char Bob\r\n");
  EXPECT_EQ(Read("Aard/Aard.set"), "");
  EXPECT_EQ(Read("Aard/Bob.Tab"), "");
  EXPECT_EQ(state.LogOpen[0], 1);
  EXPECT_TRUE(Of("unknownerror").empty());
}

TEST_F(SetsTest, UsesTheCommandCharacterOfTheDay) {
  options.CommandChar = '!';
  sessions.LoadCharacterSets(0, 0);
  EXPECT_EQ(Read("Aard/Bob.set"), "!Char Bob\r\n");
}

TEST_F(SetsTest, LoadsInOrder) {
  memory.files.Put("/data/Aard/bob-char.set", "#one\r\n");
  memory.files.Put("/data/Aard/Bob-var.set", "#two\r\n");
  memory.files.Put("/data/Aard/Aard.set", "#three\r\n");
  memory.files.Put("/data/Aard/Bob.set", "#four\r\n");
  sessions.LoadCharacterSets(0, 0);
  EXPECT_EQ(Of("command"), (Texts{"0 #one", "0 #two", "0 #three", "0 #four"})) << "the variables before the sets";
  EXPECT_EQ(memory.files.FileNames("/data/Aard").size(), 5U) << "the name is found in any case";
  for (int16 n = buffer::FirstScript; n <= buffers.BufferCount; ++n) EXPECT_EQ(buffers.BufferOwners[n], Row);
}

TEST_F(SetsTest, BringsItsSessionBackWhenAScriptGoesAway) {
  sessions.ResizeConnections(1);
  sessions.SetMud(1, Row);
  memory.files.Put("/data/Aard/bob-char.set", "#away\r\n");
  memory.files.Put("/data/Aard/Bob-var.set", "#two\r\n");
  memory.files.Put("/data/Aard/Aard.set", "#away\r\n");
  memory.files.Put("/data/Aard/Bob.set", "#four\r\n");
  std::vector<int16> active;
  runner.OnCommand = [&](const std::string& line, int16&, std::string&, Parameters&, int16&) {
    if (line == "#away") {
      sessions.SetMud(0, 0);
    } else {
      active.push_back(script.CurrentSocket);
    }
  };
  sessions.LoadCharacterSets(1, 0);
  EXPECT_EQ(active, (std::vector<int16>{1, 1}));
}

TEST_F(SetsTest, SkipsTheSetsOnAReconnect) {
  sessions.LoadCharacterSets(0, opening::SkipSets);
  EXPECT_FALSE(memory.files.FolderExists("/data/Aard"));
  EXPECT_TRUE(Of("command").empty());
  EXPECT_EQ(state.LogOpen[0], 1) << "the log opens all the same";
}

TEST_F(SetsTest, AsksForASavedStateWhenToldTo) {
  sessions.LoadCharacterSets(0, opening::AskBeforeLoading);
  EXPECT_TRUE(Of("box").empty()) << "nothing was saved before";
  memory.effects.Clear();
  prompter.answers = {box::ResultNo, box::ResultNo};
  sessions.LoadCharacterSets(0, opening::AskBeforeLoading);
  EXPECT_EQ(Of("box"), (Texts{"Corvid|Would you like to use the previously saved Bob-char.set file?|yesno",
                              "Delete|Would you like to delete the previously saved Bob-char.set file?|yesno"}));
  EXPECT_TRUE(Exists("Aard/Bob-Char.set"));
  EXPECT_EQ(Of("command").size(), 1U) << "only Bob.set";
  prompter.answers = {box::ResultNo, box::ResultYes};
  sessions.LoadCharacterSets(0, opening::AskBeforeLoading);
  EXPECT_FALSE(Exists("Aard/Bob-Char.set"));
}

TEST_F(SetsTest, ReadsTabWords) {
  memory.files.Put("/data/Aard/Bob.Tab", "sword\r\n\r\nshield\nhelmet\r\n sword ");
  sessions.LoadCharacterSets(0, 0);
  sessions.LoadCharacterSets(0, 0);
  ASSERT_EQ(script.TabWordCount, 3) << "a second load adds none twice";
  EXPECT_EQ(script.TabWords[1], "sword");
  EXPECT_EQ(script.TabWords[3], "helmet");
  EXPECT_EQ(script.TabOwners[2], Row);
}

TEST_F(SetsTest, EndsTheClassesOfWalks) {
  symbols.CheckAndAddClass("Playback", Row);
  symbols.CheckAndAddClass("Recording", Row);
  sessions.LoadCharacterSets(0, opening::SkipSets);
  EXPECT_EQ(script.ClassCount, 0);
}

TEST_F(SetsTest, ClosesTheOldLogAndRemovesAgedOnes) {
  memory.files.Put("/data/logs/Bob 2020-01-01.txt", "x");
  sessions.LoadCharacterSets(0, 0);
  Pass(2000);
  sessions.LoadCharacterSets(0, opening::SkipSets);
  EXPECT_EQ(memory.files.FileNames("/data/logs"), (Texts{"Bob 2026-01-15 12.0.txt", "Bob 2026-01-15 12.2.txt"}));
}

TEST_F(SetsTest, TellsAnInvalidLogsFolder) {
  options.LogsFolder = "/nowhere/logs/";
  memory.files.Fail = [](const std::string& operation, const std::string& path) {
    return operation == "folder" && path.find("nowhere") != std::string::npos ? std::string("refused") : std::string();
  };
  sessions.LoadCharacterSets(0, 0);
  EXPECT_EQ(Of("showerror"), (Texts{"Invalid log path : /nowhere/logs/"}));
  EXPECT_TRUE(Exists("Aard/Bob.set"));
}

TEST_F(SetsTest, GoesOnWhenTheDiskRefuses) {
  memory.files.Fail = [](const std::string& operation, const std::string&) {
    return operation == "write" || operation == "append" ? std::string("No space left on device") : std::string();
  };
  sessions.LoadCharacterSets(0, 0);
  EXPECT_GE(Of("unknownerror").size(), 4U) << "each file is told";
  EXPECT_EQ(state.LogOpen[0], 0);
}

TEST_F(SetsTest, StopsWhenTheSlotGoesToAnotherMeanwhile) {
  const int16 other = Character("Zork", "Cem", "cem");
  memory.files.Put("/data/Aard/Bob-Char.set", "#one\r\n");
  runner.OnCommand = [&](const std::string&, int16&, std::string&, Parameters&, int16&) { sessions.SetMud(0, other); };
  sessions.LoadCharacterSets(0, 0);
  EXPECT_EQ(Of("command").size(), 1U);
  EXPECT_FALSE(Exists("Aard/Bob.set"));
  EXPECT_EQ(script.SocketOwner[0], other);
}

TEST_F(SetsTest, CannotLeaveTheDataFolder) {
  const int16 row = Character("../../evil", "Eve", "../eve\\x");
  sessions.SetMud(0, row);
  sessions.LoadCharacterSets(0, 0);
  EXPECT_TRUE(memory.files.FolderExists("/data/.._.._evil"));
  EXPECT_TRUE(Exists(".._.._evil/.._eve_x.set"));
}

// --- RemoveCharacter ---

class RemoveTest : public SetsTest {
 protected:
  RemoveTest() {
    sessions.LoadCharacterSets(0, 0);
    std::string error;
    symbols.AddVariable("Gold", "5", Row, error);
    symbols.AddVariable("Other", "6", 0, error);
    Alias("mine", "x", Row);
    Alias("ours", "y", 0);
    symbols.Addmacro(65, 0, "z", Row, "", 0, "z", error);
    memory.effects.Clear();
  }
  void Change() {
    for (int16 n = buffer::FirstScript; n <= buffers.BufferCount; ++n)
      if (buffers.BufferFile[n] == "/data/Aard/Bob.set") scriptFiles.SetBufferText(n, "#changed\r\n");
  }
  int Loaded() {
    int count = 0;
    for (int16 n = buffer::FirstScript; n <= buffers.BufferCount; ++n) count += buffers.BufferFlags[n] != 0 ? 1 : 0;
    return count;
  }
};

TEST_F(RemoveTest, ForgetsWhatTheCharacterOwns) {
  EXPECT_EQ(Loaded(), 3);
  sessions.RemoveCharacter(Row);
  symbols.CompressCommand(windowtype::All);
  EXPECT_EQ(Loaded(), 0);
  EXPECT_EQ(script.AliasCount, 1);
  EXPECT_EQ(script.MacroCount, 0);
  std::string value;
  EXPECT_EQ(symbols.FindVariable("GOLD", value, Row), 0);
  EXPECT_NE(symbols.FindVariable("OTHER", value, Row), 0);
  EXPECT_TRUE(Of("box").empty()) << "nothing changed, nothing saved before";
}

TEST_F(RemoveTest, LeavesOthersAlone) {
  sessions.RemoveCharacter(0);
  sessions.RemoveCharacter(99);
  sessions.RemoveCharacter(-1);
  EXPECT_EQ(script.AliasCount, 2);
  EXPECT_EQ(Loaded(), 3);
}

TEST_F(RemoveTest, AsksAboutChangesWithoutAutoSave) {
  options.AutoSave = false;
  Change();
  prompter.answers = {box::ResultYes, box::ResultNo, box::ResultNo};
  sessions.RemoveCharacter(Row);
  EXPECT_EQ(Of("box").at(0), "Corvid|Would you like to save any changes that you have made to Bob?|yesno");
  EXPECT_TRUE(Exists("Aard/Bob.char.set")) << "a file of its own, with the dot";
  EXPECT_EQ(Of("box").at(1), "Save Variables|Would you like to save your variables again for Bob?|yesno")
      << "the first yes wrote them, so that they are there now";
}

TEST_F(RemoveTest, DoesNotAskAboutChangesWithAutoSave) {
  Change();
  sessions.RemoveCharacter(Row);
  for (const std::string& asked : Of("box")) EXPECT_EQ(asked.find("Corvid|"), std::string::npos);
}

TEST_F(RemoveTest, AsksAboutVariablesThatWereSaved) {
  memory.files.Put("/data/Aard/Bob-var.set", "#old\r\n");
  prompter.answers = {box::ResultYes};
  sessions.RemoveCharacter(Row);
  EXPECT_EQ(Of("box"), (Texts{"Save Variables|Would you like to save your variables again for Bob?|yesno"}));
  EXPECT_NE(Read("Aard/Bob-var.set").find("Gold"), std::string::npos);
}

TEST_F(RemoveTest, DeletesSavedVariablesOnNo) {
  memory.files.Put("/data/Aard/Bob-var.set", "#old\r\n");
  prompter.answers = {box::ResultNo};
  sessions.RemoveCharacter(Row);
  EXPECT_FALSE(Exists("Aard/Bob-var.set"));
}

TEST_F(RemoveTest, KeepsVariablesOfACharacterThatWantsIt) {
  state.CharFlags[Row] = charflag::KeepVariables;
  sessions.RemoveCharacter(Row);
  EXPECT_TRUE(Of("box").empty());
  EXPECT_NE(Read("Aard/Bob-var.set").find("Gold"), std::string::npos);
}

TEST_F(RemoveTest, LoadsAgainAfterwards) {
  sessions.RemoveCharacter(Row);
  symbols.CompressCommand(windowtype::All);
  sessions.LoadCharacterSets(0, 0);
  EXPECT_EQ(Loaded(), 3);
}

}  // namespace
}  // namespace corvid
