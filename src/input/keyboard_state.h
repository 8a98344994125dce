// SPDX-License-Identifier: GPL-3.0-or-later
// What the keyboard remembers between keys.
#pragma once

#include <string>
#include <vector>

#include "core/types.h"

namespace corvid {

struct KeyPress {
  int16 KeyCode;
  int16 Shift;
};

struct KeyboardState {
  bool SwallowKeyPress = false;
  int16 LastKeyCode = 0;
  int16 LastShift = 0;
  bool KeysTaken = false;           // keys go to TakenKeys and have no other effect
  std::vector<KeyPress> TakenKeys;  // oldest first
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
