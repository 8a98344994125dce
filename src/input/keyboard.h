// SPDX-License-Identifier: GPL-3.0-or-later
// Every key passes here before anything else sees it: macros first, then the program's own keys, then the usual
// editing. A player who cannot see hears an answer to each.
#pragma once

#include <memory>
#include <string>

#include "core/text_model.h"
#include "core/upcalls.h"
#include "files/buffer_state.h"
#include "files/buffers.h"
#include "files/saving.h"
#include "input/keyboard_state.h"
#include "input/menus.h"
#include "platform/platform.h"
#include "script/options_state.h"
#include "script/scanner.h"
#include "script/script_state.h"
#include "script/symbols.h"
#include "sessions/session_state.h"
#include "sessions/timers.h"
#include "speech/speech_state.h"

namespace corvid {

struct KeyboardStates {
  ScriptState& script;
  OptionsState& options;
  BufferState& buffers;
  SessionState& sessions;
  SpeechState& speech;
  KeyboardState& keyboard;
};

class Keyboard : public FaceEvents {
 public:
  Keyboard(KeyboardStates states, Symbols& symbols, Scanner& scanner, Buffers& buffers, Saving& saving,
           TimerRoutines& timers, Menus& menus, Platform& platform, Upcalls& upcalls);

  // The three halves of a key. A fault in one is logged and loses that key only.
  void KeyDown(int16 KeyCode, int16 Shift) override;
  void KeyTyped(const std::string& character) override;
  void KeyUp(int16 KeyCode, int16 Shift) override;
  void FocusChanged(MainFocus focus) override;
  void MenuClicked(int32 row) override { menus_.ListClick(row); }
  void MenuDoubleClicked(int32 row) override { menus_.ListDoubleClick(row); }
  void MenuLeft() override { menus_.CloseListBox(); }
  bool CloseRequested() override;  // asks while the session in the foreground is connected

  // Enter in the entry line, as a key press would do it.
  void PressEnter();
  // Speech channel of the window that has the focus: 2 the entry line, 3 the output, 4 a script.
  int16 XWindowType() const;

 private:
  void Form_KeyDown(int16 KeyCode, int16 Shift);
  void Form_KeyPress(const std::string& character);
  void Form_KeyUp(int16 KeyCode);
  void InterruptSpeech();
  void SaveNowAndThen();
  bool RunMacro(int16 KeyCode, int16 Shift);
  bool BuiltInKey(int16 KeyCode, int16 Shift);
  bool ControlKey(int16 KeyCode);
  void MoveAndSpeak(int16 KeyCode, int16 Shift);
  void SpeakSpot();
  void TapAlt();
  void SelectAll();
  void Copy(bool cut);
  void Paste();
  void ToggleFocus();
  void EchoTyped(const std::string& character);
  void RingAtColumn(const std::string& character);
  bool TypeThrough(const std::string& character);
  void EnterPressed();
  std::string TakeEntryLine();
  void DropRepeatedLine();
  void ShortenHistory();
  std::string PartByPattern(std::string line) const;
  bool BufferFull();
  bool InCommandBuffer() const;
  TextModel& FocusedText();

  KeyboardStates state_;
  Symbols& symbols_;
  Scanner& scanner_;
  Buffers& buffers_;
  Saving& saving_;
  TimerRoutines& timers_;
  Menus& menus_;
  Platform& platform_;
  Upcalls& upcalls_;
  std::unique_ptr<Timer> secondBeep_;  // of the margin bell
};

}  // namespace corvid
