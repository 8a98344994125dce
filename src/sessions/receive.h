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
#include "sessions/line_triggers.h"
#include "sessions/logs.h"
#include "sessions/output.h"
#include "sessions/session_state.h"

namespace corvid {

class Receive {
 public:
  // An unfinished line longer than this is shown as it stands instead of being held: a server that never ends its line
  // costs neither memory nor copying without bound.
  static constexpr std::size_t LongestHeldLine = 64 * 1024;

  Receive(ScriptState& script, OptionsState& options, SessionState& sessions, OutputWindows& output, Logs& logs,
          LineTriggers& triggers, Platform& platform, Upcalls& upcalls);
  ~Receive();

  // Reads and handles one block of at most 4096 bytes. Runs for data, for a line that is fed in (InjectedText), and
  // once more when an unfinished line has waited long enough. Never throws. May pump events, and may be entered again
  // meanwhile for any session.
  void sockTelnet_OnRead(int16 Index);
  // The tick of the session's timer: shows an unfinished line as it stands.
  void ReadTimer_Timer(int16 Index);

 private:
  ScriptState& script_;
  OptionsState& options_;
  SessionState& sessions_;
  OutputWindows& output_;
  Logs& logs_;
  LineTriggers& triggers_;
  Platform& platform_;
  Upcalls& upcalls_;
};

}  // namespace corvid
