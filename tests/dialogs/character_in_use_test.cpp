// SPDX-License-Identifier: GPL-3.0-or-later
// Characters that are deleted, or changed while they are played.
#include "character_list_fixture.h"

namespace corvid {
namespace {

TEST_F(CharacterListTest, DeleteAsksAndClearsTheRowAlone) {
  Character("Dale", "Bob", "bob");
  Character("Moor", "Cid", "cid");
  Character("Fen", "", "dan");
  prompter.answers = {box::ResultNo, box::ResultYes, box::ResultYes};
  Presses(DeleteButton, 0);
  Presses(DeleteButton, 0);
  Then([&] {
    EXPECT_EQ(File().substr(0, 29), "\"\",\"\",\"\",\"\",\"\",\"\",\"\",0,\"\"\r\n\"M");
    memory.face.Will({DeleteButton, {}, {{ListAt, 1}}, {}});
    memory.face.AnswerDialog();
  });
  int32 selected = -1;
  Then([&] { selected = At(ListAt).ListIndex; });
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(Boxes(), (Texts{"Delete Character|Are you sure you want to delete Bob|yesno",
                            "Delete Character|Are you sure you want to delete Bob|yesno",
                            "Delete Character|Are you sure you want to delete dan|yesno"}));
  EXPECT_EQ(lists.back(), std::vector<std::string>{"cid - Moor"});
  EXPECT_EQ(selected, 0);
  EXPECT_EQ(state.CharacterCount, 3) << "rows stay where they are: sessions name their character by its row";
  EXPECT_EQ(state.Password[1], "");
}

TEST_F(CharacterListTest, AClearedRowIsUsedAgain) {
  Character("Dale", "Bob", "bob");
  const int16 row = Character("Moor", "Cid", "cid", charflag::KeepVariables | 0x40);
  state.LastConnected[row] = "2026-01-15 12:00:00";
  state.Notes[row] = "old";
  prompter.answers = {box::ResultYes};
  Presses(DeleteButton, 1);
  Presses(AddButton);
  Answers({"OK", {{RefAt, "new"}}, {}, {}});
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(state.CharacterCount, 2);
  EXPECT_EQ(state.CharacterRef[row], "new");
  EXPECT_EQ(state.LastConnected[row] + state.Notes[row], "");
  EXPECT_EQ(state.CharFlags[row], 0);
}

TEST_F(CharacterListTest, AConnectedCharacterIsNotDeletedAndItsSessionGoesOn) {
  const int16 slot = Online("ann");
  Presses(DeleteButton);
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(Boxes(), Texts{"Delete Character|ann is connected. Disconnect the character before you delete it."});
  EXPECT_EQ(state.CharacterRef[1], "ann");
  EXPECT_TRUE(memory.sockets.Connected(slot));
}

TEST_F(CharacterListTest, ACharacterThatConnectsWhileItIsAskedAboutStays) {
  const int16 row = Character("Dale", "Bob", "bob");
  prompter.answers = {box::ResultYes};
  prompter.OnBox = [&] {
    prompter.OnBox = nullptr;
    EXPECT_EQ(sessions.OpenMud(row, 0), 0);
  };
  Presses(DeleteButton);
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(Boxes().back(), "Delete Character|bob is connected. Disconnect the character before you delete it.");
  EXPECT_EQ(state.CharacterRef[row], "bob");
}

TEST_F(CharacterListTest, ACharacterWhoseConnectionIsDownIsUnloadedBeforeItGoes) {
  const int16 slot = Online("ann");
  state.CharFlags[1] = charflag::KeepVariables;
  Alias("hunt", "kill rat", 1);
  std::string error;
  symbols.AddVariable("foe", "rat", 1, error);
  memory.sockets.CloseByPeer(slot);
  prompter.answers = {box::ResultYes};
  Presses(DeleteButton);
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(Boxes(), Texts{"Delete Character|Are you sure you want to delete Nameann|yesno"});
  EXPECT_NE(memory.files.ReadWhole("/data/Mudann/ann-var.set").find("rat"), std::string::npos) << "under its own name";
  EXPECT_EQ(script.AliasCount, 0);
  EXPECT_EQ(state.SessionRef[slot], "");
  EXPECT_EQ(script.SocketOwner[slot], 0);
  EXPECT_EQ(script.CurrentOwner, 0);
  EXPECT_EQ(memory.face.Title, "Corvid  [Not connected]");
  EXPECT_EQ(state.CharacterRef[1], "");
}

TEST_F(CharacterListTest, WhatTheDiskDoesNotTakeIsToldAndNothingIsForgotten) {
  const int16 slot = Online("ann");
  state.CharFlags[1] = charflag::KeepVariables;
  std::string error;
  symbols.AddVariable("foe", "rat", 1, error);
  memory.sockets.CloseByPeer(slot);
  memory.files.Fail = [](const std::string& operation, const std::string&) {
    return operation == "read" ? std::string() : std::string("No space left on device");
  };
  prompter.answers = {box::ResultYes};
  Presses(DeleteButton);
  Presses(AddButton);
  Answers({"OK", {{NameAt, "Hero"}, {RefAt, "hero"}, {PasswordAt, "pw"}}, {}, {}});
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(state.CharacterRef[1], "ann") << "its variables could not be saved";
  EXPECT_EQ(script.VariableCount, 1);
  EXPECT_EQ(lists.back(), (std::vector<std::string>{"ann - Mudann", "hero - "}));
  EXPECT_EQ(state.Password[2], "pw");
  const Texts told = Of("showerror");
  EXPECT_EQ(told.back(), "Error opening Character.mud file in /data/");
}

TEST_F(CharacterListTest, TheSessionOfAnEditedCharacterGoesOnUnderItsNewName) {
  const int16 slot = Online("ann");
  Alias("hunt", "kill rat", 1);
  Presses(EditButton);
  Answers({"OK", {{NameAt, "Anna"}, {RefAt, "anna"}, {MudAt, "New/Dale"}, {PasswordAt, "new"}}, {}, {}});
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(state.SessionRef[slot] + "/" + state.SessionName[slot] + "/" + state.SessionMud[slot],
            "anna/Anna/New/Dale");
  EXPECT_TRUE(memory.sockets.Connected(slot));
  EXPECT_EQ(memory.face.Title, "Corvid [anna");
  EXPECT_EQ(script.SystemValues[sysvar::PASSWORD], "new");
  EXPECT_EQ(script.SystemValues[sysvar::CONNECTED], "1");
  EXPECT_EQ(script.AliasCount, 1);
  int16 flags = 0;
  int16 found = 0;
  std::string error;
  Parameters rvar;
  EXPECT_EQ(sessions.SetCharacter("anna", flags, error, rvar, found), slot);
  EXPECT_TRUE(saving.SaveVariables(1)) << "in a folder that is there";
  EXPECT_TRUE(memory.files.FileExists("/data/New_Dale/anna-var.set"));
  Receives(slot, "You see a rat.\r\n");
  EXPECT_NE(Screen(slot).find("You see a rat."), std::string::npos);
}

TEST_F(CharacterListTest, ASessionInTheBackgroundStaysThere) {
  const int16 first = Online("ann");
  const int16 second = Online("bea");
  Presses(EditButton, 0);
  Answers({"OK", {{RefAt, "anna"}}, {}, {}});
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(state.SessionRef[first], "anna");
  EXPECT_EQ(script.CurrentSocket, second);
  EXPECT_EQ(memory.face.Title, "Corvid [bea");
}

TEST_F(CharacterListTest, ALoadedCharacterCannotLoseItsReference) {
  Online("ann");
  Presses(EditButton);
  Answers({"OK", {{RefAt, ""}}, {}, {}});
  Presses("Cancel");
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(Boxes(), Texts{"Error|The character is in use and needs its reference."});
  EXPECT_EQ(state.CharacterRef[1], "ann");
}

TEST_F(CharacterListTest, ASessionThatIsOverDoesNotComeBackByItsRow) {
  const int16 slot = Online("ann");
  memory.sockets.CloseByPeer(slot);
  state.SessionRef[slot].clear();  // as KILLALL leaves it
  Presses(EditButton);
  Answers({"OK", {{NameAt, "Anna"}}, {}, {}});
  prompter.answers = {box::ResultYes};
  Presses(DeleteButton);
  Presses(AddButton);
  Answers({"OK", {{RefAt, "new"}}, {}, {}});
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(state.SessionRef[slot], "");
  EXPECT_EQ(state.CharacterRef[2], "new") << "a row of its own";
  EXPECT_EQ(lists.back(), std::vector<std::string>{"new - "});
}

}  // namespace
}  // namespace corvid
