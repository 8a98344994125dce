// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dialog_driver.h"

#include <gtest/gtest.h>

#include "core/keys.h"
#include "platform/key_chars.h"

namespace corvid {
namespace {

// Writes down what the engine would be told: place of the control and event.
class Engine : public DialogEvents {
 public:
  void DialogHappened(int32 control, DialogEvent event, int16& key, int16& /*shift*/) override {
    if (event == DialogEvent::KeyDown || event == DialogEvent::KeyPress || event == DialogEvent::KeyUp) {
      if (key == consumed) key = 0;
      return;
    }
    if (!told.empty()) told += " ";
    told += std::to_string(control);
    told += event == DialogEvent::GotFocus    ? "got"
            : event == DialogEvent::LostFocus ? "lost"
            : event == DialogEvent::Change    ? "change"
                                              : "click";
    if (closeOnClick != nullptr && event == DialogEvent::Click) closeOnClick->Close();
  }
  void DialogCloseRequested() override { told += "close"; }
  std::string Take() { return std::exchange(told, {}); }

  std::string told;
  int16 consumed = -1;
  DialogDriver* closeOnClick = nullptr;
};

class DialogDriverTest : public testing::Test {
 protected:
  DialogControl& Add(ControlKind kind) {
    DialogControl& control = model.Controls.emplace_back();
    control.Kind = kind;
    return control;
  }
  void Key(int16 code, int16 shift = 0) {
    driver.KeyDown(code, shift);
    const std::string character = CharacterOf(code, shift);
    if (!character.empty()) driver.KeyTyped(character);
    driver.KeyUp(code, shift);
  }
  void Type(const std::string& text) {
    for (const char c : text) {
      const Keystroke key = KeyOf(std::string(1, c));
      Key(key.KeyCode, key.Shift);
    }
  }
  std::string clipboard;
  DialogDriver driver{{[this] { return clipboard; }, [this](const std::string& text) { clipboard = text; }}};
  DialogModel model;
  Engine engine;
};

TEST_F(DialogDriverTest, TheFocusGoesRoundInOrderOfCreationPastLabelsAndTheDisabled) {
  Add(ControlKind::Label);
  Add(ControlKind::TextBox);
  Add(ControlKind::Check).Enabled = false;
  Add(ControlKind::Button).Visible = false;
  Add(ControlKind::Button);
  driver.Open(model, engine);
  EXPECT_EQ(engine.Take(), "1got");
  Key(keycode::Tab);
  EXPECT_EQ(engine.Take(), "1lost 4got");
  Key(keycode::Tab);
  EXPECT_EQ(engine.Take(), "4lost 1got");
  Key(keycode::Tab, ShiftBit);
  EXPECT_EQ(engine.Take(), "1lost 4got");
}

TEST_F(DialogDriverTest, TheEngineMayNameTheFirstFocus) {
  Add(ControlKind::Button);
  Add(ControlKind::Button);
  model.FirstFocus = 1;
  driver.Open(model, engine);
  EXPECT_EQ(engine.Take(), "1got");
}

TEST_F(DialogDriverTest, EnterPressesTheDefaultButtonUnlessAnotherHasTheFocus) {
  Add(ControlKind::TextBox);
  Add(ControlKind::Button).Default = true;
  Add(ControlKind::Button).Cancel = true;
  driver.Open(model, engine);
  engine.Take();
  Key(keycode::Enter);
  EXPECT_EQ(engine.Take(), "1click");
  EXPECT_EQ(model.Controls[0].Text, "");
  Key(keycode::Escape);
  EXPECT_EQ(engine.Take(), "2click");
  driver.Focus(2);
  engine.Take();
  Key(keycode::Enter);
  EXPECT_EQ(engine.Take(), "2click");
  Key(keycode::Space);
  EXPECT_EQ(engine.Take(), "2click");
}

TEST_F(DialogDriverTest, EscapeWithoutACancelButtonDoesNothing) {
  Add(ControlKind::Button);
  driver.Open(model, engine);
  engine.Take();
  Key(keycode::Escape);
  EXPECT_EQ(engine.Take(), "");
}

TEST_F(DialogDriverTest, TypingEditsAtTheCaretByWholeCharacters) {
  Add(ControlKind::TextBox);
  driver.Open(model, engine);
  engine.Take();
  Type("Ab!");
  EXPECT_EQ(model.Controls[0].Text, "Ab!");
  EXPECT_EQ(engine.Take(), "0change 0change 0change");
  driver.KeyDown(CharacterKey, 0);
  driver.KeyTyped("\xc3\xa9");
  Key(keycode::Left);
  Key(keycode::Backspace);
  EXPECT_EQ(model.Controls[0].Text, "Ab\xc3\xa9");
  Key(keycode::Delete);
  EXPECT_EQ(model.Controls[0].Text, "Ab");
  Key(keycode::Home);
  Type("x");
  EXPECT_EQ(model.Controls[0].Text, "xAb");
  Key(keycode::End, ShiftBit);
  Type("y");
  EXPECT_EQ(model.Controls[0].Text, "xy");
}

TEST_F(DialogDriverTest, TheClipboardServesTextBoxes) {
  Add(ControlKind::TextBox).Text = "one two";
  driver.Open(model, engine);
  Key('A', ControlBit);
  Key('X', ControlBit);
  EXPECT_EQ(clipboard, "one two");
  EXPECT_EQ(model.Controls[0].Text, "");
  clipboard = "first\r\nsecond";
  Key('V', ControlBit);
  EXPECT_EQ(model.Controls[0].Text, "first");
}

TEST_F(DialogDriverTest, ABoxTakesLineBreaksAndWalksLines) {
  Add(ControlKind::Box);
  Add(ControlKind::Button).Default = true;
  driver.Open(model, engine);
  engine.Take();
  Type("ab");
  Key(keycode::Enter);
  Type("cd");
  EXPECT_EQ(model.Controls[0].Text, "ab\r\ncd");
  Key(keycode::Up);
  Type("x");
  EXPECT_EQ(model.Controls[0].Text, "abx\r\ncd");
  Key(keycode::Down);
  Key(keycode::Home);
  Key(keycode::Backspace);
  EXPECT_EQ(model.Controls[0].Text, "abxcd");
  EXPECT_EQ(engine.Take().find("click"), std::string::npos);
}

TEST_F(DialogDriverTest, AListWalksAndFindsByFirstLetter) {
  DialogControl& list = Add(ControlKind::List);
  list.Items = {"apple", "Bear", "banana", "cat"};
  driver.Open(model, engine);
  engine.Take();
  Key(keycode::Down);
  EXPECT_EQ(model.Controls[0].ListIndex, 0);
  EXPECT_EQ(engine.Take(), "0click");
  Key(keycode::Up);
  EXPECT_EQ(engine.Take(), "");
  Type("b");
  EXPECT_EQ(model.Controls[0].ListIndex, 1);
  Type("b");
  EXPECT_EQ(model.Controls[0].ListIndex, 2);
  Type("b");
  EXPECT_EQ(model.Controls[0].ListIndex, 1);
  Key(keycode::End);
  EXPECT_EQ(model.Controls[0].ListIndex, 3);
  Key(keycode::PageUp);
  EXPECT_EQ(model.Controls[0].ListIndex, 0);
}

TEST_F(DialogDriverTest, SpaceMarksRowsOfAListOfManyChoices) {
  DialogControl& list = Add(ControlKind::List);
  list.Items = {"a", "b"};
  list.MultiSelect = true;
  driver.Open(model, engine);
  engine.Take();
  Key(keycode::Space);
  EXPECT_EQ(model.Controls[0].ListIndex, 0);
  EXPECT_EQ(model.Controls[0].Selected, (std::vector<bool>{true, false}));
  Key(keycode::Down);
  Key(keycode::Space);
  EXPECT_EQ(model.Controls[0].Selected, (std::vector<bool>{true, true}));
  Key(keycode::Space);
  EXPECT_EQ(model.Controls[0].Selected, (std::vector<bool>{true, false}));
  EXPECT_EQ(engine.Take(), "0click 0click 0click 0click");
}

TEST_F(DialogDriverTest, ChecksToggleAndOptionsExcludeEachOther) {
  Add(ControlKind::Check);
  Add(ControlKind::Option).Value = 1;
  Add(ControlKind::Option);
  Add(ControlKind::Option).Group = 1;
  model.Controls[3].Value = 1;
  driver.Open(model, engine);
  engine.Take();
  Key(keycode::Space);
  EXPECT_EQ(model.Controls[0].Value, 1);
  Key(keycode::Space);
  EXPECT_EQ(model.Controls[0].Value, 0);
  EXPECT_EQ(engine.Take(), "0click 0click");
  Key(keycode::Tab);
  engine.Take();
  Key(keycode::Down);
  EXPECT_EQ(engine.Take(), "1lost 2got 2click");
  EXPECT_EQ(model.Controls[1].Value, 0);
  EXPECT_EQ(model.Controls[2].Value, 1);
  EXPECT_EQ(model.Controls[3].Value, 1);
}

TEST_F(DialogDriverTest, AScrollBarStaysInItsRange) {
  DialogControl& bar = Add(ControlKind::Scroll);
  bar.Min = -10;
  bar.Max = 21;
  bar.SmallChange = 1;
  bar.LargeChange = 8;
  driver.Open(model, engine);
  engine.Take();
  Key(keycode::Right);
  Key(keycode::PageDown);
  EXPECT_EQ(model.Controls[0].Value, 9);
  Key(keycode::End);
  Key(keycode::Right);
  EXPECT_EQ(model.Controls[0].Value, 21);
  EXPECT_EQ(engine.Take(), "0change 0change 0change");
}

TEST_F(DialogDriverTest, AConsumedKeyHasNoEffectAndNoCharacter) {
  Add(ControlKind::TextBox);
  driver.Open(model, engine);
  engine.consumed = 'Y';
  Type("xYz");
  EXPECT_EQ(model.Controls[0].Text, "xz");
}

TEST_F(DialogDriverTest, ADialogThatClosesInAHandlerTakesNothingMore) {
  Add(ControlKind::Check);
  driver.Open(model, engine);
  engine.closeOnClick = &driver;
  const unsigned serial = driver.Serial();
  Key(keycode::Space);
  EXPECT_FALSE(driver.IsOpen());
  EXPECT_NE(driver.Serial(), serial);
  Key(keycode::Tab);
  driver.Press(0);
  EXPECT_EQ(engine.Take(), "0got 0click");
}

TEST_F(DialogDriverTest, AnEmptyDialogSurvivesEveryKey) {
  driver.Open(model, engine);
  for (int16 code = 1; code < 256; ++code) Key(code);
  driver.ChooseRow(0, 0);
  driver.SetText(-1, "x");
  EXPECT_EQ(engine.Take(), "");
}

TEST(KeyCharsTest, KeysAndCharactersAreInverse) {
  for (char c = ' '; c < 127; ++c) {
    const Keystroke key = KeyOf(std::string(1, c));
    EXPECT_NE(key.KeyCode, CharacterKey) << c;
    EXPECT_EQ(CharacterOf(key.KeyCode, key.Shift), std::string(1, c));
  }
  EXPECT_EQ(CharacterOf('A', ControlBit), "");
  EXPECT_EQ(CharacterOf(keycode::F1, 0), "");
  EXPECT_EQ(KeyOf("\xc3\xa9").KeyCode, CharacterKey);
  EXPECT_EQ(LoneKey("alt"), keycode::Alt);
  EXPECT_EQ(LoneKey("F1"), 0);
  EXPECT_EQ(ModifierBit(keycode::Alt), AltBit);
}

TEST_F(DialogDriverTest, APasswordIsPastedButNeverCopied) {
  DialogControl& box = Add(ControlKind::TextBox);
  box.Masked = true;
  box.Text = "secret";
  driver.Open(model, engine);
  clipboard = "new";
  for (const int16 key : {int16{'C'}, int16{'X'}}) {
    Key('A', ControlBit);
    Key(key, ControlBit);
    EXPECT_EQ(clipboard, "new");
    EXPECT_EQ(box.Text, "secret");
  }
  Key('A', ControlBit);
  Key('V', ControlBit);
  EXPECT_EQ(box.Text, "new");
}

}  // namespace
}  // namespace corvid
