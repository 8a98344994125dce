// SPDX-License-Identifier: GPL-3.0-or-later
#include "input/keyboard.h"

#include "core/keys.h"
#include "core/reading.h"
#include "core/text.h"
#include "core/trap.h"
#include "input/line_editor.h"

namespace corvid {

namespace {

constexpr int16 NoSession = CurrentSession;
constexpr float SaveEverySeconds = 300;
constexpr int EchoDelay = 50;  // milliseconds until a moved caret is spoken: the caret must have settled

bool IsArrow(int16 KeyCode) {
  return KeyCode >= keycode::Left && KeyCode <= keycode::Down;
}

}  // namespace

Keyboard::Keyboard(KeyboardStates states, Symbols& symbols, Scanner& scanner, Buffers& buffers, Saving& saving,
                   TimerRoutines& timers, Menus& menus, Platform& platform, Upcalls& upcalls)
    : state_(states),
      symbols_(symbols),
      scanner_(scanner),
      buffers_(buffers),
      saving_(saving),
      timers_(timers),
      menus_(menus),
      platform_(platform),
      upcalls_(upcalls) {}

void Keyboard::KeyDown(int16 KeyCode, int16 Shift) {
  Trap trap{upcalls_.errors, "form_keydown", {Keyname(KeyCode, Shift)}};
  trap.Step([&] { Form_KeyDown(KeyCode, Shift); });
}

void Keyboard::KeyTyped(const std::string& character) {
  Trap trap{upcalls_.errors, "form_keypress", {character}};
  trap.Step([&] { Form_KeyPress(character); });
}

void Keyboard::KeyUp(int16 KeyCode, int16 Shift) {
  Trap trap{upcalls_.errors, "form-keyup", {Keyname(KeyCode, Shift)}};
  trap.Step([&] { Form_KeyUp(KeyCode); });
}

TextModel& Keyboard::FocusedText() {
  return state_.keyboard.OutputFocused ? state_.sessions.OutputWindow(state_.script.CurrentSocket)
                                       : state_.buffers.EntryBox;
}

bool Keyboard::InCommandBuffer() const {
  return state_.buffers.CurrentBuffer == buffer::EntryLine;
}

int16 Keyboard::XWindowType() const {
  if (state_.keyboard.OutputFocused) return Channel::Output;
  return InCommandBuffer() ? Channel::Entry : Channel::Edit;
}

void Keyboard::Form_KeyDown(int16 KeyCode, int16 Shift) {
  KeyboardState& keys = state_.keyboard;
  keys.SwallowKeyPress = false;
  if (KeyCode == keycode::F4 && Shift == AltBit) {
    keys.LastKeyCode = KeyCode;  // Alt was not tapped alone: a refused end opens no menu
    upcalls_.screens.quit(false);
    return;
  }
  if (!keys.KeysTaken) SaveNowAndThen();
  keys.LastKeyCode = KeyCode;
  keys.LastShift = Shift;
  if (keys.KeysTaken) {
    keys.SwallowKeyPress = true;
    keys.TakenKeys.push_back({KeyCode, Shift});
    return;
  }
  if (KeyCode == keycode::Alt) keys.AltTabbed = false;
  InterruptSpeech();
  if (menus_.ListOpen()) {                                      // all keys are the list's, macros too
    keys.SwallowKeyPress = menus_.ListKeyDown(KeyCode, Shift);  // PUMP
    return;
  }
  if (RunMacro(KeyCode, Shift) || BuiltInKey(KeyCode, Shift)) {
    keys.SwallowKeyPress = true;
    return;
  }
  MoveAndSpeak(KeyCode, Shift);
}

// Scripts are saved by the way while the player types, never while nobody is there.
void Keyboard::SaveNowAndThen() {
  if (!state_.options.AutoSave) return;
  const auto now = static_cast<float>(platform_.clock.SecondsSinceMidnight());
  float& last = state_.keyboard.LastAutoSave;
  if (now < last) last = 0;  // midnight has passed
  if (now - last <= SaveEverySeconds) return;
  saving_.AutoSave();
  last = now;
}

void Keyboard::InterruptSpeech() {
  const auto type = static_cast<std::size_t>(XWindowType());
  if (state_.speech.InterruptOwn[type] != 0) upcalls_.speaker.StopSpeaking(XWindowType());
  if (state_.speech.InterruptOthers[type] == 0) return;
  for (int16 channel = Channel::Incoming; channel <= Channel::User; ++channel)
    if (state_.speech.NotInterruptedByOthers[static_cast<std::size_t>(channel)] == 0)
      upcalls_.speaker.StopSpeaking(channel);
}

bool Keyboard::RunMacro(int16 KeyCode, int16 Shift) {
  const int16 session = state_.script.CurrentSocket;
  if (state_.sessions.KeyEnabled[session] == 0) return false;
  const int16 row = symbols_.FindMacro(KeyCode, Shift, state_.script.SocketOwner[session], true);
  if (row == 0) return false;
  const std::string body = Trim(state_.script.MacroValues[row]);
  const int16 definedIn = state_.script.MacroBuffers[row];
  int16 options = option::Interactive;
  int16 outchannel = NoSession;
  std::string ErrorDescription;
  Parameters rvar;
  state_.script.CommandDepth = 0;
  upcalls_.commands.ProcessCommand(body, options, ErrorDescription, rvar, outchannel);  // PUMP: row is dead from here
  upcalls_.errors.DisplayErrorFile(ErrorDescription, definedIn);
  return true;
}

bool Keyboard::BuiltInKey(int16 KeyCode, int16 Shift) {
  if (KeyCode == keycode::Tab && (Shift & (ControlBit | AltBit)) == 0) {
    ToggleFocus();
    return true;
  }
  if (Shift == ControlBit) return ControlKey(KeyCode);
  return false;
}

bool Keyboard::ControlKey(int16 KeyCode) {
  switch (KeyCode) {
    case 'A':
      SelectAll();
      return true;
    case 'C':
      Copy(false);
      return true;
    case 'X':
      Copy(true);
      return true;
    case 'V':
      Paste();
      return true;
    case keycode::F4:
      if (InCommandBuffer()) return false;
      buffers_.CloseBuffer(state_.buffers.CurrentBuffer);
      return true;
    case keycode::Tab:
      if (state_.keyboard.OutputFocused) platform_.face.SetFocus(MainFocus::Entry);
      buffers_.SaveCurrentBuffer();
      buffers_.FindNextBuffer();
      return true;
    default:
      return false;
  }
}

// Kept: the words that are spoken stand as they are, misspelled or not.
void Keyboard::SelectAll() {
  TextModel& text = FocusedText();
  text.Select(0, text.Length());
  upcalls_.speaker.SpeakOut("Slect all", XWindowType(), 0);
}

void Keyboard::Copy(bool cut) {
  TextModel& text = FocusedText();
  if (text.SelLength() == 0) {
    if (!cut) upcalls_.speaker.Answer("Nothing Copied", Channel::Incoming);
    return;
  }
  platform_.face.SetClipboardText(text.SelText());
  if (!cut) {
    upcalls_.speaker.Answer("Copied", Channel::Incoming);
  } else if (!text.Locked()) {
    text.SetSelText("");
  }
}

// Text of several lines is a script and runs at once; nothing of it is put into the entry.
void Keyboard::Paste() {
  TextModel& entry = state_.buffers.EntryBox;
  if (state_.keyboard.OutputFocused) platform_.face.SetFocus(MainFocus::Entry);
  const std::string text = platform_.face.ClipboardText();
  if (text.find_first_of("\r\n") == std::string::npos) {
    if (!entry.Locked()) entry.SetSelText(text);
    return;
  }
  int16 outchannel = CurrentSession;
  timers_.SetCaretAfterPaste(scanner_.ExecuteBuffer(text, 0, outchannel));  // PUMP
  upcalls_.jobs.StartTimer1(timeraction::PlaceCaret, EchoDelay);
  upcalls_.speaker.Answer("OK", Channel::Incoming);
}

void Keyboard::ToggleFocus() {
  platform_.face.SetFocus(state_.keyboard.OutputFocused ? MainFocus::Entry : MainFocus::Output);
}

// The caret moves first; what it landed on is spoken after.
void Keyboard::MoveAndSpeak(int16 KeyCode, int16 Shift) {
  if (KeyCode == keycode::Backspace) return;  // comes as a typed character
  TextModel& text = FocusedText();
  if (!LineEditor::EditKey(text, KeyCode, Shift)) return;
  if (KeyCode == keycode::Delete) {
    if (Shift == 0) SpeakSpot();
    return;
  }
  const int16 channel = XWindowType();
  if ((Shift & ShiftBit) != 0) {
    upcalls_.jobs.StartTimer1(timeraction::SpeakSelection, EchoDelay);
  } else if (Shift == ControlBit && (KeyCode == keycode::Home || KeyCode == keycode::End)) {
    upcalls_.speaker.StopSpeaking(channel);
    upcalls_.speaker.SpeakOut(KeyCode == keycode::Home ? "Top" : "Bottom", channel, 0);
    upcalls_.speaker.SpeakOut(CurrentLine(text.Text(), text.SelStart() + 1), channel, 0);
  } else if (Shift == ControlBit && (KeyCode == keycode::Left || KeyCode == keycode::Right)) {
    if (channel != Channel::Entry || state_.options.EchoMoveByWord)
      upcalls_.jobs.StartTimer1(timeraction::SpeakWord, EchoDelay);
  } else if (KeyCode == keycode::Left || KeyCode == keycode::Right) {
    SpeakSpot();
  } else if (KeyCode == keycode::Home || KeyCode == keycode::End) {
    upcalls_.speaker.StopSpeaking(channel);
    upcalls_.speaker.SpeakOut(KeyCode == keycode::Home ? "Home" : "End", channel, 0);
  } else if (IsArrow(KeyCode) || KeyCode == keycode::PageUp || KeyCode == keycode::PageDown) {
    upcalls_.jobs.StartTimer1(timeraction::SpeakLine, EchoDelay);
  }
}

void Keyboard::SpeakSpot() {
  const int16 channel = XWindowType();
  if (state_.speech.TypingEcho[static_cast<std::size_t>(channel)] == 0) return;
  const TextModel& text = FocusedText();
  const int32 from = text.SelStart();
  const int32 to = NextCharacter(text.Text(), from);
  if (to > from)
    upcalls_.speaker.SpellWord(text.Text().substr(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from)),
                               channel);
}

void Keyboard::Form_KeyUp(int16 KeyCode) {
  KeyboardState& keys = state_.keyboard;
  if (KeyCode == keycode::Tab && keys.LastShift == AltBit) keys.AltTabbed = true;
  if (KeyCode == keycode::Control && keys.LastKeyCode == keycode::Control && keys.LastShift == ControlBit)
    upcalls_.speaker.StopSpeakingAll();
  if (KeyCode != keycode::Alt || keys.KeysTaken) return;
  if (keys.AltTabbed) {
    keys.AltTabbed = false;
  } else if (keys.LastKeyCode == keycode::Alt && keys.LastShift == AltBit) {
    TapAlt();
  }
}

void Keyboard::TapAlt() {
  if (menus_.ListOpen()) return menus_.CloseListBox();
  const bool inScript = !InCommandBuffer() && !state_.keyboard.OutputFocused;
  menus_.OpenMenu(inScript ? "BUFFERMENU//00" : "MAIN//00");
}

void Keyboard::FocusChanged(MainFocus focus) {
  KeyboardState& keys = state_.keyboard;
  const bool output = focus == MainFocus::Output;
  if (output == keys.OutputFocused) return;
  keys.OutputFocused = output;
  state_.sessions.ReadPosition = output;
  keys.PendingFilter.clear();  // the line that was read last stands in the other window and says nothing about this one
  if (output) {
    TextModel& window = FocusedText();
    window.SetSelStart(window.Length());
    upcalls_.speaker.SpeakOut("Output", Channel::Output, 0);
  } else {
    state_.buffers.EntryBox.SetSelStart(state_.buffers.EntryBox.Length());
    buffers_.SpeakWindowName();
  }
}

bool Keyboard::CloseRequested() {
  const int16 session = state_.script.CurrentSocket;
  if (!platform_.sockets.Connected(session)) return true;
  return upcalls_.prompter.MsgBox("Do you wish to terminate this connection?", box::YesNo,
                                  state_.sessions.ConnectHost) == box::ResultYes;
}

}  // namespace corvid
