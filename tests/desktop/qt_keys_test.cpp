// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/desktop/qt_keys.h"

#include <gtest/gtest.h>

#include <QKeyEvent>

#include "core/keys.h"
#include "platform/key_chars.h"

namespace corvid {
namespace {

QtKey Press(int key, Qt::KeyboardModifiers held = Qt::NoModifier, const QString& text = {}, quint32 place = 0) {
  return ReadKey(QKeyEvent(QEvent::KeyPress, key, held, place, 0, 0, text));
}

TEST(QtKeys, LettersAreTheirCapitals) {
  const QtKey key = Press(Qt::Key_A, Qt::NoModifier, "a");
  EXPECT_EQ('A', key.KeyCode);
  EXPECT_EQ(0, key.Shift);
  EXPECT_EQ("a", key.Text);
}

TEST(QtKeys, ControlAndAltTypeNothing) {
  EXPECT_EQ("", Press(Qt::Key_A, Qt::ControlModifier, "\x01").Text);
  EXPECT_EQ("", Press(Qt::Key_A, Qt::AltModifier, "a").Text);
  EXPECT_EQ(ControlBit | AltBit, Press(Qt::Key_A, Qt::ControlModifier | Qt::AltModifier).Shift);
}

TEST(QtKeys, EnterAndBackspaceTypeTheirCharacters) {
  EXPECT_EQ("\r", Press(Qt::Key_Return, Qt::NoModifier, "\r").Text);
  EXPECT_EQ("\r", Press(Qt::Key_Enter, Qt::KeypadModifier, "\r").Text);
  EXPECT_EQ("\b", Press(Qt::Key_Backspace, Qt::NoModifier, "\b").Text);
  EXPECT_EQ("", Press(Qt::Key_Escape, Qt::NoModifier, "\x1b").Text);
  EXPECT_EQ("", Press(Qt::Key_Tab, Qt::NoModifier, "\t").Text);
  EXPECT_EQ("", Press(Qt::Key_Delete, Qt::NoModifier, "\x7f").Text);
}

TEST(QtKeys, ALoneModifierIsInItsOwnShiftWhileItIsDown) {
  EXPECT_EQ(ControlBit, Press(Qt::Key_Control, Qt::NoModifier).Shift);
  EXPECT_EQ(keycode::Control, Press(Qt::Key_Control).KeyCode);
  const QtKey up = ReadKey(QKeyEvent(QEvent::KeyRelease, Qt::Key_Control, Qt::ControlModifier));
  EXPECT_EQ(0, up.Shift);
  EXPECT_EQ(keycode::Alt, Press(Qt::Key_Alt).KeyCode);
  EXPECT_EQ(keycode::Applications, Press(Qt::Key_Menu).KeyCode);
}

TEST(QtKeys, ShiftTabIsTabWithShift) {
  const QtKey key = Press(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(keycode::Tab, key.KeyCode);
  EXPECT_EQ(ShiftBit, key.Shift);
}

TEST(QtKeys, UpperRowKeysAreDigitsOnEveryLayout) {
  const QtKey german = Press(Qt::Key_Slash, Qt::ShiftModifier, "/", 16);
  EXPECT_EQ('7', german.KeyCode);
  EXPECT_EQ("/", german.Text);
  EXPECT_EQ('0', Press(Qt::Key_Agrave, Qt::NoModifier, QString(QChar(0xE0)), 19).KeyCode) << "French";
  EXPECT_EQ('A', Press(Qt::Key_A, Qt::NoModifier, "a", 15).KeyCode) << "a letter is a letter anywhere";
}

TEST(QtKeys, SignsHaveTheirKeys) {
  EXPECT_EQ(187, Press(Qt::Key_Plus, Qt::ShiftModifier, "+", 21).KeyCode);
  EXPECT_EQ(220, Press(Qt::Key_Backslash, Qt::NoModifier, "\\", 51).KeyCode);
  EXPECT_EQ(CharacterKey, Press(Qt::Key_Udiaeresis, Qt::NoModifier, QString(QChar(0xFC)), 34).KeyCode);
}

TEST(QtKeys, TheNumberPadHasKeysOfItsOwn) {
  EXPECT_EQ(101, Press(Qt::Key_5, Qt::KeypadModifier, "5", 84).KeyCode);
  EXPECT_EQ(110, Press(Qt::Key_Comma, Qt::KeypadModifier, ",", 91).KeyCode);
  EXPECT_EQ(107, Press(Qt::Key_Plus, Qt::KeypadModifier, "+", 86).KeyCode);
  EXPECT_EQ(keycode::Up, Press(Qt::Key_Up, Qt::KeypadModifier, "", 80).KeyCode) << "without NumLock";
}

TEST(QtKeys, FunctionKeys) {
  EXPECT_EQ(keycode::F1, Press(Qt::Key_F1).KeyCode);
  EXPECT_EQ(keycode::F12, Press(Qt::Key_F12).KeyCode);
}

TEST(QtKeys, KeysOfNoUseAreNone) {
  EXPECT_EQ(0, Press(Qt::Key_VolumeUp).KeyCode);
  EXPECT_EQ(0, Press(Qt::Key_Dead_Acute).KeyCode);
  EXPECT_EQ(0, Press(Qt::Key_AltGr).KeyCode);
}

}  // namespace
}  // namespace corvid
