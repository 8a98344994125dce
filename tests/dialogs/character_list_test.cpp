// SPDX-License-Identifier: GPL-3.0-or-later
// The list of characters, by what a player does.
#include "dialogs/character_list.h"

#include "character_list_fixture.h"
#include "core/keys.h"

namespace corvid {
namespace {

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
