// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/desktop/qt_keys.h"

#include <QKeyEvent>
#include <algorithm>
#include <array>

#include "core/keys.h"
#include "platform/key_chars.h"

namespace corvid {

namespace {

struct KeyPair {
  int Key;
  int16 KeyCode;
};

constexpr std::array<KeyPair, 33> NamedKeys{{
    {Qt::Key_Return, keycode::Enter},
    {Qt::Key_Enter, keycode::Enter},
    {Qt::Key_Backspace, keycode::Backspace},
    {Qt::Key_Tab, keycode::Tab},
    {Qt::Key_Backtab, keycode::Tab},
    {Qt::Key_Clear, 12},
    {Qt::Key_Shift, keycode::Shift},
    {Qt::Key_Control, keycode::Control},
    {Qt::Key_Alt, keycode::Alt},
    {Qt::Key_Meta, 91},
    {Qt::Key_Super_L, 91},
    {Qt::Key_Super_R, 92},
    {Qt::Key_Menu, keycode::Applications},
    {Qt::Key_Pause, 19},
    {Qt::Key_CapsLock, keycode::Caps},
    {Qt::Key_NumLock, 144},
    {Qt::Key_ScrollLock, 145},
    {Qt::Key_Escape, keycode::Escape},
    {Qt::Key_Space, keycode::Space},
    {Qt::Key_PageUp, keycode::PageUp},
    {Qt::Key_PageDown, keycode::PageDown},
    {Qt::Key_End, keycode::End},
    {Qt::Key_Home, keycode::Home},
    {Qt::Key_Left, keycode::Left},
    {Qt::Key_Up, keycode::Up},
    {Qt::Key_Right, keycode::Right},
    {Qt::Key_Down, keycode::Down},
    {Qt::Key_Print, 44},
    {Qt::Key_SysReq, 44},
    {Qt::Key_Insert, keycode::Insert},
    {Qt::Key_Delete, keycode::Delete},
    {Qt::Key_Cancel, 3},
    {Qt::Key_Help, 47},
}};

constexpr std::array<KeyPair, 6> NumberPadKeys{{
    {Qt::Key_Asterisk, 106},
    {Qt::Key_Plus, 107},
    {Qt::Key_Minus, 109},
    {Qt::Key_Period, 110},
    {Qt::Key_Comma, 110},  // the same key where numbers are written with a comma
    {Qt::Key_Slash, 111},
}};

template <std::size_t N>
int16 Find(const std::array<KeyPair, N>& table, int key) {
  const auto row = std::find_if(table.begin(), table.end(), [&](const KeyPair& pair) { return pair.Key == key; });
  return row == table.end() ? int16{0} : row->KeyCode;
}

// X11 and Wayland number the keys of the upper row 10 to 19, from "1" to "0".
int16 UpperRowDigit(const QKeyEvent& event) {
  constexpr quint32 first = 10;
  constexpr quint32 last = 19;
  const quint32 place = event.nativeScanCode();
  if (place < first || place > last || event.key() == 0 || event.key() > 0xFFFF) return 0;
  if (event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z) return 0;
  return place == last ? int16{'0'} : static_cast<int16>('1' + static_cast<int>(place - first));
}

int16 CodeOf(const QKeyEvent& event) {
  const int key = event.key();
  const int16 named = Find(NamedKeys, key);
  if (named != 0) return named;
  if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return static_cast<int16>(keycode::F1 + (key - Qt::Key_F1));
  if ((event.modifiers() & Qt::KeypadModifier) != 0) {
    if (key >= Qt::Key_0 && key <= Qt::Key_9) return static_cast<int16>(96 + (key - Qt::Key_0));
    const int16 pad = Find(NumberPadKeys, key);
    if (pad != 0) return pad;
  }
  const int16 digit = UpperRowDigit(event);
  if (digit != 0) return digit;
  if (key > 0x20 && key < 0x7F) return KeyOf(std::string(1, static_cast<char>(key))).KeyCode;
  return event.text().isEmpty() ? int16{0} : CharacterKey;
}

int16 ShiftOf(const QKeyEvent& event, int16 KeyCode) {
  const Qt::KeyboardModifiers held = event.modifiers();
  int shift = 0;
  if ((held & Qt::ShiftModifier) != 0 || event.key() == Qt::Key_Backtab) shift |= ShiftBit;
  if ((held & Qt::ControlModifier) != 0) shift |= ControlBit;
  if ((held & Qt::AltModifier) != 0) shift |= AltBit;
  const int16 own = ModifierBit(KeyCode);
  shift = event.type() == QEvent::KeyPress ? shift | own : shift & ~own;
  return static_cast<int16>(shift);
}

std::string TextOf(const QKeyEvent& event, const QtKey& key) {
  if ((key.Shift & (ControlBit | AltBit)) != 0) return {};
  if (key.KeyCode == keycode::Enter) return "\r";
  if (key.KeyCode == keycode::Backspace) return "\b";
  const QString text = event.text();
  if (text.isEmpty() || text[0].unicode() < 0x20 || text[0].unicode() == 0x7F) return {};
  return text.toStdString();
}

}  // namespace

QtKey ReadKey(const QKeyEvent& event) {
  QtKey key;
  key.KeyCode = CodeOf(event);
  if (key.KeyCode == 0) return key;
  key.Shift = ShiftOf(event, key.KeyCode);
  key.Text = TextOf(event, key);
  return key;
}

}  // namespace corvid
