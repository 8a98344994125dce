// SPDX-License-Identifier: GPL-3.0-or-later
// Timer1: the jobs that a key leaves for the moment after it, so that its handler returns at once and speech comes
// after the key's own effect. The tick of the script's alarms is in commands/alarms.h, the keeper of looping music in
// sound/music.h.
#pragma once

#include <deque>
#include <memory>
#include <string>

#include "core/upcalls.h"
#include "files/buffer_state.h"
#include "input/keyboard_state.h"
#include "platform/platform.h"
#include "script/options_state.h"
#include "script/script_state.h"
#include "sessions/session_state.h"

namespace corvid {

namespace timeraction {
inline constexpr int16 SpeakWord = 1, SpeakLine = 2, SpeakSelection = 3, PlaceCaret = 4, RunEntryLine = 5,
                       OpenCharacters = 6, FirstDialogJob = 10;
}

// Speaks for the edit fields of an open dialog.
class DialogJobs {
 public:
  virtual ~DialogJobs() = default;
  // textControl: a text box, else a multi-line box. job is one of 1 to 4 above.
  virtual void SpeakField(bool textControl, int16 index, int16 job) = 0;
};

class TimerRoutines final : public TimerJobs {
 public:
  TimerRoutines(ScriptState& script, OptionsState& options, SessionState& sessions, BufferState& buffers,
                KeyboardState& keyboard, Platform& platform, Upcalls& upcalls);
  ~TimerRoutines() override;

  // A job 5 keeps the EntryLine of this moment. A pending job 5 or 6 is not overwritten: it runs first, and the new one
  // starts after it. Any other pending job gives way.
  void StartTimer1(int16 action, int milliseconds) override;
  // The tick. Never throws. May pump events.
  void Timer1_Timer();
  // Where the caret of the entry goes by job 4.
  void SetCaretAfterPaste(int32 caret) { caretAfterPaste_ = caret; }
  void SetDialogJobs(DialogJobs* jobs) { dialogJobs_ = jobs; }  // not owned; nullptr: there is no dialog
  // A job of a key waits for its tick. The one of the start does not count: half a second passes before it.
  bool JobDue() const;

 private:
  struct Job {
    int16 Action;
    int Milliseconds;
    std::string Line;
  };
  static bool MustRun(int16 action);
  void StartNext();
  void Run(const Job& job);
  void RunEntryLine(const std::string& line);
  void RunDialogJob(int16 action);
  void SpeakWord();
  void SpeakLine();
  void SpeakSelection();
  TextModel& ReadText();
  int16 XWindowType() const;

  ScriptState& script_;
  OptionsState& options_;
  SessionState& sessions_;
  BufferState& buffers_;
  KeyboardState& keyboard_;
  Platform& platform_;
  Upcalls& upcalls_;
  DialogJobs* dialogJobs_ = nullptr;
  std::unique_ptr<Timer> Timer1;
  std::deque<Job> jobs_;  // in order of running; the first one's tick is set
  int32 caretAfterPaste_ = 0;
};

}  // namespace corvid
