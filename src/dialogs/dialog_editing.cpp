// SPDX-License-Identifier: GPL-3.0-or-later
// Typing and moving in a dialog's edit fields, by ear. A screen reader follows the caret by itself, so all of this is
// for players who have none.
#include <utility>

#include "core/keys.h"
#include "core/reading.h"
#include "dialogs/gen_dialog.h"
#include "platform/control_text.h"
#include "sessions/word_echo.h"

namespace corvid {

namespace {

constexpr int SettleDelay = 50;  // milliseconds until the key has had its effect
constexpr int16 TextBoxFamily = 1000, BoxFamily = 2000;
constexpr const char* Star = "*";  // in place of each character that is not to be heard

// What is spoken once the key has had its effect; 0 for none.
int16 JobOf(int16 KeyCode, int16 Shift) {
  const bool arrow = KeyCode >= keycode::Left && KeyCode <= keycode::Down;
  const bool moves = arrow || KeyCode == keycode::Home || KeyCode == keycode::End || KeyCode == keycode::PageUp ||
                     KeyCode == keycode::PageDown;
  if (!moves || (Shift & AltBit) != 0) return 0;
  if ((Shift & ShiftBit) != 0) return timeraction::SpeakSelection;
  const bool sideways = KeyCode == keycode::Left || KeyCode == keycode::Right;
  if ((Shift & ControlBit) != 0) return sideways ? timeraction::SpeakWord : timeraction::SpeakLine;
  return sideways || KeyCode == keycode::Home || KeyCode == keycode::End ? int16{0} : timeraction::SpeakLine;
}

// A character below 65,536 as UTF-8.
std::string Utf8Of(int16 code) {
  if (code < 0x80) return std::string(1, static_cast<char>(code));
  const auto tail = static_cast<char>(0x80 | (code & 0x3F));
  if (code < 0x800) return {static_cast<char>(0xC0 | code >> 6), tail};
  return {static_cast<char>(0xE0 | code >> 12), static_cast<char>(0x80 | (code >> 6 & 0x3F)), tail};
}

}  // namespace

bool GenDialog::SpeaksEditing() const {
  constexpr int16 screenReader = 1, alsoReader = 2, alsoReaderToo = 4;
  const int16 type = speech_.SpeechType[Channel::System];
  return type != screenReader && type != alsoReader && type != alsoReaderToo;
}

void GenDialog::SpeakKey(const DialogControl& field, int16 KeyCode, int16 Shift) {
  if (!SpeaksEditing()) return;
  if (const int16 job = JobOf(KeyCode, Shift); job != 0) {
    const int16 family = field.Kind == ControlKind::TextBox ? TextBoxFamily : BoxFamily;
    upcalls_.jobs.StartTimer1(static_cast<int16>(family + field.Index * 10 + job), SettleDelay);
    return;
  }
  if (Shift != 0) return;
  const int32 caret = field.SelStart;
  if (KeyCode == keycode::Home || KeyCode == keycode::End) {
    SayControl(KeyCode == keycode::Home ? "Home" : "End");
  } else if (KeyCode == keycode::Left || KeyCode == keycode::Backspace) {
    SpeakSpot(field, PreviousCharacter(field.Text, caret), caret);
  } else if (KeyCode == keycode::Right) {
    const int32 next = NextCharacter(field.Text, caret);
    SpeakSpot(field, next, NextCharacter(field.Text, next));
  } else if (KeyCode == keycode::Delete) {
    SpeakSpot(field, caret, NextCharacter(field.Text, caret));
  }
}

void GenDialog::SpeakSpot(const DialogControl& field, int32 from, int32 to) {
  if (to <= from || speech_.TypingEcho[Channel::System] == 0) return;
  const auto start = static_cast<std::size_t>(from);
  const std::string spot = field.Text.substr(start, static_cast<std::size_t>(to) - start);
  upcalls_.speaker.SpellWord(field.Masked ? Star : spot, Channel::System);
}

void GenDialog::EchoTyped(const DialogControl& field, int16 code) {
  constexpr int16 firstPrintable = 32;
  if (code < firstPrintable || !SpeaksEditing() || speech_.TypingEcho[Channel::System] == 0) return;
  upcalls_.speaker.SpellWord(field.Masked ? Star : Utf8Of(code), Channel::System);
}

void GenDialog::SpeakField(bool textControl, int16 index, int16 job) {
  if (!GDOpen) return;
  const DialogControl& field = Control(textControl ? ControlKind::TextBox : ControlKind::Box, index);
  if (field.Masked) return SayControl(ShownText(field));
  if (job == timeraction::SpeakWord) {
    const WordEcho echo = EchoWord(field.Text, field.SelStart);
    const std::string before = std::exchange(lastLine_, echo.Line);
    SayControl(!before.empty() && before != echo.Line ? echo.Line : echo.Word);
  } else if (job == timeraction::SpeakLine) {
    SayControl(CurrentLine(field.Text, field.SelStart + 1));
  } else if (job == timeraction::SpeakSelection) {
    const std::string selected =
        field.Text.substr(static_cast<std::size_t>(field.SelStart), static_cast<std::size_t>(field.SelLength));
    const std::string before = std::exchange(lastSelected_, selected);
    SayControl(NewlySelected(before, selected));
  }
}

}  // namespace corvid
