// SPDX-License-Identifier: GPL-3.0-or-later
// Message boxes, prompts and lists, as a player meets them: what is said, what each answer gives.
#include "dialogs/prompts.h"

#include <gtest/gtest.h>

#include "core/keys.h"
#include "platform/memory/memory_platform.h"
#include "support_upcalls.h"

namespace corvid {
namespace {

class PromptsTest : public testing::Test {
 protected:
  MemoryPlatform memory;
  Platform platform = memory.All();
  RecordingFloors floors{memory.effects};
  Upcalls& upcalls = floors.upcalls;
  SpeechState speech;
  GenDialog dialog{platform, upcalls, speech};
  Prompts prompts{dialog, speech, platform, upcalls};

  std::vector<std::string> Spoken() { return memory.effects.Of("spoken"); }

  // Sends an event to a control of the open dialog as a face would; gives the key back as the dialog left it.
  int16 Tell(int32 place, DialogEvent event, int16 key = 0, int16 shift = 0) {
    memory.face.OpenEvents()->DialogHappened(place, event, key, shift);
    return key;
  }
  int32 PlaceOfButton(const std::string& words) {
    int32 place = 0;
    for (const DialogControl& control : memory.face.OpenModel()->Controls) {
      if (control.Kind == ControlKind::Button && control.Text == words) return place;
      ++place;
    }
    return -1;
  }
};

TEST_F(PromptsTest, MessageBoxSpeaksTitleAndTextBeforeItsButton) {
  memory.face.Will("Ok");
  EXPECT_EQ(prompts.MsgBox("The door is shut.", box::OkOnly, "Note"), box::ResultOk);
  EXPECT_EQ(Spoken(), (std::vector<std::string>{"5 Note", "5 The door is shut.", "5w Ok"}));
  EXPECT_FALSE(dialog.GDOpen);
}

struct BoxCase {
  int16 flags;
  const char* button;
  int16 result;
};

TEST_F(PromptsTest, EachButtonGivesItsResult) {
  for (const BoxCase& given :
       {BoxCase{box::OkOnly, "Ok", 1}, BoxCase{box::OkCancel, "Ok", 1}, BoxCase{box::OkCancel, "Cancel", 2},
        BoxCase{box::YesNo, "Yes", 6}, BoxCase{box::YesNo, "No", 7}, BoxCase{box::YesNoCancel, "Yes", 6},
        BoxCase{box::YesNoCancel, "No", 7}, BoxCase{box::YesNoCancel, "Cancel", 2}}) {
    memory.face.Will(given.button);
    EXPECT_EQ(prompts.MsgBox("?", given.flags, ""), given.result) << given.button << " of " << given.flags;
  }
}

TEST_F(PromptsTest, FirstLettersAnswerToo) {
  for (const auto& [flags, key, result] :
       std::vector<std::tuple<int16, char, int16>>{{box::OkOnly, 'O', box::ResultOk},
                                                   {box::YesNo, 'Y', box::ResultYes},
                                                   {box::YesNo, 'N', box::ResultNo},
                                                   {box::OkCancel, 'C', box::ResultCancel}}) {
    int16 left = key;
    memory.loop.Idle = [&, key = key] {
      left = Tell(1, DialogEvent::KeyDown, key);
      return true;
    };
    EXPECT_EQ(prompts.MsgBox("?", flags, ""), result) << key;
    EXPECT_EQ(left, 0) << "the key must not act twice";
  }
}

TEST_F(PromptsTest, RepeatMessageSaysItAgainAndStays) {
  int step = 0;
  memory.loop.Idle = [&] {
    const char* button = step++ == 0 ? "Repeat Message" : "Ok";
    Tell(PlaceOfButton(button), DialogEvent::Click);
    return true;
  };
  prompts.MsgBox("Hear me.", box::OkOnly, "Note");
  const auto spoken = Spoken();
  EXPECT_EQ(std::count(spoken.begin(), spoken.end(), "5 Hear me."), 2);
  EXPECT_EQ(memory.effects.Of("stop"), (std::vector<std::string>{"5"})) << "what is still being said of it";
  EXPECT_EQ(step, 2);
}

TEST_F(PromptsTest, ClosingFromOutsideCountsAsTheCautiousAnswer) {
  for (const auto& [flags, result] : std::vector<std::pair<int16, int16>>{{box::OkOnly, box::ResultOk},
                                                                          {box::OkCancel, box::ResultCancel},
                                                                          {box::YesNo, box::ResultNo},
                                                                          {box::YesNoCancel, box::ResultCancel}}) {
    memory.loop.Idle = [&] {
      memory.face.OpenEvents()->DialogCloseRequested();
      return true;
    };
    EXPECT_EQ(prompts.MsgBox("?", flags, ""), result) << flags;
  }
}

TEST_F(PromptsTest, EscapeHasAButtonUnlessOnlyYesAndNoAreThere) {
  for (const auto& [flags, cancel] : std::vector<std::pair<int16, std::string>>{
           {box::OkOnly, "Ok"}, {box::OkCancel, "Cancel"}, {box::YesNo, ""}, {box::YesNoCancel, "Cancel"}}) {
    std::string found;
    memory.loop.Idle = [&] {
      for (const DialogControl& control : memory.face.OpenModel()->Controls)
        if (control.Cancel) found = control.Text;
      Tell(1, DialogEvent::Click);
      return true;
    };
    prompts.MsgBox("?", flags, "");
    EXPECT_EQ(found, cancel) << flags;
  }
}

TEST_F(PromptsTest, SecondAndThirdDefaultHaveTheFocus) {
  for (const auto& [flags, words] :
       std::vector<std::pair<int16, std::string>>{{box::YesNoCancel, "Yes"},
                                                  {box::YesNoCancel | box::SecondDefault, "No"},
                                                  {box::YesNoCancel | box::ThirdDefault, "Cancel"}}) {
    memory.effects.Clear();
    memory.face.Will("No");
    prompts.MsgBox("?", flags, "");
    EXPECT_EQ(Spoken().back(), "5w " + words);
  }
}

TEST_F(PromptsTest, MessageLabelGrowsByALineForEachFortyCharacters) {
  for (const auto& [length, height] : std::vector<std::pair<std::size_t, int32>>{{10, 295}, {40, 590}, {85, 885}}) {
    int32 found = 0;
    memory.loop.Idle = [&] {
      found = memory.face.OpenModel()->Controls[0].Height;
      EXPECT_EQ(memory.face.OpenModel()->Controls[0].Width, 5000);
      Tell(1, DialogEvent::Click);
      return true;
    };
    prompts.MsgBox(std::string(length, 'x'), box::OkOnly, "");
    EXPECT_EQ(found, height) << length;
  }
}

TEST_F(PromptsTest, TextPromptBeepsSpeaksAndReturnsTheText) {
  memory.face.Will({"OK", {{1, "bob"}}, {}, {}});
  EXPECT_EQ(prompts.TextPrompt("Key Name?", "Keys", 5, "ann"), "bob");
  EXPECT_EQ(memory.effects.Of("beep").size(), 1U);
  EXPECT_EQ(Spoken()[0], "5 Keys");
  EXPECT_EQ(Spoken()[1], "5w Key Name?");
  EXPECT_EQ(Spoken()[2], "5w ann");
}

std::string Places(const DialogModel& model) {
  std::string text;
  for (const DialogControl& c : model.Controls) {
    for (const int32 number : {c.Top, c.Left, c.Height, c.Width}) text += std::to_string(number) + " ";
    text += c.Default ? "default|" : c.Cancel ? "cancel|" : "|";
  }
  return text + std::to_string(model.Width) + " " + std::to_string(model.Height);
}

TEST_F(PromptsTest, TextPromptAndChoiceStandWhereTheyShould) {
  std::string places;
  memory.loop.Idle = [&] {
    places = Places(*memory.face.OpenModel());
    Tell(PlaceOfButton("Cancel"), DialogEvent::Click);
    return true;
  };
  prompts.TextPrompt("Key Name?", "", 5, "");
  EXPECT_EQ(places,
            "500 500 295 2000 |500 2501 295 2000 |1295 5001 400 800 default|1295 6201 400 800 cancel|7501 2195");
  int16 row = 1;
  prompts.ChooseFromList("Pick one", {"a", "b"}, row);
  EXPECT_TRUE(places.find("|500 500 2500 4000 |3400 4000 400 1500 default|3400 5900 400 1500 cancel|") !=
              std::string::npos)
      << places;
  EXPECT_EQ(row, 1);
}

TEST_F(PromptsTest, PickDriveGivesTheRootThatIsChosen) {
  memory.files.CreateFolder("/media");
  memory.face.Will({"OK", {}, {{1, 2}}, {}});
  EXPECT_EQ(prompts.PickDrive("Select a drive"), "/media/");
  EXPECT_EQ(memory.effects.Of("dialog"), (std::vector<std::string>{"CHOOSELIST Select a drive|Select"}));
  memory.face.Will("Cancel");
  EXPECT_EQ(prompts.PickDrive("Select a drive"), "");
}

TEST_F(PromptsTest, TextPromptCancelledReturnsNothing) {
  memory.face.Will({"Cancel", {{1, "bob"}}, {}, {}});
  EXPECT_EQ(prompts.TextPrompt("Key Name?", "", 5, "ann"), "");
  EXPECT_EQ(dialog.GDResult, 2);
}

TEST_F(PromptsTest, SecondPromptClosesTheFirstWhichEndsWithNothing) {
  std::string inner = "unset";
  bool opened = false;
  memory.loop.Idle = [&] {
    if (!opened) {
      opened = true;
      inner = prompts.TextPrompt("Inner", "", 5, "");
      return true;
    }
    memory.face.Will({"OK", {{1, "answer"}}, {}, {}});
    return memory.face.AnswerDialog();
  };
  EXPECT_EQ(prompts.TextPrompt("Outer", "", 5, ""), "");
  EXPECT_EQ(inner, "answer");
  EXPECT_EQ(dialog.GDResult, 0);
}

TEST_F(PromptsTest, PickListOffersLabelsAndGivesValues) {
  struct Case {
    const char* list;
    int32 row;  // -1: as it was at first
    const char* value;
  };
  for (const Case& given :
       {Case{"red|green|blue", 1, "green"}, Case{"P:Which?|red:1|*green:2|blue:3", -1, "2"},
        Case{"a\\&1b:x\\&1y|c", 0, "x:y"}, Case{"*only", -1, "only"}, Case{"*a:1|*b:2|c:3", -1, "2"},
        Case{"a|:nameless|c", 1, "nameless"}, Case{"a|p|c", 1, "c"}, Case{"a:b:c|d", 0, "b:c"}, Case{"a:|b", 0, ""}}) {
    MemoryFace::Answer answer{"OK", {}, {}, {}};
    if (given.row >= 0) answer.Rows[1] = given.row;
    memory.face.Will(answer);
    EXPECT_EQ(prompts.PickList(given.list), given.value) << given.list;
  }
}

TEST_F(PromptsTest, PickListSpeaksItsPromptAndCaption) {
  memory.face.Will("Cancel");
  EXPECT_EQ(prompts.PickList("P:Which way?|north|south"), "");
  EXPECT_EQ(Spoken(), (std::vector<std::string>{"5 Select", "5 Which way?", "5w Variables", "5w north"}));
  memory.effects.Clear();
  memory.face.Will("Cancel");
  EXPECT_EQ(prompts.PickList("north|p:Which\\&1 way?"), "");
  EXPECT_EQ(Spoken(), (std::vector<std::string>{"5 Select", "5 Which: way?", "5w Variables", "5w north"}));
  memory.effects.Clear();
  memory.face.Will("Cancel");
  EXPECT_EQ(prompts.PickList("north|P"), "") << "without a value the label is the prompt";
  EXPECT_EQ(Spoken(), (std::vector<std::string>{"5 Select", "5 P", "5w Variables", "5w north"}));
}

TEST_F(PromptsTest, PickListWithoutChoicesAsksNothing) {
  EXPECT_EQ(prompts.PickList("P:Which way?"), "");
  EXPECT_EQ(prompts.PickList("P"), "");
  EXPECT_EQ(prompts.PickList(""), "");
  EXPECT_TRUE(memory.effects.Of("dialog").empty());
}

TEST_F(PromptsTest, PickListBehindAnOpenDialogOnlyBeeps) {
  std::string picked = "unset";
  memory.loop.Idle = [&] {
    picked = prompts.PickList("a|b");
    Tell(PlaceOfButton("Ok"), DialogEvent::Click);
    return true;
  };
  EXPECT_EQ(prompts.MsgBox("Open", box::OkOnly, ""), box::ResultOk);
  EXPECT_EQ(picked, "");
  EXPECT_EQ(memory.effects.Of("beep").size(), 1U);
}

TEST_F(PromptsTest, PickListStopsAtNinetyNineChoices) {
  std::string list = "c1";
  for (int i = 2; i <= 150; ++i) list += "|c" + std::to_string(i);
  std::size_t rows = 0;
  memory.loop.Idle = [&] {
    rows = memory.face.OpenModel()->Controls[1].Items.size();
    Tell(PlaceOfButton("Cancel"), DialogEvent::Click);
    return true;
  };
  prompts.PickList(list);
  EXPECT_EQ(rows, 99U);
}

TEST_F(PromptsTest, ChooseFromListGivesTheRow) {
  int16 row = 0;
  memory.face.Will({"OK", {}, {{1, 2}}, {}});
  EXPECT_TRUE(prompts.ChooseFromList("Pick one", {"a", "b", "c"}, row));
  EXPECT_EQ(row, 2);
  EXPECT_EQ(Spoken()[1], "5w Triggers");
  memory.face.Will("Cancel");
  EXPECT_FALSE(prompts.ChooseFromList("Pick one", {"a"}, row));
}

TEST_F(PromptsTest, InputBoxTakesItsMarkForNoDefault) {
  std::string shown = "unset";
  memory.loop.Idle = [&] {
    shown = memory.face.OpenModel()->Controls[1].Text;
    Tell(PlaceOfButton("Cancel"), DialogEvent::Click);
    return true;
  };
  prompts.InputBox2("Name?", "Title", "$%");
  EXPECT_EQ(shown, "");
  prompts.InputBox2("Name?", "Title", "bob");
  EXPECT_EQ(shown, "bob");
}

TEST_F(PromptsTest, FilePickerWalksIntoFoldersAndTakesAFile) {
  memory.files.Put("/data/scripts/fight.set", "x");
  memory.files.Put("/data/scripts/notes.txt", "x");
  int step = 0;
  std::vector<std::string> inside;
  memory.loop.Idle = [&] {
    DialogModel& model = *memory.face.OpenModel();
    if (step++ == 0) {
      EXPECT_EQ(model.Controls[2].Items, (std::vector<std::string>{".. [folder]", "scripts [folder]"}));
      model.Controls[2].ListIndex = 1;
      Tell(2, DialogEvent::DoubleClick);
    } else {
      inside = model.Controls[2].Items;
      model.Controls[2].ListIndex = 1;
      Tell(2, DialogEvent::DoubleClick);
    }
    return true;
  };
  std::string error;
  std::string name;
  prompts.FolderDialog2("", "*.set", 0, "Select", error, name, "/data");
  EXPECT_EQ(name, "/data/scripts/fight.set");
  EXPECT_EQ(inside, (std::vector<std::string>{".. [folder]", "fight.set"}));
  EXPECT_EQ(error, "");
}

TEST_F(PromptsTest, FilePickerDescendsAndAcceptsWithEnter) {
  memory.files.Put("/data/scripts/fight.set", "x");
  int16 left = -1;
  memory.loop.Idle = [&] {
    memory.face.OpenModel()->Controls[2].ListIndex = 1;
    left = Tell(2, DialogEvent::KeyDown, keycode::Enter);
    EXPECT_EQ(left, 0) << "or the default button would be pressed as well";
    return true;
  };
  std::string error;
  std::string name;
  prompts.FolderDialog2("", "*.set", 0, "Select", error, name, "/data");
  EXPECT_EQ(name, "/data/scripts/fight.set");
}

TEST_F(PromptsTest, FilePickerTakesTheRowUnderTheHandsWithOk) {
  memory.files.Put("/data/fight.set", "x");
  memory.files.CreateFolder("/data/more");
  const auto meet = [&](int32 row) {
    memory.face.OpenModel()->Controls[2].ListIndex = row;
    Tell(2, DialogEvent::Click);
    return memory.face.OpenModel()->Controls[1].Text;
  };
  memory.loop.Idle = [&] {
    EXPECT_EQ(meet(1), "start.set") << "what was there stays at a folder";
    EXPECT_EQ(meet(2), "fight.set");
    EXPECT_EQ(meet(1), "");
    EXPECT_EQ(meet(2), "fight.set");
    Tell(PlaceOfButton("OK"), DialogEvent::Click);
    return true;
  };
  std::string error;
  std::string name;
  prompts.FolderDialog2("start.set", "*.set", 0, "Select", error, name, "/data");
  EXPECT_EQ(name, "/data/fight.set");
}

TEST_F(PromptsTest, FilePickerOfThePlayersFilesHasACodeOfItsOwn) {
  memory.files.Put("/data/scripts/fight.set", "x");
  memory.face.Will("Cancel");
  memory.face.Will("Cancel");
  std::string error;
  std::string name;
  prompts.FolderDialog("scripts/fight.set", "*.set", 0, "Select", error, name, "/data/");
  prompts.FolderDialog2("", "*.set", 0, "Select", error, name, "/data/");
  EXPECT_EQ(memory.effects.Of("dialog"),
            (std::vector<std::string>{"FOLDER Select|File name", "FOLDER2 Select|File name"}));
  EXPECT_EQ(name, "");
}

TEST_F(PromptsTest, FilePickerRefusesAFileThatIsNotThere) {
  memory.files.Put("/data/a.set", "x");
  int step = 0;
  memory.loop.Idle = [&] {
    memory.face.OpenModel()->Controls[1].Text = "none.set";
    Tell(PlaceOfButton(step++ == 0 ? "OK" : "Cancel"), DialogEvent::Click);
    return true;
  };
  std::string error;
  std::string name;
  prompts.FolderDialog2("", "*.set", 0, "Select", error, name, "/data");
  EXPECT_EQ(name, "");
  EXPECT_EQ(step, 2) << "the dialog must stay open after the refusal";
}

// One row per kind of control: what the player hears on reaching it.
TEST_F(PromptsTest, EachControlSaysItsCaptionAndValueOnFocus) {
  memory.face.RecordDisplay = false;
  dialog.Form_Init("TEST", "Test", nullptr);
  dialog.MakeLabel(100, 100, 295, 2000, "Name");
  dialog.MakeTextBox(-100, 100, 295, 2000, "bob");
  dialog.MakeCheck(-100, 100, 295, 2000, 0, "Echo");
  dialog.MakeCheck(-100, 100, 295, 2000, 1, "Log");
  dialog.MakeCheck(-100, 100, 295, 2000, 2, "Both");
  dialog.MakeOption(-100, 100, 295, 2000, 0, "First");
  dialog.MakeOption(-100, 100, 295, 2000, 1, "Second");
  dialog.MakeLabel(-100, 100, 295, 2000, "Speed");
  dialog.MakeHScroll(-100, 100, 295, 2000, 40, 0, 100, 1, 10);
  dialog.MakeLabel(-100, 100, 295, 2000, "Text");
  dialog.MakeBox(-100, 100, 900, 2000, "one\r\ntwo");
  dialog.MakeList(-100, 100, 900, 2000, {"north", "south"}, 1, "Ways");
  dialog.MakeCommand(-100, 100, 400, 800, "OK", GenDialog::DefaultButton);
  dialog.Control(ControlKind::List, 1).MultiSelect = true;
  dialog.Control(ControlKind::List, 1).Selected[1] = true;
  memory.loop.Idle = [&] {
    for (int32 place = 0; place < 13; ++place) Tell(place, DialogEvent::GotFocus);
    dialog.End(1);
    return true;
  };
  dialog.ShowForm(100, 100);
  const std::vector<std::string> expected{
      "5 Test",     "5w Name", "5w bob",    "5w Name",  "5w bob",        "5w Echo",     "5w Unchecked", "5w Log",
      "5w checked", "5w Both", "5w greyed", "5w First", "5w unselected", "5w Second",   "5w selected",  "5w Speed",
      "5w 40%",     "5w Text", "5w one",    "5w Ways",  "5w south",      "5w selected", "5w OK"};
  EXPECT_EQ(Spoken(), expected);
}

TEST_F(PromptsTest, ArrowsInAListSpeakTheNewRow) {
  dialog.Form_Init("TEST", "", nullptr);
  dialog.MakeList(100, 100, 900, 2000, {"north", "south"}, 0, "Ways");
  memory.loop.Idle = [&] {
    memory.effects.Clear();
    memory.face.OpenModel()->Controls[0].ListIndex = 1;
    Tell(0, DialogEvent::Change);
    dialog.End(1);
    return true;
  };
  dialog.ShowForm(0, 0);
  EXPECT_EQ(Spoken(), (std::vector<std::string>{"5w south"}));
}

TEST_F(PromptsTest, ArrowsInAScrollBarSpeakTheNewValue) {
  dialog.Form_Init("TEST", "", nullptr);
  dialog.MakeHScroll(100, 100, 295, 2000, 0, -10, 10, 1, 5);
  memory.loop.Idle = [&] {
    memory.effects.Clear();
    for (const auto& [value, event] :
         std::vector<std::pair<int16, DialogEvent>>{{-10, DialogEvent::Change}, {5, DialogEvent::Scroll}}) {
      memory.face.OpenModel()->Controls[0].Value = value;
      Tell(0, event);
    }
    dialog.End(1);
    return true;
  };
  dialog.ShowForm(0, 0);
  EXPECT_EQ(Spoken(), (std::vector<std::string>{"5w 0%", "5w 75%"}));
}

TEST_F(PromptsTest, OptionsOfAGroupExcludeEachOther) {
  dialog.Form_Init("TEST", "", nullptr);
  dialog.MakeOption(100, 100, 295, 2000, 1, "First");
  dialog.MakeOption(-100, 100, 295, 2000, 0, "Second");
  memory.loop.Idle = [&] {
    memory.face.OpenModel()->Controls[1].Value = 1;
    Tell(1, DialogEvent::Click);
    EXPECT_EQ(memory.face.OpenModel()->Controls[0].Value, 0);
    EXPECT_EQ(memory.face.OpenModel()->Controls[1].Value, 1);
    dialog.End(1);
    return true;
  };
  dialog.ShowForm(0, 0);
}

TEST_F(PromptsTest, ALabelIsTheCaptionOfTheNextControlAlone) {
  dialog.Form_Init("TEST", "", nullptr);
  dialog.MakeLabel(100, 100, 295, 2000, "passed over");
  dialog.MakeLabel(-100, 100, 295, 2000, "Name");
  dialog.MakeTextBox(-100, 100, 295, 2000, "");
  dialog.MakeTextBox(-100, 100, 295, 2000, "");
  dialog.MakeLabel(-100, 100, 295, 2000, "Ways");
  dialog.MakeCheck(-100, 100, 295, 2000, 0, "Echo");
  dialog.MakeBox(-100, 100, 295, 2000, "");
  std::vector<std::string> captions;
  for (const DialogControl& control : dialog.Model().Controls)
    if (control.Kind != ControlKind::Label) captions.push_back(control.Caption);
  EXPECT_EQ(captions, (std::vector<std::string>{"Name", "", "Echo", ""}));
}

TEST_F(PromptsTest, PlacesAreAbsoluteOrBesideTheLastControl) {
  dialog.Form_Init("TEST", "", nullptr);
  dialog.MakeLabel(500, 500, 295, 2000, "prompt");
  dialog.MakeTextBox(0, -1, 0, 0, "");
  dialog.MakeCommand(-500, -500, 400, 800, "OK", 0);
  const auto& controls = dialog.Model().Controls;
  EXPECT_EQ(controls[1].Top, 500);
  EXPECT_EQ(controls[1].Left, 2501);
  EXPECT_EQ(controls[1].Height, 295);
  EXPECT_EQ(controls[1].Width, 2000);
  EXPECT_EQ(controls[2].Top, 500 + 295 + 500);
  EXPECT_EQ(controls[2].Left, 2501 + 2000 + 500);
  memory.loop.Idle = [&] {
    dialog.End(1);
    return true;
  };
  dialog.ShowForm(100, 200);
  EXPECT_EQ(dialog.Model().Width, 5001 + 800 + 100);
  EXPECT_EQ(dialog.Model().Height, 1295 + 400 + 200);
}

TEST_F(PromptsTest, AltF4InADialogQuits) {
  memory.loop.Idle = [&] {
    Tell(1, DialogEvent::KeyDown, keycode::F4, AltBit);
    Tell(1, DialogEvent::Click);
    return true;
  };
  prompts.MsgBox("?", box::OkOnly, "");
  EXPECT_EQ(memory.effects.Of("quit"), (std::vector<std::string>{"asked"}));
}

TEST_F(PromptsTest, KeysInADialogInterruptTheSystemVoice) {
  memory.loop.Idle = [&] {
    Tell(1, DialogEvent::KeyDown, keycode::Tab);
    Tell(1, DialogEvent::KeyUp, keycode::Control);
    speech.InterruptOwn[Channel::System] = 0;
    Tell(1, DialogEvent::KeyDown, keycode::Tab);
    Tell(1, DialogEvent::Click);
    return true;
  };
  prompts.MsgBox("?", box::OkOnly, "");
  EXPECT_EQ(memory.effects.Of("stop"), (std::vector<std::string>{"5", "control"}));
}

TEST_F(PromptsTest, ADialogThatIsReplacedIsUnloadedFirst) {
  int unloaded = 0;
  dialog.Form_Init("OUTER", "",
                   [&](const DialogEventArgs& at) { unloaded += at.Event == DialogEvent::Unload ? 1 : 0; });
  dialog.MakeCommand(100, 100, 400, 800, "OK", 0);
  bool opened = false;
  memory.loop.Idle = [&] {
    if (opened) return memory.face.AnswerDialog();
    opened = true;
    memory.face.Will("Ok");
    prompts.MsgBox("?", box::OkOnly, "");
    return true;
  };
  dialog.ShowForm(0, 0);
  EXPECT_EQ(unloaded, 1);
  EXPECT_EQ(memory.effects.Of("dialog-closed"), (std::vector<std::string>{"OUTER", "MSGBOX"}));
}

TEST_F(PromptsTest, FaultInAHandlerIsReportedAndTheDialogStays) {
  int step = 0;
  dialog.Form_Init("TEST", "", [&](const DialogEventArgs& at) {
    if (at.Event == DialogEvent::Click) throw Fault(FaultKind::Index, "no such row");
  });
  dialog.MakeCommand(100, 100, 400, 800, "OK", 0);
  memory.loop.Idle = [&] {
    Tell(0, DialogEvent::Click);
    EXPECT_TRUE(dialog.GDOpen);
    ++step;
    dialog.End(1);
    return true;
  };
  dialog.ShowForm(0, 0);
  EXPECT_EQ(step, 1);
  EXPECT_EQ(memory.effects.Of("error"), (std::vector<std::string>{"no such row in command: TEST"}));
}

TEST_F(PromptsTest, UnloadTellsTheHandlerAndClearsTheOpenMark) {
  std::vector<DialogEvent> seen;
  dialog.Form_Init("TEST", "", [&](const DialogEventArgs& at) {
    if (at.Kind == ControlKind::Form) seen.push_back(at.Event);
  });
  dialog.MakeCommand(100, 100, 400, 800, "OK", 0);
  memory.loop.Idle = [&] {
    EXPECT_TRUE(dialog.GDOpen);
    dialog.Unload();
    return true;
  };
  dialog.ShowForm(0, 0);
  EXPECT_FALSE(dialog.GDOpen);
  EXPECT_EQ(dialog.GDResult, 0);
  EXPECT_EQ(seen, (std::vector<DialogEvent>{DialogEvent::Activate, DialogEvent::Unload}));
}

}  // namespace
}  // namespace corvid
