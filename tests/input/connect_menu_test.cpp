// SPDX-License-Identifier: GPL-3.0-or-later
// The menu of connections: how a player comes to the characters, leaves one, and comes back.
#include "fixture.h"

namespace corvid {

class ConnectMenuTest : public KeyboardTest {
 protected:
  void Key(int16 KeyCode, const std::string& character = "") {
    keys.KeyDown(KeyCode, 0);
    if (!character.empty()) keys.KeyTyped(character);
    keys.KeyUp(KeyCode, 0);
  }
  void OpenMenu(char letter) {
    Press(keycode::Alt, AltBit);
    Key(letter, std::string(1, static_cast<char>(letter + 32)));
    memory.effects.Clear();
  }
  // Chooses the item by the arrows, as a player who reads the list does.
  void Choose(const std::string& item) {
    const auto rows = static_cast<int32>(menu.ListItems.size());
    for (int32 i = 0; i < rows && menu.ListItems.at(static_cast<std::size_t>(menu.ListIndex)) != item; ++i)
      Key(keycode::Down);
    Key(keycode::Enter, "\r");
  }
  Texts Boxes() { return Of("box"); }
};

TEST_F(ConnectMenuTest, TheMenuHasItsItems) {
  Press(keycode::Alt, AltBit);
  memory.effects.Clear();
  Key('C', "c");
  EXPECT_EQ(Of("menu"), Texts{"CONNECT|Character Setup/Connect|Disconnect/Unload Character|Quick Connect|Reconnect|"
                              "RELOAD"});
  EXPECT_EQ(Spoken().back(), "1w Character Setup/Connect");
  EXPECT_EQ(memory.face.Menu.Title, "Connect");
}

TEST_F(ConnectMenuTest, TheFirstItemOpensTheListOfCharacters) {
  const Texts shown{"CHARACTER1 Mud Character List|Character References"};
  OpenMenu('C');
  memory.face.Will("Exit  Esc");
  Key(keycode::Enter, "\r");
  EXPECT_EQ(Of("dialog"), shown);
  EXPECT_FALSE(menu.ListOpen);
  OpenMenu('C');
  memory.face.Will("Exit  Esc");
  Key('C', "c");
  EXPECT_EQ(Of("dialog"), shown) << "by its letter";
}

TEST_F(ConnectMenuTest, QuickConnectOpensItsDialogAndConnects) {
  OpenMenu('C');
  memory.face.Will({"Connect", {{3, "new.example"}, {5, "5000"}}, {}, {}});
  Key('Q', "q");
  EXPECT_EQ(opened, std::vector<int16>{1});
  EXPECT_FALSE(menu.ListOpen);
}

TEST_F(ConnectMenuTest, ReconnectAndReloadShareALetterAndAreTwoItems) {
  OpenMenu('C');
  Key('R', "r");
  EXPECT_TRUE(menu.ListOpen) << "two items begin so";
  Key(keycode::Enter, "\r");
  EXPECT_EQ(Of("command"), Texts{"-2 #connect"});
  EXPECT_FALSE(menu.ListOpen);
  OpenMenu('C');
  Choose("RELOAD");
  EXPECT_EQ(Of("command"), Texts{"-2 #reload"});
  EXPECT_EQ(Spoken().back(), "1 Reloaded.");
  memory.effects.Clear();
  menus.MenuRoutine("CONNECT//RE");
  menus.MenuRoutine("connect//reload");
  menus.OpenMenu("MAIN//00", "Connect|Rel");
  EXPECT_EQ(Of("command"), (Texts{"-2 #connect", "-2 #reload", "-2 #reload"}));
}

TEST_F(ConnectMenuTest, WithoutAConnectionThereIsNothingToClose) {
  OpenMenu('C');
  Key('D', "d");
  EXPECT_EQ(Spoken(), (Texts{"1w Disconnect/Unload Character", "1 Character not connected. "}));
  EXPECT_EQ(Boxes(), Texts{});
  const int16 slot = Online("ann");
  memory.sockets.CloseByPeer(slot);
  memory.effects.Clear();
  menus.MenuRoutine("CONNECT//DI");
  EXPECT_EQ(Spoken(), Texts{"1 Character not connected. "});
  EXPECT_EQ(state.SessionRef[slot], "ann") << "what is loaded stays";
}

TEST_F(ConnectMenuTest, DisconnectingAsksTwiceAndForgetsTheCharacter) {
  Alias("everywhere", "x", 0);
  const int16 first = Online("bea");
  const int16 slot = Online("ann");
  Alias("hunt", "kill rat", script.SocketOwner[slot]);
  Receives(slot, "Hello\r\n");
  memory.effects.Clear();
  prompter.answers = {box::ResultYes, box::ResultYes};
  OpenMenu('C');
  Key('D', "d");
  ASSERT_EQ(Boxes().size(), 2U);
  EXPECT_TRUE(Boxes()[0].starts_with("Disconnect Verification |")) << Boxes()[0];
  EXPECT_EQ(Boxes()[1],
            "Close Character|Would you like to close the character's  window and unload triggers, aliases, keys, and "
            "other settings from memory? |yesno");
  EXPECT_FALSE(menu.ListOpen);
  EXPECT_FALSE(memory.sockets.Connected(slot));
  EXPECT_EQ(script.AliasCount, 1);
  EXPECT_EQ(state.SessionRef[slot] + Screen(slot), "");
  EXPECT_EQ(script.SocketOwner[slot], 0);
  EXPECT_EQ(state.LogOpen[slot], 0);
  EXPECT_EQ(script.CurrentSocket, first);
  EXPECT_EQ(Spoken().back(), "5 bea");
  EXPECT_EQ(memory.face.Title, "Corvid [bea");
  EXPECT_TRUE(memory.sockets.Connected(first));
  EXPECT_EQ(sessions.OpenMud(FindCharacter(state, "ann"), 0), 0);
  EXPECT_EQ(script.CurrentSocket, slot) << "its place is free again";
}

TEST_F(ConnectMenuTest, TheLastCharacterLeavesThePlayerWithoutOne) {
  const int16 slot = Online("ann");
  prompter.answers = {box::ResultYes, box::ResultYes};
  menus.MenuRoutine("CONNECT//DI");
  EXPECT_EQ(script.CurrentSocket, 0);
  EXPECT_EQ(script.CurrentOwner, 0);
  EXPECT_EQ(state.SessionRef[slot], "");
  EXPECT_EQ(memory.face.Title, "Corvid  [Not connected]");
}

TEST_F(ConnectMenuTest, EitherQuestionMayBeRefused) {
  const int16 slot = Online("ann");
  Alias("hunt", "kill rat", script.SocketOwner[slot]);
  prompter.answers = {box::ResultNo};
  menus.MenuRoutine("CONNECT//DI");
  EXPECT_EQ(Boxes().size(), 1U) << "who stays connected is not asked to unload";
  EXPECT_TRUE(memory.sockets.Connected(slot));
  prompter.answers = {box::ResultYes, box::ResultNo};
  menus.MenuRoutine("CONNECT//DI");
  EXPECT_FALSE(memory.sockets.Connected(slot));
  EXPECT_EQ(state.SessionRef[slot], "ann");
  EXPECT_EQ(script.AliasCount, 1);
  EXPECT_EQ(script.CurrentSocket, slot);
}

TEST_F(ConnectMenuTest, WhatTheDiskDoesNotTakeStaysLoaded) {
  const int16 slot = Online("ann");
  state.CharFlags[script.SocketOwner[slot]] = charflag::KeepVariables;
  std::string error;
  symbols.AddVariable("foe", "rat", script.SocketOwner[slot], error);
  memory.files.Fail = [](const std::string& operation, const std::string&) {
    return operation == "read" ? std::string() : std::string("No space left on device");
  };
  prompter.answers = {box::ResultYes, box::ResultYes};
  menus.MenuRoutine("CONNECT//DI");
  EXPECT_EQ(state.SessionRef[slot], "ann");
  EXPECT_EQ(script.VariableCount, 1);
  EXPECT_EQ(script.CurrentSocket, slot);
}

TEST_F(ConnectMenuTest, ACharacterThatComesBackMeanwhileStays) {
  const int16 slot = Online("ann");
  prompter.answers = {box::ResultYes, box::ResultYes};
  int asked = 0;
  prompter.OnBox = [&] {
    if (++asked != 2) return;
    EXPECT_EQ(sessions.OpenMud(1, 0), 0);
  };
  menus.MenuRoutine("CONNECT//DI");
  EXPECT_EQ(state.SessionRef[slot], "ann");
  EXPECT_EQ(script.SocketOwner[slot], 1);
}

TEST_F(ConnectMenuTest, ACharacterThatTakesThePlaceMeanwhileStays) {
  for (const int question : {1, 2}) {
    const int16 slot = Online("ann" + std::to_string(question));
    const int16 other = Character("Moor", "Cid", "cid" + std::to_string(question));
    prompter.answers = {box::ResultYes, box::ResultYes};
    int asked = 0;
    prompter.OnBox = [&] {
      if (++asked != question) return;
      if (memory.sockets.Connected(slot)) memory.sockets.CloseByPeer(slot);
      EXPECT_EQ(sessions.OpenMud(other, 0), 0);  // connects at the free place, and is closed by its game
      memory.sockets.CloseByPeer(slot);
    };
    menus.MenuRoutine("CONNECT//DI");
    prompter.OnBox = nullptr;
    EXPECT_EQ(asked, question) << "the next question would be about another character";
    EXPECT_EQ(state.SessionRef[slot], "cid" + std::to_string(question));
    EXPECT_EQ(script.SocketOwner[slot], other);
  }
}

TEST_F(ConnectMenuTest, TheMenuEditLeadsToTheVariables) {
  Press(keycode::Alt, AltBit);
  Key('E', "e");
  EXPECT_EQ(Of("menu").back(), "EDIT|Triggers|Aliases|Keys|Variables");
  memory.face.Will("Done");
  Key('V', "v");
  EXPECT_EQ(Of("dialog"), Texts{"DEBUGVAR View & Set Variables|Variables"});
  EXPECT_FALSE(menu.ListOpen);
  memory.effects.Clear();
  for (const char* item : {"Triggers", "Aliases", "Keys"}) {
    menus.MenuRoutine(std::string("EDIT//") + item);
    EXPECT_EQ(Spoken().back(), std::string("5 Corvid does not have this menu yet: ") + item);
  }
}

}  // namespace corvid
