// SPDX-License-Identifier: GPL-3.0-or-later
// Text names of keys, as scripts write them, and their code pairs.
#pragma once

#include <string>
#include <string_view>

#include "core/types.h"

namespace corvid {

inline constexpr int16 ShiftBit = 1;
inline constexpr int16 ControlBit = 2;
inline constexpr int16 AltBit = 4;

namespace keycode {
inline constexpr int16 Backspace = 8, Tab = 9, Enter = 13, Shift = 16, Control = 17, Alt = 18, Caps = 20, Escape = 27,
                       Space = 32, PageUp = 33, PageDown = 34, End = 35, Home = 36, Left = 37, Up = 38, Right = 39,
                       Down = 40, Insert = 45, Delete = 46, Applications = 93, F1 = 112, F4 = 115, F12 = 123;
}  // namespace keycode

// Reads a name such as "Control-Shift-F5" in any case. KeyCode -1 means that it is no key name.
void ParseKeystroke(std::string_view instring, int16& Shift, int16& KeyCode);
// Writes the name with "Shift-", "Control-", "Alt-" in that order; an unknown code gives the modifiers alone.
std::string Keyname(int16 KeyCode, int16 Shift);

}  // namespace corvid
