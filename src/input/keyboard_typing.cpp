// SPDX-License-Identifier: GPL-3.0-or-later
// The second half of the keyboard: typed characters, and Enter in the entry line.
#include "core/reading.h"
#include "core/text.h"
#include "input/keyboard.h"
#include "input/line_editor.h"

namespace corvid {

namespace {

constexpr int32 HistoryLimit = 30000;  // codes of the entry's text, which is the history of commands
constexpr int32 HistoryCut = 5000;     // dropped when it grows beyond
constexpr int32 EditLimit = 32760;     // codes of a script in the entry box
constexpr int BetweenBeeps = 30;       // milliseconds
constexpr int RunDelay = 1;            // milliseconds: the entry finishes drawing first

bool IsEnter(const std::string& character) {
  return character == "\r";
}

// A character that typing sends to the entry line from wherever the focus is.
bool IsPlain(const std::string& character) {
  return IsEnter(character) || (character.size() == 1 && character[0] >= 32 && character[0] <= 126);
}

}  // namespace

void Keyboard::Form_KeyPress(const std::string& character) {
  KeyboardState& keys = state_.keyboard;
  if (keys.SwallowKeyPress) {
    keys.SwallowKeyPress = false;
    return;
  }
  EchoTyped(character);
  if (menus_.ListOpen()) return;
  RingAtColumn(character);
  if (TypeThrough(character)) return;
  if (BufferFull()) return;
  if (IsEnter(character) && InCommandBuffer()) {
    EnterPressed();
    return;
  }
  LineEditor::Type(FocusedText(), character);
}

// A character is said as it is typed, and with Backspace the one that goes.
void Keyboard::EchoTyped(const std::string& character) {
  const int16 channel = XWindowType();
  if (state_.speech.TypingEcho[static_cast<std::size_t>(channel)] == 0 || IsEnter(character)) return;
  if (character != "\b") return upcalls_.speaker.SpellWord(character, channel);
  const TextModel& text = FocusedText();
  if (menus_.ListOpen() || text.Locked() || state_.keyboard.OutputFocused) return;  // it takes nothing away
  const bool selected = text.SelLength() > 0;  // its first character is enough: all of it would be spelled for long
  const int32 from = selected ? text.SelStart() : PreviousCharacter(text.Text(), text.SelStart());
  const int32 to = selected ? NextCharacter(text.Text(), from) : text.SelStart();
  const std::string gone = text.Text().substr(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from));
  if (!gone.empty()) upcalls_.speaker.SpellWord(gone, channel);
}

void Keyboard::RingAtColumn(const std::string& character) {
  if (state_.options.MarginBell <= 0 || state_.keyboard.OutputFocused) return;
  if (character.size() != 1 || character[0] <= 32 || character[0] >= 126) return;
  const TextModel& entry = state_.buffers.EntryBox;
  if (entry.SelStart() - LineStart(entry.Text(), entry.SelStart()) != state_.options.MarginBell - 1) return;
  platform_.face.Beep();
  // Two beeps, told apart by ear.
  if (!secondBeep_)
    secondBeep_ = platform_.timers.Create([this] {
      secondBeep_->SetEnabled(false);
      platform_.face.Beep();
    });
  secondBeep_->SetInterval(BetweenBeeps);
  secondBeep_->SetEnabled(true);
}

// Typing while the output (or a script that cannot be changed) has the focus goes on in the entry line.
bool Keyboard::TypeThrough(const std::string& character) {
  TextModel& entry = state_.buffers.EntryBox;
  if (!IsPlain(character) || (!state_.keyboard.OutputFocused && !entry.Locked())) return false;
  upcalls_.speaker.SpeakOut(" Entry", Channel::Entry, 0);
  if (!InCommandBuffer()) buffers_.MoveBuffers(buffer::EntryLine);
  platform_.face.SetFocus(MainFocus::Entry);
  entry.SetSelStart(entry.Length());
  if (IsEnter(character)) {
    EnterPressed();
  } else {
    entry.SetSelText(character);
  }
  return true;
}

bool Keyboard::BufferFull() {
  if (InCommandBuffer() || state_.keyboard.OutputFocused) return false;
  if (state_.buffers.EntryBox.Length() < EditLimit) return false;
  upcalls_.speaker.Answer("Buffer full.", Channel::System);
  platform_.face.Beep();
  return true;
}

void Keyboard::PressEnter() {
  if (InCommandBuffer()) EnterPressed();
}

void Keyboard::EnterPressed() {
  KeyboardState& keys = state_.keyboard;
  std::string line = TakeEntryLine();
  if (line.starts_with(">>")) {
    keys.EchoPrefix = true;
    line.erase(0, 2);
  } else if (line.starts_with("<<")) {
    keys.EchoPrefix = false;
    line.erase(0, 2);
  }
  line = PartByPattern(std::move(line));
  TextModel& entry = state_.buffers.EntryBox;
  entry.SetSelStart(entry.Length());
  entry.SetSelText("\r\n");
  DropRepeatedLine();
  keys.EntryLine = keys.EchoPrefix ? state_.options.PassThruChar + line : line;
  upcalls_.jobs.StartTimer1(timeraction::RunEntryLine, RunDelay);
  ShortenHistory();
}

// The line under the caret. An older line is copied to the end first, so that Enter on it sends it once more.
std::string Keyboard::TakeEntryLine() {
  TextModel& entry = state_.buffers.EntryBox;
  std::string line = CurrentLine(entry.Text(), entry.SelStart() + 1);
  if (entry.SelStart() != entry.Length()) {
    const bool open = entry.Length() > 0 && !entry.Text().ends_with("\n");
    entry.SetSelStart(entry.Length());
    entry.SetSelText(open ? "\r\n" + line : line);
  }
  return line;
}

// Characters that the session has named part the line as the separator does, unless it is a command or goes unchanged.
std::string Keyboard::PartByPattern(std::string line) const {
  const OptionsState& options = state_.options;
  if (!options.ExpandCommandLineVars || line.starts_with(options.PassThruChar)) return line;
  if (LTrim(line).starts_with(options.CommandChar)) return line;
  for (const char c : state_.sessions.PassThruPattern[state_.script.CurrentSocket])
    line = Replace(std::move(line), std::string(1, c), options.CommandSeparator);
  return line;
}

// The history holds no line twice in a row.
void Keyboard::DropRepeatedLine() {
  TextModel& entry = state_.buffers.EntryBox;
  const std::string& text = entry.Text();
  const int32 lastStart = LineStart(text, entry.Length() - 2);
  if (lastStart == 0) return;
  const int32 previousStart = LineStart(text, lastStart - 2);
  const std::string_view all = text;
  const auto from = [&](int32 at) { return all.substr(static_cast<std::size_t>(at)); };
  if (from(previousStart).substr(0, static_cast<std::size_t>(lastStart - previousStart)) != from(lastStart)) return;
  entry.Select(lastStart, entry.Length());
  entry.SetSelText("");
}

void Keyboard::ShortenHistory() {
  TextModel& entry = state_.buffers.EntryBox;
  if (entry.Length() <= HistoryLimit) return;
  entry.KeepLast(entry.Length() - HistoryCut);
  entry.SetSelStart(entry.Length());
}

}  // namespace corvid
