// SPDX-License-Identifier: GPL-3.0-or-later
// The form of a character: what is added, changed and refused.
#include "character_list_fixture.h"

namespace corvid {
namespace {

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
  Presses("OK");  // the form stays
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
    Then([this, &focus, port] {
      focus = memory.face.OpenModel()->FirstFocus;
      EXPECT_EQ(At(PortAt).SelStart, 0);
      EXPECT_EQ(At(PortAt).SelLength, static_cast<int32>(std::string(port).size())) << "typing takes its place";
    });
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
  Answers({"OK", {}, {}, {}});
  Then([this] { EXPECT_EQ(memory.face.OpenModel()->FirstFocus, NameAt); });
  Presses("Cancel");
  Presses(Exit);
  list.MaintainCharacters();
  EXPECT_EQ(Boxes(), Texts{"Error|No field is filled in. Cancel leaves the form."});
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

}  // namespace
}  // namespace corvid
