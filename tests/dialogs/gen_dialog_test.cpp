// SPDX-License-Identifier: GPL-3.0-or-later
// What every dialog does: its controls speak, its keys work, its end is told.
#include "core/keys.h"
#include "prompts_fixture.h"

namespace corvid {
namespace {

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
