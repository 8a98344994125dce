// SPDX-License-Identifier: GPL-3.0-or-later
// The road from socket bytes to everything that the player perceives.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/table.h"
#include "core/upcalls.h"
#include "platform/platform.h"
#include "script/options_state.h"
#include "script/script_state.h"
#include "sessions/line_maker.h"
#include "sessions/line_triggers.h"
#include "sessions/logs.h"
#include "sessions/output.h"
#include "sessions/session_state.h"
#include "sessions/sound_lines.h"

namespace corvid {

class Receive {
 public:
  // An unfinished line longer than this is shown as it stands instead of being held: a server that never ends its line
  // costs neither memory nor copying without bound.
  static constexpr std::size_t LongestHeldLine = std::size_t{64} * 1024;

  Receive(ScriptState& script, OptionsState& options, SessionState& sessions, OutputWindows& output, Logs& logs,
          LineTriggers& triggers, SoundLines& sounds, Platform& platform, Upcalls& upcalls);
  ~Receive();

  // Reads and handles one block of at most 4096 bytes. Runs for data, for a line that is fed in (InjectedText), and
  // once more when an unfinished line has waited long enough. Never throws. May pump events, and may be entered again
  // meanwhile for any session.
  void sockTelnet_OnRead(int16 Index);
  // The tick of the session's timer: shows an unfinished line as it stands.
  void ReadTimer_Timer(int16 Index);
  // Another connection begins in the slot: what the player is still told of the one before is not about it.
  void NewConnection(int16 Index);

 private:
  struct Work;
  class Lease;
  class Negotiation;
  enum class Flow { Goes, Leave };

  template <typename Step>
  void Try(int16 Index, Step&& step);
  void Report(int16 Index, const std::string& error);

  Flow ReadBlock(int16 Index, bool timerFired, Work& work, int& readCount);
  bool TellFailure(int16 Index, const std::string& message);
  void HoldTail(int16 Index, Work& work);
  void StartReadTimer(int16 Index);
  void HandleBlock(int16 Index, Work& work);
  void HandleLine(int16 Index, std::string_view line, Work& work);
  void Log(int16 Index, Work& work);
  LineFate RunTriggers(int16 Index, Work& work);
  void Display(int16 Index, Work& work);
  void Speak(int16 Index, Work& work);
  void SpeakBatch(Work& work);
  void NoticeGag(int16 Index);
  void FinishBlock(int16 Index, int32 caret, Work& work);

  ScriptState& script_;
  OptionsState& options_;
  SessionState& sessions_;
  OutputWindows& output_;
  Logs& logs_;
  LineTriggers& triggers_;
  SoundLines& sounds_;
  Platform& platform_;
  Upcalls& upcalls_;
  LineMaker maker_;
  Table<std::unique_ptr<Timer>> ReadTimer;
  Table<char> failing_;                      // a failure of this session's socket is being told: bytes are thrown away
  std::vector<std::unique_ptr<Work>> idle_;  // texts of finished calls, whose memory the next ones use
};

}  // namespace corvid
