// SPDX-License-Identifier: GPL-3.0-or-later
// Typing and moving in the edit fields of a dialog, heard by a player without a screen reader.
#include <gtest/gtest.h>

#include "core/keys.h"
#include "dialogs/gen_dialog.h"
#include "platform/dialog_driver.h"
#include "platform/memory/memory_platform.h"
#include "support_upcalls.h"

namespace corvid {
namespace {

using Texts = std::vector<std::string>;

// Jobs that a test does when it is time.
class HeldJobs : public TimerJobs {
 public:
  void StartTimer1(int16 action, int milliseconds) override {
    Action = action;
    Delay = milliseconds;
  }
  int16 Action = 0;
  int Delay = 0;
};

class DialogEditingTest : public testing::Test {
 protected:
  // Opens a dialog with a text box and a box of several lines, and plays while it is open.
  template <typename Play>
  void Open(const std::string& text, const std::string& lines, Play&& play) {
    dialog.Form_Init("TEST", "", nullptr);
    dialog.MakeTextBox(100, 100, 300, 800, text);
    dialog.MakeBox(-100, 100, 900, 800, lines);
    memory.loop.Idle = [&] {
      DialogEvents* events = memory.face.OpenEvents();
      driver.Open(*memory.face.OpenModel(), *events);
      memory.effects.Clear();
      play();
      driver.Close();
      dialog.End(1);
      return true;
    };
    dialog.ShowForm(0, 0);
  }
  void Key(int16 code, int16 shift = 0) {
    jobs.Action = 0;
    driver.KeyDown(code, shift);
    if (jobs.Action != 0) dialog.SpeakField(jobs.Action / 1000 == 1, jobs.Action % 1000 / 10, jobs.Action % 10);
  }
  Texts Heard() {
    Texts heard;
    for (const Effect& effect : memory.effects.All())
      if (effect.Kind == "spoken" || effect.Kind == "spelled") heard.push_back(effect.Kind + " " + effect.Text);
    memory.effects.Clear();
    return heard;
  }

  MemoryPlatform memory;
  Platform platform = memory.All();
  RecordingFloors floors{memory.effects};
  HeldJobs jobs;
  Upcalls upcalls = floors.With(jobs);
  SpeechState speech;
  GenDialog dialog{platform, upcalls, speech};
  DialogDriver driver;
};

TEST_F(DialogEditingTest, TypedCharactersAreHeard) {
  speech.SpeechType[5] = 3;
  Open("", "", [&] {
    driver.KeyDown('A', 0);
    driver.KeyTyped("a");
    driver.KeyDown(187, 0);
    driver.KeyTyped("\xC3\xA9");
    EXPECT_EQ(Heard(), (Texts{"spelled 5 a", "spelled 5 \xC3\xA9"}));
    Key(keycode::Backspace);
    EXPECT_EQ(Heard(), (Texts{"spelled 5 \xC3\xA9"}));
    speech.TypingEcho[5] = 0;
    driver.KeyDown('B', 0);
    driver.KeyTyped("b");
    EXPECT_EQ(Heard(), Texts());
  });
}

TEST_F(DialogEditingTest, AMovedCaretSpeaksWhatItLandsOn) {
  speech.SpeechType[5] = 3;
  Open("go north", "", [&] {
    Key(keycode::Right);
    EXPECT_EQ(Heard(), (Texts{"spelled 5 o"}));
    Key(keycode::Left);
    EXPECT_EQ(Heard(), (Texts{"spelled 5 g"}));
    Key(keycode::Right, ControlBit);
    EXPECT_EQ(jobs.Action, 1011);
    EXPECT_EQ(jobs.Delay, 50);
    EXPECT_EQ(Heard(), (Texts{"spoken 5w north"}));
    Key(keycode::Delete);
    EXPECT_EQ(Heard(), (Texts{"spelled 5 n"}));
    Key(keycode::End);
    EXPECT_EQ(Heard(), (Texts{"spoken 5w End"}));
    Key(keycode::Home, ShiftBit);
    EXPECT_EQ(Heard(), (Texts{"spoken 5w go orth"}));
  });
}

TEST_F(DialogEditingTest, LinesOfABoxAreSpokenAsTheCaretComesToThem) {
  speech.SpeechType[5] = 3;
  Open("", "first\r\nsecond line", [&] {
    driver.Focus(1);
    Heard();
    Key(keycode::Down);
    EXPECT_EQ(jobs.Action, 2012);
    EXPECT_EQ(Heard(), (Texts{"spoken 5w second line"}));
  });
}

TEST_F(DialogEditingTest, AScreenReaderIsLeftToFollowTheCaret) {
  speech.SpeechType[5] = 1;
  Open("go", "", [&] {
    driver.KeyDown('A', 0);
    driver.KeyTyped("a");
    Key(keycode::Left);
    Key(keycode::Right, ControlBit);
    EXPECT_EQ(Heard(), Texts());
    EXPECT_EQ(jobs.Action, 0);
  });
}

TEST_F(DialogEditingTest, APasswordIsHeardAsStarsWhateverIsDoneWithIt) {
  speech.SpeechType[5] = 3;
  dialog.Form_Init("TEST", "", nullptr);
  dialog.MakeLabel(100, 100, 300, 800, "Password");
  EXPECT_EQ(dialog.MakePassword(-100, 100, 300, 800, "caf\xC3\xA9 x"), 1);
  memory.loop.Idle = [&] {
    driver.Open(*memory.face.OpenModel(), *memory.face.OpenEvents());
    EXPECT_EQ(Heard(), (Texts{"spoken 5w Password", "spoken 5w ******", "spoken 5w Password", "spoken 5w ******"}));
    driver.KeyDown('S', 0);
    driver.KeyTyped("s");
    EXPECT_EQ(Heard(), (Texts{"spelled 5 *"}));
    Key(keycode::Left);
    EXPECT_EQ(Heard(), (Texts{"spelled 5 *"}));
    Key(keycode::Right, ControlBit);
    EXPECT_EQ(Heard(), (Texts{"spoken 5w *******"}));
    Key(keycode::Home, ShiftBit);
    EXPECT_EQ(Heard(), (Texts{"spoken 5w *******"}));
    Key(keycode::Backspace);
    for (const std::string& heard : Heard()) EXPECT_EQ(heard.find_first_of("cafxs", 10), std::string::npos) << heard;
    driver.Close();
    dialog.End(1);
    return true;
  };
  dialog.ShowForm(0, 0);
}

TEST_F(DialogEditingTest, AJobThatComesTooLateSaysNothing) {
  Open("go", "", [] {});
  memory.effects.Clear();
  dialog.SpeakField(true, 1, 2);
  EXPECT_EQ(Heard(), Texts());
}

TEST_F(DialogEditingTest, ADialogClosesByItselfWhenNobodyIsThere) {
  memory.face.Player = false;
  dialog.Form_Init("TEST", "", nullptr);
  dialog.MakeCommand(100, 100, 300, 800, "OK", 0);
  dialog.ShowForm(0, 0);
  EXPECT_FALSE(dialog.GDOpen);
  EXPECT_EQ(dialog.GDResult, 0);
}

}  // namespace
}  // namespace corvid
