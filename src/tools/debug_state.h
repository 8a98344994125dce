// SPDX-License-Identifier: GPL-3.0-or-later
// What the script debugger knows: whether it is on, what it is to stop at, and the commands that ran before.
#pragma once

#include <array>
#include <string>

#include "core/types.h"

namespace corvid {

struct DebugState {
  static constexpr int16 DebugHistorySize = 50;

  int16 DebugMode = 0;            // 0 off, 1 on: nothing else here is looked at while it is off
  bool DebugBreak = false;        // stop before the next command
  std::string DebugExpandedLine;  // the command at hand with its parameters expanded
  std::string DebugExpression;    // stop where it is true; empty: none
  std::string DebugReason;        // behind the words of the dialog's title; Kept: stays until another stop
  std::string TestLine;           // what the trigger tester was given last
  // A ring of the commands before, rows 1 to DebugHistorySize; one that never was is empty.
  std::array<std::string, DebugHistorySize + 1> DebugHistory;
  int16 DebugHistoryAt = 0;  // the newest row, 0 for none
  // The debugger is at work or waits for the player. What the game, an alarm or a function runs meanwhile passes by
  // unseen, or stop would stand upon stop.
  bool Busy = false;
};

// Asks for a stop before the next command, where the debugger is on and free.
inline void RequestBreak(DebugState& debug, const char* reason) {
  if (debug.DebugMode == 0 || debug.Busy) return;
  debug.DebugBreak = true;
  debug.DebugReason = reason;
}

}  // namespace corvid
