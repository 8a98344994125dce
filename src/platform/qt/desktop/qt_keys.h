// SPDX-License-Identifier: GPL-3.0-or-later
// Keys of the toolkit in the program's own numbers.
#pragma once

#include <string>

#include "core/types.h"

class QKeyEvent;

namespace corvid {

struct QtKey {
  int16 KeyCode = 0;  // 0: a key that the program has no use for
  int16 Shift = 0;    // the key's own modifier is in it while it is down
  std::string Text;   // what it types (UTF-8): "\r" for Enter, "\b" for Backspace, empty for nothing
};

// On every keyboard layout the keys of the upper row are the digits written on them, whatever they type, and letters
// and signs are what they type without Shift; so that a key has one name with and without Shift.
QtKey ReadKey(const QKeyEvent& event);

}  // namespace corvid
