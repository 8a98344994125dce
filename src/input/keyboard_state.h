// SPDX-License-Identifier: GPL-3.0-or-later
// What the keyboard remembers between keys.
#pragma once

#include <string>

#include "core/types.h"

namespace corvid {

struct KeyboardState {
  bool SwallowKeyPress = false;
  int16 LastKeyCode = 0;
  int16 LastShift = 0;
  bool AltTabbed = false;
  bool OutputFocused = false;
  bool EchoPrefix = false;  // set by ">>", cleared by "<<": typed lines go to the game unchanged
  std::string EntryLine;    // line that the next tick of Timer1 carries out
  int16 TimerAction = 0;    // 0 nothing, 5 run EntryLine, 6 open the characters
  float LastAutoSave = 0;   // seconds of the day
  std::string PendingWord;
  std::string PendingFilter;
};

}  // namespace corvid
