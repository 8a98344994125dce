// SPDX-License-Identifier: GPL-3.0-or-later
// Timer1: the jobs that a key leaves for the moment after it, so that its handler returns at once.
#pragma once

#include <memory>
#include <vector>

#include "core/upcalls.h"
#include "files/buffer_state.h"
#include "input/keyboard_state.h"
#include "platform/platform.h"
#include "script/options_state.h"
#include "script/script_state.h"
#include "sessions/session_state.h"
#include "speech/speech_state.h"

namespace corvid {

namespace timeraction {
inline constexpr int16 SpeakWord = 1, SpeakLine = 2, SpeakSelection = 3, PlaceCaret = 4, RunEntryLine = 5,
                       OpenCharacters = 6, FirstDialogJob = 10;
}

class TimerRoutines final : public TimerJobs {
 public:
  TimerRoutines(ScriptState& script, OptionsState& options, SessionState& sessions, BufferState& buffers,
                KeyboardState& keyboard, Platform& platform, Upcalls& upcalls);
  ~TimerRoutines() override;

  void StartTimer1(int16 action, int milliseconds) override;
  // The tick. May pump events.
  void Timer1_Timer();
  // Where the caret of the entry goes by job 4.
  void SetCaretAfterPaste(int32 caret) { caretAfterPaste_ = caret; }
  // True while a job waits for its tick.
  bool JobDue() const;

 private:
  ScriptState& script_;
  OptionsState& options_;
  SessionState& sessions_;
  BufferState& buffers_;
  KeyboardState& keyboard_;
  Platform& platform_;
  Upcalls& upcalls_;
  std::unique_ptr<Timer> Timer1;
  int32 caretAfterPaste_ = 0;
};

}  // namespace corvid
