// SPDX-License-Identifier: GPL-3.0-or-later
#include "input/line_editor.h"

#include <gtest/gtest.h>

#include "core/keys.h"

namespace corvid {
namespace {

class LineEditorTest : public ::testing::Test {
 protected:
  void Begin(const std::string& content, int32 caret) {
    text.SetLocked(false);
    text.SetText(content);
    text.SetSelStart(caret);
  }
  int32 After(int16 KeyCode, int16 Shift = 0) {
    EXPECT_TRUE(LineEditor::EditKey(text, KeyCode, Shift));
    return text.Caret();
  }
  TextModel text;
};

TEST_F(LineEditorTest, ArrowsStepOverWholeCharactersAndBreaks) {
  Begin("a\xC3\xA9\r\nb", 0);
  EXPECT_EQ(After(keycode::Right), 1);
  EXPECT_EQ(After(keycode::Right), 3);
  EXPECT_EQ(After(keycode::Right), 5);
  EXPECT_EQ(After(keycode::Right), 6);
  EXPECT_EQ(After(keycode::Right), 6);
  EXPECT_EQ(After(keycode::Left), 5);
  EXPECT_EQ(After(keycode::Left), 3);
  EXPECT_EQ(After(keycode::Left), 1);
  EXPECT_EQ(After(keycode::Left), 0);
  EXPECT_EQ(After(keycode::Left), 0);
}

TEST_F(LineEditorTest, UpAndDownKeepTheColumnWhereTheLineIsLongEnough) {
  Begin("first\r\nno\r\nthird\r\n", 4);
  EXPECT_EQ(After(keycode::Down), 9) << "the end of the short line";
  EXPECT_EQ(After(keycode::Down), 13);
  EXPECT_EQ(After(keycode::Down), 18) << "the empty line behind the last break";
  EXPECT_EQ(After(keycode::Down), 18);
  EXPECT_EQ(After(keycode::Up), 11);
  Begin("first\r\nno", 2);
  EXPECT_EQ(After(keycode::Up), 2) << "there is no line above";
}

TEST_F(LineEditorTest, HomeAndEndOfLineAndText) {
  Begin("first\r\nsecond", 9);
  EXPECT_EQ(After(keycode::Home), 7);
  EXPECT_EQ(After(keycode::End), 13);
  EXPECT_EQ(After(keycode::Home, ControlBit), 0);
  EXPECT_EQ(After(keycode::End), 5);
  EXPECT_EQ(After(keycode::End, ControlBit), 13);
}

TEST_F(LineEditorTest, PagesAreTwentyTwoLines) {
  std::string lines;
  for (int i = 0; i < 50; ++i) lines += "x\r\n";  // line n starts at 3n
  Begin(lines, 0);
  EXPECT_EQ(After(keycode::PageDown), 66);
  EXPECT_EQ(After(keycode::PageDown), 132);
  EXPECT_EQ(After(keycode::PageUp), 66);
  EXPECT_EQ(After(keycode::PageUp), 0);
  EXPECT_EQ(After(keycode::PageUp), 0);
  text.SetSelStart(148);
  EXPECT_EQ(After(keycode::PageDown), 0) << "below the last page the caret goes to the start";
}

TEST_F(LineEditorTest, ControlMovesByWords) {
  Begin("go north now", 0);
  EXPECT_EQ(After(keycode::Right, ControlBit), 3);
  EXPECT_EQ(After(keycode::Right, ControlBit), 9);
  EXPECT_EQ(After(keycode::Left, ControlBit), 3);
}

TEST_F(LineEditorTest, ShiftSelectsFromWhereItBegan) {
  Begin("abcdef", 3);
  After(keycode::Right, ShiftBit);
  EXPECT_EQ(text.SelText(), "d");
  After(keycode::Left, ShiftBit);
  EXPECT_EQ(text.SelLength(), 0);
  After(keycode::Left, ShiftBit);
  After(keycode::Left, ShiftBit);
  EXPECT_EQ(text.SelText(), "bc");
  EXPECT_TRUE(text.CaretAtStart());
  After(keycode::Right, ShiftBit);
  EXPECT_EQ(text.SelText(), "c");
  After(keycode::End, ShiftBit | ControlBit);
  EXPECT_EQ(text.SelText(), "def") << "the anchor stays";
  After(keycode::Right);
  EXPECT_EQ(text.SelLength(), 0);
}

TEST_F(LineEditorTest, DeleteTakesTheSelectionACharacterOrAWord) {
  Begin(
      "a\xC3\xA9"
      "bc\r\nnext word",
      1);
  After(keycode::Delete);
  EXPECT_EQ(text.Text(), "abc\r\nnext word") << "both bytes of the letter";
  text.SetSelStart(3);
  After(keycode::Delete);
  EXPECT_EQ(text.Text(), "abcnext word") << "the whole break";
  text.Select(3, 0);
  After(keycode::Delete);
  EXPECT_EQ(text.Text(), "next word");
  After(keycode::Delete, ControlBit);
  EXPECT_EQ(text.Text(), "word");
  text.SetSelStart(4);
  After(keycode::Delete);
  EXPECT_EQ(text.Text(), "word");
}

TEST_F(LineEditorTest, OtherKeysHaveNoEffect) {
  Begin("abc", 1);
  EXPECT_FALSE(LineEditor::EditKey(text, 'A', 0));
  EXPECT_FALSE(LineEditor::EditKey(text, keycode::Left, AltBit));
  EXPECT_FALSE(LineEditor::EditKey(text, keycode::Enter, 0));
  EXPECT_EQ(text.Text(), "abc");
  EXPECT_EQ(text.Caret(), 1);
}

TEST_F(LineEditorTest, TypingReplacesTheSelection) {
  Begin("go north", 3);
  text.Select(3, 8);
  LineEditor::Type(text, "\xC3\xA9");
  EXPECT_EQ(text.Text(), "go \xC3\xA9");
  EXPECT_EQ(text.Caret(), 5);
  LineEditor::Type(text, "\r");
  EXPECT_EQ(text.Text(), "go \xC3\xA9\r\n");
  LineEditor::Type(text, "\x1B");
  LineEditor::Type(text, "");
  EXPECT_EQ(text.Text(), "go \xC3\xA9\r\n") << "a control character types nothing";
}

TEST_F(LineEditorTest, BackspaceTakesTheSelectionOrAWholeCharacter) {
  Begin("x\xE2\x82\xAC\r\n", 6);
  LineEditor::Type(text, "\b");
  EXPECT_EQ(text.Text(), "x\xE2\x82\xAC");
  LineEditor::Type(text, "\b");
  EXPECT_EQ(text.Text(), "x");
  Begin("abcd", 0);
  text.Select(1, 3);
  LineEditor::Type(text, "\b");
  EXPECT_EQ(text.Text(), "ad");
  text.SetSelStart(0);
  LineEditor::Type(text, "\b");
  EXPECT_EQ(text.Text(), "ad");
}

TEST_F(LineEditorTest, ALockedTextIsReadButNotChanged) {
  Begin("abc", 1);
  text.SetLocked(true);
  EXPECT_EQ(After(keycode::Right), 2);
  EXPECT_TRUE(LineEditor::EditKey(text, keycode::Delete, 0));
  LineEditor::Type(text, "x");
  LineEditor::Type(text, "\b");
  EXPECT_EQ(text.Text(), "abc");
}

}  // namespace
}  // namespace corvid
