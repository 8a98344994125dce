// SPDX-License-Identifier: GPL-3.0-or-later
// The list of characters and the form behind it, by what a player does.
#include "dialogs/character_list.h"

#include <deque>

#include "core/keys.h"
#include "core/scramble.h"
#include "sessions/fixture.h"

namespace corvid {
namespace {

using Answer = MemoryFace::Answer;

// Places of the form's controls.
constexpr int32 NameAt = 1, RefAt = 3, MudListAt = 5, MudAt = 7, HostAt = 9, PortAt = 11, NotesAt = 13, PasswordAt = 15,
                LoginAt = 16, KeepAt = 17, SimpleAt = 18;
constexpr int32 ListAt = 1;

const std::string Exit = "Exit  Esc", AddButton = "Add  Control-A", EditButton = "Edit/View  Control-E",
                  DeleteButton = "Delete  Del", OfflineButton = "Work Offline  Control-O";

class CharacterListTest : public SessionTest {
 protected:
  CharacterListTest() {
    memory.loop.Idle = [this] {
      if (dialog.GenFormCode == "CHARACTER1" && memory.face.OpenModel() != nullptr) lists.push_back(Items());
      if (steps.empty()) return memory.face.AnswerDialog();
      const std::function<void()> step = steps.front();
      steps.pop_front();
      step();
      return true;
    };
  }
  ~CharacterListTest() override {
    EXPECT_TRUE(steps.empty());
    EXPECT_EQ(memory.face.AnswersLeft(), 0U);
    EXPECT_EQ(Of("unanswered"), Texts{});
  }
  const std::vector<std::string>& Items() { return memory.face.OpenModel()->Controls.at(ListAt).Items; }
  const DialogControl& At(int32 place) { return memory.face.OpenModel()->Controls.at(static_cast<std::size_t>(place)); }
  void Press(int16 key, int16 shift = 0, int32 control = ListAt) {
    memory.face.OpenEvents()->DialogHappened(control, DialogEvent::KeyDown, key, shift);
    EXPECT_EQ(key, 0) << "the key does nothing else";
  }
  // What the player does next, before the answers that he Will give.
  void Then(std::function<void()> step) { steps.push_back(std::move(step)); }
  void Answers(const Answer& answer) {
    Then([this, answer] {
      memory.face.Will(answer);
      memory.face.AnswerDialog();
    });
  }
  void Presses(const std::string& button, int32 row = -1) {
    Answers({button, {}, row < 0 ? std::map<int32, int32>{} : std::map<int32, int32>{{ListAt, row}}, {}});
  }
  std::string File() { return Scramble(memory.files.ReadWhole("/data/Character.mud")); }
  Texts Boxes() { return Of("box"); }

  SpeechState speech;
  GenDialog dialog{platform, upcalls, speech};
  CharacterList list{script, options, state, characters, sessions, dialog, platform, upcalls};
  std::deque<std::function<void()>> steps;
  std::vector<std::vector<std::string>> lists;  // each list that was shown
};

TEST_F(CharacterListTest, TheListHasItsControlsInOrder) {
  Character("Dale", "Bob", "bob");
  std::string form;
  Then([&] {
    const DialogModel& model = *memory.face.OpenModel();
    form = model.Code + "|" + model.Title;
    for (const DialogControl& control : model.Controls) form += "|" + control.Caption + "/" + control.Text;
    EXPECT_TRUE(model.Controls[2].Default);
    EXPECT_TRUE(model.Controls[7].Cancel);
    EXPECT_EQ(model.Controls[ListAt].ListIndex, 0);
  });
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(form,
            "CHARACTER1|Mud Character List|/Character References|Characters/|Connect/Connect|"
            "Work Offline  Control-O/Work Offline  Control-O|Add  Control-A/Add  Control-A|"
            "Edit/View  Control-E/Edit/View  Control-E|Delete  Del/Delete  Del|Exit  Esc/Exit  Esc");
  EXPECT_EQ(Spoken(), (Texts{"5 Mud Character List", "5w Characters", "5w bob - Dale"}));
}

TEST_F(CharacterListTest, TheFormHasItsControlsInOrder) {
  Character("Dale", "Bob", "bob");
  std::string form;
  Presses(AddButton);
  Then([&] {
    const DialogModel& model = *memory.face.OpenModel();
    form = model.Code + "|" + model.Title;
    for (const DialogControl& control : model.Controls)
      if (control.Kind != ControlKind::Label)
        form += "|" + std::to_string(static_cast<int>(control.Kind)) + " " + control.Caption;
    EXPECT_EQ(model.Controls[4].Text, "Select Mud");
    EXPECT_TRUE(At(PasswordAt).Masked);
    EXPECT_TRUE(At(19).Default);
    EXPECT_TRUE(At(20).Cancel);
    EXPECT_EQ(At(MudListAt).ListIndex, -1) << "no game is chosen yet";
  });
  Presses("Cancel");
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(form,
            "CHARACTER2|Add Character|1 Character Name|1 Character Ref.|4 Mud List|1 Mud Name|1 Host Name|"
            "1 Port Number|128 Notes and Description|1 Password|8 Auto Login|8 Keep Variable Values|"
            "8 Simple Script Control|16 OK|16 Cancel");
}

TEST_F(CharacterListTest, RowsAreReferenceAndMudAndThoseOfQuickConnectionsAreNone) {
  Character("QUICKCONNECT", "QUICKCONNECT", "");
  Character("MUD", "QUICKCONNECT", "");
  Character("Dale", "Bob", "bob");
  Character("Moor", "Cid", "");
  ClearCharacter(state, Character("Gone", "Gone", "gone"));
  Character("", "QUICKCONNECT", "quick");
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(lists, (std::vector<std::vector<std::string>>{{"bob - Dale", "<unnamed> - Moor", "quick - "}}));
}

TEST_F(CharacterListTest, TheCharacterOfTheSessionInFrontIsSelected) {
  Character("Dale", "Bob", "bob");
  Online("ann");
  int32 row = -1;
  Then([&] { row = At(ListAt).ListIndex; });
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(row, 1);
}

TEST_F(CharacterListTest, ConnectAndWorkOfflineRunTheirCommandsAndLeave) {
  struct Case {
    const char* reference;
    std::string button;
    const char* command;
  };
  for (const Case& c :
       {Case{"bob", "Connect", "-2 #connect {bob}"}, Case{"bob", OfflineButton, "-2 #OFFLINE bob"},
        Case{"a b", OfflineButton, "-2 #OFFLINE {a b}"}, Case{"b@b", "Connect", "-2 #connect {b~@b}"}}) {
    const int16 row = Character("Dale", "Bob", c.reference);
    script.CommandDepth = 7;
    Presses(c.button);
    runner.OnCommand = [&](const std::string&, int16& flags, std::string&, Parameters&, int16&) {
      EXPECT_EQ(flags, option::Interactive);
      EXPECT_EQ(script.CommandDepth, 0);
      EXPECT_FALSE(dialog.GDOpen);
    };
    list.MaintainCharacters();
    EXPECT_EQ(Of("command"), Texts{c.command});
    memory.effects.Clear();
    lists.clear();
    ClearCharacter(state, row);
  }
}

TEST_F(CharacterListTest, EachCaptionsKeyDoesWhatItsButtonDoes) {
  Character("Dale", "Bob", "bob");
  Character("Moor", "Cid", "cid");
  const auto toSecond = [&] { memory.face.OpenModel()->Controls[ListAt].ListIndex = 1; };
  Then([&] {
    toSecond();
    Press('O', ControlBit);
  });
  list.MaintainCharacters();
  EXPECT_EQ(Of("command"), Texts{"-2 #OFFLINE cid"});
  std::string titles;
  const auto note = [&] { titles += memory.face.OpenModel()->Title + "." + At(RefAt).Text + " "; };
  Then([&] { Press('A', ControlBit); });
  Then(note);
  Presses("Cancel");
  Then([&] {
    toSecond();
    Press('E', ControlBit, 4);  // from a button as well
  });
  Then(note);
  Presses("Cancel");
  Then([&] { Press(keycode::Delete); });
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(titles, "Add Character. Edit Character.cid ");
  EXPECT_EQ(Boxes(), Texts{"Delete Character|Are you sure you want to delete Cid|yesno"}) << "the row stays selected";
}

TEST_F(CharacterListTest, OtherKeysAreTheLists) {
  Character("Dale", "Bob", "bob");
  Then([&] {
    for (const auto& [code, bits] : {std::pair<int16, int16>{'O', int16{0}},
                                     {'A', ShiftBit},
                                     {'E', AltBit},
                                     {keycode::Delete, ControlBit},
                                     {keycode::Escape, int16{0}}}) {
      int16 key = code;
      int16 shift = bits;
      memory.face.OpenEvents()->DialogHappened(ListAt, DialogEvent::KeyDown, key, shift);
      EXPECT_EQ(key, code);
      EXPECT_TRUE(dialog.GDOpen);
    }
    memory.face.OpenEvents()->DialogCloseRequested();
  });
  list.MaintainCharacters();
  EXPECT_EQ(Of("command"), Texts{});
}

TEST_F(CharacterListTest, ADoubleClickConnects) {
  Character("Dale", "Bob", "bob");
  Then([&] {
    int16 none = 0;
    memory.face.OpenEvents()->DialogHappened(ListAt, DialogEvent::DoubleClick, none, none);
  });
  list.MaintainCharacters();
  EXPECT_EQ(Of("command"), Texts{"-2 #connect {bob}"});
}

TEST_F(CharacterListTest, AnEmptyListSaysHowToBegin) {
  for (const std::string& button : {std::string("Connect"), OfflineButton, EditButton, DeleteButton}) Presses(button);
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(Boxes(), Texts(4, "Mud Character List|There is no character yet. Control-A adds one."));
  EXPECT_EQ(Spoken().at(1), "5 There is no character yet. Control-A adds one.");
  EXPECT_EQ(Of("command"), Texts{});
}

TEST_F(CharacterListTest, ACharacterIsAddedWithAllItsFieldsAndKept) {
  Presses(AddButton);
  Answers({"OK",
           {{NameAt, " Hero "},
            {RefAt, " hero "},
            {MudAt, "Dale"},
            {HostAt, " dale.example "},
            {PortAt, " 4000 "},
            {NotesAt, "said \"hi\"\r\nsecond"},
            {PasswordAt, " open sesame "}},
           {},
           {{LoginAt, 1}, {SimpleAt, 1}}});
  int32 row = -1;
  Then([&] { row = At(ListAt).ListIndex; });
  Presses(Exit);
  Character("Moor", "Cid", "cid");
  list.MaintainCharacters();
  EXPECT_EQ(lists.back(), (std::vector<std::string>{"cid - Moor", "hero - Dale"}));
  EXPECT_EQ(row, 1) << "the new one is selected";
  EXPECT_EQ(state.CharacterCount, 2);
  EXPECT_TRUE(
      File().ends_with("\"Dale\",\"dale.example\",\"said \"\"hi\"\"\r\nsecond\",\"4000\",\"Hero\",\"hero\","
                       "\" open sesame \",5,\"\"\r\n"))
      << File();
  EXPECT_TRUE(memory.files.IsPrivate("/data/Character.mud"));
  EXPECT_EQ(Boxes(), Texts{});
}

TEST_F(CharacterListTest, NothingWrittenAddsNothing) {
  Presses(AddButton);
  Presses("OK");
  Presses(AddButton);
  Answers({"Cancel", {{RefAt, "hero"}}, {}, {}});
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(state.CharacterCount, 0);
  EXPECT_FALSE(memory.files.FileExists("/data/Character.mud"));
}

TEST_F(CharacterListTest, AGameOnTheListFillsItsFields) {
  Character("Dale", "Bob", "bob");
  Character("Dale again", "Ann", "ann");
  state.HostName[2] = "DALE.example";
  Character("MUD", "QUICKCONNECT", "");
  state.HostName[3] = "quick.example";
  Character("No port", "X", "x");
  state.Port[4].clear();
  std::vector<std::string> muds;
  std::string filled;
  const auto choose = [&](int32 row) {
    Then([&, row] {
      muds = At(MudListAt).Items;
      memory.face.OpenModel()->Controls[MudListAt].ListIndex = row;
      int16 none = 0;
      memory.face.OpenEvents()->DialogHappened(MudListAt, DialogEvent::Click, none, none);
      filled += At(MudAt).Text + "/" + At(HostAt).Text + "/" + At(PortAt).Text + " ";
    });
  };
  Presses(AddButton);
  choose(0);
  Answers({"", {{MudAt, "Mine"}}, {}, {}});
  choose(1);
  Presses("Cancel");
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(muds, (std::vector<std::string>{"Dale Dale.example Port 4000", "MUD quick.example Port 4000"}));
  EXPECT_EQ(filled, "Dale/Dale.example/4000 Mine/quick.example/4000 ") << "a quick connection has no name to give";
}

TEST_F(CharacterListTest, EditingShowsTheFieldsAndChangesTheRow) {
  Character("Moor", "Cid", "cid");
  const int16 row = Character("Dale", "Bob", "bob", charflag::KeepVariables | 0x40);
  state.Notes[row] = "note";
  state.LastConnected[row] = "2026-01-15 12:00:00";
  std::string shown;
  int32 mud = -1;
  Presses(EditButton, 1);
  Then([&] {
    for (const int32 place : {NameAt, RefAt, MudAt, HostAt, PortAt, NotesAt, PasswordAt}) shown += At(place).Text + "/";
    for (const int32 place : {LoginAt, KeepAt, SimpleAt}) shown += std::to_string(At(place).Value);
    mud = At(MudListAt).ListIndex;
  });
  Answers({"OK", {{NameAt, "Rob"}, {HostAt, "new.example"}}, {}, {{LoginAt, 1}}});
  int32 selected = -1;
  Then([&] { selected = At(ListAt).ListIndex; });
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(shown, "Bob/bob/Dale/Dale.example/4000/note/secret/010");
  EXPECT_EQ(mud, 1);
  EXPECT_EQ(selected, 1);
  EXPECT_EQ(state.CharacterName[row] + state.HostName[row] + state.CharacterRef[row], "Robnew.examplebob");
  EXPECT_EQ(state.CharFlags[row], 0x43) << "what the form does not know stays";
  EXPECT_EQ(state.LastConnected[row], "2026-01-15 12:00:00");
  EXPECT_EQ(state.CharacterCount, 2);
}

TEST_F(CharacterListTest, ABadReferenceIsToldAndTheInputIsThereAgain) {
  Character("Dale", "Bob", "bob");
  Character("Dale", "", "");
  Presses(AddButton);
  Answers({"OK", {{NameAt, "Hero"}, {RefAt, "my hero"}, {PasswordAt, "pw"}, {NotesAt, "n"}}, {}, {{KeepAt, 1}}});
  std::string shown;
  Then([&] {
    shown = At(NameAt).Text + "/" + At(RefAt).Text + "/" + At(PasswordAt).Text + "/" + At(NotesAt).Text + "/" +
            std::to_string(At(KeepAt).Value) + "/" + memory.face.OpenModel()->Title;
    EXPECT_EQ(memory.face.OpenModel()->FirstFocus, RefAt);
  });
  Answers({"OK", {{RefAt, "BOB"}}, {}, {}});
  Answers({"OK", {{RefAt, "hero"}}, {}, {}});
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(Boxes(), (Texts{"Error|Character reference may not contain spaces.",
                            "Error|Duplicate Character Reference found. Please select a unique name."}));
  EXPECT_EQ(shown, "Hero/my hero/pw/n/1/Add Character");
  EXPECT_EQ(state.CharacterRef[3] + state.Password[3], "heropw");
}

TEST_F(CharacterListTest, APortThatLeadsNowhereIsToldBeforeTheFirstConnection) {
  Presses(AddButton);
  int32 focus = -1;
  for (const char* port : {"four thousand", "0", "65536"}) {
    Answers({"OK", {{RefAt, "hero"}, {HostAt, "dale.example"}, {PortAt, port}}, {}, {}});
    Then([this, &focus] { focus = memory.face.OpenModel()->FirstFocus; });
  }
  Answers({"OK", {{PortAt, "telnet"}}, {}, {}});
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(Boxes(), Texts(3, "Error|The port must be a number from 1 to 65535, or the name of a service."));
  EXPECT_EQ(focus, PortAt);
  EXPECT_EQ(state.CharacterRef[1] + " " + state.Port[1], "hero telnet");
}

TEST_F(CharacterListTest, AFormThatWasLeftEmptyAddsNothingAndSaysSo) {
  Presses(AddButton);
  Then([this] { EXPECT_EQ(memory.face.OpenModel()->FirstFocus, NameAt); });
  Answers({"OK", {}, {}, {}});
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(Boxes(), Texts{"Add Character|No field was filled in, so no character was added."});
  EXPECT_EQ(state.CharacterCount, 0);
}

TEST_F(CharacterListTest, ACharacterKeepsItsOwnReferenceAndSeveralMayHaveNone) {
  Character("Dale", "Bob", "bob");
  Character("Dale", "", "");
  Presses(EditButton);
  Answers({"OK", {{RefAt, "Bob"}}, {}, {}});
  Presses(AddButton);
  Answers({"OK", {{MudAt, "Moor"}}, {}, {}});
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(Boxes(), Texts{});
  EXPECT_EQ(lists.back(), (std::vector<std::string>{"Bob - Dale", "<unnamed> - Dale", "<unnamed> - Moor"}));
}

TEST_F(CharacterListTest, ACharacterWithoutReferenceIsNotPlayed) {
  Character("Dale", "Bob", "");
  Presses("Connect");
  Presses(OfflineButton);
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(Boxes(), Texts(2,
                           "Mud Character List|This character has no reference. Control-E lets you give it one, and "
                           "then it can be played."));
  EXPECT_EQ(Of("command"), Texts{});
}

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

TEST_F(CharacterListTest, ARowThatHasGoneIsTold) {
  Character("Dale", "Bob", "bob");
  Character("Moor", "Cid", "cid");
  const CharacterFields bob = ReadCharacter(state, 1);
  prompter.OnBox = [&] { WriteCharacter(state, 1, bob); };
  for (const std::string& button : {std::string("Connect"), EditButton, DeleteButton})
    Then([&, button] {
      ClearCharacter(state, 1);
      memory.face.Will({button, {}, {{ListAt, 0}}, {}});
      memory.face.AnswerDialog();
    });
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(Boxes(), Texts(3, "Mud Character List|The character bob is not in the list any more."));
  EXPECT_EQ(Of("command"), Texts{});
  EXPECT_EQ(state.CharacterRef[2], "cid");
}

TEST_F(CharacterListTest, AnEditedCharacterThatHasGoneMeanwhileIsWrittenAnew) {
  Character("Dale", "Bob", "bob");
  Presses(EditButton);
  Then([&] {
    ClearCharacter(state, 1);
    Character("Moor", "Cid", "cid");
  });
  Answers({"OK", {{NameAt, "Bob the Second"}}, {}, {}});
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(lists.back(), (std::vector<std::string>{"bob - Dale", "cid - Moor"}));
  EXPECT_EQ(state.CharacterName[1] + state.Password[1], "Bob the Secondsecret");
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

TEST_F(CharacterListTest, ACharacterWhoseNamesAreEmptiedKeepsTheRest) {
  const int16 row = Character("Dale", "Bob", "bob");
  state.Notes[row] = "a map";
  Presses(EditButton);
  Answers({"OK", {{NameAt, ""}, {RefAt, ""}, {MudAt, ""}, {HostAt, ""}}, {}, {}});
  Presses(AddButton);
  Answers({"OK", {{RefAt, "new"}}, {}, {}});
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(lists.back(), (std::vector<std::string>{"<unnamed> - ", "new - "}));
  EXPECT_EQ(state.Notes[row] + state.Password[row], "a mapsecret");
}

TEST_F(CharacterListTest, TheEditedRowStaysSelectedWhereverItIs) {
  ClearCharacter(state, Character("Gone", "Gone", "gone"));
  Character("Dale", "Bob", "bob");
  Character("Moor", "Cid", "cid");
  std::vector<int32> rows;
  for (const char* button : {"OK", "Cancel"}) {
    Presses(EditButton, std::string_view(button) == "OK" ? 0 : 1);
    Then([&, button] {
      if (IsClear(state, 1)) {
        WriteCharacter(state, 1, {"New", "new", "Fen", "", "", "", "", 0});
      } else {
        ClearCharacter(state, 1);
      }
      memory.face.Will(Answer{button, {}, {}, {}});
      memory.face.AnswerDialog();
    });
    Then([&] { rows.push_back(At(ListAt).ListIndex); });
  }
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(rows, (std::vector<int32>{1, 0})) << "another came before it, and went";
}

TEST_F(CharacterListTest, AThousandCharactersAndAFullTable) {
  for (int i = 1; i <= 1000; ++i) Character("Mud" + std::to_string(i), "Name", "c" + std::to_string(i));
  Then([&] { EXPECT_EQ(Items().size(), 1000U); });
  Presses(EditButton, 999);
  Then([&] { EXPECT_EQ(At(MudListAt).Items.size(), 1000U); });
  Answers({"OK", {{RefAt, "last"}}, {}, {}});
  Then([&] { EXPECT_EQ(At(ListAt).ListIndex, 999); });
  prompter.answers = {box::ResultYes};
  Presses(DeleteButton, 999);
  Then([&] { EXPECT_EQ(At(ListAt).ListIndex, 998); });
  Presses(AddButton);
  Answers({"OK", {{RefAt, "again"}}, {}, {}});
  Then([&] {
    while (state.CharacterCount < INT16_MAX - 1) state.MudName[AddCharacter(state)] = "x";
    memory.face.Will(AddButton);
    memory.face.AnswerDialog();
  });
  Answers({"OK", {{RefAt, "onemore"}}, {}, {}});
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(state.CharacterRef[1000], "again");
  EXPECT_EQ(FindCharacter(state, "onemore"), 0);
  EXPECT_EQ(Of("unknownerror"), Texts{"MaintainCharacters: The table of characters is full"});
}

TEST_F(CharacterListTest, TheProgramEndsThroughEveryStep) {
  Character("Dale", "Bob", "bob");
  Then([&] { memory.loop.End(0); });
  list.MaintainCharacters();
  EXPECT_FALSE(dialog.GDOpen);
}

TEST_F(CharacterListTest, TwentySessionsAndTheTwentyFirst) {
  for (int i = 1; i <= MaxConnections; ++i) Online("c" + std::to_string(i));
  Character("Dale", "Bob", "bob");
  runner.OnCommand = [&](const std::string& line, int16&, std::string&, Parameters&, int16&) {
    if (line == "#connect {bob}") sessions.OpenMud(FindCharacter(state, "bob"), 0);
  };
  Then([&] { EXPECT_EQ(Items().size(), 21U); });
  Presses("Connect", 20);
  list.MaintainCharacters();
  EXPECT_EQ(Of("showerror"), Texts{"No more free connections--Maximum: 21"});
  EXPECT_EQ(state.SessionHigh, MaxConnections);
}

TEST_F(CharacterListTest, AListThatAnotherDialogReplacesIsLeftAndAFormComesBackWithItsInput) {
  Character("Dale", "Bob", "bob");
  const auto another = [&] {
    dialog.Form_Init("OTHER", "Other", [&](const DialogEventArgs& at) {
      if (at.Kind == ControlKind::Button && at.Event == DialogEvent::Click) dialog.End(1);
    });
    dialog.MakeCommand(100, 100, 300, 800, "Fine", GenDialog::DefaultButton);
    dialog.ShowForm(0, 0);
  };
  Then(another);
  Presses("Fine");
  list.MaintainCharacters();
  EXPECT_EQ(lists.size(), 1U);

  Presses(AddButton);
  Answers({"", {{RefAt, "hero"}, {PasswordAt, "pw"}}, {}, {}});
  Then(another);
  Presses("Fine");
  std::string shown;
  Then([&] { shown = At(RefAt).Text + "/" + At(PasswordAt).Text; });
  Presses("OK");
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(shown, "hero/pw");
  EXPECT_EQ(state.CharacterRef[2], "hero");
}

}  // namespace
}  // namespace corvid
