// SPDX-License-Identifier: GPL-3.0-or-later
// Keys and the characters they type, for faces that have no keyboard of their own: a plain US layout.
#pragma once

#include <string>
#include <string_view>

#include "core/types.h"

namespace corvid {

struct Keystroke {
  int16 KeyCode;
  int16 Shift;
};

// The code of a key that stands for a character of no key: in the range of printable keys, bound to nothing.
inline constexpr int16 CharacterKey = 231;

// What the key types: one character as UTF-8, "\r" for Enter, "\b" for Backspace, empty for a key that types nothing
// (arrows, function keys, anything with Control or Alt).
std::string CharacterOf(int16 KeyCode, int16 Shift);
// The key that types the character (UTF-8). A character that no key has gives CharacterKey.
Keystroke KeyOf(std::string_view character);
// The code of "Alt", "Control" or "Ctrl", "Shift", "Applications" in any case, which no script binds; 0 for other
// names.
int16 LoneKey(std::string_view name);
// The modifier's bit in Shift; 0 for a key that is none.
int16 ModifierBit(int16 KeyCode);

}  // namespace corvid
